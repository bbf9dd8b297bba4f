#include "editing/FigureKind.h"
#include "figures/VertexLimits.h"

#include <Tavrin/Tavrin.h>

#include <cmath>

namespace Tavrin {

/// Reads the state the editing functions need that the classes keep to themselves.
struct EditingAccess {
    static bool lineMode(const PdcRule& rule) { return rule.m_lineMode; }
};

namespace editing {

namespace {

bool pdcLineMode(PdcRule* rule) { return EditingAccess::lineMode(*rule); }

// Calls `f` with the object as its own class, or returns `none` for an unknown class.
template <class R, class F>
R withTyped(VcaObject* object, R none, F&& f)
{
    if (auto* o = dynamic_cast<ShieldRegion*>(object)) return f(o);
    if (auto* o = dynamic_cast<ReferenceRegion*>(object)) return f(o);
    if (auto* o = dynamic_cast<EnterRegion*>(object)) return f(o);
    if (auto* o = dynamic_cast<ITCPlateRegion*>(object)) return f(o);
    if (auto* o = dynamic_cast<VcaRule*>(object)) return f(o);
    if (auto* o = dynamic_cast<ITCLine*>(object)) return f(o);
    if (auto* o = dynamic_cast<Lane*>(object)) return f(o);
    if (auto* o = dynamic_cast<PdcRule*>(object)) return f(o);
    if (auto* o = dynamic_cast<SizeFilter*>(object)) return f(o);
    if (auto* o = dynamic_cast<AtmCali*>(object)) return f(o);
    if (auto* o = dynamic_cast<BehaviorCali*>(object)) return f(o);
    if (auto* o = dynamic_cast<ItsCali*>(object)) return f(o);
    if (auto* o = dynamic_cast<PupilDistance*>(object)) return f(o);
    if (auto* o = dynamic_cast<BinoCali*>(object)) return f(o);
    if (auto* o = dynamic_cast<LfCali*>(object)) return f(o);
    return none;
}

// The kind of each class as itself; the two rules with modes ask theirs.
FigureKind kindFor(ShieldRegion*) { return FigureKind::ShieldRegion; }
FigureKind kindFor(ReferenceRegion*) { return FigureKind::ReferenceRegion; }
FigureKind kindFor(EnterRegion*) { return FigureKind::EnterRegion; }
FigureKind kindFor(ITCPlateRegion*) { return FigureKind::ITCPlateRegion; }
FigureKind kindFor(ITCLine*) { return FigureKind::ITCLine; }
FigureKind kindFor(Lane*) { return FigureKind::Lane; }
FigureKind kindFor(SizeFilter*) { return FigureKind::SizeFilter; }
FigureKind kindFor(AtmCali*) { return FigureKind::AtmCali; }
FigureKind kindFor(BehaviorCali*) { return FigureKind::BehaviorCali; }
FigureKind kindFor(ItsCali*) { return FigureKind::ItsCali; }
FigureKind kindFor(PupilDistance*) { return FigureKind::PupilDistance; }
FigureKind kindFor(BinoCali*) { return FigureKind::BinoCali; }
FigureKind kindFor(LfCali*) { return FigureKind::LfCali; }
FigureKind kindFor(PdcRule* rule) { return pdcLineMode(rule) ? FigureKind::PdcRuleLine : FigureKind::PdcRuleArea; }
FigureKind kindFor(VcaRule* rule)
{
    switch (rule->GetRuleType()) {
    case TAVRIN_RULE_LINE: return FigureKind::VcaRuleLine;
    case TAVRIN_RULE_BROKEN_LINE: return FigureKind::VcaRuleBrokenLine;
    default: return FigureKind::VcaRuleRegion;
    }
}

}  // namespace

FigureKind kindOf(VcaObject* object)
{
    return withTyped(object, FigureKind::None, [](auto* typed) { return kindFor(typed); });
}

KindLimits limitsOf(VcaObject* object)
{
    using namespace figures;
    switch (kindOf(object)) {
    case FigureKind::None: return {0, 0, false};
    case FigureKind::ITCPlateRegion: return {kAreaMinimum, kPlateVertices, object->GetClosed()};
    case FigureKind::ShieldRegion:
    case FigureKind::ReferenceRegion:
    case FigureKind::EnterRegion:
    case FigureKind::VcaRuleRegion:
    case FigureKind::ItsCali: return {kAreaMinimum, kFigureVertices, object->GetClosed()};
    case FigureKind::Lane:
    case FigureKind::PdcRuleArea: return {kAreaMinimum, kFigureVertices, true};
    case FigureKind::VcaRuleBrokenLine: return {kLineVertices, kFigureVertices, false};
    case FigureKind::VcaRuleLine:
    case FigureKind::ITCLine:
    case FigureKind::PdcRuleLine:
    case FigureKind::BehaviorCali:
    case FigureKind::PupilDistance: return {kLineVertices, kLineVertices, false};
    case FigureKind::SizeFilter:
    case FigureKind::AtmCali: return {kRectangleVertices, kRectangleVertices, true};
    case FigureKind::BinoCali:
    case FigureKind::LfCali: return {1, 1, false};
    }
    return {0, 0, false};
}

bool isTripwire(FigureKind kind)
{
    return kind == FigureKind::VcaRuleLine || kind == FigureKind::VcaRuleBrokenLine || kind == FigureKind::ITCLine ||
           kind == FigureKind::PdcRuleLine;
}

bool isRegion(FigureKind kind)
{
    switch (kind) {
    case FigureKind::ShieldRegion:
    case FigureKind::ReferenceRegion:
    case FigureKind::EnterRegion:
    case FigureKind::ITCPlateRegion:
    case FigureKind::VcaRuleRegion:
    case FigureKind::Lane:
    case FigureKind::PdcRuleArea: return true;
    default: return false;
    }
}

bool isFinite(const tagTAVRIN_POINT& p) { return std::isfinite(p.x) && std::isfinite(p.y); }

double twiceSignedArea(const std::vector<tagTAVRIN_POINT>& points)
{
    double twice = 0.0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const tagTAVRIN_POINT& a = points[i];
        const tagTAVRIN_POINT& b = points[(i + 1) % points.size()];
        twice += static_cast<double>(a.x) * b.y - static_cast<double>(b.x) * a.y;
    }
    return twice;
}

std::vector<tagTAVRIN_POINT> pointsOf(VcaObject* object)
{
    tagTAVRIN_POINT buffer[20] = {};
    unsigned int count = 0;
    const bool ok = withTyped(object, false, [&](auto* o) { return o->GetPoints(buffer, &count); });
    if (!ok) {
        return {};
    }
    // A class reports its own count; the fixed-count ones use only the first limit's worth.
    const unsigned int limit = limitsOf(object).maxCount;
    const unsigned int n = count < limit ? count : limit;
    return std::vector<tagTAVRIN_POINT>(buffer, buffer + n);
}

bool setPointsOf(VcaObject* object, const std::vector<tagTAVRIN_POINT>& points)
{
    std::vector<tagTAVRIN_POINT> copy(points);
    return withTyped(object, false, [&](auto* o) {
        return o->SetPoints(copy.data(), static_cast<unsigned int>(copy.size()));
    });
}

}  // namespace editing
}  // namespace Tavrin
