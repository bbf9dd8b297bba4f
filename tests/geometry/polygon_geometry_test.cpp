#include "support/GlTest.h"
#include "support/PolygonBuilders.h"

#include "geometry/PolygonGeometry.h"

#include <Tavrin/Polygon.h>

#include <climits>
#include <list>
#include <utility>

using Tavrin::geometry::polygonArea;
using Tavrin::geometry::polygonIsValid;
using Tavrin::geometry::remainPolygon;
using Tavrin::geometry::segmentsCross;
using Tavrin::geometry::splitPolygon;

TEST(SegmentCrossing, FollowsTheZeroCountsAsPositiveRule)
{
    struct Case {
        const char* name;
        tagTAVRIN_POINT a, b, c, d;
        bool crosses;
    };
    const Case cases[] = {
        {"X", pt(0, 0), pt(1, 1), pt(0, 1), pt(1, 0), true},
        {"Parallel", pt(0, 0), pt(1, 0), pt(0, 1), pt(1, 1), false},
        {"CollinearDisjoint", pt(0, 0), pt(0.1f, 0), pt(0.5f, 0), pt(0.6f, 0), true},
        {"Apart", pt(0, 0), pt(0.4f, 0.4f), pt(0.6f, 0.6f), pt(1, 0.5f), false},
        // c lies on a-b's line with d on the positive side: d3 = 0, d4 > 0, crossing.
        {"TouchingPositiveSide", pt(0, 0), pt(1, 0), pt(0.5f, 0), pt(0.5f, 1), true},
        // The same touch from the negative side: d3 = 0 joins the positive side, d4 < 0.
        {"TouchingNegativeSide", pt(0, 0), pt(1, 0), pt(0.5f, 0), pt(0.5f, -1), false},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(segmentsCross(c.a, c.b, c.c, c.d), c.crosses) << c.name;
    }
}

