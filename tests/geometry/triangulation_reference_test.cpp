// The triangulation against a reference written straight from its definition: the
// crossing check of every candidate's whole remaining polygon, the area test, recursion.
// The library's cut skips re-testing edge pairs that were already tested and carries
// vertex indices; over thousands of polygons (valid, self-crossing, collinear, repeated
// vertices) it must give the same status and the same triangles, bit for bit.

#include "support/GlTest.h"

#include "geometry/PolygonGeometry.h"

#include <cmath>
#include <cstring>
#include <list>
#include <random>
#include <vector>

namespace {

using namespace Tavrin::geometry;

tagTAVRIN_TRIANGLE_ corners(const tagTAVRIN_POLYGON& p, int a, int b, int c)
{
    return tagTAVRIN_TRIANGLE_{{p.points[a], p.points[b], p.points[c]}};
}

int referenceSplit(const tagTAVRIN_POLYGON& polygon, std::vector<tagTAVRIN_TRIANGLE_>& out)
{
    const int n = polygon.count;
    if (n < 3 || !polygonIsValid(polygon)) {
        return -1;
    }
    if (n == 3) {
        out.push_back(corners(polygon, 0, 1, 2));
        return 0;
    }
    double whole = 0.0;
    if (polygonArea(polygon, &whole) != 0) {
        return -1;
    }
    for (int i = 0; i < n - 1; ++i) {
        const tagTAVRIN_TRIANGLE_ ear = corners(polygon, i, (i + 1) % n, (i + 2) % n);
        tagTAVRIN_POLYGON remain{};
        remainPolygon(polygon, (i + 1) % n, &remain);
        if (!polygonIsValid(remain)) {
            continue;
        }
        double rest = 0.0;
        double earArea = 0.0;
        polygonArea(remain, &rest);
        triangleArea(ear, &earArea);
        if (std::fabs(earArea + rest - whole) <= static_cast<double>(1e-8f)) {
            out.push_back(ear);
            referenceSplit(remain, out);
            return 0;
        }
    }
    return 0;
}

bool sameBits(const tagTAVRIN_TRIANGLE_& a, const tagTAVRIN_TRIANGLE_& b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

// Polygons of every sort: vertices snapped to a coarse grid (collinear runs, repeats),
// free random vertices (mostly self-crossing), and star-shaped outlines with random radii
// (simple, convex or not).
tagTAVRIN_POLYGON randomPolygon(std::mt19937& random, int kind)
{
    std::uniform_int_distribution<int> countOf(3, 20);
    std::uniform_real_distribution<float> unit(0.0f, 1.0f);
    tagTAVRIN_POLYGON p{};
    p.count = countOf(random);
    if (kind == 0) {
        std::uniform_int_distribution<int> cell(0, 5);
        for (int i = 0; i < p.count; ++i) {
            p.points[i] = pt(0.2f * static_cast<float>(cell(random)), 0.2f * static_cast<float>(cell(random)));
        }
    } else if (kind == 1) {
        for (int i = 0; i < p.count; ++i) {
            p.points[i] = pt(unit(random), unit(random));
        }
    } else {
        const float phase = unit(random);
        for (int i = 0; i < p.count; ++i) {
            const float angle = phase + 6.2831853f * static_cast<float>(i) / static_cast<float>(p.count);
            const float radius = (kind == 2) ? 0.4f : 0.05f + 0.4f * unit(random);
            p.points[i] = pt(0.5f + radius * std::cos(angle), 0.5f + radius * std::sin(angle));
        }
    }
    return p;
}

TEST(TriangulationReference, SameStatusAndTrianglesAsTheDefinition)
{
    std::mt19937 random(20240611u);
    int refused = 0;
    int complete = 0;
    int partial = 0;
    for (int round = 0; round < 4000; ++round) {
        const tagTAVRIN_POLYGON polygon = randomPolygon(random, round % 4);
        std::vector<tagTAVRIN_TRIANGLE_> expected;
        const int expectedResult = referenceSplit(polygon, expected);

        TriangleBuffer cut;
        ASSERT_EQ(splitPolygon(polygon, cut), expectedResult) << "round " << round;
        ASSERT_EQ(static_cast<std::size_t>(cut.count), expected.size()) << "round " << round;
        TriangleIndices indices;
        ASSERT_EQ(splitPolygonIndices(polygon, indices), expectedResult) << "round " << round;
        ASSERT_EQ(indices.count, cut.count) << "round " << round;
        std::list<tagTAVRIN_TRIANGLE_> listed(1);  // appended to, never cleared
        ASSERT_EQ(splitPolygon(polygon, &listed), expectedResult) << "round " << round;
        ASSERT_EQ(listed.size(), expected.size() + 1) << "round " << round;
        listed.pop_front();
        auto fromList = listed.begin();
        for (int i = 0; i < cut.count; ++i) {
            ASSERT_TRUE(sameBits(cut.items[i], expected[static_cast<std::size_t>(i)]))
                << "round " << round << ", triangle " << i;
            const unsigned char* c = indices.corners[i];
            ASSERT_TRUE(sameBits(corners(polygon, c[0], c[1], c[2]), expected[static_cast<std::size_t>(i)]))
                << "round " << round << ", triangle " << i;
            ASSERT_TRUE(sameBits(*fromList++, expected[static_cast<std::size_t>(i)]))
                << "round " << round << ", triangle " << i;
        }
        if (expectedResult != 0) {
            ++refused;
        } else if (cut.count == polygon.count - 2) {
            ++complete;
        } else {
            ++partial;
        }
    }
    // Every outcome is exercised, not just the easy one.
    EXPECT_GT(refused, 500);
    EXPECT_GT(complete, 500);
    EXPECT_GT(partial, 0);
    RecordProperty("partial", partial);
}

}  // namespace
