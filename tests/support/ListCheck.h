#ifndef TAVRIN_TESTS_LISTCHECK_H
#define TAVRIN_TESTS_LISTCHECK_H

// The draw list a figure leaves inside a DrawListScope, checked against the OpenGL calls
// the same draw made: batch for batch (primitive, colour, width or size, every vertex
// through the viewport of the view) and glyph run for glyph run (first cell, colour,
// length), nothing more and nothing less.

#include "support/RecordingGl.h"

#include <Tavrin/DrawList.h>

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace listcheck {

inline Tavrin::DrawList::Primitive primitiveOf(GLenum mode)
{
    using P = Tavrin::DrawList::Primitive;
    switch (mode) {
    case GL_POINTS:
        return P::Points;
    case GL_LINES:
        return P::Lines;
    case GL_LINE_STRIP:
        return P::LineStrip;
    case GL_LINE_LOOP:
        return P::LineLoop;
    case GL_TRIANGLES:
        return P::Triangles;
    default:
        return P::Polygon;
    }
}

inline rec::Rgba rgbaOf(const Tavrin::DrawList::Color& c) { return rec::Rgba{c.r, c.g, c.b, c.a}; }

/// Compares `list` with the calls recorded for the same draw into a w x h view.
inline void expectSameAsGl(const rec::Recorder& gl, const Tavrin::DrawList& list, int w, int h,
                           const std::string& where)
{
    SCOPED_TRACE(where);
    if (w <= 0 || h <= 0) {
        EXPECT_TRUE(list.IsEmpty()) << "a view without area captures nothing";
        return;
    }
    const float fw = static_cast<float>(w);
    const float fh = static_cast<float>(h);
    ASSERT_EQ(list.Batches().size(), gl.batches.size());
    for (std::size_t i = 0; i < gl.batches.size(); ++i) {
        const rec::Batch& want = gl.batches[i];
        const Tavrin::DrawList::Batch& got = list.Batches()[i];
        EXPECT_EQ(got.primitive, primitiveOf(want.mode)) << "batch " << i;
        EXPECT_EQ(rgbaOf(got.color), want.color) << "batch " << i;
        const bool fill = want.mode == GL_POLYGON || want.mode == GL_TRIANGLES;
        EXPECT_EQ(got.size, fill ? 0.0f : (want.mode == GL_POINTS ? want.pointSize : want.lineWidth)) << "batch " << i;
        ASSERT_EQ(got.count, want.vertices.size()) << "batch " << i;
        for (std::size_t k = 0; k < want.vertices.size(); ++k) {
            const Tavrin::DrawList::Vertex& v = list.Vertices()[got.first + k];
            EXPECT_EQ(v.x, want.vertices[k].x * 0.5f * fw) << "batch " << i << " vertex " << k;
            EXPECT_EQ(v.y, fh - want.vertices[k].y * 0.5f * fh) << "batch " << i << " vertex " << k;
        }
    }
    // Runs: the texts that drew glyphs from a raster position inside the view.
    std::size_t run = 0;
    for (const rec::RasterText& text : gl.texts) {
        const std::vector<rec::Bitmap> glyphs = text.glyphs();
        const bool valid = text.glX >= 0.0f && text.glX <= 2.0f && text.glY >= 0.0f && text.glY <= 2.0f;
        if (glyphs.empty() || !valid) {
            continue;
        }
        ASSERT_LT(run, list.TextRuns().size());
        const Tavrin::DrawList::TextRun& got = list.TextRuns()[run++];
        const rec::Bitmap& first = glyphs.front();
        const int left = static_cast<int>(std::floor(text.glX * 0.5f * fw + first.atX - first.xorig));
        const int bottom = static_cast<int>(std::floor(text.glY * 0.5f * fh + first.atY - first.yorig));
        EXPECT_EQ(got.x, left);
        EXPECT_EQ(got.y, h - bottom - Tavrin::DrawList::kGlyphHeight);
        EXPECT_EQ(got.length, glyphs.size());
        EXPECT_EQ(rgbaOf(got.color), text.color);
    }
    EXPECT_EQ(run, list.TextRuns().size());
}

}  // namespace listcheck

#endif  // TAVRIN_TESTS_LISTCHECK_H
