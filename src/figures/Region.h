#ifndef TAVRIN_FIGURES_REGION_H
#define TAVRIN_FIGURES_REGION_H

// What the region rules (shield, reference, enter and plate regions) share: each keeps its
// own copy of the vertices beside a `Polygon` that is the authority on them once set, and
// draws that polygon in forced colours with a label box beside its first vertex. Each
// region class holds its own members and calls these with them.

#include <Tavrin/Polygon.h>
#include <Tavrin/VcaObject.h>

namespace Tavrin {
namespace figures {

/// A region's own copy of its vertices: `capacity` entries and the count of valid ones.
struct RegionCopy {
    tagTAVRIN_POINT* points;
    unsigned int capacity;
    unsigned int* count;
};

/// Refuses (false, nothing changed) a null array, more than `capacity` vertices or a
/// non-finite one; otherwise rewrites the copy (unused entries zeroed) and hands the
/// vertices to the polygon, returning its answer.
bool setRegionPoints(const RegionCopy& copy, Polygon& polygon, tagTAVRIN_POINT* points,
                     unsigned int count);

/// Reads the polygon's vertices into the copy; false when the polygon cannot give them
/// (the copy is then untouched).
bool refreshRegionCopy(const RegionCopy& copy, Polygon& polygon);

/// Refreshes the copy, zeroes `capacity` entries of `out`, copies the vertices and
/// writes their count; false, writing nothing, for a null pointer or a failed refresh.
bool getRegionPoints(const RegionCopy& copy, Polygon& polygon, tagTAVRIN_POINT* out,
                     unsigned int* count);

/// Forces `colors` onto the polygon and draws it; the region always draws with the flag
/// set, whatever the host passed.
void drawRegionPolygon(Polygon& polygon, const unsigned int (&colors)[4], void* context,
                       int width, int height);

/// The shield, reference and plate regions' drawing after the view size is stored: the
/// polygon in `colors`, then the copy refreshed and, when that succeeds, the label box
/// that `object` places beside the first vertex, in the same colours and the polygon's
/// status, showing `labelText`.
void drawFilledRegion(VcaObject& object, const RegionCopy& copy, Polygon& polygon,
                      const unsigned int (&colors)[4], char* labelText, void* context,
                      int width, int height);

}  // namespace figures
}  // namespace Tavrin

#endif  // TAVRIN_FIGURES_REGION_H
