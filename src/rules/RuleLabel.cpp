#include "rules/RuleLabel.h"

#include <Tavrin/Label.h>

#include "geometry/LabelBoxGeometry.h"

namespace Tavrin {
namespace rules {

void drawLabelBeside(VcaObject& owner, tagTAVRIN_POINT anchor, const LabelColors& colors,
                     tagTAVRIN_OBJ_STATUS status, void* context, int width, int height)
{
    Label label;
    label.SetColors(colors.c0, colors.c1, colors.c2, colors.c3);
    label.SetObjStatus(status);

    tagTAVRIN_VCA_RECT rect{0.0f, 0.0f, 0.0f, 0.0f};
    owner.GetDrawLabelRect(anchor, rect);
    tagTAVRIN_POINT corners[4];
    geometry::labelBoxCorners(rect, corners);
    if (!label.SetPoints(corners, 4)) {
        return;
    }
    // One byte more than the label holds, so the copy is always terminated.
    char text[17] = {};
    owner.GetLabelText(text, sizeof text - 1);
    label.SetText(text);
    label.Draw(context, width, height, true);
}

}  // namespace rules
}  // namespace Tavrin
