#include "rules/RulesTest.h"
#include "support/PolygonBuilders.h"

#include <Tavrin/SizeFilter.h>

#include <cmath>

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
    SizeFilter* rectangleFilter()
    {
        SizeFilter* filter = hostCreate<SizeFilter>();
        EXPECT_TRUE(setDiagonal(*filter, pt(0.2f, 0.3f), pt(0.5f, 0.6f)));
        return filter;
    }
};

TEST_F(SizeFilterTest, HostDrivesARectangleFilter)
{
    SizeFilter* filter = hostCreate<SizeFilter>();
    ASSERT_NE(filter, nullptr);
    EXPECT_EQ(filter->GetSizeFilterType(), TAVRIN_SIZE_FILTER_RECT);
    EXPECT_TRUE(filter->IsNull());
    filter->SetWndSize(1000, 500);
    ASSERT_TRUE(setDiagonal(*filter, pt(0.2f, 0.3f), pt(0.5f, 0.6f)));
    char name[] = "Person";
    filter->SetLabelText(name, 6);

    tagTAVRIN_POINT grab = pt(0.21f, 0.3f);
    EXPECT_EQ(vertexAt(*filter, grab), 1u);
    filter->SetSelPointIndex(1);
    dragVertex(*filter, grab, pt(0.31f, 0.4f));
    tagTAVRIN_POINT inside = pt(0.4f, 0.5f);
    EXPECT_TRUE(hits(*filter, inside));
    drag(*filter, inside, pt(0.45f, 0.5f));

    EXPECT_TRUE(nearPoints(verticesOf(*filter),
                           {pt(0.35f, 0.4f), pt(0.55f, 0.4f), pt(0.55f, 0.6f), pt(0.35f, 0.6f)}, 1e-6f));

    filter->SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
    filter->Draw(nullptr, 1000, 500, false);
    ASSERT_FALSE(recorded().batches.empty());
    const rec::Batch& outline = recorded().batches[0];
    EXPECT_EQ(outline.mode, static_cast<GLenum>(GL_LINE_LOOP));
    EXPECT_EQ(outline.color, rec::rgba(kYellow));
    EXPECT_TRUE(recorded().batchesOf(GL_POLYGON).empty());  // never filled
    EXPECT_EQ(recorded().batchesOf(GL_POINTS).size(), 5u);  // four handles and one halo
    ASSERT_EQ(recorded().texts.size(), 1u);
    EXPECT_POINT_NEAR(recorded().texts[0].position, 0.36f, 0.39f, 1e-6);
    EXPECT_EQ(textColors().at(0), colourCall(kLabelSelected));
    EXPECT_GL_STATE_CLEAN();
    hostDelete(filter);
}

TEST_F(SizeFilterTest, OutlineColourAndWidthBySchemeShapeAndStatus)
{
    const struct {
        int scheme, filterType, status;
        unsigned int colour;
        float width;
    } rows[] = {
        {0, 0, 0, kYellow, 2.0f}, {0, 0, 1, kYellow, 2.0f}, {9, 0, 2, kYellow, 2.0f},
        {1, 0, 0, kYellow, 4.0f}, {1, 0, 1, kGreen, 4.0f},  {1, 0, 2, kGreen, 4.0f},
        {2, 0, 0, kRed, 4.0f},    {2, 0, 1, kRed, 4.0f},    {1, 1, 0, kYellow, 2.0f},
        {1, 1, 1, kGreen, 2.0f},  {2, 5, 2, kRed, 2.0f},    {0, 1, 0, kYellow, 2.0f},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(::testing::Message() << "scheme " << row.scheme << " type " << row.filterType
                                          << " status " << row.status);
        SizeFilter* filter = hostCreate<SizeFilter>();
        filter->SetSizeFilterType(static_cast<tagTAVRIN_SIZE_FILTER_TYPE>(row.filterType));
        filter->SetWndSize(800, 800);
        ASSERT_TRUE(setDiagonal(*filter, pt(0.2f, 0.3f), pt(0.5f, 0.6f)));
        filter->SetColor(row.scheme);
        filter->SetObjStatus(static_cast<tagTAVRIN_OBJ_STATUS>(row.status));
        ASSERT_FALSE(drawn(*filter, 800, 800).batches.empty());
        const rec::Batch& outline = recorded().batches[0];
        EXPECT_EQ(outline.mode, static_cast<GLenum>(GL_LINE_LOOP));
        EXPECT_EQ(outline.color, rec::rgba(row.colour));
        EXPECT_FLOAT_EQ(outline.lineWidth, row.width);
        EXPECT_EQ(textColors().at(0), colourCall(row.status == 0 ? kLabelNormal : kLabelSelected));
        EXPECT_GL_STATE_CLEAN();
    }
    // A rectangle keeps the wide outline after the scheme goes back to 0.
    SizeFilter* filter = rectangleFilter();
    filter->SetColor(2);
    drawn(*filter, 800, 600);
    filter->SetColor(0);
    ASSERT_FALSE(drawn(*filter, 800, 600).batches.empty());
    EXPECT_EQ(recorded().batches[0].color, rec::rgba(kYellow));
    EXPECT_FLOAT_EQ(recorded().batches[0].lineWidth, 4.0f);
}

