#include <Tavrin/Coordinates.h>

#include <cmath>
#include <vector>

namespace Tavrin {

namespace {

struct Range {
    double lowX, highX, lowY, highY;
};

bool rangeOf(CoordinateSpace space, int width, int height, Range& range)
{
    switch (space) {
    case CoordinateSpace::Normalized: range = {0.0, 1.0, 0.0, 1.0}; return true;
    case CoordinateSpace::Onvif: range = {-1.0, 1.0, -1.0, 1.0}; return true;
    case CoordinateSpace::Percent: range = {0.0, 100.0, 0.0, 100.0}; return true;
    case CoordinateSpace::Pixels:
        range = {0.0, static_cast<double>(width), 0.0, static_cast<double>(height)};
        return width > 0 && height > 0;
    }
    return false;
}

bool within(double v, double low, double high) { return std::isfinite(v) && v >= low && v <= high; }

// The point in normalised units, in double.
void toNormalized(CoordinateSpace space, double x, double y, int width, int height, double& nx, double& ny)
{
    switch (space) {
    case CoordinateSpace::Onvif: nx = (x + 1.0) / 2.0; ny = (1.0 - y) / 2.0; return;
    case CoordinateSpace::Pixels: nx = x / width; ny = y / height; return;
    case CoordinateSpace::Percent: nx = x / 100.0; ny = y / 100.0; return;
    case CoordinateSpace::Normalized: break;
    }
    nx = x;
    ny = y;
}

void fromNormalized(CoordinateSpace space, double nx, double ny, int width, int height, double& x, double& y)
{
    switch (space) {
    case CoordinateSpace::Onvif: x = 2.0 * nx - 1.0; y = 1.0 - 2.0 * ny; return;
    case CoordinateSpace::Pixels: x = nx * width; y = ny * height; return;
    case CoordinateSpace::Percent: x = nx * 100.0; y = ny * 100.0; return;
    case CoordinateSpace::Normalized: break;
    }
    x = nx;
    y = ny;
}

}  // namespace

bool ConvertPoints(const tagTAVRIN_POINT* in, unsigned int count, CoordinateSpace from, CoordinateSpace to,
                   tagTAVRIN_POINT* out, int frameWidth, int frameHeight)
{
    Range source{};
    Range target{};
    if (in == nullptr || out == nullptr || !rangeOf(from, frameWidth, frameHeight, source) ||
        !rangeOf(to, frameWidth, frameHeight, target)) {
        return false;
    }
    for (unsigned int i = 0; i < count; ++i) {
        if (!within(in[i].x, source.lowX, source.highX) || !within(in[i].y, source.lowY, source.highY)) {
            return false;
        }
    }
    for (unsigned int i = 0; i < count; ++i) {
        double nx = 0.0;
        double ny = 0.0;
        double x = 0.0;
        double y = 0.0;
        toNormalized(from, in[i].x, in[i].y, frameWidth, frameHeight, nx, ny);
        fromNormalized(to, nx, ny, frameWidth, frameHeight, x, y);
        out[i] = tagTAVRIN_POINT{static_cast<float>(x), static_cast<float>(y)};
    }
    return true;
}

}  // namespace Tavrin
