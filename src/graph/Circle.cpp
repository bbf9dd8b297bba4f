#include <Tavrin/Circle.h>

#include "geometry/PixelMath.h"
#include "graph/GlRender.h"

#include <cmath>

namespace Tavrin {

namespace {

const int kDiscVertices = 1024;
const float kDiscStep = 0.0061359233f;  // 2 pi / 1024 as a single-precision constant

// The cosine and sine of every disc angle, computed once with the very calls a disc
// would make for itself: each disc then costs its vertices and no trigonometry.
struct DiscAngles {
    float cosine[kDiscVertices];
    float sine[kDiscVertices];

    DiscAngles()
    {
        for (int i = 0; i < kDiscVertices; ++i) {
            const float a = static_cast<float>(i) * kDiscStep;
            cosine[i] = std::cos(a);
            sine[i] = std::sin(a);
        }
    }
};

const DiscAngles& discAngles()
{
    static const DiscAngles angles;
    return angles;
}

}  // namespace

Circle::Circle() : m_radius(0.0f) {}

Circle::Circle(const tagTAVRIN_POINT* p, unsigned int /*count*/) : Point(p), m_radius(0.0f) {}

Circle::~Circle() = default;

bool Circle::IsNearPoint(Point& p)
{
    const float w = static_cast<float>(m_wndWidth);
    const float h = static_cast<float>(m_wndHeight);
    const float dx = m_point.x - p.Rx();
    const float dy = m_point.y - p.Ry();
    const float d = std::sqrt((dx * w) * (dx * w) + (dy * h) * (dy * h));
    return m_radius * w > d;
}

bool Circle::Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) { return Point::Move(from, to); }

bool Circle::CheckSelected(Point& p)
{
    if (IsNull()) {
        return false;
    }
    return IsNearPoint(p);
}

void Circle::SetRadius(unsigned int pixels)
{
    if (m_wndWidth <= 0) {
        return;
    }
    m_radius = static_cast<float>(pixels) / static_cast<float>(m_wndWidth);
}

unsigned int Circle::Radius()
{
    return geometry::truncToUnsigned(m_radius * static_cast<float>(m_wndWidth));
}

void Circle::Draw(void* context, int width, int height, bool flag)
{
    Point::Draw(context, width, height, flag);
    if (!geometry::hasViewSize(m_wndWidth, m_wndHeight)) {
        return;
    }
    gl::RenderScope scope(gl::Smoothing::Polygon, m_wndWidth, m_wndHeight);
    gl::setColor(markerColor(), 200);
    // The radius terms are not doubled like the centre: on screen the disc's radius is
    // half the hit-test radius, and W/H keeps it round in pixels.
    const float rx = m_radius;
    const float ry = m_radius * static_cast<float>(m_wndWidth) / static_cast<float>(m_wndHeight);
    const geometry::GlPoint centre = geometry::glPointOf(m_point);
    // Every vertex lies within (|cx| + |rx|, |cy| + |ry|) of the origin: when that is
    // finite so are they all; otherwise (a centre too far out to map, a view far taller
    // than wide) the disc is left out.
    if (std::isfinite(std::fabs(centre.x) + std::fabs(rx)) &&
        std::isfinite(std::fabs(centre.y) + std::fabs(ry))) {
        const DiscAngles& angles = discAngles();
        geometry::GlPoint disc[kDiscVertices];
        for (int i = 0; i < kDiscVertices; ++i) {
            disc[i] = geometry::GlPoint{rx * angles.cosine[i] + centre.x, ry * angles.sine[i] + centre.y};
        }
        gl::emitGlPoints(GL_POLYGON, disc, kDiscVertices);
    }
    gl::setColor(markerColor(), 255);
}

}  // namespace Tavrin
