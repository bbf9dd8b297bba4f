#include <TavrinQt/GlRenderer.h>

#include <Tavrin/FontAtlas.h>
#include <Tavrin/CoverageMesh.h>

#include <QOpenGLContext>
#include <QOpenGLExtraFunctions>
#include <QSurfaceFormat>

#include <cstddef>
#include <cstdint>
#include <limits>

namespace Tavrin {

namespace {

// View pixels to clip space; the edge vector interpolated, the reach the same at every
// corner of a shape.
const char kVertexShader[] = R"(
in vec2 position;
in vec2 edge;
in float reach;
in vec2 texel;
in vec4 colour;
uniform vec2 viewSize;
out vec2 edgeVector;
flat out float edgeReach;
out vec2 atlasTexel;
out vec4 vertexColour;
void main()
{
    edgeVector = edge;
    edgeReach = reach;
    atlasTexel = texel;
    vertexColour = colour;
    gl_Position = vec4(2.0 * position.x / viewSize.x - 1.0, 1.0 - 2.0 * position.y / viewSize.y, 0.0, 1.0);
}
)";

// Shapes: the vertex colour times the coverage of the fragment, premultiplied. No texture
// is read, which spares software rasterisers a lookup per fragment.
const char kShapeFragmentShader[] = R"(
in vec2 edgeVector;
flat in float edgeReach;
in vec4 vertexColour;
out vec4 fragment;
void main()
{
    float alpha = vertexColour.a * clamp(edgeReach - length(edgeVector), 0.0, 1.0);
    fragment = vec4(vertexColour.rgb * alpha, alpha);
}
)";

// Glyphs, and shapes drawn among them: the same times the atlas's alpha (shapes sample
// its opaque block).
const char kGlyphFragmentShader[] = R"(
in vec2 edgeVector;
flat in float edgeReach;
in vec2 atlasTexel;
in vec4 vertexColour;
uniform sampler2D atlas;
out vec4 fragment;
void main()
{
    float alpha = vertexColour.a * clamp(edgeReach - length(edgeVector), 0.0, 1.0) *
                  textureLod(atlas, atlasTexel, 0.0).r;
    fragment = vec4(vertexColour.rgb * alpha, alpha);
}
)";

enum Attribute : GLuint { kPosition = 0, kEdge = 1, kReach = 2, kTexel = 3, kColour = 4 };

// The GLSL dialect of the context: ES 3.0 or desktop 3.30 (core or compatibility).
bool supported(const QOpenGLContext& context)
{
    const QSurfaceFormat f = context.format();
    const int version = f.majorVersion() * 10 + f.minorVersion();
    return context.isOpenGLES() ? version >= 30 : version >= 33;
}

// ES fragment shaders have no default float precision; highp (which ES 3.0 guarantees
// there) keeps atlas coordinates exact. Vertex shaders default to highp, which positions
// in pixels of large views need.
QByteArray shaderSource(const QOpenGLContext& context, GLenum type, const char* body)
{
    if (!context.isOpenGLES()) {
        return QByteArrayLiteral("#version 330\n") + body;
    }
    return QByteArrayLiteral("#version 300 es\n") +
           (type == GL_FRAGMENT_SHADER ? QByteArrayLiteral("precision highp float;\n") : QByteArray()) + body;
}

// The host state Render changes, taken before and put back after.
struct HostState {
    GLint program = 0;
    GLint vertexArray = 0;
    GLint arrayBuffer = 0;
    GLint activeTexture = 0;
    GLint texture = 0;
    GLint sampler = 0;
    GLboolean blend = GL_FALSE;
    GLboolean depthTest = GL_FALSE;
    GLboolean cullFace = GL_FALSE;
    GLint blendSrcRgb = 0;
    GLint blendDstRgb = 0;
    GLint blendSrcAlpha = 0;
    GLint blendDstAlpha = 0;
    GLint blendEquationRgb = 0;
    GLint blendEquationAlpha = 0;

