#include "HostView.h"

#include <algorithm>

using Tavrin::VcaObject;
using Tavrin::VcaObjectContainer;

namespace {

// The registry fills its first empty slot, so a figure registered while n figures were
// registered sits below slot n. A scene file holds at most 1000 figures; this headroom
// over the tracked ones covers every figure a reader may have added since.
constexpr int kSlotHeadroom = 1024;

}  // namespace

HostView::HostView(int width, int height) : m_width(width), m_height(height) {}

HostView::~HostView()
{
    // Destroying the registry releases its reference to every figure still in it.
    VcaObjectContainer::Release();
}

int HostView::add(VcaObject* figure, ReadBack reader)
{
    Hooks hooks;
    hooks.readBack = std::move(reader);
    return add(figure, std::move(hooks));
}

int HostView::add(VcaObject* figure, Hooks hooks)
{
    VcaObjectContainer* registry = VcaObjectContainer::Instance();
    if (figure == nullptr) {
        return -1;
    }
    if (registry == nullptr) {
        figure->ReleaseRef();
        return -1;
    }
    const int slot = registry->AddVcaObject(figure);  // the registry takes a reference
    figure->ReleaseRef();                             // and now holds the only one
    if (slot < 0) {
        return -1;
    }
    figure->SetWndSize(m_width, m_height);
    m_figures.push_back(Figure{slot, std::move(hooks), {}});
    readBack(m_figures.back());
    return slot;
}

int HostView::track(VcaObject* figure, Hooks hooks)
{
    const int slot = slotOf(figure);
    if (slot < 0) {
        return -1;
    }
    figure->SetWndSize(m_width, m_height);
    m_figures.push_back(Figure{slot, std::move(hooks), {}});
    readBack(m_figures.back());
    return slot;
}

int HostView::replace(int slot, VcaObject* figure, Hooks hooks)
{
    Figure* old = find(slot);
    const int newSlot = slotOf(figure);
    if (old == nullptr || newSlot < 0 || newSlot == slot) {
        return -1;
    }
    VcaObjectContainer::Instance()->DelVcaObject(slot);
    figure->SetWndSize(m_width, m_height);
    *old = Figure{newSlot, std::move(hooks), {}};
    readBack(*old);
    if (m_selected == slot) {
        m_selected = newSlot;
    }
    if (m_hovered == slot) {
        m_hovered = newSlot;
    }
    return newSlot;
}

void HostView::remove(int slot)
{
    auto it = std::find_if(m_figures.begin(), m_figures.end(), [slot](const Figure& f) { return f.slot == slot; });
    if (it == m_figures.end()) {
        return;
    }
    m_figures.erase(it);
    // The registry held the only reference: the figure deletes itself here.
    VcaObjectContainer::Instance()->DelVcaObject(slot);
    if (m_selected == slot) {
        m_selected = -1;
        m_drag = Drag::None;
    }
    if (m_hovered == slot) {
        m_hovered = -1;
    }
}

void HostView::removeSelected() { remove(m_selected); }

void HostView::clear()
{
    while (!m_figures.empty()) {
        remove(m_figures.back().slot);
    }
}

void HostView::dropUntracked()
{
    VcaObjectContainer* registry = VcaObjectContainer::Instance();
    if (registry == nullptr) {
        return;
    }
    const int limit = static_cast<int>(m_figures.size()) + kSlotHeadroom;
    for (int slot = 0; slot < limit; ++slot) {
        if (registry->GetVcaObject(slot) != nullptr && find(slot) == nullptr) {
            registry->DelVcaObject(slot);
        }
    }
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
    m_drag = Drag::None;
    // Topmost first: the figure drawn last is the one on top.
    for (auto it = m_figures.rbegin(); it != m_figures.rend(); ++it) {
        VcaObject* obj = object(it->slot);
        tagTAVRIN_POINT cursor = p;
        const unsigned int vertex = obj->CheckPointSelected(cursor);
        if (vertex != 0) {
            obj->SetSelPointIndex(vertex);  // the vertex MovePoint will drag
            select(it->slot);
            m_drag = Drag::Vertex;
            return;
        }
        const unsigned int handle = it->hooks.checkHandle ? it->hooks.checkHandle(cursor) : 0;
        if (handle != 0 && it->hooks.selectHandle && it->hooks.moveHandle) {
            it->hooks.selectHandle(handle);
            select(it->slot);
            m_drag = Drag::Handle;
            return;
        }
        if (hits(*it, cursor)) {
            obj->SetSelPointIndex(0);
            select(it->slot);
            m_drag = Drag::Whole;
            return;
        }
    }
    select(-1);
}

