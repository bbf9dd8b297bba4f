#ifndef TAVRIN_GEOMETRY_MARKERTEXTBOX_H
#define TAVRIN_GEOMETRY_MARKERTEXTBOX_H

// Where the people-counting rule puts the text beside its marker point. Knows no OpenGL.

#include <Tavrin/TavrinTypes.h>

namespace Tavrin {
namespace geometry {

/// The text box beside a marker point p: first corner (p.x + 0.01, p.y - 0.01), clamped
/// afterwards towards the picture (x to 0.97 from 0.99 on, to 0.01 at 0.01 or less; y
/// to 0.99 from 0.99 on, to 0.03 at 0.01 or less); second corner 0.2 beyond the
/// unclamped first corner in both axes. Computed in double, stored as float.
void markerTextBox(const tagTAVRIN_POINT& p, tagTAVRIN_POINT& first, tagTAVRIN_POINT& second);

}  // namespace geometry
}  // namespace Tavrin

#endif  // TAVRIN_GEOMETRY_MARKERTEXTBOX_H
