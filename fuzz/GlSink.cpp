#include "GlSink.h"

#include "support/FakeGl.h"

#include <GL/gl.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace sink {

namespace {

const int kMaxLiveLists = 8;

struct State {
    unsigned enabled = 0;               ///< one bit per capability the library uses
    std::uint32_t color = 0xffffffffu;  ///< 0xRRGGBBAA
    float translation[3] = {};
    bool inBatch = false;
    GLuint live[kMaxLiveLists] = {};
    int liveCount = 0;
};

State g_state;

// Where glBitmap's reads go, so they are not optimised away.
volatile unsigned g_bitmapSum = 0;

unsigned capabilityBit(GLenum cap)
{
    switch (cap) {
    case GL_BLEND: return 1u;
    case GL_POINT_SMOOTH: return 2u;
    case GL_LINE_SMOOTH: return 4u;
    case GL_POLYGON_SMOOTH: return 8u;
    default: fail("glEnable/glDisable", "a capability the library never uses");
    }
}

bool finite(const float* v, int n)
{
    for (int i = 0; i < n; ++i) {
        if (!std::isfinite(v[i])) {
            return false;
        }
    }
    return true;
}

int findLive(GLuint list)
{
    for (int i = 0; i < g_state.liveCount; ++i) {
        if (g_state.live[i] == list) {
            return i;
        }
    }
    return -1;
}

void onLists(const fakegl::Call& c)
{
    using fakegl::Op;
    const int at = findLive(c.op == Op::GenLists ? c.u[1] : c.u[0]);
    if (c.op == Op::GenLists) {
        FUZZ_CHECK(c.u[0] == 1 && g_state.liveCount < kMaxLiveLists, "glGenLists: one list, few at once");
        g_state.live[g_state.liveCount++] = c.u[1];
        return;
    }
    FUZZ_CHECK(at >= 0, "glCallList/glDeleteLists: a reserved list");
    if (c.op == Op::DeleteLists) {
        FUZZ_CHECK(c.u[1] == 1, "glDeleteLists: one list");
        g_state.live[at] = g_state.live[--g_state.liveCount];
    }
}

void onBitmap(const fakegl::Call& c, const fakegl::CallExtra& extra)
{
    const auto width = static_cast<std::int32_t>(c.u[0]);
    const auto height = static_cast<std::int32_t>(c.u[1]);
    const float moves[4] = {extra.xorig, extra.yorig, c.f[0], c.f[1]};
    FUZZ_CHECK(width >= 0 && height >= 0 && finite(moves, 4), "glBitmap: a size and finite moves");
    if (width == 0 || height == 0) {
        return;
    }
    FUZZ_CHECK(extra.bits != nullptr, "glBitmap: bits for a glyph");
    // Read every byte GL would read with the default unpack alignment of 4, so the
    // address sanitizer sees a short buffer.
    const long rowBytes = ((static_cast<long>(width) + 7) / 8 + 3) / 4 * 4;
    unsigned sum = 0;
    for (long i = 0; i < rowBytes * height; ++i) {
        sum += extra.bits[i];
    }
    g_bitmapSum = sum;
}

void onCall(const fakegl::Call& c, const fakegl::CallExtra& extra)
{
    using fakegl::Op;
    if (c.op != Op::Vertex && c.op != Op::End) {
        FUZZ_CHECK(!g_state.inBatch, "only glVertex2f and glEnd between glBegin and glEnd");
    }
    switch (c.op) {
    case Op::LoadIdentity: g_state.translation[0] = g_state.translation[1] = g_state.translation[2] = 0.0f; break;
    case Op::Translate:
        FUZZ_CHECK(finite(c.f, 3), "glTranslatef: finite");
        for (int i = 0; i < 3; ++i) {
            g_state.translation[i] += c.f[i];
        }
        break;
    case Op::Begin:
        FUZZ_CHECK(c.u[0] == GL_POINTS || c.u[0] == GL_LINES || c.u[0] == GL_LINE_LOOP || c.u[0] == GL_POLYGON,
                   "glBegin: a mode the library uses");
        g_state.inBatch = true;
        break;
    case Op::End:
        FUZZ_CHECK(g_state.inBatch, "glEnd after glBegin");
        g_state.inBatch = false;
        break;
    case Op::Vertex: FUZZ_CHECK(g_state.inBatch && finite(c.f, 2), "glVertex2f: finite, inside a batch"); break;
    case Op::Enable: g_state.enabled |= capabilityBit(c.u[0]); break;
    case Op::Disable: g_state.enabled &= ~capabilityBit(c.u[0]); break;
    case Op::Color: g_state.color = c.u[0]; break;
    case Op::LineWidth:
    case Op::PointSize: FUZZ_CHECK(finite(c.f, 1), "glLineWidth/glPointSize: finite"); break;
    case Op::RasterPos: FUZZ_CHECK(finite(c.f, 2), "glRasterPos2f: finite"); break;
    case Op::GenLists:
    case Op::CallList:
    case Op::DeleteLists: onLists(c); break;
    case Op::Bitmap: onBitmap(c, extra); break;
    case Op::PixelStore: fail("glPixelStorei", "never called"); break;
    case Op::Hint:
    case Op::BlendFunc: break;
    }
}

const bool g_listening = (fakegl::listen(&onCall), true);

}  // namespace

void fail(const char* what, const char* detail)
{
    std::fprintf(stderr, "tavrin fuzz check failed: %s: %s\n", what, detail);
    std::abort();
}

void beginDraw() { g_state = State(); }

void expectRestored(const char* what)
{
    const State& s = g_state;
    const bool identity = s.translation[0] == 0.0f && s.translation[1] == 0.0f && s.translation[2] == 0.0f;
    FUZZ_CHECK(!s.inBatch && s.liveCount == 0, what);
    FUZZ_CHECK(s.enabled == 0 && s.color == 0xffffffffu && identity,
               "blending and smoothing off, opaque white and the identity restored");
}

void endPartialDraw(const char* what)
{
    FUZZ_CHECK(!g_state.inBatch && g_state.liveCount == 0, what);
    beginDraw();
}

}  // namespace sink
