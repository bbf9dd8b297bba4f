#include "support/CaliTest.h"
#include "support/PolygonBuilders.h"

#include <Tavrin/AtmCali.h>

using Tavrin::AtmCali;

namespace {

const rec::Rgba kNormal = rec::rgba(0x285EA6);
const rec::Rgba kSelected = rec::rgba(0xD90DB0);

class AtmCaliTest : public GlTest {
protected:
    void SetUp() override
    {
        GlTest::SetUp();
        ASSERT_NE(atm, nullptr);
    }

    void setRegion()
    {
        tagTAVRIN_POINT corners[4] = {pt(0.1f, 0.1f), pt(0.9f, 0.1f), pt(0.9f, 0.9f), pt(0.1f, 0.9f)};
        ASSERT_TRUE(atm->SetPoints(corners, 4));
    }

    void setLine(tagTAVRIN_POINT a, tagTAVRIN_POINT b) { ASSERT_TRUE(atm->SetLinePoints(a, b)); }

    Points region() { return verticesOf(*atm); }

    tagTAVRIN_POINT lineEnd(int which)
    {
        tagTAVRIN_POINT ends[2] = {pt(-1, -1), pt(-1, -1)};
        EXPECT_TRUE(atm->GetLinePoints(&ends[0], &ends[1]));
        return ends[which];
    }

    Owned<AtmCali> atm = create<AtmCali>();
};

}  // namespace

TEST_F(AtmCaliTest, SetPointsRefusalsKeepTheRegion)
{
    setRegion();
    tagTAVRIN_POINT many[11] = {};
    for (unsigned int count : {5u, 10u, 11u}) {
        EXPECT_FALSE(atm->SetPoints(many, count)) << count;
    }
    EXPECT_FALSE(atm->SetPoints(nullptr, 4));
    tagTAVRIN_POINT bad[4] = {pt(0.1f, 0.1f), pt(NAN, 0.1f), pt(0.5f, 0.5f), pt(0.1f, 0.5f)};
    EXPECT_FALSE(atm->SetPoints(bad, 4));
    EXPECT_TRUE(samePoints(region(), {pt(0.1f, 0.1f), pt(0.9f, 0.1f), pt(0.9f, 0.9f), pt(0.1f, 0.9f)}));

    unsigned int count = 0;
    tagTAVRIN_POINT out[20];
    EXPECT_FALSE(atm->GetPoints(nullptr, &count));
    EXPECT_FALSE(atm->GetPoints(out, nullptr));
}

TEST_F(AtmCaliTest, LinePointsAreSeparateFromTheRegion)
{
    setLine(pt(0.2f, 0.5f), pt(0.6f, 0.5f));
    EXPECT_TRUE(atm->IsNull());  // the line is not consulted
    EXPECT_POINT_NEAR(lineEnd(1), 0.6f, 0.5f, 0.0);
    tagTAVRIN_POINT bad[2] = {pt(NAN, 0.5f), pt(0.3f, 0.3f)};
    EXPECT_FALSE(atm->GetLinePoints(&bad[1], nullptr));
    EXPECT_FALSE(atm->GetLinePoints(nullptr, &bad[1]));
    EXPECT_FALSE(atm->SetLinePoints(bad[0], bad[1]));
    EXPECT_POINT_NEAR(lineEnd(0), 0.2f, 0.5f, 0.0);
}

TEST_F(AtmCaliTest, MoveCarriesTheLineOnlyWhenTheRegionMoves)
{
    setRegion();
    setLine(pt(0.2f, 0.5f), pt(0.6f, 0.5f));
    drag(*atm, pt(0.5f, 0.5f), pt(0.7f, 0.5f));  // region corner would reach x = 1.1
    EXPECT_POINT_NEAR(region()[0], 0.1f, 0.1f, 0.0);
    EXPECT_POINT_NEAR(lineEnd(0), 0.2f, 0.5f, 0.0);

    drag(*atm, pt(0.5f, 0.5f), pt(0.55f, 0.45f));
    EXPECT_POINT_NEAR(region()[0], 0.15f, 0.05f, 1e-6);
    EXPECT_POINT_NEAR(lineEnd(0), 0.25f, 0.45f, 1e-6);
    EXPECT_POINT_NEAR(lineEnd(1), 0.65f, 0.45f, 1e-6);
}

