#include "support/GlTest.h"
#include "support/PolygonBuilders.h"

#include <Tavrin/Arrow.h>
#include <Tavrin/Line.h>

#include <cmath>
#include <vector>

using Tavrin::Arrow;
using Tavrin::Line;

namespace {

const std::vector<std::string> kLineSmooth = {"GL_LINE_SMOOTH"};

Line lineOf(tagTAVRIN_POINT a, tagTAVRIN_POINT b)
{
    tagTAVRIN_POINT points[2] = {a, b};
    return Line(points, 2);
}

// Whole pixels of a 1000 x 1000 view as picture points.
std::vector<tagTAVRIN_POINT> pixels(std::initializer_list<std::pair<int, int>> corners)
{
    std::vector<tagTAVRIN_POINT> out;
    for (const auto& c : corners) {
        out.push_back(pt(c.first / 1000.0f, c.second / 1000.0f));
    }
    return out;
}

}  // namespace

class LineDraw : public GlTest {};

TEST_F(LineDraw, PlainLineIsOneSegmentAtTheFixedWidth)
{
    Line line = lineOf(pt(0.25f, 0.75f), pt(0.5f, 0.5f));
    line.SetLineWidth(7.0f);  // not used by lines
    line.Draw(nullptr, 640, 480, false);
    EXPECT_EQ(recorded().sequence(),
              concat({enterCalls(kLineSmooth),
                      {"glColor4ub(217,13,176,255)", "glLineWidth(2)", "glBegin(GL_LINES)", "glEnd()"},
                      leaveCalls(kLineSmooth)}));
    expectVertices(recorded().batches.at(0), {pt(0.25f, 0.75f), pt(0.5f, 0.5f)});
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(LineDraw, SelectedLineMarksItsEndPointsTheActiveOneWithAHalo)
{
    Line line = lineOf(pt(0.25f, 0.75f), pt(0.5f, 0.5f));
    line.SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    line.SetSelPointIndex(2);
    line.SetVcaPDCLineOrRect(true);  // people-counting line mode: width 4
    line.Draw(nullptr, 640, 480, false);
    const auto& b = recorded().batches;
    ASSERT_EQ(b.size(), 5u);  // segment, direction arrow, p1 dot, p2 halo and dot
    EXPECT_EQ(b[0].color, rec::rgba(0x285ea6));
    EXPECT_FLOAT_EQ(b[0].lineWidth, 4.0f);
    EXPECT_EQ(b[2].mode, static_cast<GLenum>(GL_POINTS));
    EXPECT_FLOAT_EQ(b[2].pointSize, 8.0f);
    EXPECT_POINT_NEAR(b[2].at(0), 0.25f, 0.75f, 1e-6);
    EXPECT_FLOAT_EQ(b[3].pointSize, 16.0f);
    EXPECT_EQ(b[3].color, rec::rgba(0xffc000));
    EXPECT_POINT_NEAR(b[4].at(0), 0.5f, 0.5f, 1e-6);

    rec::gl().reset();
    line.SetShowPoint(false);
    line.SetVcaPDCLineOrRect(false);
    line.Draw(nullptr, 640, 480, false);
    EXPECT_EQ(recorded().batches.size(), 1u);
    EXPECT_GL_STATE_CLEAN();
}

// The arrow-bar outline in a 1000 x 500 view: shaft 0.005 wide and 0.02 high, head
// overhang 0.006, head 0.024 high, marks 0.02 beyond, bar 0.006 thick.
struct LocalBar {
    std::vector<tagTAVRIN_POINT> outline;
    tagTAVRIN_POINT markA, markB;
};

LocalBar localBar(TAVRIN_ARROW_TYPE direction, float length)
{
    const float m = length / 2;
    const std::vector<tagTAVRIN_POINT> up = {
        {0, .003f},         {m - .0025f, .003f}, {m - .0025f, .023f}, {m - .0085f, .023f},
        {m, .047f},         {m + .0085f, .023f}, {m + .0025f, .023f}, {m + .0025f, .003f},
        {length, .003f},    {length, -.003f},    {0, -.003f}};
    const std::vector<tagTAVRIN_POINT> down = {
        {0, .003f},          {length, .003f},      {length, -.003f},     {m + .0025f, -.003f},
        {m + .0025f, -.023f}, {m + .0085f, -.023f}, {m, -.047f},          {m - .0085f, -.023f},
        {m - .0025f, -.023f}, {m - .0025f, -.003f}, {0, -.003f}};
    switch (direction) {
    case TAVRIN_ARROW_POSITIVE:
        return {up, {m, -.023f}, {m, .067f}};
    case TAVRIN_ARROW_NEGATIVE:
        return {down, {m, -.067f}, {m, .023f}};
    case TAVRIN_ARROW_BOTH: {
        std::vector<tagTAVRIN_POINT> both(up.begin(), up.begin() + 9);
        both.insert(both.end(), down.begin() + 2, down.end());
        return {both, {m, -.067f}, {m, .067f}};
    }
    default:
        return {{{0, .003f}, {length, .003f}, {length, -.003f}, {0, -.003f}}, {}, {}};
    }
}

tagTAVRIN_POINT placed(tagTAVRIN_POINT local, tagTAVRIN_POINT a, tagTAVRIN_POINT b)
{
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double length = std::sqrt(dx * dx + dy * dy);
    const double c = dx / length;
    const double s = dy / length;
    return pt(static_cast<float>(a.x + local.x * c - local.y * s),
              static_cast<float>(a.y + local.y * c + local.x * s));
}

const tagTAVRIN_POINT kFrom = pt(0.2f, 0.5f);
const tagTAVRIN_POINT kTo = pt(0.6f, 0.5f);
const tagTAVRIN_POINT kObliqueFrom = pt(0.2f, 0.2f);
const tagTAVRIN_POINT kObliqueTo = pt(0.5f, 0.6f);  // cos 0.6, sin 0.8, length 0.5

TEST_F(LineDraw, ArrowBarOutlineMarksAndLoopByDirection)
{
    const struct {
        TAVRIN_ARROW_TYPE direction;
        tagTAVRIN_POINT a, b;
    } cases[] = {{TAVRIN_ARROW_BOTH, kFrom, kTo},
                 {TAVRIN_ARROW_POSITIVE, kFrom, kTo},
                 {TAVRIN_ARROW_NEGATIVE, kFrom, kTo},
                 {TAVRIN_ARROW_NONE, kFrom, kTo},
                 {static_cast<TAVRIN_ARROW_TYPE>(7), kFrom, kTo},
                 {TAVRIN_ARROW_BOTH, kObliqueFrom, kObliqueTo},
                 {TAVRIN_ARROW_POSITIVE, kObliqueFrom, kObliqueTo},
                 {TAVRIN_ARROW_NEGATIVE, kObliqueFrom, kObliqueTo},
                 {TAVRIN_ARROW_NONE, kObliqueFrom, kObliqueTo}};
    for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << "direction " << c.direction << " from " << c.a.x << "," << c.a.y);
    rec::gl().reset();
    Line line = lineOf(c.a, c.b);
    line.SetLineType(TAVRIN_LINE_ARROW);
    line.SetArrowDirection(c.direction);
    line.SetObjStatus(static_cast<tagTAVRIN_OBJ_STATUS>(3));  // marks and fill, no handles
    line.Draw(nullptr, 1000, 500, true);

    const float dx = c.b.x - c.a.x;
    const float dy = c.b.y - c.a.y;
    const LocalBar local = localBar(c.direction, std::sqrt(dx * dx + dy * dy));
    std::vector<tagTAVRIN_POINT> expected;
    for (const tagTAVRIN_POINT& p : local.outline) {
        expected.push_back(placed(p, c.a, c.b));
    }
    const auto loops = recorded().batchesOf(GL_LINE_LOOP);
    ASSERT_EQ(loops.size(), 1u);
    EXPECT_EQ(loops[0].color, rec::rgba(0xd90db0));
    EXPECT_FLOAT_EQ(loops[0].lineWidth, 2.0f);
    expectVertices(loops[0], expected);
    if (c.direction < TAVRIN_ARROW_BOTH || c.direction > TAVRIN_ARROW_NEGATIVE) {
        EXPECT_TRUE(recorded().texts.empty());
    } else {
        ASSERT_EQ(recorded().texts.size(), 2u);
        const tagTAVRIN_POINT a = placed(local.markA, c.a, c.b);
        const tagTAVRIN_POINT b = placed(local.markB, c.a, c.b);
        EXPECT_POINT_NEAR(recorded().texts[0].position, a.x, a.y, 1e-6);
        EXPECT_POINT_NEAR(recorded().texts[1].position, b.x, b.y, 1e-6);
        EXPECT_EQ(recorded().texts[0].listCalls, 1);
    }
    EXPECT_GL_STATE_CLEAN();
    }
}

