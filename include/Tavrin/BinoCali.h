#ifndef TAVRIN_BINOCALI_H
#define TAVRIN_BINOCALI_H

#include <Tavrin/Circle.h>
#include <Tavrin/VcaObject.h>

namespace Tavrin {

template <class T>
T* newInstanceOf() noexcept;

/// The binocular calibration figure: one circle of adjustable radius, placed and dragged
/// whole. It has no vertex that can be dragged on its own. Colours 0x0036D7, 0xFFFF00,
/// 0xFFFF00, 0xF47F4C; the centre is drawn as a cross.
class TAVRIN_API BinoCali : public VcaObject {
public:
    /// A new object with a reference count of 1; null when allocation fails.
    static BinoCali* NewInstance();

    /// True while the centre is (0, 0).
    bool IsNull() override;
    tagTAVRIN_OBJ_STATUS GetObjStatus() override;
    void SetObjStatus(tagTAVRIN_OBJ_STATUS status) override;
    /// Drags the circle; refused when the centre would leave the picture.
    void Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) override;
    /// Does nothing: the figure moves only whole.
    void MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) override;
    /// True when `p` lies strictly inside the radius (view pixels); false for a null
    /// centre.
    bool CheckSelected(tagTAVRIN_POINT& p) override;
    /// Always 0.
    unsigned int CheckPointSelected(tagTAVRIN_POINT& p) override;
    /// Records the view size and draws the centre cross and the disc.
    void Draw(void* context, int width, int height, bool flag) override;
    void SetSelPointIndex(unsigned int index) override;
    unsigned int GetSelPointIndex() override;
    /// Stores the view size in the object and in the circle, so `SetRadius` works before
    /// the first `Draw`.
    void SetWndSize(int width, int height) override;
    ~BinoCali() override;

    /// Sets the centre from the first entry of `points` (also for a count of 0); false,
    /// changing nothing, for a null array, a count of 2 or more or a non-finite point.
    virtual bool SetPoints(tagTAVRIN_POINT* points, unsigned int count);
    /// Writes the centre and a count of 1; false for a null pointer.
    virtual bool GetPoints(tagTAVRIN_POINT* points, unsigned int* count);

    /// The radius in pixels, stored relative to the current view width; ignored while
    /// the view width is not positive.
    void SetRadius(unsigned int pixels);
    /// The radius in pixels at the current view width (0 without a view size).
    unsigned int Radius();

protected:
    BinoCali();

private:
    friend BinoCali* newInstanceOf<BinoCali>() noexcept;

    Circle m_circle;
};

}  // namespace Tavrin

#endif  // TAVRIN_BINOCALI_H
