#include <Tavrin/BinoCali.h>

#include "cali/CaliDraw.h"
#include "foundation/NewInstance.h"

namespace Tavrin {

namespace {

const figures::Palette kBinoPalette{{0x0036D7, 0xFFFF00, 0xFFFF00, 0xF47F4C}};

}  // namespace

BinoCali::BinoCali() = default;

BinoCali::~BinoCali() = default;

BinoCali* BinoCali::NewInstance() { return newInstanceOf<BinoCali>(); }

bool BinoCali::SetPoints(tagTAVRIN_POINT* points, unsigned int count)
{
    if (points == nullptr || count >= 2) {
        return false;
    }
    return m_circle.SetPoints(points, count);
}

bool BinoCali::GetPoints(tagTAVRIN_POINT* points, unsigned int* count)
{
    if (points == nullptr || count == nullptr) {
        return false;
    }
    return m_circle.GetPoints(points, count);
}

bool BinoCali::IsNull() { return m_circle.IsNull(); }

tagTAVRIN_OBJ_STATUS BinoCali::GetObjStatus() { return m_circle.GetObjStatus(); }

void BinoCali::SetObjStatus(tagTAVRIN_OBJ_STATUS status) { m_circle.SetObjStatus(status); }

void BinoCali::Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) { m_circle.Move(from, to); }

// A single-point figure has no separate vertex handle: it moves only whole.
void BinoCali::MovePoint(tagTAVRIN_POINT& /*from*/, tagTAVRIN_POINT& /*to*/) {}

bool BinoCali::CheckSelected(tagTAVRIN_POINT& p)
{
    Point cursor(&p);
    return m_circle.CheckSelected(cursor);
}

unsigned int BinoCali::CheckPointSelected(tagTAVRIN_POINT& /*p*/) { return 0; }

void BinoCali::SetSelPointIndex(unsigned int index) { m_circle.SetSelPointIndex(index); }

unsigned int BinoCali::GetSelPointIndex() { return m_circle.GetSelPointIndex(); }

void BinoCali::SetWndSize(int width, int height)
{
    VcaObject::SetWndSize(width, height);
    m_circle.SetWndSize(width, height);
}

void BinoCali::SetRadius(unsigned int pixels) { m_circle.SetRadius(pixels); }

unsigned int BinoCali::Radius() { return m_circle.Radius(); }

void BinoCali::Draw(void* context, int width, int height, bool /*flag*/)
{
    m_wndWidth = width;
    m_wndHeight = height;
    kBinoPalette.applyTo(m_circle);
    m_circle.SetPointType(TAVRIN_POINT_CROSS);
    m_circle.Draw(context, width, height, true);
}

}  // namespace Tavrin
