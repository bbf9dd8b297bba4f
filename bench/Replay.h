#ifndef TAVRIN_BENCH_REPLAY_H
#define TAVRIN_BENCH_REPLAY_H

// Recording a scene's steady frame (by running tavrin_bench_record) and replaying it into
// whatever provides the gl* entry points of the executable that includes this: the
// counting sink or a real context.

#include "CallStream.h"

#include <GL/gl.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace bench {

/// The calls of one steady frame of the `figures`-figure scene; empty when the recorder
/// cannot be run.
inline std::vector<Call> recordFrame(int figures)
{
    std::vector<Call> calls;
    const std::string command = std::string(TAVRIN_BENCH_RECORDER) + " " + std::to_string(figures);
    std::FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) {
        return calls;
    }
    if (!readStream(pipe, calls)) {
        calls.clear();
    }
    pclose(pipe);
    return calls;
}

/// Replays a stream as fast as a loop can: the calls and nothing else. Display-list names
/// are those the context hands out now.
inline void replay(const std::vector<Call>& calls, std::vector<GLuint>& lists)
{
    for (const Call& c : calls) {
        switch (c.op) {
        case Op::LoadIdentity: glLoadIdentity(); break;
        case Op::Translate: glTranslatef(c.f[0], c.f[1], c.f[2]); break;
        case Op::Hint: glHint(c.u[0], c.u[1]); break;
        case Op::Enable: glEnable(c.u[0]); break;
        case Op::Disable: glDisable(c.u[0]); break;
        case Op::BlendFunc: glBlendFunc(c.u[0], c.u[1]); break;
        case Op::Color:
            glColor4ub(GLubyte(c.u[0] >> 24), GLubyte(c.u[0] >> 16), GLubyte(c.u[0] >> 8),
                       GLubyte(c.u[0]));
            break;
        case Op::LineWidth: glLineWidth(c.f[0]); break;
        case Op::PointSize: glPointSize(c.f[0]); break;
        case Op::Begin: glBegin(c.u[0]); break;
        case Op::End: glEnd(); break;
        case Op::Vertex: glVertex2f(c.f[0], c.f[1]); break;
        case Op::RasterPos: glRasterPos2f(c.f[0], c.f[1]); break;
        case Op::GenLists:
            if (c.u[1] < lists.size()) {
                lists[c.u[1]] = glGenLists(static_cast<GLsizei>(c.u[0]));
            }
            break;
        case Op::CallList:
            if (c.u[0] < lists.size()) {
                glCallList(lists[c.u[0]]);
            }
            break;
        case Op::DeleteLists:
            if (c.u[0] < lists.size()) {
                glDeleteLists(lists[c.u[0]], static_cast<GLsizei>(c.u[1]));
            }
            break;
        case Op::PixelStore: glPixelStorei(c.u[0], static_cast<GLint>(c.u[1])); break;
        case Op::Bitmap: break;
        }
    }
}

/// Room for every display-list name the stream uses.
inline std::size_t listNames(const std::vector<Call>& calls)
{
    std::size_t names = 1;
    for (const Call& c : calls) {
        if (c.op == Op::GenLists) {
            names = std::max<std::size_t>(names, c.u[1] + c.u[0] + 1);
        }
    }
    return names;
}

}  // namespace bench

#endif  // TAVRIN_BENCH_REPLAY_H
