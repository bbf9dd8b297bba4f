#ifndef TAVRIN_TESTS_CALITEST_H
#define TAVRIN_TESTS_CALITEST_H

// Helpers for the calibration-figure tests: objects owned through their reference
// count, pixel positions, and what the recording GL saw of segments and label texts.

#include "support/GlTest.h"

#include <cmath>
#include <string>
#include <vector>

/// A whole pixel in normalised units, as snapped bar ends are.
inline float pixel(int p, int size) { return static_cast<float>(p) / static_cast<float>(size); }

/// The batch is one GL_LINES segment from a to b (picture coordinates) in `color`.
inline void expectSegment(const rec::Batch& batch, tagTAVRIN_POINT a, tagTAVRIN_POINT b,
                          const rec::Rgba& color, double tol = 1e-6)
{
    EXPECT_EQ(rec::modeName(batch.mode), "GL_LINES");
    EXPECT_EQ(batch.color, color) << rec::toString(batch.color);
    EXPECT_FLOAT_EQ(batch.lineWidth, 2.0f);
    ASSERT_EQ(batch.vertices.size(), 2u);
    EXPECT_POINT_NEAR(batch.at(0), a.x, a.y, tol);
    EXPECT_POINT_NEAR(batch.at(1), b.x, b.y, tol);
}

#endif  // TAVRIN_TESTS_CALITEST_H
