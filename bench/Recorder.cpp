// tavrin_bench_record N: draws the N-figure benchmark scene twice into the fake GL
// (exported by this executable), recording every call, and writes the second, steady
// frame's calls to standard output as a call stream. Two recordings of the same scene are byte-identical
// exactly when the library emitted the same calls with the same arguments.

#include "CallStream.h"
#include "Scene.h"

#include <cstdlib>
#include <cstring>

namespace {

std::vector<bench::Call> g_calls;

void record(const fakegl::Call& call, const fakegl::CallExtra&) { g_calls.push_back(call); }

}  // namespace

int main(int argc, char** argv)
{
    const int figures = argc > 1 ? std::atoi(argv[1]) : 0;
    if (figures <= 0) {
        std::fprintf(stderr, "usage: %s FIGURES > stream\n", argv[0]);
        return 2;
    }
    fakegl::listen(&record);
    bench::Scene scene(figures);
    scene.draw();
    g_calls.clear();
    fakegl::resetListNames();
    scene.draw();
    return bench::writeStream(stdout, g_calls) ? 0 : 1;
}
