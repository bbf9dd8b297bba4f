#include "graph/GlRender.h"

#include "drawlist/DrawListWriter.h"
#include "graph/BitmapText.h"

#include <Tavrin/TextRendering.h>

namespace Tavrin {
namespace gl {

namespace {

// The colour setColor last gave OpenGL on this thread: the text colour, which an
// outline's dark passes must put back.
thread_local DrawList::Color t_color{255, 255, 255, 255};

std::uint8_t smoothingBitsOf(Smoothing smoothing)
{
    switch (smoothing) {
    case Smoothing::Point:
        return DrawListWriter::kSmoothPoints;
    case Smoothing::Line:
        return DrawListWriter::kSmoothLines;
    case Smoothing::Polygon:
    case Smoothing::LineThenPolygon:
        return DrawListWriter::kSmoothLines | DrawListWriter::kSmoothPolygons;
    }
    return 0;
}

DrawList::Primitive primitiveOf(GLenum mode)
{
    switch (mode) {
    case GL_POINTS:
        return DrawList::Primitive::Points;
    case GL_LINE_STRIP:
        return DrawList::Primitive::LineStrip;
    case GL_LINE_LOOP:
        return DrawList::Primitive::LineLoop;
    case GL_TRIANGLES:
        return DrawList::Primitive::Triangles;
    case GL_POLYGON:
        return DrawList::Primitive::Polygon;
    default:
        return DrawList::Primitive::Lines;
    }
}

void glVertexAt(const geometry::GlPoint& g) { glVertex2f(g.x, g.y); }

}  // namespace

RenderScope::RenderScope(Smoothing smoothing, int viewWidth, int viewHeight) : m_smoothing(smoothing)
{
    if (DrawList* list = DrawListWriter::current()) {
        DrawListWriter::beginFigure(*list, smoothingBitsOf(smoothing), viewWidth, viewHeight);
        return;
    }
    glLoadIdentity();
    glTranslatef(-1.0f, -1.0f, 0.0f);
    glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_NICEST);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    switch (m_smoothing) {
    case Smoothing::Point:
        glEnable(GL_POINT_SMOOTH);
        break;
    case Smoothing::Line:
        glEnable(GL_LINE_SMOOTH);
        break;
    case Smoothing::Polygon:
        glEnable(GL_POLYGON_SMOOTH);
        glEnable(GL_LINE_SMOOTH);
        break;
    case Smoothing::LineThenPolygon:
        glEnable(GL_LINE_SMOOTH);
        glEnable(GL_POLYGON_SMOOTH);
        break;
    }
}

RenderScope::~RenderScope()
{
    if (DrawList* list = DrawListWriter::current()) {
        DrawListWriter::endFigure(*list);
        return;
    }
    glColor4ub(255, 255, 255, 255);
    t_color = DrawList::Color{255, 255, 255, 255};
    glDisable(GL_BLEND);
    switch (m_smoothing) {
    case Smoothing::Point:
        glDisable(GL_POINT_SMOOTH);
        break;
    case Smoothing::Line:
        glDisable(GL_LINE_SMOOTH);
        break;
    case Smoothing::Polygon:
    case Smoothing::LineThenPolygon:
        glDisable(GL_POLYGON_SMOOTH);
        glDisable(GL_LINE_SMOOTH);
        break;
    }
    glLoadIdentity();
}

void setColor(unsigned int rgb, unsigned char alpha)
{
    const auto r = static_cast<GLubyte>((rgb >> 16) & 0xffu);
    const auto g = static_cast<GLubyte>((rgb >> 8) & 0xffu);
    const auto b = static_cast<GLubyte>(rgb & 0xffu);
    if (DrawList* list = DrawListWriter::current()) {
        DrawListWriter::setColor(*list, DrawList::Color{r, g, b, alpha});
        return;
    }
    t_color = DrawList::Color{r, g, b, alpha};
    glColor4ub(r, g, b, alpha);
}

void lineWidth(float width)
{
    if (DrawList* list = DrawListWriter::current()) {
        DrawListWriter::setLineWidth(*list, width);
        return;
    }
    glLineWidth(width);
}

void pointSize(float size)
{
    if (DrawList* list = DrawListWriter::current()) {
        DrawListWriter::setPointSize(*list, size);
        return;
    }
    glPointSize(size);
}

void emitGlPoints(GLenum mode, const geometry::GlPoint* vertices, std::size_t count)
{
    if (DrawList* list = DrawListWriter::current()) {
        DrawListWriter::addBatch(*list, primitiveOf(mode), vertices, count);
        return;
    }
    glBegin(mode);
    for (std::size_t i = 0; i < count; ++i) {
        glVertexAt(vertices[i]);
    }
    glEnd();
}

void emitPoints(GLenum mode, const tagTAVRIN_POINT* points, std::size_t count)
{
    if (points == nullptr) {
        return;
    }
    for (std::size_t i = 0; i < count; ++i) {
        if (!geometry::isDrawable(points[i])) {
            return;
        }
    }
    if (DrawList* list = DrawListWriter::current()) {
        DrawListWriter::addBatch(*list, primitiveOf(mode), points, count);
        return;
    }
    glBegin(mode);
    for (std::size_t i = 0; i < count; ++i) {
        glVertexAt(geometry::glPointOf(points[i]));
    }
    glEnd();
}

void emitSegment(const tagTAVRIN_POINT& a, const tagTAVRIN_POINT& b)
{
    const tagTAVRIN_POINT ends[2] = {a, b};
    emitPoints(GL_LINES, ends, 2);
}

void emitTriangleFill(const tagTAVRIN_POINT* outline, const unsigned char (*corners)[3], int triangles,
                      bool outlined)
{
    for (int i = 0; i < triangles; ++i) {
        const tagTAVRIN_POINT triangle[3] = {outline[corners[i][0]], outline[corners[i][1]],
                                             outline[corners[i][2]]};
        emitPoints(GL_POLYGON, triangle, 3);
        if (outlined) {
            emitPoints(GL_LINE_LOOP, triangle, 3);
        }
    }
}

namespace {

void rasterAt(const tagTAVRIN_POINT& p)
{
    const geometry::GlPoint g = geometry::glPointOf(p);
    glRasterPos2f(g.x, g.y);
}

void callPerCharacter(GLuint list, const char* text)
{
    for (const char* c = text; *c != '\0'; ++c) {
        glCallList(list);
    }
}

// The glyphs of one run anchored at `at`, the raster position already there in the text
// colour. With the outline on, the run is first drawn in black at each one-pixel offset,
// each time from the anchor again, and then the text colour and the anchor are restored.
void glyphsAt(const tagTAVRIN_POINT& at, const char* text, std::size_t maxBytes, TextPlacement placement)
{
    if (TextRendering::IsOutlined() && glyphRunLength(text, maxBytes) > 0) {
        const DrawList::Color c = t_color;
        glColor4ub(0, 0, 0, c.a);
        for (const RasterMove& offset : kOutlineOffsets) {
            rasterAt(at);
            drawShiftedGlyphRun(text, maxBytes, placement, offset);
        }
        glColor4ub(c.r, c.g, c.b, c.a);
        rasterAt(at);
    }
    drawGlyphRun(text, maxBytes, placement);
}

// One mark: its raster position and one list call per character, then, when text is
// rendered, its glyph centred there.
void sideMark(GLuint list, const tagTAVRIN_POINT& at, const char* mark, bool glyphs)
{
    rasterAt(at);
    callPerCharacter(list, mark);
    if (glyphs) {
        glyphsAt(at, mark, 1, TextPlacement::Centred);
    }
}

// The glyphs a text call draws, into a list: nothing when text rendering is off; with the
// outline on, its eight dark runs first.
void captureText(DrawList& list, const tagTAVRIN_POINT& at, const char* text, std::size_t maxBytes,
                 TextPlacement placement)
{
    const std::size_t count = glyphRunLength(text, maxBytes);
    if (count == 0 || !TextRendering::IsEnabled()) {
        return;
    }
    const RasterMove start = glyphRunStart(placement, count);
    const geometry::GlPoint anchor = geometry::glPointOf(at);
    if (TextRendering::IsOutlined()) {
        const DrawList::Color c = DrawListWriter::color(list);
        DrawListWriter::setColor(list, DrawList::Color{0, 0, 0, c.a});
        for (const RasterMove& offset : kOutlineOffsets) {
            DrawListWriter::addText(list, anchor, start.dx + offset.dx, start.dy + offset.dy, text, count);
        }
        DrawListWriter::setColor(list, c);
    }
    DrawListWriter::addText(list, anchor, start.dx, start.dy, text, count);
}

}  // namespace

void drawSideMarks(const tagTAVRIN_POINT& markA, const tagTAVRIN_POINT& markB)
{
    if (!geometry::isDrawable(markA) || !geometry::isDrawable(markB)) {
        return;
    }
    if (DrawList* list = DrawListWriter::current()) {
        captureText(*list, markA, "A", 1, TextPlacement::Centred);
        captureText(*list, markB, "B", 1, TextPlacement::Centred);
        return;
    }
    const bool glyphs = TextRendering::IsEnabled();
    const GLuint list = glGenLists(1);
    sideMark(list, markA, "A", glyphs);
    sideMark(list, markB, "B", glyphs);
    glDeleteLists(list, 1);
}

void drawLabelText(const tagTAVRIN_POINT& corner, const char* text)
{
    if (!geometry::isDrawable(corner)) {
        return;
    }
    if (DrawList* list = DrawListWriter::current()) {
        captureText(*list, corner, text, kLabelTextCapacity, TextPlacement::InsideBox);
        return;
    }
    const bool glyphs = TextRendering::IsEnabled();
    rasterAt(corner);
    const GLuint list = glGenLists(1);
    if (glyphs) {
        glyphsAt(corner, text, kLabelTextCapacity, TextPlacement::InsideBox);
    }
    glDeleteLists(list, 1);
}

}  // namespace gl
}  // namespace Tavrin
