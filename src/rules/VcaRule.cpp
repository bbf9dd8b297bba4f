#include <Tavrin/VcaRule.h>

#include "figures/Palette.h"
#include "foundation/NewInstance.h"
#include "geometry/PixelMath.h"

#include <cstring>

namespace Tavrin {

namespace {

const unsigned int kNormalColor = figures::kRuleColor;
const unsigned int kSelectedColor = figures::kRuleSelectedColor;
const unsigned int kHandleColor = figures::kHandleColor;
const unsigned int kHandleExtraColor = figures::kActiveHandleColor;

// Room for everything a primitive may write back: a polygon's full vertex store.
const unsigned int kScratchVertices = 20;

}  // namespace

template <class F>
decltype(auto) VcaRule::withActiveFigure(F&& f)
{
    if (isLine()) {
        return f(m_line);
    }
    if (isBrokenLine()) {
        return f(m_brokenLine);
    }
    return f(m_polygon);
}

VcaRule* VcaRule::NewInstance() { return newInstanceOf<VcaRule>(); }

VcaRule::VcaRule()
    : m_ruleType(TAVRIN_RULE_REGION), m_arrowDirection(TAVRIN_ARROW_BOTH), m_line(),
      m_brokenLine(), m_polygon(), m_traversePlane(false), m_points{}, m_pointCount(0),
      m_normalColor(kNormalColor), m_selectedColor(kSelectedColor), m_lineType(TAVRIN_LINE_ARROW)
{
}

VcaRule::~VcaRule() = default;

GraphMeta& VcaRule::activeFigure()
{
    return withActiveFigure([](auto& figure) -> GraphMeta& { return figure; });
}

bool VcaRule::IsNull() { return activeFigure().IsNull(); }

tagTAVRIN_OBJ_STATUS VcaRule::GetObjStatus() { return activeFigure().GetObjStatus(); }

void VcaRule::SetObjStatus(tagTAVRIN_OBJ_STATUS status) { activeFigure().SetObjStatus(status); }

void VcaRule::Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to)
{
    withActiveFigure([&](auto& figure) { figure.Move(from, to); });
}

void VcaRule::MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to)
{
    withActiveFigure([&](auto& figure) { figure.MovePoint(from, to); });
}

bool VcaRule::CheckSelected(tagTAVRIN_POINT& p)
{
    Point cursor(&p);
    return withActiveFigure([&](auto& figure) { return figure.CheckSelected(cursor); });
}

unsigned int VcaRule::CheckPointSelected(tagTAVRIN_POINT& p)
{
    return withActiveFigure([&](auto& figure) { return figure.CheckPointSelected(p); });
}

void VcaRule::Draw(void* context, int width, int height, bool /*flag*/)
{
    m_wndWidth = width;
    m_wndHeight = height;
    if (isLine()) {
        m_line.SetLineType(m_lineType);
        m_line.SetColors(m_normalColor, m_selectedColor, kHandleColor, kHandleExtraColor);
        m_line.Draw(context, width, height, true);
    } else if (isBrokenLine()) {
        // The broken line keeps its own fixed colours, and receives the traverse-plane
        // flag only after drawing, so a change shows one frame late; both deliberately.
        m_brokenLine.SetColors(kNormalColor, kSelectedColor, kHandleColor, kHandleExtraColor);
        m_brokenLine.Draw(context, width, height, true);
        m_brokenLine.SetIsTraversePlane(m_traversePlane);
    } else {
        m_polygon.SetColors(m_normalColor, m_selectedColor, kHandleColor, kHandleExtraColor);
        m_polygon.Draw(context, width, height, true);
    }
}

void VcaRule::SetSelPointIndex(unsigned int index) { activeFigure().SetSelPointIndex(index); }

unsigned int VcaRule::GetSelPointIndex() { return activeFigure().GetSelPointIndex(); }

void VcaRule::SetClosed(bool closed)
{
    m_closed = closed;
    activeFigure().SetClosed(closed);
}

bool VcaRule::GetClosed()
{
    m_closed = activeFigure().GetClosed();
    return m_closed;
}

void VcaRule::SetIsTraversePlane(bool on) { m_traversePlane = on; }

bool VcaRule::SetPoints(tagTAVRIN_POINT* points, unsigned int count)
{
    if (points == nullptr || count > kMaxVertices || !geometry::allFinite(points, count)) {
        return false;
    }
    std::memset(m_points, 0, sizeof m_points);
    std::memcpy(m_points, points, count * sizeof(tagTAVRIN_POINT));
    m_pointCount = count;
    return withActiveFigure(
        [&](auto& figure) { return figure.SetPoints(m_points, m_pointCount); });
}

bool VcaRule::GetPoints(tagTAVRIN_POINT* points, unsigned int* count)
{
    if (points == nullptr || count == nullptr) {
        return false;
    }
    tagTAVRIN_POINT read[kScratchVertices] = {};
    unsigned int readCount = 0;
    const bool ok =
        withActiveFigure([&](auto& figure) { return figure.GetPoints(read, &readCount); });
    // The primitives only ever receive the rule's own copy, so they never hold more
    // than it does; a larger count would be a broken primitive and is refused.
    if (!ok || readCount > kMaxVertices) {
        return false;
    }
    std::memcpy(m_points, read, readCount * sizeof(tagTAVRIN_POINT));
    m_pointCount = readCount;
    // All ten entries: past the count they hold what an earlier, longer set left there.
    std::memcpy(points, m_points, sizeof m_points);
    *count = m_pointCount;
    return true;
}

void VcaRule::SetColors(unsigned int normal, unsigned int selected)
{
    m_normalColor = normal;
    m_selectedColor = selected;
}

void VcaRule::SetLineType(tagTAVRIN_LINE_TYPE type) { m_lineType = type; }

void VcaRule::SetRuleType(tagTAVRIN_RULE_TYPE type)
{
    if (type != m_ruleType) {
        bool accepted = false;
        if (type == TAVRIN_RULE_LINE) {
            accepted = m_line.SetPoints(m_points, m_pointCount);
        } else if (type == TAVRIN_RULE_BROKEN_LINE) {
            accepted = m_brokenLine.SetPoints(m_points, m_pointCount);
        } else {
            accepted = m_polygon.SetPoints(m_points, m_pointCount);
        }
        if (!accepted) {
            return;
        }
    }
    m_ruleType = type;
}

tagTAVRIN_RULE_TYPE VcaRule::GetRuleType() { return m_ruleType; }

void VcaRule::SetArrowDirection(TAVRIN_ARROW_TYPE direction)
{
    m_arrowDirection = direction;
    // Every type but the line hands the direction to the broken line, the polygon type
    // included: the broken line then already has it when the rule is switched to it.
    if (isLine()) {
        m_line.SetArrowDirection(direction);
    } else {
        m_brokenLine.SetArrowDirection(direction);
    }
}

TAVRIN_ARROW_TYPE VcaRule::GetArrowDirection() { return m_arrowDirection; }

}  // namespace Tavrin
