#include "support/GlTest.h"
#include "support/PolygonBuilders.h"
#include "support/VirtualSlot.h"

#include <Tavrin/Label.h>
#include <Tavrin/Rectangle.h>
#include <Tavrin/Square.h>

using Tavrin::Rectangle;

namespace {

Rectangle fromDiagonal(tagTAVRIN_POINT a, tagTAVRIN_POINT b)
{
    Rectangle r;
    EXPECT_TRUE(r.SetDiagonal(a, b));
    return r;
}

// (0.2, 0.3)-(0.5, 0.6) in the SetDiagonal order.
Rectangle base() { return fromDiagonal(pt(0.2f, 0.3f), pt(0.5f, 0.6f)); }

void drag(Rectangle& r, unsigned int index, float dx, float dy)
{
    r.SetSelPointIndex(index);
    tagTAVRIN_POINT from = pt(0.0f, 0.0f);
    tagTAVRIN_POINT to = pt(dx, dy);
    r.MovePoint(from, to);
}

}  // namespace

TEST(RectangleDiagonal, CornersInRowThenColumnOrder)
{
    Rectangle r = base();
    EXPECT_TRUE(samePoints(verticesOf(r),
                           {pt(0.2f, 0.3f), pt(0.5f, 0.3f), pt(0.5f, 0.6f), pt(0.2f, 0.6f)}));
    // Dragged up and to the left: the same corners in another winding, no reordering.
    Rectangle back = fromDiagonal(pt(0.5f, 0.6f), pt(0.2f, 0.3f));
    EXPECT_TRUE(samePoints(verticesOf(back),
                           {pt(0.5f, 0.6f), pt(0.2f, 0.6f), pt(0.2f, 0.3f), pt(0.5f, 0.3f)}));
    // No clamping either.
    Rectangle past = fromDiagonal(pt(0.9f, 0.9f), pt(1.5f, -0.5f));
    EXPECT_TRUE(samePoints(verticesOf(past),
                           {pt(0.9f, 0.9f), pt(1.5f, 0.9f), pt(1.5f, -0.5f), pt(0.9f, -0.5f)}));
    // A non-finite corner is refused.
    EXPECT_FALSE(setDiagonal(past, pt(0.1f, 0.1f), pt(kNaN, 0.5f)));
    EXPECT_FALSE(setDiagonal(past, pt(kNaN, 0.5f), pt(0.1f, 0.1f)));
    EXPECT_FLOAT_EQ(verticesOf(past)[1].x, 1.5f);
}

TEST(RectangleStorage, SetPointsTakesAtMostFourCorners)
{
    Rectangle r = base();
    Points five = {pt(0.1f, 0.1f), pt(0.2f, 0.1f), pt(0.2f, 0.2f), pt(0.1f, 0.2f), pt(0.1f, 0.15f)};
    EXPECT_FALSE(r.SetPoints(five.data(), 5));
    EXPECT_FALSE(r.SetPoints(nullptr, 2));
    Points withNaN = {pt(0.1f, kNaN)};
    EXPECT_FALSE(r.SetPoints(withNaN.data(), 1));
    EXPECT_EQ(verticesOf(r).size(), 4u);
    EXPECT_TRUE(r.SetPoints(five.data(), 3));
    EXPECT_TRUE(samePoints(verticesOf(r), Points(five.begin(), five.begin() + 3)));
    // The constructor keeps the polygon's limit of 20, not the rectangle's 4.
    Rectangle constructed(five.data(), 5);
    EXPECT_TRUE(samePoints(verticesOf(constructed), five));
}

TEST(RectangleCornerDrag, OppositeCornerStaysAndSidesStayAxisParallel)
{
    const struct {
        const char* name;
        unsigned int index;
        Points expected;
    } cases[] = {
        {"First", 1,
         {pt(0.2f + 0.05f, 0.3f + 0.1f), pt(0.5f, 0.3f + 0.1f), pt(0.5f, 0.6f),
          pt(0.2f + 0.05f, 0.6f)}},
        {"Second", 2,
         {pt(0.2f, 0.3f + 0.1f), pt(0.5f + 0.05f, 0.3f + 0.1f),
          pt(0.5f + 0.05f, 0.6f), pt(0.2f, 0.6f)}},
        {"Third", 3,
         {pt(0.2f, 0.3f), pt(0.5f + 0.05f, 0.3f), pt(0.5f + 0.05f, 0.6f + 0.1f),
          pt(0.2f, 0.6f + 0.1f)}},
        {"Fourth", 4,
         {pt(0.2f + 0.05f, 0.3f), pt(0.5f, 0.3f), pt(0.5f, 0.6f + 0.1f),
          pt(0.2f + 0.05f, 0.6f + 0.1f)}},
    };
    for (const auto& c : cases) {
        Rectangle r = base();
        drag(r, c.index, 0.05f, 0.1f);
        const Points v = verticesOf(r);
        EXPECT_TRUE(samePoints(v, c.expected)) << c.name;
        EXPECT_TRUE(v[0].y == v[1].y && v[1].x == v[2].x && v[2].y == v[3].y && v[3].x == v[0].x);
    }
}

