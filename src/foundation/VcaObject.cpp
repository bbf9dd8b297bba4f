#include <Tavrin/KemoGuard.h>
#include <Tavrin/VcaObject.h>

#include <cstring>

namespace Tavrin {

namespace {

const unsigned int kLabelCapacity = 16;

}  // namespace

VcaObject::VcaObject()
    : m_refCount(1), m_labelText{}, m_wndWidth(0), m_wndHeight(0), m_closed(true),
      m_isTraversePlane(false)
{
}

VcaObject::~VcaObject() = default;

void VcaObject::AddRef()
{
    KemoGuard guard(m_mutex);
    ++m_refCount;
}

void VcaObject::ReleaseRef()
{
    int left = 0;
    {
        KemoGuard guard(m_mutex);
        left = --m_refCount;
    }
    // The count this release left, not a fresh read: another thread's release between
    // the unlock and a re-read must not make both of them delete the object.
    if (left < 1) {
        delete this;
    }
}

bool VcaObject::SetLabelText(char* text, unsigned int length)
{
    if (text == nullptr || length == 0) {
        return false;
    }
    std::memset(m_labelText, 0, sizeof m_labelText);
    // A raw byte copy that does not stop at a zero byte; the 17th byte stays zero.
    std::memcpy(m_labelText, text, length < kLabelCapacity ? length : kLabelCapacity);
    return true;
}

bool VcaObject::GetLabelText(char* buffer, unsigned int size)
{
    if (buffer == nullptr || size == 0) {
        return false;
    }
    std::memset(buffer, 0, size);
    const std::size_t length = std::strlen(m_labelText);
    std::memcpy(buffer, m_labelText, length < size ? length : size);
    return true;
}

void VcaObject::SetWndSize(int width, int height)
{
    m_wndWidth = width;
    m_wndHeight = height;
}

void VcaObject::SetClosed(bool closed) { m_closed = closed; }

bool VcaObject::GetClosed() { return m_closed; }

void VcaObject::GetDrawLabelRect(tagTAVRIN_POINT& anchor, tagTAVRIN_VCA_RECT& rect)
{
    if (anchor.x >= 0.9f) {
        rect.x = anchor.x - 0.08f;
        rect.y = anchor.y - 0.01f;
    } else if (anchor.y >= 0.9f) {
        rect.x = anchor.x + 0.01f;
        rect.y = anchor.y - 0.04f;
    } else {
        rect.x = anchor.x + 0.01f;
        rect.y = anchor.y - 0.01f;
    }
    rect.width = 0.08f;
    rect.height = 0.04f;
}

void VcaObject::SetIsTraversePlane(bool on) { m_isTraversePlane = on; }

void VcaObject::SetVcaPDCLineOrRect(bool /*lineMode*/) {}

void VcaObject::SetVcaPDCLineCali(bool /*on*/) {}

bool VcaObject::SetPDCCaliPoint(tagTAVRIN_POINT* points, unsigned int /*count*/)
{
    return points != nullptr;
}

bool VcaObject::GetPDCCaliPoint(tagTAVRIN_POINT* points, unsigned int* count)
{
    return points != nullptr && count != nullptr;
}

bool VcaObject::MoveCaliPoints(tagTAVRIN_POINT& /*from*/, tagTAVRIN_POINT& /*to*/) { return true; }

unsigned int VcaObject::CheckCaliPointSelected(tagTAVRIN_POINT& /*p*/) { return 1; }

void VcaObject::SetSizeFilterType(tagTAVRIN_SIZE_FILTER_TYPE /*type*/) {}

}  // namespace Tavrin