TEST_F(SizeFilterTest, VertexLimitIsFour)
{
    SizeFilter* filter = rectangleFilter();
    tagTAVRIN_POINT five[5] = {pt(0.1f, 0.1f), pt(0.3f, 0.1f), pt(0.3f, 0.3f), pt(0.1f, 0.3f),
                               pt(0.2f, 0.2f)};
    EXPECT_FALSE(filter->SetPoints(five, 5));
    EXPECT_FALSE(filter->SetPoints(nullptr, 4));
    tagTAVRIN_POINT bad[4] = {pt(0.1f, 0.1f), pt(kInf, 0.1f),
                              pt(0.3f, 0.3f), pt(0.1f, 0.3f)};
    EXPECT_FALSE(filter->SetPoints(bad, 4));
    tagTAVRIN_POINT nan = pt(kNaN, 0.5f);
    tagTAVRIN_POINT ok = pt(0.5f, 0.5f);
    EXPECT_FALSE(filter->SetDiagonal(nan, ok));
    EXPECT_FALSE(filter->SetDiagonal(ok, nan));
    std::vector<tagTAVRIN_POINT> c = verticesOf(*filter);
    ASSERT_EQ(c.size(), 4u);
    EXPECT_POINT_NEAR(c[2], 0.5f, 0.6f, 0.0);

    EXPECT_TRUE(filter->SetPoints(five, 4));
    EXPECT_EQ(verticesOf(*filter).size(), 4u);
    EXPECT_TRUE(filter->SetPoints(five, 3));
    EXPECT_EQ(verticesOf(*filter).size(), 3u);
    unsigned int count = 0;
    EXPECT_FALSE(filter->GetPoints(nullptr, &count));
    tagTAVRIN_POINT out[20];
    EXPECT_FALSE(filter->GetPoints(out, nullptr));
}

TEST_F(SizeFilterTest, EachShapeKeepsItsOwnVerticesAndBothFollowADrag)
{
    SizeFilter* filter = rectangleFilter();
    filter->SetSizeFilterType(TAVRIN_SIZE_FILTER_SQUARE);
    EXPECT_TRUE(verticesOf(*filter).empty());  // the square was never given any
    EXPECT_TRUE(filter->IsNull());

    filter->SetWndSize(1000, 500);
    ASSERT_TRUE(setDiagonal(*filter, pt(0.1f, 0.1f), pt(0.5f, 0.3f)));
    std::vector<tagTAVRIN_POINT> sq = verticesOf(*filter);
    ASSERT_EQ(sq.size(), 4u);
    EXPECT_POINT_NEAR(sq[2], 0.5f, 0.9f, 1e-6);  // 400 pixels each way

    drag(*filter, pt(0.3f, 0.5f), pt(0.35f, 0.55f));
    sq = verticesOf(*filter);
    EXPECT_POINT_NEAR(sq[0], 0.15f, 0.15f, 1e-6);
    EXPECT_POINT_NEAR(sq[2], 0.55f, 0.95f, 1e-6);

    filter->SetSizeFilterType(TAVRIN_SIZE_FILTER_RECT);
    const std::vector<tagTAVRIN_POINT> rect = verticesOf(*filter);
    ASSERT_EQ(rect.size(), 4u);
    EXPECT_POINT_NEAR(rect[0], 0.25f, 0.35f, 1e-6);
    EXPECT_POINT_NEAR(rect[2], 0.55f, 0.65f, 1e-6);
}

