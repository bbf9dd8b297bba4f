#include "support/GlTest.h"
#include "support/PolygonBuilders.h"
#include "support/VirtualSlot.h"

#include <Tavrin/EnterRegion.h>
#include <Tavrin/ITCPlateRegion.h>
#include <Tavrin/ReferenceRegion.h>
#include <Tavrin/ShieldRegion.h>
#include <Tavrin/VcaObjectContainer.h>

#include <cmath>

using namespace Tavrin;

namespace {


// What tells the four regions apart.
struct ShieldTraits {
    using Region = ShieldRegion;
    static constexpr unsigned int capacity = 10;
    static constexpr unsigned int colors[4] = {0x7030a0, 0x7030a0, 0xffc000, 0xf47f4c};
    static constexpr unsigned int labelColors[4] = {0x7030a0, 0x7030a0, 0xffc000, 0xf47f4c};
    static constexpr bool filled = true;
};

struct ReferenceTraits {
    using Region = ReferenceRegion;
    static constexpr unsigned int capacity = 10;
    static constexpr unsigned int colors[4] = {0xf28226, 0xf28226, 0xffc000, 0xf47f4c};
    static constexpr unsigned int labelColors[4] = {0xf28226, 0xf28226, 0xffc000, 0xf47f4c};
    static constexpr bool filled = true;
};

struct EnterTraits {
    using Region = EnterRegion;
    static constexpr unsigned int capacity = 10;
    static constexpr unsigned int colors[4] = {0x00f0f0, 0x00f0f0, 0xffc000, 0xf47f4c};
    static constexpr unsigned int labelColors[4] = {0x285ea6, 0xd90db0, 0xffc000, 0xf47f4c};
    static constexpr bool filled = false;
};

struct PlateTraits {
    using Region = ITCPlateRegion;
    static constexpr unsigned int capacity = 20;
    static constexpr unsigned int colors[4] = {0x4848c6, 0xd90db0, 0xffc000, 0xf47f4c};
    static constexpr unsigned int labelColors[4] = {0x4848c6, 0xd90db0, 0xffc000, 0xf47f4c};
    static constexpr bool filled = true;
};

template <class Region>
Owned<Region> make(Points vertices = {})
{
    Owned<Region> r(Region::NewInstance());
    EXPECT_NE(r, nullptr);
    if (!vertices.empty()) {
        EXPECT_TRUE(r->SetPoints(vertices.data(), static_cast<unsigned int>(vertices.size())));
    }
    return r;
}

const std::vector<std::string> kPolySmooth = {"GL_POLYGON_SMOOTH", "GL_LINE_SMOOTH"};

}  // namespace

template <class Traits>
class RegionRule : public GlTest {
protected:
    using Region = typename Traits::Region;
};

using RegionKinds = ::testing::Types<ShieldTraits, ReferenceTraits, EnterTraits, PlateTraits>;

class RegionNames {
public:
    template <class T>
    static std::string GetName(int)
    {
        if (std::is_same<T, ShieldTraits>::value) return "Shield";
        if (std::is_same<T, ReferenceTraits>::value) return "Reference";
        if (std::is_same<T, EnterTraits>::value) return "Enter";
        return "ITCPlate";
    }
};

TYPED_TEST_SUITE(RegionRule, RegionKinds, RegionNames);

// ---- Vertices ----

