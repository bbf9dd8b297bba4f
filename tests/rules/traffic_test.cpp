#include "rules/RulesTest.h"
#include "support/PolygonBuilders.h"

#include <Tavrin/ITCLine.h>
#include <Tavrin/Lane.h>

#include <ostream>

using Tavrin::ITCLine;
using Tavrin::Lane;

namespace {

const unsigned int kGreen = 0x00bd00;
const unsigned int kMagenta = 0xd90db0;
const unsigned int kLightYellow = 0xffff5b;
const unsigned int kLaneNormal = 0xffc021;
const unsigned int kLaneSelected = 0x00f0f0;

const std::vector<std::string> kLabelSmooth = {"GL_POLYGON_SMOOTH", "GL_LINE_SMOOTH"};

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
    ASSERT_NE(line, nullptr);
    char name[] = "Stop line";
    ASSERT_TRUE(line->SetLabelText(name, sizeof name - 1));
    line->Draw(nullptr, 1000, 1000, true);
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

    rec::gl().reset();
    line->Draw(nullptr, 1000, 1000, false);
    ASSERT_EQ(recorded().batchesOf(GL_LINES).size(), 1u);
    EXPECT_EQ(recorded().batchesOf(GL_LINES)[0].color, rec::rgba(kMagenta));
    EXPECT_EQ(recorded().batchesOf(GL_POINTS).size(), 3u);  // two markers, one halo
    ASSERT_EQ(recorded().texts.size(), 1u);
    EXPECT_POINT_NEAR(recorded().texts[0].position, 0.36f, 0.54f, 1e-6);  // middle (0.35, 0.55)
    EXPECT_EQ(colourAtText(0), colourCall(kMagenta));
    EXPECT_GL_STATE_CLEAN();
    hostDelete(line);
}

struct ItcColourRow {
    const char* name;
    int lineType;
    int status;
    unsigned int colour;
    std::size_t markers;
};

void PrintTo(const ItcColourRow& row, std::ostream* os) { *os << row.name; }

class ITCLineColours : public ITCLineTest, public ::testing::WithParamInterface<ItcColourRow> {};

TEST_P(ITCLineColours, LineAndLabelTakeTheTypeColourForTheStatus)
{
    const ItcColourRow& row = GetParam();
    ITCLine* line = lineFrom(pt(0.2f, 0.4f), pt(0.6f, 0.8f));
    line->SetLineType(static_cast<tagTAVRIN_ITC_LINE_TYPE>(row.lineType));
    line->SetObjStatus(static_cast<tagTAVRIN_OBJ_STATUS>(row.status));
    line->Draw(nullptr, 640, 480, true);

    ASSERT_EQ(recorded().batchesOf(GL_LINES).size(), 1u);  // always a plain segment
    const rec::Batch segment = recorded().batchesOf(GL_LINES)[0];
    EXPECT_EQ(segment.color, rec::rgba(row.colour));
    EXPECT_FLOAT_EQ(segment.lineWidth, 2.0f);
    EXPECT_EQ(recorded().batchesOf(GL_POINTS).size(), row.markers);
    EXPECT_EQ(recorded().batchesOf(GL_LINE_LOOP).size(), 0u);
    ASSERT_EQ(recorded().texts.size(), 1u);
    EXPECT_EQ(colourAtText(0), colourCall(row.colour));
    EXPECT_GL_STATE_CLEAN();
}

INSTANTIATE_TEST_SUITE_P(
    Table, ITCLineColours,
    ::testing::Values(ItcColourRow{"GreenNormal", 1, 0, kGreen, 0},
                      ItcColourRow{"GreenSelected", 1, 1, kMagenta, 2},
                      ItcColourRow{"GreenHighlighted", 1, 2, kMagenta, 0},
                      ItcColourRow{"GreenOddStatus", 1, 5, kGreen, 0},
                      ItcColourRow{"DefaultNormal", 0, 0, kLightYellow, 0},
                      ItcColourRow{"OtherSelected", 2, 1, kLightYellow, 2},
                      ItcColourRow{"OtherHighlighted", 2, 2, kLightYellow, 0}),
    [](const ::testing::TestParamInfo<ItcColourRow>& info) { return info.param.name; });

