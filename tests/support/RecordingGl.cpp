#include "support/RecordingGl.h"

#include <cstddef>
#include <cstdio>
#include <map>
#include <sstream>

namespace rec {

namespace {

std::string enumName(GLenum e)
{
    static const std::map<GLenum, const char*> names = {
        {GL_BLEND, "GL_BLEND"},
        {GL_POINT_SMOOTH, "GL_POINT_SMOOTH"},
        {GL_LINE_SMOOTH, "GL_LINE_SMOOTH"},
        {GL_POLYGON_SMOOTH, "GL_POLYGON_SMOOTH"},
        {GL_PERSPECTIVE_CORRECTION_HINT, "GL_PERSPECTIVE_CORRECTION_HINT"},
        {GL_NICEST, "GL_NICEST"},
        {GL_SRC_ALPHA, "GL_SRC_ALPHA"},
        {GL_ONE_MINUS_SRC_ALPHA, "GL_ONE_MINUS_SRC_ALPHA"},
        {GL_UNPACK_ALIGNMENT, "GL_UNPACK_ALIGNMENT"},
        {GL_CURRENT_RASTER_POSITION_VALID, "GL_CURRENT_RASTER_POSITION_VALID"},
    };
    auto it = names.find(e);
    if (it != names.end()) {
        return it->second;
    }
    return modeName(e);
}

std::string num(double v)
{
    char buf[64];
    std::snprintf(buf, sizeof buf, "%g", v);
    return buf;
}

void record(const std::string& call) { gl().calls.push_back(call); }

// A bitmap as GL unpacks it with the default pixel-store state but the given alignment:
// rows padded to a multiple of the alignment, bottom row first, MSB the leftmost pixel.
std::vector<std::string> bitmapRows(int width, int height, int alignment, const GLubyte* bits)
{
    const int rowBytes = (width + 7) / 8;
    const int stride = alignment > 0 ? (rowBytes + alignment - 1) / alignment * alignment : rowBytes;
    std::vector<std::string> rows(static_cast<std::size_t>(height));
    for (int r = 0; r < height; ++r) {
        const GLubyte* row = bits + static_cast<std::ptrdiff_t>(r) * stride;
        std::string& out = rows[static_cast<std::size_t>(height - 1 - r)];
        for (int c = 0; c < width; ++c) {
            out += (row[c / 8] & (0x80 >> (c % 8))) != 0 ? '#' : '.';
        }
    }
    return rows;
}

}  // namespace

Rgba rgba(unsigned int rgb, int alpha)
{
    return Rgba{static_cast<int>((rgb >> 16) & 0xff), static_cast<int>((rgb >> 8) & 0xff),
                static_cast<int>(rgb & 0xff), alpha};
}

std::string toString(const Rgba& c)
{
    return "(" + std::to_string(c.r) + "," + std::to_string(c.g) + "," + std::to_string(c.b) + "," +
           std::to_string(c.a) + ")";
}

std::string modeName(GLenum mode)
{
    switch (mode) {
    case GL_POINTS: return "GL_POINTS";
    case GL_LINES: return "GL_LINES";
    case GL_LINE_LOOP: return "GL_LINE_LOOP";
    case GL_LINE_STRIP: return "GL_LINE_STRIP";
    case GL_TRIANGLES: return "GL_TRIANGLES";
    case GL_POLYGON: return "GL_POLYGON";
    case GL_QUADS: return "GL_QUADS";
    default: break;
    }
    char buf[16];
    std::snprintf(buf, sizeof buf, "0x%x", mode);
    return buf;
}

std::vector<tagTAVRIN_POINT> Batch::picture() const
{
    std::vector<tagTAVRIN_POINT> out;
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        out.push_back(at(i));
    }
    return out;
}

tagTAVRIN_POINT Batch::at(std::size_t i) const
{
    const tagTAVRIN_POINT& v = vertices.at(i);
    return tagTAVRIN_POINT{v.x / 2.0f, 1.0f - v.y / 2.0f};
}

