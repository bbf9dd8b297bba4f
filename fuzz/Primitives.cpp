// The graphic primitives and the polygon geometry under fuzzing: one figure of every
// primitive class, driven through its public operations, with the vertices read back
// and checked around every edit, and every draw checked by the GL sink.

#include "Harness.h"

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
    // The right-out drag option of the four polygon figures, as last set.
    bool rightOut[4] = {};
};

template <class F>
Snapshot read(F& figure, unsigned capacity)
{
    Snapshot s;
    std::vector<tagTAVRIN_POINT> buffer(capacity);
    unsigned count = 0;
    s.ok = figure.GetPoints(buffer.data(), &count);
    FUZZ_CHECK(s.ok, "GetPoints with valid buffers succeeds");
    FUZZ_CHECK(count <= capacity, "GetPoints reports no more than the figure holds");
    s.count = count;
    std::copy(buffer.begin(), buffer.begin() + count, s.points);
    return s;
}

void fullDraw(GraphMeta& figure, FuzzInput& in, const char* what)
{
    const int w = in.viewSize();
    const int h = in.viewSize();
    sink::beginDraw();
    figure.Draw(in.flag() ? nullptr : &in, w, h, in.flag());
    sink::expectRestored(what);
}

// The GraphMeta operations every primitive has. Returns false for the choices it does
// not handle, which go to the primitive's own operations.
bool graphMetaOp(GraphMeta& figure, bool* rightOut, FuzzInput& in, const char* what)
{
    switch (in.pick(12)) {
    case 0: {
        const auto s = static_cast<tagTAVRIN_OBJ_STATUS>(in.enumValue());
        figure.SetObjStatus(s);
        FUZZ_CHECK(figure.GetObjStatus() == s, "GetObjStatus returns the status set");
        return true;
    }
    case 1: {
        const unsigned index = in.index();
        figure.SetSelPointIndex(index);
        FUZZ_CHECK(figure.GetSelPointIndex() == index, "GetSelPointIndex returns the index set");
        return true;
    }
    case 2:
        figure.SetColors(in.u32(), in.u32(), in.u32(), in.u32());
        return true;
    case 3:
        fullDraw(figure, in, what);
        return true;
    case 4:
        figure.SetWndSize(in.viewSize(), in.viewSize());
        return true;
    case 5: {
        switch (in.pick(3)) {
        case 0: figure.SetViewTransparent(in.flag()); break;
        case 1: figure.SetViewOpaque(in.flag()); break;
        default: {
            const bool closed = in.flag();
            figure.SetClosed(closed);
            FUZZ_CHECK(figure.GetClosed() == closed, "GetClosed returns the flag set");
            break;
        }
        }
        return true;
    }
    case 6:
        figure.SetLineWidth(in.pick(2) == 0 ? in.special() : in.coord() * 8.0f);
        return true;
    case 7: {
        const bool on = in.flag();
        figure.SetSuptPolygonMoveRightOut(on);
        if (rightOut != nullptr) {
            *rightOut = on;
        }
        return true;
    }
    case 8:
        figure.IsNull();
        return true;
    default:
        return false;
    }
}

// A whole or vertex drag: a non-finite drag changes nothing, a whole drag moves all or
// nothing, and a figure inside the picture stays inside when `keepsInside`.
template <class F, class Drag>
void dragCheck(F& figure, unsigned capacity, FuzzInput& in, bool whole, bool keepsInside, Drag drag,
               bool fromCursorOnly = false, bool singleVertex = false)
{
    const Snapshot before = read(figure, capacity);
    tagTAVRIN_POINT from = in.point();
    tagTAVRIN_POINT to = in.near(from);
    drag(from, to);
    const Snapshot after = read(figure, capacity);
    // A square's corner is placed from the cursor alone; other drags need a finite vector.
    if (fromCursorOnly ? !finitePoint(to) : !finiteDrag(from, to)) {
        FUZZ_CHECK(sameVertices(before, after), "a drag that is not finite changes nothing");
    }
    if (whole) {
        FUZZ_CHECK(sameVertices(before, after) ||
                       shiftedBy(before, after, to.x - from.x, to.y - from.y, 20),
                   "a whole drag moves every vertex by the drag or none");
    } else if (singleVertex) {
        FUZZ_CHECK(movedSelectedVertexOnly(before, after, figure.GetSelPointIndex(), to.x - from.x,
                                           to.y - from.y, 20),
                   "a vertex drag moves the selected vertex alone, by the drag, or nothing");
    }
    if (keepsInside && allInPicture(before)) {
        FUZZ_CHECK(allInPicture(after), "an accepted drag keeps every vertex in the picture");
    }
    if (allFinite(before)) {
        FUZZ_CHECK(allFinite(after), "a drag keeps the vertices finite");
    }
}