struct ItcLabelRow {
    const char* name;
    tagTAVRIN_POINT a;
    tagTAVRIN_POINT b;
    tagTAVRIN_POINT corner;
};

void PrintTo(const ItcLabelRow& row, std::ostream* os) { *os << row.name; }

class ITCLineLabel : public ITCLineTest, public ::testing::WithParamInterface<ItcLabelRow> {};

TEST_P(ITCLineLabel, BoxIsPlacedFromTheLinesMiddle)
{
    const ItcLabelRow& row = GetParam();
    ITCLine* line = lineFrom(row.a, row.b);
    line->Draw(nullptr, 640, 480, true);
    // The whole label: its own state scope, the text colour, the anchor, one list.
    const std::vector<std::string> seq = recorded().sequence();
    ASSERT_GE(seq.size(), 16u);
    std::vector<std::string> labelCalls(seq.end() - 16, seq.end());
    EXPECT_EQ(labelCalls[8].compare(0, 14, "glRasterPos2f("), 0) << labelCalls[8];
    labelCalls.erase(labelCalls.begin() + 8);
    EXPECT_EQ(labelCalls, concat({enterCalls(kLabelSmooth),
                                  {colourCall(kGreen), "glGenLists(1)", "glDeleteLists(list,1)"},
                                  leaveCalls(kLabelSmooth)}));
    ASSERT_EQ(recorded().texts.size(), 1u);
    EXPECT_POINT_NEAR(recorded().texts[0].position, row.corner.x, row.corner.y, 1e-6);
    EXPECT_GL_STATE_CLEAN();
}

INSTANTIATE_TEST_SUITE_P(
    Table, ITCLineLabel,
    ::testing::Values(
        ItcLabelRow{"Inside", {0.2f, 0.4f}, {0.6f, 0.8f}, {0.41f, 0.59f}},
        ItcLabelRow{"RightEdgeWinsOverBottom", {0.9f, 0.9f}, {1.0f, 1.0f}, {0.87f, 0.94f}}),
    [](const ::testing::TestParamInfo<ItcLabelRow>& info) { return info.param.name; });

TEST_F(ITCLineTest, NullLineDrawsNothingNotEvenItsLabel)
{
    ITCLine* line = hostCreate<ITCLine>();
    char name[] = "Lane 1";
    line->SetLabelText(name, 6);
    line->Draw(nullptr, 640, 480, true);
    EXPECT_TRUE(recorded().calls.empty());
    EXPECT_TRUE(line->IsNull());
    EXPECT_FALSE(hits(*line, pt(0.0f, 0.0f)));

    tagTAVRIN_POINT three[3] = {pt(0.1f, 0.1f), pt(0.2f, 0.2f), pt(0.3f, 0.3f)};
    EXPECT_FALSE(line->SetPoints(three, 3));  // the line takes at most two
    line->Draw(nullptr, 640, 480, true);
    EXPECT_TRUE(recorded().calls.empty());
}

TEST_F(ITCLineTest, CountReportedIsTheStoredOneNotTheLines)
{
    ITCLine* line = hostCreate<ITCLine>();
    tagTAVRIN_POINT three[3] = {pt(0.1f, 0.1f), pt(0.2f, 0.2f), pt(0.3f, 0.3f)};
    ASSERT_TRUE(line->SetPoints(three, 2));
    EXPECT_FALSE(line->SetPoints(three, 3));  // refused by the line, kept in the copy

    unsigned int count = 0;
    EXPECT_TRUE(samePoints(bufferOf(*line, &count), {three[0], three[1], three[2], o, o, o, o, o, o, o}));
    EXPECT_EQ(count, 3u);
    // A Draw reads the line back, count included.
    line->Draw(nullptr, 640, 480, true);
    bufferOf(*line, &count);
    EXPECT_EQ(count, 2u);
}

