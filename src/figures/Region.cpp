#include "figures/Region.h"

#include "figures/LabelBox.h"
#include "geometry/PixelMath.h"

#include <cstring>

namespace Tavrin {
namespace figures {

namespace {

const unsigned int kPolygonCapacity = 20;

}  // namespace

bool setRegionPoints(const RegionCopy& copy, Polygon& polygon, tagTAVRIN_POINT* points,
                     unsigned int count)
{
    if (points == nullptr || count > copy.capacity || !geometry::allFinite(points, count)) {
        return false;
    }
    std::memset(copy.points, 0, copy.capacity * sizeof(tagTAVRIN_POINT));
    std::memcpy(copy.points, points, count * sizeof(tagTAVRIN_POINT));
    *copy.count = count;
    return polygon.SetPoints(copy.points, count);
}

bool refreshRegionCopy(const RegionCopy& copy, Polygon& polygon)
{
    // Read through a buffer of the polygon's capacity so a copy smaller than that can
    // never be overrun.
    tagTAVRIN_POINT vertices[kPolygonCapacity] = {};
    unsigned int count = 0;
    if (!polygon.GetPoints(vertices, &count)) {
        return false;
    }
    if (count > copy.capacity) {
        count = copy.capacity;
    }
    std::memcpy(copy.points, vertices, count * sizeof(tagTAVRIN_POINT));
    *copy.count = count;
    return true;
}

bool getRegionPoints(const RegionCopy& copy, Polygon& polygon, tagTAVRIN_POINT* out,
                     unsigned int* count)
{
    if (out == nullptr || count == nullptr || !refreshRegionCopy(copy, polygon)) {
        return false;
    }
    // The caller's buffer is always cleared to the full capacity.
    std::memset(out, 0, copy.capacity * sizeof(tagTAVRIN_POINT));
    std::memcpy(out, copy.points, *copy.count * sizeof(tagTAVRIN_POINT));
    *count = *copy.count;
    return true;
}

void drawRegionPolygon(Polygon& polygon, const unsigned int (&colors)[4], void* context,
                       int width, int height)
{
    polygon.SetColors(colors[0], colors[1], colors[2], colors[3]);
    polygon.Draw(context, width, height, true);
}

void drawFilledRegion(VcaObject& object, const RegionCopy& copy, Polygon& polygon,
                      const unsigned int (&colors)[4], char* labelText, void* context,
                      int width, int height)
{
    drawRegionPolygon(polygon, colors, context, width, height);
    tagTAVRIN_VCA_RECT box{0.0f, 0.0f, 0.0f, 0.0f};
    // With no vertices the box is placed from whatever the copy's first entry holds.
    if (!refreshRegionCopy(copy, polygon)) {
        return;
    }
    object.GetDrawLabelRect(copy.points[0], box);
    drawLabelBox(box, colors, polygon.GetObjStatus(), labelText, context, width, height);
}

}  // namespace figures
}  // namespace Tavrin
