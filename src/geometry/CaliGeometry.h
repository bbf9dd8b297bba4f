#ifndef TAVRIN_GEOMETRY_CALIGEOMETRY_H
#define TAVRIN_GEOMETRY_CALIGEOMETRY_H

// The constructions of the calibration figures in view pixels: the bar across the end of
// a calibration line (ATM, behaviour and pupil figures) and the pupil figure's extension
// line. Knows no OpenGL.

#include <Tavrin/TavrinTypes.h>

namespace Tavrin {
namespace geometry {

/// The 32-pixel bar across the line a-b at `end`, written to out[0] and out[1]
/// (normalised) for a view of width x height pixels. The bar is perpendicular to the
/// line in pixels with its angle truncated to whole degrees, its centre offset by less
/// than a pixel, its ends snapped to whole pixels. A line with a slope of exactly 0 gets
/// a vertical bar; a line whose ends coincide (no slope at all) a horizontal one, as a
/// vertical line does. False, writing nothing, when the view size is not positive or
/// `end` is not finite.
bool lineHeadBar(const tagTAVRIN_POINT& end, const tagTAVRIN_POINT& a, const tagTAVRIN_POINT& b,
                 int width, int height, tagTAVRIN_POINT out[2]);

/// How the two pupils of the pupil figure lie to each other.
enum class PupilLayout {
    Horizontal,  ///< on one row (checked first, so also coincident pupils)
    Vertical,    ///< in one column
    Oblique,
};

/// The pupil figure's dimension line: the pupils in drawing order and the extension
/// line 16 pixels beyond each of them.
struct PupilDimension {
    PupilLayout layout;
    tagTAVRIN_POINT first;   ///< the left pupil (the upper one in a column)
    tagTAVRIN_POINT second;  ///< the other pupil
    tagTAVRIN_POINT extensionStart;
    tagTAVRIN_POINT extensionEnd;
    bool hasExtension;       ///< false without a positive view size
};

/// Orders the pupils s0, s1 and extends their line by 16 pixels at both ends: on a row by
/// 16 / width, in a column by 16 / width as well (deliberately the width), both clamped
/// to the picture; otherwise along the line in whole pixels, unclamped. Pupils less than
/// a pixel apart in an oblique position are not extended (the extension is the segment
/// itself).
PupilDimension pupilDimension(const tagTAVRIN_POINT& s0, const tagTAVRIN_POINT& s1, int width,
                              int height);

}  // namespace geometry
}  // namespace Tavrin

#endif  // TAVRIN_GEOMETRY_CALIGEOMETRY_H
