#ifndef TAVRIN_FIGURES_PALETTE_H
#define TAVRIN_FIGURES_PALETTE_H

// The colours the analytics figures force on their primitives.

#include <Tavrin/GraphMeta.h>

namespace Tavrin {
namespace figures {

/// The four `SetColors` arguments of a figure, in order: normal, selected, vertex handle,
/// active vertex handle.
struct Palette {
    unsigned int colors[4];

    void applyTo(GraphMeta& primitive) const { primitive.SetColors(colors[0], colors[1], colors[2], colors[3]); }
};

/// Vertex handles: amber, the active one orange.
constexpr unsigned int kHandleColor = 0xffc000;
constexpr unsigned int kActiveHandleColor = 0xf47f4c;
/// The rules' and most calibration figures' lines: blue, magenta when selected.
constexpr unsigned int kRuleColor = 0x285ea6;
constexpr unsigned int kRuleSelectedColor = 0xd90db0;
constexpr Palette kRulePalette{{kRuleColor, kRuleSelectedColor, kHandleColor, kActiveHandleColor}};

}  // namespace figures
}  // namespace Tavrin

#endif  // TAVRIN_FIGURES_PALETTE_H
