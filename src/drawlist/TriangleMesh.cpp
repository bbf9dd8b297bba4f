#include <Tavrin/TriangleMesh.h>

#include <Tavrin/FontAtlas.h>

#include "drawlist/ConvexEars.h"
#include "drawlist/MeshWalk.h"

#include <cmath>
#include <exception>
#include <limits>

namespace Tavrin {

namespace {

using Point = DrawList::Vertex;
using Color = DrawList::Color;

constexpr float kPi = 3.14159265f;
constexpr int kMinDiscSegments = 8;
constexpr int kMaxDiscSegments = 64;

// Segments for a disc `diameter` pixels across: about one per 3 pixels of its rim, so
// that no edge strays half a pixel from the circle (a handle of 8 pixels gets 9).
int discSegmentsFor(float diameter)
{
    const float wanted = std::ceil(diameter * kPi / 3.0f);
    if (!(wanted > kMinDiscSegments)) {
        return kMinDiscSegments;
    }
    return wanted < kMaxDiscSegments ? static_cast<int>(wanted) : kMaxDiscSegments;
}

// The rim directions of a disc of every segment count, computed once.
struct DiscRims {
    float cosine[kMaxDiscSegments + 1][kMaxDiscSegments];
    float sine[kMaxDiscSegments + 1][kMaxDiscSegments];

    DiscRims()
    {
        for (int n = kMinDiscSegments; n <= kMaxDiscSegments; ++n) {
            for (int i = 0; i < n; ++i) {
                const float angle = 2.0f * kPi * static_cast<float>(i) / static_cast<float>(n);
                cosine[n][i] = std::cos(angle);
                sine[n][i] = std::sin(angle);
            }
        }
    }
};

const DiscRims& discRims()
{
    static const DiscRims rims;
    return rims;
}

Point offset(const Point& p, float nx, float ny, float d) { return Point{p.x + nx * d, p.y + ny * d}; }

// Appends triangles to the mesh's arrays; every texel it puts on shapes is the atlas's
// opaque block.
class MeshWriter {
public:
    /// Writes into arrays the caller sized to at least what the batches need (countOf).
    MeshWriter(TriangleMesh::Vertex* vertices, std::uint32_t* indices) : m_vertices(vertices), m_indices(indices)
    {
        const FontAtlas::Texel white = FontAtlas::WhiteTexel();
        m_whiteU = static_cast<float>(white.x) / FontAtlas::kWidth;
        m_whiteV = static_cast<float>(white.y) / FontAtlas::kHeight;
    }

    std::uint32_t vertexCount() const { return m_vertexCount; }
    std::size_t indexCount() const { return m_indexCount; }

    // A vertex of a shape; returns its index.
    std::uint32_t vertex(const Point& p, const Color& c, std::uint8_t alpha)
    {
        return texturedVertex(p, m_whiteU, m_whiteV, c, alpha);
    }

    std::uint32_t texturedVertex(const Point& p, float u, float v, const Color& c, std::uint8_t alpha)
    {
        m_vertices[m_vertexCount] = TriangleMesh::Vertex{p.x, p.y, u, v, c.r, c.g, c.b, alpha};
        return m_vertexCount++;
    }

    void triangle(std::uint32_t a, std::uint32_t b, std::uint32_t c)
    {
        std::uint32_t* out = m_indices + m_indexCount;
        out[0] = a;
        out[1] = b;
        out[2] = c;
        m_indexCount += 3;
    }

    void quad(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d)
    {
        triangle(a, b, c);
        triangle(a, c, d);
    }

    // Four corners in order, the first two with alpha `near`, the last two with `far`.
    struct Point4 {
        Point p[4];
    };
    void quadOf(const Point4& q, const Color& c, std::uint8_t nearAlpha, std::uint8_t farAlpha)
    {
        const std::uint32_t a = vertex(q.p[0], c, nearAlpha);
        const std::uint32_t b = vertex(q.p[1], c, nearAlpha);
        const std::uint32_t d = vertex(q.p[2], c, farAlpha);
        const std::uint32_t e = vertex(q.p[3], c, farAlpha);
        quad(a, b, d, e);
    }

