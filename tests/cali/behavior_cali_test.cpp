#include "support/CaliTest.h"
#include "support/PolygonBuilders.h"

#include <Tavrin/BehaviorCali.h>
#include <Tavrin/BehaviorCheck.h>

using Tavrin::BehaviorCali;
using Tavrin::BehaviorCheck;

namespace {

class BehaviorCaliTest : public GlTest {
protected:
    void SetUp() override
    {
        GlTest::SetUp();
        ASSERT_NE(cali, nullptr);
        ASSERT_NE(check, nullptr);
    }

    static void setHorizontal(BehaviorCali& obj)
    {
        tagTAVRIN_POINT ends[2] = {pt(0.2f, 0.5f), pt(0.6f, 0.5f)};
        ASSERT_TRUE(obj.SetPoints(ends, 2));
    }

    /// The bar at `end` as the object computes it now, in pixels of a 1000 x 1000 view.
    std::vector<int> headPixels(BehaviorCali& obj, tagTAVRIN_POINT end)
    {
        tagTAVRIN_POINT out[2] = {pt(-1, -1), pt(-1, -1)};
        obj.GetVCaliLineHead(end, out);
        return {static_cast<int>(out[0].x * 1000.0f + 0.5f), static_cast<int>(out[0].y * 1000.0f + 0.5f),
                static_cast<int>(out[1].x * 1000.0f + 0.5f), static_cast<int>(out[1].y * 1000.0f + 0.5f)};
    }

    Owned<BehaviorCali> cali = create<BehaviorCali>();
    Owned<BehaviorCheck> check = create<BehaviorCheck>();
};

}  // namespace

TEST_F(BehaviorCaliTest, ReadsBackTwoPointsAndZeroesTheRest)
{
    tagTAVRIN_POINT one[1] = {pt(0.3f, 0.4f)};
    EXPECT_TRUE(cali->SetPoints(one, 1));  // the line takes stored vertices 0 and 1
    unsigned int count = 0;
    const tagTAVRIN_POINT o = pt(0.0f, 0.0f);
    EXPECT_TRUE(samePoints(bufferOf(*cali, &count), {one[0], o, o, o, o, o, o, o, o, o}));
    EXPECT_EQ(count, 2u);
    EXPECT_FALSE(cali->GetPoints(nullptr, &count));
    EXPECT_FALSE(cali->GetPoints(one, nullptr));

    EXPECT_TRUE(cali->SetPoints(one, 0));  // nothing copied: two zero points
    EXPECT_TRUE(cali->IsNull());
}

TEST_F(BehaviorCaliTest, MoreThanTwoPointsAreStoredButRefusedByTheLine)
{
    cali->SetWndSize(1000, 1000);
    setHorizontal(*cali);
    tagTAVRIN_POINT three[3] = {pt(0.1f, 0.1f), pt(0.2f, 0.2f), pt(0.3f, 0.3f)};
    EXPECT_FALSE(cali->SetPoints(three, 3));
    // The stored copy now holds the diagonal (k = 1, -45 degrees) ...
    EXPECT_EQ(headPixels(*cali, pt(0.2f, 0.5f)), (std::vector<int>{188, 511, 210, 489}));
    // ... until the line's own points are read back.
    EXPECT_TRUE(samePoints(verticesOf(*cali), {pt(0.2f, 0.5f), pt(0.6f, 0.5f)}));
    EXPECT_EQ(headPixels(*cali, pt(0.2f, 0.5f)), (std::vector<int>{200, 484, 200, 516}));
}

TEST_F(BehaviorCaliTest, RefusalsKeepTheStoredCopy)
{
    cali->SetWndSize(1000, 1000);
    setHorizontal(*cali);
    tagTAVRIN_POINT eleven[11] = {pt(0.1f, 0.1f), pt(0.2f, 0.2f)};
    tagTAVRIN_POINT nan[2] = {pt(0.1f, 0.1f), pt(NAN, 0.2f)};
    EXPECT_FALSE(cali->SetPoints(eleven, 11));
    EXPECT_FALSE(cali->SetPoints(nullptr, 2));
    EXPECT_FALSE(cali->SetPoints(nan, 2));
    EXPECT_EQ(headPixels(*cali, pt(0.2f, 0.5f)), (std::vector<int>{200, 484, 200, 516}));
}

TEST_F(BehaviorCaliTest, HeadUsesTheVerticesOfTheLastDraw)
{
    setHorizontal(*cali);
    cali->SetSelPointIndex(2);
    dragVertex(*cali, pt(0.6f, 0.5f), pt(0.4f, 0.3f));  // end 2 to (0.4, 0.3): k = -1
    cali->SetWndSize(1000, 1000);
    EXPECT_EQ(headPixels(*cali, pt(0.2f, 0.5f)), (std::vector<int>{200, 484, 200, 516}));
    cali->Draw(nullptr, 1000, 1000, true);
    EXPECT_EQ(headPixels(*cali, pt(0.2f, 0.5f)), (std::vector<int>{189, 489, 211, 511}));
}

