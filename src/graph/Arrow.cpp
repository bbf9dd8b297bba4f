#include <Tavrin/Arrow.h>

#include "geometry/ArrowGeometry.h"
#include "graph/GlRender.h"
#include "graph/LineEmit.h"

namespace Tavrin {

Arrow::Arrow() = default;

Arrow::Arrow(tagTAVRIN_POINT* points, unsigned int count) : Line(points, count) {}

Arrow::~Arrow() = default;

void Arrow::Draw(void* context, int width, int height, bool /*flag*/)
{
    m_wndWidth = width;
    m_wndHeight = height;
    DrawByOpenGL(context);
}

void Arrow::DrawByOpenGL(void* /*context*/)
{
    geometry::PixelCorner corners[8];
    if (!geometry::blockArrowCorners(m_points[0], m_points[1], m_wndWidth, m_wndHeight, corners)) {
        return;
    }
    gl::RenderScope scope(gl::Smoothing::LineThenPolygon, m_wndWidth, m_wndHeight);
    gl::setColor(outlineColor(), 255);
    gl::lineWidth(2.0f);
    gl::emitBlockArrowLoop(corners, m_wndWidth, m_wndHeight);
}

void Arrow::DrawByGdi(void* /*context*/) {}

}  // namespace Tavrin
