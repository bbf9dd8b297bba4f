#include "SceneRenderer.h"

#include <Tavrin/TextRendering.h>
#include <Tavrin/VcaObject.h>
#include <TavrinQt/GlRenderer.h>
#include <TavrinQt/PaintDrawList.h>

#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions>

#include <GL/gl.h>

#include <cstring>

namespace Tavrin {
namespace render {

namespace {

constexpr int kFrames = 2;

QImage readBack(const offscreen::OffscreenGl& gl)
{
    const std::vector<std::uint8_t> rgba = gl.readRgba();
    QImage image(gl.width(), gl.height(), QImage::Format_RGBA8888);
    const int row = gl.width() * 4;
    for (int y = 0; y < gl.height(); ++y) {
        std::uint8_t* line = image.scanLine(y);
        std::memcpy(line, rgba.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(row),
                    static_cast<std::size_t>(row));
        // Blending leaves translucent alpha in the surface; the picture itself is opaque.
        for (int x = 3; x < row; x += 4) {
            line[x] = 255;
        }
    }
    return image.convertToFormat(QImage::Format_RGB888);
}

}  // namespace

QImage pictureForGl(const QImage& picture, const QSize& view)
{
    if (picture.isNull() || view.isEmpty()) {
        return QImage();
    }
    const QImage sized = picture.size() == view ? picture
                                                : picture.scaled(view, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return sized.convertToFormat(QImage::Format_RGBA8888).mirrored(false, true);
}

void drawPictureGl(const QImage& bottomUp)
{
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, bottomUp.bytesPerLine() / 4);
    glRasterPos2f(-1.0f, -1.0f);
    glDrawPixels(bottomUp.width(), bottomUp.height(), GL_RGBA, GL_UNSIGNED_BYTE, bottomUp.constBits());
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
}

QImage renderScene(const Scene& scene, offscreen::OffscreenGl& gl, bool text)
{
    TextRendering::SetEnabled(text);
    const QImage bottomUp = pictureForGl(scene.picture, scene.size);
    const float r = ((scene.colour >> 16) & 0xff) / 255.0f;
    const float g = ((scene.colour >> 8) & 0xff) / 255.0f;
    const float b = (scene.colour & 0xff) / 255.0f;
    for (int frame = 0; frame < kFrames; ++frame) {
        gl.clear(r, g, b);
        if (!bottomUp.isNull()) {
            drawPictureGl(bottomUp);
        }
        for (VcaObject* figure : scene.figures) {
            figure->Draw(nullptr, scene.size.width(), scene.size.height(), true);
        }
    }
    return readBack(gl);
}

DrawList captureScene(const Scene& scene, bool text)
{
    TextRendering::SetEnabled(text);
    DrawList list;
    for (int frame = 0; frame < kFrames; ++frame) {
        list.Clear();
        DrawListScope scope(list);
        for (VcaObject* figure : scene.figures) {
            figure->Draw(nullptr, scene.size.width(), scene.size.height(), true);
        }
    }
    return list;
}

void paintScene(QPainter& painter, const Scene& scene, const DrawList& figures)
{
    const QRect view(QPoint(0, 0), scene.size);
    painter.fillRect(view, QColor(static_cast<QRgb>(scene.colour)));
    if (!scene.picture.isNull()) {
        painter.drawImage(QPoint(0, 0), scene.picture);
    }
    PaintDrawList(painter, figures);
}

QImage paintSceneImage(const Scene& scene, bool text)
{
    const DrawList figures = captureScene(scene, text);
    QImage image(scene.size, QImage::Format_RGB32);
    {
        QPainter painter(&image);
        paintScene(painter, scene, figures);
    }
    return image.convertToFormat(QImage::Format_RGB888);
}

QImage renderSceneModernGl(const Scene& scene, ModernGl flavour, bool text, QString& error)
{
    offscreen::QtOffscreenGl gl;
    if (!gl.create(flavour == ModernGl::Es ? offscreen::GlProfile::Es30 : offscreen::GlProfile::Core33)) {
        error = QStringLiteral("no OpenGL %1 context: %2")
                    .arg(flavour == ModernGl::Es ? QStringLiteral("ES 3.0") : QStringLiteral("3.3 core"),
                         QString::fromStdString(gl.error()));
        return QImage();
    }
    QOpenGLContext& context = *gl.context();
    QImage overlay;
    {
        QOpenGLFramebufferObject target(scene.size);
        GlRenderer renderer;
        if (!target.isValid() || !target.bind() || !renderer.Initialize()) {
            error = QStringLiteral("no framebuffer or renderer in the %1 context")
                        .arg(QString::fromLatin1(reinterpret_cast<const char*>(
                            context.functions()->glGetString(GL_VERSION))));
            return QImage();
        }
        QOpenGLFunctions* f = context.functions();
        f->glViewport(0, 0, scene.size.width(), scene.size.height());
        f->glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
        f->glClear(GL_COLOR_BUFFER_BIT);
        renderer.Render(captureScene(scene, text), scene.size.width(), scene.size.height());
        overlay = target.toImage();
        renderer.Release();
        target.release();
    }
    // The figures, premultiplied, over the background as the GPU would blend them there.
    QImage image(scene.size, QImage::Format_RGB32);
    {
        QPainter painter(&image);
        painter.fillRect(QRect(QPoint(0, 0), scene.size), QColor(static_cast<QRgb>(scene.colour)));
        if (!scene.picture.isNull()) {
            painter.drawImage(QPoint(0, 0), scene.picture);
        }
        painter.drawImage(QPoint(0, 0), overlay);
    }
    return image.convertToFormat(QImage::Format_RGB888);
}

}  // namespace render
}  // namespace Tavrin
