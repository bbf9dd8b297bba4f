#include "FieldReader.h"

#include <QLocale>

#include <cmath>

namespace Tavrin {
namespace render {

namespace {

QString shown(double value)
{
    // The shortest text that reads back as the same number, so a value just past a
    // bound shows why it was refused; in plain notation where a person would write it
    // (Qt 5 and Qt 6 choose exponents differently for 'g').
    const double magnitude = std::fabs(value);
    if (magnitude >= 1e-4 && magnitude < 1e15) {
        return QString::number(value, 'f', QLocale::FloatingPointShortest);
    }
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

QString shown(const QJsonValue& value)
{
    switch (value.type()) {
    case QJsonValue::String:
        return QStringLiteral("\"%1\"").arg(value.toString().left(40));
    case QJsonValue::Double:
        return shown(value.toDouble());
    case QJsonValue::Bool:
        return value.toBool() ? QStringLiteral("true") : QStringLiteral("false");
    case QJsonValue::Array:
        return QStringLiteral("an array of %1").arg(value.toArray().size());
    case QJsonValue::Object:
        return QStringLiteral("an object");
    default:
        return QStringLiteral("null");
    }
}

bool isPrintableAscii(const QString& text)
{
    for (const QChar c : text) {
        if (c.unicode() < 0x20 || c.unicode() > 0x7e) {
            return false;
        }
    }
    return true;
}

}  // namespace

bool parseColour(const QString& text, unsigned int& rgb)
{
    if (text.size() != 7 || text[0] != QLatin1Char('#')) {
        return false;
    }
    unsigned int value = 0;
    for (int i = 1; i < 7; ++i) {
        const int digit = QStringLiteral("0123456789abcdef").indexOf(text[i].toLower());
        if (digit < 0) {
            return false;
        }
        value = value * 16 + static_cast<unsigned int>(digit);
    }
    rgb = value;
    return true;
}

QString countPhrase(int min, int max, const char* one, const char* many)
{
    if (min == max) {
        return QStringLiteral("%1 %2").arg(min).arg(QString::fromLatin1(min == 1 ? one : many));
    }
    return QStringLiteral("%1 to %2 %3").arg(min).arg(max).arg(QString::fromLatin1(many));
}

FieldReader::FieldReader(QJsonObject object, QString path) : m_object(std::move(object)), m_path(std::move(path))
{
    m_known.insert(QStringLiteral("comment"));
}

bool FieldReader::has(const char* key) const
{
    return m_object.contains(QLatin1String(key));
}

QString FieldReader::pathOf(const char* key) const
{
    const QString name = QString::fromUtf8(key);
    return m_path.isEmpty() ? name : m_path + QLatin1Char('.') + name;
}

void FieldReader::fail(const char* key, const QString& message) const
{
    throw SceneError(pathOf(key), message);
}

QJsonValue FieldReader::take(const char* key)
{
    m_known.insert(QString::fromLatin1(key));
    return m_object.value(QLatin1String(key));
}

QString FieldReader::string(const char* key)
{
    const QJsonValue value = take(key);
    if (value.isUndefined()) {
        fail(key, QStringLiteral("missing"));
    }
    if (!value.isString()) {
        fail(key, QStringLiteral("must be a string, got %1").arg(shown(value)));
    }
    return value.toString();
}

QJsonArray FieldReader::array(const char* key)
{
    const QJsonValue value = take(key);
    if (value.isUndefined()) {
        fail(key, QStringLiteral("missing"));
    }
    if (!value.isArray()) {
        fail(key, QStringLiteral("must be an array, got %1").arg(shown(value)));
    }
    return value.toArray();
}

std::optional<int> FieldReader::integer(const char* key, int min, int max)
{
    const QJsonValue value = take(key);
    if (value.isUndefined()) {
        return std::nullopt;
    }
    const double number = value.toDouble();
    if (!value.isDouble() || !std::isfinite(number) || std::floor(number) != number || number < min ||
        number > max) {
        fail(key, QStringLiteral("must be an integer from %1 to %2, got %3").arg(min).arg(max).arg(shown(value)));
    }
    return static_cast<int>(number);
}

std::optional<bool> FieldReader::flag(const char* key)
{
    const QJsonValue value = take(key);
    if (value.isUndefined()) {
        return std::nullopt;
    }
    if (!value.isBool()) {
        fail(key, QStringLiteral("must be true or false, got %1").arg(shown(value)));
    }
    return value.toBool();
}

std::optional<int> FieldReader::choice(const char* key, const std::vector<Choice>& choices)
{
    const QJsonValue value = take(key);
    if (value.isUndefined()) {
        return std::nullopt;
    }
    for (const Choice& c : choices) {
        if ((value.isString() && value.toString() == QLatin1String(c.name)) ||
            (value.isDouble() && value.toDouble() == c.value)) {
            return c.value;
        }
    }
    QStringList names;
    for (const Choice& c : choices) {
        names << QStringLiteral("\"%1\" (%2)").arg(QLatin1String(c.name)).arg(c.value);
    }
    fail(key, QStringLiteral("must be one of %1, got %2").arg(names.join(QStringLiteral(", ")), shown(value)));
}

std::optional<QByteArray> FieldReader::text(const char* key, int maxLength)
{
    const QJsonValue value = take(key);
    if (value.isUndefined()) {
        return std::nullopt;
    }
    if (!value.isString()) {
        fail(key, QStringLiteral("must be a string, got %1").arg(shown(value)));
    }
    const QString text = value.toString();
    if (!isPrintableAscii(text)) {
        fail(key, QStringLiteral("must be printable ASCII text"));
    }
    if (text.size() > maxLength) {
        fail(key, QStringLiteral("at most %1 characters, got %2").arg(maxLength).arg(text.size()));
    }
    return text.toLatin1();
}

std::optional<unsigned int> FieldReader::colour(const char* key)
{
    const QJsonValue value = take(key);
    if (value.isUndefined()) {
        return std::nullopt;
    }
    unsigned int rgb = 0;
    if (!value.isString() || !parseColour(value.toString(), rgb)) {
        fail(key, QStringLiteral("must be a colour \"#rrggbb\", got %1").arg(shown(value)));
    }
    return rgb;
}

tagTAVRIN_POINT FieldReader::pointAt(const QJsonValue& value, const QString& path) const
{
    const QJsonArray xy = value.toArray();
    if (!value.isArray() || xy.size() != 2) {
        throw SceneError(path, QStringLiteral("must be a point [x, y], got %1").arg(shown(value)));
    }
    float coordinates[2] = {0.0f, 0.0f};
    for (int i = 0; i < 2; ++i) {
        const QJsonValue c = xy.at(i);
        const double number = c.toDouble();
        if (!c.isDouble() || !std::isfinite(number) || number < 0.0 || number > 1.0) {
            throw SceneError(QStringLiteral("%1[%2]").arg(path).arg(i),
                             QStringLiteral("must be a number from 0 to 1, got %1").arg(shown(c)));
        }
        coordinates[i] = static_cast<float>(number);
    }
    return tagTAVRIN_POINT{coordinates[0], coordinates[1]};
}

std::optional<tagTAVRIN_POINT> FieldReader::point(const char* key)
{
    const QJsonValue value = take(key);
    if (value.isUndefined()) {
        return std::nullopt;
    }
    return pointAt(value, pathOf(key));
}

std::optional<std::vector<tagTAVRIN_POINT>> FieldReader::points(const char* key, int min, int max,
                                                                 const QString& counted)
{
    const QJsonValue value = take(key);
    if (value.isUndefined()) {
        return std::nullopt;
    }
    if (!value.isArray()) {
        fail(key, QStringLiteral("must be a list of points [[x, y], ...], got %1").arg(shown(value)));
    }
    const QJsonArray list = value.toArray();
    if (list.size() < min || list.size() > max) {
        fail(key, QStringLiteral("%1, got %2").arg(counted).arg(list.size()));
    }
    std::vector<tagTAVRIN_POINT> result;
    for (int i = 0; i < list.size(); ++i) {
        result.push_back(pointAt(list.at(i), QStringLiteral("%1[%2]").arg(pathOf(key)).arg(i)));
    }
    return result;
}

std::optional<std::vector<float>> FieldReader::numbers(const char* key, int maxCount, double min, double max)
{
    const QJsonValue value = take(key);
    if (value.isUndefined()) {
        return std::nullopt;
    }
    if (!value.isArray()) {
        fail(key, QStringLiteral("must be a list of numbers, got %1").arg(shown(value)));
    }
    const QJsonArray list = value.toArray();
    if (list.size() > maxCount) {
        fail(key, QStringLiteral("at most %1 numbers, got %2").arg(maxCount).arg(list.size()));
    }
    std::vector<float> result;
    for (int i = 0; i < list.size(); ++i) {
        const QJsonValue v = list.at(i);
        const double number = v.toDouble();
        if (!v.isDouble() || !std::isfinite(number) || number < min || number > max) {
            throw SceneError(QStringLiteral("%1[%2]").arg(pathOf(key)).arg(i),
                             QStringLiteral("must be a number from %1 to %2, got %3")
                                 .arg(shown(min), shown(max), shown(v)));
        }
        result.push_back(static_cast<float>(number));
    }
    return result;
}

void FieldReader::finish() const
{
    for (auto it = m_object.constBegin(); it != m_object.constEnd(); ++it) {
        if (!m_known.contains(it.key())) {
            const QByteArray key = it.key().toUtf8();
            fail(key.constData(), QStringLiteral("unknown field"));
        }
    }
}

}  // namespace render
}  // namespace Tavrin
