#ifndef TAVRIN_GEOMETRY_POLYGONGEOMETRY_H
#define TAVRIN_GEOMETRY_POLYGONGEOMETRY_H

// Segment crossing, polygon validity, areas and ear-clipping triangulation of the
// 20-vertex polygon record. Knows no OpenGL. Every function refuses a record whose count
// lies outside 0..20 instead of reading past its array.

#include <Tavrin/TavrinTypes.h>

#include <list>

namespace Tavrin {
namespace geometry {

/// cross(u, v) = u.x * v.y - v.x * u.y, in single precision.
float cross(const tagTAVRIN_POINT& u, const tagTAVRIN_POINT& v);

/// Segments a-b and c-d cross: both side-product pairs agree in sign, a zero counting
/// as non-negative (so collinear segments always cross).
bool segmentsCross(const tagTAVRIN_POINT& a, const tagTAVRIN_POINT& b, const tagTAVRIN_POINT& c,
                   const tagTAVRIN_POINT& d);

/// No tested edge pair crosses: every non-adjacent pair of the open chain, and the
/// closing edge against the edge two before it only. Fewer than 4 vertices (a negative
/// count included) are valid; a count above 20 is not.
bool polygonIsValid(const tagTAVRIN_POLYGON& polygon);

/// Shoelace area: float terms summed in double; -1 for a null output or a count
/// outside 3..20.
int polygonArea(const tagTAVRIN_POLYGON& polygon, double* area);
int triangleArea(const tagTAVRIN_TRIANGLE_& triangle, double* area);

/// `polygon` without vertex `index`; -1 for a null output, a bad index or a count
/// outside 4..20.
int remainPolygon(const tagTAVRIN_POLYGON& polygon, int index, tagTAVRIN_POLYGON* remain);

/// The triangles of one polygon of at most 20 vertices, in the order they were cut: a
/// fixed array, so cutting a polygon allocates nothing.
struct TriangleBuffer {
    static constexpr int kCapacity = 18;
    tagTAVRIN_TRIANGLE_ items[kCapacity];
    int count = 0;
};

/// The same triangles as vertex indices of the polygon they were cut from.
struct TriangleIndices {
    static constexpr int kCapacity = 18;
    unsigned char corners[kCapacity][3];
    int count = 0;
};

/// Ear clipping by the area test: at each level the first acceptable ear in index order
/// (vertex 0 is never a tip), then the rest of the polygon the same way. Replaces the
/// contents of `triangles`. 0, or -1 (no triangle) for fewer than 3 or more than 20
/// vertices or an invalid polygon. A level where no ear passes ends the cut, keeping the
/// triangles found so far and still returning 0: success is n - 2 triangles.
int splitPolygon(const tagTAVRIN_POLYGON& polygon, TriangleBuffer& triangles);
/// As above, each triangle given by the indices of its three corners in `polygon`.
int splitPolygonIndices(const tagTAVRIN_POLYGON& polygon, TriangleIndices& triangles);

/// As above, appending to `triangles`; -1 for a null list. May throw std::bad_alloc from
/// the list.
int splitPolygon(const tagTAVRIN_POLYGON& polygon, std::list<tagTAVRIN_TRIANGLE_>* triangles);

}  // namespace geometry
}  // namespace Tavrin

#endif  // TAVRIN_GEOMETRY_POLYGONGEOMETRY_H
