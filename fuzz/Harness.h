#ifndef TAVRIN_FUZZ_HARNESS_H
#define TAVRIN_FUZZ_HARNESS_H

// Shared pieces of the fuzz harness: vertex snapshots and the invariants checked on
// them, argument buffers sized exactly as a careful host would size them (so the address
// sanitizer sees any read or write past what the call may touch), and the two drivers.

#include "FuzzInput.h"
#include "GlSink.h"

#include <Tavrin/TavrinTypes.h>

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
    if (a.ok != b.ok || a.count != b.count) {
        return false;
    }
    const unsigned n = liveCount(a, live);
    return std::memcmp(a.points, b.points, n * sizeof(tagTAVRIN_POINT)) == 0;
}

inline bool allFinitePoints(const tagTAVRIN_POINT* p, unsigned n)
{
    for (unsigned i = 0; i < n; ++i) {
        if (!finitePoint(p[i])) {
            return false;
        }
    }
    return true;
}

inline bool allInPicture(const Snapshot& s, unsigned live = 20)
{
    for (unsigned i = 0; i < liveCount(s, live); ++i) {
        if (!inPicture(s.points[i])) {
            return false;
        }
    }
    return true;
}

inline bool allFinite(const Snapshot& s, unsigned live = 20)
{
    for (unsigned i = 0; i < liveCount(s, live); ++i) {
        if (!finitePoint(s.points[i])) {
            return false;
        }
    }
    return true;
}

/// Every live vertex of `after` is the one of `before` moved by (dx, dy), computed as the
/// library computes it.
inline bool shiftedBy(const Snapshot& before, const Snapshot& after, float dx, float dy, unsigned live)
{
    if (before.count != after.count) {
        return false;
    }
    for (unsigned i = 0; i < liveCount(before, live); ++i) {
        const float x = before.points[i].x + dx;
        const float y = before.points[i].y + dy;
        if (std::memcmp(&x, &after.points[i].x, sizeof x) != 0 ||
            std::memcmp(&y, &after.points[i].y, sizeof y) != 0) {
            return false;
        }
    }
    return true;
}

/// Only vertex `selected` (1-based) of the live ones moved, by exactly (dx, dy), or none
/// did; with no valid selection none did.
inline bool movedSelectedVertexOnly(const Snapshot& before, const Snapshot& after, unsigned selected,
                                    float dx, float dy, unsigned live)
{
    if (before.count != after.count) {
        return false;
    }
    for (unsigned i = 0; i < liveCount(before, live); ++i) {
        const tagTAVRIN_POINT& b = before.points[i];
        const tagTAVRIN_POINT& a = after.points[i];
        if (std::memcmp(&a, &b, sizeof a) == 0) {
            continue;
        }
        const float x = b.x + dx;
        const float y = b.y + dy;
        if (i + 1 != selected || std::memcmp(&x, &a.x, sizeof x) != 0 ||
            std::memcmp(&y, &a.y, sizeof y) != 0) {
            return false;
        }
    }
    return true;
}

/// Four corners in the order a diagonal gives them: each corner shares one coordinate
/// exactly with each neighbour, so a corner drag keeps the figure a rectangle.
inline bool properRectangle(const Snapshot& s)
{
    if (s.count != 4) {
        return false;
    }
    const tagTAVRIN_POINT* c = s.points;
    return c[0].y == c[1].y && c[1].x == c[2].x && c[2].y == c[3].y && c[3].x == c[0].x;
}

/// A drag vector the library accepts as finite.
inline bool finiteDrag(const tagTAVRIN_POINT& from, const tagTAVRIN_POINT& to)
{
    return std::isfinite(to.x - from.x) && std::isfinite(to.y - from.y);
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

/// Runs one input's calls on the analytics objects and the registry.
void runObjects(FuzzInput& in);
/// Runs one input's calls on the graphic primitives and the polygon geometry.
void runPrimitives(FuzzInput& in);

}  // namespace fuzz

#endif  // TAVRIN_FUZZ_HARNESS_H
