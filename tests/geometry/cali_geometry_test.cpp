#include "support/GlTest.h"

#include "geometry/CaliGeometry.h"
#include "geometry/MarkerTextBox.h"

#include <cmath>

using Tavrin::geometry::lineHeadBar;
using Tavrin::geometry::markerTextBox;
using Tavrin::geometry::pupilDimension;
using Tavrin::geometry::PupilDimension;
using Tavrin::geometry::PupilLayout;

namespace {

/// A whole pixel back in normalised units, as the bar's ends are snapped.
float px(int pixel, int size) { return static_cast<float>(pixel) / static_cast<float>(size); }

}  // namespace

// Pixel values: the bar is 16 pixels each way from a centre offset by sin·cos and sin·sin
// of a pixel, at the perpendicular's angle truncated to whole degrees.
TEST(LineHeadBar, SnappedBarEnds)
{
    struct Case {
        const char* name;
        tagTAVRIN_POINT a, b, end;
        int width, height;
        int x0, y0, x1, y1;  // expected bar ends in pixels
    };
    const Case cases[] = {
        // Slope 0: a vertical bar 16 pixels up and down, no offset.
        {"Horizontal", pt(0.2f, 0.5f), pt(0.6f, 0.5f), pt(0.2f, 0.5f), 1000, 500, 200, 234, 200, 266},
        // Infinite slope: angle 0, a horizontal bar.
        {"Vertical", pt(0.5f, 0.2f), pt(0.5f, 0.8f), pt(0.5f, 0.8f), 800, 600, 384, 480, 416, 480},
        // k = -1, 45 degrees: centre (x + 0.5, y + 0.5), 16·cos 45 = 11.31.
        {"Diagonal45", pt(0.2f, 0.6f), pt(0.4f, 0.4f), pt(0.2f, 0.6f), 1000, 1000, 189, 589, 211, 611},
        // k = +1, -45 degrees: centre (x - 0.5, y + 0.5).
        {"DiagonalMinus45", pt(0.25f, 0.25f), pt(0.5f, 0.5f), pt(0.25f, 0.25f), 1000, 1000, 238, 261, 260, 239},
        // -10.81 truncates towards zero to -10, not -11.
        {"TruncatesTowardsZeroLeftOfPicture", pt(0.2f, 0.6f), pt(0.4f, 0.4f), pt(0.0f, 0.0f), 1000, 1000, -10, -10,
         11, 11},
        // k = 0.5: perpendicular at -63.43 degrees, taken as -63.
        {"ShallowSlope", pt(0.1f, 0.1f), pt(0.5f, 0.3f), pt(0.1f, 0.1f), 1000, 1000, 92, 115, 106, 86},
        // k = -2: 26.57 degrees truncated to 26 (rounding would give 27 and row 492).
        {"AngleTruncatedNotRounded", pt(0.1f, 0.5f), pt(0.2f, 0.3f), pt(0.1f, 0.5f), 1000, 1000, 86, 493, 114, 507},
        // k = 2: -26.57 degrees truncated towards zero to -26.
        {"NegativeAngleTowardsZero", pt(0.1f, 0.3f), pt(0.2f, 0.5f), pt(0.1f, 0.3f), 1000, 1000, 85, 307, 113, 293},
        // The slope is taken in pixels: 640 x 480, k = 0.375, -69 degrees.
        {"SlopeInPixelsOfAWideView", pt(0.25f, 0.25f), pt(0.75f, 0.5f), pt(0.25f, 0.25f), 640, 480, 153, 135, 165,
         105},
        // No direction at all: angle 0, the horizontal bar of a vertical line.
        {"CoincidentEnds", pt(0.3f, 0.3f), pt(0.3f, 0.3f), pt(0.5f, 0.5f), 1000, 1000, 484, 500, 516, 500},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        tagTAVRIN_POINT out[2] = {};
        ASSERT_TRUE(lineHeadBar(c.end, c.a, c.b, c.width, c.height, out));
        EXPECT_FLOAT_EQ(out[0].x, px(c.x0, c.width));
        EXPECT_FLOAT_EQ(out[0].y, px(c.y0, c.height));
        EXPECT_FLOAT_EQ(out[1].x, px(c.x1, c.width));
        EXPECT_FLOAT_EQ(out[1].y, px(c.y1, c.height));
    }
}

