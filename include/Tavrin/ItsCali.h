#ifndef TAVRIN_ITSCALI_H
#define TAVRIN_ITSCALI_H

#include <Tavrin/Polygon.h>
#include <Tavrin/VcaObject.h>

namespace Tavrin {

template <class T>
T* newInstanceOf() noexcept;

/// The traffic-scene calibration figure: a polygon of up to 10 points laid on the road,
/// with a width text and a height text on the two edges that leave the topmost vertex.
///
/// The width text goes on the edge whose far end is higher on the screen (ties to the
/// next vertex), the height text on the other. The object's own label text is not
/// drawn. Colours 0x285EA6, 0xD90DB0, 0xFFC000, 0xF47F4C for the polygon and both texts.
class TAVRIN_API ItsCali : public VcaObject {
public:
    /// A new object with a reference count of 1; null when allocation fails.
    static ItsCali* NewInstance();

    /// The polygon's `IsNull`: no vertex other than (0, 0).
    bool IsNull() override;
    tagTAVRIN_OBJ_STATUS GetObjStatus() override;
    void SetObjStatus(tagTAVRIN_OBJ_STATUS status) override;
    /// Drags the polygon whole; refused whole when a vertex would leave the picture.
    void Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) override;
    /// Drags the polygon's selected vertex while it stays inside the picture.
    void MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) override;
    /// The polygon's even-odd inside test; false while the polygon is null.
    bool CheckSelected(tagTAVRIN_POINT& p) override;
    /// 1-based index of the first vertex within 0.02 of `p`, 0 for none; stores nothing.
    unsigned int CheckPointSelected(tagTAVRIN_POINT& p) override;
    /// Records the view size, draws the polygon, refreshes the stored vertices from it,
    /// then draws the width text and the height text beside their edges.
    void Draw(void* context, int width, int height, bool flag) override;
    void SetSelPointIndex(unsigned int index) override;
    unsigned int GetSelPointIndex() override;
    /// Stores the flag in the object and in the polygon (an open polygon has no closing
    /// edge).
    void SetClosed(bool closed) override;
    /// The polygon's flag, copied into the object's own.
    bool GetClosed() override;
    ~ItsCali() override;

    /// Stores `count` vertices (the rest zeroed) and gives them to the polygon. False,
    /// changing nothing, for a null array, a count of 11 or more or a non-finite
    /// coordinate.
    virtual bool SetPoints(tagTAVRIN_POINT* points, unsigned int count);
    /// Refreshes the stored copy from the polygon and writes it: 10 entries zeroed (room
    /// for 10 is required), then the vertices and their count. False for a null pointer.
    virtual bool GetPoints(tagTAVRIN_POINT* points, unsigned int* count);
    /// Replaces the width text with the first min(16, strlen(text)) characters of `text`;
    /// `length` only guards against 0. False, keeping the old text, for a null text or a
    /// length of 0.
    virtual bool SetWidthLabelText(char* text, unsigned int length);
    /// The same for the height text.
    virtual bool SetHeightlabelText(char* text, unsigned int length);

    /// Index of the vertex with the smallest y (topmost), the first of equal minima; 0
    /// also for a null array or a count of 0.
    unsigned int GetMinYPoint(tagTAVRIN_POINT* points, unsigned int count);

protected:
    ItsCali();

    tagTAVRIN_POINT m_points[10];
    unsigned int m_pointCount;
    Polygon m_polygon;
    char m_widthText[17];
    char m_heightText[17];

private:
    friend ItsCali* newInstanceOf<ItsCali>() noexcept;

    /// Refreshes the stored vertices and count from the polygon.
    bool readPolygon();
};

}  // namespace Tavrin

#endif  // TAVRIN_ITSCALI_H
