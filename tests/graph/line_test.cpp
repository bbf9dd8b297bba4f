#include "support/GlTest.h"
#include "support/PolygonBuilders.h"

#include <Tavrin/Line.h>


using Tavrin::Line;
using Tavrin::Point;

namespace {


Line lineOf(tagTAVRIN_POINT a, tagTAVRIN_POINT b, int width = 1000, int height = 1000)
{
    tagTAVRIN_POINT points[2] = {a, b};
    Line line(points, 2);
    line.SetWndSize(width, height);
    return line;
}

Point cursorAt(float x, float y)
{
    const tagTAVRIN_POINT p = pt(x, y);
    return Point(&p);
}

void expectEnds(Line& line, tagTAVRIN_POINT a, tagTAVRIN_POINT b)
{
    tagTAVRIN_POINT out[2] = {};
    unsigned int count = 0;
    ASSERT_TRUE(line.GetPoints(out, &count));
    EXPECT_EQ(count, 2u);
    EXPECT_POINT_NEAR(out[0], a.x, a.y, 1e-7);
    EXPECT_POINT_NEAR(out[1], b.x, b.y, 1e-7);
}

void expectCali(Line& line, tagTAVRIN_POINT a, tagTAVRIN_POINT b)
{
    tagTAVRIN_POINT out[2] = {};
    unsigned int count = 0;
    ASSERT_TRUE(line.GetPDCCaliPoints(out, &count));
    EXPECT_POINT_NEAR(out[0], a.x, a.y, 1e-6);
    EXPECT_POINT_NEAR(out[1], b.x, b.y, 1e-6);
}

}  // namespace

TEST(LineStorage, ConstructorTakesTwoPointsOrStaysNull)
{
    tagTAVRIN_POINT points[3] = {pt(0.1f, 0.2f), pt(0.3f, 0.4f), pt(0.5f, 0.6f)};
    Line taken(points, 2);
    expectEnds(taken, points[0], points[1]);
    Line one(points, 1);  // a count of 1 still reads two points
    expectEnds(one, points[0], points[1]);
    Line tooMany(points, 3);
    EXPECT_TRUE(tooMany.IsNull());
    Line none(nullptr, 2);
    EXPECT_TRUE(none.IsNull());
    tagTAVRIN_POINT bad[2] = {pt(0.1f, kNaN), pt(0.3f, 0.4f)};
    Line notFinite(bad, 2);
    EXPECT_TRUE(notFinite.IsNull());
    EXPECT_EQ(Line().GetArrowDirection(), TAVRIN_ARROW_NONE);
    EXPECT_EQ(Line().GetLineType(), TAVRIN_LINE_PLAIN);
}

TEST(LineStorage, SetPointsCopiesTwoPointsAndRefusesWithoutChange)
{
    Line line = lineOf(pt(0.1f, 0.1f), pt(0.2f, 0.2f));
    tagTAVRIN_POINT points[2] = {pt(0.3f, 0.4f), pt(0.5f, 0.6f)};
    EXPECT_FALSE(line.SetPoints(points, 3));
    EXPECT_FALSE(line.SetPoints(nullptr, 2));
    tagTAVRIN_POINT bad[2] = {pt(0.3f, 0.4f), pt(kInf, 0.6f)};
    EXPECT_FALSE(line.SetPoints(bad, 2));
    expectEnds(line, pt(0.1f, 0.1f), pt(0.2f, 0.2f));
    EXPECT_TRUE(line.SetPoints(points, 1));
    expectEnds(line, points[0], points[1]);
    EXPECT_TRUE(line.SetPoints(points, 0));

    unsigned int count = 0;
    EXPECT_FALSE(line.GetPoints(nullptr, &count));
    EXPECT_FALSE(line.GetPoints(points, nullptr));
}

TEST(LineStorage, AssignmentCopiesOnlyTheEndPoints)
{
    Line source = lineOf(pt(0.1f, 0.2f), pt(0.3f, 0.4f));
    source.SetLineType(TAVRIN_LINE_ARROW);
    source.SetArrowDirection(TAVRIN_ARROW_BOTH);
    tagTAVRIN_POINT a = pt(0.5f, 0.5f);
    tagTAVRIN_POINT b = pt(0.6f, 0.6f);
    source.SetArrowPoints(a, b);
    Line target = lineOf(pt(0.7f, 0.7f), pt(0.8f, 0.8f));
    target = source;
    expectEnds(target, pt(0.1f, 0.2f), pt(0.3f, 0.4f));
    EXPECT_EQ(target.GetLineType(), TAVRIN_LINE_PLAIN);
    EXPECT_EQ(target.GetArrowDirection(), TAVRIN_ARROW_NONE);
    EXPECT_TRUE(samePoints(arrowOf(target), {pt(0.0f, 0.0f), pt(0.0f, 0.0f)}));
}

