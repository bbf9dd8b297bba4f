#include "OffscreenGl.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <GL/gl.h>

namespace Tavrin {
namespace offscreen {

namespace {

EGLDisplay surfacelessDisplay()
{
    auto getPlatformDisplay = reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(
        eglGetProcAddress("eglGetPlatformDisplayEXT"));
    if (getPlatformDisplay != nullptr) {
        EGLDisplay display = getPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
        if (display != EGL_NO_DISPLAY) {
            return display;
        }
    }
    return eglGetDisplay(EGL_DEFAULT_DISPLAY);
}

// What each profile asks of EGL: the API to bind, the config's renderable type and the
// context's version and profile.
struct ProfileRequest {
    EGLenum api;
    EGLint renderable;
    EGLint contextAttribs[7];
    const char* name;
};

ProfileRequest requestFor(GlProfile profile)
{
    switch (profile) {
    case GlProfile::Core33:
        return {EGL_OPENGL_API,
                EGL_OPENGL_BIT,
                {EGL_CONTEXT_MAJOR_VERSION, 3, EGL_CONTEXT_MINOR_VERSION, 3, EGL_CONTEXT_OPENGL_PROFILE_MASK,
                 EGL_CONTEXT_OPENGL_CORE_PROFILE_BIT, EGL_NONE},
                "an OpenGL 3.3 core-profile"};
    case GlProfile::Es30:
        return {EGL_OPENGL_ES_API,
                EGL_OPENGL_ES3_BIT,
                {EGL_CONTEXT_MAJOR_VERSION, 3, EGL_CONTEXT_MINOR_VERSION, 0, EGL_NONE},
                "an OpenGL ES 3.0"};
    case GlProfile::Compatibility:
        break;
    }
    return {EGL_OPENGL_API,
            EGL_OPENGL_BIT,
            {EGL_CONTEXT_OPENGL_PROFILE_MASK, EGL_CONTEXT_OPENGL_COMPATIBILITY_PROFILE_BIT, EGL_NONE},
            "a compatibility-profile"};
}

}  // namespace

OffscreenGl::~OffscreenGl()
{
    if (m_display == nullptr) {
        return;
    }
    EGLDisplay display = static_cast<EGLDisplay>(m_display);
    if (m_context != nullptr && eglGetCurrentContext() == static_cast<EGLContext>(m_context)) {
        eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    }
    if (m_context != nullptr) {
        eglDestroyContext(display, static_cast<EGLContext>(m_context));
    }
    if (m_surface != nullptr) {
        eglDestroySurface(display, static_cast<EGLSurface>(m_surface));
    }
}

bool OffscreenGl::fail(const std::string& why)
{
    m_error = why;
    return false;
}

bool OffscreenGl::create(int width, int height, GlProfile profile)
{
    if (m_display != nullptr) {
        return fail("the context exists already");
    }
    if (width <= 0 || height <= 0) {
        return fail("the surface size must be positive");
    }
    EGLDisplay display = surfacelessDisplay();
    if (display == EGL_NO_DISPLAY || !eglInitialize(display, nullptr, nullptr)) {
        return fail("no EGL display (is Mesa's EGL installed?)");
    }
    m_display = display;
    m_profile = profile;
    const ProfileRequest request = requestFor(profile);
    if (!eglBindAPI(request.api)) {
        return fail(std::string("EGL cannot bind the API of ") + request.name + " context");
    }
    const EGLint configAttribs[] = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE, request.renderable,
                                    EGL_RED_SIZE, 8, EGL_GREEN_SIZE, 8, EGL_BLUE_SIZE, 8, EGL_ALPHA_SIZE, 8,
                                    EGL_NONE};
    EGLConfig config = nullptr;
    EGLint configs = 0;
    if (!eglChooseConfig(display, configAttribs, &config, 1, &configs) || configs < 1) {
        return fail(std::string("no RGBA8 pbuffer config for ") + request.name + " context");
    }
    const EGLint surfaceAttribs[] = {EGL_WIDTH, width, EGL_HEIGHT, height, EGL_NONE};
    EGLSurface surface = eglCreatePbufferSurface(display, config, surfaceAttribs);
    if (surface == EGL_NO_SURFACE) {
        return fail("cannot create a pbuffer surface");
    }
    m_surface = surface;
    EGLContext context = eglCreateContext(display, config, EGL_NO_CONTEXT, request.contextAttribs);
    if (context == EGL_NO_CONTEXT) {
        return fail(std::string("cannot create ") + request.name + " context");
    }
    m_context = context;
    if (!eglMakeCurrent(display, surface, surface, context)) {
        return fail("cannot make the context current");
    }
    m_width = width;
    m_height = height;
    return true;
}

bool OffscreenGl::makeCurrent()
{
    if (m_context == nullptr) {
        return false;
    }
    return eglMakeCurrent(static_cast<EGLDisplay>(m_display), static_cast<EGLSurface>(m_surface),
                          static_cast<EGLSurface>(m_surface), static_cast<EGLContext>(m_context)) == EGL_TRUE;
}

void OffscreenGl::release()
{
    if (m_display != nullptr) {
        eglMakeCurrent(static_cast<EGLDisplay>(m_display), EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    }
}

void OffscreenGl::clear(float r, float g, float b, float a)
{
    glViewport(0, 0, m_width, m_height);
    if (m_profile == GlProfile::Compatibility) {
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
    }
    glClearColor(r, g, b, a);
    glClear(GL_COLOR_BUFFER_BIT);
}

std::vector<std::uint8_t> OffscreenGl::readRgba() const
{
    const std::size_t row = static_cast<std::size_t>(m_width) * 4;
    std::vector<std::uint8_t> bottomUp(row * static_cast<std::size_t>(m_height));
    glFinish();
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, m_width, m_height, GL_RGBA, GL_UNSIGNED_BYTE, bottomUp.data());
    std::vector<std::uint8_t> topDown(bottomUp.size());
    for (int y = 0; y < m_height; ++y) {
        const std::size_t from = static_cast<std::size_t>(m_height - 1 - y) * row;
        std::copy(bottomUp.begin() + static_cast<std::ptrdiff_t>(from),
                  bottomUp.begin() + static_cast<std::ptrdiff_t>(from + row),
                  topDown.begin() + static_cast<std::ptrdiff_t>(static_cast<std::size_t>(y) * row));
    }
    return topDown;
}

std::uint32_t OffscreenGl::pixel(int x, int y) const
{
    std::uint8_t rgba[4] = {0, 0, 0, 0};
    if (x < 0 || y < 0 || x >= m_width || y >= m_height) {
        return 0;
    }
    glFinish();
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(x, m_height - 1 - y, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, rgba);
    return (std::uint32_t(rgba[0]) << 24) | (std::uint32_t(rgba[1]) << 16) | (std::uint32_t(rgba[2]) << 8) |
           std::uint32_t(rgba[3]);
}

}  // namespace offscreen
}  // namespace Tavrin
