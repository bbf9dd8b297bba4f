// The GL entry points the library calls, defined and exported by the benchmark executable
// so that the library binds to them instead of a driver. They do nothing but count: a
// Draw into this sink costs exactly the CPU the library itself spends.

#include "NullGl.h"

#include <GL/gl.h>

namespace bench {

std::uint64_t g_glCalls = 0;

}  // namespace bench

using bench::g_glCalls;

extern "C" {

GLAPI void GLAPIENTRY glLoadIdentity(void) { ++g_glCalls; }
GLAPI void GLAPIENTRY glTranslatef(GLfloat, GLfloat, GLfloat) { ++g_glCalls; }
GLAPI void GLAPIENTRY glHint(GLenum, GLenum) { ++g_glCalls; }
GLAPI void GLAPIENTRY glEnable(GLenum) { ++g_glCalls; }
GLAPI void GLAPIENTRY glDisable(GLenum) { ++g_glCalls; }
GLAPI void GLAPIENTRY glBlendFunc(GLenum, GLenum) { ++g_glCalls; }
GLAPI void GLAPIENTRY glColor4ub(GLubyte, GLubyte, GLubyte, GLubyte) { ++g_glCalls; }
GLAPI void GLAPIENTRY glLineWidth(GLfloat) { ++g_glCalls; }
GLAPI void GLAPIENTRY glPointSize(GLfloat) { ++g_glCalls; }
GLAPI void GLAPIENTRY glBegin(GLenum) { ++g_glCalls; }
GLAPI void GLAPIENTRY glEnd(void) { ++g_glCalls; }
GLAPI void GLAPIENTRY glVertex2f(GLfloat, GLfloat) { ++g_glCalls; }
GLAPI void GLAPIENTRY glRasterPos2f(GLfloat, GLfloat) { ++g_glCalls; }
GLAPI GLuint GLAPIENTRY glGenLists(GLsizei)
{
    ++g_glCalls;
    return 1;
}
GLAPI void GLAPIENTRY glCallList(GLuint) { ++g_glCalls; }
GLAPI void GLAPIENTRY glDeleteLists(GLuint, GLsizei) { ++g_glCalls; }
GLAPI void GLAPIENTRY glPixelStorei(GLenum, GLint) { ++g_glCalls; }
GLAPI void GLAPIENTRY glBitmap(GLsizei, GLsizei, GLfloat, GLfloat, GLfloat, GLfloat, const GLubyte*)
{
    ++g_glCalls;
}

}  // extern "C"
