#include "geometry/LineGeometry.h"

#include "geometry/PixelMath.h"
#include "geometry/PolygonGeometry.h"

#include <QPoint>

#include <climits>
#include <cmath>
#include <limits>

namespace Tavrin {
namespace geometry {

namespace {

// The hit box reaches this far around the second end point only.
const int kHitMargin = 8;
// Largest |d1 + d2 - d3| in pixels that still counts as on the segment.
const float kHitSlack = 1.0f;

bool fitsInt(long long v) { return v >= INT_MIN && v <= INT_MAX; }

}  // namespace

int toPixel(float v, int size) { return truncToInt(v * static_cast<float>(size)); }

bool pixelBox(int x1, int y1, int x2, int y2, QRect& box)
{
    // Taken in 64 bits: the margin must not overflow for saturated pixel coordinates.
    const long long lowX = static_cast<long long>(x2) - kHitMargin;
    const long long highX = static_cast<long long>(x2) + kHitMargin;
    const long long lowY = static_cast<long long>(y2) - kHitMargin;
    const long long highY = static_cast<long long>(y2) + kHitMargin;
    const long long left = x1 < lowX ? x1 : lowX;
    const long long right = x1 > highX ? x1 : highX;
    const long long top = y1 < lowY ? y1 : lowY;
    const long long bottom = y1 > highY ? y1 : highY;
    if (!fitsInt(left) || !fitsInt(right) || !fitsInt(top) || !fitsInt(bottom) ||
        !fitsInt(right - left) || !fitsInt(bottom - top)) {
        return false;
    }
    box = QRect(static_cast<int>(left), static_cast<int>(top), static_cast<int>(right - left),
                static_cast<int>(bottom - top));
    return true;
}

bool segmentHit(const tagTAVRIN_POINT& a, const tagTAVRIN_POINT& b, const tagTAVRIN_POINT& p,
                int width, int height)
{
    if (!hasViewSize(width, height) || !isFinite(a) || !isFinite(b) || !isFinite(p)) {
        return false;
    }
    QRect box;
    if (!pixelBox(toPixel(a.x, width), toPixel(a.y, height), toPixel(b.x, width),
                  toPixel(b.y, height), box)) {
        return false;
    }
    if (!box.contains(QPoint(toPixel(p.x, width), toPixel(p.y, height)), false)) {
        return false;
    }
    // The distances are in float pixels, not truncated.
    const float w = static_cast<float>(width);
    const float h = static_cast<float>(height);
    const float ax = a.x * w;
    const float ay = a.y * h;
    const float bx = b.x * w;
    const float by = b.y * h;
    const float px = p.x * w;
    const float py = p.y * h;
    const float d1 = std::sqrt((px - ax) * (px - ax) + (py - ay) * (py - ay));
    const float d2 = std::sqrt((bx - px) * (bx - px) + (by - py) * (by - py));
    const float d3 = std::sqrt((bx - ax) * (bx - ax) + (by - ay) * (by - ay));
    return std::fabs(d1 + d2 - d3) <= kHitSlack;
}

float normalisedLength(const tagTAVRIN_POINT& a, const tagTAVRIN_POINT& b)
{
    const float dx = b.x - a.x;
    const float dy = b.y - a.y;
    return std::sqrt(dx * dx + dy * dy);
}

double pixelLength(const tagTAVRIN_POINT& a, const tagTAVRIN_POINT& b, int width, int height)
{
    const float dx = b.x - a.x;
    const float dy = b.y - a.y;
    return std::sqrt(std::pow(static_cast<double>(dy) * height, 2) +
                     std::pow(static_cast<double>(dx) * width, 2));
}

void leftToRight(const tagTAVRIN_POINT& p1, const tagTAVRIN_POINT& p2, tagTAVRIN_POINT out[2])
{
    if (p2.x >= p1.x) {
        out[0] = p1;
        out[1] = p2;
    } else {
        out[0] = p2;
        out[1] = p1;
    }
}

namespace {

// A double narrowed to float without undefined behaviour: beyond the float range it
// gives the infinity of its sign, as the hardware conversion does.
float toFloat(double v)
{
    const double limit = std::numeric_limits<float>::max();
    if (v > limit) {
        return std::numeric_limits<float>::infinity();
    }
    if (v < -limit) {
        return -std::numeric_limits<float>::infinity();
    }
    return static_cast<float>(v);
}

float toFloatInRange(double v)
{
    const double limit = std::numeric_limits<float>::max();
    return static_cast<float>(v > limit ? limit : (v < -limit ? -limit : v));
}

// segmentFromLeftEnd for end points so far apart that their single-precision
// differences overflow: the same construction carried out in double. Every result lies
// between the end points, so it fits a float again. When even the lengths overflowed
// (they are not finite), the segment is taken as negligible against the line: both
// points at the left end point.
void wideSegmentFromLeftEnd(const tagTAVRIN_POINT& p1, const tagTAVRIN_POINT& p2,
                            const tagTAVRIN_POINT& left, double lineLength, double length,
                            tagTAVRIN_POINT out[2])
{
    const double dx = static_cast<double>(p2.x) - p1.x;
    const double dy = static_cast<double>(p2.y) - p1.y;
    const double from = (lineLength - length) / (2.0 * lineLength);
    const double to = (lineLength + length) / (2.0 * lineLength);
    if (!std::isfinite(from) || !std::isfinite(to)) {
        out[0] = left;
        out[1] = left;
        return;
    }
    double firstX = p1.x + from * dx;
    double firstY = p1.y + from * dy;
    double secondX = p1.x + to * dx;
    double secondY = p1.y + to * dy;
    if (secondX >= firstX) {
        secondX += left.x - firstX;
        secondY += left.y - firstY;
        firstX = left.x;
        firstY = left.y;
    } else {
        firstX += left.x - secondX;
        firstY += left.y - secondY;
        secondX = left.x;
        secondY = left.y;
    }
    out[0] = {toFloatInRange(firstX), toFloatInRange(firstY)};
    out[1] = {toFloatInRange(secondX), toFloatInRange(secondY)};
}

}  // namespace

void segmentFromLeftEnd(const tagTAVRIN_POINT& p1, const tagTAVRIN_POINT& p2, double lineLength,
                        double length, tagTAVRIN_POINT out[2])
{
    tagTAVRIN_POINT ends[2];
    leftToRight(p1, p2, ends);
    const tagTAVRIN_POINT left = ends[0];
    if (!(lineLength != 0.0)) {
        out[0] = left;
        out[1] = left;
        return;
    }
    // Centred on the line first ...
    const double dx = p2.x - p1.x;
    const double dy = p2.y - p1.y;
    const double from = (lineLength - length) / (2.0 * lineLength);
    const double to = (lineLength + length) / (2.0 * lineLength);
    tagTAVRIN_POINT first{toFloat(p1.x + from * dx), toFloat(p1.y + from * dy)};
    tagTAVRIN_POINT second{toFloat(p1.x + to * dx), toFloat(p1.y + to * dy)};
    // ... then slid along it so that its leftmost point sits on the left end point.
    if (second.x >= first.x) {
        second.x += left.x - first.x;
        second.y += left.y - first.y;
        first = left;
    } else {
        first.x += left.x - second.x;
        first.y += left.y - second.y;
        second = left;
    }
    if (!isFinite(first) || !isFinite(second)) {
        wideSegmentFromLeftEnd(p1, p2, left, lineLength, length, out);
        return;
    }
    out[0] = first;
    out[1] = second;
}

double pixelSlope(const tagTAVRIN_POINT& p1, const tagTAVRIN_POINT& p2, int width, int height)
{
    const float dx = p2.x - p1.x;
    const float dy = p2.y - p1.y;
    const double k = static_cast<double>(dy) / static_cast<double>(dx);
    return k * height / width;
}

void stepAcross(double kp, double distance, double& dx, double& dy)
{
    const double r = std::sqrt(kp * kp + 1.0);
    dx = distance * kp / r;
    dy = -distance / r;
}

float sideOfLine(const tagTAVRIN_POINT& p1, const tagTAVRIN_POINT& p2, const tagTAVRIN_POINT& q)
{
    const tagTAVRIN_POINT along{p2.x - p1.x, p2.y - p1.y};
    const tagTAVRIN_POINT toQ{q.x - p1.x, q.y - p1.y};
    return cross(along, toQ);
}

bool directionArrowEnd(const tagTAVRIN_POINT& p1, const tagTAVRIN_POINT& p2,
                       const tagTAVRIN_POINT& start, const tagTAVRIN_POINT& previousEnd,
                       int width, int height, tagTAVRIN_POINT& end)
{
    if (!hasViewSize(width, height)) {
        return false;
    }
    const double kLength = 0.1;
    double dx = kLength;
    double dy = 0.0;
    if (!(std::fabs(p1.x - p2.x) < 0.001)) {
        stepAcross(pixelSlope(p1, p2, width, height), kLength, dx, dy);
    }
    tagTAVRIN_POINT candidate{static_cast<float>(start.x + dx), static_cast<float>(start.y + dy)};
    const float previousSide = sideOfLine(p1, p2, previousEnd);
    const float candidateSide = sideOfLine(p1, p2, candidate);
    // An arrow on the line (the first frame's zeroed arrow points) takes the other side.
    if (!(previousSide * candidateSide > 0.0f)) {
        candidate = tagTAVRIN_POINT{static_cast<float>(start.x - dx),
                                    static_cast<float>(start.y - dy)};
    }
    if (!isFinite(candidate)) {
        return false;
    }
    end = candidate;
    return true;
}

bool calibrationLineAt(const tagTAVRIN_POINT& at, const tagTAVRIN_POINT& p1,
                       const tagTAVRIN_POINT& p2, int width, int height, tagTAVRIN_LINE& out)
{
    if (!hasViewSize(width, height)) {
        return false;
    }
    const double kHalfLength = 0.18;
    double dx = 0.0;
    double dy = 0.0;
    if (std::fabs(p2.x - p1.x) <= 0.0001) {
        dx = kHalfLength * height / width;
    } else {
        stepAcross(pixelSlope(p1, p2, width, height), kHalfLength, dx, dy);
    }
    const tagTAVRIN_LINE line{
        {static_cast<float>(at.x + dx), static_cast<float>(at.y + dy)},
        {static_cast<float>(at.x - dx), static_cast<float>(at.y - dy)}};
    if (!isFinite(line.start) || !isFinite(line.end)) {
        return false;
    }
    out = line;
    return true;
}

tagTAVRIN_POINT footOnLine(const tagTAVRIN_POINT& p1, const tagTAVRIN_POINT& p2,
                           const tagTAVRIN_POINT& p)
{
    const float dx = p2.x - p1.x;
    const float dy = p2.y - p1.y;
    if (dy == 0.0f && dx != 0.0f) {
        return tagTAVRIN_POINT{p.x, p1.y};
    }
    if (std::fabs(dx) <= 0.0001) {
        return tagTAVRIN_POINT{p1.x, p.y};
    }
    const double k = static_cast<double>(dy) / dx;
    const double b = p2.y - k * p2.x;
    const double q = static_cast<double>(p1.x - p2.x) / dy;
    const double x = ((p.y - q * p.x) - b) / (k - q);
    const double y = k * x + b;
    return tagTAVRIN_POINT{static_cast<float>(x), static_cast<float>(y)};
}

bool targetWidthSegment(const tagTAVRIN_POINT& p1, const tagTAVRIN_POINT& p2,
                        const tagTAVRIN_POINT& arrowEnd, int index, float width, int viewWidth,
                        int viewHeight, tagTAVRIN_POINT out[2])
{
    if (!hasViewSize(viewWidth, viewHeight) || index < 0 || index > 15) {
        return false;
    }
    tagTAVRIN_POINT segment[2];
    segmentFromLeftEnd(p1, p2, normalisedLength(p1, p2), width, segment);

    const bool vertical = std::fabs(p1.x - p2.x) < 0.0001;
    const double kp = vertical ? 0.0 : pixelSlope(p1, p2, viewWidth, viewHeight);
    auto across = [vertical, kp](double distance, double& dx, double& dy) {
        if (vertical) {
            dx = distance;
            dy = 0.0;
        } else {
            stepAcross(kp, distance, dx, dy);
        }
    };

    double offset = index <= 7 ? 0.02 * (index + 1) : 0.02 * (index - 7);
    double dx = 0.0;
    double dy = 0.0;
    across(offset, dx, dy);
    const tagTAVRIN_POINT trial{static_cast<float>(segment[0].x + dx),
                                static_cast<float>(segment[0].y + dy)};
    const float arrowSide = sideOfLine(p1, p2, arrowEnd);
    const float trialSide = sideOfLine(p1, p2, trial);
    // Lines 0..7 go away from the arrow, lines 8..15 on its side.
    if (arrowSide * trialSide <= 0.0f) {
        offset = -offset;
    }
    offset = -offset;
    if (index > 7) {
        offset = -offset;
    }
    across(offset, dx, dy);
    const tagTAVRIN_POINT moved[2] = {
        {static_cast<float>(segment[0].x + dx), static_cast<float>(segment[0].y + dy)},
        {static_cast<float>(segment[1].x + dx), static_cast<float>(segment[1].y + dy)}};
    if (!allFinite(moved, 2)) {
        return false;
    }
    out[0] = moved[0];
    out[1] = moved[1];
    return true;
}

}  // namespace geometry
}  // namespace Tavrin
