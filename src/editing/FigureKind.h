#ifndef TAVRIN_EDITING_FIGUREKIND_H
#define TAVRIN_EDITING_FIGUREKIND_H

// What the editing functions need to know of an analytics object without its class: its
// kind and mode, its vertex limits, and its vertices read and written through the class's
// own GetPoints and SetPoints.

#include <Tavrin/VcaObject.h>

#include <vector>

namespace Tavrin {
namespace editing {

enum class FigureKind {
    None,
    ShieldRegion,
    ReferenceRegion,
    EnterRegion,
    ITCPlateRegion,
    VcaRuleRegion,
    VcaRuleLine,
    VcaRuleBrokenLine,
    ITCLine,
    Lane,
    PdcRuleArea,
    PdcRuleLine,
    SizeFilter,
    AtmCali,
    BehaviorCali,
    ItsCali,
    PupilDistance,
    BinoCali,
    LfCali,
};

/// The kind and current mode of `object`; None for null.
FigureKind kindOf(VcaObject* object);

/// Vertex counts a kind accepts, and whether its outline closes back to its first vertex.
struct KindLimits {
    unsigned int minCount;
    unsigned int maxCount;
    bool closed;
};
KindLimits limitsOf(VcaObject* object);

/// Tripwires: the figures whose segments are crossed from side "A" to side "B".
bool isTripwire(FigureKind kind);
/// Regions: the figures whose outline is entered and left.
bool isRegion(FigureKind kind);

/// Both coordinates finite.
bool isFinite(const tagTAVRIN_POINT& p);
/// Twice the shoelace area of the closed outline, float products summed in double:
/// positive when it turns clockwise on screen (y down).
double twiceSignedArea(const std::vector<tagTAVRIN_POINT>& points);

/// The object's vertices through its class's GetPoints; empty when it refuses.
std::vector<tagTAVRIN_POINT> pointsOf(VcaObject* object);
/// The class's SetPoints.
bool setPointsOf(VcaObject* object, const std::vector<tagTAVRIN_POINT>& points);

}  // namespace editing
}  // namespace Tavrin

#endif  // TAVRIN_EDITING_FIGUREKIND_H
