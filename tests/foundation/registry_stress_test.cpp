// Eight threads share the registry and the reference counts (references taken and dropped
// on one object while it is edited: size_filter_stress_test). Bounded in rounds; run
// under ThreadSanitizer by scripts/sanitize.sh.
#include "support/TestObject.h"

#include <Tavrin/VcaObjectContainer.h>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

using Tavrin::VcaObjectContainer;

namespace {

const int kThreads = 8;
const int kRounds = 300;

template <class Body>
void onThreads(Body body)
{
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back(body, t);
    }
    for (std::thread& t : threads) {
        t.join();
    }
}

}  // namespace

TEST(RegistryStress, ConcurrentLastReleasesDeleteExactlyOnce)
{
    const int before = TestObject::live();
    for (int round = 0; round < 50; ++round) {
        TestObject* shared = new TestObject();
        for (int t = 1; t < kThreads; ++t) {
            shared->AddRef();
        }
        onThreads([shared](int) { shared->ReleaseRef(); });
        EXPECT_EQ(TestObject::live(), before);
    }
}

TEST(RegistryStress, ConcurrentAddLookupDeleteKeepsSlotsConsistent)
{
    VcaObjectContainer::Release();
    VcaObjectContainer* registry = VcaObjectContainer::Instance();
    ASSERT_NE(registry, nullptr);
    const int before = TestObject::live();
    std::atomic<int> failures{0};
    onThreads([registry, &failures](int) {
        for (int i = 0; i < kRounds; ++i) {
            TestObject* obj = new TestObject();
            const int slot = registry->AddVcaObject(obj);
            if (slot < 0 || registry->GetVcaObject(slot) != obj) {
                ++failures;
            }
            obj->ReleaseRef();
            if (!registry->DelVcaObject(slot)) {
                ++failures;
            }
        }
    });
    EXPECT_EQ(failures.load(), 0);
    EXPECT_EQ(TestObject::live(), before);
    for (int i = 0; i < kThreads; ++i) {
        EXPECT_EQ(registry->GetVcaObject(i), nullptr);
    }
    VcaObjectContainer::Release();
}
