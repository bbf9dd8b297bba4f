#include <Tavrin/Line.h>

#include "geometry/LineGeometry.h"
#include "geometry/PixelMath.h"
#include "graph/GlRender.h"

namespace Tavrin {

void Line::Draw(void* context, int width, int height, bool /*flag*/)
{
    m_wndWidth = width;
    m_wndHeight = height;
    if (m_isTraversePlane) {
        DrawForTraversePlane(context);
    } else {
        DrawByOpenGL(context);
    }
}

void Line::DrawByOpenGL(void* /*context*/)
{
    {
        gl::RenderScope scope(gl::Smoothing::Line);
        gl::setColor(outlineColor(), 255);
        glLineWidth(m_pdcLineOrRect ? 4.0f : 2.0f);
        if (geometry::allDrawable(m_points, 2)) {
            gl::emitSegment(m_points[0], m_points[1]);
        }
    }
    drawEndPointMarkers();
}

void Line::DrawForTraversePlane(void* /*context*/) { drawEndPointMarkers(); }

void Line::DrawByGdi(void* /*context*/) {}

void Line::drawEndPointMarkers()
{
    if (!isSelected() || !m_showPoint) {
        return;
    }
    for (unsigned int i = 0; i < 2; ++i) {
        if (geometry::isDrawable(m_points[i])) {
            drawHandle(m_points[i], m_selPointIndex == i + 1);
        }
    }
}

}  // namespace Tavrin
