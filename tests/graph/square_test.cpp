#include "support/GlTest.h"
#include "support/PolygonBuilders.h"

#include <Tavrin/Square.h>

using Tavrin::Square;

namespace {

struct DiagonalCase {
    const char* name;
    int width, height;
    tagTAVRIN_POINT a, b;
    Points expected;
};

// (0.25, 0.25)-(0.5, 0.75) in a 1024 x 512 view: 256 pixels a side.
Square baseSquare()
{
    Square s;
    s.SetWndSize(1024, 512);
    EXPECT_TRUE(setDiagonal(s, pt(0.25f, 0.25f), pt(0.5f, 0.5f)));
    return s;
}

void dragTo(Square& s, unsigned int index, tagTAVRIN_POINT to)
{
    s.SetSelPointIndex(index);
    tagTAVRIN_POINT from = pt(kNaN, 7.0f);  // not used
    s.MovePoint(from, to);
}

}  // namespace

TEST(SquareDiagonal, SideIsTheLongerSignedPixelExtentCapped)
{
    const DiagonalCase cases[] = {
        // px = 400, py = 100: side 400, under the 500 cap; sx = 0.4, sy = 0.8.
        {"WideView", 1000, 500, pt(0.1f, 0.1f), pt(0.5f, 0.3f),
         {pt(0.1f, 0.1f), pt(0.5f, 0.1f), pt(0.5f, 0.9f), pt(0.1f, 0.9f)}},
        // px = 120, py = 100: side 120; sx = 0.4, sy = 0.24.
        {"TallView", 300, 500, pt(0.1f, 0.1f), pt(0.5f, 0.3f),
         {pt(0.1f, 0.1f), pt(0.5f, 0.1f), pt(0.5f, 0.34f), pt(0.1f, 0.34f)}},
        // px = 800 capped at the height 500: sx = 0.5, sy = 1.0.
        {"CappedAtTheSmallerDimension", 1000, 500, pt(0.1f, 0.1f), pt(0.9f, 0.9f),
         {pt(0.1f, 0.1f), pt(0.6f, 0.1f), pt(0.6f, 1.1f), pt(0.1f, 1.1f)}},
        // px = -256, py = -64: the larger is -64, so the square goes up and left by 64.
        {"UpAndLeftTakesTheSmallerExtent", 1024, 512, pt(0.5f, 0.5f),
         pt(0.25f, 0.375f),
         {pt(0.5f, 0.5f), pt(0.4375f, 0.5f), pt(0.4375f, 0.375f), pt(0.5f, 0.375f)}},
        // px = 256, py = -128: the positive one wins, the square goes down anyway.
        {"RightAndUpGrowsDownwards", 1024, 512, pt(0.5f, 0.5f), pt(0.75f, 0.25f),
         {pt(0.5f, 0.5f), pt(0.75f, 0.5f), pt(0.75f, 1.0f), pt(0.5f, 1.0f)}},
        // px = 3.5 truncates to 3.
        {"PixelsTruncateTowardsZero", 1024, 1024, pt(0.0f, 0.0f),
         pt(3.5f / 1024.0f, 0.0f),
         {pt(0.0f, 0.0f), pt(3.0f / 1024.0f, 0.0f), pt(3.0f / 1024.0f, 3.0f / 1024.0f),
          pt(0.0f, 3.0f / 1024.0f)}},
        // Without a view size there is no pixel: the square collapses onto a.
        {"NoViewSizeCollapsesOntoTheFirstPoint", 0, 0, pt(0.3f, 0.4f), pt(0.6f, 0.8f),
         {pt(0.3f, 0.4f), pt(0.3f, 0.4f), pt(0.3f, 0.4f), pt(0.3f, 0.4f)}},
        {"ZeroHeightCollapses", 640, 0, pt(0.3f, 0.4f), pt(0.6f, 0.8f),
         {pt(0.3f, 0.4f), pt(0.3f, 0.4f), pt(0.3f, 0.4f), pt(0.3f, 0.4f)}},
        {"NegativeWidthCollapses", -640, 480, pt(0.3f, 0.4f), pt(0.6f, 0.8f),
         {pt(0.3f, 0.4f), pt(0.3f, 0.4f), pt(0.3f, 0.4f), pt(0.3f, 0.4f)}},
    };
    for (const DiagonalCase& c : cases) {
        Square s;
        s.SetWndSize(c.width, c.height);
        EXPECT_TRUE(setDiagonal(s, c.a, c.b));
        EXPECT_TRUE(nearPoints(verticesOf(s), c.expected, 1e-6f)) << c.name;
    }
    // A non-finite corner changes nothing.
    Square s = baseSquare();
    EXPECT_FALSE(setDiagonal(s, pt(0.1f, 0.1f), pt(0.5f, kInf)));
    EXPECT_FALSE(setDiagonal(s, pt(0.5f, kInf), pt(0.1f, 0.1f)));
    EXPECT_TRUE(samePoints(verticesOf(s), verticesOf(baseSquare())));
}

