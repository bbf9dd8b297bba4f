#ifndef TAVRIN_BENCH_CALLSTREAM_H
#define TAVRIN_BENCH_CALLSTREAM_H

// One frame's GL calls as the library made them, recorded by tavrin_bench_record and
// replayed straight into a context by the GL benchmarks: the floor that no drawing code
// can go below. Written and read as a raw array of fixed-size records.

#include "support/FakeGl.h"

#include <cstdint>
#include <cstdio>
#include <vector>

namespace bench {

// The calls are the fake GL's own records: Bitmap is recorded without its bits (the
// benchmark scenes draw no glyphs).
using Op = fakegl::Op;
using Call = fakegl::Call;

inline bool writeStream(std::FILE* out, const std::vector<Call>& calls)
{
    const std::uint64_t count = calls.size();
    return std::fwrite(&count, sizeof count, 1, out) == 1 &&
           std::fwrite(calls.data(), sizeof(Call), calls.size(), out) == calls.size();
}

inline bool readStream(std::FILE* in, std::vector<Call>& calls)
{
    std::uint64_t count = 0;
    if (std::fread(&count, sizeof count, 1, in) != 1 || count > (1u << 26)) {
        return false;
    }
    calls.resize(static_cast<std::size_t>(count));
    return std::fread(calls.data(), sizeof(Call), calls.size(), in) == calls.size();
}

}  // namespace bench

#endif  // TAVRIN_BENCH_CALLSTREAM_H
