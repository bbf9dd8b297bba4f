#include "figures/LabelBox.h"

#include <Tavrin/Label.h>

#include "geometry/BoxCorners.h"

namespace Tavrin {
namespace figures {

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

tagTAVRIN_POINT midpoint(const tagTAVRIN_POINT& a, const tagTAVRIN_POINT& b)
{
    return tagTAVRIN_POINT{(a.x + b.x) / 2.0f, (a.y + b.y) / 2.0f};
}

}  // namespace figures
}  // namespace Tavrin
