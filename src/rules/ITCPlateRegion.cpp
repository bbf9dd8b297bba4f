#include <Tavrin/ITCPlateRegion.h>

#include "figures/Region.h"
#include "figures/VertexLimits.h"
#include "foundation/NewInstance.h"

namespace Tavrin {

namespace {

const unsigned int kCapacity = figures::kPlateVertices;
const unsigned int kColors[4] = {0x4848c6u, 0xd90db0u, 0xffc000u, 0xf47f4cu};

}  // namespace

ITCPlateRegion* ITCPlateRegion::NewInstance() { return newInstanceOf<ITCPlateRegion>(); }

ITCPlateRegion::ITCPlateRegion() : VcaObject(), m_points{}, m_pointCount(0), m_polygon() {}

ITCPlateRegion::~ITCPlateRegion() = default;

bool ITCPlateRegion::SetPoints(tagTAVRIN_POINT* points, unsigned int count)
{
    return figures::setRegionPoints({m_points, kCapacity, &m_pointCount}, m_polygon, points, count);
}

bool ITCPlateRegion::GetPoints(tagTAVRIN_POINT* points, unsigned int* count)
{
    return figures::getRegionPoints({m_points, kCapacity, &m_pointCount}, m_polygon, points, count);
}

bool ITCPlateRegion::IsNull() { return m_polygon.IsNull(); }

tagTAVRIN_OBJ_STATUS ITCPlateRegion::GetObjStatus() { return m_polygon.GetObjStatus(); }

void ITCPlateRegion::SetObjStatus(tagTAVRIN_OBJ_STATUS status) { m_polygon.SetObjStatus(status); }

void ITCPlateRegion::Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to)
{
    // The outcome stays here: the host reads the vertices back.
    m_polygon.Move(from, to);
}

void ITCPlateRegion::MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to)
{
    m_polygon.MovePoint(from, to);
}

bool ITCPlateRegion::CheckSelected(tagTAVRIN_POINT& p)
{
    Point cursor(&p);
    return m_polygon.CheckSelected(cursor);
}

unsigned int ITCPlateRegion::CheckPointSelected(tagTAVRIN_POINT& p)
{
    return m_polygon.CheckPointSelected(p);
}

void ITCPlateRegion::Draw(void* context, int width, int height, bool /*flag*/)
{
    m_wndWidth = width;
    m_wndHeight = height;
    figures::drawFilledRegion(*this, {m_points, kCapacity, &m_pointCount}, m_polygon, kColors,
                            m_labelText, context, width, height);
}

void ITCPlateRegion::SetSelPointIndex(unsigned int index) { m_polygon.SetSelPointIndex(index); }

unsigned int ITCPlateRegion::GetSelPointIndex() { return m_polygon.GetSelPointIndex(); }

void ITCPlateRegion::SetClosed(bool closed)
{
    m_closed = closed;
    m_polygon.SetClosed(closed);
}

bool ITCPlateRegion::GetClosed()
{
    m_closed = m_polygon.GetClosed();
    return m_closed;
}

}  // namespace Tavrin
