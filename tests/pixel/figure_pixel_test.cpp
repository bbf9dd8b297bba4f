// What the figures leave on a real picture: blending over a coloured background, opaque
// cover, concave and unfilled self-crossing regions, vertex handles and status colours, read back
// pixel by pixel from the offscreen Mesa context.
#include "PixelTest.h"

#include <Tavrin/Circle.h>
#include <Tavrin/EnterRegion.h>
#include <Tavrin/ITCPlateRegion.h>
#include <Tavrin/Line.h>
#include <Tavrin/Point.h>
#include <Tavrin/Polygon.h>
#include <Tavrin/ShieldRegion.h>

#include <memory>
#include <vector>

namespace {

// The background of these tests: a mid blue-grey, so that blending and cover differ.
const Rgb kBackground{0x40, 0x80, 0xc0};

void clearToBackground()
{
    context().clear(kBackground.r / 255.0f, kBackground.g / 255.0f, kBackground.b / 255.0f);
}

Rgb rgbOf(unsigned int colour)
{
    return Rgb{static_cast<int>(colour >> 16), static_cast<int>((colour >> 8) & 0xff), static_cast<int>(colour & 0xff)};
}

/// `colour` at alpha 40 over the background, as GL_SRC_ALPHA blending computes it.
Rgb over40(unsigned int colour)
{
    const Rgb c = rgbOf(colour);
    auto mix = [](int top, int under) { return (top * 40 + under * 215 + 127) / 255; };
    return Rgb{mix(c.r, kBackground.r), mix(c.g, kBackground.g), mix(c.b, kBackground.b)};
}

/// The pixel at (x, y) in view pixels from the top-left corner.
::testing::AssertionResult PixelAtIs(int x, int y, Rgb expected, int tolerance = 3)
{
    return PixelIs((x + 0.5f) / kWidth, (y + 0.5f) / kHeight, expected, tolerance);
}

struct Releaser {
    void operator()(Tavrin::VcaObject* figure) const { figure->ReleaseRef(); }
};
template <class Figure>
using Owned = std::unique_ptr<Figure, Releaser>;

template <class Region>
Owned<Region> regionOf(std::vector<tagTAVRIN_POINT> points)
{
    Owned<Region> region(Region::NewInstance());
    EXPECT_NE(region, nullptr);
    EXPECT_TRUE(region->SetPoints(points.data(), static_cast<unsigned int>(points.size())));
    return region;
}

// A square from (40, 20) to (160, 80) in view pixels.
const std::vector<tagTAVRIN_POINT> kSquare = {{0.2f, 0.2f}, {0.8f, 0.2f}, {0.8f, 0.8f}, {0.2f, 0.8f}};

}  // namespace

TEST_F(PixelTest, RegionFillBlendsAtAlpha40OverTheBackground)
{
    clearToBackground();
    Owned<Tavrin::ShieldRegion> shield = regionOf<Tavrin::ShieldRegion>(kSquare);
    shield->Draw(nullptr, kWidth, kHeight, true);
    EXPECT_TRUE(PixelAtIs(100, 50, over40(0x7030a0), 2));
    EXPECT_TRUE(PixelAtIs(60, 30, over40(0x7030a0), 2));
    EXPECT_TRUE(PixelAtIs(20, 50, kBackground, 0));   // left of the region
    EXPECT_TRUE(PixelAtIs(100, 90, kBackground, 0));  // below it

    // An enter region over the same square is outlined but not filled.
    clearToBackground();
    regionOf<Tavrin::EnterRegion>(kSquare)->Draw(nullptr, kWidth, kHeight, true);
    EXPECT_TRUE(PixelAtIs(100, 50, kBackground, 0));
    EXPECT_TRUE(PixelAtIs(100, 80, rgbOf(0x00f0f0), 40));  // the bottom edge
}

TEST_F(PixelTest, TranslucentFillCoversAConcaveShapeButNotItsNotch)
{
    clearToBackground();
    // An L: bar along the top, leg down the left.
    std::vector<tagTAVRIN_POINT> l = {{0.6f, 0.4f}, {0.3f, 0.4f}, {0.3f, 0.9f},
                                      {0.1f, 0.9f}, {0.1f, 0.1f}, {0.6f, 0.1f}};
    Tavrin::Polygon p(l.data(), 6);
    p.Draw(nullptr, kWidth, kHeight, true);
    EXPECT_TRUE(PixelAtIs(100, 20, over40(0xd90db0), 2));  // the bar
    EXPECT_TRUE(PixelAtIs(50, 80, over40(0xd90db0), 2));   // the leg
    EXPECT_TRUE(PixelAtIs(90, 70, kBackground, 0));        // the notch
    EXPECT_TRUE(PixelAtIs(20, 50, rgbOf(0xd90db0), 40));   // the outline, opaque
}

TEST_F(PixelTest, OpaqueFillCoversTheBackground)
{
    clearToBackground();
    std::vector<tagTAVRIN_POINT> square = kSquare;
    Tavrin::Polygon polygon(square.data(), 4);
    polygon.SetViewOpaque(true);
    polygon.SetColors(0xf0e020, 0x0000ff, 0xffc000, 0xf47f4c);
    polygon.Draw(nullptr, kWidth, kHeight, true);
    EXPECT_TRUE(PixelAtIs(100, 50, rgbOf(0xf0e020), 0));
    EXPECT_TRUE(PixelAtIs(45, 25, rgbOf(0xf0e020), 0));
    EXPECT_TRUE(PixelAtIs(20, 50, kBackground, 0));
}

