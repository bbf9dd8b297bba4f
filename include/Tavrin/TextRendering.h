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
/// Safe to call from any thread (both switches); a draw reads the text switch once, so a change made while a
/// figure draws takes effect from its next draw.
class TAVRIN_API TextRendering {
public:
    TextRendering() = delete;

    /// Turns glyph rendering on or off for every figure of the process.
    static void SetEnabled(bool enabled);
    /// Whether glyphs are rendered; false until a host asks for them.
    static bool IsEnabled();

    /// Gives every glyph a one-pixel dark outline, so labels stay legible over a busy
    /// picture. Off by default, and while it is off every call a draw makes is exactly as
    /// without it. On, each glyph run is first drawn in black (with the text's alpha) at
    /// the eight one-pixel offsets around its place, each from its own glRasterPos of the
    /// same anchor, and then in its colour from that anchor again; the colour and raster
    /// position a draw leaves behind are the same either way. Draw lists record the
    /// outline as those eight dark runs before the run itself. Affects only drawn glyphs:
    /// nothing changes while text rendering is off.
    static void SetOutline(bool outline);
    /// Whether glyphs get an outline; false until a host asks for it.
    static bool IsOutlined();
};

}  // namespace Tavrin

#endif  // TAVRIN_TEXTRENDERING_H
