#include "rules/RulesTest.h"
#include "support/VirtualSlot.h"

#include <Tavrin/EnterRegion.h>
#include <Tavrin/ITCPlateRegion.h>
#include <Tavrin/ReferenceRegion.h>
#include <Tavrin/ShieldRegion.h>

using namespace Tavrin;

namespace {

// What tells the four regions apart: capacity, the outline and label colours for normal
// and selected, and whether the area is filled.
template <class R, unsigned int Cap, unsigned int N, unsigned int S, unsigned int LN, unsigned int LS, bool F>
struct Kind {
    using Region = R;
    static constexpr unsigned int capacity = Cap, normal = N, selected = S, labelNormal = LN, labelSelected = LS;
    static constexpr bool filled = F;
};

const unsigned int kHandle = 0xffc000;
const std::vector<std::string> kPolySmooth = {"GL_POLYGON_SMOOTH", "GL_LINE_SMOOTH"};

}  // namespace

template <class K>
class RegionRule : public GlTest {
protected:
    Owned<typename K::Region> make(Points vertices = {})
    {
        Owned<typename K::Region> r(K::Region::NewInstance());
        if (!vertices.empty()) {
            EXPECT_TRUE(r->SetPoints(vertices.data(), static_cast<unsigned int>(vertices.size())));
        }
        return r;
    }
};

using RegionKinds = ::testing::Types<Kind<ShieldRegion, 10, 0x7030a0, 0x7030a0, 0x7030a0, 0x7030a0, true>,
                                     Kind<ReferenceRegion, 10, 0xf28226, 0xf28226, 0xf28226, 0xf28226, true>,
                                     Kind<EnterRegion, 10, 0x00f0f0, 0x00f0f0, 0x285ea6, 0xd90db0, false>,
                                     Kind<ITCPlateRegion, 20, 0x4848c6, 0xd90db0, 0x4848c6, 0xd90db0, true>>;
TYPED_TEST_SUITE(RegionRule, RegionKinds);

TYPED_TEST(RegionRule, SetPointsTakesItsCapacityAndGetPointsClearsThatMany)
{
    const unsigned int cap = TypeParam::capacity;
    Points many;
    for (unsigned int i = 0; i <= cap; ++i) {
        many.push_back(pt(0.02f * i, 0.1f + 0.03f * i));
    }
    auto r = this->make(smallSquare());
    EXPECT_FALSE(r->SetPoints(many.data(), cap + 1));
    EXPECT_FALSE(r->SetPoints(nullptr, 3));
    many[1].x = kNaN;
    EXPECT_FALSE(r->SetPoints(many.data(), 3));
    many[1].x = 0.02f;
    EXPECT_TRUE(samePoints(verticesOf(*r), smallSquare()));
    EXPECT_TRUE(r->SetPoints(many.data(), cap));
    EXPECT_TRUE(samePoints(verticesOf(*r), Points(many.begin(), many.begin() + cap)));

    ASSERT_TRUE(r->SetPoints(many.data(), 3));
    unsigned int count = 0;
    const Points buffer = bufferOf(*r, &count, 24);  // first filled with (9, 9)
    EXPECT_EQ(count, 3u);
    for (unsigned int i = 3; i < 24; ++i) {
        EXPECT_EQ(buffer[i].x, i < cap ? 0.0f : 9.0f) << i;
        EXPECT_EQ(buffer[i].y, i < cap ? 0.0f : 9.0f) << i;
    }
    count = 99;
    EXPECT_FALSE(r->GetPoints(nullptr, &count));
    EXPECT_FALSE(r->GetPoints(&many[0], nullptr));
    EXPECT_EQ(count, 99u);
}

TYPED_TEST(RegionRule, EditingGoesToThePolygonAndTheLabelFollows)
{
    auto r = this->make(smallSquare());
    EXPECT_FALSE(hits(*r, pt(0.4f, 0.3f)));  // the right edge is outside
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
                                            pt(0.4f + 0.3f, 0.4f + 0.4f), pt(0.2f + 0.3f, 0.4f + 0.4f)}));
    r->SetClosed(false);
    EXPECT_FALSE(r->GetClosed());
    r->Draw(nullptr, 800, 600, true);
    EXPECT_EQ(batchModes(), (std::vector<GLenum>{GL_LINES, GL_LINES, GL_LINES}));  // no loop, no fill
    EXPECT_ONE_TEXT(0.51f, 0.59f, TypeParam::labelNormal);
    EXPECT_GL_STATE_CLEAN();
}

TYPED_TEST(RegionRule, NormalDrawIsThePolygonThenTheLabelInForcedColours)
{
    auto r = this->make(smallSquare());
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
                      {colourCall(TypeParam::normal, 255), "glLineWidth(2)", "glBegin(GL_LINE_LOOP)", "glEnd()",
                       colourCall(TypeParam::normal, 40)},
                      fill, leaveCalls(kPolySmooth), enterCalls(kPolySmooth),
                      {colourCall(TypeParam::labelNormal, 255), "glRasterPos2f(0.42,1.62)", "glGenLists(1)",
                       "glDeleteLists(list,1)"},
                      leaveCalls(kPolySmooth)}));
    EXPECT_GL_STATE_CLEAN();
}

TYPED_TEST(RegionRule, SelectedDrawUsesTheSecondColoursAndHandles)
{
    auto r = this->make(smallSquare());
    r->SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    r->SetSelPointIndex(3);
    r->Draw(nullptr, 640, 480, false);  // the last argument is ignored
    ASSERT_FALSE(rec::gl().batches.empty());
    EXPECT_EQ(rec::gl().batches[0].color, rec::rgba(TypeParam::selected));
    EXPECT_EQ(countBatches(GL_POINTS, rec::rgba(kHandle), 1), 1u);  // the halo of vertex 3
    EXPECT_EQ(countBatches(GL_POINTS, rec::rgba(TypeParam::selected), 1), 4u);
    // The label comes last: its colour, then raster position, list, four restores, identity.
    const std::vector<std::string> seq = rec::gl().sequence();
    ASSERT_GE(seq.size(), 9u);
    EXPECT_EQ(seq[seq.size() - 9], colourCall(TypeParam::labelSelected, 255));
    EXPECT_GL_STATE_CLEAN();

    r->SetObjStatus(TAVRIN_OBJ_STATUS_HIGHLIGHTED);
    drawn(*r, 640, 480);
    EXPECT_EQ(rec::gl().batches[0].color, rec::rgba(TypeParam::selected));
    EXPECT_TRUE(rec::gl().batchesOf(GL_POINTS).empty());
}

TYPED_TEST(RegionRule, EmptyRegionDrawsOnlyItsLabelFromTheOrigin)
{
    auto r = this->make();
    EXPECT_TRUE(r->IsNull());
    r->Draw(nullptr, 640, 480, true);
    EXPECT_TRUE(rec::gl().batches.empty());
    EXPECT_ONE_TEXT(0.01f, -0.01f, TypeParam::labelNormal);
}

TYPED_TEST(RegionRule, VirtualSlotsFollowTheObjectBaseThenSetAndGetPoints)
{
#if TAVRIN_TESTS_HAVE_SLOTS
    expectObjectSlots<typename TypeParam::Region>();
#endif
}
