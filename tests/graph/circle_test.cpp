#include "support/GlTest.h"

#include <Tavrin/Circle.h>

#include <cmath>

using Tavrin::Circle;
using Tavrin::Point;

namespace {

Circle circleAt(float x, float y)
{
    tagTAVRIN_POINT p = pt(x, y);
    return Circle(&p, 1);
}

Point pointAt(float x, float y)
{
    tagTAVRIN_POINT p = pt(x, y);
    return Point(&p);
}

}  // namespace

TEST(CircleRadius, KeptRelativeToTheViewWidth)
{
    Circle c = circleAt(0.5f, 0.5f);
    c.SetWndSize(500, 400);
    c.SetRadius(50);
    EXPECT_EQ(c.Radius(), 50u);
    c.SetWndSize(1000, 400);
    EXPECT_EQ(c.Radius(), 100u);
}

TEST(CircleRadius, ZeroWidthLeavesTheRadiusAlone)
{
    Circle c = circleAt(0.5f, 0.5f);
    c.SetRadius(50);  // no view size yet: ignored
    EXPECT_EQ(c.Radius(), 0u);
    c.SetWndSize(500, 500);
    c.SetRadius(25);
    c.SetWndSize(0, 500);
    c.SetRadius(80);
    c.SetWndSize(500, 500);
    EXPECT_EQ(c.Radius(), 25u);
    c.SetWndSize(-500, 500);
    EXPECT_EQ(c.Radius(), 0u);  // a negative size gives no negative radius
}

TEST(CircleHitTest, StrictlyInsideTheRadiusInPixels)
{
    Circle c = circleAt(0.5f, 0.5f);
    c.SetWndSize(1000, 500);
    c.SetRadius(50);
    Point inside = pointAt(0.549f, 0.5f);   // 49 px
    Point edge = pointAt(0.55f, 0.5f);      // 50 px: not strictly inside
    Point below = pointAt(0.5f, 0.598f);    // 49 px vertically at H = 500
    Point outside = pointAt(0.5f, 0.602f);  // 51 px
    EXPECT_TRUE(c.CheckSelected(inside));
    EXPECT_FALSE(c.CheckSelected(edge));
    EXPECT_TRUE(c.CheckSelected(below));
    EXPECT_FALSE(c.CheckSelected(outside));
}

TEST(CircleHitTest, NullCentreIsNeverSelected)
{
    Circle c = circleAt(0.0f, 0.0f);
    c.SetWndSize(1000, 1000);
    c.SetRadius(100);
    Point origin = pointAt(0.0f, 0.0f);
    EXPECT_TRUE(c.IsNearPoint(origin));
    EXPECT_FALSE(c.CheckSelected(origin));
}

TEST(CircleMove, SameBoundsAsAPoint)
{
    Circle c = circleAt(0.5f, 0.5f);
    tagTAVRIN_POINT from = pt(0.5f, 0.5f);
    EXPECT_FALSE(drag(c, from, pt(0.5f, 1.2f)));
    EXPECT_TRUE(drag(c, from, pt(0.5f, 1.0f)));
    EXPECT_FLOAT_EQ(c.Ry(), 1.0f);
}

class CircleDraw : public GlTest {};

TEST_F(CircleDraw, MarkerThenDiscOfHalfTheHitRadius)
{
    Circle c = circleAt(0.5f, 0.5f);
    c.SetWndSize(800, 400);
    c.SetRadius(80);  // 0.1 of the width
    c.SetPointType(TAVRIN_POINT_CROSS);
    c.SetObjStatus(TAVRIN_OBJ_STATUS_HIGHLIGHTED);
    c.Draw(nullptr, 800, 400, true);

    const auto& batches = recorded().batches;
    ASSERT_EQ(batches.size(), 2u);
    EXPECT_EQ(batches[0].mode, static_cast<GLenum>(GL_LINES));  // the centre cross
    const rec::Batch& disc = batches[1];
    EXPECT_EQ(disc.mode, static_cast<GLenum>(GL_POLYGON));
    EXPECT_EQ(disc.color, rec::rgba(0x285ea6, 200));
    ASSERT_EQ(disc.vertices.size(), 1024u);
    // GL coordinates: centre (1, 1), horizontal radius 0.1, vertical 0.1 * 800 / 400.
    EXPECT_NEAR(disc.vertices[0].x, 1.1f, 1e-6);
    EXPECT_NEAR(disc.vertices[0].y, 1.0f, 1e-6);
    EXPECT_NEAR(disc.vertices[256].x, 1.0f, 1e-5);
    EXPECT_NEAR(disc.vertices[256].y, 1.2f, 1e-5);
    EXPECT_NEAR(disc.vertices[512].x, 0.9f, 1e-5);

    const std::vector<std::string> polySmooth = {"GL_POLYGON_SMOOTH", "GL_LINE_SMOOTH"};
    const std::vector<std::string> seq = recorded().sequence();
    const std::vector<std::string> tail(seq.end() - 7, seq.end());
    EXPECT_EQ(tail, concat({{"glEnd()", "glColor4ub(40,94,166,255)"}, leaveCalls(polySmooth)}));
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(CircleDraw, ZeroViewSizeDrawsOnlyTheMarker)
{
    Circle c = circleAt(0.5f, 0.5f);
    c.Draw(nullptr, 640, 0, true);
    ASSERT_EQ(recorded().batches.size(), 1u);
    EXPECT_EQ(recorded().batches[0].mode, static_cast<GLenum>(GL_POINTS));
    EXPECT_TRUE(everythingFinite());
    EXPECT_GL_STATE_CLEAN();
}
