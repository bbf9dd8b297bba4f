#include <TavrinQt/TavrinOverlay.h>

#include "quick/OverlayNode.h"

#include <Tavrin/AtmCali.h>
#include <Tavrin/DrawList.h>
#include <Tavrin/Editing.h>
#include <Tavrin/LfCali.h>
#include <Tavrin/PdcRule.h>
#include <Tavrin/TextRendering.h>
#include <Tavrin/VcaObjectContainer.h>

#include <QHoverEvent>
#include <QMouseEvent>
#include <QPointF>
#include <QtQml/qqml.h>

#include <cmath>
#include <cstring>
#include <vector>

namespace Tavrin {

namespace {

// The library's vertex tolerance, used for a LfCali marker, whose own CheckSelected
// answers true everywhere.
const float kMarkerTolerance = 0.02f;

// The item's extent in whole view pixels; 0 for a size that is not a usable number.
int viewPixels(double extent) { return extent >= 0.5 && extent < 1e8 ? static_cast<int>(std::lround(extent)) : 0; }

VcaObject* figureIn(int slot)
{
    VcaObjectContainer* registry = VcaObjectContainer::Instance();
    return registry != nullptr ? registry->GetVcaObject(slot) : nullptr;
}

bool onFigure(VcaObject* figure, tagTAVRIN_POINT& cursor)
{
    if (dynamic_cast<LfCali*>(figure) != nullptr) {
        const std::vector<tagTAVRIN_POINT> point = GetVertices(figure);
        return !point.empty() && std::hypot(cursor.x - point[0].x, cursor.y - point[0].y) < kMarkerTolerance;
    }
    return figure->CheckSelected(cursor);
}

// Everything a drag can change, as bytes: the vertices, the people-counting calibration
// points and an AtmCali's calibration line.
QByteArray editableState(VcaObject* figure)
{
    std::vector<tagTAVRIN_POINT> points = GetVertices(figure);
    tagTAVRIN_POINT extra[4] = {};
    unsigned int count = 0;
    figure->GetPDCCaliPoint(extra, &count);
    if (auto* atm = dynamic_cast<AtmCali*>(figure)) {
        atm->GetLinePoints(&extra[2], &extra[3]);
    }
    points.insert(points.end(), extra, extra + 4);
    return QByteArray(reinterpret_cast<const char*>(points.data()),
                      static_cast<int>(points.size() * sizeof(tagTAVRIN_POINT)));
}

}  // namespace

TavrinOverlay::TavrinOverlay(QQuickItem* parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents, true);
    setAcceptedMouseButtons(Qt::LeftButton);
    setAcceptHoverEvents(true);
}

TavrinOverlay::~TavrinOverlay() = default;

void TavrinOverlay::RegisterQmlType()
{
    static const int type = qmlRegisterType<TavrinOverlay>("Tavrin", 1, 0, "TavrinOverlay");
    Q_UNUSED(type);
}

void TavrinOverlay::setTextEnabled(bool on)
{
    if (on != m_textEnabled) {
        m_textEnabled = on;
        emit textEnabledChanged();
        update();
    }
}

void TavrinOverlay::setEditable(bool on)
{
    if (on == m_editable) {
        return;
    }
    m_editable = on;
    setAcceptedMouseButtons(on ? Qt::LeftButton : Qt::NoButton);
    setAcceptHoverEvents(on);
    m_drag = Drag::None;
    emit editableChanged();
}

void TavrinOverlay::setFigureSlots(const QList<int>& list)
{
    if (list != m_slots) {
        m_slots = list;
        emit figureSlotsChanged();
        update();
    }
}

QList<int> TavrinOverlay::drawnSlots() const
{
    if (!m_slots.isEmpty()) {
        return m_slots;
    }
    QList<int> all;
    for (const int slot : GetOccupiedSlots()) {
        all.append(slot);
    }
    return all;
}

QVariantList TavrinOverlay::vertices(int slot) const
{
    QVariantList out;
    for (const tagTAVRIN_POINT& p : GetVertices(figureIn(slot))) {
        out.append(QPointF(p.x, p.y));
    }
    return out;
}

void TavrinOverlay::select(int slot)
{
    const int selected = figureIn(slot) != nullptr ? slot : -1;
    for (const int s : drawnSlots()) {
        if (VcaObject* figure = figureIn(s)) {
            figure->SetObjStatus(s == selected ? TAVRIN_OBJ_STATUS_SELECTED : TAVRIN_OBJ_STATUS_NORMAL);
        }
    }
    m_hovered = -1;
    update();
    if (selected != m_selected) {
        m_selected = selected;
        emit figureSelected(selected);
    }
}

tagTAVRIN_POINT TavrinOverlay::normalised(const QPointF& position) const
{
    // A view without a size maps every position to the origin rather than to infinity.
    const double w = width() >= 1.0 ? width() : 0.0;
    const double h = height() >= 1.0 ? height() : 0.0;
    return tagTAVRIN_POINT{w > 0.0 ? static_cast<float>(position.x() / w) : 0.0f,
                           h > 0.0 ? static_cast<float>(position.y() / h) : 0.0f};
}

