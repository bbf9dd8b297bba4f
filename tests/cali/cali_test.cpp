// The calibration figures: the refusals they share, each figure's draw, its edits and the
// helpers beside SetPoints.
#include "support/CaliTest.h"
#include "support/PolygonBuilders.h"
#include "support/VirtualSlot.h"

#include <Tavrin/AtmCali.h>
#include <Tavrin/BehaviorCheck.h>
#include <Tavrin/BinoCali.h>
#include <Tavrin/ItsCali.h>
#include <Tavrin/LfCali.h>
#include <Tavrin/PupilDistance.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <typeinfo>

using namespace Tavrin;
using Modes = std::vector<std::string>;

namespace {

// The modes of the recorded batches by name, for comparing a figure's shape.
Modes modeNames()
{
    Modes names;
    for (GLenum mode : batchModes()) {
        names.push_back(rec::modeName(mode));
    }
    return names;
}

// SetPoints refusals (a count the figure cannot take, null, a non-finite point) leave the
// points as they were; GetPoints refuses null arguments.
template <class T>
void expectRefusals(const Points& valid, std::initializer_list<unsigned int> badCounts)
{
    SCOPED_TRACE(typeid(T).name());
    Owned<T> figure = create<T>();
    setVertices(*figure, valid);
    Points bad(11, pt(0.5f, 0.5f));
    for (unsigned int count : badCounts) {
        EXPECT_FALSE(figure->SetPoints(bad.data(), count)) << count;
    }
    const auto size = static_cast<unsigned int>(valid.size());
    EXPECT_FALSE(figure->SetPoints(nullptr, size));
    Points nonFinite = valid;
    nonFinite.back().y = kNaN;
    EXPECT_FALSE(figure->SetPoints(nonFinite.data(), size));
    nonFinite = valid;
    nonFinite.front().x = kInf;
    EXPECT_FALSE(figure->SetPoints(nonFinite.data(), size));
    EXPECT_TRUE(samePoints(verticesOf(*figure), valid));
    unsigned int count = 0;
    EXPECT_FALSE(figure->GetPoints(nullptr, &count));
    EXPECT_FALSE(figure->GetPoints(bad.data(), nullptr));
}

const rec::Rgba kNormal = rec::rgba(0x285EA6);
const rec::Rgba kSelected = rec::rgba(0xD90DB0);
const Points kRegion = {pt(0.1f, 0.1f), pt(0.9f, 0.1f), pt(0.9f, 0.9f), pt(0.1f, 0.9f)};

class AtmCaliTest : public GlTest {
protected:
    void setLine(tagTAVRIN_POINT a, tagTAVRIN_POINT b) { ASSERT_TRUE(atm->SetLinePoints(a, b)); }
    Points line()
    {
        Points ends(2, pt(-1, -1));
        EXPECT_TRUE(atm->GetLinePoints(&ends[0], &ends[1]));
        return ends;
    }

    Owned<AtmCali> atm = create<AtmCali>();
};

const Points kHorizontal = {pt(0.2f, 0.5f), pt(0.6f, 0.5f)};
const std::vector<int> kVerticalBar = {200, 484, 200, 516};

class BehaviorCaliTest : public GlTest {
protected:
    /// The bar at (0.2, 0.5) as the object computes it now, in pixels of a 1000 x 1000 view.
    std::vector<int> headPixels()
    {
        tagTAVRIN_POINT end = kHorizontal[0];
        tagTAVRIN_POINT out[2] = {pt(-1, -1), pt(-1, -1)};
        cali->GetVCaliLineHead(end, out);
        return {static_cast<int>(out[0].x * 1000.0f + 0.5f), static_cast<int>(out[0].y * 1000.0f + 0.5f),
                static_cast<int>(out[1].x * 1000.0f + 0.5f), static_cast<int>(out[1].y * 1000.0f + 0.5f)};
    }

    Owned<BehaviorCali> cali = create<BehaviorCali>();
    Owned<BehaviorCheck> check = create<BehaviorCheck>();
};

const rec::Rgba kPupil = rec::rgba(0xE6005C);

class PupilDistanceTest : public GlTest {
protected:
    Owned<PupilDistance> pupils = create<PupilDistance>();
};

/// Reads the two edge texts, which the figure never draws as glyphs.
class ItsCaliProbe : public ItsCali {
public:
    using ItsCali::m_heightText;
    using ItsCali::m_widthText;
};

const Points kSquare = {pt(0.2f, 0.2f), pt(0.6f, 0.2f), pt(0.6f, 0.6f), pt(0.2f, 0.6f)};

class ItsCaliTest : public GlTest {
protected:
    Owned<ItsCaliProbe> its{new ItsCaliProbe()};
};

const std::vector<std::string> kPointSmooth = {"GL_POINT_SMOOTH"};
const std::vector<std::string> kPolygonSmooth = {"GL_POLYGON_SMOOTH", "GL_LINE_SMOOTH"};

class BinoLfDraw : public GlTest {};

}  // namespace

