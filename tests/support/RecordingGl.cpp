#include "support/RecordingGl.h"
#include "support/FakeGl.h"

#include <cstddef>
#include <cstdint>
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

void Recorder::reset()
{
    *this = Recorder();
    fakegl::resetListNames();
}

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

namespace rec {

namespace {

std::string rgbaCall(std::uint32_t c)
{
    return "glColor4ub(" + std::to_string(c >> 24) + "," + std::to_string((c >> 16) & 0xff) + "," +
           std::to_string((c >> 8) & 0xff) + "," + std::to_string(c & 0xff) + ")";
}

void onBitmap(const fakegl::Call& c, const fakegl::CallExtra& extra)
{
    Recorder& r = gl();
    Bitmap b;
    b.width = static_cast<std::int32_t>(c.u[0]);
    b.height = static_cast<std::int32_t>(c.u[1]);
    b.xorig = extra.xorig;
    b.yorig = extra.yorig;
    b.xmove = c.f[0];
    b.ymove = c.f[1];
    b.atX = r.rasterX;
    b.atY = r.rasterY;
    if (b.width > 0 && b.height > 0 && extra.bits != nullptr) {
        b.rows = bitmapRows(b.width, b.height, r.unpackAlignment, extra.bits);
    }
    r.rasterX += b.xmove;
    r.rasterY += b.ymove;
    if (!r.texts.empty()) {
        r.texts.back().bitmaps.push_back(b);
    }
    record("glBitmap(" + std::to_string(b.width) + "," + std::to_string(b.height) + "," + num(b.xorig) + "," +
           num(b.yorig) + "," + num(b.xmove) + "," + num(b.ymove) + "," +
           (extra.bits != nullptr ? "bits" : "null") + ")");
}

// Keeps every call as text and tracks the state the checks read.
void onCall(const fakegl::Call& c, const fakegl::CallExtra& extra)
{
    using fakegl::Op;
    Recorder& r = gl();
    const float x = c.f[0];
    const float y = c.f[1];
    switch (c.op) {
    case Op::LoadIdentity:
        r.identity = true;
        r.translateX = r.translateY = 0.0f;
        record("glLoadIdentity()");
        break;
    case Op::Translate:
        r.translateX += x;
        r.translateY += y;
        r.identity = r.translateX == 0.0f && r.translateY == 0.0f && c.f[2] == 0.0f;
        record("glTranslatef(" + num(x) + "," + num(y) + "," + num(c.f[2]) + ")");
        break;
    case Op::Hint: record("glHint(" + enumName(c.u[0]) + "," + enumName(c.u[1]) + ")"); break;
    case Op::Enable:
        r.enabled.insert(c.u[0]);
        record("glEnable(" + enumName(c.u[0]) + ")");
        break;
    case Op::Disable:
        r.enabled.erase(c.u[0]);
        record("glDisable(" + enumName(c.u[0]) + ")");
        break;
    case Op::BlendFunc: record("glBlendFunc(" + enumName(c.u[0]) + "," + enumName(c.u[1]) + ")"); break;
    case Op::Color:
        r.color = Rgba{int(c.u[0] >> 24), int((c.u[0] >> 16) & 0xff), int((c.u[0] >> 8) & 0xff), int(c.u[0] & 0xff)};
        record(rgbaCall(c.u[0]));
        break;
    case Op::LineWidth:
        r.lineWidth = x;
        record("glLineWidth(" + num(x) + ")");
        break;
    case Op::PointSize:
        r.pointSize = x;
        record("glPointSize(" + num(x) + ")");
        break;
    case Op::Begin: {
        Batch batch;
        batch.mode = c.u[0];
        batch.color = r.color;
        batch.lineWidth = r.lineWidth;
        batch.pointSize = r.pointSize;
        r.batches.push_back(batch);
        r.inBatch = true;
        record("glBegin(" + modeName(c.u[0]) + ")");
        break;
    }
    case Op::End:
        r.inBatch = false;
        record("glEnd()");
        break;
    case Op::Vertex:
        if (!r.batches.empty()) {
            r.batches.back().vertices.push_back(tagTAVRIN_POINT{x, y});
        }
        record("glVertex2f(" + num(x) + "," + num(y) + ")");
        break;
    case Op::RasterPos:
        r.texts.push_back(RasterText{tagTAVRIN_POINT{x / 2.0f, 1.0f - y / 2.0f}, 0, {}, r.color, x, y});
        r.rasterX = r.rasterY = 0.0f;
        record("glRasterPos2f(" + num(x) + "," + num(y) + ")");
        break;
    case Op::GenLists:
        r.liveLists.insert(c.u[1]);
        ++r.listsGenerated;
        record("glGenLists(" + std::to_string(c.u[0]) + ")");
        break;
    case Op::CallList:
        if (!r.texts.empty()) {
            ++r.texts.back().listCalls;
        }
        record("glCallList(" + std::string(r.liveLists.count(c.u[0]) ? "list" : "unknown") + ")");
        break;
    case Op::DeleteLists:
        r.liveLists.erase(c.u[0]);
        record("glDeleteLists(list," + std::to_string(c.u[1]) + ")");
        break;
    case Op::PixelStore:
        if (c.u[0] == GL_UNPACK_ALIGNMENT) {
            r.unpackAlignment = static_cast<GLint>(c.u[1]);
        }
        record("glPixelStorei(" + enumName(c.u[0]) + "," + std::to_string(static_cast<GLint>(c.u[1])) + ")");
        break;
    case Op::Bitmap: onBitmap(c, extra); break;
    }
}

const bool g_listening = (fakegl::listen(&onCall), true);

}  // namespace

}  // namespace rec
