#include <Tavrin/Lane.h>

#include "figures/LabelBox.h"
#include "figures/VertexLimits.h"
#include "foundation/NewInstance.h"

namespace Tavrin {

namespace {

const unsigned int kMaxVertices = figures::kFigureVertices;
const unsigned int kLaneColors[4] = {0xffc021, 0x00f0f0, 0xffc000, 0xf47f4c};

}  // namespace

Lane* Lane::NewInstance() { return newInstanceOf<Lane>(); }

Lane::Lane() : m_arrow(), m_polygon() {}

Lane::~Lane() = default;

bool Lane::IsNull() { return m_polygon.IsNull(); }

tagTAVRIN_OBJ_STATUS Lane::GetObjStatus() { return m_polygon.GetObjStatus(); }

void Lane::SetObjStatus(tagTAVRIN_OBJ_STATUS status)
{
    m_polygon.SetObjStatus(status);
    m_arrow.SetObjStatus(status);
}

void Lane::Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to)
{
    if (m_polygon.Move(from, to)) {
        m_arrow.Move(from, to);
    }
}

void Lane::MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) { m_polygon.MovePoint(from, to); }

bool Lane::CheckSelected(tagTAVRIN_POINT& p)
{
    Point cursor(&p);
    return m_polygon.CheckSelected(cursor);
}

unsigned int Lane::CheckPointSelected(tagTAVRIN_POINT& p) { return m_polygon.CheckPointSelected(p); }

void Lane::SetSelPointIndex(unsigned int index) { m_polygon.SetSelPointIndex(index); }

unsigned int Lane::GetSelPointIndex() { return m_polygon.GetSelPointIndex(); }

void Lane::Draw(void* context, int width, int height, bool /*flag*/)
{
    m_wndWidth = width;
    m_wndHeight = height;
    const unsigned int(&c)[4] = kLaneColors;
    m_polygon.SetColors(c[0], c[1], c[2], c[3]);
    m_polygon.Draw(context, width, height, true);
    m_arrow.SetColors(c[0], c[1], c[2], c[3]);
    m_arrow.Draw(context, width, height, true);

    tagTAVRIN_POINT outline[20] = {};
    unsigned int count = 0;
    if (!m_polygon.GetPoints(outline, &count)) {
        return;
    }
    tagTAVRIN_VCA_RECT box{0.0f, 0.0f, 0.0f, 0.0f};
    GetDrawLabelRect(outline[0], box);
    figures::drawLabelBox(box, c, m_polygon.GetObjStatus(), m_labelText, context, width, height);
}

bool Lane::SetPoints(tagTAVRIN_POINT* points, unsigned int count)
{
    if (points == nullptr || count > kMaxVertices) {
        return false;
    }
    return m_polygon.SetPoints(points, count);
}

bool Lane::GetPoints(tagTAVRIN_POINT* points, unsigned int* count)
{
    if (points == nullptr || count == nullptr) {
        return false;
    }
    return m_polygon.GetPoints(points, count);
}

bool Lane::SetArrowPoints(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to)
{
    tagTAVRIN_POINT ends[2] = {from, to};
    return m_arrow.SetPoints(ends, 2);
}

bool Lane::GetArrowPoints(tagTAVRIN_POINT* from, tagTAVRIN_POINT* to)
{
    if (from == nullptr || to == nullptr) {
        return false;
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

}  // namespace Tavrin