TEST(CaliRefusals, LeaveThePointsAsTheyWere)
{
    const Points two = {pt(0.3f, 0.5f), pt(0.6f, 0.5f)};
    Points ten;  // the most an ITS calibration takes
    for (int i = 0; i < 10; ++i) {
        ten.push_back(pt(0.05f * static_cast<float>(i) + 0.1f, (i % 2) ? 0.2f : 0.4f));
    }
    expectRefusals<AtmCali>(kRegion, {5, 10, 11});
    expectRefusals<BehaviorCheck>(two, {11});
    expectRefusals<ItsCali>(ten, {11});
    expectRefusals<PupilDistance>(two, {1, 3});
    expectRefusals<BinoCali>({pt(0.3f, 0.4f)}, {2});
    expectRefusals<LfCali>({pt(0.3f, 0.4f)}, {2});
}

TEST(CaliSlots, EachClassAppendsItsOwnOperationsInOrder)
{
#if TAVRIN_TESTS_HAVE_SLOTS
    expectObjectSlots<AtmCali>();
    expectObjectSlots<BehaviorCali>();
    expectObjectSlots<BehaviorCheck>();
    expectObjectSlots<ItsCali>();
    expectObjectSlots<PupilDistance>();
    expectObjectSlots<BinoCali>();
    expectObjectSlots<LfCali>();
    const std::vector<long> added = {
        slotOf(&AtmCali::SetLinePoints),          slotOf(&AtmCali::GetLinePoints),
        slotOf(&AtmCali::MoveLinePoint),          slotOf(&AtmCali::CheckLinePointSelected),
        slotOf(&AtmCali::SetLineSelPointIndex),   slotOf(&AtmCali::GetLineSelPointIndex),
        slotOf(&BehaviorCheck::SetCaliType),      slotOf(&BehaviorCheck::GetCaliType),
        slotOf(&ItsCali::SetWidthLabelText),      slotOf(&ItsCali::SetHeightlabelText),
        // Non-virtual helpers stay out of the table.
        slotOf(&AtmCali::GetVCaliLineHead),       slotOf(&PupilDistance::GetPupilLine),
        slotOf(&ItsCali::GetMinYPoint),           slotOf(&BinoCali::SetRadius)};
    EXPECT_EQ(added, (std::vector<long>{28, 29, 30, 31, 32, 33, 28, 29, 28, 29, -1, -1, -1, -1}));
#else
    GTEST_SKIP() << "member pointer layout not known on this target";
#endif
}

TEST_F(AtmCaliTest, LineRefusalsAndMovesWithTheRegion)
{
    setLine(pt(0.2f, 0.5f), pt(0.6f, 0.5f));
    EXPECT_TRUE(atm->IsNull());  // the line is not consulted
    tagTAVRIN_POINT bad[2] = {pt(NAN, 0.5f), pt(0.3f, 0.3f)};
    EXPECT_FALSE(atm->GetLinePoints(&bad[1], nullptr));
    EXPECT_FALSE(atm->GetLinePoints(nullptr, &bad[1]));
    EXPECT_FALSE(atm->SetLinePoints(bad[0], bad[1]));
    EXPECT_TRUE(samePoints(line(), {pt(0.2f, 0.5f), pt(0.6f, 0.5f)}));

    setVertices(*atm, kRegion);
    drag(*atm, pt(0.5f, 0.5f), pt(0.7f, 0.5f));  // region corner would reach x = 1.1
    EXPECT_TRUE(samePoints(verticesOf(*atm), kRegion));
    EXPECT_TRUE(samePoints(line(), {pt(0.2f, 0.5f), pt(0.6f, 0.5f)}));
    drag(*atm, pt(0.5f, 0.5f), pt(0.55f, 0.45f));
    EXPECT_POINT_NEAR(verticesOf(*atm)[0], 0.15f, 0.05f, 1e-6);
    EXPECT_TRUE(nearPoints(line(), {pt(0.25f, 0.45f), pt(0.65f, 0.45f)}, 1e-6f));
}

