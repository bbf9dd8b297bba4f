#ifndef TAVRIN_ATMCALI_H
#define TAVRIN_ATMCALI_H

#include <Tavrin/Line.h>
#include <Tavrin/Rectangle.h>
#include <Tavrin/VcaObject.h>

namespace Tavrin {

template <class T>
T* newInstanceOf() noexcept;

/// The ATM calibration figure: a rectangular region (the object's vertices) and one
/// vertical calibration line with a 32-pixel bar across each end and the label text at
/// its middle.
///
/// The region is edited through the `VcaObject` operations, the line through the
/// parallel `...Line...` operations; the two keep separate statuses and selected
/// vertices, and no constraint ties the line to the region. Every part is drawn with the
/// colours 0x285EA6, 0xD90DB0, 0xFFC000, 0xF47F4C (the primitive defaults with the first
/// two exchanged).
class TAVRIN_API AtmCali : public VcaObject {
public:
    /// A new object with a reference count of 1; null when allocation fails.
    static AtmCali* NewInstance();

    /// The region's `IsNull`; the line is not consulted.
    bool IsNull() override;
    /// The region's status.
    tagTAVRIN_OBJ_STATUS GetObjStatus() override;
    /// Sets the status of the region, then of the line.
    void SetObjStatus(tagTAVRIN_OBJ_STATUS status) override;
    /// Drags the region whole; only when the region accepts is the line dragged by the
    /// same vector (the line may still refuse on its own). Non-finite drags are refused.
    void Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) override;
    /// Drags the region's selected corner as a rectangle does; works also while the
    /// line is unset.
    void MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) override;
    /// The region's inside test; the line is not hit-tested.
    bool CheckSelected(tagTAVRIN_POINT& p) override;
    /// 1-based region corner under `p` (within 0.02), 0 for none; stores nothing.
    unsigned int CheckPointSelected(tagTAVRIN_POINT& p) override;
    /// Records the view size, then draws region, line, the two end bars and the label,
    /// in that order. Nothing is drawn while the region is empty; only the region while
    /// the line is null. Without a positive view size the end bars are left out.
    void Draw(void* context, int width, int height, bool flag) override;
    /// The region's selected corner (1-based, 0 = none).
    void SetSelPointIndex(unsigned int index) override;
    unsigned int GetSelPointIndex() override;
    ~AtmCali() override;

    /// Sets the region; false, changing nothing, for a null array, a count of 11 or more
    /// (checked first) or one the rectangle refuses (above 4, non-finite coordinates).
    virtual bool SetPoints(tagTAVRIN_POINT* points, unsigned int count);
    /// Writes the region's count and its corners (at most 4); false for a null pointer.
    virtual bool GetPoints(tagTAVRIN_POINT* points, unsigned int* count);
    /// Sets the calibration line from a to b; false for non-finite coordinates.
    virtual bool SetLinePoints(tagTAVRIN_POINT& a, tagTAVRIN_POINT& b);
    /// Writes the line's two end points; false, writing nothing, for a null pointer.
    virtual bool GetLinePoints(tagTAVRIN_POINT* a, tagTAVRIN_POINT* b);
    /// Drags the line's selected end point (see `SetLineSelPointIndex`) by (to - from);
    /// refused whole when it would leave the picture or is not finite.
    virtual void MoveLinePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to);
    /// 0 none, 1 or 2 for the line end under `p` (end 2 wins when both are near).
    virtual unsigned int CheckLinePointSelected(tagTAVRIN_POINT& p);
    /// The line's selected end point (1-based, 0 = none).
    virtual void SetLineSelPointIndex(unsigned int index);
    virtual unsigned int GetLineSelPointIndex();

    /// Writes to out[0], out[1] the bar across the calibration line at `end` (normalised):
    /// 32 pixels long, perpendicular to the line with its angle truncated to whole
    /// degrees, ends snapped to whole pixels of the view size of the last `Draw` or
    /// `SetWndSize`. Writes nothing for a null `out`, a non-finite `end` or a view size
    /// that is not positive. A line whose ends coincide has no direction: its bar is
    /// horizontal, as for a vertical line.
    void GetVCaliLineHead(tagTAVRIN_POINT& end, tagTAVRIN_POINT* out);

protected:
    AtmCali();

private:
    friend AtmCali* newInstanceOf<AtmCali>() noexcept;

    Line m_caliLine;
    Rectangle m_region;
};

}  // namespace Tavrin

#endif  // TAVRIN_ATMCALI_H
