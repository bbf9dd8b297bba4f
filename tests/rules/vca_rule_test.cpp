#include "rules/RulesTest.h"

#include <Tavrin/VcaRule.h>

using Tavrin::VcaRule;

namespace {

const unsigned int kBlue = 0x285ea6;
const unsigned int kMagenta = 0xd90db0;
const unsigned int kYellow = 0xffc000;

// Outline vertex counts of a line's arrow-bar figure by direction.
const std::size_t kBarBoth = 18;
const std::size_t kBarOneSide = 11;
const std::size_t kBarPlain = 4;

tagTAVRIN_POINT kTen[10] = {{0.1f, 0.1f}, {0.2f, 0.1f}, {0.3f, 0.15f}, {0.4f, 0.1f}, {0.5f, 0.2f},
                            {0.6f, 0.1f}, {0.7f, 0.3f}, {0.8f, 0.1f}, {0.85f, 0.5f}, {0.9f, 0.6f}};
const Points kTriangle = {pt(0.2f, 0.2f), pt(0.4f, 0.2f), pt(0.4f, 0.4f)};
const Points kBar = {pt(0.2f, 0.5f), pt(0.6f, 0.5f)};

}  // namespace

class VcaRuleTest : public RuleTest {
protected:
    // Draws at 1000 x 1000 and expects a single loop of `vertices` vertices.
    void expectOneLoop(VcaRule* rule, std::size_t vertices)
    {
        drawn(*rule, 1000, 1000);
        EXPECT_EQ(batchModes(), (std::vector<GLenum>{GL_LINE_LOOP}));
        EXPECT_EQ(recorded().batches.at(0).vertices.size(), vertices);
        EXPECT_GL_STATE_CLEAN();
    }
};

TEST_F(VcaRuleTest, PolygonRuleDrawsItsFillHandlesAndNoLabel)
{
    VcaRule* rule = hostCreate<VcaRule>();
    EXPECT_EQ(rule->GetRuleType(), TAVRIN_RULE_REGION);
    EXPECT_TRUE(rule->IsNull());
    setVertices(*rule, kTriangle);
    rule->Draw(nullptr, 640, 480, true);
    EXPECT_EQ(batchModes(), (std::vector<GLenum>{GL_LINE_LOOP, GL_POLYGON}));
    EXPECT_EQ(recorded().batches[0].color, rec::rgba(kBlue));
    EXPECT_EQ(recorded().batches[1].color, rec::rgba(kBlue, 40));
    EXPECT_TRUE(recorded().texts.empty());  // a rule draws no label
    rule->SetSelPointIndex(2);
    rule->SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    drawn(*rule, 800, 600);
    EXPECT_EQ(recorded().batches.at(0).color, rec::rgba(kMagenta));
    EXPECT_EQ(countBatches(GL_POINTS, rec::rgba(kYellow), 1), 1u);  // the active vertex's halo
    EXPECT_GL_STATE_CLEAN();
    rule->SetClosed(false);  // the flag belongs to the active primitive
    rule->SetRuleType(TAVRIN_RULE_BROKEN_LINE);
    EXPECT_TRUE(rule->GetClosed());
}

TEST_F(VcaRuleTest, SetColorsReachLineAndPolygonButNeverTheBrokenLine)
{
    VcaRule* rule = hostCreate<VcaRule>(kBar);
    rule->SetColors(0x112233, 0x445566);
    const struct { tagTAVRIN_RULE_TYPE type; unsigned int normal, selected; } rows[] = {
        {TAVRIN_RULE_REGION, 0x112233, 0x445566},
        {TAVRIN_RULE_LINE, 0x112233, 0x445566},
        {TAVRIN_RULE_BROKEN_LINE, kBlue, kMagenta},
    };
    for (const auto& row : rows) {
        rule->SetRuleType(row.type);
        for (int status : {0, 2}) {
            SCOPED_TRACE(::testing::Message() << "type " << row.type << " status " << status);
            rule->SetObjStatus(static_cast<tagTAVRIN_OBJ_STATUS>(status));
            drawn(*rule, 1000, 1000);
            ASSERT_FALSE(recorded().batches.empty());
            EXPECT_EQ(recorded().batches[0].color, rec::rgba(status == 0 ? row.normal : row.selected));
        }
    }
}

