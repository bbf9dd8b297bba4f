#ifndef TAVRIN_DRAWLIST_MESHWALK_H
#define TAVRIN_DRAWLIST_MESHWALK_H

// The steps the triangle forms of a draw list (TriangleMesh, CoverageMesh) take alike:
// which pieces of a list are usable, the segments of its line batches, glyph cells, and
// the order the OpenGL frame draws batches and text runs in.

#include <Tavrin/DrawList.h>
#include <Tavrin/FontAtlas.h>

#include <cmath>
#include <cstddef>
#include <cstdint>

namespace Tavrin {
namespace drawlist {

// A list holds finite vertices only (the capture leaves out any batch that would not be),
// so a batch or run is usable when it lies inside the list's arrays.
inline bool batchInside(const DrawList& list, const DrawList::Batch& batch)
{
    const std::size_t points = list.Vertices().size();
    return batch.first <= points && batch.count <= points - batch.first;
}

inline bool runInside(const DrawList& list, const DrawList::TextRun& run)
{
    const std::size_t bytes = list.TextBytes().size();
    return run.first <= bytes && run.length <= bytes - run.first;
}

/// A line width or point size as drawn: at least a pixel.
inline float atLeastOnePixel(float size) { return size > 1.0f ? size : 1.0f; }

/// The unit normal of the segment from `a` to `b` (to the left, y down); false for a
/// segment of no length or none that floats can measure.
inline bool segmentNormal(const DrawList::Vertex& a, const DrawList::Vertex& b, float& nx, float& ny)
{
    const float dx = b.x - a.x;
    const float dy = b.y - a.y;
    const float length = std::sqrt(dx * dx + dy * dy);
    if (!(length > 0.0f) || !std::isfinite(length)) {
        return false;
    }
    nx = -dy / length;
    ny = dx / length;
    return true;
}

/// How many segments a line batch joins its vertices into (0 for other batches).
inline std::size_t segmentCount(const DrawList::Batch& batch)
{
    const std::size_t n = batch.count;
    switch (batch.primitive) {
    case DrawList::Primitive::Lines:
        return n / 2;
    case DrawList::Primitive::LineStrip:
        return n > 0 ? n - 1 : 0;
    case DrawList::Primitive::LineLoop:
        return n > 0 ? n - 1 + (n > 2 ? 1 : 0) : 0;
    default:
        return 0;
    }
}

/// `segment(a, b)` for each segment of a line batch, as OpenGL joins the vertices: pairs,
/// a strip, or a strip closed back to its first vertex.
template <class Segment>
void forEachSegment(const DrawList::Batch& batch, const DrawList::Vertex* p, Segment segment)
{
    const std::uint32_t n = batch.count;
    if (batch.primitive == DrawList::Primitive::Lines) {
        for (std::uint32_t i = 0; i + 1 < n; i += 2) {
            segment(p[i], p[i + 1]);
        }
        return;
    }
    for (std::uint32_t i = 0; i + 1 < n; ++i) {
        segment(p[i], p[i + 1]);
    }
    if (batch.primitive == DrawList::Primitive::LineLoop && n > 2) {
        segment(p[n - 1], p[0]);
    }
}

/// Glyph `i` of a run: its cell in view pixels and in atlas coordinates.
struct GlyphQuad {
    float left;
    float top;
    float right;
    float bottom;
    float u0;
    float v0;
    float u1;
    float v1;
};

inline GlyphQuad glyphQuad(const DrawList::TextRun& run, std::uint32_t i, unsigned char byte)
{
    const FontAtlas::Texel cell = FontAtlas::GlyphCell(byte);
    const float x = static_cast<float>(run.x) + static_cast<float>(i) * DrawList::kGlyphWidth;
    const float y = static_cast<float>(run.y);
    return GlyphQuad{x,
                     y,
                     x + DrawList::kGlyphWidth,
                     y + DrawList::kGlyphHeight,
                     static_cast<float>(cell.x) / FontAtlas::kWidth,
                     static_cast<float>(cell.y) / FontAtlas::kHeight,
                     static_cast<float>(cell.x + DrawList::kGlyphWidth) / FontAtlas::kWidth,
                     static_cast<float>(cell.y + DrawList::kGlyphHeight) / FontAtlas::kHeight};
}

/// The usable runs and batches in the order the OpenGL frame draws them: each run after
/// the first `before` batches, runs past the last batch at the end.
template <class OnRun, class OnBatch>
void forEachInDrawingOrder(const DrawList& list, OnRun onRun, OnBatch onBatch)
{
    const std::vector<DrawList::Batch>& batches = list.Batches();
    const std::vector<DrawList::TextRun>& runs = list.TextRuns();
    std::size_t r = 0;
    for (std::size_t b = 0; b <= batches.size(); ++b) {
        for (; r < runs.size() && (runs[r].before <= b || b == batches.size()); ++r) {
            if (runInside(list, runs[r])) {
                onRun(runs[r], list.TextBytes().data() + runs[r].first);
            }
        }
        if (b < batches.size() && batchInside(list, batches[b])) {
            onBatch(batches[b], list.Vertices().data() + batches[b].first);
        }
    }
}

}  // namespace drawlist
}  // namespace Tavrin

#endif  // TAVRIN_DRAWLIST_MESHWALK_H
