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

/// The modes of all batches, in order, for comparing a figure's shape.
inline std::vector<std::string> batchModeNames()
{
    std::vector<std::string> modes;
    for (const rec::Batch& b : rec::gl().batches) {
        modes.push_back(rec::modeName(b.mode));
    }
    return modes;
}

/// The colour current at each glRasterPos2f, in order: the colour of each label text.
inline std::vector<std::string> textColors()
{
    std::vector<std::string> out;
    std::string color = "glColor4ub(255,255,255,255)";
    for (const std::string& call : rec::gl().calls) {
        if (call.rfind("glColor4ub(", 0) == 0) {
            color = call;
        } else if (call.rfind("glRasterPos2f(", 0) == 0) {
            out.push_back(color);
        }
    }
    return out;
}

#endif  // TAVRIN_TESTS_CALITEST_H
