#ifndef TAVRIN_LINE_H
#define TAVRIN_LINE_H

#include <Tavrin/GraphMeta.h>
#include <Tavrin/Point.h>

namespace Tavrin {

/// A segment between two normalised end points: tripwire, traffic line, lane border,
/// calibration ruler or people-counting line.
///
/// Besides its end points it carries a line type (plain or the arrow-bar figure), a
/// crossing direction with two arrow points, the traverse-plane look, and the
/// people-counting calibration data. End points are numbered 1 and 2 for selection.
/// Segments are hit-tested in view pixels; end points within 0.02 (normalised).
///
/// Without a view (a width or height of 0 or less) nothing sized in pixels exists: the
/// segment hit tests miss, and drawing skips the arrow-bar figure, the traverse plane,
/// the direction arrow and the calibration figures, while the plain segment and the end
/// point markers are still drawn. A zero-length line has no direction: it draws no
/// arrow-bar figure. Points that do not map to a finite GL vertex are never emitted.
class TAVRIN_API Line : public GraphMeta {
public:
    Line();
    /// Takes two points when `points` is not null, `count` is at most 2 and both are
    /// finite; otherwise the line stays at (0, 0), (0, 0).
    Line(tagTAVRIN_POINT* points, unsigned int count);
    Line(const Line& other) = default;
    ~Line() override;

    /// True when both end points are (0, 0).
    bool IsNull() override;
    /// Stores the view size; draws the traverse plane when that flag is set, otherwise
    /// the line.
    void Draw(void* context, int width, int height, bool flag) override;

