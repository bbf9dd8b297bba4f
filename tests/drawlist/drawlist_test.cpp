// Draw lists beyond what the transcripts compare with OpenGL: what the OpenGL stream does
// not carry (smoothing, where glyph cells land), scopes per thread and nested, and the
// triangle form with its font atlas.

#include "support/GlTest.h"

#include "drawlist/DrawListWriter.h"
#include "graph/FontTable.h"

#include <Tavrin/Tavrin.h>

#include <array>
#include <thread>

using namespace Tavrin;
using P = DrawList::Primitive;

namespace {

class DrawListTest : public GlTest {
protected:
    void TearDown() override { TextRendering::SetEnabled(false); }
};

// A label's text and a selected polygon's outline, fill and handles into a 200 x 100 view.
TEST_F(DrawListTest, BatchesCarrySmoothingSizesAndGlyphCells)
{
    tagTAVRIN_POINT corner = pt(0.25f, 0.5f);
    Label label(&corner, 1);
    char text[] = "Gate";
    label.SetText(text);
    tagTAVRIN_POINT triangle[3] = {pt(0.1f, 0.1f), pt(0.5f, 0.1f), pt(0.3f, 0.6f)};
    Polygon polygon(triangle, 3);
    polygon.SetClosed(true);
    polygon.SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);

    DrawList list;
    TextRendering::SetEnabled(true);
    {
        DrawListScope scope(list);
        label.Draw(nullptr, 200, 100, true);
        polygon.Draw(nullptr, 200, 100, true);
    }
    EXPECT_TRUE(recorded().calls.empty());
    EXPECT_EQ(list.ViewWidth(), 200);
    EXPECT_EQ(list.ViewHeight(), 100);

    // The glyph cells start 2 pixels right of and below the label's corner (50, 50).
    ASSERT_EQ(list.TextRuns().size(), 1u);
    const DrawList::TextRun& run = list.TextRuns()[0];
    EXPECT_EQ(run.x, 52);
    EXPECT_EQ(run.y, 52);
    EXPECT_EQ(std::string(list.TextBytes().data() + run.first, run.length), "Gate");
    EXPECT_EQ(run.before, 0u);

    ASSERT_GE(list.Batches().size(), 3u);
    const DrawList::Batch& outline = list.Batches()[0];
    EXPECT_EQ(outline.primitive, P::LineLoop);
    EXPECT_TRUE(outline.smooth);
    const DrawList::Vertex& first = list.Vertices()[outline.first];
    EXPECT_FLOAT_EQ(first.x, 20.0f);
    EXPECT_FLOAT_EQ(first.y, 10.0f);
    // The handles: smoothed points, round; a large one under the active vertex's.
    const DrawList::Batch& handle = list.Batches().back();
    EXPECT_EQ(handle.primitive, P::Points);
    EXPECT_TRUE(handle.smooth);
    EXPECT_EQ(handle.size, 8.0f);
    // The first figure starts from OpenGL's defaults; after a figure, opaque white again.
    DrawList fresh;
    EXPECT_TRUE(fresh.IsEmpty());
    list.Clear();
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_TRUE(list.Vertices().empty() && list.TextBytes().empty());
    EXPECT_EQ(list.ViewWidth(), 0);
    // Cleared, the list draws from OpenGL's defaults again: opaque white, width 1.
    DrawListWriter::setColor(list, DrawList::Color{1, 2, 3, 4});
    DrawListWriter::setLineWidth(list, 9.0f);
    list.Clear();
    DrawListWriter::beginFigure(list, 0, 10, 10);
    const tagTAVRIN_POINT two[2] = {pt(0.1f, 0.1f), pt(0.2f, 0.2f)};
    DrawListWriter::addBatch(list, P::Lines, two, 2);
    ASSERT_EQ(list.Batches().size(), 1u);
    EXPECT_EQ(list.Batches()[0].color.r, 255);
    EXPECT_EQ(list.Batches()[0].color.a, 255);
    EXPECT_EQ(list.Batches()[0].size, 1.0f);
}

