#ifndef TAVRIN_POLYGON_H
#define TAVRIN_POLYGON_H

#include <Tavrin/GraphMeta.h>
#include <Tavrin/Point.h>

namespace Tavrin {

/// A region of up to 20 vertices, closed or open.
///
/// Hit tests: a vertex is under the cursor when it lies strictly closer than 0.02 (the
/// lowest index wins); the inside test is an even-odd ray cast to the right with
/// half-open edges. Drags never take a vertex out of the picture (see
/// `SetSuptPolygonMoveRightOut` for the one exception). Drawing: outline, an optional
/// translucent (alpha 40) or opaque fill when the polygon triangulates into n - 2
/// triangles, and vertex handles in status 1.
class TAVRIN_API Polygon : public GraphMeta {
public:
    Polygon();
    /// Takes the vertices when `points` is not null, `count` is at most 20 and every
    /// coordinate is finite; otherwise the polygon starts empty.
    Polygon(tagTAVRIN_POINT* points, unsigned int count);
    Polygon(const Polygon& other) = default;
    ~Polygon() override;

    /// True when every vertex is (0, 0); an empty polygon is null.
    bool IsNull() override;
    /// Stores the view size and draws when there is at least one vertex.
    void Draw(void* context, int width, int height, bool flag) override;

    /// Replaces the vertices (unused entries zeroed); false, changing nothing, for a
    /// null array, a count above 20 or a non-finite coordinate. No validity check.
    virtual bool SetPoints(tagTAVRIN_POINT* points, unsigned int count);
    /// Writes the count and that many vertices (the buffer must hold 20).
    virtual bool GetPoints(tagTAVRIN_POINT* points, unsigned int* count);
    /// Drags every vertex by (to - from); false, moving nothing, when a vertex would
    /// leave the picture or the drag is not finite. With the right-out option every
    /// vertex but the first may pass the right edge, and the first must stay at least
    /// 0.02 inside it. An empty polygon moves (true).
    virtual bool Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to);
    /// Drags the selected vertex by (to - from) when it stays inside the picture and the
    /// drag is finite; the right-out option does not apply. No crossing check.
    virtual void MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to);
    /// False when null; otherwise the inside test.
    virtual bool CheckSelected(Point& p);
    /// 1-based index of the first vertex strictly closer than 0.02 to `p`, or 0.
    virtual unsigned int CheckPointSelected(tagTAVRIN_POINT& p);
    /// Copies only the vertices and count of `other` (read through its GetPoints);
    /// colours, status, flags and view size stay.
    virtual void operator=(Polygon& other);

    /// Even-odd inside test; the closing edge is always included.
    bool IsNearPoint(Point& p);

    void DrawByOpenGL(void* context);
    void DrawByGdi(void* context);

protected:
    /// Clears the whole store, then takes `count` (at most 20) vertices.
    void storeVertices(const tagTAVRIN_POINT* points, unsigned int count);

    unsigned int m_pointCount;
    tagTAVRIN_POINT m_points[20];

private:
    /// Whether vertex `index` may go to (nx, ny) in a whole-polygon drag.
    bool vertexMayMoveTo(unsigned int index, float nx, float ny) const;
    /// Sets the fill colour and fills when a fill flag is on and the polygon cuts into
    /// n - 2 triangles.
    void drawFill(unsigned int color);

    FillCut m_fillCut;
};

}  // namespace Tavrin

#endif  // TAVRIN_POLYGON_H
