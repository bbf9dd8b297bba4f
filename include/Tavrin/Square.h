#ifndef TAVRIN_SQUARE_H
#define TAVRIN_SQUARE_H

#include <Tavrin/Rectangle.h>

namespace Tavrin {

/// A rectangle whose sides are equal in view pixels. Set the view size before
/// `SetDiagonal` and `MovePoint`.
class TAVRIN_API Square : public Rectangle {
public:
    Square();
    Square(tagTAVRIN_POINT* points, unsigned int count);
    Square(const Square& other) = default;
    ~Square() override;

    /// Keeps the corner opposite the selected one and places the dragged corner from
    /// `to` (not shifted by the drag), the side being the smaller pixel extent.
    void MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) override;
    /// A square growing from `a` to the right and downwards, its side the longer pixel
    /// extent of the drag (signed), capped at the smaller view dimension.
    bool SetDiagonal(tagTAVRIN_POINT& a, tagTAVRIN_POINT& b) override;
};

}  // namespace Tavrin

#endif  // TAVRIN_SQUARE_H
