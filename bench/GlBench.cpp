// The library against its floor and its peer on a real driver (Mesa):
//   - MesaLibrary: the scene drawn by the library into the offscreen EGL compatibility
//     context, glFinish included;
//   - MesaFloor: the same frame's recorded call stream replayed into that context;
//   - QPainterRaster: the equivalent overlay drawn with QPainter into a QImage;
//   - QtGlLibrary, QtGlFloor, QPainterGl, QtGlRenderer: the library, the replayed stream,
//     QPainter on a QOpenGLPaintDevice and GlRenderer, all into one framebuffer object of
//     one Qt context (an EGL compatibility context on Mesa's surfaceless display, adopted
//     by Qt's eglfs platform: no display needed).
// Run with --benchmark_repetitions and --benchmark_enable_random_interleaving so that
// drift of the machine affects every variant alike.

#include "CallStream.h"
#include "Replay.h"
#include "Scene.h"

#include <OffscreenGl.h>
#include <QtOffscreenGl.h>

#include <Tavrin/DrawList.h>
#include <TavrinQt/GlRenderer.h>

#include <QGuiApplication>
#include <QImage>
#include <QOpenGLContext>
#include <QOpenGLExtraFunctions>
#include <QOpenGLFramebufferObject>
#include <QOpenGLPaintDevice>
#include <QPainter>
#include <QPolygonF>

#include <GL/gl.h>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <map>
#include <memory>
#include <string>