void Recorder::reset() { *this = Recorder(); }

std::vector<std::string> Recorder::sequence() const
{
    std::vector<std::string> out;
    for (const std::string& c : calls) {
        if (c.compare(0, 11, "glVertex2f(") != 0) {
            out.push_back(c);
        }
    }
    return out;
}

std::vector<std::string> Recorder::names() const
{
    std::vector<std::string> out;
    for (const std::string& c : calls) {
        out.push_back(c.substr(0, c.find('(')));
    }
    return out;
}

std::vector<Batch> Recorder::batchesOf(GLenum mode) const
{
    std::vector<Batch> out;
    for (const Batch& b : batches) {
        if (b.mode == mode) {
            out.push_back(b);
        }
    }
    return out;
}

std::vector<Bitmap> RasterText::glyphs() const
{
    std::vector<Bitmap> out;
    for (const Bitmap& b : bitmaps) {
        if (b.width > 0 && b.height > 0) {
            out.push_back(b);
        }
    }
    return out;
}

bool Recorder::stateIsClean() const { return stateReport().empty(); }

std::string Recorder::stateReport() const
{
    std::ostringstream out;
    for (GLenum cap : enabled) {
        out << enumName(cap) << " left enabled; ";
    }
    if (color != Rgba{255, 255, 255, 255}) {
        out << "colour left at " << toString(color) << "; ";
    }
    if (!identity) {
        out << "matrix not the identity; ";
    }
    if (inBatch) {
        out << "glBegin without glEnd; ";
    }
    if (rasterX != 0.0f || rasterY != 0.0f) {
        out << "raster position left (" << rasterX << "," << rasterY << ") px from its glRasterPos; ";
    }
    if (unpackAlignment != 4) {
        out << "GL_UNPACK_ALIGNMENT left at " << unpackAlignment << "; ";
    }
    if (!liveLists.empty()) {
        out << liveLists.size() << " display list(s) left reserved; ";
    }
    return out.str();
}

Recorder& gl()
{
    static Recorder recorder;
    return recorder;
}

}  // namespace rec

using rec::gl;

