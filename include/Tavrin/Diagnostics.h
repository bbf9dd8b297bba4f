#ifndef TAVRIN_DIAGNOSTICS_H
#define TAVRIN_DIAGNOSTICS_H

// What is wrong with a figure or a scene: the self-crossings of an outline, drawn over
// it, and warnings about the registry's figures that can never fire or are degenerate.

#include <Tavrin/VcaObject.h>

#include <string>
#include <vector>

namespace Tavrin {

/// Edges `edgeA` < `edgeB` (0-based; edge e runs from vertex e to vertex e + 1, the
/// closing edge from the last vertex to the first) cross at `point`.
struct SelfCrossing {
    unsigned int edgeA;
    unsigned int edgeB;
    tagTAVRIN_POINT point;
};

/// Every pair of non-adjacent edges that cross, by the segment test that decides a
/// polygon's fill (collinear edges count as crossing; their point is the middle of where
/// they overlap, or of the gap between them), the closing edge included when `closed`. A
/// closed region with a crossing is drawn without its fill; so is a degenerate one of zero
/// area, which has none. Empty for fewer than 4 vertices, more than 20, a null array or a
/// non-finite vertex.
TAVRIN_API std::vector<SelfCrossing> FindSelfCrossings(const tagTAVRIN_POINT* points, unsigned int count,
                                                       bool closed);

/// Draws the object's self-crossings over it, through the same output as `Draw`: the
/// crossing edges again 3 px wide and a 6 px cross at each crossing, in warning red
/// (0xff2020). Nothing for a figure without crossings or a view without size.
TAVRIN_API void DrawSelfCrossings(VcaObject* object, int width, int height);

enum class SceneHintCode {
    InsideShieldRegion,  ///< a tripwire or entry region lying wholly inside a shield region
    SelfCrossing,        ///< a region whose outline crosses itself
    ZeroArea,            ///< a region of zero area
    ZeroLength,          ///< a line or calibration ruler whose ends coincide
    OutsidePicture,      ///< a vertex outside the picture
};

/// One warning about the figure in registry slot `slot`; `otherSlot` is the shield region
/// of InsideShieldRegion, -1 otherwise. `message` says it in a sentence for the user.
struct SceneHint {
    int slot;
    int otherSlot;
    SceneHintCode code;
    std::string message;
};

/// Every hint for the figures in the registry, in slot order (an empty list when there is
/// no registry or nothing to say). Safe while other threads add and delete figures.
TAVRIN_API std::vector<SceneHint> GetSceneHints();

}  // namespace Tavrin

#endif  // TAVRIN_DIAGNOSTICS_H