    void save(QOpenGLExtraFunctions& f)
    {
        f.glGetIntegerv(GL_CURRENT_PROGRAM, &program);
        f.glGetIntegerv(GL_VERTEX_ARRAY_BINDING, &vertexArray);
        f.glGetIntegerv(GL_ARRAY_BUFFER_BINDING, &arrayBuffer);
        f.glGetIntegerv(GL_ACTIVE_TEXTURE, &activeTexture);
        f.glActiveTexture(GL_TEXTURE0);
        f.glGetIntegerv(GL_TEXTURE_BINDING_2D, &texture);
        f.glGetIntegerv(GL_SAMPLER_BINDING, &sampler);
        blend = f.glIsEnabled(GL_BLEND);
        depthTest = f.glIsEnabled(GL_DEPTH_TEST);
        cullFace = f.glIsEnabled(GL_CULL_FACE);
        f.glGetIntegerv(GL_BLEND_SRC_RGB, &blendSrcRgb);
        f.glGetIntegerv(GL_BLEND_DST_RGB, &blendDstRgb);
        f.glGetIntegerv(GL_BLEND_SRC_ALPHA, &blendSrcAlpha);
        f.glGetIntegerv(GL_BLEND_DST_ALPHA, &blendDstAlpha);
        f.glGetIntegerv(GL_BLEND_EQUATION_RGB, &blendEquationRgb);
        f.glGetIntegerv(GL_BLEND_EQUATION_ALPHA, &blendEquationAlpha);
    }

    static void setEnabled(QOpenGLExtraFunctions& f, GLenum capability, GLboolean on)
    {
        on ? f.glEnable(capability) : f.glDisable(capability);
    }

    void restore(QOpenGLExtraFunctions& f) const
    {
        f.glUseProgram(static_cast<GLuint>(program));
        f.glBindVertexArray(static_cast<GLuint>(vertexArray));
        f.glBindBuffer(GL_ARRAY_BUFFER, static_cast<GLuint>(arrayBuffer));
        f.glActiveTexture(GL_TEXTURE0);
        f.glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(texture));
        f.glBindSampler(0, static_cast<GLuint>(sampler));
        f.glActiveTexture(static_cast<GLenum>(activeTexture));
        setEnabled(f, GL_BLEND, blend);
        setEnabled(f, GL_DEPTH_TEST, depthTest);
        setEnabled(f, GL_CULL_FACE, cullFace);
        f.glBlendFuncSeparate(static_cast<GLenum>(blendSrcRgb), static_cast<GLenum>(blendDstRgb),
                              static_cast<GLenum>(blendSrcAlpha), static_cast<GLenum>(blendDstAlpha));
        f.glBlendEquationSeparate(static_cast<GLenum>(blendEquationRgb), static_cast<GLenum>(blendEquationAlpha));
    }
};

}  // namespace

// One linked program and its uniforms.
struct Program {
    GLuint name = 0;
    GLint viewSize = -1;
    GLint atlas = -1;
};

struct GlRenderer::State {
    QOpenGLContext* context = nullptr;
    Program shapes;
    Program glyphs;
    GLuint vertexArray = 0;
    GLuint vertexBuffer = 0;
    GLuint indexBuffer = 0;
    GLuint atlas = 0;
    GLsizeiptr vertexCapacity = 0;  // bytes
    GLsizeiptr indexCapacity = 0;   // bytes
    CoverageMesh mesh;
    int lastDrawCalls = 0;

    GLuint compile(QOpenGLExtraFunctions& f, GLenum type, const char* body) const
    {
        const GLuint shader = f.glCreateShader(type);
        const QByteArray source = shaderSource(*context, type, body);
        const char* text = source.constData();
        f.glShaderSource(shader, 1, &text, nullptr);
        f.glCompileShader(shader);
        GLint ok = GL_FALSE;
        f.glGetShaderiv(shader, GL_COMPILE_STATUS, &ok);
        if (ok != GL_TRUE) {
            f.glDeleteShader(shader);
            return 0;
        }
        return shader;
    }

    // `vertex` and a fragment shader of `fragmentBody` linked into `program`.
    bool link(QOpenGLExtraFunctions& f, GLuint vertex, const char* fragmentBody, Program& program) const
    {
        const GLuint fragment = compile(f, GL_FRAGMENT_SHADER, fragmentBody);
        if (fragment == 0) {
            return false;
        }
        program.name = f.glCreateProgram();
        f.glAttachShader(program.name, vertex);
        f.glAttachShader(program.name, fragment);
        f.glBindAttribLocation(program.name, kPosition, "position");
        f.glBindAttribLocation(program.name, kEdge, "edge");
        f.glBindAttribLocation(program.name, kReach, "reach");
        f.glBindAttribLocation(program.name, kTexel, "texel");
        f.glBindAttribLocation(program.name, kColour, "colour");
        f.glLinkProgram(program.name);
        f.glDeleteShader(fragment);
        GLint ok = GL_FALSE;
        f.glGetProgramiv(program.name, GL_LINK_STATUS, &ok);
        program.viewSize = f.glGetUniformLocation(program.name, "viewSize");
        program.atlas = f.glGetUniformLocation(program.name, "atlas");
        return ok == GL_TRUE;
    }

