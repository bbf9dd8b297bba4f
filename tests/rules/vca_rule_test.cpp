#include "rules/RulesTest.h"
#include "support/PolygonBuilders.h"

#include <Tavrin/VcaRule.h>

using Tavrin::VcaRule;

namespace {

const unsigned int kBlue = 0x285ea6;
const unsigned int kMagenta = 0xd90db0;
const unsigned int kYellow = 0xffc000;
// Outline vertex counts of a line's arrow-bar figure: both sides, one side, plain bar.
const std::size_t kBarBoth = 18, kBarOneSide = 11, kBarPlain = 4;

tagTAVRIN_POINT kSquare[4] = {{0.2f, 0.2f}, {0.4f, 0.2f}, {0.4f, 0.4f}, {0.2f, 0.4f}};
tagTAVRIN_POINT kTen[10] = {{0.1f, 0.1f}, {0.2f, 0.1f}, {0.3f, 0.15f}, {0.4f, 0.1f}, {0.5f, 0.2f},
                            {0.6f, 0.1f}, {0.7f, 0.3f}, {0.8f, 0.1f}, {0.85f, 0.5f}, {0.9f, 0.6f}};
const Points kHorizontal = {{0.2f, 0.5f}, {0.6f, 0.5f}};

}  // namespace

class VcaRuleTest : public RuleTest {
protected:
    VcaRule* ruleOf(Points points, tagTAVRIN_RULE_TYPE type = TAVRIN_RULE_REGION)
    {
        VcaRule* rule = hostCreate<VcaRule>();
        EXPECT_TRUE(rule->SetPoints(points.data(), static_cast<unsigned int>(points.size())));
        rule->SetRuleType(type);
        return rule;
    }
    // The single batch a fresh draw gives.
    rec::Batch onlyBatch(VcaRule* rule)
    {
        const auto& batches = drawn(*rule).batches;
        EXPECT_EQ(batches.size(), 1u);
        return batches.empty() ? rec::Batch{} : batches[0];
    }
};

TEST_F(VcaRuleTest, HostDrivesAPolygonRuleFromCreationToRelease)
{
    VcaRule* rule = hostCreate<VcaRule>();
    EXPECT_EQ(rule->GetRuleType(), TAVRIN_RULE_REGION);
    EXPECT_TRUE(rule->IsNull());
    ASSERT_TRUE(rule->SetPoints(kSquare, 4));
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

    const auto& r = drawn(*rule, 800, 600);
    ASSERT_FALSE(r.batches.empty());
    EXPECT_EQ(r.batches[0].mode, static_cast<GLenum>(GL_LINE_LOOP));
    EXPECT_EQ(r.batches[0].color, rec::rgba(kMagenta));
    EXPECT_EQ(countBatches(GL_POINTS, rec::rgba(kYellow), 1), 1u);  // the active vertex's halo
    for (const rec::Batch& b : r.batchesOf(GL_POINTS)) {
        if (b.pointSize == 16.0f) {
            EXPECT_POINT_NEAR(b.at(0), 0.55f, 0.25f, 1e-6);
        }
    }
    EXPECT_TRUE(r.texts.empty());  // a rule draws no label
    EXPECT_GL_STATE_CLEAN();
    hostDelete(rule);
}

TEST_F(VcaRuleTest, ColoursByTypeAndStatus)
{
    VcaRule* fresh = ruleOf(Points(kSquare, kSquare + 3));
    drawn(*fresh, 640, 480);
    EXPECT_EQ(batchModes(), (std::vector<GLenum>{GL_LINE_LOOP, GL_POLYGON}));
    EXPECT_EQ(recorded().batches[1].color, rec::rgba(kBlue, 40));

    // SetColors reaches the polygon and the line, never the broken line.
    VcaRule* rule = ruleOf(kHorizontal);
    rule->SetColors(0x112233, 0x445566);
    const struct {
        tagTAVRIN_RULE_TYPE type;
        unsigned int normal, selected;
    } rows[] = {{TAVRIN_RULE_REGION, 0x112233, 0x445566},
                {TAVRIN_RULE_LINE, 0x112233, 0x445566},
                {TAVRIN_RULE_BROKEN_LINE, kBlue, kMagenta}};
    for (const auto& row : rows) {
        rule->SetRuleType(row.type);
        for (int status : {0, 2}) {
            SCOPED_TRACE(::testing::Message() << "type " << row.type << " status " << status);
            rule->SetObjStatus(static_cast<tagTAVRIN_OBJ_STATUS>(status));
            ASSERT_FALSE(drawn(*rule).batches.empty());
            EXPECT_EQ(recorded().batches[0].color, rec::rgba(status == 0 ? row.normal : row.selected));
            EXPECT_GL_STATE_CLEAN();
        }
    }
}

