#ifndef TAVRIN_FIGURES_LABELBOX_H
#define TAVRIN_FIGURES_LABELBOX_H

// The name box an analytics object draws beside its figure, and where it anchors.

#include <Tavrin/TavrinTypes.h>

namespace Tavrin {
namespace figures {

/// Draws `text` in a temporary `Label` over `box` (normalised anchor corner and extent,
/// as `VcaObject::GetDrawLabelRect` gives it), with the four `colors`, in `status`, for a
/// view of `width` x `height` pixels. Nothing is drawn when the box's corners are refused
/// (a non-finite box). `text` is read up to its terminator; at most 127 bytes are shown.
void drawLabelBox(const tagTAVRIN_VCA_RECT& box, const unsigned int (&colors)[4],
                  tagTAVRIN_OBJ_STATUS status, char* text, void* context, int width, int height);

/// The midpoint of a and b, in single precision: the anchor of a line's label box.
tagTAVRIN_POINT midpoint(const tagTAVRIN_POINT& a, const tagTAVRIN_POINT& b);

}  // namespace figures
}  // namespace Tavrin

#endif  // TAVRIN_FIGURES_LABELBOX_H
