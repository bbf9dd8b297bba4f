#ifndef TAVRIN_RULES_RULELABEL_H
#define TAVRIN_RULES_RULELABEL_H

// The label that analytics objects draw beside their figure.

#include <Tavrin/TavrinTypes.h>
#include <Tavrin/VcaObject.h>

namespace Tavrin {
namespace rules {

/// The four colours a label is drawn with, in `GraphMeta::SetColors` order.
struct LabelColors {
    unsigned int c0;
    unsigned int c1;
    unsigned int c2;
    unsigned int c3;
};

/// Draws `owner`'s label text as a temporary `Label` in the box that `owner`'s
/// (virtual) `GetDrawLabelRect` gives for `anchor`, with the given colours and status.
/// Nothing is drawn when the label refuses the box's corners (a non-finite anchor).
void drawLabelBeside(VcaObject& owner, tagTAVRIN_POINT anchor, const LabelColors& colors,
                     tagTAVRIN_OBJ_STATUS status, void* context, int width, int height);

}  // namespace rules
}  // namespace Tavrin

#endif  // TAVRIN_RULES_RULELABEL_H