// SetPoints: a refusal leaves the figure as it was (a broken line empties itself first,
// deliberately); an acceptance is read back.
template <class F>
void setPointsCheck(F& figure, unsigned capacity, unsigned limit, unsigned reads, FuzzInput& in,
                    bool clearsOnRefusal)
{
    const Snapshot before = read(figure, capacity);
    const unsigned count = in.count();
    std::vector<tagTAVRIN_POINT> buffer = pointArray(in, count, reads);
    tagTAVRIN_POINT* points = in.pick(16) == 0 ? nullptr : buffer.data();
    const bool ok = figure.SetPoints(points, count);
    const Snapshot after = read(figure, capacity);
    if (points == nullptr || count > limit) {
        FUZZ_CHECK(!ok, "SetPoints refuses a null array or too many vertices");
    }
    if (!ok) {
        if (clearsOnRefusal) {
            FUZZ_CHECK(after.count == 0, "a refused broken line is left empty");
        } else {
            FUZZ_CHECK(sameVertices(before, after), "a refused SetPoints leaves GetPoints unchanged");
        }
        return;
    }
    // A point or a line reads a fixed number of vertices whatever the count.
    const unsigned expected = reads > 0 ? reads : count;
    FUZZ_CHECK(after.count == expected, "GetPoints reports the vertices set");
    FUZZ_CHECK(std::memcmp(after.points, points, expected * sizeof(tagTAVRIN_POINT)) == 0,
               "GetPoints reads back the vertices set");
    FUZZ_CHECK(allFinite(after), "SetPoints accepts only finite vertices");
}

template <class F>
void getPointsNulls(F& figure, unsigned capacity, FuzzInput& in)
{
    std::vector<tagTAVRIN_POINT> buffer(capacity);
    unsigned count = 0;
    tagTAVRIN_POINT* points = in.pick(2) == 0 ? nullptr : buffer.data();
    unsigned* countOut = points != nullptr || in.flag() ? nullptr : &count;
    FUZZ_CHECK(!figure.GetPoints(points, countOut), "GetPoints refuses a null pointer");
}

Point cursorPoint(FuzzInput& in)
{
    tagTAVRIN_POINT p = in.point();
    return Point(in.pick(16) == 0 ? nullptr : &p);
}

void pointOp(Figures& f, FuzzInput& in)
{
    const bool useCircle = in.flag();
    Point& point = useCircle ? *f.circle : *f.point;
    if (graphMetaOp(point, nullptr, in, useCircle ? "Circle::Draw" : "Point::Draw")) {
        return;
    }
    switch (in.pick(10)) {
    case 0:
        setPointsCheck(point, 1, 1, 1, in, false);
        break;
    case 1:
        getPointsNulls(point, 1, in);
        break;
    case 2:
        dragCheck(point, 1, in, true, true,
                  [&](tagTAVRIN_POINT& a, tagTAVRIN_POINT& b) { point.Move(a, b); });
        break;
    case 3: {
        // Unchecked setters: the point may hold anything afterwards.
        if (in.flag()) {
            point.SetX(in.coord());
        } else {
            point.SetY(in.coord());
        }
        break;
    }
    case 4: {
        Point cursor = cursorPoint(in);
        point.IsNearPoint(cursor);
        if (useCircle) {
            f.circle->CheckSelected(cursor);
        }
        break;
    }
    case 5:
        point.SetPointType(static_cast<tagTAVRIN_POINT_TYPE>(in.enumValue()));
        break;
    case 6: {
        sink::beginDraw();
        point.DrawByOpenGL(nullptr);
        sink::expectRestored("Point::DrawByOpenGL");
        break;
    }
    case 7: {
        const std::uint64_t calls = sink::counters().calls;
        point.DrawByGdi(nullptr);
        FUZZ_CHECK(sink::counters().calls == calls, "DrawByGdi draws nothing");
        break;
    }
    case 8:
        if (useCircle) {
            f.circle->SetRadius(in.pick(4) == 0 ? in.u32() : in.byte());
        }
        break;
    default:
        if (useCircle) {
            f.circle->Radius();
        } else {
            tagTAVRIN_POINT p = in.point();
            f.point.reset(new Point(in.pick(8) == 0 ? nullptr : &p));
        }
        break;
    }
}

