#include "rules/RulesTest.h"
#include "support/PolygonBuilders.h"

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

tagTAVRIN_POINT kSquare[4] = {{0.2f, 0.2f}, {0.4f, 0.2f}, {0.4f, 0.4f}, {0.2f, 0.4f}};
const tagTAVRIN_POINT o = {0.0f, 0.0f};

}  // namespace

class ITCLineTest : public RuleTest {
protected:
    ITCLine* lineFrom(tagTAVRIN_POINT a, tagTAVRIN_POINT b)
    {
        ITCLine* line = hostCreate<ITCLine>();
        tagTAVRIN_POINT ends[2] = {a, b};
        EXPECT_TRUE(line->SetPoints(ends, 2));
        return line;
    }
};

TEST_F(ITCLineTest, HostDrivesATrafficLine)
{
    ITCLine* line = lineFrom(pt(0.2f, 0.5f), pt(0.6f, 0.5f));
    char name[] = "Stop line";
    ASSERT_TRUE(line->SetLabelText(name, sizeof name - 1));
    drawn(*line);
    EXPECT_EQ(line->GetLineType(), TAVRIN_ITC_LINE_GREEN);
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

    drawn(*line);
    EXPECT_EQ(recorded().batchesOf(GL_POINTS).size(), 3u);  // two markers, one halo
    ASSERT_EQ(recorded().texts.size(), 1u);
    EXPECT_POINT_NEAR(recorded().texts[0].position, 0.36f, 0.54f, 1e-6);  // middle (0.35, 0.55)
    // Near the corner the right edge wins over the bottom.
    drawn(*lineFrom(pt(0.9f, 0.9f), pt(1.0f, 1.0f)), 640, 480);
    EXPECT_POINT_NEAR(recorded().texts.at(0).position, 0.87f, 0.94f, 1e-6);
    EXPECT_GL_STATE_CLEAN();
    hostDelete(line);
}

TEST_F(ITCLineTest, LineAndLabelTakeTheTypeColourForTheStatus)
{
    const struct {
        int lineType, status;
        unsigned int colour;
        std::size_t markers;
    } rows[] = {{1, 0, kGreen, 0},       {1, 1, kMagenta, 2},      {1, 2, kMagenta, 0},
                {1, 5, kGreen, 0},       {0, 0, kLightYellow, 0},  {2, 1, kLightYellow, 2},
                {2, 2, kLightYellow, 0}};
    ITCLine* line = lineFrom(pt(0.2f, 0.4f), pt(0.6f, 0.8f));
    for (const auto& row : rows) {
        SCOPED_TRACE(::testing::Message() << "type " << row.lineType << " status " << row.status);
        line->SetLineType(static_cast<tagTAVRIN_ITC_LINE_TYPE>(row.lineType));
        line->SetObjStatus(static_cast<tagTAVRIN_OBJ_STATUS>(row.status));
        drawn(*line, 640, 480);
        ASSERT_EQ(countBatches(GL_LINES, rec::rgba(row.colour), 2), 1u);  // always a plain segment
        EXPECT_FLOAT_EQ(recorded().batchesOf(GL_LINES)[0].lineWidth, 2.0f);
        EXPECT_EQ(recorded().batchesOf(GL_POINTS).size(), row.markers);
        EXPECT_EQ(recorded().batches.size(), 1u + row.markers);
        EXPECT_EQ(textColors().at(0), colourCall(row.colour));
        EXPECT_GL_STATE_CLEAN();
    }
}

TEST_F(ITCLineTest, StoredCountNullLineAndRefusals)
{
    ITCLine* line = hostCreate<ITCLine>();
    char name[] = "Lane 1";
    line->SetLabelText(name, 6);
    EXPECT_TRUE(drawn(*line, 640, 480).calls.empty());  // a null line draws not even its label
    EXPECT_TRUE(line->IsNull());
    EXPECT_FALSE(hits(*line, pt(0.0f, 0.0f)));

    // Three vertices: refused by the line, kept in the stored copy and its count, until a
    // Draw reads the line back.
    tagTAVRIN_POINT three[3] = {pt(0.1f, 0.1f), pt(0.2f, 0.2f), pt(0.3f, 0.3f)};
    EXPECT_FALSE(line->SetPoints(three, 3));
    EXPECT_TRUE(drawn(*line, 640, 480).calls.empty());
    ASSERT_TRUE(line->SetPoints(three, 2));
    EXPECT_FALSE(line->SetPoints(three, 3));
    unsigned int count = 0;
    EXPECT_TRUE(samePoints(bufferOf(*line, &count), {three[0], three[1], three[2], o, o, o, o, o, o, o}));
    EXPECT_EQ(count, 3u);
    drawn(*line, 640, 480);
    bufferOf(*line, &count);
    EXPECT_EQ(count, 2u);

    ITCLine* edited = lineFrom(pt(0.2f, 0.5f), pt(0.6f, 0.5f));
    tagTAVRIN_POINT eleven[11] = {};
    EXPECT_FALSE(edited->SetPoints(eleven, 11));
    EXPECT_FALSE(edited->SetPoints(nullptr, 2));
    tagTAVRIN_POINT bad[2] = {pt(kNaN, 0.1f), pt(0.1f, 0.1f)};
    EXPECT_FALSE(edited->SetPoints(bad, 2));
    drag(*edited, pt(0.5f, 0.5f), pt(0.95f, 0.5f));  // p2 would reach 1.05
    drag(*edited, pt(0.5f, 0.5f), pt(kInf, 0.5f));
    EXPECT_FALSE(edited->GetPoints(nullptr, &count));
    EXPECT_FALSE(edited->GetPoints(eleven, nullptr));
    EXPECT_TRUE(samePoints(verticesOf(*edited), {pt(0.2f, 0.5f), pt(0.6f, 0.5f)}));
}

