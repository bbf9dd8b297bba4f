// GlRenderer in OpenGL 3.3 core and ES 3.0 contexts that Qt adopts from Mesa's surfaceless
// EGL (no display): every example scene against the OpenGL path's picture, and the host's
// state found as it was left.

#include "RenderTest.h"

#include <Tavrin/Tavrin.h>
#include <TavrinQt/GlRenderer.h>

#include <QGuiApplication>
#include <QOpenGLExtraFunctions>
#include <QOpenGLFramebufferObject>

#include <algorithm>
#include <cstdlib>

using Tavrin::render::ModernGl;

namespace {

QImage drawModern(const Tavrin::render::Scene& scene, bool text, ModernGl flavour)
{
    QString error;
    const QImage image = Tavrin::render::renderSceneModernGl(scene, flavour, text, error);
    EXPECT_FALSE(image.isNull()) << error.toStdString();
    return image;
}

TEST(GlRenderer, EveryExampleSceneMatchesTheOpenGlPictureInCoreAndEs)
{
    for (const ModernGl flavour : {ModernGl::Core, ModernGl::Es}) {
        SCOPED_TRACE(flavour == ModernGl::Es ? "ES 3.0" : "3.3 core");
        expectEveryExampleMatchesGl(
            [flavour](const Tavrin::render::Scene& scene, bool text) { return drawModern(scene, text, flavour); });
    }
}

// A label under a later figure's line keeps its place below it: the second draw call keeps
// the list's order from the first glyph on when a later shape reaches a glyph. The glyph
// cells match the OpenGL path's, and the frame takes two calls.
TEST(GlRenderer, KeepsGlyphsUnderLaterShapesThatCoverThem)
{
    // The line crosses the label's cells (rows 37 to 49 of 120).
    const QByteArray json = R"({"width": 200, "height": 120, "background": "#202020", "figures": [
        {"kind": "ShieldRegion", "vertices": [[0.1, 0.3], [0.5, 0.3], [0.5, 0.6]], "label": "MMMMMM", "status": 0},
        {"kind": "ITCLine", "vertices": [[0.0, 0.36], [1.0, 0.36]], "status": 0}]})";
    const Tavrin::render::Scene scene = Tavrin::render::parseScene(json, QString(), std::nullopt);
    const QImage gl = render(scene);
    const QImage core = drawModern(scene, true, ModernGl::Core);
    const Tavrin::DrawList list = Tavrin::render::captureScene(scene);
    ASSERT_EQ(list.TextRuns().size(), 1u);
    const Tavrin::DrawList::TextRun& run = list.TextRuns()[0];
    ASSERT_TRUE(run.y < 43 && run.y + Tavrin::DrawList::kGlyphHeight > 44) << run.y;
    int worst = 0;
    for (int y = run.y; y < run.y + Tavrin::DrawList::kGlyphHeight; ++y) {
        for (int x = run.x; x < run.x + static_cast<int>(run.length) * Tavrin::DrawList::kGlyphWidth; ++x) {
            const QRgb a = gl.pixel(x, y);
            const QRgb b = core.pixel(x, y);
            worst = std::max({worst, std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                              std::abs(qBlue(a) - qBlue(b))});
        }
    }
    EXPECT_LE(worst, 24) << "the glyph cells differ from the OpenGL path's";

    Tavrin::offscreen::QtOffscreenGl context;
    ASSERT_TRUE(context.create(Tavrin::offscreen::GlProfile::Es30)) << context.error();
    QOpenGLFramebufferObject target(64, 64);
    ASSERT_TRUE(target.bind());
    Tavrin::GlRenderer renderer;
    ASSERT_TRUE(renderer.Initialize());
    renderer.Render(list, 200, 120);
    EXPECT_EQ(renderer.LastDrawCalls(), 2);
    renderer.Release();
}

// A host's own GL state, set to values the renderer must not leave changed.
struct HostGl {
    GLuint program = 0;
    GLuint vertexArray = 0;
    GLuint buffer = 0;
    GLuint texture = 0;
    GLuint sampler = 0;

    void bind(QOpenGLExtraFunctions& f)
    {
        const char* vs = "#version 330\nvoid main() { gl_Position = vec4(0.0); }\n";
        const char* fs = "#version 330\nout vec4 c;\nvoid main() { c = vec4(1.0); }\n";
        program = f.glCreateProgram();
        for (const auto& [type, text] : {std::pair<GLenum, const char*>{GL_VERTEX_SHADER, vs}, {GL_FRAGMENT_SHADER, fs}}) {
            const GLuint shader = f.glCreateShader(type);
            const char* source = text;
            f.glShaderSource(shader, 1, &source, nullptr);
            f.glCompileShader(shader);
            f.glAttachShader(program, shader);
        }
        f.glLinkProgram(program);
        f.glUseProgram(program);
        f.glGenVertexArrays(1, &vertexArray);
        f.glBindVertexArray(vertexArray);
        f.glGenBuffers(1, &buffer);
        f.glBindBuffer(GL_ARRAY_BUFFER, buffer);
        f.glGenTextures(1, &texture);
        f.glActiveTexture(GL_TEXTURE0);
        f.glBindTexture(GL_TEXTURE_2D, texture);
        f.glGenSamplers(1, &sampler);
        f.glBindSampler(0, sampler);
        f.glActiveTexture(GL_TEXTURE3);
        f.glEnable(GL_BLEND);
        f.glBlendFuncSeparate(GL_SRC_COLOR, GL_DST_COLOR, GL_ZERO, GL_ONE);
        f.glBlendEquationSeparate(GL_FUNC_SUBTRACT, GL_MAX);
        f.glEnable(GL_DEPTH_TEST);
        f.glEnable(GL_CULL_FACE);
        f.glViewport(3, 4, 50, 60);
    }

