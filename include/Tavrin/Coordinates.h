#ifndef TAVRIN_COORDINATES_H
#define TAVRIN_COORDINATES_H

#include <Tavrin/TavrinTypes.h>

namespace Tavrin {

/// The coordinate spaces cameras and hosts use for the same picture point.
enum class CoordinateSpace {
    Normalized,  ///< 0..1, origin top-left, y down: the library's own
    Onvif,       ///< -1..1, origin at the centre, y up: x' = 2x - 1, y' = 1 - 2y
    Pixels,      ///< 0..W by 0..H of a reference frame, y down; 0 is the left edge of the
                 ///< first pixel, W the right edge of the last
    Percent,     ///< 0..100, origin top-left, y down
};

/// Converts `count` points from one space to another, computed in double and stored as
/// float. Refuses the whole call, writing nothing to `out`, when a point lies outside its
/// space's range (bounds included) or is not finite, when `in` or `out` is null, or when
/// Pixels is either side of the conversion without a frame of positive size. `in` and
/// `out` may be the same array.
///
/// Round trips: Normalized -> Onvif -> Normalized and Normalized -> Percent -> Normalized
/// are exact for points on a grid of 1/1024 (the multiplications and the shift by 1 are
/// then exact in both precisions); Pixels with a power-of-two frame size likewise. Any
/// other round trip may differ in the last bit of the float (at most 1 ulp), because the
/// result is rounded to float after each conversion.
TAVRIN_API bool ConvertPoints(const tagTAVRIN_POINT* in, unsigned int count, CoordinateSpace from,
                              CoordinateSpace to, tagTAVRIN_POINT* out, int frameWidth = 0,
                              int frameHeight = 0);

}  // namespace Tavrin

#endif  // TAVRIN_COORDINATES_H