TEST_F(SizeFilterTest, ShapesRefuseADragOnTheirOwnTerms)
{
    SizeFilter* filter = rectangleFilter();  // rectangle reaches x = 0.5
    filter->SetSizeFilterType(TAVRIN_SIZE_FILTER_SQUARE);
    filter->SetWndSize(1000, 1000);
    ASSERT_TRUE(setDiagonal(*filter, pt(0.6f, 0.1f), pt(0.9f, 0.2f)));  // square reaches x = 0.9
    drag(*filter, pt(0.5f, 0.5f), pt(0.7f, 0.5f));  // the square would leave the picture, the rectangle not
    EXPECT_POINT_NEAR(verticesOf(*filter)[0], 0.6f, 0.1f, 0.0);
    filter->SetSizeFilterType(TAVRIN_SIZE_FILTER_RECT);
    EXPECT_POINT_NEAR(verticesOf(*filter)[0], 0.4f, 0.3f, 1e-6);
}

TEST_F(SizeFilterTest, VertexDragUsesEachShapesOwnSelection)
{
    SizeFilter* filter = rectangleFilter();
    filter->SetSelPointIndex(3);  // the rectangle's opposite corner; the square has none
    EXPECT_EQ(filter->GetSelPointIndex(), 3u);
    filter->SetSizeFilterType(TAVRIN_SIZE_FILTER_SQUARE);
    EXPECT_EQ(filter->GetSelPointIndex(), 0u);
    filter->SetWndSize(1000, 1000);
    ASSERT_TRUE(setDiagonal(*filter, pt(0.1f, 0.1f), pt(0.2f, 0.2f)));
    dragVertex(*filter, pt(0.5f, 0.6f), pt(0.6f, 0.7f));
    EXPECT_POINT_NEAR(verticesOf(*filter)[2], 0.2f, 0.2f, 1e-6);  // no square corner selected
    filter->SetSizeFilterType(TAVRIN_SIZE_FILTER_RECT);
    const std::vector<tagTAVRIN_POINT> rect = verticesOf(*filter);
    EXPECT_POINT_NEAR(rect[2], 0.6f, 0.7f, 1e-6);
    EXPECT_POINT_NEAR(rect[1], 0.6f, 0.3f, 1e-6);
    EXPECT_POINT_NEAR(rect[3], 0.2f, 0.7f, 1e-6);
}

TEST_F(SizeFilterTest, SquareLearnsTheViewSizeFromADraw)
{
    SizeFilter* filter = hostCreate<SizeFilter>();
    filter->SetSizeFilterType(TAVRIN_SIZE_FILTER_SQUARE);
    filter->Draw(nullptr, 300, 500, true);
    ASSERT_TRUE(setDiagonal(*filter, pt(0.1f, 0.1f), pt(0.5f, 0.3f)));
    const std::vector<tagTAVRIN_POINT> sq = verticesOf(*filter);
    ASSERT_EQ(sq.size(), 4u);
    EXPECT_POINT_NEAR(sq[2], 0.5f, 0.34f, 1e-6);  // side 120 pixels: 0.4 x 0.24

    // Without a view size the corners stay finite.
    SizeFilter* blind = hostCreate<SizeFilter>();
    blind->SetSizeFilterType(TAVRIN_SIZE_FILTER_SQUARE);
    setDiagonal(*blind, pt(0.1f, 0.1f), pt(0.5f, 0.3f));
    for (const tagTAVRIN_POINT& p : verticesOf(*blind)) {
        EXPECT_TRUE(std::isfinite(p.x) && std::isfinite(p.y));
    }
}
