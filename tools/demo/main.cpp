// tavrin-demo: an interactive host that shows a picture, draws every figure over it and
// edits them with the mouse.
//
//   tavrin-demo [--renderer gl1|core|painter] [SCENE.json]
//   tavrin-demo --self-test SCENE.json [--grab VIEW.png] [--save EDITED.json]
//   tavrin-demo --screenshot WINDOW.png [SCENE.json] [--press X,Y]
//
// --self-test drives the window with synthetic events and exits 0 when every check
// passed. --screenshot opens the scene, presses at the normalised point X,Y (to select a
// figure) and writes the whole window as a PNG. --renderer picks how the view draws the
// figures: gl1, their own OpenGL calls in a compatibility context (the default); core,
// their draw list through GlRenderer in an OpenGL 3.3 core context; painter, their draw
// list painted with QPainter.

#include "DemoView.h"
#include "MainWindow.h"
#include "SceneDocument.h"
#include "SelfTest.h"

#include <Tavrin/TextRendering.h>

#include <QApplication>
#include <QSurfaceFormat>
#include <QTest>

#include <cmath>
#include <cstdio>
#include <optional>

namespace {

const char kUsage[] =
    "usage: tavrin-demo [--renderer gl1|core|painter] [SCENE.json]\n"
    "       tavrin-demo --self-test SCENE.json [--grab VIEW.png] [--save EDITED.json]\n"
    "       tavrin-demo --screenshot WINDOW.png [SCENE.json] [--press X,Y]\n"
    "       tavrin-demo --help | --version\n"
    "--renderer: gl1 draws with the figures' own OpenGL calls (compatibility context, the\n"
    "default); core draws their draw list with GlRenderer (OpenGL 3.3 core); painter paints\n"
    "it with QPainter. The figures look and edit the same under each.";

struct Arguments {
    QString scene;
    bool selfTest = false;
    QString grab;
    QString save;
    QString screenshot;
    std::optional<QPointF> press;
};

std::optional<QPointF> parsePoint(const QString& text)
{
    const QStringList parts = text.split(QLatin1Char(','));
    bool okX = false;
    bool okY = false;
    const double x = parts.size() == 2 ? parts[0].toDouble(&okX) : 0.0;
    const double y = parts.size() == 2 ? parts[1].toDouble(&okY) : 0.0;
    if (!okX || !okY || !(x >= 0.0 && x <= 1.0) || !(y >= 0.0 && y <= 1.0)) {
        return std::nullopt;
    }
    return QPointF(x, y);
}

/// False (after printing why) for a command line it cannot follow.
bool parseArguments(const QStringList& args, Arguments& parsed)
{
    for (int i = 0; i < args.size(); ++i) {
        const QString& arg = args[i];
        const bool hasValue = i + 1 < args.size();
        if (arg == QLatin1String("--renderer") && hasValue) {
            ++i;  // read before the application, by renderingOf
        } else if (arg == QLatin1String("--self-test") && hasValue) {
            parsed.selfTest = true;
            parsed.scene = args[++i];
        } else if (arg == QLatin1String("--grab") && hasValue) {
            parsed.grab = args[++i];
        } else if (arg == QLatin1String("--save") && hasValue) {
            parsed.save = args[++i];
        } else if (arg == QLatin1String("--screenshot") && hasValue) {
            parsed.screenshot = args[++i];
        } else if (arg == QLatin1String("--press") && hasValue) {
            parsed.press = parsePoint(args[++i]);
            if (!parsed.press) {
                std::fprintf(stderr, "tavrin-demo: --press needs X,Y from 0 to 1\n");
                return false;
            }
        } else if (!arg.startsWith(QLatin1Char('-')) && parsed.scene.isEmpty()) {
            parsed.scene = arg;
        } else {
            std::fprintf(stderr, "tavrin-demo: cannot follow \"%s\"\n%s\n", arg.toLocal8Bit().constData(), kUsage);
            return false;
        }
    }
    return true;
}

int screenshot(Tavrin::demo::MainWindow& window, const Arguments& args)
{
    window.show();
    if (!QTest::qWaitForWindowExposed(&window)) {
        std::fprintf(stderr, "tavrin-demo: the window was never shown\n");
        return 1;
    }
    Tavrin::demo::DemoView* view = window.view();
    if (args.press) {
        const int pictureWidth = view->width() - 2 * Tavrin::demo::DemoView::kMargin;
        const int pictureHeight = view->height() - 2 * Tavrin::demo::DemoView::kMargin;
        const QPoint at = view->pictureOrigin() +
                          QPoint(static_cast<int>(std::lround(args.press->x() * pictureWidth)),
                                 static_cast<int>(std::lround(args.press->y() * pictureHeight)));
        QTest::mouseClick(view, Qt::LeftButton, Qt::NoModifier, at);
    }
    view->update();
    QTest::qWait(100);
    if (!window.grab().save(args.screenshot, "PNG")) {
        std::fprintf(stderr, "tavrin-demo: cannot write %s\n", args.screenshot.toLocal8Bit().constData());
        return 1;
    }
    return 0;
}

}  // namespace

