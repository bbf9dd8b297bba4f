// tavrin-qml-host: the figures of a scene file over its picture in a Qt Quick window,
// drawn and edited by the TavrinOverlay item.
//
//   tavrin-qml-host [SCENE]                   the showcase scene by default
//   tavrin-qml-host --self-test [SCENE] [--grab FILE]
//
// The self-test drives the window as a user would (vertex drags, whole drags, a press
// on the bare picture, editing switched off), checks the read-back vertices and the
// signals, and compares the grabbed window with the same figures painted by QPainter.

#include <TavrinQt/PaintDrawList.h>
#include <TavrinQt/TavrinOverlay.h>

#include <Tavrin/AtmCali.h>
#include <Tavrin/DrawList.h>
#include <Tavrin/Editing.h>
#include <Tavrin/LfCali.h>
#include <Tavrin/SizeFilter.h>
#include <Tavrin/TextRendering.h>
#include <Tavrin/VcaObjectContainer.h>

#include "Scene.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QPainter>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QQuickImageProvider>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

using namespace Tavrin;

namespace {

class PictureProvider : public QQuickImageProvider {
public:
    explicit PictureProvider(QImage picture) : QQuickImageProvider(Image), m_picture(std::move(picture)) {}
    QImage requestImage(const QString&, QSize* size, const QSize&) override
    {
        *size = m_picture.size();
        return m_picture;
    }

private:
    QImage m_picture;
};

/// What the self-test found; it prints every failure and passes when there is none.
struct Report {
    int failures = 0;
    void fail(const QString& what)
    {
        std::printf("FAIL %s\n", qPrintable(what));
        ++failures;
    }
};

class SelfTest {
public:
    SelfTest(QQuickWindow* window, TavrinOverlay* overlay, const render::Scene& scene)
        : m_window(window), m_overlay(overlay), m_scene(scene), m_edited(overlay, &TavrinOverlay::figureEdited),
          m_selected(overlay, &TavrinOverlay::figureSelected)
    {
    }

    int run(const QString& grabPath)
    {
        const std::vector<int> figures = GetOccupiedSlots();
        int vertexDrags = 0;
        int wholeDrags = 0;
        for (const int slot : figures) {
            vertexDrags += dragFirstReachableVertex(slot) ? 1 : 0;
        }
        for (const int slot : figures) {
            wholeDrags += dragWhole(slot) ? 1 : 0;
        }
        std::printf("vertex drags: %d of %zu figures; whole drags: %d\n", vertexDrags, figures.size(), wholeDrags);
        if (vertexDrags * 2 < static_cast<int>(figures.size()) || wholeDrags < 3) {
            m_report.fail(QStringLiteral("too few figures could be grabbed"));
        }
        pressOnBarePicture();
        pressWithEditingOff(figures.front());
        pressOutsideTheListedSlots(figures.front(), figures.back());
        comparePicture(grabPath);
        std::printf(m_report.failures == 0 ? "self-test passed\n" : "self-test failed\n");
        return m_report.failures == 0 ? 0 : 1;
    }

private:
    QPoint pixelOf(const tagTAVRIN_POINT& p) const
    {
        return QPoint(static_cast<int>(std::lround(p.x * m_window->width())),
                      static_cast<int>(std::lround(p.y * m_window->height())));
    }

    // Ten pixels right and eight down, or back where that would leave the middle.
    QPoint stepTowardsMiddle(const QPoint& at) const
    {
        return QPoint(at.x() < m_window->width() / 2 ? 10 : -10, at.y() < m_window->height() / 2 ? 8 : -8);
    }

    tagTAVRIN_POINT normalised(const QPoint& p) const
    {
        return tagTAVRIN_POINT{static_cast<float>(p.x() / static_cast<double>(m_window->width())),
                               static_cast<float>(p.y() / static_cast<double>(m_window->height()))};
    }

    void drag(const QPoint& from, const QPoint& to)
    {
        QTest::mousePress(m_window, Qt::LeftButton, Qt::NoModifier, from);
        QTest::mouseMove(m_window, to);
        QTest::mouseRelease(m_window, Qt::LeftButton, Qt::NoModifier, to);
    }

    static bool same(const std::vector<tagTAVRIN_POINT>& a, const std::vector<tagTAVRIN_POINT>& b)
    {
        return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(tagTAVRIN_POINT)) == 0;
    }

