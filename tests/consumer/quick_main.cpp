// A QML host in miniature, built against an installed Qt 6 Tavrin: the overlay item
// registered, created from QML and told to draw one figure. Exits 0 when QML sees it.
#include <Tavrin/Tavrin.h>
#include <TavrinQt/TavrinOverlay.h>

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>

#include <cstdio>
#include <memory>

int main(int argc, char** argv)
{
    QGuiApplication app(argc, argv);
    Tavrin::TavrinOverlay::RegisterQmlType();
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import Tavrin 1.0\nTavrinOverlay { width: 64; height: 48; figureSlots: [0] }", QUrl());
    std::unique_ptr<QObject> item(component.create());
    auto* overlay = qobject_cast<Tavrin::TavrinOverlay*>(item.get());
    if (overlay == nullptr || overlay->figureSlots() != QList<int>{0} || !overlay->editable()) {
        std::fprintf(stderr, "%s\n", qPrintable(component.errorString()));
        return 1;
    }
    std::puts("quick consumer ok");
    return 0;
}
