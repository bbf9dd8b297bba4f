#include "support/GlTest.h"

#include "geometry/MarkerTextBox.h"

#include <cmath>

using Tavrin::geometry::markerTextBox;

TEST(MarkerTextBox, FirstCornerIsClampedAndTheSecondIsNot)
{
    struct Case {
        const char* name;
        tagTAVRIN_POINT marker, first, second;
    };
    const Case cases[] = {
        {"Inside", {0.5f, 0.5f}, {0.51f, 0.49f}, {0.71f, 0.69f}},
        {"PastTheRightClamp", {0.995f, 0.5f}, {0.97f, 0.49f}, {1.205f, 0.69f}},
        // 0.98 + 0.01 rounds to the float 0.99, which is at the clamp.
        {"AtTheRightClamp", {0.98f, 0.5f}, {0.97f, 0.49f}, {1.19f, 0.69f}},
        {"JustBeforeTheRightClamp", {0.979f, 0.5f}, {0.989f, 0.49f}, {1.189f, 0.69f}},
        {"AtTheTopClamp", {0.5f, 0.005f}, {0.51f, 0.03f}, {0.71f, 0.195f}},
        {"TopClampIncludesTheLimit", {0.005f, 0.02f}, {0.015f, 0.03f}, {0.215f, 0.21f}},
        {"AtTheBottomClamp", {0.5f, 1.0f}, {0.51f, 0.99f}, {0.71f, 1.19f}},
        {"OriginForAnUnsetPoint", {0.0f, 0.0f}, {0.01f, 0.03f}, {0.21f, 0.19f}},
        {"OutsideThePicture", {-0.5f, -0.5f}, {0.01f, 0.03f}, {-0.29f, -0.31f}},
    };
    // Below the picture the first corner stays at the bottom clamp.
    tagTAVRIN_POINT below[2] = {};
    markerTextBox({0.5f, 1.05f}, below[0], below[1]);
    EXPECT_FLOAT_EQ(below[0].y, 0.99f);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        tagTAVRIN_POINT first = {-1.0f, -1.0f};
        tagTAVRIN_POINT second = {-1.0f, -1.0f};
        markerTextBox(c.marker, first, second);
        EXPECT_FLOAT_EQ(first.x, c.first.x);
        EXPECT_FLOAT_EQ(first.y, c.first.y);
        EXPECT_FLOAT_EQ(second.x, c.second.x);
        EXPECT_FLOAT_EQ(second.y, c.second.y);
    }
}