    static bool shiftedBy(const std::vector<tagTAVRIN_POINT>& before, const std::vector<tagTAVRIN_POINT>& after,
                          const tagTAVRIN_POINT& d, int only)
    {
        if (before.size() != after.size()) {
            return false;
        }
        for (std::size_t i = 0; i < before.size(); ++i) {
            const bool moves = only < 0 || static_cast<int>(i) == only;
            const float dx = moves ? d.x : 0.0f;
            const float dy = moves ? d.y : 0.0f;
            if (std::fabs(after[i].x - (before[i].x + dx)) > 1e-6f || std::fabs(after[i].y - (before[i].y + dy)) > 1e-6f) {
                return false;
            }
        }
        return true;
    }

    bool expectEdited(int slot, const QString& what)
    {
        const bool once = m_edited.count() == 1 && m_edited.first().at(0).toInt() == slot;
        if (!once) {
            m_report.fail(what + QStringLiteral(": figureEdited(%1) expected once, seen %2 times").arg(slot).arg(m_edited.count()));
        }
        m_edited.clear();
        return once;
    }

    // Pressed at its first vertex that no figure above covers; the vertex follows the
    // drag exactly (a size filter's and an ATM figure's neighbours follow their corner).
    bool dragFirstReachableVertex(int slot)
    {
        VcaObject* figure = VcaObjectContainer::Instance()->GetVcaObject(slot);
        const std::vector<tagTAVRIN_POINT> before = GetVertices(figure);
        for (std::size_t i = 0; i < before.size(); ++i) {
            const QPoint from = pixelOf(before[i]);
            QTest::mousePress(m_window, Qt::LeftButton, Qt::NoModifier, from);
            if (m_overlay->selectedSlot() != slot) {
                QTest::mouseRelease(m_window, Qt::LeftButton, Qt::NoModifier, from);
                m_edited.clear();
                continue;
            }
            // The figure's own hit test names the vertex: of two within reach, maybe another.
            const int grabbed = static_cast<int>(figure->GetSelPointIndex()) - 1;
            const QPoint to = from + stepTowardsMiddle(from);
            QTest::mouseMove(m_window, to);
            QTest::mouseRelease(m_window, Qt::LeftButton, Qt::NoModifier, to);
            const std::vector<tagTAVRIN_POINT> after = GetVertices(figure);
            const tagTAVRIN_POINT a = normalised(from);
            const tagTAVRIN_POINT b = normalised(to);
            const bool follows = dynamic_cast<SizeFilter*>(figure) != nullptr || dynamic_cast<AtmCali*>(figure) != nullptr;
            const bool ok = follows ? !same(after, before) && after.size() == before.size()
                                    : shiftedBy(before, after, {b.x - a.x, b.y - a.y}, grabbed);
            if (!ok) {
                m_report.fail(QStringLiteral("figure %1: vertex %2 did not follow the drag").arg(slot).arg(i + 1));
            }
            return expectEdited(slot, QStringLiteral("vertex drag")) && ok;
        }
        std::printf("figure %d: no vertex reachable past the figures above it, skipped\n", slot);
        return false;
    }

    // Pressed inside (the middle of its vertices, or of an edge): every vertex moves by
    // exactly the drag. A press that lands on a vertex or handle instead is undone by the
    // figure's own refusal rules and not counted.
    bool dragWhole(int slot)
    {
        VcaObject* figure = VcaObjectContainer::Instance()->GetVcaObject(slot);
        const std::vector<tagTAVRIN_POINT> vertices = GetVertices(figure);
        std::vector<tagTAVRIN_POINT> candidates;
        tagTAVRIN_POINT centre{0.0f, 0.0f};
        for (const tagTAVRIN_POINT& v : vertices) {
            centre = {centre.x + v.x / vertices.size(), centre.y + v.y / vertices.size()};
        }
        candidates.push_back(centre);
        for (std::size_t i = 0; i + 1 < vertices.size(); ++i) {
            candidates.push_back({(vertices[i].x + vertices[i + 1].x) / 2, (vertices[i].y + vertices[i + 1].y) / 2});
        }
        for (const tagTAVRIN_POINT& c : candidates) {
            const QPoint from = pixelOf(c);
            tagTAVRIN_POINT cursor = normalised(from);
            if (figure->CheckPointSelected(cursor) != 0 || !figure->CheckSelected(cursor)) {
                continue;
            }
            const std::vector<tagTAVRIN_POINT> before = GetVertices(figure);
            const QPoint to = from + stepTowardsMiddle(from);
            drag(from, to);
            if (m_overlay->selectedSlot() != slot) {
                m_edited.clear();
                continue;  // a figure above took the press
            }
            const tagTAVRIN_POINT a = normalised(from);
            const tagTAVRIN_POINT b = normalised(to);
            if (!shiftedBy(before, GetVertices(figure), {b.x - a.x, b.y - a.y}, -1)) {
                m_report.fail(QStringLiteral("figure %1: a whole drag did not move every vertex by the drag").arg(slot));
            }
            return expectEdited(slot, QStringLiteral("whole drag"));
        }
        return false;
    }

