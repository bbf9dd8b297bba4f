// Eight threads on one size filter: its locked vertex operations (SetPoints, GetPoints,
// SetDiagonal, Move, MovePoint) interleave with reference counting and registry traffic.
// Bounded in iterations and in time; scripts/sanitize.sh runs these under ThreadSanitizer.
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
const int kIterations = 20000;
// Under ThreadSanitizer on a loaded machine the iterations may take long: each thread
// also stops at this deadline, so the suite stays within seconds.
const std::chrono::milliseconds kTimeBudget(2000);

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

template <class Body>
void onThreads(Body body)
{
    std::atomic<int> ready{0};
    const auto deadline = std::chrono::steady_clock::now() + kTimeBudget;
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&, t] {
            // Start together, so the edits overlap as much as they can.
            ++ready;
            while (ready.load() < kThreads) {
                std::this_thread::yield();
            }
            body(t, deadline);
        });
    }
    for (std::thread& t : threads) {
        t.join();
    }
}

struct Counts {
    std::atomic<int> reads{0};
    std::atomic<int> torn{0};
};

// One thread's share of edits: every kind of locked operation, then a read.
void editAndRead(SizeFilter* filter, unsigned int seed, std::chrono::steady_clock::time_point deadline,
                 Counts& counts)
{
    std::minstd_rand rng(seed);
    std::uniform_real_distribution<float> coord(0.1f, 0.9f);
    std::uniform_real_distribution<float> step(-0.05f, 0.05f);
    for (int i = 0; i < kIterations && std::chrono::steady_clock::now() < deadline; ++i) {
        tagTAVRIN_POINT a{coord(rng), coord(rng)};
        tagTAVRIN_POINT b{coord(rng), coord(rng)};
        tagTAVRIN_POINT to{a.x + step(rng), a.y + step(rng)};
        switch (i % 4) {
        case 0:
            filter->SetDiagonal(a, b);
            break;
        case 1: {
            tagTAVRIN_POINT corners[4] = {a, {b.x, a.y}, b, {a.x, b.y}};
            filter->SetPoints(corners, 4);
            break;
        }
        case 2:
            filter->Move(a, to);
            break;
        default:
            filter->MovePoint(a, to);
            break;
        }
        tagTAVRIN_POINT out[20];
        unsigned int count = 0;
        if (filter->GetPoints(out, &count)) {
            ++counts.reads;
            if (!wholeRectangle(out, count)) {
                ++counts.torn;
            }
        }
    }
}

class SizeFilterStress : public ::testing::TestWithParam<tagTAVRIN_SIZE_FILTER_TYPE> {};

}  // namespace

TEST_P(SizeFilterStress, EightThreadsEditingOneFilterNeverReadATornFigure)
{
    SizeFilter* filter = SizeFilter::NewInstance();
    ASSERT_NE(filter, nullptr);
    // Type, view size and selection are not locked: set them before the threads start.
    filter->SetSizeFilterType(GetParam());
    filter->SetWndSize(1000, 500);
    tagTAVRIN_POINT a{0.2f, 0.2f};
    tagTAVRIN_POINT b{0.4f, 0.4f};
    ASSERT_TRUE(filter->SetDiagonal(a, b));
    filter->SetSelPointIndex(3);

    Counts counts;
    onThreads([&](int t, std::chrono::steady_clock::time_point deadline) {
        editAndRead(filter, 101u + static_cast<unsigned int>(t), deadline, counts);
    });
    EXPECT_GT(counts.reads.load(), 0);
    EXPECT_EQ(counts.torn.load(), 0);
    tagTAVRIN_POINT out[20];
    unsigned int count = 0;
    ASSERT_TRUE(filter->GetPoints(out, &count));
    EXPECT_TRUE(wholeRectangle(out, count));
    EXPECT_EQ(refCount(filter), 1);
    filter->ReleaseRef();
}

INSTANTIATE_TEST_SUITE_P(RectangleAndSquare, SizeFilterStress,
                         ::testing::Values(TAVRIN_SIZE_FILTER_RECT, TAVRIN_SIZE_FILTER_SQUARE),
                         [](const ::testing::TestParamInfo<tagTAVRIN_SIZE_FILTER_TYPE>& info) {
                             return info.param == TAVRIN_SIZE_FILTER_RECT ? std::string("Rectangle")
                                                                          : std::string("Square");
                         });

// While eight threads edit a registered filter, they also take and drop references to
// it, look it up, and register, edit and delete filters of their own. Afterwards every
// count is back where it started and the registry holds exactly the shared filter.
TEST(SizeFilterStressRegistry, ConcurrentReferencesLookupsAndSlotsWhileEditing)
{
    VcaObjectContainer::Release();
    VcaObjectContainer* registry = VcaObjectContainer::Instance();
    ASSERT_NE(registry, nullptr);
    SizeFilter* shared = SizeFilter::NewInstance();
    ASSERT_NE(shared, nullptr);
    tagTAVRIN_POINT a{0.3f, 0.3f};
    tagTAVRIN_POINT b{0.6f, 0.5f};
    ASSERT_TRUE(shared->SetDiagonal(a, b));
    shared->SetSelPointIndex(1);
    const int sharedSlot = registry->AddVcaObject(shared);
    ASSERT_EQ(sharedSlot, 0);
    ASSERT_EQ(refCount(shared), 2);

    Counts counts;
    std::atomic<int> failures{0};
    onThreads([&](int t, std::chrono::steady_clock::time_point deadline) {
        std::minstd_rand rng(7u + static_cast<unsigned int>(t));
        std::uniform_real_distribution<float> coord(0.1f, 0.9f);
        for (int i = 0; i < kIterations / 4 && std::chrono::steady_clock::now() < deadline; ++i) {
            shared->AddRef();
            if (registry->GetVcaObject(sharedSlot) != shared) {
                ++failures;
            }
            tagTAVRIN_POINT from{coord(rng), coord(rng)};
            tagTAVRIN_POINT to{from.x + 0.01f, from.y - 0.01f};
            shared->Move(from, to);
            shared->MovePoint(from, to);
            tagTAVRIN_POINT out[20];
            unsigned int count = 0;
            if (shared->GetPoints(out, &count)) {
                ++counts.reads;
                if (!wholeRectangle(out, count)) {
                    ++counts.torn;
                }
            }
            shared->ReleaseRef();

            SizeFilter* own = SizeFilter::NewInstance();
            const int slot = registry->AddVcaObject(own);
            own->ReleaseRef();  // the registry holds the only reference now
            tagTAVRIN_POINT p{coord(rng), coord(rng)};
            tagTAVRIN_POINT q{coord(rng), coord(rng)};
            if (slot <= 0 || registry->GetVcaObject(slot) != own || !own->SetDiagonal(p, q)) {
                ++failures;
            }
            if (!registry->DelVcaObject(slot)) {  // deletes it
                ++failures;
            }
        }
    });
    EXPECT_EQ(failures.load(), 0);
    EXPECT_GT(counts.reads.load(), 0);
    EXPECT_EQ(counts.torn.load(), 0);
    EXPECT_EQ(refCount(shared), 2);
    EXPECT_EQ(registry->GetVcaObject(sharedSlot), shared);
    for (int slot = 1; slot <= kThreads; ++slot) {
        EXPECT_EQ(registry->GetVcaObject(slot), nullptr) << slot;
    }
    shared->ReleaseRef();
    EXPECT_TRUE(VcaObjectContainer::Release());  // drops the last reference
}