TYPED_TEST(RegionRule, SetPointsTakesItsCapacityAndGetPointsClearsThatMany)
{
    const unsigned int cap = TypeParam::capacity;
    Points many;
    for (unsigned int i = 0; i <= cap; ++i) {
        many.push_back(pt(0.02f * i, 0.1f + 0.03f * i));
    }
    auto r = make<typename TestFixture::Region>(smallSquare());
    EXPECT_FALSE(r->SetPoints(many.data(), cap + 1));
    EXPECT_FALSE(r->SetPoints(nullptr, 3));
    Points withNaN = {pt(0.1f, 0.1f), pt(kNaN, 0.2f), pt(0.3f, 0.3f)};
    EXPECT_FALSE(r->SetPoints(withNaN.data(), 3));
    EXPECT_TRUE(samePoints(verticesOf(*r), smallSquare()));
    EXPECT_TRUE(r->SetPoints(many.data(), cap));
    EXPECT_TRUE(samePoints(verticesOf(*r), Points(many.begin(), many.begin() + cap)));

    ASSERT_TRUE(r->SetPoints(many.data(), 3));
    tagTAVRIN_POINT buffer[24];
    for (tagTAVRIN_POINT& p : buffer) {
        p = pt(7.0f, 7.0f);
    }
    unsigned int count = 0;
    ASSERT_TRUE(r->GetPoints(buffer, &count));
    EXPECT_EQ(count, 3u);
    for (unsigned int i = 3; i < 24; ++i) {
        const float expected = i < cap ? 0.0f : 7.0f;
        EXPECT_EQ(buffer[i].x, expected) << i;
        EXPECT_EQ(buffer[i].y, expected) << i;
    }
    count = 99;
    EXPECT_FALSE(r->GetPoints(nullptr, &count));
    EXPECT_FALSE(r->GetPoints(buffer, nullptr));
    EXPECT_EQ(count, 99u);
}

// ---- Editing: one pass through every forwarding operation ----

TYPED_TEST(RegionRule, EditingGoesToThePolygonAndTheLabelFollows)
{
    auto r = make<typename TestFixture::Region>(smallSquare());
    EXPECT_TRUE(hits(*r, pt(0.3f, 0.3f)));
    EXPECT_FALSE(hits(*r, pt(0.4f, 0.3f)));
    EXPECT_EQ(vertexAt(*r, pt(0.41f, 0.21f)), 2u);
    EXPECT_EQ(r->GetSelPointIndex(), 0u);  // the hit is not stored
    dragVertex(*r, pt(0.0f, 0.0f), pt(0.1f, 0.1f));
    EXPECT_TRUE(samePoints(verticesOf(*r), smallSquare()));
    r->SetSelPointIndex(2);
    dragVertex(*r, pt(0.0f, 0.0f), pt(0.1f, 0.1f));
    drag(*r, pt(0.0f, 0.0f), pt(0.3f, 0.4f));  // the first vertex reaches (0.5, 0.6)
    drag(*r, pt(0.0f, 0.0f), pt(0.3f, 0.0f));  // refused: vertex 2 would reach x = 1.1
    drag(*r, pt(0.0f, 0.0f), pt(kNaN, 0.0f));
    EXPECT_TRUE(samePoints(verticesOf(*r), {pt(0.2f + 0.3f, 0.2f + 0.4f),
                                            pt(0.4f + 0.1f + 0.3f, 0.2f + 0.1f + 0.4f),
                                            pt(0.4f + 0.3f, 0.4f + 0.4f),
                                            pt(0.2f + 0.3f, 0.4f + 0.4f)}));
    r->Draw(nullptr, 800, 600, true);
    ASSERT_EQ(rec::gl().texts.size(), 1u);
    EXPECT_POINT_NEAR(rec::gl().texts[0].position, 0.51f, 0.59f, 1e-6);

    r->SetClosed(false);
    EXPECT_FALSE(r->GetClosed());
    rec::gl().reset();
    r->Draw(nullptr, 640, 480, true);
    EXPECT_EQ(rec::gl().batchesOf(GL_LINES).size(), 3u);
    EXPECT_TRUE(rec::gl().batchesOf(GL_LINE_LOOP).empty());
    EXPECT_TRUE(rec::gl().batchesOf(GL_POLYGON).empty());
    EXPECT_GL_STATE_CLEAN();
}

// ---- Drawing ----