extern "C" {

GLAPI void GLAPIENTRY glLoadIdentity(void)
{
    rec::gl().identity = true;
    rec::gl().translateX = rec::gl().translateY = 0.0f;
    rec::record("glLoadIdentity()");
}

GLAPI void GLAPIENTRY glTranslatef(GLfloat x, GLfloat y, GLfloat z)
{
    gl().translateX += x;
    gl().translateY += y;
    gl().identity = gl().translateX == 0.0f && gl().translateY == 0.0f && z == 0.0f;
    rec::record("glTranslatef(" + rec::num(x) + "," + rec::num(y) + "," + rec::num(z) + ")");
}

GLAPI void GLAPIENTRY glHint(GLenum target, GLenum mode)
{
    rec::record("glHint(" + rec::enumName(target) + "," + rec::enumName(mode) + ")");
}

GLAPI void GLAPIENTRY glEnable(GLenum cap)
{
    gl().enabled.insert(cap);
    rec::record("glEnable(" + rec::enumName(cap) + ")");
}

GLAPI void GLAPIENTRY glDisable(GLenum cap)
{
    gl().enabled.erase(cap);
    rec::record("glDisable(" + rec::enumName(cap) + ")");
}

GLAPI void GLAPIENTRY glBlendFunc(GLenum sfactor, GLenum dfactor)
{
    rec::record("glBlendFunc(" + rec::enumName(sfactor) + "," + rec::enumName(dfactor) + ")");
}

GLAPI void GLAPIENTRY glColor4ub(GLubyte r, GLubyte g, GLubyte b, GLubyte a)
{
    gl().color = rec::Rgba{r, g, b, a};
    rec::record("glColor4ub(" + std::to_string(r) + "," + std::to_string(g) + "," + std::to_string(b) +
                "," + std::to_string(a) + ")");
}

GLAPI void GLAPIENTRY glLineWidth(GLfloat width)
{
    gl().lineWidth = width;
    rec::record("glLineWidth(" + rec::num(width) + ")");
}

GLAPI void GLAPIENTRY glPointSize(GLfloat size)
{
    gl().pointSize = size;
    rec::record("glPointSize(" + rec::num(size) + ")");
}

GLAPI void GLAPIENTRY glBegin(GLenum mode)
{
    rec::Batch batch;
    batch.mode = mode;
    batch.color = gl().color;
    batch.lineWidth = gl().lineWidth;
    batch.pointSize = gl().pointSize;
    gl().batches.push_back(batch);
    gl().inBatch = true;
    rec::record("glBegin(" + rec::modeName(mode) + ")");
}

GLAPI void GLAPIENTRY glEnd(void)
{
    gl().inBatch = false;
    rec::record("glEnd()");
}

GLAPI void GLAPIENTRY glVertex2f(GLfloat x, GLfloat y)
{
    if (!gl().batches.empty()) {
        gl().batches.back().vertices.push_back(tagTAVRIN_POINT{x, y});
    }
    rec::record("glVertex2f(" + rec::num(x) + "," + rec::num(y) + ")");
}

GLAPI void GLAPIENTRY glRasterPos2f(GLfloat x, GLfloat y)
{
    gl().texts.push_back(rec::RasterText{tagTAVRIN_POINT{x / 2.0f, 1.0f - y / 2.0f}, 0, {}, gl().color});
    gl().rasterX = gl().rasterY = 0.0f;
    rec::record("glRasterPos2f(" + rec::num(x) + "," + rec::num(y) + ")");
}

GLAPI GLuint GLAPIENTRY glGenLists(GLsizei range)
{
    const GLuint list = gl().nextList;
    gl().nextList += static_cast<GLuint>(range);
    gl().liveLists.insert(list);
    ++gl().listsGenerated;
    rec::record("glGenLists(" + std::to_string(range) + ")");
    return list;
}

GLAPI void GLAPIENTRY glCallList(GLuint list)
{
    if (!gl().texts.empty()) {
        ++gl().texts.back().listCalls;
    }
    rec::record("glCallList(" + std::string(gl().liveLists.count(list) ? "list" : "unknown") + ")");
}

GLAPI void GLAPIENTRY glDeleteLists(GLuint list, GLsizei range)
{
    gl().liveLists.erase(list);
    rec::record("glDeleteLists(list," + std::to_string(range) + ")");
}

GLAPI void GLAPIENTRY glPixelStorei(GLenum pname, GLint param)
{
    if (pname == GL_UNPACK_ALIGNMENT) {
        gl().unpackAlignment = param;
    }
    rec::record("glPixelStorei(" + rec::enumName(pname) + "," + std::to_string(param) + ")");
}

GLAPI void GLAPIENTRY glBitmap(GLsizei width, GLsizei height, GLfloat xorig, GLfloat yorig, GLfloat xmove,
                               GLfloat ymove, const GLubyte* bitmap)
{
    rec::Bitmap b;
    b.width = width;
    b.height = height;
    b.xorig = xorig;
    b.yorig = yorig;
    b.xmove = xmove;
    b.ymove = ymove;
    b.atX = gl().rasterX;
    b.atY = gl().rasterY;
    if (width > 0 && height > 0 && bitmap != nullptr) {
        b.rows = rec::bitmapRows(width, height, gl().unpackAlignment, bitmap);
    }
    gl().rasterX += xmove;
    gl().rasterY += ymove;
    if (!gl().texts.empty()) {
        gl().texts.back().bitmaps.push_back(b);
    }
    rec::record("glBitmap(" + std::to_string(width) + "," + std::to_string(height) + "," + rec::num(xorig) +
                "," + rec::num(yorig) + "," + rec::num(xmove) + "," + rec::num(ymove) + "," +
                (bitmap != nullptr ? "bits" : "null") + ")");
}

}  // extern "C"
