#include "FigureKinds.h"

#include "SceneSchema.h"

#include <Tavrin/AtmCali.h>
#include <Tavrin/BehaviorCali.h>
#include <Tavrin/BehaviorCheck.h>
#include <Tavrin/BinoCali.h>
#include <Tavrin/EnterRegion.h>
#include <Tavrin/ITCLine.h>
#include <Tavrin/ITCPlateRegion.h>
#include <Tavrin/ItsCali.h>
#include <Tavrin/Lane.h>
#include <Tavrin/LfCali.h>
#include <Tavrin/PdcRule.h>
#include <Tavrin/PupilDistance.h>
#include <Tavrin/ReferenceRegion.h>
#include <Tavrin/ShieldRegion.h>
#include <Tavrin/SizeFilter.h>
#include <Tavrin/VcaRule.h>

#include <array>
#include <utility>

namespace Tavrin {
namespace render {

namespace {

using Vertices = std::vector<tagTAVRIN_POINT>;

// ---- Fields, read by the rules the schema gives them. ---------------------------------

/// The schema of the kind being built.
const KindSchema& kindOf(const FigureBuilder& b)
{
    static const KindSchema none{"", KindGroup::Region, {}, {}};
    const KindSchema* schema = findKindSchema(b.kind());
    return schema != nullptr ? *schema : none;
}

const FieldSchema& fieldOf(const FigureBuilder& b, const char* key) { return kindOf(b).field(key); }

std::optional<bool> flag(FigureBuilder& b, const char* key) { return b.fields().flag(fieldOf(b, key).key); }

std::optional<int> choice(FigureBuilder& b, const char* key)
{
    const FieldSchema& f = fieldOf(b, key);
    return b.fields().choice(f.key, f.choices);
}

std::optional<int> integer(FigureBuilder& b, const char* key)
{
    const FieldSchema& f = fieldOf(b, key);
    return b.fields().integer(f.key, f.min, f.max);
}

std::optional<QByteArray> text(FigureBuilder& b, const char* key)
{
    const FieldSchema& f = fieldOf(b, key);
    return b.fields().text(f.key, f.max);
}

std::optional<unsigned int> colour(FigureBuilder& b, const char* key) { return b.fields().colour(fieldOf(b, key).key); }

std::optional<tagTAVRIN_POINT> point(FigureBuilder& b, const char* key) { return b.fields().point(fieldOf(b, key).key); }

std::optional<std::vector<float>> numbers(FigureBuilder& b, const char* key)
{
    const FieldSchema& f = fieldOf(b, key);
    return b.fields().numbers(f.key, f.max, 0.0, 1.0);
}

/// Two points [[x, y], [x, y]] (an arrow, a line, a calibration segment), if present.
std::optional<std::pair<tagTAVRIN_POINT, tagTAVRIN_POINT>> pointPair(FigureBuilder& b, const char* key)
{
    const char* k = fieldOf(b, key).key;
    const std::optional<Vertices> read =
        b.fields().points(k, 2, 2, QStringLiteral("%1 takes 2 points").arg(QLatin1String(k)));
    if (!read) {
        return std::nullopt;
    }
    return std::make_pair((*read)[0], (*read)[1]);
}

/// The vertices in the kind's mode `mode` (an index into its vertex counts).
Vertices vertices(FigureBuilder& b, std::size_t mode = 0)
{
    const std::vector<VertexCount>& counts = kindOf(b).vertices;
    if (mode >= counts.size()) {
        return b.vertices(0, 0);
    }
    const VertexCount& v = counts[mode];
    return b.vertices(v.min, v.max, QLatin1String(v.mode));
}

unsigned int countOf(const Vertices& v)
{
    return static_cast<unsigned int>(v.size());
}

// ---- Regions: a polygon with a label beside its first vertex. -----------------------

template <class Region>
void setupRegion(FigureBuilder& b)
{
    Vertices v = vertices(b);
    const std::optional<bool> closed = flag(b, "closed");
    Region* region = b.adopt(Region::NewInstance());
    b.require(region->SetPoints(v.data(), countOf(v)), "vertices");
    if (closed) {
        region->SetClosed(*closed);
    }
}

void setupShieldRegion(FigureBuilder& b)
{
    setupRegion<ShieldRegion>(b);
}

void setupReferenceRegion(FigureBuilder& b)
{
    setupRegion<ReferenceRegion>(b);
}

void setupEnterRegion(FigureBuilder& b)
{
    setupRegion<EnterRegion>(b);
}

void setupITCPlateRegion(FigureBuilder& b)
{
    setupRegion<ITCPlateRegion>(b);
}

// ---- Rules. ---------------------------------------------------------------------------

void setupVcaRule(FigureBuilder& b)
{
    const std::optional<int> ruleType = choice(b, "ruleType");
    // The vertex counts are listed in rule-type order.
    Vertices v = vertices(b, static_cast<std::size_t>(ruleType.value_or(TAVRIN_RULE_REGION)));
    const std::optional<int> arrowDirection = choice(b, "arrowDirection");
    const std::optional<int> lineType = choice(b, "lineType");
    const std::optional<bool> traversePlane = flag(b, "traversePlane");
    const std::optional<bool> closed = flag(b, "closed");
    const std::optional<unsigned int> normal = colour(b, "normalColor");
    const std::optional<unsigned int> selected = colour(b, "selectedColor");

    VcaRule* rule = b.adopt(VcaRule::NewInstance());
    // The type first: SetPoints fills the primitive of the current type.
    if (ruleType) {
        rule->SetRuleType(static_cast<tagTAVRIN_RULE_TYPE>(*ruleType));
    }
    b.require(rule->SetPoints(v.data(), countOf(v)), "vertices");
    if (arrowDirection) {
        rule->SetArrowDirection(static_cast<TAVRIN_ARROW_TYPE>(*arrowDirection));
    }
    if (lineType) {
        rule->SetLineType(static_cast<tagTAVRIN_LINE_TYPE>(*lineType));
    }
    if (traversePlane) {
        rule->SetIsTraversePlane(*traversePlane);
    }
    if (closed) {
        rule->SetClosed(*closed);
    }
    if (normal || selected) {
        rule->SetColors(normal.value_or(0x285ea6), selected.value_or(0xd90db0));
    }
}

void setupITCLine(FigureBuilder& b)
{
    Vertices v = vertices(b);
    const std::optional<int> lineType = choice(b, "lineType");
    ITCLine* line = b.adopt(ITCLine::NewInstance());
    b.require(line->SetPoints(v.data(), countOf(v)), "vertices");
    if (lineType) {
        line->SetLineType(static_cast<tagTAVRIN_ITC_LINE_TYPE>(*lineType));
    }
}

void setupLane(FigureBuilder& b)
{
    Vertices v = vertices(b);
    std::optional<std::pair<tagTAVRIN_POINT, tagTAVRIN_POINT>> arrow = pointPair(b, "arrow");
    Lane* lane = b.adopt(Lane::NewInstance());
    b.require(lane->SetPoints(v.data(), countOf(v)), "vertices");
    if (arrow) {
        b.require(lane->SetArrowPoints(arrow->first, arrow->second), "arrow");
    }
}

/// The people-counting options beyond the figure itself: calibration, target widths,
/// the single point and its text.
void applyPdcCalibration(FigureBuilder& b, PdcRule* rule)
{
    if (const std::optional<bool> on = flag(b, "lineCali")) {
        rule->SetVcaPDCLineCali(*on);
    }
    if (const std::optional<bool> on = flag(b, "shoulderLine")) {
        rule->SetVcaPDCCaliShoulderLine(*on);
    }
    if (std::optional<std::pair<tagTAVRIN_POINT, tagTAVRIN_POINT>> cali = pointPair(b, "caliPoints")) {
        tagTAVRIN_POINT two[2] = {cali->first, cali->second};
        b.require(rule->SetPDCCaliPoint(two, 2), "caliPoints");
    }
    if (const std::optional<int> index = integer(b, "selectedCaliPoint")) {
        rule->SetSelCaliPointIndex(static_cast<unsigned int>(*index));
    }
    if (const std::optional<std::vector<float>> widths = numbers(b, "targetWidths")) {
        std::array<float, 16> values{};
        std::copy(widths->begin(), widths->end(), values.begin());
        b.require(rule->SetTargetWidthLine(values.data()), "targetWidths");
    }
    if (std::optional<tagTAVRIN_POINT> single = point(b, "singlePoint")) {
        b.require(rule->SetSinglePoints(&*single, 1), "singlePoint");
    }
    if (std::optional<QByteArray> words = text(b, "text")) {
        b.require(rule->SetText(words->data()), "text");
    }
}

void setupPdcRule(FigureBuilder& b)
{
    const std::optional<bool> lineMode = flag(b, "lineMode");
    // Area mode first, then line mode.
    Vertices v = vertices(b, lineMode.value_or(false) ? 1 : 0);
    std::optional<std::pair<tagTAVRIN_POINT, tagTAVRIN_POINT>> arrow = pointPair(b, "arrow");
    const std::optional<bool> closed = flag(b, "closed");

    PdcRule* rule = b.adopt(PdcRule::NewInstance());
    // The mode first: it chooses the primitive that takes the vertices and the arrow.
    if (lineMode) {
        rule->SetVcaPDCLineOrRect(*lineMode);
    }
    b.require(rule->SetPoints(v.data(), countOf(v)), "vertices");
    if (arrow) {
        b.require(rule->SetArrowPoints(arrow->first, arrow->second), "arrow");
    }
    if (closed) {
        rule->SetClosed(*closed);
    }
    applyPdcCalibration(b, rule);
}

void setupSizeFilter(FigureBuilder& b)
{
    // Either count of the schema's two, nothing between them.
    const std::vector<VertexCount>& counts = kindOf(b).vertices;
    const QString phrase = QStringLiteral("%1 vertices (a diagonal) or %2 (the corners)")
                               .arg(counts.front().min)
                               .arg(counts.back().max);
    Vertices v = b.vertices(counts.front().min, counts.back().max, QString(), phrase);
    if (v.size() != static_cast<std::size_t>(counts.front().min) && v.size() != static_cast<std::size_t>(counts.back().max)) {
        b.fields().fail("vertices", QStringLiteral("SizeFilter takes %1, got %2").arg(phrase).arg(v.size()));
    }
    const std::optional<int> filterType = choice(b, "filterType");
    const std::optional<int> scheme = integer(b, "colorScheme");

    SizeFilter* filter = b.adopt(SizeFilter::NewInstance());
    if (filterType) {
        filter->SetSizeFilterType(static_cast<tagTAVRIN_SIZE_FILTER_TYPE>(*filterType));
        // The view size goes to the active shape only: tell the new one.
        filter->SetWndSize(b.width(), b.height());
    }
    if (v.size() == static_cast<std::size_t>(counts.front().min)) {
        b.require(filter->SetDiagonal(v[0], v[1]), "vertices");
    } else {
        b.require(filter->SetPoints(v.data(), countOf(v)), "vertices");
    }
    b.setHandleCount(4);
    if (scheme) {
        filter->SetColor(*scheme);
    }
}

// ---- Calibration figures. -------------------------------------------------------------

void setupAtmCali(FigureBuilder& b)
{
    Vertices v = vertices(b);
    std::optional<std::pair<tagTAVRIN_POINT, tagTAVRIN_POINT>> line = pointPair(b, "linePoints");
    const std::optional<int> lineSelected = integer(b, "lineSelected");
    AtmCali* cali = b.adopt(AtmCali::NewInstance());
    b.require(cali->SetPoints(v.data(), countOf(v)), "vertices");
    if (line) {
        b.require(cali->SetLinePoints(line->first, line->second), "linePoints");
    }
    if (lineSelected) {
        cali->SetLineSelPointIndex(static_cast<unsigned int>(*lineSelected));
    }
}

template <class Behavior>
void setupBehavior(FigureBuilder& b)
{
    Vertices v = vertices(b);
    const std::optional<int> caliType = choice(b, "caliType");
    Behavior* cali = b.adopt(Behavior::NewInstance());
    b.require(cali->SetPoints(v.data(), countOf(v)), "vertices");
    if (caliType) {
        cali->SetCaliType(static_cast<tagTAVRIN_BEHAV_CALI_TYPE>(*caliType));
    }
}

void setupBehaviorCali(FigureBuilder& b)
{
    setupBehavior<BehaviorCali>(b);
}

void setupBehaviorCheck(FigureBuilder& b)
{
    setupBehavior<BehaviorCheck>(b);
}

void setupItsCali(FigureBuilder& b)
{
    Vertices v = vertices(b);
    std::optional<QByteArray> widthText = text(b, "widthText");
    std::optional<QByteArray> heightText = text(b, "heightText");
    const std::optional<bool> closed = flag(b, "closed");
    ItsCali* cali = b.adopt(ItsCali::NewInstance());
    b.require(cali->SetPoints(v.data(), countOf(v)), "vertices");
    // An empty text is the class's own initial state; the setters refuse a length of 0.
    if (widthText && !widthText->isEmpty()) {
        b.require(cali->SetWidthLabelText(widthText->data(), static_cast<unsigned int>(widthText->size())),
                  "widthText");
    }
    if (heightText && !heightText->isEmpty()) {
        b.require(cali->SetHeightlabelText(heightText->data(), static_cast<unsigned int>(heightText->size())),
                  "heightText");
    }
    if (closed) {
        cali->SetClosed(*closed);
    }
}

void setupPupilDistance(FigureBuilder& b)
{
    Vertices v = vertices(b);
    PupilDistance* pupils = b.adopt(PupilDistance::NewInstance());
    b.require(pupils->SetPoints(v.data(), countOf(v)), "vertices");
}

void setupBinoCali(FigureBuilder& b)
{
    Vertices v = vertices(b);
    const std::optional<int> radius = integer(b, "radius");
    BinoCali* cali = b.adopt(BinoCali::NewInstance());
    b.require(cali->SetPoints(v.data(), countOf(v)), "vertices");
    if (radius) {
        // Kept relative to the view width, which adopt() has already given the circle.
        cali->SetRadius(static_cast<unsigned int>(*radius));
    }
}

void setupLfCali(FigureBuilder& b)
{
    Vertices v = vertices(b);
    LfCali* cali = b.adopt(LfCali::NewInstance());
    b.require(cali->SetPoints(v.data(), countOf(v)), "vertices");
}

const FigureKind kKinds[] = {
    {"ShieldRegion", setupShieldRegion},
    {"ReferenceRegion", setupReferenceRegion},
    {"EnterRegion", setupEnterRegion},
    {"ITCPlateRegion", setupITCPlateRegion},
    {"VcaRule", setupVcaRule},
    {"ITCLine", setupITCLine},
    {"Lane", setupLane},
    {"PdcRule", setupPdcRule},
    {"SizeFilter", setupSizeFilter},
    {"AtmCali", setupAtmCali},
    {"BehaviorCali", setupBehaviorCali},
    {"BehaviorCheck", setupBehaviorCheck},
    {"ItsCali", setupItsCali},
    {"PupilDistance", setupPupilDistance},
    {"BinoCali", setupBinoCali},
    {"LfCali", setupLfCali},
};

}  // namespace

const FigureKind* findFigureKind(const QString& name)
{
    for (const FigureKind& kind : kKinds) {
        if (name == QLatin1String(kind.name)) {
            return &kind;
        }
    }
    return nullptr;
}

}  // namespace render
}  // namespace Tavrin
