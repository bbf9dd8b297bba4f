#include <Tavrin/KemoGuard.h>
#include <Tavrin/VcaObject.h>
#include <Tavrin/VcaObjectContainer.h>

#include <climits>
#include <new>

namespace Tavrin {

VcaObjectContainer* VcaObjectContainer::m_spInstance = nullptr;

VcaObjectContainer::VcaObjectContainer() = default;

VcaObjectContainer::~VcaObjectContainer()
{
    // Unlocked: the registry is destroyed from the one thread that owns its lifetime.
    for (VcaObject* obj : m_objects) {
        if (obj != nullptr) {
            obj->ReleaseRef();
        }
    }
    m_objects.clear();
}

VcaObjectContainer* VcaObjectContainer::Instance()
{
    if (m_spInstance == nullptr) {
        m_spInstance = new (std::nothrow) VcaObjectContainer();
    }
    return m_spInstance;
}

bool VcaObjectContainer::Release()
{
    if (m_spInstance == nullptr) {
        return false;
    }
    VcaObjectContainer* instance = m_spInstance;
    m_spInstance = nullptr;
    delete instance;
    return true;
}

int VcaObjectContainer::AddVcaObject(VcaObject* obj)
{
    KemoGuard guard(m_mutex);
    if (obj == nullptr) {
        return -1;
    }
    for (std::size_t i = 0; i < m_objects.size(); ++i) {
        if (m_objects[i] == nullptr) {
            m_objects[i] = obj;
            obj->AddRef();
            return static_cast<int>(i);
        }
    }
    if (m_objects.size() >= static_cast<std::size_t>(INT_MAX)) {
        return -1;
    }
    try {
        m_objects.push_back(obj);
    } catch (...) {
        return -1;
    }
    obj->AddRef();
    return static_cast<int>(m_objects.size() - 1);
}

bool VcaObjectContainer::DelVcaObject(int index)
{
    KemoGuard guard(m_mutex);
    if (index < 0 || static_cast<std::size_t>(index) >= m_objects.size() ||
        m_objects[static_cast<std::size_t>(index)] == nullptr) {
        return false;
    }
    VcaObject* obj = m_objects[static_cast<std::size_t>(index)];
    m_objects[static_cast<std::size_t>(index)] = nullptr;
    obj->ReleaseRef();
    return true;
}

VcaObject* VcaObjectContainer::GetVcaObject(int index)
{
    KemoGuard guard(m_mutex);
    if (index < 0 || static_cast<std::size_t>(index) >= m_objects.size()) {
        return nullptr;
    }
    return m_objects[static_cast<std::size_t>(index)];
}

}  // namespace Tavrin