TEST(PolygonValidity, CrossingsAndCounts)
{
    tagTAVRIN_POLYGON past{};
    past.count = 1 << 30;  // invalid, not read
    const struct {
        const char* name;
        tagTAVRIN_POLYGON polygon;
        bool valid;
    } cases[] = {
        {"Empty", polygonOf({}), true},
        {"OneVertex", polygonOf({pt(0.5f, 0.5f)}), true},
        {"Triangle", polygonOf({pt(0, 0), pt(1, 0), pt(0, 1)}), true},
        {"Square", polygonOf({pt(0, 0), pt(1, 0), pt(1, 1), pt(0, 1)}), true},
        {"BowTieE0CrossesE2", polygonOf({pt(0, 0), pt(1, 1), pt(1, 0), pt(0, 1)}), false},
        {"ClosingEdgeCrossesE1", polygonOf({pt(0, 0), pt(1, 0), pt(0, 1), pt(1, 1)}), false},
        {"HugeCount", past, false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(polygonIsValid(c.polygon), c.valid) << c.name;
    }
}

TEST(PolygonArea, ShoelaceWhicheverTheWindingAndRemainDropsOneVertex)
{
    double area = -5.0;
    EXPECT_EQ(polygonArea(polygonOf({pt(0, 0), pt(1, 0), pt(1, 1), pt(0, 1)}), &area), 0);
    EXPECT_DOUBLE_EQ(area, 1.0);
    EXPECT_EQ(polygonArea(polygonOf({pt(0, 1), pt(1, 1), pt(1, 0), pt(0, 0)}), &area), 0);
    EXPECT_DOUBLE_EQ(area, 1.0);
    area = -5.0;
    EXPECT_EQ(polygonArea(polygonOf({pt(0, 0), pt(1, 0)}), &area), -1);
    EXPECT_EQ(area, -5.0);
    EXPECT_EQ(polygonArea(polygonOf({pt(0, 0), pt(1, 0), pt(1, 1)}), nullptr), -1);

    const tagTAVRIN_POLYGON quad = polygonOf({pt(0, 0), pt(1, 0), pt(1, 1), pt(0, 1)});
    tagTAVRIN_POLYGON remain{};
    ASSERT_EQ(remainPolygon(quad, 1, &remain), 0);
    EXPECT_TRUE(samePoints(Points(remain.points, remain.points + remain.count), {pt(0, 0), pt(1, 1), pt(0, 1)}));
    EXPECT_EQ(remainPolygon(quad, 4, &remain), -1);
    EXPECT_EQ(remainPolygon(quad, -1, &remain), -1);
    EXPECT_EQ(remainPolygon(quad, 0, nullptr), -1);
    EXPECT_EQ(remainPolygon(polygonOf({pt(0, 0), pt(1, 0), pt(1, 1)}), 0, &remain), -1);
}

TEST(Triangulation, ExactTrianglesInCuttingOrder)
{
    struct Case {
        const char* name;
        tagTAVRIN_POLYGON polygon;
        int result;
        std::vector<Points> triangles;  // in cutting order, each as (i, tip, i + 2)
    };
    const Case cases[] = {
        {"ConvexPentagonFansFromVertexZero",
         polygonOf({pt(0.5f, 0.1f), pt(0.9f, 0.4f), pt(0.75f, 0.9f), pt(0.25f, 0.9f), pt(0.1f, 0.4f)}), 0,
         {{pt(0.5f, 0.1f), pt(0.9f, 0.4f), pt(0.75f, 0.9f)},
          {pt(0.5f, 0.1f), pt(0.75f, 0.9f), pt(0.25f, 0.9f)},
          {pt(0.5f, 0.1f), pt(0.25f, 0.9f), pt(0.1f, 0.4f)}}},
        // Tip 1 is reflex: the ear (v0, v1, v2) would cover outside area.
        {"DartSkipsItsReflexTip", polygonOf({pt(0.1f, 0.1f), pt(0.5f, 0.3f), pt(0.9f, 0.1f), pt(0.5f, 0.9f)}), 0,
         {{pt(0.5f, 0.3f), pt(0.9f, 0.1f), pt(0.5f, 0.9f)}, {pt(0.1f, 0.1f), pt(0.5f, 0.3f), pt(0.5f, 0.9f)}}},
        // The reflex corner is vertex 1 and stays reflex for three levels.
        {"LWithReflexSecondVertex",
         polygonOf({pt(0.5f, 0.3f), pt(0.3f, 0.3f), pt(0.3f, 0.6f), pt(0.1f, 0.6f), pt(0.1f, 0.1f), pt(0.5f, 0.1f)}),
         0,
         {{pt(0.3f, 0.3f), pt(0.3f, 0.6f), pt(0.1f, 0.6f)},
          {pt(0.3f, 0.3f), pt(0.1f, 0.6f), pt(0.1f, 0.1f)},
          {pt(0.5f, 0.3f), pt(0.3f, 0.3f), pt(0.1f, 0.1f)},
          {pt(0.5f, 0.3f), pt(0.1f, 0.1f), pt(0.5f, 0.1f)}}},
        {"UShapeWithTwoReflexCorners",
         polygonOf({pt(0.1f, 0.1f), pt(0.3f, 0.1f), pt(0.3f, 0.5f), pt(0.5f, 0.5f), pt(0.5f, 0.15f),
                    pt(0.7f, 0.15f), pt(0.7f, 0.7f), pt(0.1f, 0.7f)}),
         0,
         {{pt(0.1f, 0.1f), pt(0.3f, 0.1f), pt(0.3f, 0.5f)},
          {pt(0.5f, 0.5f), pt(0.5f, 0.15f), pt(0.7f, 0.15f)},
          {pt(0.5f, 0.5f), pt(0.7f, 0.15f), pt(0.7f, 0.7f)},
          {pt(0.3f, 0.5f), pt(0.5f, 0.5f), pt(0.7f, 0.7f)},
          {pt(0.3f, 0.5f), pt(0.7f, 0.7f), pt(0.1f, 0.7f)},
          {pt(0.1f, 0.1f), pt(0.3f, 0.5f), pt(0.1f, 0.7f)}}},
        // Both prongs end on y = 0.1: collinear edges count as crossing.
        {"UShapeWithCollinearEndsIsRefused",
         polygonOf({pt(0.1f, 0.1f), pt(0.3f, 0.1f), pt(0.3f, 0.5f), pt(0.5f, 0.5f), pt(0.5f, 0.1f), pt(0.7f, 0.1f),
                    pt(0.7f, 0.7f), pt(0.1f, 0.7f)}),
         -1, {}},
        {"TwoVerticesAreRefused", polygonOf({pt(0, 0), pt(1, 0)}), -1, {}},
        // The closing edge crosses e1 only, which the check does not compare with it: the
        // polygon passes, no ear passes, and the result is 0 with no triangle.
        {"CrossingPentagonPassesTheCheckButGivesNoTriangle",
         polygonOf({pt(0.5f, 0.1f), pt(0.1f, 0.5f), pt(0.9f, 0.5f), pt(0.9f, 0.8f), pt(0.5f, 0.8f)}), 0, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        std::list<tagTAVRIN_TRIANGLE_> tris;
        EXPECT_EQ(splitPolygon(c.polygon, &tris), c.result);
        ASSERT_EQ(tris.size(), c.triangles.size());
        std::size_t k = 0;
        for (const tagTAVRIN_TRIANGLE_& t : tris) {
            EXPECT_TRUE(samePoints(Points(t.points, t.points + 3), c.triangles[k])) << "triangle " << k;
            ++k;
        }
    }
    EXPECT_EQ(splitPolygon(polygonOf({pt(0, 0), pt(1, 0), pt(1, 1)}), nullptr), -1);
}

// Hosts build polygon records too: a count outside 0 .. 20 is answered without reading
// past the record. Below 4 vertices no edge pair is tested, so a negative count is valid
// like an empty polygon; the other operations refuse it (the fuzzer checks those).
TEST(PolygonRecord, CountsOutsideTheRecordAndTheCallersList)
{
    Tavrin::Polygon figure;
    const std::pair<int, bool> cases[] = {
        {INT_MIN, true}, {INT_MIN + 2, true}, {-1, true}, {21, false}, {INT_MAX, false}};
    for (const auto& c : cases) {
        tagTAVRIN_POLYGON polygon = polygonOf({pt(0, 0), pt(1, 0), pt(1, 1), pt(0, 1)});
        polygon.count = c.first;
        EXPECT_EQ(figure.CheckPolygon(polygon), c.second) << c.first;
        std::list<tagTAVRIN_TRIANGLE_> triangles;
        EXPECT_EQ(figure.SplitPolygon(polygon, &triangles), -1) << c.first;
    }
    // The figure appends to the caller's list and leaves it alone on a refusal.
    std::list<tagTAVRIN_TRIANGLE_> tris(1);
    EXPECT_EQ(figure.SplitPolygon(polygonOf({pt(0, 0), pt(1, 0), pt(1, 1), pt(0, 1)}), &tris), 0);
    EXPECT_EQ(tris.size(), 3u);
    EXPECT_EQ(figure.SplitPolygon(polygonOf({pt(0, 0), pt(1, 0)}), &tris), -1);
    EXPECT_EQ(figure.SplitPolygon(polygonOf({pt(0, 0), pt(1, 0), pt(1, 1)}), nullptr), -1);
    EXPECT_EQ(tris.size(), 3u);
}
