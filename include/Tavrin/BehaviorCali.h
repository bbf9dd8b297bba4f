#ifndef TAVRIN_BEHAVIORCALI_H
#define TAVRIN_BEHAVIORCALI_H

#include <Tavrin/Line.h>
#include <Tavrin/VcaObject.h>

namespace Tavrin {

template <class T>
T* newInstanceOf() noexcept;

/// The calibration line of behaviour analysis, with the label text at its middle.
///
/// Of calibration type 1 (`TAVRIN_BEHAV_CALI_VERTICAL`) it is the vertical calibration
/// line: drawn in 0xE6005C with a 32-pixel bar across each end, the bars drawn before
/// the line. Of any other type it is a plain line in 0xD65814. The object keeps a copy
/// of the last vertices set or read back (up to 10, unused entries zero); `Draw` and
/// `GetPoints` refresh it from the line.
class TAVRIN_API BehaviorCali : public VcaObject {
public:
    /// A new object with a reference count of 1; null when allocation fails.
    static BehaviorCali* NewInstance();

    /// The line's `IsNull`: both end points (0, 0).
    bool IsNull() override;
    tagTAVRIN_OBJ_STATUS GetObjStatus() override;
    void SetObjStatus(tagTAVRIN_OBJ_STATUS status) override;
    /// Drags the line whole; refused whole when an end would leave the picture.
    void Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) override;
    /// Drags the line's selected end point.
    void MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) override;
    /// The line's segment hit test (view pixels); false while the line is null.
    bool CheckSelected(tagTAVRIN_POINT& p) override;
    /// 0 none, 1 or 2 for the end point under `p`; stores nothing.
    unsigned int CheckPointSelected(tagTAVRIN_POINT& p) override;
    /// Records the view size and draws: type 1 the two end bars, then the line; other
    /// types the line alone; then the label. Nothing while the line is null. Without a
    /// positive view size the end bars are left out.
    void Draw(void* context, int width, int height, bool flag) override;
    void SetSelPointIndex(unsigned int index) override;
    unsigned int GetSelPointIndex() override;
    ~BehaviorCali() override;

    /// Stores `count` vertices (the rest zeroed) and gives the line stored vertices 0
    /// and 1. False, changing nothing, for a null array, a count of 11 or more or a
    /// non-finite coordinate; a count of 3 to 10 is stored but refused by the line
    /// (false), which keeps its points.
    virtual bool SetPoints(tagTAVRIN_POINT* points, unsigned int count);
    /// Refreshes the stored copy from the line and writes it: 10 entries zeroed, then the
    /// line's 2 points and a count of 2. False for a null pointer.
    virtual bool GetPoints(tagTAVRIN_POINT* points, unsigned int* count);
    /// Stores the calibration type unchecked; takes effect at the next `Draw`.
    virtual void SetCaliType(tagTAVRIN_BEHAV_CALI_TYPE type);
    virtual tagTAVRIN_BEHAV_CALI_TYPE GetCaliType();

    /// Writes to out[0], out[1] the 32-pixel bar across the line through stored vertices
    /// 0 and 1 at `end`, as `AtmCali::GetVCaliLineHead` does. Works on the stored copy,
    /// so between an edit and the next `Draw` it uses the old vertices. Writes nothing
    /// for a null `out`, a non-finite `end` or a view size that is not positive;
    /// coincident vertices (also before any are set) give a horizontal bar.
    void GetVCaliLineHead(tagTAVRIN_POINT& end, tagTAVRIN_POINT* out);

protected:
    BehaviorCali();
    /// The drawing of both classes; `verticalColor` is the first and second colour of
    /// the type-1 look.
    void drawFigure(void* context, int width, int height, unsigned int verticalColor);

private:
    friend BehaviorCali* newInstanceOf<BehaviorCali>() noexcept;

    tagTAVRIN_POINT m_points[10];
    unsigned int m_pointCount;
    Line m_caliLine;
    tagTAVRIN_BEHAV_CALI_TYPE m_caliType;
};

}  // namespace Tavrin

#endif  // TAVRIN_BEHAVIORCALI_H
