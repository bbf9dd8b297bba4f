// Text: the switch, the calls of the two text helpers with it off and on, the placement
// of the glyphs, the placeholder and the font read back against its source.
#include "support/FontSource.h"
#include "support/GlTest.h"

#include "graph/GlRender.h"

#include <Tavrin/Label.h>
#include <Tavrin/Line.h>
#include <Tavrin/TextRendering.h>

#include <algorithm>
#include <atomic>
#include <iterator>
#include <string>
#include <thread>

using Tavrin::Label;
using Tavrin::Line;
using Tavrin::TextRendering;
namespace gl = Tavrin::gl;

namespace {

// A glyph of the font: 64-pixel-wide rows of 8 bytes, baseline 3 rows up, 7 px advance.
const char* const kGlyph = "glBitmap(64,13,0,3,7,0,bits)";

std::string move(int dx, int dy)
{
    return "glBitmap(0,0,0,0," + std::to_string(dx) + "," + std::to_string(dy) + ",null)";
}

std::vector<std::string> repeat(const std::string& call, std::size_t n)
{
    return std::vector<std::string>(n, call);
}

// The calls of a label at (0.2, 0.4) and of marks at (0.25, 0.5) and (0.75, 0.5).
const std::vector<std::string> kLabelCalls = {"glRasterPos2f(0.4,1.2)", "glGenLists(1)",
                                              "glDeleteLists(list,1)"};
const tagTAVRIN_POINT kCorner{0.2f, 0.4f};
const tagTAVRIN_POINT kMarkA{0.25f, 0.5f};
const tagTAVRIN_POINT kMarkB{0.75f, 0.5f};

class TextTest : public GlTest {
protected:
    void TearDown() override { TextRendering::SetEnabled(false); }
};

}  // namespace

TEST_F(TextTest, LabelTextOffOrEmptyOnlyPositionsAndReserves)
{
    char longText[200];
    std::fill(std::begin(longText), std::end(longText), 'x');
    const char* const texts[] = {"Zone 1", "\x01\xff", longText, "", nullptr};
    EXPECT_FALSE(TextRendering::IsEnabled());  // off until asked
    for (std::size_t i = 0; i < std::size(texts); ++i) {
        for (bool on : {false, true}) {
            if (on && i < 3) {
                continue;  // visible text: below
            }
            TextRendering::SetEnabled(on);
            EXPECT_EQ(TextRendering::IsEnabled(), on);
            rec::gl().reset();
            gl::drawLabelText(kCorner, texts[i]);
            EXPECT_EQ(recorded().sequence(), kLabelCalls) << "text " << i << (on ? " on" : " off");
            EXPECT_GL_STATE_CLEAN();
        }
    }
}