    // A press on no figure deselects and is passed on.
    void pressOnBarePicture()
    {
        m_selected.clear();
        const QPoint corner(2, 2);
        tagTAVRIN_POINT cursor = normalised(corner);
        for (const int slot : GetOccupiedSlots()) {
            VcaObject* figure = VcaObjectContainer::Instance()->GetVcaObject(slot);
            // A LfCali marker answers everywhere; the overlay takes it only near its point.
            if (dynamic_cast<LfCali*>(figure) == nullptr && figure->CheckSelected(cursor)) {
                std::printf("the top-left corner is covered by figure %d; bare-picture press skipped\n", slot);
                return;
            }
        }
        QTest::mouseClick(m_window, Qt::LeftButton, Qt::NoModifier, corner);
        if (m_overlay->selectedSlot() != -1 || m_selected.isEmpty() || m_selected.last().at(0).toInt() != -1) {
            m_report.fail(QStringLiteral("a press on the bare picture did not deselect"));
        }
    }

    // Editing off: a drag on a vertex changes nothing and leaves the selection alone.
    void pressWithEditingOff(int slot)
    {
        VcaObject* figure = VcaObjectContainer::Instance()->GetVcaObject(slot);
        const std::vector<tagTAVRIN_POINT> before = GetVertices(figure);
        const int selected = m_overlay->selectedSlot();
        m_overlay->setEditable(false);
        const QPoint from = pixelOf(before.front());
        drag(from, from + stepTowardsMiddle(from));
        m_overlay->setEditable(true);
        if (!same(GetVertices(figure), before) || m_overlay->selectedSlot() != selected || !m_edited.isEmpty()) {
            m_report.fail(QStringLiteral("a drag with editing off changed the figures"));
        }
    }

    // With only `listed` drawn, a press on another figure's vertex selects nothing.
    void pressOutsideTheListedSlots(int listed, int other)
    {
        const std::vector<tagTAVRIN_POINT> vertices = GetVertices(VcaObjectContainer::Instance()->GetVcaObject(other));
        m_overlay->setFigureSlots({listed});
        QTest::mouseClick(m_window, Qt::LeftButton, Qt::NoModifier, pixelOf(vertices.front()));
        const int selected = m_overlay->selectedSlot();
        m_overlay->setFigureSlots({});
        if (selected != -1) {
            m_report.fail(QStringLiteral("a figure outside figureSlots was selected"));
        }
    }

