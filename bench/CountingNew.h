#ifndef TAVRIN_BENCH_COUNTINGNEW_H
#define TAVRIN_BENCH_COUNTINGNEW_H

#include <cstdint>

namespace bench {

/// Calls of any global operator new since the process started (the benchmark
/// executable replaces them with counting ones).
std::uint64_t allocations();

}  // namespace bench

#endif  // TAVRIN_BENCH_COUNTINGNEW_H
