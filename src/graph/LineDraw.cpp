#include <Tavrin/Line.h>

#include "geometry/ArrowGeometry.h"
#include "geometry/LineGeometry.h"
#include "geometry/PixelMath.h"
#include "graph/GlRender.h"
#include "graph/LineEmit.h"

#include <algorithm>

namespace Tavrin {

namespace {

// Room for the largest arrow-bar outline (18 points).
const int kOutlineCapacity = 32;

}  // namespace

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

void Line::DrawByOpenGL(void* context)
{
    {
        gl::RenderScope scope(gl::Smoothing::Line, m_wndWidth, m_wndHeight);
        gl::setColor(outlineColor(), 255);
        // A fixed width: the primitive's line width is deliberately not used here.
        gl::lineWidth(m_pdcLineOrRect ? 4.0f : 2.0f);
        if (m_lineType == TAVRIN_LINE_ARROW) {
            DrawArrowByOpenGL(context, m_points[0], m_points[1]);
        } else {
            gl::emitPoints(GL_LINES, m_points, 2);
        }
        if (m_pdcLineOrRect && isSelected()) {
            if (m_pdcLineCali) {
                drawCalibration();
            }
            DrawDirectionArrow();
            if (m_pdcLineCali) {
                drawCaliPointMarker(context);
            }
        }
    }
    drawEndPointMarkers();
}

void Line::DrawByGdi(void* /*context*/) {}

void Line::GetArrowPoint(float length, tagTAVRIN_POINT* points, int& count, tagTAVRIN_POINT& markA,
                         tagTAVRIN_POINT& markB)
{
    geometry::arrowBarOutline(length, m_arrowType, m_wndWidth, m_wndHeight, points, count, markA,
                              markB);
}

void Line::DrawArrowByOpenGL(void* /*context*/, tagTAVRIN_POINT& a, tagTAVRIN_POINT& b)
{
    geometry::LocalFrame frame{};
    float length = 0.0f;
    if (!geometry::hasViewSize(m_wndWidth, m_wndHeight) ||
        !geometry::localFrameOf(a, b, frame, length)) {
        return;
    }
    tagTAVRIN_POINT outline[kOutlineCapacity];
    int count = kOutlineCapacity;
    tagTAVRIN_POINT markA{0.0f, 0.0f};
    tagTAVRIN_POINT markB{0.0f, 0.0f};
    GetArrowPoint(length, outline, count, markA, markB);
    for (int i = 0; i < count; ++i) {
        outline[i] = geometry::turnAndPlace(outline[i], frame);
    }
    markA = geometry::turnAndPlace(markA, frame);
    markB = geometry::turnAndPlace(markB, frame);
    if (!geometry::allDrawable(outline, count)) {
        return;
    }

    gl::emitPoints(GL_LINE_LOOP, outline, static_cast<std::size_t>(count));
    if (m_objStatus == TAVRIN_OBJ_STATUS_NORMAL || m_objStatus == TAVRIN_OBJ_STATUS_HIGHLIGHTED) {
        return;
    }
    if (geometry::hasArrowHead(m_arrowType) && geometry::isDrawable(markA) &&
        geometry::isDrawable(markB)) {
        gl::drawSideMarks(markA, markB);
    }
    fillArrowBar(outline, count);
}

void Line::fillArrowBar(const tagTAVRIN_POINT* outline, int count)
{
    gl::setColor(outlineColor(), 40);
    tagTAVRIN_POLYGON polygon{};
    polygon.count = count;
    std::copy(outline, outline + count, polygon.points);
    const int triangles = fillTriangles(polygon, m_fillCut);
    // Only a complete triangulation is filled.
    if (triangles != count - 2) {
        return;
    }
    gl::emitTriangleFill(polygon.points, m_fillCut.corners, triangles, false);
}

void Line::DrawDirectionArrow()
{
    if (!geometry::hasViewSize(m_wndWidth, m_wndHeight)) {
        return;
    }
    // The arrow moves to the line's middle, keeping its vector ...
    const tagTAVRIN_POINT start{(m_points[0].x + m_points[1].x) / 2.0f,
                                (m_points[0].y + m_points[1].y) / 2.0f};
    const float shiftX = start.x - m_arrowPoints[0].x;
    const float shiftY = start.y - m_arrowPoints[0].y;
    const tagTAVRIN_POINT shiftedEnd{m_arrowPoints[1].x + shiftX, m_arrowPoints[1].y + shiftY};
    // ... and is stood up across the line, 0.1 long, on the side it pointed to.
    tagTAVRIN_POINT end{};
    if (!geometry::directionArrowEnd(m_points[0], m_points[1], start, shiftedEnd, m_wndWidth,
                                     m_wndHeight, end)) {
        return;
    }
    m_arrowPoints[0] = start;
    m_arrowPoints[1] = end;

    geometry::PixelCorner corners[8];
    if (!geometry::blockArrowCorners(start, end, m_wndWidth, m_wndHeight, corners)) {
        return;
    }
    gl::setColor(outlineColor(), 255);
    gl::lineWidth(2.0f);
    gl::emitBlockArrowLoop(corners, m_wndWidth, m_wndHeight);
}

void Line::DrawArrow(tagTAVRIN_POINT& a, tagTAVRIN_POINT& b, tagTAVRIN_POINT* out)
{
    geometry::PixelCorner corners[8];
    if (out == nullptr ||
        !geometry::blockArrowCorners(a, b, m_wndWidth, m_wndHeight, corners)) {
        return;
    }
    for (int i = 0; i < 8; ++i) {
        out[i] = geometry::cornerToPicture(corners[i], m_wndWidth, m_wndHeight);
    }
}

void Line::DrawForTraversePlane(void* /*context*/)
{
    {
        gl::RenderScope scope(gl::Smoothing::Line, m_wndWidth, m_wndHeight);
        gl::setColor(outlineColor(), 255);
        gl::lineWidth(2.0f);
        drawTraversePlaneFigure();
    }
    drawEndPointMarkers();
}

void Line::drawTraversePlaneFigure()
{
    geometry::TraversePlane plane{};
    if (!geometry::traversePlaneOf(m_points[0], m_points[1], m_wndWidth, m_wndHeight, plane)) {
        return;
    }
    // Corners that DrawArrow cannot compute stay zero and are drawn as they are.
    tagTAVRIN_POINT arrow1[8] = {};
    tagTAVRIN_POINT arrow2[8] = {};
    DrawArrow(plane.tail1, plane.tip1, arrow1);
    DrawArrow(plane.tail2, plane.tip2, arrow2);
    tagTAVRIN_POINT markA{};
    tagTAVRIN_POINT markB{};
    const bool marked = geometry::traverseMarks(plane, m_arrowType, m_wndHeight, markA, markB);

    gl::emitPoints(GL_LINE_LOOP, plane.plane, 4);
    if (m_arrowType == TAVRIN_ARROW_BOTH || m_arrowType == TAVRIN_ARROW_POSITIVE) {
        gl::emitPoints(GL_LINE_LOOP, arrow1, 8);
    }
    if (m_arrowType == TAVRIN_ARROW_BOTH || m_arrowType == TAVRIN_ARROW_NEGATIVE) {
        gl::emitPoints(GL_LINE_LOOP, arrow2, 8);
    }
    if (marked && !(m_objStatus == TAVRIN_OBJ_STATUS_NORMAL ||
                    m_objStatus == TAVRIN_OBJ_STATUS_HIGHLIGHTED) &&
        geometry::isDrawable(markA) && geometry::isDrawable(markB)) {
        gl::drawSideMarks(markA, markB);
    }
}

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
