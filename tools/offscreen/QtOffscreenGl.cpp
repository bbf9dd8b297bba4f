#include "QtOffscreenGl.h"

#include <QGuiApplication>
#include <QSurfaceFormat>

#include <EGL/egl.h>

#if QT_VERSION_MAJOR >= 6
#include <QtGui/qopenglcontext_platform.h>
#else
#include <QtPlatformHeaders/QEGLNativeContext>
#endif

namespace Tavrin {
namespace offscreen {

namespace {

void setIfUnset(const char* name, const char* value)
{
    if (qEnvironmentVariableIsEmpty(name)) {
        qputenv(name, value);
    }
}

QSurfaceFormat formatFor(GlProfile profile)
{
    QSurfaceFormat format;
    switch (profile) {
    case GlProfile::Es30:
        format.setRenderableType(QSurfaceFormat::OpenGLES);
        format.setVersion(3, 0);
        break;
    case GlProfile::Core33:
        format.setRenderableType(QSurfaceFormat::OpenGL);
        format.setProfile(QSurfaceFormat::CoreProfile);
        format.setVersion(3, 3);
        break;
    case GlProfile::Compatibility:
        format.setRenderableType(QSurfaceFormat::OpenGL);
        format.setProfile(QSurfaceFormat::CompatibilityProfile);
        format.setVersion(3, 3);
        break;
    }
    return format;
}

// A context's profile is asked for at creation; the adopted one is checked against it,
// since EGL may give a newer version but never another API.
bool matches(const QOpenGLContext& context, GlProfile profile)
{
    return context.isOpenGLES() == (profile == GlProfile::Es30);
}

}  // namespace

void preferHeadlessQtPlatform()
{
    if (!qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        return;
    }
    qputenv("QT_QPA_PLATFORM", "eglfs");
    // The base device integration: EGL's default display, which EGL_PLATFORM makes
    // Mesa's surfaceless one; its framebuffer device is opened only to be queried.
    setIfUnset("QT_QPA_EGLFS_INTEGRATION", "none");
    setIfUnset("QT_QPA_EGLFS_FB", "/dev/null");
    setIfUnset("QT_QPA_EGLFS_WIDTH", "1920");
    setIfUnset("QT_QPA_EGLFS_HEIGHT", "1080");
    setIfUnset("QT_QPA_EGLFS_PHYSICAL_WIDTH", "508");
    setIfUnset("QT_QPA_EGLFS_PHYSICAL_HEIGHT", "286");
    setIfUnset("EGL_PLATFORM", "surfaceless");
}

QtOffscreenGl::~QtOffscreenGl()
{
    if (m_context != nullptr && QOpenGLContext::currentContext() == m_context.get()) {
        m_context->doneCurrent();
    }
    m_context.reset();  // before the native context it may have adopted
}

bool QtOffscreenGl::create(GlProfile profile)
{
    if (m_context != nullptr) {
        m_error = "the context exists already";
        return false;
    }
    const bool made = QGuiApplication::platformName() == QLatin1String("eglfs") ? adopt(profile) : makeWithQt(profile);
    if (!made) {
        m_context.reset();
        return false;
    }
    m_surface.setFormat(m_context->format());
    m_surface.create();
    if (!m_surface.isValid() || !m_context->makeCurrent(&m_surface)) {
        m_error = "cannot make the Qt context current on an offscreen surface";
        m_context.reset();
        return false;
    }
    return true;
}

// Qt's EGL platform chooses window configs, which a surfaceless display has none of: the
// context is made here with a pbuffer config and handed to Qt.
bool QtOffscreenGl::adopt(GlProfile profile)
{
    if (!m_native.create(16, 16, profile)) {
        m_error = m_native.error();
        return false;
    }
    m_native.release();
    const auto display = static_cast<EGLDisplay>(m_native.nativeDisplay());
    const auto context = static_cast<EGLContext>(m_native.nativeContext());
#if QT_VERSION_MAJOR >= 6
    m_context.reset(QNativeInterface::QEGLContext::fromNative(context, display));
#else
    m_context = std::make_unique<QOpenGLContext>();
    m_context->setNativeHandle(QVariant::fromValue(QEGLNativeContext(context, display)));
    if (!m_context->create()) {
        m_context.reset();
    }
#endif
    if (m_context == nullptr || !matches(*m_context, profile)) {
        m_error = "Qt cannot adopt the EGL context";
        return false;
    }
    return true;
}

bool QtOffscreenGl::makeWithQt(GlProfile profile)
{
    m_context = std::make_unique<QOpenGLContext>();
    m_context->setFormat(formatFor(profile));
    if (!m_context->create() || !matches(*m_context, profile)) {
        m_error = "Qt cannot make the OpenGL context (does its platform have OpenGL?)";
        return false;
    }
    return true;
}

bool QtOffscreenGl::makeCurrent() { return m_context != nullptr && m_context->makeCurrent(&m_surface); }

void QtOffscreenGl::doneCurrent()
{
    if (m_context != nullptr) {
        m_context->doneCurrent();
    }
}

}  // namespace offscreen
}  // namespace Tavrin
