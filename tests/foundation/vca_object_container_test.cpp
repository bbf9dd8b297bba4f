#include "support/TestObject.h"

#include <Tavrin/VcaObjectContainer.h>

#include <gtest/gtest.h>

#include <vector>

using Tavrin::VcaObjectContainer;

class Registry : public ::testing::Test {
protected:
    void SetUp() override
    {
        VcaObjectContainer::Release();
        registry = VcaObjectContainer::Instance();
        ASSERT_NE(registry, nullptr);
    }
    void TearDown() override { VcaObjectContainer::Release(); }

    VcaObjectContainer* registry = nullptr;
};

TEST_F(Registry, InstanceIsASingletonUntilReleased)
{
    EXPECT_EQ(VcaObjectContainer::Instance(), registry);
    EXPECT_TRUE(VcaObjectContainer::Release());
    EXPECT_FALSE(VcaObjectContainer::Release());
    VcaObjectContainer* fresh = VcaObjectContainer::Instance();
    ASSERT_NE(fresh, nullptr);
    EXPECT_EQ(fresh->GetVcaObject(0), nullptr);  // a fresh registry is empty
}

TEST_F(Registry, NullObjectIsRefusedAndChangesNothing)
{
    EXPECT_EQ(registry->AddVcaObject(nullptr), -1);
    EXPECT_EQ(registry->GetVcaObject(0), nullptr);
    TestObject* a = new TestObject();
    EXPECT_EQ(registry->AddVcaObject(a), 0);  // no slot was made for the null
    a->ReleaseRef();
}

TEST_F(Registry, AddTakesAReferenceAndFreedSlotsAreReused)
{
    TestObject* a = new TestObject();
    TestObject* b = new TestObject();
    TestObject* c = new TestObject();
    EXPECT_EQ(registry->AddVcaObject(a), 0);
    EXPECT_EQ(a->refCount(), 2);
    EXPECT_EQ(registry->AddVcaObject(b), 1);
    b->AddRef();  // keep b alive to observe it
    EXPECT_TRUE(registry->DelVcaObject(0));
    EXPECT_EQ(registry->GetVcaObject(0), nullptr);
    EXPECT_EQ(registry->AddVcaObject(c), 0);
    EXPECT_EQ(registry->GetVcaObject(0), c);
    EXPECT_EQ(registry->GetVcaObject(1), b);
    a->ReleaseRef();
    b->ReleaseRef();
    b->ReleaseRef();
    c->ReleaseRef();
}

TEST_F(Registry, BadIndicesAreRefused)
{
    TestObject* a = new TestObject();
    registry->AddVcaObject(a);
    a->ReleaseRef();
    EXPECT_FALSE(registry->DelVcaObject(-1));
    EXPECT_FALSE(registry->DelVcaObject(1));
    EXPECT_EQ(registry->GetVcaObject(-1), nullptr);
    EXPECT_EQ(registry->GetVcaObject(1), nullptr);
    EXPECT_TRUE(registry->DelVcaObject(0));
    EXPECT_FALSE(registry->DelVcaObject(0));  // already emptied
    EXPECT_EQ(registry->GetVcaObject(0), nullptr);
}

TEST_F(Registry, LastReferenceDeletesInsideDel)
{
    const int before = TestObject::live();
    TestObject* a = new TestObject();
    registry->AddVcaObject(a);
    a->ReleaseRef();  // the registry now holds the only reference
    EXPECT_EQ(TestObject::live(), before + 1);
    EXPECT_TRUE(registry->DelVcaObject(0));
    EXPECT_EQ(TestObject::live(), before);
}

TEST_F(Registry, DuplicatesGetTwoSlotsAndTwoReferences)
{
    TestObject* a = new TestObject();
    EXPECT_EQ(registry->AddVcaObject(a), 0);
    EXPECT_EQ(registry->AddVcaObject(a), 1);
    EXPECT_EQ(a->refCount(), 3);
    registry->DelVcaObject(0);
    EXPECT_EQ(a->refCount(), 2);
    a->ReleaseRef();
}

TEST_F(Registry, ReleaseDropsOneReferenceOfEveryObject)
{
    const int before = TestObject::live();
    TestObject* owned = new TestObject();
    TestObject* kept = new TestObject();
    registry->AddVcaObject(owned);
    registry->AddVcaObject(kept);
    owned->ReleaseRef();
    EXPECT_TRUE(VcaObjectContainer::Release());
    EXPECT_EQ(TestObject::live(), before + 1);  // `kept` still has its creator's reference
    EXPECT_EQ(kept->refCount(), 1);
    kept->ReleaseRef();
    EXPECT_EQ(TestObject::live(), before);
}

