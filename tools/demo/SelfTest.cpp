// Synthetic events go straight to the window (not through a cursor warp, which a
// display server delivers late), and carry the pressed button with every move.
#define QTEST_QPA_MOUSE_HANDLING
#include "SelfTest.h"

#include "DemoView.h"
#include "MainWindow.h"
#include "PropertyPanel.h"
#include "SceneDocument.h"

#include <Tavrin/Crossings.h>
#include <Tavrin/Diagnostics.h>
#include <Tavrin/Editing.h>
#include <Tavrin/TextRendering.h>

#include <QAction>
#include <QFileInfo>
#include <QLabel>
#include <QStandardPaths>
#include <QStatusBar>
#include <QUndoStack>
#include <QWheelEvent>
#include <QCoreApplication>
#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <cstdio>
#include <vector>

namespace Tavrin {
namespace demo {

namespace {

using Points = std::vector<tagTAVRIN_POINT>;

QString pointsText(const Points& points)
{
    QStringList items;
    for (const tagTAVRIN_POINT& p : points) {
        items << QStringLiteral("(%1, %2)").arg(double(p.x), 0, 'g', 9).arg(double(p.y), 0, 'g', 9);
    }
    return items.join(QLatin1Char(' '));
}

bool samePoints(const Points& a, const Points& b)
{
    bool same = a.size() == b.size();
    for (std::size_t i = 0; same && i < a.size(); ++i) {
        same = a[i].x == b[i].x && a[i].y == b[i].y;
    }
    return same;
}

// Kinds whose corner drags move the neighbouring corners too (their rectangle or square
// follows the dragged corner).
bool cornersFollow(const QString& kind) { return kind == QLatin1String("SizeFilter") || kind == QLatin1String("AtmCali"); }

class Script {
public:
    Script(MainWindow& window, SceneDocument& document)
        : m_window(window), m_document(document), m_view(*window.view()), m_host(document.view())
    {
    }

    int run(const SelfTestFiles& files);

private:
    void check(bool ok, const QString& what)
    {
        ++(ok ? m_passed : m_failed);
        if (!ok) {
            std::printf("FAIL: %s\n", what.toLocal8Bit().constData());
        }
    }
    void skip(const QString& what)
    {
        ++m_skipped;
        std::printf("skipped: %s\n", what.toLocal8Bit().constData());
    }

    /// The widget pixel nearest to a normalised point: the picture starts after the margin.
    QPoint pixelOf(const tagTAVRIN_POINT& p) const
    {
        const qreal ratio = m_view.devicePixelRatioF();
        return m_view.pictureOrigin() + QPoint(static_cast<int>(std::lround(p.x * m_host.width() / ratio)),
                                               static_cast<int>(std::lround(p.y * m_host.height() / ratio)));
    }
    /// The normalised point the view makes of a widget pixel, as DemoView does.
    tagTAVRIN_POINT pointOf(const QPoint& pixel) const
    {
        const qreal ratio = m_view.devicePixelRatioF();
        const QPoint inPicture = pixel - m_view.pictureOrigin();
        return m_host.normalised(static_cast<int>(std::lround(inPicture.x() * ratio)),
                                 static_cast<int>(std::lround(inPicture.y() * ratio)));
    }
    /// A few pixels from `p` towards the picture's middle, so that a drag stays inside.
    static QPoint towardsMiddle(const tagTAVRIN_POINT& p) { return QPoint(p.x < 0.5f ? 7 : -7, p.y < 0.5f ? 5 : -5); }

    /// Every vertex (or only vertex `only`) moved by the drag from `from` to `to`, as a
    /// figure adds it: the difference of the two cursor points in single precision.
    static Points moved(Points vertices, const tagTAVRIN_POINT& from, const tagTAVRIN_POINT& to, int only = -1)
    {
        const float dx = to.x - from.x;
        const float dy = to.y - from.y;
        for (std::size_t i = 0; i < vertices.size(); ++i) {
            if (only < 0 || static_cast<int>(i) == only) {
                vertices[i].x = vertices[i].x + dx;
                vertices[i].y = vertices[i].y + dy;
            }
        }
        return vertices;
    }

    void checkTable(const Points& expected);
    bool pressSelects(const QPoint& at, int slot, unsigned int vertex);
    void dragVertex(int slot);
    void dragWhole(int slot);
    void placeAndDelete();
    void editLabel(int slot);
    void saveAndReload(const QString& path);
    void keyboardAndHistory();
    void duplicateAndRestack();
    void vertexTools();
    void panelsAndStatus();
    void unsavedChanges();
    void testTrack();
    void zoomAndPan();
    void wheel(const QPoint& at, int notches);
    /// With --grab, a picture of `widget` beside the grab, named after `what`: the
    /// pictures of docs/editor.md.
    void picture(const QString& what, QWidget& widget);
    /// The first figure whose vertex count its kind may grow (or shrink, with `shrink`).
    int figureWithRoom(bool shrink) const;

