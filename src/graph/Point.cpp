#include <Tavrin/Point.h>

#include "geometry/PixelMath.h"
#include "geometry/VertexReach.h"
#include "graph/GlRender.h"

#include <cmath>

namespace Tavrin {

namespace {

const float kCrossHalfSize = 0.02f;

}  // namespace

Point::Point() : m_point{0.0f, 0.0f}, m_pointType(TAVRIN_POINT_DOT) {}

Point::Point(const tagTAVRIN_POINT* p) : Point()
{
    if (p != nullptr) {
        m_point = *p;
    }
}

Point::~Point() = default;

bool Point::IsNull() { return m_point.x == 0.0f && m_point.y == 0.0f; }

bool Point::SetPoints(tagTAVRIN_POINT* points, unsigned int count)
{
    if (points == nullptr || count > 1 || !geometry::isFinite(points[0])) {
        return false;
    }
    m_point = points[0];
    return true;
}

bool Point::GetPoints(tagTAVRIN_POINT* points, unsigned int* count)
{
    if (points == nullptr || count == nullptr) {
        return false;
    }
    *count = 1;
    points[0] = m_point;
    return true;
}

bool Point::IsNearPoint(Point& p) { return geometry::vertexWithinReach(m_point, p.m_point); }

bool Point::Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to)
{
    float dx = 0.0f;
    float dy = 0.0f;
    if (!geometry::dragDelta(from, to, dx, dy) ||
        !geometry::insidePicture(m_point.x + dx, m_point.y + dy)) {
        return false;
    }
    m_point.x += dx;
    m_point.y += dy;
    return true;
}

void Point::Draw(void* context, int width, int height, bool /*flag*/)
{
    m_wndWidth = width;
    m_wndHeight = height;
    DrawByOpenGL(context);
}

unsigned int Point::markerColor() const
{
    if (m_objStatus == TAVRIN_OBJ_STATUS_SELECTED) {
        return m_colors[2];
    }
    if (m_objStatus == TAVRIN_OBJ_STATUS_HIGHLIGHTED) {
        return m_colors[1];
    }
    return m_colors[0];
}

void Point::DrawByOpenGL(void* /*context*/)
{
    gl::RenderScope scope(gl::Smoothing::Point, m_wndWidth, m_wndHeight);
    gl::setColor(markerColor(), 255);
    if (m_pointType != TAVRIN_POINT_DOT) {
        const float x = m_point.x;
        const float y = m_point.y;
        const tagTAVRIN_POINT strokes[4] = {{x - kCrossHalfSize, y},
                                            {x + kCrossHalfSize, y},
                                            {x, y - kCrossHalfSize},
                                            {x, y + kCrossHalfSize}};
        gl::lineWidth(2.0f);
        gl::emitPoints(GL_LINES, strokes, 4);
        return;
    }
    if (isSelected()) {
        gl::pointSize(16.0f);
        gl::emitPoints(GL_POINTS, &m_point, 1);
    }
    gl::setColor(outlineColor(), 255);
    gl::pointSize(8.0f);
    gl::emitPoints(GL_POINTS, &m_point, 1);
}

void Point::DrawByGdi(void* /*context*/) {}

}  // namespace Tavrin
