#include "support/CaliTest.h"

#include <Tavrin/BinoCali.h>
#include <Tavrin/LfCali.h>

#include <cstdio>

using Tavrin::BinoCali;
using Tavrin::LfCali;

namespace {

const std::vector<std::string> kPointSmooth = {"GL_POINT_SMOOTH"};
const std::vector<std::string> kPolygonSmooth = {"GL_POLYGON_SMOOTH", "GL_LINE_SMOOTH"};

std::string rasterCall(tagTAVRIN_POINT p)
{
    char buf[96];
    std::snprintf(buf, sizeof buf, "glRasterPos2f(%g,%g)", 2.0f * p.x, 2.0f * (1.0f - p.y));
    return buf;
}

template <class T>
class SinglePointTest : public GlTest {
protected:
    void SetUp() override
    {
        GlTest::SetUp();
        ASSERT_NE(figure, nullptr);
    }

    tagTAVRIN_POINT position()
    {
        tagTAVRIN_POINT out = pt(-1, -1);
        unsigned int count = 0;
        EXPECT_TRUE(figure->GetPoints(&out, &count));
        EXPECT_EQ(count, 1u);
        return out;
    }

    Owned<T> figure = create<T>();
};

using SinglePointFigures = ::testing::Types<BinoCali, LfCali>;
TYPED_TEST_SUITE(SinglePointTest, SinglePointFigures);

}  // namespace

TYPED_TEST(SinglePointTest, OnlyZeroOrOnePointIsAccepted)
{
    tagTAVRIN_POINT two[2] = {pt(0.3f, 0.4f), pt(0.6f, 0.7f)};
    ASSERT_TRUE(this->figure->SetPoints(two, 1));
    EXPECT_FALSE(this->figure->SetPoints(two, 2));
    EXPECT_FALSE(this->figure->SetPoints(nullptr, 1));
    tagTAVRIN_POINT nan = pt(NAN, 0.5f);
    EXPECT_FALSE(this->figure->SetPoints(&nan, 1));
    EXPECT_POINT_NEAR(this->position(), 0.3f, 0.4f, 0.0);

    tagTAVRIN_POINT other = pt(0.6f, 0.7f);
    EXPECT_TRUE(this->figure->SetPoints(&other, 0));  // a count of 0 still takes the point
    EXPECT_POINT_NEAR(this->position(), 0.6f, 0.7f, 0.0);

    unsigned int count = 0;
    EXPECT_FALSE(this->figure->GetPoints(nullptr, &count));
    EXPECT_FALSE(this->figure->GetPoints(&other, nullptr));
}

TYPED_TEST(SinglePointTest, MovedOnlyWhole)
{
    tagTAVRIN_POINT at = pt(0.5f, 0.5f);
    ASSERT_TRUE(this->figure->SetPoints(&at, 1));
    EXPECT_FALSE(this->figure->IsNull());
    EXPECT_EQ(vertexAt(*this->figure, at), 0u);
    this->figure->SetSelPointIndex(1);
    EXPECT_EQ(this->figure->GetSelPointIndex(), 1u);
    tagTAVRIN_POINT from = pt(0.5f, 0.5f);
    tagTAVRIN_POINT to = pt(0.6f, 0.4f);
    dragVertex(*this->figure, from, to);
    EXPECT_POINT_NEAR(this->position(), 0.5f, 0.5f, 0.0);
    drag(*this->figure, from, to);
    EXPECT_POINT_NEAR(this->position(), 0.6f, 0.4f, 1e-6);
    drag(*this->figure, from, pt(0.5f, -0.2f));
    EXPECT_POINT_NEAR(this->position(), 0.6f, 0.4f, 1e-6);
    this->figure->SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    EXPECT_EQ(this->figure->GetObjStatus(), TAVRIN_OBJ_STATUS_SELECTED);
}

TEST(BinoCaliRadius, ViewSizeReachesTheCircleBeforeTheFirstDraw)
{
    Owned<BinoCali> bino = create<BinoCali>();
    ASSERT_NE(bino, nullptr);
    bino->SetRadius(50);  // no view size yet: ignored
    EXPECT_EQ(bino->Radius(), 0u);
    bino->SetWndSize(500, 400);
    bino->SetRadius(50);
    EXPECT_EQ(bino->Radius(), 50u);

    tagTAVRIN_POINT centre = pt(0.5f, 0.5f);
    ASSERT_TRUE(bino->SetPoints(&centre, 1));
    EXPECT_TRUE(hits(*bino, pt(0.58f, 0.5f)));  // 40 pixels
    EXPECT_FALSE(hits(*bino, pt(0.62f, 0.5f)));  // 60 pixels
}

