#ifndef TAVRIN_DRAWLIST_CONVEXEARS_H
#define TAVRIN_DRAWLIST_CONVEXEARS_H

#include <cstdint>

namespace Tavrin {
namespace drawlist {

/// Cuts a convex polygon of `n` vertices into n - 2 triangles: the ears of every other
/// vertex, then the ears of the polygon left, and so on; `emit(a, b, c)` receives each
/// triangle's vertex numbers, in the polygon's turning order. Most triangles are small
/// ones along the rim. A fan from one vertex would make slivers across the whole polygon,
/// which rasterisers pay for at every block along their long edges.
template <class Emit>
void cutConvexEars(std::uint32_t n, Emit emit)
{
    // At stride s the polygon left has the vertices 0, s, 2s, ... up to n - 1.
    for (std::uint32_t stride = 1; n >= 3 && (n - 1) / stride >= 2; stride *= 2) {
        const std::uint32_t last = (n - 1) / stride;
        for (std::uint32_t k = 0; k + 1 <= last; k += 2) {
            emit(k * stride, (k + 1) * stride, k + 2 <= last ? (k + 2) * stride : 0);
        }
    }
}

}  // namespace drawlist
}  // namespace Tavrin

#endif  // TAVRIN_DRAWLIST_CONVEXEARS_H
