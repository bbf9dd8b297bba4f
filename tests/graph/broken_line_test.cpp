#include "support/GlTest.h"
#include "support/VirtualSlot.h"

#include <Tavrin/Arrow.h>
#include <Tavrin/BrokenLine.h>

#include <algorithm>
#include <vector>

using Tavrin::BrokenLine;
using Tavrin::Point;

namespace {

std::vector<tagTAVRIN_POINT> vertices(Tavrin::BrokenLine& line)
{
    tagTAVRIN_POINT out[20] = {};
    unsigned int count = 99;
    EXPECT_TRUE(line.GetPoints(out, &count));
    return std::vector<tagTAVRIN_POINT>(out, out + std::min(count, 20u));
}

BrokenLine threeVertices()
{
    tagTAVRIN_POINT points[3] = {pt(0.1f, 0.1f), pt(0.5f, 0.1f), pt(0.5f, 0.5f)};
    BrokenLine line;
    line.SetPoints(points, 3);
    line.SetWndSize(1000, 1000);
    return line;
}

}  // namespace

TEST(BrokenLineStorage, TenVerticesAtMostARefusalEmptiesIt)
{
    tagTAVRIN_POINT points[11];
    for (int i = 0; i < 11; ++i) {
        points[i] = pt(0.05f * (i + 1), 0.5f);
    }
    BrokenLine line;
    EXPECT_TRUE(line.IsNull());
    EXPECT_TRUE(line.SetPoints(points, 10));
    EXPECT_EQ(vertices(line).size(), 10u);
    EXPECT_FALSE(line.IsNull());
    EXPECT_FALSE(line.SetPoints(points, 11));
    EXPECT_TRUE(vertices(line).empty());
    EXPECT_TRUE(line.IsNull());
    EXPECT_TRUE(line.SetPoints(points, 2));
    points[1].y = kNaN;
    EXPECT_FALSE(line.SetPoints(points, 2));
    EXPECT_TRUE(line.IsNull());
    EXPECT_FALSE(line.SetPoints(nullptr, 2));
    EXPECT_TRUE(line.SetPoints(points, 0));
    unsigned int count = 0;
    EXPECT_FALSE(line.GetPoints(nullptr, &count));
    EXPECT_FALSE(line.GetPoints(points, nullptr));

    BrokenLine refused(points, 11);
    EXPECT_TRUE(vertices(refused).empty());
    EXPECT_EQ(BrokenLine().GetArrowDirection(), TAVRIN_ARROW_NONE);
}

TEST(BrokenLineHitTest, TestedAsIfClosed)
{
    BrokenLine line = threeVertices();
    Point closingEdge = [] { tagTAVRIN_POINT p = pt(0.3f, 0.3f); return Point(&p); }();
    Point middleOfFirst = [] { tagTAVRIN_POINT p = pt(0.3f, 0.1005f); return Point(&p); }();
    Point inside = [] { tagTAVRIN_POINT p = pt(0.4f, 0.2f); return Point(&p); }();
    EXPECT_TRUE(line.CheckSelected(closingEdge));
    EXPECT_TRUE(line.IsNearPoint(middleOfFirst));
    EXPECT_FALSE(line.CheckSelected(inside));
    line.SetWndSize(0, 0);
    EXPECT_FALSE(line.CheckSelected(middleOfFirst));
    EXPECT_FALSE(BrokenLine().CheckSelected(inside));
}

TEST(BrokenLineHitTest, FirstNearVertexWins)
{
    tagTAVRIN_POINT points[3] = {pt(0.5f, 0.5f), pt(0.51f, 0.5f), pt(0.52f, 0.5f)};
    BrokenLine line;
    line.SetPoints(points, 3);
    EXPECT_EQ(vertexAt(line, pt(0.515f, 0.5f)), 1u);
    EXPECT_EQ(vertexAt(line, pt(0.525f, 0.5f)), 2u);  // near the second and the third
    EXPECT_EQ(vertexAt(line, pt(0.1f, 0.1f)), 0u);
}

