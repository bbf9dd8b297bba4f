#ifndef TAVRIN_GRAPH_LINEEMIT_H
#define TAVRIN_GRAPH_LINEEMIT_H

// Emitters shared by the line family's drawing: point lists that may hold values too
// large for a GL vertex, and the block arrow's corners as one closed loop.

#include "geometry/ArrowGeometry.h"
#include "graph/GlRender.h"

namespace Tavrin {
namespace gl {

/// One glBegin(mode) ... glEnd() batch of the points; nothing at all when one of them
/// does not map to a finite vertex.
void emitDrawable(GLenum mode, const tagTAVRIN_POINT* points, int count);

/// The block arrow as one GL_LINE_LOOP, starting beside the tail and ending on it:
/// corners 1 .. 7, then corner 0 (the tail).
void emitBlockArrowLoop(const geometry::PixelCorner corners[8], int width, int height);

}  // namespace gl
}  // namespace Tavrin

#endif  // TAVRIN_GRAPH_LINEEMIT_H
