#ifndef TAVRIN_ITCLINE_H
#define TAVRIN_ITCLINE_H

#include <Tavrin/Line.h>
#include <Tavrin/VcaObject.h>

namespace Tavrin {

template <class T>
T* newInstanceOf() noexcept;

/// A traffic line across the road: one plain `Line` with the object's label text in a
/// box beside the line's middle.
///
/// Its own type chooses the colours: type 1 (the default) draws 0x00bd00, turning
/// 0xd90db0 when selected or highlighted; any other type draws 0xffff5b in every status.
class TAVRIN_API ITCLine : public VcaObject {
public:
    /// A new traffic line with a reference count of 1; null when allocation fails.
    static ITCLine* NewInstance();

    /// True when both end points are (0, 0).
    bool IsNull() override;
    tagTAVRIN_OBJ_STATUS GetObjStatus() override;
    void SetObjStatus(tagTAVRIN_OBJ_STATUS status) override;
    /// Drags the line whole by (to - from); ignored whole when an end point would leave
    /// the picture or the drag is not finite.
    void Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) override;
    /// Drags the selected end point (1 or 2) by (to - from), within the picture.
    void MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) override;
    /// The line's segment hit test in view pixels; never true for a null line.
    bool CheckSelected(tagTAVRIN_POINT& p) override;
    /// 0 none, 1 or 2 for the end point within 0.02 of `p` (2 wins when both are).
    unsigned int CheckPointSelected(tagTAVRIN_POINT& p) override;
    /// Records the view size; a null line draws nothing at all. Otherwise draws the line
    /// as a plain segment (whatever line type it was given) in the type's colours, then
    /// the label text in the box `GetDrawLabelRect` gives for the line's middle.
    void Draw(void* context, int width, int height, bool flag) override;
    /// The line's selected end point (1-based, 0 = none).
    void SetSelPointIndex(unsigned int index) override;
    unsigned int GetSelPointIndex() override;
    ~ITCLine() override;

    /// Keeps a copy of up to 10 vertices and gives them to the line, returning its answer
    /// (it takes two points; 3 or more are refused but the copy is kept). False, changing
    /// nothing, for a null array, 11 or more vertices or a non-finite coordinate.
    virtual bool SetPoints(tagTAVRIN_POINT* points, unsigned int count);
    /// Refreshes the copy from the line, zeroes 10 entries of `points` (the buffer must
    /// hold 10) and writes as many vertices as the stored count says: that of the last
    /// `SetPoints`, or 2 once a `Draw` has read the line. False, writing nothing, for a
    /// null pointer.
    virtual bool GetPoints(tagTAVRIN_POINT* points, unsigned int* count);
    /// Stores the colour set (1 green, anything else light yellow) for the next `Draw`.
    virtual void SetLineType(tagTAVRIN_ITC_LINE_TYPE type);
    virtual tagTAVRIN_ITC_LINE_TYPE GetLineType();

protected:
    ITCLine();

private:
    friend ITCLine* newInstanceOf<ITCLine>() noexcept;

    static constexpr unsigned int kMaxVertices = 10;

    /// Reads the line's end points into the stored copy; the line's count is not kept.
    bool refreshFromLine(unsigned int& lineCount);

    tagTAVRIN_POINT m_points[kMaxVertices];
    unsigned int m_pointCount;
    Line m_line;
    tagTAVRIN_ITC_LINE_TYPE m_lineType;
};

}  // namespace Tavrin

#endif  // TAVRIN_ITCLINE_H