    MainWindow& m_window;
    SceneDocument& m_document;
    DemoView& m_view;
    HostView& m_host;
    int m_passed = 0;
    int m_failed = 0;
    int m_skipped = 0;

public:
    /// Where --grab writes the view; the zoomed view goes beside it.
    QString m_grabPath;
    /// How often the unsaved-changes question was asked, and what it answers.
    int m_asked = 0;
    QMessageBox::StandardButton m_answer = QMessageBox::Discard;
};

void Script::checkTable(const Points& expected)
{
    QTableWidget* table = m_window.panel()->vertexTable();
    bool same = table->rowCount() == static_cast<int>(expected.size());
    for (int row = 0; same && row < table->rowCount(); ++row) {
        const tagTAVRIN_POINT& p = expected[static_cast<std::size_t>(row)];
        same = table->item(row, 0) != nullptr && table->item(row, 1) != nullptr &&
               table->item(row, 0)->text() == QString::number(p.x, 'f', 6) &&
               table->item(row, 1)->text() == QString::number(p.y, 'f', 6);
    }
    check(same, QStringLiteral("the vertex table shows the vertices read back"));
}

// Presses at `at` and keeps the button down when the press selected `slot` with vertex
// `vertex` active (0: the figure itself); otherwise releases it and answers false.
bool Script::pressSelects(const QPoint& at, int slot, unsigned int vertex)
{
    QTest::mousePress(&m_view, Qt::LeftButton, Qt::NoModifier, at);
    const VcaObject* figure = m_host.object(slot);
    if (m_host.selectedSlot() == slot && figure != nullptr &&
        const_cast<VcaObject*>(figure)->GetSelPointIndex() == vertex) {
        return true;
    }
    QTest::mouseRelease(&m_view, Qt::LeftButton, Qt::NoModifier, at);
    return false;
}

// Grabs the figure by the first of its vertices that a press reaches (another figure may
// lie over the rest) and drags it a few pixels towards the middle.
void Script::dragVertex(int slot)
{
    const QString kind = m_document.kind(slot);
    const Points start = m_host.vertices(slot);
    for (std::size_t k = 0; k < start.size(); ++k) {
        const QPoint at = pixelOf(start[k]);
        if (!pressSelects(at, slot, static_cast<unsigned int>(k + 1))) {
            continue;
        }
        const QPoint to = at + towardsMiddle(start[k]);
        QTest::mouseMove(&m_view, to);
        QTest::mouseRelease(&m_view, Qt::LeftButton, Qt::NoModifier, to);
        const Points expected = moved(start, pointOf(at), pointOf(to), static_cast<int>(k));
        const Points got = m_host.vertices(slot);
        const bool ok = cornersFollow(kind) ? got.size() == start.size() && !samePoints(got, start)
                                            : samePoints(got, expected);
        check(ok, QStringLiteral("%1 (slot %2): vertex %3 dragged: read back %4, expected %5")
                      .arg(kind).arg(slot).arg(k + 1).arg(pointsText(got), pointsText(expected)));
        checkTable(got);
        return;
    }
    skip(QStringLiteral("%1 (slot %2): no vertex a press reaches").arg(kind).arg(slot));
}

// Grabs the figure inside (its centre, or the middle of one of its edges) and drags it
// whole a few pixels towards the middle.
void Script::dragWhole(int slot)
{
    const QString kind = m_document.kind(slot);
    const Points start = m_host.vertices(slot);
    Points candidates;
    tagTAVRIN_POINT centre{0.0f, 0.0f};
    for (const tagTAVRIN_POINT& p : start) {
        centre.x += p.x / static_cast<float>(start.size());
        centre.y += p.y / static_cast<float>(start.size());
    }
    candidates.push_back(centre);
    for (std::size_t i = 0; i + 1 < start.size(); ++i) {
        candidates.push_back({(start[i].x + start[i + 1].x) / 2.0f, (start[i].y + start[i + 1].y) / 2.0f});
    }
    for (const tagTAVRIN_POINT& c : candidates) {
        const QPoint at = pixelOf(c);
        if (!pressSelects(at, slot, 0)) {
            continue;
        }
        const QPoint to = at + towardsMiddle(c);
        QTest::mouseMove(&m_view, to);
        QTest::mouseRelease(&m_view, Qt::LeftButton, Qt::NoModifier, to);
        const Points expected = moved(start, pointOf(at), pointOf(to));
        const Points got = m_host.vertices(slot);
        check(samePoints(got, expected), QStringLiteral("%1 (slot %2): dragged whole: read back %3, expected %4")
                                             .arg(kind).arg(slot).arg(pointsText(got), pointsText(expected)));
        return;
    }
    skip(QStringLiteral("%1 (slot %2): no inner point a press reaches").arg(kind).arg(slot));
}

void Script::placeAndDelete()
{
    const std::size_t before = m_host.figureSlots().size();
    QListWidget* palette = m_window.palette();
    QList<QListWidgetItem*> found;
    int drawnIcons = 0;
    for (int row = 0; row < palette->count(); ++row) {
        QListWidgetItem* item = palette->item(row);
        if (item->data(Qt::UserRole).toString() == QLatin1String("ReferenceRegion")) {
            found.append(item);
        }
        // Each icon is the library's drawing of the kind: something is drawn on it.
        const QImage icon = item->icon().pixmap(palette->iconSize()).toImage();
        bool ink = false;
        for (int y = 0; y < icon.height() && !ink; ++y) {
            for (int x = 0; x < icon.width() && !ink; ++x) {
                ink = qAlpha(icon.pixel(x, y)) > 0;
            }
        }
        drawnIcons += ink && !item->toolTip().isEmpty() &&
                      item->text().endsWith(item->data(Qt::UserRole).toString()) ? 1 : 0;
    }
    check(palette->count() == 16 && !found.isEmpty(), QStringLiteral("the palette offers the sixteen kinds"));
    check(drawnIcons == 16, QStringLiteral("every kind shows its purpose, its class, a tooltip and a drawn icon (%1)")
                                .arg(drawnIcons));
    if (found.isEmpty()) {
        return;
    }
    QTest::mouseClick(palette->viewport(), Qt::LeftButton, Qt::NoModifier,
                      palette->visualItemRect(found.first()).center());
    check(m_view.placing(), QStringLiteral("a palette click starts placing"));
    // On the picture's left edge and beyond it in the margin: clamped into the picture.
    const QPoint clicks[3] = {pixelOf({0.0f, 0.6f}), pixelOf({0.15f, 0.6f}), pixelOf({0.1f, 0.75f})};
    Points expected;
    for (const QPoint& click : clicks) {
        QTest::mouseClick(&m_view, Qt::LeftButton, Qt::NoModifier, click);
        expected.push_back(pointOf(click));
    }
    QTest::keyClick(&m_view, Qt::Key_Return);
    check(!m_view.placing() && m_host.figureSlots().size() == before + 1, QStringLiteral("Enter places the figure"));
    const int placed = m_host.selectedSlot();
    check(m_document.kind(placed) == QLatin1String("ReferenceRegion"), QStringLiteral("the new figure is selected"));
    const Points got = m_host.vertices(placed);
    check(samePoints(got, expected),
          QStringLiteral("placed vertices: read back %1, expected %2").arg(pointsText(got), pointsText(expected)));

    // Its vertex on the picture's edge: its handle lies half in the margin and a press
    // there grabs it.
    QTest::mouseClick(&m_view, Qt::LeftButton, Qt::NoModifier, clicks[0] + QPoint(-3, 0));
    check(m_host.selectedSlot() == placed && m_host.object(placed)->GetSelPointIndex() == 1,
          QStringLiteral("a press in the margin beside an edge vertex grabs it"));

    // The right button offers Delete, with the shortcut the menu shows.
    QTest::mouseClick(&m_view, Qt::RightButton, Qt::NoModifier, pixelOf({0.1f, 0.65f}));
    QMenu* menu = m_window.figureMenu();
    check(m_host.selectedSlot() == placed && menu->isVisible() && menu->actions().contains(m_window.deleteAction()),
          QStringLiteral("a right click selects the figure and offers Delete"));
    check(m_window.deleteAction()->shortcut() == QKeySequence(QKeySequence::Delete),
          QStringLiteral("Delete figure shows its Delete shortcut"));
    menu->hide();
    // The key goes to the view, as after a click on it (the menu had the focus).
    m_view.activateWindow();
    m_view.setFocus();
    check(QTest::qWaitFor([this] { return m_view.hasFocus() && !m_window.figureMenu()->isVisible(); }, 2000),
          QStringLiteral("the view has the keyboard again once the menu is gone"));
    QTest::keyClick(&m_view, Qt::Key_Delete);
    check(m_host.figureSlots().size() == before && m_document.kind(placed).isEmpty(),
          QStringLiteral("Delete removes the selected figure"));

    // Escape cancels placing: no figure is made.
    m_view.startPlacing(QStringLiteral("Lane"));
    QTest::mouseClick(&m_view, Qt::LeftButton, Qt::NoModifier, clicks[1]);
    QTest::keyClick(&m_view, Qt::Key_Escape);
    check(!m_view.placing() && m_host.figureSlots().size() == before, QStringLiteral("Escape cancels placing"));
}

void Script::editLabel(int slot)
{
    // Typed into the panel's label field: the figure is built again with the new label,
    // in the same place, still selected, its vertices as they were. A label longer than
    // the class holds is refused, with the reason in the status bar.
    m_host.select(slot);
    m_window.panel()->showSelection();
    const Points before = m_host.vertices(slot);
    auto* edit = m_window.panel()->findChild<QLineEdit*>(QStringLiteral("label"));
    if (edit == nullptr) {
        check(false, QStringLiteral("the panel offers the label"));
        return;
    }
    const QString typed = QStringLiteral("Zone 7");
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, typed);
    QTest::keyClick(edit, Qt::Key_Return);
    const int relabelled = m_host.selectedSlot();
    char label[17] = {};
    const bool read = m_host.object(relabelled) != nullptr && m_host.object(relabelled)->GetLabelText(label, 16);
    const QString readBack = QLatin1String(label);
    check(read && readBack == typed, QStringLiteral("the label reads back as typed (%1)").arg(readBack));
    check(samePoints(m_host.vertices(relabelled), before), QStringLiteral("vertices kept after relabelling"));

