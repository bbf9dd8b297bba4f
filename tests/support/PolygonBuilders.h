#ifndef TAVRIN_TESTS_POLYGONBUILDERS_H
#define TAVRIN_TESTS_POLYGONBUILDERS_H

// Builders and checks for polygon-shaped figures: vertex lists, the polygon record, and
// reading a figure's vertices back.

#include "support/GlTest.h"

#include <Tavrin/Polygon.h>

#include <initializer_list>
#include <vector>

using Points = std::vector<tagTAVRIN_POINT>;

inline tagTAVRIN_POLYGON polygonOf(std::initializer_list<tagTAVRIN_POINT> points)
{
    tagTAVRIN_POLYGON p{};
    for (const tagTAVRIN_POINT& v : points) {
        p.points[p.count++] = v;
    }
    return p;
}

/// The vertices a figure gives back through GetPoints (a buffer of full capacity).
template <class Figure>
Points verticesOf(Figure&& figure)
{
    tagTAVRIN_POINT buffer[20] = {};
    unsigned int count = 0;
    EXPECT_TRUE(figure.GetPoints(buffer, &count));
    return Points(buffer, buffer + (count <= 20 ? count : 20));
}

/// Every entry GetPoints leaves in a buffer of `size` entries first filled with (9, 9), and
/// the count it reports.
template <class Figure>
Points bufferOf(Figure& figure, unsigned int* count, std::size_t size = 10)
{
    Points buffer(size, pt(9.0f, 9.0f));
    EXPECT_TRUE(figure.GetPoints(buffer.data(), count));
    return buffer;
}

/// A figure's arrow (tail, tip) through GetArrowPoints.
template <class Figure>
Points arrowOf(Figure& figure)
{
    Points ends(2, pt(-1.0f, -1.0f));
    EXPECT_TRUE(figure.GetArrowPoints(&ends[0], &ends[1]));
    return ends;
}

/// Sets `points` on a figure, expecting success.
template <class Figure>
void setVertices(Figure& figure, Points points)
{
    ASSERT_TRUE(figure.SetPoints(points.data(), static_cast<unsigned int>(points.size())));
}

/// Exact comparison of two vertex lists, with the index of the first difference.
inline ::testing::AssertionResult samePoints(const Points& actual, const Points& expected)
{
    if (actual.size() != expected.size()) {
        return ::testing::AssertionFailure()
               << "count " << actual.size() << ", expected " << expected.size();
    }
    for (std::size_t i = 0; i < actual.size(); ++i) {
        if (actual[i].x != expected[i].x || actual[i].y != expected[i].y) {
            return ::testing::AssertionFailure()
                   << "vertex " << i << " is (" << actual[i].x << ", " << actual[i].y
                   << "), expected (" << expected[i].x << ", " << expected[i].y << ")";
        }
    }
    return ::testing::AssertionSuccess();
}

/// Comparison within `tol` in each coordinate.
inline ::testing::AssertionResult nearPoints(const Points& actual, const Points& expected,
                                             float tol)
{
    if (actual.size() != expected.size()) {
        return ::testing::AssertionFailure()
               << "count " << actual.size() << ", expected " << expected.size();
    }
    for (std::size_t i = 0; i < actual.size(); ++i) {
        const float ex = actual[i].x - expected[i].x;
        const float ey = actual[i].y - expected[i].y;
        if (!(ex <= tol && ex >= -tol && ey <= tol && ey >= -tol)) {
            return ::testing::AssertionFailure()
                   << "vertex " << i << " is (" << actual[i].x << ", " << actual[i].y
                   << "), expected (" << expected[i].x << ", " << expected[i].y << ")";
        }
    }
    return ::testing::AssertionSuccess();
}

/// The square (0.2, 0.2)-(0.4, 0.4), clockwise on screen from its top-left corner.
inline Points smallSquare()
{
    return {pt(0.2f, 0.2f), pt(0.4f, 0.2f), pt(0.4f, 0.4f), pt(0.2f, 0.4f)};
}

#endif  // TAVRIN_TESTS_POLYGONBUILDERS_H
