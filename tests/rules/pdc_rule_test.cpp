#include "rules/RulesTest.h"
#include "support/PolygonBuilders.h"

#include <Tavrin/PdcRule.h>

#include <string>

using Tavrin::PdcRule;

namespace {

const unsigned int kBlue = 0x285ea6;
const unsigned int kMagenta = 0xd90db0;
const unsigned int kCaliGreen = 0x2efa33;

tagTAVRIN_POINT kSquare[4] = {{0.2f, 0.2f}, {0.4f, 0.2f}, {0.4f, 0.4f}, {0.2f, 0.4f}};

}  // namespace

class PdcRuleTest : public RuleTest {
protected:
    PdcRule* areaRule()
    {
        PdcRule* rule = hostCreate<PdcRule>();
        EXPECT_TRUE(rule->SetPoints(kSquare, 4));
        tagTAVRIN_POINT ends[2] = {pt(0.3f, 0.25f), pt(0.3f, 0.35f)};
        EXPECT_TRUE(rule->SetArrowPoints(ends[0], ends[1]));
        return rule;
    }
    PdcRule* lineRule()
    {
        PdcRule* rule = hostCreate<PdcRule>();
        rule->SetVcaPDCLineOrRect(true);
        tagTAVRIN_POINT ends[2] = {pt(0.2f, 0.5f), pt(0.6f, 0.5f)};
        EXPECT_TRUE(rule->SetPoints(ends, 2));
        return rule;
    }
    static tagTAVRIN_POINT areaArrowTail(PdcRule* rule)
    {
        rule->SetVcaPDCLineOrRect(false);
        return arrowOf(*rule)[0];
    }
};

TEST_F(PdcRuleTest, HostDrivesAnAreaRule)
{
    PdcRule* rule = areaRule();
    ASSERT_NE(rule, nullptr);
    EXPECT_EQ(vertexAt(*rule, pt(0.2f, 0.21f)), 1u);
    rule->SetSelPointIndex(1);
    dragVertex(*rule, pt(0.2f, 0.21f), pt(0.1f, 0.11f));
    EXPECT_TRUE(hits(*rule, pt(0.3f, 0.3f)));
    drag(*rule, pt(0.3f, 0.3f), pt(0.35f, 0.3f));
    EXPECT_TRUE(nearPoints(verticesOf(*rule),
                           {pt(0.15f, 0.1f), pt(0.45f, 0.2f), pt(0.45f, 0.4f), pt(0.25f, 0.4f)}, 1e-6f));
    EXPECT_TRUE(nearPoints(arrowOf(*rule), {pt(0.35f, 0.25f), pt(0.35f, 0.35f)}, 1e-6f));

    const auto& batches = drawn(*rule).batches;
    ASSERT_GE(batches.size(), 2u);
    EXPECT_EQ(batches.front().mode, static_cast<GLenum>(GL_LINE_LOOP));
    EXPECT_EQ(batches.front().color, rec::rgba(kBlue));
    EXPECT_EQ(batches.front().vertices.size(), 4u);
    EXPECT_EQ(batches.back().mode, static_cast<GLenum>(GL_LINE_LOOP));  // the arrow
    EXPECT_EQ(batches.back().color, rec::rgba(kBlue));
    EXPECT_EQ(batches.back().vertices.size(), 8u);
    EXPECT_TRUE(recorded().batchesOf(GL_POINTS).empty());  // no single point set
    // The text box is placed anyway, from the origin, in the label's own colour.
    ASSERT_EQ(recorded().texts.size(), 1u);
    EXPECT_POINT_NEAR(recorded().texts[0].position, 0.01f, 0.03f, 1e-6);
    EXPECT_EQ(textColors().at(0), colourCall(kMagenta));
    EXPECT_GL_STATE_CLEAN();
    hostDelete(rule);
}

TEST_F(PdcRuleTest, StatusReachesTheFigureAndTheArrow)
{
    PdcRule* rule = areaRule();
    rule->SetObjStatus(TAVRIN_OBJ_STATUS_HIGHLIGHTED);
    rule->Draw(nullptr, 1000, 1000, true);
    EXPECT_EQ(countBatches(GL_LINE_LOOP, rec::rgba(kMagenta), 4), 1u);
    EXPECT_EQ(countBatches(GL_LINE_LOOP, rec::rgba(kMagenta), 8), 1u);
    rule->SetVcaPDCLineOrRect(true);
    EXPECT_EQ(rule->GetObjStatus(), TAVRIN_OBJ_STATUS_NORMAL);  // the line keeps its own
    rule->SetVcaPDCLineOrRect(false);
    EXPECT_EQ(rule->GetObjStatus(), TAVRIN_OBJ_STATUS_HIGHLIGHTED);
}

