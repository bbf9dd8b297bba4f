#include "support/GlTest.h"
#include "support/PolygonBuilders.h"

#include "geometry/PolygonGeometry.h"

#include <Tavrin/Polygon.h>

#include <cmath>
#include <list>

using Tavrin::geometry::polygonArea;
using Tavrin::geometry::polygonIsValid;
using Tavrin::geometry::remainPolygon;
using Tavrin::geometry::segmentsCross;
using Tavrin::geometry::splitPolygon;

namespace {

std::list<tagTAVRIN_TRIANGLE_> split(const tagTAVRIN_POLYGON& p, int* result = nullptr)
{
    std::list<tagTAVRIN_TRIANGLE_> out;
    const int r = splitPolygon(p, &out);
    if (result != nullptr) {
        *result = r;
    }
    return out;
}

}  // namespace

struct CrossCase {
    const char* name;
    tagTAVRIN_POINT a, b, c, d;
    bool crosses;
};

TEST(SegmentCrossing, FollowsTheZeroCountsAsPositiveRule)
{
    const CrossCase cases[] = {
        {"X", pt(0, 0), pt(1, 1), pt(0, 1), pt(1, 0), true},
        {"Parallel", pt(0, 0), pt(1, 0), pt(0, 1), pt(1, 1), false},
        {"CollinearDisjoint", pt(0, 0), pt(0.1f, 0), pt(0.5f, 0), pt(0.6f, 0), true},
        {"Apart", pt(0, 0), pt(0.4f, 0.4f), pt(0.6f, 0.6f), pt(1, 0.5f), false},
        // c lies on a-b's line with d on the positive side: d3 = 0, d4 > 0, crossing.
        {"TouchingPositiveSide", pt(0, 0), pt(1, 0), pt(0.5f, 0), pt(0.5f, 1), true},
        // The same touch from the negative side: d3 = 0 joins the positive side, d4 < 0.
        {"TouchingNegativeSide", pt(0, 0), pt(1, 0), pt(0.5f, 0), pt(0.5f, -1), false},
    };
    for (const CrossCase& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(segmentsCross(c.a, c.b, c.c, c.d), c.crosses);
    }
}

TEST(PolygonValidity, SmallAndSimplePolygonsPass)
{
    EXPECT_TRUE(polygonIsValid(polygonOf({pt(0, 0), pt(1, 0), pt(0, 1)})));
    EXPECT_TRUE(polygonIsValid(polygonOf({pt(0, 0), pt(1, 0), pt(1, 1), pt(0, 1)})));
    EXPECT_TRUE(polygonIsValid(polygonOf({})));
    EXPECT_TRUE(polygonIsValid(polygonOf({pt(0.5f, 0.5f)})));
}

TEST(PolygonValidity, CrossingsAreFound)
{
    // Bow-tie: e0 crosses e2.
    EXPECT_FALSE(polygonIsValid(polygonOf({pt(0, 0), pt(1, 1), pt(1, 0), pt(0, 1)})));
    // Closing edge crosses e1.
    EXPECT_FALSE(polygonIsValid(polygonOf({pt(0, 0), pt(1, 0), pt(0, 1), pt(1, 1)})));
}

TEST(PolygonValidity, ClosingEdgeIsOnlyComparedWithTheEdgeTwoBefore)
{
    // Pentagon whose closing edge p4-p0 crosses only e1 (p1-p2).
    const tagTAVRIN_POLYGON pentagon =
        polygonOf({pt(0.5f, 0.1f), pt(0.1f, 0.5f), pt(0.9f, 0.5f), pt(0.9f, 0.8f), pt(0.5f, 0.8f)});
    EXPECT_TRUE(segmentsCross(pentagon.points[0], pentagon.points[4], pentagon.points[1],
                              pentagon.points[2]));
    EXPECT_TRUE(polygonIsValid(pentagon));
}

TEST(PolygonValidity, CountAboveTwentyIsInvalidNotRead)
{
    tagTAVRIN_POLYGON p{};
    p.count = 21;
    EXPECT_FALSE(polygonIsValid(p));
    p.count = 1 << 30;
    EXPECT_FALSE(polygonIsValid(p));
}

TEST(PolygonArea, ShoelaceWhicheverTheWinding)
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
}

