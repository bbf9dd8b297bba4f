#include "MainWindow.h"

#include "DemoKinds.h"
#include "DemoView.h"
#include "PropertyPanel.h"
#include "SceneStep.h"

#include <Tavrin/Coordinates.h>
#include <Tavrin/Crossings.h>
#include <Tavrin/Diagnostics.h>
#include <Tavrin/Editing.h>
#include <Tavrin/TextRendering.h>

#include <QCloseEvent>
#include <QDockWidget>
#include <QFileDialog>
#include <QFileInfo>
#include <QIcon>
#include <QPixmap>
#include <QKeySequence>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QScrollArea>
#include <QSettings>
#include <QStatusBar>
#include <QUndoStack>
#include <QUndoView>

#include <algorithm>

namespace Tavrin {
namespace demo {

namespace {

const int kRecentScenes = 6;
const QString kRecentKey = QStringLiteral("recentScenes");
/// How far a duplicate lands from its original, in view pixels.
const float kDuplicateOffset = 12.0f;

QDockWidget* dock(QMainWindow* window, const QString& name, const QString& title, QWidget* content,
                  Qt::DockWidgetArea area)
{
    auto* d = new QDockWidget(title, window);
    d->setObjectName(name);
    d->setWidget(content);
    window->addDockWidget(area, d);
    return d;
}

}  // namespace

MainWindow::MainWindow(SceneDocument& document, Rendering rendering)
    : m_document(document), m_view(new DemoView(document, rendering, this)), m_panel(new PropertyPanel(document, this)),
      m_palette(new QListWidget(this)), m_problems(new QListWidget(this)), m_crossings(new QListWidget(this)),
      m_coordinates(new QLabel(this)),
      m_history(new QUndoStack(this))
{
    setCentralWidget(m_view);

    // What each kind is for, with a picture of it drawn by the library; the class name
    // below for developers.
    const QSize iconSize(48, 32);
    m_palette->setIconSize(iconSize);
    for (const Kind& kind : kinds()) {
        auto* item = new QListWidgetItem(
            QStringLiteral("%1\n%2").arg(QLatin1String(kind.purpose), QLatin1String(kind.name)), m_palette);
        item->setData(Qt::UserRole, QLatin1String(kind.name));
        item->setIcon(QIcon(QPixmap::fromImage(m_document.icon(QLatin1String(kind.name), iconSize))));
        item->setToolTip(QStringLiteral("%1. Click, then click its vertices in the view.").arg(QLatin1String(kind.description)));
    }
    m_palette->setMaximumWidth(m_palette->sizeHintForColumn(0) + 24);
    dock(this, QStringLiteral("palette"), QStringLiteral("New figure"), m_palette, Qt::LeftDockWidgetArea)
        ->setFeatures(QDockWidget::NoDockWidgetFeatures);
    // Scrolled: a kind with many options never makes the window taller.
    auto* panelScroll = new QScrollArea(this);
    panelScroll->setWidget(m_panel);
    panelScroll->setWidgetResizable(true);
    panelScroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    panelScroll->setMinimumWidth(m_panel->sizeHint().width() + 24);
    dock(this, QStringLiteral("properties"), QStringLiteral("Properties"), panelScroll, Qt::RightDockWidgetArea)
        ->setFeatures(QDockWidget::NoDockWidgetFeatures);
    m_problems->setToolTip(QStringLiteral("Click a problem to select its figure"));
    // A few rows: the picture keeps the height.
    m_problems->setMaximumHeight(m_problems->fontMetrics().height() * 6);
    dock(this, QStringLiteral("problems"), QStringLiteral("Problems"), m_problems, Qt::BottomDockWidgetArea);
    m_crossings->setMaximumHeight(m_crossings->fontMetrics().height() * 6);
    m_crossings->setToolTip(QStringLiteral("Tools > Draw test track: where a track crosses each rule"));
    dock(this, QStringLiteral("crossings"), QStringLiteral("Track crossings"), m_crossings, Qt::BottomDockWidgetArea);
    // Text from the start: the status bar keeps its height, so the view keeps its size
    // while the cursor moves.
    m_coordinates->setText(QStringLiteral("outside the picture"));
    statusBar()->addPermanentWidget(m_coordinates);

    connect(m_palette, &QListWidget::itemClicked, this,
            [this](QListWidgetItem* item) { m_view->startPlacing(item->data(Qt::UserRole).toString()); });
    connect(m_problems, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) {
        m_document.view().select(item->data(Qt::UserRole).toInt());
        selectionChanged();
    });
    connect(m_view, &DemoView::selectionChanged, this, &MainWindow::selectionChanged);
    connect(m_view, &DemoView::edited, m_panel, &PropertyPanel::refreshVertices);
    connect(m_view, &DemoView::editFinished, this, &MainWindow::checkpoint);
    connect(m_view, &DemoView::message, this, &MainWindow::showMessage);
    connect(m_view, &DemoView::cursorMoved, this, &MainWindow::showCursor);
    connect(m_view, &DemoView::trackChanged, this, &MainWindow::refreshTrack);
    connect(m_panel, &PropertyPanel::message, this, &MainWindow::showMessage);
    connect(m_panel, &PropertyPanel::changed, this, [this] { checkpoint(QStringLiteral("Change property")); });
    connect(m_history, &QUndoStack::cleanChanged, this, [this](bool clean) { setWindowModified(!clean); });
    m_unsavedPrompt = [this] {
        return QMessageBox::question(this, QStringLiteral("Unsaved changes"),
                                     QStringLiteral("The scene has changes that are not saved."),
                                     QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
    };
    buildMenus();
    resetHistory();
    showMessage(QStringLiteral("Press a figure to select it, drag it or its vertices; pick a kind to place one"));
}

bool MainWindow::openScene(const QString& path, QString* reason)
{
    if (!mayDiscardChanges()) {
        return false;
    }
    QString error;
    if (!m_document.load(path, error)) {
        const QString text = QStringLiteral("%1: %2").arg(QFileInfo(path).fileName(), error);
        showMessage(text);
        if (reason != nullptr) {
            *reason = text;
        } else if (isVisible()) {
            QMessageBox::warning(this, QStringLiteral("Cannot open the scene"), text);
        }
        return false;
    }
    m_view->cancelPlacing();
    m_view->pictureChanged();
    resetHistory();
    rememberScene(path);
    showMessage(QStringLiteral("%1: %2 figures").arg(QFileInfo(path).fileName()).arg(m_document.view().figureSlots().size()));
    return true;
}

bool MainWindow::saveScene(const QString& path)
{
    QString error;
    if (!m_document.save(path, error)) {
        showMessage(QStringLiteral("%1: cannot write: %2").arg(path, error));
        return false;
    }
    // Saving keeps the history; the saved state is where the scene is unmodified.
    m_history->setClean();
    setWindowTitle(QStringLiteral("%1[*] - tavrin-demo").arg(QFileInfo(path).fileName()));
    rememberScene(path);
    showMessage(QStringLiteral("saved %1").arg(path));
    return true;
}

QAction* MainWindow::action(const QString& name) const { return findChild<QAction*>(name); }

QAction* MainWindow::addMenuAction(QMenu* menu, const QString& name, const QString& text,
                                   const QKeySequence& shortcut, const std::function<void()>& run)
{
    // One spelling for Qt 5 and Qt 6 (whose addAction overloads differ).
    QAction* action = menu->addAction(text);
    action->setObjectName(name);
    action->setShortcut(shortcut);
    connect(action, &QAction::triggered, this, run);
    return action;
}

QAction* MainWindow::addViewAction(QMenu* menu, const QString& name, const QString& text,
                                   const QKeySequence& shortcut, const std::function<void()>& run)
{
    QAction* action = addMenuAction(menu, name, text, shortcut, run);
    action->setShortcutContext(Qt::WidgetShortcut);
    m_view->addAction(action);
    return action;
}

void MainWindow::buildMenus()
{
    QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
    addMenuAction(file, QStringLiteral("new"), QStringLiteral("&New scene"), QKeySequence::New, [this] { newScene(); });
    addMenuAction(file, QStringLiteral("open"), QStringLiteral("&Open scene..."), QKeySequence::Open,
                  [this] { openDialog(); });
    m_recentMenu = file->addMenu(QStringLiteral("Open &recent"));
    connect(m_recentMenu, &QMenu::aboutToShow, this, &MainWindow::fillRecentMenu);
    addMenuAction(file, QStringLiteral("save"), QStringLiteral("&Save scene"), QKeySequence::Save, [this] {
        if (m_document.path().isEmpty()) {
            saveAsDialog();
        } else {
            saveScene(m_document.path());
        }
    });
    addMenuAction(file, QStringLiteral("saveAs"), QStringLiteral("Save scene &as..."), QKeySequence::SaveAs,
                  [this] { saveAsDialog(); });
    addMenuAction(file, QStringLiteral("picture"), QStringLiteral("Open &picture..."),
                  QKeySequence(QStringLiteral("Ctrl+Shift+O")),
                  [this] { pictureDialog(); });
    file->addSeparator();
    addMenuAction(file, QStringLiteral("quit"), QStringLiteral("&Quit"), QKeySequence::Quit, [this] { close(); });

    QMenu* edit = menuBar()->addMenu(QStringLiteral("&Edit"));
    QAction* undo = m_history->createUndoAction(this, QStringLiteral("&Undo"));
    undo->setObjectName(QStringLiteral("undo"));
    undo->setShortcut(QKeySequence::Undo);
    QAction* redo = m_history->createRedoAction(this, QStringLiteral("&Redo"));
    redo->setObjectName(QStringLiteral("redo"));
    redo->setShortcuts({QKeySequence(QStringLiteral("Ctrl+Shift+Z")), QKeySequence(QStringLiteral("Ctrl+Y"))});
    edit->addAction(undo);
    edit->addAction(redo);
    auto* historyView = new QUndoView(m_history, this);
    historyView->setEmptyLabel(QStringLiteral("(scene as opened)"));
    QDockWidget* historyDock =
        dock(this, QStringLiteral("history"), QStringLiteral("History"), historyView, Qt::BottomDockWidgetArea);
    historyDock->hide();
    QAction* showHistory = historyDock->toggleViewAction();
    showHistory->setObjectName(QStringLiteral("history"));
    showHistory->setText(QStringLiteral("&History"));
    showHistory->setShortcut(QKeySequence(QStringLiteral("Ctrl+H")));
    edit->addAction(showHistory);
    edit->addSeparator();
    m_deleteAction = addMenuAction(edit, QStringLiteral("delete"), QStringLiteral("&Delete figure"), QKeySequence(),
                                   [this] { deleteSelected(); });
    // Delete, and Backspace as on keyboards without a Delete key; shown in the menu.
    m_deleteAction->setShortcuts({QKeySequence(QKeySequence::Delete), QKeySequence(Qt::Key_Backspace)});
    m_deleteAction->setShortcutContext(Qt::WindowShortcut);

    QMenu* figure = menuBar()->addMenu(QStringLiteral("F&igure"));
    addMenuAction(figure, QStringLiteral("duplicate"), QStringLiteral("D&uplicate"), QKeySequence(QStringLiteral("Ctrl+D")),
                  [this] { duplicateSelected(); });
    addMenuAction(figure, QStringLiteral("front"), QStringLiteral("Bring to &front"),
                  QKeySequence(QStringLiteral("Ctrl+]")), [this] { restackSelected(true); });
    addMenuAction(figure, QStringLiteral("back"), QStringLiteral("Send to &back"), QKeySequence(QStringLiteral("Ctrl+[")),
                  [this] { restackSelected(false); });
    addViewAction(figure, QStringLiteral("insertVertex"), QStringLiteral("&Insert vertex after the active one"),
                  QKeySequence(Qt::Key_Insert), [this] { insertVertexAfterActive(); });
    addViewAction(figure, QStringLiteral("deleteActiveVertex"), QStringLiteral("Delete the active &vertex"),
                  QKeySequence(QStringLiteral("Shift+Del")), [this] {
                      VcaObject* active = m_document.view().object(m_document.view().selectedSlot());
                      deleteVertex(active != nullptr ? active->GetSelPointIndex() : 0);
                  });
    figure->addSeparator();
    addViewAction(figure, QStringLiteral("next"), QStringLiteral("Select &next figure"), QKeySequence(Qt::Key_Tab),
                  [this] { selectNext(); });
    addViewAction(figure, QStringLiteral("deselect"), QStringLiteral("D&eselect"), QKeySequence(Qt::Key_Escape),
                  [this] { deselect(); });
    QMenu* nudge = figure->addMenu(QStringLiteral("N&udge"));
    struct Step {
        const char* name;
        const char* text;
        const char* keys;
        int dx;
        int dy;
    };
    const Step steps[] = {{"nudgeLeft", "Left", "Left", -1, 0},         {"nudgeRight", "Right", "Right", 1, 0},
                          {"nudgeUp", "Up", "Up", 0, -1},               {"nudgeDown", "Down", "Down", 0, 1},
                          {"nudgeLeft10", "Left by 10", "Shift+Left", -10, 0}, {"nudgeRight10", "Right by 10", "Shift+Right", 10, 0},
                          {"nudgeUp10", "Up by 10", "Shift+Up", 0, -10}, {"nudgeDown10", "Down by 10", "Shift+Down", 0, 10}};
    for (const Step& step : steps) {
        addViewAction(nudge, QLatin1String(step.name), QLatin1String(step.text), QKeySequence(QLatin1String(step.keys)),
                      [this, step] { nudgeSelected(step.dx, step.dy); });
    }

    QMenu* tools = menuBar()->addMenu(QStringLiteral("&Tools"));
    addMenuAction(tools, QStringLiteral("track"), QStringLiteral("Draw test &track"), QKeySequence(QStringLiteral("Ctrl+K")),
                  [this] { m_view->startTrack(); });
    addMenuAction(tools, QStringLiteral("clearTrack"), QStringLiteral("&Clear test track"),
                  QKeySequence(QStringLiteral("Ctrl+Shift+K")), [this] { m_view->clearTrack(); });

    QMenu* view = menuBar()->addMenu(QStringLiteral("&View"));
    const auto centre = [this] { return QPointF(m_view->width() / 2.0, m_view->height() / 2.0); };
    addMenuAction(view, QStringLiteral("zoomIn"), QStringLiteral("Zoom &in"), QKeySequence::ZoomIn,
                  [this, centre] { m_view->zoomAbout(m_view->zoom() * DemoView::kZoomStep, centre()); });
    addMenuAction(view, QStringLiteral("zoomOut"), QStringLiteral("Zoom &out"), QKeySequence::ZoomOut,
                  [this, centre] { m_view->zoomAbout(m_view->zoom() / DemoView::kZoomStep, centre()); });
    addMenuAction(view, QStringLiteral("fit"), QStringLiteral("&Fit"), QKeySequence(QStringLiteral("Ctrl+0")),
                  [this] { m_view->fit(); });
    view->addSeparator();
    QAction* outline = addMenuAction(view, QStringLiteral("outline"), QStringLiteral("&Outline text"),
                                     QKeySequence(QStringLiteral("Ctrl+T")), [] {});
    outline->setCheckable(true);
    outline->setChecked(TextRendering::IsOutlined());
    connect(outline, &QAction::toggled, this, [this](bool on) {
        TextRendering::SetOutline(on);
        m_view->update();
    });
    QAction* crossings = addMenuAction(view, QStringLiteral("crossings"), QStringLiteral("Show self-&crossings"),
                                       QKeySequence(QStringLiteral("Ctrl+Shift+C")), [] {});
    crossings->setCheckable(true);
    crossings->setChecked(true);
    connect(crossings, &QAction::toggled, m_view, &DemoView::setShowCrossings);

    // A right click on a figure selects it and offers its actions.
    m_figureMenu = new QMenu(this);
    m_deleteVertexAction = m_figureMenu->addAction(QStringLiteral("Delete &vertex"));
    m_deleteVertexAction->setObjectName(QStringLiteral("deleteVertex"));
    connect(m_deleteVertexAction, &QAction::triggered, this, [this] { deleteVertex(m_menuVertex); });
    m_figureMenu->addAction(m_deleteAction);
    m_figureMenu->addAction(action(QStringLiteral("duplicate")));
    m_figureMenu->addAction(action(QStringLiteral("front")));
    m_figureMenu->addAction(action(QStringLiteral("back")));
    connect(m_view, &DemoView::figureMenuRequested, this, [this](const QPoint& global, unsigned int vertex) {
        selectionChanged();
        m_menuVertex = vertex;
        m_deleteVertexAction->setVisible(vertex != 0);
        m_deleteVertexAction->setText(QStringLiteral("Delete &vertex %1").arg(vertex));
        if (m_document.view().selectedSlot() >= 0) {
            m_figureMenu->popup(global);
        }
    });
}

void MainWindow::deleteSelected()
{
    const int slot = m_document.view().selectedSlot();
    if (slot < 0 || m_view->placing()) {
        return;
    }
    const QString kind = m_document.kind(slot);
    m_document.remove(slot);
    selectionChanged();
    checkpoint(QStringLiteral("Delete %1").arg(kind));
    showMessage(QStringLiteral("%1 deleted").arg(kind));
}

void MainWindow::duplicateSelected()
{
    const HostView& view = m_document.view();
    const int slot = view.selectedSlot();
    if (slot < 0 || view.width() <= 0 || view.height() <= 0) {
        return;
    }
    QString error;
    const QString kind = m_document.kind(slot);
    if (m_document.duplicate(slot, kDuplicateOffset / view.width(), kDuplicateOffset / view.height(), error) < 0) {
        showMessage(QStringLiteral("%1 not duplicated: %2").arg(kind, error));
        return;
    }
    selectionChanged();
    checkpoint(QStringLiteral("Duplicate %1").arg(kind));
    showMessage(QStringLiteral("%1 duplicated").arg(kind));
}

void MainWindow::restackSelected(bool toTop)
{
    const int slot = m_document.view().selectedSlot();
    if (slot < 0 || !m_document.restack(slot, toTop)) {
        return;
    }
    m_view->update();
    checkpoint(toTop ? QStringLiteral("Bring to front") : QStringLiteral("Send to back"));
}

void MainWindow::nudgeSelected(int dx, int dy)
{
    HostView& view = m_document.view();
    const int slot = view.selectedSlot();
    if (slot < 0) {
        return;
    }
    if (!Nudge(view.object(slot), static_cast<float>(dx), static_cast<float>(dy), view.width(), view.height())) {
        showMessage(QStringLiteral("%1 would leave the picture: not moved").arg(m_document.kind(slot)));
        return;
    }
    view.refresh(slot);
    m_panel->refreshVertices();
    m_view->update();
    checkpoint(QStringLiteral("Nudge %1").arg(m_document.kind(slot)));
}

void MainWindow::selectNext()
{
    HostView& view = m_document.view();
    const std::vector<int> order = view.figureSlots();
    if (order.empty() || m_view->placing()) {
        return;
    }
    const auto at = std::find(order.begin(), order.end(), view.selectedSlot());
    view.select(at == order.end() || at + 1 == order.end() ? order.front() : *(at + 1));
    selectionChanged();
    showMessage(QStringLiteral("%1 selected").arg(m_document.kind(view.selectedSlot())));
}

void MainWindow::deselect()
{
    if (m_view->placing()) {
        m_view->cancelPlacing();
        showMessage(QStringLiteral("placing cancelled"));
        return;
    }
    m_document.view().select(-1);
    selectionChanged();
}

void MainWindow::deleteVertex(unsigned int vertex)
{
    HostView& view = m_document.view();
    const int slot = view.selectedSlot();
    VcaObject* figure = view.object(slot);
    if (figure == nullptr || vertex == 0) {
        return;
    }
    if (!RemoveVertex(figure, vertex - 1)) {
        const VertexLimits limits = GetVertexLimits(figure);
        showMessage(limits.minCount == limits.maxCount
                        ? QStringLiteral("%1 always has %2 vertices").arg(m_document.kind(slot)).arg(limits.maxCount)
                        : QStringLiteral("%1 needs at least %2 vertices").arg(m_document.kind(slot)).arg(limits.minCount));
        return;
    }
    view.refresh(slot);
    m_panel->refreshVertices();
    m_view->update();
    checkpoint(QStringLiteral("Delete vertex"));
    showMessage(QStringLiteral("vertex %1 deleted").arg(vertex));
}

void MainWindow::insertVertexAfterActive()
{
    HostView& view = m_document.view();
    const int slot = view.selectedSlot();
    VcaObject* figure = view.object(slot);
    const std::vector<tagTAVRIN_POINT> vertices = view.vertices(slot);
    if (figure == nullptr || vertices.size() < 2) {
        return;
    }
    // On the edge that leaves the active vertex (the last one's when none is active), at
    // its middle; the new vertex becomes the active one.
    const unsigned int count = static_cast<unsigned int>(vertices.size());
    const unsigned int active = figure->GetSelPointIndex();
    const unsigned int from = active >= 1 && active <= count ? active - 1 : count - 1;
    const tagTAVRIN_POINT& a = vertices[from];
    const tagTAVRIN_POINT& b = vertices[(from + 1) % count];
    if (!InsertVertex(figure, from + 1, tagTAVRIN_POINT{(a.x + b.x) / 2.0f, (a.y + b.y) / 2.0f})) {
        const VertexLimits limits = GetVertexLimits(figure);
        showMessage(QStringLiteral("%1 takes at most %2 vertices").arg(m_document.kind(slot)).arg(limits.maxCount));
        return;
    }
    figure->SetSelPointIndex(from + 2);
    view.refresh(slot);
    m_panel->refreshVertices();
    m_view->update();
    checkpoint(QStringLiteral("Insert vertex"));
}

void MainWindow::newScene()
{
    if (!mayDiscardChanges()) {
        return;
    }
    m_view->cancelPlacing();
    m_document.clear();
    resetHistory();
    showMessage(QStringLiteral("new scene over the same picture"));
}

void MainWindow::openDialog()
{
    const QString path = QFileDialog::getOpenFileName(this, QStringLiteral("Open scene"), QString(),
                                                      QStringLiteral("Scenes (*.json);;All files (*)"));
    if (!path.isEmpty()) {
        openScene(path);
    }
}

void MainWindow::saveAsDialog()
{
    const QString path = QFileDialog::getSaveFileName(this, QStringLiteral("Save scene"), m_document.path(),
                                                      QStringLiteral("Scenes (*.json)"));
    if (!path.isEmpty()) {
        saveScene(path);
    }
}

void MainWindow::pictureDialog()
{
    const QString path = QFileDialog::getOpenFileName(this, QStringLiteral("Open picture"), QString(),
                                                      QStringLiteral("Pictures (*.png *.jpg *.jpeg);;All files (*)"));
    if (path.isEmpty()) {
        return;
    }
    QString error;
    if (!m_document.setPicture(path, error)) {
        showMessage(QStringLiteral("%1: %2").arg(QFileInfo(path).fileName(), error));
        return;
    }
    m_view->pictureChanged();
}

void MainWindow::showMessage(const QString& text) { statusBar()->showMessage(text); }

void MainWindow::selectionChanged()
{
    m_current.selected = -1;
    const std::vector<int> order = m_document.view().figureSlots();
    const auto at = std::find(order.begin(), order.end(), m_document.view().selectedSlot());
    if (at != order.end()) {
        m_current.selected = static_cast<int>(at - order.begin());
    }
    m_panel->showSelection();
    m_view->update();
}

void MainWindow::showCursor(const QPointF& normalised)
{
    const tagTAVRIN_POINT p{static_cast<float>(normalised.x()), static_cast<float>(normalised.y())};
    tagTAVRIN_POINT pixel{0.0f, 0.0f};
    tagTAVRIN_POINT onvif{0.0f, 0.0f};
    const QSize scene = m_document.sceneSize();
    // Outside the picture (in the margin) there are no picture coordinates to give.
    if (!ConvertPoints(&p, 1, CoordinateSpace::Normalized, CoordinateSpace::Pixels, &pixel, scene.width(),
                       scene.height()) ||
        !ConvertPoints(&p, 1, CoordinateSpace::Normalized, CoordinateSpace::Onvif, &onvif)) {
        m_coordinates->setText(QStringLiteral("outside the picture"));
        return;
    }
    m_coordinates->setText(QStringLiteral("x %1  y %2  |  pixel %3, %4  |  ONVIF %5, %6")
                               .arg(double(p.x), 0, 'f', 4)
                               .arg(double(p.y), 0, 'f', 4)
                               .arg(static_cast<int>(pixel.x))
                               .arg(static_cast<int>(pixel.y))
                               .arg(double(onvif.x), 0, 'f', 4)
                               .arg(double(onvif.y), 0, 'f', 4));
}

void MainWindow::refreshProblems()
{
    m_problems->clear();
    for (const SceneHint& hint : GetSceneHints()) {
        auto* item = new QListWidgetItem(QString::fromStdString(hint.message), m_problems);
        item->setData(Qt::UserRole, hint.slot);
    }
    if (m_problems->count() == 0) {
        auto* item = new QListWidgetItem(QStringLiteral("No problems found"), m_problems);
        item->setData(Qt::UserRole, -1);
        item->setFlags(Qt::NoItemFlags);
    }
}

void MainWindow::refreshTrack()
{
    m_crossings->clear();
    const std::vector<tagTAVRIN_POINT>& track = m_view->track();
    std::vector<CrossingEvent> all;
    for (const int slot : m_document.view().figureSlots()) {
        const std::vector<CrossingEvent> events =
            TrackCrossings(m_document.view().object(slot), track.data(), static_cast<unsigned int>(track.size()));
        for (const CrossingEvent& e : events) {
            static const char* const kWords[] = {"A to B", "B to A", "enters", "leaves"};
            new QListWidgetItem(QStringLiteral("%1 (slot %2): %3 on track segment %4, %5")
                                    .arg(m_document.kind(slot))
                                    .arg(slot)
                                    .arg(QLatin1String(kWords[static_cast<int>(e.kind)]))
                                    .arg(e.trackSegment + 1)
                                    .arg(e.counts ? QStringLiteral("counted") : QStringLiteral("not counted")),
                                m_crossings);
        }
        all.insert(all.end(), events.begin(), events.end());
    }
    if (!track.empty() && all.empty()) {
        new QListWidgetItem(QStringLiteral("The track crosses no rule"), m_crossings);
    }
    m_view->setTrackEvents(std::move(all));
}

void MainWindow::checkpoint(const QString& what)
{
    SceneDocument::Snapshot now = m_document.snapshot();
    if (now.saved != m_current.saved) {
        m_history->push(new SceneStep(what, m_current, now,
                                      [this](const SceneDocument::Snapshot& s) { applySnapshot(s); }));
    }
    m_current = std::move(now);
    refreshProblems();
    refreshTrack();
}

void MainWindow::applySnapshot(const SceneDocument::Snapshot& snapshot)
{
    m_view->cancelPlacing();
    m_document.restore(snapshot);
    m_current = m_document.snapshot();
    m_panel->showSelection();
    m_view->update();
    refreshProblems();
    refreshTrack();
}

void MainWindow::resetHistory()
{
    m_history->clear();
    m_current = m_document.snapshot();
    const QString name = m_document.path().isEmpty() ? QStringLiteral("untitled") : QFileInfo(m_document.path()).fileName();
    setWindowTitle(QStringLiteral("%1[*] - tavrin-demo").arg(name));
    setWindowModified(false);
    selectionChanged();
    refreshProblems();
}

bool MainWindow::mayDiscardChanges()
{
    if (m_history->isClean()) {
        return true;
    }
    switch (m_unsavedPrompt()) {
    case QMessageBox::Discard:
        return true;
    case QMessageBox::Save:
        if (m_document.path().isEmpty()) {
            saveAsDialog();
        } else {
            saveScene(m_document.path());
        }
        return m_history->isClean();
    default:
        return false;
    }
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (mayDiscardChanges()) {
        event->accept();
    } else {
        event->ignore();
    }
}

QStringList MainWindow::recentScenes() const
{
    return QSettings(QStringLiteral("Tavrin"), QStringLiteral("tavrin-demo")).value(kRecentKey).toStringList();
}

void MainWindow::rememberScene(const QString& path)
{
    QStringList recent = recentScenes();
    const QString absolute = QFileInfo(path).absoluteFilePath();
    recent.removeAll(absolute);
    recent.prepend(absolute);
    while (recent.size() > kRecentScenes) {
        recent.removeLast();
    }
    QSettings(QStringLiteral("Tavrin"), QStringLiteral("tavrin-demo")).setValue(kRecentKey, recent);
}

void MainWindow::fillRecentMenu()
{
    m_recentMenu->clear();
    const QStringList recent = recentScenes();
    for (int i = 0; i < recent.size(); ++i) {
        const QString path = recent.at(i);
        QAction* open = m_recentMenu->addAction(QStringLiteral("&%1 %2").arg(i + 1).arg(QFileInfo(path).fileName()));
        open->setToolTip(path);
        connect(open, &QAction::triggered, this, [this, path] { openScene(path); });
    }
    m_recentMenu->setEnabled(true);
    if (recent.isEmpty()) {
        m_recentMenu->addAction(QStringLiteral("(none yet)"))->setEnabled(false);
    }
}

}  // namespace demo
}  // namespace Tavrin
