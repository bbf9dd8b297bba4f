// Each kind's options reach its class through the right setters, in the order the class
// needs (a rule's type before its vertices, a square's view size before its diagonal, a
// circle's view width before its radius), read back through the class's own getters.
#include "RenderTest.h"

#include <Tavrin/VcaObjectContainer.h>

#include <gtest/gtest.h>

#include <string>

#include <Tavrin/VcaRule.h>
#include <Tavrin/ITCLine.h>
#include <Tavrin/Lane.h>
#include <Tavrin/PdcRule.h>
#include <Tavrin/SizeFilter.h>
#include <Tavrin/AtmCali.h>
#include <Tavrin/BehaviorCheck.h>
#include <Tavrin/ItsCali.h>
#include <Tavrin/BinoCali.h>

using Tavrin::render::Scene;

namespace {

/// The single figure of a 200 x 100 scene (or of the size given).
template <class Figure>
Figure* onlyFigure(const std::string& figure, std::optional<QSize> size = std::nullopt)
{
    const std::string json = R"({"width": 200, "height": 100, "figures": [)" + figure + "]}";
    const Scene scene = Tavrin::render::parseScene(QByteArray::fromStdString(json), QString(), size);
    EXPECT_EQ(scene.figures.size(), 1u);
    auto* typed = scene.figures.empty() ? nullptr : dynamic_cast<Figure*>(scene.figures[0]);
    EXPECT_NE(typed, nullptr);
    return typed;
}

#define EXPECT_POINT(p, ex, ey)      \
    do {                             \
        EXPECT_FLOAT_EQ((p).x, (ex)); \
        EXPECT_FLOAT_EQ((p).y, (ey)); \
    } while (0)

}  // namespace

TEST(SceneKinds, VcaRuleTakesItsTypeBeforeItsVertices)
{
    RegistryScope registry;
    Tavrin::VcaRule* rule = onlyFigure<Tavrin::VcaRule>(
        R"({"kind": "VcaRule", "ruleType": "line", "arrowDirection": "negative", "lineType": 0,
            "vertices": [[0.1, 0.2], [0.7, 0.8]], "status": 1, "selected": 2})");
    ASSERT_NE(rule, nullptr);
    EXPECT_EQ(rule->GetRuleType(), TAVRIN_RULE_LINE);
    EXPECT_EQ(rule->GetArrowDirection(), TAVRIN_ARROW_NEGATIVE);
    // Status and active vertex landed on the line, the rule's figure of that type.
    EXPECT_EQ(rule->GetObjStatus(), TAVRIN_OBJ_STATUS_SELECTED);
    EXPECT_EQ(rule->GetSelPointIndex(), 2u);
    tagTAVRIN_POINT points[10] = {};
    unsigned int count = 0;
    ASSERT_TRUE(rule->GetPoints(points, &count));
    ASSERT_EQ(count, 2u);
    EXPECT_POINT(points[1], 0.7f, 0.8f);
}

TEST(SceneKinds, ITCLineTakesItsLineType)
{
    RegistryScope registry;
    Tavrin::ITCLine* line =
        onlyFigure<Tavrin::ITCLine>(R"({"kind": "ITCLine", "lineType": "default", "vertices": [[0.1, 0.2], [0.7, 0.8]]})");
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(line->GetLineType(), TAVRIN_ITC_LINE_DEFAULT);
}

TEST(SceneKinds, LaneTakesItsArrow)
{
    RegistryScope registry;
    Tavrin::Lane* lane = onlyFigure<Tavrin::Lane>(
        R"({"kind": "Lane", "vertices": [[0.1, 0.1], [0.3, 0.1], [0.4, 0.9], [0.0, 0.9]],
            "arrow": [[0.2, 0.8], [0.2, 0.3]]})");
    ASSERT_NE(lane, nullptr);
    tagTAVRIN_POINT from{}, to{};
    ASSERT_TRUE(lane->GetArrowPoints(&from, &to));
    EXPECT_POINT(from, 0.2f, 0.8f);
    EXPECT_POINT(to, 0.2f, 0.3f);
}

