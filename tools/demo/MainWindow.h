#ifndef TAVRIN_TOOLS_DEMO_MAINWINDOW_H
#define TAVRIN_TOOLS_DEMO_MAINWINDOW_H

// tavrin-demo's window: the palette of the sixteen kinds on the left, the video view in
// the middle, the selected figure's properties and vertices on the right.

#include "DemoView.h"
#include "SceneDocument.h"

#include <QKeySequence>
#include <QMainWindow>

#include <functional>

class QAction;
class QListWidget;
class QMenu;

namespace Tavrin {
namespace demo {

class PropertyPanel;

class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    MainWindow(SceneDocument& document, Rendering rendering = Rendering::Gl1);

    /// Opens a scene; on a refusal keeps the current scene and gives the reason in
    /// `reason`, or, without one, shows it in a dialog (when the window is shown).
    bool openScene(const QString& path, QString* reason = nullptr);
    bool saveScene(const QString& path);

    DemoView* view() const { return m_view; }
    PropertyPanel* panel() const { return m_panel; }
    QListWidget* palette() const { return m_palette; }
    /// Edit > Delete figure (Delete, Backspace), also in the figure's right-click menu.
    QAction* deleteAction() const { return m_deleteAction; }
    QMenu* figureMenu() const { return m_figureMenu; }

private:
    void buildMenus();
    QAction* addMenuAction(QMenu* menu, const QString& text, const QKeySequence& shortcut,
                           const std::function<void()>& run);
    void openDialog();
    void saveAsDialog();
    void pictureDialog();
    void deleteSelected();
    void newScene();
    void showMessage(const QString& text);
    void selectionChanged();

    SceneDocument& m_document;
    DemoView* m_view;
    PropertyPanel* m_panel;
    QListWidget* m_palette;
    QAction* m_deleteAction = nullptr;
    QMenu* m_figureMenu = nullptr;
};

}  // namespace demo
}  // namespace Tavrin

#endif  // TAVRIN_TOOLS_DEMO_MAINWINDOW_H
