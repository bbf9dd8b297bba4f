#include "Scene.h"

#include <cmath>
#include <cstdio>

namespace bench {

using namespace Tavrin;

namespace {

constexpr float kTwoPi = 6.2831853f;

// A small linear congruential generator: the same scene on every machine and run.
class Random {
public:
    explicit Random(unsigned int seed) : m_state(seed) {}
    float unit()
    {
        m_state = m_state * 1664525u + 1013904223u;
        return static_cast<float>(m_state >> 8) / 16777216.0f;
    }
    float between(float low, float high) { return low + (high - low) * unit(); }

private:
    unsigned int m_state;
};

// The first sixteen kinds are the sixteen analytics classes, so even the smallest scene
// holds every one; the rest are the other looks of some of them.
enum class Kind {
    RuleLine,
    Shield,
    ItcLine,
    Reference,
    LaneRule,
    Enter,
    PdcLine,
    Plate,
    SizeRect,
    Atm,
    BehaviorLine,
    Check,
    Its,
    Pupil,
    Bino,
    Lf,
    RuleRegion,
    RuleBrokenLine,
    PdcArea,
    SizeSquare,
    BehaviorVertical,
    SecondRuleLine,
    Count
};

// Everything one figure is built from.
struct Placement {
    float cx;
    float cy;
    float radius;
    float angle;
    int index;
};

// Regions and tripwires are numbered across kinds so that vertex counts, concavity and
// arrow directions spread evenly.
struct RegionShapes {
    int next = 0;
    int tripwires = 0;

