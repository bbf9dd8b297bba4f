#include "SceneWriter.h"

#include "SceneSchema.h"

#include <Tavrin/AtmCali.h>
#include <Tavrin/BehaviorCali.h>
#include <Tavrin/BinoCali.h>
#include <Tavrin/ITCLine.h>
#include <Tavrin/ITCPlateRegion.h>
#include <Tavrin/ItsCali.h>
#include <Tavrin/Lane.h>
#include <Tavrin/LfCali.h>
#include <Tavrin/PdcRule.h>
#include <Tavrin/PupilDistance.h>
#include <Tavrin/ReferenceRegion.h>
#include <Tavrin/ShieldRegion.h>
#include <Tavrin/EnterRegion.h>
#include <Tavrin/SizeFilter.h>
#include <Tavrin/VcaRule.h>

#include <QJsonDocument>
#include <QStringList>

#include <cmath>

namespace Tavrin {
namespace render {

namespace {

// Larger than any class's vertex capacity (20, ITCPlateRegion): GetPoints may write the
// whole capacity whatever the count.
constexpr unsigned int kBuffer = 20;

using Points = std::vector<tagTAVRIN_POINT>;

template <class Figure>
bool readPoints(Figure* figure, Points& out)
{
    tagTAVRIN_POINT buffer[kBuffer] = {};
    unsigned int count = 0;
    if (figure == nullptr || !figure->GetPoints(buffer, &count) || count > kBuffer) {
        return false;
    }
    out.assign(buffer, buffer + count);
    return true;
}

}  // namespace

bool readVertices(const QString& kind, VcaObject* figure, std::vector<tagTAVRIN_POINT>& out)
{
    if (kind == QLatin1String("ShieldRegion")) return readPoints(dynamic_cast<ShieldRegion*>(figure), out);
    if (kind == QLatin1String("ReferenceRegion")) return readPoints(dynamic_cast<ReferenceRegion*>(figure), out);
    if (kind == QLatin1String("EnterRegion")) return readPoints(dynamic_cast<EnterRegion*>(figure), out);
    if (kind == QLatin1String("ITCPlateRegion")) return readPoints(dynamic_cast<ITCPlateRegion*>(figure), out);
    if (kind == QLatin1String("VcaRule")) return readPoints(dynamic_cast<VcaRule*>(figure), out);
    if (kind == QLatin1String("ITCLine")) return readPoints(dynamic_cast<ITCLine*>(figure), out);
    if (kind == QLatin1String("Lane")) return readPoints(dynamic_cast<Lane*>(figure), out);
    if (kind == QLatin1String("PdcRule")) return readPoints(dynamic_cast<PdcRule*>(figure), out);
    if (kind == QLatin1String("SizeFilter")) return readPoints(dynamic_cast<SizeFilter*>(figure), out);
    if (kind == QLatin1String("AtmCali")) return readPoints(dynamic_cast<AtmCali*>(figure), out);
    // BehaviorCheck derives from BehaviorCali and reads back through it.
    if (kind == QLatin1String("BehaviorCali") || kind == QLatin1String("BehaviorCheck"))
        return readPoints(dynamic_cast<BehaviorCali*>(figure), out);
    if (kind == QLatin1String("ItsCali")) return readPoints(dynamic_cast<ItsCali*>(figure), out);
    if (kind == QLatin1String("PupilDistance")) return readPoints(dynamic_cast<PupilDistance*>(figure), out);
    if (kind == QLatin1String("BinoCali")) return readPoints(dynamic_cast<BinoCali*>(figure), out);
    if (kind == QLatin1String("LfCali")) return readPoints(dynamic_cast<LfCali*>(figure), out);
    return false;
}

namespace {

bool isOrigin(const tagTAVRIN_POINT& p) { return p.x == 0.0f && p.y == 0.0f; }

/// Writes `key` when the entry named it or when the figure holds something other than
/// its initial (all zero) points there.
void refreshPoints(QJsonObject& entry, const char* key, const Points& points)
{
    bool allZero = true;
    for (const tagTAVRIN_POINT& p : points) {
        allZero = allZero && isOrigin(p);
    }
    if (entry.contains(QLatin1String(key)) || !allZero) {
        entry[QLatin1String(key)] = pointsValue(points.data(), static_cast<unsigned int>(points.size()));
    }
}

template <class Figure>
void refreshArrow(QJsonObject& entry, Figure* figure)
{
    tagTAVRIN_POINT from{0.0f, 0.0f};
    tagTAVRIN_POINT to{0.0f, 0.0f};
    if (figure != nullptr && figure->GetArrowPoints(&from, &to)) {
        refreshPoints(entry, "arrow", {from, to});
    }
}

void refreshPdcRule(QJsonObject& entry, PdcRule* rule)
{
    if (rule == nullptr) {
        return;
    }
    refreshArrow(entry, rule);
    tagTAVRIN_POINT cali[kBuffer] = {};
    unsigned int count = 0;
    if (rule->GetPDCCaliPoint(cali, &count) && count == 2) {
        refreshPoints(entry, "caliPoints", {cali[0], cali[1]});
    }
    tagTAVRIN_POINT single[kBuffer] = {};
    count = 0;
    if (rule->GetSinglePoints(single, &count) && (entry.contains(QLatin1String("singlePoint")) || !isOrigin(single[0]))) {
        entry[QLatin1String("singlePoint")] = pointValue(single[0]);
    }
}

void refreshAtmCali(QJsonObject& entry, AtmCali* cali)
{
    tagTAVRIN_POINT a{0.0f, 0.0f};
    tagTAVRIN_POINT b{0.0f, 0.0f};
    if (cali == nullptr || !cali->GetLinePoints(&a, &b)) {
        return;
    }
    refreshPoints(entry, "linePoints", {a, b});
    const unsigned int end = cali->GetLineSelPointIndex();
    if (end >= 1 && end <= 2) {
        entry[QStringLiteral("lineSelected")] = static_cast<int>(end);
    } else {
        entry.remove(QStringLiteral("lineSelected"));
    }
}

QString statusName(tagTAVRIN_OBJ_STATUS status)
{
    // Any value but 1 and 2 draws like 0.
    switch (status) {
    case TAVRIN_OBJ_STATUS_SELECTED:
        return QStringLiteral("selected");
    case TAVRIN_OBJ_STATUS_HIGHLIGHTED:
        return QStringLiteral("highlighted");
    default:
        return QStringLiteral("normal");
    }
}

void refreshCommon(QJsonObject& entry, VcaObject* figure, unsigned int handles)
{
    char label[17] = {};
    if (figure->GetLabelText(label, sizeof label) && label[0] != '\0') {
        entry[QStringLiteral("label")] = QString::fromLatin1(label);
    } else {
        entry.remove(QStringLiteral("label"));
    }
    entry[QStringLiteral("status")] = statusName(figure->GetObjStatus());
    // An index past the vertices selects nothing that draws; the reader refuses it.
    const unsigned int selected = figure->GetSelPointIndex();
    if (selected >= 1 && selected <= handles) {
        entry[QStringLiteral("selected")] = static_cast<int>(selected);
    } else {
        entry.remove(QStringLiteral("selected"));
    }
}

// ---- JSON text. ------------------------------------------------------------------------

/// The fewest significant digits that read back (as the reader does: double, then
/// float) to the same 32-bit float; integers as integers.
QString numberText(double value)
{
    if (!std::isfinite(value)) {
        return QStringLiteral("0");
    }
    if (value == std::floor(value) && std::fabs(value) < 1e15) {
        return QString::number(static_cast<qint64>(value));
    }
    const float target = static_cast<float>(value);
    for (int digits = 1; digits < 17; ++digits) {
        const QString text = QString::number(value, 'g', digits);
        if (static_cast<float>(text.toDouble()) == target) {
            return text;
        }
    }
    return QString::number(value, 'g', 17);
}

QString stringText(const QString& text)
{
    // Qt's own escaping, taken from a one-element array.
    const QByteArray array = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(array.mid(1, array.size() - 2));
}

QString valueText(const QJsonValue& value)
{
    switch (value.type()) {
    case QJsonValue::Bool:
        return value.toBool() ? QStringLiteral("true") : QStringLiteral("false");
    case QJsonValue::Double:
        return numberText(value.toDouble());
    case QJsonValue::String:
        return stringText(value.toString());
    case QJsonValue::Array: {
        QStringList items;
        for (const QJsonValue& item : value.toArray()) {
            items << valueText(item);
        }
        return QLatin1Char('[') + items.join(QStringLiteral(", ")) + QLatin1Char(']');
    }
    case QJsonValue::Object: {
        QStringList items;
        const QJsonObject object = value.toObject();
        for (auto it = object.begin(); it != object.end(); ++it) {
            items << stringText(it.key()) + QStringLiteral(": ") + valueText(it.value());
        }
        return QLatin1Char('{') + items.join(QStringLiteral(", ")) + QLatin1Char('}');
    }
    default:
        return QStringLiteral("null");
    }
}

/// One figure: "comment" and "kind" first, then the fields every kind has, then the
/// kind's options in the order the scene schema lists them (any other key last, in
/// alphabetical order); one field a line.
QString figureText(const QJsonObject& figure)
{
    QStringList first = {QStringLiteral("comment"), QStringLiteral("kind"), QStringLiteral("vertices"),
                         QStringLiteral("label"),   QStringLiteral("status"), QStringLiteral("selected")};
    if (const KindSchema* kind = findKindSchema(figure.value(QStringLiteral("kind")).toString())) {
        for (const FieldSchema& field : kind->fields) {
            first << QLatin1String(field.key);
        }
    }
    QStringList keys;
    for (const QString& key : first) {
        if (figure.contains(key)) {
            keys << key;
        }
    }
    for (const QString& key : figure.keys()) {
        if (!first.contains(key)) {
            keys << key;
        }
    }
    QStringList fields;
    for (const QString& key : keys) {
        fields << stringText(key) + QStringLiteral(": ") + valueText(figure.value(key));
    }
    return QStringLiteral("    {") + fields.join(QStringLiteral(",\n     ")) + QLatin1Char('}');
}

}  // namespace

QJsonArray pointValue(const tagTAVRIN_POINT& p)
{
    return QJsonArray{static_cast<double>(p.x), static_cast<double>(p.y)};
}

QJsonArray pointsValue(const tagTAVRIN_POINT* points, unsigned int count)
{
    QJsonArray list;
    for (unsigned int i = 0; points != nullptr && i < count; ++i) {
        list.append(pointValue(points[i]));
    }
    return list;
}

QJsonObject refreshedEntry(const QJsonObject& entry, VcaObject* figure)
{
    QJsonObject out = entry;
    const QString kind = entry.value(QStringLiteral("kind")).toString();
    Points points;
    if (figure == nullptr || !readVertices(kind, figure, points)) {
        return out;
    }
    out[QStringLiteral("vertices")] = pointsValue(points.data(), static_cast<unsigned int>(points.size()));
    // A size filter always has four corners to select, also when given by its diagonal.
    const unsigned int handles =
        kind == QLatin1String("SizeFilter") ? 4u : static_cast<unsigned int>(points.size());
    refreshCommon(out, figure, handles);
    if (kind == QLatin1String("Lane")) {
        refreshArrow(out, dynamic_cast<Lane*>(figure));
    } else if (kind == QLatin1String("PdcRule")) {
        refreshPdcRule(out, dynamic_cast<PdcRule*>(figure));
    } else if (kind == QLatin1String("AtmCali")) {
        refreshAtmCali(out, dynamic_cast<AtmCali*>(figure));
    }
    return out;
}

QByteArray writeScene(const SceneHeader& header, const std::vector<QJsonObject>& figures)
{
    QStringList top;
    if (!header.comment.isEmpty()) {
        top << QStringLiteral("  \"comment\": ") + stringText(header.comment);
    }
    if (!header.size.isEmpty()) {
        top << QStringLiteral("  \"width\": %1").arg(header.size.width());
        top << QStringLiteral("  \"height\": %1").arg(header.size.height());
    }
    if (!header.background.isEmpty()) {
        top << QStringLiteral("  \"background\": ") + stringText(header.background);
    }
    QStringList entries;
    for (const QJsonObject& figure : figures) {
        entries << figureText(figure);
    }
    const QString list = entries.isEmpty() ? QStringLiteral("[]")
                                           : QStringLiteral("[\n") + entries.join(QStringLiteral(",\n")) +
                                                 QStringLiteral("\n  ]");
    top << QStringLiteral("  \"figures\": ") + list;
    return (QStringLiteral("{\n") + top.join(QStringLiteral(",\n")) + QStringLiteral("\n}\n")).toUtf8();
}

}  // namespace render
}  // namespace Tavrin