    // Both programs share one vertex shader, compiled once.
    bool buildPrograms(QOpenGLExtraFunctions& f)
    {
        const GLuint vertex = compile(f, GL_VERTEX_SHADER, kVertexShader);
        if (vertex == 0) {
            return false;
        }
        const bool linked =
            link(f, vertex, kShapeFragmentShader, shapes) && link(f, vertex, kGlyphFragmentShader, glyphs);
        f.glDeleteShader(vertex);
        return linked;
    }

    // The font atlas as one 8-bit texture, sampled texel for texel.
    void uploadAtlas(QOpenGLExtraFunctions& f)
    {
        GLint alignment = 4;
        GLint unpackBuffer = 0;
        GLint rowLength = 0;
        f.glGetIntegerv(GL_UNPACK_ALIGNMENT, &alignment);
        f.glGetIntegerv(GL_PIXEL_UNPACK_BUFFER_BINDING, &unpackBuffer);
        f.glGetIntegerv(GL_UNPACK_ROW_LENGTH, &rowLength);
        f.glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
        f.glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
        f.glBindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
        f.glGenTextures(1, &atlas);
        f.glBindTexture(GL_TEXTURE_2D, atlas);
        f.glTexImage2D(GL_TEXTURE_2D, 0, GL_R8, FontAtlas::kWidth, FontAtlas::kHeight, 0, GL_RED, GL_UNSIGNED_BYTE,
                       FontAtlas::Alpha());
        f.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
        f.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
        f.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
        f.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
        f.glBindBuffer(GL_PIXEL_UNPACK_BUFFER, static_cast<GLuint>(unpackBuffer));
        f.glPixelStorei(GL_UNPACK_ROW_LENGTH, rowLength);
        f.glPixelStorei(GL_UNPACK_ALIGNMENT, alignment);
    }

    void buildBuffers(QOpenGLExtraFunctions& f)
    {
        f.glGenVertexArrays(1, &vertexArray);
        f.glGenBuffers(1, &vertexBuffer);
        f.glGenBuffers(1, &indexBuffer);
        f.glBindVertexArray(vertexArray);
        f.glBindBuffer(GL_ARRAY_BUFFER, vertexBuffer);
        f.glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, indexBuffer);
        const GLsizei stride = sizeof(CoverageMesh::Vertex);
        const auto at = [](std::size_t offset) { return reinterpret_cast<const void*>(offset); };
        for (const GLuint attribute : {kPosition, kEdge, kReach, kTexel, kColour}) {
            f.glEnableVertexAttribArray(attribute);
        }
        f.glVertexAttribPointer(kPosition, 2, GL_FLOAT, GL_FALSE, stride, at(offsetof(CoverageMesh::Vertex, x)));
        f.glVertexAttribPointer(kEdge, 2, GL_FLOAT, GL_FALSE, stride, at(offsetof(CoverageMesh::Vertex, edgeX)));
        f.glVertexAttribPointer(kReach, 1, GL_FLOAT, GL_FALSE, stride, at(offsetof(CoverageMesh::Vertex, reach)));
        f.glVertexAttribPointer(kTexel, 2, GL_FLOAT, GL_FALSE, stride, at(offsetof(CoverageMesh::Vertex, u)));
        f.glVertexAttribPointer(kColour, 4, GL_UNSIGNED_BYTE, GL_TRUE, stride, at(offsetof(CoverageMesh::Vertex, r)));
    }

    // Data into a buffer bound to `target`, growing it (never shrinking) when too small.
    static void upload(QOpenGLExtraFunctions& f, GLenum target, GLsizeiptr& capacity, const void* data, GLsizeiptr bytes)
    {
        if (bytes > capacity) {
            capacity = bytes + bytes / 2;
            f.glBufferData(target, capacity, nullptr, GL_DYNAMIC_DRAW);
        }
        f.glBufferSubData(target, 0, bytes, data);
    }

    // `count` indices from `first` with `program`; nothing for none.
    void draw(QOpenGLExtraFunctions& f, const Program& program, std::size_t first, std::size_t count, int width,
              int height)
    {
        if (count == 0) {
            return;
        }
        f.glUseProgram(program.name);
        f.glUniform2f(program.viewSize, static_cast<GLfloat>(width), static_cast<GLfloat>(height));
        f.glUniform1i(program.atlas, 0);
        f.glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(count), GL_UNSIGNED_INT,
                         reinterpret_cast<const void*>(first * sizeof(std::uint32_t)));
        ++lastDrawCalls;
    }

    void deleteObjects(QOpenGLExtraFunctions& f)
    {
        f.glDeleteProgram(shapes.name);
        f.glDeleteProgram(glyphs.name);
        f.glDeleteVertexArrays(1, &vertexArray);
        f.glDeleteBuffers(1, &vertexBuffer);
        f.glDeleteBuffers(1, &indexBuffer);
        f.glDeleteTextures(1, &atlas);
        *this = State();
    }
};

