#ifndef TAVRIN_TOOLS_DEMO_MAINWINDOW_H
#define TAVRIN_TOOLS_DEMO_MAINWINDOW_H

// tavrin-demo's window: the palette of the sixteen kinds on the left, the video view in
// the middle, the selected figure's properties and vertices on the right, the scene's
// problems and the edit history below. Every action is in a menu and has a key.

#include "DemoView.h"
#include "SceneDocument.h"

#include <QKeySequence>
#include <QMainWindow>
#include <QMessageBox>

#include <functional>

class QAction;
class QLabel;
class QListWidget;
class QMenu;
class QUndoStack;

namespace Tavrin {
namespace demo {

class PropertyPanel;

class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    MainWindow(SceneDocument& document, Rendering rendering = Rendering::Gl1);

    /// Opens a scene; on a refusal keeps the current scene and gives the reason in
    /// `reason`, or, without one, shows it in a dialog (when the window is shown). Asks
    /// first what to do with unsaved changes; false when the user keeps them.
    bool openScene(const QString& path, QString* reason = nullptr);
    bool saveScene(const QString& path);

    DemoView* view() const { return m_view; }
    PropertyPanel* panel() const { return m_panel; }
    QListWidget* palette() const { return m_palette; }
    /// The scene's problems (GetSceneHints), one row each; a click selects the figure.
    QListWidget* problems() const { return m_problems; }
    QUndoStack* history() const { return m_history; }
    /// The test track's crossings, one row per crossing of each rule, in track order.
    QListWidget* crossings() const { return m_crossings; }
    /// The status bar's cursor position in normalised, picture-pixel and ONVIF terms.
    QLabel* coordinates() const { return m_coordinates; }
    /// Edit > Delete figure (Delete, Backspace), also in the figure's right-click menu.
    QAction* deleteAction() const { return m_deleteAction; }
    /// The right-click menu of a figure (Delete vertex, when a vertex was clicked).
    QMenu* figureMenu() const { return m_figureMenu; }
    /// Every action by its object name ("undo", "duplicate", "nudgeLeft" ...), or null.
    QAction* action(const QString& name) const;
    /// The most recently opened or saved scenes, newest first.
    QStringList recentScenes() const;

    /// What closing, opening or starting a scene over unsaved changes asks: Save,
    /// Discard or Cancel. A message box unless replaced (the self-test answers itself).
    using UnsavedPrompt = std::function<QMessageBox::StandardButton()>;
    void setUnsavedPrompt(UnsavedPrompt prompt) { m_unsavedPrompt = std::move(prompt); }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildMenus();
    QAction* addMenuAction(QMenu* menu, const QString& name, const QString& text, const QKeySequence& shortcut,
                           const std::function<void()>& run);
    /// An action whose keys act while the view has the focus (arrows, Tab, Escape stay
    /// with the panels' editors otherwise).
    QAction* addViewAction(QMenu* menu, const QString& name, const QString& text, const QKeySequence& shortcut,
                           const std::function<void()>& run);
    void openDialog();
    void saveAsDialog();
    void pictureDialog();
    void deleteSelected();
    void duplicateSelected();
    void restackSelected(bool toTop);
    void nudgeSelected(int dx, int dy);
    void selectNext();
    void deselect();
    void deleteVertex(unsigned int vertex);
    void insertVertexAfterActive();
    void newScene();
    void showMessage(const QString& text);
    void selectionChanged();
    void showCursor(const QPointF& normalised);
    void refreshProblems();
    /// Every rule's crossings of the test track: listed, and marked on the track.
    void refreshTrack();

    /// Records an edit that has happened: one undo step named `what`, when the figures
    /// (not just the selection) changed since the last step.
    void checkpoint(const QString& what);
    /// Puts a snapshot back (undo, redo) and refreshes the panels.
    void applySnapshot(const SceneDocument::Snapshot& snapshot);
    /// A scene was opened, started or saved: the history starts again from it.
    void resetHistory();
    /// Whether unsaved changes may go: asks, and saves when told to.
    bool mayDiscardChanges();
    void rememberScene(const QString& path);
    void fillRecentMenu();

    SceneDocument& m_document;
    DemoView* m_view;
    PropertyPanel* m_panel;
    QListWidget* m_palette;
    QListWidget* m_problems;
    QListWidget* m_crossings;
    QLabel* m_coordinates;
    QUndoStack* m_history;
    SceneDocument::Snapshot m_current;
    QAction* m_deleteAction = nullptr;
    QAction* m_deleteVertexAction = nullptr;
    unsigned int m_menuVertex = 0;
    QMenu* m_figureMenu = nullptr;
    QMenu* m_recentMenu = nullptr;
    UnsavedPrompt m_unsavedPrompt;
};

}  // namespace demo
}  // namespace Tavrin

#endif  // TAVRIN_TOOLS_DEMO_MAINWINDOW_H
