#include "MainWindow.h"

#include "DemoKinds.h"
#include "DemoView.h"
#include "PropertyPanel.h"

#include <QDockWidget>
#include <QFileDialog>
#include <QFileInfo>
#include <QKeySequence>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>

namespace Tavrin {
namespace demo {

MainWindow::MainWindow(SceneDocument& document, Rendering rendering)
    : m_document(document), m_view(new DemoView(document, rendering, this)), m_panel(new PropertyPanel(document, this)),
      m_palette(new QListWidget(this))
{
    setWindowTitle(QStringLiteral("tavrin-demo"));
    setCentralWidget(m_view);

    for (const Kind& kind : kinds()) {
        m_palette->addItem(QLatin1String(kind.name));
    }
    m_palette->setMaximumWidth(m_palette->sizeHintForColumn(0) + 24);
    m_palette->setToolTip(QStringLiteral("Click a kind, then click its vertices in the view"));
    auto* paletteDock = new QDockWidget(QStringLiteral("New figure"), this);
    paletteDock->setObjectName(QStringLiteral("palette"));
    paletteDock->setFeatures(QDockWidget::NoDockWidgetFeatures);
    paletteDock->setWidget(m_palette);
    addDockWidget(Qt::LeftDockWidgetArea, paletteDock);

    auto* panelDock = new QDockWidget(QStringLiteral("Properties"), this);
    panelDock->setObjectName(QStringLiteral("properties"));
    panelDock->setFeatures(QDockWidget::NoDockWidgetFeatures);
    panelDock->setWidget(m_panel);
    addDockWidget(Qt::RightDockWidgetArea, panelDock);

    connect(m_palette, &QListWidget::itemClicked, this,
            [this](QListWidgetItem* item) { m_view->startPlacing(item->text()); });
    connect(m_view, &DemoView::selectionChanged, this, &MainWindow::selectionChanged);
    connect(m_view, &DemoView::edited, m_panel, &PropertyPanel::refreshVertices);
    connect(m_view, &DemoView::message, this, &MainWindow::showMessage);
    connect(m_panel, &PropertyPanel::message, this, &MainWindow::showMessage);
    connect(m_panel, &PropertyPanel::changed, m_view, [this] { m_view->update(); });
    buildMenus();
    showMessage(QStringLiteral("Press a figure to select it, drag it or its vertices; pick a kind to place one"));
}

bool MainWindow::openScene(const QString& path, QString* reason)
{
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
    selectionChanged();
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
    showMessage(QStringLiteral("saved %1").arg(path));
    return true;
}

QAction* MainWindow::addMenuAction(QMenu* menu, const QString& text, const QKeySequence& shortcut,
                                   const std::function<void()>& run)
{
    // One spelling for Qt 5 and Qt 6 (whose addAction overloads differ).
    QAction* action = menu->addAction(text);
    action->setShortcut(shortcut);
    connect(action, &QAction::triggered, this, run);
    return action;
}

void MainWindow::buildMenus()
{
    QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
    addMenuAction(file, QStringLiteral("&New scene"), QKeySequence::New, [this] { newScene(); });
    addMenuAction(file, QStringLiteral("&Open scene..."), QKeySequence::Open, [this] { openDialog(); });
    addMenuAction(file, QStringLiteral("&Save scene"), QKeySequence::Save, [this] {
        if (m_document.path().isEmpty()) {
            saveAsDialog();
        } else {
            saveScene(m_document.path());
        }
    });
    addMenuAction(file, QStringLiteral("Save scene &as..."), QKeySequence::SaveAs, [this] { saveAsDialog(); });
    addMenuAction(file, QStringLiteral("Open &picture..."), QKeySequence(), [this] { pictureDialog(); });
    file->addSeparator();
    addMenuAction(file, QStringLiteral("&Quit"), QKeySequence::Quit, [this] { close(); });

    QMenu* edit = menuBar()->addMenu(QStringLiteral("&Edit"));
    m_deleteAction = addMenuAction(edit, QStringLiteral("&Delete figure"), QKeySequence(), [this] { deleteSelected(); });
    // Delete, and Backspace as on keyboards without a Delete key; shown in the menu.
    m_deleteAction->setShortcuts({QKeySequence(QKeySequence::Delete), QKeySequence(Qt::Key_Backspace)});
    m_deleteAction->setShortcutContext(Qt::WindowShortcut);
    // A right click on a figure selects it and offers the same action.
    m_figureMenu = new QMenu(this);
    m_figureMenu->addAction(m_deleteAction);
    connect(m_view, &DemoView::figureMenuRequested, this, [this](const QPoint& global) {
        selectionChanged();
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
    showMessage(QStringLiteral("%1 deleted").arg(kind));
}

void MainWindow::newScene()
{
    m_view->cancelPlacing();
    m_document.clear();
    selectionChanged();
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
    m_panel->showSelection();
    m_view->update();
}

}  // namespace demo
}  // namespace Tavrin
