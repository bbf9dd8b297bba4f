// Polygon records are built by hosts too: a count outside 0 .. 20 (negative, past the
// array, near the int limits) is answered without reading past the record's 20 vertices
// and without arithmetic overflow on the count.
#include <Tavrin/Polygon.h>

#include <gtest/gtest.h>

#include <climits>
#include <list>
#include <ostream>

using Tavrin::Polygon;

namespace {

struct CountCase {
    const char* name;
    int count;
    bool valid;  // CheckPolygon
};

tagTAVRIN_POLYGON squareRecord(int count)
{
    tagTAVRIN_POLYGON polygon{};
    polygon.count = count;
    const tagTAVRIN_POINT corners[4] = {{0.0f, 0.0f}, {1.0f, 0.0f}, {1.0f, 1.0f}, {0.0f, 1.0f}};
    for (int i = 0; i < 20; ++i) {
        polygon.points[i] = corners[i % 4];
    }
    return polygon;
}

}  // namespace

// Below 4 vertices no edge pair is tested, so a negative count is valid like an empty
// polygon; past 20 the record cannot hold the polygon and it is invalid.
TEST(PolygonRecordCount, IsRefusedOrToleratedWithoutReadingPastTheRecord)
{
    const CountCase cases[] = {
        {"IntMin", INT_MIN, true}, {"IntMinPlusTwo", INT_MIN + 2, true},
        {"MinusOne", -1, true}, {"TwentyOne", 21, false},
        {"IntMax", INT_MAX, false},
    };
    for (const CountCase& c : cases) {
        SCOPED_TRACE(c.name);
        Polygon figure;
        const tagTAVRIN_POLYGON polygon = squareRecord(c.count);
        EXPECT_EQ(figure.CheckPolygon(polygon), c.valid);

        std::list<tagTAVRIN_TRIANGLE_> triangles;
        EXPECT_EQ(figure.SplitPolygon(polygon, &triangles), -1);
        EXPECT_TRUE(triangles.empty());

        double area = 42.0;
        EXPECT_EQ(figure.PolygonArea(polygon, &area), -1);
        EXPECT_EQ(area, 42.0);

        tagTAVRIN_POLYGON remain{};
        remain.count = 7;
        EXPECT_EQ(figure.GetRemainPolygon(polygon, 0, &remain), -1);
        EXPECT_EQ(remain.count, 7);
    }
}

