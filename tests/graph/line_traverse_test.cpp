#include "support/GlTest.h"

#include <Tavrin/Line.h>

#include <algorithm>
#include <vector>

using Tavrin::Line;

namespace {

Line planeOf(tagTAVRIN_POINT a, tagTAVRIN_POINT b, TAVRIN_ARROW_TYPE direction,
             tagTAVRIN_OBJ_STATUS status = TAVRIN_OBJ_STATUS_SELECTED)
{
    tagTAVRIN_POINT points[2] = {a, b};
    Line line(points, 2);
    line.SetIsTraversePlane(true);
    line.SetLineType(TAVRIN_LINE_ARROW);  // not consulted
    line.SetArrowDirection(direction);
    line.SetObjStatus(status);
    return line;
}

}  // namespace

class TraversePlane : public GlTest {};

TEST_F(TraversePlane, HorizontalLineWithDirectionOne)
{
    Line line = planeOf(pt(0.2f, 0.5f), pt(0.6f, 0.5f), TAVRIN_ARROW_POSITIVE);
    line.Draw(nullptr, 1000, 1000, true);
    const auto loops = recorded().batchesOf(GL_LINE_LOOP);
    ASSERT_EQ(loops.size(), 2u);
    EXPECT_EQ(loops[0].color, rec::rgba(0x285ea6));
    EXPECT_FLOAT_EQ(loops[0].lineWidth, 2.0f);
    expectVertices(loops[0],
                   {pt(0.2f, 0.4985f), pt(0.6f, 0.4985f), pt(0.6f, 0.5015f), pt(0.2f, 0.5015f)},
                   1e-6);
    // Arrow 1 from (0.4, 0.4985) up to (0.4, 0.47) in whole pixels, tail first: the
    // normal is a hair off a right angle, so 4 and 12 truncate to 3 and 11.
    expectVertices(loops[1],
                   {pt(0.4f, 0.498f), pt(0.403f, 0.498f), pt(0.403f, 0.488f), pt(0.411f, 0.488f),
                    pt(0.4f, 0.47f), pt(0.389f, 0.488f), pt(0.397f, 0.488f), pt(0.397f, 0.498f)},
                   1e-6);
    ASSERT_EQ(recorded().texts.size(), 2u);
    EXPECT_POINT_NEAR(recorded().texts[0].position, 0.4f, 0.4885f, 1e-6);  // "A"
    EXPECT_POINT_NEAR(recorded().texts[1].position, 0.4f, 0.48f, 1e-6);    // "B"
    // Then the end-point markers, after the plane's state is left.
    EXPECT_EQ(recorded().batchesOf(GL_POINTS).size(), 2u);
    EXPECT_GL_STATE_CLEAN();
}

// 45 degrees in a square view: one pixel across is (0.000707107, 0.000707107).
TEST_F(TraversePlane, PlaneAndArrowOneByInclination)
{
    const struct {
        const char* name;
        tagTAVRIN_POINT a, b;
        int width, height;
        std::vector<tagTAVRIN_POINT> plane;
        tagTAVRIN_POINT tail1, tip1;
    } cases[] = {
        {"FallingArrowOneAbove", pt(0.2f, 0.2f), pt(0.6f, 0.6f), 1000, 1000,
         {pt(0.20106066f, 0.19893934f), pt(0.60106066f, 0.59893934f),
          pt(0.59893934f, 0.60106066f), pt(0.19893934f, 0.20106066f)},
         pt(0.40106066f, 0.39893934f), pt(0.42121320f, 0.37878680f)},
        {"RisingArrowOneBelow", pt(0.6f, 0.2f), pt(0.2f, 0.6f), 1000, 1000,
         {pt(0.19893934f, 0.59893934f), pt(0.59893934f, 0.19893934f),
          pt(0.60106066f, 0.20106066f), pt(0.20106066f, 0.60106066f)},
         pt(0.40106066f, 0.40106066f), pt(0.42121320f, 0.42121320f)},
        {"VerticalOffsetsAreHorizontal", pt(0.5f, 0.2f), pt(0.5f, 0.6f), 1000, 500,
         {pt(0.5015f, 0.2f), pt(0.5015f, 0.6f), pt(0.4985f, 0.6f), pt(0.4985f, 0.2f)},
         pt(0.5015f, 0.4f), pt(0.53f, 0.4f)},
        {"HorizontalRightToLeft", pt(0.6f, 0.5f), pt(0.2f, 0.5f), 1000, 1000,
         {pt(0.2f, 0.4985f), pt(0.6f, 0.4985f), pt(0.6f, 0.5015f), pt(0.2f, 0.5015f)},
         pt(0.4f, 0.4985f), pt(0.4f, 0.47f)},
        {"CoincidentPointsAreHorizontal", pt(0.5f, 0.5f), pt(0.5f, 0.5f), 1000, 500,
         {pt(0.5f, 0.497f), pt(0.5f, 0.497f), pt(0.5f, 0.503f), pt(0.5f, 0.503f)},
         pt(0.5f, 0.497f), pt(0.5f, 0.44f)},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Line line = planeOf(c.a, c.b, TAVRIN_ARROW_BOTH, TAVRIN_OBJ_STATUS_NORMAL);
        const auto loops = drawn(line, c.width, c.height).batchesOf(GL_LINE_LOOP);
        ASSERT_EQ(loops.size(), 3u);
        expectVertices(loops[0], c.plane, 1e-6);
        // The arrows are in whole pixels: within a pixel of their tail and tip.
        const double pixel = 1.0 / std::min(c.width, c.height);
        EXPECT_POINT_NEAR(loops[1].at(0), c.tail1.x, c.tail1.y, pixel);
        EXPECT_POINT_NEAR(loops[1].at(4), c.tip1.x, c.tip1.y, pixel);
        // Arrow 2 is arrow 1 mirrored through the middle.
        const float mx = (c.a.x + c.b.x) / 2;
        const float my = (c.a.y + c.b.y) / 2;
        EXPECT_POINT_NEAR(loops[2].at(4), 2 * mx - c.tip1.x, 2 * my - c.tip1.y, pixel);
        EXPECT_TRUE(recorded().texts.empty());  // direction 0 has no marks
        EXPECT_GL_STATE_CLEAN();
    }
}

