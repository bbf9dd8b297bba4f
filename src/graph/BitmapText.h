#ifndef TAVRIN_GRAPH_BITMAPTEXT_H
#define TAVRIN_GRAPH_BITMAPTEXT_H

// Glyphs of the built-in font (graph/FontTable.h) drawn with glBitmap at the current
// raster position. Used by the text helpers of GlRender when text rendering is on.

#include <cstddef>

namespace Tavrin {
namespace gl {

/// Where a run of glyphs stands relative to the raster position it starts from.
enum class TextPlacement {
    /// Inside a box whose top-left corner is the raster position: the first cell starts
    /// 2 pixels right of and below the corner.
    InsideBox,
    /// Centred on the raster position: horizontally over the run's cells, vertically
    /// over the capitals.
    Centred,
};

/// The longest run drawn; longer texts are cut (labels hold at most 127 bytes).
constexpr std::size_t kMaxRunBytes = 1024;

/// A whole-pixel move of the raster position (glBitmap's xmove, ymove; y upwards).
struct RasterMove {
    int dx;
    int dy;
};

/// Bytes of `text` drawn: up to its first NUL, at most maxBytes and kMaxRunBytes; 0 for
/// a null text.
std::size_t glyphRunLength(const char* text, std::size_t maxBytes);

/// The move from the raster position to the baseline of the first of `count` glyphs
/// (count at most kMaxRunBytes, so the width stays far inside int).
RasterMove glyphRunStart(TextPlacement placement, std::size_t count);

/// Draws `text` up to its first NUL, at most `maxBytes` and kMaxRunBytes bytes (nothing
/// for a null text), one glyph per byte, then moves the raster position back to where it
/// was. Calls glBitmap only: the glyphs take the raster colour latched by the last
/// glRasterPos, and the pixel-store state is neither read nor changed (any unpack
/// alignment reads the glyphs alike; the other unpack parameters are expected at GL's
/// defaults, with no pixel-unpack buffer bound). Nothing is drawn while the raster
/// position is invalid. Moves are zero-size bitmaps, so a run that starts left of or
/// below a valid raster position (a centred mark on the view's edge) keeps it valid and
/// is clipped pixel by pixel.
void drawGlyphRun(const char* text, std::size_t maxBytes, TextPlacement placement);

/// The one-pixel offsets a glyph run's outline is drawn at: the eight neighbours of its
/// place, left to right and bottom to top.
constexpr RasterMove kOutlineOffsets[8] = {{-1, -1}, {0, -1}, {1, -1}, {-1, 0},
                                           {1, 0},   {-1, 1}, {0, 1},  {1, 1}};

/// drawGlyphRun with every glyph moved by `shift` pixels.
void drawShiftedGlyphRun(const char* text, std::size_t maxBytes, TextPlacement placement, RasterMove shift);

}  // namespace gl
}  // namespace Tavrin

#endif  // TAVRIN_GRAPH_BITMAPTEXT_H
