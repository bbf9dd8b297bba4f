// Every one-field corruption of a figure in an example scene is either drawn or refused
// with a SceneError, never a crash or another exception. (Every example scene as it is
// is drawn by scene_writer_test.)
#include "RenderTest.h"

#include <Tavrin/VcaObjectContainer.h>

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using Tavrin::render::Scene;
using Tavrin::render::SceneError;

namespace {

const QSize kSmall(160, 90);

/// Values of every JSON type and of awkward sizes.
QList<QJsonValue> oddValues()
{
    QJsonArray manyPoints;
    for (int i = 0; i < 25; ++i) {
        manyPoints.append(QJsonArray{0.5, 0.5});
    }
    return {QJsonValue(QJsonValue::Null), QJsonValue(true), QJsonValue(-1), QJsonValue(0), QJsonValue(7),
            QJsonValue(1e300), QJsonValue(-1e300), QJsonValue(0.5), QJsonValue(QString()),
            QJsonValue(QStringLiteral("selected")), QJsonValue(QString(300, QLatin1Char('x'))),
            QJsonArray{}, QJsonArray{QJsonArray{}}, QJsonArray{QJsonArray{0.5}}, QJsonArray{0.5, 0.5},
            QJsonArray{QJsonArray{0.0, 0.0}, QJsonArray{0.0, 0.0}}, QJsonArray{QJsonArray{1.0, 1.0}},
            manyPoints, QJsonObject{}};
}

}  // namespace

TEST(SceneRobustness, EveryFigureFieldReplacedByAnOddValueIsDrawnOrRefused)
{
    Tavrin::offscreen::OffscreenGl gl;
    ASSERT_TRUE(gl.create(kSmall.width(), kSmall.height())) << gl.error();
    const QList<QJsonValue> values = oddValues();
    int drawn = 0;
    int refused = 0;
    ASSERT_FALSE(exampleScenes().isEmpty());
    for (const QString& path : exampleScenes()) {
        const QJsonObject root = QJsonDocument::fromJson(readFile(path)).object();
        const QString baseDir = QFileInfo(path).absolutePath();
        const QJsonArray figures = root.value(QStringLiteral("figures")).toArray();
        for (int i = 0; i < figures.size(); ++i) {
            const QJsonObject figure = figures.at(i).toObject();
            for (const QString& key : figure.keys()) {
                for (int v = -1; v < values.size(); ++v) {
                    QJsonObject changed = figure;
                    if (v < 0) {
                        changed.remove(key);
                    } else {
                        changed.insert(key, values.at(v));
                    }
                    QJsonArray changedFigures = figures;
                    changedFigures.replace(i, changed);
                    QJsonObject changedRoot = root;
                    changedRoot.insert(QStringLiteral("figures"), changedFigures);
                    // The figures are the subject here; decoding the picture every time is not.
                    changedRoot.insert(QStringLiteral("background"), QStringLiteral("#000000"));
                    RegistryScope registry;
                    try {
                        const Scene scene = Tavrin::render::parseScene(QJsonDocument(changedRoot).toJson(),
                                                                       baseDir, kSmall);
                        Tavrin::render::renderScene(scene, gl);
                        ++drawn;
                    } catch (const SceneError& e) {
                        EXPECT_FALSE(e.message().isEmpty());
                        ++refused;
                    }
                }
            }
        }
    }
    EXPECT_GT(drawn, 0);
    EXPECT_GT(refused, 0);
}
