// The triangulation against a reference written straight from its definition (crossing
// check of each candidate's whole remaining polygon, area test, recursion): over thousands
// of polygons the library's faster cut gives the same status and triangles, bit for bit.

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
    double whole = 0.0;
    if (n < 3 || !polygonIsValid(polygon) || (n > 3 && polygonArea(polygon, &whole) != 0)) {
        return -1;
    }
    if (n == 3) {
        out.push_back(corners(polygon, 0, 1, 2));
        return 0;
    }
    for (int i = 0; i < n - 1; ++i) {
        const tagTAVRIN_TRIANGLE_ ear = corners(polygon, i, (i + 1) % n, (i + 2) % n);
        tagTAVRIN_POLYGON remain{};
        remainPolygon(polygon, (i + 1) % n, &remain);
        double rest = 0.0, earArea = 0.0;
        if (polygonIsValid(remain) && polygonArea(remain, &rest) == 0 && triangleArea(ear, &earArea) == 0 &&
            std::fabs(earArea + rest - whole) <= static_cast<double>(1e-8f)) {
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

// Kinds: grid-snapped vertices (collinear runs, repeats), free vertices (mostly
// self-crossing), regular polygons, star-shaped outlines with random radii.
tagTAVRIN_POLYGON randomPolygon(std::mt19937& random, int kind)
{
    std::uniform_int_distribution<int> cell(0, 5);
    std::uniform_real_distribution<float> unit(0.0f, 1.0f);
    tagTAVRIN_POLYGON p{};
    p.count = std::uniform_int_distribution<int>(3, 20)(random);
    const float phase = kind >= 2 ? unit(random) : 0.0f;
    for (int i = 0; i < p.count; ++i) {
        if (kind == 0) {
            p.points[i] = pt(0.2f * static_cast<float>(cell(random)), 0.2f * static_cast<float>(cell(random)));
        } else if (kind == 1) {
            p.points[i] = pt(unit(random), unit(random));
        } else {
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
    int outcomes[3] = {};  // refused, complete, partial
    for (int round = 0; round < 4000; ++round) {
        SCOPED_TRACE(round);
        const tagTAVRIN_POLYGON polygon = randomPolygon(random, round % 4);
        std::vector<tagTAVRIN_TRIANGLE_> expected;
        const int expectedResult = referenceSplit(polygon, expected);
        TriangleBuffer cut;
        TriangleIndices indices;
        std::list<tagTAVRIN_TRIANGLE_> listed(1);  // appended to, never cleared
        ASSERT_EQ(splitPolygon(polygon, cut), expectedResult);
        ASSERT_EQ(splitPolygonIndices(polygon, indices), expectedResult);
        ASSERT_EQ(splitPolygon(polygon, &listed), expectedResult);
        ASSERT_EQ(static_cast<std::size_t>(cut.count), expected.size());
        ASSERT_EQ(indices.count, cut.count);
        ASSERT_EQ(listed.size(), expected.size() + 1);
        if (round % 4 == 2) {
            ASSERT_EQ(cut.count, polygon.count - 2);  // a regular polygon is cut whole
        }
        listed.pop_front();
        auto fromList = listed.begin();
        for (std::size_t i = 0; i < expected.size(); ++i) {
            const unsigned char* c = indices.corners[i];
            ASSERT_TRUE(sameBits(cut.items[i], expected[i])) << "triangle " << i;
            ASSERT_TRUE(sameBits(corners(polygon, c[0], c[1], c[2]), expected[i])) << "triangle " << i;
            ASSERT_TRUE(sameBits(*fromList++, expected[i])) << "triangle " << i;
        }
        ++outcomes[expectedResult != 0 ? 0 : cut.count == polygon.count - 2 ? 1 : 2];
    }
    // Every outcome is exercised, not just the easy one.
    EXPECT_GT(outcomes[0], 500);
    EXPECT_GT(outcomes[1], 500);
    EXPECT_GT(outcomes[2], 0);
}

}  // namespace
