#ifndef TAVRIN_TOOLS_QTOFFSCREENGL_H
#define TAVRIN_TOOLS_QTOFFSCREENGL_H

// A QOpenGLContext without a display, for code written against Qt's OpenGL classes
// (GlRenderer, QOpenGLPaintDevice): Qt's EGL platform runs on Mesa's surfaceless EGL
// display and adopts an OffscreenGl context of the asked profile. Under another platform
// (an X display, say) Qt makes the context itself.

#include "OffscreenGl.h"

#include <QOffscreenSurface>
#include <QOpenGLContext>

#include <memory>

namespace Tavrin {
namespace offscreen {

/// Points Qt at its EGL platform on Mesa's surfaceless display, unless the environment
/// names a platform already. Call before the QGuiApplication is made. The settings are
/// the process's environment: QT_QPA_PLATFORM=eglfs with no device integration and no
/// framebuffer device, and EGL_PLATFORM=surfaceless.
void preferHeadlessQtPlatform();

class QtOffscreenGl {
public:
    QtOffscreenGl() = default;
    ~QtOffscreenGl();
    QtOffscreenGl(const QtOffscreenGl&) = delete;
    QtOffscreenGl& operator=(const QtOffscreenGl&) = delete;

    /// Makes the context of `profile` (needs a QGuiApplication) and makes it current on an
    /// offscreen surface. Render into a framebuffer object: the surface may have no
    /// pixels of its own. False, with `error()` set, when neither adoption nor Qt can.
    bool create(GlProfile profile);
    const std::string& error() const { return m_error; }
    bool makeCurrent();
    void doneCurrent();
    /// Null before create succeeds.
    QOpenGLContext* context() const { return m_context.get(); }

private:
    bool adopt(GlProfile profile);
    bool makeWithQt(GlProfile profile);

    OffscreenGl m_native;
    QOffscreenSurface m_surface;
    std::unique_ptr<QOpenGLContext> m_context;
    std::string m_error;
};

}  // namespace offscreen
}  // namespace Tavrin

#endif  // TAVRIN_TOOLS_QTOFFSCREENGL_H
