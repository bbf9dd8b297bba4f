#include <Tavrin/CoverageMesh.h>

#include <Tavrin/FontAtlas.h>

#include "drawlist/ConvexEars.h"
#include "drawlist/MeshWalk.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <limits>

namespace Tavrin {

namespace {

using Point = DrawList::Vertex;
using Color = DrawList::Color;
using Vertex = CoverageMesh::Vertex;

// Edge and reach of a vertex whose coverage is 1 wherever it is interpolated.
constexpr float kSolidReach = 1.0f;

// An edge vector and reach for the corners of one shape.
struct Edge {
    float x;
    float y;
    float reach;
};

// Where triangles' indices go: the shapes' part, and the glyphs' (the same sink when the
// glyphs keep the list's order).
struct IndexSink {
    std::uint32_t* data;
    std::size_t count;
};

class Writer {
public:
    Writer(Vertex* vertices, IndexSink& shapes, IndexSink& glyphs)
        : m_vertices(vertices), m_shapes(shapes), m_glyphs(glyphs)
    {
        const FontAtlas::Texel white = FontAtlas::WhiteTexel();
        m_whiteU = static_cast<float>(white.x) / FontAtlas::kWidth;
        m_whiteV = static_cast<float>(white.y) / FontAtlas::kHeight;
    }

    std::uint32_t vertexCount() const { return m_vertexCount; }

    // One segment as a quad across its ends: `half` pixels either side of the line, plus
    // the half-pixel fringe when smoothed.
    void segment(const Point& a, const Point& b, float width, const Color& c, bool smooth)
    {
        float nx = 0.0f;
        float ny = 0.0f;
        if (!drawlist::segmentNormal(a, b, nx, ny)) {
            return;
        }
        const float half = drawlist::atLeastOnePixel(width) * 0.5f;
        const float across = smooth ? half + 0.5f : half;
        const float reach = smooth ? across : kSolidReach;
        const float edge = smooth ? across : 0.0f;
        const std::uint32_t a1 = shape(Point{a.x + nx * across, a.y + ny * across}, Edge{edge, 0.0f, reach}, c);
        const std::uint32_t b1 = shape(Point{b.x + nx * across, b.y + ny * across}, Edge{edge, 0.0f, reach}, c);
        const std::uint32_t b2 = shape(Point{b.x - nx * across, b.y - ny * across}, Edge{-edge, 0.0f, reach}, c);
        const std::uint32_t a2 = shape(Point{a.x - nx * across, a.y - ny * across}, Edge{-edge, 0.0f, reach}, c);
        quad(m_shapes, a1, b1, b2, a2);
    }

    void lines(const DrawList::Batch& batch, const Point* p)
    {
        drawlist::forEachSegment(batch, p, [&](const Point& a, const Point& b) {
            segment(a, b, batch.size, batch.color, batch.smooth);
        });
    }

    // Smoothed points are discs: a square reaching half a pixel past the disc, the edge
    // vector measured from the centre. Others are squares of their size.
    void points(const Point* p, std::uint32_t n, float size, bool smooth, const Color& c)
    {
        const float half = drawlist::atLeastOnePixel(size) * 0.5f;
        const float side = smooth ? half + 0.5f : half;
        const float reach = smooth ? side : kSolidReach;
        const float edge = smooth ? side : 0.0f;
        for (std::uint32_t i = 0; i < n; ++i) {
            const std::uint32_t topLeft = shape(Point{p[i].x - side, p[i].y - side}, Edge{-edge, -edge, reach}, c);
            const std::uint32_t topRight = shape(Point{p[i].x + side, p[i].y - side}, Edge{edge, -edge, reach}, c);
            const std::uint32_t bottomRight = shape(Point{p[i].x + side, p[i].y + side}, Edge{edge, edge, reach}, c);
            const std::uint32_t bottomLeft = shape(Point{p[i].x - side, p[i].y + side}, Edge{-edge, edge, reach}, c);
            quad(m_shapes, topLeft, topRight, bottomRight, bottomLeft);
        }
    }

