#ifndef TAVRIN_TESTS_GLTEST_H
#define TAVRIN_TESTS_GLTEST_H

// Shared helpers for tests that draw: a fixture that clears the recording GL, point
// builders and the checks every drawing test makes.

#include "support/RecordingGl.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <vector>

inline tagTAVRIN_POINT pt(float x, float y) { return tagTAVRIN_POINT{x, y}; }

inline const float kNaN = std::numeric_limits<float>::quiet_NaN();
inline const float kInf = std::numeric_limits<float>::infinity();

/// Drops the creator's reference when the test ends.
struct ReleaseRefDeleter {
    template <class T>
    void operator()(T* object) const
    {
        object->ReleaseRef();
    }
};

template <class T>
using Owned = std::unique_ptr<T, ReleaseRefDeleter>;

template <class T>
Owned<T> create()
{
    return Owned<T>(T::NewInstance());
}

/// Fixture for drawing tests: the recording GL starts empty.
class GlTest : public ::testing::Test {
protected:
    void SetUp() override { rec::gl().reset(); }
    rec::Recorder& recorded() { return rec::gl(); }
};

/// Every Draw leaves blending and smoothing off, the colour opaque white, the identity.
#define EXPECT_GL_STATE_CLEAN() \
    EXPECT_TRUE(rec::gl().stateIsClean()) << rec::gl().stateReport()

#define EXPECT_POINT_NEAR(actual, ex, ey, tol)            \
    do {                                                  \
        const tagTAVRIN_POINT tavrin_p_ = (actual);       \
        EXPECT_NEAR(tavrin_p_.x, (ex), (tol)) << "x";     \
        EXPECT_NEAR(tavrin_p_.y, (ey), (tol)) << "y";     \
    } while (0)

/// The set-up calls every DrawByOpenGL starts with, for the given smoothing caps in order.
inline std::vector<std::string> enterCalls(const std::vector<std::string>& smoothing)
{
    std::vector<std::string> calls = {
        "glLoadIdentity()",
        "glTranslatef(-1,-1,0)",
        "glHint(GL_PERSPECTIVE_CORRECTION_HINT,GL_NICEST)",
        "glEnable(GL_BLEND)",
        "glBlendFunc(GL_SRC_ALPHA,GL_ONE_MINUS_SRC_ALPHA)",
    };
    for (const std::string& cap : smoothing) {
        calls.push_back("glEnable(" + cap + ")");
    }
    return calls;
}

/// The restore calls every DrawByOpenGL ends with.
inline std::vector<std::string> leaveCalls(const std::vector<std::string>& smoothing)
{
    std::vector<std::string> calls = {"glColor4ub(255,255,255,255)", "glDisable(GL_BLEND)"};
    for (const std::string& cap : smoothing) {
        calls.push_back("glDisable(" + cap + ")");
    }
    calls.push_back("glLoadIdentity()");
    return calls;
}

/// The call text glColor4ub emits for 0xRRGGBB at the given alpha.
inline std::string colourCall(unsigned int rgb, int alpha = 255)
{
    const rec::Rgba c = rec::rgba(rgb, alpha);
    return "glColor4ub(" + std::to_string(c.r) + "," + std::to_string(c.g) + "," + std::to_string(c.b) + "," +
           std::to_string(c.a) + ")";
}

/// The batch's vertices, mapped back to picture coordinates, are `expected` within `tolerance`.
inline void expectVertices(const rec::Batch& batch, const std::vector<tagTAVRIN_POINT>& expected,
                           double tolerance = 1e-6)
{
    ASSERT_EQ(batch.vertices.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_POINT_NEAR(batch.at(i), expected[i].x, expected[i].y, tolerance);
    }
}

/// Concatenates call lists, for building expected sequences.
inline std::vector<std::string> concat(std::initializer_list<std::vector<std::string>> parts)
{
    std::vector<std::string> out;
    for (const auto& part : parts) {
        out.insert(out.end(), part.begin(), part.end());
    }
    return out;
}




/// Clears the recorder and draws `figure` once into a w x h view.
template <class Figure>
rec::Recorder& drawn(Figure& figure, int w = 1000, int h = 1000)
{
    rec::gl().reset();
    figure.Draw(nullptr, w, h, true);
    return rec::gl();
}

#endif  // TAVRIN_TESTS_GLTEST_H
