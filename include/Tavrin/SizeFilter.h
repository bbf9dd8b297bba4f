#ifndef TAVRIN_SIZEFILTER_H
#define TAVRIN_SIZEFILTER_H

#include <Tavrin/Rectangle.h>
#include <Tavrin/Square.h>
#include <Tavrin/VcaObject.h>

namespace Tavrin {

template <class T>
T* newInstanceOf() noexcept;

/// A target-size filter box: a rectangle (filter type 0) or a square with equal sides
/// in view pixels (any other type), outlined without fill and labelled with the label
/// text beside its first corner.
///
/// Both shapes keep their own vertices; whole drags move both. `SetPoints`,
/// `GetPoints`, `SetDiagonal`, `Move` and `MovePoint` hold the object's mutex for their
/// whole run, so they may be called from several threads; drawing, hit tests, status,
/// selection and `SetWndSize` take no lock.
class TAVRIN_API SizeFilter : public VcaObject {
public:
    /// A new rectangle filter with a reference count of 1; null when allocation fails.
    static SizeFilter* NewInstance();

    /// The active shape's `IsNull`.
    bool IsNull() override;
    /// The active shape's status.
    tagTAVRIN_OBJ_STATUS GetObjStatus() override;
    /// Sets the status of both shapes.
    void SetObjStatus(tagTAVRIN_OBJ_STATUS status) override;
    /// Locked: drags both shapes by (to - from), each refusing on its own terms (a vertex
    /// leaving the picture, a non-finite drag).
    void Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) override;
    /// Locked: drags the selected corner of both shapes, each with its own selection; the
    /// rectangle keeps its sides axis-parallel, the square re-places the corner at `to`.
    void MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) override;
    /// The active shape's inside test at `p`.
    bool CheckSelected(tagTAVRIN_POINT& p) override;
    /// The active shape's 1-based corner within 0.02 of `p`, 0 for none.
    unsigned int CheckPointSelected(tagTAVRIN_POINT& p) override;
    /// Records the view size and draws the active shape unfilled in the colour scheme's
    /// colours (scheme 1 or 2 also widens the rectangle, never the square, to 4 pixels
    /// for good), then the label text beside its first corner.
    void Draw(void* context, int width, int height, bool flag) override;
    /// The active shape's selected corner (1-based, 0 = none).
    void SetSelPointIndex(unsigned int index) override;
    unsigned int GetSelPointIndex() override;
    /// Stores the view size in the object and in the active shape only: call it again
    /// after changing the filter type.
    void SetWndSize(int width, int height) override;
    /// 0 selects the rectangle, any other value the square; nothing moves between them.
    void SetSizeFilterType(tagTAVRIN_SIZE_FILTER_TYPE type) override;
    ~SizeFilter() override;

    /// Locked: gives the active shape up to 4 vertices; false, changing nothing, for a
    /// null array, 5 or more vertices or a non-finite coordinate. No copy is kept.
    virtual bool SetPoints(tagTAVRIN_POINT* points, unsigned int count);
    /// Locked: writes the active shape's count and vertices (nothing else of the buffer
    /// is touched); false for a null pointer.
    virtual bool GetPoints(tagTAVRIN_POINT* points, unsigned int* count);
    /// Locked: builds the active shape from the diagonal a-b. The square needs a view
    /// size (set it first with `SetWndSize`); false for non-finite corners.
    virtual bool SetDiagonal(tagTAVRIN_POINT& a, tagTAVRIN_POINT& b);
    virtual tagTAVRIN_SIZE_FILTER_TYPE GetSizeFilterType();
    /// The colour scheme for the next `Draw`: 1 yellow turning green when selected, 2 red
    /// in every status, anything else yellow in every status.
    virtual void SetColor(int scheme);

protected:
    SizeFilter();

private:
    friend SizeFilter* newInstanceOf<SizeFilter>() noexcept;

    bool isSquare() const { return m_filterType != TAVRIN_SIZE_FILTER_RECT; }
    /// The shape the filter type selects, as a rectangle.
    Rectangle& activeShape();
    /// Forces the colour scheme's colours (and the rectangle's width) onto the shape.
    void applyColorScheme(Rectangle& shape);

    Rectangle m_rectangle;
    Square m_square;
    tagTAVRIN_SIZE_FILTER_TYPE m_filterType;
    int m_colorScheme;
};

}  // namespace Tavrin

#endif  // TAVRIN_SIZEFILTER_H
