#include <Tavrin/LfCali.h>

#include "cali/CaliDraw.h"
#include "figures/LabelBox.h"
#include "foundation/NewInstance.h"

namespace Tavrin {

namespace {

const figures::Palette kLfPalette = figures::kRulePalette;

}  // namespace

LfCali::LfCali() = default;

LfCali::~LfCali() = default;

LfCali* LfCali::NewInstance() { return newInstanceOf<LfCali>(); }

bool LfCali::SetPoints(tagTAVRIN_POINT* points, unsigned int count)
{
    if (points == nullptr || count >= 2) {
        return false;
    }
    return m_point.SetPoints(points, count);
}

bool LfCali::GetPoints(tagTAVRIN_POINT* points, unsigned int* count)
{
    if (points == nullptr || count == nullptr) {
        return false;
    }
    return m_point.GetPoints(points, count);
}

bool LfCali::IsNull() { return m_point.IsNull(); }

tagTAVRIN_OBJ_STATUS LfCali::GetObjStatus() { return m_point.GetObjStatus(); }

void LfCali::SetObjStatus(tagTAVRIN_OBJ_STATUS status) { m_point.SetObjStatus(status); }

void LfCali::Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) { m_point.Move(from, to); }

// A single-point figure has no separate vertex handle: it moves only whole.
void LfCali::MovePoint(tagTAVRIN_POINT& /*from*/, tagTAVRIN_POINT& /*to*/) {}

// Deliberately true everywhere: the marker counts as hit wherever the cursor is.
bool LfCali::CheckSelected(tagTAVRIN_POINT& /*p*/) { return true; }

unsigned int LfCali::CheckPointSelected(tagTAVRIN_POINT& /*p*/) { return 0; }

void LfCali::SetSelPointIndex(unsigned int index) { m_point.SetSelPointIndex(index); }

unsigned int LfCali::GetSelPointIndex() { return m_point.GetSelPointIndex(); }

void LfCali::Draw(void* context, int width, int height, bool /*flag*/)
{
    m_wndWidth = width;
    m_wndHeight = height;
    kLfPalette.applyTo(m_point);
    m_point.SetPointType(TAVRIN_POINT_CROSS);
    m_point.Draw(context, width, height, true);

    tagTAVRIN_POINT at[1] = {};
    unsigned int count = 0;
    if (!m_point.GetPoints(at, &count)) {
        return;
    }
    tagTAVRIN_VCA_RECT box = {};
    GetDrawLabelRect(at[0], box);
    figures::drawLabelBox(box, kLfPalette.colors, m_point.GetObjStatus(), m_labelText, context, width, height);
}

}  // namespace Tavrin
