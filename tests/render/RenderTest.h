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
#include <QImage>

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

#endif  // TAVRIN_TESTS_RENDERTEST_H