TEST(PolygonRemain, DropsOneVertexKeepingOrder)
{
    const tagTAVRIN_POLYGON quad = polygonOf({pt(0, 0), pt(1, 0), pt(1, 1), pt(0, 1)});
    tagTAVRIN_POLYGON remain{};
    ASSERT_EQ(remainPolygon(quad, 1, &remain), 0);
    EXPECT_EQ(remain.count, 3);
    EXPECT_POINT_NEAR(remain.points[1], 1.0f, 1.0f, 0.0);
    EXPECT_EQ(remainPolygon(quad, 4, &remain), -1);
    EXPECT_EQ(remainPolygon(quad, -1, &remain), -1);
    EXPECT_EQ(remainPolygon(quad, 0, nullptr), -1);
    EXPECT_EQ(remainPolygon(polygonOf({pt(0, 0), pt(1, 0), pt(1, 1)}), 0, &remain), -1);
}

using Triangles = std::vector<Points>;

struct SplitCase {
    const char* name;
    tagTAVRIN_POLYGON polygon;
    int result;
    Triangles triangles;  // in cutting order, each as (i, tip, i + 2)
};

TEST(TriangulationList, ExactTrianglesInCuttingOrder)
{
    const SplitCase cases[] = {
        {"TriangleIsItself",
         polygonOf({pt(0.1f, 0.1f), pt(0.5f, 0.1f), pt(0.3f, 0.4f)}),
         0,
         {{pt(0.1f, 0.1f), pt(0.5f, 0.1f), pt(0.3f, 0.4f)}}},
        {"ConvexQuadFansFromVertexZero",
         polygonOf({pt(0, 0), pt(1, 0), pt(1, 1), pt(0, 1)}),
         0,
         {{pt(0, 0), pt(1, 0), pt(1, 1)}, {pt(0, 0), pt(1, 1), pt(0, 1)}}},
        {"ConvexPentagonFansFromVertexZero",
         polygonOf({pt(0.5f, 0.1f), pt(0.9f, 0.4f), pt(0.75f, 0.9f), pt(0.25f, 0.9f),
         pt(0.1f, 0.4f)}),
         0,
         {{pt(0.5f, 0.1f), pt(0.9f, 0.4f), pt(0.75f, 0.9f)},
         {pt(0.5f, 0.1f), pt(0.75f, 0.9f), pt(0.25f, 0.9f)},
         {pt(0.5f, 0.1f), pt(0.25f, 0.9f), pt(0.1f, 0.4f)}}},
        // Tip 1 is reflex: the ear (v0, v1, v2) would cover outside area.
        {"DartSkipsItsReflexTip",
         polygonOf({pt(0.1f, 0.1f), pt(0.5f, 0.3f), pt(0.9f, 0.1f), pt(0.5f, 0.9f)}),
         0,
         {{pt(0.5f, 0.3f), pt(0.9f, 0.1f), pt(0.5f, 0.9f)},
         {pt(0.1f, 0.1f), pt(0.5f, 0.3f), pt(0.5f, 0.9f)}}},
        // The reflex corner is vertex 1 and stays reflex for three levels.
        {"LWithReflexSecondVertex",
         polygonOf({pt(0.5f, 0.3f), pt(0.3f, 0.3f), pt(0.3f, 0.6f), pt(0.1f, 0.6f),
         pt(0.1f, 0.1f), pt(0.5f, 0.1f)}),
         0,
         {{pt(0.3f, 0.3f), pt(0.3f, 0.6f), pt(0.1f, 0.6f)},
         {pt(0.3f, 0.3f), pt(0.1f, 0.6f), pt(0.1f, 0.1f)},
         {pt(0.5f, 0.3f), pt(0.3f, 0.3f), pt(0.1f, 0.1f)},
         {pt(0.5f, 0.3f), pt(0.1f, 0.1f), pt(0.5f, 0.1f)}}},
        {"UShapeWithTwoReflexCorners",
         polygonOf({pt(0.1f, 0.1f), pt(0.3f, 0.1f), pt(0.3f, 0.5f), pt(0.5f, 0.5f),
         pt(0.5f, 0.15f), pt(0.7f, 0.15f), pt(0.7f, 0.7f), pt(0.1f, 0.7f)}),
         0,
         {{pt(0.1f, 0.1f), pt(0.3f, 0.1f), pt(0.3f, 0.5f)},
         {pt(0.5f, 0.5f), pt(0.5f, 0.15f), pt(0.7f, 0.15f)},
         {pt(0.5f, 0.5f), pt(0.7f, 0.15f), pt(0.7f, 0.7f)},
         {pt(0.3f, 0.5f), pt(0.5f, 0.5f), pt(0.7f, 0.7f)},
         {pt(0.3f, 0.5f), pt(0.7f, 0.7f), pt(0.1f, 0.7f)},
         {pt(0.1f, 0.1f), pt(0.3f, 0.5f), pt(0.1f, 0.7f)}}},
        // Both prongs end on y = 0.1: collinear edges count as crossing.
        {"UShapeWithCollinearEndsIsRefused",
         polygonOf({pt(0.1f, 0.1f), pt(0.3f, 0.1f), pt(0.3f, 0.5f), pt(0.5f, 0.5f),
         pt(0.5f, 0.1f), pt(0.7f, 0.1f), pt(0.7f, 0.7f), pt(0.1f, 0.7f)}),
         -1,
         {}},
        {"BowTieIsRefused",
         polygonOf({pt(0, 0), pt(1, 1), pt(1, 0), pt(0, 1)}),
         -1,
         {}},
        // The closing edge crosses e1, which the check does not compare: the polygon
        // passes, no ear passes, and the result is 0 with no triangle.
        {"CrossingPentagonPassesTheCheckButGivesNoTriangle",
         polygonOf({pt(0.5f, 0.1f), pt(0.1f, 0.5f), pt(0.9f, 0.5f), pt(0.9f, 0.8f),
         pt(0.5f, 0.8f)}),
         0,
         {}},
    };
    for (const SplitCase& c : cases) {
        SCOPED_TRACE(c.name);
        int r = -2;
        const std::list<tagTAVRIN_TRIANGLE_> tris = split(c.polygon, &r);
        EXPECT_EQ(r, c.result);
        ASSERT_EQ(tris.size(), c.triangles.size());
        std::size_t k = 0;
        for (const tagTAVRIN_TRIANGLE_& t : tris) {
            EXPECT_TRUE(samePoints(Points(t.points, t.points + 3), c.triangles[k])) << "triangle " << k;
            ++k;
        }
    }
}

