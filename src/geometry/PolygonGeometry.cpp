#include "geometry/PolygonGeometry.h"

#include <cmath>

namespace Tavrin {
namespace geometry {

namespace {

constexpr int kMaxVertices = 20;

// The ear test's tolerance is the single-precision 1e-8 widened to double.
const double kAreaTolerance = static_cast<double>(1e-8f);

tagTAVRIN_POINT minus(const tagTAVRIN_POINT& a, const tagTAVRIN_POINT& b)
{
    return tagTAVRIN_POINT{a.x - b.x, a.y - b.y};
}

bool sameSign(float p, float q)
{
    return (p >= 0.0f && q >= 0.0f) || (p < 0.0f && q < 0.0f);
}

tagTAVRIN_TRIANGLE_ triangleOf(const tagTAVRIN_POLYGON& polygon, int a, int b, int c)
{
    return tagTAVRIN_TRIANGLE_{{polygon.points[a], polygon.points[b], polygon.points[c]}};
}

}  // namespace

float cross(const tagTAVRIN_POINT& u, const tagTAVRIN_POINT& v)
{
    const float first = u.x * v.y;
    const float second = v.x * u.y;
    return first - second;
}

bool segmentsCross(const tagTAVRIN_POINT& a, const tagTAVRIN_POINT& b, const tagTAVRIN_POINT& c,
                   const tagTAVRIN_POINT& d)
{
    const float d1 = cross(minus(a, c), minus(d, c));
    const float d2 = cross(minus(d, c), minus(b, c));
    const float d3 = cross(minus(c, a), minus(b, a));
    const float d4 = cross(minus(b, a), minus(d, a));
    return sameSign(d1, d2) && sameSign(d3, d4);
}

bool polygonIsValid(const tagTAVRIN_POLYGON& polygon)
{
    const int n = polygon.count;
    if (n > kMaxVertices) {
        return false;
    }
    // Before any n - 3: a count near INT_MIN must not overflow. No pair is tested below 4
    // vertices anyway.
    if (n < 4) {
        return true;
    }
    const tagTAVRIN_POINT* p = polygon.points;
    for (int i = 0; i < n - 3; ++i) {
        for (int j = i + 2; j < n - 1; ++j) {
            if (segmentsCross(p[i], p[i + 1], p[j], p[j + 1])) {
                return false;
            }
        }
    }
    // Only the edge two before the closing edge is compared with it.
    return !segmentsCross(p[0], p[n - 1], p[n - 2], p[n - 3]);
}

int polygonArea(const tagTAVRIN_POLYGON& polygon, double* area)
{
    const int n = polygon.count;
    if (area == nullptr || n < 3 || n > kMaxVertices) {
        return -1;
    }
    double sum = 0.0;
    for (int i = 0; i < n; ++i) {
        const int j = (i + 1 == n) ? 0 : i + 1;
        const float first = polygon.points[i].x * polygon.points[j].y;
        const float second = polygon.points[i].y * polygon.points[j].x;
        const float term = first - second;
        sum += term;
    }
    *area = std::fabs(0.5 * sum);
    return 0;
}

int triangleArea(const tagTAVRIN_TRIANGLE_& triangle, double* area)
{
    if (area == nullptr) {
        return -1;
    }
    tagTAVRIN_POLYGON polygon{};
    polygon.count = 3;
    for (int i = 0; i < 3; ++i) {
        polygon.points[i] = triangle.points[i];
    }
    return polygonArea(polygon, area);
}

int remainPolygon(const tagTAVRIN_POLYGON& polygon, int index, tagTAVRIN_POLYGON* remain)
{
    const int n = polygon.count;
    if (remain == nullptr || index < 0 || index >= n || n <= 3 || n > kMaxVertices) {
        return -1;
    }
    int out = 0;
    for (int i = 0; i < n; ++i) {
        if (i != index) {
            remain->points[out++] = polygon.points[i];
        }
    }
    remain->count = n - 1;
    return 0;
}

namespace {

// The first ear of `polygon` (count 4..20) that passes the crossing check of what it
// leaves and the area test against `whole`. On success `remain` and `restArea` describe
// the polygon left, so the next level neither rebuilds nor re-measures it.
bool firstEar(const tagTAVRIN_POLYGON& polygon, double whole, tagTAVRIN_TRIANGLE_& ear,
              tagTAVRIN_POLYGON& remain, double& restArea)
{
    const int n = polygon.count;
    for (int i = 0; i < n - 1; ++i) {
        const int tip = (i + 1) % n;
        if (remainPolygon(polygon, tip, &remain) != 0 || !polygonIsValid(remain)) {
            continue;
        }
        const tagTAVRIN_TRIANGLE_ candidate = triangleOf(polygon, i, tip, (i + 2) % n);
        double rest = 0.0;
        double earArea = 0.0;
        polygonArea(remain, &rest);
        triangleArea(candidate, &earArea);
        if (std::fabs(earArea + rest - whole) <= kAreaTolerance) {
            ear = candidate;
            restArea = rest;
            return true;
        }
    }
    return false;
}

}  // namespace

int splitPolygon(const tagTAVRIN_POLYGON& polygon, TriangleBuffer& triangles)
{
    triangles.count = 0;
    const int n = polygon.count;
    if (n < 3 || n > kMaxVertices || !polygonIsValid(polygon)) {
        return -1;
    }
    // Each level cuts one ear and goes on with what it leaves, which was checked and
    // measured while the ear was tested: two buffers take turns instead of a copy per
    // level.
    tagTAVRIN_POLYGON buffers[2];
    buffers[0] = polygon;
    int current = 0;
    double whole = 0.0;
    if (n > 3) {
        polygonArea(buffers[current], &whole);
    }
    while (buffers[current].count > 3) {
        tagTAVRIN_TRIANGLE_& ear = triangles.items[triangles.count];
        double rest = 0.0;
        if (!firstEar(buffers[current], whole, ear, buffers[1 - current], rest)) {
            // No ear at this level: the triangles found so far stay, and it still counts
            // as done; the caller judges success by the number of triangles.
            return 0;
        }
        ++triangles.count;
        current = 1 - current;
        whole = rest;
    }
    triangles.items[triangles.count++] = triangleOf(buffers[current], 0, 1, 2);
    return 0;
}

int splitPolygon(const tagTAVRIN_POLYGON& polygon, std::list<tagTAVRIN_TRIANGLE_>* triangles)
{
    if (triangles == nullptr) {
        return -1;
    }
    TriangleBuffer cut;
    const int result = splitPolygon(polygon, cut);
    triangles->insert(triangles->end(), cut.items, cut.items + cut.count);
    return result;
}

}  // namespace geometry
}  // namespace Tavrin
