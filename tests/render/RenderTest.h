#ifndef TAVRIN_TESTS_RENDERTEST_H
#define TAVRIN_TESTS_RENDERTEST_H

// Helpers shared by the scene renderer's tests: the registry's release at the end of a
// test, drawing a scene offscreen, and the example scene files.

#include "OffscreenGl.h"
#include "Scene.h"
#include "SceneRenderer.h"

#include <Tavrin/VcaObjectContainer.h>

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>

#include <functional>

#include <cstdlib>
#include <vector>

/// Releases the registry, and every figure a scene registered, at the end of a test.
struct RegistryScope {
    ~RegistryScope() { Tavrin::VcaObjectContainer::Release(); }
};

/// The scene drawn into a fresh offscreen context of its size.
inline QImage render(const Tavrin::render::Scene& scene, bool text = true)
{
    Tavrin::offscreen::OffscreenGl gl;
    if (!gl.create(scene.size.width(), scene.size.height())) {
        ADD_FAILURE() << "no offscreen context: " << gl.error();
        return QImage();
    }
    return Tavrin::render::renderScene(scene, gl, text);
}

inline QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The example scene files, by name.
inline QStringList exampleScenes()
{
    QDir dir(QStringLiteral(TAVRIN_EXAMPLE_SCENES));
    QStringList paths;
    for (const QString& name : dir.entryList({QStringLiteral("*.json")}, QDir::Files, QDir::Name)) {
        paths << dir.filePath(name);
    }
    return paths;
}

// ---- Comparing renderers: the criteria every renderer meets against the OpenGL picture.

// Pixels whose channels all lie within `levels` of the other picture's.
inline double shareWithin(const QImage& a, const QImage& b, int levels)
{
    long same = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y);
            const QRgb q = b.pixel(x, y);
            same += std::abs(qRed(p) - qRed(q)) <= levels && std::abs(qGreen(p) - qGreen(q)) <= levels &&
                    std::abs(qBlue(p) - qBlue(q)) <= levels;
        }
    }
    return static_cast<double>(same) / (static_cast<double>(a.width()) * a.height());
}

// Pixels a figure changed: any channel more than a few levels from the picture without it.
inline std::vector<bool> changedPixels(const QImage& with, const QImage& without)
{
    std::vector<bool> changed(static_cast<std::size_t>(with.width()) * with.height());
    for (int y = 0; y < with.height(); ++y) {
        for (int x = 0; x < with.width(); ++x) {
            const QRgb p = with.pixel(x, y);
            const QRgb q = without.pixel(x, y);
            changed[static_cast<std::size_t>(y) * with.width() + x] =
                std::abs(qRed(p) - qRed(q)) > 8 || std::abs(qGreen(p) - qGreen(q)) > 8 || std::abs(qBlue(p) - qBlue(q)) > 8;
        }
    }
    return changed;
}

inline double intersectionOverUnion(const std::vector<bool>& a, const std::vector<bool>& b)
{
    long both = 0;
    long either = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        both += a[i] && b[i];
        either += a[i] || b[i];
    }
    return either == 0 ? 1.0 : static_cast<double>(both) / static_cast<double>(either);
}

/// Every example scene, with text and without, drawn by `draw` against the OpenGL path:
/// at least 97 % of the pixels within 24 levels on every channel, and each figure drawn
/// alone changing the same pixels under both (intersection over union at least 0.9).
inline void expectEveryExampleMatchesGl(const std::function<QImage(const Tavrin::render::Scene&, bool)>& draw)
{
    for (const QString& path : exampleScenes()) {
        for (const bool text : {true, false}) {
            SCOPED_TRACE(QFileInfo(path).fileName().toStdString() + (text ? " with text" : " without text"));
            RegistryScope registry;
            Tavrin::render::Scene scene = Tavrin::render::readSceneFile(path, std::nullopt);
            const QImage gl = render(scene, text);
            const QImage other = draw(scene, text);
            ASSERT_EQ(gl.size(), other.size());
            EXPECT_GE(shareWithin(gl, other, 24), 0.97);
            if (!text) {
                continue;
            }
            const std::vector<Tavrin::VcaObject*> figures = scene.figures;
            scene.figures.clear();
            const QImage glBare = render(scene, text);
            const QImage otherBare = draw(scene, text);
            for (std::size_t i = 0; i < figures.size(); ++i) {
                scene.figures = {figures[i]};
                const double iou =
                    intersectionOverUnion(changedPixels(render(scene, text), glBare), changedPixels(draw(scene, text), otherBare));
                EXPECT_GE(iou, 0.9) << "figure " << i;
            }
        }
    }
}

#endif  // TAVRIN_TESTS_RENDERTEST_H
