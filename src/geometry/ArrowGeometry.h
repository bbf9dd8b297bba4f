#ifndef TAVRIN_GEOMETRY_ARROWGEOMETRY_H
#define TAVRIN_GEOMETRY_ARROWGEOMETRY_H

// The arrow figures of lines as points: the arrow-bar outline in a line's local frame and
// the turn that places it, the block arrow in whole pixels, and the traverse plane with
// its arrows and side marks. Knows no OpenGL.

#include <Tavrin/TavrinTypes.h>

namespace Tavrin {
namespace geometry {

/// Outline points the arrow bar needs for a direction: 18 (both), 11 (positive or
/// negative), 4 (any other value: the bare bar).
int arrowBarPointCount(TAVRIN_ARROW_TYPE direction);

/// True for the directions that carry an arrow head and "A"/"B" marks (0, 1, 2).
bool hasArrowHead(TAVRIN_ARROW_TYPE direction);

/// The arrow-bar outline in the local frame of a line of `length` (x along the line from
/// 0 to `length`, y across it), sized in pixels of a width x height view: shaft 5 px wide
/// and 10 px high, head overhang 6 px, head height 12 px, marks 10 px beyond the figure,
/// bar 3 px thick; along-line sizes divided by the width, across-line sizes by the
/// height. `count` is the buffer's capacity in and the points written out. Writes nothing
/// (count kept) for a null buffer, a capacity below the need, a non-finite length or no
/// view. The marks are written for directions 0, 1 and 2 only.
void arrowBarOutline(float length, TAVRIN_ARROW_TYPE direction, int width, int height,
                     tagTAVRIN_POINT* points, int& count, tagTAVRIN_POINT& markA,
                     tagTAVRIN_POINT& markB);

/// Where a line's local frame lies: its origin and the turn (cos, sin) of its x axis.
struct LocalFrame {
    tagTAVRIN_POINT origin;
    double cos;
    double sin;
};

/// The local frame of the segment a -> b and its length (single precision). False for a
/// zero or non-finite length: such a segment has no direction.
bool localFrameOf(const tagTAVRIN_POINT& a, const tagTAVRIN_POINT& b, LocalFrame& frame,
                  float& length);

/// A local point turned and placed in the picture: x' = x cos - y sin + origin.x,
/// y' = y cos + x sin + origin.y, in double, stored as float.
tagTAVRIN_POINT turnAndPlace(const tagTAVRIN_POINT& local, const LocalFrame& frame);

/// A corner of the block arrow in whole pixels (64-bit, so no sum can overflow).
struct PixelCorner {
    long long x;
    long long y;
};

/// The block arrow from `tail` to `tip` in whole pixels, corners in this order: tail S,
/// S + shaft, head base + shaft, head base + head, tip E, head base - head, head base -
/// shaft, S - shaft. The shaft is 4 px and the head 12 px either side (offsets
/// truncated), the head base 18 px back from the tip. False (corners untouched) without a
/// view or when tail and tip fall on the same pixel.
bool blockArrowCorners(const tagTAVRIN_POINT& tail, const tagTAVRIN_POINT& tip, int width,
                       int height, PixelCorner corners[8]);

/// A pixel corner back in normalised units (X / W, Y / H in single precision). Needs a
/// view of positive size.
tagTAVRIN_POINT cornerToPicture(const PixelCorner& corner, int width, int height);

/// The traverse plane of the line p1-p2: a bar 3 px thick along it and two arrows
/// standing on its middle, arrow 1 from tail1 (1.5 px off the line) to tip1 (30 px off),
/// arrow 2 its mirror image. `step1` is one pixel along arrow 1 in normalised units.
struct TraversePlane {
    tagTAVRIN_POINT plane[4];
    tagTAVRIN_POINT tail1;
    tagTAVRIN_POINT tip1;
    tagTAVRIN_POINT tail2;
    tagTAVRIN_POINT tip2;
    double step1x;
    double step1y;
    bool horizontal;
};

/// The traverse plane; false (plane untouched) without a view or when a point would not
/// be finite. Coincident end points give the horizontal case.
bool traversePlaneOf(const tagTAVRIN_POINT& p1, const tagTAVRIN_POINT& p2, int width,
                     int height, TraversePlane& plane);

/// Where the traverse plane's "A" and "B" go for direction 1 or 2: "A" on arrow 2's side,
/// "B" on arrow 1's. False for any other direction.
bool traverseMarks(const TraversePlane& plane, TAVRIN_ARROW_TYPE direction, int height,
                   tagTAVRIN_POINT& markA, tagTAVRIN_POINT& markB);

}  // namespace geometry
}  // namespace Tavrin

#endif  // TAVRIN_GEOMETRY_ARROWGEOMETRY_H
