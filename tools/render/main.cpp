// tavrin-render: draws a scene file headlessly and writes the picture as PNG or JPEG.
//
//   tavrin-render SCENE.json -o OUT.png [--size WxH] [--no-text]
//   tavrin-render --help | --version
//
// A refused scene, or any other failure, prints one line on stderr naming the file and
// the field, exits non-zero and leaves no output file behind (the picture is written to
// a temporary file beside OUT.png and renamed into place only once it is complete).

#include "OffscreenGl.h"
#include "Scene.h"
#include "SceneRenderer.h"

#include <Tavrin/VcaObjectContainer.h>

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QString>
#include <QStringList>

#include <cstdio>
#include <exception>
#include <optional>

#include <sys/stat.h>

namespace {

const char kUsage[] = "usage: tavrin-render SCENE.json -o OUT.png [--size WxH] [--no-text]";
const char kHelp[] =
    "Draws a Tavrin scene file (docs/scene-format.md) into a PNG picture, headlessly.\n"
    "\n"
    "  -o OUT.png     where the picture goes (written whole or not at all)\n"
    "  --size WxH     the view size in pixels, each side 16 to 4096 (default: the scene's)\n"
    "  --no-text      leave labels and side marks without glyphs\n"
    "  --version      print the version and exit\n"
    "\n"
    "Output format: by the extension of OUT: .png, .jpg or .jpeg.\n"
    "Exit status: 0 drawn; 1 the scene or a file was refused (one line on stderr naming the\n"
    "file and the field); 2 the command line was refused.";

struct Arguments {
    QString scene;
    QString output;
    std::optional<QSize> size;
    bool text = true;
};

/// A refusal of the command line itself.
struct UsageError {
    QString message;
};

/// Keeps a message on one line whatever a file name or a field name holds.
QString oneLine(const QString& text)
{
    QString out;
    for (const QChar c : text) {
        if (c.unicode() < 0x20 || c.unicode() == 0x7f) {
            out += QStringLiteral("\\x%1").arg(c.unicode(), 2, 16, QLatin1Char('0'));
        } else {
            out += c;
        }
    }
    return out;
}

void printLine(const QString& text)
{
    std::fprintf(stderr, "%s\n", oneLine(text).toLocal8Bit().constData());
}

std::optional<QSize> parseSize(const QString& text)
{
    const QStringList parts = text.split(QLatin1Char('x'));
    bool okWidth = false;
    bool okHeight = false;
    const int width = parts.size() == 2 ? parts[0].toInt(&okWidth) : 0;
    const int height = parts.size() == 2 ? parts[1].toInt(&okHeight) : 0;
    if (!okWidth || !okHeight || width < 16 || height < 16 || width > Tavrin::render::kMaxViewSide ||
        height > Tavrin::render::kMaxViewSide) {
        return std::nullopt;
    }
    return QSize(width, height);
}

/// The image format the output's extension names, or null for one the renderer does not
/// write.
const char* formatOf(const QString& path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix == QLatin1String("png")) {
        return "PNG";
    }
    if (suffix == QLatin1String("jpg") || suffix == QLatin1String("jpeg")) {
        return "JPEG";
    }
    return nullptr;
}

Arguments parseArguments(const QStringList& args)
{
    Arguments parsed;
    for (int i = 0; i < args.size(); ++i) {
        const QString& arg = args[i];
        const bool hasValue = i + 1 < args.size();
        if (arg == QLatin1String("-o")) {
            if (!hasValue) {
                throw UsageError{QStringLiteral("-o needs a file name")};
            }
            parsed.output = args[++i];
        } else if (arg == QLatin1String("--size")) {
            if (!hasValue) {
                throw UsageError{QStringLiteral("--size needs WxH")};
            }
            parsed.size = parseSize(args[++i]);
            if (!parsed.size) {
                throw UsageError{QStringLiteral("--size: expected WxH with sides from 16 to %1, got \"%2\"")
                                     .arg(Tavrin::render::kMaxViewSide)
                                     .arg(args[i].left(40))};
            }
        } else if (arg == QLatin1String("--no-text")) {
            parsed.text = false;
        } else if (arg.startsWith(QLatin1Char('-')) && arg.size() > 1) {
            throw UsageError{QStringLiteral("unknown option \"%1\"").arg(arg.left(40))};
        } else if (parsed.scene.isEmpty()) {
            parsed.scene = arg;
        } else {
            throw UsageError{QStringLiteral("one scene file at a time")};
        }
    }
    if (parsed.scene.isEmpty()) {
        throw UsageError{QStringLiteral("no scene file given")};
    }
    if (parsed.output.isEmpty()) {
        throw UsageError{QStringLiteral("no output file given (-o OUT.png)")};
    }
    if (formatOf(parsed.output) == nullptr) {
        throw UsageError{QStringLiteral("-o %1: the output format follows the extension: .png, .jpg or .jpeg")
                             .arg(parsed.output.left(80))};
    }
    return parsed;
}

