#include <Tavrin/EnterRegion.h>

#include "figures/LabelBox.h"
#include "figures/Region.h"
#include "figures/VertexLimits.h"
#include "foundation/NewInstance.h"

namespace Tavrin {

namespace {

const unsigned int kCapacity = figures::kFigureVertices;
const unsigned int kPolygonCapacity = 20;
const unsigned int kColors[4] = {0x00f0f0u, 0x00f0f0u, 0xffc000u, 0xf47f4cu};
const unsigned int kLabelColors[4] = {0x285ea6u, 0xd90db0u, 0xffc000u, 0xf47f4cu};

}  // namespace

EnterRegion* EnterRegion::NewInstance() { return newInstanceOf<EnterRegion>(); }

EnterRegion::EnterRegion() : VcaObject(), m_points{}, m_pointCount(0), m_polygon() {}

EnterRegion::~EnterRegion() = default;

bool EnterRegion::SetPoints(tagTAVRIN_POINT* points, unsigned int count)
{
    return figures::setRegionPoints({m_points, kCapacity, &m_pointCount}, m_polygon, points, count);
}

bool EnterRegion::GetPoints(tagTAVRIN_POINT* points, unsigned int* count)
{
    return figures::getRegionPoints({m_points, kCapacity, &m_pointCount}, m_polygon, points, count);
}

bool EnterRegion::IsNull() { return m_polygon.IsNull(); }

tagTAVRIN_OBJ_STATUS EnterRegion::GetObjStatus() { return m_polygon.GetObjStatus(); }

void EnterRegion::SetObjStatus(tagTAVRIN_OBJ_STATUS status) { m_polygon.SetObjStatus(status); }

void EnterRegion::Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to)
{
    // The outcome stays here: the host reads the vertices back.
    m_polygon.Move(from, to);
}

void EnterRegion::MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to)
{
    m_polygon.MovePoint(from, to);
}

bool EnterRegion::CheckSelected(tagTAVRIN_POINT& p)
{
    Point cursor(&p);
    return m_polygon.CheckSelected(cursor);
}

unsigned int EnterRegion::CheckPointSelected(tagTAVRIN_POINT& p)
{
    return m_polygon.CheckPointSelected(p);
}

void EnterRegion::Draw(void* context, int width, int height, bool /*flag*/)
{
    m_wndWidth = width;
    m_wndHeight = height;
    // An outline only, whatever the polygon's default fill.
    m_polygon.SetViewTransparent(false);
    figures::drawRegionPolygon(m_polygon, kColors, context, width, height);
    // The label is placed from a fresh read of the polygon; the stored copy stays as it
    // is.
    tagTAVRIN_POINT vertices[kPolygonCapacity] = {};
    unsigned int count = 0;
    if (!m_polygon.GetPoints(vertices, &count)) {
        return;
    }
    tagTAVRIN_VCA_RECT box{0.0f, 0.0f, 0.0f, 0.0f};
    GetDrawLabelRect(vertices[0], box);
    figures::drawLabelBox(box, kLabelColors, m_polygon.GetObjStatus(), m_labelText, context, width,
                        height);
}

void EnterRegion::SetSelPointIndex(unsigned int index) { m_polygon.SetSelPointIndex(index); }

unsigned int EnterRegion::GetSelPointIndex() { return m_polygon.GetSelPointIndex(); }

void EnterRegion::SetClosed(bool closed)
{
    m_closed = closed;
    m_polygon.SetClosed(closed);
}

bool EnterRegion::GetClosed()
{
    m_closed = m_polygon.GetClosed();
    return m_closed;
}

}  // namespace Tavrin