TEST_F(AtmCaliTest, RegionAndLineKeepSeparateSelections)
{
    setRegion();
    setLine(pt(0.2f, 0.5f), pt(0.6f, 0.5f));
    tagTAVRIN_POINT onLineEnd = pt(0.6f, 0.51f);
    EXPECT_EQ(vertexAt(*atm, pt(0.9f, 0.9f)), 3u);
    EXPECT_EQ(vertexAt(*atm, onLineEnd), 0u);
    EXPECT_EQ(atm->CheckLinePointSelected(onLineEnd), 2u);
    EXPECT_EQ(atm->GetSelPointIndex(), 0u);  // the checks store nothing

    atm->SetSelPointIndex(3);
    atm->SetLineSelPointIndex(2);
    EXPECT_EQ(atm->GetSelPointIndex(), 3u);
    EXPECT_EQ(atm->GetLineSelPointIndex(), 2u);

    tagTAVRIN_POINT from = pt(0.5f, 0.5f);
    tagTAVRIN_POINT to = pt(0.45f, 0.55f);
    atm->MoveLinePoint(from, to);
    EXPECT_POINT_NEAR(lineEnd(1), 0.55f, 0.55f, 1e-6);
    EXPECT_POINT_NEAR(region()[2], 0.9f, 0.9f, 0.0);
    dragVertex(*atm, from, to);  // corner 3 to (0.85, 0.95), its neighbours follow
    EXPECT_POINT_NEAR(region()[2], 0.85f, 0.95f, 1e-6);
    EXPECT_POINT_NEAR(region()[1], 0.85f, 0.1f, 1e-6);
    EXPECT_POINT_NEAR(region()[3], 0.1f, 0.95f, 1e-6);
    EXPECT_POINT_NEAR(lineEnd(1), 0.55f, 0.55f, 1e-6);

    tagTAVRIN_POINT outside = pt(0.5f, 1.0f);  // the line end would reach y = 1.05
    atm->MoveLinePoint(from, outside);
    EXPECT_POINT_NEAR(lineEnd(1), 0.55f, 0.55f, 1e-6);

    EXPECT_TRUE(hits(*atm, pt(0.5f, 0.5f)));
    EXPECT_FALSE(hits(*atm, pt(0.95f, 0.5f)));
}

TEST_F(AtmCaliTest, CornerDragWorksWhileTheLineIsUnset)
{
    setRegion();
    atm->SetSelPointIndex(1);
    dragVertex(*atm, pt(0.1f, 0.1f), pt(0.2f, 0.3f));
    EXPECT_POINT_NEAR(region()[0], 0.2f, 0.3f, 1e-6);
}

