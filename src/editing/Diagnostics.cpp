#include <Tavrin/Diagnostics.h>

#include "editing/FigureKind.h"
#include "editing/RegistryAccess.h"
#include "geometry/PolygonGeometry.h"
#include "graph/GlRender.h"

#include <Tavrin/AtmCali.h>

#include <algorithm>
#include <cmath>

namespace Tavrin {

namespace {

const unsigned int kWarningColor = 0xff2020;
const float kCrossArm = 6.0f;  // pixels
const float kEdgeWidth = 3.0f;  // pixels

// Where edges a-b and c-d meet: the intersection of their lines, or for parallel edges
// the middle of the two inner ends along a-b.
tagTAVRIN_POINT meetingPoint(const tagTAVRIN_POINT& a, const tagTAVRIN_POINT& b, const tagTAVRIN_POINT& c,
                             const tagTAVRIN_POINT& d)
{
    const double rx = b.x - a.x;
    const double ry = b.y - a.y;
    const double sx = d.x - c.x;
    const double sy = d.y - c.y;
    const double denominator = rx * sy - ry * sx;
    if (denominator != 0.0) {
        const double t = ((c.x - a.x) * sy - (c.y - a.y) * sx) / denominator;
        return tagTAVRIN_POINT{static_cast<float>(a.x + t * rx), static_cast<float>(a.y + t * ry)};
    }
    const tagTAVRIN_POINT ends[4] = {a, b, c, d};
    double along[4];
    for (int i = 0; i < 4; ++i) {
        along[i] = (ends[i].x - a.x) * rx + (ends[i].y - a.y) * ry;
    }
    int order[4] = {0, 1, 2, 3};
    std::sort(order, order + 4, [&along](int i, int j) { return along[i] < along[j]; });
    const tagTAVRIN_POINT& p = ends[order[1]];
    const tagTAVRIN_POINT& q = ends[order[2]];
    return tagTAVRIN_POINT{static_cast<float>((static_cast<double>(p.x) + q.x) / 2.0),
                           static_cast<float>((static_cast<double>(p.y) + q.y) / 2.0)};
}

// Edges i < j, tested with their ends in the order the fill's test passes them: the
// closing edge as (first, last) against the edge two before it backwards.
void addIfCrossing(const tagTAVRIN_POINT* p, unsigned int n, unsigned int i, unsigned int j,
                   std::vector<SelfCrossing>& out)
{
    const bool closing = j == n - 1 && i == n - 3;
    const tagTAVRIN_POINT& a = closing ? p[0] : p[i];
    const tagTAVRIN_POINT& b = closing ? p[n - 1] : p[i + 1];
    const tagTAVRIN_POINT& c = closing ? p[n - 2] : p[j];
    const tagTAVRIN_POINT& d = closing ? p[n - 3] : p[(j + 1) % n];
    if (geometry::segmentsCross(a, b, c, d)) {
        out.push_back(SelfCrossing{i, j, meetingPoint(a, b, c, d)});
    }
}

bool insidePolygon(const tagTAVRIN_POINT& q, const std::vector<tagTAVRIN_POINT>& p)
{
    bool inside = false;
    for (std::size_t i = 0, j = p.size() - 1; i < p.size(); j = i++) {
        if ((p[i].y > q.y) != (p[j].y > q.y)) {
            const double x = p[j].x + (static_cast<double>(q.y) - p[j].y) * (static_cast<double>(p[i].x) - p[j].x) /
                                          (static_cast<double>(p[i].y) - p[j].y);
            inside = inside != (q.x < x);
        }
    }
    return inside;
}

const char* nameOf(editing::FigureKind kind)
{
    using editing::FigureKind;
    switch (kind) {
    case FigureKind::ShieldRegion: return "ShieldRegion";
    case FigureKind::ReferenceRegion: return "ReferenceRegion";
    case FigureKind::EnterRegion: return "EnterRegion";
    case FigureKind::ITCPlateRegion: return "ITCPlateRegion";
    case FigureKind::VcaRuleRegion:
    case FigureKind::VcaRuleLine:
    case FigureKind::VcaRuleBrokenLine: return "VcaRule";
    case FigureKind::ITCLine: return "ITCLine";
    case FigureKind::Lane: return "Lane";
    case FigureKind::PdcRuleArea:
    case FigureKind::PdcRuleLine: return "PdcRule";
    case FigureKind::SizeFilter: return "SizeFilter";
    case FigureKind::AtmCali: return "AtmCali";
    case FigureKind::BehaviorCali: return "BehaviorCali";
    case FigureKind::ItsCali: return "ItsCali";
    case FigureKind::PupilDistance: return "PupilDistance";
    case FigureKind::BinoCali: return "BinoCali";
    case FigureKind::LfCali: return "LfCali";
    case FigureKind::None: break;
    }
    return "figure";
}

struct Figure {
    int slot;
    VcaObject* object;
    editing::FigureKind kind;
    std::vector<tagTAVRIN_POINT> points;
};

std::string describe(const Figure& f)
{
    return std::string(nameOf(f.kind)) + " in slot " + std::to_string(f.slot);
}

bool allCoincide(const std::vector<tagTAVRIN_POINT>& p)
{
    return std::all_of(p.begin(), p.end(), [&p](const tagTAVRIN_POINT& q) { return q.x == p[0].x && q.y == p[0].y; });
}

// The hints about one figure on its own.
void hintsOf(const Figure& f, std::vector<SceneHint>& out)
{
    using editing::FigureKind;
    const bool outside = std::any_of(f.points.begin(), f.points.end(), [](const tagTAVRIN_POINT& p) {
        return !(p.x >= 0.0f && p.x <= 1.0f && p.y >= 0.0f && p.y <= 1.0f);
    });
    if (outside) {
        out.push_back({f.slot, -1, SceneHintCode::OutsidePicture, describe(f) + " has a vertex outside the picture"});
    }
    if (editing::isRegion(f.kind) && !f.points.empty()) {
        const bool closed = editing::limitsOf(f.object).closed;
        if (!FindSelfCrossings(f.points.data(), static_cast<unsigned int>(f.points.size()), closed).empty()) {
            out.push_back({f.slot, -1, SceneHintCode::SelfCrossing,
                           describe(f) + " crosses itself: it is drawn unfilled"});
        } else if (f.points.size() < 3 || editing::twiceSignedArea(f.points) == 0.0) {
            out.push_back({f.slot, -1, SceneHintCode::ZeroArea, describe(f) + " has no area"});
        }
    }
    tagTAVRIN_POINT ends[2] = {};
    std::vector<tagTAVRIN_POINT> ruler = f.points;
    if (f.kind == FigureKind::AtmCali && static_cast<AtmCali*>(f.object)->GetLinePoints(&ends[0], &ends[1])) {
        ruler.assign(ends, ends + 2);
    }
    const bool line = f.kind == FigureKind::VcaRuleLine || f.kind == FigureKind::VcaRuleBrokenLine ||
                      f.kind == FigureKind::ITCLine || f.kind == FigureKind::PdcRuleLine ||
                      f.kind == FigureKind::BehaviorCali || f.kind == FigureKind::PupilDistance ||
                      f.kind == FigureKind::AtmCali;
    if (line && ruler.size() >= 2 && allCoincide(ruler)) {
        out.push_back({f.slot, -1, SceneHintCode::ZeroLength, describe(f) + " has zero length"});
    }
}

// A tripwire or entry region wholly inside a shield region: nothing in it is ever seen.
void shieldedHints(const std::vector<Figure>& figures, const Figure& f, std::vector<SceneHint>& out)
{
    using editing::FigureKind;
    if (!(editing::isTripwire(f.kind) || f.kind == FigureKind::EnterRegion) || f.points.empty()) {
        return;
    }
    for (const Figure& shield : figures) {
        if (shield.kind != FigureKind::ShieldRegion || shield.points.size() < 3) {
            continue;
        }
        const bool covered = std::all_of(f.points.begin(), f.points.end(),
                                         [&shield](const tagTAVRIN_POINT& p) { return insidePolygon(p, shield.points); });
        if (covered) {
            out.push_back({f.slot, shield.slot, SceneHintCode::InsideShieldRegion,
                           describe(f) + " lies inside the shield region in slot " + std::to_string(shield.slot) +
                               ": it can never fire"});
        }
    }
}

}  // namespace

std::vector<SelfCrossing> FindSelfCrossings(const tagTAVRIN_POINT* points, unsigned int count, bool closed)
{
    std::vector<SelfCrossing> out;
    if (points == nullptr || count < 4 || count > 20 || !std::all_of(points, points + count, editing::isFinite)) {
        return out;
    }
    const unsigned int n = count;
    try {
        for (unsigned int i = 0; i + 3 < n; ++i) {
            for (unsigned int j = i + 2; j + 1 < n; ++j) {
                addIfCrossing(points, n, i, j, out);
            }
        }
        // The closing edge against every edge not next to it, the one two before first as
        // the fill's test compares it.
        for (unsigned int j = 1; closed && j + 2 < n; ++j) {
            addIfCrossing(points, n, j, n - 1, out);
        }
    } catch (...) {
        out.clear();
    }
    return out;
}

void DrawSelfCrossings(VcaObject* object, int width, int height)
{
    if (width <= 0 || height <= 0) {
        return;
    }
    try {
        const std::vector<tagTAVRIN_POINT> p = editing::pointsOf(object);
        const auto n = static_cast<unsigned int>(p.size());
        const std::vector<SelfCrossing> crossings = FindSelfCrossings(p.data(), n, editing::limitsOf(object).closed);
        if (crossings.empty()) {
            return;
        }
        const float armX = kCrossArm / static_cast<float>(width);
        const float armY = kCrossArm / static_cast<float>(height);
        gl::RenderScope scope(gl::Smoothing::Line, width, height);
        gl::setColor(kWarningColor, 255);
        gl::lineWidth(kEdgeWidth);
        for (const SelfCrossing& c : crossings) {
            for (unsigned int e : {c.edgeA, c.edgeB}) {
                gl::emitSegment(p[e], p[(e + 1) % n]);
            }
            const tagTAVRIN_POINT& q = c.point;
            const tagTAVRIN_POINT cross[4] = {{q.x - armX, q.y - armY}, {q.x + armX, q.y + armY},
                                              {q.x - armX, q.y + armY}, {q.x + armX, q.y - armY}};
            gl::emitPoints(GL_LINES, cross, 4);
        }
    } catch (...) {
        // Out of memory for the vertex list: nothing is drawn.
    }
}

std::vector<SceneHint> GetSceneHints()
{
    std::vector<SceneHint> hints;
    std::vector<std::pair<int, VcaObject*>> slots;
    try {
        slots = RegistryAccess::occupiedSlots();
    } catch (...) {
        return hints;
    }
    try {
        std::vector<Figure> figures;
        for (const auto& slot : slots) {
            figures.push_back(
                Figure{slot.first, slot.second, editing::kindOf(slot.second), editing::pointsOf(slot.second)});
        }
        for (const Figure& f : figures) {
            hintsOf(f, hints);
            shieldedHints(figures, f, hints);
        }
    } catch (...) {
        hints.clear();
    }
    for (const auto& slot : slots) {
        slot.second->ReleaseRef();
    }
    return hints;
}

}  // namespace Tavrin
