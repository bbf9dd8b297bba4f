#include "Scene.h"

#include "FigureBuilder.h"
#include "FigureKinds.h"

#include <Tavrin/VcaObject.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QJsonDocument>
#include <QJsonParseError>
#include <QSet>

#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace Tavrin {
namespace render {

namespace {

const std::vector<Choice> kStatuses = {{"normal", 0}, {"selected", 1}, {"highlighted", 2}};
const QSize kDefaultSize(1280, 720);
constexpr qint64 kMaxFileBytes = 16 * 1024 * 1024;
constexpr int kMaxLabel = 16;
constexpr int kMaxFigures = 1000;

QString lineAndColumn(const QByteArray& text, int offset)
{
    int line = 1;
    int column = 1;
    for (int i = 0; i < offset && i < text.size(); ++i) {
        if (text[i] == '\n') {
            ++line;
            column = 1;
        } else {
            ++column;
        }
    }
    return QStringLiteral("line %1, column %2").arg(line).arg(column);
}

/// Sends what is written to standard error to /dev/null while it lives.
class QuietStandardError {
public:
    QuietStandardError() : m_saved(::dup(2))
    {
        const int null = ::open("/dev/null", O_WRONLY);
        if (null >= 0) {
            ::dup2(null, 2);
            ::close(null);
        }
    }
    ~QuietStandardError()
    {
        if (m_saved >= 0) {
            ::dup2(m_saved, 2);
            ::close(m_saved);
        }
    }
    QuietStandardError(const QuietStandardError&) = delete;
    QuietStandardError& operator=(const QuietStandardError&) = delete;

private:
    int m_saved;
};

/// Where in well-formed JSON a key stands a second time in one object, or -1; `key` gets
/// its text as written. A parser keeps only the last of repeated keys, silently.
int repeatedKey(const QByteArray& json, QByteArray& key)
{
    struct Frame {
        bool object;
        bool expectKey;
        QSet<QByteArray> keys;
    };
    std::vector<Frame> frames;
    for (int i = 0; i < json.size(); ++i) {
        const char c = json[i];
        if (c == '{' || c == '[') {
            frames.push_back(Frame{c == '{', c == '{', {}});
        } else if ((c == '}' || c == ']') && !frames.empty()) {
            frames.pop_back();
        } else if (c == ',' && !frames.empty()) {
            frames.back().expectKey = frames.back().object;
        } else if (c == '"') {
            const int start = i;
            for (++i; i < json.size() && json[i] != '"'; ++i) {
                i += json[i] == '\\' ? 1 : 0;
            }
            if (!frames.empty() && frames.back().expectKey) {
                key = json.mid(start + 1, i - start - 1);
                frames.back().expectKey = false;
                if (frames.back().keys.contains(key)) {
                    return start;
                }
                frames.back().keys.insert(key);
            }
        }
    }
    return -1;
}

QImage readPicture(FieldReader& top, const QString& name, const QString& baseDir)
{
    const QString path = QDir(baseDir).filePath(name);
    if (name.isEmpty() || QFileInfo(path).isDir()) {
        top.fail("background", QStringLiteral("\"%1\" is %2, not a picture file")
                                   .arg(name.left(40), name.isEmpty() ? QStringLiteral("an empty path")
                                                                      : QStringLiteral("a directory")));
    }
    QImageReader reader(path);
    const QSize size = reader.size();
    if (!reader.canRead()) {
        top.fail("background", QStringLiteral("cannot read the picture \"%1\": %2").arg(name, reader.errorString()));
    }
    if (size.isValid() && (size.width() > kMaxPictureSide || size.height() > kMaxPictureSide)) {
        top.fail("background", QStringLiteral("the picture \"%1\" is %2x%3, larger than %4 pixels a side")
                                   .arg(name)
                                   .arg(size.width())
                                   .arg(size.height())
                                   .arg(kMaxPictureSide));
    }
    QImage picture;
    {
        // Image decoders print their own complaints; the renderer's line is the only one.
        QuietStandardError quiet;
        picture = reader.read();
    }
    if (picture.isNull()) {
        top.fail("background", QStringLiteral("cannot read the picture \"%1\": truncated or damaged (%2)")
                                   .arg(name, reader.errorString()));
    }
    return picture;
}

/// "background": "#rrggbb" or a picture file; black when absent.
void readBackground(FieldReader& top, const QString& baseDir, Scene& scene)
{
    if (!top.has("background")) {
        return;
    }
    const QString text = top.string("background");
    if (text.startsWith(QLatin1Char('#'))) {
        if (!parseColour(text, scene.colour)) {
            top.fail("background", QStringLiteral("must be a colour \"#rrggbb\" or a picture file, got \"%1\"")
                                       .arg(text.left(40)));
        }
        return;
    }
    scene.picture = readPicture(top, text, baseDir);
}

/// "width" and "height" (both or neither); otherwise the picture's size or 1280x720.
QSize readSize(FieldReader& top, const QImage& picture)
{
    const std::optional<int> width = top.integer("width", 16, kMaxViewSide);
    const std::optional<int> height = top.integer("height", 16, kMaxViewSide);
    if (width.has_value() != height.has_value()) {
        top.fail(width ? "height" : "width", QStringLiteral("missing: width and height go together"));
    }
    if (width) {
        return QSize(*width, *height);
    }
    if (picture.isNull()) {
        return kDefaultSize;
    }
    if (picture.width() < 16 || picture.height() < 16) {
        top.fail("width", QStringLiteral("missing: the background picture is %1x%2, smaller than a view may be "
                                         "(16 to %3 pixels a side); give width and height")
                              .arg(picture.width())
                              .arg(picture.height())
                              .arg(kMaxViewSide));
    }
    if (picture.width() > kMaxViewSide || picture.height() > kMaxViewSide) {
        top.fail("width", QStringLiteral("missing: the background picture is %1x%2, larger than a view may be; "
                                         "give width and height")
                              .arg(picture.width())
                              .arg(picture.height()));
    }
    return picture.size();
}

/// The fields every kind has: label, status and selected vertex.
void applyCommonFields(FigureBuilder& b)
{
    FieldReader& in = b.fields();
    VcaObject* figure = b.object();
    if (std::optional<QByteArray> label = in.text("label", kMaxLabel)) {
        if (!label->isEmpty()) {
            b.require(figure->SetLabelText(label->data(), static_cast<unsigned int>(label->size())), "label");
        }
    }
    if (const std::optional<int> status = in.choice("status", kStatuses)) {
        figure->SetObjStatus(static_cast<tagTAVRIN_OBJ_STATUS>(*status));
    }
    if (const std::optional<int> selected = in.integer("selected", 0, static_cast<int>(b.handleCount()))) {
        figure->SetSelPointIndex(static_cast<unsigned int>(*selected));
    }
}

VcaObject* buildFigure(const QJsonValue& value, int index, const QSize& view)
{
    const QString path = QStringLiteral("figures[%1]").arg(index);
    if (!value.isObject()) {
        throw SceneError(path, QStringLiteral("must be an object with a \"kind\""));
    }
    FieldReader fields(value.toObject(), path);
    const QString name = fields.string("kind");
    const FigureKind* kind = findFigureKind(name);
    if (kind == nullptr) {
        fields.fail("kind", QStringLiteral("unknown kind \"%1\"").arg(name.left(40)));
    }
    FigureBuilder builder(fields, name, view.width(), view.height());
    kind->setup(builder);
    applyCommonFields(builder);
    fields.finish();
    return builder.object();
}

}  // namespace

Scene parseScene(const QByteArray& json, const QString& baseDir, const std::optional<QSize>& size)
{
    if (json.trimmed().isEmpty()) {
        throw SceneError(QString(), QStringLiteral("empty file, not a scene"));
    }
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError) {
        // A lone number, string, true, false or null is JSON, just not a scene.
        QJsonParseError wrapped;
        QJsonDocument::fromJson("[" + json + "]", &wrapped);
        if (wrapped.error == QJsonParseError::NoError) {
            throw SceneError(QString(), QStringLiteral("a scene must be a JSON object, got %1")
                                            .arg(QString::fromUtf8(json.trimmed().left(40))));
        }
        throw SceneError(QString(), QStringLiteral("invalid JSON at %1: %2")
                                        .arg(lineAndColumn(json, error.offset), error.errorString()));
    }
    QByteArray key;
    const int repeated = repeatedKey(json, key);
    if (repeated >= 0) {
        throw SceneError(QString(), QStringLiteral("the key \"%1\" stands twice in one object at %2")
                                        .arg(QString::fromUtf8(key.left(40)), lineAndColumn(json, repeated)));
    }
    if (!document.isObject()) {
        throw SceneError(QString(), QStringLiteral("a scene must be a JSON object"));
    }
    FieldReader top(document.object(), QString());
    Scene scene;
    readBackground(top, baseDir, scene);
    scene.size = readSize(top, scene.picture);
    if (size) {
        scene.size = *size;
    }
    const QJsonArray figures = top.array("figures");
    if (figures.size() > kMaxFigures) {
        top.fail("figures", QStringLiteral("at most %1 figures, got %2").arg(kMaxFigures).arg(figures.size()));
    }
    top.finish();
    if (!scene.picture.isNull()) {
        scene.picture = scene.picture.scaled(scene.size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                            .convertToFormat(QImage::Format_RGBA8888);
    }
    for (int i = 0; i < figures.size(); ++i) {
        scene.figures.push_back(buildFigure(figures.at(i), i, scene.size));
    }
    return scene;
}

Scene readSceneFile(const QString& path, const std::optional<QSize>& size)
{
    QFile file(path);
    if (QFileInfo(path).isDir()) {
        throw SceneError(QString(), QStringLiteral("cannot read: is a directory"));
    }
    if (!file.open(QIODevice::ReadOnly)) {
        throw SceneError(QString(), QStringLiteral("cannot read: %1").arg(file.errorString()));
    }
    // Read at most one byte past the limit, so a device or a pipe that never ends (or a
    // file that grows) is refused in bounded memory like a large file.
    const QByteArray json = file.read(kMaxFileBytes + 1);
    if (json.size() > kMaxFileBytes) {
        throw SceneError(QString(), QStringLiteral("larger than %1 bytes, not a scene").arg(kMaxFileBytes));
    }
    return parseScene(json, QFileInfo(path).absolutePath(), size);
}

}  // namespace render
}  // namespace Tavrin
