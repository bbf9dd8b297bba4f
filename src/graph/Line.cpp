#include <Tavrin/Line.h>

#include "geometry/LineGeometry.h"
#include "geometry/PixelMath.h"
#include "geometry/VertexReach.h"

#include <algorithm>

namespace Tavrin {

namespace {

// A calibration segment longer than the line by more than this is put back on the line.
const double kCaliSegmentSlack = 0.001;

bool isOrigin(const tagTAVRIN_POINT& p) { return p.x == 0.0f && p.y == 0.0f; }

void shift(tagTAVRIN_POINT& p, float dx, float dy)
{
    p.x += dx;
    p.y += dy;
}

}  // namespace

Line::Line()
    : m_points{},
      m_lineType(TAVRIN_LINE_PLAIN),
      m_arrowType(TAVRIN_ARROW_NONE),
      m_arrowPoints{},
      m_caliPoints{},
      m_targetWidthLine{},
      m_caliLine{},
      m_showPoint(true),
      m_isTraversePlane(false),
      m_pdcLineCali(false),
      m_pdcLineOrRect(false),
      m_pdcCaliShoulderLine(false),
      m_selCaliPointIndex(0)
{
}

Line::Line(tagTAVRIN_POINT* points, unsigned int count) : Line()
{
    if (points != nullptr && count <= 2 && geometry::allFinite(points, 2)) {
        m_points[0] = points[0];
        m_points[1] = points[1];
    }
}

Line::~Line() = default;

bool Line::IsNull() { return isOrigin(m_points[0]) && isOrigin(m_points[1]); }

bool Line::SetPoints(tagTAVRIN_POINT* points, unsigned int count)
{
    if (points == nullptr || count > 2 || !geometry::allFinite(points, 2)) {
        return false;
    }
    // Two points whatever the count, deliberately.
    m_points[0] = points[0];
    m_points[1] = points[1];
    return true;
}

bool Line::GetPoints(tagTAVRIN_POINT* points, unsigned int* count)
{
    if (points == nullptr || count == nullptr) {
        return false;
    }
    *count = 2;
    points[0] = m_points[0];
    points[1] = m_points[1];
    return true;
}

Point Line::p1() const { return Point(&m_points[0]); }

Point Line::p2() const { return Point(&m_points[1]); }

void Line::setP1(Point p)
{
    if (geometry::isFinite(p.Rx()) && geometry::isFinite(p.Ry())) {
        m_points[0] = tagTAVRIN_POINT{p.Rx(), p.Ry()};
    }
}

void Line::setP2(Point p)
{
    if (geometry::isFinite(p.Rx()) && geometry::isFinite(p.Ry())) {
        m_points[1] = tagTAVRIN_POINT{p.Rx(), p.Ry()};
    }
}

void Line::SetLineType(tagTAVRIN_LINE_TYPE type) { m_lineType = type; }

tagTAVRIN_LINE_TYPE Line::GetLineType() { return m_lineType; }

void Line::SetShowPoint(bool show) { m_showPoint = show; }

void Line::SetArrowDirection(TAVRIN_ARROW_TYPE direction) { m_arrowType = direction; }

TAVRIN_ARROW_TYPE Line::GetArrowDirection() { return m_arrowType; }

void Line::SetIsTraversePlane(bool on) { m_isTraversePlane = on; }

void Line::SetVcaPDCLineCali(bool on) { m_pdcLineCali = on; }

void Line::SetVcaPDCLineOrRect(bool lineMode) { m_pdcLineOrRect = lineMode; }

void Line::SetVcaPDCCaliShoulderLine(bool on) { m_pdcCaliShoulderLine = on; }

bool Line::SetArrowPoints(tagTAVRIN_POINT& start, tagTAVRIN_POINT& end)
{
    if (!geometry::isFinite(start) || !geometry::isFinite(end)) {
        return false;
    }
    m_arrowPoints[0] = start;
    m_arrowPoints[1] = end;
    return true;
}

bool Line::GetArrowPoints(tagTAVRIN_POINT* start, tagTAVRIN_POINT* end)
{
    if (start == nullptr || end == nullptr) {
        return false;
    }
    *start = m_arrowPoints[0];
    *end = m_arrowPoints[1];
    return true;
}

void Line::operator=(Line& other)
{
    tagTAVRIN_POINT points[2] = {};
    unsigned int count = 0;
    if (other.GetPoints(points, &count)) {
        m_points[0] = points[0];
        m_points[1] = points[1];
    }
}

float Line::GetPointLength(tagTAVRIN_POINT& a, tagTAVRIN_POINT& b)
{
    return geometry::normalisedLength(a, b);
}

bool Line::IsNearPoint(Point& p)
{
    const tagTAVRIN_POINT cursor{p.Rx(), p.Ry()};
    return geometry::segmentHit(m_points[0], m_points[1], cursor, m_wndWidth, m_wndHeight);
}

bool Line::CheckSelected(Point& p)
{
    if (IsNull()) {
        return false;
    }
    return IsNearPoint(p);
}

unsigned int Line::CheckPointSelected(tagTAVRIN_POINT& p)
{
    unsigned int selected = 0;
    // Tested in order, so p2 wins when both end points are near.
    for (unsigned int i = 0; i < 2; ++i) {
        if (geometry::vertexWithinReach(m_points[i], p)) {
            selected = i + 1;
        }
    }
    return selected;
}

void Line::Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to)
{
    float dx = 0.0f;
    float dy = 0.0f;
    if (!geometry::dragDelta(from, to, dx, dy)) {
        return;
    }
    for (const tagTAVRIN_POINT& end : m_points) {
        if (!geometry::insidePicture(end.x + dx, end.y + dy)) {
            return;
        }
    }
    // The arrow points are not held to the picture, but a drag that would carry one to an
    // infinite coordinate (only an arrow set far outside can get there) is refused whole.
    for (const tagTAVRIN_POINT& arrow : m_arrowPoints) {
        if (!geometry::isFinite(tagTAVRIN_POINT{arrow.x + dx, arrow.y + dy})) {
            return;
        }
    }
    for (tagTAVRIN_POINT& end : m_points) {
        shift(end, dx, dy);
    }
    // The calibration data stays.
    for (tagTAVRIN_POINT& arrow : m_arrowPoints) {
        shift(arrow, dx, dy);
    }
}