class LaneTest : public RuleTest {
protected:
    Lane* laneWithArrow()
    {
        Lane* lane = hostCreate<Lane>();
        EXPECT_TRUE(lane->SetPoints(kSquare, 4));
        EXPECT_TRUE(setArrow(*lane, pt(0.25f, 0.3f), pt(0.35f, 0.3f)));
        return lane;
    }
};

TEST_F(LaneTest, HostDrivesALane)
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

    const auto& batches = drawn(*lane).batches;
    ASSERT_GE(batches.size(), 2u);
    EXPECT_EQ(batches.front().mode, static_cast<GLenum>(GL_LINE_LOOP));
    EXPECT_EQ(batches.front().color, rec::rgba(kLaneNormal));
    EXPECT_EQ(batches.back().mode, static_cast<GLenum>(GL_LINE_LOOP));  // the arrow, last
    EXPECT_EQ(batches.back().vertices.size(), 8u);
    EXPECT_EQ(batches.back().color, rec::rgba(kLaneNormal));
    EXPECT_POINT_NEAR(batches.back().at(7), 0.25f, 0.4f, 1e-6);  // the tail
    EXPECT_POINT_NEAR(batches.back().at(3), 0.35f, 0.4f, 1e-6);  // the tip
    EXPECT_EQ(countBatches(GL_POLYGON, rec::rgba(kLaneNormal, 40), 3), 2u);
    ASSERT_EQ(recorded().texts.size(), 1u);
    EXPECT_POINT_NEAR(recorded().texts[0].position, 0.21f, 0.29f, 1e-6);
    EXPECT_EQ(textColors().at(0), colourCall(kLaneNormal));
    EXPECT_GL_STATE_CLEAN();
    hostDelete(lane);
}

TEST_F(LaneTest, StatusTurnsOutlineArrowAndLabelTogether)
{
    Lane* lane = laneWithArrow();
    for (int status : {1, 2}) {
        lane->SetObjStatus(static_cast<tagTAVRIN_OBJ_STATUS>(status));
        drawn(*lane);
        EXPECT_EQ(countBatches(GL_LINE_LOOP, rec::rgba(kLaneSelected), 4), 1u) << status;
        EXPECT_EQ(countBatches(GL_LINE_LOOP, rec::rgba(kLaneSelected), 8), 1u) << status;
        EXPECT_EQ(textColors().at(0), colourCall(kLaneSelected));
        // Handles on the outline's corners only in status 1; never on the arrow.
        EXPECT_EQ(recorded().batchesOf(GL_POINTS).size(), status == 1 ? 4u : 0u);
        EXPECT_GL_STATE_CLEAN();
    }
}

TEST_F(LaneTest, ArrowFollowsOnlyAcceptedWholeDrags)
{
    Lane* lane = laneWithArrow();
    drag(*lane, pt(0.3f, 0.3f), pt(1.0f, 0.3f));  // the outline would reach x = 1.1
    EXPECT_TRUE(samePoints(arrowOf(*lane), {pt(0.25f, 0.3f), pt(0.35f, 0.3f)}));
    drag(*lane, pt(0.3f, 0.3f), pt(0.4f, 0.45f));
    EXPECT_TRUE(nearPoints(arrowOf(*lane), {pt(0.35f, 0.45f), pt(0.45f, 0.45f)}, 1e-6f));

    // The arrow alone is neither hit nor dragged by vertex, and does not make a lane non-null.
    Lane* bare = hostCreate<Lane>();
    const tagTAVRIN_POINT tail = pt(0.6f, 0.6f), tip = pt(0.7f, 0.6f);
    ASSERT_TRUE(setArrow(*bare, tail, tip));
    EXPECT_EQ(vertexAt(*bare, tail), 0u);
    EXPECT_FALSE(hits(*bare, tail));
    EXPECT_TRUE(bare->IsNull());
    bare->SetSelPointIndex(1);
    dragVertex(*bare, tail, pt(0.5f, 0.5f));
    EXPECT_TRUE(samePoints(arrowOf(*bare), {tail, tip}));
}

TEST_F(LaneTest, EmptyLaneStillPlacesItsLabelFromTheOrigin)
{
    Lane* lane = hostCreate<Lane>();
    drawn(*lane, 640, 480);
    EXPECT_TRUE(recorded().batches.empty());
    ASSERT_EQ(recorded().texts.size(), 1u);
    EXPECT_POINT_NEAR(recorded().texts[0].position, 0.01f, -0.01f, 1e-6);
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(LaneTest, RefusedInputChangesNothing)
{
    Lane* lane = laneWithArrow();
    tagTAVRIN_POINT eleven[11] = {};
    EXPECT_FALSE(lane->SetPoints(eleven, 11));
    EXPECT_FALSE(lane->SetPoints(nullptr, 3));
    tagTAVRIN_POINT bad[2] = {pt(0.5f, kNaN), pt(0.5f, 0.5f)};
    EXPECT_FALSE(lane->SetArrowPoints(bad[0], bad[1]));
    EXPECT_FALSE(lane->GetArrowPoints(&bad[0], nullptr));
    EXPECT_FALSE(lane->GetArrowPoints(nullptr, &bad[0]));
    EXPECT_TRUE(samePoints(arrowOf(*lane), {pt(0.25f, 0.3f), pt(0.35f, 0.3f)}));
    unsigned int count = 0;
    EXPECT_FALSE(lane->GetPoints(nullptr, &count));
    EXPECT_TRUE(samePoints(verticesOf(*lane), Points(kSquare, kSquare + 4)));
    EXPECT_TRUE(lane->SetPoints(eleven, 10));
}