TEST_F(VcaRuleTest, TypeChangesOnlyWhenTheTargetTakesTheStoredVertices)
{
    const struct { tagTAVRIN_RULE_TYPE start; unsigned int count; tagTAVRIN_RULE_TYPE target; bool accepted; } cases[] = {
        {TAVRIN_RULE_REGION, 0, TAVRIN_RULE_LINE, true},
        {TAVRIN_RULE_REGION, 2, TAVRIN_RULE_LINE, true},
        {TAVRIN_RULE_REGION, 3, TAVRIN_RULE_LINE, false},
        {TAVRIN_RULE_BROKEN_LINE, 5, TAVRIN_RULE_LINE, false},
        {TAVRIN_RULE_REGION, 10, TAVRIN_RULE_BROKEN_LINE, true},
        {TAVRIN_RULE_BROKEN_LINE, 10, TAVRIN_RULE_REGION, true},
        {TAVRIN_RULE_BROKEN_LINE, 10, static_cast<tagTAVRIN_RULE_TYPE>(7), true},  // any other value: a polygon
        {TAVRIN_RULE_LINE, 3, TAVRIN_RULE_LINE, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(::testing::Message() << c.start << " with " << c.count << " to " << c.target);
        VcaRule* rule = hostCreate<VcaRule>();
        rule->SetRuleType(c.start);
        rule->SetPoints(kTen, c.count);
        rule->SetRuleType(c.target);
        EXPECT_EQ(rule->GetRuleType(), c.accepted ? c.target : c.start);
    }
}

TEST_F(VcaRuleTest, SwitchToLineMovesTheStoredVerticesAndKeepsEachPrimitivesStatus)
{
    VcaRule* rule = hostCreate<VcaRule>({pt(0.1f, 0.2f), pt(0.3f, 0.4f)});
    rule->SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    rule->SetSelPointIndex(2);
    rule->SetRuleType(TAVRIN_RULE_LINE);
    EXPECT_TRUE(samePoints(verticesOf(*rule), {pt(0.1f, 0.2f), pt(0.3f, 0.4f)}));
    EXPECT_EQ(rule->GetObjStatus(), TAVRIN_OBJ_STATUS_NORMAL);
    EXPECT_EQ(rule->GetSelPointIndex(), 0u);
    // One vertex: the line still takes two points, the second from the zeroed copy.
    setVertices(*rule, {pt(0.1f, 0.2f)});
    EXPECT_TRUE(samePoints(verticesOf(*rule), {pt(0.1f, 0.2f), pt(0.0f, 0.0f)}));
    rule->SetRuleType(TAVRIN_RULE_REGION);
    EXPECT_EQ(rule->GetObjStatus(), TAVRIN_OBJ_STATUS_SELECTED);
    EXPECT_EQ(rule->GetSelPointIndex(), 2u);
}

TEST_F(VcaRuleTest, LineTypeAndArrowDirectionShapeTheBar)
{
    VcaRule* rule = hostCreate<VcaRule>(kBar);
    rule->SetRuleType(static_cast<tagTAVRIN_RULE_TYPE>(7));
    rule->SetArrowDirection(TAVRIN_ARROW_POSITIVE);  // a polygon: the broken line takes it
    EXPECT_EQ(rule->GetArrowDirection(), TAVRIN_ARROW_POSITIVE);
    rule->SetRuleType(TAVRIN_RULE_LINE);
    expectOneLoop(rule, kBarPlain);  // line type 1 by default, and the line never got the direction
    rule->SetArrowDirection(TAVRIN_ARROW_BOTH);
    expectOneLoop(rule, kBarBoth);
    rule->SetRuleType(TAVRIN_RULE_BROKEN_LINE);
    expectOneLoop(rule, kBarOneSide);

    rule->SetRuleType(TAVRIN_RULE_LINE);
    rule->SetLineType(TAVRIN_LINE_PLAIN);
    drawn(*rule, 1000, 1000);
    EXPECT_EQ(batchModes(), (std::vector<GLenum>{GL_LINES}));
    expectVertices(recorded().batches[0], kBar);
}

TEST_F(VcaRuleTest, TraversePlaneReachesTheBrokenLineOneDrawLate)
{
    VcaRule* rule = hostCreate<VcaRule>(kBar);
    rule->SetRuleType(TAVRIN_RULE_BROKEN_LINE);
    rule->SetArrowDirection(TAVRIN_ARROW_POSITIVE);
    rule->SetIsTraversePlane(true);
    expectOneLoop(rule, kBarOneSide);  // still the arrow bar
    drawn(*rule, 1000, 1000);  // now the plane and one block arrow
    ASSERT_EQ(recorded().batches.size(), 2u);
    EXPECT_EQ(recorded().batches[0].vertices.size(), 4u);
    EXPECT_POINT_NEAR(recorded().batches[0].at(0), 0.2f, 0.4985f, 1e-6);
    EXPECT_EQ(recorded().batches[1].vertices.size(), 8u);
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(VcaRuleTest, GetPointsWritesAllTenEntriesOfTheStoredCopy)
{
    VcaRule* rule = hostCreate<VcaRule>({pt(0.1f, 0.2f), pt(0.3f, 0.4f)});
    rule->SetRuleType(TAVRIN_RULE_LINE);
    EXPECT_FALSE(rule->SetPoints(kTen, 3));  // refused by the line, kept in the copy
    unsigned int count = 0;
    const tagTAVRIN_POINT o = pt(0.0f, 0.0f);
    EXPECT_TRUE(samePoints(bufferOf(*rule, &count),
                           {pt(0.1f, 0.2f), pt(0.3f, 0.4f), kTen[2], o, o, o, o, o, o, o}));
    EXPECT_EQ(count, 2u);
}

TEST_F(VcaRuleTest, RefusedSetPointsAndNonFiniteDragsChangeNothing)
{
    VcaRule* rule = hostCreate<VcaRule>();
    ASSERT_TRUE(rule->SetPoints(kTen, 10));
    setVertices(*rule, smallSquare());  // zeroes the rest of the copy
    tagTAVRIN_POINT eleven[11] = {};
    EXPECT_FALSE(rule->SetPoints(eleven, 11));
    EXPECT_FALSE(rule->SetPoints(nullptr, 2));
    tagTAVRIN_POINT bad[2] = {pt(0.1f, kNaN), pt(0.2f, 0.2f)};
    EXPECT_FALSE(rule->SetPoints(bad, 2));
    bad[0] = pt(kInf, 0.1f);
    EXPECT_FALSE(rule->SetPoints(bad, 2));
    unsigned int count = 0;
    EXPECT_FALSE(rule->GetPoints(nullptr, &count));
    EXPECT_FALSE(rule->GetPoints(eleven, nullptr));
    const Points sq = smallSquare();
    EXPECT_TRUE(samePoints(bufferOf(*rule, &count), {sq[0], sq[1], sq[2], sq[3], {}, {}, {}, {}, {}, {}}));
    EXPECT_EQ(count, 4u);
    for (tagTAVRIN_RULE_TYPE type : {TAVRIN_RULE_REGION, TAVRIN_RULE_BROKEN_LINE}) {
        rule->SetRuleType(type);
        rule->SetSelPointIndex(1);
        drag(*rule, pt(0.2f, 0.2f), pt(kNaN, 0.2f));
        dragVertex(*rule, pt(0.2f, 0.2f), pt(0.2f, -kInf));
        EXPECT_TRUE(samePoints(verticesOf(*rule), sq)) << type;
    }
}
