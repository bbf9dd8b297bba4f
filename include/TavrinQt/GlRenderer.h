#ifndef TAVRINQT_GLRENDERER_H
#define TAVRINQT_GLRENDERER_H

#include <Tavrin/DrawList.h>
#include <TavrinQt/TavrinQtExport.h>

#include <memory>

namespace Tavrin {

/// Draws `DrawList`s with modern OpenGL: desktop core 3.3 or newer, OpenGL ES 3.0 or newer,
/// or a compatibility context of 3.3 or newer, through Qt's function resolvers
/// (QOpenGLExtraFunctions), so one path serves desktop and ES.
///
/// Each frame the list becomes one `CoverageMesh` (a quad per line segment and per point,
/// their smooth edges computed per fragment), uploaded into one vertex and one index
/// buffer that grow and never shrink, and is drawn with premultiplied-alpha blending in
/// at most two draw calls, whatever the number of figures: the shapes with a program
/// that reads no texture, then the glyphs with one that reads the `FontAtlas` (its only
/// texture). A list without text takes one call, an empty one none.
///
/// `Render` leaves the host's state as it found it: the bound program, vertex array,
/// array buffer, texture and sampler of unit 0, the active texture unit, blending (on or
/// off, its functions and equations), depth test and face culling. The viewport is the
/// host's and is neither read nor changed: the list is drawn into the viewport as a view
/// of `width` x `height` pixels.
///
/// Every call needs the same QOpenGLContext current: `Initialize` once, `Render` per frame,
/// `Release` before the context goes (the destructor makes no GL call; GL objects not
/// released then belong to the context and go with it).
class TAVRIN_QT_API GlRenderer {
public:
    GlRenderer();
    ~GlRenderer();
    GlRenderer(const GlRenderer&) = delete;
    GlRenderer& operator=(const GlRenderer&) = delete;

    /// Builds the program, buffers and atlas texture in the current context. False (and
    /// nothing made) without a current context, in one older than the versions above, or
    /// when a shader does not build; true again when already initialised in it.
    bool Initialize();
    bool IsInitialized() const;
    /// Draws `list` as a view of `width` x `height` pixels into the current framebuffer.
    /// Nothing without initialisation, from another context, or for a view without area.
    void Render(const DrawList& list, int width, int height);
    /// Deletes the GL objects (the context they were made in must be current).
    void Release();

    /// Draw calls the last `Render` made: 0, 1 or 2.
    int LastDrawCalls() const;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

}  // namespace Tavrin

#endif  // TAVRINQT_GLRENDERER_H