TEST_F(PdcRuleTest, EachModeKeepsItsOwnVertices)
{
    PdcRule* rule = areaRule();
    rule->SetVcaPDCLineOrRect(true);
    EXPECT_TRUE(samePoints(verticesOf(*rule), {pt(0.0f, 0.0f), pt(0.0f, 0.0f)}));
    tagTAVRIN_POINT three[3] = {pt(0.1f, 0.1f), pt(0.2f, 0.2f), pt(0.3f, 0.3f)};
    EXPECT_FALSE(rule->SetPoints(three, 3));  // a line takes two
    ASSERT_TRUE(rule->SetPoints(three, 2));
    rule->SetVcaPDCLineOrRect(false);
    EXPECT_TRUE(samePoints(verticesOf(*rule), Points(kSquare, kSquare + 4)));
}

TEST_F(PdcRuleTest, LineModeDrawsAPlainWideLineWithoutTheArea)
{
    PdcRule* rule = lineRule();
    rule->Draw(nullptr, 1000, 1000, true);
    EXPECT_EQ(batchModes(), (std::vector<GLenum>{GL_LINES}));
    const rec::Batch& line = recorded().batches.at(0);
    EXPECT_EQ(line.color, rec::rgba(kBlue));
    EXPECT_FLOAT_EQ(line.lineWidth, 4.0f);
    EXPECT_POINT_NEAR(line.at(0), 0.2f, 0.5f, 1e-6);
    EXPECT_POINT_NEAR(line.at(1), 0.6f, 0.5f, 1e-6);
    EXPECT_EQ(recorded().texts.size(), 1u);
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(PdcRuleTest, SelectedCalibratingLineDrawsItsCalibrationAndDirectionArrow)
{
    PdcRule* rule = lineRule();
    rule->SetVcaPDCLineCali(true);
    rule->SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    rule->Draw(nullptr, 1000, 1000, true);
    std::size_t caliLines = 0;
    for (const rec::Batch& b : recorded().batchesOf(GL_LINES)) {
        caliLines += b.color == rec::rgba(kCaliGreen) ? 1 : 0;
    }
    EXPECT_GE(caliLines, 1u);
    EXPECT_EQ(countBatches(GL_LINE_LOOP, rec::rgba(kMagenta), 8), 1u);
    // The direction arrow was re-anchored at the middle, 0.1 across the line.
    EXPECT_TRUE(nearPoints(arrowOf(*rule), {pt(0.4f, 0.5f), pt(0.4f, 0.6f)}, 1e-6f));
    EXPECT_GL_STATE_CLEAN();

    // The same line in area mode draws none of it.
    rule->SetVcaPDCLineOrRect(false);
    rec::gl().reset();
    rule->Draw(nullptr, 1000, 1000, true);
    EXPECT_TRUE(recorded().batchesOf(GL_LINES).empty());
}

TEST_F(PdcRuleTest, NullLineDrawsOnlyThePointAndItsText)
{
    PdcRule* rule = hostCreate<PdcRule>();
    rule->SetVcaPDCLineOrRect(true);
    EXPECT_TRUE(rule->IsNull());
    tagTAVRIN_POINT marker[1] = {pt(0.5f, 0.5f)};
    ASSERT_TRUE(rule->SetSinglePoints(marker, 1));
    EXPECT_FALSE(rule->IsNull());  // the point alone makes a line rule non-null
    rule->SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    rule->Draw(nullptr, 640, 480, true);
    ASSERT_EQ(recorded().batches.size(), 1u);
    const rec::Batch& dot = recorded().batches[0];
    EXPECT_EQ(dot.mode, static_cast<GLenum>(GL_POINTS));
    EXPECT_FLOAT_EQ(dot.pointSize, 8.0f);  // the highlighted look: no halo
    EXPECT_EQ(dot.color, rec::rgba(kBlue));
    EXPECT_POINT_NEAR(dot.at(0), 0.5f, 0.5f, 1e-6);
    ASSERT_EQ(recorded().texts.size(), 1u);
    EXPECT_POINT_NEAR(recorded().texts[0].position, 0.51f, 0.49f, 1e-6);
    EXPECT_GL_STATE_CLEAN();

    rule->SetVcaPDCLineOrRect(false);
    EXPECT_TRUE(rule->IsNull());  // the area mode asks the polygon only

    PdcRule* line = lineRule();  // one non-zero vertex makes a line non-null
    tagTAVRIN_POINT ends[2] = {pt(0.0f, 0.0f), pt(0.0f, 0.1f)};
    ASSERT_TRUE(line->SetPoints(ends, 2));
    EXPECT_FALSE(line->IsNull());
}

TEST_F(PdcRuleTest, TextIsAnchoredAtTheClampedCorner)
{
    const struct {
        tagTAVRIN_POINT marker, text;
    } rows[] = {{{0.5f, 0.5f}, {0.51f, 0.49f}},    // inside
                {{0.995f, 0.5f}, {0.97f, 0.49f}},  // right edge
                {{0.5f, 0.005f}, {0.51f, 0.03f}},  // top edge
                {{0.5f, 1.0f}, {0.51f, 0.99f}}};   // bottom edge
    PdcRule* rule = hostCreate<PdcRule>();
    char text[] = "In 12 / Out 7";
    ASSERT_TRUE(rule->SetText(text));
    for (const auto& row : rows) {
        tagTAVRIN_POINT marker[1] = {row.marker};
        ASSERT_TRUE(rule->SetSinglePoints(marker, 1));
        ASSERT_EQ(drawn(*rule, 800, 600).texts.size(), 1u);
        EXPECT_POINT_NEAR(recorded().texts[0].position, row.text.x, row.text.y, 1e-6);
        EXPECT_GL_STATE_CLEAN();
    }
}

TEST_F(PdcRuleTest, ArrowFollowsTheAreaNotTheLine)
{
    PdcRule* rule = areaRule();
    drag(*rule, pt(0.3f, 0.3f), pt(0.3f, 1.0f));  // the polygon would reach y = 1.1
    EXPECT_POINT_NEAR(areaArrowTail(rule), 0.3f, 0.25f, 0.0);
    // A line-mode drag moves the area arrow even when the line refuses it.
    rule->SetVcaPDCLineOrRect(true);
    tagTAVRIN_POINT ends[2] = {pt(0.9f, 0.5f), pt(1.0f, 0.5f)};
    ASSERT_TRUE(rule->SetPoints(ends, 2));
    drag(*rule, pt(0.5f, 0.5f), pt(0.55f, 0.5f));  // the line would leave the picture; the arrow moves anyway
    EXPECT_TRUE(samePoints(verticesOf(*rule), {ends[0], ends[1]}));
    EXPECT_POINT_NEAR(areaArrowTail(rule), 0.35f, 0.25f, 1e-6);
}

TEST_F(PdcRuleTest, CalibrationPointsAreAlwaysTakenInPairs)
{
    PdcRule* rule = lineRule();
    tagTAVRIN_POINT five[5] = {pt(0.25f, 0.5f), pt(0.35f, 0.5f), pt(0.9f, 0.9f), pt(0.8f, 0.8f),
                               pt(0.7f, 0.7f)};
    EXPECT_TRUE(rule->SetPDCCaliPoint(five, 5));
    tagTAVRIN_POINT out[2] = {};
    unsigned int count = 0;
    ASSERT_TRUE(rule->GetPDCCaliPoint(out, &count));
    EXPECT_EQ(count, 2u);
    EXPECT_POINT_NEAR(out[0], 0.25f, 0.5f, 0.0);
    EXPECT_POINT_NEAR(out[1], 0.35f, 0.5f, 0.0);
    EXPECT_FALSE(rule->SetPDCCaliPoint(nullptr, 2));
    EXPECT_FALSE(rule->GetPDCCaliPoint(nullptr, &count));
    EXPECT_FALSE(rule->GetPDCCaliPoint(out, nullptr));
    EXPECT_FALSE(rule->SetTargetWidthLine(nullptr));
    drawn(*rule);
    tagTAVRIN_POINT p = pt(0.3f, 0.5f);
    EXPECT_EQ(rule->CheckCaliPointSelected(p), 0u);  // line calibration off; the base would answer 1
}

TEST_F(PdcRuleTest, SinglePointAndTextRefusals)
{
    PdcRule* rule = hostCreate<PdcRule>();
    tagTAVRIN_POINT two[2] = {pt(0.3f, 0.4f), pt(0.6f, 0.7f)};
    EXPECT_TRUE(rule->SetSinglePoints(two, 2));  // the count is ignored: one point
    tagTAVRIN_POINT bad[1] = {pt(kNaN, 0.5f)};
    EXPECT_FALSE(rule->SetSinglePoints(bad, 1));
    EXPECT_FALSE(rule->SetSinglePoints(nullptr, 1));
    tagTAVRIN_POINT out[1] = {};
    unsigned int count = 0;
    ASSERT_TRUE(rule->GetSinglePoints(out, &count));
    EXPECT_EQ(count, 1u);
    EXPECT_POINT_NEAR(out[0], 0.3f, 0.4f, 0.0);
    EXPECT_FALSE(rule->GetSinglePoints(nullptr, &count));

    std::string longest(127, 'x');
    std::string tooLong(128, 'x');
    EXPECT_TRUE(rule->SetText(&longest[0]));
    EXPECT_FALSE(rule->SetText(&tooLong[0]));
    EXPECT_FALSE(rule->SetText(nullptr));

    tagTAVRIN_POINT eleven[11] = {};
    EXPECT_FALSE(rule->SetPoints(eleven, 11));
    EXPECT_FALSE(rule->SetPoints(nullptr, 1));
    EXPECT_FALSE(rule->GetArrowPoints(out, nullptr));
}

TEST_F(PdcRuleTest, ClosedFlagFollowsTheFigure)
{
    PdcRule* rule = areaRule();
    rule->SetClosed(false);
    EXPECT_FALSE(rule->GetClosed());
    rule->Draw(nullptr, 1000, 1000, true);
    EXPECT_EQ(recorded().batchesOf(GL_LINES).size(), 3u);  // an open outline
    rule->SetVcaPDCLineOrRect(true);
    EXPECT_TRUE(rule->GetClosed());
}
