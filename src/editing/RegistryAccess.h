#ifndef TAVRIN_EDITING_REGISTRYACCESS_H
#define TAVRIN_EDITING_REGISTRYACCESS_H

#include <Tavrin/KemoGuard.h>
#include <Tavrin/VcaObject.h>
#include <Tavrin/VcaObjectContainer.h>

#include <utility>
#include <vector>

namespace Tavrin {

/// The registry's occupied slots, read under its lock, each object with a reference taken
/// so it stays alive while the caller works on it (release each with `ReleaseRef`). May
/// throw std::bad_alloc before taking any reference.
struct RegistryAccess {
    static std::vector<std::pair<int, VcaObject*>> occupiedSlots()
    {
        std::vector<std::pair<int, VcaObject*>> out;
        // The registry as it is: reading it must not create one.
        VcaObjectContainer* registry = VcaObjectContainer::m_spInstance;
        if (registry == nullptr) {
            return out;
        }
        KemoGuard guard(registry->m_mutex);
        // Reserved first: once references are taken nothing below can throw.
        out.reserve(registry->m_objects.size());
        for (std::size_t i = 0; i < registry->m_objects.size(); ++i) {
            if (VcaObject* object = registry->m_objects[i]) {
                object->AddRef();
                out.emplace_back(static_cast<int>(i), object);
            }
        }
        return out;
    }
};

}  // namespace Tavrin

#endif  // TAVRIN_EDITING_REGISTRYACCESS_H
