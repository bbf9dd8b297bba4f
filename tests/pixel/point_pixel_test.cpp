#include "PixelTest.h"

#include <Tavrin/Circle.h>
#include <Tavrin/Point.h>

using Tavrin::Circle;
using Tavrin::Point;

TEST_F(PixelTest, DotIsDrawnInItsStatusColour)
{
    tagTAVRIN_POINT at{0.5f, 0.5f};
    Point p(&at);
    p.SetObjStatus(TAVRIN_OBJ_STATUS_HIGHLIGHTED);
    p.Draw(nullptr, kWidth, kHeight, true);
    EXPECT_TRUE(PixelIs(0.5f, 0.5f, Rgb{0x28, 0x5e, 0xa6}, 12));
    EXPECT_TRUE(PixelIs(0.1f, 0.1f, Rgb{0, 0, 0}));
}

TEST_F(PixelTest, CircleDiscBlendsAtAlpha200)
{
    context().clear(1.0f, 1.0f, 1.0f);
    tagTAVRIN_POINT at{0.5f, 0.5f};
    Circle c(&at, 1);
    c.SetWndSize(kWidth, kHeight);
    c.SetRadius(60);  // drawn with half that radius on screen: 30 px
    c.SetColors(0x0000ff, 0x0000ff, 0x0000ff, 0x0000ff);
    c.Draw(nullptr, kWidth, kHeight, true);
    // 20 px right of the centre: inside the disc, outside the 8-pixel centre dot.
    // Blue at alpha 200 over white: 255 * 55 / 255 = 55 in red and green.
    EXPECT_TRUE(PixelIs(0.6f, 0.5f, Rgb{55, 55, 255}, 4));
    // 40 px right of the centre: outside the disc.
    EXPECT_TRUE(PixelIs(0.7f, 0.5f, Rgb{255, 255, 255}));
}
