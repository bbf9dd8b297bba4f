#include <Tavrin/GraphMeta.h>
#include <Tavrin/Point.h>

#include "geometry/PixelMath.h"
#include "geometry/PolygonGeometry.h"

#include <cstring>

namespace Tavrin {

GraphMeta::GraphMeta()
    : m_objStatus(TAVRIN_OBJ_STATUS_NORMAL),
      m_wndWidth(0),
      m_wndHeight(0),
      m_colors{0xd90db0u, 0x285ea6u, 0xffc000u, 0xf47f4cu},
      m_selPointIndex(0),
      m_viewTransparent(true),
      m_viewOpaque(false),
      m_closed(true),
      m_lineWidth(2.0f),
      m_suptPolygonMoveRightOut(false)
{
}

GraphMeta::~GraphMeta() = default;

tagTAVRIN_OBJ_STATUS GraphMeta::GetObjStatus() { return m_objStatus; }

void GraphMeta::SetObjStatus(tagTAVRIN_OBJ_STATUS status) { m_objStatus = status; }

void GraphMeta::SetSelPointIndex(unsigned int index) { m_selPointIndex = index; }

unsigned int GraphMeta::GetSelPointIndex() { return m_selPointIndex; }

void GraphMeta::SetColors(unsigned int c0, unsigned int c1, unsigned int c2, unsigned int c3)
{
    m_colors[0] = c0;
    m_colors[1] = c1;
    m_colors[2] = c2;
    m_colors[3] = c3;
}

void GraphMeta::SetWndSize(int width, int height)
{
    m_wndWidth = width;
    m_wndHeight = height;
}

void GraphMeta::SetViewTransparent(bool on) { m_viewTransparent = on; }

void GraphMeta::SetClosed(bool closed) { m_closed = closed; }

void GraphMeta::SetViewOpaque(bool on) { m_viewOpaque = on; }

bool GraphMeta::GetClosed() { return m_closed; }

void GraphMeta::SetLineWidth(float width)
{
    if (geometry::isFinite(width)) {
        m_lineWidth = width;
    }
}

void GraphMeta::SetSuptPolygonMoveRightOut(bool on) { m_suptPolygonMoveRightOut = on; }

unsigned int GraphMeta::outlineColor() const
{
    return isSelectedOrHighlighted() ? m_colors[1] : m_colors[0];
}

void GraphMeta::drawHandle(const tagTAVRIN_POINT& at, bool active)
{
    Point handle(&at);
    handle.SetColors(m_colors[0], m_colors[1], m_colors[2], m_colors[3]);
    handle.SetObjStatus(active ? TAVRIN_OBJ_STATUS_SELECTED : TAVRIN_OBJ_STATUS_HIGHLIGHTED);
    handle.Draw(nullptr, m_wndWidth, m_wndHeight, true);
}

int GraphMeta::fillTriangles(const tagTAVRIN_POLYGON& outline, FillCut& cut)
{
    const int n = outline.count;
    if (n < 0 || n > 20) {
        return 0;
    }
    const std::size_t bytes = static_cast<std::size_t>(n) * sizeof(tagTAVRIN_POINT);
    // Bitwise: the cut depends on nothing but these bits.
    if (cut.count == n && std::memcmp(cut.points, outline.points, bytes) == 0) {
        return cut.triangles;
    }
    geometry::TriangleIndices triangles;
    geometry::splitPolygonIndices(outline, triangles);
    cut.count = n;
    std::memcpy(cut.points, outline.points, bytes);
    cut.triangles = triangles.count;
    std::memcpy(cut.corners, triangles.corners,
                static_cast<std::size_t>(triangles.count) * sizeof cut.corners[0]);
    return cut.triangles;
}

void GraphMeta::fillTriangle(const tagTAVRIN_POLYGON& outline, const FillCut& cut, int index,
                             tagTAVRIN_POINT (&corners)[3])
{
    for (int k = 0; k < 3; ++k) {
        corners[k] = outline.points[cut.corners[index][k]];
    }
}

bool GraphMeta::CheckLineCrossDetect(tagTAVRIN_POINT a, tagTAVRIN_POINT b, tagTAVRIN_POINT c,
                                     tagTAVRIN_POINT d)
{
    return geometry::segmentsCross(a, b, c, d);
}

bool GraphMeta::CheckPolygon(tagTAVRIN_POLYGON polygon) { return geometry::polygonIsValid(polygon); }

int GraphMeta::SplitPolygon(tagTAVRIN_POLYGON polygon, std::list<tagTAVRIN_TRIANGLE_>* triangles)
{
    try {
        return geometry::splitPolygon(polygon, triangles);
    } catch (...) {
        return -1;
    }
}

int GraphMeta::GetRemainPolygon(tagTAVRIN_POLYGON polygon, int index, tagTAVRIN_POLYGON* remain)
{
    return geometry::remainPolygon(polygon, index, remain);
}

int GraphMeta::TrangleArea(tagTAVRIN_TRIANGLE_ triangle, double* area)
{
    return geometry::triangleArea(triangle, area);
}

int GraphMeta::PolygonArea(tagTAVRIN_POLYGON polygon, double* area)
{
    return geometry::polygonArea(polygon, area);
}

}  // namespace Tavrin
