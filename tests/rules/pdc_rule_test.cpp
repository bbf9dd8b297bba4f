#include "rules/RulesTest.h"

#include <Tavrin/PdcRule.h>

using Tavrin::PdcRule;

namespace {

const unsigned int kBlue = 0x285ea6;
const unsigned int kMagenta = 0xd90db0;
const unsigned int kCaliGreen = 0x2efa33;

}  // namespace

class PdcRuleTest : public RuleTest {
protected:
    PdcRule* areaRule()
    {
        PdcRule* rule = hostCreate<PdcRule>(smallSquare());
        EXPECT_TRUE(setArrow(*rule, pt(0.3f, 0.25f), pt(0.3f, 0.35f)));
        return rule;
    }
    PdcRule* lineRule(tagTAVRIN_POINT a = pt(0.2f, 0.5f), tagTAVRIN_POINT b = pt(0.6f, 0.5f))
    {
        PdcRule* rule = hostCreate<PdcRule>();
        rule->SetVcaPDCLineOrRect(true);
        tagTAVRIN_POINT ends[2] = {a, b};
        EXPECT_TRUE(rule->SetPoints(ends, 2));
        return rule;
    }
};

TEST_F(PdcRuleTest, HostDrivesAnAreaRule)
{
    PdcRule* rule = areaRule();
    rule->SetSelPointIndex(1);
    dragVertex(*rule, pt(0.2f, 0.21f), pt(0.1f, 0.11f));
    drag(*rule, pt(0.3f, 0.3f), pt(0.35f, 0.3f));
    EXPECT_TRUE(nearPoints(verticesOf(*rule),
                           {pt(0.15f, 0.1f), pt(0.45f, 0.2f), pt(0.45f, 0.4f), pt(0.25f, 0.4f)}, 1e-6f));
    EXPECT_TRUE(nearPoints(arrowOf(*rule), {pt(0.35f, 0.25f), pt(0.35f, 0.35f)}, 1e-6f));

    rule->Draw(nullptr, 1000, 1000, false);
    expectOutlineThenArrow(kBlue);
    EXPECT_TRUE(recorded().batchesOf(GL_POINTS).empty());  // no single point set
    // The text box is placed anyway, from the origin, in the label's own colour.
    EXPECT_ONE_TEXT(0.01f, 0.03f, kMagenta);
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(PdcRuleTest, EachModeKeepsItsOwnStatusVerticesAndClosedFlag)
{
    PdcRule* rule = areaRule();
    rule->SetObjStatus(TAVRIN_OBJ_STATUS_HIGHLIGHTED);
    rule->SetClosed(false);
    rule->Draw(nullptr, 1000, 1000, true);
    EXPECT_EQ(recorded().batchesOf(GL_LINES).size(), 3u);  // an open outline
    EXPECT_EQ(countBatches(GL_LINE_LOOP, rec::rgba(kMagenta), 8), 1u);  // the arrow follows
    rule->SetVcaPDCLineOrRect(true);
    EXPECT_EQ(rule->GetObjStatus(), TAVRIN_OBJ_STATUS_NORMAL);
    EXPECT_TRUE(rule->GetClosed());
    EXPECT_TRUE(samePoints(verticesOf(*rule), {pt(0.0f, 0.0f), pt(0.0f, 0.0f)}));
    tagTAVRIN_POINT three[3] = {pt(0.1f, 0.1f), pt(0.2f, 0.2f), pt(0.3f, 0.3f)};
    EXPECT_FALSE(rule->SetPoints(three, 3));  // a line takes two
    ASSERT_TRUE(rule->SetPoints(three, 2));
    rule->SetVcaPDCLineOrRect(false);
    EXPECT_EQ(rule->GetObjStatus(), TAVRIN_OBJ_STATUS_HIGHLIGHTED);
    EXPECT_TRUE(samePoints(verticesOf(*rule), smallSquare()));
}

TEST_F(PdcRuleTest, LineModeDrawsAWideLineAndWhenSelectedItsCalibrationAndArrow)
{
    PdcRule* rule = lineRule();
    rule->Draw(nullptr, 1000, 1000, true);
    EXPECT_EQ(batchModes(), (std::vector<GLenum>{GL_LINES}));
    EXPECT_EQ(recorded().batches[0].color, rec::rgba(kBlue));
    EXPECT_FLOAT_EQ(recorded().batches[0].lineWidth, 4.0f);
    expectVertices(recorded().batches[0], {pt(0.2f, 0.5f), pt(0.6f, 0.5f)});
    rule->SetVcaPDCLineCali(true);
    rule->SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    drawn(*rule, 1000, 1000);
    EXPECT_GE(countBatches(GL_LINES, rec::rgba(kCaliGreen), 2), 1u);
    EXPECT_EQ(countBatches(GL_LINE_LOOP, rec::rgba(kMagenta), 8), 1u);
    // The direction arrow was re-anchored at the middle, 0.1 across the line.
    EXPECT_TRUE(nearPoints(arrowOf(*rule), {pt(0.4f, 0.5f), pt(0.4f, 0.6f)}, 1e-6f));
    EXPECT_GL_STATE_CLEAN();
    rule->SetVcaPDCLineOrRect(false);  // the same line in area mode draws none of it
    drawn(*rule, 1000, 1000);
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
    EXPECT_EQ(batchModes(), (std::vector<GLenum>{GL_POINTS}));
    EXPECT_FLOAT_EQ(recorded().batches[0].pointSize, 8.0f);  // the highlighted look: no halo
    EXPECT_EQ(recorded().batches[0].color, rec::rgba(kBlue));
    expectVertices(recorded().batches[0], {pt(0.5f, 0.5f)});
    EXPECT_ONE_TEXT(0.51f, 0.49f, kMagenta);
    EXPECT_GL_STATE_CLEAN();
    rule->SetVcaPDCLineOrRect(false);
    EXPECT_TRUE(rule->IsNull());  // the area mode asks the polygon only
    // One non-zero end makes a line non-null.
    EXPECT_FALSE(lineRule(pt(0.0f, 0.0f), pt(0.0f, 0.1f))->IsNull());
    marker[0] = pt(0.995f, 0.5f);  // the text box is clamped at the right edge
    char text[] = "In 12 / Out 7";
    ASSERT_TRUE(rule->SetSinglePoints(marker, 1) && rule->SetText(text));
    drawn(*rule, 800, 600);
    EXPECT_ONE_TEXT(0.97f, 0.49f, kMagenta);
}

TEST_F(PdcRuleTest, ArrowMovesWithTheAreaNotWithTheLine)
{
    PdcRule* rule = areaRule();
    drag(*rule, pt(0.3f, 0.3f), pt(0.3f, 1.0f));  // refused: the polygon would reach y = 1.1
    EXPECT_TRUE(samePoints(arrowOf(*rule), {pt(0.3f, 0.25f), pt(0.3f, 0.35f)}));
    rule->SetVcaPDCLineOrRect(true);
    tagTAVRIN_POINT ends[2] = {pt(0.9f, 0.5f), pt(1.0f, 0.5f)};
    ASSERT_TRUE(rule->SetPoints(ends, 2));
    drag(*rule, pt(0.5f, 0.5f), pt(0.55f, 0.5f));  // the line refuses; the arrow moves anyway
    EXPECT_TRUE(samePoints(verticesOf(*rule), {ends[0], ends[1]}));
    rule->SetVcaPDCLineOrRect(false);
    EXPECT_POINT_NEAR(arrowOf(*rule)[0], 0.35f, 0.25f, 1e-6);
}

TEST_F(PdcRuleTest, CalibrationPointsComeInPairsAndAreNotHitWhileOff)
{
    PdcRule* rule = lineRule();
    rule->Draw(nullptr, 1000, 1000, true);
    tagTAVRIN_POINT onLine = pt(0.4f, 0.5f);
    EXPECT_EQ(rule->CheckCaliPointSelected(onLine), 0u);  // the base would answer 1
    tagTAVRIN_POINT five[5] = {pt(0.25f, 0.5f), pt(0.35f, 0.5f), pt(0.9f, 0.9f), pt(0.8f, 0.8f),
                               pt(0.7f, 0.7f)};
    EXPECT_TRUE(rule->SetPDCCaliPoint(five, 5));
    tagTAVRIN_POINT out[2] = {};
    unsigned int count = 0;
    ASSERT_TRUE(rule->GetPDCCaliPoint(out, &count));
    EXPECT_TRUE(samePoints(Points(out, out + count), {five[0], five[1]}));
    EXPECT_FALSE(rule->SetPDCCaliPoint(nullptr, 2));
    EXPECT_FALSE(rule->GetPDCCaliPoint(nullptr, &count));
    EXPECT_FALSE(rule->GetPDCCaliPoint(out, nullptr));
    EXPECT_FALSE(rule->SetTargetWidthLine(nullptr));
}

TEST_F(PdcRuleTest, SinglePointTextAndVertexRefusals)
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
    EXPECT_TRUE(samePoints(Points(out, out + count), {two[0]}));
    EXPECT_FALSE(rule->GetSinglePoints(nullptr, &count));

    std::string longest(127, 'x');
    std::string tooLong(128, 'x');
    EXPECT_TRUE(rule->SetText(&longest[0]));
    EXPECT_FALSE(rule->SetText(&tooLong[0]));
    EXPECT_FALSE(rule->SetText(nullptr));
    tagTAVRIN_POINT eleven[11] = {};
    EXPECT_FALSE(rule->SetPoints(eleven, 11));
    EXPECT_FALSE(rule->GetArrowPoints(out, nullptr));
}
