// The painter renderer against the OpenGL one, on every example scene: the same picture
// within antialiasing differences, and every figure where the OpenGL path draws it.

#include "RenderTest.h"

TEST(PainterRenderer, EveryExampleSceneMatchesTheOpenGlPicture)
{
    expectEveryExampleMatchesGl(
        [](const Tavrin::render::Scene& scene, bool text) { return Tavrin::render::paintSceneImage(scene, text); });
}