    /// Copies exactly two points, whatever the count; false for a null array, a count
    /// above 2 or a non-finite coordinate.
    virtual bool SetPoints(tagTAVRIN_POINT* points, unsigned int count);
    /// Writes the two end points and a count of 2.
    virtual bool GetPoints(tagTAVRIN_POINT* points, unsigned int* count);
    /// Drags both end points (and the arrow points, not held to the picture) by
    /// (to - from); ignored whole when an end point would leave the picture, the drag is
    /// not finite, or an arrow point would get an infinite coordinate.
    virtual void Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to);
    /// Drags the selected end point (index 1 or 2; any other index does nothing); ignored
    /// when it would leave the picture or the drag is not finite. Afterwards a
    /// calibration segment longer than the line by more than 0.001 is reset to the end
    /// points, leftmost first.
    virtual void MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to);
    /// False when null; otherwise the segment hit test.
    virtual bool CheckSelected(Point& p);
    /// 0 none, 1 p1, 2 p2 (tested after p1, so it wins when both are near).
    virtual unsigned int CheckPointSelected(tagTAVRIN_POINT& p);
    virtual void SetLineType(tagTAVRIN_LINE_TYPE type);
    virtual tagTAVRIN_LINE_TYPE GetLineType();
    /// Whether a selected line draws its end points as vertex markers.
    virtual void SetShowPoint(bool show);
    /// Copies only the two end points of `other` (read through its GetPoints).
    virtual void operator=(Line& other);

    /// Segment hit test in view pixels: the pixel box with an 8-pixel margin on p2's
    /// side, then |d1 + d2 - d3| at most one pixel. False without a view.
    bool IsNearPoint(Point& p);
    Point p1() const;
    Point p2() const;
    /// Copy the point's coordinates into the end point; a non-finite point is ignored.
    void setP1(Point p);
    void setP2(Point p);
    void SetArrowDirection(TAVRIN_ARROW_TYPE direction);
    TAVRIN_ARROW_TYPE GetArrowDirection();
    void SetIsTraversePlane(bool on);
    void SetVcaPDCLineCali(bool on);
    void SetVcaPDCLineOrRect(bool lineMode);
    void SetVcaPDCCaliShoulderLine(bool on);
    /// Stores the two arrow points; false (nothing stored) when one is not finite.
    bool SetArrowPoints(tagTAVRIN_POINT& start, tagTAVRIN_POINT& end);
    bool GetArrowPoints(tagTAVRIN_POINT* start, tagTAVRIN_POINT* end);
    /// Euclidean distance in normalised units, single precision.
    float GetPointLength(tagTAVRIN_POINT& a, tagTAVRIN_POINT& b);

    // Drawing. Each emits into the current OpenGL context; only DrawByOpenGL and
    // DrawForTraversePlane enter and leave the render state themselves.

    /// The line in its look: the plain segment (type 0) or the arrow-bar figure (type 1)
    /// at a fixed width of 2 (4 in people-counting line mode), the people-counting
    /// figures in status 1, then the end-point markers.
    void DrawByOpenGL(void* context);
    void DrawByGdi(void* context);
    /// The arrow-bar figure from a to b: outline, "A"/"B" marks and translucent fill
    /// (those two not in status 0 or 2; marks only for directions 0, 1 and 2). Draws
    /// nothing without a view or when a and b coincide (no direction).
    void DrawArrowByOpenGL(void* context, tagTAVRIN_POINT& a, tagTAVRIN_POINT& b);
    /// The arrow-bar outline in the line's local frame (x along the line from 0 to
    /// `length`); `count` is the buffer's capacity in and the points written out (18, 11
    /// or 4). Writes nothing, count kept, for a null buffer, a capacity below the need,
    /// a non-finite length or no view.
    void GetArrowPoint(float length, tagTAVRIN_POINT* points, int& count, tagTAVRIN_POINT& markA,
                       tagTAVRIN_POINT& markB);
    /// Re-anchors the arrow points at the line's middle, across it, length 0.1, on the
    /// side they pointed to (the negative side when they lay on the line), and draws the
    /// people-counting block arrow. Without a view the arrow points are kept and nothing
    /// is drawn.
    void DrawDirectionArrow();
    /// The eight corners of the block arrow from a to b (normalised, tail first, tip at
    /// 4) into `out`; draws nothing. `out` is left untouched when it is null, without a
    /// view, or when a and b fall on the same pixel.
    void DrawArrow(tagTAVRIN_POINT& a, tagTAVRIN_POINT& b, tagTAVRIN_POINT* out);
    /// The traverse-plane look: a 3-pixel plane with block arrows and side marks, then
    /// the end-point markers. Coincident end points draw like a horizontal line. Without
    /// a view only the state calls and markers remain.
    void DrawForTraversePlane(void* context);

    // People-counting calibration.

    /// Copies two points (whatever the count) into the calibration segment; false for a
    /// null array, a count above 2 or a non-finite point.
    bool SetPDCCaliPoints(tagTAVRIN_POINT* points, unsigned int count);
    /// Writes the calibration segment and a count of 2; false for a null pointer.
    bool GetPDCCaliPoints(tagTAVRIN_POINT* points, unsigned int* count);
    /// Copies sixteen target-width values (normalised lengths along the line); false
    /// (nothing copied) for a null array or a non-finite value.
    bool SetTargetWidthLine(float* values);
    void SetSelCaliPointIndex(unsigned int index);
    /// Lays the segment in[0]-in[1] on the line, measured in pixels: the whole line when
    /// longer, p1 twice when both are (0, 0), otherwise its length from the left end
    /// point. `out` is left untouched for a null pointer, a non-finite input or no view;
    /// coincident end points give the left end point twice.
    void GetCaliPoints(tagTAVRIN_POINT* in, tagTAVRIN_POINT* out);
    /// The calibration line across the line through at[0] (at[1] is read too: nothing
    /// is written when both are (0, 0)). Untouched for a null pointer or no view.
    void GetDrawCaliLine(tagTAVRIN_POINT* at, tagTAVRIN_LINE* out);
    /// The non-zero target-width values as cyan lines parallel to the line, 0.02 to 0.16
    /// away: 0..7 away from the direction arrow, 8..15 on its side. Nothing without a
    /// view.
    void DrawTargetWidthLine();
    /// The segment hit test applied to the calibration line.
    bool IsNearCaliPoint(Point& p);
    /// 0, or the index (1 or 2) of the right calibration point when the cursor is on
    /// the calibration line; always 0 without line calibration or a calibration line.
    unsigned int CheckCaliPointSelected(tagTAVRIN_POINT& p);
    /// Drags the selected calibration point along the line by the difference of the
    /// cursor's projections. False when nothing moved (index not 1 or 2, a point that
    /// would leave the picture, a non-finite drag) and when the segment had to be reset
    /// to the whole line.
    bool MoveCaliPoints(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to);

protected:
    /// Resets the calibration segment to the end points, leftmost first, when it is
    /// longer than the line by more than 0.001 (normalised).
    void keepCaliSegmentOnLine();
    /// In status 1 with the show-point flag: a handle on each end point, active for the
    /// selected one.
    void drawEndPointMarkers();
    /// The translucent fill of an arrow-bar outline, only when it splits completely.
    void fillArrowBar(const tagTAVRIN_POINT* outline, int count);
    /// The plane, its block arrows and marks, inside the traverse-plane render state.
    void drawTraversePlaneFigure();
    /// Calibration line, shoulder line and target-width lines (people-counting look).
    void drawCalibration();
    /// The marker on the right calibration point.
    void drawCaliPointMarker(void* context);

    tagTAVRIN_POINT m_points[2];
    tagTAVRIN_LINE_TYPE m_lineType;
    TAVRIN_ARROW_TYPE m_arrowType;
    tagTAVRIN_POINT m_arrowPoints[2];
    tagTAVRIN_POINT m_caliPoints[10];
    float m_targetWidthLine[16];
    tagTAVRIN_POINT m_caliLine[2];
    bool m_showPoint;
    bool m_isTraversePlane;
    bool m_pdcLineCali;
    bool m_pdcLineOrRect;
    bool m_pdcCaliShoulderLine;
    unsigned int m_selCaliPointIndex;

private:
    FillCut m_fillCut;
};

}  // namespace Tavrin

#endif  // TAVRIN_LINE_H
