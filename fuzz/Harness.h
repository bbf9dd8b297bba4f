#ifndef TAVRIN_FUZZ_HARNESS_H
#define TAVRIN_FUZZ_HARNESS_H

// Shared pieces of the fuzz harness: vertex snapshots and the invariants checked on
// them, argument buffers sized exactly as a careful host would size them (so the address
// sanitizer sees any read or write past what the call may touch), and the two drivers.

#include "FuzzInput.h"
#include "GlSink.h"

#include "support/FakeGl.h"

#include <Tavrin/CoverageMesh.h>
#include <Tavrin/DrawList.h>
#include <Tavrin/TavrinTypes.h>
#include <Tavrin/TriangleMesh.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

namespace fuzz {

/// The vertices a figure reports through GetPoints.
struct Snapshot {
    bool ok = false;
    unsigned count = 0;
    tagTAVRIN_POINT points[20] = {};
};

inline bool finitePoint(const tagTAVRIN_POINT& p) { return std::isfinite(p.x) && std::isfinite(p.y); }

inline bool inPicture(const tagTAVRIN_POINT& p)
{
    return p.x >= 0.0f && p.x <= 1.0f && p.y >= 0.0f && p.y <= 1.0f;
}

/// The first `live` reported vertices (at most the count): the ones that belong to the
/// figure itself rather than to a stored copy.
inline unsigned liveCount(const Snapshot& s, unsigned live)
{
    unsigned n = s.count < 20 ? s.count : 20;
    return n < live ? n : live;
}

/// Same count and bit-identical vertices (NaN compares equal to itself here).
inline bool sameVertices(const Snapshot& a, const Snapshot& b, unsigned live = 20)
{
    return a.ok == b.ok && a.count == b.count &&
           std::memcmp(a.points, b.points, liveCount(a, live) * sizeof(tagTAVRIN_POINT)) == 0;
}

/// Whether every one of the first `n` points passes `test`.
template <class Test>
bool allPoints(const tagTAVRIN_POINT* p, unsigned n, Test test)
{
    for (unsigned i = 0; i < n; ++i) {
        if (!test(p[i])) {
            return false;
        }
    }
    return true;
}

inline bool allFinite(const Snapshot& s, unsigned live = 20) { return allPoints(s.points, liveCount(s, live), finitePoint); }
inline bool allInPicture(const Snapshot& s, unsigned live = 20) { return allPoints(s.points, liveCount(s, live), inPicture); }

/// Every live vertex of `after` is the one of `before` moved by (dx, dy) as the library
/// computes it, or none moved; `only` (1-based, 0 for a whole drag) names the one vertex
/// that may move when a single vertex is dragged.
inline bool movedBy(const Snapshot& before, const Snapshot& after, float dx, float dy, unsigned live, unsigned only)
{
    if (before.count != after.count) {
        return false;
    }
    bool allShifted = true;
    bool allKept = true;
    for (unsigned i = 0; i < liveCount(before, live); ++i) {
        const tagTAVRIN_POINT shifted{before.points[i].x + dx, before.points[i].y + dy};
        const bool kept = std::memcmp(&after.points[i], &before.points[i], sizeof shifted) == 0;
        const bool isShifted = std::memcmp(&after.points[i], &shifted, sizeof shifted) == 0;
        if (only != 0 && !kept && (i + 1 != only || !isShifted)) {
            return false;
        }
        allShifted = allShifted && isShifted;
        allKept = allKept && kept;
    }
    return only != 0 || allShifted || allKept;
}

/// Four corners in the order a diagonal gives them: each corner shares one coordinate
/// exactly with each neighbour, so a corner drag keeps the figure a rectangle.
inline bool properRectangle(const Snapshot& s)
{
    const tagTAVRIN_POINT* c = s.points;
    return s.count == 4 && c[0].y == c[1].y && c[1].x == c[2].x && c[2].y == c[3].y && c[3].x == c[0].x;
}

/// The vertices read back through `getPoints(buffer, &count)` into a buffer of exactly
/// `capacity` entries: always accepted, never more than the figure holds.
template <class GetPoints>
Snapshot readBack(unsigned capacity, GetPoints getPoints)
{
    Snapshot s;
    std::vector<tagTAVRIN_POINT> buffer(capacity);
    unsigned count = 0;
    s.ok = getPoints(buffer.data(), &count);
    FUZZ_CHECK(s.ok && count <= capacity, "GetPoints fills a valid buffer with what the figure holds");
    s.count = count;
    std::copy(buffer.begin(), buffer.begin() + count, s.points);
    return s;
}

/// A drag vector the library accepts as finite.
inline bool finiteDrag(const tagTAVRIN_POINT& from, const tagTAVRIN_POINT& to)
{
    return std::isfinite(to.x - from.x) && std::isfinite(to.y - from.y);
}

/// What a drag may do, for `checkDrag`.
struct DragRule {
    bool whole;         ///< Move, not MovePoint
    bool cursorOnly;    ///< the vertex is placed at the cursor (a square's corner)
    bool singleVertex;  ///< MovePoint moves the selected vertex alone
    bool keepsInside;   ///< an accepted drag keeps a figure inside the picture inside
    unsigned selected;  ///< the vertex MovePoint may move, 1-based (~0u: none)
    unsigned live;      ///< how many reported vertices are the figure's own
};

/// A drag that is not finite changes nothing; a whole drag moves every vertex by the drag
/// or none; a vertex drag moves the selected vertex alone or none; an accepted drag keeps
/// the vertices finite, and inside the picture where the rule says so.
inline void checkDrag(const Snapshot& before, const Snapshot& after, const tagTAVRIN_POINT& from,
                      const tagTAVRIN_POINT& to, const DragRule& rule)
{
    if (rule.cursorOnly ? !finitePoint(to) : !finiteDrag(from, to)) {
        FUZZ_CHECK(sameVertices(before, after), "a drag that is not finite changes nothing");
    }
    if (rule.whole || rule.singleVertex) {
        FUZZ_CHECK(movedBy(before, after, to.x - from.x, to.y - from.y, rule.live, rule.whole ? 0 : rule.selected),
                   "a drag moves every vertex (or the selected one) by the drag, or nothing");
    }
    if (rule.keepsInside && allInPicture(before, rule.live)) {
        FUZZ_CHECK(allInPicture(after, rule.live), "an accepted drag keeps every vertex in the picture");
    }
    if (allFinite(before)) {
        FUZZ_CHECK(allFinite(after), "a drag keeps the vertices finite");
    }
}

/// A vertex array as a host passes it: `count` entries (at least `minimum`, which covers
/// the operations that read more than they are told), capped at 24 for counts the
/// library must refuse before reading.
inline std::vector<tagTAVRIN_POINT> pointArray(FuzzInput& in, unsigned count, unsigned minimum)
{
    unsigned n = count < 24 ? count : 24;
    if (n < minimum) {
        n = minimum;
    }
    std::vector<tagTAVRIN_POINT> points(n);
    const tagTAVRIN_POINT base = in.point();
    for (unsigned i = 0; i < n; ++i) {
        // Mostly close to one another, so figures are small enough to move around.
        points[i] = (i == 0 || in.pick(4) == 0) ? (i == 0 ? base : in.point()) : in.near(base);
    }
    return points;
}

/// A NUL-terminated text of 0 .. 200 bytes (possibly with bytes above 127).
inline std::vector<char> text(FuzzInput& in)
{
    const unsigned sel = in.byte();
    const unsigned length = sel < 200 ? sel % 24 : sel;
    std::vector<char> t(length + 1, '\0');
    for (unsigned i = 0; i < length; ++i) {
        char c = static_cast<char>(in.byte());
        t[i] = c == '\0' ? 'x' : c;
    }
    return t;
}

/// A draw made into a draw list: no OpenGL call at all, every batch and run inside the
/// list's arrays, every vertex finite; its triangle forms (with and without fringes, and
/// with coverage) finite, every index naming a vertex, the shapes-only part inside the
/// indices.
template <class DrawCall>
void checkCapturedDraw(DrawCall draw)
{
    Tavrin::DrawList list;
    const std::uint64_t calls = fakegl::callCount();
    {
        Tavrin::DrawListScope scope(list);
        draw();
    }
    FUZZ_CHECK(fakegl::callCount() == calls, "no OpenGL call inside a draw-list scope");
    const std::size_t vertices = list.Vertices().size();
    for (const Tavrin::DrawList::Batch& b : list.Batches()) {
        FUZZ_CHECK(b.count > 0 && b.first <= vertices && b.count <= vertices - b.first, "batches inside the list");
    }
    for (const Tavrin::DrawList::Vertex& v : list.Vertices()) {
        FUZZ_CHECK(std::isfinite(v.x) && std::isfinite(v.y), "draw-list vertices are finite");
    }
    for (const Tavrin::DrawList::TextRun& r : list.TextRuns()) {
        FUZZ_CHECK(r.length > 0 && r.first + r.length <= list.TextBytes().size() && r.before <= list.Batches().size(),
                   "text runs inside the list");
    }
    Tavrin::TriangleMesh mesh;
    for (const bool antialias : {false, true}) {
        mesh.Build(list, antialias);
        FUZZ_CHECK(mesh.Indices().size() % 3 == 0, "whole triangles");
        for (const std::uint32_t i : mesh.Indices()) {
            FUZZ_CHECK(i < mesh.Vertices().size(), "indices name vertices");
        }
        for (const Tavrin::TriangleMesh::Vertex& v : mesh.Vertices()) {
            FUZZ_CHECK(std::isfinite(v.x) && std::isfinite(v.y) && v.u >= 0.0f && v.u <= 1.0f && v.v >= 0.0f &&
                           v.v <= 1.0f,
                       "mesh vertices finite, texture coordinates inside the atlas");
        }
    }
    Tavrin::CoverageMesh coverage;
    coverage.Build(list);
    FUZZ_CHECK(coverage.Indices().size() % 3 == 0 && coverage.ShapeIndexCount() % 3 == 0 &&
                   coverage.ShapeIndexCount() <= coverage.Indices().size(),
               "whole triangles in both parts");
    for (const std::uint32_t i : coverage.Indices()) {
        FUZZ_CHECK(i < coverage.Vertices().size(), "indices name vertices");
    }
    for (const Tavrin::CoverageMesh::Vertex& v : coverage.Vertices()) {
        FUZZ_CHECK(std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.edgeX) && std::isfinite(v.edgeY) &&
                       v.reach >= 1.0f && v.u >= 0.0f && v.u <= 1.0f && v.v >= 0.0f && v.v <= 1.0f,
                   "coverage vertices finite, reach at least a pixel, texture coordinates inside the atlas");
    }
}

/// Runs one input's calls on the analytics objects and the registry.
void runObjects(FuzzInput& in);
/// Runs one input's calls on the graphic primitives and the polygon geometry.
void runPrimitives(FuzzInput& in);

}  // namespace fuzz

#endif  // TAVRIN_FUZZ_HARNESS_H