TEST_F(LineDraw, ArrowBarInStatusZeroOrTwoIsOutlineOnly)
{
    for (int status : {0, 2}) {
        rec::gl().reset();
        Line line = lineOf(kFrom, kTo);
        line.SetLineType(TAVRIN_LINE_ARROW);
        line.SetArrowDirection(TAVRIN_ARROW_BOTH);
        line.SetObjStatus(static_cast<tagTAVRIN_OBJ_STATUS>(status));
        line.Draw(nullptr, 1000, 500, true);
        EXPECT_EQ(recorded().sequence(),
                  concat({enterCalls(kLineSmooth),
                          {status == 0 ? "glColor4ub(217,13,176,255)" : "glColor4ub(40,94,166,255)",
                           "glLineWidth(2)", "glBegin(GL_LINE_LOOP)", "glEnd()"},
                          leaveCalls(kLineSmooth)}));
        EXPECT_GL_STATE_CLEAN();
    }
}

TEST_F(LineDraw, OnlyACompletelySplitOutlineIsFilled)
{
    // Exact binary fractions, so the ear test's areas add up exactly.
    Line line = lineOf(pt(0.25f, 0.5f), pt(0.75f, 0.5f));
    line.SetLineType(TAVRIN_LINE_ARROW);
    line.SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    line.SetShowPoint(false);
    line.Draw(nullptr, 1024, 512, true);
    const auto fills = recorded().batchesOf(GL_POLYGON);
    ASSERT_EQ(fills.size(), 2u);  // the bare bar: 4 - 2 triangles
    EXPECT_EQ(fills[0].color, rec::rgba(0x285ea6, 40));
    const float top = 0.5f + 1.5f / 512;
    const float bottom = 0.5f - 1.5f / 512;
    expectVertices(fills[0], {pt(0.25f, top), pt(0.75f, top), pt(0.75f, bottom)}, 0.0);
    expectVertices(fills[1], {pt(0.25f, top), pt(0.75f, bottom), pt(0.25f, bottom)}, 0.0);

    // With a head the bar's edges either side of it are collinear, which the crossing
    // check refuses: the fill colour is set but nothing is filled.
    rec::gl().reset();
    line.SetArrowDirection(TAVRIN_ARROW_POSITIVE);
    line.Draw(nullptr, 1024, 512, true);
    EXPECT_TRUE(recorded().batchesOf(GL_POLYGON).empty());
    EXPECT_EQ(recorded().sequence().at(recorded().sequence().size() - 5),
              "glColor4ub(40,94,166,40)");
}