void HostView::drag(int x, int y)
{
    Figure* figure = selectedFigure();
    if (m_drag == Drag::None || figure == nullptr) {
        return;
    }
    tagTAVRIN_POINT from = m_last;
    tagTAVRIN_POINT to = normalised(x, y);
    VcaObject* obj = object(figure->slot);
    if (m_drag == Drag::Vertex) {
        obj->MovePoint(from, to);
    } else if (m_drag == Drag::Handle) {
        figure->hooks.moveHandle(from, to);
    } else {
        obj->Move(from, to);
    }
    // A drag that would leave the picture is ignored by the figure; either way the
    // next step continues from the cursor.
    m_last = to;
    readBack(*figure);
}

void HostView::release() { m_drag = Drag::None; }

void HostView::hover(int x, int y)
{
    if (m_drag != Drag::None) {
        return;
    }
    const tagTAVRIN_POINT p = normalised(x, y);
    int under = -1;
    for (auto it = m_figures.rbegin(); it != m_figures.rend() && under < 0; ++it) {
        tagTAVRIN_POINT cursor = p;
        if (object(it->slot)->CheckPointSelected(cursor) != 0 || hits(*it, cursor)) {
            under = it->slot;
        }
    }
    if (under == m_hovered) {
        return;
    }
    m_hovered = under;
    for (const Figure& f : m_figures) {
        if (f.slot != m_selected) {
            object(f.slot)->SetObjStatus(f.slot == under ? TAVRIN_OBJ_STATUS_HIGHLIGHTED : TAVRIN_OBJ_STATUS_NORMAL);
        }
    }
}

void HostView::select(int slot)
{
    m_selected = find(slot) != nullptr ? slot : -1;
    m_hovered = -1;
    for (const Figure& f : m_figures) {
        object(f.slot)->SetObjStatus(f.slot == m_selected ? TAVRIN_OBJ_STATUS_SELECTED : TAVRIN_OBJ_STATUS_NORMAL);
    }
}

std::vector<tagTAVRIN_POINT> HostView::selectedVertices() const { return vertices(m_selected); }

bool HostView::restack(int slot, bool toTop)
{
    const auto it = std::find_if(m_figures.begin(), m_figures.end(), [slot](const Figure& f) { return f.slot == slot; });
    if (it == m_figures.end()) {
        return false;
    }
    if (toTop) {
        std::rotate(it, it + 1, m_figures.end());
    } else {
        std::rotate(m_figures.begin(), it, it + 1);
    }
    return true;
}

std::vector<int> HostView::figureSlots() const
{
    std::vector<int> out;
    for (const Figure& f : m_figures) {
        out.push_back(f.slot);
    }
    return out;
}

VcaObject* HostView::object(int slot) const
{
    VcaObjectContainer* registry = VcaObjectContainer::Instance();
    return registry != nullptr ? registry->GetVcaObject(slot) : nullptr;
}

void HostView::refresh(int slot)
{
    if (Figure* figure = find(slot)) {
        readBack(*figure);
    }
}

std::vector<tagTAVRIN_POINT> HostView::vertices(int slot) const
{
    const Figure* figure = find(slot);
    return figure != nullptr ? figure->vertices : std::vector<tagTAVRIN_POINT>();
}

tagTAVRIN_POINT HostView::normalised(int x, int y) const
{
    // A view without a size yet maps every pixel to the origin rather than to infinity.
    const float width = m_width > 0 ? static_cast<float>(m_width) : 0.0f;
    const float height = m_height > 0 ? static_cast<float>(m_height) : 0.0f;
    return tagTAVRIN_POINT{width > 0.0f ? static_cast<float>(x) / width : 0.0f,
                           height > 0.0f ? static_cast<float>(y) / height : 0.0f};
}

int HostView::slotOf(VcaObject* figure) const
{
    VcaObjectContainer* registry = VcaObjectContainer::Instance();
    if (figure == nullptr || registry == nullptr) {
        return -1;
    }
    // The registry has no reverse lookup: ask it slot by slot.
    const int limit = static_cast<int>(m_figures.size()) + kSlotHeadroom;
    for (int slot = 0; slot < limit; ++slot) {
        if (registry->GetVcaObject(slot) == figure) {
            return slot;
        }
    }
    return -1;
}

bool HostView::hits(Figure& figure, tagTAVRIN_POINT& cursor)
{
    return figure.hooks.hit ? figure.hooks.hit(cursor) : object(figure.slot)->CheckSelected(cursor);
}

void HostView::readBack(Figure& figure)
{
    // Buffers of the largest capacity any class writes (20 vertices).
    tagTAVRIN_POINT points[20] = {};
    unsigned int count = 0;
    if (figure.hooks.readBack && figure.hooks.readBack(points, &count) && count <= 20) {
        figure.vertices.assign(points, points + count);
    }
}

HostView::Figure* HostView::find(int slot)
{
    for (Figure& f : m_figures) {
        if (f.slot == slot) {
            return &f;
        }
    }
    return nullptr;
}

const HostView::Figure* HostView::find(int slot) const
{
    for (const Figure& f : m_figures) {
        if (f.slot == slot) {
            return &f;
        }
    }
    return nullptr;
}
