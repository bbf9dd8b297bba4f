#ifndef TAVRIN_GEOMETRY_PIXELMATH_H
#define TAVRIN_GEOMETRY_PIXELMATH_H

// Conversions between normalised picture coordinates and view pixels, and the finite
// checks every edit makes. Knows no OpenGL.

#include <Tavrin/TavrinTypes.h>

#include <cmath>
#include <climits>

namespace Tavrin {
namespace geometry {

/// Truncates towards zero like a plain cast for every value a cast can represent; a NaN
/// gives 0 and values beyond the int range saturate, so no input is undefined.
inline int truncToInt(double v)
{
    if (!(v == v)) {
        return 0;
    }
    if (v >= 2147483647.0) {
        return INT_MAX;
    }
    if (v <= -2147483648.0) {
        return INT_MIN;
    }
    return static_cast<int>(v);
}

/// As `truncToInt`, for unsigned results: negative values and NaN give 0.
inline unsigned int truncToUnsigned(double v)
{
    if (!(v > 0.0)) {
        return 0u;
    }
    if (v >= 4294967295.0) {
        return UINT_MAX;
    }
    return static_cast<unsigned int>(v);
}

inline bool isFinite(float v) { return std::isfinite(v); }
inline bool isFinite(const tagTAVRIN_POINT& p) { return std::isfinite(p.x) && std::isfinite(p.y); }

/// True when every one of the first `count` points is finite.
inline bool allFinite(const tagTAVRIN_POINT* points, unsigned int count)
{
    for (unsigned int i = 0; i < count; ++i) {
        if (!isFinite(points[i])) {
            return false;
        }
    }
    return true;
}

/// A point as the drawing code hands it to OpenGL: (2x, 2(1 - y)), which the render
/// state's translate(-1, -1) turns into clip coordinates, so the picture's top-left corner
/// (0, 0) lands on the view's top-left and (1, 1) on its bottom-right. The one place the
/// normalised picture meets the GL vertex space.
struct GlPoint {
    float x;
    float y;
};

inline GlPoint glPointOf(float x, float y) { return GlPoint{2.0f * x, 2.0f * (1.0f - y)}; }
inline GlPoint glPointOf(const tagTAVRIN_POINT& p) { return glPointOf(p.x, p.y); }

/// True when the point maps to a finite GL vertex (glPointOf). Finite coordinates beyond
/// about +-1.7e38 do not: their doubled value overflows. Such a point is never emitted;
/// the batch or text that needs it is left out whole.
inline bool isDrawable(const tagTAVRIN_POINT& p)
{
    const GlPoint g = glPointOf(p);
    return std::isfinite(g.x) && std::isfinite(g.y);
}

/// True when every one of the first `count` points is drawable.
inline bool allDrawable(const tagTAVRIN_POINT* points, int count)
{
    for (int i = 0; i < count; ++i) {
        if (!isDrawable(points[i])) {
            return false;
        }
    }
    return true;
}

/// True when (x, y) lies in the picture, edges included. False for NaN.
inline bool insidePicture(float x, float y)
{
    return x >= 0.0f && x <= 1.0f && y >= 0.0f && y <= 1.0f;
}

/// The drag vector to - from; false when it is not finite (such a drag is refused).
inline bool dragDelta(const tagTAVRIN_POINT& from, const tagTAVRIN_POINT& to, float& dx, float& dy)
{
    dx = to.x - from.x;
    dy = to.y - from.y;
    return std::isfinite(dx) && std::isfinite(dy);
}

/// A view whose pixel conversions are finite: both sides positive.
inline bool hasViewSize(int width, int height) { return width > 0 && height > 0; }

}  // namespace geometry
}  // namespace Tavrin

#endif  // TAVRIN_GEOMETRY_PIXELMATH_H
