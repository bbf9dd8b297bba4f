#include "FigureKinds.h"

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

// The spellings of the enumerations, by name or by value.
const std::vector<Choice> kArrowDirections = {{"both", 0}, {"positive", 1}, {"negative", 2}, {"none", 3}};
const std::vector<Choice> kRuleTypes = {{"region", 0}, {"line", 1}, {"brokenLine", 2}};
const std::vector<Choice> kLineTypes = {{"plain", 0}, {"arrow", 1}};
const std::vector<Choice> kItcLineTypes = {{"default", 0}, {"green", 1}};
const std::vector<Choice> kFilterTypes = {{"rect", 0}, {"square", 1}};
const std::vector<Choice> kCaliTypes = {{"line", 0}, {"vertical", 1}};

constexpr int kMaxText = 16;
constexpr int kMaxPdcText = 127;
constexpr int kMaxRadius = 4096;

using Vertices = std::vector<tagTAVRIN_POINT>;

/// Two points [[x, y], [x, y]] (an arrow, a line, a calibration segment), if present.
std::optional<std::pair<tagTAVRIN_POINT, tagTAVRIN_POINT>> pointPair(FigureBuilder& b, const char* key)
{
    const std::optional<Vertices> read =
        b.fields().points(key, 2, 2, QStringLiteral("%1 takes 2 points").arg(QLatin1String(key)));
    if (!read) {
        return std::nullopt;
    }
    return std::make_pair((*read)[0], (*read)[1]);
}

unsigned int countOf(const Vertices& v)
{
    return static_cast<unsigned int>(v.size());
}

// ---- Regions: a polygon with a label beside its first vertex. -----------------------

template <class Region>
void setupRegion(FigureBuilder& b, int maxVertices)
{
    Vertices v = b.vertices(3, maxVertices);
    const std::optional<bool> closed = b.fields().flag("closed");
    Region* region = b.adopt(Region::NewInstance());
    b.require(region->SetPoints(v.data(), countOf(v)), "vertices");
    if (closed) {
        region->SetClosed(*closed);
    }
}

void setupShieldRegion(FigureBuilder& b)
{
    setupRegion<ShieldRegion>(b, 10);
}

void setupReferenceRegion(FigureBuilder& b)
{
    setupRegion<ReferenceRegion>(b, 10);
}

void setupEnterRegion(FigureBuilder& b)
{
    setupRegion<EnterRegion>(b, 10);
}

void setupITCPlateRegion(FigureBuilder& b)
{
    setupRegion<ITCPlateRegion>(b, 20);
}

// ---- Rules. ---------------------------------------------------------------------------

void setupVcaRule(FigureBuilder& b)
{
    FieldReader& in = b.fields();
    const std::optional<int> ruleType = in.choice("ruleType", kRuleTypes);
    const int figure = ruleType.value_or(TAVRIN_RULE_REGION);
    Vertices v = figure == TAVRIN_RULE_LINE         ? b.vertices(2, 2, QStringLiteral("of rule type line"))
                 : figure == TAVRIN_RULE_BROKEN_LINE ? b.vertices(2, 10, QStringLiteral("of rule type brokenLine"))
                                                     : b.vertices(3, 10, QStringLiteral("of rule type region"));
    const std::optional<int> arrowDirection = in.choice("arrowDirection", kArrowDirections);
    const std::optional<int> lineType = in.choice("lineType", kLineTypes);
    const std::optional<bool> traversePlane = in.flag("traversePlane");
    const std::optional<bool> closed = in.flag("closed");
    const std::optional<unsigned int> normal = in.colour("normalColor");
    const std::optional<unsigned int> selected = in.colour("selectedColor");

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
    Vertices v = b.vertices(2, 2);
    const std::optional<int> lineType = b.fields().choice("lineType", kItcLineTypes);
    ITCLine* line = b.adopt(ITCLine::NewInstance());
    b.require(line->SetPoints(v.data(), countOf(v)), "vertices");
    if (lineType) {
        line->SetLineType(static_cast<tagTAVRIN_ITC_LINE_TYPE>(*lineType));
    }
}

