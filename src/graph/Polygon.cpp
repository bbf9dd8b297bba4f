#include <Tavrin/Polygon.h>

#include "geometry/PixelMath.h"
#include "geometry/PolygonGeometry.h"
#include "geometry/VertexReach.h"
#include "graph/GlRender.h"

#include <cmath>
#include <cstring>

namespace Tavrin {

namespace {

const unsigned int kMaxVertices = 20;

// With the right-out option the first vertex is held this far inside the right edge.
const double kFirstVertexRightMargin = 0.02;

bool acceptableVertices(const tagTAVRIN_POINT* points, unsigned int count)
{
    return points != nullptr && count <= kMaxVertices && geometry::allFinite(points, count);
}

}  // namespace

Polygon::Polygon() : m_pointCount(0), m_points{} {}

Polygon::Polygon(tagTAVRIN_POINT* points, unsigned int count) : Polygon()
{
    if (acceptableVertices(points, count)) {
        std::memcpy(m_points, points, count * sizeof(tagTAVRIN_POINT));
        m_pointCount = count;
    }
}

Polygon::~Polygon() = default;

bool Polygon::IsNull()
{
    for (unsigned int i = 0; i < m_pointCount; ++i) {
        if (m_points[i].x != 0.0f || m_points[i].y != 0.0f) {
            return false;
        }
    }
    return true;
}

bool Polygon::SetPoints(tagTAVRIN_POINT* points, unsigned int count)
{
    if (!acceptableVertices(points, count)) {
        return false;
    }
    storeVertices(points, count);
    return true;
}

bool Polygon::GetPoints(tagTAVRIN_POINT* points, unsigned int* count)
{
    if (points == nullptr || count == nullptr) {
        return false;
    }
    *count = m_pointCount;
    std::memcpy(points, m_points, m_pointCount * sizeof(tagTAVRIN_POINT));
    return true;
}

bool Polygon::Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to)
{
    float dx = 0.0f;
    float dy = 0.0f;
    if (!geometry::dragDelta(from, to, dx, dy)) {
        return false;
    }
    for (unsigned int i = 0; i < m_pointCount; ++i) {
        if (!vertexMayMoveTo(i, m_points[i].x + dx, m_points[i].y + dy)) {
            return false;
        }
    }
    for (unsigned int i = 0; i < m_pointCount; ++i) {
        m_points[i].x += dx;
        m_points[i].y += dy;
    }
    return true;
}

bool Polygon::vertexMayMoveTo(unsigned int index, float nx, float ny) const
{
    // A vertex carried past the right edge must still be a finite number.
    if (!geometry::isFinite(nx) || !geometry::isFinite(ny)) {
        return false;
    }
    if (nx < 0.0f) {
        return false;
    }
    if (nx > 1.0f && !m_suptPolygonMoveRightOut) {
        return false;
    }
    // Deliberately asymmetric: only the first vertex is held back, and only from the
    // right edge.
    if (m_suptPolygonMoveRightOut && index == 0 &&
        static_cast<double>(nx) + kFirstVertexRightMargin > 1.0) {
        return false;
    }
    return ny >= 0.0f && ny <= 1.0f;
}

void Polygon::MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to)
{
    const unsigned int k = m_selPointIndex;
    if (k == 0 || k > m_pointCount) {
        return;
    }
    float dx = 0.0f;
    float dy = 0.0f;
    tagTAVRIN_POINT& v = m_points[k - 1];
    if (!geometry::dragDelta(from, to, dx, dy) || !geometry::insidePicture(v.x + dx, v.y + dy)) {
        return;
    }
    v.x += dx;
    v.y += dy;
}

bool Polygon::CheckSelected(Point& p)
{
    if (IsNull()) {
        return false;
    }
    return IsNearPoint(p);
}

unsigned int Polygon::CheckPointSelected(tagTAVRIN_POINT& p)
{
    // The lowest index wins, deliberately, not the nearest vertex.
    for (unsigned int i = 0; i < m_pointCount; ++i) {
        if (geometry::vertexWithinReach(m_points[i], p)) {
            return i + 1;
        }
    }
    return 0;
}

void Polygon::operator=(Polygon& other)
{
    tagTAVRIN_POINT points[kMaxVertices] = {};
    unsigned int count = 0;
    if (!other.GetPoints(points, &count) || count > kMaxVertices) {
        return;
    }
    storeVertices(points, count);
}

bool Polygon::IsNearPoint(Point& p)
{
    const float px = p.Rx();
    const float py = p.Ry();
    const unsigned int n = m_pointCount;
    unsigned int crossings = 0;
    // The closing edge always counts, whether or not the outline is closed.
    for (unsigned int i = 0; i < n; ++i) {
        const tagTAVRIN_POINT& a = m_points[i];
        const tagTAVRIN_POINT& b = m_points[(i + 1) % n];
        if (a.y == b.y) {
            continue;
        }
        const float low = a.y < b.y ? a.y : b.y;
        const float high = a.y < b.y ? b.y : a.y;
        // Half-open: the lower end belongs to the edge, the upper one does not.
        if (!(low <= py && py < high)) {
            continue;
        }
        const float rise = py - a.y;
        const float run = b.x - a.x;
        const float height = b.y - a.y;
        const double xc = static_cast<double>(rise) * static_cast<double>(run) /
                              static_cast<double>(height) +
                          static_cast<double>(a.x);
        if (xc > static_cast<double>(px)) {
            ++crossings;
        }
    }
    return crossings % 2 == 1;
}

void Polygon::Draw(void* context, int width, int height, bool /*flag*/)
{
    m_wndWidth = width;
    m_wndHeight = height;
    if (m_pointCount > 0) {
        DrawByOpenGL(context);
    }
}

void Polygon::DrawByOpenGL(void* /*context*/)
{
    {
        gl::RenderScope scope(gl::Smoothing::Polygon, m_wndWidth, m_wndHeight);
        const unsigned int color = outlineColor();
        gl::setColor(color, 255);
        gl::lineWidth(m_lineWidth);
        if (m_closed) {
            gl::emitPoints(GL_LINE_LOOP, m_points, m_pointCount);
            drawFill(color);
        } else {
            for (unsigned int i = 0; i + 1 < m_pointCount; ++i) {
                gl::emitSegment(m_points[i], m_points[i + 1]);
            }
        }
    }
    if (isSelected()) {
        for (unsigned int i = 0; i < m_pointCount; ++i) {
            drawHandle(m_points[i], m_selPointIndex == i + 1);
        }
    }
}

void Polygon::drawFill(unsigned int color)
{
    gl::setColor(color, m_viewOpaque ? 255 : 40);
    if (!m_viewTransparent && !m_viewOpaque) {
        return;
    }
    tagTAVRIN_POLYGON record;
    record.count = static_cast<int>(m_pointCount);
    std::memcpy(record.points, m_points, sizeof record.points);
    const int triangles = fillTriangles(record, m_fillCut);
    // A self-crossing or degenerate polygon cuts into fewer triangles: no fill at all.
    if (triangles != record.count - 2) {
        return;
    }
    // Opaque triangles get their outline too, so no seams show between them.
    gl::emitTriangleFill(record.points, m_fillCut.corners, triangles, m_viewOpaque);
}

void Polygon::DrawByGdi(void* /*context*/) {}

void Polygon::storeVertices(const tagTAVRIN_POINT* points, unsigned int count)
{
    std::memset(m_points, 0, sizeof m_points);
    std::memcpy(m_points, points, count * sizeof(tagTAVRIN_POINT));
    m_pointCount = count;
}

}  // namespace Tavrin
