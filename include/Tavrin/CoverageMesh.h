#ifndef TAVRIN_COVERAGEMESH_H
#define TAVRIN_COVERAGEMESH_H

#include <Tavrin/DrawList.h>
#include <Tavrin/TavrinTypes.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Tavrin {

/// A `DrawList` as few triangles whose smooth edges a fragment shader computes: the form
/// `GlRenderer` draws. Each vertex carries, besides its position, atlas texel and colour,
/// an edge vector and a reach; a fragment's coverage is
///
///     clamp(reach - length(edge), 0, 1)
///
/// with `edge` interpolated across the triangle and `reach` the same at all three corners.
/// A smoothed line segment is one quad half a pixel wider than the line on each side, its
/// edge vector running across it, so that the coverage is 1 within half a pixel of the
/// line's edge inwards and falls to 0 half a pixel outwards (a fringe one pixel wide, no
/// joins, no caps, as OpenGL draws wide lines); a round point is one square around its
/// disc, the edge vector measured from the centre. Unsmoothed lines and square points are
/// quads of their exact size, fills are triangles, glyphs quads textured from the
/// `FontAtlas`: all with coverage 1 everywhere (edge 0, reach 1). A convex polygon is cut
/// into ears of every other vertex, recursively, which keeps its triangles off long
/// slivers. Shapes sample the atlas's opaque block.
///
/// The indices come in two parts. The first `ShapeIndexCount()` are shapes only, drawable
/// without the atlas; the rest, from the first glyph on, need it. When no shape after a
/// glyph in the list's order reaches that glyph's cell, the glyphs are moved behind every
/// shape (the picture is the same, because blending pixels that nothing else covers
/// commutes); otherwise the second part keeps the list's order from the first glyph on.
/// Drawing the two parts in turn gives the frame the list describes.
///
/// Vertex colours are straight (not premultiplied) RGBA. `Build` keeps the arrays' memory,
/// so a renderer that keeps one mesh allocates only while the scene grows.
class TAVRIN_API CoverageMesh {
public:
    struct Vertex {
        float x;      ///< view pixels, x to the right
        float y;      ///< view pixels, y downwards
        float edgeX;  ///< edge vector, pixels
        float edgeY;
        float reach;  ///< pixels; coverage is reach - |edge|, clamped to [0, 1]
        float u;      ///< atlas coordinates, 0 to 1
        float v;
        std::uint8_t r;
        std::uint8_t g;
        std::uint8_t b;
        std::uint8_t a;
    };

    CoverageMesh() = default;

    /// Replaces the mesh with the triangles of `list`.
    void Build(const DrawList& list);
    void Clear();

    const std::vector<Vertex>& Vertices() const { return m_vertices; }
    const std::vector<std::uint32_t>& Indices() const { return m_indices; }
    /// How many of the first indices are shapes that need no atlas.
    std::size_t ShapeIndexCount() const { return m_shapeIndexCount; }

private:
    bool glyphsCanGoLast(const DrawList& list);

    std::vector<Vertex> m_vertices;
    std::vector<std::uint32_t> m_indices;
    std::vector<std::uint32_t> m_glyphIndices;
    std::vector<std::uint32_t> m_tiles;
    std::size_t m_shapeIndexCount = 0;
};

}  // namespace Tavrin

#endif  // TAVRIN_COVERAGEMESH_H
