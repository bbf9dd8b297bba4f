#include <Tavrin/ItsCali.h>

#include "cali/CaliDraw.h"
#include "figures/LabelBox.h"
#include "figures/Region.h"
#include "figures/VertexLimits.h"
#include "foundation/NewInstance.h"
#include "geometry/PixelMath.h"

#include <cstring>

namespace Tavrin {

namespace {

const unsigned int kCapacity = figures::kFigureVertices;
const std::size_t kTextCapacity = 16;
const figures::Palette kItsPalette = figures::kRulePalette;

/// Replaces `target` (17 bytes) with the first min(16, strlen(text)) characters of
/// `text`. The number copied comes from the string itself, not from `length`, which only
/// guards against 0; the 17th byte stays zero.
bool copyEdgeText(char (&target)[17], const char* text, unsigned int length)
{
    if (text == nullptr || length == 0) {
        return false;
    }
    std::memset(target, 0, sizeof target);
    const std::size_t n = strnlen(text, kTextCapacity);
    std::memcpy(target, text, n);
    return true;
}

}  // namespace

ItsCali::ItsCali() : m_points{}, m_pointCount(0), m_widthText{}, m_heightText{} {}

ItsCali::~ItsCali() = default;

ItsCali* ItsCali::NewInstance() { return newInstanceOf<ItsCali>(); }

bool ItsCali::SetPoints(tagTAVRIN_POINT* points, unsigned int count)
{
    if (points == nullptr || count > kCapacity || !geometry::allFinite(points, count)) {
        return false;
    }
    std::memset(m_points, 0, sizeof m_points);
    std::memcpy(m_points, points, count * sizeof(tagTAVRIN_POINT));
    m_pointCount = count;
    return m_polygon.SetPoints(m_points, count);
}

bool ItsCali::GetPoints(tagTAVRIN_POINT* points, unsigned int* count)
{
    if (points == nullptr || count == nullptr || !readPolygon()) {
        return false;
    }
    std::memset(points, 0, kCapacity * sizeof(tagTAVRIN_POINT));
    std::memcpy(points, m_points, m_pointCount * sizeof(tagTAVRIN_POINT));
    *count = m_pointCount;
    return true;
}

bool ItsCali::IsNull() { return m_polygon.IsNull(); }

tagTAVRIN_OBJ_STATUS ItsCali::GetObjStatus() { return m_polygon.GetObjStatus(); }

void ItsCali::SetObjStatus(tagTAVRIN_OBJ_STATUS status) { m_polygon.SetObjStatus(status); }

void ItsCali::Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) { m_polygon.Move(from, to); }

void ItsCali::MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) { m_polygon.MovePoint(from, to); }

bool ItsCali::CheckSelected(tagTAVRIN_POINT& p)
{
    Point cursor(&p);
    return m_polygon.CheckSelected(cursor);
}

unsigned int ItsCali::CheckPointSelected(tagTAVRIN_POINT& p) { return m_polygon.CheckPointSelected(p); }

void ItsCali::SetSelPointIndex(unsigned int index) { m_polygon.SetSelPointIndex(index); }

unsigned int ItsCali::GetSelPointIndex() { return m_polygon.GetSelPointIndex(); }

void ItsCali::SetClosed(bool closed)
{
    m_closed = closed;
    m_polygon.SetClosed(closed);
}

bool ItsCali::GetClosed()
{
    m_closed = m_polygon.GetClosed();
    return m_closed;
}

bool ItsCali::SetWidthLabelText(char* text, unsigned int length)
{
    return copyEdgeText(m_widthText, text, length);
}

bool ItsCali::SetHeightlabelText(char* text, unsigned int length)
{
    return copyEdgeText(m_heightText, text, length);
}

unsigned int ItsCali::GetMinYPoint(tagTAVRIN_POINT* points, unsigned int count)
{
    unsigned int top = 0;
    if (points == nullptr) {
        return top;
    }
    for (unsigned int i = 1; i < count; ++i) {
        if (points[i].y < points[top].y) {
            top = i;
        }
    }
    return top;
}

bool ItsCali::readPolygon() { return figures::refreshRegionCopy({m_points, kCapacity, &m_pointCount}, m_polygon); }

void ItsCali::Draw(void* context, int width, int height, bool /*flag*/)
{
    m_wndWidth = width;
    m_wndHeight = height;
    kItsPalette.applyTo(m_polygon);
    m_polygon.Draw(context, width, height, true);

    tagTAVRIN_VCA_RECT box = {};  // reused, not cleared again, for both labels
    if (!readPolygon()) {
        return;
    }
    const unsigned int count = m_pointCount;
    const unsigned int top = GetMinYPoint(m_points, count);
    if (static_cast<int>(top) < 0 || top >= count) {
        return;
    }
    const unsigned int prev = (top - 1 + count) % count;
    const unsigned int next = (top + 1 + count) % count;
    // The width text goes on the edge whose far end is higher on the screen.
    const bool nextIsHigher = m_points[next].y <= m_points[prev].y;
    const unsigned int widthEnd = nextIsHigher ? next : prev;
    const unsigned int heightEnd = nextIsHigher ? prev : next;
    const tagTAVRIN_OBJ_STATUS status = m_polygon.GetObjStatus();

    tagTAVRIN_POINT widthAnchor = figures::midpoint(m_points[top], m_points[widthEnd]);
    GetDrawLabelRect(widthAnchor, box);
    figures::drawLabelBox(box, kItsPalette.colors, status, m_widthText, context, width, height);

    tagTAVRIN_POINT heightAnchor = figures::midpoint(m_points[top], m_points[heightEnd]);
    GetDrawLabelRect(heightAnchor, box);
    figures::drawLabelBox(box, kItsPalette.colors, status, m_heightText, context, width, height);
}

}  // namespace Tavrin
