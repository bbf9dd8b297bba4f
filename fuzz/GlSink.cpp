#include "GlSink.h"

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
    GLubyte color[4] = {255, 255, 255, 255};
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
    s.color[0] = s.color[1] = s.color[2] = s.color[3] = 255;
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
    if (s.color[0] != 255 || s.color[1] != 255 || s.color[2] != 255 || s.color[3] != 255) {
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

using sink::state;

extern "C" {

GLAPI void GLAPIENTRY glLoadIdentity(void)
{
    sink::outsideBatch("glLoadIdentity");
    state().tx = state().ty = state().tz = 0.0f;
}

GLAPI void GLAPIENTRY glTranslatef(GLfloat x, GLfloat y, GLfloat z)
{
    sink::outsideBatch("glTranslatef");
    sink::finite("glTranslatef", x);
    sink::finite("glTranslatef", y);
    sink::finite("glTranslatef", z);
    state().tx += x;
    state().ty += y;
    state().tz += z;
}

GLAPI void GLAPIENTRY glHint(GLenum, GLenum) { sink::outsideBatch("glHint"); }

GLAPI void GLAPIENTRY glEnable(GLenum cap)
{
    sink::outsideBatch("glEnable");
    state().enabled |= sink::capabilityBit(cap);
}

GLAPI void GLAPIENTRY glDisable(GLenum cap)
{
    sink::outsideBatch("glDisable");
    state().enabled &= ~sink::capabilityBit(cap);
}

GLAPI void GLAPIENTRY glBlendFunc(GLenum, GLenum) { sink::outsideBatch("glBlendFunc"); }

GLAPI void GLAPIENTRY glColor4ub(GLubyte r, GLubyte g, GLubyte b, GLubyte a)
{
    sink::outsideBatch("glColor4ub");
    state().color[0] = r;
    state().color[1] = g;
    state().color[2] = b;
    state().color[3] = a;
}

GLAPI void GLAPIENTRY glLineWidth(GLfloat width)
{
    sink::outsideBatch("glLineWidth");
    sink::finite("glLineWidth", width);
}

GLAPI void GLAPIENTRY glPointSize(GLfloat size)
{
    sink::outsideBatch("glPointSize");
    sink::finite("glPointSize", size);
}

GLAPI void GLAPIENTRY glBegin(GLenum mode)
{
    sink::outsideBatch("glBegin");
    if (mode != GL_POINTS && mode != GL_LINES && mode != GL_LINE_LOOP && mode != GL_POLYGON) {
        sink::fail("glBegin", "a primitive mode the library never uses");
    }
    state().inBatch = true;
    ++state().counters.batches;
}

GLAPI void GLAPIENTRY glEnd(void)
{
    ++state().counters.calls;
    if (!state().inBatch) {
        sink::fail("glEnd", "without glBegin");
    }
    state().inBatch = false;
}

GLAPI void GLAPIENTRY glVertex2f(GLfloat x, GLfloat y)
{
    ++state().counters.calls;
    ++state().counters.vertices;
    if (!state().inBatch) {
        sink::fail("glVertex2f", "outside glBegin/glEnd");
    }
    sink::finite("glVertex2f", x);
    sink::finite("glVertex2f", y);
}

GLAPI void GLAPIENTRY glRasterPos2f(GLfloat x, GLfloat y)
{
    sink::outsideBatch("glRasterPos2f");
    ++state().counters.rasterPositions;
    sink::finite("glRasterPos2f", x);
    sink::finite("glRasterPos2f", y);
}

GLAPI GLuint GLAPIENTRY glGenLists(GLsizei range)
{
    sink::outsideBatch("glGenLists");
    if (range != 1) {
        sink::fail("glGenLists", "range other than 1");
    }
    if (state().liveCount == sink::kMaxLiveLists) {
        sink::fail("glGenLists", "too many display lists reserved at once");
    }
    const GLuint list = state().nextList++;
    state().live[state().liveCount++] = list;
    return list;
}

GLAPI void GLAPIENTRY glCallList(GLuint list)
{
    sink::outsideBatch("glCallList");
    if (sink::findLive(list) < 0) {
        sink::fail("glCallList", "list not reserved");
    }
}

GLAPI void GLAPIENTRY glDeleteLists(GLuint list, GLsizei range)
{
    sink::outsideBatch("glDeleteLists");
    const int at = sink::findLive(list);
    if (at < 0 || range != 1) {
        sink::fail("glDeleteLists", "list not reserved or range other than 1");
    }
    state().live[at] = state().live[--state().liveCount];
}

GLAPI void GLAPIENTRY glPixelStorei(GLenum, GLint) { sink::fail("glPixelStorei", "never called"); }

GLAPI void GLAPIENTRY glBitmap(GLsizei width, GLsizei height, GLfloat xorig, GLfloat yorig,
                               GLfloat xmove, GLfloat ymove, const GLubyte* bitmap)
{
    sink::outsideBatch("glBitmap");
    ++state().counters.bitmaps;
    sink::finite("glBitmap", xorig);
    sink::finite("glBitmap", yorig);
    sink::finite("glBitmap", xmove);
    sink::finite("glBitmap", ymove);
    if (width < 0 || height < 0) {
        sink::fail("glBitmap", "negative size");
    }
    if (width == 0 || height == 0) {
        return;
    }
    if (bitmap == nullptr) {
        sink::fail("glBitmap", "null bits for a non-empty bitmap");
    }
    // Read every byte GL would read with the default unpack alignment of 4, so the
    // address sanitizer sees a short buffer.
    const long rowBytes = ((static_cast<long>(width) + 7) / 8 + 3) / 4 * 4;
    unsigned sum = 0;
    for (long i = 0; i < rowBytes * height; ++i) {
        sum += bitmap[i];
    }
    sink::g_bitmapSum = sum;
}

}  // extern "C"
