#include <Tavrin/TriangleMesh.h>

#include <Tavrin/FontAtlas.h>

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

// Segments for a disc `diameter` pixels across: about one per 1.5 pixels of its rim.
int discSegmentsFor(float diameter)
{
    const float wanted = std::ceil(diameter * kPi / 1.5f);
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

bool isFinite(const Point& p) { return std::isfinite(p.x) && std::isfinite(p.y); }

Point offset(const Point& p, float nx, float ny, float d) { return Point{p.x + nx * d, p.y + ny * d}; }

// Appends triangles to the mesh's arrays; every texel it puts on shapes is the atlas's
// opaque block.
class MeshWriter {
public:
    MeshWriter(std::vector<TriangleMesh::Vertex>& vertices, std::vector<std::uint32_t>& indices)
        : m_vertices(vertices), m_indices(indices)
    {
        const FontAtlas::Texel white = FontAtlas::WhiteTexel();
        m_whiteU = static_cast<float>(white.x) / FontAtlas::kWidth;
        m_whiteV = static_cast<float>(white.y) / FontAtlas::kHeight;
    }

    // A vertex of a shape; returns its index.
    std::uint32_t vertex(const Point& p, const Color& c, std::uint8_t alpha)
    {
        return texturedVertex(p, m_whiteU, m_whiteV, c, alpha);
    }

    std::uint32_t texturedVertex(const Point& p, float u, float v, const Color& c, std::uint8_t alpha)
    {
        const auto index = static_cast<std::uint32_t>(m_vertices.size());
        m_vertices.push_back(TriangleMesh::Vertex{p.x, p.y, u, v, c.r, c.g, c.b, alpha});
        return index;
    }

    void triangle(std::uint32_t a, std::uint32_t b, std::uint32_t c)
    {
        m_indices.push_back(a);
        m_indices.push_back(b);
        m_indices.push_back(c);
    }

    void quad(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d)
    {
        triangle(a, b, c);
        triangle(a, c, d);
    }

    // A strip along the edge a-b, from alpha `inner` on the edge to transparent one pixel
    // out along (nx, ny).
    void fringe(const Point& a, const Point& b, float nx, float ny, const Color& c)
    {
        quadOf(Point4{a, b, offset(b, nx, ny, 1.0f), offset(a, nx, ny, 1.0f)}, c, c.a, 0);
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
        const float dx = b.x - a.x;
        const float dy = b.y - a.y;
        const float length = std::sqrt(dx * dx + dy * dy);
        if (!(length > 0.0f) || !std::isfinite(length)) {
            return;
        }
        const float nx = -dy / length;
        const float ny = dx / length;
        const float half = (width > 1.0f ? width : 1.0f) * 0.5f;
        const float core = antialias ? (half > 0.5f ? half - 0.5f : 0.0f) : half;
        const Point a1 = offset(a, nx, ny, core);
        const Point b1 = offset(b, nx, ny, core);
        const Point b2 = offset(b, nx, ny, -core);
        const Point a2 = offset(a, nx, ny, -core);
        quadOf(Point4{a1, b1, b2, a2}, c, c.a, c.a);
        if (antialias) {
            fringe(a1, b1, nx, ny, c);
            fringe(b2, a2, -nx, -ny, c);
        }
    }

    void lines(const Point* p, std::uint32_t n, float width, const Color& c, bool antialias)
    {
        for (std::uint32_t i = 0; i + 1 < n; i += 2) {
            segment(p[i], p[i + 1], width, c, antialias);
        }
    }

    void strip(const Point* p, std::uint32_t n, bool closed, float width, const Color& c, bool antialias)
    {
        for (std::uint32_t i = 0; i + 1 < n; ++i) {
            segment(p[i], p[i + 1], width, c, antialias);
        }
        if (closed && n > 2) {
            segment(p[n - 1], p[0], width, c, antialias);
        }
    }

    void points(const Point* p, std::uint32_t n, float size, bool round, const Color& c, bool antialias)
    {
        const float half = (size > 1.0f ? size : 1.0f) * 0.5f;
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
        const std::uint32_t first = static_cast<std::uint32_t>(m_vertices.size());
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

    // A convex polygon as a fan from its first vertex.
    void fan(const Point* p, std::uint32_t n, const Color& c)
    {
        if (n < 3) {
            return;
        }
        const std::uint32_t first = static_cast<std::uint32_t>(m_vertices.size());
        for (std::uint32_t i = 0; i < n; ++i) {
            vertex(p[i], c, c.a);
        }
        for (std::uint32_t i = 1; i + 1 < n; ++i) {
            triangle(first, first + i, first + i + 1);
        }
    }

    void triangles(const Point* p, std::uint32_t n, const Color& c)
    {
        for (std::uint32_t i = 0; i + 2 < n; i += 3) {
            fan(p + i, 3, c);
        }
    }

    void glyphs(const DrawList::TextRun& run, const char* bytes)
    {
        const float w = static_cast<float>(DrawList::kGlyphWidth);
        const float h = static_cast<float>(DrawList::kGlyphHeight);
        for (std::uint32_t i = 0; i < run.length; ++i) {
            const FontAtlas::Texel cell = FontAtlas::GlyphCell(static_cast<unsigned char>(bytes[i]));
            const float u0 = static_cast<float>(cell.x) / FontAtlas::kWidth;
            const float v0 = static_cast<float>(cell.y) / FontAtlas::kHeight;
            const float u1 = static_cast<float>(cell.x + DrawList::kGlyphWidth) / FontAtlas::kWidth;
            const float v1 = static_cast<float>(cell.y + DrawList::kGlyphHeight) / FontAtlas::kHeight;
            const float x = static_cast<float>(run.x) + static_cast<float>(i) * w;
            const float y = static_cast<float>(run.y);
            const std::uint32_t topLeft = texturedVertex(Point{x, y}, u0, v0, run.color, run.color.a);
            const std::uint32_t topRight = texturedVertex(Point{x + w, y}, u1, v0, run.color, run.color.a);
            const std::uint32_t bottomRight = texturedVertex(Point{x + w, y + h}, u1, v1, run.color, run.color.a);
            const std::uint32_t bottomLeft = texturedVertex(Point{x, y + h}, u0, v1, run.color, run.color.a);
            quad(topLeft, topRight, bottomRight, bottomLeft);
        }
    }

private:
    std::vector<TriangleMesh::Vertex>& m_vertices;
    std::vector<std::uint32_t>& m_indices;
    float m_whiteU;
    float m_whiteV;
};

bool allFinite(const Point* p, std::uint32_t n)
{
    for (std::uint32_t i = 0; i < n; ++i) {
        if (!isFinite(p[i])) {
            return false;
        }
    }
    return true;
}

void tessellateBatch(MeshWriter& out, const DrawList::Batch& batch, const Point* p, bool antialias)
{
    // Fills get no fringe: the figures fill with triangles side by side (often
    // translucent), where fringes along the shared edges would show as seams; their
    // outlines, drawn as lines, smooth the outer edge.
    const bool fill = batch.primitive == DrawList::Primitive::Triangles || batch.primitive == DrawList::Primitive::Polygon;
    const bool fringe = antialias && batch.smooth && !fill;
    switch (batch.primitive) {
    case DrawList::Primitive::Points:
        out.points(p, batch.count, batch.size, batch.smooth, batch.color, fringe);
        break;
    case DrawList::Primitive::Lines:
        out.lines(p, batch.count, batch.size, batch.color, fringe);
        break;
    case DrawList::Primitive::LineStrip:
        out.strip(p, batch.count, false, batch.size, batch.color, fringe);
        break;
    case DrawList::Primitive::LineLoop:
        out.strip(p, batch.count, true, batch.size, batch.color, fringe);
        break;
    case DrawList::Primitive::Triangles:
        out.triangles(p, batch.count, batch.color);
        break;
    case DrawList::Primitive::Polygon:
        out.fan(p, batch.count, batch.color);
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
    const std::vector<Point>& points = list.Vertices();
    const std::vector<char>& bytes = list.TextBytes();
    try {
        MeshWriter out(m_vertices, m_indices);
        const std::vector<DrawList::Batch>& batches = list.Batches();
        const std::vector<DrawList::TextRun>& runs = list.TextRuns();
        // Batches and text runs in the order the OpenGL frame draws them.
        std::size_t r = 0;
        for (std::size_t b = 0; b <= batches.size(); ++b) {
            for (; r < runs.size() && (runs[r].before <= b || b == batches.size()); ++r) {
                const DrawList::TextRun& run = runs[r];
                if (run.first <= bytes.size() && run.length <= bytes.size() - run.first) {
                    out.glyphs(run, bytes.data() + run.first);
                }
            }
            if (b == batches.size()) {
                break;
            }
            const DrawList::Batch& batch = batches[b];
            if (batch.first > points.size() || batch.count > points.size() - batch.first ||
                !allFinite(points.data() + batch.first, batch.count)) {
                continue;
            }
            tessellateBatch(out, batch, points.data() + batch.first, antialias);
        }
        // 32-bit indices address every vertex only while there are fewer than 2^32 of them.
        if (m_vertices.size() > std::numeric_limits<std::uint32_t>::max()) {
            Clear();
        }
    } catch (const std::exception&) {
        // Out of memory: an empty mesh rather than a partial one.
        Clear();
    }
}

}  // namespace Tavrin
