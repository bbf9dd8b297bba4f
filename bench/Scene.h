#ifndef TAVRIN_BENCH_SCENE_H
#define TAVRIN_BENCH_SCENE_H

// Benchmark scenes: a deterministic mix of every analytics figure in a 1280 x 720 view.
// Every kind appears, half of the figures are selected, regions have 4 to 20 vertices
// (every third one concave) and tripwires point in every direction.

#include <Tavrin/Tavrin.h>

#include <vector>

namespace bench {

constexpr int kViewWidth = 1280;
constexpr int kViewHeight = 720;

/// The scene sizes every scene benchmark runs at.
constexpr int kSceneSizes[] = {16, 64, 256};

class Scene {
public:
    /// `figures` objects, the same ones on every run.
    explicit Scene(int figures);
    ~Scene();
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    /// One frame: every object's Draw in order.
    void draw();
    const std::vector<Tavrin::VcaObject*>& objects() const { return m_objects; }

private:
    std::vector<Tavrin::VcaObject*> m_objects;
};

/// A regular (convex) or star-shaped (concave) polygon of `count` vertices.
std::vector<tagTAVRIN_POINT> regionOutline(float cx, float cy, float radius, int count, bool concave,
                                           float phase);

}  // namespace bench

#endif  // TAVRIN_BENCH_SCENE_H
