#ifndef TAVRIN_TESTS_RULESTEST_H
#define TAVRIN_TESTS_RULESTEST_H

// Helpers for the analytics-rule tests: a fixture that owns a registry and hands out
// objects created and registered as a host does, and readers for the label text calls.

#include "support/GlTest.h"

#include <Tavrin/VcaObjectContainer.h>

#include <cstring>
#include <string>
#include <vector>

/// A drawing fixture with a fresh registry. `hostCreate` makes an object the way a host
/// does (NewInstance, AddVcaObject, the creator's reference dropped), so the registry
/// holds the only reference and tearing the registry down releases it.
class RuleTest : public GlTest {
protected:
    void SetUp() override
    {
        GlTest::SetUp();
        Tavrin::VcaObjectContainer::Release();
        registry = Tavrin::VcaObjectContainer::Instance();
        ASSERT_NE(registry, nullptr);
    }
    void TearDown() override { Tavrin::VcaObjectContainer::Release(); }

    template <class T>
    T* hostCreate()
    {
        T* obj = T::NewInstance();
        EXPECT_NE(obj, nullptr);
        if (obj == nullptr) {
            return nullptr;
        }
        const int slot = registry->AddVcaObject(obj);
        EXPECT_GE(slot, 0);
        EXPECT_EQ(registry->GetVcaObject(slot), obj);
        obj->ReleaseRef();
        return obj;
    }

    /// Removes the object from the registry, which drops its last reference.
    void hostDelete(Tavrin::VcaObject* obj)
    {
        for (int i = 0; i < 64; ++i) {
            if (registry->GetVcaObject(i) == obj) {
                EXPECT_TRUE(registry->DelVcaObject(i));
                return;
            }
        }
        ADD_FAILURE() << "object not registered";
    }

    Tavrin::VcaObjectContainer* registry = nullptr;
};

/// Batches with the given mode, colour and vertex count.
inline std::size_t countBatches(GLenum mode, const rec::Rgba& colour, std::size_t vertices)
{
    std::size_t n = 0;
    for (const rec::Batch& b : rec::gl().batches) {
        if (b.mode == mode && b.color == colour && b.vertices.size() == vertices) {
            ++n;
        }
    }
    return n;
}

#endif  // TAVRIN_TESTS_RULESTEST_H