void Line::MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to)
{
    float dx = 0.0f;
    float dy = 0.0f;
    if (m_selPointIndex == 0 || m_selPointIndex > 2 || !geometry::dragDelta(from, to, dx, dy)) {
        return;
    }
    tagTAVRIN_POINT& moved = m_points[m_selPointIndex - 1];
    if (!geometry::insidePicture(moved.x + dx, moved.y + dy)) {
        return;
    }
    shift(moved, dx, dy);
    keepCaliSegmentOnLine();
}

bool Line::SetPDCCaliPoints(tagTAVRIN_POINT* points, unsigned int count)
{
    if (points == nullptr || count > 2 || !geometry::allFinite(points, 2)) {
        return false;
    }
    // Two points whatever the count, like SetPoints.
    m_caliPoints[0] = points[0];
    m_caliPoints[1] = points[1];
    return true;
}

bool Line::GetPDCCaliPoints(tagTAVRIN_POINT* points, unsigned int* count)
{
    if (points == nullptr || count == nullptr) {
        return false;
    }
    *count = 2;
    points[0] = m_caliPoints[0];
    points[1] = m_caliPoints[1];
    return true;
}

bool Line::SetTargetWidthLine(float* values)
{
    if (values == nullptr) {
        return false;
    }
    for (int i = 0; i < 16; ++i) {
        if (!geometry::isFinite(values[i])) {
            return false;
        }
    }
    std::copy(values, values + 16, m_targetWidthLine);
    return true;
}

void Line::SetSelCaliPointIndex(unsigned int index) { m_selCaliPointIndex = index; }

void Line::keepCaliSegmentOnLine()
{
    const float lineLength = GetPointLength(m_points[0], m_points[1]);
    const float caliLength = GetPointLength(m_caliPoints[0], m_caliPoints[1]);
    if (static_cast<double>(caliLength - lineLength) > kCaliSegmentSlack) {
        geometry::leftToRight(m_points[0], m_points[1], m_caliPoints);
    }
}

}  // namespace Tavrin
