#include "geometry/CaliGeometry.h"

#include "geometry/PixelMath.h"

#include <cmath>
#include <cstdint>

namespace Tavrin {
namespace geometry {

namespace {

const float kPiF = 3.1415927f;
// The single-precision pi widened to double, deliberately not the double pi.
const double kPiWidened = 3.1415927410125732;
const int kHalfBar = 16;
const float kExtension = 16.0f;

/// An integer pixel position back in normalised units; the division is in single
/// precision.
tagTAVRIN_POINT normalised(int x, int y, float width, float height)
{
    return tagTAVRIN_POINT{static_cast<float>(x) / width, static_cast<float>(y) / height};
}

/// The bar along the pixel column of (px, py), 16 pixels up and down.
void verticalBar(int px, int py, float width, float height, tagTAVRIN_POINT out[2])
{
    out[0] = normalised(px, truncToInt(static_cast<double>(py) - kHalfBar), width, height);
    out[1] = normalised(px, truncToInt(static_cast<double>(py) + kHalfBar), width, height);
}

/// The perpendicular's angle, truncated to whole degrees in single precision and turned
/// back into radians in double precision. A slope that is not a number (coincident line
/// ends) gives 0 degrees through the safe truncation.
double perpendicularAngle(float slope)
{
    const float m = -(1.0f / slope);
    const int deg = truncToInt(atanf(m) / kPiF * 180.0f);
    return deg / 180.0 * kPiWidened;
}

/// The bar at angle r through (px, py). Its centre is offset by sin·cos and sin·sin of
/// a pixel; the offset is part of the result and kept as it is.
void turnedBar(int px, int py, double r, float width, float height, tagTAVRIN_POINT out[2])
{
    const double sinR = std::sin(r);
    const double cosR = std::cos(r);
    const float cx = static_cast<float>(px + 1.0 * sinR * cosR);
    const float cy = static_cast<float>(py + 1.0 * sinR * sinR);
    out[0] = normalised(truncToInt(cx - kHalfBar * cosR), truncToInt(cy - kHalfBar * sinR), width,
                        height);
    out[1] = normalised(truncToInt(cx + kHalfBar * cosR), truncToInt(cy + kHalfBar * sinR), width,
                        height);
}

float raisedToZero(float v) { return v < 0.0f ? 0.0f : v; }
float loweredToOne(float v) { return v > 1.0f ? 1.0f : v; }

/// The extension 16 pixels along the oblique line first-second, in whole pixels.
void obliqueExtension(PupilDimension& d, float width, float height)
{
    const tagTAVRIN_POINT& p = d.first;
    const tagTAVRIN_POINT& q = d.second;
    const int ax = truncToInt(std::fabs((q.x - p.x) * width));
    const int ay = truncToInt(std::fabs((q.y - p.y) * height));
    const std::int64_t sum = static_cast<std::int64_t>(ax) * ax + static_cast<std::int64_t>(ay) * ay;
    const int len = truncToInt(std::sqrt(static_cast<double>(sum)));
    float dx = 0.0f;
    float dy = 0.0f;
    if (len != 0) {
        dx = static_cast<float>(ax) / static_cast<float>(len) * kExtension / width;
        dy = static_cast<float>(ay) / static_cast<float>(len) * kExtension / height;
    }
    if (q.y <= p.y) {
        d.extensionStart = tagTAVRIN_POINT{p.x - dx, p.y + dy};
        d.extensionEnd = tagTAVRIN_POINT{q.x + dx, q.y - dy};
    } else {
        d.extensionStart = tagTAVRIN_POINT{p.x - dx, p.y - dy};
        d.extensionEnd = tagTAVRIN_POINT{q.x + dx, q.y + dy};
    }
}

}  // namespace

bool lineHeadBar(const tagTAVRIN_POINT& end, const tagTAVRIN_POINT& a, const tagTAVRIN_POINT& b,
                 int width, int height, tagTAVRIN_POINT out[2])
{
    if (out == nullptr || !hasViewSize(width, height) || !isFinite(end)) {
        return false;
    }
    const float w = static_cast<float>(width);
    const float h = static_cast<float>(height);
    const int px = truncToInt(end.x * w);
    const int py = truncToInt(end.y * h);
    const float k = (a.y * h - b.y * h) / (a.x * w - b.x * w);
    if (k == 0.0f) {
        verticalBar(px, py, w, h, out);
    } else {
        turnedBar(px, py, perpendicularAngle(k), w, h, out);
    }
    return true;
}

PupilDimension pupilDimension(const tagTAVRIN_POINT& s0, const tagTAVRIN_POINT& s1, int width,
                              int height)
{
    PupilDimension d{};
    if (s0.y == s1.y) {
        d.layout = PupilLayout::Horizontal;
    } else if (s0.x == s1.x) {
        d.layout = PupilLayout::Vertical;
    } else {
        d.layout = PupilLayout::Oblique;
    }
    const bool s1First = d.layout == PupilLayout::Vertical ? s1.y <= s0.y : s1.x <= s0.x;
    d.first = s1First ? s1 : s0;
    d.second = s1First ? s0 : s1;
    d.extensionStart = d.first;
    d.extensionEnd = d.second;
    d.hasExtension = hasViewSize(width, height);
    if (!d.hasExtension) {
        return d;
    }
    const float w = static_cast<float>(width);
    const float h = static_cast<float>(height);
    // Both axis-parallel cases convert the 16 pixels with the width, deliberately.
    const float step = kExtension / w;
    switch (d.layout) {
    case PupilLayout::Horizontal:
        d.extensionStart.x = raisedToZero(d.first.x - step);
        d.extensionEnd.x = loweredToOne(d.second.x + step);
        break;
    case PupilLayout::Vertical:
        d.extensionStart.y = raisedToZero(d.first.y - step);
        d.extensionEnd.y = loweredToOne(d.second.y + step);
        break;
    case PupilLayout::Oblique:
        obliqueExtension(d, w, h);
        break;
    }
    return d;
}

}  // namespace geometry
}  // namespace Tavrin