TYPED_TEST(RegionRule, NormalDrawIsThePolygonThenTheLabelInForcedColours)
{
    const auto& c = TypeParam::colors;
    const auto& lc = TypeParam::labelColors;
    auto r = make<typename TestFixture::Region>(smallSquare());
    char name[] = "Gate";
    r->SetLabelText(name, 4);
    r->Draw(nullptr, 640, 480, true);

    std::vector<std::string> fill;
    if (TypeParam::filled) {
        fill = {"glBegin(GL_POLYGON)", "glEnd()", "glBegin(GL_POLYGON)", "glEnd()"};
    }
    // The label box of anchor (0.2, 0.2) starts at (0.21, 0.19): raster (0.42, 1.62).
    EXPECT_EQ(rec::gl().sequence(),
              concat({enterCalls(kPolySmooth),
                      {colourCall(c[0], 255), "glLineWidth(2)", "glBegin(GL_LINE_LOOP)", "glEnd()",
                       colourCall(c[0], 40)},
                      fill,
                      leaveCalls(kPolySmooth),
                      enterCalls(kPolySmooth),
                      {colourCall(lc[0], 255), "glRasterPos2f(0.42,1.62)", "glGenLists(1)",
                       "glDeleteLists(list,1)"},
                      leaveCalls(kPolySmooth)}));
    EXPECT_EQ(rec::gl().batches[0].color, rec::rgba(c[0]));
    EXPECT_GL_STATE_CLEAN();
}

TYPED_TEST(RegionRule, SelectedDrawUsesTheSecondColoursAndHandles)
{
    const auto& c = TypeParam::colors;
    const auto& lc = TypeParam::labelColors;
    auto r = make<typename TestFixture::Region>(smallSquare());
    r->SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    r->SetSelPointIndex(3);
    r->Draw(nullptr, 640, 480, true);

    const auto& b = rec::gl().batches;
    ASSERT_FALSE(b.empty());
    EXPECT_EQ(b[0].color, rec::rgba(c[1]));
    const auto points = rec::gl().batchesOf(GL_POINTS);
    ASSERT_EQ(points.size(), 5u);  // four dots and one halo
    EXPECT_EQ(points[2].color, rec::rgba(c[2]));  // the halo of vertex 3
    EXPECT_EQ(points[2].pointSize, 16.0f);
    EXPECT_EQ(points[3].color, rec::rgba(c[1]));
    // The label comes last: its colour, raster position, list and four restoring calls
    // and the identity follow.
    const std::vector<std::string> seq = rec::gl().sequence();
    ASSERT_GE(seq.size(), 9u);
    EXPECT_EQ(seq[seq.size() - 9], colourCall(lc[1], 255));
    EXPECT_GL_STATE_CLEAN();

    // Draw's last argument is ignored.
    rec::gl().reset();
    r->Draw(nullptr, 640, 480, false);
    EXPECT_EQ(rec::gl().sequence(), seq);

    r->SetObjStatus(TAVRIN_OBJ_STATUS_HIGHLIGHTED);
    rec::gl().reset();
    r->Draw(nullptr, 640, 480, true);
    EXPECT_EQ(rec::gl().batches[0].color, rec::rgba(c[1]));
    EXPECT_TRUE(rec::gl().batchesOf(GL_POINTS).empty());
    EXPECT_GL_STATE_CLEAN();
}

TYPED_TEST(RegionRule, EmptyRegionDrawsOnlyItsLabelFromTheOrigin)
{
    auto r = make<typename TestFixture::Region>();
    EXPECT_TRUE(r->IsNull());
    r->Draw(nullptr, 640, 480, true);
    EXPECT_TRUE(rec::gl().batches.empty());
    ASSERT_EQ(rec::gl().texts.size(), 1u);
    EXPECT_POINT_NEAR(rec::gl().texts[0].position, 0.01f, -0.01f, 1e-6);
    EXPECT_GL_STATE_CLEAN();
}

// ---- Object life and interface ----

TYPED_TEST(RegionRule, VirtualSlotsFollowTheObjectBaseThenSetAndGetPoints)
{
#if TAVRIN_TESTS_HAVE_SLOTS
    expectObjectSlots<typename TestFixture::Region>();
#else
    GTEST_SKIP() << "member pointer layout not known on this target";
#endif
}