TEST(LineStorage, ArrowPointsRefuseNullAndNonFinite)
{
    Line line;
    tagTAVRIN_POINT a = pt(0.1f, 0.2f);
    tagTAVRIN_POINT b = pt(0.3f, 0.4f);
    tagTAVRIN_POINT bad = pt(kNaN, 0.0f);
    EXPECT_TRUE(line.SetArrowPoints(a, b));
    EXPECT_FALSE(line.SetArrowPoints(a, bad));
    EXPECT_FALSE(line.GetArrowPoints(nullptr, &bad));
    EXPECT_FALSE(line.GetArrowPoints(&bad, nullptr));
    EXPECT_TRUE(samePoints(arrowOf(line), {a, b}));
}

TEST(LineStorage, PointAccessorsRoundTrip)
{
    Line line = lineOf(pt(0.1f, 0.2f), pt(0.3f, 0.4f));
    EXPECT_FLOAT_EQ(line.p1().Rx(), 0.1f);
    EXPECT_FLOAT_EQ(line.p2().Ry(), 0.4f);
    line.setP1(cursorAt(0.7f, 0.8f));
    line.setP2(cursorAt(kNaN, 0.9f));  // ignored
    expectEnds(line, pt(0.7f, 0.8f), pt(0.3f, 0.4f));
    tagTAVRIN_POINT a = pt(0.0f, 0.0f);
    tagTAVRIN_POINT b = pt(0.3f, 0.4f);
    EXPECT_FLOAT_EQ(line.GetPointLength(a, b), 0.5f);
}

// The segment hit test, in a 1000 x 1000 view. Cursor coordinates sit on half pixels so
// that truncation to whole pixels is unambiguous.
const tagTAVRIN_POINT kLeft = pt(0.2f, 0.5f);
const tagTAVRIN_POINT kRight = pt(0.6f, 0.5f);
const tagTAVRIN_POINT kTop = pt(0.5f, 0.2f);
const tagTAVRIN_POINT kBottom = pt(0.5f, 0.6f);

// The segment hit test, in a 1000 x 1000 view. Cursor coordinates sit on half pixels so
// that truncation to whole pixels is unambiguous.
TEST(LineHitTest, PixelBoxThenDistanceSum)
{
    const struct {
        const char* name;
        tagTAVRIN_POINT a, b, cursor;
        bool hit;
    } cases[] = {
        {"HalfPixelOffTheMiddle", kLeft, kRight, pt(0.4f, 0.5005f), true},
        {"OnFirstPointColumn", kLeft, kRight, pt(0.2005f, 0.5f), true},
        {"JustLeftOfFirstPointNoMargin", kLeft, kRight, pt(0.1995f, 0.5f), false},
        {"HalfPixelLeftOfFirstPointText", kLeft, kRight, pt(0.195f, 0.5f), false},
        {"PastSecondPointWithinOnePixel", kLeft, kRight, pt(0.6004f, 0.5f), true},
        {"PastSecondPointInBoxButTenPixelsOff", kLeft, kRight, pt(0.605f, 0.5f), false},
        {"BoxTopEdgeIncluded", kLeft, kRight, pt(0.4f, 0.4925f), true},
        {"AboveBoxTop", kLeft, kRight, pt(0.4f, 0.4915f), false},
        {"BoxBottomRowIncluded", kLeft, kRight, pt(0.4f, 0.5075f), true},
        {"BoxBottomEdgeExcluded", kLeft, kRight, pt(0.4f, 0.5085f), false},
        {"VerticalBoxLeftEdgeIncluded", kTop, kBottom, pt(0.4925f, 0.4f), true},
        {"VerticalLeftOfBox", kTop, kBottom, pt(0.4915f, 0.4f), false},
        {"VerticalBoxRightEdgeExcluded", kTop, kBottom, pt(0.5085f, 0.4f), false},
        {"VerticalLastColumnIncluded", kTop, kBottom, pt(0.5075f, 0.4f), true},
        // With p1 right of p2 the box ends one pixel before p1's column.
        {"ReversedCursorOnFirstPointMisses", kRight, kLeft, pt(0.6f, 0.5f), false},
        {"ReversedLeftOfFirstPointColumn", kRight, kLeft, pt(0.5995f, 0.5f), true},
        {"ReversedMarginAroundSecondPoint", kRight, kLeft, pt(0.1997f, 0.5f), true},
        {"ZeroLengthOnThePoint", pt(0.5f, 0.5f), pt(0.5f, 0.5f), pt(0.5f, 0.5f), true},
        {"ZeroLengthTwoPixelsAway", pt(0.5f, 0.5f), pt(0.5f, 0.5f), pt(0.502f, 0.5f), false},
        {"NotFiniteCursor", kLeft, kRight, pt(kNaN, 0.5f), false},
    };
    for (const auto& c : cases) {
        Line line = lineOf(c.a, c.b);
        Point cursor = cursorAt(c.cursor.x, c.cursor.y);
        EXPECT_EQ(line.IsNearPoint(cursor), c.hit) << c.name;
        EXPECT_EQ(line.CheckSelected(cursor), c.hit) << c.name;
    }
    // No view never hits; far-out end points never overflow the box.
    for (auto size : {std::make_pair(0, 0), std::make_pair(0, 1000), std::make_pair(-1000, 1000)}) {
        Line line = lineOf(kLeft, kRight, size.first, size.second);
        Point onLine = cursorAt(0.4f, 0.5f);
        EXPECT_FALSE(line.IsNearPoint(onLine));
        EXPECT_FALSE(line.CheckSelected(onLine));
    }
    Point onLine = cursorAt(0.4f, 0.5f);
    EXPECT_FALSE(lineOf(pt(-3e38f, 0.5f), pt(3e38f, 0.5f)).IsNearPoint(onLine));
    EXPECT_FALSE(lineOf(pt(3e38f, 3e38f), pt(3e38f, 3e38f)).IsNearPoint(onLine));
}

