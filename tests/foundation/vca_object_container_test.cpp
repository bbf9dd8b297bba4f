#include "support/TestObject.h"

#include <Tavrin/VcaObjectContainer.h>

#include <gtest/gtest.h>

using Tavrin::VcaObjectContainer;

// The fuzzer models the slots and counts in full; this pins the basic cycle: each slot
// holds a reference, the first empty slot is reused, the last reference goes inside Del,
// Release drops one reference per slot.
TEST(Registry, SlotsHoldReferencesUntilDeletedOrReleased)
{
    VcaObjectContainer::Release();
    VcaObjectContainer* registry = VcaObjectContainer::Instance();
    ASSERT_NE(registry, nullptr);
    const int before = TestObject::live();
    TestObject* a = new TestObject();
    TestObject* b = new TestObject();
    EXPECT_EQ(registry->AddVcaObject(nullptr), -1);
    EXPECT_EQ(registry->AddVcaObject(a), 0);  // no slot was made for the null
    EXPECT_EQ(registry->AddVcaObject(a), 1);  // a duplicate gets its own slot and reference
    EXPECT_EQ(a->refCount(), 3);
    EXPECT_TRUE(registry->DelVcaObject(0));
    EXPECT_FALSE(registry->DelVcaObject(0));  // already emptied
    EXPECT_EQ(registry->AddVcaObject(b), 0);
    EXPECT_EQ(registry->GetVcaObject(0), b);
    EXPECT_FALSE(registry->DelVcaObject(2) || registry->DelVcaObject(-1));  // past either end
    a->ReleaseRef();
    EXPECT_TRUE(registry->DelVcaObject(1));  // the last reference is dropped inside Del
    EXPECT_EQ(TestObject::live(), before + 1);
    EXPECT_TRUE(VcaObjectContainer::Release());
    EXPECT_EQ(b->refCount(), 1);  // `b` still has its creator's reference
    b->ReleaseRef();
    EXPECT_EQ(TestObject::live(), before);
}