GlRenderer::GlRenderer() : m_state(new State) {}

GlRenderer::~GlRenderer() = default;

bool GlRenderer::IsInitialized() const { return m_state->context != nullptr; }

int GlRenderer::LastDrawCalls() const { return m_state->lastDrawCalls; }

bool GlRenderer::Initialize()
{
    QOpenGLContext* context = QOpenGLContext::currentContext();
    if (context == nullptr || !supported(*context)) {
        return false;
    }
    if (m_state->context == context) {
        return true;
    }
    if (m_state->context != nullptr) {
        return false;  // made in another context: Release there first
    }
    QOpenGLExtraFunctions& f = *context->extraFunctions();
    HostState host;
    host.save(f);
    GLint elementBuffer = 0;
    f.glGetIntegerv(GL_ELEMENT_ARRAY_BUFFER_BINDING, &elementBuffer);
    m_state->context = context;
    const bool built = m_state->buildPrograms(f);
    if (built) {
        m_state->uploadAtlas(f);
        m_state->buildBuffers(f);
    }
    host.restore(f);
    // The element buffer belongs to the vertex array restored above; bound outside one
    // it is context state, put back too.
    if (host.vertexArray == 0) {
        f.glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, static_cast<GLuint>(elementBuffer));
    }
    if (!built) {
        m_state->deleteObjects(f);
        return false;
    }
    return true;
}

void GlRenderer::Render(const DrawList& list, int width, int height)
{
    State& s = *m_state;
    s.lastDrawCalls = 0;
    if (s.context == nullptr || QOpenGLContext::currentContext() != s.context || width <= 0 || height <= 0) {
        return;
    }
    s.mesh.Build(list);
    const std::size_t indexCount = s.mesh.Indices().size();
    if (indexCount == 0 || indexCount > static_cast<std::size_t>(std::numeric_limits<GLsizei>::max())) {
        return;
    }
    QOpenGLExtraFunctions& f = *s.context->extraFunctions();
    HostState host;
    host.save(f);
    f.glBindVertexArray(s.vertexArray);
    f.glBindBuffer(GL_ARRAY_BUFFER, s.vertexBuffer);
    State::upload(f, GL_ARRAY_BUFFER, s.vertexCapacity, s.mesh.Vertices().data(),
                  static_cast<GLsizeiptr>(s.mesh.Vertices().size() * sizeof(CoverageMesh::Vertex)));
    State::upload(f, GL_ELEMENT_ARRAY_BUFFER, s.indexCapacity, s.mesh.Indices().data(),
                  static_cast<GLsizeiptr>(indexCount * sizeof(std::uint32_t)));
    f.glActiveTexture(GL_TEXTURE0);
    f.glBindTexture(GL_TEXTURE_2D, s.atlas);
    f.glBindSampler(0, 0);
    f.glEnable(GL_BLEND);
    f.glBlendEquationSeparate(GL_FUNC_ADD, GL_FUNC_ADD);
    f.glBlendFuncSeparate(GL_ONE, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    f.glDisable(GL_DEPTH_TEST);
    f.glDisable(GL_CULL_FACE);
    // The shapes-only part, then the rest with the atlas.
    const std::size_t shapeCount = s.mesh.ShapeIndexCount();
    s.draw(f, s.shapes, 0, shapeCount, width, height);
    s.draw(f, s.glyphs, shapeCount, indexCount - shapeCount, width, height);
    host.restore(f);
}

void GlRenderer::Release()
{
    State& s = *m_state;
    if (s.context == nullptr || QOpenGLContext::currentContext() != s.context) {
        return;
    }
    s.deleteObjects(*s.context->extraFunctions());
}

}  // namespace Tavrin
