// tavrin_bench_record N: draws the N-figure benchmark scene twice into recording GL entry
// points (defined and exported here) and writes the second, steady frame's calls to
// standard output as a call stream. Two recordings of the same scene are byte-identical
// exactly when the library emitted the same calls with the same arguments.

#include "CallStream.h"
#include "Scene.h"

#include <GL/gl.h>

#include <cstdlib>
#include <cstring>

namespace {

std::vector<bench::Call> g_calls;
std::uint32_t g_nextList = 1;

void record(bench::Op op, std::uint32_t u0 = 0, std::uint32_t u1 = 0, float f0 = 0.0f,
            float f1 = 0.0f, float f2 = 0.0f)
{
    g_calls.push_back(bench::Call{op, {u0, u1}, {f0, f1, f2}});
}

}  // namespace

using bench::Op;

extern "C" {

GLAPI void GLAPIENTRY glLoadIdentity(void) { record(Op::LoadIdentity); }
GLAPI void GLAPIENTRY glTranslatef(GLfloat x, GLfloat y, GLfloat z)
{
    record(Op::Translate, 0, 0, x, y, z);
}
GLAPI void GLAPIENTRY glHint(GLenum target, GLenum mode) { record(Op::Hint, target, mode); }
GLAPI void GLAPIENTRY glEnable(GLenum cap) { record(Op::Enable, cap); }
GLAPI void GLAPIENTRY glDisable(GLenum cap) { record(Op::Disable, cap); }
GLAPI void GLAPIENTRY glBlendFunc(GLenum s, GLenum d) { record(Op::BlendFunc, s, d); }
GLAPI void GLAPIENTRY glColor4ub(GLubyte r, GLubyte g, GLubyte b, GLubyte a)
{
    record(Op::Color,
           (std::uint32_t(r) << 24) | (std::uint32_t(g) << 16) | (std::uint32_t(b) << 8) | a);
}
GLAPI void GLAPIENTRY glLineWidth(GLfloat width) { record(Op::LineWidth, 0, 0, width); }
GLAPI void GLAPIENTRY glPointSize(GLfloat size) { record(Op::PointSize, 0, 0, size); }
GLAPI void GLAPIENTRY glBegin(GLenum mode) { record(Op::Begin, mode); }
GLAPI void GLAPIENTRY glEnd(void) { record(Op::End); }
GLAPI void GLAPIENTRY glVertex2f(GLfloat x, GLfloat y) { record(Op::Vertex, 0, 0, x, y); }
GLAPI void GLAPIENTRY glRasterPos2f(GLfloat x, GLfloat y) { record(Op::RasterPos, 0, 0, x, y); }
GLAPI GLuint GLAPIENTRY glGenLists(GLsizei range)
{
    const std::uint32_t name = g_nextList;
    g_nextList += static_cast<std::uint32_t>(range);
    record(Op::GenLists, static_cast<std::uint32_t>(range), name);
    return name;
}
GLAPI void GLAPIENTRY glCallList(GLuint list) { record(Op::CallList, list); }
GLAPI void GLAPIENTRY glDeleteLists(GLuint list, GLsizei range)
{
    record(Op::DeleteLists, list, static_cast<std::uint32_t>(range));
}
GLAPI void GLAPIENTRY glPixelStorei(GLenum pname, GLint param)
{
    record(Op::PixelStore, pname, static_cast<std::uint32_t>(param));
}
GLAPI void GLAPIENTRY glBitmap(GLsizei width, GLsizei height, GLfloat, GLfloat, GLfloat xmove,
                               GLfloat ymove, const GLubyte*)
{
    record(Op::Bitmap, static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height), xmove,
           ymove);
}

}  // extern "C"

int main(int argc, char** argv)
{
    const int figures = argc > 1 ? std::atoi(argv[1]) : 0;
    if (figures <= 0) {
        std::fprintf(stderr, "usage: %s FIGURES > stream\n", argv[0]);
        return 2;
    }
    bench::Scene scene(figures);
    scene.draw();
    g_calls.clear();
    g_nextList = 1;
    scene.draw();
    return bench::writeStream(stdout, g_calls) ? 0 : 1;
}
