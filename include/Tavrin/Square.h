#ifndef TAVRIN_SQUARE_H
#define TAVRIN_SQUARE_H

#include <Tavrin/Rectangle.h>

namespace Tavrin {

/// A rectangle whose sides are equal in view pixels. Set the view size before
/// `SetDiagonal` and `MovePoint`: without one (a width or height of 0 or less) there is
/// no pixel to measure, so `SetDiagonal` collapses the square onto `a` and `MovePoint`
/// does nothing.
class TAVRIN_API Square : public Rectangle {
public:
    Square();
    Square(tagTAVRIN_POINT* points, unsigned int count);
    Square(const Square& other) = default;
    ~Square() override;

    /// Keeps the corner opposite the selected one and places the dragged corner from
    /// `to` (`from` is not used), the side being the smaller pixel extent, truncated. No
    /// clamping to the picture; nothing happens for a non-finite `to`.
    void MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) override;
    /// A square growing from `a` to the right and downwards, its side the longer pixel
    /// extent of the drag (signed: a drag up and left gives a square up and left),
    /// capped at the smaller view dimension; true. False, changing nothing, for a
    /// non-finite coordinate.
    bool SetDiagonal(tagTAVRIN_POINT& a, tagTAVRIN_POINT& b) override;
};

}  // namespace Tavrin

#endif  // TAVRIN_SQUARE_H
