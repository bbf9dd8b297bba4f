#ifndef TAVRIN_ARROW_H
#define TAVRIN_ARROW_H

#include <Tavrin/Line.h>

namespace Tavrin {

/// A line drawn as one block arrow from p1 (tail) to p2 (tip), in whole pixels.
class TAVRIN_API Arrow : public Line {
public:
    Arrow();
    /// Takes two points when `points` is not null, `count` is at most 2 and both are
    /// finite; otherwise p1 = p2 = (0, 0).
    Arrow(tagTAVRIN_POINT* points, unsigned int count);
    Arrow(const Arrow& other) = default;
    ~Arrow() override;

    /// Stores the view size and draws the block arrow (neither the traverse-plane flag
    /// nor the line type is consulted); nothing at all without a view or when p1 and p2
    /// fall on the same pixel.
    void Draw(void* context, int width, int height, bool flag) override;

    void DrawByOpenGL(void* context);
    void DrawByGdi(void* context);
};

}  // namespace Tavrin

#endif  // TAVRIN_ARROW_H
