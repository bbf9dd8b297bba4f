// Eight threads on one registered size filter: its locked vertex operations (SetPoints,
// GetPoints, SetDiagonal, Move, MovePoint) interleave with reference counting and registry
// traffic. Bounded in iterations and in time; scripts/sanitize.sh runs this under
// ThreadSanitizer.
#include <Tavrin/SizeFilter.h>
#include <Tavrin/VcaObjectContainer.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <random>
#include <thread>
#include <vector>

using Tavrin::SizeFilter;
using Tavrin::VcaObject;
using Tavrin::VcaObjectContainer;

namespace {

const int kThreads = 8;
const int kIterations = 5000;
// Under ThreadSanitizer on a loaded machine the iterations may take long: each thread
// also stops at this deadline, so the test stays within seconds.
const std::chrono::milliseconds kTimeBudget(1500);

// Reads the protected reference count through a pointer to member formed in a derived
// class; only ever read after the threads have joined.
struct RefCountPeek : VcaObject {
    static int VcaObject::*member() { return &RefCountPeek::m_refCount; }
};

int refCount(VcaObject* obj) { return obj->*RefCountPeek::member(); }

// Four corners in diagonal order: each corner shares one coordinate exactly with each
// neighbour. Every locked edit keeps a rectangle or a square so; a torn read would not be.
bool wholeRectangle(const tagTAVRIN_POINT* c, unsigned int count)
{
    return count == 4 && c[0].y == c[1].y && c[1].x == c[2].x && c[2].y == c[3].y &&
           c[3].x == c[0].x;
}

// One locked edit of the i-th kind, then a read; false when the read is torn.
bool editAndRead(SizeFilter* filter, std::minstd_rand& rng, int i)
{
    std::uniform_real_distribution<float> coord(0.1f, 0.9f);
    std::uniform_real_distribution<float> step(-0.05f, 0.05f);
    tagTAVRIN_POINT a{coord(rng), coord(rng)};
    tagTAVRIN_POINT b{coord(rng), coord(rng)};
    tagTAVRIN_POINT to{a.x + step(rng), a.y + step(rng)};
    tagTAVRIN_POINT corners[4] = {a, {b.x, a.y}, b, {a.x, b.y}};
    switch (i % 4) {
    case 0: filter->SetDiagonal(a, b); break;
    case 1: filter->SetPoints(corners, 4); break;
    case 2: filter->Move(a, to); break;
    default: filter->MovePoint(a, to); break;
    }
    tagTAVRIN_POINT out[20];
    unsigned int count = 0;
    return filter->GetPoints(out, &count) && wholeRectangle(out, count);
}

}  // namespace

// Afterwards every count is back where it started and the registry holds exactly the
// shared filter.
TEST(SizeFilterStress, ConcurrentEditsReferencesLookupsAndSlots)
{
    VcaObjectContainer::Release();
    VcaObjectContainer* registry = VcaObjectContainer::Instance();
    ASSERT_NE(registry, nullptr);
    SizeFilter* shared = SizeFilter::NewInstance();
    ASSERT_NE(shared, nullptr);
    const int sharedSlot = registry->AddVcaObject(shared);
    ASSERT_EQ(sharedSlot, 0);

    std::atomic<int> failures{0};
    for (auto type : {TAVRIN_SIZE_FILTER_RECT, TAVRIN_SIZE_FILTER_SQUARE}) {
        // Type, view size and selection are not locked: set before the threads start.
        shared->SetSizeFilterType(type);
        shared->SetWndSize(1000, 500);
        shared->SetSelPointIndex(3);
        tagTAVRIN_POINT a{0.3f, 0.3f};
        tagTAVRIN_POINT b{0.6f, 0.5f};
        ASSERT_TRUE(shared->SetDiagonal(a, b));
        std::atomic<int> ready{0};
        const auto deadline = std::chrono::steady_clock::now() + kTimeBudget;
        std::vector<std::thread> threads;
        for (int t = 0; t < kThreads; ++t) {
            threads.emplace_back([&, t] {
                ++ready;  // start together, so the edits overlap as much as they can
                while (ready.load() < kThreads) {
                    std::this_thread::yield();
                }
                std::minstd_rand rng(7u + static_cast<unsigned int>(t));
                for (int i = 0; i < kIterations && std::chrono::steady_clock::now() < deadline; ++i) {
                    shared->AddRef();
                    const bool ok = registry->GetVcaObject(sharedSlot) == shared && editAndRead(shared, rng, i);
                    shared->ReleaseRef();
                    SizeFilter* own = SizeFilter::NewInstance();
                    const int slot = registry->AddVcaObject(own);
                    own->ReleaseRef();  // the registry holds the only reference now
                    const bool owned = slot > 0 && registry->GetVcaObject(slot) == own && editAndRead(own, rng, 0);
                    if (!ok || !owned || !registry->DelVcaObject(slot)) {
                        ++failures;
                    }
                }
            });
        }
        for (std::thread& t : threads) {
            t.join();
        }
    }
    EXPECT_EQ(failures.load(), 0);
    EXPECT_EQ(refCount(shared), 2);
    EXPECT_EQ(registry->GetVcaObject(sharedSlot), shared);
    for (int slot = 1; slot <= kThreads; ++slot) {
        EXPECT_EQ(registry->GetVcaObject(slot), nullptr) << slot;
    }
    shared->ReleaseRef();
    EXPECT_TRUE(VcaObjectContainer::Release());  // drops the last reference
}