    void convexPolygon(const Point* p, std::uint32_t n, const Color& c)
    {
        if (n < 3) {
            return;
        }
        const std::uint32_t first = m_vertexCount;
        for (std::uint32_t i = 0; i < n; ++i) {
            shape(p[i], Edge{0.0f, 0.0f, kSolidReach}, c);
        }
        drawlist::cutConvexEars(n, [this, first](std::uint32_t a, std::uint32_t b, std::uint32_t c) {
            triangle(m_shapes, first + a, first + b, first + c);
        });
    }

    void triangles(const Point* p, std::uint32_t n, const Color& c)
    {
        for (std::uint32_t i = 0; i + 2 < n; i += 3) {
            convexPolygon(p + i, 3, c);
        }
    }

    void glyphs(const DrawList::TextRun& run, const char* bytes)
    {
        const Edge solid{0.0f, 0.0f, kSolidReach};
        for (std::uint32_t i = 0; i < run.length; ++i) {
            const drawlist::GlyphQuad g = drawlist::glyphQuad(run, i, static_cast<unsigned char>(bytes[i]));
            const std::uint32_t topLeft = vertex(Point{g.left, g.top}, solid, g.u0, g.v0, run.color);
            const std::uint32_t topRight = vertex(Point{g.right, g.top}, solid, g.u1, g.v0, run.color);
            const std::uint32_t bottomRight = vertex(Point{g.right, g.bottom}, solid, g.u1, g.v1, run.color);
            const std::uint32_t bottomLeft = vertex(Point{g.left, g.bottom}, solid, g.u0, g.v1, run.color);
            quad(m_glyphs, topLeft, topRight, bottomRight, bottomLeft);
        }
    }

private:
    std::uint32_t vertex(const Point& p, const Edge& e, float u, float v, const Color& c)
    {
        m_vertices[m_vertexCount] = Vertex{p.x, p.y, e.x, e.y, e.reach, u, v, c.r, c.g, c.b, c.a};
        return m_vertexCount++;
    }

    std::uint32_t shape(const Point& p, const Edge& e, const Color& c) { return vertex(p, e, m_whiteU, m_whiteV, c); }

    static void triangle(IndexSink& sink, std::uint32_t a, std::uint32_t b, std::uint32_t c)
    {
        std::uint32_t* out = sink.data + sink.count;
        out[0] = a;
        out[1] = b;
        out[2] = c;
        sink.count += 3;
    }

    static void quad(IndexSink& sink, std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d)
    {
        triangle(sink, a, b, c);
        triangle(sink, a, c, d);
    }

