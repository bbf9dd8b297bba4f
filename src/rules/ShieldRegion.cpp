#include <Tavrin/ShieldRegion.h>

#include "figures/Region.h"
#include "figures/VertexLimits.h"
#include "foundation/NewInstance.h"

namespace Tavrin {

namespace {

const unsigned int kCapacity = figures::kFigureVertices;
const unsigned int kColors[4] = {0x7030a0u, 0x7030a0u, 0xffc000u, 0xf47f4cu};

}  // namespace

ShieldRegion* ShieldRegion::NewInstance() { return newInstanceOf<ShieldRegion>(); }

ShieldRegion::ShieldRegion() : VcaObject(), m_points{}, m_pointCount(0), m_polygon() {}

ShieldRegion::~ShieldRegion() = default;

bool ShieldRegion::SetPoints(tagTAVRIN_POINT* points, unsigned int count)
{
    return figures::setRegionPoints({m_points, kCapacity, &m_pointCount}, m_polygon, points, count);
}

bool ShieldRegion::GetPoints(tagTAVRIN_POINT* points, unsigned int* count)
{
    return figures::getRegionPoints({m_points, kCapacity, &m_pointCount}, m_polygon, points, count);
}

bool ShieldRegion::IsNull() { return m_polygon.IsNull(); }

tagTAVRIN_OBJ_STATUS ShieldRegion::GetObjStatus() { return m_polygon.GetObjStatus(); }

void ShieldRegion::SetObjStatus(tagTAVRIN_OBJ_STATUS status) { m_polygon.SetObjStatus(status); }

void ShieldRegion::Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to)
{
    // The outcome stays here: the host reads the vertices back.
    m_polygon.Move(from, to);
}

void ShieldRegion::MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to)
{
    m_polygon.MovePoint(from, to);
}

bool ShieldRegion::CheckSelected(tagTAVRIN_POINT& p)
{
    Point cursor(&p);
    return m_polygon.CheckSelected(cursor);
}

unsigned int ShieldRegion::CheckPointSelected(tagTAVRIN_POINT& p)
{
    return m_polygon.CheckPointSelected(p);
}

void ShieldRegion::Draw(void* context, int width, int height, bool /*flag*/)
{
    m_wndWidth = width;
    m_wndHeight = height;
    figures::drawFilledRegion(*this, {m_points, kCapacity, &m_pointCount}, m_polygon, kColors,
                            m_labelText, context, width, height);
}

void ShieldRegion::SetSelPointIndex(unsigned int index) { m_polygon.SetSelPointIndex(index); }

unsigned int ShieldRegion::GetSelPointIndex() { return m_polygon.GetSelPointIndex(); }

void ShieldRegion::SetClosed(bool closed)
{
    m_closed = closed;
    m_polygon.SetClosed(closed);
}

bool ShieldRegion::GetClosed()
{
    m_closed = m_polygon.GetClosed();
    return m_closed;
}

}  // namespace Tavrin
