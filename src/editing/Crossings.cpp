#include <Tavrin/Crossings.h>

#include "editing/FigureKind.h"
#include "graph/GlRender.h"

#include <Tavrin/PdcRule.h>
#include <Tavrin/VcaRule.h>

#include <algorithm>
#include <cmath>

namespace Tavrin {

namespace {

const unsigned int kTrackColor = 0xffb000;
const unsigned int kCountedColor = 0x20d040;
const unsigned int kIgnoredColor = 0xa0a0a0;
const float kTrackWidth = 2.0f;   // pixels
const float kMarkerHalf = 5.0f;   // pixels

double crossOf(double ax, double ay, double bx, double by) { return ax * by - ay * bx; }

// Which crossing directions a tripwire counts.
struct Counting {
    bool aToB;
    bool bToA;
};

Counting countingOf(VcaObject* rule, editing::FigureKind kind, const std::vector<tagTAVRIN_POINT>& line)
{
    using editing::FigureKind;
    if (kind == FigureKind::ITCLine) {
        return {true, true};
    }
    if (kind == FigureKind::PdcRuleLine) {
        tagTAVRIN_POINT tail{};
        tagTAVRIN_POINT tip{};
        static_cast<PdcRule*>(rule)->GetArrowPoints(&tail, &tip);
        const double side = crossOf(static_cast<double>(line[1].x) - line[0].x,
                                    static_cast<double>(line[1].y) - line[0].y,
                                    static_cast<double>(tip.x) - tail.x, static_cast<double>(tip.y) - tail.y);
        return {side > 0.0, side < 0.0};
    }
    switch (static_cast<VcaRule*>(rule)->GetArrowDirection()) {
    case TAVRIN_ARROW_BOTH: return {true, true};
    case TAVRIN_ARROW_POSITIVE: return {true, false};
    case TAVRIN_ARROW_NEGATIVE: return {false, true};
    default: return {false, false};
    }
}

struct Segment {
    tagTAVRIN_POINT a;
    tagTAVRIN_POINT b;
    bool lastOfChain;  ///< its far end belongs to it (no later segment starts there)
};

// Where track segment q0-q1 crosses figure segment a-b, with its parameter along the track
// and the sign of cross(b - a, q1 - q0); false when the track does not change side or
// meets the segment outside it.
bool crossingOf(const Segment& s, const tagTAVRIN_POINT& q0, const tagTAVRIN_POINT& q1, double& t, double& turn,
                tagTAVRIN_POINT& point)
{
    const double rx = static_cast<double>(s.b.x) - s.a.x;
    const double ry = static_cast<double>(s.b.y) - s.a.y;
    const double sx = static_cast<double>(q1.x) - q0.x;
    const double sy = static_cast<double>(q1.y) - q0.y;
    const double qx = static_cast<double>(q0.x) - s.a.x;
    const double qy = static_cast<double>(q0.y) - s.a.y;
    const double side0 = crossOf(rx, ry, qx, qy);
    const double side1 = crossOf(rx, ry, qx + sx, qy + sy);
    if ((side0 < 0.0) == (side1 < 0.0)) {
        return false;
    }
    turn = crossOf(rx, ry, sx, sy);
    if (turn == 0.0) {
        return false;
    }
    const double u = crossOf(qx, qy, sx, sy) / turn;
    if (!(u >= 0.0) || !(s.lastOfChain ? u <= 1.0 : u < 1.0)) {
        return false;
    }
    t = crossOf(qx, qy, rx, ry) / turn;
    point = tagTAVRIN_POINT{static_cast<float>(s.a.x + u * rx), static_cast<float>(s.a.y + u * ry)};
    return true;
}

std::vector<Segment> segmentsOf(const std::vector<tagTAVRIN_POINT>& p, bool closed)
{
    std::vector<Segment> out;
    const std::size_t n = p.size();
    const std::size_t count = closed && n > 2 ? n : (n > 0 ? n - 1 : 0);
    for (std::size_t i = 0; i < count; ++i) {
        out.push_back(Segment{p[i], p[(i + 1) % n], !closed && i + 1 == count});
    }
    return out;
}

void marker(const tagTAVRIN_POINT& at, bool counted, float halfX, float halfY)
{
    const tagTAVRIN_POINT square[4] = {{at.x - halfX, at.y - halfY}, {at.x + halfX, at.y - halfY},
                                       {at.x + halfX, at.y + halfY}, {at.x - halfX, at.y + halfY}};
    gl::setColor(counted ? kCountedColor : kIgnoredColor, 255);
    gl::emitPoints(counted ? GL_POLYGON : GL_LINE_LOOP, square, 4);
}

}  // namespace

std::vector<CrossingEvent> TrackCrossings(VcaObject* rule, const tagTAVRIN_POINT* track, unsigned int count)
{
    std::vector<CrossingEvent> events;
    if (track == nullptr || count < 2 || !std::all_of(track, track + count, editing::isFinite)) {
        return events;
    }
    const editing::FigureKind kind = editing::kindOf(rule);
    const bool tripwire = editing::isTripwire(kind);
    if (!tripwire && !editing::isRegion(kind)) {
        return events;
    }
    try {
        const std::vector<tagTAVRIN_POINT> points = editing::pointsOf(rule);
        if (points.size() < 2 || !std::all_of(points.begin(), points.end(), editing::isFinite)) {
            return events;
        }
        const double area = tripwire ? 0.0 : editing::twiceSignedArea(points);
        if (!tripwire && area == 0.0) {
            return events;
        }
        const Counting counting = tripwire ? countingOf(rule, kind, points) : Counting{true, true};
        const std::vector<Segment> segments = segmentsOf(points, !tripwire && editing::limitsOf(rule).closed);
        for (unsigned int i = 0; i + 1 < count; ++i) {
            std::vector<std::pair<double, CrossingEvent>> found;
            for (unsigned int e = 0; e < segments.size(); ++e) {
                double t = 0.0;
                double turn = 0.0;
                tagTAVRIN_POINT at{};
                if (!crossingOf(segments[e], track[i], track[i + 1], t, turn, at)) {
                    continue;
                }
                // The "B" side (and a positive outline's inside) is where cross(b - a, p - a) > 0.
                CrossingKind k;
                bool counts = true;
                if (tripwire) {
                    k = turn > 0.0 ? CrossingKind::AtoB : CrossingKind::BtoA;
                    counts = k == CrossingKind::AtoB ? counting.aToB : counting.bToA;
                } else {
                    k = (turn > 0.0) == (area > 0.0) ? CrossingKind::Enter : CrossingKind::Leave;
                }
                found.emplace_back(t, CrossingEvent{i, e, at, k, counts});
            }
            std::stable_sort(found.begin(), found.end(),
                             [](const auto& x, const auto& y) { return x.first < y.first; });
            for (const auto& f : found) {
                events.push_back(f.second);
            }
        }
    } catch (...) {
        events.clear();
    }
    return events;
}

void DrawTrack(const tagTAVRIN_POINT* track, unsigned int count, const std::vector<CrossingEvent>& events,
               int width, int height)
{
    if (track == nullptr || count < 2 || width <= 0 || height <= 0) {
        return;
    }
    const float halfX = kMarkerHalf / static_cast<float>(width);
    const float halfY = kMarkerHalf / static_cast<float>(height);
    gl::RenderScope scope(gl::Smoothing::Line, width, height);
    gl::setColor(kTrackColor, 255);
    gl::lineWidth(kTrackWidth);
    for (unsigned int i = 0; i + 1 < count; ++i) {
        gl::emitSegment(track[i], track[i + 1]);
    }
    for (const CrossingEvent& e : events) {
        marker(e.point, e.counts, halfX, halfY);
    }
}

}  // namespace Tavrin