class BinoCaliDraw : public GlTest {};

TEST_F(BinoCaliDraw, CrossThenDiscInItsOwnColours)
{
    Owned<BinoCali> bino = create<BinoCali>();
    ASSERT_NE(bino, nullptr);
    tagTAVRIN_POINT centre = pt(0.5f, 0.5f);
    ASSERT_TRUE(bino->SetPoints(&centre, 1));
    bino->SetWndSize(800, 400);
    bino->SetRadius(80);
    bino->Draw(nullptr, 800, 400, false);

    EXPECT_EQ(recorded().sequence(),
              concat({enterCalls(kPointSmooth),
                      {"glColor4ub(0,54,215,255)", "glLineWidth(2)", "glBegin(GL_LINES)", "glEnd()"},
                      leaveCalls(kPointSmooth), enterCalls(kPolygonSmooth),
                      {"glColor4ub(0,54,215,200)", "glBegin(GL_POLYGON)", "glEnd()",
                       "glColor4ub(0,54,215,255)"},
                      leaveCalls(kPolygonSmooth)}));
    ASSERT_EQ(recorded().batches.size(), 2u);
    EXPECT_NEAR(recorded().batches[1].vertices[0].x, 1.1f, 1e-6);  // radius 80 / 800
    EXPECT_GL_STATE_CLEAN();

    recorded().reset();
    bino->SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    bino->Draw(nullptr, 800, 400, false);
    ASSERT_EQ(recorded().batches.size(), 2u);
    EXPECT_EQ(recorded().batches[0].color, rec::rgba(0xFFFF00));
    EXPECT_EQ(recorded().batches[1].color, rec::rgba(0xFFFF00, 200));
}

class LfCaliDraw : public GlTest {};

TEST_F(LfCaliDraw, CrossThenAnEmptyLabelBesideIt)
{
    Owned<LfCali> lf = create<LfCali>();
    ASSERT_NE(lf, nullptr);
    tagTAVRIN_POINT at = pt(0.95f, 0.5f);
    ASSERT_TRUE(lf->SetPoints(&at, 1));
    lf->Draw(nullptr, 800, 600, true);

    // Near the right edge the box goes to the left: (0.87, 0.49).
    const tagTAVRIN_POINT corner = pt(0.95f - 0.08f, 0.5f - 0.01f);
    EXPECT_EQ(recorded().sequence(),
              concat({enterCalls(kPointSmooth),
                      {"glColor4ub(40,94,166,255)", "glLineWidth(2)", "glBegin(GL_LINES)", "glEnd()"},
                      leaveCalls(kPointSmooth), enterCalls(kPolygonSmooth),
                      {"glColor4ub(40,94,166,255)", rasterCall(corner), "glGenLists(1)",
                       "glDeleteLists(list,1)"},
                      leaveCalls(kPolygonSmooth)}));
    ASSERT_EQ(recorded().batches.size(), 1u);
    const rec::Batch& cross = recorded().batches[0];
    ASSERT_EQ(cross.vertices.size(), 4u);
    EXPECT_POINT_NEAR(cross.at(0), 0.93f, 0.5f, 1e-6);
    EXPECT_POINT_NEAR(cross.at(3), 0.95f, 0.52f, 1e-6);
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(LfCaliDraw, LabelTakesThePointsStatus)
{
    Owned<LfCali> lf = create<LfCali>();
    ASSERT_NE(lf, nullptr);
    tagTAVRIN_POINT at = pt(0.4f, 0.95f);
    ASSERT_TRUE(lf->SetPoints(&at, 1));
    char name[] = "gate";
    lf->SetLabelText(name, 4);
    lf->SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    lf->Draw(nullptr, 800, 600, true);
    EXPECT_EQ(recorded().batches[0].color, rec::rgba(0xFFC000));  // a selected cross
    EXPECT_EQ(textColors(), std::vector<std::string>{colourCall(0xD90DB0)});
    ASSERT_EQ(recorded().texts.size(), 1u);
    EXPECT_POINT_NEAR(recorded().texts[0].position, 0.41f, 0.91f, 1e-6);  // raised near the bottom
    EXPECT_GL_STATE_CLEAN();
}

TEST(LfCaliHit, CountsAsHitEverywhere)
{
    Owned<LfCali> lf = create<LfCali>();
    ASSERT_NE(lf, nullptr);
    tagTAVRIN_POINT far = pt(0.99f, 0.01f);
    EXPECT_TRUE(hits(*lf, far));
    tagTAVRIN_POINT at = pt(0.1f, 0.9f);
    ASSERT_TRUE(lf->SetPoints(&at, 1));
    EXPECT_TRUE(hits(*lf, far));
}
