#ifndef TAVRIN_GRAPH_FONTTABLE_H
#define TAVRIN_GRAPH_FONTTABLE_H

// The library's built-in bitmap font: one fixed cell per byte, printable ASCII plus a
// placeholder (a hollow box) for every other byte. The glyph art lives in
// tools/font/font.txt; FontTable.cpp is generated from it and checks these metrics.

namespace Tavrin {
namespace font {

constexpr int kCellWidth = 7;    ///< advance from one glyph to the next, pixels
constexpr int kCellHeight = 13;  ///< rows of a glyph
constexpr int kDescent = 3;      ///< rows of the cell below the baseline
constexpr int kCapHeight = 9;    ///< rows of a capital, standing on the baseline

constexpr unsigned int kFirstCode = 0x20;
constexpr unsigned int kLastCode = 0x7e;
/// The printable ASCII glyphs, then the placeholder.
constexpr int kGlyphCount = static_cast<int>(kLastCode - kFirstCode) + 2;

/// One byte per row, top row first, the leftmost column in the most significant bit.
extern const unsigned char kGlyphRows[kGlyphCount][kCellHeight];

/// The rows of the glyph drawn for byte `c`: its own for 0x20 to 0x7e, the placeholder's
/// for control bytes and bytes from 0x7f up.
inline const unsigned char* glyphRows(unsigned char c)
{
    if (c < kFirstCode || c > kLastCode) {
        return kGlyphRows[kGlyphCount - 1];
    }
    return kGlyphRows[c - kFirstCode];
}

}  // namespace font
}  // namespace Tavrin

#endif  // TAVRIN_GRAPH_FONTTABLE_H