void polygonOp(Figures& f, FuzzInput& in)
{
    const unsigned which = in.pick(4);
    Polygon* figure = f.polygon.get();
    const char* name = "Polygon::Draw";
    if (which == 1) {
        figure = f.rectangle.get();
        name = "Rectangle::Draw";
    } else if (which == 2) {
        figure = f.square.get();
        name = "Square::Draw";
    } else if (which == 3) {
        figure = f.label.get();
        name = "Label::Draw";
    }
    Polygon& p = *figure;
    if (graphMetaOp(p, &f.rightOut[which], in, name)) {
        return;
    }
    const unsigned limit = which == 0 ? 20 : 4;
    switch (in.pick(12)) {
    case 0:
    case 1:
        setPointsCheck(p, 20, limit, 0, in, false);
        break;
    case 2:
        getPointsNulls(p, 20, in);
        break;
    case 3:
        dragCheck(p, 20, in, true, !f.rightOut[which],
                  [&](tagTAVRIN_POINT& a, tagTAVRIN_POINT& b) { p.Move(a, b); });
        break;
    case 4:
    case 5: {
        const Snapshot before = read(p, 20);
        const bool keepsInside = which == 0 || (which != 2 && properRectangle(before));
        dragCheck(
            p, 20, in, false, keepsInside,
            [&](tagTAVRIN_POINT& a, tagTAVRIN_POINT& b) { p.MovePoint(a, b); }, which == 2,
            which == 0);
        break;
    }
    case 6: {
        Point cursor = cursorPoint(in);
        p.CheckSelected(cursor);
        p.IsNearPoint(cursor);
        tagTAVRIN_POINT c{cursor.Rx(), cursor.Ry()};
        FUZZ_CHECK(p.CheckPointSelected(c) <= read(p, 20).count, "CheckPointSelected names a vertex or none");
        break;
    }
    case 7: {
        Polygon* others[] = {f.polygon.get(), f.rectangle.get(), f.square.get(), f.label.get()};
        Polygon& other = *others[in.pick(4)];
        const Snapshot source = read(other, 20);
        p = other;
        FUZZ_CHECK(sameVertices(read(p, 20), source), "assignment copies the vertices");
        break;
    }
    case 8: {
        if (which == 0) {
            sink::beginDraw();
            p.DrawByOpenGL(nullptr);
            sink::expectRestored("Polygon::DrawByOpenGL");
            break;
        }
        auto& r = static_cast<Rectangle&>(p);
        const Snapshot before = read(r, 20);
        tagTAVRIN_POINT a = in.point();
        tagTAVRIN_POINT b = in.near(a);
        const bool ok = r.SetDiagonal(a, b);
        const Snapshot after = read(r, 20);
        FUZZ_CHECK(ok == (finitePoint(a) && finitePoint(b)), "SetDiagonal refuses only non-finite corners");
        FUZZ_CHECK(ok ? after.count == 4 : sameVertices(before, after), "SetDiagonal result");
        FUZZ_CHECK(allFinite(after), "a diagonal gives finite corners");
        break;
    }
    case 9: {
        if (which != 3) {
            break;
        }
        std::vector<char> t = text(in);
        char* s = in.pick(8) == 0 ? nullptr : t.data();
        const bool ok = f.label->SetText(s);
        FUZZ_CHECK(ok == (s != nullptr && std::strlen(s) <= 127), "Label::SetText result");
        if (in.flag()) {
            sink::beginDraw();
            f.label->DrawByOpenGL(nullptr);
            sink::expectRestored("Label::DrawByOpenGL");
        }
        break;
    }
    case 10: {
        // A fresh figure from a vertex array, or a copy.
        const unsigned count = in.count();
        std::vector<tagTAVRIN_POINT> buffer = pointArray(in, count, 0);
        tagTAVRIN_POINT* points = in.pick(8) == 0 ? nullptr : buffer.data();
        const bool copy = in.pick(4) == 0;
        switch (which) {
        case 0: f.polygon.reset(copy ? new Polygon(*f.polygon) : new Polygon(points, count)); break;
        case 1: f.rectangle.reset(copy ? new Rectangle(*f.rectangle) : new Rectangle(points, count)); break;
        case 2: f.square.reset(copy ? new Square(*f.square) : new Square(points, count)); break;
        default: f.label.reset(copy ? new Label(*f.label) : new Label(points, count)); break;
        }
        if (!copy) {
            f.rightOut[which] = false;
        }
        break;
    }
    default: {
        const std::uint64_t calls = sink::counters().calls;
        p.DrawByGdi(nullptr);
        FUZZ_CHECK(sink::counters().calls == calls, "DrawByGdi draws nothing");
        break;
    }
    }
}

