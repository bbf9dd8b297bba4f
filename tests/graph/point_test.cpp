#include "support/GlTest.h"

#include <Tavrin/Point.h>

#include <cmath>

using Tavrin::Point;

namespace {

Point at(float x, float y)
{
    tagTAVRIN_POINT p = pt(x, y);
    return Point(&p);
}

const std::vector<std::string> kPointSmooth = {"GL_POINT_SMOOTH"};

}  // namespace

TEST(GraphMetaDefaults, NewPrimitiveHasTheDocumentedState)
{
    Point p;
    EXPECT_EQ(p.GetObjStatus(), TAVRIN_OBJ_STATUS_NORMAL);
    EXPECT_EQ(p.GetSelPointIndex(), 0u);
    EXPECT_TRUE(p.GetClosed());
    EXPECT_TRUE(p.IsNull());
    EXPECT_EQ(p.GetPointType(), TAVRIN_POINT_DOT);
    // Colours, fill flags, width and the drag option are seen through the drawing tests
    // (the default selected colours in far_coordinates_test).
}

TEST(PointStorage, SetPointsTakesTheFirstEntryAndRefusesMore)
{
    Point p;
    tagTAVRIN_POINT two[2] = {pt(0.1f, 0.2f), pt(0.3f, 0.4f)};
    EXPECT_TRUE(p.SetPoints(two, 1));
    EXPECT_FALSE(p.SetPoints(two + 1, 2));
    EXPECT_FLOAT_EQ(p.Rx(), 0.1f);
    EXPECT_TRUE(p.SetPoints(two + 1, 0));  // a count of 0 still takes the first entry
    EXPECT_FLOAT_EQ(p.Rx(), 0.3f);
    EXPECT_FALSE(p.SetPoints(nullptr, 1));

    tagTAVRIN_POINT out[1] = {};
    unsigned int count = 0;
    EXPECT_TRUE(p.GetPoints(out, &count));
    EXPECT_EQ(count, 1u);
    EXPECT_FLOAT_EQ(out[0].y, 0.4f);
    EXPECT_FALSE(p.GetPoints(nullptr, &count));
    EXPECT_FALSE(p.GetPoints(out, nullptr));
}

TEST(PointStorage, NonFiniteCoordinatesAreRefused)
{
    Point p = at(0.25f, 0.75f);
    for (float v : {kNaN, kInf, -kInf}) {
        tagTAVRIN_POINT q[1] = {pt(v, 0.5f)};
        EXPECT_FALSE(p.SetPoints(q, 1));
        q[0] = pt(0.5f, v);
        EXPECT_FALSE(p.SetPoints(q, 1));
    }
    EXPECT_FLOAT_EQ(p.Rx(), 0.25f);
    EXPECT_FLOAT_EQ(p.Ry(), 0.75f);
}

TEST(PointNull, OnlyTheOriginIsNull)
{
    EXPECT_TRUE(at(0.0f, 0.0f).IsNull());
    EXPECT_FALSE(at(0.0f, 0.1f).IsNull());
    EXPECT_FALSE(at(0.1f, 0.0f).IsNull());
    tagTAVRIN_POINT* none = nullptr;
    EXPECT_TRUE(Point(none).IsNull());
}

TEST(PointHitTest, StrictlyCloserThanTwoHundredths)
{
    Point p = at(0.5f, 0.5f);
    Point exactly = at(0.48f, 0.5f);  // 0.0200000107 away in single precision
    Point inside = at(0.4801f, 0.5f);
    Point diagonal = at(0.514f, 0.514f);  // 0.0198 away
    Point far = at(0.515f, 0.515f);       // 0.0212 away
    // The comparison is in double: 0.02f itself (0.0199999996) would count as near.
    EXPECT_FALSE(p.IsNearPoint(exactly));
    EXPECT_TRUE(p.IsNearPoint(inside));
    EXPECT_TRUE(p.IsNearPoint(diagonal));
    EXPECT_FALSE(p.IsNearPoint(far));
}

TEST(PointMove, StaysInsideThePictureEdgesIncluded)
{
    Point p = at(0.5f, 0.5f);
    tagTAVRIN_POINT from = pt(0.5f, 0.5f);
    EXPECT_FALSE(drag(p, from, pt(1.1f, 0.5f)));
    EXPECT_FLOAT_EQ(p.Rx(), 0.5f);
    EXPECT_TRUE(drag(p, from, pt(1.0f, 0.5f)));
    EXPECT_FLOAT_EQ(p.Rx(), 1.0f);

    Point q = at(0.1f, 0.1f);
    EXPECT_FALSE(drag(q, from, pt(0.5f, 0.3f)));  // dy = -0.2
    EXPECT_FLOAT_EQ(q.Ry(), 0.1f);
}

