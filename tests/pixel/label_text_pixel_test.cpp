// A Label's text in a real context: invisible by default, drawn in the label's colour
// inside its box once text rendering is on.
#include "PixelTest.h"

#include <Tavrin/Label.h>
#include <Tavrin/TextRendering.h>

using Tavrin::Label;
using Tavrin::TextRendering;

namespace {

// Lit pixels in the rectangle [x0, x1] x [y0, y1] (x right, y down from the top-left).
int litPixels(int x0, int y0, int x1, int y1)
{
    int lit = 0;
    for (int y = y0; y <= y1; ++y) {
        for (int x = x0; x <= x1; ++x) {
            lit += (context().pixel(x, y) & 0xffffff00u) != 0 ? 1 : 0;
        }
    }
    return lit;
}

// "HH" in a box whose corner sits on a pixel centre: (50.5, 19.5) px.
void drawLabel()
{
    tagTAVRIN_POINT a{50.5f / kWidth, 19.5f / kHeight};
    tagTAVRIN_POINT b{150.5f / kWidth, 79.5f / kHeight};
    Label label;
    label.SetDiagonal(a, b);
    char text[] = "HH";
    label.SetText(text);
    label.SetColors(0x00ff00, 0x285ea6, 0xffc000, 0xf47f4c);
    label.SetViewOpaque(true);  // a label fills nothing even so
    label.Draw(nullptr, kWidth, kHeight, true);
}

class LabelTextPixelTest : public PixelTest {
protected:
    void TearDown() override { TextRendering::SetEnabled(false); }
};

}  // namespace

TEST_F(LabelTextPixelTest, OffChangesNoPixel)
{
    drawLabel();
    EXPECT_EQ(litPixels(0, 0, kWidth - 1, kHeight - 1), 0);
}

TEST_F(LabelTextPixelTest, OnDrawsTheTextInTheLabelColourInsideItsBox)
{
    TextRendering::SetEnabled(true);
    drawLabel();
    // Two "H": 2 x (9 + 9 + 3) pixels in the two cells from (52, 22), nothing elsewhere.
    EXPECT_EQ(litPixels(52, 22, 65, 34), 42);
    EXPECT_EQ(litPixels(0, 0, kWidth - 1, kHeight - 1), 42);
    EXPECT_EQ(context().pixel(53, 23) >> 8, 0x00ff00u);
    EXPECT_EQ(context().pixel(60, 31) >> 8, 0x00ff00u);  // second "H", bottom of its stem
}
