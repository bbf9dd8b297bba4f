#include "FakeGl.h"

#include <GL/gl.h>

namespace fakegl {

namespace {

Listener g_listener = nullptr;
std::uint64_t g_calls = 0;
GLuint g_nextList = 1;

void deliver(Op op, std::uint32_t u0 = 0, std::uint32_t u1 = 0, float f0 = 0.0f, float f1 = 0.0f,
             float f2 = 0.0f, const CallExtra& extra = CallExtra())
{
    ++g_calls;
    if (g_listener != nullptr) {
        g_listener(Call{op, {u0, u1}, {f0, f1, f2}}, extra);
    }
}

}  // namespace

void listen(Listener listener) { g_listener = listener; }
std::uint64_t callCount() { return g_calls; }
void resetListNames() { g_nextList = 1; }

}  // namespace fakegl

using fakegl::deliver;
using fakegl::Op;

extern "C" {

GLAPI void GLAPIENTRY glLoadIdentity(void) { deliver(Op::LoadIdentity); }
GLAPI void GLAPIENTRY glTranslatef(GLfloat x, GLfloat y, GLfloat z) { deliver(Op::Translate, 0, 0, x, y, z); }
GLAPI void GLAPIENTRY glHint(GLenum target, GLenum mode) { deliver(Op::Hint, target, mode); }
GLAPI void GLAPIENTRY glEnable(GLenum cap) { deliver(Op::Enable, cap); }
GLAPI void GLAPIENTRY glDisable(GLenum cap) { deliver(Op::Disable, cap); }
GLAPI void GLAPIENTRY glBlendFunc(GLenum s, GLenum d) { deliver(Op::BlendFunc, s, d); }
GLAPI void GLAPIENTRY glColor4ub(GLubyte r, GLubyte g, GLubyte b, GLubyte a)
{
    deliver(Op::Color, (std::uint32_t(r) << 24) | (std::uint32_t(g) << 16) | (std::uint32_t(b) << 8) | a);
}
GLAPI void GLAPIENTRY glLineWidth(GLfloat width) { deliver(Op::LineWidth, 0, 0, width); }
GLAPI void GLAPIENTRY glPointSize(GLfloat size) { deliver(Op::PointSize, 0, 0, size); }
GLAPI void GLAPIENTRY glBegin(GLenum mode) { deliver(Op::Begin, mode); }
GLAPI void GLAPIENTRY glEnd(void) { deliver(Op::End); }
GLAPI void GLAPIENTRY glVertex2f(GLfloat x, GLfloat y) { deliver(Op::Vertex, 0, 0, x, y); }
GLAPI void GLAPIENTRY glRasterPos2f(GLfloat x, GLfloat y) { deliver(Op::RasterPos, 0, 0, x, y); }
GLAPI GLuint GLAPIENTRY glGenLists(GLsizei range)
{
    const GLuint first = fakegl::g_nextList;
    fakegl::g_nextList += static_cast<GLuint>(range);
    deliver(Op::GenLists, static_cast<std::uint32_t>(range), first);
    return first;
}
GLAPI void GLAPIENTRY glCallList(GLuint list) { deliver(Op::CallList, list); }
GLAPI void GLAPIENTRY glDeleteLists(GLuint list, GLsizei range)
{
    deliver(Op::DeleteLists, list, static_cast<std::uint32_t>(range));
}
GLAPI void GLAPIENTRY glPixelStorei(GLenum pname, GLint param)
{
    deliver(Op::PixelStore, pname, static_cast<std::uint32_t>(param));
}
GLAPI void GLAPIENTRY glBitmap(GLsizei width, GLsizei height, GLfloat xorig, GLfloat yorig, GLfloat xmove,
                               GLfloat ymove, const GLubyte* bitmap)
{
    deliver(Op::Bitmap, static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height), xmove, ymove,
            0.0f, fakegl::CallExtra{xorig, yorig, bitmap});
}

}  // extern "C"