    Vertex* m_vertices;
    IndexSink& m_shapes;
    IndexSink& m_glyphs;
    std::uint32_t m_vertexCount = 0;
    float m_whiteU;
    float m_whiteV;
};

struct Counts {
    std::size_t vertices = 0;
    std::size_t indices = 0;
};

// The most vertices and indices a batch can take (skipped degenerate segments take fewer).
Counts countOf(const DrawList::Batch& batch)
{
    const std::size_t n = batch.count;
    switch (batch.primitive) {
    case DrawList::Primitive::Points:
        return Counts{4 * n, 6 * n};
    case DrawList::Primitive::Triangles:
        return Counts{n / 3 * 3, n / 3 * 3};
    case DrawList::Primitive::Polygon:
        return n < 3 ? Counts{} : Counts{n, 3 * (n - 2)};
    default:
        break;
    }
    const std::size_t segments = drawlist::segmentCount(batch);
    return Counts{4 * segments, 6 * segments};
}

void tessellateBatch(Writer& out, const DrawList::Batch& batch, const Point* p)
{
    switch (batch.primitive) {
    case DrawList::Primitive::Points:
        out.points(p, batch.count, batch.size, batch.smooth, batch.color);
        break;
    case DrawList::Primitive::Lines:
    case DrawList::Primitive::LineStrip:
    case DrawList::Primitive::LineLoop:
        out.lines(batch, p);
        break;
    case DrawList::Primitive::Triangles:
        out.triangles(p, batch.count, batch.color);
        break;
    case DrawList::Primitive::Polygon:
        out.convexPolygon(p, batch.count, batch.color);
        break;
    }
}

struct Box {
    float left;
    float top;
    float right;
    float bottom;
};

Box runBox(const DrawList::TextRun& run)
{
    const float x = static_cast<float>(run.x);
    const float y = static_cast<float>(run.y);
    return Box{x, y, x + static_cast<float>(run.length) * DrawList::kGlyphWidth, y + DrawList::kGlyphHeight};
}

// Everything a batch can touch: its vertices' box, padded by its half width and the fringe.
Box batchBox(const DrawList::Batch& batch, const Point* p)
{
    Box box{p[0].x, p[0].y, p[0].x, p[0].y};
    for (std::uint32_t i = 1; i < batch.count; ++i) {
        box.left = std::min(box.left, p[i].x);
        box.top = std::min(box.top, p[i].y);
        box.right = std::max(box.right, p[i].x);
        box.bottom = std::max(box.bottom, p[i].y);
    }
    const float pad = (batch.size > 1.0f ? batch.size : 1.0f) * 0.5f + 1.0f;
    return Box{box.left - pad, box.top - pad, box.right + pad, box.bottom + pad};
}

// A coarse grid over the glyphs' region: which tiles a box covers, clamped to the grid.
struct TileGrid {
    Box region;
    float tile;
    std::size_t columns;
    std::size_t rows;

    bool span(const Box& box, std::size_t& c0, std::size_t& r0, std::size_t& c1, std::size_t& r1) const
    {
        if (box.right < region.left || box.left > region.right || box.bottom < region.top || box.top > region.bottom) {
            return false;
        }
        c0 = index(box.left - region.left, columns);
        c1 = index(box.right - region.left, columns);
        r0 = index(box.top - region.top, rows);
        r1 = index(box.bottom - region.top, rows);
        return true;
    }