    // The window against the same figures painted by QPainter over the same picture:
    // where the painted figures differ from the bare picture, at least 97 % of the
    // window's pixels agree within 24 levels.
    void comparePicture(const QString& grabPath)
    {
        m_overlay->select(GetOccupiedSlots().back());
        const QImage grabbed = m_window->grabWindow().convertToFormat(QImage::Format_RGB32);
        if (!grabPath.isEmpty()) {
            grabbed.save(grabPath);
        }
        const QImage bare = m_scene.picture.scaled(grabbed.size()).convertToFormat(QImage::Format_RGB32);
        QImage painted = bare;
        DrawList list;
        {
            const bool textWas = TextRendering::IsEnabled();
            TextRendering::SetEnabled(true);
            DrawListScope scope(list);
            for (const int slot : GetOccupiedSlots()) {
                VcaObjectContainer::Instance()->GetVcaObject(slot)->Draw(nullptr, grabbed.width(), grabbed.height(), true);
            }
            TextRendering::SetEnabled(textWas);
        }
        QPainter painter(&painted);
        PaintDrawList(painter, list);
        painter.end();
        if (!grabPath.isEmpty()) {
            painted.save(grabPath + QStringLiteral(".painted.png"));
        }
        long figurePixels = 0;
        long agreeing = 0;
        const auto near = [](QRgb a, QRgb b) {
            return std::abs(qRed(a) - qRed(b)) <= 24 && std::abs(qGreen(a) - qGreen(b)) <= 24 &&
                   std::abs(qBlue(a) - qBlue(b)) <= 24;
        };
        for (int y = 0; y < grabbed.height(); ++y) {
            for (int x = 0; x < grabbed.width(); ++x) {
                if (!near(painted.pixel(x, y), bare.pixel(x, y))) {
                    ++figurePixels;
                    agreeing += near(painted.pixel(x, y), grabbed.pixel(x, y)) ? 1 : 0;
                }
            }
        }
        const double share = figurePixels > 0 ? static_cast<double>(agreeing) / figurePixels : 0.0;
        std::printf("figure pixels: %ld, agreeing with QPainter: %.2f %%\n", figurePixels, 100.0 * share);
        if (figurePixels < 1000 || share < 0.97) {
            m_report.fail(QStringLiteral("the window's figures do not match the painted ones"));
        }
    }

    QQuickWindow* m_window;
    TavrinOverlay* m_overlay;
    const render::Scene& m_scene;
    QSignalSpy m_edited;
    QSignalSpy m_selected;
    Report m_report;
};

// The window with its QML engine; both are gone when it returns, before the figures.
int runWindow(QGuiApplication& app, const render::Scene& scene, const QSize& view, bool selfTest,
              const QString& grabPath)
{
    TavrinOverlay::RegisterQmlType();
    QQmlApplicationEngine engine;
    engine.addImageProvider(QStringLiteral("scene"), new PictureProvider(scene.picture.scaled(view)));
    engine.rootContext()->setContextProperty(QStringLiteral("viewWidth"), view.width());
    engine.rootContext()->setContextProperty(QStringLiteral("viewHeight"), view.height());
    engine.rootContext()->setContextProperty(QStringLiteral("selfTest"), selfTest);
    engine.load(QUrl(QStringLiteral("qrc:/main.qml")));
    auto* window = engine.rootObjects().isEmpty() ? nullptr : qobject_cast<QQuickWindow*>(engine.rootObjects().first());
    auto* overlay = window != nullptr ? window->findChild<TavrinOverlay*>(QStringLiteral("overlay")) : nullptr;
    if (overlay == nullptr) {
        std::fprintf(stderr, "tavrin-qml-host: the QML scene did not load\n");
        return 2;
    }
    if (selfTest) {
        if (!QTest::qWaitForWindowExposed(window)) {
            std::fprintf(stderr, "tavrin-qml-host: the window was never shown\n");
            return 2;
        }
        return SelfTest(window, overlay, scene).run(grabPath);
    }
    return app.exec();
}

}  // namespace

int main(int argc, char** argv)
{
    QGuiApplication app(argc, argv);
    QStringList args = app.arguments();
    args.removeFirst();
    const bool selfTest = args.removeAll(QStringLiteral("--self-test")) > 0;
    QString grabPath;
    const int grab = args.indexOf(QStringLiteral("--grab"));
    if (grab >= 0 && grab + 1 < args.size()) {
        grabPath = args.takeAt(grab + 1);
        args.removeAt(grab);
    }
    const QString scenePath = args.isEmpty() ? QStringLiteral(TAVRIN_SHOWCASE_SCENE) : args.first();

    render::Scene scene;
    try {
        scene = render::readSceneFile(scenePath, std::nullopt);
    } catch (const render::SceneError& e) {
        std::fprintf(stderr, "tavrin-qml-host: %s: %s\n", qPrintable(scenePath), qPrintable(e.message()));
        return 2;
    }
    // The view: the scene's size brought to 960 pixels on its longer side.
    const QSize view = scene.size.scaled(960, 960, Qt::KeepAspectRatio);
    if (scene.picture.isNull()) {
        scene.picture = QImage(view, QImage::Format_RGB32);
        scene.picture.fill(QColor::fromRgb(scene.colour));
    }

    const int status = runWindow(app, scene, view, selfTest, grabPath);
    VcaObjectContainer::Release();
    return status;
}
