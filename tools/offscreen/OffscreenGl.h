#ifndef TAVRIN_TOOLS_OFFSCREENGL_H
#define TAVRIN_TOOLS_OFFSCREENGL_H

// An offscreen OpenGL compatibility-profile context from Mesa through EGL (surfaceless
// platform, pbuffer surface), for rendering figures without a window: the scene
// renderer, the pixel tests and the benchmarks use it.

#include <cstdint>
#include <string>
#include <vector>

namespace Tavrin {
namespace offscreen {

class OffscreenGl {
public:
    OffscreenGl() = default;
    ~OffscreenGl();
    OffscreenGl(const OffscreenGl&) = delete;
    OffscreenGl& operator=(const OffscreenGl&) = delete;

    /// Creates the context and a width x height pbuffer and makes them current. False,
    /// with `error()` set, when EGL or the driver cannot provide them.
    bool create(int width, int height);
    const std::string& error() const { return m_error; }
    /// Makes the context current again (after another context was), or releases it so
    /// that a context of another API can become current on this thread.
    bool makeCurrent();
    void release();
    int width() const { return m_width; }
    int height() const { return m_height; }

    /// Viewport over the whole surface, identity matrices, the given clear colour.
    void clear(float r, float g, float b, float a = 1.0f);
    /// The surface's pixels as RGBA8, top row first (as an image stores them).
    std::vector<std::uint8_t> readRgba() const;
    /// One pixel (x right, y down from the top-left), as 0xRRGGBBAA.
    std::uint32_t pixel(int x, int y) const;

private:
    void* m_display = nullptr;
    void* m_surface = nullptr;
    void* m_context = nullptr;
    int m_width = 0;
    int m_height = 0;
    std::string m_error;
};

}  // namespace offscreen
}  // namespace Tavrin

#endif  // TAVRIN_TOOLS_OFFSCREENGL_H