TEST_F(LineDraw, ZeroLengthOrNoViewDrawsNoArrowBar)
{
    struct Case {
        tagTAVRIN_POINT a, b;
        int width, height;
    };
    for (const Case& c : {Case{kFrom, kFrom, 1000, 500}, Case{kFrom, kTo, 0, 500},
                          Case{kFrom, kTo, 1000, -5}}) {
        rec::gl().reset();
        Line line = lineOf(c.a, c.b);
        line.SetLineType(TAVRIN_LINE_ARROW);
        line.SetArrowDirection(TAVRIN_ARROW_BOTH);
        line.SetObjStatus(static_cast<tagTAVRIN_OBJ_STATUS>(3));
        line.Draw(nullptr, c.width, c.height, true);
        EXPECT_EQ(recorded().sequence(),
                  concat({enterCalls(kLineSmooth), {"glColor4ub(217,13,176,255)", "glLineWidth(2)"},
                          leaveCalls(kLineSmooth)}));
        EXPECT_GL_STATE_CLEAN();
    }
}

TEST_F(LineDraw, DirectionArrowIsReanchoredAtTheMiddleAndStaysPut)
{
    Line line = lineOf(kFrom, kTo);
    line.SetVcaPDCLineOrRect(true);
    line.SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    line.SetShowPoint(false);
    // First frame: both arrow points at (0, 0), on no side: the arrow points down.
    for (int frame = 0; frame < 2; ++frame) {
        rec::gl().reset();
        line.Draw(nullptr, 1000, 1000, true);
        EXPECT_TRUE(nearPoints(arrowOf(line), {pt(0.4f, 0.5f), pt(0.4f, 0.6f)}, 1e-7f));
        const auto loops = recorded().batchesOf(GL_LINE_LOOP);
        ASSERT_EQ(loops.size(), 1u);
        EXPECT_EQ(loops[0].color, rec::rgba(0x285ea6));
        EXPECT_FLOAT_EQ(loops[0].lineWidth, 2.0f);
        // The normal is a hair off a right angle: 4 and 12 truncate to 3 and 11.
        expectVertices(loops[0], pixels({{397, 500}, {397, 582}, {389, 582}, {400, 600},
                                         {411, 582}, {403, 582}, {403, 500}, {400, 500}}));
        EXPECT_GL_STATE_CLEAN();
    }
    // An arrow pointing up elsewhere keeps its side and is moved and stood up.
    tagTAVRIN_POINT up[2] = {pt(0.9f, 0.9f), pt(0.95f, 0.85f)};
    line.SetArrowPoints(up[0], up[1]);
    line.Draw(nullptr, 1000, 1000, true);
    EXPECT_TRUE(nearPoints(arrowOf(line), {pt(0.4f, 0.5f), pt(0.4f, 0.4f)}, 1e-7f));
}

