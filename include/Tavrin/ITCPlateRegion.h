#ifndef TAVRIN_ITCPLATEREGION_H
#define TAVRIN_ITCPLATEREGION_H

#include <Tavrin/Polygon.h>
#include <Tavrin/VcaObject.h>

namespace Tavrin {

template <class T>
T* newInstanceOf() noexcept;

/// The plate area of a traffic camera's picture: a closed region of up to 20 vertices,
/// filled translucently in blue 0x4848c6, turning 0xd90db0 when selected or highlighted,
/// with the label text in a box beside its first vertex.
///
/// The region's polygon stores, hit-tests, moves and draws the vertices; the object keeps
/// a copy that `GetPoints` and every `Draw` refresh from the polygon. Status, selected
/// vertex and closed flag live in the polygon.
class TAVRIN_API ITCPlateRegion : public VcaObject {
public:
    /// A new region with a reference count of 1; null when allocation fails.
    static ITCPlateRegion* NewInstance();

    /// True when every vertex is (0, 0); a region without vertices is null.
    bool IsNull() override;
    tagTAVRIN_OBJ_STATUS GetObjStatus() override;
    void SetObjStatus(tagTAVRIN_OBJ_STATUS status) override;
    /// Drags the whole region by (to - from); ignored whole when a vertex would leave
    /// the picture or the drag is not finite.
    void Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) override;
    /// Drags the selected vertex by (to - from) within the picture.
    void MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) override;
    /// True when `p` lies inside the region (even-odd, half-open edges).
    bool CheckSelected(tagTAVRIN_POINT& p) override;
    /// 1-based index of the first vertex strictly closer than 0.02 to `p`, 0 for none;
    /// stores nothing.
    unsigned int CheckPointSelected(tagTAVRIN_POINT& p) override;
    /// Stores the view size, draws the region in its fixed colours and the label box
    /// beside the first vertex. `flag` is ignored: the region always draws the same.
    void Draw(void* context, int width, int height, bool flag) override;
    void SetSelPointIndex(unsigned int index) override;
    unsigned int GetSelPointIndex() override;
    /// Sets the closed flag of the object and of its polygon.
    void SetClosed(bool closed) override;
    /// The polygon's closed flag (copied into the object's).
    bool GetClosed() override;
    ~ITCPlateRegion() override;

    /// Replaces the vertices; false, changing nothing, for a null array, more than 20
    /// vertices or a non-finite coordinate. A count of 0 empties the region.
    virtual bool SetPoints(tagTAVRIN_POINT* points, unsigned int count);
    /// Writes the vertices and their count; the buffer must hold 20 entries, all of
    /// which are written (unused ones zeroed). False, writing nothing, for a null pointer.
    virtual bool GetPoints(tagTAVRIN_POINT* points, unsigned int* count);

protected:
    ITCPlateRegion();

private:
    friend ITCPlateRegion* newInstanceOf<ITCPlateRegion>() noexcept;

    tagTAVRIN_POINT m_points[20];
    unsigned int m_pointCount;
    Polygon m_polygon;
};

}  // namespace Tavrin

#endif  // TAVRIN_ITCPLATEREGION_H