TEST(PointMove, NonFiniteDragIsRefused)
{
    Point p = at(0.5f, 0.5f);
    tagTAVRIN_POINT from = pt(0.5f, 0.5f);
    tagTAVRIN_POINT nan = pt(kNaN, 0.5f);
    EXPECT_FALSE(drag(p, from, nan));
    EXPECT_FALSE(drag(p, from, pt(0.5f, kInf)));
    EXPECT_FALSE(drag(p, nan, from));
    EXPECT_FLOAT_EQ(p.Rx(), 0.5f);
    EXPECT_FLOAT_EQ(p.Ry(), 0.5f);
}

class PointDraw : public GlTest {};

TEST_F(PointDraw, NormalDotIsOneEightPixelPoint)
{
    Point p = at(0.25f, 0.75f);
    p.Draw(nullptr, 640, 480, false);
    EXPECT_EQ(recorded().sequence(),
              concat({enterCalls(kPointSmooth),
                      {"glColor4ub(217,13,176,255)", "glColor4ub(217,13,176,255)", "glPointSize(8)",
                       "glBegin(GL_POINTS)", "glEnd()"},
                      leaveCalls(kPointSmooth)}));
    ASSERT_EQ(recorded().batches.size(), 1u);
    EXPECT_EQ(recorded().batches[0].vertices.size(), 1u);
    EXPECT_FLOAT_EQ(recorded().batches[0].vertices[0].x, 0.5f);
    EXPECT_FLOAT_EQ(recorded().batches[0].vertices[0].y, 0.5f);
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(PointDraw, SelectedDotDrawsHaloFirst)
{
    Point p = at(0.5f, 0.5f);
    p.SetColors(0x010203, 0x040506, 0x070809, 0x0a0b0c);
    p.SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    p.Draw(nullptr, 640, 480, true);
    const auto& batches = recorded().batches;
    ASSERT_EQ(batches.size(), 2u);
    EXPECT_EQ(batches[0].mode, static_cast<GLenum>(GL_POINTS));
    EXPECT_FLOAT_EQ(batches[0].pointSize, 16.0f);
    EXPECT_EQ(batches[0].color, rec::rgba(0x070809));
    EXPECT_FLOAT_EQ(batches[1].pointSize, 8.0f);
    EXPECT_EQ(batches[1].color, rec::rgba(0x040506));
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(PointDraw, HighlightedDotHasNoHaloAndAnOutOfRangeStatusDrawsLikeNormal)
{
    for (auto look : {std::make_pair(2, 0x285ea6u), std::make_pair(7, 0xd90db0u)}) {
        rec::gl().reset();
        Point p = at(0.5f, 0.5f);
        p.SetObjStatus(static_cast<tagTAVRIN_OBJ_STATUS>(look.first));
        p.Draw(nullptr, 640, 480, true);
        ASSERT_EQ(recorded().batches.size(), 1u);
        EXPECT_EQ(recorded().batches[0].color, rec::rgba(look.second));
        EXPECT_FLOAT_EQ(recorded().batches[0].pointSize, 8.0f);
    }
}

TEST_F(PointDraw, CrossIsTwoStrokesOfHalfSizeTwoHundredthsInEveryStatus)
{
    for (int status : {0, 1, 2}) {
        rec::gl().reset();
        Point p = at(0.5f, 0.25f);
        p.SetPointType(TAVRIN_POINT_CROSS);
        p.SetObjStatus(static_cast<tagTAVRIN_OBJ_STATUS>(status));
        p.Draw(nullptr, 1000, 500, true);
        ASSERT_EQ(recorded().batches.size(), 1u) << "status " << status;
        const rec::Batch& cross = recorded().batches[0];
        EXPECT_EQ(cross.mode, static_cast<GLenum>(GL_LINES));
        EXPECT_FLOAT_EQ(cross.lineWidth, 2.0f);
        ASSERT_EQ(cross.vertices.size(), 4u);
        EXPECT_POINT_NEAR(cross.at(0), 0.48f, 0.25f, 1e-6);
        EXPECT_POINT_NEAR(cross.at(1), 0.52f, 0.25f, 1e-6);
        EXPECT_POINT_NEAR(cross.at(2), 0.5f, 0.23f, 1e-6);
        EXPECT_POINT_NEAR(cross.at(3), 0.5f, 0.27f, 1e-6);
        EXPECT_GL_STATE_CLEAN();
    }
    // Any non-zero type draws the cross.
    rec::gl().reset();
    Point p = at(0.5f, 0.5f);
    p.SetPointType(static_cast<tagTAVRIN_POINT_TYPE>(9));
    p.Draw(nullptr, 100, 100, true);
    EXPECT_EQ(recorded().batches.at(0).mode, static_cast<GLenum>(GL_LINES));
}
