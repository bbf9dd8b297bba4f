#include <Tavrin/Line.h>

#include "geometry/LineGeometry.h"
#include "geometry/PixelMath.h"
#include "graph/GlRender.h"
#include "graph/LineEmit.h"

namespace Tavrin {

namespace {

const unsigned int kCaliGreen = 0x2EFA33u;
const unsigned int kCaliActiveHandle = 0x43B71Cu;
const unsigned int kTargetWidthColor = 0x00F0F0u;
// A calibration drag that leaves the segment longer than the line by more than this
// (normalised) puts it back on the line.
const double kCaliDragSlack = 1e-8;

bool isOrigin(const tagTAVRIN_POINT& p) { return p.x == 0.0f && p.y == 0.0f; }

}  // namespace

void Line::GetCaliPoints(tagTAVRIN_POINT* in, tagTAVRIN_POINT* out)
{
    if (in == nullptr || out == nullptr || !geometry::hasViewSize(m_wndWidth, m_wndHeight) ||
        !geometry::allFinite(in, 2)) {
        return;
    }
    const double lineLength = geometry::pixelLength(m_points[0], m_points[1], m_wndWidth, m_wndHeight);
    const double caliLength = geometry::pixelLength(in[0], in[1], m_wndWidth, m_wndHeight);
    if (caliLength > lineLength) {
        geometry::leftToRight(m_points[0], m_points[1], out);
        return;
    }
    if (caliLength == 0.0 && isOrigin(in[0]) && isOrigin(in[1])) {
        out[0] = m_points[0];
        out[1] = m_points[0];
        return;
    }
    geometry::segmentFromLeftEnd(m_points[0], m_points[1], lineLength, caliLength, out);
}

void Line::GetDrawCaliLine(tagTAVRIN_POINT* at, tagTAVRIN_LINE* out)
{
    if (at == nullptr || out == nullptr || !geometry::hasViewSize(m_wndWidth, m_wndHeight)) {
        return;
    }
    if (geometry::pixelLength(at[0], at[1], m_wndWidth, m_wndHeight) == 0.0 && isOrigin(at[0]) &&
        isOrigin(at[1])) {
        return;
    }
    geometry::calibrationLineAt(at[0], m_points[0], m_points[1], m_wndWidth, m_wndHeight, *out);
}

void Line::drawCalibration()
{
    gl::setColor(isSelectedOrHighlighted() ? kCaliGreen : m_colors[0], 255);

    tagTAVRIN_POINT placed[2] = {m_caliPoints[0], m_caliPoints[1]};
    GetCaliPoints(m_caliPoints, placed);
    m_caliPoints[0] = placed[0];
    m_caliPoints[1] = placed[1];
    // The calibration line goes through the right calibration point. GetDrawCaliLine also
    // reads the point after it, which for c1 is the (always zero) third calibration point.
    tagTAVRIN_LINE caliLine{};
    const int right = m_caliPoints[1].x >= m_caliPoints[0].x ? 1 : 0;
    GetDrawCaliLine(&m_caliPoints[right], &caliLine);
    m_caliLine[0] = caliLine.start;
    m_caliLine[1] = caliLine.end;
    keepCaliSegmentOnLine();

    gl::emitPoints(GL_LINES, m_caliLine, 2);
    if (m_pdcCaliShoulderLine) {
        gl::emitPoints(GL_LINES, m_caliPoints, 2);
    }
    DrawTargetWidthLine();
}

void Line::drawCaliPointMarker(void* context)
{
    const bool rightIsSecond = m_caliPoints[1].x >= m_caliPoints[0].x;
    const tagTAVRIN_POINT& at = rightIsSecond ? m_caliPoints[1] : m_caliPoints[0];
    if (!geometry::isDrawable(at)) {
        return;
    }
    const bool active = m_selCaliPointIndex == (rightIsSecond ? 2u : 1u);
    Point marker(&at);
    marker.SetColors(kCaliGreen, kCaliGreen, kCaliActiveHandle, m_colors[3]);
    marker.SetObjStatus(active ? TAVRIN_OBJ_STATUS_SELECTED : TAVRIN_OBJ_STATUS_HIGHLIGHTED);
    marker.Draw(context, m_wndWidth, m_wndHeight, true);
}

void Line::DrawTargetWidthLine()
{
    for (int i = 0; i < 16; ++i) {
        const float width = m_targetWidthLine[i];
        tagTAVRIN_POINT segment[2];
        if (width == 0.0f ||
            !geometry::targetWidthSegment(m_points[0], m_points[1], m_arrowPoints[1], i, width,
                                          m_wndWidth, m_wndHeight, segment) ||
            !geometry::allDrawable(segment, 2)) {
            continue;
        }
        gl::lineWidth(2.0f);
        gl::setColor(kTargetWidthColor, 255);
        gl::emitPoints(GL_LINES, segment, 2);
    }
}

bool Line::IsNearCaliPoint(Point& p)
{
    const tagTAVRIN_POINT cursor{p.Rx(), p.Ry()};
    return geometry::segmentHit(m_caliLine[0], m_caliLine[1], cursor, m_wndWidth, m_wndHeight);
}

unsigned int Line::CheckCaliPointSelected(tagTAVRIN_POINT& p)
{
    if (!m_pdcLineCali || (isOrigin(m_caliLine[0]) && isOrigin(m_caliLine[1]))) {
        return 0;
    }
    Point cursor(&p);
    if (!IsNearCaliPoint(cursor)) {
        return 0;
    }
    // Always the right calibration point, the one that carries the calibration line.
    if (m_caliPoints[0].x == m_caliPoints[1].x) {
        return m_points[1].x > m_points[0].x ? 2 : 1;
    }
    return m_caliPoints[1].x >= m_caliPoints[0].x ? 2 : 1;
}

bool Line::MoveCaliPoints(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to)
{
    if (m_selCaliPointIndex != 1 && m_selCaliPointIndex != 2) {
        return false;
    }
    // The cursor positions are projected onto the line; the point moves by the difference.
    const tagTAVRIN_POINT fromFoot = geometry::footOnLine(m_points[0], m_points[1], from);
    const tagTAVRIN_POINT toFoot = geometry::footOnLine(m_points[0], m_points[1], to);
    float dx = 0.0f;
    float dy = 0.0f;
    if (!geometry::dragDelta(fromFoot, toFoot, dx, dy)) {
        return false;
    }
    tagTAVRIN_POINT& c0 = m_caliPoints[0];
    tagTAVRIN_POINT& c1 = m_caliPoints[1];
    if (m_selCaliPointIndex == 2) {
        if (!geometry::insidePicture(c1.x + dx, c1.y + dy)) {
            return false;
        }
        c1.x += dx;
        c1.y += dy;
        // The dragged point cannot pass the anchored one.
        if (c0.x >= c1.x) {
            c1 = c0;
        }
    } else {
        if (!geometry::insidePicture(c0.x + dx, c0.y + dy)) {
            return false;
        }
        c0.x += dx;
        c0.y += dy;
        // The extra test on x1 belongs to this branch only, deliberately.
        if (c1.x >= c0.x && c1.x != m_points[0].x) {
            c0 = c1;
        }
    }
    const float lineLength = GetPointLength(m_points[0], m_points[1]);
    const float caliLength = GetPointLength(c0, c1);
    if (!(static_cast<double>(caliLength - lineLength) > kCaliDragSlack) &&
        caliLength != lineLength) {
        return true;
    }
    geometry::leftToRight(m_points[0], m_points[1], m_caliPoints);
    return false;
}

}  // namespace Tavrin