TEST(SceneKinds, PdcRuleInLineModeCarriesItsCalibrationAndSinglePoint)
{
    RegistryScope registry;
    Tavrin::PdcRule* rule = onlyFigure<Tavrin::PdcRule>(
        R"({"kind": "PdcRule", "lineMode": true, "vertices": [[0.1, 0.5], [0.9, 0.5]],
            "arrow": [[0.5, 0.5], [0.5, 0.3]], "lineCali": true, "shoulderLine": true,
            "caliPoints": [[0.1, 0.5], [0.4, 0.5]], "selectedCaliPoint": 2,
            "targetWidths": [0.1, 0.2], "singlePoint": [0.3, 0.9], "text": "In"})");
    ASSERT_NE(rule, nullptr);
    tagTAVRIN_POINT points[10] = {};
    unsigned int count = 0;
    ASSERT_TRUE(rule->GetPoints(points, &count));
    EXPECT_EQ(count, 2u);  // the line's, not the area's
    ASSERT_TRUE(rule->GetPDCCaliPoint(points, &count));
    EXPECT_POINT(points[1], 0.4f, 0.5f);
    tagTAVRIN_POINT from{}, to{};
    ASSERT_TRUE(rule->GetArrowPoints(&from, &to));
    EXPECT_POINT(to, 0.5f, 0.3f);
    ASSERT_TRUE(rule->GetSinglePoints(points, &count));
    EXPECT_POINT(points[0], 0.3f, 0.9f);
}

TEST(SceneKinds, SquareFilterKnowsTheViewBeforeItsDiagonal)
{
    RegistryScope registry;
    // In a 200 x 100 view the diagonal spans 20 x 40 pixels: a square of 40 pixels, 0.2 of
    // the width and 0.4 of the height.
    Tavrin::SizeFilter* filter = onlyFigure<Tavrin::SizeFilter>(
        R"({"kind": "SizeFilter", "filterType": "square", "vertices": [[0.1, 0.1], [0.2, 0.5]], "selected": 4})");
    ASSERT_NE(filter, nullptr);
    EXPECT_EQ(filter->GetSizeFilterType(), TAVRIN_SIZE_FILTER_SQUARE);
    EXPECT_EQ(filter->GetSelPointIndex(), 4u);
    tagTAVRIN_POINT corners[4] = {};
    unsigned int count = 0;
    ASSERT_TRUE(filter->GetPoints(corners, &count));
    ASSERT_EQ(count, 4u);
    EXPECT_POINT(corners[2], 0.3f, 0.5f);
}

TEST(SceneKinds, AtmCaliTakesItsLine)
{
    RegistryScope registry;
    Tavrin::AtmCali* cali = onlyFigure<Tavrin::AtmCali>(
        R"({"kind": "AtmCali", "vertices": [[0.1, 0.1], [0.6, 0.1], [0.6, 0.9], [0.1, 0.9]],
            "linePoints": [[0.3, 0.2], [0.3, 0.8]], "lineSelected": 1})");
    ASSERT_NE(cali, nullptr);
    tagTAVRIN_POINT a{}, b{};
    ASSERT_TRUE(cali->GetLinePoints(&a, &b));
    EXPECT_POINT(b, 0.3f, 0.8f);
    EXPECT_EQ(cali->GetLineSelPointIndex(), 1u);
}

TEST(SceneKinds, BehaviorCheckTakesItsCalibrationType)
{
    RegistryScope registry;
    Tavrin::BehaviorCheck* check = onlyFigure<Tavrin::BehaviorCheck>(
        R"({"kind": "BehaviorCheck", "caliType": "vertical", "vertices": [[0.3, 0.2], [0.3, 0.8]]})");
    ASSERT_NE(check, nullptr);
    EXPECT_EQ(check->GetCaliType(), TAVRIN_BEHAV_CALI_VERTICAL);
}

TEST(SceneKinds, BinoCaliRadiusIsInPixelsOfTheFinalView)
{
    RegistryScope registry;
    // The file's view is 200 wide, the rendered one 1000: the radius stays 50 pixels.
    Tavrin::BinoCali* cali = onlyFigure<Tavrin::BinoCali>(
        R"({"kind": "BinoCali", "vertices": [[0.5, 0.5]], "radius": 50})", QSize(1000, 500));
    ASSERT_NE(cali, nullptr);
    EXPECT_EQ(cali->Radius(), 50u);
}