TEST(Triangulation, RefusesNullListAndTooFewVertices)
{
    EXPECT_EQ(splitPolygon(polygonOf({pt(0, 0), pt(1, 0), pt(1, 1)}), nullptr), -1);
    int r = 0;
    EXPECT_TRUE(split(polygonOf({pt(0, 0), pt(1, 0)}), &r).empty());
    EXPECT_EQ(r, -1);
}

TEST(Triangulation, SimplePolygonsGiveNMinusTwoTrianglesCoveringTheArea)
{
    // Regular and star-shaped polygons of 3 to 20 vertices, convex and concave.
    for (int n = 3; n <= 20; ++n) {
        for (int star = 0; star < 2; ++star) {
            if (star == 1 && n % 2 != 0) {
                continue;
            }
            tagTAVRIN_POLYGON p{};
            for (int i = 0; i < n; ++i) {
                const double a = 2.0 * M_PI * i / n;
                const double r = (star == 1 && i % 2 == 1) ? 0.2 : 0.4;
                p.points[p.count++] = pt(static_cast<float>(0.5 + r * std::cos(a)),
                                         static_cast<float>(0.5 + r * std::sin(a)));
            }
            auto tris = split(p);
            ASSERT_EQ(static_cast<int>(tris.size()), n - 2) << "n=" << n << " star=" << star;
            double whole = 0.0;
            polygonArea(p, &whole);
            double sum = 0.0;
            for (const auto& t : tris) {
                double a = 0.0;
                Tavrin::geometry::triangleArea(t, &a);
                sum += a;
            }
            EXPECT_NEAR(sum, whole, 1e-6) << "n=" << n;
        }
    }
}

TEST(Triangulation, GraphMetaAppendsToTheCallersList)
{
    Tavrin::Polygon anyPrimitive;
    std::list<tagTAVRIN_TRIANGLE_> tris(1);
    EXPECT_EQ(anyPrimitive.SplitPolygon(polygonOf({pt(0, 0), pt(1, 0), pt(1, 1), pt(0, 1)}), &tris),
              0);
    EXPECT_EQ(tris.size(), 3u);
    EXPECT_EQ(anyPrimitive.SplitPolygon(polygonOf({pt(0, 0), pt(1, 0)}), &tris), -1);
    EXPECT_EQ(anyPrimitive.SplitPolygon(polygonOf({pt(0, 0), pt(1, 0), pt(1, 1)}), nullptr), -1);
    EXPECT_EQ(tris.size(), 3u);
}
