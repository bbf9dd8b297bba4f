#ifndef TAVRIN_DRAWLIST_DRAWLISTWRITER_H
#define TAVRIN_DRAWLIST_DRAWLISTWRITER_H

// The capturing side of drawing: which list, if any, the calling thread's figures draw
// into, and the appends that turn what OpenGL would be told into a list's batches and
// text runs. Knows no OpenGL; graph/GlRender calls it in place of the gl* entry points.

#include <Tavrin/DrawList.h>

#include "geometry/PixelMath.h"

#include <cstddef>
#include <cstdint>

namespace Tavrin {

class DrawListWriter {
public:
    /// Smoothing a figure enables for its batches, as bits.
    static constexpr std::uint8_t kSmoothPoints = 1;
    static constexpr std::uint8_t kSmoothLines = 2;
    static constexpr std::uint8_t kSmoothPolygons = 4;

    /// The innermost list of the calling thread's scopes; null outside every scope.
    static DrawList* current() { return DrawListScope::Current(); }

    /// A figure's render state begins: its view size and the smoothing it enables.
    static void beginFigure(DrawList& list, std::uint8_t smoothing, int viewWidth, int viewHeight);
    /// ... and ends: opaque white, no smoothing, as the OpenGL path leaves it.
    static void endFigure(DrawList& list);

    static void setColor(DrawList& list, DrawList::Color color);
    static DrawList::Color color(const DrawList& list) { return list.m_color; }
    static void setLineWidth(DrawList& list, float width);
    static void setPointSize(DrawList& list, float size);

    /// One batch of `count` vertices given as the OpenGL path's vertices (see
    /// geometry::glPointOf), mapped to view pixels. Nothing for an empty view or batch,
    /// nor for one with a vertex whose pixel position overflows float.
    static void addBatch(DrawList& list, DrawList::Primitive primitive, const geometry::GlPoint* vertices,
                         std::size_t count);
    /// The same for picture points (normalised), mapped through geometry::glPointOf.
    static void addBatch(DrawList& list, DrawList::Primitive primitive, const tagTAVRIN_POINT* points,
                         std::size_t count);
    /// A run of `length` glyphs (length > 0) whose raster position is `anchor` (an
    /// OpenGL-path vertex), its first glyph's baseline moved (dx, dy) pixels from there
    /// (y upwards, as glBitmap moves it). Nothing when the anchor lies outside the view,
    /// where OpenGL's raster position is invalid and draws no glyph.
    static void addText(DrawList& list, const geometry::GlPoint& anchor, int dx, int dy, const char* text,
                        std::size_t length);

private:
    template <typename Point>
    static void appendBatch(DrawList& list, DrawList::Primitive primitive, const Point* points,
                            std::size_t count);
};

}  // namespace Tavrin

#endif  // TAVRIN_DRAWLIST_DRAWLISTWRITER_H
