#include "graph/LineEmit.h"

#include "geometry/LineGeometry.h"

namespace Tavrin {
namespace gl {

void emitBlockArrowLoop(const geometry::PixelCorner corners[8], int width, int height)
{
    tagTAVRIN_POINT loop[8];
    for (int i = 1; i <= 8; ++i) {
        loop[i - 1] = geometry::cornerToPicture(corners[i % 8], width, height);
    }
    emitPoints(GL_LINE_LOOP, loop, 8);
}

}  // namespace gl
}  // namespace Tavrin