void partialDraw(const char* what) { sink::endPartialDraw(what); }

// The line's drawing helpers, each called on its own as a host may.
void lineHelperOp(Line& line, FuzzInput& in)
{
    switch (in.pick(9)) {
    case 0: {
        tagTAVRIN_POINT a = in.point();
        tagTAVRIN_POINT b = in.near(a);
        sink::beginDraw();
        line.DrawArrowByOpenGL(nullptr, a, b);
        partialDraw("Line::DrawArrowByOpenGL");
        break;
    }
    case 1: {
        const int count = static_cast<int>(in.byte() % 34);
        std::vector<tagTAVRIN_POINT> outline(count == 0 ? 1 : static_cast<std::size_t>(count));
        int written = count;
        tagTAVRIN_POINT markA{};
        tagTAVRIN_POINT markB{};
        line.GetArrowPoint(in.coord(), in.pick(8) == 0 ? nullptr : outline.data(), written, markA, markB);
        FUZZ_CHECK(written == count || written == 4 || written == 11 || written == 18,
                   "GetArrowPoint's count is untouched or a figure's need");
        break;
    }
    case 2:
        sink::beginDraw();
        line.DrawDirectionArrow();
        partialDraw("Line::DrawDirectionArrow");
        break;
    case 3: {
        tagTAVRIN_POINT a = in.point();
        tagTAVRIN_POINT b = in.near(a);
        std::vector<tagTAVRIN_POINT> out(8);
        line.DrawArrow(a, b, in.pick(8) == 0 ? nullptr : out.data());
        break;
    }
    case 4:
        sink::beginDraw();
        line.DrawTargetWidthLine();
        partialDraw("Line::DrawTargetWidthLine");
        break;
    case 5: {
        std::vector<tagTAVRIN_POINT> input = pointArray(in, 2, 2);
        std::vector<tagTAVRIN_POINT> out(2);
        line.GetCaliPoints(in.pick(8) == 0 ? nullptr : input.data(), in.pick(8) == 0 ? nullptr : out.data());
        break;
    }
    case 6: {
        std::vector<tagTAVRIN_POINT> at = pointArray(in, 2, 2);
        std::vector<tagTAVRIN_LINE> out(1);
        line.GetDrawCaliLine(in.pick(8) == 0 ? nullptr : at.data(), in.pick(8) == 0 ? nullptr : out.data());
        break;
    }
    case 7:
        sink::beginDraw();
        line.DrawForTraversePlane(nullptr);
        sink::expectRestored("Line::DrawForTraversePlane");
        break;
    default:
        sink::beginDraw();
        line.DrawByOpenGL(nullptr);
        sink::expectRestored("Line::DrawByOpenGL");
        break;
    }
}

