// The figures' vertex and edge hit tests agree with the primitives they are defined by: a
// vertex is hit as a Point at that vertex would say, a broken-line edge as a Line of its
// two ends would say (closing edge included), for cursors swept over and around the
// figure, tolerance boundaries included.

#include "support/GlTest.h"
#include "support/PolygonBuilders.h"

#include <Tavrin/BrokenLine.h>
#include <Tavrin/Line.h>
#include <Tavrin/Point.h>
#include <Tavrin/Polygon.h>

#include <random>
#include <vector>

using Tavrin::BrokenLine;
using Tavrin::Line;
using Tavrin::Point;
using Tavrin::Polygon;

namespace {

const Points kVertices = {pt(0.3f, 0.3f), pt(0.7f, 0.32f), pt(0.48f, 0.7f), pt(0.52f, 0.71f)};

// The first vertex a Point at each vertex finds near the cursor (1-based), or 0.
unsigned int firstNearVertex(const Points& vertices, tagTAVRIN_POINT cursor)
{
    Point at(&cursor);
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        Point vertex(&vertices[i]);
        if (vertex.IsNearPoint(at)) {
            return static_cast<unsigned int>(i + 1);
        }
    }
    return 0;
}

// Cursors around every vertex (the 0.02 boundary among them) and over the whole figure.
std::vector<tagTAVRIN_POINT> cursors()
{
    std::vector<tagTAVRIN_POINT> out;
    for (const tagTAVRIN_POINT& v : kVertices) {
        for (float d : {0.0f, 0.0199f, 0.02f, 0.0200001f, 0.0201f}) {
            out.push_back(pt(v.x + d, v.y));
            out.push_back(pt(v.x, v.y - d));
            out.push_back(pt(v.x - 0.7071f * d, v.y + 0.7071f * d));
        }
    }
    std::mt19937 random(7u);
    std::uniform_real_distribution<float> unit(0.2f, 0.8f);
    for (int i = 0; i < 3000; ++i) {
        out.push_back(pt(unit(random), unit(random)));
    }
    return out;
}

}  // namespace

TEST(HitTestAgreement, PolygonVerticesAsPoints)
{
    Polygon polygon;
    setVertices(polygon, kVertices);
    for (tagTAVRIN_POINT c : cursors()) {
        ASSERT_EQ(polygon.CheckPointSelected(c), firstNearVertex(kVertices, c)) << c.x << ", " << c.y;
    }
}

TEST(HitTestAgreement, BrokenLineVerticesAsPointsAndEdgesAsLines)
{
    Points vertices = kVertices;
    BrokenLine line(vertices.data(), static_cast<unsigned int>(vertices.size()));
    line.SetWndSize(800, 600);
    int edgeHits = 0;
    for (tagTAVRIN_POINT c : cursors()) {
        ASSERT_EQ(line.CheckPointSelected(c), firstNearVertex(kVertices, c)) << c.x << ", " << c.y;
        Point cursor(&c);
        bool expected = false;
        for (std::size_t i = 0; i < vertices.size(); ++i) {
            tagTAVRIN_POINT ends[2] = {vertices[i], vertices[(i + 1) % vertices.size()]};
            Line edge(ends, 2);
            edge.SetWndSize(800, 600);
            expected = expected || edge.IsNearPoint(cursor);
        }
        edgeHits += expected ? 1 : 0;
        ASSERT_EQ(line.CheckSelected(cursor), expected) << c.x << ", " << c.y;
    }
    EXPECT_GT(edgeHits, 20);  // the sweep does reach the edges
}