TEST(BrokenLineEdit, DragsAreRefusedWholeAndRefreshTheSegments)
{
    BrokenLine line = threeVertices();
    tagTAVRIN_POINT from = pt(0.5f, 0.5f);
    tagTAVRIN_POINT right = pt(0.75f, 0.5f);
    drag(line, from, pt(1.0001f, 0.5f));  // the last vertex would reach x = 1.0001
    EXPECT_FLOAT_EQ(vertices(line)[2].x, 0.5f);
    drag(line, from, right);
    EXPECT_FLOAT_EQ(vertices(line)[0].x, 0.35f);
    EXPECT_FLOAT_EQ(vertices(line)[2].x, 0.75f);

    for (unsigned int index : {0u, 4u}) {
        line.SetSelPointIndex(index);
        dragVertex(line, right, from);
        EXPECT_FLOAT_EQ(vertices(line)[0].x, 0.35f);
    }
    line.SetSelPointIndex(3);
    dragVertex(line, right, pt(0.75f, 0.75f));
    EXPECT_FLOAT_EQ(vertices(line)[2].y, 0.75f);
    dragVertex(line, right, pt(0.75f, 1.0f));
    EXPECT_FLOAT_EQ(vertices(line)[2].y, 0.75f);

    // The segments follow: segment 1 ends at the moved vertex.
    rec::gl().reset();
    line.SetObjStatus(TAVRIN_OBJ_STATUS_NORMAL);
    line.Draw(nullptr, 1000, 1000, true);
    const auto loops = rec::gl().batchesOf(GL_LINE_LOOP);
    ASSERT_EQ(loops.size(), 2u);
    EXPECT_POINT_NEAR(loops[1].at(1), 0.75f - 0.0015f, 0.75f, 1e-6);
}

class BrokenLineDraw : public GlTest {};

