#include <Tavrin/AtmCali.h>

#include "cali/CaliDraw.h"
#include "figures/LabelBox.h"
#include "foundation/NewInstance.h"
#include "geometry/CaliGeometry.h"

namespace Tavrin {

namespace {

// The primitive defaults with the first two exchanged: the ATM figure's own look.
const figures::Palette kAtmPalette = figures::kRulePalette;
const unsigned int kMaxCount = 10;

}  // namespace

AtmCali::AtmCali() = default;

AtmCali::~AtmCali() = default;

AtmCali* AtmCali::NewInstance() { return newInstanceOf<AtmCali>(); }

bool AtmCali::SetPoints(tagTAVRIN_POINT* points, unsigned int count)
{
    if (points == nullptr || count > kMaxCount) {
        return false;
    }
    return m_region.SetPoints(points, count);
}

bool AtmCali::GetPoints(tagTAVRIN_POINT* points, unsigned int* count)
{
    if (points == nullptr || count == nullptr) {
        return false;
    }
    return m_region.GetPoints(points, count);
}

bool AtmCali::IsNull() { return m_region.IsNull(); }

tagTAVRIN_OBJ_STATUS AtmCali::GetObjStatus() { return m_region.GetObjStatus(); }

void AtmCali::SetObjStatus(tagTAVRIN_OBJ_STATUS status)
{
    m_region.SetObjStatus(status);
    m_caliLine.SetObjStatus(status);
}

bool AtmCali::CheckSelected(tagTAVRIN_POINT& p)
{
    Point cursor(&p);
    return m_region.CheckSelected(cursor);
}

unsigned int AtmCali::CheckPointSelected(tagTAVRIN_POINT& p) { return m_region.CheckPointSelected(p); }

void AtmCali::SetSelPointIndex(unsigned int index) { m_region.SetSelPointIndex(index); }

unsigned int AtmCali::GetSelPointIndex() { return m_region.GetSelPointIndex(); }

void AtmCali::Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to)
{
    if (m_region.Move(from, to)) {
        m_caliLine.Move(from, to);
    }
}

// The region and the line are edited independently: no constraint between them is
// enforced, and a corner can be dragged also while the line is unset.
void AtmCali::MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) { m_region.MovePoint(from, to); }

bool AtmCali::SetLinePoints(tagTAVRIN_POINT& a, tagTAVRIN_POINT& b)
{
    tagTAVRIN_POINT ends[2] = {a, b};
    return m_caliLine.SetPoints(ends, 2);
}

bool AtmCali::GetLinePoints(tagTAVRIN_POINT* a, tagTAVRIN_POINT* b)
{
    if (a == nullptr || b == nullptr) {
        return false;
    }
    tagTAVRIN_POINT ends[2] = {};
    unsigned int count = 0;
    if (!m_caliLine.GetPoints(ends, &count)) {
        return false;
    }
    *a = ends[0];
    *b = ends[1];
    return true;
}

void AtmCali::MoveLinePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) { m_caliLine.MovePoint(from, to); }

unsigned int AtmCali::CheckLinePointSelected(tagTAVRIN_POINT& p) { return m_caliLine.CheckPointSelected(p); }

void AtmCali::SetLineSelPointIndex(unsigned int index) { m_caliLine.SetSelPointIndex(index); }

unsigned int AtmCali::GetLineSelPointIndex() { return m_caliLine.GetSelPointIndex(); }

void AtmCali::GetVCaliLineHead(tagTAVRIN_POINT& end, tagTAVRIN_POINT* out)
{
    if (out == nullptr) {
        return;
    }
    tagTAVRIN_POINT ends[2] = {};
    unsigned int count = 0;
    if (!m_caliLine.GetPoints(ends, &count)) {
        return;
    }
    geometry::lineHeadBar(end, ends[0], ends[1], m_wndWidth, m_wndHeight, out);
}

void AtmCali::Draw(void* context, int width, int height, bool /*flag*/)
{
    m_wndWidth = width;
    m_wndHeight = height;
    if (m_region.IsNull()) {
        return;
    }
    m_region.SetViewTransparent(false);
    kAtmPalette.applyTo(m_region);
    m_region.Draw(context, width, height, true);

    if (m_caliLine.IsNull()) {
        return;
    }
    kAtmPalette.applyTo(m_caliLine);
    m_caliLine.Draw(context, width, height, true);

    tagTAVRIN_POINT ends[2] = {};
    unsigned int count = 0;
    if (!m_caliLine.GetPoints(ends, &count)) {
        return;
    }
    const tagTAVRIN_OBJ_STATUS lineStatus = m_caliLine.GetObjStatus();
    for (tagTAVRIN_POINT& end : ends) {
        tagTAVRIN_POINT bar[2] = {};
        if (geometry::lineHeadBar(end, ends[0], ends[1], width, height, bar)) {
            cali::drawPlainLine(bar[0], bar[1], lineStatus, kAtmPalette, context, width, height);
        }
    }

    tagTAVRIN_POINT middle = figures::midpoint(ends[0], ends[1]);
    tagTAVRIN_VCA_RECT box = {};
    GetDrawLabelRect(middle, box);
    figures::drawLabelBox(box, kAtmPalette.colors, lineStatus, m_labelText, context, width, height);
}

}  // namespace Tavrin
