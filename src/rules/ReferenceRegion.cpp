#include <Tavrin/ReferenceRegion.h>

#include "figures/Region.h"
#include "figures/VertexLimits.h"
#include "foundation/NewInstance.h"

namespace Tavrin {

namespace {

const unsigned int kCapacity = figures::kFigureVertices;
const unsigned int kColors[4] = {0xf28226u, 0xf28226u, 0xffc000u, 0xf47f4cu};

}  // namespace

ReferenceRegion* ReferenceRegion::NewInstance() { return newInstanceOf<ReferenceRegion>(); }

ReferenceRegion::ReferenceRegion() : VcaObject(), m_points{}, m_pointCount(0), m_polygon() {}

ReferenceRegion::~ReferenceRegion() = default;

bool ReferenceRegion::SetPoints(tagTAVRIN_POINT* points, unsigned int count)
{
    return figures::setRegionPoints({m_points, kCapacity, &m_pointCount}, m_polygon, points, count);
}

bool ReferenceRegion::GetPoints(tagTAVRIN_POINT* points, unsigned int* count)
{
    return figures::getRegionPoints({m_points, kCapacity, &m_pointCount}, m_polygon, points, count);
}

bool ReferenceRegion::IsNull() { return m_polygon.IsNull(); }

tagTAVRIN_OBJ_STATUS ReferenceRegion::GetObjStatus() { return m_polygon.GetObjStatus(); }

void ReferenceRegion::SetObjStatus(tagTAVRIN_OBJ_STATUS status) { m_polygon.SetObjStatus(status); }

void ReferenceRegion::Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to)
{
    // The outcome stays here: the host reads the vertices back.
    m_polygon.Move(from, to);
}

void ReferenceRegion::MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to)
{
    m_polygon.MovePoint(from, to);
}

bool ReferenceRegion::CheckSelected(tagTAVRIN_POINT& p)
{
    Point cursor(&p);
    return m_polygon.CheckSelected(cursor);
}

unsigned int ReferenceRegion::CheckPointSelected(tagTAVRIN_POINT& p)
{
    return m_polygon.CheckPointSelected(p);
}

void ReferenceRegion::Draw(void* context, int width, int height, bool /*flag*/)
{
    m_wndWidth = width;
    m_wndHeight = height;
    figures::drawFilledRegion(*this, {m_points, kCapacity, &m_pointCount}, m_polygon, kColors,
                            m_labelText, context, width, height);
}

void ReferenceRegion::SetSelPointIndex(unsigned int index) { m_polygon.SetSelPointIndex(index); }

unsigned int ReferenceRegion::GetSelPointIndex() { return m_polygon.GetSelPointIndex(); }

void ReferenceRegion::SetClosed(bool closed)
{
    m_closed = closed;
    m_polygon.SetClosed(closed);
}

bool ReferenceRegion::GetClosed()
{
    m_closed = m_polygon.GetClosed();
    return m_closed;
}

}  // namespace Tavrin
