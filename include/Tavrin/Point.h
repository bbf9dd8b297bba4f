#ifndef TAVRIN_POINT_H
#define TAVRIN_POINT_H

#include <Tavrin/GraphMeta.h>

namespace Tavrin {

/// One vertex: a dot or cross marker, and the vertex handle every figure draws.
///
/// Status look: 1 is the active handle (colour 2, 16-pixel halo under an 8-pixel dot in
/// colour 1), 2 an inactive handle (8-pixel dot in colour 1), others colour 0.
class TAVRIN_API Point : public GraphMeta {
public:
    Point();
    /// Copies `*p` when `p` is not null; (0, 0) otherwise.
    explicit Point(const tagTAVRIN_POINT* p);
    ~Point() override;

    /// True when x and y are both exactly 0.
    bool IsNull() override;
    void Draw(void* context, int width, int height, bool flag) override;

    /// Takes the first entry of `points`; refuses a null array, a count above 1 or a
    /// non-finite coordinate. A count of 0 still takes the first entry.
    virtual bool SetPoints(tagTAVRIN_POINT* points, unsigned int count);
    /// Writes the point and a count of 1; false for a null pointer.
    virtual bool GetPoints(tagTAVRIN_POINT* points, unsigned int* count);
    /// True when `p` lies strictly closer than 0.02 (normalised units).
    virtual bool IsNearPoint(Point& p);
    /// Moves by (to - from); refused whole, returning false, when the point would leave
    /// [0, 1] in either axis or the drag is not finite.
    virtual bool Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to);

    float Rx() const { return m_point.x; }
    float Ry() const { return m_point.y; }
    void SetX(float x) { m_point.x = x; }
    void SetY(float y) { m_point.y = y; }
    void SetPointType(tagTAVRIN_POINT_TYPE type) { m_pointType = type; }
    tagTAVRIN_POINT_TYPE GetPointType() const { return m_pointType; }

    void DrawByOpenGL(void* context);
    void DrawByGdi(void* context);

protected:
    /// Colour 2 in status 1, colour 1 in status 2, colour 0 otherwise.
    unsigned int markerColor() const;

    tagTAVRIN_POINT m_point;
    tagTAVRIN_POINT_TYPE m_pointType;
};

}  // namespace Tavrin

#endif  // TAVRIN_POINT_H
