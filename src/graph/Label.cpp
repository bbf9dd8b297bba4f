#include <Tavrin/Label.h>

#include "graph/GlRender.h"

#include <cstring>

namespace Tavrin {

namespace {

const std::size_t kMaxTextLength = 127;

}  // namespace

Label::Label() : Rectangle(), m_text{} {}

Label::Label(tagTAVRIN_POINT* points, unsigned int count) : Rectangle(points, count), m_text{} {}

Label::~Label() = default;

bool Label::SetText(char* text)
{
    if (text == nullptr) {
        return false;
    }
    // Reads no further than one byte past the longest acceptable text.
    const std::size_t length = strnlen(text, kMaxTextLength + 1);
    if (length > kMaxTextLength) {
        return false;
    }
    std::memset(m_text, 0, sizeof m_text);
    std::memcpy(m_text, text, length);
    return true;
}

void Label::Draw(void* context, int width, int height, bool /*flag*/)
{
    m_wndWidth = width;
    m_wndHeight = height;
    DrawByOpenGL(context);
}

void Label::DrawByOpenGL(void* /*context*/)
{
    gl::RenderScope scope(gl::Smoothing::Polygon, m_wndWidth, m_wndHeight);
    gl::setColor(outlineColor(), 255);
    gl::drawLabelText(m_points[0], m_text);
}

void Label::DrawByGdi(void* /*context*/) {}

}  // namespace Tavrin
