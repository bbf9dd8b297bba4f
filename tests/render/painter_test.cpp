// The painter renderer against the OpenGL one, on every example scene: the same picture
// within antialiasing differences, and every figure where the OpenGL path draws it.

#include "RenderTest.h"

#include <QFileInfo>

namespace {

// Pixels whose channels all lie within `levels` of the other picture's.
double shareWithin(const QImage& a, const QImage& b, int levels)
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
std::vector<bool> changedPixels(const QImage& with, const QImage& without)
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

double intersectionOverUnion(const std::vector<bool>& a, const std::vector<bool>& b)
{
    long both = 0;
    long either = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        both += a[i] && b[i];
        either += a[i] || b[i];
    }
    return either == 0 ? 1.0 : static_cast<double>(both) / static_cast<double>(either);
}

TEST(PainterRenderer, EveryExampleSceneMatchesTheOpenGlPicture)
{
    for (const QString& path : exampleScenes()) {
        for (const bool text : {true, false}) {
            SCOPED_TRACE(QFileInfo(path).fileName().toStdString() + (text ? " with text" : " without text"));
            RegistryScope registry;
            Tavrin::render::Scene scene = Tavrin::render::readSceneFile(path, std::nullopt);
            const QImage gl = render(scene, text);
            const QImage painted = Tavrin::render::paintSceneImage(scene, text);
            ASSERT_EQ(gl.size(), painted.size());
            EXPECT_GE(shareWithin(gl, painted, 24), 0.97);
            if (!text) {
                continue;
            }
            // Each figure alone: what it changes under either renderer is the same place.
            const std::vector<Tavrin::VcaObject*> figures = scene.figures;
            scene.figures.clear();
            const QImage glBare = render(scene, text);
            const QImage paintedBare = Tavrin::render::paintSceneImage(scene, text);
            for (std::size_t i = 0; i < figures.size(); ++i) {
                scene.figures = {figures[i]};
                const double iou = intersectionOverUnion(changedPixels(render(scene, text), glBare),
                                                         changedPixels(Tavrin::render::paintSceneImage(scene, text), paintedBare));
                EXPECT_GE(iou, 0.9) << "figure " << i;
            }
        }
    }
}

}  // namespace
