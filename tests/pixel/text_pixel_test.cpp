// Glyphs of the built-in font in a real context: right way up, inside the label box,
// centred on a mark, and still drawn when a mark sits on the view's edge.
#include "PixelTest.h"

#include "graph/GlRender.h"

#include <Tavrin/TextRendering.h>

#include <string>
#include <vector>

using Tavrin::TextRendering;
namespace gl = Tavrin::gl;

namespace {

// The pixels of a rectangle (x right, y down from the top-left, ends included) as rows
// of '#' (lit) and '.' (background).
std::vector<std::string> pixels(int x0, int y0, int x1, int y1)
{
    std::vector<std::string> rows;
    for (int y = y0; y <= y1; ++y) {
        std::string row;
        for (int x = x0; x <= x1; ++x) {
            row += (context().pixel(x, y) >> 24) > 128 ? '#' : '.';
        }
        rows.push_back(row);
    }
    return rows;
}

// Text in opaque white, the way a label draws it.
class TextPixelTest : public PixelTest {
protected:
    void SetUp() override
    {
        PixelTest::SetUp();
        TextRendering::SetEnabled(true);
    }
    void TearDown() override { TextRendering::SetEnabled(false); }
};

// A raster position on a pixel centre: x = 50.5 px, 80.5 px above the bottom (19.5 below
// the top), so rounding plays no part.
const tagTAVRIN_POINT kCorner{50.5f / kWidth, 19.5f / kHeight};

}  // namespace

TEST_F(TextPixelTest, LabelGlyphStandsUprightTwoPixelsInsideItsCorner)
{
    {
        gl::RenderScope scope(gl::Smoothing::Polygon, 64, 64);
        gl::setColor(0xffffff, 255);
        gl::drawLabelText(kCorner, "L");
    }
    // The cell's top-left pixel is (52, 22): 2 px right of and below the corner's pixel
    // (50, 20); its first row and column are clear.
    const std::vector<std::string> expected = {
        ".......", ".#.....", ".#.....", ".#.....", ".#.....", ".#.....",
        ".#.....", ".#.....", ".#.....", ".#####.", ".......",
    };
    EXPECT_EQ(pixels(52, 22, 58, 32), expected);
    EXPECT_EQ(pixels(48, 18, 51, 21), std::vector<std::string>(4, "...."));
}

TEST_F(TextPixelTest, MarkIsCentredOnItsPosition)
{
    const tagTAVRIN_POINT a{100.5f / kWidth, 49.5f / kHeight};
    const tagTAVRIN_POINT b{150.5f / kWidth, 49.5f / kHeight};
    {
        gl::RenderScope scope(gl::Smoothing::Line, 64, 64);
        gl::setColor(0xffffff, 255);
        gl::drawSideMarks(a, b);
    }
    // "A" on pixel (100, 49): columns 98 to 102, rows 45 to 53.
    const std::vector<std::string> expected = {
        "...#...", "..#.#..", ".#...#.", ".#...#.", ".#...#.", ".#####.", ".#...#.", ".#...#.", ".#...#.",
    };
    EXPECT_EQ(pixels(97, 45, 103, 53), expected);
    EXPECT_EQ(pixels(147, 45, 153, 53)[0], ".####..");  // "B" beside it
    EXPECT_EQ(pixels(97, 44, 103, 44)[0], ".......");
    EXPECT_EQ(pixels(97, 54, 103, 54)[0], ".......");
}

TEST_F(TextPixelTest, MarkOnTheLeftEdgeKeepsItsVisibleHalf)
{
    const tagTAVRIN_POINT a{0.0f, 49.5f / kHeight};
    const tagTAVRIN_POINT b{150.5f / kWidth, 49.5f / kHeight};
    {
        gl::RenderScope scope(gl::Smoothing::Line, 64, 64);
        gl::setColor(0xffffff, 255);
        gl::drawSideMarks(a, b);
    }
    // The run starts 3 px left of the view; the right half of "A" is still drawn.
    const std::vector<std::string> rows = pixels(0, 45, 2, 53);
    EXPECT_EQ(rows[0], "#..");
    EXPECT_EQ(rows[5], "###");
}

// With the outline on, the glyph keeps its colour and every pixel around its ink that
// the ink does not cover turns black; with it off, the background stays.
TEST_F(TextPixelTest, OutlineRingsEachGlyphInBlack)
{
    // Lit: above half grey in the top byte; '#' white ink, 'o' black outline, '.' grey.
    const auto look = [](int x0, int y0, int x1, int y1) {
        std::vector<std::string> rows;
        for (int y = y0; y <= y1; ++y) {
            std::string row;
            for (int x = x0; x <= x1; ++x) {
                const std::uint32_t top = context().pixel(x, y) >> 24;
                row += top > 200 ? '#' : (top < 60 ? 'o' : '.');
            }
            rows.push_back(row);
        }
        return rows;
    };
    for (const bool outline : {false, true}) {
        context().clear(0.5f, 0.5f, 0.5f);
        TextRendering::SetOutline(outline);
        {
            gl::RenderScope scope(gl::Smoothing::Polygon, 64, 64);
            gl::setColor(0xffffff, 255);
            gl::drawLabelText(kCorner, "L");
        }
        TextRendering::SetOutline(false);
        // The "L" of the first test, one pixel of margin around its cell.
        const std::vector<std::string> withOutline = {
            "ooo......", "o#o......", "o#o......", "o#o......", "o#o......", "o#o......",
            "o#o......", "o#o......", "o#ooooo..", "o#####o..", "ooooooo..",
        };
        const std::vector<std::string> plain = {
            ".........", ".#.......", ".#.......", ".#.......", ".#.......", ".#.......",
            ".#.......", ".#.......", ".#.......", ".#####...", ".........",
        };
        EXPECT_EQ(look(52, 22, 60, 32), outline ? withOutline : plain) << "outline " << outline;
    }
}
