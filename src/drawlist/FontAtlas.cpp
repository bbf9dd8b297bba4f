#include <Tavrin/FontAtlas.h>

#include "graph/FontTable.h"

#include <array>

namespace Tavrin {

namespace {

constexpr int kColumns = 16;
constexpr int kPitchX = font::kCellWidth + 1;
constexpr int kPitchY = font::kCellHeight + 1;
constexpr int kRows = (font::kGlyphCount + kColumns - 1) / kColumns;
// The opaque block: 4 x 4 texels in the bottom-right corner, sampled at its middle.
constexpr int kWhiteSide = 4;
constexpr int kWhiteLeft = FontAtlas::kWidth - kWhiteSide;
constexpr int kWhiteTop = FontAtlas::kHeight - kWhiteSide;

static_assert(kColumns * kPitchX <= FontAtlas::kWidth, "the glyph columns fit the atlas");
static_assert(kRows * kPitchY <= kWhiteTop, "the glyph rows leave the opaque block free");

FontAtlas::Texel cellOfGlyph(int glyph) { return FontAtlas::Texel{(glyph % kColumns) * kPitchX, (glyph / kColumns) * kPitchY}; }

using Image = std::array<std::uint8_t, FontAtlas::kWidth * FontAtlas::kHeight>;

Image buildAtlas()
{
    Image image{};
    for (int glyph = 0; glyph < font::kGlyphCount; ++glyph) {
        const FontAtlas::Texel cell = cellOfGlyph(glyph);
        for (int row = 0; row < font::kCellHeight; ++row) {
            const unsigned char bits = font::kGlyphRows[glyph][row];
            for (int column = 0; column < font::kCellWidth; ++column) {
                if ((bits & (0x80u >> column)) != 0) {
                    image[static_cast<std::size_t>((cell.y + row) * FontAtlas::kWidth + cell.x + column)] = 255;
                }
            }
        }
    }
    for (int y = kWhiteTop; y < FontAtlas::kHeight; ++y) {
        for (int x = kWhiteLeft; x < FontAtlas::kWidth; ++x) {
            image[static_cast<std::size_t>(y * FontAtlas::kWidth + x)] = 255;
        }
    }
    return image;
}

}  // namespace

const std::uint8_t* FontAtlas::Alpha()
{
    static const Image atlas = buildAtlas();
    return atlas.data();
}

FontAtlas::Texel FontAtlas::GlyphCell(unsigned char c)
{
    const int glyph = (c < font::kFirstCode || c > font::kLastCode) ? font::kGlyphCount - 1
                                                                     : static_cast<int>(c - font::kFirstCode);
    return cellOfGlyph(glyph);
}

FontAtlas::Texel FontAtlas::WhiteTexel() { return Texel{kWhiteLeft + kWhiteSide / 2, kWhiteTop + kWhiteSide / 2}; }

}  // namespace Tavrin
