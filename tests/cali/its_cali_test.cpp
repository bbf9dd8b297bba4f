#include "support/CaliTest.h"
#include "support/PolygonBuilders.h"

#include <Tavrin/ItsCali.h>

#include <cstring>

using Tavrin::ItsCali;

namespace {

/// Reads the two edge texts, which the figure never draws as glyphs.
class ItsCaliProbe : public ItsCali {
public:
    using ItsCali::m_heightText;
    using ItsCali::m_widthText;
};

class ItsCaliTest : public GlTest {
protected:
    void SetUp() override
    {
        GlTest::SetUp();
        ASSERT_NE(its, nullptr);
    }

    void setPoints(std::vector<tagTAVRIN_POINT> points)
    {
        ASSERT_TRUE(its->SetPoints(points.data(), static_cast<unsigned int>(points.size())));
    }

    Owned<ItsCaliProbe> its{new ItsCaliProbe()};
};

struct EdgeCase {
    std::string name;
    std::vector<tagTAVRIN_POINT> points;
    tagTAVRIN_POINT widthAnchor;   // midpoint of the width edge
    tagTAVRIN_POINT heightAnchor;  // midpoint of the height edge
};

}  // namespace

TEST_F(ItsCaliTest, WidthTextThenHeightTextBesideTheTopEdges)
{
    const EdgeCase cases[] = {
        // Top is vertex 0 (first of two minima); next (y 0.2) is higher than prev (y 0.6).
        {"SquareWidthOnTheTopEdge", {pt(0.2f, 0.2f), pt(0.6f, 0.2f), pt(0.6f, 0.6f), pt(0.2f, 0.6f)},
         pt(0.4f, 0.2f), pt(0.2f, 0.4f)},
        // prev (y 0.3) is higher than next (y 0.5): the texts swap edges.
        {"PreviousHigherSwapsTheEdges", {pt(0.5f, 0.1f), pt(0.7f, 0.5f), pt(0.3f, 0.3f)},
         pt(0.4f, 0.2f), pt(0.6f, 0.3f)},
        {"TieGoesToTheNextVertex", {pt(0.5f, 0.1f), pt(0.7f, 0.5f), pt(0.3f, 0.5f)},
         pt(0.6f, 0.3f), pt(0.4f, 0.3f)},
        {"TopInTheMiddle", {pt(0.2f, 0.8f), pt(0.3f, 0.5f), pt(0.5f, 0.1f), pt(0.8f, 0.6f)},
         pt(0.4f, 0.3f), pt(0.65f, 0.35f)},
        // Top is the last vertex: next wraps to vertex 0.
        {"TopLastNextWraps", {pt(0.3f, 0.5f), pt(0.6f, 0.6f), pt(0.5f, 0.1f)},
         pt(0.4f, 0.3f), pt(0.55f, 0.35f)},
        {"OneVertexCarriesBoth", {pt(0.5f, 0.5f)}, pt(0.5f, 0.5f), pt(0.5f, 0.5f)},
    };
    for (const EdgeCase& c : cases) {
        SCOPED_TRACE(c.name);
        setPoints(c.points);
        drawn(*its, 800, 600);
        const auto& texts = recorded().texts;
        ASSERT_EQ(texts.size(), 2u);
        // The label box sits 0.01 right of and 0.01 above its anchor.
        EXPECT_POINT_NEAR(texts[0].position, c.widthAnchor.x + 0.01f, c.widthAnchor.y - 0.01f, 1e-6);
        EXPECT_POINT_NEAR(texts[1].position, c.heightAnchor.x + 0.01f, c.heightAnchor.y - 0.01f, 1e-6);
        EXPECT_EQ(textColors(), (std::vector<std::string>{colourCall(0x285EA6), colourCall(0x285EA6)}));
        EXPECT_GL_STATE_CLEAN();
    }
}

TEST_F(ItsCaliTest, EmptyPolygonDrawsNoLabels)
{
    its->Draw(nullptr, 800, 600, true);
    EXPECT_TRUE(recorded().calls.empty());
}