TEST_F(AtmCaliTest, RegionAndLineKeepSeparateSelections)
{
    setVertices(*atm, kRegion);
    atm->SetSelPointIndex(1);
    dragVertex(*atm, pt(0.1f, 0.1f), pt(0.2f, 0.3f));  // works while the line is unset
    EXPECT_POINT_NEAR(verticesOf(*atm)[0], 0.2f, 0.3f, 1e-6);
    atm->SetSelPointIndex(0);
    setVertices(*atm, kRegion);
    setLine(pt(0.2f, 0.5f), pt(0.6f, 0.5f));
    tagTAVRIN_POINT onLineEnd = pt(0.6f, 0.51f);
    EXPECT_EQ(vertexAt(*atm, pt(0.9f, 0.9f)), 3u);
    EXPECT_EQ(vertexAt(*atm, onLineEnd), 0u);
    EXPECT_EQ(atm->CheckLinePointSelected(onLineEnd), 2u);
    EXPECT_EQ(atm->GetSelPointIndex(), 0u);  // the checks store nothing
    atm->SetSelPointIndex(3);
    atm->SetLineSelPointIndex(2);

    tagTAVRIN_POINT from = pt(0.5f, 0.5f);
    tagTAVRIN_POINT to = pt(0.45f, 0.55f);
    atm->MoveLinePoint(from, to);
    EXPECT_TRUE(nearPoints(line(), {pt(0.2f, 0.5f), pt(0.55f, 0.55f)}, 1e-6f));
    dragVertex(*atm, from, to);  // corner 3 to (0.85, 0.95), its neighbours follow; the line stays
    EXPECT_TRUE(nearPoints(verticesOf(*atm),
                           {pt(0.1f, 0.1f), pt(0.85f, 0.1f), pt(0.85f, 0.95f), pt(0.1f, 0.95f)}, 1e-6f));
    EXPECT_TRUE(nearPoints(line(), {pt(0.2f, 0.5f), pt(0.55f, 0.55f)}, 1e-6f));
}

TEST_F(AtmCaliTest, FigureShapes)
{
    const auto modesOf = [this](bool region, bool line, tagTAVRIN_OBJ_STATUS status, int width) {
        atm = create<AtmCali>();
        if (region) setVertices(*atm, kRegion);
        if (line) setLine(pt(0.2f, 0.5f), pt(0.6f, 0.5f));
        atm->SetObjStatus(status);
        recorded().reset();
        atm->Draw(nullptr, width, width / 2, true);
        EXPECT_TRUE(everythingFinite());
        EXPECT_GL_STATE_CLEAN();
        return modeNames();
    };
    EXPECT_TRUE(modesOf(false, true, TAVRIN_OBJ_STATUS_NORMAL, 1000).empty());
    EXPECT_TRUE(recorded().calls.empty());  // an empty region draws nothing at all
    EXPECT_EQ(modesOf(true, false, TAVRIN_OBJ_STATUS_NORMAL, 1000), Modes{"GL_LINE_LOOP"});
    EXPECT_TRUE(recorded().texts.empty());
    EXPECT_EQ(modesOf(true, true, TAVRIN_OBJ_STATUS_NORMAL, 0), (Modes{"GL_LINE_LOOP", "GL_LINES"}));  // no bars
    EXPECT_EQ(recorded().texts.size(), 1u);
    // Handles on the region corners and the line ends, none on the bars.
    EXPECT_EQ(modesOf(true, true, TAVRIN_OBJ_STATUS_SELECTED, 1000),
              (Modes{"GL_LINE_LOOP", "GL_POINTS", "GL_POINTS", "GL_POINTS", "GL_POINTS", "GL_LINES", "GL_POINTS",
                     "GL_POINTS", "GL_LINES", "GL_LINES"}));
}

