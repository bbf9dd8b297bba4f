// libFuzzer entry point: the first byte chooses between the analytics objects with the
// registry and the graphic primitives with the polygon geometry; the rest is the call
// sequence. See docs/RELIABILITY.md.

#include "Harness.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput in(data, size);
    if (in.byte() % 2 == 0) {
        fuzz::runObjects(in);
    } else {
        fuzz::runPrimitives(in);
    }
    return 0;
}
