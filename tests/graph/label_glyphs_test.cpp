// A Label's text with text rendering on: the calls of label_test's draws, and the glyphs
// between the display list's reservation and release in the label's colour.
#include "support/FontSource.h"
#include "support/GlTest.h"

#include <Tavrin/Label.h>
#include <Tavrin/TextRendering.h>

#include <string>

using Tavrin::Label;
using Tavrin::TextRendering;

namespace {

const std::vector<std::string> kPolySmooth = {"GL_POLYGON_SMOOTH", "GL_LINE_SMOOTH"};

// A label box from (0.3, 0.4) to (0.5, 0.6) reading "Zone 1", in the given status.
Label zoneLabel(tagTAVRIN_OBJ_STATUS status)
{
    tagTAVRIN_POINT a = pt(0.3f, 0.4f);
    tagTAVRIN_POINT b = pt(0.5f, 0.6f);
    Label label;
    label.SetDiagonal(a, b);
    char text[] = "Zone 1";
    label.SetText(text);
    label.SetObjStatus(status);
    return label;
}

std::vector<std::string> labelCalls(const std::string& color, const std::vector<std::string>& glyphs)
{
    return concat({enterCalls(kPolySmooth), {color, "glRasterPos2f(0.6,1.2)", "glGenLists(1)"}, glyphs,
                   {"glDeleteLists(list,1)"}, leaveCalls(kPolySmooth)});
}

// Status, the colour of its text.
struct StatusCase {
    const char* name;
    tagTAVRIN_OBJ_STATUS status;
    unsigned int rgb;
};

void PrintTo(const StatusCase& c, std::ostream* os) { *os << c.name; }

class LabelGlyphs : public GlTest, public ::testing::WithParamInterface<StatusCase> {
protected:
    void TearDown() override { TextRendering::SetEnabled(false); }
};

}  // namespace

TEST_P(LabelGlyphs, OnDrawsTheTextInsideTheBoxInTheLabelColour)
{
    TextRendering::SetEnabled(true);
    Label label = zoneLabel(GetParam().status);
    label.Draw(nullptr, 640, 480, true);
    const std::vector<std::string> glyphs = concat({{"glBitmap(0,0,0,0,2,-12,null)"},
                                                    std::vector<std::string>(6, "glBitmap(64,13,0,3,7,0,bits)"),
                                                    {"glBitmap(0,0,0,0,-44,12,null)"}});
    EXPECT_EQ(recorded().sequence(), labelCalls(colourCall(GetParam().rgb), glyphs));
    ASSERT_EQ(recorded().texts.size(), 1u);
    EXPECT_EQ(rec::readBack(recorded().texts[0]), "Zone 1");
    EXPECT_EQ(recorded().texts[0].color, rec::rgba(GetParam().rgb));
    EXPECT_GL_STATE_CLEAN();
}

INSTANTIATE_TEST_SUITE_P(Statuses, LabelGlyphs,
                         ::testing::Values(StatusCase{"Normal", TAVRIN_OBJ_STATUS_NORMAL, 0xd90db0},
                                           StatusCase{"Selected", TAVRIN_OBJ_STATUS_SELECTED, 0x285ea6},
                                           StatusCase{"Highlighted", TAVRIN_OBJ_STATUS_HIGHLIGHTED, 0x285ea6}),
                         [](const ::testing::TestParamInfo<StatusCase>& info) { return std::string(info.param.name); });
