#include <Tavrin/DrawList.h>

namespace Tavrin {

namespace {

constexpr DrawList::Color kOpaqueWhite{255, 255, 255, 255};

}  // namespace

DrawList::DrawList()
    : m_viewWidth(0), m_viewHeight(0), m_color(kOpaqueWhite), m_lineWidth(1.0f), m_pointSize(1.0f), m_smoothing(0)
{
}

void DrawList::Clear()
{
    m_batches.clear();
    m_vertices.clear();
    m_textRuns.clear();
    m_textBytes.clear();
    m_viewWidth = 0;
    m_viewHeight = 0;
    m_color = kOpaqueWhite;
    m_lineWidth = 1.0f;
    m_pointSize = 1.0f;
    m_smoothing = 0;
}

bool DrawList::IsEmpty() const { return m_batches.empty() && m_textRuns.empty(); }

}  // namespace Tavrin
