#ifndef TAVRIN_TESTS_PIXELTEST_H
#define TAVRIN_TESTS_PIXELTEST_H

// Helpers for the pixel tests: the shared offscreen context and pixel reads in the
// picture's coordinates.

#include "OffscreenGl.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>

constexpr int kWidth = 200;
constexpr int kHeight = 100;

Tavrin::offscreen::OffscreenGl& context();

struct Rgb {
    int r;
    int g;
    int b;
};

/// The pixel under the normalised picture point (x, y).
inline Rgb pixelAt(float x, float y)
{
    const std::uint32_t v = context().pixel(static_cast<int>(x * kWidth), static_cast<int>(y * kHeight));
    return Rgb{static_cast<int>(v >> 24), static_cast<int>((v >> 16) & 0xff), static_cast<int>((v >> 8) & 0xff)};
}

inline bool near(const Rgb& a, const Rgb& b, int tolerance = 3)
{
    return std::abs(a.r - b.r) <= tolerance && std::abs(a.g - b.g) <= tolerance &&
           std::abs(a.b - b.b) <= tolerance;
}

inline ::testing::AssertionResult PixelIs(float x, float y, Rgb expected, int tolerance = 3)
{
    const Rgb got = pixelAt(x, y);
    if (near(got, expected, tolerance)) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure() << "pixel at (" << x << ", " << y << ") is (" << got.r << ","
                                         << got.g << "," << got.b << "), expected (" << expected.r << ","
                                         << expected.g << "," << expected.b << ")";
}

/// Clears the view to the given background before each test.
class PixelTest : public ::testing::Test {
protected:
    void SetUp() override { context().clear(0.0f, 0.0f, 0.0f); }
};

#endif  // TAVRIN_TESTS_PIXELTEST_H
