#ifndef TAVRIN_TRIANGLEMESH_H
#define TAVRIN_TRIANGLEMESH_H

#include <Tavrin/DrawList.h>
#include <Tavrin/TavrinTypes.h>

#include <cstdint>
#include <vector>

namespace Tavrin {

/// A `DrawList` as triangles, for GPU renderers: one vertex array and one array of 32-bit
/// indices, three per triangle, in the list's order, drawn with one texture, the
/// `FontAtlas` (alpha only), and one draw call.
///
/// Each wide line segment becomes one quad across its ends (the way OpenGL draws wide
/// lines: no joins, no caps), round points become discs with enough segments to look round
/// at their size, square points quads, convex polygons ears of every other vertex (then of
/// what is left, recursively: no long slivers), glyphs quads textured from their atlas
/// cells. Untextured vertices sample the atlas's opaque block, so the texture's alpha times
/// the vertex colour is the colour to blend.
///
/// With `antialias`, every line and point batch the OpenGL path smooths gets a one-pixel
/// fringe along its outer edges whose alpha falls to zero, which gives smooth edges
/// without multisampling. Fills get none: the figures fill with triangles side by side,
/// often translucent, where fringes on the shared edges would show as seams.
///
/// Vertex colours are straight (not premultiplied) RGBA. `Build` keeps the arrays' memory,
/// so a renderer that keeps one mesh allocates only while the scene grows.
class TAVRIN_API TriangleMesh {
public:
    struct Vertex {
        float x;  ///< view pixels, x to the right
        float y;  ///< view pixels, y downwards
        float u;  ///< atlas coordinates, 0 to 1
        float v;
        std::uint8_t r;
        std::uint8_t g;
        std::uint8_t b;
        std::uint8_t a;
    };

    TriangleMesh() = default;

    /// Replaces the mesh with the triangles of `list`.
    void Build(const DrawList& list, bool antialias = false);
    void Clear();

    const std::vector<Vertex>& Vertices() const { return m_vertices; }
    const std::vector<std::uint32_t>& Indices() const { return m_indices; }

private:
    std::vector<Vertex> m_vertices;
    std::vector<std::uint32_t> m_indices;
};

}  // namespace Tavrin

#endif  // TAVRIN_TRIANGLEMESH_H