TEST_F(ItsCaliTest, PolygonFirstThenLabelsInItsStatus)
{
    setPoints({pt(0.2f, 0.2f), pt(0.6f, 0.2f), pt(0.6f, 0.6f), pt(0.2f, 0.6f)});
    its->SetObjStatus(TAVRIN_OBJ_STATUS_HIGHLIGHTED);
    EXPECT_EQ(its->GetObjStatus(), TAVRIN_OBJ_STATUS_HIGHLIGHTED);
    its->Draw(nullptr, 800, 600, true);
    ASSERT_FALSE(recorded().batches.empty());
    EXPECT_EQ(rec::modeName(recorded().batches[0].mode), "GL_LINE_LOOP");
    EXPECT_EQ(recorded().batches[0].color, rec::rgba(0xD90DB0));
    EXPECT_EQ(textColors(), (std::vector<std::string>{colourCall(0xD90DB0), colourCall(0xD90DB0)}));
    // The labels come after every batch of the polygon.
    const std::vector<std::string> seq = recorded().sequence();
    std::size_t lastEnd = 0;
    std::size_t firstRaster = seq.size();
    for (std::size_t i = 0; i < seq.size(); ++i) {
        if (seq[i] == "glEnd()") {
            lastEnd = i;
        }
        if (seq[i].rfind("glRasterPos2f", 0) == 0 && firstRaster == seq.size()) {
            firstRaster = i;
        }
    }
    EXPECT_LT(lastEnd, firstRaster);
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(ItsCaliTest, OpenPolygonIsDrawnEdgeByEdge)
{
    setPoints({pt(0.2f, 0.2f), pt(0.6f, 0.2f), pt(0.6f, 0.6f), pt(0.2f, 0.6f)});
    its->SetClosed(false);
    EXPECT_FALSE(its->GetClosed());
    its->Draw(nullptr, 800, 600, true);
    EXPECT_EQ(batchModes(), (std::vector<GLenum>{GL_LINES, GL_LINES, GL_LINES}));
    EXPECT_EQ(recorded().texts.size(), 2u);
    its->SetClosed(true);
    EXPECT_TRUE(its->GetClosed());
}

TEST_F(ItsCaliTest, TenPointsAreTheLimit)
{
    std::vector<tagTAVRIN_POINT> ten;
    for (int i = 0; i < 10; ++i) {
        ten.push_back(pt(0.05f * i + 0.1f, (i % 2) ? 0.2f : 0.4f));
    }
    setPoints(ten);
    tagTAVRIN_POINT eleven[11] = {};
    EXPECT_FALSE(its->SetPoints(eleven, 11));
    EXPECT_FALSE(its->SetPoints(nullptr, 3));
    tagTAVRIN_POINT inf[3] = {pt(0.1f, 0.1f), pt(0.2f, INFINITY), pt(0.3f, 0.3f)};
    EXPECT_FALSE(its->SetPoints(inf, 3));

    EXPECT_TRUE(samePoints(verticesOf(*its), ten));
    tagTAVRIN_POINT out[10];
    unsigned int count = 0;
    EXPECT_FALSE(its->GetPoints(out, nullptr));
    EXPECT_FALSE(its->GetPoints(nullptr, &count));

    setPoints({pt(0.3f, 0.3f)});
    const tagTAVRIN_POINT o = pt(0.0f, 0.0f);
    EXPECT_TRUE(samePoints(bufferOf(*its, &count), {pt(0.3f, 0.3f), o, o, o, o, o, o, o, o, o}));
    EXPECT_EQ(count, 1u);
}

TEST_F(ItsCaliTest, EditsGoToThePolygon)
{
    setPoints({pt(0.2f, 0.2f), pt(0.6f, 0.2f), pt(0.6f, 0.6f), pt(0.2f, 0.6f)});
    EXPECT_TRUE(hits(*its, pt(0.4f, 0.4f)));
    EXPECT_FALSE(hits(*its, pt(0.7f, 0.4f)));
    EXPECT_EQ(vertexAt(*its, pt(0.61f, 0.6f)), 3u);
    its->SetSelPointIndex(3);
    EXPECT_EQ(its->GetSelPointIndex(), 3u);
    dragVertex(*its, pt(0.5f, 0.5f), pt(0.6f, 0.5f));
    drag(*its, pt(0.5f, 0.5f), pt(0.6f, 0.5f));
    drag(*its, pt(0.5f, 0.5f), pt(0.5f, 1.0f));
    EXPECT_TRUE(nearPoints(verticesOf(*its),
                           {pt(0.3f, 0.2f), pt(0.7f, 0.2f), pt(0.8f, 0.6f), pt(0.3f, 0.6f)}, 1e-6f));
}

TEST_F(ItsCaliTest, EdgeTextsCopyTheStringsOwnLength)
{
    char nineteen[] = "abcdefghijklmnopqrs";
    EXPECT_TRUE(its->SetWidthLabelText(nineteen, 3));
    EXPECT_STREQ(its->m_widthText, "abcdefghijklmnop");
    EXPECT_EQ(its->m_widthText[16], '\0');

    char shortText[] = "12.5m";
    EXPECT_TRUE(its->SetHeightlabelText(nineteen, 19));
    EXPECT_TRUE(its->SetHeightlabelText(shortText, 99));
    EXPECT_EQ(std::memcmp(its->m_heightText, "12.5m\0\0\0\0\0\0\0\0\0\0\0\0", 17), 0);

    EXPECT_FALSE(its->SetWidthLabelText(shortText, 0));
    EXPECT_FALSE(its->SetHeightlabelText(nullptr, 5));
    EXPECT_STREQ(its->m_widthText, "abcdefghijklmnop");
    EXPECT_STREQ(its->m_heightText, "12.5m");

    char empty[] = "";
    EXPECT_TRUE(its->SetWidthLabelText(empty, 1));
    EXPECT_STREQ(its->m_widthText, "");
}

TEST(ItsCaliMinY, FirstOfEqualMinimaAndZeroForNothing)
{
    Owned<ItsCali> its = create<ItsCali>();
    ASSERT_NE(its, nullptr);
    tagTAVRIN_POINT points[4] = {pt(0.1f, 0.5f), pt(0.2f, 0.3f), pt(0.3f, 0.3f), pt(0.4f, 0.29f)};
    EXPECT_EQ(its->GetMinYPoint(points, 4), 3u);
    EXPECT_EQ(its->GetMinYPoint(points, 3), 1u);
    EXPECT_EQ(its->GetMinYPoint(points, 1), 0u);
    EXPECT_EQ(its->GetMinYPoint(points, 0), 0u);
    EXPECT_EQ(its->GetMinYPoint(nullptr, 4), 0u);
}
