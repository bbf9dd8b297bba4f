#include <Tavrin/Square.h>

#include "geometry/PixelMath.h"

#include <cmath>

namespace Tavrin {

namespace {

const unsigned int kCorners = 4;

}  // namespace

Square::Square() : Rectangle() {}

Square::Square(tagTAVRIN_POINT* points, unsigned int count) : Rectangle(points, count) {}

Square::~Square() = default;

bool Square::SetDiagonal(tagTAVRIN_POINT& a, tagTAVRIN_POINT& b)
{
    if (!geometry::isFinite(a) || !geometry::isFinite(b)) {
        return false;
    }
    const int width = m_wndWidth;
    const int height = m_wndHeight;
    if (!geometry::hasViewSize(width, height)) {
        setCorners(a.x, a.y, a.x, a.y);
        return true;
    }
    const float extentX = (b.x - a.x) * static_cast<float>(width);
    const float extentY = (b.y - a.y) * static_cast<float>(height);
    const int px = geometry::truncToInt(extentX);
    const int py = geometry::truncToInt(extentY);
    // Signed on purpose: a drag up and to the left gives a negative side.
    int side = px > py ? px : py;
    const int bound = width < height ? width : height;
    side = side < bound ? side : bound;
    const float sx = static_cast<float>(side) / static_cast<float>(width);
    const float sy = static_cast<float>(side) / static_cast<float>(height);
    setCorners(a.x, a.y, a.x + sx, a.y + sy);
    return true;
}

void Square::MovePoint(tagTAVRIN_POINT& /*from*/, tagTAVRIN_POINT& to)
{
    const unsigned int index = m_selPointIndex;
    if (index == 0 || index > m_pointCount || !geometry::isFinite(to) ||
        !geometry::hasViewSize(m_wndWidth, m_wndHeight)) {
        return;
    }
    const float width = static_cast<float>(m_wndWidth);
    const float height = static_cast<float>(m_wndHeight);
    const unsigned int k = index - 1;
    const tagTAVRIN_POINT anchor = m_points[(k + 2) % kCorners];
    const float ex = std::fabs(anchor.x - to.x) * width;
    const float ey = std::fabs(anchor.y - to.y) * height;
    // The smaller pixel extent, truncated: the dragged corner lands on the diagonal.
    const int side = geometry::truncToInt(ey > ex ? ex : ey);
    const float sx = static_cast<float>(side) / width;
    const float sy = static_cast<float>(side) / height;
    const float newX = to.x >= anchor.x ? anchor.x + sx : anchor.x - sx;
    const float newY = to.y >= anchor.y ? anchor.y + sy : anchor.y - sy;
    setCorner((k + 3) % kCorners, tagTAVRIN_POINT{newX, anchor.y});
    setCorner(k, tagTAVRIN_POINT{newX, newY});
    setCorner((k + 1) % kCorners, tagTAVRIN_POINT{anchor.x, newY});
}

}  // namespace Tavrin
