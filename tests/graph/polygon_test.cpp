#include "support/GlTest.h"
#include "support/PolygonBuilders.h"

#include <Tavrin/Polygon.h>

#include <cmath>

using Tavrin::Point;
using Tavrin::Polygon;

namespace {


Polygon polygonWith(Points points)
{
    return Polygon(points.data(), static_cast<unsigned int>(points.size()));
}

// An L whose second vertex is the reflex corner.
Points lShape()
{
    return {pt(0.5f, 0.3f), pt(0.3f, 0.3f), pt(0.3f, 0.6f),
            pt(0.1f, 0.6f), pt(0.1f, 0.1f), pt(0.5f, 0.1f)};
}

Points bowTie() { return {pt(0.2f, 0.2f), pt(0.6f, 0.6f), pt(0.6f, 0.2f), pt(0.2f, 0.6f)}; }

// Reads the whole vertex store, zeroed tail included.
class PolygonProbe : public Polygon {
public:
    using Polygon::Polygon;
    const tagTAVRIN_POINT& raw(int i) const { return m_points[i]; }
    int wndWidth() const { return m_wndWidth; }
};

// A figure whose GetPoints fails, for operator=.
class Unreadable : public Polygon {
public:
    bool GetPoints(tagTAVRIN_POINT*, unsigned int*) override { return false; }
};

}  // namespace

// ---- Storage ----

TEST(PolygonStorage, SetPointsTakesUpToTwentyAndRefusesMore)
{
    Points twenty;
    for (int i = 0; i < 21; ++i) {
        twenty.push_back(pt(0.01f * i, 0.5f));
    }
    Polygon p = polygonWith(smallSquare());
    EXPECT_FALSE(p.SetPoints(twenty.data(), 21));
    EXPECT_TRUE(samePoints(verticesOf(p), smallSquare()));
    EXPECT_TRUE(p.SetPoints(twenty.data(), 20));
    EXPECT_TRUE(samePoints(verticesOf(p), Points(twenty.begin(), twenty.begin() + 20)));
    EXPECT_FALSE(p.SetPoints(nullptr, 3));
    EXPECT_EQ(verticesOf(p).size(), 20u);
    EXPECT_TRUE(p.SetPoints(twenty.data(), 0));
    EXPECT_TRUE(verticesOf(p).empty());
}

TEST(PolygonStorage, ShorterListZeroesTheRestOfTheStore)
{
    PolygonProbe p;
    Points five = {pt(0.1f, 0.1f), pt(0.2f, 0.1f), pt(0.3f, 0.2f), pt(0.2f, 0.3f), pt(0.1f, 0.2f)};
    setVertices(p, five);
    setVertices(p, Points{pt(0.5f, 0.5f), pt(0.6f, 0.5f)});
    for (int i = 2; i < 20; ++i) {
        EXPECT_EQ(p.raw(i).x, 0.0f) << i;
        EXPECT_EQ(p.raw(i).y, 0.0f) << i;
    }
}

TEST(PolygonStorage, RefusalsChangeNothingAndConstructorsTakeOnlyAcceptableLists)
{
    Polygon p = polygonWith(smallSquare());
    for (float bad : {kNaN, kInf, -kInf}) {
        Points withBad = {pt(0.1f, 0.1f), pt(bad, 0.2f), pt(0.3f, 0.3f)};
        EXPECT_FALSE(p.SetPoints(withBad.data(), 3));
        EXPECT_TRUE(verticesOf(Polygon(withBad.data(), 3)).empty());
        withBad[1] = pt(0.2f, bad);
        EXPECT_FALSE(p.SetPoints(withBad.data(), 3));
    }
    tagTAVRIN_POINT out[20];
    unsigned int count = 99;
    EXPECT_FALSE(p.GetPoints(nullptr, &count));
    EXPECT_EQ(count, 99u);
    EXPECT_FALSE(p.GetPoints(out, nullptr));
    EXPECT_TRUE(samePoints(verticesOf(p), smallSquare()));
    Points many(21, pt(0.5f, 0.5f));
    EXPECT_TRUE(verticesOf(Polygon(many.data(), 21)).empty());
    EXPECT_TRUE(verticesOf(Polygon(nullptr, 3)).empty());
}

