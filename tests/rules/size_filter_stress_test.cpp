// Threads share one size filter: its locked vertex operations (SetPoints, GetPoints,
// SetDiagonal, Move, MovePoint) interleave with reference counting. Bounded in iterations
// and in time; scripts/sanitize.sh runs this under ThreadSanitizer.
#include <Tavrin/SizeFilter.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <random>
#include <thread>
#include <vector>

using Tavrin::SizeFilter;

namespace {

// Reads the protected reference count, only after the threads have joined.
struct RefCountPeek : Tavrin::VcaObject {
    static int VcaObject::*member() { return &RefCountPeek::m_refCount; }
};

// Four corners in diagonal order share one coordinate with each neighbour. Every locked
// edit keeps a rectangle or a square so; a torn read would not be.
bool wholeRectangle(const tagTAVRIN_POINT* c, unsigned int count)
{
    return count == 4 && c[0].y == c[1].y && c[1].x == c[2].x && c[2].y == c[3].y && c[3].x == c[0].x;
}

}  // namespace

TEST(SizeFilterStress, ThreadsEditingOneFilterNeverReadATornFigure)
{
    for (tagTAVRIN_SIZE_FILTER_TYPE type : {TAVRIN_SIZE_FILTER_RECT, TAVRIN_SIZE_FILTER_SQUARE}) {
        SCOPED_TRACE(type);
        SizeFilter* filter = SizeFilter::NewInstance();
        // Type, view size and selection are not locked: set them before the threads start.
        filter->SetSizeFilterType(type);
        filter->SetWndSize(1000, 500);
        tagTAVRIN_POINT a{0.2f, 0.2f}, b{0.4f, 0.4f};
        ASSERT_TRUE(filter->SetDiagonal(a, b));
        filter->SetSelPointIndex(3);
        std::atomic<int> reads{0}, torn{0};
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(1000);
        std::vector<std::thread> threads;
        for (unsigned int t = 0; t < 4; ++t) {
            threads.emplace_back([&, t] {
                std::minstd_rand rng(101u + t);
                std::uniform_real_distribution<float> coord(0.1f, 0.9f);
                for (int i = 0; i < 10000 && std::chrono::steady_clock::now() < deadline; ++i) {
                    tagTAVRIN_POINT p{coord(rng), coord(rng)}, q{coord(rng), coord(rng)};
                    tagTAVRIN_POINT corners[4] = {p, {q.x, p.y}, q, {p.x, q.y}};
                    filter->AddRef();
                    switch (i % 4) {
                    case 0: filter->SetDiagonal(p, q); break;
                    case 1: filter->SetPoints(corners, 4); break;
                    case 2: filter->Move(p, q); break;
                    default: filter->MovePoint(p, q); break;
                    }
                    tagTAVRIN_POINT out[20];
                    unsigned int count = 0;
                    if (filter->GetPoints(out, &count)) {
                        ++reads;
                        torn += !wholeRectangle(out, count);
                    }
                    filter->ReleaseRef();
                }
            });
        }
        for (std::thread& t : threads) {
            t.join();
        }
        EXPECT_GT(reads.load(), 0);
        EXPECT_EQ(torn.load(), 0);
        EXPECT_EQ(filter->*RefCountPeek::member(), 1);
        filter->ReleaseRef();
    }
}
