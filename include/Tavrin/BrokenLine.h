#ifndef TAVRIN_BROKENLINE_H
#define TAVRIN_BROKENLINE_H

#include <Tavrin/GraphMeta.h>
#include <Tavrin/Line.h>
#include <Tavrin/Point.h>

namespace Tavrin {

/// A polyline of up to 10 vertices; each of its nine segments is a `Line` drawn as the
/// arrow-bar figure with the broken line's crossing direction.
///
/// Hit-tested as if closed (the last vertex joined back to the first). In status 1
/// every vertex is marked; otherwise only the inner vertices. With no vertex nothing is
/// drawn.
class TAVRIN_API BrokenLine : public GraphMeta {
public:
    BrokenLine();
    /// Takes the vertices when `points` is not null, `count` is below 11 and they are
    /// finite; the segments receive them only at the next edit.
    BrokenLine(tagTAVRIN_POINT* points, unsigned int count);
    BrokenLine(const BrokenLine& other) = default;
    ~BrokenLine() override;

    /// True when all ten vertex slots are (0, 0), whatever the count.
    bool IsNull() override;
    void Draw(void* context, int width, int height, bool flag) override;

    /// Clears, then takes up to 10 vertices and refreshes the segments; a refused call
    /// (null array, 11 or more, non-finite) leaves the broken line empty.
    virtual bool SetPoints(tagTAVRIN_POINT* points, unsigned int count);
    /// Writes the count and that many vertices; false for a null pointer.
    virtual bool GetPoints(tagTAVRIN_POINT* points, unsigned int* count);
    /// Drags every vertex; ignored whole when one would leave the picture or the drag is
    /// not finite.
    virtual void Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to);
    /// Drags the selected vertex (1-based; 0 or past the count does nothing); ignored
    /// when it would leave the picture or the drag is not finite.
    virtual void MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to);
    /// The closed-figure segment hit test (no null check first).
    virtual bool CheckSelected(Point& p);
    /// 1-based index of the first vertex strictly closer than 0.02, or 0.
    virtual unsigned int CheckPointSelected(tagTAVRIN_POINT& p);

    bool IsNearPoint(Point& p);
    void SetArrowDirection(TAVRIN_ARROW_TYPE direction);
    TAVRIN_ARROW_TYPE GetArrowDirection();
    void SetIsTraversePlane(bool on);

    void DrawByOpenGL(void* context);
    void DrawByGdi(void* context);

protected:
    /// Gives segment i vertices i and i + 1, for every segment the count reaches; false
    /// at the first segment that refuses.
    bool refreshSegments();
    /// Draws segment `index` as the arrow-bar figure with this broken line's direction,
    /// colours and traverse-plane flag, in `status`.
    void drawSegment(unsigned int index, tagTAVRIN_OBJ_STATUS status);
    /// Draws vertex `index` as a point marker in `status` with this broken line's colours.
    void drawVertexMarker(unsigned int index, tagTAVRIN_OBJ_STATUS status);

    struct Polyline {
        unsigned int count;
        tagTAVRIN_POINT points[20];
    };

    Polyline m_polyline;
    Line m_segments[9];
    TAVRIN_ARROW_TYPE m_arrowType;
    bool m_isTraversePlane;
};

}  // namespace Tavrin

#endif  // TAVRIN_BROKENLINE_H
