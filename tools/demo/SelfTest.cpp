// Synthetic events go straight to the window (not through a cursor warp, which a
// display server delivers late), and carry the pressed button with every move.
#define QTEST_QPA_MOUSE_HANDLING
#include "SelfTest.h"

#include "DemoView.h"
#include "MainWindow.h"
#include "PropertyPanel.h"
#include "SceneDocument.h"

#include <QLineEdit>
#include <QListWidget>
#include <QTableWidget>
#include <QTest>

#include <cmath>
#include <cstdio>
#include <vector>

namespace Tavrin {
namespace demo {

namespace {

using Points = std::vector<tagTAVRIN_POINT>;

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
    void checkVertices(int slot, const Points& expected, const QString& what);
    void checkTable(const Points& expected);
    void checkStatuses(int selected, const QString& what);

    /// The widget pixel nearest to a normalised point.
    QPoint pixelOf(const tagTAVRIN_POINT& p) const
    {
        const qreal ratio = m_view.devicePixelRatioF();
        return QPoint(static_cast<int>(std::lround(p.x * m_host.width() / ratio)),
                      static_cast<int>(std::lround(p.y * m_host.height() / ratio)));
    }
    /// The normalised point the view makes of a widget pixel, as DemoView does.
    tagTAVRIN_POINT pointOf(const QPoint& pixel) const
    {
        const qreal ratio = m_view.devicePixelRatioF();
        return m_host.normalised(static_cast<int>(std::lround(pixel.x() * ratio)),
                                 static_cast<int>(std::lround(pixel.y() * ratio)));
    }
    /// Press at `from`, move to `to` with the button held, release there.
    void drag(const QPoint& from, const QPoint& to)
    {
        QTest::mousePress(&m_view, Qt::LeftButton, Qt::NoModifier, from);
        QTest::mouseMove(&m_view, to);
        QTest::mouseRelease(&m_view, Qt::LeftButton, Qt::NoModifier, to);
    }
    /// Every vertex moved by the drag from `from` to `to`, as a figure adds it: the
    /// difference of the two normalised cursor points in single precision.
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

    void editVertexAndFigure(int target);
    void placeAndDelete();
    int editLabel(int target);
    void grab(const QString& path, int target);

