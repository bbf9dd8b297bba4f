#ifndef TAVRIN_VCARULE_H
#define TAVRIN_VCARULE_H

#include <Tavrin/BrokenLine.h>
#include <Tavrin/Line.h>
#include <Tavrin/Polygon.h>
#include <Tavrin/VcaObject.h>

namespace Tavrin {

template <class T>
T* newInstanceOf() noexcept;

/// The generic analytics rule: by its rule type a polygon area (0, and every value
/// other than 1 and 2), a tripwire line (1) or a broken line (2).
///
/// The rule owns one primitive of each kind and treats only the one its type selects as
/// the figure: every edit, hit test and draw goes to that one; the other two keep what
/// they last held. The rule keeps its own copy of up to 10 vertices, which a change of
/// rule type pushes into the newly selected primitive. No label is drawn.
class TAVRIN_API VcaRule : public VcaObject {
public:
    /// A new rule (polygon type) with a reference count of 1; null when allocation fails.
    static VcaRule* NewInstance();

    /// The active primitive's `IsNull`.
    bool IsNull() override;
    /// The active primitive's status; each primitive keeps its own.
    tagTAVRIN_OBJ_STATUS GetObjStatus() override;
    /// Sets the active primitive's status only; it is not carried over by `SetRuleType`.
    void SetObjStatus(tagTAVRIN_OBJ_STATUS status) override;
    /// Drags the active primitive whole by (to - from); ignored whole when a vertex would
    /// leave the picture or the drag is not finite.
    void Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) override;
    /// Drags the active primitive's selected vertex by (to - from).
    void MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) override;
    /// The active primitive's hit test at `p`: inside test for a polygon, segment test in
    /// view pixels for a line, closed-figure segment test for a broken line.
    bool CheckSelected(tagTAVRIN_POINT& p) override;
    /// The active primitive's 1-based vertex under `p` (within 0.02), 0 for none.
    unsigned int CheckPointSelected(tagTAVRIN_POINT& p) override;
    /// Records the view size and draws the active primitive (always with flag true):
    /// line and polygon in the `SetColors` colours, the broken line in 0x285ea6/0xd90db0
    /// whatever was set. The broken line receives the traverse-plane flag only after it
    /// has been drawn, so a change shows from the following `Draw` on.
    void Draw(void* context, int width, int height, bool flag) override;
    /// The active primitive's selected vertex (1-based, 0 = none).
    void SetSelPointIndex(unsigned int index) override;
    unsigned int GetSelPointIndex() override;
    /// Stores the flag in the object and in the active primitive.
    void SetClosed(bool closed) override;
    /// The active primitive's closed flag (copied into the object's).
    bool GetClosed() override;
    /// Stores the traverse-plane flag for the broken line; touches no primitive at once.
    void SetIsTraversePlane(bool on) override;
    ~VcaRule() override;

    /// Stores up to 10 vertices in the rule's copy and passes them to the active
    /// primitive, returning its answer (the copy is kept even when it refuses: a line
    /// takes at most 2). False, changing nothing, for a null array, 11 or more vertices
    /// or a non-finite coordinate.
    virtual bool SetPoints(tagTAVRIN_POINT* points, unsigned int count);
    /// Refreshes the copy from the active primitive and writes all 10 entries of it to
    /// `points` (the buffer must hold 10) and the active count; false, writing nothing,
    /// for a null pointer.
    virtual bool GetPoints(tagTAVRIN_POINT* points, unsigned int* count);
    /// The normal and selected 0xRRGGBB colours of the line and polygon (initially
    /// 0x285ea6 and 0xd90db0); applied at the next `Draw`, never to the broken line.
    virtual void SetColors(unsigned int normal, unsigned int selected);
    /// The line type handed to the line before each draw (initially 1, the arrow bar).
    virtual void SetLineType(tagTAVRIN_LINE_TYPE type);

    /// Switches the figure: pushes the stored vertices into the primitive of `type` and
    /// keeps the old type, silently, when that primitive refuses them (a line refuses 3
    /// or more). Setting the current type again moves nothing.
    void SetRuleType(tagTAVRIN_RULE_TYPE type);
    tagTAVRIN_RULE_TYPE GetRuleType();
    /// Stores the direction and gives it to the line when the type is 1, otherwise to
    /// the broken line (also while the rule is a polygon, deliberately).
    void SetArrowDirection(TAVRIN_ARROW_TYPE direction);
    TAVRIN_ARROW_TYPE GetArrowDirection();

protected:
    VcaRule();

private:
    friend VcaRule* newInstanceOf<VcaRule>() noexcept;

    static constexpr unsigned int kMaxVertices = 10;

    bool isLine() const { return m_ruleType == TAVRIN_RULE_LINE; }
    bool isBrokenLine() const { return m_ruleType == TAVRIN_RULE_BROKEN_LINE; }
    /// The primitive the current rule type selects, as its common base.
    GraphMeta& activeFigure();
    /// Calls `f` with the primitive the current rule type selects, as its own class.
    template <class F>
    decltype(auto) withActiveFigure(F&& f);

    tagTAVRIN_RULE_TYPE m_ruleType;
    TAVRIN_ARROW_TYPE m_arrowDirection;
    Line m_line;
    BrokenLine m_brokenLine;
    Polygon m_polygon;
    bool m_traversePlane;
    tagTAVRIN_POINT m_points[kMaxVertices];
    unsigned int m_pointCount;
    unsigned int m_normalColor;
    unsigned int m_selectedColor;
    tagTAVRIN_LINE_TYPE m_lineType;
};

}  // namespace Tavrin

#endif  // TAVRIN_VCARULE_H
