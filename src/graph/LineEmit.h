#ifndef TAVRIN_GRAPH_LINEEMIT_H
#define TAVRIN_GRAPH_LINEEMIT_H

// The block arrow's corners as one closed loop, shared by the line family's drawing.

#include "geometry/ArrowGeometry.h"
#include "graph/GlRender.h"

namespace Tavrin {
namespace gl {

/// The block arrow as one GL_LINE_LOOP, starting beside the tail and ending on it:
/// corners 1 .. 7, then corner 0 (the tail).
void emitBlockArrowLoop(const geometry::PixelCorner corners[8], int width, int height);

}  // namespace gl
}  // namespace Tavrin

#endif  // TAVRIN_GRAPH_LINEEMIT_H
