#ifndef TAVRIN_CALI_CALIDRAW_H
#define TAVRIN_CALI_CALIDRAW_H

// Drawing steps shared by the calibration figures: the colours a figure forces on its
// primitives, the plain auxiliary lines (end bars, extension, segment) and the label box
// beside an anchor.

#include <Tavrin/GraphMeta.h>
#include <Tavrin/TavrinTypes.h>

namespace Tavrin {
namespace cali {

/// The four `SetColors` arguments of a figure, in order.
struct Palette {
    unsigned int c0;
    unsigned int c1;
    unsigned int c2;
    unsigned int c3;

    void applyTo(GraphMeta& primitive) const { primitive.SetColors(c0, c1, c2, c3); }
};

/// A temporary plain line a-b (type 0, no vertex markers) in `status` and `palette`,
/// drawn for a view of width x height pixels.
void drawPlainLine(const tagTAVRIN_POINT& a, const tagTAVRIN_POINT& b, tagTAVRIN_OBJ_STATUS status,
                   const Palette& palette, void* context, int width, int height);

/// A temporary label with the box `rect` (corners (x, y), (x + w, y), (x + w, y + h),
/// (x, y + h)), `status`, `palette` and `text`. Nothing is drawn for a box that is not
/// finite.
void drawLabelBox(const tagTAVRIN_VCA_RECT& rect, tagTAVRIN_OBJ_STATUS status,
                  const Palette& palette, char* text, void* context, int width, int height);

/// The midpoint of a and b, in single precision.
tagTAVRIN_POINT midpoint(const tagTAVRIN_POINT& a, const tagTAVRIN_POINT& b);

}  // namespace cali
}  // namespace Tavrin

#endif  // TAVRIN_CALI_CALIDRAW_H
