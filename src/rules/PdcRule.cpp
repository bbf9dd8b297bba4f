#include <Tavrin/PdcRule.h>

#include "figures/Palette.h"
#include "figures/VertexLimits.h"
#include "foundation/NewInstance.h"
#include "geometry/MarkerTextBox.h"

namespace Tavrin {

namespace {

const unsigned int kMaxVertices = figures::kFigureVertices;
const unsigned int kNormalColor = figures::kRuleColor;
const unsigned int kSelectedColor = figures::kRuleSelectedColor;
const unsigned int kHandleColor = figures::kHandleColor;
const unsigned int kHandleExtraColor = figures::kActiveHandleColor;

void setRuleColors(GraphMeta& figure)
{
    figure.SetColors(kNormalColor, kSelectedColor, kHandleColor, kHandleExtraColor);
}

}  // namespace

PdcRule* PdcRule::NewInstance() { return newInstanceOf<PdcRule>(); }

PdcRule::PdcRule()
    : m_arrow(), m_line(), m_polygon(), m_singlePoint(), m_textLabel(), m_lineMode(false)
{
}

PdcRule::~PdcRule() = default;

GraphMeta& PdcRule::figure()
{
    if (m_lineMode) {
        return m_line;
    }
    return m_polygon;
}

bool PdcRule::IsNull()
{
    if (m_lineMode) {
        return m_line.IsNull() && m_singlePoint.IsNull();
    }
    return m_polygon.IsNull();
}

tagTAVRIN_OBJ_STATUS PdcRule::GetObjStatus() { return figure().GetObjStatus(); }

void PdcRule::SetObjStatus(tagTAVRIN_OBJ_STATUS status)
{
    figure().SetObjStatus(status);
    m_arrow.SetObjStatus(status);
}

void PdcRule::Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to)
{
    if (m_lineMode) {
        m_line.Move(from, to);
        m_arrow.Move(from, to);
    } else if (m_polygon.Move(from, to)) {
        m_arrow.Move(from, to);
    }
}

void PdcRule::MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to)
{
    if (m_lineMode) {
        m_line.MovePoint(from, to);
    } else {
        m_polygon.MovePoint(from, to);
    }
}

bool PdcRule::CheckSelected(tagTAVRIN_POINT& p)
{
    Point cursor(&p);
    if (m_lineMode) {
        return m_line.CheckSelected(cursor);
    }
    return m_polygon.CheckSelected(cursor);
}

unsigned int PdcRule::CheckPointSelected(tagTAVRIN_POINT& p)
{
    if (m_lineMode) {
        return m_line.CheckPointSelected(p);
    }
    return m_polygon.CheckPointSelected(p);
}

void PdcRule::SetSelPointIndex(unsigned int index) { figure().SetSelPointIndex(index); }

unsigned int PdcRule::GetSelPointIndex() { return figure().GetSelPointIndex(); }

void PdcRule::SetClosed(bool closed)
{
    m_closed = closed;
    figure().SetClosed(closed);
}

bool PdcRule::GetClosed()
{
    m_closed = figure().GetClosed();
    return m_closed;
}

void PdcRule::Draw(void* context, int width, int height, bool /*flag*/)
{
    m_wndWidth = width;
    m_wndHeight = height;
    if (m_lineMode) {
        if (!m_line.IsNull()) {
            m_line.SetLineType(TAVRIN_LINE_PLAIN);
            setRuleColors(m_line);
            m_line.Draw(context, width, height, true);
        }
    } else {
        setRuleColors(m_polygon);
        m_polygon.Draw(context, width, height, true);
        setRuleColors(m_arrow);
        m_arrow.Draw(context, width, height, true);
    }
    drawSinglePoint(context, width, height);
}

