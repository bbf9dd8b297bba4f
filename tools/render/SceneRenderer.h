#ifndef TAVRIN_TOOLS_RENDER_SCENERENDERER_H
#define TAVRIN_TOOLS_RENDER_SCENERENDERER_H

#include "OffscreenGl.h"
#include "QtOffscreenGl.h"
#include "Scene.h"

#include <Tavrin/DrawList.h>

#include <QImage>
#include <QPainter>

namespace Tavrin {
namespace render {

/// Draws `scene` into `gl`, which must be current and of the scene's size, the way a live
/// view shows it: the background, then every figure's Draw in file order, one frame
/// after another. Two frames are drawn and the second is returned, because some figures
/// apply a setting only after their first draw (a rule's traverse-plane flag reaches its
/// broken line that way) and a host's view is always past its first frame. The result is
/// opaque RGB, top row first. `text` switches the library's text rendering (labels, the
/// "A"/"B" marks) on or off for the whole process.
QImage renderScene(const Scene& scene, offscreen::OffscreenGl& gl, bool text = true);

/// `picture` made ready for drawPictureGl in a view of `view` pixels: scaled to it (when
/// it is not that size already), RGBA8888, bottom row first. Null for a null picture.
QImage pictureForGl(const QImage& picture, const QSize& view);
/// Fills the current GL viewport with `bottomUp` (from pictureForGl, the viewport's size)
/// through glDrawPixels, with identity matrices so that the raster position (-1, -1) is
/// the viewport's lower-left corner. The unpack state is left at GL's defaults but the
/// alignment, which is left at 4.
void drawPictureGl(const QImage& bottomUp);

/// The same frames captured into a draw list instead of OpenGL: the figures' second frame
/// (see renderScene). No OpenGL context is needed.
DrawList captureScene(const Scene& scene, bool text = true);

/// Paints the scene with `painter` at the scene's size: the background colour, the picture,
/// then `figures` (a captureScene list) through PaintDrawList. For any paint device.
void paintScene(QPainter& painter, const Scene& scene, const DrawList& figures);

/// paintScene into an opaque RGB picture, top row first, like renderScene's.
QImage paintSceneImage(const Scene& scene, bool text = true);

/// The OpenGL flavours GlRenderer draws in.
enum class ModernGl { Core, Es };

/// The scene's figures captured (captureScene) and drawn by GlRenderer in a Qt-made
/// offscreen context of the given flavour (desktop core 3.3, or ES 3.0), into a
/// transparent framebuffer object of the scene's size, then laid over the background
/// and the picture: an opaque RGB picture like renderScene's. Needs a QGuiApplication
/// whose platform makes OpenGL contexts (see offscreen::preferHeadlessQtPlatform); a
/// null picture and `error` set when the context, the framebuffer or the renderer cannot
/// be made.
QImage renderSceneModernGl(const Scene& scene, ModernGl flavour, bool text, QString& error);

}  // namespace render
}  // namespace Tavrin

#endif  // TAVRIN_TOOLS_RENDER_SCENERENDERER_H
