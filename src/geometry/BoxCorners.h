#ifndef TAVRIN_GEOMETRY_BOXCORNERS_H
#define TAVRIN_GEOMETRY_BOXCORNERS_H

// The corners of an axis-aligned box given as anchor corner and extent. Knows no OpenGL.

#include <Tavrin/TavrinTypes.h>

namespace Tavrin {
namespace geometry {

/// (x, y), (x + w, y), (x + w, y + h), (x, y + h), in single precision: the order of a
/// rectangle built from the diagonal (x, y)-(x + w, y + h).
inline void boxCorners(const tagTAVRIN_VCA_RECT& box, tagTAVRIN_POINT (&corners)[4])
{
    const float right = box.x + box.width;
    const float bottom = box.y + box.height;
    corners[0] = tagTAVRIN_POINT{box.x, box.y};
    corners[1] = tagTAVRIN_POINT{right, box.y};
    corners[2] = tagTAVRIN_POINT{right, bottom};
    corners[3] = tagTAVRIN_POINT{box.x, bottom};
}

}  // namespace geometry
}  // namespace Tavrin

#endif  // TAVRIN_GEOMETRY_BOXCORNERS_H
