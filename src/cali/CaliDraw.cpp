#include "cali/CaliDraw.h"

#include <Tavrin/Line.h>

namespace Tavrin {
namespace cali {

void drawPlainLine(const tagTAVRIN_POINT& a, const tagTAVRIN_POINT& b, tagTAVRIN_OBJ_STATUS status,
                   const figures::Palette& palette, void* context, int width, int height)
{
    tagTAVRIN_POINT ends[2] = {a, b};
    Line line(ends, 2);
    line.SetLineType(TAVRIN_LINE_PLAIN);
    line.SetShowPoint(false);
    line.SetObjStatus(status);
    palette.applyTo(line);
    line.Draw(context, width, height, true);
}

}  // namespace cali
}  // namespace Tavrin
