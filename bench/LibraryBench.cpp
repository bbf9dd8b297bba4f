// What the library itself costs: a frame drawn into the counting GL sink or captured into
// a draw list (then tessellated or painted), hit tests over many figures, the polygon
// triangulation and the registry.

#include "CountingNew.h"
#include "support/FakeGl.h"
#include "Replay.h"
#include "Scene.h"

#include <TavrinQt/PaintDrawList.h>

#include <QImage>
#include <QPainter>
#include <benchmark/benchmark.h>

#include <list>

namespace bench {
namespace {

using namespace Tavrin;

// Reports per-frame averages of the GL calls and allocations made inside the timed loop.
class FrameCounters {
public:
    FrameCounters() : m_calls(fakegl::callCount()), m_allocations(allocations()) {}
    void report(benchmark::State& state) const
    {
        const double frames = static_cast<double>(state.iterations());
        state.counters["gl_calls"] = static_cast<double>(fakegl::callCount() - m_calls) / frames;
        state.counters["allocs"] = static_cast<double>(allocations() - m_allocations) / frames;
    }

private:
    std::uint64_t m_calls;
    std::uint64_t m_allocations;
};

void BM_LibraryDraw(benchmark::State& state)
{
    Scene scene(static_cast<int>(state.range(0)));
    // The first frame settles what drawing stores (the people-counting arrows).
    scene.draw();
    FrameCounters counters;
    for (auto _ : state) {
        scene.draw();
        benchmark::ClobberMemory();
    }
    counters.report(state);
    state.counters["figures"] = static_cast<double>(state.range(0));
}
BENCHMARK(BM_LibraryDraw)->Arg(16)->Arg(64)->Arg(256)->Arg(1000)->Unit(benchmark::kMicrosecond);

// The same frame captured into a draw list instead of OpenGL: what a host without a
// compatibility context pays before rendering. One list, cleared every frame.
void BM_CaptureDraw(benchmark::State& state)
{
    Scene scene(static_cast<int>(state.range(0)));
    scene.draw();
    DrawList list;
    FrameCounters counters;
    for (auto _ : state) {
        list.Clear();
        DrawListScope scope(list);
        scene.draw();
        benchmark::DoNotOptimize(list.Vertices().data());
    }
    counters.report(state);
    state.counters["vertices"] = static_cast<double>(list.Vertices().size());
}
BENCHMARK(BM_CaptureDraw)->Arg(16)->Arg(64)->Arg(256)->Arg(1000)->Unit(benchmark::kMicrosecond);

DrawList capturedFrame(Scene& scene)
{
    scene.draw();
    DrawList list;
    DrawListScope scope(list);
    scene.draw();
    return list;
}

// A captured frame as triangles (second argument 1: with antialiasing fringes).
void BM_Tessellate(benchmark::State& state)
{
    Scene scene(static_cast<int>(state.range(0)));
    const DrawList list = capturedFrame(scene);
    TriangleMesh mesh;
    for (auto _ : state) {
        mesh.Build(list, state.range(1) != 0);
        benchmark::DoNotOptimize(mesh.Indices().data());
    }
    state.counters["triangles"] = static_cast<double>(mesh.Indices().size() / 3);
}
BENCHMARK(BM_Tessellate)->ArgsProduct({{16, 64, 256, 1000}, {0, 1}})->Unit(benchmark::kMicrosecond);

// The same frame in the coverage form GlRenderer draws.
void BM_CoverageMesh(benchmark::State& state)
{
    Scene scene(static_cast<int>(state.range(0)));
    const DrawList list = capturedFrame(scene);
    CoverageMesh mesh;
    for (auto _ : state) {
        mesh.Build(list);
        benchmark::DoNotOptimize(mesh.Indices().data());
    }
    state.counters["triangles"] = static_cast<double>(mesh.Indices().size() / 3);
}
BENCHMARK(BM_CoverageMesh)->Arg(16)->Arg(64)->Arg(256)->Arg(1000)->Unit(benchmark::kMicrosecond);

// A captured frame painted with QPainter into a 1280 x 720 picture (cleared each frame).
void BM_PaintDrawList(benchmark::State& state)
{
    Scene scene(static_cast<int>(state.range(0)));
    const DrawList list = capturedFrame(scene);
    QImage image(kViewWidth, kViewHeight, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        image.fill(Qt::transparent);
        QPainter painter(&image);
        PaintDrawList(painter, list);
    }
}
BENCHMARK(BM_PaintDrawList)->Arg(16)->Arg(64)->Arg(256)->Unit(benchmark::kMicrosecond);

// The same frame's recorded calls replayed into the counting sink: what the sink itself
// costs. The library's own share of BM_LibraryDraw is the difference.
void BM_NullSinkReplay(benchmark::State& state)
{
    const std::vector<Call> calls = recordFrame(static_cast<int>(state.range(0)));
    if (calls.empty()) {
        state.SkipWithError("cannot run tavrin_bench_record");
        return;
    }
    std::vector<GLuint> lists(listNames(calls), 0);
    FrameCounters counters;
    for (auto _ : state) {
        replay(calls, lists);
        benchmark::ClobberMemory();
    }
    counters.report(state);
}
BENCHMARK(BM_NullSinkReplay)->Arg(16)->Arg(64)->Arg(256)->Unit(benchmark::kMicrosecond);

constexpr int kHitTestFigures = 1000;

// One cursor against every figure, as a host does on a mouse press.
void BM_CheckPointSelected(benchmark::State& state)
{
    Scene scene(kHitTestFigures);
    tagTAVRIN_POINT cursor{0.5f, 0.5f};
    FrameCounters counters;
    for (auto _ : state) {
        unsigned int hits = 0;
        for (VcaObject* object : scene.objects()) {
            hits += object->CheckPointSelected(cursor);
        }
        benchmark::DoNotOptimize(hits);
    }
    counters.report(state);
}
BENCHMARK(BM_CheckPointSelected)->Unit(benchmark::kMicrosecond);

void BM_CheckSelected(benchmark::State& state)
{
    Scene scene(kHitTestFigures);
    // Hit-testing a segment needs the view size, which drawing records.
    scene.draw();
    tagTAVRIN_POINT cursor{0.5f, 0.5f};
    FrameCounters counters;
    for (auto _ : state) {
        int hits = 0;
        for (VcaObject* object : scene.objects()) {
            hits += object->CheckSelected(cursor) ? 1 : 0;
        }
        benchmark::DoNotOptimize(hits);
    }
    counters.report(state);
}
BENCHMARK(BM_CheckSelected)->Unit(benchmark::kMicrosecond);

tagTAVRIN_POLYGON twentyVertices(bool concave)
{
    std::vector<tagTAVRIN_POINT> outline = regionOutline(0.5f, 0.5f, 0.3f, 20, concave, 0.1f);
    tagTAVRIN_POLYGON polygon{};
    polygon.count = 20;
    for (int i = 0; i < 20; ++i) {
        polygon.points[i] = outline[static_cast<std::size_t>(i)];
    }
    return polygon;
}

// The public triangulation, cut afresh on every call.
void BM_SplitPolygon(benchmark::State& state)
{
    Polygon meta;
    const tagTAVRIN_POLYGON polygon = twentyVertices(state.range(0) != 0);
    std::list<tagTAVRIN_TRIANGLE_> triangles;
    for (auto _ : state) {
        triangles.clear();
        benchmark::DoNotOptimize(meta.SplitPolygon(polygon, &triangles));
    }
    state.counters["triangles"] = static_cast<double>(triangles.size());
    state.SetLabel(state.range(0) != 0 ? "concave" : "convex");
}
BENCHMARK(BM_SplitPolygon)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

// A filled 20-vertex polygon drawn frame after frame: the fill's triangulation as drawing
// pays for it once the figure stands still.
void BM_PolygonFillSteadyFrame(benchmark::State& state)
{
    const tagTAVRIN_POLYGON record = twentyVertices(state.range(0) != 0);
    tagTAVRIN_POINT points[20];
    for (int i = 0; i < 20; ++i) {
        points[i] = record.points[i];
    }
    Polygon polygon(points, 20);
    polygon.Draw(nullptr, kViewWidth, kViewHeight, true);
    FrameCounters counters;
    for (auto _ : state) {
        polygon.Draw(nullptr, kViewWidth, kViewHeight, true);
        benchmark::ClobberMemory();
    }
    counters.report(state);
    state.SetLabel(state.range(0) != 0 ? "concave" : "convex");
}
BENCHMARK(BM_PolygonFillSteadyFrame)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

// Adding 64 figures to the registry and deleting them again.
void BM_RegistryAddDelete(benchmark::State& state)
{
    Scene scene(64);
    VcaObjectContainer* registry = VcaObjectContainer::Instance();
    std::vector<int> slotIds(scene.objects().size());
    for (auto _ : state) {
        for (std::size_t i = 0; i < slotIds.size(); ++i) {
            slotIds[i] = registry->AddVcaObject(scene.objects()[i]);
        }
        for (int slot : slotIds) {
            registry->DelVcaObject(slot);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(slotIds.size()));
}
BENCHMARK(BM_RegistryAddDelete)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace bench

BENCHMARK_MAIN();
