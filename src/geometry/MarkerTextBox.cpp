#include "geometry/MarkerTextBox.h"

namespace Tavrin {
namespace geometry {

void markerTextBox(const tagTAVRIN_POINT& p, tagTAVRIN_POINT& first, tagTAVRIN_POINT& second)
{
    const float ax = static_cast<float>(static_cast<double>(p.x) + 0.01);
    const float ay = static_cast<float>(static_cast<double>(p.y) - 0.01);
    // The second corner is taken from the first before the clamp, so near an edge the
    // box may reach past the picture; kept as is.
    second.x = static_cast<float>(static_cast<double>(ax) + 0.2);
    second.y = static_cast<float>(static_cast<double>(ay) + 0.2);

    // The clamp values differ between the axes (0.97 against 0.99, 0.01 against 0.03)
    // deliberately; hosts place their text relying on them.
    double x = ax;
    double y = ay;
    if (x >= 0.99) {
        x = 0.97;
    }
    if (x <= 0.01) {
        x = 0.01;
    }
    if (y >= 0.99) {
        y = 0.99;
    }
    if (y <= 0.01) {
        y = 0.03;
    }
    first.x = static_cast<float>(x);
    first.y = static_cast<float>(y);
}

}  // namespace geometry
}  // namespace Tavrin