TEST_F(PixelTest, SelfCrossingRegionIsOutlinedButNotFilled)
{
    clearToBackground();
    // A bow tie: its two lobes meet at the centre of the view.
    Owned<Tavrin::ShieldRegion> bowTie =
        regionOf<Tavrin::ShieldRegion>({{0.1f, 0.1f}, {0.9f, 0.9f}, {0.9f, 0.1f}, {0.1f, 0.9f}});
    bowTie->Draw(nullptr, kWidth, kHeight, true);
    EXPECT_TRUE(PixelAtIs(40, 50, kBackground, 0));   // inside the left lobe
    EXPECT_TRUE(PixelAtIs(160, 50, kBackground, 0));  // inside the right lobe
    EXPECT_TRUE(PixelAtIs(180, 50, rgbOf(0x7030a0), 40));  // on the right edge
    EXPECT_TRUE(PixelAtIs(100, 50, rgbOf(0x7030a0), 40));  // where the diagonals cross
}

TEST_F(PixelTest, SelectedRegionShowsHandlesOnlyWhenSelected)
{
    // ITCPlateRegion: outline 0x4848c6, selected 0xd90db0, active handle halo 0xffc000.
    // Sampled just outside the square's corners, clear of its edges: a handle's 8-pixel
    // dot reaches there, the outline does not; the active handle's 16-pixel halo reaches
    // further out still.
    const struct {
        tagTAVRIN_OBJ_STATUS status;
        bool handles;
    } looks[] = {{TAVRIN_OBJ_STATUS_NORMAL, false}, {TAVRIN_OBJ_STATUS_SELECTED, true},
                 {TAVRIN_OBJ_STATUS_HIGHLIGHTED, false}};
    for (const auto& look : looks) {
        SCOPED_TRACE(look.status);
        clearToBackground();
        Owned<Tavrin::ITCPlateRegion> plate = regionOf<Tavrin::ITCPlateRegion>(kSquare);
        plate->SetObjStatus(look.status);
        plate->SetSelPointIndex(1);
        plate->Draw(nullptr, kWidth, kHeight, true);
        const Rgb dot = look.handles ? rgbOf(0xd90db0) : kBackground;
        const Rgb halo = look.handles ? rgbOf(0xffc000) : kBackground;
        EXPECT_TRUE(PixelAtIs(161, 18, dot, 40));   // outside vertex 2 (160, 20)
        EXPECT_TRUE(PixelAtIs(161, 81, dot, 40));   // outside vertex 3 (160, 80)
        EXPECT_TRUE(PixelAtIs(38, 81, dot, 40));    // outside vertex 4 (40, 80)
        EXPECT_TRUE(PixelAtIs(34, 14, halo, 40));   // the halo of vertex 1 (40, 20), the active one
        EXPECT_TRUE(PixelAtIs(161, 14, kBackground, 0));  // beyond an inactive dot: no halo there
        EXPECT_TRUE(PixelAtIs(100, 5, kBackground, 0));   // and nothing away from the vertices
    }
}

TEST_F(PixelTest, LineColourFollowsItsStatus)
{
    const struct {
        tagTAVRIN_OBJ_STATUS status;
        unsigned int colour;
    } looks[] = {{TAVRIN_OBJ_STATUS_NORMAL, 0x20c040},
                 {TAVRIN_OBJ_STATUS_SELECTED, 0xe04020},
                 {TAVRIN_OBJ_STATUS_HIGHLIGHTED, 0xe04020},
                 {static_cast<tagTAVRIN_OBJ_STATUS>(7), 0x20c040}};
    for (const auto& look : looks) {
        SCOPED_TRACE(look.status);
        clearToBackground();
        std::vector<tagTAVRIN_POINT> ends = {{0.1f, 0.5f}, {0.9f, 0.5f}};
        Tavrin::Line line(ends.data(), 2);
        line.SetColors(0x20c040, 0xe04020, 0xffc000, 0xf47f4c);
        line.SetObjStatus(look.status);
        line.Draw(nullptr, kWidth, kHeight, true);
        // Two pixels wide, centred on the boundary between rows 49 and 50.
        EXPECT_TRUE(PixelAtIs(100, 49, rgbOf(look.colour), 3));
        EXPECT_TRUE(PixelAtIs(100, 50, rgbOf(look.colour), 3));
        EXPECT_TRUE(PixelAtIs(100, 46, kBackground, 0));
    }
}

TEST_F(PixelTest, DotIsDrawnInItsStatusColour)
{
    tagTAVRIN_POINT at{0.5f, 0.5f};
    Tavrin::Point p(&at);
    p.SetObjStatus(TAVRIN_OBJ_STATUS_HIGHLIGHTED);
    p.Draw(nullptr, kWidth, kHeight, true);
    EXPECT_TRUE(PixelIs(0.5f, 0.5f, Rgb{0x28, 0x5e, 0xa6}, 12));
    EXPECT_TRUE(PixelIs(0.1f, 0.1f, Rgb{0, 0, 0}));
}

TEST_F(PixelTest, CircleDiscBlendsAtAlpha200)
{
    context().clear(1.0f, 1.0f, 1.0f);
    tagTAVRIN_POINT at{0.5f, 0.5f};
    Tavrin::Circle c(&at, 1);
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