TEST(PolygonNull, NullOnlyWhenEveryVertexIsTheOrigin)
{
    Points zeros(4, pt(0.0f, 0.0f));
    Polygon p = polygonWith(zeros);
    EXPECT_TRUE(p.IsNull());
    zeros[3] = pt(0.0f, 0.01f);
    EXPECT_FALSE(polygonWith(zeros).IsNull());
}

// ---- Inside test ----

TEST(PolygonInside, EvenOddRayWithHalfOpenEdges)
{
    const struct {
        const char* name;
        Points polygon;
        tagTAVRIN_POINT cursor;
        bool inside;
    } cases[] = {
        {"SquareCentre", smallSquare(), pt(0.3f, 0.3f), true},
        {"SquareLeftEdge", smallSquare(), pt(0.2f, 0.3f), true},
        {"SquareRightEdge", smallSquare(), pt(0.4f, 0.3f), false},
        {"SquareTopEdge", smallSquare(), pt(0.3f, 0.2f), true},
        {"SquareBottomEdge", smallSquare(), pt(0.3f, 0.4f), false},
        {"SquareTopLeftVertex", smallSquare(), pt(0.2f, 0.2f), true},
        {"SquareTopRightVertex", smallSquare(), pt(0.4f, 0.2f), false},
        {"SquareBottomLeftVertex", smallSquare(), pt(0.2f, 0.4f), false},
        {"SquareJustInsideRight", smallSquare(), pt(0.3999f, 0.3f), true},
        {"SquareJustOutsideLeft", smallSquare(), pt(0.1999f, 0.3f), false},
        {"SquareJustAboveTop", smallSquare(), pt(0.3f, 0.1999f), false},
        {"SquareJustAboveBottom", smallSquare(), pt(0.3f, 0.3999f), true},
        {"SquareFarRight", smallSquare(), pt(0.9f, 0.3f), false},
        {"LShapeLeg", lShape(), pt(0.2f, 0.5f), true},
        {"LShapeBar", lShape(), pt(0.45f, 0.2f), true},
        {"LShapeNotch", lShape(), pt(0.4f, 0.45f), false},
        {"LShapeReflexCornerOnExcludedSides", lShape(), pt(0.3f, 0.3f), false},
        {"SlantedEdgeLeft", {pt(0.1f, 0.1f), pt(0.5f, 0.5f), pt(0.1f, 0.5f)}, pt(0.29f, 0.3f), true},
        {"SlantedEdgeRight", {pt(0.1f, 0.1f), pt(0.5f, 0.5f), pt(0.1f, 0.5f)}, pt(0.31f, 0.3f), false},
        {"BowTieLeftLobe", bowTie(), pt(0.25f, 0.4f), true},
        {"BowTieRightLobe", bowTie(), pt(0.55f, 0.4f), true},
        {"BowTieGapAbove", bowTie(), pt(0.4f, 0.3f), false},
        {"BowTieGapBelow", bowTie(), pt(0.4f, 0.5f), false},
        {"NaNCursor", smallSquare(), pt(kNaN, 0.3f), false},
        {"EmptyPolygon", Points{}, pt(0.3f, 0.3f), false},
        {"NullPolygonIsNeverSelected", Points(3, pt(0, 0)), pt(0.0f, 0.0f), false},
    };
    for (const auto& c : cases) {
        Polygon p = polygonWith(c.polygon);
        tagTAVRIN_POINT at = c.cursor;
        Point cursor(&at);
        EXPECT_EQ(p.IsNearPoint(cursor), c.inside) << c.name;
        EXPECT_EQ(p.CheckSelected(cursor), c.inside) << c.name;
    }
}

TEST(PolygonInsideOpen, ClosingEdgeCountsForAnOpenOutline)
{
    Polygon p = polygonWith(smallSquare());
    p.SetClosed(false);
    tagTAVRIN_POINT c = pt(0.3f, 0.3f);
    Point cursor(&c);
    EXPECT_TRUE(p.CheckSelected(cursor));
}

// ---- Vertex hit test ----

