#ifndef TAVRIN_GRAPH_GLRENDER_H
#define TAVRIN_GRAPH_GLRENDER_H

// The OpenGL side of every primitive's drawing: the common enter/leave of render state,
// the one mapping from normalised picture points to GL vertices, colours and the
// emitters that turn point lists into glBegin/glEnd batches. Calls the gl* entry points
// directly, so whatever context (or recording stub) provides them receives the calls.

#include <Tavrin/TavrinTypes.h>

#include "geometry/PixelMath.h"

#include <GL/gl.h>

#include <cstddef>

namespace Tavrin {
namespace gl {

/// The smoothing capabilities a primitive enables, in its enabling order.
enum class Smoothing {
    Point,            ///< GL_POINT_SMOOTH
    Line,             ///< GL_LINE_SMOOTH
    Polygon,          ///< GL_POLYGON_SMOOTH, then GL_LINE_SMOOTH
    LineThenPolygon,  ///< GL_LINE_SMOOTH, then GL_POLYGON_SMOOTH (the block arrow)
};

/// Enters the drawing state of one `DrawByOpenGL`: identity, translate(-1, -1, 0),
/// perspective hint, alpha blending, smoothing. Leaves it on destruction: opaque white,
/// blending and smoothing disabled (polygon before line), identity. The view size is the
/// one passed to the figure's `Draw`; a draw list needs it to place the figure in pixels.
///
/// Every function here is the point where drawing leaves the library: while a
/// `DrawListScope` lives on the thread it appends to that list and calls no OpenGL.
class RenderScope {
public:
    RenderScope(Smoothing smoothing, int viewWidth, int viewHeight);
    ~RenderScope();
    RenderScope(const RenderScope&) = delete;
    RenderScope& operator=(const RenderScope&) = delete;

private:
    Smoothing m_smoothing;
};

/// glColor4ub of a 0xRRGGBB colour with the given alpha.
void setColor(unsigned int rgb, unsigned char alpha);
/// glLineWidth and glPointSize, in pixels.
void lineWidth(float width);
void pointSize(float size);

/// One glBegin(mode) ... glEnd() batch of the given points, each as glVertex2f of its
/// geometry::glPointOf. When one of them does not map to a finite vertex (NaN, an
/// infinity, or beyond about +-1.7e38, whose doubled value overflows) nothing at all is
/// emitted for the batch: the figure shows without it. Nothing for a null array.
void emitPoints(GLenum mode, const tagTAVRIN_POINT* points, std::size_t count);
/// One GL_LINES batch of the segment a-b; nothing when an end is not drawable.
void emitSegment(const tagTAVRIN_POINT& a, const tagTAVRIN_POINT& b);
/// One batch of vertices already in GL vertex space (callers check they are finite).
void emitGlPoints(GLenum mode, const geometry::GlPoint* vertices, std::size_t count);
/// A triangulated fill: one GL_POLYGON per triangle of `outline` (corner indices in
/// `corners`), followed by its GL_LINE_LOOP when `outlined`, so that opaque triangles show
/// no seams between them.
void emitTriangleFill(const tagTAVRIN_POINT* outline, const unsigned char (*corners)[3], int triangles,
                      bool outlined);

/// The bytes of a label's text buffer; drawLabelText reads no further.
constexpr std::size_t kLabelTextCapacity = 128;

/// The "A"/"B" side marks: one display list reserved, the raster position at each mark
/// with one list call per character, the list freed. With TextRendering on, each mark's
/// glyph is drawn centred on its position after its list call, and the raster position
/// is moved back to the mark. Nothing at all when a mark is not drawable.
void drawSideMarks(const tagTAVRIN_POINT& markA, const tagTAVRIN_POINT& markB);
/// A label's text anchored at `corner` (the top-left of its box): raster position, one
/// display list reserved and freed. With TextRendering on, the glyphs of `text` (up to its
/// first NUL, at most kLabelTextCapacity bytes; none for a null text) are drawn between
/// the two inside the box, and the raster position is moved back to the corner. Nothing
/// at all when the corner is not drawable: no raster position is set from it.
void drawLabelText(const tagTAVRIN_POINT& corner, const char* text);

}  // namespace gl
}  // namespace Tavrin

#endif  // TAVRIN_GRAPH_GLRENDER_H
