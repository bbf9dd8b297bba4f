#include "SceneStep.h"

#include <utility>

namespace Tavrin {
namespace demo {

SceneStep::SceneStep(const QString& text, SceneDocument::Snapshot before, SceneDocument::Snapshot after,
                     Apply apply)
    : QUndoCommand(text), m_before(std::move(before)), m_after(std::move(after)), m_apply(std::move(apply))
{
}

void SceneStep::undo()
{
    m_apply(m_before);
    m_done = false;
}

void SceneStep::redo()
{
    if (!m_done) {
        m_apply(m_after);
        m_done = true;
    }
}

}  // namespace demo
}  // namespace Tavrin