/// The --renderer of the command line (gl1 when absent); false for an unknown name.
bool renderingOf(int argc, char** argv, Tavrin::demo::Rendering& rendering)
{
    rendering = Tavrin::demo::Rendering::Gl1;
    for (int i = 1; i + 1 < argc; ++i) {
        if (QByteArray(argv[i]) != "--renderer") {
            continue;
        }
        const QByteArray name(argv[i + 1]);
        if (name == "gl1") {
            rendering = Tavrin::demo::Rendering::Gl1;
        } else if (name == "core") {
            rendering = Tavrin::demo::Rendering::Core;
        } else if (name == "painter") {
            rendering = Tavrin::demo::Rendering::Painter;
        } else {
            std::fprintf(stderr, "tavrin-demo: --renderer: expected gl1, core or painter, got \"%s\"\n", argv[i + 1]);
            return false;
        }
    }
    return true;
}

int main(int argc, char** argv)
{
    Tavrin::demo::Rendering rendering = Tavrin::demo::Rendering::Gl1;
    if (!renderingOf(argc, argv, rendering)) {
        return 2;
    }
    // The view's surface matches its rendering, asked for before the application creates
    // any context: the figures' own calls need the fixed pipeline of a compatibility
    // profile; GlRenderer a 3.3 core profile.
    QSurfaceFormat format;
    format.setRenderableType(QSurfaceFormat::OpenGL);
    if (rendering == Tavrin::demo::Rendering::Core) {
        format.setProfile(QSurfaceFormat::CoreProfile);
        format.setVersion(3, 3);
    } else {
        format.setProfile(QSurfaceFormat::CompatibilityProfile);
        format.setVersion(2, 1);
    }
    QSurfaceFormat::setDefaultFormat(format);

    // Help and version need no display: answered before the application connects to one.
    for (int i = 1; i < argc; ++i) {
        const QByteArray arg(argv[i]);
        if (arg == "-h" || arg == "--help") {
            std::printf("%s\n", kUsage);
            return 0;
        }
        if (arg == "--version") {
            std::printf("tavrin-demo %s\n", TAVRIN_VERSION);
            return 0;
        }
    }
    QApplication app(argc, argv);
    QStringList list = app.arguments();
    list.removeFirst();
    Arguments args;
    if (!parseArguments(list, args)) {
        return 2;
    }
    // Labels and the tripwires' side marks in the library's own bitmap font, outlined so
    // they read over the picture (View > Outline text turns that off).
    Tavrin::TextRendering::SetEnabled(true);
    Tavrin::TextRendering::SetOutline(true);

    Tavrin::demo::SceneDocument document(QSize(1280, 720), QSize(960, 540));
    Tavrin::demo::MainWindow window(document, rendering);
    window.resize(1500, 720);
    if (args.selfTest) {
        Tavrin::demo::SelfTestFiles files{args.scene, args.grab, args.save};
        return Tavrin::demo::runSelfTest(window, document, files);
    }
    if (!args.screenshot.isEmpty()) {
        QString reason;
        if (!args.scene.isEmpty() && !window.openScene(args.scene, &reason)) {
            std::fprintf(stderr, "tavrin-demo: %s\n", reason.toLocal8Bit().constData());
            return 1;
        }
        return screenshot(window, args);
    }
    // Shown first, so that a scene it cannot open is reported in a dialog.
    window.show();
    if (!args.scene.isEmpty()) {
        window.openScene(args.scene);
    }
    return app.exec();
}
