#ifndef TAVRIN_TESTS_POLYGONBUILDERS_H
#define TAVRIN_TESTS_POLYGONBUILDERS_H

// Vertex lists and the polygon record, and an exact comparison of two lists.

#include "support/GlTest.h"

#include <Tavrin/TavrinTypes.h>

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

#endif  // TAVRIN_TESTS_POLYGONBUILDERS_H