TavrinOverlay::Drag TavrinOverlay::grab(VcaObject* figure, tagTAVRIN_POINT& cursor)
{
    if (const unsigned int vertex = figure->CheckPointSelected(cursor)) {
        figure->SetSelPointIndex(vertex);
        return Drag::Vertex;
    }
    if (auto* atm = dynamic_cast<AtmCali*>(figure)) {
        if (const unsigned int end = atm->CheckLinePointSelected(cursor)) {
            atm->SetLineSelPointIndex(end);
            return Drag::Handle;
        }
    }
    if (auto* rule = dynamic_cast<PdcRule*>(figure)) {
        if (const unsigned int point = rule->CheckCaliPointSelected(cursor)) {
            rule->SetSelCaliPointIndex(point);
            return Drag::Handle;
        }
    }
    if (onFigure(figure, cursor)) {
        figure->SetSelPointIndex(0);
        return Drag::Whole;
    }
    return Drag::None;
}

int TavrinOverlay::figureUnder(tagTAVRIN_POINT cursor) const
{
    const QList<int> order = drawnSlots();
    for (auto it = order.rbegin(); it != order.rend(); ++it) {
        VcaObject* figure = figureIn(*it);
        tagTAVRIN_POINT p = cursor;
        if (figure != nullptr && (figure->CheckPointSelected(p) != 0 || onFigure(figure, p))) {
            return *it;
        }
    }
    return -1;
}

void TavrinOverlay::mousePressEvent(QMouseEvent* event)
{
    m_drag = Drag::None;
    const tagTAVRIN_POINT p = normalised(event->position());
    // Topmost first: the figure drawn last is the one on top.
    const QList<int> order = drawnSlots();
    for (auto it = order.rbegin(); it != order.rend() && m_drag == Drag::None; ++it) {
        VcaObject* figure = figureIn(*it);
        tagTAVRIN_POINT cursor = p;
        if (figure != nullptr && (m_drag = grab(figure, cursor)) != Drag::None) {
            select(*it);
            m_beforeDrag = editableState(figure);
        }
    }
    if (m_drag == Drag::None) {
        select(-1);
        event->ignore();
        return;
    }
    m_last = p;
    event->accept();
}

void TavrinOverlay::dragTo(const tagTAVRIN_POINT& to)
{
    VcaObject* figure = figureIn(m_selected);
    if (figure == nullptr) {
        m_drag = Drag::None;
        return;
    }
    tagTAVRIN_POINT from = m_last;
    tagTAVRIN_POINT end = to;
    if (m_drag == Drag::Vertex) {
        figure->MovePoint(from, end);
    } else if (m_drag == Drag::Whole) {
        figure->Move(from, end);
    } else if (auto* atm = dynamic_cast<AtmCali*>(figure)) {
        atm->MoveLinePoint(from, end);
    } else {
        figure->MoveCaliPoints(from, end);
    }
    // A refused step leaves the figure where it was; the next one starts from the cursor.
    m_last = to;
    update();
}

void TavrinOverlay::mouseMoveEvent(QMouseEvent* event)
{
    if (m_drag != Drag::None) {
        dragTo(normalised(event->position()));
    }
}

void TavrinOverlay::mouseReleaseEvent(QMouseEvent* event)
{
    if (m_drag == Drag::None) {
        event->ignore();
        return;
    }
    dragTo(normalised(event->position()));
    m_drag = Drag::None;
    VcaObject* figure = figureIn(m_selected);
    if (figure != nullptr && editableState(figure) != m_beforeDrag) {
        emit figureEdited(m_selected);
    }
}

void TavrinOverlay::hoverMoveEvent(QHoverEvent* event)
{
    const int under = figureUnder(normalised(event->position()));
    if (under == m_hovered || m_drag != Drag::None) {
        return;
    }
    m_hovered = under;
    for (const int slot : drawnSlots()) {
        VcaObject* figure = figureIn(slot);
        if (figure != nullptr && slot != m_selected) {
            figure->SetObjStatus(slot == under ? TAVRIN_OBJ_STATUS_HIGHLIGHTED : TAVRIN_OBJ_STATUS_NORMAL);
        }
    }
    update();
}

void TavrinOverlay::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size()) {
        update();
    }
}

QSGNode* TavrinOverlay::updatePaintNode(QSGNode* old, UpdatePaintNodeData*)
{
    auto* node = static_cast<quick::OverlayNode*>(old);
    if (node == nullptr) {
        node = new quick::OverlayNode(window());
    }
    const int w = viewPixels(width());
    const int h = viewPixels(height());
    {
        const bool textWas = TextRendering::IsEnabled();
        TextRendering::SetEnabled(m_textEnabled);
        DrawListScope scope(node->emptyList());
        for (const int slot : drawnSlots()) {
            if (VcaObject* figure = figureIn(slot)) {
                figure->Draw(nullptr, w, h, true);
            }
        }
        TextRendering::SetEnabled(textWas);
    }
    node->showList(antialiasing());
    return node;
}

}  // namespace Tavrin
