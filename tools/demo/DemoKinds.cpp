#include "DemoKinds.h"

#include "SceneWriter.h"

#include <QJsonArray>

#include <algorithm>
#include <cmath>

namespace Tavrin {
namespace demo {

namespace {

using render::pointsValue;
using render::pointValue;

tagTAVRIN_POINT midpoint(const tagTAVRIN_POINT& a, const tagTAVRIN_POINT& b)
{
    return tagTAVRIN_POINT{(a.x + b.x) / 2.0f, (a.y + b.y) / 2.0f};
}

tagTAVRIN_POINT centroid(const std::vector<tagTAVRIN_POINT>& points)
{
    float x = 0.0f;
    float y = 0.0f;
    for (const tagTAVRIN_POINT& p : points) {
        x += p.x;
        y += p.y;
    }
    const float n = static_cast<float>(points.size());
    return tagTAVRIN_POINT{x / n, y / n};
}

/// A direction arrow inside a new lane or counting area: from its centre towards the
/// middle of its first edge, three fifths of the way.
QJsonArray arrowInside(const std::vector<tagTAVRIN_POINT>& clicks)
{
    const tagTAVRIN_POINT from = centroid(clicks);
    const tagTAVRIN_POINT edge = midpoint(clicks[0], clicks[1]);
    const tagTAVRIN_POINT to{from.x + 0.6f * (edge.x - from.x), from.y + 0.6f * (edge.y - from.y)};
    return QJsonArray{pointValue(from), pointValue(to)};
}

/// An ATM region from two opposite corners: its four corners clockwise from the top
/// left, and a vertical calibration line down its middle.
void atmFromDiagonal(QJsonObject& entry, const tagTAVRIN_POINT& a, const tagTAVRIN_POINT& b)
{
    const float left = std::min(a.x, b.x);
    const float right = std::max(a.x, b.x);
    const float top = std::min(a.y, b.y);
    const float bottom = std::max(a.y, b.y);
    const tagTAVRIN_POINT corners[4] = {{left, top}, {right, top}, {right, bottom}, {left, bottom}};
    entry[QStringLiteral("vertices")] = pointsValue(corners, 4);
    const float x = (left + right) / 2.0f;
    const float inset = (bottom - top) / 5.0f;
    entry[QStringLiteral("linePoints")] = QJsonArray{pointValue({x, top + inset}), pointValue({x, bottom - inset})};
}

bool parseNumber(const QString& text, double& value)
{
    bool ok = false;
    value = text.trimmed().toDouble(&ok);
    return ok && std::isfinite(value);
}

/// "x, y" into [x, y].
bool parsePoint(const QString& text, QJsonArray& point)
{
    const QStringList parts = text.split(QLatin1Char(','));
    double x = 0.0;
    double y = 0.0;
    if (parts.size() != 2 || !parseNumber(parts[0], x) || !parseNumber(parts[1], y)) {
        return false;
    }
    point = QJsonArray{x, y};
    return true;
}

}  // namespace

QStringList choiceNames(const Option& option)
{
    QStringList names;
    for (const render::Choice& c : option.choices) {
        names << QLatin1String(c.name);
    }
    return names;
}

const std::vector<Kind>& kinds()
{
    // Clicks that place each kind; everything else comes from the scene schema.
    static const struct {
        const char* name;
        const char* purpose;
        const char* description;
        unsigned int minClicks;
        unsigned int maxClicks;
    } kClicks[] = {
        {"ShieldRegion", "Privacy mask", "Hides part of the picture from view and from analysis", 3, 10},
        {"ReferenceRegion", "Reference region", "An area whose size the camera uses as a reference", 3, 10},
        {"EnterRegion", "Entry region", "Raises an event when someone enters or leaves the area", 3, 10},
        {"ITCPlateRegion", "Plate region", "Where the camera reads number plates", 3, 20},
        {"VcaRule", "Rule", "A tripwire (two clicks), a broken line or a zone for analytics events", 2, 10},
        {"ITCLine", "Traffic line", "A stop line or lane line for the traffic camera", 2, 2},
        {"Lane", "Lane", "A traffic lane with its direction of travel", 3, 10},
        {"PdcRule", "People counting", "Counts people crossing a line (two clicks) or an area", 2, 10},
        {"SizeFilter", "Size filter", "The smallest or largest object size that counts", 2, 2},
        {"AtmCali", "ATM calibration", "The cash machine's face and its reference line", 2, 2},
        {"BehaviorCali", "Behaviour calibration", "A reference height line for behaviour analysis", 2, 2},
        {"BehaviorCheck", "Behaviour check", "A line to check the behaviour calibration against", 2, 2},
        {"ItsCali", "Traffic calibration", "A road area of known width and length", 3, 10},
        {"PupilDistance", "Pupil distance", "The distance between the eyes, for face capture", 2, 2},
        {"BinoCali", "Stereo calibration", "A calibration target for a two-lens camera", 1, 1},
        {"LfCali", "Calibration marker", "A point the camera calibrates against", 1, 1},
    };
    static const std::vector<Kind> all = [] {
        std::vector<Kind> list;
        for (const auto& c : kClicks) {
            const render::KindSchema* schema = render::findKindSchema(QLatin1String(c.name));
            list.push_back(Kind{c.name, c.purpose, c.description, c.minClicks, c.maxClicks,
                                schema != nullptr ? schema->fields : std::vector<Option>{}});
        }
        return list;
    }();
    return all;
}

const Kind* findKind(const QString& name)
{
    for (const Kind& kind : kinds()) {
        if (name == QLatin1String(kind.name)) {
            return &kind;
        }
    }
    return nullptr;
}

QJsonObject newFigureEntry(const QString& name, const std::vector<tagTAVRIN_POINT>& clicks)
{
    const Kind* kind = findKind(name);
    const unsigned int count = static_cast<unsigned int>(clicks.size());
    if (kind == nullptr || count < kind->minClicks || count > kind->maxClicks) {
        return QJsonObject();
    }
    QJsonObject entry;
    entry[QStringLiteral("kind")] = name;
    entry[QStringLiteral("vertices")] = pointsValue(clicks.data(), count);
    if (name == QLatin1String("VcaRule")) {
        entry[QStringLiteral("ruleType")] = count == 2 ? QStringLiteral("line") : QStringLiteral("region");
    } else if (name == QLatin1String("PdcRule")) {
        if (count == 2) {
            entry[QStringLiteral("lineMode")] = true;
        } else {
            entry[QStringLiteral("arrow")] = arrowInside(clicks);
        }
    } else if (name == QLatin1String("Lane")) {
        entry[QStringLiteral("arrow")] = arrowInside(clicks);
    } else if (name == QLatin1String("AtmCali")) {
        atmFromDiagonal(entry, clicks[0], clicks[1]);
    } else if (name == QLatin1String("BinoCali")) {
        entry[QStringLiteral("radius")] = 60;
    }
    return entry;
}

QString pointsText(const QJsonValue& value)
{
    auto number = [](const QJsonValue& v) { return QString::number(v.toDouble(), 'g', 7); };
    if (!value.isArray()) {
        return QString();
    }
    const QJsonArray list = value.toArray();
    QStringList items;
    for (const QJsonValue& item : list) {
        if (item.isArray()) {
            const QJsonArray xy = item.toArray();
            items << number(xy.at(0)) + QStringLiteral(", ") + number(xy.at(1));
        } else {
            items << number(item);
        }
    }
    // A single point [x, y] is one pair of numbers.
    if (!list.isEmpty() && !list.at(0).isArray()) {
        return items.join(QStringLiteral(", "));
    }
    return items.join(QStringLiteral("; "));
}

bool parseOptionText(OptionType type, const QString& text, QJsonValue& value)
{
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty()) {
        value = QJsonValue(QJsonValue::Undefined);
        return true;
    }
    switch (type) {
    case OptionType::Text:
    case OptionType::Colour:
        value = text;
        return true;
    case OptionType::Point: {
        QJsonArray point;
        if (!parsePoint(trimmed, point)) {
            return false;
        }
        value = point;
        return true;
    }
    case OptionType::PointPair: {
        const QStringList parts = trimmed.split(QLatin1Char(';'));
        QJsonArray first;
        QJsonArray second;
        if (parts.size() != 2 || !parsePoint(parts[0], first) || !parsePoint(parts[1], second)) {
            return false;
        }
        value = QJsonArray{first, second};
        return true;
    }
    case OptionType::Numbers: {
        QJsonArray list;
        for (const QString& part : trimmed.split(QLatin1Char(','))) {
            double number = 0.0;
            if (!parseNumber(part, number)) {
                return false;
            }
            list.append(number);
        }
        value = list;
        return true;
    }
    default:
        return false;
    }
}

}  // namespace demo
}  // namespace Tavrin
