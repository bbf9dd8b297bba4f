#include "rules/RulesTest.h"

#include <Tavrin/SizeFilter.h>

using Tavrin::SizeFilter;

namespace {

const unsigned int kYellow = 0xf2ed1a;
const unsigned int kGreen = 0x00cc00;
const unsigned int kRed = 0xff0000;
const unsigned int kLabelNormal = 0x285ea6;
const unsigned int kLabelSelected = 0xd90db0;

}  // namespace

class SizeFilterTest : public RuleTest {
protected:
    // A rectangle (0.2, 0.3)-(0.5, 0.6); a square, if asked, with the given diagonal at 1000 x 1000.
    SizeFilter* filter(Points squareDiagonal = {})
    {
        SizeFilter* f = hostCreate<SizeFilter>();
        EXPECT_TRUE(setDiagonal(*f, pt(0.2f, 0.3f), pt(0.5f, 0.6f)));
        if (!squareDiagonal.empty()) {
            f->SetSizeFilterType(TAVRIN_SIZE_FILTER_SQUARE);
            f->SetWndSize(1000, 1000);
            EXPECT_TRUE(setDiagonal(*f, squareDiagonal[0], squareDiagonal[1]));
        }
        return f;
    }
};

TEST_F(SizeFilterTest, HostDrivesARectangleFilter)
{
    SizeFilter* f = hostCreate<SizeFilter>();
    EXPECT_EQ(f->GetSizeFilterType(), TAVRIN_SIZE_FILTER_RECT);
    EXPECT_TRUE(f->IsNull());
    f->SetWndSize(1000, 500);
    ASSERT_TRUE(setDiagonal(*f, pt(0.2f, 0.3f), pt(0.5f, 0.6f)));
    char name[] = "Person";
    f->SetLabelText(name, 6);
    EXPECT_EQ(vertexAt(*f, pt(0.21f, 0.3f)), 1u);
    f->SetSelPointIndex(1);
    dragVertex(*f, pt(0.21f, 0.3f), pt(0.31f, 0.4f));
    EXPECT_TRUE(hits(*f, pt(0.4f, 0.5f)));
    drag(*f, pt(0.4f, 0.5f), pt(0.45f, 0.5f));
    EXPECT_TRUE(nearPoints(verticesOf(*f),
                           {pt(0.35f, 0.4f), pt(0.55f, 0.4f), pt(0.55f, 0.6f), pt(0.35f, 0.6f)}, 1e-6f));

    f->SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    f->Draw(nullptr, 1000, 500, false);
    ASSERT_FALSE(recorded().batches.empty());
    EXPECT_EQ(recorded().batches[0].mode, static_cast<GLenum>(GL_LINE_LOOP));
    EXPECT_EQ(recorded().batches[0].color, rec::rgba(kYellow));
    EXPECT_TRUE(recorded().batchesOf(GL_POLYGON).empty());  // never filled
    EXPECT_EQ(recorded().batchesOf(GL_POINTS).size(), 5u);  // four handles and one halo
    EXPECT_ONE_TEXT(0.36f, 0.39f, kLabelSelected);
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(SizeFilterTest, OutlineColourAndWidthFollowSchemeShapeAndStatus)
{
    const struct { int scheme, filterType, status; unsigned int colour; float width; } cases[] = {
        {0, 0, 0, kYellow, 2.0f}, {0, 0, 1, kYellow, 2.0f}, {9, 0, 2, kYellow, 2.0f},
        {1, 0, 0, kYellow, 4.0f}, {1, 0, 1, kGreen, 4.0f},  {1, 0, 2, kGreen, 4.0f},
        {2, 0, 0, kRed, 4.0f},    {2, 0, 1, kRed, 4.0f},    {1, 1, 0, kYellow, 2.0f},
        {1, 1, 1, kGreen, 2.0f},  {2, 5, 2, kRed, 2.0f},    {0, 1, 0, kYellow, 2.0f},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(::testing::Message() << "scheme " << c.scheme << " type " << c.filterType << " status "
                                          << c.status);
        SizeFilter* f = hostCreate<SizeFilter>();
        f->SetSizeFilterType(static_cast<tagTAVRIN_SIZE_FILTER_TYPE>(c.filterType));
        f->SetWndSize(800, 800);
        ASSERT_TRUE(setDiagonal(*f, pt(0.2f, 0.3f), pt(0.5f, 0.6f)));
        f->SetColor(c.scheme);
        f->SetObjStatus(static_cast<tagTAVRIN_OBJ_STATUS>(c.status));
        drawn(*f, 800, 800);
        ASSERT_FALSE(recorded().batches.empty());
        EXPECT_EQ(recorded().batches[0].mode, static_cast<GLenum>(GL_LINE_LOOP));
        EXPECT_EQ(recorded().batches[0].color, rec::rgba(c.colour));
        EXPECT_FLOAT_EQ(recorded().batches[0].lineWidth, c.width);
        EXPECT_EQ(textColors().at(0), colourCall(c.status == 0 ? kLabelNormal : kLabelSelected));
        EXPECT_GL_STATE_CLEAN();
    }
    // A rectangle once drawn wide keeps the wide outline after the scheme goes back.
    SizeFilter* f = filter();
    f->SetColor(2);
    f->Draw(nullptr, 800, 600, true);
    f->SetColor(0);
    drawn(*f, 800, 600);
    EXPECT_EQ(recorded().batches.at(0).color, rec::rgba(kYellow));
    EXPECT_FLOAT_EQ(recorded().batches.at(0).lineWidth, 4.0f);
}

TEST_F(SizeFilterTest, VertexLimitIsFourAndRefusalsChangeNothing)
{
    SizeFilter* f = filter();
    const Points before = verticesOf(*f);
    tagTAVRIN_POINT five[5] = {pt(0.1f, 0.1f), pt(0.3f, 0.1f), pt(0.3f, 0.3f), pt(0.1f, 0.3f), pt(0.2f, 0.2f)};
    EXPECT_FALSE(f->SetPoints(five, 5));
    EXPECT_FALSE(f->SetPoints(nullptr, 4));
    tagTAVRIN_POINT bad[4] = {pt(0.1f, 0.1f), pt(kInf, 0.1f), pt(0.3f, 0.3f), pt(0.1f, 0.3f)};
    EXPECT_FALSE(f->SetPoints(bad, 4));
    EXPECT_FALSE(setDiagonal(*f, pt(kNaN, 0.5f), pt(0.5f, 0.5f)));
    EXPECT_FALSE(setDiagonal(*f, pt(0.5f, 0.5f), pt(kNaN, 0.5f)));
    unsigned int count = 0;
    EXPECT_FALSE(f->GetPoints(nullptr, &count));
    EXPECT_FALSE(f->GetPoints(five, nullptr));
    EXPECT_TRUE(samePoints(verticesOf(*f), before));
    EXPECT_TRUE(f->SetPoints(five, 4));
    EXPECT_TRUE(f->SetPoints(five, 3));
    EXPECT_EQ(verticesOf(*f).size(), 3u);
}

TEST_F(SizeFilterTest, EachShapeKeepsItsOwnVerticesAndBothFollowADrag)
{
    SizeFilter* f = filter();
    f->SetSizeFilterType(TAVRIN_SIZE_FILTER_SQUARE);
    EXPECT_TRUE(verticesOf(*f).empty());  // the square was never given any
    EXPECT_TRUE(f->IsNull());
    f->SetWndSize(1000, 500);
    ASSERT_TRUE(setDiagonal(*f, pt(0.1f, 0.1f), pt(0.5f, 0.3f)));
    EXPECT_POINT_NEAR(verticesOf(*f).at(2), 0.5f, 0.9f, 1e-6);  // 400 pixels each way
    drag(*f, pt(0.3f, 0.5f), pt(0.35f, 0.55f));
    EXPECT_TRUE(nearPoints(verticesOf(*f), {pt(0.15f, 0.15f), pt(0.55f, 0.15f), pt(0.55f, 0.95f), pt(0.15f, 0.95f)},
                           1e-6f));
    f->SetSizeFilterType(TAVRIN_SIZE_FILTER_RECT);
    EXPECT_TRUE(nearPoints(verticesOf(*f), {pt(0.25f, 0.35f), pt(0.55f, 0.35f), pt(0.55f, 0.65f), pt(0.25f, 0.65f)},
                           1e-6f));
}

TEST_F(SizeFilterTest, ShapesRefuseADragOnTheirOwnTerms)
{
    SizeFilter* f = filter({pt(0.6f, 0.1f), pt(0.9f, 0.2f)});  // rectangle to x = 0.5, square to 0.9
    drag(*f, pt(0.5f, 0.5f), pt(0.7f, 0.5f));  // the square would leave the picture, the rectangle not
    EXPECT_POINT_NEAR(verticesOf(*f)[0], 0.6f, 0.1f, 0.0);
    f->SetSizeFilterType(TAVRIN_SIZE_FILTER_RECT);
    EXPECT_POINT_NEAR(verticesOf(*f)[0], 0.4f, 0.3f, 1e-6);
}

TEST_F(SizeFilterTest, VertexDragUsesEachShapesOwnSelection)
{
    SizeFilter* f = filter();
    f->SetSelPointIndex(3);  // the rectangle's opposite corner; the square has none
    f->SetSizeFilterType(TAVRIN_SIZE_FILTER_SQUARE);
    EXPECT_EQ(f->GetSelPointIndex(), 0u);
    f->SetWndSize(1000, 1000);
    ASSERT_TRUE(setDiagonal(*f, pt(0.1f, 0.1f), pt(0.2f, 0.2f)));
    dragVertex(*f, pt(0.5f, 0.6f), pt(0.6f, 0.7f));
    EXPECT_POINT_NEAR(verticesOf(*f)[2], 0.2f, 0.2f, 1e-6);  // no square corner selected
    f->SetSizeFilterType(TAVRIN_SIZE_FILTER_RECT);
    EXPECT_EQ(f->GetSelPointIndex(), 3u);
    EXPECT_TRUE(nearPoints(verticesOf(*f), {pt(0.2f, 0.3f), pt(0.6f, 0.3f), pt(0.6f, 0.7f), pt(0.2f, 0.7f)},
                           1e-6f));
}

TEST_F(SizeFilterTest, SquareLearnsTheViewSizeFromADraw)
{
    SizeFilter* f = hostCreate<SizeFilter>();
    f->SetSizeFilterType(TAVRIN_SIZE_FILTER_SQUARE);
    f->Draw(nullptr, 300, 500, true);
    ASSERT_TRUE(setDiagonal(*f, pt(0.1f, 0.1f), pt(0.5f, 0.3f)));
    EXPECT_POINT_NEAR(verticesOf(*f).at(2), 0.5f, 0.34f, 1e-6);  // side 120 pixels: 0.4 x 0.24
}
