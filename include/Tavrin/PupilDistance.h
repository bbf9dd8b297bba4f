#ifndef TAVRIN_PUPILDISTANCE_H
#define TAVRIN_PUPILDISTANCE_H

#include <Tavrin/Line.h>
#include <Tavrin/VcaObject.h>

namespace Tavrin {

template <class T>
T* newInstanceOf() noexcept;

/// The distance between two pupils: exactly two points joined by a line, drawn as a
/// dimension line with a 32-pixel bar across each pupil and the line extended 16 pixels
/// beyond each one. Colours 0xE6005C, 0xE6005C, 0xFFC000, 0xF47F4C; the label text is not
/// drawn.
class TAVRIN_API PupilDistance : public VcaObject {
public:
    /// A new object with a reference count of 1; null when allocation fails.
    static PupilDistance* NewInstance();

    /// The line's `IsNull`: both pupils (0, 0).
    bool IsNull() override;
    tagTAVRIN_OBJ_STATUS GetObjStatus() override;
    void SetObjStatus(tagTAVRIN_OBJ_STATUS status) override;
    /// Drags both pupils; refused whole when one would leave the picture.
    void Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) override;
    /// Drags the selected pupil.
    void MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) override;
    /// The line's segment hit test (view pixels); false while the line is null.
    bool CheckSelected(tagTAVRIN_POINT& p) override;
    /// 0 none, 1 or 2 for the pupil under `p`; stores nothing.
    unsigned int CheckPointSelected(tagTAVRIN_POINT& p) override;
    /// Records the view size and draws the bar at each pupil, the extension, the segment
    /// between the pupils and the pupil line itself on top. Nothing while the line is
    /// null; without a positive view size only the segment and the pupil line.
    void Draw(void* context, int width, int height, bool flag) override;
    void SetSelPointIndex(unsigned int index) override;
    unsigned int GetSelPointIndex() override;
    ~PupilDistance() override;

    /// Sets the two pupils; false, changing nothing, unless `points` is not null, `count`
    /// is exactly 2 and the coordinates are finite.
    virtual bool SetPoints(tagTAVRIN_POINT* points, unsigned int count);
    /// Refreshes the stored pupils from the line and writes them with a count of 2 (room
    /// for 2 is required); false for a null pointer.
    virtual bool GetPoints(tagTAVRIN_POINT* points, unsigned int* count);

    /// Writes to out[0], out[1] the 32-pixel bar across the pupil line at `end`, built as
    /// `AtmCali::GetVCaliLineHead` with the slope of the stored pupils (as of the last
    /// `SetPoints`, `GetPoints` or `Draw`; (0, 0) twice before any). Writes nothing for a
    /// null `out`, a non-finite `end` or a view size that is not positive.
    void GetPupilLine(tagTAVRIN_POINT& end, tagTAVRIN_POINT* out);

protected:
    PupilDistance();

private:
    friend PupilDistance* newInstanceOf<PupilDistance>() noexcept;

    tagTAVRIN_POINT m_points[2];
    Line m_pupilLine;
};

}  // namespace Tavrin

#endif  // TAVRIN_PUPILDISTANCE_H
