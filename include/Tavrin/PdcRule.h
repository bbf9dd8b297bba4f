#ifndef TAVRIN_PDCRULE_H
#define TAVRIN_PDCRULE_H

#include <Tavrin/Arrow.h>
#include <Tavrin/Label.h>
#include <Tavrin/Line.h>
#include <Tavrin/Point.h>
#include <Tavrin/Polygon.h>
#include <Tavrin/VcaObject.h>

namespace Tavrin {

template <class T>
T* newInstanceOf() noexcept;

/// The people-counting rule, in one of two modes chosen by `SetVcaPDCLineOrRect`.
///
/// Line mode: the figure is a `Line` that also carries the calibration segment, the
/// shoulder line and the target-width lines. Area mode (the default): the figure is a
/// `Polygon` with a separate block `Arrow` for the counting direction. In both modes a
/// single marker point may be shown with its own text (`SetText`) in a box beside it.
/// Each mode keeps its own vertices, status and selection. Colours are fixed: 0x285ea6,
/// turning 0xd90db0 when selected or highlighted.
class TAVRIN_API PdcRule : public VcaObject {
public:
    /// A new rule in area mode with a reference count of 1; null when allocation fails.
    static PdcRule* NewInstance();

    /// Area mode: the polygon's `IsNull`. Line mode: true only when both the line and
    /// the single point are (0, 0).
    bool IsNull() override;
    /// The figure's status.
    tagTAVRIN_OBJ_STATUS GetObjStatus() override;
    /// Sets the figure's status and the arrow's (in both modes); the single point and its
    /// text are not touched.
    void SetObjStatus(tagTAVRIN_OBJ_STATUS status) override;
    /// Line mode: drags the line, then the arrow, each on its own terms. Area mode:
    /// drags the polygon and, only when it accepts, the arrow. The single point stays.
    void Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) override;
    /// Drags the figure's selected vertex by (to - from).
    void MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) override;
    /// The figure's hit test: segment test (line) or inside test (polygon).
    bool CheckSelected(tagTAVRIN_POINT& p) override;
    /// The figure's 1-based vertex within 0.02 of `p`, 0 for none.
    unsigned int CheckPointSelected(tagTAVRIN_POINT& p) override;
    /// Records the view size and draws: in line mode the line as a plain segment (with
    /// its calibration figures; nothing while it is null), in area mode the polygon and
    /// the arrow; then the single point in the highlighted look (status 2, whatever the
    /// rule's status) when it is set; then its text at the clamped box corner.
    void Draw(void* context, int width, int height, bool flag) override;
    /// The figure's selected vertex (1-based, 0 = none).
    void SetSelPointIndex(unsigned int index) override;
    unsigned int GetSelPointIndex() override;
    /// Stores the flag in the object and in the figure.
    void SetClosed(bool closed) override;
    /// The figure's closed flag (copied into the object's).
    bool GetClosed() override;
    /// True for line mode, false for area mode; also handed to the line. Nothing is
    /// copied between the modes.
    void SetVcaPDCLineOrRect(bool lineMode) override;
    /// Enables the line's calibration segment (either mode; drawn in line mode only).
    void SetVcaPDCLineCali(bool on) override;
    /// Gives the line exactly two calibration points from `points` (the array must hold
    /// two, whatever `count` says); false for a null array or a non-finite point.
    bool SetPDCCaliPoint(tagTAVRIN_POINT* points, unsigned int count) override;
    /// Writes the two calibration points and a count of 2; false, writing nothing, for a
    /// null pointer.
    bool GetPDCCaliPoint(tagTAVRIN_POINT* points, unsigned int* count) override;
    /// Drags the selected calibration point along the line; false when refused or when
    /// the segment had to be reset to the whole line.
    bool MoveCaliPoints(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) override;
    /// 0 none, otherwise the index (1 or 2) of the right calibration point when the
    /// cursor is on the calibration line; 0 while line calibration is off.
    unsigned int CheckCaliPointSelected(tagTAVRIN_POINT& p) override;
    ~PdcRule() override;

    /// Gives the figure up to 10 vertices (a line takes two, refusing 3 or more); false,
    /// changing nothing, for a null array, 11 or more vertices or a non-finite coordinate.
    /// In line mode the array must hold two points even for a smaller count.
    virtual bool SetPoints(tagTAVRIN_POINT* points, unsigned int count);
    /// Writes the figure's count and vertices straight into `points` (room for 10);
    /// false for a null pointer.
    virtual bool GetPoints(tagTAVRIN_POINT* points, unsigned int* count);
    /// Area mode: the arrow from `from` (tail) to `to` (tip). Line mode: the line's arrow
    /// points, which its drawing re-anchors at the line's middle. False for a non-finite
    /// point in area mode.
    virtual bool SetArrowPoints(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to);
    /// Writes the current mode's arrow tail and tip; false, writing nothing, for a null
    /// pointer.
    virtual bool GetArrowPoints(tagTAVRIN_POINT* from, tagTAVRIN_POINT* to);
    /// Also draw the calibration segment itself (the shoulder line), in line mode.
    virtual void SetVcaPDCCaliShoulderLine(bool on);
    /// Selects the calibration point that `MoveCaliPoints` drags (1 left, 2 right).
    virtual void SetSelCaliPointIndex(unsigned int index);
    /// Copies sixteen target-width values (normalised lengths along the line; 0 draws
    /// none) from `values`; false for a null pointer.
    virtual bool SetTargetWidthLine(float* values);
    /// Takes the first entry of `points` as the single point, whatever `count` says;
    /// false for a null array or a non-finite point.
    virtual bool SetSinglePoints(tagTAVRIN_POINT* points, unsigned int count);
    /// Writes the single point and a count of 1; false for a null pointer.
    virtual bool GetSinglePoints(tagTAVRIN_POINT* points, unsigned int* count);
    /// The text shown beside the single point (at most 127 bytes; separate from the label
    /// text, which this rule never draws); false, keeping the old text, for a null or
    /// longer text.
    virtual bool SetText(char* text);

protected:
    PdcRule();

private:
    friend PdcRule* newInstanceOf<PdcRule>() noexcept;
    // The library's editing functions read the mode; no layout or table change.
    friend struct EditingAccess;

    /// The line in line mode, the polygon in area mode, as their common base.
    GraphMeta& figure();
    /// The single point in the highlighted look (when set) and its text box.
    void drawSinglePoint(void* context, int width, int height);

    Arrow m_arrow;
    Line m_line;
    Polygon m_polygon;
    Point m_singlePoint;
    Label m_textLabel;
    bool m_lineMode;
};

}  // namespace Tavrin

#endif  // TAVRIN_PDCRULE_H
