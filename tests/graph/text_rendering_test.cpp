// Text: the switch, the calls of the two text helpers with it off and on, the placement
// of the glyphs, the placeholder and the font read back against its source.
#include "support/FontSource.h"
#include "support/GlTest.h"

#include "graph/BitmapText.h"
#include "graph/GlRender.h"

#include <Tavrin/TextRendering.h>

#include <algorithm>
#include <atomic>
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

/// Where a glyph's ink lies, in pixels from the raster position the run started at:
/// columns [left, right), rows [bottom, top) counted upwards.
struct InkBox {
    int left = 1000;
    int right = -1000;
    int bottom = 1000;
    int top = -1000;
};

InkBox inkOf(const rec::Bitmap& b)
{
    InkBox box;
    const int height = static_cast<int>(b.rows.size());
    for (int r = 0; r < height; ++r) {
        const std::string& row = b.rows[static_cast<std::size_t>(r)];
        for (int c = 0; c < static_cast<int>(row.size()); ++c) {
            if (row[static_cast<std::size_t>(c)] == '#') {
                const int x = static_cast<int>(b.atX - b.xorig) + c;
                const int y = static_cast<int>(b.atY - b.yorig) + (height - 1 - r);
                box.left = std::min(box.left, x);
                box.right = std::max(box.right, x + 1);
                box.bottom = std::min(box.bottom, y);
                box.top = std::max(box.top, y + 1);
            }
        }
    }
    return box;
}

class TextTest : public GlTest {
protected:
    void TearDown() override { TextRendering::SetEnabled(false); }
};

}  // namespace

TEST_F(TextTest, SwitchIsOffUntilAskedAndFollowsEveryChange)
{
    EXPECT_FALSE(TextRendering::IsEnabled());
    TextRendering::SetEnabled(true);
    EXPECT_TRUE(TextRendering::IsEnabled());
    TextRendering::SetEnabled(true);
    EXPECT_TRUE(TextRendering::IsEnabled());
    TextRendering::SetEnabled(false);
    EXPECT_FALSE(TextRendering::IsEnabled());
}

TEST_F(TextTest, OffLabelTextOnlyPositionsAndReservesWhateverTheText)
{
    char longText[200];
    std::fill(std::begin(longText), std::end(longText), 'x');
    for (const char* text : {"Zone 1", "", static_cast<const char*>(nullptr), "\x01\xff",
                             static_cast<const char*>(longText)}) {
        rec::gl().reset();
        gl::drawLabelText(kCorner, text);
        EXPECT_EQ(recorded().sequence(), kLabelCalls);
        EXPECT_GL_STATE_CLEAN();
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

TEST_F(TextTest, OnLabelTextStartsInsideTheBoxBelowRightOfItsCorner)
{
    TextRendering::SetEnabled(true);
    gl::drawLabelText(kCorner, "Tg");
    const std::vector<rec::Bitmap> glyphs = recorded().texts.at(0).glyphs();
    ASSERT_EQ(glyphs.size(), 2u);
    // The first cell's top-left lies 2 px right of and 2 px below the corner; the cells
    // follow one another at the advance.
    EXPECT_EQ(glyphs[0].atX - glyphs[0].xorig, 2.0f);
    EXPECT_EQ(glyphs[0].atY - glyphs[0].yorig + glyphs[0].height, -2.0f);
    EXPECT_EQ(glyphs[1].atX, 9.0f);
    const InkBox t = inkOf(glyphs[0]);
    EXPECT_EQ(t.left, 3);
    EXPECT_EQ(t.top, -3);     // capitals start one row into the cell
    EXPECT_EQ(t.bottom, -12);  // and stand on the baseline
    EXPECT_EQ(inkOf(glyphs[1]).bottom, -14);  // a descender goes below it
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
    // 5 columns and 9 rows of ink around the mark's pixel: two columns either side, four
    // rows below and four above.
    for (const rec::RasterText& mark : recorded().texts) {
        const InkBox box = inkOf(mark.glyphs().at(0));
        EXPECT_EQ(box.left, -2);
        EXPECT_EQ(box.right, 3);
        EXPECT_EQ(box.bottom, -4);
        EXPECT_EQ(box.top, 5);
    }
    EXPECT_GL_STATE_CLEAN();
}

TEST_F(TextTest, OnEmptyOrNullLabelTextAddsNoCall)
{
    TextRendering::SetEnabled(true);
    for (const char* text : {"", static_cast<const char*>(nullptr)}) {
        rec::gl().reset();
        gl::drawLabelText(kCorner, text);
        EXPECT_EQ(recorded().sequence(), kLabelCalls);
        EXPECT_GL_STATE_CLEAN();
    }
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

// The first move of a run: placement, glyph count, expected move.
struct StartCase {
    const char* name;
    gl::TextPlacement placement;
    std::size_t count;
    int dx;
    int dy;
};

void PrintTo(const StartCase& c, std::ostream* os) { *os << c.name; }

class RunStart : public ::testing::TestWithParam<StartCase> {};

TEST_P(RunStart, MovesToTheFirstBaseline)
{
    const gl::RasterMove m = gl::runStart(GetParam().placement, GetParam().count);
    EXPECT_EQ(m.dx, GetParam().dx);
    EXPECT_EQ(m.dy, GetParam().dy);
}

INSTANTIATE_TEST_SUITE_P(
    Placements, RunStart,
    ::testing::Values(StartCase{"BoxOne", gl::TextPlacement::InsideBox, 1, 2, -12},
                      StartCase{"BoxMany", gl::TextPlacement::InsideBox, 127, 2, -12},
                      StartCase{"CentredOne", gl::TextPlacement::Centred, 1, -3, -4},
                      StartCase{"CentredTwo", gl::TextPlacement::Centred, 2, -7, -4},
                      StartCase{"CentredHugeIsCut", gl::TextPlacement::Centred, static_cast<std::size_t>(-1),
                                -static_cast<int>(gl::kMaxRunBytes) * 7 / 2, -4}),
    [](const ::testing::TestParamInfo<StartCase>& info) { return std::string(info.param.name); });

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
    for (int i = 0; i < 2000; ++i) {
        rec::gl().reset();
        gl::drawLabelText(kCorner, "abc");
        const std::size_t glyphs = recorded().texts.at(0).glyphs().size();
        ASSERT_TRUE(glyphs == 0 || glyphs == 3) << glyphs;
        ASSERT_TRUE(recorded().stateIsClean()) << recorded().stateReport();
    }
    stop = true;
    toggler.join();
}
