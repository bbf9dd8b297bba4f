#include "graph/GlRender.h"

#include "geometry/PixelMath.h"
#include "graph/BitmapText.h"

#include <Tavrin/TextRendering.h>

namespace Tavrin {
namespace gl {

RenderScope::RenderScope(Smoothing smoothing) : m_smoothing(smoothing)
{
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
    glColor4ub(255, 255, 255, 255);
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
    glColor4ub(static_cast<GLubyte>((rgb >> 16) & 0xffu), static_cast<GLubyte>((rgb >> 8) & 0xffu),
               static_cast<GLubyte>(rgb & 0xffu), alpha);
}

void vertex(float x, float y) { glVertex2f(2.0f * x, 2.0f * (1.0f - y)); }

void vertex(const tagTAVRIN_POINT& p) { vertex(p.x, p.y); }

void emit(GLenum mode, const tagTAVRIN_POINT* points, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        if (!geometry::isDrawable(points[i])) {
            return;
        }
    }
    glBegin(mode);
    for (std::size_t i = 0; i < count; ++i) {
        vertex(points[i]);
    }
    glEnd();
}

void emitSegment(const tagTAVRIN_POINT& a, const tagTAVRIN_POINT& b)
{
    if (!geometry::isDrawable(a) || !geometry::isDrawable(b)) {
        return;
    }
    glBegin(GL_LINES);
    vertex(a);
    vertex(b);
    glEnd();
}

namespace {

void rasterAt(const tagTAVRIN_POINT& p) { glRasterPos2f(2.0f * p.x, 2.0f * (1.0f - p.y)); }

void callPerCharacter(GLuint list, const char* text)
{
    for (const char* c = text; *c != '\0'; ++c) {
        glCallList(list);
    }
}

// One mark: its raster position and one list call per character, then, when text is
// rendered, its glyph centred there.
void sideMark(GLuint list, const tagTAVRIN_POINT& at, const char* mark, bool glyphs)
{
    rasterAt(at);
    callPerCharacter(list, mark);
    if (glyphs) {
        drawGlyphRun(mark, 1, TextPlacement::Centred);
    }
}

}  // namespace

void drawSideMarks(const tagTAVRIN_POINT& markA, const tagTAVRIN_POINT& markB)
{
    if (!geometry::isDrawable(markA) || !geometry::isDrawable(markB)) {
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
    const bool glyphs = TextRendering::IsEnabled();
    rasterAt(corner);
    const GLuint list = glGenLists(1);
    if (glyphs) {
        drawGlyphRun(text, kLabelTextCapacity, TextPlacement::InsideBox);
    }
    glDeleteLists(list, 1);
}

}  // namespace gl
}  // namespace Tavrin