TEST(PolygonVertexHit, LowestIndexWinsNotTheNearest)
{
    Polygon p = polygonWith({pt(0.50f, 0.5f), pt(0.52f, 0.5f), pt(0.9f, 0.9f)});
    EXPECT_EQ(vertexAt(p, pt(0.515f, 0.5f)), 1u);  // 0.015 from vertex 1, 0.005 from vertex 2
    EXPECT_EQ(vertexAt(p, pt(0.535f, 0.5f)), 2u);
    EXPECT_EQ(vertexAt(p, pt(0.89f, 0.91f)), 3u);
    EXPECT_EQ(vertexAt(p, pt(0.7f, 0.7f)), 0u);
    EXPECT_EQ(p.GetSelPointIndex(), 0u);  // the result is not stored
}

TEST(PolygonVertexHit, StrictlyCloserThanTwoHundredths)
{
    Polygon p = polygonWith({pt(0.5f, 0.5f), pt(0.9f, 0.1f), pt(0.9f, 0.9f)});
    EXPECT_EQ(vertexAt(p, pt(0.48f, 0.5f)), 0u);
    EXPECT_EQ(vertexAt(p, pt(0.4801f, 0.5f)), 1u);
    EXPECT_EQ(vertexAt(p, pt(kNaN, kNaN)), 0u);
}

// ---- Whole drag ----

TEST(PolygonMove, WholeDragLimits)
{
    const struct {
        const char* name;
        bool rightOut;
        tagTAVRIN_POINT delta;
        bool accepted;
    } cases[] = {
        {"RightByHalf", false, pt(0.5f, 0.0f), true},
        {"RightPastEdgeRefused", false, pt(0.7f, 0.0f), false},
        {"LeftToTheEdge", false, pt(-0.2f, 0.0f), true},
        {"LeftPastEdgeRefused", false, pt(-0.21f, 0.0f), false},
        {"UpPastEdgeRefused", false, pt(0.0f, -0.21f), false},
        {"DownToTheEdge", false, pt(0.0f, 0.6f), true},
        {"DownPastEdgeRefused", false, pt(0.0f, 0.7f), false},
        {"RightOutCarriesLaterVerticesPast", true, pt(0.7f, 0.0f), true},
        {"RightOutHoldsFirstVertexBack", true, pt(0.79f, 0.0f), false},
        {"RightOutStillRefusesDown", true, pt(0.0f, 0.7f), false},
        {"RightOutStillRefusesLeft", true, pt(-0.21f, 0.0f), false},
        {"RightOutStillRefusesUp", true, pt(0.0f, -0.21f), false},
        {"NaNDragRefused", false, pt(kNaN, 0.0f), false},
        {"InfiniteDragRefused", true, pt(0.0f, kInf), false},
    };
    for (const auto& c : cases) {
        Polygon p = polygonWith(smallSquare());
        p.SetSuptPolygonMoveRightOut(c.rightOut);
        EXPECT_EQ(drag(p, pt(0.0f, 0.0f), c.delta), c.accepted) << c.name;
        Points expected = smallSquare();
        for (tagTAVRIN_POINT& v : expected) {
            v.x += c.accepted ? c.delta.x : 0.0f;
            v.y += c.accepted ? c.delta.y : 0.0f;
        }
        EXPECT_TRUE(samePoints(verticesOf(p), expected)) << c.name;
    }
}

TEST(PolygonMoveRightOut, OnlyTheFirstVertexIsHeldBack)
{
    // Vertex 0 is the right-hand corner here: it is the one held 0.02 inside the edge.
    Points square = {pt(0.4f, 0.2f), pt(0.4f, 0.4f), pt(0.2f, 0.4f), pt(0.2f, 0.2f)};
    Polygon p = polygonWith(square);
    p.SetSuptPolygonMoveRightOut(true);
    tagTAVRIN_POINT from = pt(0.0f, 0.0f);
    EXPECT_FALSE(drag(p, from, pt(0.59f, 0.0f)));  // vertex 0 would reach 0.99
    EXPECT_TRUE(samePoints(verticesOf(p), square));
    EXPECT_TRUE(drag(p, from, pt(0.5f, 0.0f)));  // vertex 0 at 0.9
    EXPECT_FLOAT_EQ(verticesOf(p)[0].x, 0.9f);
}

TEST(PolygonMoveEmpty, EmptyPolygonMovesTrivially)
{
    Polygon p;
    EXPECT_TRUE(drag(p, pt(0.1f, 0.1f), pt(5.0f, 5.0f)));
    EXPECT_TRUE(verticesOf(p).empty());
}

// ---- Vertex drag ----

