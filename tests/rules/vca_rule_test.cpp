#include "rules/RulesTest.h"
#include "support/PolygonBuilders.h"

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

tagTAVRIN_POINT kSquare[4] = {{0.2f, 0.2f}, {0.4f, 0.2f}, {0.4f, 0.4f}, {0.2f, 0.4f}};
tagTAVRIN_POINT kTen[10] = {{0.1f, 0.1f}, {0.2f, 0.1f}, {0.3f, 0.15f}, {0.4f, 0.1f},
                            {0.5f, 0.2f}, {0.6f, 0.1f}, {0.7f, 0.3f}, {0.8f, 0.1f},
                            {0.85f, 0.5f}, {0.9f, 0.6f}};

}  // namespace

class VcaRuleTest : public RuleTest {
protected:
    VcaRule* ruleOf(Points points)
    {
        VcaRule* rule = hostCreate<VcaRule>();
        EXPECT_TRUE(rule->SetPoints(points.data(), static_cast<unsigned int>(points.size())));
        return rule;
    }
};

TEST_F(VcaRuleTest, HostDrivesAPolygonRuleFromCreationToRelease)
{
    VcaRule* rule = hostCreate<VcaRule>();
    ASSERT_NE(rule, nullptr);
    EXPECT_EQ(rule->GetRuleType(), TAVRIN_RULE_REGION);
    EXPECT_TRUE(rule->IsNull());
    ASSERT_TRUE(rule->SetPoints(kSquare, 4));
    EXPECT_FALSE(rule->IsNull());

    EXPECT_TRUE(hits(*rule, pt(0.3f, 0.3f)));
    EXPECT_FALSE(hits(*rule, pt(0.5f, 0.3f)));

    EXPECT_EQ(vertexAt(*rule, pt(0.41f, 0.2f)), 2u);
    EXPECT_EQ(rule->GetSelPointIndex(), 0u);  // the hit test stores nothing
    rule->SetSelPointIndex(2);
    rule->SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    dragVertex(*rule, pt(0.41f, 0.2f), pt(0.51f, 0.25f));  // vertex 2 moves by (0.1, 0.05)
    drag(*rule, pt(0.3f, 0.3f), pt(0.35f, 0.3f));
    EXPECT_TRUE(nearPoints(verticesOf(*rule),
                           {pt(0.25f, 0.2f), pt(0.55f, 0.25f), pt(0.45f, 0.4f), pt(0.25f, 0.4f)}, 1e-6f));

    rule->Draw(nullptr, 800, 600, false);
    ASSERT_FALSE(recorded().batches.empty());
    const rec::Batch& outline = recorded().batches[0];
    EXPECT_EQ(outline.mode, static_cast<GLenum>(GL_LINE_LOOP));
    EXPECT_EQ(outline.color, rec::rgba(kMagenta));
    EXPECT_EQ(outline.vertices.size(), 4u);
    // The active vertex's 16-pixel halo in the handle colour.
    std::size_t halos = 0;
    for (const rec::Batch& b : recorded().batchesOf(GL_POINTS)) {
        if (b.pointSize == 16.0f) {
            ++halos;
            EXPECT_EQ(b.color, rec::rgba(kYellow));
            EXPECT_POINT_NEAR(b.at(0), 0.55f, 0.25f, 1e-6);
        }
    }
    EXPECT_EQ(halos, 1u);
    EXPECT_EQ(recorded().texts.size(), 0u);  // a rule draws no label
    EXPECT_GL_STATE_CLEAN();
    hostDelete(rule);
}

