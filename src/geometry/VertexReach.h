#ifndef TAVRIN_GEOMETRY_VERTEXREACH_H
#define TAVRIN_GEOMETRY_VERTEXREACH_H

// The vertex hit test shared by every figure. Knows no OpenGL.

#include <Tavrin/TavrinTypes.h>

#include <cmath>

namespace Tavrin {
namespace geometry {

/// True when `cursor` lies strictly closer than 0.02 to `vertex` (normalised units): the
/// distance is taken in single precision and compared with the double 0.02. False when
/// either point is not finite.
inline bool vertexWithinReach(const tagTAVRIN_POINT& vertex, const tagTAVRIN_POINT& cursor)
{
    const float dx = vertex.x - cursor.x;
    const float dy = vertex.y - cursor.y;
    const float d = std::sqrt(dx * dx + dy * dy);
    return static_cast<double>(d) < 0.02;
}

}  // namespace geometry
}  // namespace Tavrin

#endif  // TAVRIN_GEOMETRY_VERTEXREACH_H
