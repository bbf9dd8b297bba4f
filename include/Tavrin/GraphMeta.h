#ifndef TAVRIN_GRAPHMETA_H
#define TAVRIN_GRAPHMETA_H

#include <Tavrin/TavrinTypes.h>

#include <list>

namespace Tavrin {

/// Abstract base of every graphic primitive.
///
/// Holds what every primitive draws with: status, view size in pixels, four 0xRRGGBB
/// colours, the 1-based selected vertex (0 = none), fill and closed flags, line width
/// and the right-edge drag option. Setters store their argument unchecked, except that
/// a non-finite line width is ignored. Primitives are values: copying one copies all of
/// this state.
///
/// Colours: 0 outline in status 0; 1 outline in statuses 1 and 2 and inactive vertex
/// handles; 2 the active vertex handle and its halo; 3 handed on to handles.
class TAVRIN_API GraphMeta {
public:
    virtual ~GraphMeta();

    /// True when the primitive holds no meaningful vertex.
    virtual bool IsNull() = 0;
    virtual tagTAVRIN_OBJ_STATUS GetObjStatus();
    virtual void SetObjStatus(tagTAVRIN_OBJ_STATUS status);
    /// Stores the 1-based active vertex unchecked; 0 means none.
    virtual void SetSelPointIndex(unsigned int index);
    virtual unsigned int GetSelPointIndex();
    /// Stores the four 0xRRGGBB colours in order.
    virtual void SetColors(unsigned int c0, unsigned int c1, unsigned int c2, unsigned int c3);
    /// Stores the view size in pixels and emits the primitive's OpenGL calls into the
    /// current context. `context` and `flag` are not used.
    virtual void Draw(void* context, int width, int height, bool flag) = 0;
    /// Stores the view size in pixels.
    virtual void SetWndSize(int width, int height);
    virtual void SetViewTransparent(bool on);
    virtual void SetClosed(bool closed);
    virtual void SetViewOpaque(bool on);
    virtual bool GetClosed();
    /// Outline width in pixels; a non-finite width is ignored.
    virtual void SetLineWidth(float width);
    /// Lets a whole-polygon drag carry every vertex but the first past the right edge.
    virtual void SetSuptPolygonMoveRightOut(bool on);

    // Polygon geometry, used by the polygon fill and the arrow figure of lines.

    /// True when segments a-b and c-d count as crossing. Single precision; a zero side
    /// product counts as positive, so collinear segments always cross.
    bool CheckLineCrossDetect(tagTAVRIN_POINT a, tagTAVRIN_POINT b, tagTAVRIN_POINT c,
                              tagTAVRIN_POINT d);
    /// True when no tested pair of edges crosses. Non-adjacent edges of the open chain
    /// are all tested; the closing edge only against the edge two before it. Polygons of
    /// fewer than 4 vertices (a negative count included) are valid, a count above 20 is
    /// not: no vertex past the record's 20 is read.
    bool CheckPolygon(tagTAVRIN_POLYGON polygon);
    /// Ear-clips `polygon` and appends its triangles to `triangles`; 0 on success, -1 for
    /// a null list, fewer than 3 vertices or a polygon that fails `CheckPolygon`. A
    /// simple polygon of n vertices gives n - 2 triangles; fewer means it could not be
    /// cut. A count above 20 is refused.
    int SplitPolygon(tagTAVRIN_POLYGON polygon, std::list<tagTAVRIN_TRIANGLE_>* triangles);
    /// Writes `polygon` without vertex `index` to `remain`; -1 for a null output, an index
    /// outside the polygon or a polygon of 3 or fewer vertices.
    int GetRemainPolygon(tagTAVRIN_POLYGON polygon, int index, tagTAVRIN_POLYGON* remain);
    /// Unsigned area of the triangle, normalised units squared; -1 for a null output.
    int TrangleArea(tagTAVRIN_TRIANGLE_ triangle, double* area);
    /// Unsigned shoelace area; -1 for a null output or fewer than 3 vertices (or more
    /// than 20).
    int PolygonArea(tagTAVRIN_POLYGON polygon, double* area);

protected:
    GraphMeta();
    GraphMeta(const GraphMeta&) = default;
    GraphMeta& operator=(const GraphMeta&) = default;

    /// Colour 1 in status 1 or 2, colour 0 otherwise.
    unsigned int outlineColor() const;
    bool isSelected() const { return m_objStatus == TAVRIN_OBJ_STATUS_SELECTED; }
    bool isSelectedOrHighlighted() const
    {
        return m_objStatus == TAVRIN_OBJ_STATUS_SELECTED ||
               m_objStatus == TAVRIN_OBJ_STATUS_HIGHLIGHTED;
    }
    /// Draws a vertex handle at `at`: status 1 when `active`, status 2 otherwise, with
    /// this primitive's colours and view size.
    void drawHandle(const tagTAVRIN_POINT& at, bool active);

    /// The last triangulation of a filled outline, kept with the exact vertices it was
    /// cut from, so that a figure that stands still is cut once and not on every frame.
    /// Each filling primitive holds its own; like the rest of a primitive's drawing state
    /// it belongs to the thread that draws the primitive and is not locked.
    /// Only `count` and `triangles` are set up front: the bytes are read only once a cut
    /// has written them, so a temporary figure pays nothing for the store.
    struct FillCut {
        int count = -1;     ///< vertices of the outline cut; -1 before the first cut
        int triangles = 0;  ///< triangles the cut gave
        unsigned char points[20 * sizeof(tagTAVRIN_POINT)];  ///< the vertices' bytes
        unsigned char corners[18][3];  ///< each triangle's corners, as vertex indices
    };
    /// The number of triangles `SplitPolygon` gives for `outline`, their corners left in
    /// `cut`. Taken from `cut` when it was made from bit-identical vertices, otherwise cut
    /// afresh and kept there.
    static int fillTriangles(const tagTAVRIN_POLYGON& outline, FillCut& cut);
    /// Triangle `index` of a fill cut of `outline`, as three of its vertices.
    static void fillTriangle(const tagTAVRIN_POLYGON& outline, const FillCut& cut, int index,
                             tagTAVRIN_POINT (&corners)[3]);

    tagTAVRIN_OBJ_STATUS m_objStatus;
    int m_wndWidth;
    int m_wndHeight;
    unsigned int m_colors[4];
    unsigned int m_selPointIndex;
    bool m_viewTransparent;
    bool m_viewOpaque;
    bool m_closed;
    float m_lineWidth;
    bool m_suptPolygonMoveRightOut;
};

}  // namespace Tavrin

#endif  // TAVRIN_GRAPHMETA_H
