#include <Tavrin/BehaviorCali.h>

#include "cali/CaliDraw.h"
#include "figures/LabelBox.h"
#include "figures/VertexLimits.h"
#include "foundation/NewInstance.h"
#include "geometry/CaliGeometry.h"
#include "geometry/PixelMath.h"

#include <cstring>

namespace Tavrin {

namespace {

const unsigned int kCapacity = figures::kFigureVertices;
const unsigned int kPlainColor = 0xD65814;
const unsigned int kVerticalColor = 0xE6005C;

figures::Palette paletteOf(unsigned int color) { return figures::Palette{{color, color, figures::kHandleColor, figures::kActiveHandleColor}}; }

}  // namespace

BehaviorCali::BehaviorCali() : m_points{}, m_pointCount(0), m_caliType(TAVRIN_BEHAV_CALI_LINE) {}

BehaviorCali::~BehaviorCali() = default;

BehaviorCali* BehaviorCali::NewInstance() { return newInstanceOf<BehaviorCali>(); }

bool BehaviorCali::SetPoints(tagTAVRIN_POINT* points, unsigned int count)
{
    if (points == nullptr || count > kCapacity || !geometry::allFinite(points, count)) {
        return false;
    }
    // The copy is stored before the line is asked, so it stays even when the line
    // refuses the count.
    std::memset(m_points, 0, sizeof m_points);
    std::memcpy(m_points, points, count * sizeof(tagTAVRIN_POINT));
    m_pointCount = count;
    return m_caliLine.SetPoints(m_points, count);
}

bool BehaviorCali::GetPoints(tagTAVRIN_POINT* points, unsigned int* count)
{
    if (points == nullptr || count == nullptr) {
        return false;
    }
    if (!m_caliLine.GetPoints(m_points, &m_pointCount)) {
        return false;
    }
    std::memset(points, 0, kCapacity * sizeof(tagTAVRIN_POINT));
    std::memcpy(points, m_points, m_pointCount * sizeof(tagTAVRIN_POINT));
    *count = m_pointCount;
    return true;
}

bool BehaviorCali::IsNull() { return m_caliLine.IsNull(); }

tagTAVRIN_OBJ_STATUS BehaviorCali::GetObjStatus() { return m_caliLine.GetObjStatus(); }

void BehaviorCali::SetObjStatus(tagTAVRIN_OBJ_STATUS status) { m_caliLine.SetObjStatus(status); }

void BehaviorCali::Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) { m_caliLine.Move(from, to); }

void BehaviorCali::MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) { m_caliLine.MovePoint(from, to); }

bool BehaviorCali::CheckSelected(tagTAVRIN_POINT& p)
{
    Point cursor(&p);
    return m_caliLine.CheckSelected(cursor);
}

unsigned int BehaviorCali::CheckPointSelected(tagTAVRIN_POINT& p) { return m_caliLine.CheckPointSelected(p); }

void BehaviorCali::SetSelPointIndex(unsigned int index) { m_caliLine.SetSelPointIndex(index); }

unsigned int BehaviorCali::GetSelPointIndex() { return m_caliLine.GetSelPointIndex(); }

void BehaviorCali::SetCaliType(tagTAVRIN_BEHAV_CALI_TYPE type) { m_caliType = type; }

tagTAVRIN_BEHAV_CALI_TYPE BehaviorCali::GetCaliType() { return m_caliType; }

void BehaviorCali::GetVCaliLineHead(tagTAVRIN_POINT& end, tagTAVRIN_POINT* out)
{
    geometry::lineHeadBar(end, m_points[0], m_points[1], m_wndWidth, m_wndHeight, out);
}

void BehaviorCali::Draw(void* context, int width, int height, bool /*flag*/)
{
    drawFigure(context, width, height, kVerticalColor);
}

void BehaviorCali::drawFigure(void* context, int width, int height, unsigned int verticalColor)
{
    m_wndWidth = width;
    m_wndHeight = height;
    if (m_caliLine.IsNull()) {
        return;
    }
    m_caliLine.SetLineType(TAVRIN_LINE_PLAIN);
    const bool vertical = m_caliType == TAVRIN_BEHAV_CALI_VERTICAL;
    const figures::Palette palette = paletteOf(vertical ? verticalColor : kPlainColor);
    palette.applyTo(m_caliLine);
    const tagTAVRIN_OBJ_STATUS status = m_caliLine.GetObjStatus();
    if (vertical) {
        // The heads come before the line; the count read here is not kept.
        unsigned int count = 0;
        if (!m_caliLine.GetPoints(m_points, &count)) {
            return;
        }
        for (unsigned int i = 0; i < 2; ++i) {
            tagTAVRIN_POINT bar[2] = {};
            if (geometry::lineHeadBar(m_points[i], m_points[0], m_points[1], width, height, bar)) {
                cali::drawPlainLine(bar[0], bar[1], status, palette, context, width, height);
            }
        }
    }
    m_caliLine.Draw(context, width, height, true);

    if (!m_caliLine.GetPoints(m_points, &m_pointCount)) {
        return;
    }
    tagTAVRIN_POINT middle = figures::midpoint(m_points[0], m_points[1]);
    tagTAVRIN_VCA_RECT box = {};
    GetDrawLabelRect(middle, box);
    figures::drawLabelBox(box, palette.colors, status, m_labelText, context, width, height);
}

}  // namespace Tavrin