    edit = m_window.panel()->findChild<QLineEdit*>(QStringLiteral("label"));
    if (edit != nullptr) {
        edit->setFocus();
        edit->selectAll();
        QTest::keyClicks(edit, QStringLiteral("Seventeen letters"));
        QTest::keyClick(edit, Qt::Key_Return);
        QTest::qWait(10);
        char after[17] = {};
        const int slotAfter = m_host.selectedSlot();
        m_host.object(slotAfter)->GetLabelText(after, 16);
        check(QLatin1String(after) == typed, QStringLiteral("a 17-character label is refused, not cut"));
    }
}

// Tab selects, the arrows nudge by a pixel (Shift: ten), each nudge is one step that
// Ctrl+Z takes back and Ctrl+Shift+Z brings again, Escape deselects.
void Script::keyboardAndHistory()
{
    m_view.setFocus();
    m_host.select(-1);
    QTest::keyClick(&m_view, Qt::Key_Tab);
    const std::vector<int> order = m_host.figureSlots();
    check(!order.empty() && m_host.selectedSlot() == order.front(), QStringLiteral("Tab selects the first figure"));
    // A figure well inside the picture, so that the nudges are taken.
    int slot = -1;
    for (const int candidate : order) {
        bool inside = true;
        for (const tagTAVRIN_POINT& p : m_host.vertices(candidate)) {
            inside = inside && p.x > 0.05f && p.x < 0.95f && p.y > 0.05f && p.y < 0.95f;
        }
        if (inside && slot < 0) {
            slot = candidate;
        }
    }
    if (slot < 0) {
        skip(QStringLiteral("nudges: no figure lies well inside the picture"));
        return;
    }
    while (m_host.selectedSlot() != slot) {
        QTest::keyClick(&m_view, Qt::Key_Tab);
    }
    const int steps = m_window.history()->index();
    const Points start = m_host.vertices(slot);
    QTest::keyClick(&m_view, Qt::Key_Right);
    const Points right = m_host.vertices(slot);
    QTest::keyClick(&m_view, Qt::Key_Down, Qt::ShiftModifier);
    const Points down = m_host.vertices(slot);
    bool byPixels = right.size() == start.size() && down.size() == start.size();
    for (std::size_t i = 0; byPixels && i < start.size(); ++i) {
        byPixels = std::fabs(right[i].x - start[i].x - 1.0f / m_host.width()) < 1e-5f && right[i].y == start[i].y &&
                   std::fabs(down[i].y - right[i].y - 10.0f / m_host.height()) < 1e-5f && down[i].x == right[i].x;
    }
    check(byPixels, QStringLiteral("Right nudges by one view pixel, Shift+Down by ten"));
    check(m_window.history()->index() == steps + 2, QStringLiteral("each nudge is one step of the history"));
    QAction* history = m_window.action(QStringLiteral("history"));
    history->trigger();
    picture(QStringLiteral("history"), m_window);
    history->trigger();
    QTest::keyClick(&m_window, Qt::Key_Z, Qt::ControlModifier);
    check(samePoints(m_host.vertices(m_host.selectedSlot()), right), QStringLiteral("Ctrl+Z takes the last nudge back"));
    QTest::keyClick(&m_window, Qt::Key_Z, Qt::ControlModifier);
    check(samePoints(m_host.vertices(m_host.selectedSlot()), start) && m_window.history()->index() == steps,
          QStringLiteral("a second Ctrl+Z takes the first back"));
    QTest::keyClick(&m_window, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    check(samePoints(m_host.vertices(m_host.selectedSlot()), right), QStringLiteral("Ctrl+Shift+Z does it again"));
    m_view.setFocus();
    QTest::keyClick(&m_view, Qt::Key_Escape);
    check(m_host.selectedSlot() == -1, QStringLiteral("Escape deselects"));
}

// Ctrl+D copies the selected figure on top, a few pixels away; Send to back and Bring to
// front change the drawing order; undo takes the copy away.
void Script::duplicateAndRestack()
{
    const std::vector<int> before = m_host.figureSlots();
    if (before.empty()) {
        return;
    }
    m_host.select(before.front());
    m_window.panel()->showSelection();
    QTest::keyClick(&m_window, Qt::Key_D, Qt::ControlModifier);
    const std::vector<int> after = m_host.figureSlots();
    const int copy = m_host.selectedSlot();
    check(after.size() == before.size() + 1 && after.back() == copy &&
              m_document.kind(copy) == m_document.kind(before.front()),
          QStringLiteral("Ctrl+D puts a copy of the figure on top, selected"));
    m_window.action(QStringLiteral("back"))->trigger();
    check(m_host.figureSlots().front() == copy, QStringLiteral("Send to back draws the figure first"));
    m_window.action(QStringLiteral("front"))->trigger();
    check(m_host.figureSlots().back() == copy, QStringLiteral("Bring to front draws it last"));
    m_window.action(QStringLiteral("undo"))->trigger();
    m_window.action(QStringLiteral("undo"))->trigger();
    m_window.action(QStringLiteral("undo"))->trigger();
    check(m_host.figureSlots().size() == before.size(), QStringLiteral("undo takes the copy away again"));
}

int Script::figureWithRoom(bool shrink) const
{
    for (const int slot : m_host.figureSlots()) {
        const VertexLimits limits = GetVertexLimits(m_host.object(slot));
        const std::size_t count = m_host.vertices(slot).size();
        if (shrink ? count > limits.minCount : count < limits.maxCount) {
            return slot;
        }
    }
    return -1;
}

// A click on the ghost handle in the middle of an edge inserts a vertex there; the
// right-click menu on a vertex deletes it; a typed coordinate moves one.
void Script::vertexTools()
{
    const int slot = figureWithRoom(false);
    if (slot < 0) {
        skip(QStringLiteral("vertex insertion: no figure takes another vertex"));
    } else {
        m_host.select(slot);
        const Points before = m_host.vertices(slot);
        const tagTAVRIN_POINT middle{(before[0].x + before[1].x) / 2.0f, (before[0].y + before[1].y) / 2.0f};
        const QPoint at = pixelOf(middle);
        QTest::mouseMove(&m_view, at);
        check(m_view.ghost().hit, QStringLiteral("hovering over an edge of the selected figure shows the ghost handle"));
        picture(QStringLiteral("ghost"), m_view);
        QTest::mouseClick(&m_view, Qt::LeftButton, Qt::NoModifier, at);
        const Points after = m_host.vertices(m_host.selectedSlot());
        check(after.size() == before.size() + 1 && std::fabs(after[1].x - middle.x) < 0.01f &&
                  std::fabs(after[1].y - middle.y) < 0.01f,
              QStringLiteral("a click on the ghost inserts a vertex on the edge: %1").arg(pointsText(after)));
        m_window.action(QStringLiteral("undo"))->trigger();
        check(samePoints(m_host.vertices(m_host.selectedSlot()), before), QStringLiteral("undo removes it again"));
    }
    const int shrinking = figureWithRoom(true);
    if (shrinking < 0) {
        skip(QStringLiteral("vertex deletion: no figure can lose a vertex"));
    } else {
        m_host.select(shrinking);
        const Points before = m_host.vertices(shrinking);
        QTest::mouseClick(&m_view, Qt::RightButton, Qt::NoModifier, pixelOf(before.back()));
        QAction* remove = m_window.action(QStringLiteral("deleteVertex"));
        check(m_window.figureMenu()->isVisible() && remove->isVisible(),
              QStringLiteral("a right click on a vertex offers Delete vertex"));
        m_window.figureMenu()->hide();
        remove->trigger();
        check(m_host.vertices(m_host.selectedSlot()).size() == before.size() - 1,
              QStringLiteral("Delete vertex removes it"));
        m_window.action(QStringLiteral("undo"))->trigger();
    }
    // A line has exactly two ends: deleting one is refused, and the status bar says why.
    for (const int line : m_host.figureSlots()) {
        const VertexLimits limits = GetVertexLimits(m_host.object(line));
        if (limits.minCount == limits.maxCount && limits.minCount > 1) {
            m_host.select(line);
            QTest::mouseClick(&m_view, Qt::RightButton, Qt::NoModifier, pixelOf(m_host.vertices(line).front()));
            m_window.figureMenu()->hide();
            if (m_window.action(QStringLiteral("deleteVertex"))->isVisible()) {
                m_window.action(QStringLiteral("deleteVertex"))->trigger();
                check(m_host.vertices(line).size() == limits.minCount &&
                          m_window.statusBar()->currentMessage().contains(QStringLiteral("always has")),
                      QStringLiteral("deleting a vertex of a fixed count is refused with the reason: %1")
                          .arg(m_window.statusBar()->currentMessage()));
            }
            break;
        }
    }
    // The keyboard does the same: Insert puts a vertex after the active one, Shift+Delete
    // takes the active one away again.
    const int keyed = figureWithRoom(false);
    if (keyed >= 0) {
        m_host.select(keyed);
        m_host.object(keyed)->SetSelPointIndex(1);
        const Points before = m_host.vertices(keyed);
        m_view.setFocus();
        QTest::keyClick(&m_view, Qt::Key_Insert);
        const Points inserted = m_host.vertices(m_host.selectedSlot());
        const tagTAVRIN_POINT middle{(before[0].x + before[1].x) / 2.0f, (before[0].y + before[1].y) / 2.0f};
        check(inserted.size() == before.size() + 1 && inserted[1].x == middle.x && inserted[1].y == middle.y &&
                  m_host.object(m_host.selectedSlot())->GetSelPointIndex() == 2,
              QStringLiteral("Insert puts a vertex in the middle of the active vertex's edge and makes it active"));
        QTest::keyClick(&m_view, Qt::Key_Delete, Qt::ShiftModifier);
        check(samePoints(m_host.vertices(m_host.selectedSlot()), before),
              QStringLiteral("Shift+Delete deletes the active vertex"));
    }
    // A coordinate typed into the vertex table moves that vertex.
    const std::vector<int> order = m_host.figureSlots();
    if (!order.empty()) {
        m_host.select(order.front());
        m_window.panel()->showSelection();
        const int steps = m_window.history()->index();
        QTableWidget* table = m_window.panel()->vertexTable();
        table->item(0, 0)->setText(QStringLiteral("0.5"));
        QTest::qWait(20);
        const Points now = m_host.vertices(m_host.selectedSlot());
        check(!now.empty() && now[0].x == 0.5f && m_window.history()->index() == steps + 1,
              QStringLiteral("a typed x moves the vertex, one step of the history: %1 (%2)")
                  .arg(pointsText(now), m_window.statusBar()->currentMessage()));
        m_window.action(QStringLiteral("undo"))->trigger();
    }
}

// The status bar follows the cursor in three coordinate systems; the problems panel
// lists the scene's hints and a click selects the figure.
void Script::panelsAndStatus()
{
    QTest::mouseMove(&m_view, pixelOf({0.5f, 0.5f}));
    const QString text = m_window.coordinates()->text();
    check(text.contains(QStringLiteral("x 0.5")) && text.contains(QStringLiteral("ONVIF")),
          QStringLiteral("the status bar shows the cursor's coordinates: %1").arg(text));
    QListWidget* problems = m_window.problems();
    const std::vector<SceneHint> hints = GetSceneHints();
    check(problems->count() == std::max<int>(1, static_cast<int>(hints.size())),
          QStringLiteral("the problems panel lists the scene's %1 hints").arg(hints.size()));
    if (!hints.empty()) {
        m_host.select(-1);
        QTest::mouseClick(problems->viewport(), Qt::LeftButton, Qt::NoModifier,
                          problems->visualItemRect(problems->item(0)).center());
        check(m_host.selectedSlot() == hints.front().slot, QStringLiteral("a click on a problem selects its figure"));
    }
    QAction* outline = m_window.action(QStringLiteral("outline"));
    outline->trigger();
    const bool off = !TextRendering::IsOutlined();
    outline->trigger();
    check(off && TextRendering::IsOutlined(), QStringLiteral("View > Outline text switches the outline"));
}

// Ctrl+K draws a track across the picture; every crossing the library finds for each
// rule is listed (and marked); Ctrl+Shift+K clears it.
void Script::testTrack()
{
    const std::vector<int> order = m_host.figureSlots();
    if (order.empty()) {
        return;
    }
    // Across the picture at the height of the first figure's first vertex.
    const float y = std::min(0.98f, std::max(0.02f, m_host.vertices(order.front()).front().y + 0.013f));
    const Points track = {{0.02f, y}, {0.5f, y + 0.01f}, {0.98f, y}};
    m_view.setFocus();
    QTest::keyClick(&m_window, Qt::Key_K, Qt::ControlModifier);
    check(m_view.drawingTrack(), QStringLiteral("Ctrl+K starts a test track"));
    Points clicked;
    for (const tagTAVRIN_POINT& p : track) {
        QTest::mouseClick(&m_view, Qt::LeftButton, Qt::NoModifier, pixelOf(p));
        clicked.push_back(pointOf(pixelOf(p)));
    }
    QTest::keyClick(&m_view, Qt::Key_Return);
    check(!m_view.drawingTrack() && samePoints(m_view.track(), clicked), QStringLiteral("Enter finishes the track"));
    std::size_t expected = 0;
    for (const int slot : order) {
        expected += TrackCrossings(m_host.object(slot), clicked.data(), static_cast<unsigned int>(clicked.size())).size();
    }
    const int rows = m_window.crossings()->count();
    check(expected == 0 ? rows == 1 : rows == static_cast<int>(expected),
          QStringLiteral("every rule's crossings of the track are listed (%1 listed, %2 found)").arg(rows).arg(expected));
    picture(QStringLiteral("track"), m_window);
    QTest::keyClick(&m_window, Qt::Key_K, Qt::ControlModifier | Qt::ShiftModifier);
    check(m_view.track().empty() && m_window.crossings()->count() == 0, QStringLiteral("Ctrl+Shift+K clears the track"));
}

void Script::picture(const QString& what, QWidget& widget)
{
    if (m_grabPath.isEmpty()) {
        return;
    }
    m_view.update();
    QTest::qWait(30);
    const QString path = QString(m_grabPath).replace(QStringLiteral(".png"), QStringLiteral("-%1.png").arg(what));
    const QImage image = &widget == &m_view ? m_view.grabFramebuffer() : widget.grab().toImage();
    // At most 1000 pixels wide: for a page, not a screen.
    const QImage shown = image.width() > 1000 ? image.scaledToWidth(1000, Qt::SmoothTransformation) : image;
    check(shown.save(path), QStringLiteral("the %1 picture is written to %2").arg(what, path));
}

void Script::wheel(const QPoint& at, int notches)
{
    QWheelEvent event(QPointF(at), QPointF(m_view.mapToGlobal(at)), QPoint(), QPoint(0, 120 * notches), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&m_view, &event);
}

// The wheel zooms about the cursor (the picture point under it stays), drags and hit
// tests follow the zoom, the middle button pans, the zoom stops at 8x, Ctrl+0 fits.
void Script::zoomAndPan()
{
    const QPoint at = pixelOf({0.4f, 0.6f});
    const tagTAVRIN_POINT before = pointOf(at);
    wheel(at, 2);
    const tagTAVRIN_POINT after = pointOf(at);
    check(std::fabs(m_view.zoom() - DemoView::kZoomStep * DemoView::kZoomStep) < 1e-9 &&
              std::fabs(after.x - before.x) < 1.5f / m_host.width() * 2 && std::fabs(after.y - before.y) < 1.5f / m_host.height() * 2,
          QStringLiteral("two wheel notches zoom 1.5625x about the cursor (%1, %2 -> %3, %4)")
              .arg(double(before.x)).arg(double(before.y)).arg(double(after.x)).arg(double(after.y)));
    // A figure whose first vertex is in sight is dragged by it at this zoom, exactly.
    const QRect inside = m_view.rect().adjusted(DemoView::kMargin + 10, DemoView::kMargin + 10, -DemoView::kMargin - 10,
                                                -DemoView::kMargin - 10);
    for (const int slot : m_host.figureSlots()) {
        const Points vertices = m_host.vertices(slot);
        if (!vertices.empty() && inside.contains(pixelOf(vertices.front()))) {
            const int failed = m_failed;
            dragVertex(slot);
            check(m_failed == failed, QStringLiteral("a vertex drag at 1.5625x reads back exactly"));
            m_window.action(QStringLiteral("undo"))->trigger();
            break;
        }
    }
    const QPoint origin = m_view.pictureOrigin();
    const QPoint middle = m_view.rect().center();
    QTest::mousePress(&m_view, Qt::MiddleButton, Qt::NoModifier, middle);
    QTest::mouseMove(&m_view, middle + QPoint(-30, -20));
    QTest::mouseRelease(&m_view, Qt::MiddleButton, Qt::NoModifier, middle + QPoint(-30, -20));
    check(m_view.pictureOrigin() == origin + QPoint(-30, -20),
          QStringLiteral("a middle-button drag pans the picture by the drag"));
    picture(QStringLiteral("zoomed"), m_view);
    wheel(at, 20);
    check(m_view.zoom() == DemoView::kMaxZoom, QStringLiteral("the zoom stops at 8x"));
    QTest::keyClick(&m_window, Qt::Key_0, Qt::ControlModifier);
    check(m_view.zoom() == 1.0 && m_view.pictureOrigin() == QPoint(DemoView::kMargin, DemoView::kMargin),
          QStringLiteral("Ctrl+0 fits the whole picture again"));
}

// With unsaved edits, opening asks first: Cancel keeps the scene, Discard opens.
void Script::unsavedChanges()
{
    const QString path = m_document.path();
    if (m_window.history()->isClean() || path.isEmpty()) {
        skip(QStringLiteral("unsaved changes: nothing was changed"));
        return;
    }
    const std::size_t figures = m_host.figureSlots().size();
    m_answer = QMessageBox::Cancel;
    const int asked = m_asked;
    check(!m_window.openScene(path) && m_asked == asked + 1 && m_host.figureSlots().size() == figures &&
              !m_window.history()->isClean(),
          QStringLiteral("opening over unsaved changes asks, and Cancel keeps them"));
    m_answer = QMessageBox::Discard;
    check(m_window.openScene(path) && m_window.history()->isClean(), QStringLiteral("Discard opens the scene"));
    check(!m_window.recentScenes().isEmpty() &&
              m_window.recentScenes().front() == QFileInfo(path).absoluteFilePath(),
          QStringLiteral("the scene heads the recent files"));
}

// Saves the scene, opens the file again and finds every figure's vertices as they were.
void Script::saveAndReload(const QString& path)
{
    std::vector<Points> before;
    for (int slot : m_host.figureSlots()) {
        before.push_back(m_host.vertices(slot));
    }
    check(m_window.saveScene(path), QStringLiteral("the edited scene is saved to %1").arg(path));
    QString reason;
    check(m_window.openScene(path, &reason), QStringLiteral("the saved scene opens again: %1").arg(reason));
    const std::vector<int> figureSlots = m_host.figureSlots();
    bool same = figureSlots.size() == before.size();
    for (std::size_t i = 0; same && i < figureSlots.size(); ++i) {
        same = samePoints(m_host.vertices(figureSlots[i]), before[i]);
    }
    check(same, QStringLiteral("every figure reads back from the saved file as it was saved"));
}

int Script::run(const SelfTestFiles& files)
{
    m_grabPath = files.grab;
    QString reason;
    const bool opened = m_window.openScene(files.scene, &reason);
    check(opened, QStringLiteral("the scene opens: %1").arg(reason));
    const std::vector<int> figures = m_host.figureSlots();
    check(!figures.empty(), QStringLiteral("the scene has figures"));
    m_view.update();
    QTest::qWait(50);
    for (int slot : figures) {
        dragVertex(slot);
        dragWhole(slot);
    }
    // A press on the margin's corner, far from every figure, selects none.
    QTest::mouseClick(&m_view, Qt::LeftButton, Qt::NoModifier, QPoint(2, 2));
    check(m_host.selectedSlot() == -1, QStringLiteral("a press on no figure selects none"));
    placeAndDelete();
    keyboardAndHistory();
    duplicateAndRestack();
    vertexTools();
    panelsAndStatus();
    testTrack();
    zoomAndPan();
    if (!figures.empty()) {
        editLabel(m_host.figureSlots().front());
    }
    m_view.update();
    QTest::qWait(50);
    if (!files.grab.isEmpty()) {
        const QImage frame = m_view.grabFramebuffer();
        check(frame.save(files.grab, "PNG"), QStringLiteral("the framebuffer is written to %1").arg(files.grab));
    }
    unsavedChanges();
    QTemporaryDir scratch;
    saveAndReload(files.save.isEmpty() ? scratch.filePath(QStringLiteral("edited.json")) : files.save);
    std::printf("self-test: %d passed, %d failed, %d skipped\n", m_passed, m_failed, m_skipped);
    return m_failed == 0 ? 0 : 1;
}

}  // namespace

int runSelfTest(MainWindow& window, SceneDocument& document, const SelfTestFiles& files)
{
    // Recent files go to a scratch settings location, not the user's.
    QStandardPaths::setTestModeEnabled(true);
    window.show();
    if (!QTest::qWaitForWindowExposed(&window)) {
        std::printf("FAIL: the window was never shown\nself-test: 0 passed, 1 failed\n");
        return 1;
    }
    Script script(window, document);
    window.setUnsavedPrompt([&script] {
        ++script.m_asked;
        return script.m_answer;
    });
    return script.run(files);
}

}  // namespace demo
}  // namespace Tavrin
