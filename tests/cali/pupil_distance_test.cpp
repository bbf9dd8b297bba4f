#include "support/CaliTest.h"
#include "support/PolygonBuilders.h"

#include <Tavrin/PupilDistance.h>

using Tavrin::PupilDistance;

namespace {

const rec::Rgba kPupil = rec::rgba(0xE6005C);

class PupilDistanceTest : public GlTest {
protected:
    void SetUp() override
    {
        GlTest::SetUp();
        ASSERT_NE(pupils, nullptr);
    }

    void setPupils(tagTAVRIN_POINT s0, tagTAVRIN_POINT s1)
    {
        tagTAVRIN_POINT points[2] = {s0, s1};
        ASSERT_TRUE(pupils->SetPoints(points, 2));
    }

    Owned<PupilDistance> pupils = create<PupilDistance>();
};

}  // namespace

TEST_F(PupilDistanceTest, ExactlyTwoFinitePoints)
{
    setPupils(pt(0.3f, 0.5f), pt(0.6f, 0.5f));
    tagTAVRIN_POINT three[3] = {pt(0.1f, 0.1f), pt(0.2f, 0.2f), pt(0.3f, 0.3f)};
    EXPECT_FALSE(pupils->SetPoints(three, 1));
    EXPECT_FALSE(pupils->SetPoints(three, 3));
    EXPECT_FALSE(pupils->SetPoints(nullptr, 2));
    tagTAVRIN_POINT nan[2] = {pt(0.1f, 0.1f), pt(0.2f, NAN)};
    EXPECT_FALSE(pupils->SetPoints(nan, 2));

    tagTAVRIN_POINT out[3] = {pt(7, 7), pt(7, 7), pt(7, 7)};
    unsigned int count = 0;
    ASSERT_TRUE(pupils->GetPoints(out, &count));
    EXPECT_EQ(count, 2u);
    EXPECT_POINT_NEAR(out[0], 0.3f, 0.5f, 0.0);
    EXPECT_POINT_NEAR(out[1], 0.6f, 0.5f, 0.0);
    EXPECT_POINT_NEAR(out[2], 7.0f, 7.0f, 0.0);  // room for 2 is all it needs
    EXPECT_FALSE(pupils->GetPoints(nullptr, &count));
    EXPECT_FALSE(pupils->GetPoints(out, nullptr));
}

TEST_F(PupilDistanceTest, PupilsOnARowGetVerticalBarsAndAClampedExtension)
{
    setPupils(pt(0.6f, 0.5f), pt(0.3f, 0.5f));
    pupils->Draw(nullptr, 800, 600, true);
    const auto& b = recorded().batches;
    ASSERT_EQ(b.size(), 5u);
    expectSegment(b[0], pt(0.3f, pixel(284, 600)), pt(0.3f, pixel(316, 600)), kPupil);  // the left pupil
    expectSegment(b[1], pt(0.6f, pixel(284, 600)), pt(0.6f, pixel(316, 600)), kPupil);
    expectSegment(b[2], pt(0.28f, 0.5f), pt(0.62f, 0.5f), kPupil);  // 16 / 800 each way
    expectSegment(b[3], pt(0.6f, 0.5f), pt(0.3f, 0.5f), kPupil);    // from the second to the first
    expectSegment(b[4], pt(0.6f, 0.5f), pt(0.3f, 0.5f), kPupil);    // the pupil line, on top
    EXPECT_TRUE(recorded().texts.empty());  // the label text is not drawn
    EXPECT_GL_STATE_CLEAN();

    recorded().reset();
    setPupils(pt(0.005f, 0.5f), pt(0.995f, 0.5f));
    pupils->Draw(nullptr, 800, 600, true);
    ASSERT_EQ(recorded().batches.size(), 5u);
    expectSegment(recorded().batches[2], pt(0.0f, 0.5f), pt(1.0f, 0.5f), kPupil);
}

