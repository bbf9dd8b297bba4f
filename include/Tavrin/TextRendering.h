#ifndef TAVRIN_TEXTRENDERING_H
#define TAVRIN_TEXTRENDERING_H

#include <Tavrin/TavrinTypes.h>

namespace Tavrin {

/// The process-wide switch for visible text. Off by default: labels and the "A"/"B" side
/// marks then only position the raster and reserve and free their display list, and
/// render no glyph. On: the same calls, with the glyphs of the library's built-in 7 x 13
/// bitmap font drawn by glBitmap between the reservation and the release, in the current
/// text colour. Either way a draw leaves the same OpenGL state behind.
///
/// Safe to call from any thread; a draw reads the switch once, so a change made while a
/// figure draws takes effect from its next draw.
class TAVRIN_API TextRendering {
public:
    TextRendering() = delete;

    /// Turns glyph rendering on or off for every figure of the process.
    static void SetEnabled(bool enabled);
    /// Whether glyphs are rendered; false until a host asks for them.
    static bool IsEnabled();
};

}  // namespace Tavrin

#endif  // TAVRIN_TEXTRENDERING_H
