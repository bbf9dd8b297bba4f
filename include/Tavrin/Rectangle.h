#ifndef TAVRIN_RECTANGLE_H
#define TAVRIN_RECTANGLE_H

#include <Tavrin/Polygon.h>

namespace Tavrin {

/// An axis-parallel four-cornered polygon built from a diagonal. Corners are ordered:
/// first corner, along its row, the opposite corner, along its column.
class TAVRIN_API Rectangle : public Polygon {
public:
    Rectangle();
    /// As `Polygon(points, count)`: up to 20 vertices are kept here, unlike `SetPoints`.
    Rectangle(tagTAVRIN_POINT* points, unsigned int count);
    Rectangle(const Rectangle& other) = default;
    ~Rectangle() override;

    /// Replaces the vertices (0 to 4; nothing checks they form a rectangle); false,
    /// keeping the old ones, for a null array, more than 4 vertices or a non-finite one.
    bool SetPoints(tagTAVRIN_POINT* points, unsigned int count) override;
    /// Drags the selected corner by (to - from), carrying the coordinates it shares with
    /// the corners before and after it, so the opposite corner stays. Refused whole when
    /// the dragged corner would leave the picture or the drag is not finite; the
    /// neighbours are not held to the picture, but a drag that would give one an infinite
    /// coordinate (corners set beyond about 1e38) is refused whole too. A selected vertex
    /// past the fourth moves alone.
    void MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) override;
    /// Four corners (a.x, a.y), (b.x, a.y), (b.x, b.y), (a.x, b.y), in any winding; true.
    /// False, changing nothing, when a coordinate is not finite.
    virtual bool SetDiagonal(tagTAVRIN_POINT& a, tagTAVRIN_POINT& b);

protected:
    /// Four corners from (x0, y0) to (x1, y1) in the `SetDiagonal` order.
    void setCorners(float x0, float y0, float x1, float y1);
    /// Sets corner `corner` when the figure has it.
    void setCorner(unsigned int corner, const tagTAVRIN_POINT& at);

private:
    void moveCornerCoordinate(unsigned int corner, float tagTAVRIN_POINT::*axis, float by);
    bool cornerCoordinateMayMove(unsigned int corner, float tagTAVRIN_POINT::*axis,
                                 float by) const;
};

}  // namespace Tavrin

#endif  // TAVRIN_RECTANGLE_H