TEST_F(AtmCaliTest, BarsAcrossTheLineAndTheLabelAtItsMiddle)
{
    setVertices(*atm, kRegion);
    setLine(pt(0.2f, 0.5f), pt(0.6f, 0.5f));
    atm->Draw(nullptr, 1000, 500, true);
    const auto& b = recorded().batches;
    ASSERT_EQ(modeNames(), (Modes{"GL_LINE_LOOP", "GL_LINES", "GL_LINES", "GL_LINES"}));
    EXPECT_EQ(b[0].color, kNormal);
    expectSegment(b[1], pt(0.2f, 0.5f), pt(0.6f, 0.5f), kNormal);
    // Rows 250 -/+ 16 of a 500-pixel view.
    expectSegment(b[2], pt(0.2f, pixel(234, 500)), pt(0.2f, pixel(266, 500)), kNormal);
    expectSegment(b[3], pt(0.6f, pixel(234, 500)), pt(0.6f, pixel(266, 500)), kNormal);
    ASSERT_EQ(recorded().texts.size(), 1u);
    EXPECT_POINT_NEAR(recorded().texts[0].position, 0.41f, 0.49f, 1e-6);
    EXPECT_EQ(textColors(), std::vector<std::string>{colourCall(0x285EA6)});

    recorded().reset();  // highlighted: all of it in the selection colour
    atm->SetObjStatus(TAVRIN_OBJ_STATUS_HIGHLIGHTED);
    atm->Draw(nullptr, 1000, 500, false);
    ASSERT_EQ(b.size(), 4u);
    for (const rec::Batch& batch : b) {
        EXPECT_EQ(batch.color, kSelected);
    }
    EXPECT_EQ(textColors(), std::vector<std::string>{colourCall(0xD90DB0)});
}

// The object keeps its own copy of up to ten points beside the line's two; the head is
// computed from that copy, which only a read-back or a draw brings in line again.
TEST_F(BehaviorCaliTest, HeadUsesTheStoredCopyOfThePoints)
{
    tagTAVRIN_POINT one[1] = {pt(0.3f, 0.4f)};
    EXPECT_TRUE(cali->SetPoints(one, 1));  // the line takes stored vertices 0 and 1
    unsigned int count = 0;
    const tagTAVRIN_POINT o = pt(0.0f, 0.0f);
    EXPECT_TRUE(samePoints(bufferOf(*cali, &count), {one[0], o, o, o, o, o, o, o, o, o}));
    EXPECT_EQ(count, 2u);
    EXPECT_TRUE(cali->SetPoints(one, 0));  // nothing copied: two zero points
    EXPECT_TRUE(cali->IsNull());

    cali->SetWndSize(1000, 1000);
    setVertices(*cali, kHorizontal);
    tagTAVRIN_POINT three[3] = {pt(0.1f, 0.1f), pt(0.2f, 0.2f), pt(0.3f, 0.3f)};
    EXPECT_FALSE(cali->SetPoints(three, 3));
    EXPECT_EQ(headPixels(), (std::vector<int>{188, 511, 210, 489}));  // the diagonal, k = 1
    EXPECT_TRUE(samePoints(verticesOf(*cali), kHorizontal));
    EXPECT_EQ(headPixels(), kVerticalBar);

    cali->SetSelPointIndex(2);
    dragVertex(*cali, pt(0.6f, 0.5f), pt(0.4f, 0.3f));  // end 2 to (0.4, 0.3): k = -1
    EXPECT_EQ(headPixels(), kVerticalBar);
    cali->Draw(nullptr, 1000, 1000, true);
    EXPECT_EQ(headPixels(), (std::vector<int>{189, 489, 211, 511}));
}

TEST_F(BehaviorCaliTest, VerticalTypeDrawsBothHeadsBeforeTheLine)
{
    setVertices(*cali, kHorizontal);
    cali->SetCaliType(TAVRIN_BEHAV_CALI_VERTICAL);
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

    recorded().reset();
    cali->Draw(nullptr, 0, 500, true);  // without a view size: the line and label only
    EXPECT_EQ(modeNames(), std::vector<std::string>{"GL_LINES"});
    EXPECT_EQ(recorded().texts.size(), 1u);

    recorded().reset();
    cali->SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);  // markers on the line, none on the heads
    cali->Draw(nullptr, 1000, 500, true);
    EXPECT_EQ(modeNames(),
              (std::vector<std::string>{"GL_LINES", "GL_LINES", "GL_LINES", "GL_POINTS", "GL_POINTS"}));

    recorded().reset();
    cali->SetObjStatus(TAVRIN_OBJ_STATUS_NORMAL);
    cali->SetCaliType(static_cast<tagTAVRIN_BEHAV_CALI_TYPE>(7));  // any value but 1 is plain
    cali->Draw(nullptr, 1000, 500, true);
    ASSERT_EQ(b.size(), 1u);
    expectSegment(b[0], pt(0.2f, 0.5f), pt(0.6f, 0.5f), rec::rgba(0xD65814));
    EXPECT_EQ(textColors(), std::vector<std::string>{colourCall(0xD65814)});
}

