#ifndef TAVRIN_TOOLS_DEMO_SCENESTEP_H
#define TAVRIN_TOOLS_DEMO_SCENESTEP_H

// One step of the demo's edit history: the scene's figures before and after an edit.
// Undo and redo put one of the two snapshots back through the window, which rebuilds the
// figures and refreshes its panels.

#include "SceneDocument.h"

#include <QUndoCommand>

#include <functional>

namespace Tavrin {
namespace demo {

class SceneStep : public QUndoCommand {
public:
    using Apply = std::function<void(const SceneDocument::Snapshot&)>;

    /// The edit has already happened when the step is made: the first redo, which
    /// QUndoStack::push runs, changes nothing.
    SceneStep(const QString& text, SceneDocument::Snapshot before, SceneDocument::Snapshot after, Apply apply);

    void undo() override;
    void redo() override;

private:
    SceneDocument::Snapshot m_before;
    SceneDocument::Snapshot m_after;
    Apply m_apply;
    bool m_done = true;
};

}  // namespace demo
}  // namespace Tavrin

#endif  // TAVRIN_TOOLS_DEMO_SCENESTEP_H