// Falling 45 degrees: B 40 px from the middle along arrow 1 (10 beyond its tip), A 13.5 px
// the other way (15 behind its tail); direction 2 mirrors both.
TEST_F(TraversePlane, ABesideArrowTwoBBesideArrowOne)
{
    const struct {
        const char* name;
        tagTAVRIN_POINT a, b;
        TAVRIN_ARROW_TYPE direction;
        tagTAVRIN_POINT markA, markB;
    } cases[] = {
        {"FallingDirectionOne", pt(0.2f, 0.2f), pt(0.6f, 0.6f), TAVRIN_ARROW_POSITIVE,
         pt(0.39045408f, 0.40954592f), pt(0.42828427f, 0.37171573f)},
        {"FallingDirectionTwo", pt(0.2f, 0.2f), pt(0.6f, 0.6f), TAVRIN_ARROW_NEGATIVE,
         pt(0.37171573f, 0.42828427f), pt(0.40954592f, 0.39045408f)},
        {"HorizontalDirectionTwo", pt(0.2f, 0.5f), pt(0.6f, 0.5f), TAVRIN_ARROW_NEGATIVE,
         pt(0.4f, 0.52f), pt(0.4f, 0.5115f)},
    };
    for (const auto& c : cases) {
        Line line = planeOf(c.a, c.b, c.direction);
        EXPECT_EQ(drawn(line).batchesOf(GL_LINE_LOOP).size(), 2u) << c.name;
        ASSERT_EQ(recorded().texts.size(), 2u);
        EXPECT_POINT_NEAR(recorded().texts[0].position, c.markA.x, c.markA.y, 1e-6);
        EXPECT_POINT_NEAR(recorded().texts[1].position, c.markB.x, c.markB.y, 1e-6);
    }
}

TEST_F(TraversePlane, NoMarksInStatusZeroOrTwoOrWithoutHead)
{
    for (auto c : {std::make_pair(TAVRIN_ARROW_POSITIVE, TAVRIN_OBJ_STATUS_NORMAL),
                   std::make_pair(TAVRIN_ARROW_NEGATIVE, TAVRIN_OBJ_STATUS_HIGHLIGHTED),
                   std::make_pair(TAVRIN_ARROW_NONE, TAVRIN_OBJ_STATUS_SELECTED),
                   std::make_pair(static_cast<TAVRIN_ARROW_TYPE>(9), TAVRIN_OBJ_STATUS_SELECTED)}) {
        rec::gl().reset();
        Line line = planeOf(pt(0.2f, 0.3f), pt(0.6f, 0.5f), c.first, c.second);
        line.Draw(nullptr, 1000, 1000, true);
        EXPECT_TRUE(recorded().texts.empty());
        EXPECT_EQ(recorded().listsGenerated, 0);
        const bool oneArrow = c.first == TAVRIN_ARROW_POSITIVE || c.first == TAVRIN_ARROW_NEGATIVE;
        EXPECT_EQ(recorded().batchesOf(GL_LINE_LOOP).size(), oneArrow ? 2u : 1u);
        EXPECT_GL_STATE_CLEAN();
    }
}

TEST_F(TraversePlane, WithoutAViewOnlyTheStateAndMarkersRemain)
{
    Line line = planeOf(pt(0.2f, 0.3f), pt(0.6f, 0.5f), TAVRIN_ARROW_BOTH);
    line.Draw(nullptr, 0, 0, true);
    const std::vector<std::string> smooth = {"GL_LINE_SMOOTH"};
    const std::vector<std::string> calls = recorded().sequence();
    const std::vector<std::string> expectedStart =
        concat({enterCalls(smooth), {"glColor4ub(40,94,166,255)", "glLineWidth(2)"}, leaveCalls(smooth)});
    ASSERT_GE(calls.size(), expectedStart.size());
    EXPECT_EQ(std::vector<std::string>(calls.begin(), calls.begin() + expectedStart.size()),
              expectedStart);
    EXPECT_TRUE(recorded().batchesOf(GL_LINE_LOOP).empty());
    EXPECT_EQ(recorded().batchesOf(GL_POINTS).size(), 2u);
    EXPECT_GL_STATE_CLEAN();
}