// The people-counting calibration operations of a line.
void lineCalibrationOp(Line& line, FuzzInput& in)
{
    switch (in.pick(8)) {
    case 0: {
        const unsigned count = in.count();
        std::vector<tagTAVRIN_POINT> buffer = pointArray(in, count, 2);
        const bool ok = line.SetPDCCaliPoints(in.pick(8) == 0 ? nullptr : buffer.data(), count);
        if (count > 2) {
            FUZZ_CHECK(!ok, "SetPDCCaliPoints refuses more than two points");
        }
        break;
    }
    case 1: {
        std::vector<tagTAVRIN_POINT> points(2);
        unsigned count = 0;
        const bool nullPoints = in.pick(4) == 0;
        const bool nullCount = in.pick(4) == 0;
        const bool ok = line.GetPDCCaliPoints(nullPoints ? nullptr : points.data(), nullCount ? nullptr : &count);
        FUZZ_CHECK(ok == (!nullPoints && !nullCount), "GetPDCCaliPoints result");
        break;
    }
    case 2: {
        std::vector<float> values(16);
        for (float& v : values) {
            v = in.pick(3) == 0 ? 0.0f : in.coord();
        }
        line.SetTargetWidthLine(in.pick(8) == 0 ? nullptr : values.data());
        break;
    }
    case 3:
        line.SetSelCaliPointIndex(in.index());
        break;
    case 4: {
        Point cursor = cursorPoint(in);
        line.IsNearCaliPoint(cursor);
        break;
    }
    case 5: {
        tagTAVRIN_POINT p = in.point();
        FUZZ_CHECK(line.CheckCaliPointSelected(p) <= 2, "CheckCaliPointSelected names a point or none");
        break;
    }
    case 6: {
        tagTAVRIN_POINT from = in.point();
        tagTAVRIN_POINT to = in.near(from);
        line.MoveCaliPoints(from, to);
        break;
    }
    default:
        switch (in.pick(3)) {
        case 0: line.SetVcaPDCLineCali(in.flag()); break;
        case 1: line.SetVcaPDCLineOrRect(in.flag()); break;
        default: line.SetVcaPDCCaliShoulderLine(in.flag()); break;
        }
        break;
    }
}

// The arrow and calibration points a line keeps besides its end points.
bool auxiliaryFinite(Line& line)
{
    tagTAVRIN_POINT arrow[2] = {};
    tagTAVRIN_POINT cali[2] = {};
    unsigned count = 0;
    FUZZ_CHECK(line.GetArrowPoints(&arrow[0], &arrow[1]), "GetArrowPoints with valid pointers");
    FUZZ_CHECK(line.GetPDCCaliPoints(cali, &count) && count == 2, "GetPDCCaliPoints with valid pointers");
    return finitePoint(arrow[0]) && finitePoint(arrow[1]) && finitePoint(cali[0]) && finitePoint(cali[1]);
}

void lineOpOn(Figures& f, Line& line, bool useArrow, FuzzInput& in);

void lineOp(Figures& f, FuzzInput& in)
{
    const bool useArrow = in.flag();
    Line& line = useArrow ? *f.arrow : *f.line;
    const bool finiteBefore = auxiliaryFinite(line);
    lineOpOn(f, line, useArrow, in);
    // The op may have replaced the figure.
    Line& now = useArrow ? *f.arrow : *f.line;
    if (finiteBefore && &now == &line) {
        FUZZ_CHECK(auxiliaryFinite(now), "a line's arrow and calibration points stay finite");
    }
}

