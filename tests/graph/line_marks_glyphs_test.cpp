// The "A"/"B" marks of a tripwire with text rendering on: the calls of the marks without
// glyphs, each list call followed by its glyph centred on the mark, in the line's colour.
#include "support/FontSource.h"
#include "support/GlTest.h"

#include <Tavrin/Line.h>
#include <Tavrin/TextRendering.h>

#include <algorithm>
#include <string>

using Tavrin::Line;
using Tavrin::TextRendering;

namespace {

// A tripwire from (0.2, 0.3) to (0.6, 0.5) with a head on the positive side.
Line tripwire(bool traversePlane, tagTAVRIN_OBJ_STATUS status)
{
    tagTAVRIN_POINT points[2] = {pt(0.2f, 0.3f), pt(0.6f, 0.5f)};
    Line line(points, 2);
    line.SetIsTraversePlane(traversePlane);
    line.SetLineType(TAVRIN_LINE_ARROW);
    line.SetArrowDirection(TAVRIN_ARROW_POSITIVE);
    line.SetObjStatus(status);
    return line;
}

// Status, whether the marks are drawn at all, the colour of the line and its marks.
struct MarkCase {
    const char* name;
    bool traversePlane;
    tagTAVRIN_OBJ_STATUS status;
    bool marked;
    unsigned int rgb;
};

void PrintTo(const MarkCase& c, std::ostream* os) { *os << c.name; }

class LineMarkGlyphs : public GlTest, public ::testing::WithParamInterface<MarkCase> {
protected:
    void TearDown() override { TextRendering::SetEnabled(false); }
};

}  // namespace

TEST_P(LineMarkGlyphs, FollowEachListCallAndLeaveTheStateAsWithout)
{
    const MarkCase& c = GetParam();
    tripwire(c.traversePlane, c.status).Draw(nullptr, 1000, 500, true);
    const std::vector<std::string> off = recorded().sequence();
    ASSERT_EQ(std::count(off.begin(), off.end(), "glCallList(list)"), c.marked ? 2 : 0);

    TextRendering::SetEnabled(true);
    rec::gl().reset();
    tripwire(c.traversePlane, c.status).Draw(nullptr, 1000, 500, true);

    std::vector<std::string> expected;
    for (const std::string& call : off) {
        expected.push_back(call);
        if (call == "glCallList(list)") {
            expected.insert(expected.end(), {"glBitmap(0,0,0,0,-3,-4,null)", "glBitmap(64,13,0,3,7,0,bits)",
                                             "glBitmap(0,0,0,0,-4,4,null)"});
        }
    }
    EXPECT_EQ(recorded().sequence(), expected);
    if (c.marked) {
        ASSERT_EQ(recorded().texts.size(), 2u);
        EXPECT_EQ(rec::readBack(recorded().texts[0]), "A");
        EXPECT_EQ(rec::readBack(recorded().texts[1]), "B");
        EXPECT_EQ(recorded().texts[0].color, rec::rgba(c.rgb));
        EXPECT_EQ(recorded().texts[1].color, rec::rgba(c.rgb));
    } else {
        EXPECT_TRUE(recorded().texts.empty());
    }
    EXPECT_GL_STATE_CLEAN();
}

INSTANTIATE_TEST_SUITE_P(
    Lines, LineMarkGlyphs,
    ::testing::Values(MarkCase{"ArrowBarSelected", false, TAVRIN_OBJ_STATUS_SELECTED, true, 0x285ea6},
                      MarkCase{"ArrowBarStatusThree", false, static_cast<tagTAVRIN_OBJ_STATUS>(3), true, 0xd90db0},
                      MarkCase{"ArrowBarNormalHasNoMarks", false, TAVRIN_OBJ_STATUS_NORMAL, false, 0},
                      MarkCase{"TraversePlaneSelected", true, TAVRIN_OBJ_STATUS_SELECTED, true, 0x285ea6},
                      MarkCase{"TraversePlaneHighlightedHasNoMarks", true, TAVRIN_OBJ_STATUS_HIGHLIGHTED,
                               false, 0}),
    [](const ::testing::TestParamInfo<MarkCase>& info) { return std::string(info.param.name); });