    // One wide segment as GL draws it: a quad across its ends, `width` pixels wide.
    void segment(const Point& a, const Point& b, float width, const Color& c, bool antialias)
    {
        float nx = 0.0f;
        float ny = 0.0f;
        if (!drawlist::segmentNormal(a, b, nx, ny)) {
            return;
        }
        const float half = drawlist::atLeastOnePixel(width) * 0.5f;
        const float core = antialias ? (half > 0.5f ? half - 0.5f : 0.0f) : half;
        const std::uint32_t a1 = vertex(offset(a, nx, ny, core), c, c.a);
        const std::uint32_t b1 = vertex(offset(b, nx, ny, core), c, c.a);
        const std::uint32_t b2 = vertex(offset(b, nx, ny, -core), c, c.a);
        const std::uint32_t a2 = vertex(offset(a, nx, ny, -core), c, c.a);
        quad(a1, b1, b2, a2);
        if (antialias) {
            // Transparent edges one pixel out on both sides, sharing the core's corners.
            const std::uint32_t a1out = vertex(offset(a, nx, ny, core + 1.0f), c, 0);
            const std::uint32_t b1out = vertex(offset(b, nx, ny, core + 1.0f), c, 0);
            const std::uint32_t b2out = vertex(offset(b, nx, ny, -core - 1.0f), c, 0);
            const std::uint32_t a2out = vertex(offset(a, nx, ny, -core - 1.0f), c, 0);
            quad(a1, b1, b1out, a1out);
            quad(b2, a2, a2out, b2out);
        }
    }

    void lines(const DrawList::Batch& batch, const Point* p, bool antialias)
    {
        drawlist::forEachSegment(batch, p, [&](const Point& a, const Point& b) {
            segment(a, b, batch.size, batch.color, antialias);
        });
    }

    void points(const Point* p, std::uint32_t n, float size, bool round, const Color& c, bool antialias)
    {
        const float half = drawlist::atLeastOnePixel(size) * 0.5f;
        for (std::uint32_t i = 0; i < n; ++i) {
            if (round) {
                disc(p[i], half, c, antialias);
            } else {
                quadOf(Point4{Point{p[i].x - half, p[i].y - half}, Point{p[i].x + half, p[i].y - half},
                              Point{p[i].x + half, p[i].y + half}, Point{p[i].x - half, p[i].y + half}},
                       c, c.a, c.a);
            }
        }
    }

    void disc(const Point& centre, float radius, const Color& c, bool antialias)
    {
        const int segments = discSegmentsFor(2.0f * radius);
        const float rim = antialias ? radius - 0.5f : radius;
        const std::uint32_t middle = vertex(centre, c, c.a);
        const std::uint32_t first = m_vertexCount;
        const DiscRims& rims = discRims();
        for (int i = 0; i < segments; ++i) {
            const float cx = rims.cosine[segments][i];
            const float cy = rims.sine[segments][i];
            vertex(offset(offset(centre, cx, 0.0f, rim), 0.0f, cy, rim), c, c.a);
            if (antialias) {
                vertex(offset(offset(centre, cx, 0.0f, rim + 1.0f), 0.0f, cy, rim + 1.0f), c, 0);
            }
        }
        const std::uint32_t step = antialias ? 2 : 1;
        for (int i = 0; i < segments; ++i) {
            const std::uint32_t here = first + static_cast<std::uint32_t>(i) * step;
            const std::uint32_t next = first + static_cast<std::uint32_t>((i + 1) % segments) * step;
            triangle(middle, here, next);
            if (antialias) {
                quad(here, next, next + 1, here + 1);
            }
        }
    }