TEST_F(LineDraw, DirectionArrowOfAVerticalOrObliqueLine)
{
    Line vertical = lineOf(pt(0.5f, 0.2f), pt(0.5005f, 0.6f));  // |x1 - x2| < 0.001
    vertical.SetVcaPDCLineOrRect(true);
    vertical.SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    vertical.Draw(nullptr, 800, 600, true);
    const Points arrow = arrowOf(vertical);
    EXPECT_POINT_NEAR(arrow[1], arrow[0].x - 0.1f, arrow[0].y, 1e-6);

    // Slope 1 in a 1000 x 500 view is 0.5 in pixels: r = sqrt(1.25).
    Line oblique = lineOf(pt(0.2f, 0.2f), pt(0.6f, 0.6f));
    oblique.SetVcaPDCLineOrRect(true);
    oblique.SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    oblique.Draw(nullptr, 1000, 500, true);
    const float r = std::sqrt(1.25f);
    EXPECT_POINT_NEAR(arrowOf(oblique)[1], 0.4f - 0.1f * 0.5f / r, 0.4f + 0.1f / r, 1e-6);
}

TEST_F(LineDraw, BlockArrowCornersAsPoints)
{
    Line line;
    line.SetWndSize(1000, 1000);
    tagTAVRIN_POINT tail = pt(0.4f, 0.5f);
    tagTAVRIN_POINT right = pt(0.5f, 0.5f);
    tagTAVRIN_POINT diagonal = pt(0.46f, 0.58f);
    tagTAVRIN_POINT out[8] = {};
    line.DrawArrow(tail, right, out);
    const auto expectCorners = [&](std::vector<tagTAVRIN_POINT> expected) {
        for (int i = 0; i < 8; ++i) {
            SCOPED_TRACE(i);
            EXPECT_POINT_NEAR(out[i], expected[i].x, expected[i].y, 1e-7);
        }
    };
    // Tail first, tip at 4; the head base is truncated from 499.99999952 to 499.
    expectCorners(pixels({{400, 500}, {400, 503}, {482, 502}, {482, 510}, {500, 500}, {482, 488},
                          {482, 496}, {400, 497}}));
    line.DrawArrow(tail, diagonal, out);
    expectCorners(pixels({{400, 500}, {397, 502}, {446, 567}, {440, 572}, {460, 580}, {458, 558},
                          {452, 563}, {403, 498}}));
    // Same pixel: untouched.
    tagTAVRIN_POINT samePixel = pt(0.4004f, 0.5004f);
    line.DrawArrow(tail, samePixel, out);
    expectCorners(pixels({{400, 500}, {397, 502}, {446, 567}, {440, 572}, {460, 580}, {458, 558},
                          {452, 563}, {403, 498}}));
    line.DrawArrow(tail, right, nullptr);
    EXPECT_TRUE(recorded().calls.empty());
}

TEST_F(LineDraw, ArrowPrimitiveIsOneBlockArrowLoop)
{
    tagTAVRIN_POINT points[2] = {pt(0.4f, 0.5f), pt(0.4f, 0.6f)};
    Arrow arrow(points, 2);
    arrow.SetIsTraversePlane(true);  // not consulted
    arrow.SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    arrow.Draw(nullptr, 1000, 1000, false);
    EXPECT_EQ(recorded().sequence(),
              concat({enterCalls({"GL_LINE_SMOOTH", "GL_POLYGON_SMOOTH"}),
                      {"glColor4ub(40,94,166,255)", "glLineWidth(2)", "glBegin(GL_LINE_LOOP)",
                       "glEnd()"},
                      leaveCalls({"GL_POLYGON_SMOOTH", "GL_LINE_SMOOTH"})}));
    expectVertices(recorded().batches.at(0),
                   pixels({{397, 500}, {397, 582}, {389, 582}, {400, 600}, {411, 582}, {403, 582},
                           {403, 500}, {400, 500}}));
    EXPECT_GL_STATE_CLEAN();

    rec::gl().reset();
    tagTAVRIN_POINT close[2] = {pt(0.4f, 0.5f), pt(0.4009f, 0.5009f)};
    Arrow tiny(close, 2);
    tiny.Draw(nullptr, 1000, 1000, false);
    tiny.Draw(nullptr, 0, 0, false);
    EXPECT_TRUE(recorded().calls.empty());
    Arrow refused(points, 3);
    EXPECT_TRUE(refused.IsNull());
}
