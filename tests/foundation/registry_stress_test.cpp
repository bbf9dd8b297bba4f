// Eight threads race for an object's last release and share the registry. Bounded in
// rounds; run under ThreadSanitizer by scripts/sanitize.sh.
#include "support/TestObject.h"

#include <Tavrin/VcaObjectContainer.h>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

using Tavrin::VcaObjectContainer;

namespace {

const int kThreads = 8;

template <class Body>
void onThreads(Body body)
{
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back(body);
    }
    for (std::thread& t : threads) {
        t.join();
    }
}

}  // namespace

TEST(RegistryStress, ConcurrentLastReleasesAndSlotTrafficStayConsistent)
{
    const int before = TestObject::live();
    for (int round = 0; round < 50; ++round) {
        TestObject* shared = new TestObject();
        for (int t = 1; t < kThreads; ++t) {
            shared->AddRef();
        }
        onThreads([shared] { shared->ReleaseRef(); });
        ASSERT_EQ(TestObject::live(), before) << "deleted exactly once, round " << round;
    }

    VcaObjectContainer::Release();
    VcaObjectContainer* registry = VcaObjectContainer::Instance();
    std::atomic<int> failures{0};
    onThreads([registry, &failures] {
        for (int i = 0; i < 300; ++i) {
            TestObject* obj = new TestObject();
            const int slot = registry->AddVcaObject(obj);
            const bool found = slot >= 0 && registry->GetVcaObject(slot) == obj;
            obj->ReleaseRef();
            failures += (found && registry->DelVcaObject(slot)) ? 0 : 1;
        }
    });
    EXPECT_EQ(failures.load(), 0);
    EXPECT_EQ(TestObject::live(), before);
    for (int i = 0; i < kThreads; ++i) {
        EXPECT_EQ(registry->GetVcaObject(i), nullptr);
    }
    VcaObjectContainer::Release();
}