TEST(LineSelection, NullLineIsNeverSelected)
{
    Line line = lineOf(pt(0, 0), pt(0, 0));
    Point origin = cursorAt(0.0f, 0.0f);
    EXPECT_TRUE(line.IsNearPoint(origin));
    EXPECT_FALSE(line.CheckSelected(origin));
}

TEST(LineSelection, EndPointTestLetsTheSecondPointWin)
{
    Line line = lineOf(pt(0.2f, 0.2f), pt(0.21f, 0.2f));
    EXPECT_EQ(vertexAt(line, pt(0.185f, 0.2f)), 1u);  // 0.015 from p1, 0.025 from p2
    EXPECT_EQ(vertexAt(line, pt(0.205f, 0.2f)), 2u);
    EXPECT_EQ(vertexAt(line, pt(0.5f, 0.5f)), 0u);
    EXPECT_EQ(vertexAt(line, pt(0.23f, 0.2f)), 0u);  // 0.02 from p2 in single precision
    EXPECT_EQ(line.GetSelPointIndex(), 0u);  // the host stores the result

    Line coincident = lineOf(pt(0.5f, 0.5f), pt(0.5f, 0.5f));
    EXPECT_EQ(vertexAt(coincident, pt(0.5f, 0.5f)), 2u);
}

TEST(LineMove, RefusedWholeWhenAnEndPointLeavesThePicture)
{
    Line line = lineOf(pt(0.2f, 0.5f), pt(0.5f, 0.5f));
    tagTAVRIN_POINT arrowStart = pt(0.9f, 0.1f);
    tagTAVRIN_POINT arrowEnd = pt(0.95f, 0.1f);
    line.SetArrowPoints(arrowStart, arrowEnd);
    tagTAVRIN_POINT from = pt(0.25f, 0.5f);
    drag(line, from, pt(0.7501f, 0.5f));  // x2 -> 1.0001
    expectEnds(line, pt(0.2f, 0.5f), pt(0.5f, 0.5f));
    drag(line, from, pt(0.25f, -0.5001f));
    expectEnds(line, pt(0.2f, 0.5f), pt(0.5f, 0.5f));

    drag(line, from, pt(0.75f, 0.5f));  // x2 -> exactly 1.0
    expectEnds(line, pt(0.7f, 0.5f), pt(1.0f, 0.5f));
    // The arrow points follow without a bounds test.
    EXPECT_TRUE(nearPoints(arrowOf(line), {pt(1.4f, 0.1f), pt(1.45f, 0.1f)}, 1e-6f));
}

TEST(LineMove, LeavesTheCalibrationSegmentAndRefusesNonFiniteDrags)
{
    Line line = lineOf(pt(0.2f, 0.5f), pt(0.5f, 0.5f));
    tagTAVRIN_POINT cali[2] = {pt(0.2f, 0.5f), pt(0.3f, 0.5f)};
    line.SetPDCCaliPoints(cali, 2);
    tagTAVRIN_POINT from = pt(0.5f, 0.5f);
    drag(line, from, pt(0.5f, 0.25f));
    expectEnds(line, pt(0.2f, 0.25f), pt(0.5f, 0.25f));
    expectCali(line, cali[0], cali[1]);
    tagTAVRIN_POINT inf = pt(0.5f, kInf);
    drag(line, from, pt(kNaN, 0.5f));
    drag(line, inf, from);
    drag(line, from, inf);
    expectEnds(line, pt(0.2f, 0.25f), pt(0.5f, 0.25f));
}