namespace bench {
namespace {

// ---- the QPainter peer --------------------------------------------------------------

// One thing the peer paints, in pixels of the view.
struct PeerShape {
    enum Kind { Outline, Lines, Fill, Dot } kind;
    QColor color;
    qreal width;  ///< pen width, or dot diameter
    QPolygonF points;
};

QPointF toPixels(float x, float y)
{
    // glVertex2f(2x, 2(1 - y)) after translate(-1, -1) back to the picture, then pixels.
    return QPointF(0.5 * x * kViewWidth, (1.0 - 0.5 * y) * kViewHeight);
}

// The overlay the frame draws, in QPainter's terms: outlines, lines, dots and fills,
// where a run of fill triangles that covers the outline just drawn becomes one filled
// polygon, as a QPainter overlay would draw it.
std::vector<PeerShape> peerShapes(const std::vector<Call>& calls)
{
    std::vector<PeerShape> shapes;
    QColor color(255, 255, 255, 255);
    qreal lineWidth = 1.0;
    qreal pointSize = 1.0;
    GLenum mode = 0;
    QPolygonF batch;
    for (const Call& c : calls) {
        switch (c.op) {
        case Op::Color:
            color = QColor(int(c.u[0] >> 24), int((c.u[0] >> 16) & 0xff), int((c.u[0] >> 8) & 0xff),
                           int(c.u[0] & 0xff));
            break;
        case Op::LineWidth: lineWidth = c.f[0]; break;
        case Op::PointSize: pointSize = c.f[0]; break;
        case Op::Begin:
            mode = c.u[0];
            batch.clear();
            break;
        case Op::Vertex: batch << toPixels(c.f[0], c.f[1]); break;
        case Op::End:
            if (mode == GL_LINE_LOOP) {
                shapes.push_back({PeerShape::Outline, color, lineWidth, batch});
            } else if (mode == GL_LINES) {
                shapes.push_back({PeerShape::Lines, color, lineWidth, batch});
            } else if (mode == GL_POINTS) {
                shapes.push_back({PeerShape::Dot, color, pointSize, batch});
            } else if (mode == GL_POLYGON) {
                shapes.push_back({PeerShape::Fill, color, 0.0, batch});
            }
            break;
        default: break;
        }
    }
    // Merge: an outline followed by exactly n - 2 fill triangles of one colour.
    std::vector<PeerShape> merged;
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        merged.push_back(shapes[i]);
        if (shapes[i].kind != PeerShape::Outline) {
            continue;
        }
        const int corners = static_cast<int>(shapes[i].points.size());
        const std::size_t triangles = static_cast<std::size_t>(std::max(0, corners - 2));
        std::size_t j = i + 1;
        while (j < shapes.size() && j - i - 1 < triangles && shapes[j].kind == PeerShape::Fill &&
               shapes[j].color == shapes[i + 1].color) {
            ++j;
        }
        if (triangles > 0 && j - i - 1 == triangles) {
            merged.push_back({PeerShape::Fill, shapes[i + 1].color, 0.0, shapes[i].points});
            i = j - 1;
        }
    }
    return merged;
}

void paintPeer(QPainter& painter, const std::vector<PeerShape>& shapes)
{
    painter.setRenderHint(QPainter::Antialiasing);
    for (const PeerShape& s : shapes) {
        switch (s.kind) {
        case PeerShape::Outline:
            painter.setPen(QPen(s.color, s.width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
            painter.setBrush(Qt::NoBrush);
            painter.drawPolygon(s.points);
            break;
        case PeerShape::Lines:
            painter.setPen(QPen(s.color, s.width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
            painter.drawLines(s.points.constData(), int(s.points.size() / 2));
            break;
        case PeerShape::Fill:
            painter.setPen(Qt::NoPen);
            painter.setBrush(s.color);
            painter.drawPolygon(s.points);
            break;
        case PeerShape::Dot:
            painter.setPen(Qt::NoPen);
            painter.setBrush(s.color);
            for (const QPointF& p : s.points) {
                painter.drawEllipse(p, s.width / 2, s.width / 2);
            }
            break;
        }
    }
}

// ---- contexts and per-size data ---------------------------------------------------------

struct Frames {
    std::unique_ptr<Scene> scene;
    std::vector<Call> calls;
    std::vector<GLuint> lists;
    std::vector<PeerShape> peer;
};

// Each context is made on first use; the Mesa and the Qt context take turns on the thread.
}  // namespace

Tavrin::offscreen::OffscreenGl* egl()
{
    static Tavrin::offscreen::OffscreenGl context;
    static const bool ok = context.create(kViewWidth, kViewHeight);
    return ok ? &context : nullptr;
}

namespace {

struct QtGl {
    Tavrin::offscreen::QtOffscreenGl gl;
    std::unique_ptr<QOpenGLFramebufferObject> fbo;
    std::unique_ptr<QOpenGLPaintDevice> device;
    bool ok = false;
    std::string error;
};
void createQtGl(QtGl& qt);

QtGl* qtGl()
{
    static QtGl* qt = [] {
        QtGl* made = new QtGl;
        createQtGl(*made);
        return made;
    }();
    return qt;
}

Frames& frames(int figures)
{
    static std::map<int, Frames> all;
    Frames& f = all[figures];
    if (!f.scene) {
        f.scene = std::make_unique<Scene>(figures);
        f.scene->draw();  // the steady state the recorder also starts from
        f.calls = recordFrame(figures);
        f.lists.assign(listNames(f.calls), 0);
        f.peer = peerShapes(f.calls);
    }
    return f;
}

double median(std::vector<double> values)
{
    if (values.empty()) {
        return 0.0;
    }
    std::nth_element(values.begin(), values.begin() + values.size() / 2, values.end());
    return values[values.size() / 2];
}

void countVertices(benchmark::State& state, const Frames& f)
{
    std::size_t vertices = 0;
    for (const Call& c : f.calls) {
        vertices += c.op == Op::Vertex ? 1 : 0;
    }
    state.counters["gl_calls"] = static_cast<double>(f.calls.size());
    state.counters["vertices"] = static_cast<double>(vertices);
}

bool useEgl(benchmark::State& state)
{
    Tavrin::offscreen::OffscreenGl* context = egl();
    if (context == nullptr || !context->makeCurrent()) {
        state.SkipWithError("no offscreen EGL context");
        return false;
    }
    context->clear(0.0f, 0.0f, 0.0f);
    return true;
}

// The Qt context with its framebuffer object bound and fixed-function state as the
// library expects it (QPainter leaves its own program and viewport behind).
bool useQtGl(benchmark::State& state, bool forLibrary)
{
    QtGl* qt = qtGl();
    if (!qt->ok || !qt->gl.makeCurrent()) {
        state.SkipWithError(qt->error.c_str());
        return false;
    }
    qt->fbo->bind();
    if (forLibrary) {
        qt->gl.context()->extraFunctions()->glUseProgram(0);
        glViewport(0, 0, kViewWidth, kViewHeight);
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
    }
    return true;
}

// ---- benchmarks ---------------------------------------------------------------------

// Frames of one kind in the current context, each ending in glFinish, after one frame
// that warms the context up.
template <class Frame>
void finishedFrames(benchmark::State& state, Frames& f, bool current, Frame frame)
{
    if (!current) {
        return;
    }
    frame();
    glFinish();
    for (auto _ : state) {
        frame();
        glFinish();
    }
    countVertices(state, f);
}

void BM_MesaLibrary(benchmark::State& state)
{
    Frames& f = frames(static_cast<int>(state.range(0)));
    finishedFrames(state, f, useEgl(state), [&f] { f.scene->draw(); });
}

void BM_MesaFloor(benchmark::State& state)
{
    Frames& f = frames(static_cast<int>(state.range(0)));
    finishedFrames(state, f, useEgl(state), [&f] { replay(f.calls, f.lists); });
}

// Library and floor frames alternating in one loop, each timed on its own: drift of the
// machine falls on both alike, which separate runs cannot promise on a shared machine.
// Reports both medians per frame and their ratio as counters.
template <class Prepare>
void pairedFrames(benchmark::State& state, Frames& f, Prepare prepare)
{
    if (!prepare(state)) {
        return;
    }
    using Clock = std::chrono::steady_clock;
    std::vector<double> library;
    std::vector<double> floor;
    f.scene->draw();
    replay(f.calls, f.lists);
    glFinish();
    // The order swaps every iteration, so neither variant always runs on the heels of
    // the other.
    bool libraryFirst = true;
    for (auto _ : state) {
        for (int turn = 0; turn < 2; ++turn) {
            const bool drawLibrary = (turn == 0) == libraryFirst;
            const Clock::time_point start = Clock::now();
            if (drawLibrary) {
                f.scene->draw();
            } else {
                replay(f.calls, f.lists);
            }
            glFinish();
            const std::chrono::duration<double, std::micro> elapsed = Clock::now() - start;
            (drawLibrary ? library : floor).push_back(elapsed.count());
        }
        libraryFirst = !libraryFirst;
    }
    const double l = median(library);
    const double r = median(floor);
    state.counters["library_us"] = l;
    state.counters["floor_us"] = r;
    state.counters["ratio"] = r > 0.0 ? l / r : 0.0;
}

void BM_MesaPaired(benchmark::State& state)
{
    pairedFrames(state, frames(static_cast<int>(state.range(0))), useEgl);
}

void BM_QtGlPaired(benchmark::State& state)
{
    pairedFrames(state, frames(static_cast<int>(state.range(0))),
                 [](benchmark::State& s) { return useQtGl(s, true); });
}

void BM_QPainterRaster(benchmark::State& state)
{
    Frames& f = frames(static_cast<int>(state.range(0)));
    QImage image(kViewWidth, kViewHeight, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    for (auto _ : state) {
        QPainter painter(&image);
        paintPeer(painter, f.peer);
    }
    state.counters["shapes"] = static_cast<double>(f.peer.size());
}

void BM_QtGlLibrary(benchmark::State& state)
{
    Frames& f = frames(static_cast<int>(state.range(0)));
    finishedFrames(state, f, useQtGl(state, true), [&f] { f.scene->draw(); });
}

void BM_QtGlFloor(benchmark::State& state)
{
    Frames& f = frames(static_cast<int>(state.range(0)));
    finishedFrames(state, f, useQtGl(state, true), [&f] { replay(f.calls, f.lists); });
}

void BM_QPainterGl(benchmark::State& state)
{
    Frames& f = frames(static_cast<int>(state.range(0)));
    if (!useQtGl(state, false)) {
        return;
    }
    {
        QPainter warmUp(qtGl()->device.get());
        paintPeer(warmUp, f.peer);
    }
    glFinish();
    for (auto _ : state) {
        QPainter painter(qtGl()->device.get());
        paintPeer(painter, f.peer);
        painter.end();
        glFinish();
    }
    state.counters["shapes"] = static_cast<double>(f.peer.size());
}

// The same frame through GlRenderer in the Qt context: captured into a draw list,
// tessellated, uploaded and drawn in one call, glFinish included. Counters: the CPU time of
// capture and of Render (tessellation, upload, the draw call's submission) per frame, and
// the draw calls.
void BM_QtGlRenderer(benchmark::State& state)
{
    Frames& f = frames(static_cast<int>(state.range(0)));
    if (!useQtGl(state, false)) {
        return;
    }
    Tavrin::GlRenderer renderer;
    if (!renderer.Initialize()) {
        state.SkipWithError("GlRenderer cannot initialise in this context");
        return;
    }
    glViewport(0, 0, kViewWidth, kViewHeight);
    Tavrin::DrawList list;
    using Clock = std::chrono::steady_clock;
    std::vector<double> capture;
    std::vector<double> render;
    auto frame = [&](bool timed) {
        const Clock::time_point start = Clock::now();
        list.Clear();
        {
            Tavrin::DrawListScope scope(list);
            f.scene->draw();
        }
        const Clock::time_point captured = Clock::now();
        renderer.Render(list, kViewWidth, kViewHeight);
        const Clock::time_point submitted = Clock::now();
        glFinish();
        if (timed) {
            capture.push_back(std::chrono::duration<double, std::micro>(captured - start).count());
            render.push_back(std::chrono::duration<double, std::micro>(submitted - captured).count());
        }
    };
    frame(false);
    for (auto _ : state) {
        frame(true);
    }
    state.counters["capture_us"] = median(capture);
    state.counters["render_cpu_us"] = median(render);
    state.counters["draw_calls"] = renderer.LastDrawCalls();
    renderer.Release();
}

void sizes(benchmark::internal::Benchmark* b)
{
    for (int figures : kSceneSizes) {
        b->Arg(figures);
    }
    // llvmpipe rasterises on worker threads: wall time is what a frame costs.
    b->Unit(benchmark::kMicrosecond)->UseRealTime();
}

BENCHMARK(BM_MesaLibrary)->Apply(sizes);
BENCHMARK(BM_MesaFloor)->Apply(sizes);
// Many frame pairs per repetition, so that each repetition's medians are steady.
BENCHMARK(BM_MesaPaired)->Apply(sizes)->MinTime(1.5);
BENCHMARK(BM_QPainterRaster)->Apply(sizes);
BENCHMARK(BM_QtGlLibrary)->Apply(sizes);
BENCHMARK(BM_QtGlFloor)->Apply(sizes);
BENCHMARK(BM_QtGlPaired)->Apply(sizes)->MinTime(1.5);
BENCHMARK(BM_QPainterGl)->Apply(sizes);
BENCHMARK(BM_QtGlRenderer)->Apply(sizes);

// The Qt-context variants also at 1000 figures, for the renderer's comparison.
void thousand(benchmark::internal::Benchmark* b) { b->Arg(1000)->Unit(benchmark::kMicrosecond)->UseRealTime(); }
BENCHMARK(BM_QtGlLibrary)->Apply(thousand);
BENCHMARK(BM_QtGlFloor)->Apply(thousand);
BENCHMARK(BM_QPainterGl)->Apply(thousand);
BENCHMARK(BM_QtGlRenderer)->Apply(thousand);
BENCHMARK(BM_QPainterRaster)->Apply(thousand);

}  // namespace

bool snapshot(const std::string& directory)
{
    Frames& f = frames(64);
    Tavrin::offscreen::OffscreenGl* context = egl();
    if (context == nullptr) {
        return false;
    }
    context->clear(0.0f, 0.0f, 0.0f);
    f.scene->draw();
    const std::vector<std::uint8_t> rgba = context->readRgba();
    // Blending leaves the frame's alpha below 1 under the fills; the picture is its RGB.
    const QImage frame(rgba.data(), kViewWidth, kViewHeight, kViewWidth * 4, QImage::Format_RGBA8888);
    const QImage library = frame.convertToFormat(QImage::Format_RGB888);
    QImage peer(kViewWidth, kViewHeight, QImage::Format_ARGB32_Premultiplied);
    peer.fill(Qt::black);
    {
        QPainter painter(&peer);
        paintPeer(painter, f.peer);
    }
    return library.save(QString::fromStdString(directory + "/library-mesa-64.png")) &&
           peer.save(QString::fromStdString(directory + "/qpainter-raster-64.png"));
}

namespace {

void createQtGl(QtGl& qt)
{
    // A compatibility profile: the library's own calls, QPainter and GlRenderer all run in it.
    if (!qt.gl.create(Tavrin::offscreen::GlProfile::Compatibility)) {
        qt.error = "no Qt OpenGL context: " + qt.gl.error();
        return;
    }
    qt.fbo = std::make_unique<QOpenGLFramebufferObject>(kViewWidth, kViewHeight,
                                                        QOpenGLFramebufferObject::CombinedDepthStencil);
    qt.fbo->bind();
    qt.device = std::make_unique<QOpenGLPaintDevice>(kViewWidth, kViewHeight);
    glViewport(0, 0, kViewWidth, kViewHeight);
    glClearColor(0, 0, 0, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    qt.ok = true;
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv)
{
    Tavrin::offscreen::preferHeadlessQtPlatform();
    // --snapshot DIR: the 64-figure frame drawn by the library on Mesa and by the QPainter
    // peer into a QImage, as PNG files, to see that the two overlays match; then exit.
    if (argc == 3 && std::string(argv[1]) == "--snapshot") {
        QGuiApplication app(argc, argv);
        return bench::snapshot(argv[2]) ? 0 : 1;
    }
    // --renderer: the driver the Mesa variants draw with, then exit.
    if (argc == 2 && std::string(argv[1]) == "--renderer") {
        Tavrin::offscreen::OffscreenGl* context = bench::egl();
        if (context == nullptr) {
            return 1;
        }
        std::printf("%s; OpenGL %s\n", reinterpret_cast<const char*>(glGetString(GL_RENDERER)),
                    reinterpret_cast<const char*>(glGetString(GL_VERSION)));
        return 0;
    }
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    // The contexts live until the process ends, deliberately: a run is one process.
    return 0;
}