    std::vector<tagTAVRIN_POINT> take(const Placement& at, int maxVertices)
    {
        const int k = next++;
        const int count = 4 + (k * 7) % (maxVertices - 3);
        const bool concave = k % 3 == 0;
        return regionOutline(at.cx, at.cy, at.radius, count, concave, at.angle);
    }
};

tagTAVRIN_POINT along(const Placement& at, float fraction)
{
    return tagTAVRIN_POINT{at.cx + fraction * at.radius * std::cos(at.angle),
                           at.cy + fraction * at.radius * std::sin(at.angle)};
}

tagTAVRIN_POINT across(const Placement& at, float fraction)
{
    return tagTAVRIN_POINT{at.cx - fraction * at.radius * std::sin(at.angle),
                           at.cy + fraction * at.radius * std::cos(at.angle)};
}

void label(VcaObject& object, int index)
{
    char text[17];
    const int length = std::snprintf(text, sizeof text, "Rule %d", index);
    object.SetLabelText(text, static_cast<unsigned int>(length));
}

VcaObject* ruleRegion(const Placement& at, RegionShapes& shapes)
{
    VcaRule* rule = VcaRule::NewInstance();
    std::vector<tagTAVRIN_POINT> outline = shapes.take(at, 10);
    rule->SetPoints(outline.data(), static_cast<unsigned int>(outline.size()));
    return rule;
}

// Tripwires: every direction of the arrow bar, the line turned all the way round.
VcaObject* ruleLine(const Placement& at, RegionShapes& shapes)
{
    VcaRule* rule = VcaRule::NewInstance();
    tagTAVRIN_POINT ends[2] = {along(at, -1.0f), along(at, 1.0f)};
    rule->SetRuleType(TAVRIN_RULE_LINE);
    rule->SetPoints(ends, 2);
    rule->SetLineType(TAVRIN_LINE_ARROW);
    rule->SetArrowDirection(static_cast<TAVRIN_ARROW_TYPE>(shapes.tripwires++ % 4));
    return rule;
}

VcaObject* ruleBrokenLine(const Placement& at)
{
    VcaRule* rule = VcaRule::NewInstance();
    rule->SetRuleType(TAVRIN_RULE_BROKEN_LINE);
    const int count = 3 + at.index % 8;
    std::vector<tagTAVRIN_POINT> points;
    for (int i = 0; i < count; ++i) {
        const float t = -1.0f + 2.0f * static_cast<float>(i) / static_cast<float>(count - 1);
        tagTAVRIN_POINT p = along(at, t);
        tagTAVRIN_POINT off = across(at, (i % 2 == 0) ? 0.3f : -0.3f);
        points.push_back(tagTAVRIN_POINT{p.x + off.x - at.cx, p.y + off.y - at.cy});
    }
    rule->SetPoints(points.data(), static_cast<unsigned int>(points.size()));
    rule->SetArrowDirection(static_cast<TAVRIN_ARROW_TYPE>(at.index % 4));
    return rule;
}

template <class Region>
VcaObject* region(const Placement& at, RegionShapes& shapes, int maxVertices)
{
    Region* object = Region::NewInstance();
    std::vector<tagTAVRIN_POINT> outline = shapes.take(at, maxVertices);
    object->SetPoints(outline.data(), static_cast<unsigned int>(outline.size()));
    return object;
}

VcaObject* itcLine(const Placement& at)
{
    ITCLine* line = ITCLine::NewInstance();
    tagTAVRIN_POINT ends[2] = {along(at, -1.0f), along(at, 1.0f)};
    line->SetPoints(ends, 2);
    line->SetLineType(static_cast<tagTAVRIN_ITC_LINE_TYPE>(at.index % 2));
    return line;
}

VcaObject* lane(const Placement& at, RegionShapes& shapes)
{
    Lane* lane = Lane::NewInstance();
    std::vector<tagTAVRIN_POINT> outline = shapes.take(at, 10);
    lane->SetPoints(outline.data(), static_cast<unsigned int>(outline.size()));
    tagTAVRIN_POINT tail = along(at, -0.5f);
    tagTAVRIN_POINT tip = along(at, 0.5f);
    lane->SetArrowPoints(tail, tip);
    return lane;
}

VcaObject* pdcLine(const Placement& at)
{
    PdcRule* rule = PdcRule::NewInstance();
    rule->SetVcaPDCLineOrRect(true);
    tagTAVRIN_POINT ends[2] = {along(at, -1.0f), along(at, 1.0f)};
    rule->SetPoints(ends, 2);
    tagTAVRIN_POINT from = ends[0];
    tagTAVRIN_POINT to = across(at, 1.0f);
    rule->SetArrowPoints(from, to);
    if (at.index % 2 == 0) {
        rule->SetVcaPDCLineCali(true);
        tagTAVRIN_POINT cali[2] = {along(at, -0.6f), along(at, 0.6f)};
        rule->SetPDCCaliPoint(cali, 2);
        rule->SetVcaPDCCaliShoulderLine(true);
        float widths[16];
        for (int i = 0; i < 16; ++i) {
            widths[i] = (i % 4 == 0) ? 0.02f + 0.002f * static_cast<float>(i) : 0.0f;
        }
        rule->SetTargetWidthLine(widths);
    }
    return rule;
}

VcaObject* pdcArea(const Placement& at, RegionShapes& shapes)
{
    PdcRule* rule = PdcRule::NewInstance();
    std::vector<tagTAVRIN_POINT> outline = shapes.take(at, 10);
    rule->SetPoints(outline.data(), static_cast<unsigned int>(outline.size()));
    tagTAVRIN_POINT tail = tagTAVRIN_POINT{at.cx, at.cy};
    tagTAVRIN_POINT tip = along(at, 0.8f);
    rule->SetArrowPoints(tail, tip);
    tagTAVRIN_POINT single = across(at, 0.5f);
    rule->SetSinglePoints(&single, 1);
    char text[] = "in 12";
    rule->SetText(text);
    return rule;
}

VcaObject* sizeFilter(const Placement& at, bool square)
{
    SizeFilter* filter = SizeFilter::NewInstance();
    filter->SetWndSize(kViewWidth, kViewHeight);
    filter->SetSizeFilterType(square ? TAVRIN_SIZE_FILTER_SQUARE : TAVRIN_SIZE_FILTER_RECT);
    tagTAVRIN_POINT a{at.cx - at.radius, at.cy - 0.6f * at.radius};
    tagTAVRIN_POINT b{at.cx + at.radius, at.cy + 0.6f * at.radius};
    filter->SetDiagonal(a, b);
    filter->SetColor(at.index % 2);
    return filter;
}

VcaObject* atm(const Placement& at)
{
    AtmCali* cali = AtmCali::NewInstance();
    tagTAVRIN_POINT corners[4] = {{at.cx - at.radius, at.cy - at.radius},
                                  {at.cx + at.radius, at.cy - at.radius},
                                  {at.cx + at.radius, at.cy + at.radius},
                                  {at.cx - at.radius, at.cy + at.radius}};
    cali->SetPoints(corners, 4);
    tagTAVRIN_POINT top{at.cx, at.cy - 0.7f * at.radius};
    tagTAVRIN_POINT bottom{at.cx + 0.1f * at.radius, at.cy + 0.7f * at.radius};
    cali->SetLinePoints(top, bottom);
    return cali;
}

VcaObject* behavior(BehaviorCali* cali, const Placement& at, tagTAVRIN_BEHAV_CALI_TYPE type)
{
    tagTAVRIN_POINT ends[2] = {along(at, -1.0f), along(at, 1.0f)};
    cali->SetPoints(ends, 2);
    cali->SetCaliType(type);
    return cali;
}

VcaObject* its(const Placement& at)
{
    ItsCali* cali = ItsCali::NewInstance();
    tagTAVRIN_POINT corners[4] = {{at.cx - 0.5f * at.radius, at.cy - at.radius},
                                  {at.cx + 0.5f * at.radius, at.cy - at.radius},
                                  {at.cx + at.radius, at.cy + at.radius},
                                  {at.cx - at.radius, at.cy + at.radius}};
    cali->SetPoints(corners, 4);
    char width[] = "3.5 m";
    char height[] = "12 m";
    cali->SetWidthLabelText(width, 5);
    cali->SetHeightlabelText(height, 4);
    return cali;
}

VcaObject* pupil(const Placement& at)
{
    PupilDistance* cali = PupilDistance::NewInstance();
    tagTAVRIN_POINT ends[2] = {along(at, -0.5f), along(at, 0.5f)};
    cali->SetPoints(ends, 2);
    return cali;
}

VcaObject* bino(const Placement& at)
{
    BinoCali* cali = BinoCali::NewInstance();
    cali->SetWndSize(kViewWidth, kViewHeight);
    tagTAVRIN_POINT centre{at.cx, at.cy};
    cali->SetPoints(&centre, 1);
    cali->SetRadius(20 + static_cast<unsigned int>(at.index % 5) * 8);
    return cali;
}

VcaObject* lf(const Placement& at)
{
    LfCali* cali = LfCali::NewInstance();
    tagTAVRIN_POINT centre{at.cx, at.cy};
    cali->SetPoints(&centre, 1);
    return cali;
}

VcaObject* make(Kind kind, const Placement& at, RegionShapes& shapes)
{
    switch (kind) {
    case Kind::RuleRegion: return ruleRegion(at, shapes);
    case Kind::RuleLine:
    case Kind::SecondRuleLine: return ruleLine(at, shapes);
    case Kind::RuleBrokenLine: return ruleBrokenLine(at);
    case Kind::Shield: return region<ShieldRegion>(at, shapes, 10);
    case Kind::Reference: return region<ReferenceRegion>(at, shapes, 10);
    case Kind::Enter: return region<EnterRegion>(at, shapes, 10);
    case Kind::Plate: return region<ITCPlateRegion>(at, shapes, 20);
    case Kind::ItcLine: return itcLine(at);
    case Kind::LaneRule: return lane(at, shapes);
    case Kind::PdcLine: return pdcLine(at);
    case Kind::PdcArea: return pdcArea(at, shapes);
    case Kind::SizeRect: return sizeFilter(at, false);
    case Kind::SizeSquare: return sizeFilter(at, true);
    case Kind::Atm: return atm(at);
    case Kind::BehaviorLine: return behavior(BehaviorCali::NewInstance(), at, TAVRIN_BEHAV_CALI_LINE);
    case Kind::BehaviorVertical:
        return behavior(BehaviorCali::NewInstance(), at, TAVRIN_BEHAV_CALI_VERTICAL);
    case Kind::Check: return behavior(BehaviorCheck::NewInstance(), at, TAVRIN_BEHAV_CALI_VERTICAL);
    case Kind::Its: return its(at);
    case Kind::Pupil: return pupil(at);
    case Kind::Bino: return bino(at);
    case Kind::Lf: return lf(at);
    case Kind::Count: break;
    }
    return nullptr;
}

}  // namespace

std::vector<tagTAVRIN_POINT> regionOutline(float cx, float cy, float radius, int count, bool concave,
                                           float phase)
{
    // Vertices in angular order around the centre: star-shaped, so never self-crossing.
    // Aspect-corrected so that a regular polygon looks regular in the 16:9 view.
    const float aspect = static_cast<float>(kViewHeight) / static_cast<float>(kViewWidth);
    std::vector<tagTAVRIN_POINT> points;
    for (int i = 0; i < count; ++i) {
        const float angle = phase + kTwoPi * static_cast<float>(i) / static_cast<float>(count);
        const float r = (concave && i % 2 == 1) ? 0.45f * radius : radius;
        points.push_back(tagTAVRIN_POINT{cx + r * aspect * std::cos(angle), cy + r * std::sin(angle)});
    }
    return points;
}

Scene::Scene(int figures)
{
    Random random(0x7a5u + static_cast<unsigned int>(figures));
    RegionShapes shapes;
    const int kinds = static_cast<int>(Kind::Count);
    for (int i = 0; i < figures; ++i) {
        Placement at;
        at.index = i / kinds;
        at.radius = random.between(0.04f, 0.1f);
        at.cx = random.between(0.12f, 0.88f);
        at.cy = random.between(0.12f, 0.88f);
        // Golden-angle steps: the lines of one kind turn all the way round.
        at.angle = 2.3999632f * static_cast<float>(i) + random.between(0.0f, 0.3f);
        VcaObject* object = make(static_cast<Kind>(i % kinds), at, shapes);
        if (object == nullptr) {
            continue;
        }
        object->SetWndSize(kViewWidth, kViewHeight);
        label(*object, i);
        // Half of the figures are selected, with their first vertex active.
        if (i % 2 == 0) {
            object->SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
            object->SetSelPointIndex(1);
        } else if (i % 4 == 1) {
            object->SetObjStatus(TAVRIN_OBJ_STATUS_HIGHLIGHTED);
        }
        m_objects.push_back(object);
    }
}

Scene::~Scene()
{
    for (VcaObject* object : m_objects) {
        object->ReleaseRef();
    }
}

void Scene::draw()
{
    for (VcaObject* object : m_objects) {
        object->Draw(nullptr, kViewWidth, kViewHeight, true);
    }
}

}  // namespace bench
