#ifndef TAVRIN_TESTS_FONTSOURCE_H
#define TAVRIN_TESTS_FONTSOURCE_H

// The glyph art of tools/font/font.txt, read by the tests themselves, so that glyphs the
// library draws can be read back as text and compared with the source the library's
// table was generated from.

#include "support/RecordingGl.h"

#include <map>
#include <string>
#include <vector>

namespace rec {

struct FontSource {
    int width = 0;
    int height = 0;
    int descent = 0;
    std::map<int, std::vector<std::string>> glyphs;  ///< by code, rows top first
    std::vector<std::string> placeholder;
};

/// The font source, read once; empty (width 0) when the file cannot be read.
const FontSource& fontSource();

/// What readBack gives for the placeholder glyph and for a bitmap the source lacks.
constexpr char kPlaceholderRead = '\x7f';
constexpr char kUnreadable = '\x1a';

/// The characters the glyph bitmaps drawn at one raster position show, in order: each
/// bitmap's first `width` columns matched against the source's art (columns beyond
/// must be clear).
std::string readBack(const RasterText& text);

}  // namespace rec

#endif  // TAVRIN_TESTS_FONTSOURCE_H
