// Text: the font read back against its source, the placeholder, the label buffer's
// bound, the host's unpack alignment and a switch flipped from another thread. The calls
// each figure makes for its text are in the transcripts.
#include "support/FontSource.h"
#include "support/GlTest.h"

#include "graph/GlRender.h"

#include <Tavrin/TextRendering.h>

#include <algorithm>
#include <atomic>
#include <iterator>
#include <string>
#include <thread>

using Tavrin::TextRendering;
namespace gl = Tavrin::gl;

namespace {

// Text is drawn at (0.2, 0.4).
const tagTAVRIN_POINT kCorner{0.2f, 0.4f};

class TextTest : public GlTest {
protected:
    void TearDown() override { TextRendering::SetEnabled(false); }
};

}  // namespace

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
