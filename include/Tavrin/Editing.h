#ifndef TAVRIN_EDITING_H
#define TAVRIN_EDITING_H

// Vertex editing for any analytics object: its vertex limits, inserting and removing a
// vertex, the edge under the cursor and moving a figure by pixels. Every function works
// through the object's public operations; a refusal returns false (or an empty result)
// and leaves the object as it was. Non-finite input is refused.

#include <Tavrin/VcaObject.h>

#include <vector>

namespace Tavrin {

/// How many vertices a kind takes in its current mode, and whether its outline closes back
/// to the first vertex. A VcaRule: 2..2 as a line, 2..10 as a broken line, 3..10 as a
/// region; a PdcRule: 2..2 in line mode, 3..10 in area mode; the regions and ItsCali
/// 3..10 (ITCPlateRegion 3..20), closed as their `GetClosed` says; Lane 3..10, closed;
/// ITCLine, BehaviorCali, BehaviorCheck, PupilDistance 2..2; SizeFilter and AtmCali 4..4,
/// closed; BinoCali and LfCali 1..1. {0, 0, false} for null.
struct VertexLimits {
    unsigned int minCount;
    unsigned int maxCount;
    bool closed;
};
TAVRIN_API VertexLimits GetVertexLimits(VcaObject* object);

/// Inserts `point` so that it becomes vertex `index` (0-based, 0 to the vertex count:
/// inserting at e + 1 puts it on edge e). Refused at the kind's maximum, for a kind whose
/// count is fixed, for an index past the count, and for a point outside the picture (0..1
/// both ways, bounds included) or not finite. The selected vertex (1-based) keeps naming
/// the same vertex.
TAVRIN_API bool InsertVertex(VcaObject* object, unsigned int index, const tagTAVRIN_POINT& point);

/// Removes vertex `index` (0-based). Refused at the kind's minimum, for a fixed count and
/// for an index past the last vertex. The selected vertex keeps naming the same vertex, or
/// becomes 0 (none) when it was the one removed.
TAVRIN_API bool RemoveVertex(VcaObject* object, unsigned int index);

/// The edge nearest to the cursor within `tolerancePixels`, measured in pixels of a width
/// x height view (the same in x and y). `edge` is its 0-based index (edge e runs from
/// vertex e to vertex e + 1, the closing edge from the last vertex to the first), `foot`
/// the nearest point of the edge (normalised) and `distance` the distance to it in pixels.
/// `hit` is false for a figure with fewer than two vertices, a view without size, a
/// negative or non-finite tolerance, a non-finite cursor, or nothing within tolerance.
struct EdgeHit {
    bool hit;
    unsigned int edge;
    tagTAVRIN_POINT foot;
    float distance;
};
TAVRIN_API EdgeHit HitEdge(VcaObject* object, const tagTAVRIN_POINT& cursor, int width, int height,
                           float tolerancePixels);

/// Moves the whole figure by (dx, dy) pixels of a width x height view through its own
/// `Move`, with exactly its rule (a move that would take a vertex out of the picture is
/// refused whole). True when the vertices moved; false for a refusal, a view without size
/// or a non-finite offset.
TAVRIN_API bool Nudge(VcaObject* object, float dxPixels, float dyPixels, int width, int height);

/// The figure's vertices as its class's `GetPoints` reports them, whatever the class (as
/// many as the kind holds in its current mode: two for a line, four for a size filter);
/// empty for null or an object of a class the library does not define.
TAVRIN_API std::vector<tagTAVRIN_POINT> GetVertices(VcaObject* object);

/// The registry's occupied slots in ascending order, which is the order a host that draws
/// them one after another draws them in. Empty when there is no registry; never creates one.
TAVRIN_API std::vector<int> GetOccupiedSlots();

}  // namespace Tavrin

#endif  // TAVRIN_EDITING_H
