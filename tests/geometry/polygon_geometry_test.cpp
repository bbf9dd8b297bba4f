#include "support/GlTest.h"
#include "support/PolygonBuilders.h"

#include "geometry/PolygonGeometry.h"

#include <Tavrin/Polygon.h>

#include <climits>
#include <cmath>
#include <list>
#include <utility>

using Tavrin::geometry::polygonArea;
using Tavrin::geometry::polygonIsValid;
using Tavrin::geometry::remainPolygon;
using Tavrin::geometry::triangleArea;

TEST(PolygonValidity, CrossingsAndCounts)
{
    tagTAVRIN_POLYGON past{};
    past.count = 1 << 30;  // invalid, not read
    tagTAVRIN_POLYGON full{};  // a valid shape in all 20 places, told 21
    for (int i = 0; i < 20; ++i) {
        full.points[i] = pt(0.5f + 0.4f * std::cos(i * 0.314f), 0.5f + 0.4f * std::sin(i * 0.314f));
    }
    full.count = 21;
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
        {"TwentyOneVertices", full, false},
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
    const tagTAVRIN_TRIANGLE_ triangle{{pt(0, 0), pt(1, 0), pt(0, 1)}};
    EXPECT_EQ(triangleArea(triangle, nullptr), -1);

    const tagTAVRIN_POLYGON quad = polygonOf({pt(0, 0), pt(1, 0), pt(1, 1), pt(0, 1)});
    tagTAVRIN_POLYGON remain{};
    ASSERT_EQ(remainPolygon(quad, 1, &remain), 0);
    EXPECT_TRUE(samePoints(Points(remain.points, remain.points + remain.count), {pt(0, 0), pt(1, 1), pt(0, 1)}));
    EXPECT_EQ(remainPolygon(quad, 4, &remain), -1);
    EXPECT_EQ(remainPolygon(quad, -1, &remain), -1);
    EXPECT_EQ(remainPolygon(quad, 0, nullptr), -1);
    EXPECT_EQ(remainPolygon(polygonOf({pt(0, 0), pt(1, 0), pt(1, 1)}), 0, &remain), -1);
}
