#include "PixelTest.h"

#include <Tavrin/EnterRegion.h>
#include <Tavrin/Label.h>
#include <Tavrin/Polygon.h>
#include <Tavrin/ShieldRegion.h>

#include <vector>

using Tavrin::Label;
using Tavrin::Polygon;

namespace {

// A colour at alpha 40 over black.
Rgb translucent(int r, int g, int b) { return Rgb{r * 40 / 255, g * 40 / 255, b * 40 / 255}; }

Polygon polygonOf(std::vector<tagTAVRIN_POINT> points)
{
    return Polygon(points.data(), static_cast<unsigned int>(points.size()));
}

}  // namespace

TEST_F(PixelTest, TranslucentFillCoversAConcaveShapeButNotItsNotch)
{
    // An L: bar along the top, leg down the left.
    Polygon p = polygonOf({{0.6f, 0.4f}, {0.3f, 0.4f}, {0.3f, 0.9f},
                           {0.1f, 0.9f}, {0.1f, 0.1f}, {0.6f, 0.1f}});
    p.Draw(nullptr, kWidth, kHeight, true);
    const Rgb fill = translucent(0xd9, 0x0d, 0xb0);
    EXPECT_TRUE(PixelIs(0.5f, 0.2f, fill, 2));   // the bar
    EXPECT_TRUE(PixelIs(0.25f, 0.8f, fill, 2));  // the leg
    EXPECT_TRUE(PixelIs(0.45f, 0.7f, Rgb{0, 0, 0}));  // the notch
    EXPECT_TRUE(PixelIs(0.1f, 0.5f, Rgb{0xd9, 0x0d, 0xb0}, 40));  // the outline, opaque
}

TEST_F(PixelTest, SelfCrossingPolygonIsNotFilled)
{
    Polygon p = polygonOf({{0.1f, 0.1f}, {0.9f, 0.9f}, {0.9f, 0.1f}, {0.1f, 0.9f}});
    p.SetViewOpaque(true);
    p.Draw(nullptr, kWidth, kHeight, true);
    EXPECT_TRUE(PixelIs(0.25f, 0.5f, Rgb{0, 0, 0}));  // inside the left lobe
    EXPECT_TRUE(PixelIs(0.75f, 0.5f, Rgb{0, 0, 0}));  // inside the right lobe
}

TEST_F(PixelTest, OpaqueFillIsTheFullColour)
{
    Polygon p = polygonOf({{0.2f, 0.2f}, {0.8f, 0.2f}, {0.8f, 0.8f}, {0.2f, 0.8f}});
    p.SetViewOpaque(true);
    p.SetColors(0x00ff00, 0x0000ff, 0xffc000, 0xf47f4c);
    p.Draw(nullptr, kWidth, kHeight, true);
    EXPECT_TRUE(PixelIs(0.6f, 0.35f, Rgb{0, 255, 0}));
    EXPECT_TRUE(PixelIs(0.9f, 0.5f, Rgb{0, 0, 0}));
}

TEST_F(PixelTest, LabelChangesNoPixel)
{
    std::vector<tagTAVRIN_POINT> box = {{0.2f, 0.2f}, {0.8f, 0.2f}, {0.8f, 0.8f}, {0.2f, 0.8f}};
    Label label(box.data(), 4);
    char text[] = "Entrance";
    label.SetText(text);
    label.SetViewOpaque(true);
    label.Draw(nullptr, kWidth, kHeight, true);
    for (int y = 0; y < kHeight; y += 5) {
        for (int x = 0; x < kWidth; x += 5) {
            EXPECT_EQ(context().pixel(x, y) >> 8, 0u) << x << "," << y;
        }
    }
}

TEST_F(PixelTest, ShieldRegionIsFilledAndEnterRegionIsNot)
{
    std::vector<tagTAVRIN_POINT> square = {{0.2f, 0.2f}, {0.8f, 0.2f}, {0.8f, 0.8f}, {0.2f, 0.8f}};
    Tavrin::ShieldRegion* shield = Tavrin::ShieldRegion::NewInstance();
    ASSERT_NE(shield, nullptr);
    shield->SetPoints(square.data(), 4);
    shield->Draw(nullptr, kWidth, kHeight, true);
    EXPECT_TRUE(PixelIs(0.6f, 0.35f, translucent(0x70, 0x30, 0xa0), 2));
    shield->ReleaseRef();

    context().clear(0.0f, 0.0f, 0.0f);
    Tavrin::EnterRegion* enter = Tavrin::EnterRegion::NewInstance();
    ASSERT_NE(enter, nullptr);
    enter->SetPoints(square.data(), 4);
    enter->Draw(nullptr, kWidth, kHeight, true);
    EXPECT_TRUE(PixelIs(0.6f, 0.35f, Rgb{0, 0, 0}));
    EXPECT_TRUE(PixelIs(0.5f, 0.8f, Rgb{0x00, 0xf0, 0xf0}, 40));  // the bottom edge
    enter->ReleaseRef();
}
