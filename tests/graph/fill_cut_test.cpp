// A filled figure keeps its last triangulation and cuts again only when its vertices
// change: every frame must fill exactly what a fresh cut of the current vertices gives.

#include "support/GlTest.h"
#include "support/PolygonBuilders.h"

#include "geometry/PolygonGeometry.h"

#include <Tavrin/Line.h>
#include <Tavrin/Polygon.h>

#include <cmath>
#include <vector>

using Tavrin::Line;
using Tavrin::Polygon;

namespace {

// The GL_POLYGON vertices a fill of `points` must emit, as glVertex2f receives them.
std::vector<tagTAVRIN_POINT> expectedFill(const Points& points)
{
    tagTAVRIN_POLYGON record{};
    record.count = static_cast<int>(points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        record.points[i] = points[i];
    }
    Tavrin::geometry::TriangleBuffer cut;
    Tavrin::geometry::splitPolygon(record, cut);
    std::vector<tagTAVRIN_POINT> out;
    if (cut.count != record.count - 2) {
        return out;
    }
    for (int i = 0; i < cut.count; ++i) {
        for (const tagTAVRIN_POINT& p : cut.items[i].points) {
            out.push_back(pt(2.0f * p.x, 2.0f * (1.0f - p.y)));
        }
    }
    return out;
}

std::vector<tagTAVRIN_POINT> drawnFill(Polygon& polygon)
{
    rec::gl().reset();
    polygon.Draw(nullptr, 640, 480, true);
    EXPECT_GL_STATE_CLEAN();
    std::vector<tagTAVRIN_POINT> out;
    for (const rec::Batch& batch : rec::gl().batchesOf(GL_POLYGON)) {
        out.insert(out.end(), batch.vertices.begin(), batch.vertices.end());
    }
    return out;
}

::testing::AssertionResult fillsExactly(Polygon& polygon)
{
    const Points vertices = verticesOf(polygon);
    return samePoints(drawnFill(polygon), expectedFill(vertices));
}

const Points kConcave = {pt(0.2f, 0.2f), pt(0.8f, 0.2f), pt(0.8f, 0.8f), pt(0.5f, 0.4f), pt(0.2f, 0.8f)};

}  // namespace

class FillCut : public GlTest {};

TEST_F(FillCut, EveryEditIsFilledAsAFreshCutOfTheNewVertices)
{
    Polygon polygon;
    setVertices(polygon, kConcave);
    ASSERT_EQ(drawnFill(polygon).size(), 9u);
    EXPECT_TRUE(fillsExactly(polygon));
    // A second frame repeats the first call for call.
    rec::gl().reset();
    polygon.Draw(nullptr, 640, 480, true);
    const std::vector<std::string> first = rec::gl().calls;
    rec::gl().reset();
    polygon.Draw(nullptr, 640, 480, true);
    EXPECT_EQ(rec::gl().calls, first);

    // New vertices of the same count, a different cut.
    setVertices(polygon, {pt(0.2f, 0.2f), pt(0.5f, 0.45f), pt(0.8f, 0.2f), pt(0.8f, 0.8f), pt(0.2f, 0.8f)});
    EXPECT_TRUE(fillsExactly(polygon));

    // A whole drag.
    tagTAVRIN_POINT from = pt(0.5f, 0.5f);
    ASSERT_TRUE(drag(polygon, from, pt(0.55f, 0.48f)));
    EXPECT_TRUE(fillsExactly(polygon));

    // A vertex drag that makes the outline cross itself: no fill; dragged back, filled.
    polygon.SetSelPointIndex(2);
    tagTAVRIN_POINT down = pt(0.55f, 0.93f);
    dragVertex(polygon, from, down);
    EXPECT_TRUE(drawnFill(polygon).empty());
    dragVertex(polygon, down, from);
    EXPECT_FALSE(drawnFill(polygon).empty());
    EXPECT_TRUE(fillsExactly(polygon));
}

TEST_F(FillCut, AOneUlpChangeOfOneVertexIsCutAgain)
{
    // Vertex 3 sits exactly on the line through vertices 2 and 4: the crossing check
    // refuses the outline. One ulp off that line, it is a simple polygon again.
    Points points = {pt(0.25f, 0.25f), pt(0.75f, 0.25f), pt(0.75f, 0.5f), pt(0.75f, 0.625f), pt(0.75f, 0.75f),
                     pt(0.25f, 0.75f)};
    Polygon polygon;
    setVertices(polygon, points);
    EXPECT_TRUE(drawnFill(polygon).empty());
    points[3].x = std::nextafter(0.75f, 1.0f);
    setVertices(polygon, points);
    EXPECT_FALSE(drawnFill(polygon).empty());
    EXPECT_TRUE(fillsExactly(polygon));
}

TEST_F(FillCut, ACopyCarriesTheCutAndEachFollowsItsOwnVertices)
{
    Polygon original;
    setVertices(original, kConcave);
    ASSERT_TRUE(fillsExactly(original));
    Polygon copy(original);
    EXPECT_TRUE(fillsExactly(copy));
    setVertices(copy, {pt(0.1f, 0.1f), pt(0.4f, 0.1f), pt(0.4f, 0.4f), pt(0.1f, 0.4f)});
    EXPECT_TRUE(fillsExactly(copy));
    EXPECT_TRUE(fillsExactly(original));
    // Assignment copies the vertices only; the fill follows them all the same.
    original = copy;
    EXPECT_TRUE(fillsExactly(original));
}

TEST_F(FillCut, AMovedTripwireFillsLikeOneDrawnThereFirst)
{
    tagTAVRIN_POINT ends[2] = {pt(0.25f, 0.5f), pt(0.75f, 0.5f)};
    Line moved(ends, 2);
    moved.SetLineType(TAVRIN_LINE_ARROW);
    moved.SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    moved.SetShowPoint(false);
    moved.Draw(nullptr, 1024, 512, true);
    ASSERT_EQ(rec::gl().batchesOf(GL_POLYGON).size(), 2u);

    drag(moved, pt(0.5f, 0.5f), pt(0.5f, 0.3f));
    rec::gl().reset();
    moved.Draw(nullptr, 1024, 512, true);
    const std::vector<std::string> afterMove = rec::gl().calls;

    tagTAVRIN_POINT there[2] = {pt(0.25f, 0.3f), pt(0.75f, 0.3f)};
    Line fresh(there, 2);
    fresh.SetLineType(TAVRIN_LINE_ARROW);
    fresh.SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    fresh.SetShowPoint(false);
    rec::gl().reset();
    fresh.Draw(nullptr, 1024, 512, true);
    EXPECT_EQ(afterMove, rec::gl().calls);
    EXPECT_EQ(rec::gl().batchesOf(GL_POLYGON).size(), 2u);
    EXPECT_GL_STATE_CLEAN();
}