TEST(LineMovePoint, OnlyIndexOneOrTwoMoves)
{
    Line line = lineOf(pt(0.2f, 0.5f), pt(0.6f, 0.5f));
    tagTAVRIN_POINT from = pt(0.5f, 0.5f);
    tagTAVRIN_POINT to = pt(0.5f, 0.25f);
    for (unsigned int index : {0u, 3u, 100u}) {
        line.SetSelPointIndex(index);
        dragVertex(line, from, to);
        expectEnds(line, pt(0.2f, 0.5f), pt(0.6f, 0.5f));
    }
    line.SetSelPointIndex(1);
    dragVertex(line, from, to);
    expectEnds(line, pt(0.2f, 0.25f), pt(0.6f, 0.5f));
    line.SetSelPointIndex(2);
    dragVertex(line, from, pt(0.5f, -0.0001f));  // y2 -> 0.5 - 0.5001
    dragVertex(line, from, pt(0.5f, kNaN));
    expectEnds(line, pt(0.2f, 0.25f), pt(0.6f, 0.5f));
    dragVertex(line, from, pt(0.5f, 0.0f));  // y2 -> exactly 0.0
    expectEnds(line, pt(0.2f, 0.25f), pt(0.6f, 0.0f));
}

TEST(LineMovePoint, ShorteningBelowTheCalibrationSegmentResetsItLeftmostFirst)
{
    Line line = lineOf(pt(0.6f, 0.5f), pt(0.2f, 0.5f));  // p1 on the right
    tagTAVRIN_POINT cali[2] = {pt(0.3f, 0.5f), pt(0.5f, 0.5f)};
    line.SetPDCCaliPoints(cali, 2);
    line.SetSelPointIndex(1);
    tagTAVRIN_POINT from = pt(0.6f, 0.5f);
    dragVertex(line, from, pt(0.7f, 0.5f));  // lengthening leaves it
    expectCali(line, cali[0], cali[1]);
    tagTAVRIN_POINT shorter = pt(0.35f, 0.5f);  // p1 0.7 -> 0.45, length 0.25: kept
    dragVertex(line, from, shorter);
    expectCali(line, cali[0], cali[1]);
    // p1 0.45 -> 0.35, length 0.15 < 0.2: reset, p2 first as it is the leftmost.
    dragVertex(line, pt(0.45f, 0.5f), shorter);
    expectCali(line, pt(0.2f, 0.5f), pt(0.35f, 0.5f));
}

TEST(LineMovePoint, CalibrationSegmentMayExceedTheLineByAThousandth)
{
    // A zero drag is a successful move, so it runs the check alone.
    tagTAVRIN_POINT here = pt(0.5f, 0.5f);
    Line within = lineOf(pt(0.2f, 0.5f), pt(0.6f, 0.5f));
    tagTAVRIN_POINT slightlyLonger[2] = {pt(0.2f, 0.5f), pt(0.6009f, 0.5f)};
    within.SetPDCCaliPoints(slightlyLonger, 2);
    within.SetSelPointIndex(2);
    dragVertex(within, here, here);
    expectCali(within, slightlyLonger[0], slightlyLonger[1]);

    Line beyond = lineOf(pt(0.2f, 0.5f), pt(0.6f, 0.5f));
    tagTAVRIN_POINT tooLong[2] = {pt(0.2f, 0.5f), pt(0.6011f, 0.5f)};
    beyond.SetPDCCaliPoints(tooLong, 2);
    beyond.SetSelPointIndex(2);
    dragVertex(beyond, here, here);
    expectCali(beyond, pt(0.2f, 0.5f), pt(0.6f, 0.5f));
}

TEST(LineCalibrationStorage, RefusalsLeaveTheValuesUnchanged)
{
    Line line;
    tagTAVRIN_POINT cali[3] = {pt(0.1f, 0.1f), pt(0.2f, 0.2f), pt(0.3f, 0.3f)};
    EXPECT_TRUE(line.SetPDCCaliPoints(cali, 2));
    EXPECT_FALSE(line.SetPDCCaliPoints(cali + 1, 3));
    EXPECT_FALSE(line.SetPDCCaliPoints(nullptr, 2));
    tagTAVRIN_POINT bad[2] = {pt(kInf, 0.1f), pt(0.2f, 0.2f)};
    EXPECT_FALSE(line.SetPDCCaliPoints(bad, 2));
    expectCali(line, cali[0], cali[1]);
    unsigned int count = 0;
    EXPECT_FALSE(line.GetPDCCaliPoints(nullptr, &count));
    EXPECT_FALSE(line.GetPDCCaliPoints(cali, nullptr));

    float values[16] = {};
    EXPECT_TRUE(line.SetTargetWidthLine(values));
    values[15] = kNaN;
    EXPECT_FALSE(line.SetTargetWidthLine(values));
    EXPECT_FALSE(line.SetTargetWidthLine(nullptr));
}
