#ifndef TAVRIN_TESTS_FAKEGL_H
#define TAVRIN_TESTS_FAKEGL_H

// The one fake OpenGL of the project. An executable that compiles FakeGl.cpp and sets
// ENABLE_EXPORTS defines the GL 1.x entry points the library calls, so the library binds
// to them instead of a driver. Each entry point becomes one fixed-size `Call` handed to
// the listener, if one is set; with none, calls are only counted (the benchmarks' sink).
// Adding an entry point is one line in FakeGl.cpp and one `Op` here.

#include <cstdint>

namespace fakegl {

enum class Op : std::uint32_t {
    LoadIdentity,
    Translate,  ///< f = x, y, z
    Hint,       ///< u = target, mode
    Enable,     ///< u[0] = capability
    Disable,
    BlendFunc,  ///< u = source, destination factor
    Color,      ///< u[0] = 0xRRGGBBAA
    LineWidth,  ///< f[0]
    PointSize,  ///< f[0]
    Begin,      ///< u[0] = mode
    End,
    Vertex,     ///< f = x, y
    RasterPos,  ///< f = x, y
    GenLists,   ///< u[0] = range, u[1] = the first name handed out
    CallList,   ///< u[0] = list
    DeleteLists,///< u = list, range
    PixelStore, ///< u = parameter, value
    Bitmap,     ///< u = width, height; f = xmove, ymove (origin in `CallExtra`)
};

struct Call {
    Op op;
    std::uint32_t u[2];
    float f[3];
};

/// What a call carries beyond `Call`: glBitmap's origin and bits.
struct CallExtra {
    float xorig = 0.0f;
    float yorig = 0.0f;
    const unsigned char* bits = nullptr;
};

using Listener = void (*)(const Call& call, const CallExtra& extra);

/// Sets the listener every call goes to (nullptr: count only).
void listen(Listener listener);
/// Calls received since the process started.
std::uint64_t callCount();
/// The next glGenLists hands out name 1 again.
void resetListNames();

}  // namespace fakegl

#endif  // TAVRIN_TESTS_FAKEGL_H
