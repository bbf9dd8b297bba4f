#ifndef TAVRIN_CALI_CALIDRAW_H
#define TAVRIN_CALI_CALIDRAW_H

// Drawing steps shared by the calibration figures: the colours a figure forces on its
// primitives and the plain auxiliary lines (end bars, extension, segment). Label boxes are
// drawn with rules::drawLabelBox.

#include <Tavrin/GraphMeta.h>
#include <Tavrin/TavrinTypes.h>

namespace Tavrin {
namespace cali {

/// The four `SetColors` arguments of a figure, in order.
struct Palette {
    unsigned int colors[4];

    void applyTo(GraphMeta& primitive) const
    {
        primitive.SetColors(colors[0], colors[1], colors[2], colors[3]);
    }
};

/// A temporary plain line a-b (type 0, no vertex markers) in `status` and `palette`,
/// drawn for a view of width x height pixels.
void drawPlainLine(const tagTAVRIN_POINT& a, const tagTAVRIN_POINT& b, tagTAVRIN_OBJ_STATUS status,
                   const Palette& palette, void* context, int width, int height);

/// The midpoint of a and b, in single precision.
tagTAVRIN_POINT midpoint(const tagTAVRIN_POINT& a, const tagTAVRIN_POINT& b);

}  // namespace cali
}  // namespace Tavrin

#endif  // TAVRIN_CALI_CALIDRAW_H
