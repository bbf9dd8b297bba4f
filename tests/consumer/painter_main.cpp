// A QPainter host in miniature, built against an installed Tavrin: a figure captured into a
// draw list and painted into a picture with libtavrin-qt. Exits 0 when the line shows.
#include <Tavrin/Tavrin.h>
#include <TavrinQt/PaintDrawList.h>

#include <QImage>
#include <QPainter>

#include <cstdio>

int main()
{
    tagTAVRIN_POINT ends[2] = {{0.1f, 0.5f}, {0.9f, 0.5f}};
    Tavrin::Line line(ends, 2);
    line.SetColors(0xff0000, 0xff0000, 0xff0000, 0xff0000);
    Tavrin::DrawList list;
    {
        Tavrin::DrawListScope scope(list);
        line.Draw(nullptr, 100, 50, true);
    }
    QImage image(100, 50, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    Tavrin::PaintDrawList(painter, list);
    painter.end();
    if (qRed(image.pixel(50, 25)) < 200 || qRed(image.pixel(50, 10)) != 0) {
        return 1;
    }
    std::puts("painter consumer ok");
    return 0;
}
