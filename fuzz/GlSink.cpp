#include "GlSink.h"

#include "support/FakeGl.h"

#include <GL/gl.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace sink {

namespace {

// The capabilities the library may enable, as bits.
enum : unsigned {
    kBlend = 1u << 0,
    kPointSmooth = 1u << 1,
    kLineSmooth = 1u << 2,
    kPolygonSmooth = 1u << 3,
};

const int kMaxLiveLists = 8;

struct State {
    Counters counters;
    unsigned enabled = 0;
    std::uint32_t color = 0xffffffffu;  ///< 0xRRGGBBAA
    float tx = 0.0f;
    float ty = 0.0f;
    float tz = 0.0f;
    bool inBatch = false;
    GLuint nextList = 1;
    GLuint live[kMaxLiveLists] = {};
    int liveCount = 0;
};

State& state()
{
    static State s;
    return s;
}

unsigned capabilityBit(GLenum cap)
{
    switch (cap) {
    case GL_BLEND: return kBlend;
    case GL_POINT_SMOOTH: return kPointSmooth;
    case GL_LINE_SMOOTH: return kLineSmooth;
    case GL_POLYGON_SMOOTH: return kPolygonSmooth;
    default: break;
    }
    fail("glEnable/glDisable", "a capability the library never uses");
}

// Every call but glVertex2f is made outside glBegin/glEnd.
void outsideBatch(const char* call)
{
    ++state().counters.calls;
    if (state().inBatch) {
        fail(call, "called between glBegin and glEnd");
    }
}

void finite(const char* call, float v)
{
    if (!std::isfinite(v)) {
        fail(call, "argument is not finite");
    }
}

int findLive(GLuint list)
{
    for (int i = 0; i < state().liveCount; ++i) {
        if (state().live[i] == list) {
            return i;
        }
    }
    return -1;
}

// Where glBitmap's reads go, so they are not optimised away.
volatile unsigned g_bitmapSum = 0;

bool identity() { return state().tx == 0.0f && state().ty == 0.0f && state().tz == 0.0f; }

}  // namespace

const Counters& counters() { return state().counters; }

void fail(const char* what, const char* detail)
{
    std::fprintf(stderr, "tavrin fuzz check failed: %s: %s\n", what, detail);
    std::abort();
}

void beginDraw()
{
    State& s = state();
    s.enabled = 0;
    s.color = 0xffffffffu;
    s.tx = s.ty = s.tz = 0.0f;
    s.inBatch = false;
    s.liveCount = 0;
}

void expectRestored(const char* what)
{
    const State& s = state();
    if (s.inBatch) {
        fail(what, "glBegin without glEnd");
    }
    if (s.enabled != 0) {
        fail(what, "blending or smoothing left enabled");
    }
    if (s.color != 0xffffffffu) {
        fail(what, "colour not restored to opaque white");
    }
    if (!identity()) {
        fail(what, "matrix not restored to the identity");
    }
    if (s.liveCount != 0) {
        fail(what, "display list left reserved");
    }
}

void endPartialDraw(const char* what)
{
    if (state().inBatch) {
        fail(what, "glBegin without glEnd");
    }
    if (state().liveCount != 0) {
        fail(what, "display list left reserved");
    }
    beginDraw();
}

}  // namespace sink

