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

    /// Replaces the vertices; false for a null array or more than 4 vertices.
    bool SetPoints(tagTAVRIN_POINT* points, unsigned int count) override;
    /// Drags the selected corner, carrying the shared coordinates of its neighbours;
    /// refused whole when the dragged corner would leave the picture.
    void MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) override;
    /// Four corners (a.x, a.y), (b.x, a.y), (b.x, b.y), (a.x, b.y); true.
    virtual bool SetDiagonal(tagTAVRIN_POINT& a, tagTAVRIN_POINT& b);
};

}  // namespace Tavrin

#endif  // TAVRIN_RECTANGLE_H
