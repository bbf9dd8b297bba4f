#include <Tavrin/ITCLine.h>

#include "figures/LabelBox.h"
#include "foundation/NewInstance.h"
#include "geometry/PixelMath.h"

#include <cstring>

namespace Tavrin {

namespace {

const unsigned int kGreenColors[4] = {0x00bd00, 0xd90db0, 0xffc000, 0xf47f4c};
const unsigned int kYellowColors[4] = {0xffff5b, 0xffff5b, 0xffc000, 0xf47f4c};

}  // namespace

ITCLine* ITCLine::NewInstance() { return newInstanceOf<ITCLine>(); }

ITCLine::ITCLine() : m_points{}, m_pointCount(0), m_line(), m_lineType(TAVRIN_ITC_LINE_GREEN) {}

ITCLine::~ITCLine() = default;

bool ITCLine::IsNull() { return m_line.IsNull(); }

tagTAVRIN_OBJ_STATUS ITCLine::GetObjStatus() { return m_line.GetObjStatus(); }

void ITCLine::SetObjStatus(tagTAVRIN_OBJ_STATUS status) { m_line.SetObjStatus(status); }

void ITCLine::Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) { m_line.Move(from, to); }

void ITCLine::MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) { m_line.MovePoint(from, to); }

bool ITCLine::CheckSelected(tagTAVRIN_POINT& p)
{
    Point cursor(&p);
    return m_line.CheckSelected(cursor);
}

unsigned int ITCLine::CheckPointSelected(tagTAVRIN_POINT& p) { return m_line.CheckPointSelected(p); }

void ITCLine::SetSelPointIndex(unsigned int index) { m_line.SetSelPointIndex(index); }

unsigned int ITCLine::GetSelPointIndex() { return m_line.GetSelPointIndex(); }

void ITCLine::Draw(void* context, int width, int height, bool /*flag*/)
{
    m_wndWidth = width;
    m_wndHeight = height;
    if (m_line.IsNull()) {
        return;
    }
    // A traffic line is always a plain segment, whatever type its line was given.
    m_line.SetLineType(TAVRIN_LINE_PLAIN);
    const unsigned int(&colors)[4] =
        m_lineType == TAVRIN_ITC_LINE_GREEN ? kGreenColors : kYellowColors;
    m_line.SetColors(colors[0], colors[1], colors[2], colors[3]);
    m_line.Draw(context, width, height, true);

    unsigned int lineCount = 0;
    if (!refreshFromLine(lineCount)) {
        return;
    }
    m_pointCount = lineCount;
    tagTAVRIN_POINT middle = figures::midpoint(m_points[0], m_points[1]);
    tagTAVRIN_VCA_RECT box{0.0f, 0.0f, 0.0f, 0.0f};
    GetDrawLabelRect(middle, box);
    figures::drawLabelBox(box, colors, m_line.GetObjStatus(), m_labelText, context, width, height);
}

bool ITCLine::refreshFromLine(unsigned int& lineCount)
{
    tagTAVRIN_POINT ends[2] = {};
    if (!m_line.GetPoints(ends, &lineCount) || lineCount > 2) {
        return false;
    }
    m_points[0] = ends[0];
    m_points[1] = ends[1];
    return true;
}

bool ITCLine::SetPoints(tagTAVRIN_POINT* points, unsigned int count)
{
    if (points == nullptr || count > kMaxVertices || !geometry::allFinite(points, count)) {
        return false;
    }
    std::memset(m_points, 0, sizeof m_points);
    std::memcpy(m_points, points, count * sizeof(tagTAVRIN_POINT));
    m_pointCount = count;
    return m_line.SetPoints(m_points, m_pointCount);
}

bool ITCLine::GetPoints(tagTAVRIN_POINT* points, unsigned int* count)
{
    if (points == nullptr || count == nullptr) {
        return false;
    }
    unsigned int lineCount = 0;
    if (!refreshFromLine(lineCount)) {
        return false;
    }
    // The count stored by the last SetPoints (or Draw) is reported, not the line's,
    // deliberately.
    std::memset(points, 0, kMaxVertices * sizeof(tagTAVRIN_POINT));
    std::memcpy(points, m_points, m_pointCount * sizeof(tagTAVRIN_POINT));
    *count = m_pointCount;
    return true;
}

void ITCLine::SetLineType(tagTAVRIN_ITC_LINE_TYPE type) { m_lineType = type; }

tagTAVRIN_ITC_LINE_TYPE ITCLine::GetLineType() { return m_lineType; }

}  // namespace Tavrin