    void expectIntact(QOpenGLExtraFunctions& f) const
    {
        auto get = [&f](GLenum name) {
            GLint v = 0;
            f.glGetIntegerv(name, &v);
            return v;
        };
        EXPECT_EQ(get(GL_CURRENT_PROGRAM), static_cast<GLint>(program));
        EXPECT_EQ(get(GL_VERTEX_ARRAY_BINDING), static_cast<GLint>(vertexArray));
        EXPECT_EQ(get(GL_ARRAY_BUFFER_BINDING), static_cast<GLint>(buffer));
        EXPECT_EQ(get(GL_ACTIVE_TEXTURE), GL_TEXTURE3);
        f.glActiveTexture(GL_TEXTURE0);
        EXPECT_EQ(get(GL_TEXTURE_BINDING_2D), static_cast<GLint>(texture));
        EXPECT_EQ(get(GL_SAMPLER_BINDING), static_cast<GLint>(sampler));
        f.glActiveTexture(GL_TEXTURE3);
        EXPECT_TRUE(f.glIsEnabled(GL_BLEND));
        EXPECT_TRUE(f.glIsEnabled(GL_DEPTH_TEST));
        EXPECT_TRUE(f.glIsEnabled(GL_CULL_FACE));
        EXPECT_EQ(get(GL_BLEND_SRC_RGB), GL_SRC_COLOR);
        EXPECT_EQ(get(GL_BLEND_DST_RGB), GL_DST_COLOR);
        EXPECT_EQ(get(GL_BLEND_SRC_ALPHA), GL_ZERO);
        EXPECT_EQ(get(GL_BLEND_DST_ALPHA), GL_ONE);
        EXPECT_EQ(get(GL_BLEND_EQUATION_RGB), GL_FUNC_SUBTRACT);
        EXPECT_EQ(get(GL_BLEND_EQUATION_ALPHA), GL_MAX);
        GLint viewport[4] = {};
        f.glGetIntegerv(GL_VIEWPORT, viewport);
        EXPECT_EQ(viewport[0], 3);
        EXPECT_EQ(viewport[3], 60);
        EXPECT_EQ(f.glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    }
};

TEST(GlRenderer, LeavesTheHostStateAsItFoundItWithOneDrawCallOrTwo)
{
    Tavrin::offscreen::QtOffscreenGl gl;
    ASSERT_TRUE(gl.create(Tavrin::offscreen::GlProfile::Core33)) << gl.error();
    QOpenGLExtraFunctions& f = *gl.context()->extraFunctions();
    QOpenGLFramebufferObject target(64, 64);
    ASSERT_TRUE(target.bind());

    Tavrin::GlRenderer renderer;
    HostGl host;
    host.bind(f);
    ASSERT_TRUE(renderer.Initialize());
    host.expectIntact(f);
    EXPECT_TRUE(renderer.Initialize()) << "a second call in the same context";

    tagTAVRIN_POINT ends[2] = {{0.1f, 0.5f}, {0.9f, 0.5f}};
    Tavrin::Line line(ends, 2);
    Tavrin::DrawList list;
    {
        Tavrin::DrawListScope scope(list);
        line.Draw(nullptr, 64, 64, true);
    }
    renderer.Render(list, 64, 64);
    EXPECT_EQ(renderer.LastDrawCalls(), 1);
    host.expectIntact(f);
    // With text: the shapes' program, then the glyphs'.
    Tavrin::TextRendering::SetEnabled(true);
    tagTAVRIN_POINT corner{0.2f, 0.2f};
    Tavrin::Label label(&corner, 1);
    char text[] = "Gate";
    label.SetText(text);
    {
        Tavrin::DrawListScope scope(list);
        label.Draw(nullptr, 64, 64, true);
    }
    Tavrin::TextRendering::SetEnabled(false);
    ASSERT_FALSE(list.TextRuns().empty());
    renderer.Render(list, 64, 64);
    EXPECT_EQ(renderer.LastDrawCalls(), 2);
    host.expectIntact(f);
    renderer.Render(Tavrin::DrawList(), 64, 64);
    EXPECT_EQ(renderer.LastDrawCalls(), 0);
    renderer.Render(list, 0, 64);
    EXPECT_EQ(renderer.LastDrawCalls(), 0);
    renderer.Release();
    EXPECT_FALSE(renderer.IsInitialized());
    host.expectIntact(f);
    gl.doneCurrent();
    EXPECT_FALSE(renderer.Initialize()) << "no context current";
}

}  // namespace

int main(int argc, char** argv)
{
    Tavrin::offscreen::preferHeadlessQtPlatform();
    QGuiApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
