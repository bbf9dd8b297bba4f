#ifndef TAVRIN_FONTATLAS_H
#define TAVRIN_FONTATLAS_H

#include <Tavrin/TavrinTypes.h>

#include <cstdint>

namespace Tavrin {

/// The library's built-in 7 x 13 bitmap font as one 8-bit alpha image, for renderers that
/// draw a `DrawList`'s text runs from a texture or from images: every glyph's cell (255
/// where it has ink, 0 elsewhere, one empty texel between cells) and a block of opaque
/// texels that untextured vertices sample, so one texture serves glyphs and shapes alike.
class TAVRIN_API FontAtlas {
public:
    FontAtlas() = delete;

    static constexpr int kWidth = 128;   ///< texels per row
    static constexpr int kHeight = 128;  ///< rows

    struct Texel {
        int x;
        int y;
    };

    /// kWidth x kHeight bytes, top row first; built once, valid for the process's life.
    static const std::uint8_t* Alpha();
    /// Top-left texel of the 7 x 13 cell drawn for byte `c`: its own glyph for printable
    /// ASCII, the placeholder box for every other byte (as the OpenGL path draws them).
    static Texel GlyphCell(unsigned char c);
    /// A texel in the middle of the opaque block: sampling there (even bilinearly) gives
    /// alpha 255.
    static Texel WhiteTexel();
};

}  // namespace Tavrin

#endif  // TAVRIN_FONTATLAS_H