TEST_F(BrokenLineDraw, NormalStatusMarksOnlyInnerVertices)
{
    BrokenLine line = threeVertices();
    line.SetArrowDirection(TAVRIN_ARROW_POSITIVE);
    line.Draw(nullptr, 1000, 1000, true);
    const auto loops = recorded().batchesOf(GL_LINE_LOOP);
    ASSERT_EQ(loops.size(), 2u);
    EXPECT_EQ(loops[0].vertices.size(), 11u);  // the broken line's direction
    const auto dots = recorded().batchesOf(GL_POINTS);
    ASSERT_EQ(dots.size(), 1u);
    EXPECT_POINT_NEAR(dots[0].at(0), 0.5f, 0.1f, 1e-6);
    EXPECT_EQ(dots[0].color, rec::rgba(0xd90db0));
    EXPECT_TRUE(recorded().texts.empty());  // status 0: outline only
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(BrokenLineDraw, SelectedStatusMarksEveryVertexAfterItsSegment)
{
    BrokenLine line = threeVertices();
    line.SetColors(0x010101, 0x020202, 0x030303, 0x040404);
    line.SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    line.SetSelPointIndex(2);
    line.Draw(nullptr, 1000, 1000, true);
    const auto& b = recorded().batches;
    std::vector<std::pair<float, float>> dots;  // (point size, x) of every marker
    for (const rec::Batch& batch : b) {
        if (batch.mode == GL_POINTS) {
            dots.emplace_back(batch.pointSize, batch.at(0).x);
        }
    }
    // Segment 0's end markers, vertex 0; segment 1's end markers, vertex 1 (active: halo),
    // vertex 2.
    const std::vector<std::pair<float, float>> expected = {
        {8.0f, 0.1f}, {8.0f, 0.5f}, {8.0f, 0.1f}, {8.0f, 0.5f},  {8.0f, 0.5f},
        {16.0f, 0.5f}, {8.0f, 0.5f}, {8.0f, 0.5f}};
    ASSERT_EQ(dots.size(), expected.size());
    for (std::size_t i = 0; i < dots.size(); ++i) {
        EXPECT_FLOAT_EQ(dots[i].first, expected[i].first) << i;
        EXPECT_NEAR(dots[i].second, expected[i].second, 1e-6) << i;
    }
    EXPECT_EQ(recorded().batchesOf(GL_LINE_LOOP).at(0).color, rec::rgba(0x020202));
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(BrokenLineDraw, NothingWithoutVerticesAndZeroSegmentsBeforeTheFirstEdit)
{
    BrokenLine empty;
    empty.SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    empty.Draw(nullptr, 1000, 1000, true);
    EXPECT_TRUE(recorded().calls.empty());

    // The point constructor does not fill the segments: they stay at (0, 0) and, having
    // no length, draw no figure, while the inner vertex is still marked.
    tagTAVRIN_POINT points[3] = {pt(0.1f, 0.1f), pt(0.5f, 0.1f), pt(0.5f, 0.5f)};
    BrokenLine built(points, 3);
    built.Draw(nullptr, 1000, 1000, true);
    EXPECT_TRUE(recorded().batchesOf(GL_LINE_LOOP).empty());
    EXPECT_EQ(recorded().batchesOf(GL_POINTS).size(), 1u);
    rec::gl().reset();
    built.SetPoints(points, 3);
    built.Draw(nullptr, 1000, 1000, true);
    EXPECT_EQ(recorded().batchesOf(GL_LINE_LOOP).size(), 2u);
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(BrokenLineDraw, TraversePlaneFlagReachesEverySegment)
{
    BrokenLine line = threeVertices();
    line.SetIsTraversePlane(true);
    line.SetArrowDirection(TAVRIN_ARROW_BOTH);
    line.Draw(nullptr, 1000, 1000, true);
    // Each segment: its plane and both block arrows.
    const auto loops = recorded().batchesOf(GL_LINE_LOOP);
    ASSERT_EQ(loops.size(), 6u);
    EXPECT_EQ(loops[0].vertices.size(), 4u);
    EXPECT_EQ(loops[1].vertices.size(), 8u);
    EXPECT_GL_STATE_CLEAN();
}

TEST(LineFamilySlots, VirtualOperationsKeepTheirOrder)
{
#if TAVRIN_TESTS_HAVE_SLOTS
    using Tavrin::Arrow;
    using Tavrin::Line;
    EXPECT_EQ(slotOf(&Line::IsNull), 2);
    EXPECT_EQ(slotOf(&Line::Draw), 8);
    EXPECT_EQ(slotOf(&Line::SetPoints), 16);
    EXPECT_EQ(slotOf(&Line::GetPoints), 17);
    EXPECT_EQ(slotOf(&Line::Move), 18);
    EXPECT_EQ(slotOf(&Line::MovePoint), 19);
    EXPECT_EQ(slotOf(&Line::CheckSelected), 20);
    EXPECT_EQ(slotOf(&Line::CheckPointSelected), 21);
    EXPECT_EQ(slotOf(&Line::SetLineType), 22);
    EXPECT_EQ(slotOf(&Line::GetLineType), 23);
    EXPECT_EQ(slotOf(&Line::SetShowPoint), 24);
    EXPECT_EQ(slotOf(static_cast<void (Line::*)(Line&)>(&Line::operator=)), 25);
    EXPECT_EQ(slotOf(&Line::IsNearPoint), -1);
    EXPECT_EQ(slotOf(&Arrow::Draw), 8);
    EXPECT_EQ(slotOf(&BrokenLine::Draw), 8);
    EXPECT_EQ(slotOf(&BrokenLine::SetPoints), 16);
    EXPECT_EQ(slotOf(&BrokenLine::CheckPointSelected), 21);
#else
    GTEST_SKIP() << "member pointer layout not known on this target";
#endif
}