void lineOpOn(Figures& f, Line& line, bool useArrow, FuzzInput& in)
{
    if (graphMetaOp(line, nullptr, in, useArrow ? "Arrow::Draw" : "Line::Draw")) {
        return;
    }
    switch (in.pick(16)) {
    case 0:
    case 1:
        setPointsCheck(line, 2, 2, 2, in, false);
        break;
    case 2:
        getPointsNulls(line, 2, in);
        break;
    case 3:
        dragCheck(line, 2, in, true, true,
                  [&](tagTAVRIN_POINT& a, tagTAVRIN_POINT& b) { line.Move(a, b); });
        break;
    case 4:
        dragCheck(
            line, 2, in, false, true,
            [&](tagTAVRIN_POINT& a, tagTAVRIN_POINT& b) { line.MovePoint(a, b); }, false, true);
        break;
    case 5: {
        Point cursor = cursorPoint(in);
        line.CheckSelected(cursor);
        line.IsNearPoint(cursor);
        tagTAVRIN_POINT c{cursor.Rx(), cursor.Ry()};
        FUZZ_CHECK(line.CheckPointSelected(c) <= 2, "CheckPointSelected names an end or none");
        break;
    }
    case 6:
        switch (in.pick(4)) {
        case 0: line.SetLineType(static_cast<tagTAVRIN_LINE_TYPE>(in.enumValue())); break;
        case 1: line.SetArrowDirection(static_cast<TAVRIN_ARROW_TYPE>(in.enumValue())); break;
        case 2: line.SetShowPoint(in.flag()); break;
        default: line.SetIsTraversePlane(in.flag()); break;
        }
        break;
    case 7: {
        tagTAVRIN_POINT a = in.point();
        tagTAVRIN_POINT b = in.near(a);
        line.SetArrowPoints(a, b);
        tagTAVRIN_POINT s{};
        tagTAVRIN_POINT e{};
        const bool nullS = in.pick(4) == 0;
        const bool nullE = in.pick(4) == 0;
        FUZZ_CHECK(line.GetArrowPoints(nullS ? nullptr : &s, nullE ? nullptr : &e) == (!nullS && !nullE),
                   "GetArrowPoints result");
        break;
    }
    case 8: {
        Point p = cursorPoint(in);
        if (in.flag()) {
            p.SetX(in.coord());
        }
        if (in.flag()) {
            line.setP1(p);
        } else {
            line.setP2(p);
        }
        line.p1();
        line.p2();
        break;
    }
    case 9: {
        tagTAVRIN_POINT a = in.point();
        tagTAVRIN_POINT b = in.point();
        line.GetPointLength(a, b);
        break;
    }
    case 10: {
        Line& other = in.flag() ? *f.line : *f.arrow;
        const Snapshot source = read(other, 2);
        line = other;
        FUZZ_CHECK(sameVertices(read(line, 2), source), "assignment copies the end points");
        break;
    }
    case 11:
    case 12:
        lineHelperOp(line, in);
        break;
    case 13:
        lineCalibrationOp(line, in);
        break;
    case 14: {
        sink::beginDraw();
        f.arrow->DrawByOpenGL(nullptr);
        sink::expectRestored("Arrow::DrawByOpenGL");
        break;
    }
    default: {
        const unsigned count = in.count();
        std::vector<tagTAVRIN_POINT> buffer = pointArray(in, count, 2);
        tagTAVRIN_POINT* points = in.pick(8) == 0 ? nullptr : buffer.data();
        const bool copy = in.pick(4) == 0;
        if (useArrow) {
            f.arrow.reset(copy ? new Arrow(*f.arrow) : new Arrow(points, count));
        } else {
            f.line.reset(copy ? new Line(*f.line) : new Line(points, count));
        }
        break;
    }
    }
}

