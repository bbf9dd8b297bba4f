// Coordinates that are finite but too large for a GL vertex: the mapping (2x, 2(1 - y))
// overflows beyond about +-1.7e38. The primitives accept such vertices (no range is
// checked); drawing leaves out every batch and every text that would need one, and keeps
// the rest of the figure and the render state exactly as for ordinary coordinates.
#include "support/GlTest.h"
#include "support/PolygonBuilders.h"

#include <Tavrin/Circle.h>
#include <Tavrin/Label.h>
#include <Tavrin/Line.h>
#include <Tavrin/Point.h>
#include <Tavrin/Polygon.h>
#include <Tavrin/Rectangle.h>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <list>

using namespace Tavrin;

namespace {

// The largest x whose doubled value is still finite, and the next float above it.
const float kLastDrawableX = FLT_MAX / 2.0f;
const float kFirstFarX = std::nextafter(FLT_MAX / 2.0f, FLT_MAX);

std::vector<std::string> pointEnter() { return enterCalls({"GL_POINT_SMOOTH"}); }
std::vector<std::string> pointLeave() { return leaveCalls({"GL_POINT_SMOOTH"}); }

class FarCoordinates : public GlTest {};

}  // namespace

TEST_F(FarCoordinates, PointAtTheLastDrawableXIsDrawnAndOnePastItIsLeftOut)
{
    tagTAVRIN_POINT near = pt(kLastDrawableX, 0.5f);
    Point drawn(&near);
    drawn.Draw(nullptr, 640, 480, true);
    ASSERT_EQ(recorded().batches.size(), 1u);
    EXPECT_EQ(recorded().batches[0].vertices[0].x, FLT_MAX);

    recorded().reset();
    tagTAVRIN_POINT far = pt(kFirstFarX, 0.5f);
    Point skipped(&far);
    skipped.SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    skipped.Draw(nullptr, 640, 480, true);
    // The state is entered and left, the colours are set, but neither the halo nor the
    // dot is emitted.
    EXPECT_TRUE(recorded().batches.empty());
    EXPECT_EQ(recorded().sequence(),
              concat({pointEnter(),
                      {"glColor4ub(255,192,0,255)", "glPointSize(16)", "glColor4ub(40,94,166,255)",
                       "glPointSize(8)"},
                      pointLeave()}));
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(FarCoordinates, FarYAndCrossMarkersAreLeftOut)
{
    // 2 * (1 - y) overflows for y far below the picture.
    tagTAVRIN_POINT far = pt(0.5f, -FLT_MAX);
    Point dot(&far);
    dot.Draw(nullptr, 640, 480, true);
    Point cross(&far);
    cross.SetPointType(TAVRIN_POINT_CROSS);
    cross.Draw(nullptr, 640, 480, true);
    EXPECT_TRUE(recorded().batches.empty());
    EXPECT_GL_STATE_CLEAN();

    // A cross whose centre maps but whose right stroke end does not: the whole cross goes.
    recorded().reset();
    tagTAVRIN_POINT edge = pt(kLastDrawableX, 0.5f);
    Point edgeCross(&edge);
    edgeCross.SetPointType(TAVRIN_POINT_CROSS);
    edgeCross.SetX(FLT_MAX);
    edgeCross.Draw(nullptr, 640, 480, true);
    EXPECT_TRUE(recorded().batchesOf(GL_LINES).empty());
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(FarCoordinates, CircleFarOutDrawsNoDisc)
{
    tagTAVRIN_POINT far = pt(2e38f, 0.5f);
    Circle circle(&far, 1);
    circle.SetWndSize(500, 500);
    circle.SetRadius(50);
    circle.Draw(nullptr, 500, 500, true);
    EXPECT_TRUE(recorded().batchesOf(GL_POLYGON).empty());
    EXPECT_TRUE(recorded().batchesOf(GL_POINTS).empty());
    // Both scopes still set and restore the state.
    EXPECT_EQ(std::count(recorded().calls.begin(), recorded().calls.end(), "glDisable(GL_BLEND)"), 2);
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(FarCoordinates, PolygonWithAFarVertexDrawsOnlyTheOtherHandles)
{
    tagTAVRIN_POINT v[4] = {pt(0.2f, 0.2f), pt(3e38f, 0.2f), pt(0.4f, 0.4f), pt(0.2f, 0.4f)};
    Polygon polygon;
    ASSERT_TRUE(polygon.SetPoints(v, 4));
    polygon.SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    polygon.SetSelPointIndex(1);
    polygon.Draw(nullptr, 640, 480, true);
    // No outline: the loop needs the far vertex. Of the fill, the triangles that do not
    // touch it are drawn, the ones that do are left out.
    EXPECT_TRUE(recorded().batchesOf(GL_LINE_LOOP).empty());
    tagTAVRIN_POLYGON record{};
    record.count = 4;
    std::copy(v, v + 4, record.points);
    std::list<tagTAVRIN_TRIANGLE_> triangles;
    ASSERT_EQ(polygon.SplitPolygon(record, &triangles), 0);
    ASSERT_EQ(triangles.size(), 2u);
    std::vector<const tagTAVRIN_TRIANGLE_*> ordinary;
    for (const tagTAVRIN_TRIANGLE_& t : triangles) {
        if (t.points[0].x < 1.0f && t.points[1].x < 1.0f && t.points[2].x < 1.0f) {
            ordinary.push_back(&t);
        }
    }
    ASSERT_EQ(ordinary.size(), 1u);
    const std::vector<rec::Batch> fill = recorded().batchesOf(GL_POLYGON);
    ASSERT_EQ(fill.size(), 1u);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_POINT_NEAR(fill[0].at(i), ordinary[0]->points[i].x, ordinary[0]->points[i].y, 1e-6f);
    }
    // The three ordinary vertices get their handles (the active one with its halo); the
    // far one gets none.
    const std::vector<rec::Batch> handles = recorded().batchesOf(GL_POINTS);
    ASSERT_EQ(handles.size(), 4u);
    EXPECT_POINT_NEAR(handles[0].at(0), 0.2f, 0.2f, 1e-6f);
    EXPECT_EQ(handles[0].pointSize, 16.0f);
    EXPECT_POINT_NEAR(handles[2].at(0), 0.4f, 0.4f, 1e-6f);
    EXPECT_POINT_NEAR(handles[3].at(0), 0.2f, 0.4f, 1e-6f);
    EXPECT_GL_STATE_CLEAN();

    // An open outline keeps the edges that do not touch the far vertex.
    recorded().reset();
    polygon.SetClosed(false);
    polygon.SetObjStatus(TAVRIN_OBJ_STATUS_NORMAL);
    polygon.Draw(nullptr, 640, 480, true);
    const std::vector<rec::Batch> edges = recorded().batchesOf(GL_LINES);
    ASSERT_EQ(edges.size(), 1u);
    EXPECT_POINT_NEAR(edges[0].at(0), 0.4f, 0.4f, 1e-6f);
    EXPECT_POINT_NEAR(edges[0].at(1), 0.2f, 0.4f, 1e-6f);
}

TEST_F(FarCoordinates, LabelAtAFarCornerSetsNoRasterPosition)
{
    tagTAVRIN_POINT corners[4] = {pt(-3e38f, 0.1f), pt(0.2f, 0.1f), pt(0.2f, 0.2f), pt(-3e38f, 0.2f)};
    Label label(corners, 4);
    label.SetText(const_cast<char*>("far"));
    label.Draw(nullptr, 640, 480, true);
    EXPECT_TRUE(recorded().texts.empty());
    EXPECT_EQ(recorded().listsGenerated, 0);
    EXPECT_EQ(recorded().sequence(),
              concat({enterCalls({"GL_POLYGON_SMOOTH", "GL_LINE_SMOOTH"}),
                      {"glColor4ub(217,13,176,255)"},
                      leaveCalls({"GL_POLYGON_SMOOTH", "GL_LINE_SMOOTH"})}));
    EXPECT_GL_STATE_CLEAN();
}

// Drags whose result would overflow: refused whole, like a drag that leaves the picture.
TEST_F(FarCoordinates, RectangleCornerDragIsRefusedWhenANeighbourWouldOverflow)
{
    // Corner 0 far left, its neighbour corner 3 far right: dragging corner 0 back into the
    // picture would carry corner 3's x to infinity.
    tagTAVRIN_POINT v[4] = {pt(-3e38f, 0.5f), pt(0.5f, 0.5f), pt(0.5f, 0.6f), pt(3e38f, 0.6f)};
    Rectangle rectangle;
    ASSERT_TRUE(rectangle.SetPoints(v, 4));
    rectangle.SetSelPointIndex(1);
    dragVertex(rectangle, pt(0.0f, 0.5f), pt(3e38f, 0.5f));
    EXPECT_TRUE(samePoints(verticesOf(rectangle), Points(v, v + 4)));

    // The same drag with a neighbour that stays finite goes through, unclamped.
    v[3] = pt(1.0f, 0.6f);
    ASSERT_TRUE(rectangle.SetPoints(v, 4));
    dragVertex(rectangle, pt(0.0f, 0.5f), pt(3e38f, 0.5f));
    EXPECT_EQ(verticesOf(rectangle)[0].x, 0.0f);
    EXPECT_EQ(verticesOf(rectangle)[3].x, 3e38f);
}

TEST_F(FarCoordinates, LineDragIsRefusedWhenAnArrowPointWouldOverflow)
{
    tagTAVRIN_POINT ends[2] = {pt(-3e38f, 0.5f), pt(-3e38f, 0.6f)};
    Line line;
    ASSERT_TRUE(line.SetPoints(ends, 2));
    tagTAVRIN_POINT arrow[2] = {pt(3e38f, 0.5f), pt(0.5f, 0.5f)};
    ASSERT_TRUE(line.SetArrowPoints(arrow[0], arrow[1]));
    drag(line, pt(0.0f, 0.5f), pt(3e38f, 0.5f));
    EXPECT_TRUE(samePoints(verticesOf(line), {ends[0], ends[1]}));
    EXPECT_TRUE(samePoints(arrowOf(line), {arrow[0], arrow[1]}));

    // With the arrow inside the picture the same drag moves all four points.
    arrow[0] = pt(0.5f, 0.5f);
    ASSERT_TRUE(line.SetArrowPoints(arrow[0], arrow[1]));
    drag(line, pt(0.0f, 0.5f), pt(3e38f, 0.5f));
    EXPECT_EQ(verticesOf(line)[0].x, 0.0f);
    EXPECT_EQ(arrowOf(line)[0].x, 3e38f);
}