TEST_F(AtmCaliTest, StatusGoesToBothRegionAndLine)
{
    setRegion();
    setLine(pt(0.2f, 0.5f), pt(0.6f, 0.5f));
    atm->SetObjStatus(TAVRIN_OBJ_STATUS_HIGHLIGHTED);
    EXPECT_EQ(atm->GetObjStatus(), TAVRIN_OBJ_STATUS_HIGHLIGHTED);
    atm->Draw(nullptr, 1000, 500, false);
    const auto& batches = recorded().batches;
    ASSERT_EQ(batches.size(), 4u);
    for (const rec::Batch& b : batches) {
        EXPECT_EQ(b.color, kSelected);
    }
    EXPECT_EQ(textColors(), std::vector<std::string>{colourCall(0xD90DB0)});
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(AtmCaliTest, EmptyRegionDrawsNothingAtAll)
{
    setLine(pt(0.2f, 0.5f), pt(0.6f, 0.5f));
    atm->Draw(nullptr, 1000, 500, true);
    EXPECT_TRUE(recorded().calls.empty());
}

TEST_F(AtmCaliTest, RegionWithoutLineDrawsOnlyTheUnfilledRegion)
{
    setRegion();
    atm->Draw(nullptr, 1000, 500, true);
    ASSERT_EQ(batchModes(), (std::vector<GLenum>{GL_LINE_LOOP}));
    EXPECT_EQ(recorded().batches[0].color, kNormal);
    EXPECT_TRUE(recorded().texts.empty());
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(AtmCaliTest, HorizontalLineGetsVerticalBarsAndTheLabelAtItsMiddle)
{
    setRegion();
    setLine(pt(0.2f, 0.5f), pt(0.6f, 0.5f));
    atm->Draw(nullptr, 1000, 500, true);

    const auto& b = recorded().batches;
    ASSERT_EQ(batchModes(), (std::vector<GLenum>{GL_LINE_LOOP, GL_LINES, GL_LINES, GL_LINES}));
    EXPECT_EQ(b[0].color, kNormal);
    expectSegment(b[1], pt(0.2f, 0.5f), pt(0.6f, 0.5f), kNormal);
    // Rows 250 -/+ 16 of a 500-pixel view.
    expectSegment(b[2], pt(0.2f, pixel(234, 500)), pt(0.2f, pixel(266, 500)), kNormal);
    expectSegment(b[3], pt(0.6f, pixel(234, 500)), pt(0.6f, pixel(266, 500)), kNormal);
    ASSERT_EQ(recorded().texts.size(), 1u);
    EXPECT_POINT_NEAR(recorded().texts[0].position, 0.41f, 0.49f, 1e-6);
    EXPECT_EQ(textColors(), std::vector<std::string>{colourCall(0x285EA6)});
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(AtmCaliTest, SelectedFigureShowsHandlesButTheBarsShowNone)
{
    setRegion();
    setLine(pt(0.5f, 0.2f), pt(0.5f, 0.8f));
    atm->SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    atm->Draw(nullptr, 800, 600, true);
    EXPECT_EQ(batchModes(), (std::vector<GLenum>{GL_LINE_LOOP, GL_POINTS, GL_POINTS, GL_POINTS, GL_POINTS,
                                                 GL_LINES, GL_POINTS, GL_POINTS, GL_LINES, GL_LINES}));
    const auto& b = recorded().batches;
    // A vertical line: horizontal bars 16 pixels left and right.
    expectSegment(b[8], pt(pixel(384, 800), 0.2f), pt(pixel(416, 800), 0.2f), kSelected);
    expectSegment(b[9], pt(pixel(384, 800), 0.8f), pt(pixel(416, 800), 0.8f), kSelected);
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(AtmCaliTest, HeadFollowsTheLastViewSize)
{
    setLine(pt(0.2f, 0.6f), pt(0.4f, 0.4f));
    tagTAVRIN_POINT end = pt(0.2f, 0.6f);
    tagTAVRIN_POINT out[2] = {pt(7, 7), pt(7, 7)};
    atm->GetVCaliLineHead(end, out);  // no view size yet: nothing written
    EXPECT_POINT_NEAR(out[0], 7.0f, 7.0f, 0.0);
    EXPECT_POINT_NEAR(out[1], 7.0f, 7.0f, 0.0);

    atm->Draw(nullptr, 1000, 1000, true);  // the region is empty, but the size is kept
    atm->GetVCaliLineHead(end, out);
    EXPECT_POINT_NEAR(out[0], pixel(189, 1000), pixel(589, 1000), 1e-7);
    EXPECT_POINT_NEAR(out[1], pixel(211, 1000), pixel(611, 1000), 1e-7);
    atm->GetVCaliLineHead(end, nullptr);
}

TEST_F(AtmCaliTest, WithoutAViewSizeTheBarsAreLeftOut)
{
    setRegion();
    setLine(pt(0.2f, 0.5f), pt(0.6f, 0.5f));
    atm->Draw(nullptr, 0, 0, true);
    EXPECT_EQ(batchModes(), (std::vector<GLenum>{GL_LINE_LOOP, GL_LINES}));
    EXPECT_EQ(recorded().texts.size(), 1u);
    EXPECT_TRUE(everythingFinite());
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(AtmCaliTest, CoincidentLineEndsDrawHorizontalBars)
{
    setRegion();
    setLine(pt(0.5f, 0.5f), pt(0.5f, 0.5f));
    atm->Draw(nullptr, 1000, 1000, true);
    ASSERT_EQ(recorded().batches.size(), 4u);
    expectSegment(recorded().batches[2], pt(0.484f, 0.5f), pt(0.516f, 0.5f), kNormal);
    EXPECT_TRUE(everythingFinite());
}
