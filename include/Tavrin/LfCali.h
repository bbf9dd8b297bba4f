#ifndef TAVRIN_LFCALI_H
#define TAVRIN_LFCALI_H

#include <Tavrin/Point.h>
#include <Tavrin/VcaObject.h>

namespace Tavrin {

template <class T>
T* newInstanceOf() noexcept;

/// The LF calibration figure: one cross marker with the object's label text beside it,
/// placed and dragged whole. Colours 0x285EA6, 0xD90DB0, 0xFFC000, 0xF47F4C.
class TAVRIN_API LfCali : public VcaObject {
public:
    /// A new object with a reference count of 1; null when allocation fails.
    static LfCali* NewInstance();

    /// True while the point is (0, 0).
    bool IsNull() override;
    tagTAVRIN_OBJ_STATUS GetObjStatus() override;
    void SetObjStatus(tagTAVRIN_OBJ_STATUS status) override;
    /// Drags the point; refused when it would leave the picture.
    void Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) override;
    /// Does nothing: the figure moves only whole.
    void MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) override;
    /// Always true, deliberately: the figure counts as hit anywhere.
    bool CheckSelected(tagTAVRIN_POINT& p) override;
    /// Always 0.
    unsigned int CheckPointSelected(tagTAVRIN_POINT& p) override;
    /// Records the view size, draws the cross, then the label (also an empty one) in the
    /// box beside the point.
    void Draw(void* context, int width, int height, bool flag) override;
    void SetSelPointIndex(unsigned int index) override;
    unsigned int GetSelPointIndex() override;
    ~LfCali() override;

    /// Sets the point from the first entry of `points` (also for a count of 0); false,
    /// changing nothing, for a null array, a count of 2 or more or a non-finite point.
    virtual bool SetPoints(tagTAVRIN_POINT* points, unsigned int count);
    /// Writes the point and a count of 1; false for a null pointer.
    virtual bool GetPoints(tagTAVRIN_POINT* points, unsigned int* count);

protected:
    LfCali();

private:
    friend LfCali* newInstanceOf<LfCali>() noexcept;

    Point m_point;
};

}  // namespace Tavrin

#endif  // TAVRIN_LFCALI_H
