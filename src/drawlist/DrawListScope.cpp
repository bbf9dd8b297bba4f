#include <Tavrin/DrawList.h>

namespace Tavrin {

namespace {

thread_local DrawList* t_current = nullptr;

}  // namespace

DrawListScope::DrawListScope(DrawList& list) : m_previous(t_current) { t_current = &list; }

DrawListScope::~DrawListScope() { t_current = m_previous; }

DrawList* DrawListScope::Current() { return t_current; }

}  // namespace Tavrin
