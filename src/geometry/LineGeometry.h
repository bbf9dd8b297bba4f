#ifndef TAVRIN_GEOMETRY_LINEGEOMETRY_H
#define TAVRIN_GEOMETRY_LINEGEOMETRY_H

// Geometry of the two-point line: the segment hit test in view pixels, left-to-right
// ordering, placing a sub-segment on the line, the pixel slope and the unit step across
// the line, projections onto the line and the people-counting calibration figures.
// Knows no OpenGL.
//
// "Pixel" sizes need a view: every function taking a width and height treats a width or
// height of 0 or less as "no view" and says what it returns then. No function here
// divides by zero or converts a NaN or huge value to an integer.

#include <Tavrin/TavrinTypes.h>

#include "geometry/PixelMath.h"

#include <QRect>

namespace Tavrin {
namespace geometry {

/// trunc(v * size), the product taken in single precision; NaN gives 0 and values
/// beyond the int range saturate.
int toPixel(float v, int size);

/// The box of the segment hit test around pixel end points (x1, y1) and (x2, y2): the
/// 8-pixel margin is applied around the second point only, so the box starts exactly at
/// the first point when it lies left of (or above) the second. Ties take the second
/// point's edge. False (box untouched) when the box does not fit in int, which only
/// happens for end points more than a billion pixels away.
bool pixelBox(int x1, int y1, int x2, int y2, QRect& box);

/// The segment hit test in view pixels: p must lie in `pixelBox` (with
/// QRect::contains(point, false): left and top edges in, right and bottom edges out) and
/// |d1 + d2 - d3| <= 1 pixel, the distances in float pixels. False without a view, for
/// a non-finite point and when the box does not fit in int.
bool segmentHit(const tagTAVRIN_POINT& a, const tagTAVRIN_POINT& b, const tagTAVRIN_POINT& p,
                int width, int height);

/// Euclidean distance in normalised units, single precision.
float normalisedLength(const tagTAVRIN_POINT& a, const tagTAVRIN_POINT& b);

/// Distance in pixels, sqrt((dy*H)^2 + (dx*W)^2) in double; the differences are taken in
/// single precision.
double pixelLength(const tagTAVRIN_POINT& a, const tagTAVRIN_POINT& b, int width, int height);

/// The end points ordered left to right: (p1, p2) when x2 >= x1, otherwise (p2, p1).
void leftToRight(const tagTAVRIN_POINT& p1, const tagTAVRIN_POINT& p2, tagTAVRIN_POINT out[2]);

/// A segment of `length` on the line p1-p2 (whose own length, in the same units, is
/// `lineLength`): first centred on the line, then slid along it so that it starts at the
/// left end point. A `lineLength` of 0 (coincident end points, or no view when the
/// lengths are in pixels) gives both points at the left end point. End points so far
/// apart that single precision overflows are handled in double; when even the lengths
/// are not finite, both points are at the left end point.
void segmentFromLeftEnd(const tagTAVRIN_POINT& p1, const tagTAVRIN_POINT& p2, double lineLength,
                        double length, tagTAVRIN_POINT out[2]);

/// k' = (y2 - y1) / (x2 - x1) * H / W, the line's slope in pixels (double). Only
/// meaningful for a line that is not vertical and a view of positive size.
double pixelSlope(const tagTAVRIN_POINT& p1, const tagTAVRIN_POINT& p2, int width, int height);

/// A step of `distance` across the line with pixel slope `kp`:
/// (distance * k' / r, -distance / r) with r = sqrt(k'^2 + 1), normalised units.
void stepAcross(double kp, double distance, double& dx, double& dy);

/// Which side of the line p1-p2 the point q lies on: cross(p2 - p1, q - p1), single
/// precision.
float sideOfLine(const tagTAVRIN_POINT& p1, const tagTAVRIN_POINT& p2, const tagTAVRIN_POINT& q);

/// The end of the people-counting direction arrow starting at `start` (the line's
/// middle): 0.1 across the line on the side where `previousEnd` lies, the opposite side
/// when `previousEnd` lies on the line or is not finite. A line is vertical when
/// |x1 - x2| < 0.001. False (end untouched) without a view or when the end would not be
/// finite.
bool directionArrowEnd(const tagTAVRIN_POINT& p1, const tagTAVRIN_POINT& p2,
                       const tagTAVRIN_POINT& start, const tagTAVRIN_POINT& previousEnd,
                       int width, int height, tagTAVRIN_POINT& end);

/// The short calibration line through `at` across the line p1-p2: half-length 0.18
/// across a line that is not vertical, 0.18 * H / W horizontally across a vertical one
/// (|x2 - x1| <= 0.0001). False (out untouched) without a view or when it would not be
/// finite.
bool calibrationLineAt(const tagTAVRIN_POINT& at, const tagTAVRIN_POINT& p1,
                       const tagTAVRIN_POINT& p2, int width, int height, tagTAVRIN_LINE& out);

/// The foot of `p` on the line p1-p2: (p.x, y1) when the line is exactly horizontal,
/// otherwise (x1, p.y) when |x2 - x1| <= 0.0001 (which covers coincident end points),
/// otherwise the perpendicular projection (double precision).
tagTAVRIN_POINT footOnLine(const tagTAVRIN_POINT& p1, const tagTAVRIN_POINT& p2,
                           const tagTAVRIN_POINT& p);

/// Target-width line `index` (0..15) of normalised length `width` on the line p1-p2:
/// laid from the left end point like the calibration segment, then moved 0.02 * (index
/// + 1) (index 0..7) or 0.02 * (index - 7) (index 8..15) across the line, indexes 0..7 on
/// the side away from `arrowEnd`, 8..15 on its side. False without a view, for an index
/// outside 0..15 or a result that is not finite.
bool targetWidthSegment(const tagTAVRIN_POINT& p1, const tagTAVRIN_POINT& p2,
                        const tagTAVRIN_POINT& arrowEnd, int index, float width, int viewWidth,
                        int viewHeight, tagTAVRIN_POINT out[2]);

}  // namespace geometry
}  // namespace Tavrin

#endif  // TAVRIN_GEOMETRY_LINEGEOMETRY_H
