// The graphic primitives and the polygon geometry under fuzzing: one figure of every
// primitive class, driven through its public operations, with the vertices read back
// and checked around every edit, and every draw checked by the GL sink.

#include "Harness.h"
#include "support/FakeGl.h"

#include <Tavrin/Tavrin.h>

#include <algorithm>
#include <list>
#include <memory>
#include <vector>

using namespace Tavrin;

namespace fuzz {

namespace {

struct Figures {
    std::unique_ptr<Point> point{new Point()};
    std::unique_ptr<Circle> circle{new Circle()};
    std::unique_ptr<Polygon> polygon{new Polygon()};
    std::unique_ptr<Rectangle> rectangle{new Rectangle()};
    std::unique_ptr<Square> square{new Square()};
    std::unique_ptr<Label> label{new Label()};
    std::unique_ptr<Line> line{new Line()};
    std::unique_ptr<Arrow> arrow{new Arrow()};
    std::unique_ptr<BrokenLine> broken{new BrokenLine()};
};

/// What the checks around an edit need to know of a figure.
struct Shape {
    unsigned capacity;     ///< the GetPoints buffer
    unsigned limit;        ///< the most vertices SetPoints accepts
    unsigned reads;        ///< vertices SetPoints reads whatever the count (0: the count)
    bool clearsOnRefusal;  ///< a refused SetPoints leaves it empty (a broken line)
    bool singleVertexDrag; ///< MovePoint moves the selected vertex alone
    bool cursorCorner;     ///< MovePoint places the corner at the cursor (a square)
};

template <class F>
Snapshot read(F& figure, unsigned capacity)
{
    return readBack(capacity, [&](tagTAVRIN_POINT* points, unsigned* count) { return figure.GetPoints(points, count); });
}

template <class F>
void checkedDraw(F& figure, FuzzInput& in)
{
    if (in.pick(4) == 0) {
        const int w = in.viewSize();
        const int h = in.viewSize();
        checkCapturedDraw([&] { figure.Draw(nullptr, w, h, true); });
        return;
    }
    sink::beginDraw();
    if (in.flag()) {
        figure.Draw(in.flag() ? nullptr : &in, in.viewSize(), in.viewSize(), in.flag());
    } else {
        figure.DrawByOpenGL(nullptr);
    }
    sink::expectRestored("primitive draw");
}

Point cursorPoint(FuzzInput& in)
{
    tagTAVRIN_POINT p = in.point();
    return Point(in.pick(16) == 0 ? nullptr : &p);
}

// The GraphMeta setters every primitive has; none of them moves a vertex.
void graphMetaOp(GraphMeta& figure, FuzzInput& in)
{
    switch (in.pick(8)) {
    case 0: figure.SetObjStatus(static_cast<tagTAVRIN_OBJ_STATUS>(in.enumValue())); break;
    case 1: figure.SetSelPointIndex(in.index()); break;
    case 2: figure.SetColors(in.u32(), in.u32(), in.u32(), in.u32()); break;
    case 3: figure.SetWndSize(in.viewSize(), in.viewSize()); break;
    case 4: figure.SetViewTransparent(in.flag()); break;
    case 5: figure.SetViewOpaque(in.flag()); break;
    case 6: figure.SetClosed(in.flag()); break;
    default: figure.SetLineWidth(in.pick(2) == 0 ? in.special() : in.coord() * 8.0f); break;
    }
}

// SetPoints: a refusal leaves the figure as it was (or empty, for a broken line); an
// acceptance holds only finite vertices.
template <class F>
void setPointsCheck(F& figure, const Shape& shape, FuzzInput& in)
{
    const Snapshot before = read(figure, shape.capacity);
    const unsigned count = in.count();
    std::vector<tagTAVRIN_POINT> buffer = pointArray(in, count, shape.reads);
    tagTAVRIN_POINT* points = in.pick(16) == 0 ? nullptr : buffer.data();
    const bool ok = figure.SetPoints(points, count);
    const Snapshot after = read(figure, shape.capacity);
    if (points == nullptr || count > shape.limit) {
        FUZZ_CHECK(!ok, "SetPoints refuses a null array or too many vertices");
    }
    if (!ok) {
        FUZZ_CHECK(shape.clearsOnRefusal ? after.count == 0 : sameVertices(before, after),
                   "a refused SetPoints leaves the figure as it was");
    }
    if (ok) {
        FUZZ_CHECK(allFinite(after), "SetPoints accepts only finite vertices");
    }
}

// MovePoint where the figure has one (a point has none).
template <class F>
auto movePoint(F& figure, tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) -> decltype(figure.MovePoint(from, to))
{
    return figure.MovePoint(from, to);
}
inline void movePoint(Point&, tagTAVRIN_POINT&, tagTAVRIN_POINT&) {}

// A whole or vertex drag, checked by its rule.
template <class F>
void dragCheck(F& figure, const Shape& shape, FuzzInput& in, bool whole, bool keepsInside)
{
    const Snapshot before = read(figure, shape.capacity);
    tagTAVRIN_POINT from = in.point();
    tagTAVRIN_POINT to = in.near(from);
    if (whole) {
        figure.Move(from, to);
    } else {
        movePoint(figure, from, to);
    }
    checkDrag(before, read(figure, shape.capacity), from, to,
              DragRule{whole, !whole && shape.cursorCorner, shape.singleVertexDrag, keepsInside,
                       figure.GetSelPointIndex(), 20});
}

/// The operations every primitive shares; `own` takes the rest.
template <class F, class Own>
void figureOp(F& figure, const Shape& shape, bool keepsInside, FuzzInput& in, Own&& own)
{
    switch (in.pick(10)) {
    case 0:
    case 1: setPointsCheck(figure, shape, in); break;
    case 2: {
        std::vector<tagTAVRIN_POINT> buffer(shape.capacity);
        unsigned count = 0;
        FUZZ_CHECK(!figure.GetPoints(in.flag() ? nullptr : buffer.data(), in.flag() ? &count : nullptr) ||
                       count <= shape.capacity,
                   "GetPoints with a null pointer");
        break;
    }
    case 3: dragCheck(figure, shape, in, true, keepsInside); break;
    case 4: dragCheck(figure, shape, in, false, keepsInside); break;
    case 5: {
        Point cursor = cursorPoint(in);
        figure.IsNearPoint(cursor);
        tagTAVRIN_POINT c{cursor.Rx(), cursor.Ry()};
        FUZZ_CHECK(figure.CheckPointSelected(c) <= std::max(read(figure, shape.capacity).count, 2u),
                   "CheckPointSelected names a vertex or none");
        break;
    }
    case 6: checkedDraw(figure, in); break;
    case 7: graphMetaOp(figure, in); break;
    default: own(); break;
    }
}

void pointOp(Figures& f, FuzzInput& in)
{
    Point& point = in.flag() ? *f.circle : *f.point;
    const Shape shape{1, 1, 1, false, false, false};
    Point cursor = cursorPoint(in);
    tagTAVRIN_POINT p = in.point();
    switch (in.pick(7)) {
    case 0: setPointsCheck(point, shape, in); break;
    case 1: dragCheck(point, shape, in, true, true); break;
    case 2: graphMetaOp(point, in); break;
    case 3:
        // Unchecked setters: the point may hold anything afterwards.
        point.SetX(p.x);
        point.SetY(p.y);
        point.SetPointType(static_cast<tagTAVRIN_POINT_TYPE>(in.enumValue()));
        break;
    case 4:
        point.IsNearPoint(cursor);
        f.circle->CheckSelected(cursor);
        f.circle->SetRadius(in.pick(4) == 0 ? in.u32() : in.byte());
        break;
    case 5: {
        const std::uint64_t calls = fakegl::callCount();
        point.DrawByGdi(nullptr);
        FUZZ_CHECK(fakegl::callCount() == calls, "DrawByGdi draws nothing");
        checkedDraw(point, in);
        break;
    }
    default: f.point.reset(new Point(in.pick(8) == 0 ? nullptr : &p)); break;
    }
}

// A fresh figure of the same class from a vertex array, or a copy of one.
template <class F>
void rebuild(std::unique_ptr<F>& figure, FuzzInput& in, unsigned reads)
{
    const unsigned count = in.count();
    std::vector<tagTAVRIN_POINT> buffer = pointArray(in, count, reads);
    tagTAVRIN_POINT* points = in.pick(8) == 0 ? nullptr : buffer.data();
    figure.reset(in.pick(4) == 0 ? new F(*figure) : new F(points, count));
}

void polygonOp(Figures& f, FuzzInput& in)
{
    const unsigned which = in.pick(4);
    Polygon* figures[] = {f.polygon.get(), f.rectangle.get(), f.square.get(), f.label.get()};
    Polygon& p = *figures[which];
    const Shape shape{20, which == 0 ? 20u : 4u, 0, false, which == 0, which == 2};
    // A corner drag keeps a rectangle inside only when its corners form one; a square is
    // placed from the cursor unclamped. Dragging right out is an option of every one.
    const Snapshot before = read(p, 20);
    const bool keepsInside = which == 0 || (which != 2 && properRectangle(before));
    figureOp(p, shape, keepsInside, in, [&] {
        switch (in.pick(5)) {
        case 0: p.SetSuptPolygonMoveRightOut(false); break;
        case 1: {
            if (which == 0) {
                break;
            }
            tagTAVRIN_POINT a = in.point();
            tagTAVRIN_POINT b = in.near(a);
            if (!static_cast<Rectangle&>(p).SetDiagonal(a, b)) {
                FUZZ_CHECK(sameVertices(before, read(p, 20)), "a refused SetDiagonal changes nothing");
            }
            break;
        }
        case 2: {
            std::vector<char> t = text(in);
            f.label->SetText(in.pick(8) == 0 ? nullptr : t.data());
            break;
        }
        case 3: {
            Polygon& other = *figures[in.pick(4)];
            const Snapshot source = read(other, 20);
            p = other;
            FUZZ_CHECK(sameVertices(read(p, 20), source), "assignment copies the vertices");
            break;
        }
        default:
            switch (which) {
            case 0: rebuild(f.polygon, in, 0); break;
            case 1: rebuild(f.rectangle, in, 0); break;
            case 2: rebuild(f.square, in, 0); break;
            default: rebuild(f.label, in, 0); break;
            }
            break;
        }
    });
}

// The line's drawing helpers and calibration operations, each called on its own as a
// host may; a drawing helper leaves no batch open and no display list reserved.
void lineExtraOp(Line& line, FuzzInput& in)
{
    tagTAVRIN_POINT a = in.point();
    tagTAVRIN_POINT b = in.near(a);
    const unsigned count = in.count();
    std::vector<tagTAVRIN_POINT> points = pointArray(in, count, 2);
    tagTAVRIN_POINT* array = in.pick(8) == 0 ? nullptr : points.data();
    std::vector<tagTAVRIN_POINT> out(34);
    tagTAVRIN_POINT* into = in.pick(8) == 0 ? nullptr : out.data();
    std::vector<float> widths(16);
    for (float& v : widths) {
        v = in.pick(3) == 0 ? 0.0f : in.coord();
    }
    tagTAVRIN_LINE bar{};
    int written = static_cast<int>(in.byte() % 34);
    Point cursor = cursorPoint(in);
    sink::beginDraw();
    switch (in.pick(13)) {
    case 11:
        line.DrawForTraversePlane(nullptr);
        sink::expectRestored("Line::DrawForTraversePlane");
        break;
    case 0: line.DrawArrowByOpenGL(nullptr, a, b); break;
    case 1: line.GetArrowPoint(in.coord(), into, written, a, b); break;
    case 2: line.DrawDirectionArrow(); break;
    case 3: line.DrawTargetWidthLine(); break;
    case 4: line.DrawArrow(a, b, into); break;
    case 5: line.GetCaliPoints(array, into); break;
    case 6: line.GetDrawCaliLine(array, in.flag() ? nullptr : &bar); break;
    case 7: line.SetPDCCaliPoints(array, count); break;
    case 8: line.SetTargetWidthLine(in.flag() ? nullptr : widths.data()); break;
    case 9:
        line.IsNearCaliPoint(cursor);
        line.SetSelCaliPointIndex(in.index());
        FUZZ_CHECK(line.CheckCaliPointSelected(a) <= 2, "CheckCaliPointSelected names a point or none");
        break;
    case 10: line.MoveCaliPoints(a, b); break;
    default:
        line.SetVcaPDCLineCali(in.flag());
        line.SetVcaPDCLineOrRect(in.flag());
        line.SetVcaPDCCaliShoulderLine(in.flag());
        break;
    }
    sink::endPartialDraw("a line's drawing helper");
}

// The arrow and calibration points a line keeps besides its end points.
bool auxiliaryFinite(Line& line)
{
    tagTAVRIN_POINT arrow[2] = {};
    tagTAVRIN_POINT cali[2] = {};
    unsigned count = 0;
    line.GetArrowPoints(&arrow[0], &arrow[1]);
    line.GetPDCCaliPoints(cali, &count);
    return finitePoint(arrow[0]) && finitePoint(arrow[1]) && finitePoint(cali[0]) && finitePoint(cali[1]);
}

void lineOp(Figures& f, FuzzInput& in)
{
    const bool useArrow = in.flag();
    Line& line = useArrow ? *f.arrow : *f.line;
    const bool finiteBefore = auxiliaryFinite(line);
    bool replaced = false;
    figureOp(line, Shape{2, 2, 2, false, true, false}, true, in, [&] {
        tagTAVRIN_POINT a = in.point();
        tagTAVRIN_POINT b = in.near(a);
        switch (in.pick(8)) {
        case 0: line.SetLineType(static_cast<tagTAVRIN_LINE_TYPE>(in.enumValue())); break;
        case 1: line.SetArrowDirection(static_cast<TAVRIN_ARROW_TYPE>(in.enumValue())); break;
        case 2: line.SetShowPoint(in.flag()); break;
        case 3: line.SetIsTraversePlane(in.flag()); break;
        case 4: line.SetArrowPoints(a, b); break;
        case 5: {
            Point p = cursorPoint(in);
            in.flag() ? line.setP1(p) : line.setP2(p);
            line.GetPointLength(a, b);
            break;
        }
        case 6:
            if (in.flag()) {
                line = in.flag() ? *f.line : *f.arrow;
            } else {
                useArrow ? rebuild(f.arrow, in, 2) : rebuild(f.line, in, 2);
                replaced = true;
            }
            break;
        default: lineExtraOp(line, in); break;
        }
    });
    if (finiteBefore && !replaced) {
        FUZZ_CHECK(auxiliaryFinite(line), "a line's arrow and calibration points stay finite");
    }
}

void brokenLineOp(Figures& f, FuzzInput& in)
{
    BrokenLine& b = *f.broken;
    figureOp(b, Shape{10, 10, 0, true, true, false}, true, in, [&] {
        switch (in.pick(3)) {
        case 0: b.SetArrowDirection(static_cast<TAVRIN_ARROW_TYPE>(in.enumValue())); break;
        case 1: b.SetIsTraversePlane(in.flag()); break;
        default: rebuild(f.broken, in, 0); break;
        }
    });
}

// The polygon geometry on records a host could build, counts outside 0 .. 20 included:
// nothing is read past the record, and a split is made of the polygon's own vertices.
void geometryOp(Figures& f, FuzzInput& in)
{
    GraphMeta& g = *f.polygon;
    tagTAVRIN_POLYGON polygon{};
    static const int counts[] = {-5, -1, 0, 1, 2, 3, 4, 5, 6, 8, 12, 18, 19, 20, 21, 25,
                                 2147483647, -2147483647 - 1};
    polygon.count = counts[in.pick(sizeof counts / sizeof counts[0])];
    const tagTAVRIN_POINT base = in.point();
    for (tagTAVRIN_POINT& p : polygon.points) {
        p = in.pick(3) == 0 ? in.point() : in.near(base);
    }
    double area = 0.0;
    tagTAVRIN_POLYGON remain{};
    std::list<tagTAVRIN_TRIANGLE_> triangles;
    const bool null = in.pick(8) == 0;
    switch (in.pick(5)) {
    case 0: g.CheckPolygon(polygon); break;
    case 1: g.PolygonArea(polygon, null ? nullptr : &area); break;
    case 2: g.GetRemainPolygon(polygon, static_cast<int>(in.byte() % 24) - 2, null ? nullptr : &remain); break;
    case 3: {
        tagTAVRIN_TRIANGLE_ triangle{{polygon.points[0], polygon.points[1], polygon.points[2]}};
        g.TrangleArea(triangle, null ? nullptr : &area);
        g.CheckLineCrossDetect(polygon.points[0], polygon.points[1], polygon.points[2], polygon.points[3]);
        break;
    }
    default:
        if (g.SplitPolygon(polygon, null ? nullptr : &triangles) != 0) {
            break;
        }
        FUZZ_CHECK(static_cast<int>(triangles.size()) <= polygon.count - 2, "at most n - 2 triangles");
        for (const tagTAVRIN_TRIANGLE_& t : triangles) {
            for (const tagTAVRIN_POINT& corner : t.points) {
                const tagTAVRIN_POINT* begin = polygon.points;
                const tagTAVRIN_POINT* end = begin + polygon.count;
                const bool found = std::find_if(begin, end, [&](const tagTAVRIN_POINT& v) {
                                       return std::memcmp(&corner, &v, sizeof v) == 0;
                                   }) != end;
                FUZZ_CHECK(found, "every triangle corner is a vertex of the polygon");
            }
        }
        break;
    }
}

}  // namespace

void runPrimitives(FuzzInput& in)
{
    Figures figures;
    for (int step = 0; step < 256 && !in.empty(); ++step) {
        switch (in.pick(7)) {
        case 0: pointOp(figures, in); break;
        case 1:
        case 2: polygonOp(figures, in); break;
        case 3:
        case 4: lineOp(figures, in); break;
        case 5: brokenLineOp(figures, in); break;
        default:
            if (in.pick(4) == 0) {
                TextRendering::SetEnabled(in.flag());
                TextRendering::SetOutline(in.flag());
            } else {
                geometryOp(figures, in);
            }
            break;
        }
    }
    TextRendering::SetEnabled(false);
    TextRendering::SetOutline(false);
}

}  // namespace fuzz