TEST(RectangleCornerDrag, RefusalsLeaveEveryCornerUnchanged)
{
    Rectangle reference = base();
    const Points before = verticesOf(reference);
    struct {
        unsigned int index;
        float dx, dy;
    } refused[] = {
        {3, 0.51f, 0.0f},   // the third corner would reach x = 1.01
        {1, -0.21f, 0.0f},  // x below 0
        {2, 0.0f, -0.31f},  // y below 0
        {4, 0.0f, 0.41f},   // y above 1
        {0, 0.1f, 0.1f},    // nothing selected
        {5, 0.1f, 0.1f},    // beyond the four corners
        {1, kNaN, 0.1f},    // not finite
    };
    for (const auto& c : refused) {
        Rectangle r = base();
        drag(r, c.index, c.dx, c.dy);
        EXPECT_TRUE(samePoints(verticesOf(r), before)) << "index " << c.index;
    }
    // The dragged corner may reach the edge.
    Rectangle r = base();
    drag(r, 3, 0.5f, 0.4f);  // (0.5, 0.6) to (1.0, 1.0)
    EXPECT_TRUE(samePoints(verticesOf(r),
                           {pt(0.2f, 0.3f), pt(0.5f + 0.5f, 0.3f), pt(1.0f, 1.0f), pt(0.2f, 0.6f + 0.4f)}));
}

TEST(RectangleCornerDrag, OnlyTheDraggedCornerIsTested)
{
    // Not a rectangle: the last vertex sits near the right edge.
    Rectangle r;
    Points quad = {pt(0.2f, 0.3f), pt(0.5f, 0.3f), pt(0.5f, 0.6f), pt(0.95f, 0.6f)};
    setVertices(r, quad);
    drag(r, 1, 0.1f, 0.0f);  // corner 4 follows in x, past the edge
    EXPECT_FLOAT_EQ(verticesOf(r)[3].x, 0.95f + 0.1f);
    // A missing neighbour is skipped.
    setVertices(r, {pt(0.2f, 0.3f), pt(0.5f, 0.3f), pt(0.5f, 0.6f)});
    drag(r, 1, 0.1f, 0.1f);
    EXPECT_TRUE(samePoints(verticesOf(r),
                           {pt(0.2f + 0.1f, 0.3f + 0.1f), pt(0.5f, 0.3f + 0.1f), pt(0.5f, 0.6f)}));
}

class RectangleDraw : public GlTest {};

TEST_F(RectangleDraw, DrawsAsAPolygon)
{
    Rectangle r = base();
    r.Draw(nullptr, 800, 600, true);
    ASSERT_EQ(recorded().batches.size(), 3u);
    EXPECT_EQ(recorded().batches[0].mode, static_cast<GLenum>(GL_LINE_LOOP));
    EXPECT_EQ(recorded().batches[1].color, rec::rgba(0xd90db0, 40));
    EXPECT_GL_STATE_CLEAN();
}

TEST(PolygonFamilySlots, PolygonOperationsFollowTheBaseAndSetDiagonalComesLast)
{
#if TAVRIN_TESTS_HAVE_SLOTS
    using Tavrin::Label;
    using Tavrin::Polygon;
    using Tavrin::Square;
    // Slots 0 and 1 hold the destructor.
    EXPECT_EQ(slotOf(&Polygon::IsNull), 2);
    EXPECT_EQ(slotOf(&Polygon::Draw), 8);
    EXPECT_EQ(slotOf(&Polygon::SetSuptPolygonMoveRightOut), 15);
    EXPECT_EQ(slotOf(&Polygon::SetPoints), 16);
    EXPECT_EQ(slotOf(&Polygon::GetPoints), 17);
    EXPECT_EQ(slotOf(&Polygon::Move), 18);
    EXPECT_EQ(slotOf(&Polygon::MovePoint), 19);
    EXPECT_EQ(slotOf(&Polygon::CheckSelected), 20);
    EXPECT_EQ(slotOf(&Polygon::CheckPointSelected), 21);
    EXPECT_EQ(slotOf(static_cast<void (Polygon::*)(Polygon&)>(&Polygon::operator=)), 22);
    EXPECT_EQ(slotOf(&Polygon::IsNearPoint), -1);
    EXPECT_EQ(slotOf(&Rectangle::SetPoints), 16);
    EXPECT_EQ(slotOf(&Rectangle::MovePoint), 19);
    EXPECT_EQ(slotOf(&Rectangle::SetDiagonal), 23);
    EXPECT_EQ(slotOf(&Square::MovePoint), 19);
    EXPECT_EQ(slotOf(&Square::SetDiagonal), 23);
    EXPECT_EQ(slotOf(&Label::Draw), 8);
#else
    GTEST_SKIP() << "member pointer layout not known on this target";
#endif
}
