#ifndef TAVRIN_DRAWLIST_H
#define TAVRIN_DRAWLIST_H

#include <Tavrin/TavrinTypes.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Tavrin {

/// What the figures of one frame put on the screen, for hosts that draw without an OpenGL
/// compatibility context: a QPainter, an SVG or PDF file, a core-profile or ES renderer, a
/// scene graph.
///
/// Filled by the figures' own `Draw` while a `DrawListScope` for it lives on the calling
/// thread: each batch and text run is exactly what the OpenGL path would have drawn at that
/// moment, in the same order, in view pixels (x to the right, y downwards, the view size
/// passed to `Draw`). A figure that would draw nothing adds nothing; a label or an "A"/"B"
/// mark adds text only while `TextRendering` is on and its anchor lies inside the view,
/// the way OpenGL draws glyphs only from a valid raster position.
///
/// Colours, line widths and point sizes carry over from one batch to the next as OpenGL
/// state would; a list's first figure starts from OpenGL's defaults (opaque white, width
/// and size 1). `Clear` empties the list and keeps its memory, so a host that reuses one
/// list per frame allocates only while the scene grows.
///
/// A list belongs to one thread at a time: fill it on one thread, read it on any other
/// once filling is done.
class TAVRIN_API DrawList {
public:
    /// How a batch's vertices are joined, as the matching OpenGL primitive.
    enum class Primitive : std::uint8_t {
        Points,     ///< one dot per vertex, `size` pixels across
        Lines,      ///< a segment per pair of vertices, `size` pixels wide
        LineStrip,  ///< segments joining consecutive vertices
        LineLoop,   ///< a line strip closed back to its first vertex
        Triangles,  ///< a filled triangle per three vertices
        Polygon,    ///< one filled convex polygon of all the vertices
    };

    struct Color {
        std::uint8_t r;
        std::uint8_t g;
        std::uint8_t b;
        std::uint8_t a;
    };

    /// A position in view pixels: (0, 0) is the view's top-left corner, (width, height)
    /// its bottom-right one.
    struct Vertex {
        float x;
        float y;
    };

    struct Batch {
        Primitive primitive;
        /// Whether the OpenGL path smooths this batch's edges (point, line or polygon
        /// smoothing enabled for it). Smoothed points are round, other points square.
        bool smooth;
        /// Line width (line primitives) or point size (points), pixels; unused by fills.
        float size;
        Color color;
        std::uint32_t first;  ///< index of the batch's first vertex in `Vertices()`
        std::uint32_t count;  ///< number of its vertices
    };

    /// A run of glyphs of the library's built-in 7 x 13 bitmap font (see `FontAtlas`), one
    /// per byte, each cell 7 pixels right of the previous one.
    struct TextRun {
        /// Top-left corner of the first glyph's cell, whole view pixels.
        int x;
        int y;
        Color color;
        std::uint32_t first;   ///< index of the run's first byte in `TextBytes()`
        std::uint32_t length;  ///< bytes in the run, at least one
        /// Batches drawn before the run: it goes on top of the first `before` batches and
        /// under the rest, as in the OpenGL frame.
        std::uint32_t before;
    };

    /// Width and height of a glyph cell, pixels.
    static constexpr int kGlyphWidth = 7;
    static constexpr int kGlyphHeight = 13;

    DrawList();

    /// Empties the list, keeping its memory, and returns its drawing state to OpenGL's
    /// defaults.
    void Clear();
    bool IsEmpty() const;

    const std::vector<Batch>& Batches() const { return m_batches; }
    const std::vector<Vertex>& Vertices() const { return m_vertices; }
    const std::vector<TextRun>& TextRuns() const { return m_textRuns; }
    const std::vector<char>& TextBytes() const { return m_textBytes; }

    /// The view size passed to the last `Draw` that added to the list; 0 x 0 before one.
    int ViewWidth() const { return m_viewWidth; }
    int ViewHeight() const { return m_viewHeight; }

private:
    friend class DrawListWriter;

    std::vector<Batch> m_batches;
    std::vector<Vertex> m_vertices;
    std::vector<TextRun> m_textRuns;
    std::vector<char> m_textBytes;
    int m_viewWidth;
    int m_viewHeight;
    // OpenGL state the figures set as they draw, replayed into each batch.
    Color m_color;
    float m_lineWidth;
    float m_pointSize;
    std::uint8_t m_smoothing;
};

/// Sends every `Draw` of every Tavrin class made on this thread to `list` while the
/// scope lives: the figures append to the list and make no OpenGL call at all. Scopes
/// nest, the innermost one wins; another thread's drawing is not affected. Outside any
/// scope drawing goes to OpenGL as always.
///
///     Tavrin::DrawList list;
///     {
///         Tavrin::DrawListScope scope(list);
///         rule->Draw(nullptr, width, height, true);
///     }
///     paintDrawList(painter, list);
class TAVRIN_API DrawListScope {
public:
    explicit DrawListScope(DrawList& list);
    ~DrawListScope();
    DrawListScope(const DrawListScope&) = delete;
    DrawListScope& operator=(const DrawListScope&) = delete;

    /// The list the calling thread's drawing goes to: its innermost scope's, or null
    /// outside every scope.
    static DrawList* Current();

private:
    DrawList* m_previous;
};

}  // namespace Tavrin

#endif  // TAVRIN_DRAWLIST_H
