#ifndef TAVRIN_TOOLS_RENDER_FIELDREADER_H
#define TAVRIN_TOOLS_RENDER_FIELDREADER_H

// Typed, checked access to the fields of one JSON object of a scene file. Every refusal
// throws a SceneError that names the field by its path in the file
// ("figures[3].vertices[1][0]"), so the renderer can report it on one line.

#include <Tavrin/TavrinTypes.h>

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QSet>
#include <QString>

#include <optional>
#include <stdexcept>
#include <vector>

namespace Tavrin {
namespace render {

/// A refused scene: `field` is the path of the offending field ("" for the file itself).
class SceneError : public std::runtime_error {
public:
    SceneError(QString field, QString message)
        : std::runtime_error(message.toStdString()), m_field(std::move(field)), m_message(std::move(message))
    {
    }
    const QString& field() const { return m_field; }
    const QString& message() const { return m_message; }

private:
    QString m_field;
    QString m_message;
};

/// One accepted spelling of an enumerated option: its name and its value.
struct Choice {
    const char* name;
    int value;
};

/// Reads the fields of one JSON object. Each read marks its key as known; `finish()` then
/// refuses any key that no read asked for, so a misspelt option is an error instead of
/// being silently ignored. The key "comment" is always allowed and never read.
class FieldReader {
public:
    /// `path` is the object's own path: "" for the top level, "figures[2]" for a figure.
    FieldReader(QJsonObject object, QString path);

    bool has(const char* key) const;
    /// The path of `key` inside this object, as errors name it.
    QString pathOf(const char* key) const;
    [[noreturn]] void fail(const char* key, const QString& message) const;

    /// A required string.
    QString string(const char* key);
    /// A required array.
    QJsonArray array(const char* key);
    /// An integer in [min, max], if present.
    std::optional<int> integer(const char* key, int min, int max);
    /// A boolean, if present.
    std::optional<bool> flag(const char* key);
    /// One of `choices`, given by name or by value, if present.
    std::optional<int> choice(const char* key, const std::vector<Choice>& choices);
    /// Printable ASCII text of at most `maxLength` characters, if present.
    std::optional<QByteArray> text(const char* key, int maxLength);
    /// A colour "#rrggbb" as 0xRRGGBB, if present.
    std::optional<unsigned int> colour(const char* key);
    /// A point [x, y] with both coordinates in [0, 1], if present.
    std::optional<tagTAVRIN_POINT> point(const char* key);
    /// A list of `min` to `max` points [[x, y], ...], if present. `counted` names what the
    /// count is checked for in the message ("ShieldRegion takes 3 to 10 vertices").
    std::optional<std::vector<tagTAVRIN_POINT>> points(const char* key, int min, int max, const QString& counted);
    /// A list of at most `maxCount` numbers, each in [min, max], if present.
    std::optional<std::vector<float>> numbers(const char* key, int maxCount, double min, double max);

    /// Refuses the first key that no read asked for.
    void finish() const;

private:
    QJsonValue take(const char* key);
    tagTAVRIN_POINT pointAt(const QJsonValue& value, const QString& path) const;

    QJsonObject m_object;
    QString m_path;
    QSet<QString> m_known;
};

/// Reads "#rrggbb" (exactly six hexadecimal digits) into 0xRRGGBB.
bool parseColour(const QString& text, unsigned int& rgb);

/// "3 to 10 vertices", "2 vertices" or "1 vertex": the count phrase of the messages.
QString countPhrase(int min, int max, const char* one, const char* many);

}  // namespace render
}  // namespace Tavrin

#endif  // TAVRIN_TOOLS_RENDER_FIELDREADER_H