TEST(PolygonMovePoint, MovesOnlyTheSelectedVertexInsideThePicture)
{
    Polygon p = polygonWith(smallSquare());
    tagTAVRIN_POINT from = pt(0.4f, 0.2f);
    tagTAVRIN_POINT to = pt(0.5f, 0.1f);

    dragVertex(p, from, to);  // nothing selected
    EXPECT_TRUE(samePoints(verticesOf(p), smallSquare()));
    p.SetSelPointIndex(5);  // beyond the four vertices
    dragVertex(p, from, to);
    EXPECT_TRUE(samePoints(verticesOf(p), smallSquare()));

    p.SetSelPointIndex(2);
    dragVertex(p, from, to);
    Points expected = smallSquare();
    expected[1] = pt(0.4f + (0.5f - 0.4f), 0.2f + (0.1f - 0.2f));
    EXPECT_TRUE(samePoints(verticesOf(p), expected));

    dragVertex(p, from, pt(from.x + 0.6f, from.y));  // vertex 1 would pass x = 1
    EXPECT_TRUE(samePoints(verticesOf(p), expected));

    dragVertex(p, from, pt(kNaN, 0.2f));
    EXPECT_TRUE(samePoints(verticesOf(p), expected));
}

TEST(PolygonMovePoint, RightOutOptionDoesNotApplyAndEdgesAreAllowed)
{
    Polygon p = polygonWith({pt(0.5f, 0.5f), pt(0.6f, 0.6f), pt(0.5f, 0.6f)});
    p.SetSuptPolygonMoveRightOut(true);
    p.SetSelPointIndex(1);
    tagTAVRIN_POINT from = pt(0.5f, 0.5f);
    dragVertex(p, from, pt(1.01f, 0.5f));
    EXPECT_FLOAT_EQ(verticesOf(p)[0].x, 0.5f);
    dragVertex(p, from, pt(1.0f, 0.0f));
    EXPECT_FLOAT_EQ(verticesOf(p)[0].x, 1.0f);
    EXPECT_FLOAT_EQ(verticesOf(p)[0].y, 0.0f);

    Polygon square = polygonWith(smallSquare());  // a vertex drag may make it self-crossing
    square.SetSelPointIndex(1);
    dragVertex(square, pt(0.2f, 0.2f), pt(0.6f, 0.6f));
    EXPECT_FLOAT_EQ(verticesOf(square)[0].x, 0.6f);
}

// ---- Assignment ----

TEST(PolygonAssign, CopiesOnlyTheGeometry)
{
    Polygon source = polygonWith({pt(0.1f, 0.1f), pt(0.2f, 0.1f), pt(0.2f, 0.2f)});
    source.SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    source.SetClosed(false);
    source.SetSelPointIndex(2);

    Polygon target = polygonWith(smallSquare());
    target = source;
    EXPECT_TRUE(samePoints(verticesOf(target), verticesOf(source)));
    EXPECT_EQ(target.GetObjStatus(), TAVRIN_OBJ_STATUS_NORMAL);
    EXPECT_TRUE(target.GetClosed());
    EXPECT_EQ(target.GetSelPointIndex(), 0u);
}

TEST(PolygonAssign, UnreadableSourceChangesNothing)
{
    Unreadable source;
    Polygon target = polygonWith(smallSquare());
    target = source;
    EXPECT_TRUE(samePoints(verticesOf(target), smallSquare()));
}

// ---- Drawing ----

namespace {

const std::vector<std::string> kPolySmooth = {"GL_POLYGON_SMOOTH", "GL_LINE_SMOOTH"};

std::vector<std::string> batchCalls(const char* mode, int times)
{
    std::vector<std::string> calls;
    for (int i = 0; i < times; ++i) {
        calls.push_back(std::string("glBegin(") + mode + ")");
        calls.push_back("glEnd()");
    }
    return calls;
}

std::vector<std::string> repeatCalls(std::vector<std::string> unit, int times)
{
    std::vector<std::string> calls;
    for (int i = 0; i < times; ++i) {
        calls.insert(calls.end(), unit.begin(), unit.end());
    }
    return calls;
}

}  // namespace

class PolygonDraw : public GlTest {};