void brokenLineOp(Figures& f, FuzzInput& in)
{
    BrokenLine& b = *f.broken;
    if (graphMetaOp(b, nullptr, in, "BrokenLine::Draw")) {
        return;
    }
    switch (in.pick(9)) {
    case 0:
    case 1:
        setPointsCheck(b, 10, 10, 0, in, true);
        break;
    case 2:
        getPointsNulls(b, 10, in);
        break;
    case 3:
        dragCheck(b, 10, in, true, true,
                  [&](tagTAVRIN_POINT& x, tagTAVRIN_POINT& y) { b.Move(x, y); });
        break;
    case 4:
        dragCheck(
            b, 10, in, false, true,
            [&](tagTAVRIN_POINT& x, tagTAVRIN_POINT& y) { b.MovePoint(x, y); }, false, true);
        break;
    case 5: {
        Point cursor = cursorPoint(in);
        b.CheckSelected(cursor);
        b.IsNearPoint(cursor);
        tagTAVRIN_POINT c{cursor.Rx(), cursor.Ry()};
        FUZZ_CHECK(b.CheckPointSelected(c) <= read(b, 10).count, "CheckPointSelected names a vertex or none");
        break;
    }
    case 6:
        if (in.flag()) {
            b.SetArrowDirection(static_cast<TAVRIN_ARROW_TYPE>(in.enumValue()));
        } else {
            b.SetIsTraversePlane(in.flag());
        }
        break;
    case 7:
        sink::beginDraw();
        b.DrawByOpenGL(nullptr);
        sink::expectRestored("BrokenLine::DrawByOpenGL");
        break;
    default: {
        const unsigned count = in.count();
        std::vector<tagTAVRIN_POINT> buffer = pointArray(in, count, 0);
        tagTAVRIN_POINT* points = in.pick(8) == 0 ? nullptr : buffer.data();
        f.broken.reset(in.pick(4) == 0 ? new BrokenLine(*f.broken) : new BrokenLine(points, count));
        break;
    }
    }
}

// The polygon geometry on records a host could build, counts outside 0 .. 20 included.
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
    const bool valid = polygon.count >= 0 && polygon.count <= 20;
    switch (in.pick(5)) {
    case 0:
        g.CheckPolygon(polygon);
        break;
    case 1: {
        std::list<tagTAVRIN_TRIANGLE_> triangles;
        const int result = g.SplitPolygon(polygon, in.pick(8) == 0 ? nullptr : &triangles);
        FUZZ_CHECK(result == 0 || result == -1, "SplitPolygon returns 0 or -1");
        if (!valid || polygon.count < 3) {
            FUZZ_CHECK(result == -1 && triangles.empty(), "SplitPolygon refuses a bad count");
            break;
        }
        FUZZ_CHECK(static_cast<int>(triangles.size()) <= polygon.count - 2, "at most n - 2 triangles");
        for (const tagTAVRIN_TRIANGLE_& t : triangles) {
            for (const tagTAVRIN_POINT& corner : t.points) {
                bool found = false;
                for (int i = 0; i < polygon.count && !found; ++i) {
                    found = std::memcmp(&corner, &polygon.points[i], sizeof corner) == 0;
                }
                FUZZ_CHECK(found, "every triangle corner is a vertex of the polygon");
            }
        }
        break;
    }
    case 2: {
        double area = -2.0;
        const int result = g.PolygonArea(polygon, in.pick(8) == 0 ? nullptr : &area);
        FUZZ_CHECK(result == 0 || result == -1, "PolygonArea returns 0 or -1");
        if (result == 0) {
            FUZZ_CHECK(valid && polygon.count >= 3, "PolygonArea accepts 3 .. 20 vertices only");
            FUZZ_CHECK(!(area < 0.0), "an area is not negative");
        }
        break;
    }
    case 3: {
        tagTAVRIN_POLYGON remain{};
        const int index = static_cast<int>(in.byte() % 24) - 2;
        const int result = g.GetRemainPolygon(polygon, index, in.pick(8) == 0 ? nullptr : &remain);
        if (result == 0) {
            FUZZ_CHECK(valid && polygon.count > 3 && index >= 0 && index < polygon.count,
                       "GetRemainPolygon accepts a vertex of a polygon of 4 .. 20");
            FUZZ_CHECK(remain.count == polygon.count - 1, "one vertex fewer");
        }
        break;
    }
    default: {
        tagTAVRIN_TRIANGLE_ triangle{{polygon.points[0], polygon.points[1], polygon.points[2]}};
        double area = 0.0;
        g.TrangleArea(triangle, in.pick(8) == 0 ? nullptr : &area);
        g.CheckLineCrossDetect(polygon.points[0], polygon.points[1], polygon.points[2], polygon.points[3]);
        break;
    }
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
            } else {
                geometryOp(figures, in);
            }
            break;
        }
    }
    TextRendering::SetEnabled(false);
}

}  // namespace fuzz