void setupLane(FigureBuilder& b)
{
    Vertices v = b.vertices(3, 10);
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
    FieldReader& in = b.fields();
    if (const std::optional<bool> on = in.flag("lineCali")) {
        rule->SetVcaPDCLineCali(*on);
    }
    if (const std::optional<bool> on = in.flag("shoulderLine")) {
        rule->SetVcaPDCCaliShoulderLine(*on);
    }
    if (std::optional<std::pair<tagTAVRIN_POINT, tagTAVRIN_POINT>> cali = pointPair(b, "caliPoints")) {
        tagTAVRIN_POINT two[2] = {cali->first, cali->second};
        b.require(rule->SetPDCCaliPoint(two, 2), "caliPoints");
    }
    if (const std::optional<int> index = in.integer("selectedCaliPoint", 0, 2)) {
        rule->SetSelCaliPointIndex(static_cast<unsigned int>(*index));
    }
    if (const std::optional<std::vector<float>> widths = in.numbers("targetWidths", 16, 0.0, 1.0)) {
        std::array<float, 16> values{};
        std::copy(widths->begin(), widths->end(), values.begin());
        b.require(rule->SetTargetWidthLine(values.data()), "targetWidths");
    }
    if (std::optional<tagTAVRIN_POINT> single = in.point("singlePoint")) {
        b.require(rule->SetSinglePoints(&*single, 1), "singlePoint");
    }
    if (std::optional<QByteArray> text = in.text("text", kMaxPdcText)) {
        b.require(rule->SetText(text->data()), "text");
    }
}

void setupPdcRule(FigureBuilder& b)
{
    FieldReader& in = b.fields();
    const std::optional<bool> lineMode = in.flag("lineMode");
    Vertices v = lineMode.value_or(false) ? b.vertices(2, 2, QStringLiteral("in line mode"))
                                          : b.vertices(3, 10, QStringLiteral("in area mode"));
    std::optional<std::pair<tagTAVRIN_POINT, tagTAVRIN_POINT>> arrow = pointPair(b, "arrow");
    const std::optional<bool> closed = in.flag("closed");

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
    FieldReader& in = b.fields();
    const QString phrase = QStringLiteral("2 vertices (a diagonal) or 4 (the corners)");
    Vertices v = b.vertices(2, 4, QString(), phrase);
    if (v.size() == 3) {
        in.fail("vertices", QStringLiteral("SizeFilter takes %1, got 3").arg(phrase));
    }
    const std::optional<int> filterType = in.choice("filterType", kFilterTypes);
    const std::optional<int> scheme = in.integer("colorScheme", 0, 2);

    SizeFilter* filter = b.adopt(SizeFilter::NewInstance());
    if (filterType) {
        filter->SetSizeFilterType(static_cast<tagTAVRIN_SIZE_FILTER_TYPE>(*filterType));
        // The view size goes to the active shape only: tell the new one.
        filter->SetWndSize(b.width(), b.height());
    }
    if (v.size() == 2) {
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
    Vertices v = b.vertices(4, 4);
    std::optional<std::pair<tagTAVRIN_POINT, tagTAVRIN_POINT>> line = pointPair(b, "linePoints");
    const std::optional<int> lineSelected = b.fields().integer("lineSelected", 0, 2);
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
    Vertices v = b.vertices(2, 2);
    const std::optional<int> caliType = b.fields().choice("caliType", kCaliTypes);
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
    FieldReader& in = b.fields();
    Vertices v = b.vertices(3, 10);
    std::optional<QByteArray> widthText = in.text("widthText", kMaxText);
    std::optional<QByteArray> heightText = in.text("heightText", kMaxText);
    const std::optional<bool> closed = in.flag("closed");
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
    Vertices v = b.vertices(2, 2);
    PupilDistance* pupils = b.adopt(PupilDistance::NewInstance());
    b.require(pupils->SetPoints(v.data(), countOf(v)), "vertices");
}

void setupBinoCali(FigureBuilder& b)
{
    Vertices v = b.vertices(1, 1);
    const std::optional<int> radius = b.fields().integer("radius", 1, kMaxRadius);
    BinoCali* cali = b.adopt(BinoCali::NewInstance());
    b.require(cali->SetPoints(v.data(), countOf(v)), "vertices");
    if (radius) {
        // Kept relative to the view width, which adopt() has already given the circle.
        cali->SetRadius(static_cast<unsigned int>(*radius));
    }
}

void setupLfCali(FigureBuilder& b)
{
    Vertices v = b.vertices(1, 1);
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
