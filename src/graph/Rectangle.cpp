#include <Tavrin/Rectangle.h>

#include "geometry/PixelMath.h"

#include <utility>

namespace Tavrin {

namespace {

const unsigned int kCorners = 4;

}  // namespace

Rectangle::Rectangle() : Polygon() {}

Rectangle::Rectangle(tagTAVRIN_POINT* points, unsigned int count) : Polygon(points, count) {}

Rectangle::~Rectangle() = default;

bool Rectangle::SetPoints(tagTAVRIN_POINT* points, unsigned int count)
{
    if (points == nullptr || count > kCorners || !geometry::allFinite(points, count)) {
        return false;
    }
    storeVertices(points, count);
    return true;
}

void Rectangle::MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to)
{
    const unsigned int index = m_selPointIndex;
    if (index == 0 || index > m_pointCount) {
        return;
    }
    float dx = 0.0f;
    float dy = 0.0f;
    const unsigned int k = index - 1;
    tagTAVRIN_POINT& corner = m_points[k];
    // Only the dragged corner is tested against the picture; its neighbours follow
    // unchecked, except that a neighbour carried to an infinite coordinate (possible only
    // for corners given far outside the picture) refuses the drag whole.
    if (!geometry::dragDelta(from, to, dx, dy) ||
        !geometry::insidePicture(corner.x + dx, corner.y + dy)) {
        return;
    }
    if (k >= kCorners) {
        corner.x += dx;
        corner.y += dy;
        return;
    }
    const unsigned int prev = (k + 3) % kCorners;
    const unsigned int next = (k + 1) % kCorners;
    // Corners 0 and 2 share their x with the corner before them and their y with the one
    // after; corners 1 and 3 the other way round.
    float tagTAVRIN_POINT::*prevAxis = &tagTAVRIN_POINT::x;
    float tagTAVRIN_POINT::*nextAxis = &tagTAVRIN_POINT::y;
    if (k % 2 != 0) {
        std::swap(prevAxis, nextAxis);
    }
    const float prevBy = prevAxis == &tagTAVRIN_POINT::x ? dx : dy;
    const float nextBy = nextAxis == &tagTAVRIN_POINT::x ? dx : dy;
    if (!cornerCoordinateMayMove(prev, prevAxis, prevBy) ||
        !cornerCoordinateMayMove(next, nextAxis, nextBy)) {
        return;
    }
    corner.x += dx;
    corner.y += dy;
    moveCornerCoordinate(prev, prevAxis, prevBy);
    moveCornerCoordinate(next, nextAxis, nextBy);
}

bool Rectangle::cornerCoordinateMayMove(unsigned int corner, float tagTAVRIN_POINT::*axis,
                                        float by) const
{
    return corner >= m_pointCount || geometry::isFinite(m_points[corner].*axis + by);
}

bool Rectangle::SetDiagonal(tagTAVRIN_POINT& a, tagTAVRIN_POINT& b)
{
    if (!geometry::isFinite(a) || !geometry::isFinite(b)) {
        return false;
    }
    setCorners(a.x, a.y, b.x, b.y);
    return true;
}

void Rectangle::setCorners(float x0, float y0, float x1, float y1)
{
    const tagTAVRIN_POINT corners[kCorners] = {{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}};
    storeVertices(corners, kCorners);
}

void Rectangle::setCorner(unsigned int corner, const tagTAVRIN_POINT& at)
{
    // A figure of fewer than four vertices has no such corner: the store past the count
    // stays zero.
    if (corner < m_pointCount) {
        m_points[corner] = at;
    }
}

void Rectangle::moveCornerCoordinate(unsigned int corner, float tagTAVRIN_POINT::*axis, float by)
{
    if (corner < m_pointCount) {
        m_points[corner].*axis += by;
    }
}

}  // namespace Tavrin