TEST(LineHeadBar, WritesNothingWithoutAViewSizeOrAFiniteEnd)
{
    const tagTAVRIN_POINT a = pt(0.2f, 0.6f);
    const tagTAVRIN_POINT b = pt(0.4f, 0.4f);
    struct Refused {
        tagTAVRIN_POINT end;
        int width, height;
    };
    const Refused refused[] = {
        {a, 0, 0}, {a, 1000, 0}, {a, 0, 1000}, {a, -640, 480}, {pt(kNaN, 0.5f), 1000, 1000},
        {pt(0.5f, kInf), 1000, 1000},
    };
    for (const Refused& r : refused) {
        tagTAVRIN_POINT out[2] = {pt(7, 7), pt(7, 7)};
        EXPECT_FALSE(lineHeadBar(r.end, a, b, r.width, r.height, out));
        EXPECT_POINT_NEAR(out[0], 7.0f, 7.0f, 0.0);
        EXPECT_POINT_NEAR(out[1], 7.0f, 7.0f, 0.0);
    }
    EXPECT_FALSE(lineHeadBar(a, a, b, 1000, 1000, nullptr));

    tagTAVRIN_POINT out[2] = {};  // huge finite inputs stay finite
    const tagTAVRIN_POINT far = pt(3e38f, -3e38f);
    ASSERT_TRUE(lineHeadBar(far, far, pt(0.5f, 0.5f), 1000, 1000, out));
    for (const tagTAVRIN_POINT& p : out) {
        EXPECT_TRUE(std::isfinite(p.x) && std::isfinite(p.y));
    }
}

// Oblique rows: ax = 375, ay = 400, len = trunc(548.29) = 548, so the extension is
// (375 / 548 · 16) / 1000 = 0.0109489 across and (400 / 548 · 16) / 800 = 0.0145985 down.
TEST(PupilDimension, OrderAndExtension)
{
    const PupilLayout H = PupilLayout::Horizontal, V = PupilLayout::Vertical, O = PupilLayout::Oblique;
    struct Case {
        const char* name;
        tagTAVRIN_POINT s0, s1;
        int width, height;
        PupilLayout layout;
        bool s1First;
        tagTAVRIN_POINT e0, e1;
    };
    const Case cases[] = {
        {"RowLeftPupilFirst", pt(0.6f, 0.5f), pt(0.3f, 0.5f), 800, 600, H, true, pt(0.28f, 0.5f), pt(0.62f, 0.5f)},
        {"RowClamped", pt(0.01f, 0.5f), pt(0.99f, 0.5f), 800, 600, H, false, pt(0.0f, 0.5f), pt(1.0f, 0.5f)},
        // 16 / W, not 16 / H: 0.02 and not 0.04 at 800 x 400.
        {"ColumnUpperFirstStepByWidth", pt(0.4f, 0.7f), pt(0.4f, 0.3f), 800, 400, V, true, pt(0.4f, 0.28f),
         pt(0.4f, 0.72f)},
        {"ColumnClamped", pt(0.4f, 0.01f), pt(0.4f, 0.995f), 800, 400, V, false, pt(0.4f, 0.0f), pt(0.4f, 1.0f)},
        {"CoincidentCountAsARow", pt(0.5f, 0.5f), pt(0.5f, 0.5f), 800, 600, H, true, pt(0.48f, 0.5f),
         pt(0.52f, 0.5f)},
        {"ObliqueSecondHigher", pt(0.625f, 0.25f), pt(0.25f, 0.75f), 1000, 800, O, true,
         pt(0.2390511f, 0.7645985f), pt(0.6359489f, 0.2354015f)},
        {"ObliqueSecondLower", pt(0.25f, 0.25f), pt(0.625f, 0.75f), 1000, 800, O, false,
         pt(0.2390511f, 0.2354015f), pt(0.6359489f, 0.7645985f)},
        // Not clamped: the extension may leave the picture.
        {"ObliqueNotClamped", pt(0.0f, 1.0f), pt(0.375f, 0.5f), 1000, 800, O, false, pt(-0.0109489f, 1.0145985f),
         pt(0.3859489f, 0.4854015f)},
        // Less than a pixel apart: len = 0, the extension is the segment itself.
        {"ObliqueWithinOnePixel", pt(0.5f, 0.5f), pt(0.5004f, 0.5004f), 1000, 1000, O, false, pt(0.5f, 0.5f),
         pt(0.5004f, 0.5004f)},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const PupilDimension d = pupilDimension(c.s0, c.s1, c.width, c.height);
        EXPECT_EQ(d.layout, c.layout);
        const tagTAVRIN_POINT& p = c.s1First ? c.s1 : c.s0;
        const tagTAVRIN_POINT& q = c.s1First ? c.s0 : c.s1;
        EXPECT_POINT_NEAR(d.first, p.x, p.y, 0.0);
        EXPECT_POINT_NEAR(d.second, q.x, q.y, 0.0);
        ASSERT_TRUE(d.hasExtension);
        EXPECT_POINT_NEAR(d.extensionStart, c.e0.x, c.e0.y, 1e-7);
        EXPECT_POINT_NEAR(d.extensionEnd, c.e1.x, c.e1.y, 1e-7);
    }
    for (int width : {0, -800}) {  // no extension without a view size
        const PupilDimension d = pupilDimension(pt(0.6f, 0.5f), pt(0.3f, 0.5f), width, 600);
        EXPECT_FALSE(d.hasExtension);
        EXPECT_FLOAT_EQ(d.first.x, 0.3f);
        EXPECT_FLOAT_EQ(d.second.x, 0.6f);
    }
    EXPECT_FALSE(pupilDimension(pt(0.2f, 0.3f), pt(0.4f, 0.6f), 800, 0).hasExtension);
}

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
