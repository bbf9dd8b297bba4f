#ifndef TAVRIN_VCAOBJECT_H
#define TAVRIN_VCAOBJECT_H

#include <Tavrin/KemoMutex.h>
#include <Tavrin/TavrinTypes.h>

namespace Tavrin {

/// Abstract base of every analytics rule and calibration object.
///
/// An object is created on the heap by its class's static `NewInstance()` with a
/// reference count of 1, which belongs to the creator, and deletes itself when
/// `ReleaseRef` brings the count below 1. Every concrete class declares `SetPoints` and
/// `GetPoints` first among its own operations; vertices are normalised picture
/// coordinates. Drawing and editing belong to the host's GUI thread; only the reference
/// count is locked here.
class TAVRIN_API VcaObject {
public:
    virtual bool IsNull() = 0;
    virtual tagTAVRIN_OBJ_STATUS GetObjStatus() = 0;
    /// 0 normal, 1 selected with vertex handles, 2 highlighted without handles.
    virtual void SetObjStatus(tagTAVRIN_OBJ_STATUS status) = 0;
    /// Drags the whole figure by (to - from); a drag that would take any vertex out of
    /// the picture is ignored whole. Read the result back with `GetPoints`.
    virtual void Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) = 0;
    /// Drags the active vertex (see `SetSelPointIndex`) by (to - from).
    virtual void MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) = 0;
    /// True when the figure itself lies under the cursor `p`.
    virtual bool CheckSelected(tagTAVRIN_POINT& p) = 0;
    /// 1-based index of the vertex under the cursor, 0 for none; stores nothing.
    virtual unsigned int CheckPointSelected(tagTAVRIN_POINT& p) = 0;
    /// Emits the figure into the current OpenGL context for a view of width x height
    /// pixels. `context` and `flag` are not used.
    virtual void Draw(void* context, int width, int height, bool flag) = 0;
    /// Copies min(length, 16) raw bytes of `text` as the label; false, keeping the old
    /// label, for a null text or a length of 0.
    virtual bool SetLabelText(char* text, unsigned int length);
    /// Zeroes `size` bytes of `buffer` and copies min(strlen(label), size) bytes into it,
    /// so a label as long as the buffer is not terminated. False for a null buffer or a
    /// size of 0.
    virtual bool GetLabelText(char* buffer, unsigned int size);
    /// Makes vertex `index` (1-based, 0 = none) the one `MovePoint` drags.
    virtual void SetSelPointIndex(unsigned int index) = 0;
    virtual unsigned int GetSelPointIndex() = 0;
    /// Stores the view size in pixels.
    virtual void SetWndSize(int width, int height);
    virtual void SetClosed(bool closed);
    virtual bool GetClosed();
    /// The label box for `anchor`: 0.08 x 0.04 beside it, shifted left when the anchor's
    /// x is 0.9 or more, raised when its y is 0.9 or more (right edge first).
    virtual void GetDrawLabelRect(tagTAVRIN_POINT& anchor, tagTAVRIN_VCA_RECT& rect);
    virtual void SetIsTraversePlane(bool on);
    /// People-counting mode: does nothing here.
    virtual void SetVcaPDCLineOrRect(bool lineMode);
    /// People-counting line calibration: does nothing here.
    virtual void SetVcaPDCLineCali(bool on);
    /// Stores nothing here; true when `points` is not null.
    virtual bool SetPDCCaliPoint(tagTAVRIN_POINT* points, unsigned int count);
    /// Writes nothing here; true when both pointers are not null.
    virtual bool GetPDCCaliPoint(tagTAVRIN_POINT* points, unsigned int* count);
    /// Changes nothing here; true.
    virtual bool MoveCaliPoints(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to);
    /// Changes nothing here; returns 1, a non-zero hit index.
    virtual unsigned int CheckCaliPointSelected(tagTAVRIN_POINT& p);
    /// Does nothing here.
    virtual void SetSizeFilterType(tagTAVRIN_SIZE_FILTER_TYPE type);
    virtual ~VcaObject();

    /// Takes one reference (locked).
    void AddRef();
    /// Drops one reference (locked) and deletes the object when the count it left is
    /// below 1. Do not touch the object after the call that drops the last reference.
    void ReleaseRef();

protected:
    VcaObject();
    VcaObject(const VcaObject&) = delete;
    VcaObject& operator=(const VcaObject&) = delete;

    int m_refCount;
    KemoMutex m_mutex;
    char m_labelText[17];
    int m_wndWidth;
    int m_wndHeight;
    bool m_closed;
    bool m_isTraversePlane;
};

}  // namespace Tavrin

#endif  // TAVRIN_VCAOBJECT_H
