#include "graph/LineEmit.h"

#include "geometry/LineGeometry.h"

namespace Tavrin {
namespace gl {

void emitDrawable(GLenum mode, const tagTAVRIN_POINT* points, int count)
{
    if (points == nullptr || count < 0 || !geometry::allDrawable(points, count)) {
        return;
    }
    emit(mode, points, static_cast<std::size_t>(count));
}

void emitBlockArrowLoop(const geometry::PixelCorner corners[8], int width, int height)
{
    glBegin(GL_LINE_LOOP);
    for (int i = 1; i <= 8; ++i) {
        vertex(geometry::cornerToPicture(corners[i % 8], width, height));
    }
    glEnd();
}

}  // namespace gl
}  // namespace Tavrin