TEST_F(TextTest, OffSideMarksCallTheEmptyListOncePerMark)
{
    gl::drawSideMarks(kMarkA, kMarkB);
    EXPECT_EQ(recorded().sequence(),
              (std::vector<std::string>{"glGenLists(1)", "glRasterPos2f(0.5,1)", "glCallList(list)",
                                        "glRasterPos2f(1.5,1)", "glCallList(list)", "glDeleteLists(list,1)"}));
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(TextTest, OnLabelGlyphsComeBetweenReservationAndReleaseAndTheRasterReturns)
{
    TextRendering::SetEnabled(true);
    gl::drawLabelText(kCorner, "Hi!");
    EXPECT_EQ(recorded().sequence(),
              concat({{kLabelCalls[0], kLabelCalls[1]}, {move(2, -12)}, repeat(kGlyph, 3),
                      {move(-2 - 3 * 7, 12)}, {kLabelCalls[2]}}));
    ASSERT_EQ(recorded().texts.size(), 1u);
    EXPECT_EQ(rec::readBack(recorded().texts[0]), "Hi!");
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(TextTest, OnMarksAreCentredOnTheirPositions)
{
    TextRendering::SetEnabled(true);
    gl::drawSideMarks(kMarkA, kMarkB);
    const std::vector<std::string> markGlyph = {move(-3, -4), kGlyph, move(-4, 4)};
    EXPECT_EQ(recorded().sequence(),
              concat({{"glGenLists(1)", "glRasterPos2f(0.5,1)", "glCallList(list)"}, markGlyph,
                      {"glRasterPos2f(1.5,1)", "glCallList(list)"}, markGlyph, {"glDeleteLists(list,1)"}}));
    ASSERT_EQ(recorded().texts.size(), 2u);
    EXPECT_EQ(rec::readBack(recorded().texts[0]), "A");
    EXPECT_EQ(rec::readBack(recorded().texts[1]), "B");
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(TextTest, OnLabelTextIsReadNoFurtherThanTheLabelBuffer)
{
    TextRendering::SetEnabled(true);
    char unterminated[200];
    std::fill(std::begin(unterminated), std::end(unterminated), 'x');
    gl::drawLabelText(kCorner, unterminated);
    EXPECT_EQ(rec::readBack(recorded().texts.at(0)), std::string(gl::kLabelTextCapacity, 'x'));
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(TextTest, EveryPrintableCharacterReadsBackAsDrawnInTheFontSource)
{
    ASSERT_EQ(rec::fontSource().glyphs.size(), 95u) << "cannot read " << TAVRIN_FONT_SOURCE;
    std::string all;
    for (int c = 0x20; c <= 0x7e; ++c) {
        all += static_cast<char>(c);
    }
    TextRendering::SetEnabled(true);
    gl::drawLabelText(kCorner, all.c_str());
    EXPECT_EQ(rec::readBack(recorded().texts.at(0)), all);
}

TEST_F(TextTest, EachByteDrawsItsGlyphOrThePlaceholder)
{
    TextRendering::SetEnabled(true);
    const char p = rec::kPlaceholderRead;
    const std::pair<unsigned char, char> bytes[] = {{0x20, ' '}, {0x7e, '~'}, {'7', '7'}, {'\\', '\\'},
                                                    {0x01, p},   {'\t', p},   {'\n', p},  {0x1f, p},
                                                    {0x7f, p},   {0x80, p},   {0xc3, p},  {0xff, p}};
    for (const auto& byte : bytes) {
        rec::gl().reset();
        const char text[2] = {static_cast<char>(byte.first), '\0'};
        gl::drawLabelText(kCorner, text);
        EXPECT_EQ(rec::readBack(recorded().texts.at(0)), std::string(1, byte.second)) << int(byte.first);
        EXPECT_GL_STATE_CLEAN();
    }
}

TEST_F(TextTest, UnderAnyHostAlignmentReadsTheSameGlyphsAndTouchesNoPixelStore)
{
    TextRendering::SetEnabled(true);
    for (int alignment : {1, 2, 4, 8}) {
        rec::gl().reset();
        glPixelStorei(GL_UNPACK_ALIGNMENT, alignment);  // as a host may leave it
        gl::drawLabelText(kCorner, "Ag");
        EXPECT_EQ(rec::readBack(recorded().texts.at(0)), "Ag");
        const std::vector<std::string> names = recorded().names();
        EXPECT_EQ(std::count(names.begin(), names.end(), "glPixelStorei"), 1);
        EXPECT_EQ(recorded().unpackAlignment, alignment);
    }
}

// A Label's text: the calls of a draw without text, with the glyphs between the display
// list's reservation and release, in the label's colour for its status.
TEST_F(TextTest, LabelDrawsItsTextInsideTheBoxInTheLabelColour)
{
    const std::vector<std::string> polySmooth = {"GL_POLYGON_SMOOTH", "GL_LINE_SMOOTH"};
    const std::vector<std::string> glyphs = concat(
        {{move(2, -12)}, repeat(kGlyph, 6), {move(-44, 12)}});
    TextRendering::SetEnabled(true);
    const std::pair<tagTAVRIN_OBJ_STATUS, unsigned int> looks[] = {
        {TAVRIN_OBJ_STATUS_NORMAL, 0xd90db0}, {TAVRIN_OBJ_STATUS_SELECTED, 0x285ea6},
        {TAVRIN_OBJ_STATUS_HIGHLIGHTED, 0x285ea6}};
    for (const auto& look : looks) {
        Label label;
        setDiagonal(label, pt(0.3f, 0.4f), pt(0.5f, 0.6f));
        char text[] = "Zone 1";
        label.SetText(text);
        label.SetObjStatus(look.first);
        drawn(label, 640, 480);
        EXPECT_EQ(recorded().sequence(),
                  concat({enterCalls(polySmooth), {colourCall(look.second), "glRasterPos2f(0.6,1.2)", "glGenLists(1)"},
                          glyphs, {"glDeleteLists(list,1)"}, leaveCalls(polySmooth)}));
        ASSERT_EQ(recorded().texts.size(), 1u);
        EXPECT_EQ(rec::readBack(recorded().texts[0]), "Zone 1");
        EXPECT_EQ(recorded().texts[0].color, rec::rgba(look.second));
        EXPECT_GL_STATE_CLEAN();
    }
}

// A tripwire's "A"/"B" marks: the calls without text, each list call followed by its glyph
// centred on the mark, in the line's colour.
TEST_F(TextTest, TripwireMarksFollowEachListCallInTheLinesColour)
{
    const struct {
        bool traversePlane;
        tagTAVRIN_OBJ_STATUS status;
        unsigned int rgb;  // 0: no marks in this look
    } looks[] = {{false, TAVRIN_OBJ_STATUS_SELECTED, 0x285ea6},
                 {false, static_cast<tagTAVRIN_OBJ_STATUS>(3), 0xd90db0},
                 {false, TAVRIN_OBJ_STATUS_NORMAL, 0},
                 {true, TAVRIN_OBJ_STATUS_SELECTED, 0x285ea6},
                 {true, TAVRIN_OBJ_STATUS_HIGHLIGHTED, 0}};
    for (const auto& look : looks) {
        SCOPED_TRACE(::testing::Message() << "plane " << look.traversePlane << " status " << look.status);
        tagTAVRIN_POINT points[2] = {pt(0.2f, 0.3f), pt(0.6f, 0.5f)};
        Line line(points, 2);
        line.SetIsTraversePlane(look.traversePlane);
        line.SetLineType(TAVRIN_LINE_ARROW);
        line.SetArrowDirection(TAVRIN_ARROW_POSITIVE);
        line.SetObjStatus(look.status);
        TextRendering::SetEnabled(false);
        const std::vector<std::string> off = drawn(line, 1000, 500).sequence();
        ASSERT_EQ(std::count(off.begin(), off.end(), "glCallList(list)"), look.rgb != 0 ? 2 : 0);
        std::vector<std::string> expected;
        for (const std::string& call : off) {
            expected.push_back(call);
            if (call == "glCallList(list)") {
                expected.insert(expected.end(), {move(-3, -4), kGlyph, move(-4, 4)});
            }
        }
        TextRendering::SetEnabled(true);
        EXPECT_EQ(drawn(line, 1000, 500).sequence(), expected);
        ASSERT_EQ(recorded().texts.size(), look.rgb != 0 ? 2u : 0u);
        for (std::size_t i = 0; i < recorded().texts.size(); ++i) {
            EXPECT_EQ(rec::readBack(recorded().texts[i]), i == 0 ? "A" : "B");
            EXPECT_EQ(recorded().texts[i].color, rec::rgba(look.rgb));
        }
        EXPECT_GL_STATE_CLEAN();
    }
}

TEST_F(TextTest, AToggleFromAnotherThreadNeverSplitsADraw)
{
    std::atomic<bool> stop{false};
    std::thread toggler([&stop] {
        bool on = false;
        while (!stop.load()) {
            on = !on;
            TextRendering::SetEnabled(on);
        }
    });
    int split = 0;
    for (int i = 0; i < 2000; ++i) {
        rec::gl().reset();
        gl::drawLabelText(kCorner, "abc");
        const std::size_t glyphs = recorded().texts.at(0).glyphs().size();
        if ((glyphs != 0 && glyphs != 3) || !recorded().stateIsClean()) {
            ++split;
        }
    }
    stop = true;
    toggler.join();
    EXPECT_EQ(split, 0);
}
