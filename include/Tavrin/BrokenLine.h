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
/// every vertex is marked; otherwise only the inner vertices.
class TAVRIN_API BrokenLine : public GraphMeta {
public:
    BrokenLine();
    /// Takes the vertices when `points` is not null and `count` is below 11; the
    /// segments receive them only at the next edit.
    BrokenLine(tagTAVRIN_POINT* points, unsigned int count);
    BrokenLine(const BrokenLine& other) = default;
    ~BrokenLine() override;

    /// True when all ten vertex slots are (0, 0), whatever the count.
    bool IsNull() override;
    void Draw(void* context, int width, int height, bool flag) override;

    /// Clears, then takes up to 10 vertices and refreshes the segments; a refused call
    /// (null array, 11 or more, non-finite) leaves the broken line empty.
    virtual bool SetPoints(tagTAVRIN_POINT* points, unsigned int count);
    virtual bool GetPoints(tagTAVRIN_POINT* points, unsigned int* count);
    virtual void Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to);
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
