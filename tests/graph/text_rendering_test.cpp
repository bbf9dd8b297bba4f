// Text: the switch, the calls of the two text helpers with it off and on, the placement
// of the glyphs, the placeholder and the font read back against its source.
#include "support/FontSource.h"
#include "support/GlTest.h"

#include "graph/GlRender.h"

#include <Tavrin/TextRendering.h>

#include <algorithm>
#include <atomic>
#include <iterator>
#include <ostream>
#include <string>
#include <thread>

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

// A byte drawn alone and what it reads back as.
struct ByteCase {
    const char* name;
    unsigned char byte;
    char reads;
};

void PrintTo(const ByteCase& c, std::ostream* os) { *os << c.name; }

class TextByte : public TextTest, public ::testing::WithParamInterface<ByteCase> {};

TEST_P(TextByte, DrawsItsGlyphOrThePlaceholder)
{
    TextRendering::SetEnabled(true);
    const char text[2] = {static_cast<char>(GetParam().byte), '\0'};
    gl::drawLabelText(kCorner, text);
    EXPECT_EQ(rec::readBack(recorded().texts.at(0)), std::string(1, GetParam().reads));
    EXPECT_GL_STATE_CLEAN();
}

INSTANTIATE_TEST_SUITE_P(
    Bytes, TextByte,
    ::testing::Values(ByteCase{"Space", 0x20, ' '}, ByteCase{"Tilde", 0x7e, '~'}, ByteCase{"Digit", '7', '7'},
                      ByteCase{"Backslash", '\\', '\\'}, ByteCase{"StartOfHeading", 0x01, rec::kPlaceholderRead},
                      ByteCase{"Tab", '\t', rec::kPlaceholderRead}, ByteCase{"Newline", '\n', rec::kPlaceholderRead},
                      ByteCase{"UnitSeparator", 0x1f, rec::kPlaceholderRead},
                      ByteCase{"Delete", 0x7f, rec::kPlaceholderRead}, ByteCase{"High", 0x80, rec::kPlaceholderRead},
                      ByteCase{"Utf8Lead", 0xc3, rec::kPlaceholderRead}, ByteCase{"AllOnes", 0xff, rec::kPlaceholderRead}),
    [](const ::testing::TestParamInfo<ByteCase>& info) { return std::string(info.param.name); });

class TextUnderHostAlignment : public TextTest, public ::testing::WithParamInterface<int> {};

TEST_P(TextUnderHostAlignment, ReadsTheSameGlyphsAndTouchesNoPixelStore)
{
    glPixelStorei(GL_UNPACK_ALIGNMENT, GetParam());  // as a host may leave it
    TextRendering::SetEnabled(true);
    gl::drawLabelText(kCorner, "Ag");
    EXPECT_EQ(rec::readBack(recorded().texts.at(0)), "Ag");
    const std::vector<std::string> names = recorded().names();
    EXPECT_EQ(std::count(names.begin(), names.end(), "glPixelStorei"), 1);
    EXPECT_EQ(recorded().unpackAlignment, GetParam());
}

INSTANTIATE_TEST_SUITE_P(EveryLegalAlignment, TextUnderHostAlignment, ::testing::Values(1, 2, 4, 8),
                         [](const ::testing::TestParamInfo<int>& info) {
                             return "Alignment" + std::to_string(info.param);
                         });

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
