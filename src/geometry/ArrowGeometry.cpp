#include "geometry/ArrowGeometry.h"

#include "geometry/LineGeometry.h"
#include "geometry/PixelMath.h"

#include <algorithm>
#include <cmath>

namespace Tavrin {
namespace geometry {

namespace {

// The block arrow's own value of pi, kept as is: its normal is not exactly a right angle
// off the arrow, which decides how some offsets truncate.
const double kBlockArrowPi = 3.1415926;
// The traverse plane's value of pi for reducing its inclination.
const double kPlanePi = 3.141592654;

const double kPlaneHalfThickness = 1.5;  // pixels
const double kPlaneArrowLength = 30.0;   // pixels from the line

tagTAVRIN_POINT offsetBy(const tagTAVRIN_POINT& p, double k, double stepX, double stepY)
{
    return tagTAVRIN_POINT{static_cast<float>(p.x + k * stepX), static_cast<float>(p.y + k * stepY)};
}

}  // namespace

int arrowBarPointCount(TAVRIN_ARROW_TYPE direction)
{
    switch (direction) {
    case TAVRIN_ARROW_BOTH:
        return 18;
    case TAVRIN_ARROW_POSITIVE:
    case TAVRIN_ARROW_NEGATIVE:
        return 11;
    default:
        return 4;
    }
}

bool hasArrowHead(TAVRIN_ARROW_TYPE direction)
{
    return direction == TAVRIN_ARROW_BOTH || direction == TAVRIN_ARROW_POSITIVE ||
           direction == TAVRIN_ARROW_NEGATIVE;
}

void arrowBarOutline(float length, TAVRIN_ARROW_TYPE direction, int width, int height,
                     tagTAVRIN_POINT* points, int& count, tagTAVRIN_POINT& markA,
                     tagTAVRIN_POINT& markB)
{
    const int need = arrowBarPointCount(direction);
    if (points == nullptr || !hasViewSize(width, height) || count < need || !isFinite(length)) {
        return;
    }
    const float w = static_cast<float>(width);
    const float h = static_cast<float>(height);
    // Along-line sizes by the width, across-line sizes by the height.
    const float a = 5.0f / w;   // shaft width
    const float b = 10.0f / h;  // shaft height
    const float c = 6.0f / w;   // head overhang on each side of the shaft
    const float d = 12.0f / h;  // head height
    const float e = 10.0f / h;  // side mark beyond the figure
    const float t = 3.0f / h;   // bar thickness
    const float m = length / 2.0f;

    const float bar = t / 2.0f;
    const float shaftLeft = m - a / 2.0f;
    const float shaftRight = m + a / 2.0f;
    const float headLeft = shaftLeft - c;
    const float headRight = shaftRight + c;
    const float headBase = bar + b;
    const float tip = headBase + d;
    const float beyondTip = tip + e;

    switch (direction) {
    case TAVRIN_ARROW_POSITIVE: {
        const tagTAVRIN_POINT outline[11] = {
            {0.0f, bar},          {shaftLeft, bar},   {shaftLeft, headBase},
            {headLeft, headBase}, {m, tip},           {headRight, headBase},
            {shaftRight, headBase}, {shaftRight, bar}, {length, bar},
            {length, -bar},       {0.0f, -bar}};
        std::copy(outline, outline + 11, points);
        markA = tagTAVRIN_POINT{m, -(bar + e)};
        markB = tagTAVRIN_POINT{m, beyondTip};
        break;
    }
    case TAVRIN_ARROW_NEGATIVE: {
        const tagTAVRIN_POINT outline[11] = {
            {0.0f, bar},            {length, bar},         {length, -bar},
            {shaftRight, -bar},     {shaftRight, -headBase}, {headRight, -headBase},
            {m, -tip},              {headLeft, -headBase}, {shaftLeft, -headBase},
            {shaftLeft, -bar},      {0.0f, -bar}};
        std::copy(outline, outline + 11, points);
        markA = tagTAVRIN_POINT{m, -beyondTip};
        markB = tagTAVRIN_POINT{m, bar + e};
        break;
    }
    case TAVRIN_ARROW_BOTH: {
        const tagTAVRIN_POINT outline[18] = {
            {0.0f, bar},            {shaftLeft, bar},       {shaftLeft, headBase},
            {headLeft, headBase},   {m, tip},               {headRight, headBase},
            {shaftRight, headBase}, {shaftRight, bar},      {length, bar},
            {length, -bar},         {shaftRight, -bar},     {shaftRight, -headBase},
            {headRight, -headBase}, {m, -tip},              {headLeft, -headBase},
            {shaftLeft, -headBase}, {shaftLeft, -bar},      {0.0f, -bar}};
        std::copy(outline, outline + 18, points);
        markA = tagTAVRIN_POINT{m, -beyondTip};
        markB = tagTAVRIN_POINT{m, beyondTip};
        break;
    }
    default: {
        const tagTAVRIN_POINT outline[4] = {{0.0f, bar}, {length, bar}, {length, -bar}, {0.0f, -bar}};
        std::copy(outline, outline + 4, points);
        break;
    }
    }
    count = need;
}

bool localFrameOf(const tagTAVRIN_POINT& a, const tagTAVRIN_POINT& b, LocalFrame& frame,
                  float& length)
{
    const float dx = b.x - a.x;
    const float dy = b.y - a.y;
    const float len = std::sqrt(dx * dx + dy * dy);
    if (!(len > 0.0f) || !std::isfinite(len) || !isFinite(a)) {
        return false;
    }
    frame.origin = a;
    frame.cos = static_cast<double>(dx) / static_cast<double>(len);
    frame.sin = static_cast<double>(dy) / static_cast<double>(len);
    length = len;
    return true;
}

tagTAVRIN_POINT turnAndPlace(const tagTAVRIN_POINT& local, const LocalFrame& frame)
{
    const double x = local.x * frame.cos - local.y * frame.sin + frame.origin.x;
    const double y = local.y * frame.cos + local.x * frame.sin + frame.origin.y;
    return tagTAVRIN_POINT{static_cast<float>(x), static_cast<float>(y)};
}

bool blockArrowCorners(const tagTAVRIN_POINT& tail, const tagTAVRIN_POINT& tip, int width,
                       int height, PixelCorner corners[8])
{
    if (!hasViewSize(width, height)) {
        return false;
    }
    const long long sx = toPixel(tail.x, width);
    const long long sy = toPixel(tail.y, height);
    const long long ex = toPixel(tip.x, width);
    const long long ey = toPixel(tip.y, height);
    if (sx == ex && sy == ey) {
        return false;
    }
    // The unit normal of the arrow.
    const double theta = std::atan2(static_cast<double>(ey - sy), static_cast<double>(ex - sx)) +
                         kBlockArrowPi / 2;
    const double c = std::cos(theta);
    const double s = std::sin(theta);
    const long long c4 = truncToInt(4 * c);
    const long long s4 = truncToInt(4 * s);
    const long long c12 = truncToInt(12 * c);
    const long long s12 = truncToInt(12 * s);
    // The head's base, 18 pixels back from the tip, truncated after the double sum.
    const double u = std::fabs(18 * s);
    const double v = std::fabs(18 * c);
    const long long fx = truncToInt(sx < ex ? ex - u : ex + u);
    const long long fy = truncToInt(sy <= ey ? ey - v : ey + v);

    corners[0] = PixelCorner{sx, sy};
    corners[1] = PixelCorner{sx + c4, sy + s4};
    corners[2] = PixelCorner{fx + c4, fy + s4};
    corners[3] = PixelCorner{fx + c12, fy + s12};
    corners[4] = PixelCorner{ex, ey};
    corners[5] = PixelCorner{fx - c12, fy - s12};
    corners[6] = PixelCorner{fx - c4, fy - s4};
    corners[7] = PixelCorner{sx - c4, sy - s4};
    return true;
}

tagTAVRIN_POINT cornerToPicture(const PixelCorner& corner, int width, int height)
{
    return tagTAVRIN_POINT{static_cast<float>(corner.x) / static_cast<float>(width),
                           static_cast<float>(corner.y) / static_cast<float>(height)};
}

bool traversePlaneOf(const tagTAVRIN_POINT& p1, const tagTAVRIN_POINT& p2, int width,
                     int height, TraversePlane& plane)
{
    if (!hasViewSize(width, height)) {
        return false;
    }
    tagTAVRIN_POINT ends[2];
    leftToRight(p1, p2, ends);
    const tagTAVRIN_POINT left = ends[0];
    const tagTAVRIN_POINT right = ends[1];
    const tagTAVRIN_POINT middle{(left.x + right.x) / 2.0f, (left.y + right.y) / 2.0f};

    // The inclination, from 0 (horizontal) to pi/2 (vertical).
    // In double precision from the single-precision differences, whichever Qt is around.
    double phi = std::atan2(static_cast<double>(std::fabs(right.x - left.x)),
                            -static_cast<double>(std::fabs(right.y - left.y)));
    if (phi >= kPlanePi / 2) {
        phi -= kPlanePi / 2;
    }
    const double s = std::sin(phi);
    const double c = std::cos(phi);

    TraversePlane out{};
    out.horizontal = left.y == right.y;
    const bool falling = right.y > left.y;
    // One pixel along arrow 1: up off a falling or horizontal line, down off a rising one.
    if (out.horizontal) {
        out.step1x = 0.0;
        out.step1y = -1.0 / height;
    } else {
        out.step1x = s / width;
        out.step1y = (falling ? -c : c) / height;
    }
    // The plane is wound the other way round for a rising line.
    const double side = falling || out.horizontal ? kPlaneHalfThickness : -kPlaneHalfThickness;
    out.plane[0] = offsetBy(left, side, out.step1x, out.step1y);
    out.plane[1] = offsetBy(right, side, out.step1x, out.step1y);
    out.plane[2] = offsetBy(right, -side, out.step1x, out.step1y);
    out.plane[3] = offsetBy(left, -side, out.step1x, out.step1y);
    out.tail1 = offsetBy(middle, kPlaneHalfThickness, out.step1x, out.step1y);
    out.tip1 = offsetBy(middle, kPlaneArrowLength, out.step1x, out.step1y);
    out.tail2 = offsetBy(middle, -kPlaneHalfThickness, out.step1x, out.step1y);
    out.tip2 = offsetBy(middle, -kPlaneArrowLength, out.step1x, out.step1y);

    const tagTAVRIN_POINT all[8] = {out.plane[0], out.plane[1], out.plane[2], out.plane[3],
                                    out.tail1,    out.tip1,     out.tail2,    out.tip2};
    if (!allFinite(all, 8)) {
        return false;
    }
    plane = out;
    return true;
}

bool traverseMarks(const TraversePlane& plane, TAVRIN_ARROW_TYPE direction, int height,
                   tagTAVRIN_POINT& markA, tagTAVRIN_POINT& markB)
{
    if (direction != TAVRIN_ARROW_POSITIVE && direction != TAVRIN_ARROW_NEGATIVE) {
        return false;
    }
    const bool positive = direction == TAVRIN_ARROW_POSITIVE;
    if (plane.horizontal) {
        // Kept as is: both marks of a horizontal plane sit beside the drawn arrow.
        const double up = -10.0 / height;
        if (positive) {
            markA = offsetBy(plane.tail1, 1.0, 0.0, up);
            markB = offsetBy(plane.tip1, 1.0, 0.0, -up);
        } else {
            markA = offsetBy(plane.tip2, 1.0, 0.0, up);
            markB = offsetBy(plane.tail2, 1.0, 0.0, -up);
        }
        return true;
    }
    // The head mark 10 px beyond the tip, the tail mark 15 px behind the tail, along the
    // drawn arrow (arrow 1 for direction 1, arrow 2 for direction 2).
    if (positive) {
        markB = offsetBy(plane.tip1, 10.0, plane.step1x, plane.step1y);
        markA = offsetBy(plane.tail1, -15.0, plane.step1x, plane.step1y);
    } else {
        markA = offsetBy(plane.tip2, -10.0, plane.step1x, plane.step1y);
        markB = offsetBy(plane.tail2, 15.0, plane.step1x, plane.step1y);
    }
    return true;
}

}  // namespace geometry
}  // namespace Tavrin