TEST_F(BehaviorCaliTest, CheckDrawsTheVerticalTypeInYellowAndThePlainOneLikeTheCalibration)
{
    for (auto type : {TAVRIN_BEHAV_CALI_LINE, TAVRIN_BEHAV_CALI_VERTICAL}) {
        for (BehaviorCali* obj : {cali.get(), static_cast<BehaviorCali*>(check.get())}) {
            obj->SetCaliType(type);
            obj->Draw(nullptr, 1000, 500, true);
        }
    }
    EXPECT_TRUE(recorded().calls.empty());  // a null line draws nothing whatever the type
    setVertices(*check, kHorizontal);
    check->Draw(nullptr, 1000, 500, true);
    ASSERT_EQ(recorded().batches.size(), 3u);
    for (const rec::Batch& b : recorded().batches) {
        EXPECT_EQ(b.color, rec::rgba(0xFFFF00));
    }
    EXPECT_EQ(textColors(), std::vector<std::string>{colourCall(0xFFFF00)});

    char label[] = "walk";
    check->SetCaliType(TAVRIN_BEHAV_CALI_LINE);
    cali->SetCaliType(TAVRIN_BEHAV_CALI_LINE);
    for (BehaviorCali* obj : {cali.get(), static_cast<BehaviorCali*>(check.get())}) {
        setVertices(*obj, kHorizontal);
        obj->SetLabelText(label, 4);
        obj->SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    }
    recorded().reset();
    cali->Draw(nullptr, 1000, 500, true);
    const std::vector<std::string> caliCalls = recorded().calls;
    recorded().reset();
    check->Draw(nullptr, 1000, 500, true);
    EXPECT_EQ(recorded().calls, caliCalls);
    EXPECT_FALSE(caliCalls.empty());
}

TEST_F(BehaviorCaliTest, EditsAndHitTestsGoToTheLine)
{
    setVertices(*check, kHorizontal);
    check->Draw(nullptr, 1000, 500, true);  // the line's hit test works in view pixels
    EXPECT_TRUE(hits(*check, pt(0.4f, 0.5f)));
    EXPECT_FALSE(hits(*check, pt(0.4f, 0.6f)));
    EXPECT_EQ(vertexAt(*check, pt(0.61f, 0.5f)), 2u);
    drag(*check, pt(0.5f, 0.5f), pt(0.5f, 0.4f));
    EXPECT_TRUE(nearPoints(verticesOf(*check), {pt(0.2f, 0.4f), pt(0.6f, 0.4f)}, 1e-6f));
}

TEST_F(PupilDistanceTest, ReadBackNeedsRoomForTwo)
{
    setVertices(*pupils, {pt(0.3f, 0.5f), pt(0.6f, 0.5f)});
    unsigned int count = 0;
    EXPECT_TRUE(samePoints(bufferOf(*pupils, &count, 3), {pt(0.3f, 0.5f), pt(0.6f, 0.5f), pt(9, 9)}));
    EXPECT_EQ(count, 2u);
}

