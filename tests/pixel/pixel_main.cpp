// Pixel tests: real drawing into an offscreen Mesa context. One context serves every test.
#include "PixelTest.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace {

class OffscreenEnvironment : public ::testing::Environment {
public:
    void SetUp() override
    {
        if (!context().create(kWidth, kHeight)) {
            std::fprintf(stderr, "offscreen context: %s\n", context().error().c_str());
            std::abort();
        }
    }
};

}  // namespace

Tavrin::offscreen::OffscreenGl& context()
{
    static Tavrin::offscreen::OffscreenGl gl;
    return gl;
}

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    ::testing::AddGlobalTestEnvironment(new OffscreenEnvironment);
    return RUN_ALL_TESTS();
}