TEST_F(VcaRuleTest, LineTypeAndArrowDirectionReachTheActivePrimitive)
{
    VcaRule* rule = ruleOf(kHorizontal, static_cast<tagTAVRIN_RULE_TYPE>(7));
    rule->SetArrowDirection(TAVRIN_ARROW_POSITIVE);  // a polygon: the broken line takes it
    EXPECT_EQ(rule->GetArrowDirection(), TAVRIN_ARROW_POSITIVE);
    rule->SetRuleType(TAVRIN_RULE_LINE);
    rec::Batch bar = onlyBatch(rule);  // line type 1: the bar, still without arrows
    EXPECT_EQ(bar.mode, static_cast<GLenum>(GL_LINE_LOOP));
    EXPECT_EQ(bar.vertices.size(), kBarPlain);
    rule->SetArrowDirection(TAVRIN_ARROW_BOTH);
    EXPECT_EQ(onlyBatch(rule).vertices.size(), kBarBoth);
    rule->SetRuleType(TAVRIN_RULE_BROKEN_LINE);
    EXPECT_EQ(onlyBatch(rule).vertices.size(), kBarOneSide);
    rule->SetRuleType(TAVRIN_RULE_LINE);
    rule->SetLineType(TAVRIN_LINE_PLAIN);
    const rec::Batch plain = onlyBatch(rule);
    EXPECT_EQ(plain.mode, static_cast<GLenum>(GL_LINES));
    expectVertices(plain, kHorizontal);
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(VcaRuleTest, TypeChangesOnlyWhenTheTargetTakesTheStoredVertices)
{
    const struct {
        tagTAVRIN_RULE_TYPE start;
        unsigned int count;
        tagTAVRIN_RULE_TYPE target;
        bool accepted;
    } rows[] = {
        {TAVRIN_RULE_REGION, 0, TAVRIN_RULE_LINE, true},
        {TAVRIN_RULE_REGION, 2, TAVRIN_RULE_LINE, true},
        {TAVRIN_RULE_REGION, 3, TAVRIN_RULE_LINE, false},
        {TAVRIN_RULE_BROKEN_LINE, 5, TAVRIN_RULE_LINE, false},
        {TAVRIN_RULE_REGION, 10, TAVRIN_RULE_BROKEN_LINE, true},
        {TAVRIN_RULE_BROKEN_LINE, 10, TAVRIN_RULE_REGION, true},
        {TAVRIN_RULE_BROKEN_LINE, 10, static_cast<tagTAVRIN_RULE_TYPE>(7), true},  // a polygon
        {TAVRIN_RULE_LINE, 3, TAVRIN_RULE_LINE, true},
    };
    for (const auto& row : rows) {
        VcaRule* rule = hostCreate<VcaRule>();
        rule->SetRuleType(row.start);
        rule->SetPoints(kTen, row.count);
        rule->SetRuleType(row.target);
        EXPECT_EQ(rule->GetRuleType(), row.accepted ? row.target : row.start)
            << row.start << " with " << row.count << " to " << row.target;
    }

    // An accepted switch to a line moves the stored vertices into it; one vertex gives the
    // line its second point from the zeroed copy.
    tagTAVRIN_POINT two[2] = {pt(0.1f, 0.2f), pt(0.3f, 0.4f)};
    VcaRule* rule = ruleOf({two[0], two[1]}, TAVRIN_RULE_LINE);
    EXPECT_TRUE(samePoints(verticesOf(*rule), {two[0], two[1]}));
    ASSERT_TRUE(rule->SetPoints(two, 1));
    EXPECT_TRUE(samePoints(verticesOf(*rule), {two[0], pt(0.0f, 0.0f)}));
}

TEST_F(VcaRuleTest, StatusSelectionAndClosedFlagStayWithTheirPrimitive)
{
    VcaRule* rule = ruleOf(Points(kSquare, kSquare + 3));
    rule->SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    rule->SetSelPointIndex(2);
    rule->SetClosed(false);
    drawn(*rule, 640, 480);  // an open polygon: one GL_LINES per edge, no fill
    EXPECT_EQ(countBatches(GL_LINES, rec::rgba(kMagenta), 2), 2u);
    EXPECT_TRUE(recorded().batchesOf(GL_POLYGON).empty());
    rule->SetRuleType(TAVRIN_RULE_BROKEN_LINE);
    EXPECT_EQ(rule->GetObjStatus(), TAVRIN_OBJ_STATUS_NORMAL);
    EXPECT_EQ(rule->GetSelPointIndex(), 0u);
    EXPECT_TRUE(rule->GetClosed());
    rule->SetRuleType(TAVRIN_RULE_REGION);
    EXPECT_EQ(rule->GetObjStatus(), TAVRIN_OBJ_STATUS_SELECTED);
    EXPECT_EQ(rule->GetSelPointIndex(), 2u);
    EXPECT_FALSE(rule->GetClosed());
}

TEST_F(VcaRuleTest, TraversePlaneReachesTheBrokenLineOneDrawLate)
{
    VcaRule* rule = ruleOf(kHorizontal, TAVRIN_RULE_BROKEN_LINE);
    rule->SetArrowDirection(TAVRIN_ARROW_POSITIVE);
    rule->SetIsTraversePlane(true);
    EXPECT_EQ(onlyBatch(rule).vertices.size(), kBarOneSide);  // still the arrow bar
    const auto& batches = drawn(*rule).batches;  // now the plane and one block arrow
    ASSERT_EQ(batches.size(), 2u);
    EXPECT_EQ(batches[0].vertices.size(), 4u);
    EXPECT_POINT_NEAR(batches[0].at(0), 0.2f, 0.4985f, 1e-6);
    EXPECT_EQ(batches[1].vertices.size(), 8u);
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(VcaRuleTest, StoredCopyAndRefusals)
{
    // GetPoints writes all ten entries of the stored copy: a line refuses three vertices
    // but the copy keeps them.
    tagTAVRIN_POINT two[2] = {pt(0.1f, 0.2f), pt(0.3f, 0.4f)};
    VcaRule* line = ruleOf({two[0], two[1]}, TAVRIN_RULE_LINE);
    EXPECT_FALSE(line->SetPoints(kSquare, 3));
    unsigned int count = 0;
    const tagTAVRIN_POINT o = pt(0.0f, 0.0f);
    EXPECT_TRUE(samePoints(bufferOf(*line, &count), {two[0], two[1], kSquare[2], o, o, o, o, o, o, o}));
    EXPECT_EQ(count, 2u);

    VcaRule* rule = hostCreate<VcaRule>();
    ASSERT_TRUE(rule->SetPoints(kTen, 10));
    ASSERT_TRUE(rule->SetPoints(kSquare, 4));  // zeroes the rest of the copy
    tagTAVRIN_POINT eleven[11] = {};
    EXPECT_FALSE(rule->SetPoints(eleven, 11));
    EXPECT_FALSE(rule->SetPoints(nullptr, 2));
    tagTAVRIN_POINT bad[2] = {pt(0.1f, kNaN), pt(kInf, 0.2f)};
    EXPECT_FALSE(rule->SetPoints(bad, 2));
    EXPECT_FALSE(rule->GetPoints(nullptr, &count));
    EXPECT_FALSE(rule->GetPoints(eleven, nullptr));
    EXPECT_TRUE(samePoints(bufferOf(*rule, &count), {kSquare[0], kSquare[1], kSquare[2], kSquare[3], o, o, o, o, o, o}));
    EXPECT_EQ(count, 4u);
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
    VcaRule* rule = ruleOf(kHorizontal, TAVRIN_RULE_LINE);
    drawn(*rule);  // gives the line its view size
    EXPECT_TRUE(hits(*rule, pt(0.4f, 0.5005f)));
    EXPECT_FALSE(hits(*rule, pt(0.195f, 0.5f)));
    EXPECT_EQ(vertexAt(*rule, pt(0.6f, 0.5f)), 2u);
    rule->SetSelPointIndex(2);
    dragVertex(*rule, pt(0.6f, 0.5f), pt(0.7f, 0.6f));
    EXPECT_POINT_NEAR(verticesOf(*rule).at(1), 0.7f, 0.6f, 1e-6);
}
