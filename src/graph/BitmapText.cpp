#include "graph/BitmapText.h"

#include "graph/FontTable.h"

#include <GL/gl.h>

namespace Tavrin {
namespace gl {

namespace {

// Each glyph row is handed to GL as 8 bytes, the bitmap declared 64 pixels wide: every
// legal GL_UNPACK_ALIGNMENT (1, 2, 4, 8) then reads the same 8-byte stride, so the host's
// pixel-store state needs neither a query nor a change. Only the first kCellWidth columns
// carry ink; glBitmap leaves the pixels of clear bits alone.
constexpr int kRowBytes = 8;
constexpr int kBitmapWidth = kRowBytes * 8;

void moveRaster(int dx, int dy)
{
    glBitmap(0, 0, 0.0f, 0.0f, static_cast<GLfloat>(dx), static_cast<GLfloat>(dy), nullptr);
}

// One glyph with its baseline on the raster position; advances one cell to the right.
void drawGlyph(unsigned char c)
{
    const unsigned char* rows = font::glyphRows(c);
    GLubyte bits[font::kCellHeight * kRowBytes] = {};
    // glBitmap takes the bottom row first.
    for (int r = 0; r < font::kCellHeight; ++r) {
        bits[(font::kCellHeight - 1 - r) * kRowBytes] = rows[r];
    }
    glBitmap(kBitmapWidth, font::kCellHeight, 0.0f, static_cast<GLfloat>(font::kDescent),
             static_cast<GLfloat>(font::kCellWidth), 0.0f, bits);
}

// Pixels between a box's corner and the first glyph cell, in both directions.
constexpr int kTextInset = 2;

}  // namespace

RasterMove glyphRunStart(TextPlacement placement, std::size_t count)
{
    if (placement == TextPlacement::InsideBox) {
        return RasterMove{kTextInset, -(kTextInset + font::kCellHeight - font::kDescent)};
    }
    const int width = static_cast<int>(count) * font::kCellWidth;
    return RasterMove{-(width / 2), -(font::kCapHeight / 2)};
}

std::size_t glyphRunLength(const char* text, std::size_t maxBytes)
{
    const std::size_t limit = maxBytes < kMaxRunBytes ? maxBytes : kMaxRunBytes;
    std::size_t n = 0;
    if (text != nullptr) {
        while (n < limit && text[n] != '\0') {
            ++n;
        }
    }
    return n;
}

void drawShiftedGlyphRun(const char* text, std::size_t maxBytes, TextPlacement placement, RasterMove shift)
{
    const std::size_t count = glyphRunLength(text, maxBytes);
    if (count == 0) {
        return;
    }
    const RasterMove run = glyphRunStart(placement, count);
    const RasterMove start{run.dx + shift.dx, run.dy + shift.dy};
    moveRaster(start.dx, start.dy);
    for (std::size_t i = 0; i < count; ++i) {
        drawGlyph(static_cast<unsigned char>(text[i]));
    }
    // Back to the position the run started from: the raster position is left as the
    // text calls without glyphs leave it.
    moveRaster(-(start.dx + static_cast<int>(count) * font::kCellWidth), -start.dy);
}

void drawGlyphRun(const char* text, std::size_t maxBytes, TextPlacement placement)
{
    drawShiftedGlyphRun(text, maxBytes, placement, RasterMove{0, 0});
}

}  // namespace gl
}  // namespace Tavrin