TEST_F(ITCLineTest, RefusedInputChangesNothing)
{
    ITCLine* line = lineFrom(pt(0.2f, 0.5f), pt(0.6f, 0.5f));
    tagTAVRIN_POINT eleven[11] = {};
    EXPECT_FALSE(line->SetPoints(eleven, 11));
    EXPECT_FALSE(line->SetPoints(nullptr, 2));
    tagTAVRIN_POINT bad[2] = {pt(kNaN, 0.1f), pt(0.1f, 0.1f)};
    EXPECT_FALSE(line->SetPoints(bad, 2));
    drag(*line, pt(0.5f, 0.5f), pt(0.95f, 0.5f));  // p2 would reach 1.05
    drag(*line, pt(0.5f, 0.5f), pt(kInf, 0.5f));

    tagTAVRIN_POINT out[10];
    unsigned int count = 0;
    EXPECT_FALSE(line->GetPoints(nullptr, &count));
    EXPECT_FALSE(line->GetPoints(out, nullptr));
    EXPECT_TRUE(samePoints(verticesOf(*line), {pt(0.2f, 0.5f), pt(0.6f, 0.5f)}));
}

// ---------------------------------------------------------------------------------
// Lane.

class LaneTest : public RuleTest {
protected:
    Lane* laneWithArrow()
    {
        Lane* lane = hostCreate<Lane>();
        EXPECT_TRUE(lane->SetPoints(kSquare, 4));
        tagTAVRIN_POINT ends[2] = {pt(0.25f, 0.3f), pt(0.35f, 0.3f)};
        EXPECT_TRUE(lane->SetArrowPoints(ends[0], ends[1]));
        return lane;
    }
};

TEST_F(LaneTest, HostDrivesALane)
{
    Lane* lane = laneWithArrow();
    ASSERT_NE(lane, nullptr);
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
    const auto& batches = recorded().batches;
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
    EXPECT_EQ(colourAtText(0), colourCall(kLaneNormal));
    EXPECT_GL_STATE_CLEAN();
    hostDelete(lane);
}

TEST_F(LaneTest, StatusTurnsOutlineArrowAndLabelTogether)
{
    Lane* lane = laneWithArrow();
    for (int status : {1, 2}) {
        lane->SetObjStatus(static_cast<tagTAVRIN_OBJ_STATUS>(status));
        EXPECT_EQ(lane->GetObjStatus(), status);
        rec::gl().reset();
        lane->Draw(nullptr, 1000, 1000, true);
        EXPECT_EQ(countBatches(GL_LINE_LOOP, rec::rgba(kLaneSelected), 4), 1u) << status;
        EXPECT_EQ(countBatches(GL_LINE_LOOP, rec::rgba(kLaneSelected), 8), 1u) << status;
        EXPECT_EQ(colourAtText(0), colourCall(kLaneSelected));
        // Handles on the outline's corners only in status 1; never on the arrow.
        EXPECT_EQ(recorded().batchesOf(GL_POINTS).size(), status == 1 ? 4u : 0u);
        EXPECT_GL_STATE_CLEAN();
    }
}

TEST_F(LaneTest, ArrowMovesOnlyWithAnAcceptedDrag)
{
    Lane* lane = laneWithArrow();
    drag(*lane, pt(0.3f, 0.3f), pt(1.0f, 0.3f));  // the outline would reach x = 1.1
    EXPECT_TRUE(samePoints(arrowOf(*lane), {pt(0.25f, 0.3f), pt(0.35f, 0.3f)}));
    drag(*lane, pt(0.3f, 0.3f), pt(0.4f, 0.45f));
    EXPECT_TRUE(nearPoints(arrowOf(*lane), {pt(0.35f, 0.45f), pt(0.45f, 0.45f)}, 1e-6f));
}

TEST_F(LaneTest, ArrowIsNeitherHitNorDraggedByVertex)
{
    Lane* lane = hostCreate<Lane>();
    tagTAVRIN_POINT ends[2] = {pt(0.6f, 0.6f), pt(0.7f, 0.6f)};
    ASSERT_TRUE(lane->SetArrowPoints(ends[0], ends[1]));
    EXPECT_EQ(vertexAt(*lane, ends[0]), 0u);
    EXPECT_FALSE(hits(*lane, ends[0]));
    EXPECT_TRUE(lane->IsNull());  // the outline alone decides
    lane->SetSelPointIndex(1);
    dragVertex(*lane, ends[0], pt(0.5f, 0.5f));
    EXPECT_TRUE(samePoints(arrowOf(*lane), {ends[0], ends[1]}));
}

TEST_F(LaneTest, EmptyLaneStillPlacesItsLabelFromTheOrigin)
{
    Lane* lane = hostCreate<Lane>();
    lane->Draw(nullptr, 640, 480, true);
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
