#include "rules/LabelBox.h"

#include <Tavrin/Label.h>

#include "geometry/BoxCorners.h"

namespace Tavrin {
namespace rules {

void drawLabelBox(const tagTAVRIN_VCA_RECT& box, const unsigned int (&colors)[4],
                  tagTAVRIN_OBJ_STATUS status, char* text, void* context, int width, int height)
{
    tagTAVRIN_POINT corners[4];
    geometry::boxCorners(box, corners);
    Label label;
    label.SetColors(colors[0], colors[1], colors[2], colors[3]);
    label.SetObjStatus(status);
    if (!label.SetPoints(corners, 4)) {
        return;
    }
    label.SetText(text);
    label.Draw(context, width, height, true);
}

}  // namespace rules
}  // namespace Tavrin