TEST_F(DrawListTest, TextOffOutsideTheViewOrAtZeroSizeLeavesNothing)
{
    tagTAVRIN_POINT corner = pt(0.25f, 0.5f);
    Label label(&corner, 1);
    char text[] = "Gate";
    label.SetText(text);
    DrawList list;
    {
        DrawListScope scope(list);
        label.Draw(nullptr, 200, 100, true);  // text rendering off
        TextRendering::SetEnabled(true);
        label.Draw(nullptr, 0, 100, true);
        tagTAVRIN_POINT outside = pt(1.01f, 0.5f);
        label.SetPoints(&outside, 1);
        label.Draw(nullptr, 200, 100, true);
        tagTAVRIN_POINT edge = pt(1.0f, 1.0f);
        label.SetPoints(&edge, 1);
        label.Draw(nullptr, 200, 100, true);
        tagTAVRIN_POINT corner0 = pt(0.0f, 0.0f);
        label.SetPoints(&corner0, 1);
        label.Draw(nullptr, 200, 100, true);
    }
    ASSERT_EQ(list.TextRuns().size(), 2u) << "only the anchors on the view's edges draw";
    EXPECT_EQ(list.TextRuns()[0].x, 202);
    EXPECT_EQ(list.TextRuns()[1].x, 2);
    EXPECT_EQ(list.TextRuns()[1].y, 2);
    EXPECT_TRUE(recorded().calls.empty());
}

TEST_F(DrawListTest, ScopesNestAndBelongToTheirThread)
{
    tagTAVRIN_POINT p = pt(0.5f, 0.5f);
    Point point(&p);
    DrawList outer;
    DrawList inner;
    DrawList other;
    {
        DrawListScope a(outer);
        point.Draw(nullptr, 10, 10, true);
        {
            DrawListScope b(inner);
            EXPECT_EQ(DrawListScope::Current(), &inner);
            point.Draw(nullptr, 10, 10, true);
            point.Draw(nullptr, 10, 10, true);
        }
        std::thread([&] {
            EXPECT_EQ(DrawListScope::Current(), nullptr);
            DrawListScope c(other);
            Point own(&p);
            own.Draw(nullptr, 10, 10, true);
        }).join();
        point.Draw(nullptr, 10, 10, true);
    }
    EXPECT_EQ(DrawListScope::Current(), nullptr);
    EXPECT_EQ(outer.Batches().size(), 2u);
    EXPECT_EQ(inner.Batches().size(), 2u);
    EXPECT_EQ(other.Batches().size(), 1u);
    EXPECT_TRUE(recorded().calls.empty());
    point.Draw(nullptr, 10, 10, true);
    EXPECT_FALSE(recorded().calls.empty()) << "after the scopes, drawing goes to OpenGL again";
}

// A list made directly: one batch of each kind in a 100 x 100 view.
DrawList listOf(P primitive, bool smooth, float size, std::initializer_list<tagTAVRIN_POINT> points)
{
    DrawList list;
    DrawListWriter::beginFigure(list, smooth ? 7 : 0, 100, 100);
    DrawListWriter::setLineWidth(list, size);
    DrawListWriter::setPointSize(list, size);
    DrawListWriter::setColor(list, DrawList::Color{10, 20, 30, 200});
    std::vector<tagTAVRIN_POINT> v(points);
    DrawListWriter::addBatch(list, primitive, v.data(), v.size());
    return list;
}

