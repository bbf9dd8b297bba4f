#include "SceneSchema.h"

#include <QStringList>

namespace Tavrin {
namespace render {

namespace {

FieldSchema flag(const char* key, const char* setter, const char* note = "")
{
    return FieldSchema{key, FieldType::Flag, {}, 0, 0, setter, note};
}
FieldSchema choice(const char* key, std::vector<Choice> choices, const char* setter, const char* note = "")
{
    return FieldSchema{key, FieldType::Choice, std::move(choices), 0, 0, setter, note};
}
FieldSchema integer(const char* key, int min, int max, const char* setter, const char* note = "")
{
    return FieldSchema{key, FieldType::Integer, {}, min, max, setter, note};
}
FieldSchema text(const char* key, int max, const char* setter)
{
    return FieldSchema{key, FieldType::Text, {}, 0, max, setter, ""};
}
FieldSchema colour(const char* key, const char* setter, const char* note = "")
{
    return FieldSchema{key, FieldType::Colour, {}, 0, 0, setter, note};
}
FieldSchema point(const char* key, const char* setter)
{
    return FieldSchema{key, FieldType::Point, {}, 0, 0, setter, ""};
}
FieldSchema pointPair(const char* key, const char* setter, const char* note = "")
{
    return FieldSchema{key, FieldType::PointPair, {}, 0, 0, setter, note};
}
FieldSchema numbers(const char* key, int max, const char* setter)
{
    return FieldSchema{key, FieldType::Numbers, {}, 0, max, setter, ""};
}

const std::vector<Choice> kRuleTypes = {{"region", 0}, {"line", 1}, {"brokenLine", 2}};
const std::vector<Choice> kArrowDirections = {{"both", 0}, {"positive", 1}, {"negative", 2}, {"none", 3}};
const std::vector<Choice> kLineTypes = {{"plain", 0}, {"arrow", 1}};
const std::vector<Choice> kItcLineTypes = {{"default", 0}, {"green", 1}};
const std::vector<Choice> kFilterTypes = {{"rect", 0}, {"square", 1}};
const std::vector<Choice> kCaliTypes = {{"line", 0}, {"vertical", 1}};

KindSchema region(const char* name, int maxVertices)
{
    return KindSchema{name, KindGroup::Region, {{3, maxVertices, "", ""}}, {flag("closed", "SetClosed", "default true")}};
}

std::vector<KindSchema> buildKinds()
{
    return {
        region("ShieldRegion", 10),
        region("ReferenceRegion", 10),
        region("EnterRegion", 10),
        region("ITCPlateRegion", 20),
        {"VcaRule",
         KindGroup::Rule,
         {{3, 10, "of rule type region", ""}, {2, 2, "of rule type line", ""}, {2, 10, "of rule type brokenLine", ""}},
         {choice("ruleType", kRuleTypes, "SetRuleType", "applied before the vertices"),
          choice("arrowDirection", kArrowDirections, "SetArrowDirection"),
          choice("lineType", kLineTypes, "SetLineType"), flag("traversePlane", "SetIsTraversePlane"),
          flag("closed", "SetClosed"),
          colour("normalColor", "SetColors", "the one not given keeps its default 0x285ea6"),
          colour("selectedColor", "SetColors", "the one not given keeps its default 0xd90db0")}},
        {"ITCLine", KindGroup::Rule, {{2, 2, "", ""}}, {choice("lineType", kItcLineTypes, "SetLineType")}},
        {"Lane",
         KindGroup::Rule,
         {{3, 10, "", ""}},
         {pointPair("arrow", "SetArrowPoints", "the driving direction from the first point to the second")}},
        {"PdcRule",
         KindGroup::Rule,
         {{3, 10, "in area mode", ""}, {2, 2, "in line mode", ""}},
         {flag("lineMode", "SetVcaPDCLineOrRect", "applied before the vertices"),
          pointPair("arrow", "SetArrowPoints"), flag("closed", "SetClosed"), flag("lineCali", "SetVcaPDCLineCali"),
          flag("shoulderLine", "SetVcaPDCCaliShoulderLine"), pointPair("caliPoints", "SetPDCCaliPoint"),
          integer("selectedCaliPoint", 0, 2, "SetSelCaliPointIndex"),
          numbers("targetWidths", 16, "SetTargetWidthLine"), point("singlePoint", "SetSinglePoints"),
          text("text", 127, "SetText")}},
        {"SizeFilter",
         KindGroup::Rule,
         {{2, 2, "", "2 (a diagonal, `SetDiagonal`)"}, {4, 4, "", "4 (the corners, `SetPoints`)"}},
         {choice("filterType", kFilterTypes, "SetSizeFilterType", "applied before the vertices"),
          integer("colorScheme", 0, 2, "SetColor")}},
        {"AtmCali",
         KindGroup::Calibration,
         {{4, 4, "", "4, the region's corners"}},
         {pointPair("linePoints", "SetLinePoints", "the vertical calibration line"),
          integer("lineSelected", 0, 2, "SetLineSelPointIndex")}},
        {"BehaviorCali", KindGroup::Calibration, {{2, 2, "", ""}}, {choice("caliType", kCaliTypes, "SetCaliType")}},
        {"BehaviorCheck", KindGroup::Calibration, {{2, 2, "", ""}}, {choice("caliType", kCaliTypes, "SetCaliType")}},
        {"ItsCali",
         KindGroup::Calibration,
         {{3, 10, "", ""}},
         {text("widthText", 16, "SetWidthLabelText"), text("heightText", 16, "SetHeightlabelText"),
          flag("closed", "SetClosed")}},
        {"PupilDistance", KindGroup::Calibration, {{2, 2, "", "2, the two pupils"}}, {}},
        {"BinoCali",
         KindGroup::Calibration,
         {{1, 1, "", "1, the centre"}},
         {integer("radius", 1, 4096, "SetRadius", "pixels; the disc is drawn with half that radius, as the class does")}},
        {"LfCali", KindGroup::Calibration, {{1, 1, "", ""}}, {}},
    };
}

QString code(const QString& text) { return QLatin1Char('`') + text + QLatin1Char('`'); }

QString setterText(const FieldSchema& f)
{
    QString out = code(QLatin1String(f.setter));
    if (*f.note != '\0') {
        out += QStringLiteral("; ") + QLatin1String(f.note);
    }
    return out;
}

// One field as the document's Options column states it.
QString fieldText(const FieldSchema& f)
{
    const QString key = code(QLatin1String(f.key));
    switch (f.type) {
    case FieldType::Flag:
        return QStringLiteral("%1 (bool, %2)").arg(key, setterText(f));
    case FieldType::Choice: {
        QStringList names;
        for (const Choice& c : f.choices) {
            names << QStringLiteral("`\"%1\"` %2").arg(QLatin1String(c.name)).arg(c.value);
        }
        return QStringLiteral("%1: %2 (%3)").arg(key, names.join(QStringLiteral(", ")), setterText(f));
    }
    case FieldType::Integer:
        return QStringLiteral("%1 (%2 to %3, %4)").arg(key).arg(f.min).arg(f.max).arg(setterText(f));
    case FieldType::Text:
        return QStringLiteral("%1 (printable ASCII, at most %2 characters, %3)").arg(key).arg(f.max).arg(setterText(f));
    case FieldType::Colour:
        return QStringLiteral("%1 (`\"#rrggbb\"`, %2)").arg(key, setterText(f));
    case FieldType::Point:
        return QStringLiteral("%1 (`[x, y]`, %2)").arg(key, setterText(f));
    case FieldType::PointPair:
        return QStringLiteral("%1 (`[[x, y], [x, y]]`, %2)").arg(key, setterText(f));
    case FieldType::Numbers:
        return QStringLiteral("%1 (up to %2 numbers from 0 to 1, the rest 0, %3)").arg(key).arg(f.max).arg(setterText(f));
    }
    return key;
}

QString verticesText(const KindSchema& k)
{
    QStringList modes;
    for (const VertexCount& v : k.vertices) {
        QString count = *v.text != '\0' ? QLatin1String(v.text)
                        : v.min == v.max ? QString::number(v.min)
                                         : QStringLiteral("%1 to %2").arg(v.min).arg(v.max);
        modes << (*v.mode != '\0' ? QLatin1String(v.mode) + QStringLiteral(": ") + count : count);
    }
    return modes.join(QStringLiteral("; "));
}

}  // namespace

const FieldSchema& KindSchema::field(const char* key) const
{
    static const FieldSchema unknown{"?", FieldType::Flag, {}, 0, 0, "", ""};
    for (const FieldSchema& f : fields) {
        if (QLatin1String(f.key) == QLatin1String(key)) {
            return f;
        }
    }
    return unknown;
}

const std::vector<KindSchema>& sceneKinds()
{
    static const std::vector<KindSchema> kinds = buildKinds();
    return kinds;
}

const KindSchema* findKindSchema(const QString& name)
{
    for (const KindSchema& k : sceneKinds()) {
        if (name == QLatin1String(k.name)) {
            return &k;
        }
    }
    return nullptr;
}

QString kindTablesMarkdown()
{
    const struct {
        KindGroup group;
        const char* title;
    } groups[] = {{KindGroup::Region, "Regions"}, {KindGroup::Rule, "Rules"}, {KindGroup::Calibration, "Calibration figures"}};
    QStringList out;
    for (const auto& g : groups) {
        out << QStringLiteral("### %1").arg(QLatin1String(g.title)) << QString()
            << QStringLiteral("| Kind | Vertices | Options |") << QStringLiteral("|---|---|---|");
        for (const KindSchema& k : sceneKinds()) {
            if (k.group != g.group) {
                continue;
            }
            QStringList fields;
            for (const FieldSchema& f : k.fields) {
                fields << fieldText(f);
            }
            out << QStringLiteral("| %1 | %2 | %3 |")
                       .arg(code(QLatin1String(k.name)), verticesText(k),
                            fields.isEmpty() ? QStringLiteral("none") : fields.join(QStringLiteral("; ")));
        }
        out << QString();
    }
    return out.join(QLatin1Char('\n'));
}

}  // namespace render
}  // namespace Tavrin