void PdcRule::drawSinglePoint(void* context, int width, int height)
{
    // The marker always has the highlighted look, whatever the rule's status.
    m_singlePoint.SetObjStatus(TAVRIN_OBJ_STATUS_HIGHLIGHTED);
    if (!m_singlePoint.IsNull()) {
        m_singlePoint.Draw(context, width, height, true);
    }
    // The text box is placed even without a point (from the origin then); the label
    // keeps the colours and status it was built with.
    const tagTAVRIN_POINT at = {m_singlePoint.Rx(), m_singlePoint.Ry()};
    tagTAVRIN_POINT first = {};
    tagTAVRIN_POINT second = {};
    geometry::markerTextBox(at, first, second);
    m_textLabel.SetDiagonal(first, second);
    m_textLabel.Draw(context, width, height, true);
}

bool PdcRule::SetPoints(tagTAVRIN_POINT* points, unsigned int count)
{
    if (points == nullptr || count > kMaxVertices) {
        return false;
    }
    if (m_lineMode) {
        return m_line.SetPoints(points, count);
    }
    return m_polygon.SetPoints(points, count);
}

bool PdcRule::GetPoints(tagTAVRIN_POINT* points, unsigned int* count)
{
    if (points == nullptr || count == nullptr) {
        return false;
    }
    if (m_lineMode) {
        return m_line.GetPoints(points, count);
    }
    return m_polygon.GetPoints(points, count);
}

void PdcRule::SetVcaPDCLineOrRect(bool lineMode)
{
    m_lineMode = lineMode;
    m_line.SetVcaPDCLineOrRect(lineMode);
}

void PdcRule::SetVcaPDCLineCali(bool on) { m_line.SetVcaPDCLineCali(on); }

bool PdcRule::SetPDCCaliPoint(tagTAVRIN_POINT* points, unsigned int /*count*/)
{
    if (points == nullptr) {
        return false;
    }
    // Exactly two calibration points are taken, whatever the count says; deliberately.
    return m_line.SetPDCCaliPoints(points, 2);
}

bool PdcRule::GetPDCCaliPoint(tagTAVRIN_POINT* points, unsigned int* count)
{
    if (points == nullptr || count == nullptr) {
        return false;
    }
    return m_line.GetPDCCaliPoints(points, count);
}

bool PdcRule::MoveCaliPoints(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to)
{
    return m_line.MoveCaliPoints(from, to);
}

unsigned int PdcRule::CheckCaliPointSelected(tagTAVRIN_POINT& p)
{
    return m_line.CheckCaliPointSelected(p);
}

bool PdcRule::SetArrowPoints(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to)
{
    if (m_lineMode) {
        return m_line.SetArrowPoints(from, to);
    }
    tagTAVRIN_POINT ends[2] = {from, to};
    return m_arrow.SetPoints(ends, 2);
}

bool PdcRule::GetArrowPoints(tagTAVRIN_POINT* from, tagTAVRIN_POINT* to)
{
    if (from == nullptr || to == nullptr) {
        return false;
    }
    if (m_lineMode) {
        return m_line.GetArrowPoints(from, to);
    }
    tagTAVRIN_POINT ends[2] = {};
    unsigned int count = 0;
    if (!m_arrow.GetPoints(ends, &count)) {
        return false;
    }
    *from = ends[0];
    *to = ends[1];
    return true;
}

void PdcRule::SetVcaPDCCaliShoulderLine(bool on) { m_line.SetVcaPDCCaliShoulderLine(on); }

void PdcRule::SetSelCaliPointIndex(unsigned int index) { m_line.SetSelCaliPointIndex(index); }

bool PdcRule::SetTargetWidthLine(float* values)
{
    if (values == nullptr) {
        return false;
    }
    return m_line.SetTargetWidthLine(values);
}

bool PdcRule::SetSinglePoints(tagTAVRIN_POINT* points, unsigned int /*count*/)
{
    // One point is taken, whatever the count says; deliberately.
    return m_singlePoint.SetPoints(points, 1);
}

bool PdcRule::GetSinglePoints(tagTAVRIN_POINT* points, unsigned int* count)
{
    return m_singlePoint.GetPoints(points, count);
}

bool PdcRule::SetText(char* text) { return m_textLabel.SetText(text); }

}  // namespace Tavrin
