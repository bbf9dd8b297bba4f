#include <Tavrin/SizeFilter.h>

#include <Tavrin/KemoGuard.h>

#include "figures/LabelBox.h"
#include "figures/VertexLimits.h"
#include "foundation/NewInstance.h"
#include "geometry/PixelMath.h"

namespace Tavrin {

namespace {

const unsigned int kMaxVertices = figures::kRectangleVertices;
const unsigned int kLabelColors[4] = {0x285ea6, 0xd90db0, 0xffc000, 0xf47f4c};
const float kSchemeRectangleWidth = 4.0f;

struct ColorScheme {
    unsigned int normal;
    unsigned int selected;
    bool widensRectangle;
};

ColorScheme schemeFor(int scheme)
{
    switch (scheme) {
    case 1:
        return {0xf2ed1a, 0x00cc00, true};
    case 2:
        return {0xff0000, 0xff0000, true};
    default:
        return {0xf2ed1a, 0xf2ed1a, false};
    }
}

}  // namespace

SizeFilter* SizeFilter::NewInstance() { return newInstanceOf<SizeFilter>(); }

SizeFilter::SizeFilter()
    : m_rectangle(), m_square(), m_filterType(TAVRIN_SIZE_FILTER_RECT), m_colorScheme(0)
{
}

SizeFilter::~SizeFilter() = default;

Rectangle& SizeFilter::activeShape()
{
    if (isSquare()) {
        return m_square;
    }
    return m_rectangle;
}

bool SizeFilter::IsNull() { return activeShape().IsNull(); }

tagTAVRIN_OBJ_STATUS SizeFilter::GetObjStatus() { return activeShape().GetObjStatus(); }

void SizeFilter::SetObjStatus(tagTAVRIN_OBJ_STATUS status)
{
    m_rectangle.SetObjStatus(status);
    m_square.SetObjStatus(status);
}

void SizeFilter::Move(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to)
{
    KemoGuard guard(m_mutex);
    // Both shapes follow the drag, so switching the filter type shows the other one
    // where this one went.
    m_rectangle.Move(from, to);
    m_square.Move(from, to);
}

void SizeFilter::MovePoint(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to)
{
    KemoGuard guard(m_mutex);
    m_rectangle.Rectangle::MovePoint(from, to);
    m_square.Square::MovePoint(from, to);
}

bool SizeFilter::CheckSelected(tagTAVRIN_POINT& p)
{
    Point cursor(&p);
    return activeShape().CheckSelected(cursor);
}

unsigned int SizeFilter::CheckPointSelected(tagTAVRIN_POINT& p)
{
    return activeShape().CheckPointSelected(p);
}

void SizeFilter::SetSelPointIndex(unsigned int index) { activeShape().SetSelPointIndex(index); }

unsigned int SizeFilter::GetSelPointIndex() { return activeShape().GetSelPointIndex(); }

void SizeFilter::SetWndSize(int width, int height)
{
    VcaObject::SetWndSize(width, height);
    activeShape().SetWndSize(width, height);
}

void SizeFilter::SetSizeFilterType(tagTAVRIN_SIZE_FILTER_TYPE type) { m_filterType = type; }

tagTAVRIN_SIZE_FILTER_TYPE SizeFilter::GetSizeFilterType() { return m_filterType; }

void SizeFilter::SetColor(int scheme) { m_colorScheme = scheme; }

void SizeFilter::applyColorScheme(Rectangle& shape)
{
    const ColorScheme scheme = schemeFor(m_colorScheme);
    shape.SetColors(scheme.normal, scheme.selected, kLabelColors[2], kLabelColors[3]);
    // Only the rectangle is widened, and it keeps the width when the scheme changes
    // back; both deliberately.
    if (scheme.widensRectangle && !isSquare()) {
        shape.SetLineWidth(kSchemeRectangleWidth);
    }
}

void SizeFilter::Draw(void* context, int width, int height, bool /*flag*/)
{
    m_wndWidth = width;
    m_wndHeight = height;
    Rectangle& shape = activeShape();
    applyColorScheme(shape);
    shape.SetViewTransparent(false);
    shape.Polygon::Draw(context, width, height, true);

    tagTAVRIN_POINT corners[20] = {};
    unsigned int count = 0;
    if (!shape.GetPoints(corners, &count)) {
        return;
    }
    tagTAVRIN_VCA_RECT box{0.0f, 0.0f, 0.0f, 0.0f};
    GetDrawLabelRect(corners[0], box);
    figures::drawLabelBox(box, kLabelColors, shape.GetObjStatus(), m_labelText, context, width,
                        height);
}

bool SizeFilter::SetPoints(tagTAVRIN_POINT* points, unsigned int count)
{
    KemoGuard guard(m_mutex);
    if (points == nullptr || count > kMaxVertices || !geometry::allFinite(points, count)) {
        return false;
    }
    return activeShape().Rectangle::SetPoints(points, count);
}

bool SizeFilter::GetPoints(tagTAVRIN_POINT* points, unsigned int* count)
{
    KemoGuard guard(m_mutex);
    if (points == nullptr || count == nullptr) {
        return false;
    }
    return activeShape().GetPoints(points, count);
}

bool SizeFilter::SetDiagonal(tagTAVRIN_POINT& a, tagTAVRIN_POINT& b)
{
    KemoGuard guard(m_mutex);
    if (!geometry::isFinite(a) || !geometry::isFinite(b)) {
        return false;
    }
    if (isSquare()) {
        return m_square.Square::SetDiagonal(a, b);
    }
    return m_rectangle.Rectangle::SetDiagonal(a, b);
}

}  // namespace Tavrin