TEST(TriangleMesh, EachBatchKindTessellatesAsOpenGlDrawsIt)
{
    TriangleMesh mesh;
    // A 4-pixel line from (10, 50) to (30, 50): one quad two pixels either side.
    mesh.Build(listOf(P::Lines, false, 4.0f, {pt(0.1f, 0.5f), pt(0.3f, 0.5f)}));
    ASSERT_EQ(mesh.Vertices().size(), 4u);
    ASSERT_EQ(mesh.Indices().size(), 6u);
    float minY = 1e9f, maxY = -1e9f, minX = 1e9f, maxX = -1e9f;
    for (const TriangleMesh::Vertex& v : mesh.Vertices()) {
        minX = std::min(minX, v.x), maxX = std::max(maxX, v.x), minY = std::min(minY, v.y), maxY = std::max(maxY, v.y);
        EXPECT_EQ(v.a, 200);
        EXPECT_EQ(v.r, 10);
    }
    EXPECT_FLOAT_EQ(minX, 10.0f);
    EXPECT_FLOAT_EQ(maxX, 30.0f);
    EXPECT_FLOAT_EQ(minY, 48.0f);
    EXPECT_FLOAT_EQ(maxY, 52.0f);
    // Smoothed and antialiased: the core narrows by half a pixel, a transparent fringe
    // reaches half a pixel beyond the width on each side.
    mesh.Build(listOf(P::Lines, true, 4.0f, {pt(0.1f, 0.5f), pt(0.3f, 0.5f)}), true);
    ASSERT_EQ(mesh.Vertices().size(), 8u) << "the fringes share the core's corners";
    ASSERT_EQ(mesh.Indices().size(), 18u);
    for (const TriangleMesh::Vertex& v : mesh.Vertices()) {
        const float off = std::fabs(v.y - 50.0f);
        EXPECT_TRUE((off == 1.5f && v.a == 200) || (off == 2.5f && v.a == 0)) << v.y << " " << int(v.a);
    }
    // Unsmoothed batches get no fringe even when asked.
    mesh.Build(listOf(P::LineLoop, false, 1.0f, {pt(0.1f, 0.1f), pt(0.3f, 0.1f), pt(0.2f, 0.3f)}), true);
    EXPECT_EQ(mesh.Indices().size(), 3u * 6u);
    mesh.Build(listOf(P::LineStrip, false, 1.0f, {pt(0.1f, 0.1f), pt(0.3f, 0.1f), pt(0.2f, 0.3f)}));
    EXPECT_EQ(mesh.Indices().size(), 2u * 6u);
    // Polygons are ears of every other vertex, then of what is left; triangles three at a
    // time, a trailing pair left out.
    mesh.Build(listOf(P::Polygon, false, 0.0f, {pt(0.1f, 0.1f), pt(0.3f, 0.1f), pt(0.3f, 0.3f), pt(0.2f, 0.4f), pt(0.1f, 0.3f)}));
    EXPECT_EQ(mesh.Vertices().size(), 5u);
    EXPECT_EQ(mesh.Indices(), (std::vector<std::uint32_t>{0, 1, 2, 2, 3, 4, 0, 2, 4}));
    mesh.Build(listOf(P::Triangles, true, 0.0f, {pt(0.1f, 0.1f), pt(0.3f, 0.1f), pt(0.3f, 0.3f), pt(0.5f, 0.5f), pt(0.6f, 0.6f)}), true);
    EXPECT_EQ(mesh.Indices().size(), 3u) << "one triangle, no fringe on a fill";
    EXPECT_FLOAT_EQ(mesh.Vertices()[0].x, 10.0f) << "from the first vertex";
    mesh.Build(listOf(P::Triangles, false, 0.0f,
                      {pt(0.1f, 0.1f), pt(0.3f, 0.1f), pt(0.3f, 0.3f), pt(0.5f, 0.5f), pt(0.6f, 0.6f), pt(0.6f, 0.5f)}));
    EXPECT_EQ(mesh.Indices().size(), 6u) << "two whole triangles";
    // Square points are quads of their size; round ones discs with more segments the larger.
    mesh.Build(listOf(P::Points, false, 8.0f, {pt(0.5f, 0.5f)}));
    ASSERT_EQ(mesh.Vertices().size(), 4u);
    EXPECT_FLOAT_EQ(mesh.Vertices()[0].x, 46.0f);
    EXPECT_FLOAT_EQ(mesh.Vertices()[2].y, 54.0f);
    mesh.Build(listOf(P::Points, true, 8.0f, {pt(0.5f, 0.5f)}));
    const std::size_t small = mesh.Indices().size() / 3;
    mesh.Build(listOf(P::Points, true, 16.0f, {pt(0.5f, 0.5f)}));
    const std::size_t large = mesh.Indices().size() / 3;
    EXPECT_EQ(small, 9u) << "an 8-pixel disc: a segment per 3 pixels of rim";
    EXPECT_GT(large, small);
    for (const TriangleMesh::Vertex& v : mesh.Vertices()) {
        EXPECT_LE(std::hypot(v.x - 50.0f, v.y - 50.0f), 8.0001f);
    }
    // Shapes sample the atlas's opaque block.
    const FontAtlas::Texel white = FontAtlas::WhiteTexel();
    EXPECT_EQ(FontAtlas::Alpha()[white.y * FontAtlas::kWidth + white.x], 255);
    EXPECT_FLOAT_EQ(mesh.Vertices()[0].u * FontAtlas::kWidth, static_cast<float>(white.x));
}

