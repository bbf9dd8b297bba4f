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

}  // namespace

OffscreenGl::~OffscreenGl()
{
    if (m_display == nullptr) {
        return;
    }
    EGLDisplay display = static_cast<EGLDisplay>(m_display);
    eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    if (m_context != nullptr) {
        eglDestroyContext(display, static_cast<EGLContext>(m_context));
    }
    if (m_surface != nullptr) {
        eglDestroySurface(display, static_cast<EGLSurface>(m_surface));
    }
    eglTerminate(display);
}

bool OffscreenGl::create(int width, int height)
{
    if (width <= 0 || height <= 0) {
        m_error = "the surface size must be positive";
        return false;
    }
    EGLDisplay display = surfacelessDisplay();
    if (display == EGL_NO_DISPLAY || !eglInitialize(display, nullptr, nullptr)) {
        m_error = "no EGL display (is Mesa's EGL installed?)";
        return false;
    }
    m_display = display;
    if (!eglBindAPI(EGL_OPENGL_API)) {
        m_error = "EGL cannot bind desktop OpenGL";
        return false;
    }
    const EGLint configAttribs[] = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT,
                                    EGL_RED_SIZE, 8, EGL_GREEN_SIZE, 8, EGL_BLUE_SIZE, 8, EGL_ALPHA_SIZE, 8,
                                    EGL_NONE};
    EGLConfig config = nullptr;
    EGLint configs = 0;
    if (!eglChooseConfig(display, configAttribs, &config, 1, &configs) || configs < 1) {
        m_error = "no RGBA8 pbuffer config for desktop OpenGL";
        return false;
    }
    const EGLint surfaceAttribs[] = {EGL_WIDTH, width, EGL_HEIGHT, height, EGL_NONE};
    EGLSurface surface = eglCreatePbufferSurface(display, config, surfaceAttribs);
    if (surface == EGL_NO_SURFACE) {
        m_error = "cannot create a pbuffer surface";
        return false;
    }
    m_surface = surface;
    const EGLint contextAttribs[] = {EGL_CONTEXT_OPENGL_PROFILE_MASK,
                                     EGL_CONTEXT_OPENGL_COMPATIBILITY_PROFILE_BIT, EGL_NONE};
    EGLContext context = eglCreateContext(display, config, EGL_NO_CONTEXT, contextAttribs);
    if (context == EGL_NO_CONTEXT) {
        m_error = "cannot create a compatibility-profile context";
        return false;
    }
    m_context = context;
    if (!eglMakeCurrent(display, surface, surface, context)) {
        m_error = "cannot make the context current";
        return false;
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
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
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