    // A convex polygon as ears (see cutConvexEars).
    void convexPolygon(const Point* p, std::uint32_t n, const Color& c)
    {
        if (n < 3) {
            return;
        }
        const std::uint32_t first = m_vertexCount;
        for (std::uint32_t i = 0; i < n; ++i) {
            vertex(p[i], c, c.a);
        }
        drawlist::cutConvexEars(n, [this, first](std::uint32_t a, std::uint32_t b, std::uint32_t c) {
            triangle(first + a, first + b, first + c);
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
        for (std::uint32_t i = 0; i < run.length; ++i) {
            const drawlist::GlyphQuad g = drawlist::glyphQuad(run, i, static_cast<unsigned char>(bytes[i]));
            const std::uint8_t a = run.color.a;
            const std::uint32_t topLeft = texturedVertex(Point{g.left, g.top}, g.u0, g.v0, run.color, a);
            const std::uint32_t topRight = texturedVertex(Point{g.right, g.top}, g.u1, g.v0, run.color, a);
            const std::uint32_t bottomRight = texturedVertex(Point{g.right, g.bottom}, g.u1, g.v1, run.color, a);
            const std::uint32_t bottomLeft = texturedVertex(Point{g.left, g.bottom}, g.u0, g.v1, run.color, a);
            quad(topLeft, topRight, bottomRight, bottomLeft);
        }
    }

private:
    TriangleMesh::Vertex* m_vertices;
    std::uint32_t* m_indices;
    std::uint32_t m_vertexCount = 0;
    std::size_t m_indexCount = 0;
    float m_whiteU;
    float m_whiteV;
};

struct Counts {
    std::size_t vertices = 0;
    std::size_t indices = 0;
};

// The most vertices and indices a batch can take (skipped degenerate pieces take fewer).
Counts countOf(const DrawList::Batch& batch, bool fringe)
{
    const std::size_t n = batch.count;
    switch (batch.primitive) {
    case DrawList::Primitive::Points: {
        if (!batch.smooth) {
            return Counts{4 * n, 6 * n};
        }
        const auto rim = static_cast<std::size_t>(discSegmentsFor(drawlist::atLeastOnePixel(batch.size)));
        return Counts{n * (1 + rim * (fringe ? 2 : 1)), n * rim * (fringe ? 9 : 3)};
    }
    case DrawList::Primitive::Triangles:
        return Counts{n / 3 * 3, n / 3 * 3};
    case DrawList::Primitive::Polygon:
        return n < 3 ? Counts{} : Counts{n, 3 * (n - 2)};
    default:
        break;
    }
    const std::size_t segments = drawlist::segmentCount(batch);
    return fringe ? Counts{8 * segments, 18 * segments} : Counts{4 * segments, 6 * segments};
}

bool isFill(const DrawList::Batch& batch)
{
    return batch.primitive == DrawList::Primitive::Triangles || batch.primitive == DrawList::Primitive::Polygon;
}

void tessellateBatch(MeshWriter& out, const DrawList::Batch& batch, const Point* p, bool antialias)
{
    // Fills get no fringe: the figures fill with triangles side by side (often
    // translucent), where fringes along the shared edges would show as seams; their
    // outlines, drawn as lines, smooth the outer edge.
    const bool fringe = antialias && batch.smooth && !isFill(batch);
    switch (batch.primitive) {
    case DrawList::Primitive::Points:
        out.points(p, batch.count, batch.size, batch.smooth, batch.color, fringe);
        break;
    case DrawList::Primitive::Lines:
    case DrawList::Primitive::LineStrip:
    case DrawList::Primitive::LineLoop:
        out.lines(batch, p, fringe);
        break;
    case DrawList::Primitive::Triangles:
        out.triangles(p, batch.count, batch.color);
        break;
    case DrawList::Primitive::Polygon:
        out.convexPolygon(p, batch.count, batch.color);
        break;
    }
}

}  // namespace

void TriangleMesh::Clear()
{
    m_vertices.clear();
    m_indices.clear();
}

void TriangleMesh::Build(const DrawList& list, bool antialias)
{
    Clear();
    // Sized once for the whole frame, then written in place.
    Counts total;
    for (const DrawList::Batch& batch : list.Batches()) {
        if (drawlist::batchInside(list, batch)) {
            const Counts c = countOf(batch, antialias && batch.smooth && !isFill(batch));
            total.vertices += c.vertices;
            total.indices += c.indices;
        }
    }
    for (const DrawList::TextRun& run : list.TextRuns()) {
        if (drawlist::runInside(list, run)) {
            total.vertices += 4 * std::size_t{run.length};
            total.indices += 6 * std::size_t{run.length};
        }
    }
    // 32-bit indices address every vertex only while there are fewer than 2^32 of them.
    if (total.vertices > std::numeric_limits<std::uint32_t>::max()) {
        return;
    }
    try {
        m_vertices.resize(total.vertices);
        m_indices.resize(total.indices);
    } catch (const std::exception&) {
        // Out of memory: an empty mesh rather than a partial one.
        Clear();
        return;
    }
    MeshWriter out(m_vertices.data(), m_indices.data());
    drawlist::forEachInDrawingOrder(
        list, [&out](const DrawList::TextRun& run, const char* bytes) { out.glyphs(run, bytes); },
        [&out, antialias](const DrawList::Batch& batch, const Point* p) { tessellateBatch(out, batch, p, antialias); });
    m_vertices.resize(out.vertexCount());
    m_indices.resize(out.indexCount());
}

}  // namespace Tavrin