TEST_F(BehaviorCaliTest, VerticalTypeDrawsBothHeadsBeforeTheLine)
{
    setHorizontal(*cali);
    cali->SetCaliType(TAVRIN_BEHAV_CALI_VERTICAL);
    EXPECT_EQ(cali->GetCaliType(), TAVRIN_BEHAV_CALI_VERTICAL);
    cali->Draw(nullptr, 1000, 500, true);
    const rec::Rgba color = rec::rgba(0xE6005C);
    const auto& b = recorded().batches;
    ASSERT_EQ(b.size(), 3u);
    expectSegment(b[0], pt(0.2f, pixel(234, 500)), pt(0.2f, pixel(266, 500)), color);
    expectSegment(b[1], pt(0.6f, pixel(234, 500)), pt(0.6f, pixel(266, 500)), color);
    expectSegment(b[2], pt(0.2f, 0.5f), pt(0.6f, 0.5f), color);
    ASSERT_EQ(recorded().texts.size(), 1u);
    EXPECT_POINT_NEAR(recorded().texts[0].position, 0.41f, 0.49f, 1e-6);
    EXPECT_EQ(textColors(), std::vector<std::string>{colourCall(0xE6005C)});
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(BehaviorCaliTest, ChangingTheTypeDropsTheHeadsAndTheColour)
{
    setHorizontal(*cali);
    cali->SetCaliType(TAVRIN_BEHAV_CALI_VERTICAL);
    cali->Draw(nullptr, 1000, 500, true);
    recorded().reset();
    cali->SetCaliType(static_cast<tagTAVRIN_BEHAV_CALI_TYPE>(7));  // any value but 1 is plain
    cali->Draw(nullptr, 1000, 500, true);
    ASSERT_EQ(recorded().batches.size(), 1u);
    expectSegment(recorded().batches[0], pt(0.2f, 0.5f), pt(0.6f, 0.5f), rec::rgba(0xD65814));
    EXPECT_EQ(textColors(), std::vector<std::string>{colourCall(0xD65814)});
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(BehaviorCaliTest, NullLineDrawsNothingWhateverTheType)
{
    for (auto type : {TAVRIN_BEHAV_CALI_LINE, TAVRIN_BEHAV_CALI_VERTICAL}) {
        cali->SetCaliType(type);
        cali->Draw(nullptr, 1000, 500, true);
        check->SetCaliType(type);
        check->Draw(nullptr, 1000, 500, true);
    }
    EXPECT_TRUE(recorded().calls.empty());
}

TEST_F(BehaviorCaliTest, SelectedLineShowsMarkersAndTheHeadsNone)
{
    setHorizontal(*cali);
    cali->SetCaliType(TAVRIN_BEHAV_CALI_VERTICAL);
    cali->SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    EXPECT_EQ(cali->GetObjStatus(), TAVRIN_OBJ_STATUS_SELECTED);
    cali->Draw(nullptr, 1000, 500, true);
    EXPECT_EQ(batchModes(), (std::vector<GLenum>{GL_LINES, GL_LINES, GL_LINES, GL_POINTS, GL_POINTS}));
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(BehaviorCaliTest, WithoutAViewSizeOnlyTheLineAndLabel)
{
    setHorizontal(*cali);
    cali->SetCaliType(TAVRIN_BEHAV_CALI_VERTICAL);
    cali->Draw(nullptr, 0, 500, true);
    EXPECT_EQ(batchModes(), (std::vector<GLenum>{GL_LINES}));
    EXPECT_EQ(recorded().texts.size(), 1u);
    EXPECT_TRUE(everythingFinite());
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(BehaviorCaliTest, HeadOfCoincidentVerticesIsHorizontal)
{
    cali->SetWndSize(1000, 1000);  // no vertices yet: two zero points
    EXPECT_EQ(headPixels(*cali, pt(0.5f, 0.5f)), (std::vector<int>{484, 500, 516, 500}));
}

TEST_F(BehaviorCaliTest, CheckDrawsTheVerticalTypeInYellow)
{
    setHorizontal(*check);
    check->SetCaliType(TAVRIN_BEHAV_CALI_VERTICAL);
    check->Draw(nullptr, 1000, 500, true);
    ASSERT_EQ(recorded().batches.size(), 3u);
    for (const rec::Batch& b : recorded().batches) {
        EXPECT_EQ(b.color, rec::rgba(0xFFFF00));
    }
    EXPECT_EQ(textColors(), std::vector<std::string>{colourCall(0xFFFF00)});
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(BehaviorCaliTest, CheckDrawsThePlainTypeExactlyLikeTheCalibration)
{
    char label[] = "walk";
    BehaviorCali* both[] = {cali.get(), check.get()};
    for (BehaviorCali* obj : both) {
        setHorizontal(*obj);
        obj->SetLabelText(label, 4);
        obj->SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    }
    cali->Draw(nullptr, 1000, 500, true);
    const std::vector<std::string> caliCalls = recorded().calls;
    recorded().reset();
    check->Draw(nullptr, 1000, 500, true);
    EXPECT_EQ(recorded().calls, caliCalls);
    EXPECT_FALSE(caliCalls.empty());
}

TEST_F(BehaviorCaliTest, EditsAndHitTestsGoToTheLine)
{
    setHorizontal(*check);
    check->Draw(nullptr, 1000, 500, true);  // the line's hit test works in view pixels
    EXPECT_TRUE(hits(*check, pt(0.4f, 0.5f)));
    EXPECT_FALSE(hits(*check, pt(0.4f, 0.6f)));
    EXPECT_EQ(vertexAt(*check, pt(0.61f, 0.5f)), 2u);
    const Points moved = {pt(0.2f, 0.4f), pt(0.6f, 0.4f)};
    drag(*check, pt(0.5f, 0.5f), pt(0.5f, 0.4f));
    EXPECT_TRUE(nearPoints(verticesOf(*check), moved, 1e-6f));
    drag(*check, pt(0.5f, 0.5f), pt(0.5f, 1.2f));
    EXPECT_TRUE(nearPoints(verticesOf(*check), moved, 1e-6f));
}
