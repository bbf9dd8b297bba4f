#ifndef TAVRIN_RULES_LABELBOX_H
#define TAVRIN_RULES_LABELBOX_H

// The name box an analytics object draws beside its figure.

#include <Tavrin/TavrinTypes.h>

namespace Tavrin {
namespace rules {

/// Draws `text` in a temporary `Label` over `box` (normalised anchor corner and extent,
/// as `VcaObject::GetDrawLabelRect` gives it), with the four `colors`, in `status`, for a
/// view of `width` x `height` pixels. Nothing is drawn when the box's corners are refused
/// (a non-finite box). `text` is read up to its terminator; at most 127 bytes are shown.
void drawLabelBox(const tagTAVRIN_VCA_RECT& box, const unsigned int (&colors)[4],
                  tagTAVRIN_OBJ_STATUS status, char* text, void* context, int width, int height);

}  // namespace rules
}  // namespace Tavrin

#endif  // TAVRIN_RULES_LABELBOX_H