TEST(TriangleMesh, GlyphsAreAtlasQuadsInDrawingOrder)
{
    DrawList list = listOf(P::Lines, false, 1.0f, {pt(0.1f, 0.5f), pt(0.3f, 0.5f)});
    const char text[] = "A\x01";
    DrawListWriter::addText(list, geometry::glPointOf(0.5f, 0.5f), 0, 0, text, 2);
    DrawListWriter::addBatch(list, P::Lines, std::vector<tagTAVRIN_POINT>{pt(0.1f, 0.2f), pt(0.3f, 0.2f)}.data(), 2);
    TriangleMesh mesh;
    mesh.Build(list);
    ASSERT_EQ(mesh.Vertices().size(), 16u);
    // Between the two lines: the "A" cell, then the placeholder's, 7 pixels on.
    const TriangleMesh::Vertex* a = &mesh.Vertices()[4];
    const FontAtlas::Texel cellA = FontAtlas::GlyphCell('A');
    EXPECT_FLOAT_EQ(a[0].u * FontAtlas::kWidth, static_cast<float>(cellA.x));
    EXPECT_FLOAT_EQ(a[2].v * FontAtlas::kHeight, static_cast<float>(cellA.y + DrawList::kGlyphHeight));
    EXPECT_FLOAT_EQ(a[4].x - a[0].x, 7.0f);
    EXPECT_EQ(FontAtlas::GlyphCell(0x01).x, FontAtlas::GlyphCell(0xff).x);
    EXPECT_FLOAT_EQ(std::fabs(mesh.Vertices()[12].y - 20.0f), 0.5f) << "the second line comes last";
    // The atlas holds every byte's glyph rows as the font draws them (the placeholder for
    // bytes outside printable ASCII), with an empty column after each cell.
    const std::uint8_t* atlas = FontAtlas::Alpha();
    for (int c = 0; c < 256; ++c) {
        const FontAtlas::Texel cell = FontAtlas::GlyphCell(static_cast<unsigned char>(c));
        std::string want;
        std::string got;
        for (int row = 0; row < font::kCellHeight; ++row) {
            for (int column = 0; column < 8; ++column) {
                const bool ink = column < 7 && (font::glyphRows(static_cast<unsigned char>(c))[row] & (0x80u >> column)) != 0;
                want += ink ? '#' : '.';
                got += atlas[(cell.y + row) * FontAtlas::kWidth + cell.x + column] == 255 ? '#' : '.';
            }
        }
        EXPECT_EQ(got, want) << "byte " << c;
    }
}

// The coverage form: one quad per segment and point whose smooth edge the shader computes
// as reach - |edge|, so each corner's edge vector and reach are the whole contract.
TEST(CoverageMesh, QuadsCarryTheEdgeAcrossThemAndFillsAreSolid)
{
    CoverageMesh mesh;
    using Corner = std::array<float, 5>;  // x, y, edge x, edge y, reach
    using C = std::vector<Corner>;
    auto expectCorners = [&mesh](const C& want, std::size_t from = 0) {
        ASSERT_LE(from + want.size(), mesh.Vertices().size());
        for (std::size_t i = 0; i < want.size(); ++i) {
            const CoverageMesh::Vertex& v = mesh.Vertices()[from + i];
            const Corner got{v.x, v.y, v.edgeX, v.edgeY, v.reach};
            for (std::size_t k = 0; k < got.size(); ++k) {
                EXPECT_NEAR(got[k], want[i][k], 1e-4f) << "corner " << from + i << ", value " << k;
            }
        }
    };
    // A smoothed 4-pixel line from (10, 50) to (30, 50): half a pixel past each side,
    // full coverage to 1.5 pixels from its middle, none at 2.5.
    mesh.Build(listOf(P::Lines, true, 4.0f, {pt(0.1f, 0.5f), pt(0.3f, 0.5f)}));
    ASSERT_EQ(mesh.Vertices().size(), 4u);
    expectCorners(C{{10, 52.5f, 2.5f, 0, 2.5f}, {30, 52.5f, 2.5f, 0, 2.5f}, {30, 47.5f, -2.5f, 0, 2.5f},
                    {10, 47.5f, -2.5f, 0, 2.5f}});
    EXPECT_EQ(mesh.Indices(), (std::vector<std::uint32_t>{0, 1, 2, 0, 2, 3}));
    EXPECT_EQ(mesh.ShapeIndexCount(), 6u);
    EXPECT_EQ(mesh.Vertices()[0].a, 200);
    // Unsmoothed: its exact width, solid. Thinner than a pixel: a pixel.
    mesh.Build(listOf(P::Lines, false, 4.0f, {pt(0.1f, 0.5f), pt(0.3f, 0.5f)}));
    expectCorners(C{{10, 52, 0, 0, 1}, {30, 52, 0, 0, 1}, {30, 48, 0, 0, 1}, {10, 48, 0, 0, 1}});
    mesh.Build(listOf(P::LineStrip, true, 0.5f, {pt(0.1f, 0.5f), pt(0.3f, 0.5f)}));
    expectCorners(C{{10, 51, 1, 0, 1}});
    // A loop closes; a segment of no length is left out.
    mesh.Build(listOf(P::LineLoop, true, 1.0f, {pt(0.1f, 0.1f), pt(0.1f, 0.1f), pt(0.3f, 0.1f), pt(0.2f, 0.3f)}));
    EXPECT_EQ(mesh.Indices().size(), 3u * 6u);
    // Round points: a square reaching half a pixel past the disc, edges from the centre.
    mesh.Build(listOf(P::Points, true, 8.0f, {pt(0.5f, 0.5f)}));
    ASSERT_EQ(mesh.Vertices().size(), 4u);
    expectCorners(C{{45.5f, 45.5f, -4.5f, -4.5f, 4.5f}, {54.5f, 45.5f, 4.5f, -4.5f, 4.5f},
                    {54.5f, 54.5f, 4.5f, 4.5f, 4.5f}, {45.5f, 54.5f, -4.5f, 4.5f, 4.5f}});
    mesh.Build(listOf(P::Points, false, 8.0f, {pt(0.5f, 0.5f)}));
    expectCorners(C{{54, 54, 0, 0, 1}}, 2);
    // Fills: ears, solid; triangles three at a time.
    mesh.Build(listOf(P::Polygon, true, 0.0f, {pt(0.1f, 0.1f), pt(0.3f, 0.1f), pt(0.3f, 0.3f), pt(0.2f, 0.4f), pt(0.1f, 0.3f)}));
    EXPECT_EQ(mesh.Indices(), (std::vector<std::uint32_t>{0, 1, 2, 2, 3, 4, 0, 2, 4}));
    expectCorners(C{{20, 40, 0, 0, 1}}, 3);
    mesh.Build(listOf(P::Triangles, true, 0.0f, {pt(0.1f, 0.1f), pt(0.3f, 0.1f), pt(0.3f, 0.3f), pt(0.5f, 0.5f)}));
    EXPECT_EQ(mesh.Indices().size(), 3u);
    // Shapes sample the atlas's opaque block; an empty list leaves nothing behind.
    const FontAtlas::Texel white = FontAtlas::WhiteTexel();
    EXPECT_FLOAT_EQ(mesh.Vertices()[0].v * FontAtlas::kHeight, static_cast<float>(white.y));
    mesh.Build(DrawList());
    EXPECT_TRUE(mesh.Vertices().empty() && mesh.Indices().empty());
    EXPECT_EQ(mesh.ShapeIndexCount(), 0u);
}