TEST(SquareCornerDrag, AnchorStaysAndTheSideIsTheSmallerExtent)
{
    const struct {
        const char* name;
        unsigned int index;
        tagTAVRIN_POINT to;
        Points expected;
    } cases[] = {
        // Anchor (0.25, 0.25); ex = 128, ey = 128 (not larger): side 128.
        {"ThirdCornerInwards", 3, pt(0.375f, 0.5f),
         {pt(0.25f, 0.25f), pt(0.375f, 0.25f), pt(0.375f, 0.5f), pt(0.25f, 0.5f)}},
        // ex = 64 < ey = 128: the side is ex.
        {"ThirdCornerNarrowDrag", 3, pt(0.3125f, 0.5f),
         {pt(0.25f, 0.25f), pt(0.3125f, 0.25f), pt(0.3125f, 0.375f),
          pt(0.25f, 0.375f)}},
        // Anchor (0.5, 0.75); the new corner is placed past it and past the bottom edge.
        {"FirstCornerAcrossTheAnchorUnclamped", 1, pt(0.75f, 1.25f),
         {pt(0.75f, 1.25f), pt(0.5f, 1.25f), pt(0.5f, 0.75f), pt(0.75f, 0.75f)}},
        // Anchor (0.25, 0.75); the winding turns, which is accepted.
        {"SecondCornerChangesWinding", 2, pt(0.4375f, 0.5f),
         {pt(0.375f, 0.75f), pt(0.375f, 0.5f), pt(0.25f, 0.5f), pt(0.25f, 0.75f)}},
        {"NothingSelected", 0, pt(0.375f, 0.5f),
         {pt(0.25f, 0.25f), pt(0.5f, 0.25f), pt(0.5f, 0.75f), pt(0.25f, 0.75f)}},
        {"SelectionBeyondTheCorners", 5, pt(0.375f, 0.5f),
         {pt(0.25f, 0.25f), pt(0.5f, 0.25f), pt(0.5f, 0.75f), pt(0.25f, 0.75f)}},
        {"NonFiniteCursor", 3, pt(kNaN, 0.5f),
         {pt(0.25f, 0.25f), pt(0.5f, 0.25f), pt(0.5f, 0.75f), pt(0.25f, 0.75f)}},
    };
    for (const auto& c : cases) {
        Square s = baseSquare();
        dragTo(s, c.index, c.to);
        EXPECT_TRUE(samePoints(verticesOf(s), c.expected)) << c.name;
    }
    // Nothing moves without a view size.
    Square s = baseSquare();
    s.SetWndSize(0, 512);
    dragTo(s, 3, pt(0.375f, 0.5f));
    EXPECT_TRUE(samePoints(verticesOf(s), verticesOf(baseSquare())));
}

TEST(SquareCornerDragPixels, DraggedSquareHasEqualSidesInPixels)
{
    Square s;
    s.SetWndSize(800, 450);
    setDiagonal(s, pt(0.2f, 0.2f), pt(0.4f, 0.3f));
    dragTo(s, 3, pt(0.63f, 0.71f));
    const Points v = verticesOf(s);
    const float sideX = (v[1].x - v[0].x) * 800.0f;
    const float sideY = (v[2].y - v[1].y) * 450.0f;
    EXPECT_NEAR(sideX, sideY, 1e-3f);
    EXPECT_EQ(v[0].x, 0.2f);  // the anchor
    EXPECT_EQ(v[0].y, 0.2f);
}
