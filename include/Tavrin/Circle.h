#ifndef TAVRIN_CIRCLE_H
#define TAVRIN_CIRCLE_H

#include <Tavrin/Point.h>

namespace Tavrin {

/// A filled disc around a point; the radius is kept relative to the view width.
///
/// The hit test uses the radius in pixels; the disc is drawn with half that radius on
/// screen, kept round in pixels by scaling its vertical radius by W/H.
class TAVRIN_API Circle : public Point {
public:
    Circle();
    /// Takes the centre from `p` as `Point` does; `count` is ignored.
    Circle(const tagTAVRIN_POINT* p, unsigned int count);
    ~Circle() override;

    /// Draws the centre marker, then the disc (alpha 200). With a view size that is not
    /// positive the disc is left out: its vertices would not be finite.
    void Draw(void* context, int width, int height, bool flag) override;
    /// True when `p` lies strictly inside the radius, measured in view pixels.
    bool IsNearPoint(Point& p) override;
    bool Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) override;
    /// False for a null centre; otherwise `IsNearPoint`.
    virtual bool CheckSelected(Point& p);

    /// Stores `pixels` relative to the current view width. Ignored while the view width
    /// is not positive (set the view size first).
    void SetRadius(unsigned int pixels);
    /// The radius in pixels at the current view width, truncated; 0 when not positive.
    unsigned int Radius();

private:
    float m_radius;
};

}  // namespace Tavrin

#endif  // TAVRIN_CIRCLE_H
