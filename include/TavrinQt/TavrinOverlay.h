#ifndef TAVRINQT_TAVRINOVERLAY_H
#define TAVRINQT_TAVRINOVERLAY_H

#include <Tavrin/TavrinTypes.h>
#include <TavrinQt/TavrinQtExport.h>

#include <QList>
#include <QQuickItem>
#include <QVariantList>

namespace Tavrin {

class VcaObject;

/// A Qt Quick item that draws the registry's figures over whatever lies beneath it —
/// typically a `VideoOutput` filling the same area — and lets the user edit them with the
/// mouse. QML module `Tavrin` 1.0, type `TavrinOverlay`; call `RegisterQmlType()` once
/// before loading QML that imports it.
///
/// The figures are captured into a draw list at the item's size (one view pixel per item
/// unit) and drawn as the list's triangle form in one scene-graph geometry node, textured
/// with the built-in font atlas, so the item works on every scene-graph backend (OpenGL,
/// Vulkan, Metal, Direct3D). The item's `antialiasing` adds the one-pixel fringes of the
/// triangle form to the lines and points the OpenGL path smooths.
///
/// The picture is redrawn when the item changes size, when the user edits a figure and
/// when the host calls `update()`; call it after changing figures from code. Figures are
/// drawn from the GUI-blocked synchronisation step of the scene graph, so a host that
/// edits them only from the GUI thread needs no locking. The process-wide text switch is
/// set to `textEnabled` for the capture and put back afterwards.
///
/// Editing follows the example host's protocol: a left press picks the topmost figure
/// whose vertex lies under the cursor (that vertex is dragged), else whose own handles do
/// (an AtmCali's calibration line ends, a PdcRule's calibration points), else which the
/// cursor is on (dragged whole; a LfCali marker only within 0.02 of its point). The
/// figure becomes selected (status 1, the others 0); hovering shows status 2. A press on
/// no figure deselects and is passed on to the items beneath. Each drag step goes through
/// the figure's own `MovePoint`, handle call or `Move`, so a step that would leave the
/// picture is refused by the figure as usual.
class TAVRIN_QT_API TavrinOverlay : public QQuickItem {
    Q_OBJECT
    Q_PROPERTY(bool textEnabled READ textEnabled WRITE setTextEnabled NOTIFY textEnabledChanged)
    Q_PROPERTY(bool editable READ editable WRITE setEditable NOTIFY editableChanged)
    Q_PROPERTY(QList<int> figureSlots READ figureSlots WRITE setFigureSlots NOTIFY figureSlotsChanged)
    Q_PROPERTY(int selectedSlot READ selectedSlot NOTIFY figureSelected)

public:
    explicit TavrinOverlay(QQuickItem* parent = nullptr);
    ~TavrinOverlay() override;

    /// Registers `TavrinOverlay` in the QML module `Tavrin` 1.0. Calling it again does nothing.
    static void RegisterQmlType();

    /// Whether figure labels and texts are drawn (default false, as the library's switch).
    bool textEnabled() const { return m_textEnabled; }
    void setTextEnabled(bool on);
    /// Whether presses and drags edit the figures (default true). Off, every press goes to
    /// the items beneath and hovering changes nothing.
    bool editable() const { return m_editable; }
    void setEditable(bool on);
    /// The registry slots to draw and edit, in drawing order (the last is on top). Empty,
    /// the default, means every occupied slot in ascending order.
    QList<int> figureSlots() const { return m_slots; }
    void setFigureSlots(const QList<int>& list);
    /// The selected figure's slot, or -1.
    int selectedSlot() const { return m_selected; }

    /// The figure's vertices in normalised picture coordinates (QPointF, 0..1 with y
    /// downwards), as the host sends them to the camera; empty for an empty slot.
    Q_INVOKABLE QVariantList vertices(int slot) const;
    /// Selects the figure in `slot` as a press would (-1 deselects).
    Q_INVOKABLE void select(int slot);

signals:
    void textEnabledChanged();
    void editableChanged();
    void figureSlotsChanged();
    /// The selection changed; `slot` is the selected figure or -1.
    void figureSelected(int slot);
    /// A drag that changed the figure in `slot` has ended: time to send it to the camera.
    void figureEdited(int slot);

protected:
    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void hoverMoveEvent(QHoverEvent* event) override;

private:
    enum class Drag { None, Vertex, Handle, Whole };

    QList<int> drawnSlots() const;
    tagTAVRIN_POINT normalised(const QPointF& position) const;
    Drag grab(VcaObject* figure, tagTAVRIN_POINT& cursor);
    int figureUnder(tagTAVRIN_POINT cursor) const;
    void dragTo(const tagTAVRIN_POINT& to);

    bool m_textEnabled = false;
    bool m_editable = true;
    QList<int> m_slots;
    int m_selected = -1;
    int m_hovered = -1;
    Drag m_drag = Drag::None;
    tagTAVRIN_POINT m_last{0.0f, 0.0f};
    QByteArray m_beforeDrag;
};

}  // namespace Tavrin

#endif  // TAVRINQT_TAVRINOVERLAY_H