TEST_F(VcaRuleTest, FreshRuleDrawsAPolygonInTheNormalColour)
{
    VcaRule* rule = ruleOf(Points(kSquare, kSquare + 3));
    rule->Draw(nullptr, 640, 480, true);
    EXPECT_EQ(batchModes(), (std::vector<GLenum>{GL_LINE_LOOP, GL_POLYGON}));
    EXPECT_EQ(recorded().batches[0].color, rec::rgba(kBlue));
    EXPECT_EQ(recorded().batches[1].color, rec::rgba(kBlue, 40));
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(VcaRuleTest, SetColorsReachLineAndPolygonButNeverTheBrokenLine)
{
    VcaRule* rule = hostCreate<VcaRule>();
    rule->SetColors(0x112233, 0x445566);
    tagTAVRIN_POINT two[2] = {pt(0.2f, 0.5f), pt(0.6f, 0.5f)};
    ASSERT_TRUE(rule->SetPoints(two, 2));

    const struct {
        tagTAVRIN_RULE_TYPE type;
        unsigned int normal;
        unsigned int selected;
    } rows[] = {
        {TAVRIN_RULE_REGION, 0x112233, 0x445566},
        {TAVRIN_RULE_LINE, 0x112233, 0x445566},
        {TAVRIN_RULE_BROKEN_LINE, kBlue, kMagenta},
    };
    for (const auto& row : rows) {
        rule->SetRuleType(row.type);
        ASSERT_EQ(rule->GetRuleType(), row.type);
        for (int status : {0, 2}) {
            rule->SetObjStatus(static_cast<tagTAVRIN_OBJ_STATUS>(status));
            rec::gl().reset();
            rule->Draw(nullptr, 1000, 1000, true);
            ASSERT_FALSE(recorded().batches.empty()) << "type " << row.type;
            EXPECT_EQ(recorded().batches[0].color, rec::rgba(status == 0 ? row.normal : row.selected))
                << "type " << row.type << " status " << status;
            EXPECT_GL_STATE_CLEAN();
        }
    }
}

TEST_F(VcaRuleTest, LineIsDrawnWithTheStoredLineType)
{
    VcaRule* rule = ruleOf({pt(0.2f, 0.5f), pt(0.6f, 0.5f)});
    rule->SetRuleType(TAVRIN_RULE_LINE);

    rule->Draw(nullptr, 1000, 1000, true);  // line type 1 by default: the plain bar
    ASSERT_EQ(recorded().batches.size(), 1u);
    EXPECT_EQ(recorded().batches[0].mode, static_cast<GLenum>(GL_LINE_LOOP));
    EXPECT_EQ(recorded().batches[0].vertices.size(), kBarPlain);

    rule->SetLineType(TAVRIN_LINE_PLAIN);
    rec::gl().reset();
    rule->Draw(nullptr, 1000, 1000, true);
    ASSERT_EQ(recorded().batches.size(), 1u);
    EXPECT_EQ(recorded().batches[0].mode, static_cast<GLenum>(GL_LINES));
    EXPECT_POINT_NEAR(recorded().batches[0].at(0), 0.2f, 0.5f, 1e-6);
    EXPECT_POINT_NEAR(recorded().batches[0].at(1), 0.6f, 0.5f, 1e-6);
    EXPECT_GL_STATE_CLEAN();
}

// ---------------------------------------------------------------------------------
// Switching the rule type.

struct RuleSwitchRow {
    const char* name;
    tagTAVRIN_RULE_TYPE start;
    unsigned int count;
    tagTAVRIN_RULE_TYPE target;
    bool accepted;
};

void PrintTo(const RuleSwitchRow& row, std::ostream* os) { *os << row.name; }

class VcaRuleSwitch : public RuleTest, public ::testing::WithParamInterface<RuleSwitchRow> {};

TEST_P(VcaRuleSwitch, TypeChangesOnlyWhenTheTargetTakesTheStoredVertices)
{
    const RuleSwitchRow& row = GetParam();
    VcaRule* rule = hostCreate<VcaRule>();
    rule->SetRuleType(row.start);
    rule->SetPoints(kTen, row.count);
    rule->SetRuleType(row.target);
    EXPECT_EQ(rule->GetRuleType(), row.accepted ? row.target : row.start);
}

INSTANTIATE_TEST_SUITE_P(
    Table, VcaRuleSwitch,
    ::testing::Values(
        RuleSwitchRow{"NoVerticesToLine", TAVRIN_RULE_REGION, 0, TAVRIN_RULE_LINE, true},
        RuleSwitchRow{"TwoToLine", TAVRIN_RULE_REGION, 2, TAVRIN_RULE_LINE, true},
        RuleSwitchRow{"ThreeToLineRefused", TAVRIN_RULE_REGION, 3, TAVRIN_RULE_LINE, false},
        RuleSwitchRow{"FiveToLineRefused", TAVRIN_RULE_BROKEN_LINE, 5, TAVRIN_RULE_LINE, false},
        RuleSwitchRow{"TenToBrokenLine", TAVRIN_RULE_REGION, 10, TAVRIN_RULE_BROKEN_LINE, true},
        RuleSwitchRow{"TenToPolygon", TAVRIN_RULE_BROKEN_LINE, 10, TAVRIN_RULE_REGION, true},
        RuleSwitchRow{"OtherValueIsAPolygon", TAVRIN_RULE_BROKEN_LINE, 10,
                      static_cast<tagTAVRIN_RULE_TYPE>(7), true},
        RuleSwitchRow{"SameTypeAgain", TAVRIN_RULE_LINE, 3, TAVRIN_RULE_LINE, true}),
    [](const ::testing::TestParamInfo<RuleSwitchRow>& info) { return info.param.name; });

TEST_F(VcaRuleTest, SwitchToLineMovesTheStoredVerticesIntoIt)
{
    VcaRule* rule = hostCreate<VcaRule>();
    tagTAVRIN_POINT two[2] = {pt(0.1f, 0.2f), pt(0.3f, 0.4f)};
    ASSERT_TRUE(rule->SetPoints(two, 2));
    rule->SetRuleType(TAVRIN_RULE_LINE);
    EXPECT_TRUE(samePoints(verticesOf(*rule), {two[0], two[1]}));
    // One vertex: the line still takes two points, the second from the zeroed copy.
    ASSERT_TRUE(rule->SetPoints(two, 1));
    EXPECT_TRUE(samePoints(verticesOf(*rule), {two[0], pt(0.0f, 0.0f)}));
}

TEST_F(VcaRuleTest, RefusedSwitchKeepsTheFigure)
{
    VcaRule* rule = ruleOf(Points(kSquare, kSquare + 3));
    rule->SetRuleType(TAVRIN_RULE_LINE);
    EXPECT_EQ(rule->GetRuleType(), TAVRIN_RULE_REGION);
    rule->Draw(nullptr, 640, 480, true);
    ASSERT_FALSE(recorded().batches.empty());
    EXPECT_EQ(recorded().batches[0].mode, static_cast<GLenum>(GL_LINE_LOOP));
    EXPECT_EQ(recorded().batches[0].vertices.size(), 3u);
}

TEST_F(VcaRuleTest, StatusStaysWithThePrimitiveItWasSetOn)
{
    VcaRule* rule = ruleOf({pt(0.1f, 0.2f), pt(0.3f, 0.4f)});
    rule->SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    rule->SetSelPointIndex(2);
    rule->SetRuleType(TAVRIN_RULE_LINE);
    EXPECT_EQ(rule->GetObjStatus(), TAVRIN_OBJ_STATUS_NORMAL);
    EXPECT_EQ(rule->GetSelPointIndex(), 0u);
    rule->SetRuleType(TAVRIN_RULE_REGION);
    EXPECT_EQ(rule->GetObjStatus(), TAVRIN_OBJ_STATUS_SELECTED);
    EXPECT_EQ(rule->GetSelPointIndex(), 2u);
}

TEST_F(VcaRuleTest, ClosedFlagBelongsToTheActivePrimitive)
{
    VcaRule* rule = ruleOf(Points(kSquare, kSquare + 3));
    rule->SetClosed(false);
    EXPECT_FALSE(rule->GetClosed());
    rule->Draw(nullptr, 640, 480, true);  // an open polygon: one GL_LINES per edge, no fill
    EXPECT_EQ(batchModes(), (std::vector<GLenum>{GL_LINES, GL_LINES}));
    rule->SetRuleType(TAVRIN_RULE_BROKEN_LINE);
    EXPECT_TRUE(rule->GetClosed());
}

TEST_F(VcaRuleTest, ArrowDirectionGoesToTheBrokenLineUnlessTheRuleIsALine)
{
    VcaRule* rule = ruleOf({pt(0.2f, 0.5f), pt(0.6f, 0.5f)});
    rule->SetRuleType(static_cast<tagTAVRIN_RULE_TYPE>(7));
    EXPECT_EQ(rule->GetRuleType(), static_cast<tagTAVRIN_RULE_TYPE>(7));
    rule->SetArrowDirection(TAVRIN_ARROW_POSITIVE);  // a polygon: the broken line takes it
    EXPECT_EQ(rule->GetArrowDirection(), TAVRIN_ARROW_POSITIVE);

    rule->SetRuleType(TAVRIN_RULE_LINE);
    rule->Draw(nullptr, 1000, 1000, true);
    ASSERT_EQ(recorded().batches.size(), 1u);
    EXPECT_EQ(recorded().batches[0].vertices.size(), kBarPlain);  // the line never got it

    rule->SetArrowDirection(TAVRIN_ARROW_BOTH);
    rec::gl().reset();
    rule->Draw(nullptr, 1000, 1000, true);
    ASSERT_EQ(recorded().batches.size(), 1u);
    EXPECT_EQ(recorded().batches[0].vertices.size(), kBarBoth);

    rule->SetRuleType(TAVRIN_RULE_BROKEN_LINE);
    rec::gl().reset();
    rule->Draw(nullptr, 1000, 1000, true);
    ASSERT_EQ(recorded().batches.size(), 1u);
    EXPECT_EQ(recorded().batches[0].mode, static_cast<GLenum>(GL_LINE_LOOP));
    EXPECT_EQ(recorded().batches[0].vertices.size(), kBarOneSide);
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(VcaRuleTest, TraversePlaneReachesTheBrokenLineOneDrawLate)
{
    VcaRule* rule = ruleOf({pt(0.2f, 0.5f), pt(0.6f, 0.5f)});
    rule->SetRuleType(TAVRIN_RULE_BROKEN_LINE);
    rule->SetArrowDirection(TAVRIN_ARROW_POSITIVE);
    rule->SetIsTraversePlane(true);

    rule->Draw(nullptr, 1000, 1000, true);  // still the arrow bar
    ASSERT_EQ(recorded().batches.size(), 1u);
    EXPECT_EQ(recorded().batches[0].vertices.size(), kBarOneSide);

    rec::gl().reset();
    rule->Draw(nullptr, 1000, 1000, true);  // now the plane and one block arrow
    ASSERT_EQ(recorded().batches.size(), 2u);
    EXPECT_EQ(recorded().batches[0].vertices.size(), 4u);
    EXPECT_POINT_NEAR(recorded().batches[0].at(0), 0.2f, 0.4985f, 1e-6);
    EXPECT_EQ(recorded().batches[1].vertices.size(), 8u);
    EXPECT_GL_STATE_CLEAN();
}

// ---------------------------------------------------------------------------------
// Vertex storage.

TEST_F(VcaRuleTest, GetPointsWritesAllTenEntriesOfTheStoredCopy)
{
    VcaRule* rule = hostCreate<VcaRule>();
    tagTAVRIN_POINT two[2] = {pt(0.1f, 0.2f), pt(0.3f, 0.4f)};
    ASSERT_TRUE(rule->SetPoints(two, 2));
    rule->SetRuleType(TAVRIN_RULE_LINE);
    // Three vertices: the line refuses them but the copy keeps them.
    EXPECT_FALSE(rule->SetPoints(kSquare, 3));
    unsigned int count = 0;
    const tagTAVRIN_POINT o = pt(0.0f, 0.0f);
    // The line's own end points, then the third vertex left in the copy by the longer set.
    EXPECT_TRUE(samePoints(bufferOf(*rule, &count), {two[0], two[1], kSquare[2], o, o, o, o, o, o, o}));
    EXPECT_EQ(count, 2u);
}

TEST_F(VcaRuleTest, RefusedSetPointsChangesNothing)
{
    VcaRule* rule = hostCreate<VcaRule>();
    ASSERT_TRUE(rule->SetPoints(kTen, 10));
    ASSERT_TRUE(rule->SetPoints(kSquare, 4));  // zeroes the rest of the copy
    tagTAVRIN_POINT eleven[11] = {};
    EXPECT_FALSE(rule->SetPoints(eleven, 11));
    EXPECT_FALSE(rule->SetPoints(nullptr, 2));
    tagTAVRIN_POINT bad[2] = {pt(0.1f, kNaN), pt(0.2f, 0.2f)};
    EXPECT_FALSE(rule->SetPoints(bad, 2));
    bad[0] = pt(kInf, 0.1f);
    EXPECT_FALSE(rule->SetPoints(bad, 2));

    unsigned int count = 0;
    EXPECT_FALSE(rule->GetPoints(nullptr, &count));
    tagTAVRIN_POINT out[10];
    EXPECT_FALSE(rule->GetPoints(out, nullptr));
    EXPECT_TRUE(samePoints(bufferOf(*rule, &count),
                           {kSquare[0], kSquare[1], kSquare[2], kSquare[3], {}, {}, {}, {}, {}, {}}));
    EXPECT_EQ(count, 4u);
}

TEST_F(VcaRuleTest, NonFiniteDragsAreIgnored)
{
    VcaRule* rule = ruleOf(Points(kSquare, kSquare + 4));
    for (tagTAVRIN_RULE_TYPE type : {TAVRIN_RULE_REGION, TAVRIN_RULE_BROKEN_LINE}) {
        rule->SetRuleType(type);
        rule->SetSelPointIndex(1);
        drag(*rule, pt(0.2f, 0.2f), pt(kNaN, 0.2f));
        dragVertex(*rule, pt(0.2f, 0.2f), pt(0.2f, -kInf));
        EXPECT_TRUE(samePoints(verticesOf(*rule), Points(kSquare, kSquare + 4))) << type;
    }
}

TEST_F(VcaRuleTest, LineRuleIsHitOnItsSegmentInPixels)
{
    VcaRule* rule = ruleOf({pt(0.2f, 0.5f), pt(0.6f, 0.5f)});
    rule->SetRuleType(TAVRIN_RULE_LINE);
    rule->Draw(nullptr, 1000, 1000, true);  // gives the line its view size
    EXPECT_TRUE(hits(*rule, pt(0.4f, 0.5005f)));
    EXPECT_FALSE(hits(*rule, pt(0.195f, 0.5f)));
    EXPECT_EQ(vertexAt(*rule, pt(0.6f, 0.5f)), 2u);
    rule->SetSelPointIndex(2);
    dragVertex(*rule, pt(0.6f, 0.5f), pt(0.7f, 0.6f));
    EXPECT_POINT_NEAR(verticesOf(*rule).at(1), 0.7f, 0.6f, 1e-6);
}
