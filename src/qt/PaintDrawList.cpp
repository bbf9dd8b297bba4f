#include <TavrinQt/PaintDrawList.h>

#include <Tavrin/FontAtlas.h>

#include <QColor>
#include <QImage>
#include <QLineF>
#include <QPainter>
#include <QPen>
#include <QPointF>
#include <QVector>

#include <cmath>
#include <exception>

namespace Tavrin {

namespace {

using Point = DrawList::Vertex;

QColor colorOf(const DrawList::Color& c) { return QColor(c.r, c.g, c.b, c.a); }

QPointF pointOf(const Point& p) { return QPointF(static_cast<qreal>(p.x), static_cast<qreal>(p.y)); }

bool allFinite(const Point* p, std::uint32_t n)
{
    for (std::uint32_t i = 0; i < n; ++i) {
        if (!std::isfinite(p[i].x) || !std::isfinite(p[i].y)) {
            return false;
        }
    }
    return true;
}

// The segments a line batch draws, each on its own as OpenGL draws wide lines.
QVector<QLineF> segmentsOf(DrawList::Primitive primitive, const Point* p, std::uint32_t n)
{
    QVector<QLineF> lines;
    if (primitive == DrawList::Primitive::Lines) {
        for (std::uint32_t i = 0; i + 1 < n; i += 2) {
            lines.append(QLineF(pointOf(p[i]), pointOf(p[i + 1])));
        }
        return lines;
    }
    for (std::uint32_t i = 0; i + 1 < n; ++i) {
        lines.append(QLineF(pointOf(p[i]), pointOf(p[i + 1])));
    }
    if (primitive == DrawList::Primitive::LineLoop && n > 2) {
        lines.append(QLineF(pointOf(p[n - 1]), pointOf(p[0])));
    }
    return lines;
}

void paintLines(QPainter& painter, const DrawList::Batch& batch, const Point* p)
{
    // OpenGL draws no line thinner than a pixel.
    const qreal width = batch.size > 1.0f ? static_cast<qreal>(batch.size) : 1.0;
    painter.setPen(QPen(colorOf(batch.color), width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawLines(segmentsOf(batch.primitive, p, batch.count));
}

void paintPoints(QPainter& painter, const DrawList::Batch& batch, const Point* p)
{
    const qreal half = (batch.size > 1.0f ? static_cast<qreal>(batch.size) : 1.0) / 2.0;
    painter.setPen(Qt::NoPen);
    painter.setBrush(colorOf(batch.color));
    for (std::uint32_t i = 0; i < batch.count; ++i) {
        if (batch.smooth) {
            painter.drawEllipse(pointOf(p[i]), half, half);
        } else {
            painter.drawRect(QRectF(pointOf(p[i]) - QPointF(half, half), QSizeF(2 * half, 2 * half)));
        }
    }
}

void paintFill(QPainter& painter, const DrawList::Batch& batch, const Point* p)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(colorOf(batch.color));
    const std::uint32_t corners = batch.primitive == DrawList::Primitive::Polygon ? batch.count : 3;
    if (corners < 3) {
        return;
    }
    for (std::uint32_t first = 0; first + corners <= batch.count; first += corners) {
        QPolygonF polygon;
        for (std::uint32_t i = 0; i < corners; ++i) {
            polygon.append(pointOf(p[first + i]));
        }
        painter.drawConvexPolygon(polygon);
    }
}

// One run's glyphs as an image: the run's colour where the font has ink.
QImage glyphImage(const DrawList::TextRun& run, const char* bytes)
{
    QImage image(static_cast<int>(run.length) * DrawList::kGlyphWidth, DrawList::kGlyphHeight,
                 QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const QRgb ink = QColor(run.color.r, run.color.g, run.color.b, run.color.a).rgba();
    const QRgb premultipliedInk = qPremultiply(ink);
    const std::uint8_t* atlas = FontAtlas::Alpha();
    for (std::uint32_t i = 0; i < run.length; ++i) {
        const FontAtlas::Texel cell = FontAtlas::GlyphCell(static_cast<unsigned char>(bytes[i]));
        for (int row = 0; row < DrawList::kGlyphHeight; ++row) {
            QRgb* line = reinterpret_cast<QRgb*>(image.scanLine(row));
            const std::uint8_t* texels = atlas + (cell.y + row) * FontAtlas::kWidth + cell.x;
            for (int column = 0; column < DrawList::kGlyphWidth; ++column) {
                if (texels[column] != 0) {
                    line[static_cast<int>(i) * DrawList::kGlyphWidth + column] = premultipliedInk;
                }
            }
        }
    }
    return image;
}

// Runs longer than this many glyphs are cut: no figure draws one, and the image stays small.
constexpr std::uint32_t kMaxGlyphsPerImage = 1024;

void paintBatch(QPainter& painter, const DrawList::Batch& batch, const std::vector<Point>& points)
{
    if (batch.first > points.size() || batch.count > points.size() - batch.first) {
        return;
    }
    const Point* p = points.data() + batch.first;
    if (!allFinite(p, batch.count)) {
        return;
    }
    painter.setRenderHint(QPainter::Antialiasing, batch.smooth);
    switch (batch.primitive) {
    case DrawList::Primitive::Points:
        paintPoints(painter, batch, p);
        break;
    case DrawList::Primitive::Lines:
    case DrawList::Primitive::LineStrip:
    case DrawList::Primitive::LineLoop:
        paintLines(painter, batch, p);
        break;
    case DrawList::Primitive::Triangles:
    case DrawList::Primitive::Polygon:
        paintFill(painter, batch, p);
        break;
    }
}

void paintRun(QPainter& painter, const DrawList::TextRun& run, const std::vector<char>& bytes)
{
    if (run.first > bytes.size() || run.length > bytes.size() - run.first) {
        return;
    }
    DrawList::TextRun shown = run;
    shown.length = run.length < kMaxGlyphsPerImage ? run.length : kMaxGlyphsPerImage;
    painter.drawImage(QPoint(run.x, run.y), glyphImage(shown, bytes.data() + run.first));
}

// Batches and text runs in the order the OpenGL frame draws them.
void paintList(QPainter& painter, const DrawList& list)
{
    const std::vector<DrawList::Batch>& batches = list.Batches();
    const std::vector<DrawList::TextRun>& runs = list.TextRuns();
    std::size_t run = 0;
    for (std::size_t b = 0; b <= batches.size(); ++b) {
        while (run < runs.size() && runs[run].before <= b) {
            paintRun(painter, runs[run], list.TextBytes());
            ++run;
        }
        if (b < batches.size()) {
            paintBatch(painter, batches[b], list.Vertices());
        }
    }
    for (; run < runs.size(); ++run) {
        paintRun(painter, runs[run], list.TextBytes());
    }
}

}  // namespace

void PaintDrawList(QPainter& painter, const DrawList& list)
{
    if (!painter.isActive()) {
        return;
    }
    painter.save();
    try {
        paintList(painter, list);
    } catch (const std::exception&) {
        // Out of memory for a path or an image: the rest of the list is not painted.
    }
    painter.restore();
}

}  // namespace Tavrin
