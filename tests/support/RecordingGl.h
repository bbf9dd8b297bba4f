#ifndef TAVRIN_TESTS_RECORDINGGL_H
#define TAVRIN_TESTS_RECORDINGGL_H

// A recording OpenGL for the tests: the listener of the fake GL (FakeGl.h) that the test
// executable exports, so the library's calls land here instead of in a driver.
// Every call is kept as text, and every glBegin/glEnd batch with the colour, line width
// and point size current at its glBegin and its vertices.

#include <Tavrin/TavrinTypes.h>

#include <GL/gl.h>

#include <set>
#include <string>
#include <vector>

namespace rec {

struct Rgba {
    int r = 0;
    int g = 0;
    int b = 0;
    int a = 0;
    bool operator==(const Rgba& o) const { return r == o.r && g == o.g && b == o.b && a == o.a; }
    bool operator!=(const Rgba& o) const { return !(*this == o); }
};

/// The glColor4ub a 0xRRGGBB colour is emitted as.
Rgba rgba(unsigned int rgb, int alpha = 255);
std::string toString(const Rgba& c);

struct Batch {
    GLenum mode = 0;
    Rgba color;
    float lineWidth = 1.0f;
    float pointSize = 1.0f;
    std::vector<tagTAVRIN_POINT> vertices;  ///< as passed to glVertex2f

    /// The vertices mapped back to normalised picture coordinates: (x / 2, 1 - y / 2).
    std::vector<tagTAVRIN_POINT> picture() const;
    /// Vertex i mapped back to picture coordinates.
    tagTAVRIN_POINT at(std::size_t i) const;
};

/// One glBitmap call. A zero-size bitmap only moves the raster position.
struct Bitmap {
    int width = 0;
    int height = 0;
    float xorig = 0.0f;
    float yorig = 0.0f;
    float xmove = 0.0f;
    float ymove = 0.0f;
    float atX = 0.0f;  ///< raster position, pixels right of the last glRasterPos2f
    float atY = 0.0f;  ///< raster position, pixels above the last glRasterPos2f
    /// The bits as GL reads them under the current unpack alignment, top row first, one
    /// '#' (set) or '.' (clear) per pixel; empty for a move.
    std::vector<std::string> rows;
};

struct RasterText {
    tagTAVRIN_POINT position;     ///< glRasterPos2f arguments mapped back to the picture
    int listCalls = 0;            ///< glCallList calls made at this position
    std::vector<Bitmap> bitmaps;  ///< glBitmap calls made from this position, moves included
    Rgba color;                   ///< the current colour, which glRasterPos2f latches for glyphs
    float glX = 0.0f;             ///< glRasterPos2f's own arguments
    float glY = 0.0f;

    /// The bitmaps that draw (width and height above 0), in order.
    std::vector<Bitmap> glyphs() const;
};

struct Recorder {
    std::vector<std::string> calls;  ///< every call with its arguments, e.g. "glEnable(GL_BLEND)"
    std::vector<Batch> batches;
    std::vector<RasterText> texts;

    std::set<GLenum> enabled;
    Rgba color{255, 255, 255, 255};
    float lineWidth = 1.0f;
    float pointSize = 1.0f;
    float translateX = 0.0f;
    float translateY = 0.0f;
    bool identity = true;
    bool inBatch = false;
    GLint unpackAlignment = 4;
    float rasterX = 0.0f;  ///< raster position, pixels from the last glRasterPos2f
    float rasterY = 0.0f;
    std::set<GLuint> liveLists;
    int listsGenerated = 0;

    void reset();
    /// The calls without the glVertex2f lines: the shape of a drawing.
    std::vector<std::string> sequence() const;
    /// Names only, vertices included (e.g. "glBegin", "glVertex2f").
    std::vector<std::string> names() const;
    std::vector<Batch> batchesOf(GLenum mode) const;
    /// Blending and smoothing disabled, colour opaque white, matrix identity, no open
    /// batch, no display list left reserved, the raster position where the last
    /// glRasterPos2f put it and the unpack alignment at its initial 4.
    bool stateIsClean() const;
    /// Why stateIsClean() is false, for failure messages.
    std::string stateReport() const;
};

Recorder& gl();

std::string modeName(GLenum mode);

}  // namespace rec

#endif  // TAVRIN_TESTS_RECORDINGGL_H