TEST_F(PupilDistanceTest, PupilsOnARowGetVerticalBarsAndAClampedExtension)
{
    pupils->Draw(nullptr, 800, 600, true);
    EXPECT_TRUE(recorded().calls.empty());  // a null line draws nothing
    setVertices(*pupils, {pt(0.6f, 0.5f), pt(0.3f, 0.5f)});
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
    setVertices(*pupils, {pt(0.005f, 0.5f), pt(0.995f, 0.5f)});
    pupils->Draw(nullptr, 800, 600, true);
    ASSERT_EQ(b.size(), 5u);
    expectSegment(b[2], pt(0.0f, 0.5f), pt(1.0f, 0.5f), kPupil);

    recorded().reset();  // without a view size: only the segment and the line
    setVertices(*pupils, {pt(0.4f, 0.7f), pt(0.4f, 0.3f)});
    pupils->Draw(nullptr, 0, 400, true);
    ASSERT_EQ(b.size(), 2u);
    expectSegment(b[0], pt(0.4f, 0.7f), pt(0.4f, 0.3f), kPupil);
    EXPECT_TRUE(everythingFinite());
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(PupilDistanceTest, SelectionShowsOnlyThePupilLineMarkers)
{
    setVertices(*pupils, {pt(0.3f, 0.5f), pt(0.6f, 0.5f)});
    pupils->SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    pupils->SetSelPointIndex(1);
    pupils->Draw(nullptr, 800, 600, true);
    EXPECT_EQ(modeNames(), (std::vector<std::string>{"GL_LINES", "GL_LINES", "GL_LINES", "GL_LINES", "GL_LINES",
                                                      "GL_POINTS", "GL_POINTS", "GL_POINTS"}));
    // The active pupil: a 16-pixel halo in colour 2 under its dot.
    EXPECT_EQ(recorded().batches[5].color, rec::rgba(0xFFC000));
    EXPECT_FLOAT_EQ(recorded().batches[5].pointSize, 16.0f);
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(PupilDistanceTest, BarAndEditsWorkOnTheStoredPupils)
{
    tagTAVRIN_POINT end = pt(0.5f, 0.5f);
    tagTAVRIN_POINT out[2] = {pt(7, 7), pt(7, 7)};
    pupils->SetWndSize(1000, 1000);
    pupils->GetPupilLine(end, out);  // two cleared pupils: no direction, a horizontal bar
    EXPECT_TRUE(nearPoints(Points(out, out + 2), {pt(0.484f, 0.5f), pt(0.516f, 0.5f)}, 1e-7f));
    setVertices(*pupils, {pt(0.3f, 0.5f), pt(0.6f, 0.5f)});
    pupils->GetPupilLine(end, out);
    EXPECT_TRUE(nearPoints(Points(out, out + 2), {pt(0.5f, 0.484f), pt(0.5f, 0.516f)}, 1e-7f));
    pupils->GetPupilLine(end, nullptr);

    EXPECT_EQ(vertexAt(*pupils, pt(0.6f, 0.51f)), 2u);
    pupils->SetSelPointIndex(2);
    dragVertex(*pupils, pt(0.5f, 0.5f), pt(0.5f, 0.6f));
    EXPECT_TRUE(nearPoints(verticesOf(*pupils), {pt(0.3f, 0.5f), pt(0.6f, 0.6f)}, 1e-6f));
    pupils->Draw(nullptr, 1000, 1000, true);
    EXPECT_TRUE(hits(*pupils, pt(0.45f, 0.55f)));
}

TEST_F(ItsCaliTest, WidthTextThenHeightTextBesideTheTopEdges)
{
    struct Case {
        const char* name;
        Points points;
        tagTAVRIN_POINT widthAnchor;   // midpoint of the width edge
        tagTAVRIN_POINT heightAnchor;  // midpoint of the height edge
    };
    const Case cases[] = {
        // Top is vertex 0 (first of two minima); next (y 0.2) is higher than prev (y 0.6).
        {"SquareWidthOnTheTopEdge", kSquare, pt(0.4f, 0.2f), pt(0.2f, 0.4f)},
        // prev (y 0.3) is higher than next (y 0.5): the texts swap edges.
        {"PreviousHigherSwapsTheEdges", {pt(0.5f, 0.1f), pt(0.7f, 0.5f), pt(0.3f, 0.3f)}, pt(0.4f, 0.2f),
         pt(0.6f, 0.3f)},
        {"TieGoesToTheNextVertex", {pt(0.5f, 0.1f), pt(0.7f, 0.5f), pt(0.3f, 0.5f)}, pt(0.6f, 0.3f),
         pt(0.4f, 0.3f)},
        {"TopInTheMiddle", {pt(0.2f, 0.8f), pt(0.3f, 0.5f), pt(0.5f, 0.1f), pt(0.8f, 0.6f)}, pt(0.4f, 0.3f),
         pt(0.65f, 0.35f)},
        // Top is the last vertex: next wraps to vertex 0.
        {"TopLastNextWraps", {pt(0.3f, 0.5f), pt(0.6f, 0.6f), pt(0.5f, 0.1f)}, pt(0.4f, 0.3f), pt(0.55f, 0.35f)},
        {"OneVertexCarriesBoth", {pt(0.5f, 0.5f)}, pt(0.5f, 0.5f), pt(0.5f, 0.5f)},
    };
    its->Draw(nullptr, 800, 600, true);
    EXPECT_TRUE(recorded().calls.empty());  // an empty polygon draws no labels either
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        setVertices(*its, c.points);
        recorded().reset();
        its->Draw(nullptr, 800, 600, true);
        const auto& texts = recorded().texts;
        ASSERT_EQ(texts.size(), 2u);
        // The label box sits 0.01 right of and 0.01 above its anchor.
        EXPECT_POINT_NEAR(texts[0].position, c.widthAnchor.x + 0.01f, c.widthAnchor.y - 0.01f, 1e-6);
        EXPECT_POINT_NEAR(texts[1].position, c.heightAnchor.x + 0.01f, c.heightAnchor.y - 0.01f, 1e-6);
        EXPECT_EQ(textColors(), (std::vector<std::string>{colourCall(0x285EA6), colourCall(0x285EA6)}));
        EXPECT_GL_STATE_CLEAN();
    }
}

TEST_F(ItsCaliTest, PolygonFirstThenLabelsInItsStatus)
{
    setVertices(*its, kSquare);
    its->SetObjStatus(TAVRIN_OBJ_STATUS_HIGHLIGHTED);
    its->Draw(nullptr, 800, 600, true);
    ASSERT_FALSE(recorded().batches.empty());
    EXPECT_EQ(rec::modeName(recorded().batches[0].mode), "GL_LINE_LOOP");
    EXPECT_EQ(recorded().batches[0].color, rec::rgba(0xD90DB0));
    EXPECT_EQ(textColors(), (std::vector<std::string>{colourCall(0xD90DB0), colourCall(0xD90DB0)}));
    // The labels come after every batch of the polygon.
    const std::vector<std::string> seq = recorded().sequence();
    const auto lastEnd = std::find(seq.rbegin(), seq.rend(), "glEnd()").base();
    const auto firstRaster = std::find_if(seq.begin(), seq.end(), [](const std::string& call) {
        return call.rfind("glRasterPos2f", 0) == 0;
    });
    EXPECT_LE(lastEnd - seq.begin(), firstRaster - seq.begin());  // lastEnd is one past it

}

TEST_F(ItsCaliTest, EditsGoToThePolygonAndUnusedEntriesReadBackAsZero)
{
    setVertices(*its, kSquare);
    EXPECT_TRUE(hits(*its, pt(0.4f, 0.4f)));
    EXPECT_FALSE(hits(*its, pt(0.7f, 0.4f)));
    EXPECT_EQ(vertexAt(*its, pt(0.61f, 0.6f)), 3u);
    setVertices(*its, {pt(0.3f, 0.3f)});
    unsigned int count = 0;
    const tagTAVRIN_POINT o = pt(0.0f, 0.0f);
    EXPECT_TRUE(samePoints(bufferOf(*its, &count), {pt(0.3f, 0.3f), o, o, o, o, o, o, o, o, o}));
    EXPECT_EQ(count, 1u);
}

TEST_F(ItsCaliTest, EdgeTextsCopyTheStringsOwnLength)
{
    char nineteen[] = "abcdefghijklmnopqrs";
    char shortText[] = "12.5m";
    EXPECT_TRUE(its->SetWidthLabelText(nineteen, 3));
    EXPECT_TRUE(its->SetHeightlabelText(nineteen, 19));
    EXPECT_TRUE(its->SetHeightlabelText(shortText, 99));
    EXPECT_EQ(std::memcmp(its->m_widthText, "abcdefghijklmnop", 17), 0);
    EXPECT_EQ(std::memcmp(its->m_heightText, "12.5m\0\0\0\0\0\0\0\0\0\0\0\0", 17), 0);
    EXPECT_FALSE(its->SetWidthLabelText(shortText, 0));  // refusals keep the texts
    EXPECT_FALSE(its->SetHeightlabelText(nullptr, 5));
    EXPECT_STREQ(its->m_widthText, "abcdefghijklmnop");
    EXPECT_STREQ(its->m_heightText, "12.5m");
    char empty[] = "";
    EXPECT_TRUE(its->SetWidthLabelText(empty, 1));
    EXPECT_STREQ(its->m_widthText, "");
}

TEST(SinglePoint, ACountOfZeroStillTakesThePointAndMovesAreWhole)
{
    Owned<BinoCali> bino = create<BinoCali>();
    Owned<LfCali> lf = create<LfCali>();
    tagTAVRIN_POINT at = pt(0.5f, 0.5f);
    EXPECT_TRUE(bino->SetPoints(&at, 0));
    EXPECT_TRUE(lf->SetPoints(&at, 0));
    EXPECT_TRUE(samePoints(verticesOf(*bino), {at}));
    EXPECT_TRUE(samePoints(verticesOf(*lf), {at}));
    bino->SetSelPointIndex(1);
    dragVertex(*bino, at, pt(0.6f, 0.4f));  // no vertex drag
    EXPECT_TRUE(samePoints(verticesOf(*bino), {at}));
    drag(*bino, at, pt(0.6f, 0.4f));
    EXPECT_TRUE(nearPoints(verticesOf(*bino), {pt(0.6f, 0.4f)}, 1e-6f));
}

TEST(BinoCaliRadius, ViewSizeReachesTheCircleBeforeTheFirstDraw)
{
    Owned<BinoCali> bino = create<BinoCali>();
    bino->SetRadius(50);  // no view size yet: ignored
    EXPECT_EQ(bino->Radius(), 0u);
    bino->SetWndSize(500, 400);
    bino->SetRadius(50);
    EXPECT_EQ(bino->Radius(), 50u);
    tagTAVRIN_POINT centre = pt(0.5f, 0.5f);
    ASSERT_TRUE(bino->SetPoints(&centre, 1));
    EXPECT_TRUE(hits(*bino, pt(0.58f, 0.5f)));  // 40 pixels
    EXPECT_FALSE(hits(*bino, pt(0.62f, 0.5f)));  // 60 pixels
}

TEST_F(BinoLfDraw, BinoCrossThenDiscInItsOwnColours)
{
    Owned<BinoCali> bino = create<BinoCali>();
    tagTAVRIN_POINT centre = pt(0.5f, 0.5f);
    ASSERT_TRUE(bino->SetPoints(&centre, 1));
    bino->SetWndSize(800, 400);
    bino->SetRadius(80);
    bino->Draw(nullptr, 800, 400, false);
    EXPECT_EQ(recorded().sequence(),
              concat({enterCalls(kPointSmooth),
                      {"glColor4ub(0,54,215,255)", "glLineWidth(2)", "glBegin(GL_LINES)", "glEnd()"},
                      leaveCalls(kPointSmooth), enterCalls(kPolygonSmooth),
                      {"glColor4ub(0,54,215,200)", "glBegin(GL_POLYGON)", "glEnd()", "glColor4ub(0,54,215,255)"},
                      leaveCalls(kPolygonSmooth)}));
    ASSERT_EQ(recorded().batches.size(), 2u);
    EXPECT_NEAR(recorded().batches[1].vertices[0].x, 1.1f, 1e-6);  // radius 80 / 800
    EXPECT_GL_STATE_CLEAN();

    recorded().reset();
    bino->SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    bino->Draw(nullptr, 800, 400, false);
    ASSERT_EQ(recorded().batches.size(), 2u);
    EXPECT_EQ(recorded().batches[0].color, rec::rgba(0xFFFF00));
    EXPECT_EQ(recorded().batches[1].color, rec::rgba(0xFFFF00, 200));
}

TEST_F(BinoLfDraw, LfCrossThenItsLabelBesideIt)
{
    Owned<LfCali> lf = create<LfCali>();
    tagTAVRIN_POINT far = pt(0.99f, 0.01f);
    EXPECT_TRUE(hits(*lf, far));  // counts as hit everywhere, set or not
    tagTAVRIN_POINT at = pt(0.95f, 0.5f);
    ASSERT_TRUE(lf->SetPoints(&at, 1));
    EXPECT_TRUE(hits(*lf, far));
    lf->Draw(nullptr, 800, 600, true);
    // Near the right edge the box goes to the left: (0.87, 0.49).
    char raster[96];
    std::snprintf(raster, sizeof raster, "glRasterPos2f(%g,%g)", 2.0f * (0.95f - 0.08f),
                  2.0f * (1.0f - (0.5f - 0.01f)));
    EXPECT_EQ(recorded().sequence(),
              concat({enterCalls(kPointSmooth),
                      {"glColor4ub(40,94,166,255)", "glLineWidth(2)", "glBegin(GL_LINES)", "glEnd()"},
                      leaveCalls(kPointSmooth), enterCalls(kPolygonSmooth),
                      {"glColor4ub(40,94,166,255)", raster, "glGenLists(1)", "glDeleteLists(list,1)"},
                      leaveCalls(kPolygonSmooth)}));
    ASSERT_EQ(recorded().batches.size(), 1u);
    expectVertices(recorded().batches[0], {pt(0.93f, 0.5f), pt(0.97f, 0.5f), pt(0.95f, 0.48f), pt(0.95f, 0.52f)});
    EXPECT_GL_STATE_CLEAN();

    // Selected near the bottom: a selected cross, the label raised and in the label colour.
    recorded().reset();
    at = pt(0.4f, 0.95f);
    ASSERT_TRUE(lf->SetPoints(&at, 1));
    char name[] = "gate";
    lf->SetLabelText(name, 4);
    lf->SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    lf->Draw(nullptr, 800, 600, true);
    EXPECT_EQ(recorded().batches[0].color, rec::rgba(0xFFC000));
    EXPECT_EQ(textColors(), std::vector<std::string>{colourCall(0xD90DB0)});
    ASSERT_EQ(recorded().texts.size(), 1u);
    EXPECT_POINT_NEAR(recorded().texts[0].position, 0.41f, 0.91f, 1e-6);
}
