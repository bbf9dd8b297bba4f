#ifndef TAVRIN_TESTS_RULESTEST_H
#define TAVRIN_TESTS_RULESTEST_H

// Helpers for the analytics-rule tests: a fixture that owns a registry and hands out
// objects created and registered as a host does, and readers for the recorded drawing.

#include "support/GlTest.h"
#include "support/PolygonBuilders.h"

#include <Tavrin/VcaObjectContainer.h>

#include <string>
#include <vector>

/// A drawing fixture with a fresh registry. `hostCreate` makes an object the way a host
/// does (NewInstance, AddVcaObject, the creator's reference dropped), so the registry
/// holds the only reference and tearing the registry down releases it.
class RuleTest : public GlTest {
protected:
    void SetUp() override
    {
        GlTest::SetUp();
        Tavrin::VcaObjectContainer::Release();
        registry = Tavrin::VcaObjectContainer::Instance();
        ASSERT_NE(registry, nullptr);
    }
    void TearDown() override { Tavrin::VcaObjectContainer::Release(); }

    template <class T>
    T* hostCreate(Points vertices = {})
    {
        T* obj = T::NewInstance();
        EXPECT_GE(registry->AddVcaObject(obj), 0);
        obj->ReleaseRef();
        if (!vertices.empty()) {
            EXPECT_TRUE(obj->SetPoints(vertices.data(), static_cast<unsigned int>(vertices.size())));
        }
        return obj;
    }

    Tavrin::VcaObjectContainer* registry = nullptr;
};

/// Exactly one text was drawn, at (x, y), in the given colour.
#define EXPECT_ONE_TEXT(x, y, colour)                                          \
    do {                                                                       \
        ASSERT_EQ(rec::gl().texts.size(), 1u);                                 \
        EXPECT_POINT_NEAR(rec::gl().texts[0].position, (x), (y), 1e-6);        \
        EXPECT_EQ(textColors().at(0), colourCall(colour));                     \
    } while (0)

/// Batches with the given mode, colour and vertex count.
inline std::size_t countBatches(GLenum mode, const rec::Rgba& colour, std::size_t vertices)
{
    std::size_t n = 0;
    for (const rec::Batch& b : rec::gl().batches) {
        n += b.mode == mode && b.color == colour && b.vertices.size() == vertices;
    }
    return n;
}

/// An area with a direction arrow: the outline loop first, the 8-vertex arrow loop last,
/// both in `colour`.
inline void expectOutlineThenArrow(unsigned int colour)
{
    const auto& batches = rec::gl().batches;
    ASSERT_GE(batches.size(), 2u);
    EXPECT_EQ(batches.front().mode, static_cast<GLenum>(GL_LINE_LOOP));
    EXPECT_EQ(batches.front().color, rec::rgba(colour));
    EXPECT_EQ(batches.front().vertices.size(), 4u);
    EXPECT_EQ(batches.back().mode, static_cast<GLenum>(GL_LINE_LOOP));
    EXPECT_EQ(batches.back().color, rec::rgba(colour));
    EXPECT_EQ(batches.back().vertices.size(), 8u);
}

#endif  // TAVRIN_TESTS_RULESTEST_H