TEST_F(PolygonDraw, EmptyPolygonDrawsNothingButKeepsTheViewSize)
{
    PolygonProbe p;
    p.Draw(nullptr, 640, 480, true);
    EXPECT_TRUE(recorded().calls.empty());
    EXPECT_EQ(p.wndWidth(), 640);
}

TEST_F(PolygonDraw, TranslucentSquareOutlineThenTwoTriangles)
{
    Polygon p = polygonWith(smallSquare());
    p.Draw(nullptr, 640, 480, false);

    EXPECT_EQ(recorded().sequence(),
              concat({enterCalls(kPolySmooth),
                      {"glColor4ub(217,13,176,255)", "glLineWidth(2)"},
                      batchCalls("GL_LINE_LOOP", 1),
                      {"glColor4ub(217,13,176,40)"},
                      batchCalls("GL_POLYGON", 2),
                      leaveCalls(kPolySmooth)}));
    const auto& b = recorded().batches;
    ASSERT_EQ(b.size(), 3u);
    EXPECT_TRUE(nearPoints(b[0].picture(), smallSquare(), 1e-6f));
    EXPECT_EQ(b[0].color, rec::rgba(0xd90db0));
    EXPECT_EQ(b[1].color, rec::rgba(0xd90db0, 40));
    const Points s = smallSquare();
    EXPECT_TRUE(nearPoints(b[1].picture(), {s[0], s[1], s[2]}, 1e-6f));
    EXPECT_TRUE(nearPoints(b[2].picture(), {s[0], s[2], s[3]}, 1e-6f));
    // The exact GL vertices of the mapping (2x, 2(1 - y)).
    EXPECT_FLOAT_EQ(b[0].vertices[0].x, 2.0f * 0.2f);
    EXPECT_FLOAT_EQ(b[0].vertices[0].y, 2.0f * (1.0f - 0.2f));
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(PolygonDraw, OpaqueFillAddsALoopAroundEveryTriangle)
{
    Polygon p = polygonWith(lShape());
    p.SetViewOpaque(true);
    p.SetObjStatus(TAVRIN_OBJ_STATUS_HIGHLIGHTED);
    p.SetLineWidth(3.5f);
    p.Draw(nullptr, 640, 480, true);

    EXPECT_EQ(recorded().sequence(),
              concat({enterCalls(kPolySmooth),
                      {"glColor4ub(40,94,166,255)", "glLineWidth(3.5)"},
                      batchCalls("GL_LINE_LOOP", 1),
                      {"glColor4ub(40,94,166,255)"},
                      repeatCalls(concat({batchCalls("GL_POLYGON", 1),
                                          batchCalls("GL_LINE_LOOP", 1)}),
                                  4),
                      leaveCalls(kPolySmooth)}));
    const auto& b = recorded().batches;
    ASSERT_EQ(b.size(), 9u);
    // The triangles of the L in cutting order, each filled then outlined.
    const Points expected[4] = {
        {pt(0.3f, 0.3f), pt(0.3f, 0.6f), pt(0.1f, 0.6f)},
        {pt(0.3f, 0.3f), pt(0.1f, 0.6f), pt(0.1f, 0.1f)},
        {pt(0.5f, 0.3f), pt(0.3f, 0.3f), pt(0.1f, 0.1f)},
        {pt(0.5f, 0.3f), pt(0.1f, 0.1f), pt(0.5f, 0.1f)},
    };
    for (int t = 0; t < 4; ++t) {
        EXPECT_TRUE(nearPoints(b[1 + 2 * t].picture(), expected[t], 1e-6f)) << t;
        EXPECT_TRUE(nearPoints(b[2 + 2 * t].picture(), expected[t], 1e-6f)) << t;
        EXPECT_EQ(b[1 + 2 * t].color, rec::rgba(0x285ea6, 255));
        EXPECT_EQ(b[1 + 2 * t].lineWidth, 3.5f);
    }
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(PolygonDraw, NoFillFlagsGiveOnlyTheOutline)
{
    Polygon p = polygonWith(smallSquare());
    p.SetViewTransparent(false);
    p.Draw(nullptr, 640, 480, true);
    // The fill colour is still set; no triangle follows.
    EXPECT_EQ(recorded().sequence(),
              concat({enterCalls(kPolySmooth),
                      {"glColor4ub(217,13,176,255)", "glLineWidth(2)"},
                      batchCalls("GL_LINE_LOOP", 1),
                      {"glColor4ub(217,13,176,40)"},
                      leaveCalls(kPolySmooth)}));
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(PolygonDraw, SelfCrossingOrSingleVertexPolygonsAreNotFilled)
{
    Polygon bow = polygonWith(bowTie());
    bow.SetViewOpaque(true);
    drawn(bow, 640, 480);
    EXPECT_EQ(batchModes(), std::vector<GLenum>{GL_LINE_LOOP});
    Polygon one = polygonWith({pt(0.5f, 0.5f)});
    one.SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    drawn(one, 640, 480);
    EXPECT_EQ(batchModes(), (std::vector<GLenum>{GL_LINE_LOOP, GL_POINTS}));  // a one-vertex loop, its handle
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(PolygonDraw, OpenPolygonDrawsOneLineBatchPerEdgeAndNoFill)
{
    Points zigzag = {pt(0.1f, 0.1f), pt(0.3f, 0.5f), pt(0.5f, 0.1f), pt(0.7f, 0.5f)};
    Polygon p = polygonWith(zigzag);
    p.SetClosed(false);
    p.SetViewOpaque(true);
    p.Draw(nullptr, 640, 480, true);
    EXPECT_EQ(recorded().sequence(),
              concat({enterCalls(kPolySmooth),
                      {"glColor4ub(217,13,176,255)", "glLineWidth(2)"},
                      batchCalls("GL_LINES", 3),
                      leaveCalls(kPolySmooth)}));
    const auto& b = recorded().batches;
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(nearPoints(b[i].picture(), {zigzag[i], zigzag[i + 1]}, 1e-6f)) << i;
    }
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(PolygonDraw, SelectedPolygonDrawsHandlesAfterRestoring)
{
    Polygon p = polygonWith({pt(0.1f, 0.1f), pt(0.5f, 0.1f), pt(0.3f, 0.4f)});
    p.SetClosed(false);
    p.SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    p.SetSelPointIndex(2);
    p.SetColors(0x111111, 0x222222, 0x333333, 0x444444);
    p.Draw(nullptr, 640, 480, true);

    const std::vector<std::string> pointSmooth = {"GL_POINT_SMOOTH"};
    const auto handle = [&](bool active) {
        std::vector<std::string> calls = enterCalls(pointSmooth);
        calls.push_back(active ? "glColor4ub(51,51,51,255)" : "glColor4ub(34,34,34,255)");
        if (active) {
            calls.insert(calls.end(), {"glPointSize(16)", "glBegin(GL_POINTS)", "glEnd()"});
        }
        calls.insert(calls.end(),
                     {"glColor4ub(34,34,34,255)", "glPointSize(8)", "glBegin(GL_POINTS)", "glEnd()"});
        return concat({calls, leaveCalls(pointSmooth)});
    };
    EXPECT_EQ(recorded().sequence(),
              concat({enterCalls(kPolySmooth),
                      {"glColor4ub(34,34,34,255)", "glLineWidth(2)"},
                      batchCalls("GL_LINES", 2),
                      leaveCalls(kPolySmooth),
                      handle(false), handle(true), handle(false)}));
    const auto points = recorded().batchesOf(GL_POINTS);
    ASSERT_EQ(points.size(), 4u);
    EXPECT_POINT_NEAR(points[1].at(0), 0.5f, 0.1f, 1e-6);
    EXPECT_EQ(points[1].pointSize, 16.0f);
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(PolygonDraw, HighlightedAndNormalDrawNoHandles)
{
    for (auto status : {TAVRIN_OBJ_STATUS_NORMAL, TAVRIN_OBJ_STATUS_HIGHLIGHTED,
                        static_cast<tagTAVRIN_OBJ_STATUS>(7)}) {
        rec::gl().reset();
        Polygon p = polygonWith(smallSquare());
        p.SetObjStatus(status);
        p.SetSelPointIndex(1);
        p.Draw(nullptr, 640, 480, true);
        EXPECT_TRUE(recorded().batchesOf(GL_POINTS).empty()) << status;
        EXPECT_EQ(recorded().batches[0].color,
                  rec::rgba(status == TAVRIN_OBJ_STATUS_HIGHLIGHTED ? 0x285ea6 : 0xd90db0));
        EXPECT_GL_STATE_CLEAN();
    }
}
