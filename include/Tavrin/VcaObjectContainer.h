#ifndef TAVRIN_VCAOBJECTCONTAINER_H
#define TAVRIN_VCAOBJECTCONTAINER_H

#include <Tavrin/KemoMutex.h>
#include <Tavrin/TavrinTypes.h>

#include <vector>

namespace Tavrin {

class VcaObject;

/// Process-wide registry of analytics objects by slot index.
///
/// The registry owns one reference to every object it holds. Slots are never removed,
/// so indices stay valid; a freed slot is reused by the next `AddVcaObject`. Adding,
/// deleting and looking up are locked (registry first, then the object). `Instance` and
/// `Release` are not: create and destroy the registry from one thread while no other
/// thread uses it.
class TAVRIN_API VcaObjectContainer {
public:
    /// The registry, created on first use; null if it cannot be created.
    static VcaObjectContainer* Instance();
    /// Destroys the registry, releasing one reference of every object still in it;
    /// false when there is none.
    static bool Release();

    /// Stores `obj` in the first empty slot (or a new one at the end), takes a
    /// reference and returns the slot; -1 for a null object or when no slot can be
    /// made. Adding an object twice gives it two slots and two references.
    int AddVcaObject(VcaObject* obj);
    /// Drops the registry's reference to the object in slot `index` (which may delete
    /// it) and empties the slot; false for a bad index or an empty slot.
    bool DelVcaObject(int index);
    /// The object in slot `index`, without taking a reference; null for an empty slot
    /// or a bad index.
    VcaObject* GetVcaObject(int index);

private:
    // The library's scene diagnostics walk the slots; no layout or table change.
    friend struct RegistryAccess;

    VcaObjectContainer();
    ~VcaObjectContainer();
    VcaObjectContainer(const VcaObjectContainer&) = delete;
    VcaObjectContainer& operator=(const VcaObjectContainer&) = delete;

    std::vector<VcaObject*> m_objects;
    KemoMutex m_mutex;

    static VcaObjectContainer* m_spInstance;
};

}  // namespace Tavrin

#endif  // TAVRIN_VCAOBJECTCONTAINER_H
