#ifndef TAVRIN_BENCH_NULLGL_H
#define TAVRIN_BENCH_NULLGL_H

#include <cstdint>

namespace bench {

/// GL calls received by the counting sink since the process started.
extern std::uint64_t g_glCalls;

}  // namespace bench

#endif  // TAVRIN_BENCH_NULLGL_H
