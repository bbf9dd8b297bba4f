#include "drawlist/DrawListWriter.h"

#include "graph/FontTable.h"

#include <cmath>
#include <limits>
#include <exception>
#include <vector>

namespace Tavrin {

namespace {

constexpr DrawList::Color kOpaqueWhite{255, 255, 255, 255};

// The smoothing bit OpenGL consults for a primitive.
std::uint8_t smoothingBitOf(DrawList::Primitive primitive)
{
    switch (primitive) {
    case DrawList::Primitive::Points:
        return DrawListWriter::kSmoothPoints;
    case DrawList::Primitive::Lines:
    case DrawList::Primitive::LineStrip:
    case DrawList::Primitive::LineLoop:
        return DrawListWriter::kSmoothLines;
    case DrawList::Primitive::Triangles:
    case DrawList::Primitive::Polygon:
        return DrawListWriter::kSmoothPolygons;
    }
    return 0;
}

float sizeOf(const DrawList::Primitive primitive, float lineWidth, float pointSize)
{
    if (primitive == DrawList::Primitive::Points) {
        return pointSize;
    }
    if (primitive == DrawList::Primitive::Triangles || primitive == DrawList::Primitive::Polygon) {
        return 0.0f;
    }
    return lineWidth;
}

// The viewport transform of a view of w x h pixels after the render state's translate,
// with y turned downwards.
DrawList::Vertex viewPixelOf(const geometry::GlPoint& g, float w, float h)
{
    return DrawList::Vertex{g.x * 0.5f * w, h - g.y * 0.5f * h};
}

// Element counts stay addressable by the 32-bit indices of a batch or run.
bool roomFor(std::size_t used, std::size_t more)
{
    return more <= std::numeric_limits<std::uint32_t>::max() - used;
}

// Capacity for `more` elements beyond the size, growing geometrically; false when the
// memory is not there.
template <typename T>
bool reserveMore(std::vector<T>& v, std::size_t more)
{
    const std::size_t needed = v.size() + more;
    if (needed <= v.capacity()) {
        return true;
    }
    try {
        v.reserve(needed > 2 * v.capacity() ? needed : 2 * v.capacity());
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

static_assert(DrawList::kGlyphWidth == font::kCellWidth && DrawList::kGlyphHeight == font::kCellHeight,
              "the list's glyph cell is the built-in font's");

}  // namespace

void DrawListWriter::beginFigure(DrawList& list, std::uint8_t smoothing, int viewWidth, int viewHeight)
{
    list.m_smoothing = smoothing;
    list.m_viewWidth = viewWidth;
    list.m_viewHeight = viewHeight;
}

void DrawListWriter::endFigure(DrawList& list)
{
    list.m_color = kOpaqueWhite;
    list.m_smoothing = 0;
}

void DrawListWriter::setColor(DrawList& list, DrawList::Color color) { list.m_color = color; }

void DrawListWriter::setLineWidth(DrawList& list, float width) { list.m_lineWidth = width; }

void DrawListWriter::setPointSize(DrawList& list, float size) { list.m_pointSize = size; }

namespace {

const geometry::GlPoint& glPointOf(const geometry::GlPoint& g) { return g; }
geometry::GlPoint glPointOf(const tagTAVRIN_POINT& p) { return geometry::glPointOf(p); }

}  // namespace

template <typename Point>
void DrawListWriter::appendBatch(DrawList& list, DrawList::Primitive primitive, const Point* points,
                                 std::size_t count)
{
    if (points == nullptr || count == 0 || !geometry::hasViewSize(list.m_viewWidth, list.m_viewHeight) ||
        !roomFor(list.m_vertices.size(), count)) {
        return;
    }
    // Room first, so that running out of memory leaves the batch out whole.
    if (!reserveMore(list.m_batches, 1) || !reserveMore(list.m_vertices, count)) {
        return;
    }
    DrawList::Batch batch{};
    batch.primitive = primitive;
    batch.smooth = (list.m_smoothing & smoothingBitOf(primitive)) != 0;
    batch.size = sizeOf(primitive, list.m_lineWidth, list.m_pointSize);
    batch.color = list.m_color;
    batch.first = static_cast<std::uint32_t>(list.m_vertices.size());
    batch.count = static_cast<std::uint32_t>(count);
    const float w = static_cast<float>(list.m_viewWidth);
    const float h = static_cast<float>(list.m_viewHeight);
    for (std::size_t i = 0; i < count; ++i) {
        const DrawList::Vertex v = viewPixelOf(glPointOf(points[i]), w, h);
        // A vertex far outside the view can lie beyond float range in pixels, where
        // OpenGL clips it: the list leaves such a batch out whole.
        if (!std::isfinite(v.x) || !std::isfinite(v.y)) {
            list.m_vertices.resize(batch.first);
            return;
        }
        list.m_vertices.push_back(v);
    }
    list.m_batches.push_back(batch);
}

void DrawListWriter::addBatch(DrawList& list, DrawList::Primitive primitive, const geometry::GlPoint* vertices,
                              std::size_t count)
{
    appendBatch(list, primitive, vertices, count);
}

void DrawListWriter::addBatch(DrawList& list, DrawList::Primitive primitive, const tagTAVRIN_POINT* points,
                              std::size_t count)
{
    appendBatch(list, primitive, points, count);
}

void DrawListWriter::addText(DrawList& list, const geometry::GlPoint& anchor, int dx, int dy, const char* text,
                             std::size_t length)
{
    if (text == nullptr || length == 0 || !geometry::hasViewSize(list.m_viewWidth, list.m_viewHeight) ||
        !roomFor(list.m_textBytes.size(), length)) {
        return;
    }
    // OpenGL's raster position is valid only inside the clip volume: glyphs are drawn
    // from an anchor inside the view, edges included, and from nowhere else.
    if (!(anchor.x >= 0.0f && anchor.x <= 2.0f && anchor.y >= 0.0f && anchor.y <= 2.0f)) {
        return;
    }
    const float w = static_cast<float>(list.m_viewWidth);
    const float h = static_cast<float>(list.m_viewHeight);
    // glBitmap puts a glyph's lower-left pixel at floor(raster - origin), origin (0, descent).
    // (Saturated to int: views wider than any screen still give defined positions.)
    const double left = std::floor(anchor.x * 0.5f * w + static_cast<float>(dx));
    const double bottomUp = std::floor(anchor.y * 0.5f * h + static_cast<float>(dy) -
                                       static_cast<float>(font::kDescent));
    DrawList::TextRun run{};
    run.x = geometry::truncToInt(left);
    run.y = geometry::truncToInt(static_cast<double>(list.m_viewHeight) - bottomUp - DrawList::kGlyphHeight);
    run.color = list.m_color;
    run.first = static_cast<std::uint32_t>(list.m_textBytes.size());
    run.length = static_cast<std::uint32_t>(length);
    run.before = static_cast<std::uint32_t>(list.m_batches.size());
    if (!reserveMore(list.m_textRuns, 1) || !reserveMore(list.m_textBytes, length)) {
        return;
    }
    list.m_textBytes.insert(list.m_textBytes.end(), text, text + length);
    list.m_textRuns.push_back(run);
}

}  // namespace Tavrin