TEST_F(PupilDistanceTest, PupilsInAColumnExtendBySixteenOverTheWidth)
{
    setPupils(pt(0.4f, 0.7f), pt(0.4f, 0.3f));
    pupils->Draw(nullptr, 800, 400, true);
    const auto& b = recorded().batches;
    ASSERT_EQ(b.size(), 5u);
    expectSegment(b[0], pt(pixel(304, 800), 0.3f), pt(pixel(336, 800), 0.3f), kPupil);  // the upper pupil
    expectSegment(b[2], pt(0.4f, 0.28f), pt(0.4f, 0.72f), kPupil);  // 0.02, not 16 / 400 = 0.04
    expectSegment(b[3], pt(0.4f, 0.7f), pt(0.4f, 0.3f), kPupil);
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(PupilDistanceTest, ObliquePupilsExtendAlongTheirLineUnclamped)
{
    setPupils(pt(0.625f, 0.25f), pt(0.25f, 0.75f));
    pupils->Draw(nullptr, 1000, 800, true);
    const auto& b = recorded().batches;
    ASSERT_EQ(b.size(), 5u);
    // k = -400 / 375 in pixels: the perpendicular at 43 degrees.
    expectSegment(b[0], pt(pixel(238, 1000), pixel(589, 800)), pt(pixel(262, 1000), pixel(611, 800)), kPupil);
    expectSegment(b[1], pt(pixel(613, 1000), pixel(189, 800)), pt(pixel(637, 1000), pixel(211, 800)), kPupil);
    expectSegment(b[2], pt(0.2390511f, 0.7645985f), pt(0.6359489f, 0.2354015f), kPupil, 2e-7);
    expectSegment(b[3], pt(0.625f, 0.25f), pt(0.25f, 0.75f), kPupil);

    recorded().reset();
    setPupils(pt(0.0f, 1.0f), pt(0.375f, 0.5f));
    pupils->Draw(nullptr, 1000, 800, true);
    ASSERT_EQ(recorded().batches.size(), 5u);
    expectSegment(recorded().batches[2], pt(-0.0109489f, 1.0145985f), pt(0.3859489f, 0.4854015f), kPupil,
                  2e-7);
}

TEST_F(PupilDistanceTest, PupilsWithinOnePixelAreNotExtended)
{
    setPupils(pt(0.5f, 0.5f), pt(0.5004f, 0.5004f));
    pupils->Draw(nullptr, 1000, 1000, true);
    ASSERT_EQ(recorded().batches.size(), 5u);
    expectSegment(recorded().batches[2], pt(0.5f, 0.5f), pt(0.5004f, 0.5004f), kPupil);
    EXPECT_TRUE(everythingFinite());
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(PupilDistanceTest, SelectionShowsOnlyThePupilLineMarkers)
{
    setPupils(pt(0.3f, 0.5f), pt(0.6f, 0.5f));
    pupils->SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    pupils->SetSelPointIndex(1);
    EXPECT_EQ(pupils->GetObjStatus(), TAVRIN_OBJ_STATUS_SELECTED);
    pupils->Draw(nullptr, 800, 600, true);
    EXPECT_EQ(batchModes(),
              (std::vector<GLenum>{GL_LINES, GL_LINES, GL_LINES, GL_LINES, GL_LINES, GL_POINTS, GL_POINTS, GL_POINTS}));
    // The active pupil: a 16-pixel halo in colour 2 under its dot.
    EXPECT_EQ(recorded().batches[5].color, rec::rgba(0xFFC000));
    EXPECT_FLOAT_EQ(recorded().batches[5].pointSize, 16.0f);
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(PupilDistanceTest, NullLineDrawsNothing)
{
    pupils->Draw(nullptr, 800, 600, true);
    EXPECT_TRUE(recorded().calls.empty());
}

TEST_F(PupilDistanceTest, WithoutAViewSizeOnlyTheSegmentAndTheLine)
{
    setPupils(pt(0.4f, 0.7f), pt(0.4f, 0.3f));
    pupils->Draw(nullptr, 0, 400, true);
    ASSERT_EQ(recorded().batches.size(), 2u);
    expectSegment(recorded().batches[0], pt(0.4f, 0.7f), pt(0.4f, 0.3f), kPupil);
    EXPECT_TRUE(everythingFinite());
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(PupilDistanceTest, BarWorksOnTheStoredPupils)
{
    tagTAVRIN_POINT end = pt(0.5f, 0.5f);
    tagTAVRIN_POINT out[2] = {pt(7, 7), pt(7, 7)};
    pupils->GetPupilLine(end, out);  // no view size: nothing written
    EXPECT_POINT_NEAR(out[0], 7.0f, 7.0f, 0.0);
    pupils->SetWndSize(1000, 1000);
    pupils->GetPupilLine(end, out);  // two cleared pupils: no direction, a horizontal bar
    EXPECT_POINT_NEAR(out[0], 0.484f, 0.5f, 1e-7);
    EXPECT_POINT_NEAR(out[1], 0.516f, 0.5f, 1e-7);

    setPupils(pt(0.3f, 0.5f), pt(0.6f, 0.5f));
    pupils->GetPupilLine(end, out);
    EXPECT_POINT_NEAR(out[0], 0.5f, 0.484f, 1e-7);
    EXPECT_POINT_NEAR(out[1], 0.5f, 0.516f, 1e-7);
    pupils->GetPupilLine(end, nullptr);
}

TEST_F(PupilDistanceTest, EditsGoToTheLine)
{
    setPupils(pt(0.3f, 0.5f), pt(0.6f, 0.5f));
    EXPECT_EQ(vertexAt(*pupils, pt(0.6f, 0.51f)), 2u);
    pupils->SetSelPointIndex(2);
    EXPECT_EQ(pupils->GetSelPointIndex(), 2u);
    dragVertex(*pupils, pt(0.5f, 0.5f), pt(0.5f, 0.6f));
    drag(*pupils, pt(0.5f, 0.5f), pt(0.5f, 0.6f));
    EXPECT_TRUE(nearPoints(verticesOf(*pupils), {pt(0.3f, 0.6f), pt(0.6f, 0.7f)}, 1e-6f));
    pupils->Draw(nullptr, 1000, 1000, true);
    EXPECT_TRUE(hits(*pupils, pt(0.45f, 0.65f)));
}
