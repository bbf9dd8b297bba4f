// tavrin-render: draws a scene file headlessly and writes the picture as PNG or JPEG, or
// through QPainter as PNG, JPEG, SVG or PDF.
//
//   tavrin-render SCENE.json -o OUT.png [--size WxH] [--no-text] [--text-outline]
//                 [--renderer gl1|painter|core|gles]
//   tavrin-render --help | --version
//
// A refused scene, or any other failure, prints one line on stderr naming the file and
// the field, exits non-zero and leaves no output file behind (the picture is written to
// a temporary file beside OUT.png and renamed into place only once it is complete).

#include "OffscreenGl.h"
#include "QtOffscreenGl.h"
#include "Scene.h"
#include "SceneRenderer.h"

#include <Tavrin/TextRendering.h>
#include <Tavrin/VcaObjectContainer.h>

#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>
#include <QSaveFile>
#include <QString>
#include <QStringList>

#include <cstdio>
#include <cstring>
#include <exception>
#include <optional>

#include <sys/stat.h>

namespace {

const char kUsage[] =
    "usage: tavrin-render SCENE.json -o OUT.png [--size WxH] [--no-text] [--text-outline] "
    "[--renderer gl1|painter|core|gles]";
const char kHelp[] =
    "Draws a Tavrin scene file (docs/scene-format.md) into a picture, headlessly.\n"
    "\n"
    "  -o OUT.png     where the picture goes (written whole or not at all)\n"
    "  --size WxH     the view size in pixels, each side 16 to 4096 (default: the scene's)\n"
    "  --no-text      leave labels and side marks without glyphs\n"
    "  --text-outline give every glyph a one-pixel dark outline (legible over busy pictures)\n"
    "  --renderer R   gl1: the figures' OpenGL drawing in an offscreen context (default for\n"
    "                 .png and .jpg); painter: their draw list painted with QPainter, no\n"
    "                 OpenGL needed (default for .svg and .pdf); core, gles: the draw list\n"
    "                 drawn by GlRenderer in an OpenGL 3.3 core or ES 3.0 context (Mesa's\n"
    "                 surfaceless EGL through Qt's eglfs platform: no display needed)\n"
    "  --version      print the version and exit\n"
    "\n"
    "Output format: by the extension of OUT: .png, .jpg or .jpeg (either renderer), .svg or\n"
    ".pdf (painter; the background picture embedded).\n"
    "Exit status: 0 drawn; 1 the scene or a file was refused (one line on stderr naming the\n"
    "file and the field); 2 the command line was refused.";

enum class Renderer { Gl1, Painter, Core, Gles };

struct Arguments {
    QString scene;
    QString output;
    std::optional<QSize> size;
    bool text = true;
    bool outline = false;
    std::optional<Renderer> renderer;
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

/// The format the output's extension names ("PNG", "JPEG", "SVG", "PDF"), or null for one
/// the renderer does not write.
const char* formatOf(const QString& path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix == QLatin1String("png")) {
        return "PNG";
    }
    if (suffix == QLatin1String("jpg") || suffix == QLatin1String("jpeg")) {
        return "JPEG";
    }
    if (suffix == QLatin1String("svg")) {
        return "SVG";
    }
    if (suffix == QLatin1String("pdf")) {
        return "PDF";
    }
    return nullptr;
}

/// Vector formats are painted; only the painter writes them.
bool isVectorFormat(const char* format)
{
    return format != nullptr && (std::strcmp(format, "SVG") == 0 || std::strcmp(format, "PDF") == 0);
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
        } else if (arg == QLatin1String("--text-outline")) {
            parsed.outline = true;
        } else if (arg == QLatin1String("--renderer")) {
            if (!hasValue) {
                throw UsageError{QStringLiteral("--renderer needs gl1, painter, core or gles")};
            }
            const QString name = args[++i];
            if (name == QLatin1String("gl1")) {
                parsed.renderer = Renderer::Gl1;
            } else if (name == QLatin1String("painter")) {
                parsed.renderer = Renderer::Painter;
            } else if (name == QLatin1String("core")) {
                parsed.renderer = Renderer::Core;
            } else if (name == QLatin1String("gles")) {
                parsed.renderer = Renderer::Gles;
            } else {
                throw UsageError{
                    QStringLiteral("--renderer: expected gl1, painter, core or gles, got \"%1\"").arg(name.left(40))};
            }
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
    const char* format = formatOf(parsed.output);
    if (format == nullptr) {
        throw UsageError{
            QStringLiteral("-o %1: the output format follows the extension: .png, .jpg, .jpeg, .svg or .pdf")
                .arg(parsed.output.left(80))};
    }
    if (isVectorFormat(format) && parsed.renderer && *parsed.renderer != Renderer::Painter) {
        throw UsageError{QStringLiteral("-o %1: %2 is written by --renderer painter only")
                             .arg(parsed.output.left(80), QLatin1String(format))};
    }
    if (!parsed.renderer) {
        parsed.renderer = isVectorFormat(format) ? Renderer::Painter : Renderer::Gl1;
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

[[noreturn]] void cannotWrite(const QSaveFile& file)
{
    throw Tavrin::render::SceneError(QString(), QStringLiteral("cannot write: %1").arg(file.errorString()));
}

void writePicture(const QImage& image, const QString& path)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        cannotWrite(file);
    }
    if (!image.save(&file, formatOf(path)) || !file.commit()) {
        cannotWrite(file);
    }
}

/// The scene painted as SVG or PDF: figures as vector elements, the picture embedded.
void writeVector(const Tavrin::render::Scene& scene, bool text, const QString& path)
{
    const Tavrin::DrawList figures = Tavrin::render::captureScene(scene, text);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        cannotWrite(file);
    }
    bool painted = false;
    if (std::strcmp(formatOf(path), "SVG") == 0) {
        QSvgGenerator svg;
        svg.setOutputDevice(&file);
        svg.setSize(scene.size);
        svg.setViewBox(QRect(QPoint(0, 0), scene.size));
        svg.setTitle(QFileInfo(path).completeBaseName());
        QPainter painter;
        painted = painter.begin(&svg);
        if (painted) {
            Tavrin::render::paintScene(painter, scene, figures);
            painted = painter.end();
        }
    } else {
        QPdfWriter pdf(&file);
        // One point per view pixel, the page exactly the view.
        pdf.setResolution(72);
        pdf.setPageSize(QPageSize(QSizeF(scene.size), QPageSize::Point, QString(), QPageSize::ExactMatch));
        pdf.setPageMargins(QMarginsF(0, 0, 0, 0));
        QPainter painter;
        painted = painter.begin(&pdf);
        if (painted) {
            Tavrin::render::paintScene(painter, scene, figures);
            painted = painter.end();
        }
    }
    if (!painted || !file.commit()) {
        cannotWrite(file);
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

/// The picture from GlRenderer into `image`; 0, or 1 after the one-line report.
int renderModern(const Tavrin::render::Scene& scene, const Arguments& args, QImage& image)
{
    Tavrin::offscreen::preferHeadlessQtPlatform();
    static int argc = 1;
    static char name[] = "tavrin-render";
    static char* argv[] = {name, nullptr};
    QGuiApplication app(argc, argv);
    QString error;
    image = Tavrin::render::renderSceneModernGl(
        scene, args.renderer == Renderer::Gles ? Tavrin::render::ModernGl::Es : Tavrin::render::ModernGl::Core,
        args.text, error);
    if (image.isNull()) {
        printLine(QStringLiteral("%1: %2").arg(args.scene, error));
        return 1;
    }
    return 0;
}

int run(const Arguments& args)
{
    RegistryRelease release;
    Tavrin::TextRendering::SetOutline(args.outline);
    QString failing = args.scene;
    if (sameFile(args.scene, args.output)) {
        printLine(QStringLiteral("%1: is the scene file itself, not overwritten").arg(args.output));
        return 1;
    }
    try {
        const Tavrin::render::Scene scene = Tavrin::render::readSceneFile(args.scene, args.size);
        if (isVectorFormat(formatOf(args.output))) {
            failing = args.output;
            writeVector(scene, args.text, args.output);
            return 0;
        }
        if (args.renderer == Renderer::Painter) {
            const QImage image = Tavrin::render::paintSceneImage(scene, args.text);
            failing = args.output;
            writePicture(image, args.output);
            return 0;
        }
        if (args.renderer == Renderer::Core || args.renderer == Renderer::Gles) {
            QImage image;
            if (renderModern(scene, args, image) != 0) {
                return 1;
            }
            failing = args.output;
            writePicture(image, args.output);
            return 0;
        }
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