// Glyphs move behind every shape only when no later shape reaches them; otherwise the
// part after the shapes keeps the list's order from the first glyph on.
TEST(CoverageMesh, GlyphsGoLastOnlyWhereNoLaterShapeReachesThem)
{
    auto listWithText = [](float secondLineY) {
        DrawList list = listOf(P::Lines, false, 1.0f, {pt(0.1f, 0.9f), pt(0.3f, 0.9f)});
        const char text[] = "AB";
        DrawListWriter::addText(list, geometry::glPointOf(0.5f, 0.5f), 0, 0, text, 2);
        DrawListWriter::addBatch(list, P::Lines,
                                 std::vector<tagTAVRIN_POINT>{pt(0.0f, secondLineY), pt(1.0f, secondLineY)}.data(), 2);
        return list;
    };
    CoverageMesh mesh;
    const DrawList apart = listWithText(0.05f);
    mesh.Build(apart);
    ASSERT_EQ(mesh.Indices().size(), 6u + 6u + 12u);
    EXPECT_EQ(mesh.ShapeIndexCount(), 12u) << "both lines first";
    EXPECT_NE(mesh.Vertices()[mesh.Indices()[12]].u, mesh.Vertices()[0].u) << "then the glyphs";

    // The second line through the middle of the text's cells.
    const DrawList::TextRun& run = apart.TextRuns()[0];
    const float middle = (static_cast<float>(run.y) + DrawList::kGlyphHeight / 2.0f) / 100.0f;
    mesh.Build(listWithText(middle));
    ASSERT_EQ(mesh.Indices().size(), 24u);
    EXPECT_EQ(mesh.ShapeIndexCount(), 6u) << "the first line only";
    EXPECT_NE(mesh.Vertices()[mesh.Indices()[6]].u, mesh.Vertices()[0].u) << "the glyphs next";
    EXPECT_FLOAT_EQ(mesh.Vertices()[mesh.Indices()[18]].y, middle * 100.0f + 0.5f) << "the second line last";
    // Just clear of the cells, and just reaching them: the second line's reach is its half
    // width and a pixel.
    mesh.Build(listWithText((static_cast<float>(run.y) - 1.6f) / 100.0f));
    EXPECT_EQ(mesh.ShapeIndexCount(), 12u);
    mesh.Build(listWithText((static_cast<float>(run.y) - 1.4f) / 100.0f));
    EXPECT_EQ(mesh.ShapeIndexCount(), 6u);
}

}  // namespace