    MainWindow& m_window;
    SceneDocument& m_document;
    DemoView& m_view;
    HostView& m_host;
    int m_passed = 0;
    int m_failed = 0;
};

QString pointsText(const Points& points)
{
    QStringList items;
    for (const tagTAVRIN_POINT& p : points) {
        items << QStringLiteral("(%1, %2)").arg(double(p.x), 0, 'g', 9).arg(double(p.y), 0, 'g', 9);
    }
    return items.join(QLatin1Char(' '));
}

void Script::checkVertices(int slot, const Points& expected, const QString& what)
{
    const Points got = m_host.vertices(slot);
    bool same = got.size() == expected.size();
    for (std::size_t i = 0; same && i < got.size(); ++i) {
        same = got[i].x == expected[i].x && got[i].y == expected[i].y;
    }
    check(same, QStringLiteral("%1: read back %2, expected %3").arg(what, pointsText(got), pointsText(expected)));
}

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

void Script::checkStatuses(int selected, const QString& what)
{
    for (int slot : m_host.figureSlots()) {
        const tagTAVRIN_OBJ_STATUS want = slot == selected ? TAVRIN_OBJ_STATUS_SELECTED : TAVRIN_OBJ_STATUS_NORMAL;
        check(m_host.object(slot)->GetObjStatus() == want,
              QStringLiteral("%1: figure in slot %2 has status %3").arg(what).arg(slot).arg(int(want)));
    }
}

void Script::editVertexAndFigure(int target)
{
    const Points start = m_host.vertices(target);
    check(start.size() >= 3, QStringLiteral("the first figure is a region of three or more vertices"));
    if (start.size() < 3) {
        return;
    }

    // Select the first vertex and drag it 40 pixels right and 25 down.
    const QPoint corner = pixelOf(start[0]);
    QTest::mousePress(&m_view, Qt::LeftButton, Qt::NoModifier, corner);
    check(m_host.selectedSlot() == target, QStringLiteral("a press on the first vertex selects the figure"));
    check(m_host.object(target)->GetSelPointIndex() == 1, QStringLiteral("the pressed vertex is the active one"));
    checkStatuses(target, QStringLiteral("after selecting"));
    const QPoint cornerTo = corner + QPoint(40, 25);
    QTest::mouseMove(&m_view, cornerTo);
    QTest::mouseRelease(&m_view, Qt::LeftButton, Qt::NoModifier, cornerTo);
    const Points afterVertex = moved(start, pointOf(corner), pointOf(cornerTo), 0);
    checkVertices(target, afterVertex, QStringLiteral("vertex drag"));
    checkTable(afterVertex);

    // Drag the whole figure from its centre 30 pixels left and 20 down.
    tagTAVRIN_POINT centre{0.0f, 0.0f};
    for (const tagTAVRIN_POINT& p : afterVertex) {
        centre.x += p.x / static_cast<float>(afterVertex.size());
        centre.y += p.y / static_cast<float>(afterVertex.size());
    }
    const QPoint inside = pixelOf(centre);
    const QPoint insideTo = inside + QPoint(-30, 20);
    drag(inside, insideTo);
    check(m_host.object(target)->GetSelPointIndex() == 0, QStringLiteral("a press inside makes no vertex active"));
    const Points afterMove = moved(afterVertex, pointOf(inside), pointOf(insideTo));
    checkVertices(target, afterMove, QStringLiteral("whole drag"));
    checkTable(afterMove);

    // A drag that would carry the figure below the picture is refused whole.
    float lowest = 0.0f;
    for (const tagTAVRIN_POINT& p : afterMove) {
        lowest = std::max(lowest, p.y);
    }
    const int down = static_cast<int>(std::ceil((1.0f - lowest) * m_host.height() / m_view.devicePixelRatioF())) + 5;
    drag(insideTo, insideTo + QPoint(0, std::min(down, m_view.height() - insideTo.y() - 1)));
    if (down < m_view.height() - insideTo.y() - 1) {
        checkVertices(target, afterMove, QStringLiteral("refused drag"));
    }

    // A press on empty picture selects nothing.
    QTest::mouseClick(&m_view, Qt::LeftButton, Qt::NoModifier, QPoint(2, m_view.height() - 3));
    check(m_host.selectedSlot() == -1, QStringLiteral("a press on no figure selects none"));
    checkStatuses(-1, QStringLiteral("after a press on no figure"));

    // Hovering the figure highlights it (status 2) without selecting it.
    QTest::mouseMove(&m_view, pixelOf(centre) + QPoint(-30, 20));
    check(m_host.object(target)->GetObjStatus() == TAVRIN_OBJ_STATUS_HIGHLIGHTED,
          QStringLiteral("the hovered figure shows status 2"));
    // Select it again for the pictures.
    QTest::mouseClick(&m_view, Qt::LeftButton, Qt::NoModifier, insideTo);
    check(m_host.selectedSlot() == target, QStringLiteral("a click inside selects the figure again"));
}

void Script::placeAndDelete()
{
    const std::size_t before = m_host.figureSlots().size();
    QListWidget* palette = m_window.palette();
    const QList<QListWidgetItem*> found = palette->findItems(QStringLiteral("ReferenceRegion"), Qt::MatchExactly);
    check(palette->count() == 16, QStringLiteral("the palette offers the sixteen kinds"));
    if (found.isEmpty()) {
        check(false, QStringLiteral("the palette offers ReferenceRegion"));
        return;
    }
    QTest::mouseClick(palette->viewport(), Qt::LeftButton, Qt::NoModifier,
                      palette->visualItemRect(found.first()).center());
    check(m_view.placing(), QStringLiteral("a palette click starts placing"));
    const QPoint clicks[3] = {pixelOf({0.05f, 0.6f}), pixelOf({0.15f, 0.6f}), pixelOf({0.1f, 0.75f})};
    Points expected;
    for (const QPoint& click : clicks) {
        QTest::mouseClick(&m_view, Qt::LeftButton, Qt::NoModifier, click);
        expected.push_back(pointOf(click));
    }
    QTest::keyClick(&m_view, Qt::Key_Return);
    check(!m_view.placing() && m_host.figureSlots().size() == before + 1, QStringLiteral("Enter places the figure"));
    const int placed = m_host.selectedSlot();
    check(m_document.kind(placed) == QLatin1String("ReferenceRegion"), QStringLiteral("the new figure is selected"));
    checkVertices(placed, expected, QStringLiteral("placed vertices"));

    QTest::keyClick(&m_view, Qt::Key_Delete);
    check(m_host.figureSlots().size() == before && m_document.kind(placed).isEmpty(),
          QStringLiteral("Delete removes the selected figure"));

    // Escape cancels placing: no figure is made.
    m_view.startPlacing(QStringLiteral("Lane"));
    QTest::mouseClick(&m_view, Qt::LeftButton, Qt::NoModifier, clicks[0]);
    QTest::keyClick(&m_view, Qt::Key_Escape);
    check(!m_view.placing() && m_host.figureSlots().size() == before, QStringLiteral("Escape cancels placing"));
}

int Script::editLabel(int target)
{
    // Typed into the panel's label field: the figure is built again with the new label,
    // in the same place, still selected, its vertices as they were.
    const Points before = m_host.vertices(target);
    auto* edit = m_window.panel()->findChild<QLineEdit*>(QStringLiteral("label"));
    check(edit != nullptr, QStringLiteral("the panel offers the label"));
    if (edit == nullptr) {
        return target;
    }
    edit->setFocus();
    QTest::keyClick(edit, Qt::Key_End);
    QTest::keyClicks(edit, QStringLiteral(" 2"));
    QTest::keyClick(edit, Qt::Key_Return);
    const int slot = m_host.selectedSlot();
    check(m_host.figureSlots().front() == slot, QStringLiteral("the relabelled figure keeps its place"));
    char label[17] = {};
    check(m_host.object(slot) != nullptr && m_host.object(slot)->GetLabelText(label, 16) &&
              QLatin1String(label) == QLatin1String("Mask 2"),
          QStringLiteral("the label reads back as typed (%1)").arg(QLatin1String(label)));
    checkVertices(slot, before, QStringLiteral("vertices after relabelling"));
    return slot;
}

void Script::grab(const QString& path, int target)
{
    const QImage frame = m_view.grabFramebuffer();
    check(frame.width() == m_host.width() && frame.height() == m_host.height(),
          QStringLiteral("the framebuffer has the view's size"));
    // The selected region's outline is drawn in its class's colour.
    const QString kind = m_document.kind(target);
    if (kind == QLatin1String("ShieldRegion")) {
        int outline = 0;
        for (int y = 0; y < frame.height(); ++y) {
            for (int x = 0; x < frame.width(); ++x) {
                outline += (frame.pixel(x, y) & 0xffffffu) == 0x7030a0u ? 1 : 0;
            }
        }
        check(outline > 50, QStringLiteral("the region's outline shows in 0x7030a0 (%1 pixels)").arg(outline));
    }
    if (!path.isEmpty()) {
        check(frame.save(path, "PNG"), QStringLiteral("the framebuffer is written to %1").arg(path));
    }
}

int Script::run(const SelfTestFiles& files)
{
    QString reason;
    const bool opened = m_window.openScene(files.scene, &reason);
    check(opened, QStringLiteral("the scene opens: %1").arg(reason));
    const std::vector<int> figures = m_host.figureSlots();
    if (figures.empty()) {
        check(false, QStringLiteral("the scene has figures"));
    } else {
        m_view.update();
        QTest::qWait(50);
        editVertexAndFigure(figures.front());
        placeAndDelete();
        QTest::mouseClick(&m_view, Qt::LeftButton, Qt::NoModifier, pixelOf(m_host.vertices(figures.front())[1]));
        const int relabelled = editLabel(figures.front());
        m_view.update();
        QTest::qWait(50);
        grab(files.grab, relabelled);
    }
    if (!files.save.isEmpty()) {
        check(m_window.saveScene(files.save), QStringLiteral("the edited scene is saved to %1").arg(files.save));
    }
    std::printf("self-test: %d passed, %d failed\n", m_passed, m_failed);
    return m_failed == 0 ? 0 : 1;
}

}  // namespace

int runSelfTest(MainWindow& window, SceneDocument& document, const SelfTestFiles& files)
{
    window.show();
    if (!QTest::qWaitForWindowExposed(&window)) {
        std::printf("FAIL: the window was never shown\nself-test: 0 passed, 1 failed\n");
        return 1;
    }
    Script script(window, document);
    return script.run(files);
}

}  // namespace demo
}  // namespace Tavrin
