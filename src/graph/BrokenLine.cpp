#include <Tavrin/BrokenLine.h>

#include "geometry/LineGeometry.h"
#include "geometry/PixelMath.h"
#include "geometry/VertexReach.h"

#include <algorithm>

namespace Tavrin {

namespace {

const unsigned int kMaxVertices = 10;

bool isOrigin(const tagTAVRIN_POINT& p) { return p.x == 0.0f && p.y == 0.0f; }

}  // namespace

BrokenLine::BrokenLine()
    : m_polyline{}, m_segments{}, m_arrowType(TAVRIN_ARROW_NONE), m_isTraversePlane(false)
{
}

BrokenLine::BrokenLine(tagTAVRIN_POINT* points, unsigned int count) : BrokenLine()
{
    // The segments receive the vertices only at the next edit, deliberately.
    if (points != nullptr && count <= kMaxVertices && geometry::allFinite(points, count)) {
        std::copy(points, points + count, m_polyline.points);
        m_polyline.count = count;
    }
}

BrokenLine::~BrokenLine() = default;

bool BrokenLine::IsNull()
{
    for (unsigned int i = 0; i < kMaxVertices; ++i) {
        if (!isOrigin(m_polyline.points[i])) {
            return false;
        }
    }
    return true;
}

void BrokenLine::Draw(void* context, int width, int height, bool /*flag*/)
{
    m_wndWidth = width;
    m_wndHeight = height;
    DrawByOpenGL(context);
}

bool BrokenLine::SetPoints(tagTAVRIN_POINT* points, unsigned int count)
{
    // Cleared first, so a refused call leaves the broken line empty, deliberately.
    m_polyline = Polyline{};
    if (points == nullptr || count > kMaxVertices || !geometry::allFinite(points, count)) {
        return false;
    }
    std::copy(points, points + count, m_polyline.points);
    m_polyline.count = count;
    return refreshSegments();
}

bool BrokenLine::GetPoints(tagTAVRIN_POINT* points, unsigned int* count)
{
    if (points == nullptr || count == nullptr) {
        return false;
    }
    *count = m_polyline.count;
    std::copy(m_polyline.points, m_polyline.points + m_polyline.count, points);
    return true;
}

bool BrokenLine::IsNearPoint(Point& p)
{
    const unsigned int n = m_polyline.count;
    // The closing edge back to the first vertex is tested too: hit-tested as if closed.
    // Each edge is tested as a Line of its two ends would test itself: one holding a
    // non-finite end holds (0, 0) twice instead.
    const tagTAVRIN_POINT cursor{p.Rx(), p.Ry()};
    for (unsigned int i = 0; i < n; ++i) {
        tagTAVRIN_POINT ends[2] = {m_polyline.points[i], m_polyline.points[(i + 1) % n]};
        if (!geometry::allFinite(ends, 2)) {
            ends[0] = tagTAVRIN_POINT{0.0f, 0.0f};
            ends[1] = tagTAVRIN_POINT{0.0f, 0.0f};
        }
        if (geometry::segmentHit(ends[0], ends[1], cursor, m_wndWidth, m_wndHeight)) {
            return true;
        }
    }
    return false;
}

bool BrokenLine::CheckSelected(Point& p) { return IsNearPoint(p); }

unsigned int BrokenLine::CheckPointSelected(tagTAVRIN_POINT& p)
{
    // The first vertex near the cursor wins.
    for (unsigned int i = 0; i < m_polyline.count; ++i) {
        if (geometry::vertexWithinReach(m_polyline.points[i], p)) {
            return i + 1;
        }
    }
    return 0;
}

void BrokenLine::Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to)
{
    float dx = 0.0f;
    float dy = 0.0f;
    if (!geometry::dragDelta(from, to, dx, dy)) {
        return;
    }
    for (unsigned int i = 0; i < m_polyline.count; ++i) {
        const tagTAVRIN_POINT& v = m_polyline.points[i];
        if (!geometry::insidePicture(v.x + dx, v.y + dy)) {
            return;
        }
    }
    for (unsigned int i = 0; i < m_polyline.count; ++i) {
        m_polyline.points[i].x += dx;
        m_polyline.points[i].y += dy;
    }
    refreshSegments();
}

void BrokenLine::MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to)
{
    float dx = 0.0f;
    float dy = 0.0f;
    if (m_selPointIndex == 0 || m_selPointIndex > m_polyline.count ||
        !geometry::dragDelta(from, to, dx, dy)) {
        return;
    }
    tagTAVRIN_POINT& v = m_polyline.points[m_selPointIndex - 1];
    if (!geometry::insidePicture(v.x + dx, v.y + dy)) {
        return;
    }
    v.x += dx;
    v.y += dy;
    refreshSegments();
}

void BrokenLine::SetArrowDirection(TAVRIN_ARROW_TYPE direction) { m_arrowType = direction; }

TAVRIN_ARROW_TYPE BrokenLine::GetArrowDirection() { return m_arrowType; }

void BrokenLine::SetIsTraversePlane(bool on) { m_isTraversePlane = on; }

void BrokenLine::DrawByOpenGL(void* /*context*/)
{
    const unsigned int n = m_polyline.count;
    if (isSelected()) {
        // Every vertex is marked, after the segment that starts at it.
        for (unsigned int i = 0; i < n; ++i) {
            if (i + 1 < n) {
                drawSegment(i, TAVRIN_OBJ_STATUS_SELECTED);
            }
            drawVertexMarker(i, m_selPointIndex == i + 1 ? TAVRIN_OBJ_STATUS_SELECTED
                                                         : TAVRIN_OBJ_STATUS_HIGHLIGHTED);
        }
        return;
    }
    // Only the inner vertices are marked, deliberately.
    for (unsigned int i = 0; i + 1 < n; ++i) {
        drawSegment(i, m_objStatus);
        if (i > 0) {
            drawVertexMarker(i, m_selPointIndex == i + 1 ? TAVRIN_OBJ_STATUS_SELECTED : m_objStatus);
        }
    }
}

void BrokenLine::DrawByGdi(void* /*context*/) {}

bool BrokenLine::refreshSegments()
{
    for (unsigned int i = 0; i + 1 < m_polyline.count; ++i) {
        if (!m_segments[i].SetPoints(&m_polyline.points[i], 2)) {
            return false;
        }
    }
    return true;
}

void BrokenLine::drawSegment(unsigned int index, tagTAVRIN_OBJ_STATUS status)
{
    Line& segment = m_segments[index];
    segment.SetArrowDirection(m_arrowType);
    segment.SetLineType(TAVRIN_LINE_ARROW);
    segment.SetObjStatus(status);
    segment.SetColors(m_colors[0], m_colors[1], m_colors[2], m_colors[3]);
    segment.SetIsTraversePlane(m_isTraversePlane);
    segment.Draw(nullptr, m_wndWidth, m_wndHeight, true);
}

void BrokenLine::drawVertexMarker(unsigned int index, tagTAVRIN_OBJ_STATUS status)
{
    const tagTAVRIN_POINT& at = m_polyline.points[index];
    if (!geometry::isDrawable(at)) {
        return;
    }
    Point marker(&at);
    marker.SetColors(m_colors[0], m_colors[1], m_colors[2], m_colors[3]);
    marker.SetObjStatus(status);
    marker.Draw(nullptr, m_wndWidth, m_wndHeight, true);
}

}  // namespace Tavrin
