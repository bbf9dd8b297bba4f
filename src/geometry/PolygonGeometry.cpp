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

// The part of a polygon still to be cut: its vertices and, for each, its index in the
// polygon the cut started from.
struct Remaining {
    tagTAVRIN_POLYGON polygon;
    unsigned char origin[kMaxVertices];
};

// `from` without vertex `index` (count 4..20), as remainPolygon writes it.
void removeVertex(const Remaining& from, int index, Remaining& to)
{
    const int n = from.polygon.count;
    int out = 0;
    for (int i = 0; i < n; ++i) {
        if (i != index) {
            to.polygon.points[out] = from.polygon.points[i];
            to.origin[out] = from.origin[i];
            ++out;
        }
    }
    to.polygon.count = n - 1;
}

// polygonIsValid(remain) for a remain cut from a valid polygon, whose chain edge
// `newEdge` joins the two neighbours of the removed vertex (none when the last vertex was
// removed: newEdge is then past the chain). Every other chain pair that polygonIsValid
// tests is a pair of the polygon it was cut from, tested there and found apart, so only
// the pairs with the new edge and the closing-edge pair are tested again.
bool staysValid(const tagTAVRIN_POLYGON& remain, int newEdge)
{
    const int m = remain.count;
    const tagTAVRIN_POINT* r = remain.points;
    if (m < 4) {
        return true;
    }
    if (newEdge <= m - 2) {
        for (int k = 0; k + 2 <= newEdge; ++k) {
            if (segmentsCross(r[k], r[k + 1], r[newEdge], r[newEdge + 1])) {
                return false;
            }
        }
        for (int k = newEdge + 2; k <= m - 2; ++k) {
            if (segmentsCross(r[newEdge], r[newEdge + 1], r[k], r[k + 1])) {
                return false;
            }
        }
    }
    return !segmentsCross(r[0], r[m - 1], r[m - 2], r[m - 3]);
}

// The first ear of `current` (count 4..20, valid) that passes the crossing check of what
// it leaves and the area test against `whole`. On success `ear` holds the ear's corners
// as indices of the first polygon, and `rest` and `restArea` the polygon left, so the
// next level neither rebuilds nor re-measures it.
bool firstEar(const Remaining& current, double whole, unsigned char (&ear)[3], Remaining& rest,
              double& restArea)
{
    const tagTAVRIN_POLYGON& polygon = current.polygon;
    const int n = polygon.count;
    for (int i = 0; i < n - 1; ++i) {
        const int tip = i + 1;
        const int next = (i + 2) % n;
        removeVertex(current, tip, rest);
        // The edge from vertex i to the vertex after the tip takes the place of the
        // tip's two edges, at index i of what is left.
        if (!staysValid(rest.polygon, i)) {
            continue;
        }
        const tagTAVRIN_TRIANGLE_ candidate = triangleOf(polygon, i, tip, next);
        double remainArea = 0.0;
        double earArea = 0.0;
        polygonArea(rest.polygon, &remainArea);
        triangleArea(candidate, &earArea);
        if (std::fabs(earArea + remainArea - whole) <= kAreaTolerance) {
            ear[0] = current.origin[i];
            ear[1] = current.origin[tip];
            ear[2] = current.origin[next];
            restArea = remainArea;
            return true;
        }
    }
    return false;
}

}  // namespace

int splitPolygonIndices(const tagTAVRIN_POLYGON& polygon, TriangleIndices& triangles)
{
    triangles.count = 0;
    const int n = polygon.count;
    if (n < 3 || n > kMaxVertices || !polygonIsValid(polygon)) {
        return -1;
    }
    // Each level cuts one ear and goes on with what it leaves, which was checked and
    // measured while the ear was tested: two buffers take turns instead of a copy per
    // level.
    Remaining buffers[2];
    buffers[0].polygon = polygon;
    for (int i = 0; i < n; ++i) {
        buffers[0].origin[i] = static_cast<unsigned char>(i);
    }
    int current = 0;
    double whole = 0.0;
    if (n > 3) {
        polygonArea(buffers[current].polygon, &whole);
    }
    while (buffers[current].polygon.count > 3) {
        double rest = 0.0;
        unsigned char(&ear)[3] = triangles.corners[triangles.count];
        if (!firstEar(buffers[current], whole, ear, buffers[1 - current], rest)) {
            // No ear at this level: the triangles found so far stay, and it still counts
            // as done; the caller judges success by the number of triangles.
            return 0;
        }
        ++triangles.count;
        current = 1 - current;
        whole = rest;
    }
    unsigned char(&last)[3] = triangles.corners[triangles.count++];
    for (int k = 0; k < 3; ++k) {
        last[k] = buffers[current].origin[k];
    }
    return 0;
}

int splitPolygon(const tagTAVRIN_POLYGON& polygon, TriangleBuffer& triangles)
{
    TriangleIndices cut;
    const int result = splitPolygonIndices(polygon, cut);
    triangles.count = cut.count;
    for (int i = 0; i < cut.count; ++i) {
        const unsigned char* c = cut.corners[i];
        triangles.items[i] = triangleOf(polygon, c[0], c[1], c[2]);
    }
    return result;
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
