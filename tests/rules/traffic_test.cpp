#include "rules/RulesTest.h"

#include <Tavrin/ITCLine.h>
#include <Tavrin/Lane.h>

using Tavrin::ITCLine;
using Tavrin::Lane;

namespace {

const unsigned int kGreen = 0x00bd00;
const unsigned int kMagenta = 0xd90db0;
const unsigned int kLightYellow = 0xffff5b;
const unsigned int kLaneNormal = 0xffc021;
const unsigned int kLaneSelected = 0x00f0f0;

const tagTAVRIN_POINT o = {0.0f, 0.0f};

}  // namespace

class TrafficTest : public RuleTest {
protected:
    ITCLine* lineFrom(tagTAVRIN_POINT a, tagTAVRIN_POINT b)
    {
        return hostCreate<ITCLine>({a, b});
    }
    Lane* laneWithArrow()
    {
        Lane* lane = hostCreate<Lane>(smallSquare());
        EXPECT_TRUE(setArrow(*lane, pt(0.25f, 0.3f), pt(0.35f, 0.3f)));
        return lane;
    }
};

TEST_F(TrafficTest, HostDrivesATrafficLine)
{
    ITCLine* line = lineFrom(pt(0.2f, 0.5f), pt(0.6f, 0.5f));
    char name[] = "Stop line";
    ASSERT_TRUE(line->SetLabelText(name, sizeof name - 1));
    line->Draw(nullptr, 1000, 1000, true);  // gives the line its view size for the pixel hits
    EXPECT_TRUE(hits(*line, pt(0.4f, 0.5005f)));
    EXPECT_EQ(vertexAt(*line, pt(0.205f, 0.5f)), 1u);
    line->SetSelPointIndex(1);
    line->SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    dragVertex(*line, pt(0.205f, 0.5f), pt(0.105f, 0.4f));  // p1 moves by (-0.1, -0.1)
    drag(*line, pt(0.3f, 0.5f), pt(0.3f, 0.6f));
    unsigned int count = 0;
    EXPECT_TRUE(nearPoints(bufferOf(*line, &count), {pt(0.1f, 0.5f), pt(0.6f, 0.6f), o, o, o, o, o, o, o, o},
                           1e-6f));
    EXPECT_EQ(count, 2u);

    drawn(*line, 1000, 1000);
    EXPECT_EQ(countBatches(GL_LINES, rec::rgba(kMagenta), 2), 1u);
    EXPECT_EQ(recorded().batchesOf(GL_POINTS).size(), 3u);  // two markers, one halo
    EXPECT_ONE_TEXT(0.36f, 0.54f, kMagenta);  // from the middle (0.35, 0.55)
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(TrafficTest, LineAndLabelTakeTheTypeColourForTheStatus)
{
    const struct { int lineType, status; unsigned int colour; std::size_t markers; } cases[] = {
        {1, 0, kGreen, 0},       {1, 1, kMagenta, 2},     {1, 2, kMagenta, 0},
        {1, 5, kGreen, 0},       {0, 0, kLightYellow, 0}, {2, 1, kLightYellow, 2},
        {2, 2, kLightYellow, 0},
    };
    ITCLine* line = lineFrom(pt(0.2f, 0.4f), pt(0.6f, 0.8f));
    for (const auto& c : cases) {
        SCOPED_TRACE(::testing::Message() << "type " << c.lineType << " status " << c.status);
        line->SetLineType(static_cast<tagTAVRIN_ITC_LINE_TYPE>(c.lineType));
        line->SetObjStatus(static_cast<tagTAVRIN_OBJ_STATUS>(c.status));
        drawn(*line, 640, 480);
        ASSERT_EQ(recorded().batchesOf(GL_LINES).size(), 1u);  // always a plain segment
        EXPECT_EQ(recorded().batchesOf(GL_LINES)[0].color, rec::rgba(c.colour));
        EXPECT_FLOAT_EQ(recorded().batchesOf(GL_LINES)[0].lineWidth, 2.0f);
        EXPECT_EQ(recorded().batchesOf(GL_POINTS).size(), c.markers);
        EXPECT_EQ(recorded().batchesOf(GL_LINE_LOOP).size(), 0u);
        EXPECT_ONE_TEXT(0.41f, 0.59f, c.colour);
        EXPECT_GL_STATE_CLEAN();
    }
}

TEST_F(TrafficTest, NullLineDrawsNothingAndTheCountReportedIsTheStoredOneUntilADraw)
{
    ITCLine* line = hostCreate<ITCLine>();
    char name[] = "Lane 1";
    line->SetLabelText(name, 6);
    tagTAVRIN_POINT three[3] = {pt(0.1f, 0.1f), pt(0.2f, 0.2f), pt(0.3f, 0.3f)};
    EXPECT_FALSE(line->SetPoints(three, 3));  // the line takes at most two
    line->Draw(nullptr, 640, 480, true);
    EXPECT_TRUE(recorded().calls.empty());
    EXPECT_TRUE(line->IsNull());
    EXPECT_FALSE(hits(*line, pt(0.0f, 0.0f)));
    ASSERT_TRUE(line->SetPoints(three, 2));
    EXPECT_FALSE(line->SetPoints(three, 3));  // refused by the line, kept in the copy
    unsigned int count = 0;
    EXPECT_TRUE(samePoints(bufferOf(*line, &count), {three[0], three[1], three[2], o, o, o, o, o, o, o}));
    EXPECT_EQ(count, 3u);
    line->Draw(nullptr, 640, 480, true);  // reads the line back, count included
    bufferOf(*line, &count);
    EXPECT_EQ(count, 2u);
}

TEST_F(TrafficTest, LineRefusedInputChangesNothing)
{
    ITCLine* line = lineFrom(pt(0.2f, 0.5f), pt(0.6f, 0.5f));
    tagTAVRIN_POINT eleven[11] = {};
    EXPECT_FALSE(line->SetPoints(eleven, 11));
    EXPECT_FALSE(line->SetPoints(nullptr, 2));
    tagTAVRIN_POINT bad[2] = {pt(kNaN, 0.1f), pt(0.1f, 0.1f)};
    EXPECT_FALSE(line->SetPoints(bad, 2));
    drag(*line, pt(0.5f, 0.5f), pt(0.95f, 0.5f));  // p2 would reach 1.05
    drag(*line, pt(0.5f, 0.5f), pt(kInf, 0.5f));
    unsigned int count = 0;
    EXPECT_FALSE(line->GetPoints(nullptr, &count));
    EXPECT_FALSE(line->GetPoints(eleven, nullptr));
    EXPECT_TRUE(samePoints(verticesOf(*line), {pt(0.2f, 0.5f), pt(0.6f, 0.5f)}));
    drawn(*lineFrom(pt(0.9f, 0.9f), pt(1.0f, 1.0f)), 640, 480);
    EXPECT_ONE_TEXT(0.87f, 0.94f, kGreen);  // the right edge wins over the bottom
}

TEST_F(TrafficTest, HostDrivesALane)
{
    Lane* lane = laneWithArrow();
    char name[] = "Bus lane";
    lane->SetLabelText(name, 8);
    EXPECT_EQ(vertexAt(*lane, pt(0.4f, 0.395f)), 3u);
    lane->SetSelPointIndex(3);
    dragVertex(*lane, pt(0.4f, 0.395f), pt(0.45f, 0.445f));
    EXPECT_TRUE(hits(*lane, pt(0.3f, 0.3f)));
    drag(*lane, pt(0.3f, 0.3f), pt(0.3f, 0.4f));
    EXPECT_TRUE(nearPoints(verticesOf(*lane),
                           {pt(0.2f, 0.3f), pt(0.4f, 0.3f), pt(0.45f, 0.55f), pt(0.2f, 0.5f)}, 1e-6f));
    EXPECT_TRUE(nearPoints(arrowOf(*lane), {pt(0.25f, 0.4f), pt(0.35f, 0.4f)}, 1e-6f));

    lane->Draw(nullptr, 1000, 1000, true);
    expectOutlineThenArrow(kLaneNormal);
    EXPECT_POINT_NEAR(recorded().batches.back().at(7), 0.25f, 0.4f, 1e-6);  // the tail
    EXPECT_POINT_NEAR(recorded().batches.back().at(3), 0.35f, 0.4f, 1e-6);  // the tip
    EXPECT_EQ(countBatches(GL_POLYGON, rec::rgba(kLaneNormal, 40), 3), 2u);
    EXPECT_ONE_TEXT(0.21f, 0.29f, kLaneNormal);
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(TrafficTest, LaneStatusTurnsOutlineArrowAndLabelTogether)
{
    Lane* lane = laneWithArrow();
    for (int status : {1, 2}) {
        SCOPED_TRACE(status);
        lane->SetObjStatus(static_cast<tagTAVRIN_OBJ_STATUS>(status));
        drawn(*lane, 1000, 1000);
        expectOutlineThenArrow(kLaneSelected);
        EXPECT_EQ(textColors().at(0), colourCall(kLaneSelected));
        // Handles on the outline's corners only in status 1; never on the arrow.
        EXPECT_EQ(recorded().batchesOf(GL_POINTS).size(), status == 1 ? 4u : 0u);
        EXPECT_GL_STATE_CLEAN();
    }
}

TEST_F(TrafficTest, LaneArrowMovesOnlyWithAnAcceptedWholeDragAndRefusalsKeepIt)
{
    Lane* lane = laneWithArrow();
    drag(*lane, pt(0.3f, 0.3f), pt(1.0f, 0.3f));  // the outline would reach x = 1.1
    EXPECT_TRUE(samePoints(arrowOf(*lane), {pt(0.25f, 0.3f), pt(0.35f, 0.3f)}));
    drag(*lane, pt(0.3f, 0.3f), pt(0.4f, 0.45f));
    EXPECT_TRUE(nearPoints(arrowOf(*lane), {pt(0.35f, 0.45f), pt(0.45f, 0.45f)}, 1e-6f));

    Lane* bare = hostCreate<Lane>();  // an arrow alone is neither hit nor dragged by vertex
    const tagTAVRIN_POINT ends[2] = {pt(0.6f, 0.6f), pt(0.7f, 0.6f)};
    ASSERT_TRUE(setArrow(*bare, ends[0], ends[1]));
    EXPECT_EQ(vertexAt(*bare, ends[0]), 0u);
    EXPECT_FALSE(hits(*bare, ends[0]));
    EXPECT_TRUE(bare->IsNull());
    bare->SetSelPointIndex(1);
    dragVertex(*bare, ends[0], pt(0.5f, 0.5f));
    EXPECT_TRUE(samePoints(arrowOf(*bare), {ends[0], ends[1]}));

    lane = laneWithArrow();  // refusals leave outline and arrow as they were
    tagTAVRIN_POINT eleven[11] = {};
    EXPECT_FALSE(lane->SetPoints(eleven, 11));
    EXPECT_FALSE(lane->SetPoints(nullptr, 3));
    EXPECT_FALSE(setArrow(*lane, pt(0.5f, kNaN), pt(0.5f, 0.5f)));
    EXPECT_FALSE(lane->GetArrowPoints(&eleven[0], nullptr));
    EXPECT_FALSE(lane->GetArrowPoints(nullptr, &eleven[0]));
    unsigned int count = 0;
    EXPECT_FALSE(lane->GetPoints(nullptr, &count));
    EXPECT_TRUE(samePoints(arrowOf(*lane), {pt(0.25f, 0.3f), pt(0.35f, 0.3f)}));
    EXPECT_TRUE(samePoints(verticesOf(*lane), smallSquare()));
    EXPECT_TRUE(lane->SetPoints(eleven, 10));
}