    std::size_t index(float offset, std::size_t count) const
    {
        const float cell = std::floor(offset / tile);
        if (!(cell > 0.0f)) {
            return 0;
        }
        return cell < static_cast<float>(count - 1) ? static_cast<std::size_t>(cell) : count - 1;
    }
};

}  // namespace

void CoverageMesh::Clear()
{
    m_vertices.clear();
    m_indices.clear();
    m_glyphIndices.clear();
    m_shapeIndexCount = 0;
}

// Whether every glyph can be drawn after every shape: no batch after a run (in the list's
// order) reaches a tile of the grid that the run covers. Tiles keep the last batch that
// reaches them, plus one.
bool CoverageMesh::glyphsCanGoLast(const DrawList& list)
{
    const std::vector<DrawList::Batch>& batches = list.Batches();
    bool any = false;
    Box region{0.0f, 0.0f, 0.0f, 0.0f};
    for (const DrawList::TextRun& run : list.TextRuns()) {
        if (!drawlist::runInside(list, run) || run.before >= batches.size()) {
            continue;
        }
        const Box box = runBox(run);
        region = any ? Box{std::min(region.left, box.left), std::min(region.top, box.top),
                           std::max(region.right, box.right), std::max(region.bottom, box.bottom)}
                     : box;
        any = true;
    }
    if (!any) {
        return true;  // every glyph comes after every batch already
    }
    static constexpr float kMaxTilesPerSide = 64.0f;
    const float extent = std::max(region.right - region.left, region.bottom - region.top);
    const float tile = std::max(16.0f, std::ceil(extent / kMaxTilesPerSide));
    const auto tilesAlong = [tile](float length) {
        return static_cast<std::size_t>(std::min(kMaxTilesPerSide, std::floor(length / tile))) + 1;
    };
    const TileGrid grid{region, tile, tilesAlong(region.right - region.left), tilesAlong(region.bottom - region.top)};
    m_tiles.assign(grid.columns * grid.rows, 0);
    std::size_t c0 = 0, r0 = 0, c1 = 0, r1 = 0;
    for (std::size_t b = 0; b < batches.size(); ++b) {
        const DrawList::Batch& batch = batches[b];
        if (batch.count == 0 || !drawlist::batchInside(list, batch) ||
            !grid.span(batchBox(batch, list.Vertices().data() + batch.first), c0, r0, c1, r1)) {
            continue;
        }
        for (std::size_t r = r0; r <= r1; ++r) {
            for (std::size_t c = c0; c <= c1; ++c) {
                m_tiles[r * grid.columns + c] = static_cast<std::uint32_t>(b + 1);
            }
        }
    }
    for (const DrawList::TextRun& run : list.TextRuns()) {
        if (!drawlist::runInside(list, run) || !grid.span(runBox(run), c0, r0, c1, r1)) {
            continue;
        }
        for (std::size_t r = r0; r <= r1; ++r) {
            for (std::size_t c = c0; c <= c1; ++c) {
                if (m_tiles[r * grid.columns + c] > run.before) {
                    return false;
                }
            }
        }
    }
    return true;
}

void CoverageMesh::Build(const DrawList& list)
{
    Clear();
    Counts shapes;
    for (const DrawList::Batch& batch : list.Batches()) {
        if (drawlist::batchInside(list, batch)) {
            const Counts c = countOf(batch);
            shapes.vertices += c.vertices;
            shapes.indices += c.indices;
        }
    }
    Counts glyphs;
    for (const DrawList::TextRun& run : list.TextRuns()) {
        if (drawlist::runInside(list, run)) {
            glyphs.vertices += 4 * std::size_t{run.length};
            glyphs.indices += 6 * std::size_t{run.length};
        }
    }
    // 32-bit indices address every vertex only while there are fewer than 2^32 of them.
    if (shapes.vertices + glyphs.vertices > std::numeric_limits<std::uint32_t>::max()) {
        return;
    }
    try {
        const bool glyphsLast = glyphs.indices == 0 || glyphsCanGoLast(list);
        m_vertices.resize(shapes.vertices + glyphs.vertices);
        m_indices.resize(shapes.indices + glyphs.indices);
        m_glyphIndices.resize(glyphsLast ? glyphs.indices : 0);
        IndexSink shapeSink{m_indices.data(), 0};
        IndexSink glyphSink{m_glyphIndices.data(), 0};
        Writer out(m_vertices.data(), shapeSink, glyphsLast ? glyphSink : shapeSink);
        // When the glyphs keep the list's order, the first one ends the shapes-only part.
        std::size_t firstGlyph = std::numeric_limits<std::size_t>::max();
        drawlist::forEachInDrawingOrder(
            list,
            [&](const DrawList::TextRun& run, const char* bytes) {
                firstGlyph = std::min(firstGlyph, shapeSink.count);
                out.glyphs(run, bytes);
            },
            [&out](const DrawList::Batch& batch, const Point* p) { tessellateBatch(out, batch, p); });
        m_shapeIndexCount = glyphsLast ? shapeSink.count : std::min(firstGlyph, shapeSink.count);
        std::copy(m_glyphIndices.begin(), m_glyphIndices.begin() + static_cast<std::ptrdiff_t>(glyphSink.count),
                  m_indices.begin() + static_cast<std::ptrdiff_t>(shapeSink.count));
        m_vertices.resize(out.vertexCount());
        m_indices.resize(shapeSink.count + glyphSink.count);
    } catch (const std::exception&) {
        // Out of memory: an empty mesh rather than a partial one.
        Clear();
    }
}

}  // namespace Tavrin
