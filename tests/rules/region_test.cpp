#include "support/GlTest.h"
#include "support/PolygonBuilders.h"
#include "support/VirtualSlot.h"

#include <Tavrin/EnterRegion.h>
#include <Tavrin/ITCPlateRegion.h>
#include <Tavrin/ReferenceRegion.h>
#include <Tavrin/ShieldRegion.h>
#include <Tavrin/VcaObjectContainer.h>

#include <cmath>
#include <limits>
#include <memory>

using namespace Tavrin;

namespace {

const float kNaN = std::numeric_limits<float>::quiet_NaN();

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

// Regions are heap objects released through their reference count.
template <class Region>
struct Releaser {
    void operator()(Region* r) const { r->ReleaseRef(); }
};

template <class Region>
using Owned = std::unique_ptr<Region, Releaser<Region>>;

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

std::string color(unsigned int rgb, int alpha)
{
    return "glColor4ub(" + std::to_string((rgb >> 16) & 0xff) + "," +
           std::to_string((rgb >> 8) & 0xff) + "," + std::to_string(rgb & 0xff) + "," +
           std::to_string(alpha) + ")";
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

TYPED_TEST(RegionRule, NewRegionIsEmptyAndNull)
{
    auto r = make<typename TestFixture::Region>();
    EXPECT_TRUE(r->IsNull());
    EXPECT_TRUE(verticesOf(*r).empty());
    EXPECT_TRUE(r->GetClosed());
    EXPECT_EQ(r->GetObjStatus(), TAVRIN_OBJ_STATUS_NORMAL);
    EXPECT_EQ(r->GetSelPointIndex(), 0u);
}

TYPED_TEST(RegionRule, SetPointsTakesItsCapacityAndRefusesOneMore)
{
    const unsigned int cap = TypeParam::capacity;
    Points many;
    for (unsigned int i = 0; i <= cap; ++i) {
        many.push_back(pt(0.02f * i, 0.1f + 0.03f * i));
    }
    auto r = make<typename TestFixture::Region>(smallSquare());
    EXPECT_FALSE(r->SetPoints(many.data(), cap + 1));
    EXPECT_TRUE(samePoints(verticesOf(*r), smallSquare()));
    EXPECT_FALSE(r->SetPoints(nullptr, 3));
    Points withNaN = {pt(0.1f, 0.1f), pt(kNaN, 0.2f), pt(0.3f, 0.3f)};
    EXPECT_FALSE(r->SetPoints(withNaN.data(), 3));
    EXPECT_TRUE(samePoints(verticesOf(*r), smallSquare()));
    EXPECT_TRUE(r->SetPoints(many.data(), cap));
    EXPECT_TRUE(samePoints(verticesOf(*r), Points(many.begin(), many.begin() + cap)));
    EXPECT_TRUE(r->SetPoints(many.data(), 0));
    EXPECT_TRUE(verticesOf(*r).empty());
}

TYPED_TEST(RegionRule, GetPointsClearsTheFullCapacityOfTheBuffer)
{
    const unsigned int cap = TypeParam::capacity;
    auto r = make<typename TestFixture::Region>(
        {pt(0.1f, 0.1f), pt(0.3f, 0.1f), pt(0.2f, 0.3f)});
    tagTAVRIN_POINT buffer[24];
    for (tagTAVRIN_POINT& p : buffer) {
        p = pt(7.0f, 7.0f);
    }
    unsigned int count = 0;
    ASSERT_TRUE(r->GetPoints(buffer, &count));
    EXPECT_EQ(count, 3u);
    EXPECT_TRUE(samePoints(Points(buffer, buffer + 3),
                           {pt(0.1f, 0.1f), pt(0.3f, 0.1f), pt(0.2f, 0.3f)}));
    for (unsigned int i = 3; i < 24; ++i) {
        const float expected = i < cap ? 0.0f : 7.0f;
        EXPECT_EQ(buffer[i].x, expected) << i;
        EXPECT_EQ(buffer[i].y, expected) << i;
    }
    buffer[0] = pt(7.0f, 7.0f);
    count = 99;
    EXPECT_FALSE(r->GetPoints(nullptr, &count));
    EXPECT_FALSE(r->GetPoints(buffer, nullptr));
    EXPECT_EQ(count, 99u);
    EXPECT_EQ(buffer[0].x, 7.0f);
}

// ---- Editing ----

TYPED_TEST(RegionRule, MoveIsReadBackThroughGetPoints)
{
    auto r = make<typename TestFixture::Region>(smallSquare());
    tagTAVRIN_POINT from = pt(0.0f, 0.0f);
    tagTAVRIN_POINT to = pt(0.5f, 0.25f);
    r->Move(from, to);
    Points moved = smallSquare();
    for (tagTAVRIN_POINT& v : moved) {
        v.x += 0.5f;
        v.y += 0.25f;
    }
    EXPECT_TRUE(samePoints(verticesOf(*r), moved));
    tagTAVRIN_POINT tooFar = pt(0.2f, 0.0f);  // the right side would reach 1.1
    r->Move(from, tooFar);
    EXPECT_TRUE(samePoints(verticesOf(*r), moved));
    tagTAVRIN_POINT nan = pt(kNaN, 0.0f);
    r->Move(from, nan);
    EXPECT_TRUE(samePoints(verticesOf(*r), moved));
}

TYPED_TEST(RegionRule, VertexHitIsNotStoredUntilSelected)
{
    auto r = make<typename TestFixture::Region>(smallSquare());
    tagTAVRIN_POINT nearSecond = pt(0.41f, 0.21f);
    EXPECT_EQ(r->CheckPointSelected(nearSecond), 2u);
    EXPECT_EQ(r->GetSelPointIndex(), 0u);
    tagTAVRIN_POINT from = pt(0.0f, 0.0f);
    tagTAVRIN_POINT to = pt(0.1f, 0.1f);
    r->MovePoint(from, to);
    EXPECT_TRUE(samePoints(verticesOf(*r), smallSquare()));

    r->SetSelPointIndex(r->CheckPointSelected(nearSecond));
    EXPECT_EQ(r->GetSelPointIndex(), 2u);
    r->MovePoint(from, to);
    Points expected = smallSquare();
    expected[1] = pt(0.4f + 0.1f, 0.2f + 0.1f);
    EXPECT_TRUE(samePoints(verticesOf(*r), expected));
}

TYPED_TEST(RegionRule, InsideTestIsThePolygons)
{
    auto r = make<typename TestFixture::Region>(smallSquare());
    const struct {
        tagTAVRIN_POINT p;
        bool inside;
    } cases[] = {{pt(0.3f, 0.3f), true},  {pt(0.2f, 0.3f), true},  {pt(0.4f, 0.3f), false},
                 {pt(0.3f, 0.2f), true},  {pt(0.3f, 0.4f), false}, {pt(0.5f, 0.5f), false},
                 {pt(kNaN, 0.3f), false}};
    for (auto c : cases) {
        EXPECT_EQ(r->CheckSelected(c.p), c.inside) << c.p.x << "," << c.p.y;
    }
    auto empty = make<typename TestFixture::Region>();
    tagTAVRIN_POINT origin = pt(0.0f, 0.0f);
    EXPECT_FALSE(empty->CheckSelected(origin));
}

TYPED_TEST(RegionRule, ClosedFlagLivesInThePolygon)
{
    auto r = make<typename TestFixture::Region>(smallSquare());
    r->SetClosed(false);
    EXPECT_FALSE(r->GetClosed());
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
                      {color(c[0], 255), "glLineWidth(2)", "glBegin(GL_LINE_LOOP)", "glEnd()",
                       color(c[0], 40)},
                      fill,
                      leaveCalls(kPolySmooth),
                      enterCalls(kPolySmooth),
                      {color(lc[0], 255), "glRasterPos2f(0.42,1.62)", "glGenLists(1)",
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
    EXPECT_EQ(seq[seq.size() - 9], color(lc[1], 255));
    EXPECT_GL_STATE_CLEAN();
}

TYPED_TEST(RegionRule, HighlightedDrawHasNoHandles)
{
    auto r = make<typename TestFixture::Region>(smallSquare());
    r->SetObjStatus(TAVRIN_OBJ_STATUS_HIGHLIGHTED);
    r->Draw(nullptr, 640, 480, true);
    EXPECT_EQ(rec::gl().batches[0].color, rec::rgba(TypeParam::colors[1]));
    EXPECT_TRUE(rec::gl().batchesOf(GL_POINTS).empty());
    EXPECT_GL_STATE_CLEAN();
}

TYPED_TEST(RegionRule, FillOnlyWhereTheKindFills)
{
    auto r = make<typename TestFixture::Region>(smallSquare());
    r->Draw(nullptr, 640, 480, true);
    const auto fills = rec::gl().batchesOf(GL_POLYGON);
    if (TypeParam::filled) {
        ASSERT_EQ(fills.size(), 2u);
        EXPECT_EQ(fills[0].color, rec::rgba(TypeParam::colors[0], 40));
    } else {
        EXPECT_TRUE(fills.empty());
    }
}

TYPED_TEST(RegionRule, LastArgumentOfDrawIsIgnored)
{
    auto r = make<typename TestFixture::Region>(smallSquare());
    r->SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    r->Draw(nullptr, 640, 480, true);
    const std::vector<std::string> withTrue = rec::gl().calls;
    rec::gl().reset();
    r->Draw(nullptr, 640, 480, false);
    EXPECT_EQ(rec::gl().calls, withTrue);
}

TYPED_TEST(RegionRule, EmptyRegionDrawsOnlyItsLabelFromTheOrigin)
{
    auto r = make<typename TestFixture::Region>();
    r->Draw(nullptr, 640, 480, true);
    EXPECT_TRUE(rec::gl().batches.empty());
    ASSERT_EQ(rec::gl().texts.size(), 1u);
    EXPECT_POINT_NEAR(rec::gl().texts[0].position, 0.01f, -0.01f, 1e-6);
    EXPECT_GL_STATE_CLEAN();
}

TYPED_TEST(RegionRule, ZeroViewSizeDrawsFiniteVertices)
{
    auto r = make<typename TestFixture::Region>(smallSquare());
    r->SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    r->Draw(nullptr, 0, -5, true);
    for (const rec::Batch& b : rec::gl().batches) {
        for (const tagTAVRIN_POINT& v : b.vertices) {
            EXPECT_TRUE(std::isfinite(v.x) && std::isfinite(v.y));
        }
    }
    EXPECT_GL_STATE_CLEAN();
}

// The label box beside the first vertex, moved in near the right and bottom edges.
struct LabelCase {
    const char* name;
    tagTAVRIN_POINT anchor;
    tagTAVRIN_POINT box;
};

TYPED_TEST(RegionRule, LabelBoxStaysInsideNearTheRightAndBottomEdges)
{
    const LabelCase cases[] = {
        {"Middle", pt(0.5f, 0.5f), pt(0.5f + 0.01f, 0.5f - 0.01f)},
        {"RightEdge", pt(0.95f, 0.5f), pt(0.95f - 0.08f, 0.5f - 0.01f)},
        {"JustLeftOfRightBand", pt(0.89f, 0.5f), pt(0.89f + 0.01f, 0.5f - 0.01f)},
        {"RightBandStart", pt(0.9f, 0.5f), pt(0.9f - 0.08f, 0.5f - 0.01f)},
        {"BottomEdge", pt(0.5f, 0.95f), pt(0.5f + 0.01f, 0.95f - 0.04f)},
        {"BottomBandStart", pt(0.5f, 0.9f), pt(0.5f + 0.01f, 0.9f - 0.04f)},
        {"CornerPrefersTheRightRule", pt(0.95f, 0.95f), pt(0.95f - 0.08f, 0.95f - 0.01f)},
        {"TopLeftIsNotClamped", pt(0.0f, 0.0f), pt(0.01f, -0.01f)},
    };
    for (const LabelCase& c : cases) {
        SCOPED_TRACE(c.name);
        rec::gl().reset();
        auto r = make<typename TestFixture::Region>(
            {c.anchor, pt(c.anchor.x - 0.05f, c.anchor.y), pt(c.anchor.x, c.anchor.y - 0.05f)});
        r->Draw(nullptr, 800, 600, true);
        ASSERT_EQ(rec::gl().texts.size(), 1u);
        EXPECT_POINT_NEAR(rec::gl().texts[0].position, c.box.x, c.box.y, 1e-6);
        EXPECT_GL_STATE_CLEAN();
    }
}

TYPED_TEST(RegionRule, LabelFollowsAMove)
{
    auto r = make<typename TestFixture::Region>(smallSquare());
    tagTAVRIN_POINT from = pt(0.0f, 0.0f);
    tagTAVRIN_POINT to = pt(0.5f, 0.6f);  // the first vertex reaches (0.7, 0.8)
    r->Move(from, to);
    r->Draw(nullptr, 800, 600, true);
    ASSERT_EQ(rec::gl().texts.size(), 1u);
    EXPECT_POINT_NEAR(rec::gl().texts[0].position, 0.71f, 0.79f, 1e-6);
}

// ---- Object life and interface ----

TYPED_TEST(RegionRule, LivesThroughTheRegistry)
{
    using Region = typename TestFixture::Region;
    Region* r = Region::NewInstance();
    ASSERT_NE(r, nullptr);
    VcaObjectContainer* registry = VcaObjectContainer::Instance();
    ASSERT_NE(registry, nullptr);
    const int slot = registry->AddVcaObject(r);
    ASSERT_GE(slot, 0);
    r->ReleaseRef();  // the registry's reference keeps it
    Points square = smallSquare();
    EXPECT_TRUE(r->SetPoints(square.data(), 4));
    EXPECT_EQ(registry->GetVcaObject(slot), r);
    EXPECT_TRUE(registry->DelVcaObject(slot));  // the last reference: deleted here
    EXPECT_EQ(registry->GetVcaObject(slot), nullptr);
}

TYPED_TEST(RegionRule, VirtualSlotsFollowTheObjectBaseThenSetAndGetPoints)
{
#if TAVRIN_TESTS_HAVE_SLOTS
    using R = typename TestFixture::Region;
    EXPECT_EQ(slotOf(&R::IsNull), 0);
    EXPECT_EQ(slotOf(&R::GetObjStatus), 1);
    EXPECT_EQ(slotOf(&R::SetObjStatus), 2);
    EXPECT_EQ(slotOf(&R::Move), 3);
    EXPECT_EQ(slotOf(&R::MovePoint), 4);
    EXPECT_EQ(slotOf(&R::CheckSelected), 5);
    EXPECT_EQ(slotOf(&R::CheckPointSelected), 6);
    EXPECT_EQ(slotOf(&R::Draw), 7);
    EXPECT_EQ(slotOf(&R::SetLabelText), 8);
    EXPECT_EQ(slotOf(&R::GetLabelText), 9);
    EXPECT_EQ(slotOf(&R::SetSelPointIndex), 10);
    EXPECT_EQ(slotOf(&R::GetSelPointIndex), 11);
    EXPECT_EQ(slotOf(&R::SetWndSize), 12);
    EXPECT_EQ(slotOf(&R::SetClosed), 13);
    EXPECT_EQ(slotOf(&R::GetClosed), 14);
    EXPECT_EQ(slotOf(&R::GetDrawLabelRect), 15);
    EXPECT_EQ(slotOf(&R::SetSizeFilterType), 23);
    // Slots 24 and 25 hold the destructor.
    EXPECT_EQ(slotOf(&R::SetPoints), 26);
    EXPECT_EQ(slotOf(&R::GetPoints), 27);
#else
    GTEST_SKIP() << "member pointer layout not known on this target";
#endif
}
