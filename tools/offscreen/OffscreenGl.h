#ifndef TAVRIN_TOOLS_OFFSCREENGL_H
#define TAVRIN_TOOLS_OFFSCREENGL_H

// An offscreen OpenGL context from Mesa through EGL (surfaceless platform, pbuffer
// surface), for rendering figures without a window: the scene renderer, the pixel tests
// and the benchmarks use it. Three profiles: the compatibility profile the library's own
// calls need, and the desktop 3.3 core and ES 3.0 contexts GlRenderer draws in.

#include <cstdint>
#include <string>
#include <vector>

namespace Tavrin {
namespace offscreen {

enum class GlProfile {
    Compatibility,  ///< desktop OpenGL, compatibility profile (immediate mode)
    Core33,         ///< desktop OpenGL 3.3 or newer, core profile
    Es30,           ///< OpenGL ES 3.0 or newer
};

class OffscreenGl {
public:
    OffscreenGl() = default;
    /// Destroys the context and the surface. The EGL display stays initialised: it is the
    /// process's one surfaceless display, which Qt's EGL platform may be using too.
    ~OffscreenGl();
    OffscreenGl(const OffscreenGl&) = delete;
    OffscreenGl& operator=(const OffscreenGl&) = delete;

    /// Creates the context of `profile` and a width x height pbuffer and makes them
    /// current. False, with `error()` set, when EGL or the driver cannot provide them.
    bool create(int width, int height, GlProfile profile = GlProfile::Compatibility);
    const std::string& error() const { return m_error; }
    /// Makes the context current again (after another context was), or releases it so
    /// that a context of another API can become current on this thread.
    bool makeCurrent();
    void release();
    int width() const { return m_width; }
    int height() const { return m_height; }
    GlProfile profile() const { return m_profile; }
    /// The EGLDisplay and EGLContext, for a toolkit that adopts the context (null before
    /// create succeeds).
    void* nativeDisplay() const { return m_display; }
    void* nativeContext() const { return m_context; }

    /// Viewport over the whole surface, the given clear colour; in the compatibility
    /// profile also identity matrices.
    void clear(float r, float g, float b, float a = 1.0f);
    /// The surface's pixels as RGBA8, top row first (as an image stores them).
    std::vector<std::uint8_t> readRgba() const;
    /// One pixel (x right, y down from the top-left), as 0xRRGGBBAA.
    std::uint32_t pixel(int x, int y) const;

private:
    bool fail(const std::string& why);

    void* m_display = nullptr;
    void* m_surface = nullptr;
    void* m_context = nullptr;
    int m_width = 0;
    int m_height = 0;
    GlProfile m_profile = GlProfile::Compatibility;
    std::string m_error;
};

}  // namespace offscreen
}  // namespace Tavrin

#endif  // TAVRIN_TOOLS_OFFSCREENGL_H
