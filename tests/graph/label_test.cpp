#include "support/GlTest.h"
#include "support/PolygonBuilders.h"

#include <Tavrin/Label.h>

#include <string>

using Tavrin::Label;

namespace {

const std::vector<std::string> kPolySmooth = {"GL_POLYGON_SMOOTH", "GL_LINE_SMOOTH"};

std::vector<std::string> labelCalls(const std::string& color, const std::string& raster)
{
    return concat({enterCalls(kPolySmooth),
                   {color, raster, "glGenLists(1)", "glDeleteLists(list,1)"},
                   leaveCalls(kPolySmooth)});
}

Label boxAt(float x, float y)
{
    Points corners = {pt(x, y), pt(x + 0.08f, y), pt(x + 0.08f, y + 0.04f), pt(x, y + 0.04f)};
    return Label(corners.data(), 4);
}

}  // namespace

TEST(LabelText, AcceptsUpTo127Bytes)
{
    Label label;
    std::string text(127, 'a');
    EXPECT_TRUE(label.SetText(&text[0]));
    std::string tooLong(128, 'b');
    EXPECT_FALSE(label.SetText(&tooLong[0]));
    EXPECT_FALSE(label.SetText(nullptr));
    std::string empty;
    EXPECT_TRUE(label.SetText(&empty[0]));
}

TEST(LabelText, UnterminatedBufferIsReadNoFurtherThanTheLimit)
{
    Label label;
    // 128 bytes with no terminator inside them; the byte after is never looked at.
    char buffer[128];
    for (char& c : buffer) {
        c = 'x';
    }
    EXPECT_FALSE(label.SetText(buffer));
}

TEST(LabelStorage, IsARectangleForVerticesAndEditing)
{
    Label label = boxAt(0.3f, 0.4f);
    EXPECT_EQ(verticesOf(label).size(), 4u);
    Points five(5, pt(0.1f, 0.1f));
    EXPECT_FALSE(label.SetPoints(five.data(), 5));
    label.SetSelPointIndex(3);
    dragVertex(label, pt(0.0f, 0.0f), pt(0.1f, 0.0f));  // the rectangle's corner drag
    EXPECT_FLOAT_EQ(verticesOf(label)[1].x, 0.3f + 0.08f + 0.1f);
}

class LabelDraw : public GlTest {};

TEST_F(LabelDraw, PositionsTheTextAtTheFirstCornerAndDrawsNoShape)
{
    Label label = boxAt(0.25f, 0.5f);
    std::string text = "Zone A";
    ASSERT_TRUE(label.SetText(&text[0]));
    label.SetViewOpaque(true);
    label.Draw(nullptr, 640, 480, false);

    EXPECT_EQ(recorded().calls, labelCalls("glColor4ub(217,13,176,255)", "glRasterPos2f(0.5,1)"));
    EXPECT_TRUE(recorded().batches.empty());
    ASSERT_EQ(recorded().texts.size(), 1u);
    EXPECT_POINT_NEAR(recorded().texts[0].position, 0.25f, 0.5f, 1e-6);
    EXPECT_EQ(recorded().texts[0].listCalls, 0);
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(LabelDraw, SelectedOrHighlightedUsesTheSecondColourAndNoHandles)
{
    for (auto status : {TAVRIN_OBJ_STATUS_SELECTED, TAVRIN_OBJ_STATUS_HIGHLIGHTED}) {
        rec::gl().reset();
        Label label = boxAt(0.5f, 0.75f);
        label.SetColors(0x102030, 0x405060, 0xffc000, 0xf47f4c);
        label.SetObjStatus(status);
        label.SetSelPointIndex(1);
        label.Draw(nullptr, 640, 480, true);
        EXPECT_EQ(recorded().calls, labelCalls("glColor4ub(64,80,96,255)", "glRasterPos2f(1,0.5)"));
        EXPECT_GL_STATE_CLEAN();
    }
}

TEST_F(LabelDraw, WithoutVerticesTheTextSitsAtTheOrigin)
{
    Label label;
    label.Draw(nullptr, 0, 0, true);
    EXPECT_EQ(recorded().calls, labelCalls("glColor4ub(217,13,176,255)", "glRasterPos2f(0,2)"));
    EXPECT_GL_STATE_CLEAN();
}
