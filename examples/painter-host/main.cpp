// A host without OpenGL: a QWidget shows a picture and paints Tavrin's figures over it
// with QPainter, edited with the mouse through the same press/drag protocol as the OpenGL
// host (examples/host). The figures draw into a draw list, which libtavrin-qt paints.
//
//   tavrin-painter-host [PICTURE]      a window to edit in
//   tavrin-painter-host --self-test    drives a press and drags, checks the painted
//                                      picture and the read-back vertices, exits 0 or 1
//
// The self-test needs no display: run it with QT_QPA_PLATFORM=offscreen.

#include "HostView.h"

#include <Tavrin/Tavrin.h>
#include <TavrinQt/PaintDrawList.h>

#include <QApplication>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QWidget>

#include <cmath>
#include <cstdio>
#include <cstring>

namespace {

template <class Figure>
HostView::ReadBack readerOf(Figure* figure)
{
    return [figure](tagTAVRIN_POINT* points, unsigned int* count) { return figure->GetPoints(points, count); };
}

class PainterHost : public QWidget {
public:
    explicit PainterHost(const QImage& picture) : m_picture(picture), m_view(640, 360)
    {
        setFixedSize(640, 360);
        setMouseTracking(true);
    }

    HostView& view() { return m_view; }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.drawImage(rect(), m_picture);
        // The figures' Draw calls, captured instead of sent to OpenGL, then painted.
        m_list.Clear();
        {
            Tavrin::DrawListScope scope(m_list);
            m_view.paint();
        }
        Tavrin::PaintDrawList(painter, m_list);
    }

    void mousePressEvent(QMouseEvent* e) override
    {
        m_view.press(e->pos().x(), e->pos().y());
        update();
    }
    void mouseMoveEvent(QMouseEvent* e) override
    {
        if (e->buttons() & Qt::LeftButton) {
            m_view.drag(e->pos().x(), e->pos().y());
        } else {
            m_view.hover(e->pos().x(), e->pos().y());
        }
        update();
    }
    void mouseReleaseEvent(QMouseEvent*) override
    {
        m_view.release();
        update();
    }

private:
    QImage m_picture;
    HostView m_view;
    Tavrin::DrawList m_list;
};

// A plain picture when none is given: a dark gradient like a night scene.
QImage fallbackPicture()
{
    QImage image(640, 360, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            image.setPixel(x, y, qRgb(20 + x / 16, 30 + y / 12, 50));
        }
    }
    return image;
}

void addFigures(HostView& view)
{
    Tavrin::ShieldRegion* region = Tavrin::ShieldRegion::NewInstance();
    tagTAVRIN_POINT square[4] = {{0.2f, 0.2f}, {0.4f, 0.2f}, {0.4f, 0.5f}, {0.2f, 0.5f}};
    region->SetPoints(square, 4);
    char name[] = "Mask";
    region->SetLabelText(name, 4);
    view.add(region, readerOf(region));

    Tavrin::VcaRule* wire = Tavrin::VcaRule::NewInstance();
    tagTAVRIN_POINT ends[2] = {{0.6f, 0.3f}, {0.9f, 0.7f}};
    wire->SetPoints(ends, 2);
    wire->SetRuleType(TAVRIN_RULE_LINE);
    wire->SetArrowDirection(TAVRIN_ARROW_POSITIVE);
    view.add(wire, readerOf(wire));
}

bool near(const tagTAVRIN_POINT& p, float x, float y) { return std::fabs(p.x - x) < 1e-3f && std::fabs(p.y - y) < 1e-3f; }

// Press on the region's first vertex, drag it 32 pixels right, then drag the region whole
// 64 pixels down; the picture must show its outline where the vertices say.
int selfTest(PainterHost& host, const QImage& picture)
{
    HostView& view = host.view();
    view.press(128, 72);
    view.drag(160, 72);
    view.release();
    view.press(200, 120);
    view.drag(200, 184);
    view.release();
    const std::vector<tagTAVRIN_POINT> v = view.selectedVertices();
    const bool moved = v.size() == 4 && near(v[0], 0.25f, 0.3778f) && near(v[1], 0.4f, 0.3778f);
    const QImage shot = host.grab().toImage();
    // The outline on the region's top edge (y = 136) stands out from the picture; sixteen
    // pixels above it the picture shows as it is.
    const auto differs = [&](int x, int y) {
        const QRgb a = shot.pixel(x, y);
        const QRgb b = picture.pixel(x, y);
        return std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) + std::abs(qBlue(a) - qBlue(b));
    };
    const bool painted = differs(200, 136) > 100 && differs(200, 120) == 0;
    std::printf("region after the drags: (%.3f, %.3f) (%.3f, %.3f); outline %s\n", v.empty() ? 0.0f : v[0].x,
                v.empty() ? 0.0f : v[0].y, v.size() < 2 ? 0.0f : v[1].x, v.size() < 2 ? 0.0f : v[1].y,
                painted ? "painted" : "missing");
    return moved && painted ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    const bool test = argc > 1 && std::strcmp(argv[1], "--self-test") == 0;
    QImage picture = (!test && argc > 1) ? QImage(QString::fromLocal8Bit(argv[1])) : QImage();
    if (picture.isNull()) {
        picture = fallbackPicture();
    }
    PainterHost host(picture);
    addFigures(host.view());
    if (test) {
        return selfTest(host, picture);
    }
    host.setWindowTitle(QStringLiteral("Tavrin over QPainter"));
    host.show();
    return app.exec();
}
