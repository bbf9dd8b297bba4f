#include "HostView.h"

using Tavrin::VcaObject;
using Tavrin::VcaObjectContainer;

HostView::HostView(int width, int height) : m_width(width), m_height(height) {}

HostView::~HostView()
{
    // Destroying the registry releases its reference to every figure still in it.
    VcaObjectContainer::Release();
}

int HostView::add(VcaObject* figure, ReadBack reader)
{
    VcaObjectContainer* registry = VcaObjectContainer::Instance();
    if (figure == nullptr || registry == nullptr) {
        return -1;
    }
    const int slot = registry->AddVcaObject(figure);  // the registry takes a reference
    figure->ReleaseRef();                             // and now holds the only one
    if (slot < 0) {
        return -1;
    }
    figure->SetWndSize(m_width, m_height);
    m_figures.push_back(Figure{slot, std::move(reader), {}});
    readBack(m_figures.back());
    return slot;
}

void HostView::removeSelected()
{
    if (m_selected < 0) {
        return;
    }
    VcaObjectContainer::Instance()->DelVcaObject(m_selected);
    for (auto it = m_figures.begin(); it != m_figures.end(); ++it) {
        if (it->slot == m_selected) {
            m_figures.erase(it);
            break;
        }
    }
    m_selected = -1;
}

void HostView::resize(int width, int height)
{
    m_width = width;
    m_height = height;
    for (const Figure& f : m_figures) {
        object(f.slot)->SetWndSize(width, height);
    }
}

void HostView::paint()
{
    // After the video frame, in the view's context: every figure draws itself.
    for (const Figure& f : m_figures) {
        object(f.slot)->Draw(nullptr, m_width, m_height, true);
    }
}

void HostView::press(int x, int y)
{
    const tagTAVRIN_POINT p = normalised(x, y);
    m_last = p;
    m_dragging = false;
    // Topmost first: the figure drawn last is the one on top.
    for (auto it = m_figures.rbegin(); it != m_figures.rend(); ++it) {
        VcaObject* obj = object(it->slot);
        tagTAVRIN_POINT cursor = p;
        const unsigned int vertex = obj->CheckPointSelected(cursor);
        if (vertex != 0) {
            obj->SetSelPointIndex(vertex);  // the vertex MovePoint will drag
            select(it->slot);
            m_dragging = true;
            m_vertexDrag = true;
            return;
        }
        if (obj->CheckSelected(cursor)) {
            obj->SetSelPointIndex(0);
            select(it->slot);
            m_dragging = true;
            m_vertexDrag = false;
            return;
        }
    }
    select(-1);
}

void HostView::drag(int x, int y)
{
    Figure* figure = selectedFigure();
    if (!m_dragging || figure == nullptr) {
        return;
    }
    tagTAVRIN_POINT from = m_last;
    tagTAVRIN_POINT to = normalised(x, y);
    VcaObject* obj = object(figure->slot);
    if (m_vertexDrag) {
        obj->MovePoint(from, to);
    } else {
        obj->Move(from, to);
    }
    // A drag that would leave the picture is ignored by the figure; either way the
    // next step continues from the cursor.
    m_last = to;
    readBack(*figure);
}

void HostView::release() { m_dragging = false; }

std::vector<tagTAVRIN_POINT> HostView::selectedVertices() const
{
    for (const Figure& f : m_figures) {
        if (f.slot == m_selected) {
            return f.vertices;
        }
    }
    return {};
}

tagTAVRIN_POINT HostView::normalised(int x, int y) const
{
    return tagTAVRIN_POINT{static_cast<float>(x) / static_cast<float>(m_width),
                           static_cast<float>(y) / static_cast<float>(m_height)};
}

VcaObject* HostView::object(int slot) const { return VcaObjectContainer::Instance()->GetVcaObject(slot); }

void HostView::select(int slot)
{
    m_selected = slot;
    for (const Figure& f : m_figures) {
        object(f.slot)->SetObjStatus(f.slot == slot ? TAVRIN_OBJ_STATUS_SELECTED : TAVRIN_OBJ_STATUS_NORMAL);
    }
}

void HostView::readBack(Figure& figure)
{
    // Buffers of the largest capacity any class writes (20 vertices).
    tagTAVRIN_POINT points[20] = {};
    unsigned int count = 0;
    if (figure.readBack && figure.readBack(points, &count) && count <= 20) {
        figure.vertices.assign(points, points + count);
    }
}

HostView::Figure* HostView::selectedFigure()
{
    for (Figure& f : m_figures) {
        if (f.slot == m_selected) {
            return &f;
        }
    }
    return nullptr;
}