namespace sink {

namespace {

void onMatrix(const fakegl::Call& c)
{
    using fakegl::Op;
    outsideBatch(c.op == Op::LoadIdentity ? "glLoadIdentity" : "glTranslatef");
    if (c.op == Op::LoadIdentity) {
        state().tx = state().ty = state().tz = 0.0f;
        return;
    }
    for (float v : c.f) {
        finite("glTranslatef", v);
    }
    state().tx += c.f[0];
    state().ty += c.f[1];
    state().tz += c.f[2];
}

void onBatch(const fakegl::Call& c)
{
    using fakegl::Op;
    ++state().counters.calls;
    switch (c.op) {
    case Op::Begin:
        if (state().inBatch) {
            fail("glBegin", "called between glBegin and glEnd");
        }
        if (c.u[0] != GL_POINTS && c.u[0] != GL_LINES && c.u[0] != GL_LINE_LOOP && c.u[0] != GL_POLYGON) {
            fail("glBegin", "a primitive mode the library never uses");
        }
        state().inBatch = true;
        ++state().counters.batches;
        break;
    case Op::End:
        if (!state().inBatch) {
            fail("glEnd", "without glBegin");
        }
        state().inBatch = false;
        break;
    default:
        ++state().counters.vertices;
        if (!state().inBatch) {
            fail("glVertex2f", "outside glBegin/glEnd");
        }
        finite("glVertex2f", c.f[0]);
        finite("glVertex2f", c.f[1]);
        break;
    }
}

void onLists(const fakegl::Call& c)
{
    using fakegl::Op;
    outsideBatch("display list call");
    const int at = findLive(c.u[0]);
    if (c.op == Op::GenLists) {
        if (c.u[0] != 1) {
            fail("glGenLists", "range other than 1");
        }
        if (state().liveCount == kMaxLiveLists) {
            fail("glGenLists", "too many display lists reserved at once");
        }
        state().live[state().liveCount++] = c.u[1];
    } else if (at < 0) {
        fail("glCallList/glDeleteLists", "list not reserved");
    } else if (c.op == Op::DeleteLists) {
        if (c.u[1] != 1) {
            fail("glDeleteLists", "range other than 1");
        }
        state().live[at] = state().live[--state().liveCount];
    }
}

void onBitmap(const fakegl::Call& c, const fakegl::CallExtra& extra)
{
    outsideBatch("glBitmap");
    ++state().counters.bitmaps;
    const auto width = static_cast<std::int32_t>(c.u[0]);
    const auto height = static_cast<std::int32_t>(c.u[1]);
    if (width < 0 || height < 0) {
        fail("glBitmap", "negative size");
    }
    finite("glBitmap", extra.xorig);
    finite("glBitmap", extra.yorig);
    finite("glBitmap", c.f[0]);
    finite("glBitmap", c.f[1]);
    if (width > 0 && height > 0) {
        if (extra.bits == nullptr) {
            fail("glBitmap", "null bits for a glyph");
        }
        // Read every byte GL would read with the default unpack alignment of 4, so the
        // address sanitizer sees a short buffer.
        const long rowBytes = ((static_cast<long>(width) + 7) / 8 + 3) / 4 * 4;
        unsigned sum = 0;
        for (long i = 0; i < rowBytes * height; ++i) {
            sum += extra.bits[i];
        }
        g_bitmapSum = sum;
    }
}

// Checks every call: the state a draw may touch, finite arguments, batches well formed,
// display lists reserved before use and released after.
void onCall(const fakegl::Call& c, const fakegl::CallExtra& extra)
{
    using fakegl::Op;
    switch (c.op) {
    case Op::LoadIdentity:
    case Op::Translate: onMatrix(c); break;
    case Op::Begin:
    case Op::End:
    case Op::Vertex: onBatch(c); break;
    case Op::GenLists:
    case Op::CallList:
    case Op::DeleteLists: onLists(c); break;
    case Op::Bitmap: onBitmap(c, extra); break;
    case Op::Enable:
        outsideBatch("glEnable");
        state().enabled |= capabilityBit(c.u[0]);
        break;
    case Op::Disable:
        outsideBatch("glDisable");
        state().enabled &= ~capabilityBit(c.u[0]);
        break;
    case Op::Color:
        outsideBatch("glColor4ub");
        state().color = c.u[0];
        break;
    case Op::LineWidth:
    case Op::PointSize:
    case Op::RasterPos:
        outsideBatch("glLineWidth/glPointSize/glRasterPos2f");
        finite("glLineWidth/glPointSize/glRasterPos2f", c.f[0]);
        finite("glRasterPos2f", c.f[1]);
        state().counters.rasterPositions += c.op == Op::RasterPos;
        break;
    case Op::Hint:
    case Op::BlendFunc: outsideBatch("glHint/glBlendFunc"); break;
    case Op::PixelStore: fail("glPixelStorei", "never called"); break;
    }
}

const bool g_listening = (fakegl::listen(&onCall), true);

}  // namespace

}  // namespace sink
