#ifndef TAVRIN_LANE_H
#define TAVRIN_LANE_H

#include <Tavrin/Arrow.h>
#include <Tavrin/Polygon.h>
#include <Tavrin/VcaObject.h>

namespace Tavrin {

template <class T>
T* newInstanceOf() noexcept;

/// A traffic lane: a polygon outline (the object's vertices) with a block arrow for the
/// driving direction and the label text beside the outline's first vertex.
///
/// Everything is drawn in 0xffc021, turning 0x00f0f0 when selected or highlighted. Only
/// the outline is hit-tested and dragged by vertex; the arrow moves with an accepted
/// whole drag and changes otherwise only through `SetArrowPoints`.
class TAVRIN_API Lane : public VcaObject {
public:
    /// A new lane with a reference count of 1; null when allocation fails.
    static Lane* NewInstance();

    /// The outline's `IsNull`: true when every vertex is (0, 0) or there is none.
    bool IsNull() override;
    /// The outline's status.
    tagTAVRIN_OBJ_STATUS GetObjStatus() override;
    /// Sets the status of the outline and of the arrow.
    void SetObjStatus(tagTAVRIN_OBJ_STATUS status) override;
    /// Drags the outline by (to - from); only when it accepts is the arrow dragged by the
    /// same vector, so the arrow never leaves a lane that refused to move.
    void Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) override;
    /// Drags the outline's selected vertex by (to - from), within the picture.
    void MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) override;
    /// The outline's inside test; never true for a null outline.
    bool CheckSelected(tagTAVRIN_POINT& p) override;
    /// The outline's 1-based vertex within 0.02 of `p`, 0 for none.
    unsigned int CheckPointSelected(tagTAVRIN_POINT& p) override;
    /// Records the view size and draws the outline (translucently filled), the arrow and
    /// the label text in the box `GetDrawLabelRect` gives for the first vertex (the
    /// origin while the outline is empty).
    void Draw(void* context, int width, int height, bool flag) override;
    /// The outline's selected vertex (1-based, 0 = none).
    void SetSelPointIndex(unsigned int index) override;
    unsigned int GetSelPointIndex() override;
    ~Lane() override;

    /// Gives the outline up to 10 vertices; false, changing nothing, for a null array,
    /// 11 or more vertices or a non-finite coordinate.
    virtual bool SetPoints(tagTAVRIN_POINT* points, unsigned int count);
    /// Writes the outline's count and vertices (the buffer must hold 10; nothing is
    /// zeroed); false for a null pointer.
    virtual bool GetPoints(tagTAVRIN_POINT* points, unsigned int* count);
    /// The direction arrow from `from` (tail) to `to` (tip); false for a non-finite point.
    virtual bool SetArrowPoints(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to);
    /// Writes the arrow's tail and tip; false, writing nothing, for a null pointer.
    virtual bool GetArrowPoints(tagTAVRIN_POINT* from, tagTAVRIN_POINT* to);

protected:
    Lane();

private:
    friend Lane* newInstanceOf<Lane>() noexcept;

    Arrow m_arrow;
    Polygon m_polygon;
};

}  // namespace Tavrin

#endif  // TAVRIN_LANE_H