/// Qt's own diagnostics (an image decoder's warnings) would add lines to the one-line
/// report; the renderer reports every failure itself.
void quietQt(QtMsgType, const QMessageLogContext&, const QString&)
{
}

/// Destroys the registry, and with it every figure, however main is left.
struct RegistryRelease {
    ~RegistryRelease() { Tavrin::VcaObjectContainer::Release(); }
};

void writePicture(const QImage& image, const QString& path)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        throw Tavrin::render::SceneError(QString(), QStringLiteral("cannot write: %1").arg(file.errorString()));
    }
    if (!image.save(&file, formatOf(path)) || !file.commit()) {
        throw Tavrin::render::SceneError(QString(), QStringLiteral("cannot write: %1").arg(file.errorString()));
    }
}

/// Whether writing `output` would replace `scene`: the same file by any path, link or
/// hard link.
bool sameFile(const QString& scene, const QString& output)
{
    struct stat a {};
    struct stat b {};
    return ::stat(QFile::encodeName(scene).constData(), &a) == 0 &&
           ::stat(QFile::encodeName(output).constData(), &b) == 0 && a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

int run(const Arguments& args)
{
    RegistryRelease release;
    QString failing = args.scene;
    if (sameFile(args.scene, args.output)) {
        printLine(QStringLiteral("%1: is the scene file itself, not overwritten").arg(args.output));
        return 1;
    }
    try {
        const Tavrin::render::Scene scene = Tavrin::render::readSceneFile(args.scene, args.size);
        Tavrin::offscreen::OffscreenGl gl;
        if (!gl.create(scene.size.width(), scene.size.height())) {
            printLine(QStringLiteral("%1: no offscreen OpenGL context: %2")
                          .arg(args.scene, QString::fromStdString(gl.error())));
            return 1;
        }
        const QImage image = Tavrin::render::renderScene(scene, gl, args.text);
        failing = args.output;
        writePicture(image, args.output);
    } catch (const Tavrin::render::SceneError& e) {
        if (e.field().isEmpty()) {
            printLine(QStringLiteral("%1: %2").arg(failing, e.message()));
        } else {
            printLine(QStringLiteral("%1: %2: %3").arg(failing, e.field(), e.message()));
        }
        return 1;
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv)
{
    qInstallMessageHandler(quietQt);
    QStringList list;
    for (int i = 1; i < argc; ++i) {
        list << QString::fromLocal8Bit(argv[i]);
    }
    if (list.contains(QLatin1String("-h")) || list.contains(QLatin1String("--help"))) {
        std::printf("%s\n\n%s\n", kUsage, kHelp);
        return 0;
    }
    if (list.contains(QLatin1String("--version"))) {
        std::printf("tavrin-render %s\n", TAVRIN_VERSION);
        return 0;
    }
    try {
        const Arguments args = parseArguments(list);
        return run(args);
    } catch (const UsageError& e) {
        printLine(QStringLiteral("tavrin-render: %1 (%2)").arg(e.message, QLatin1String(kUsage)));
        return 2;
    } catch (const std::exception& e) {
        printLine(QStringLiteral("tavrin-render: %1").arg(QString::fromLocal8Bit(e.what())));
        return 1;
    }
}
