#ifndef TAVRIN_QUICK_OVERLAYNODE_H
#define TAVRIN_QUICK_OVERLAYNODE_H

#include <Tavrin/TriangleMesh.h>

#include <QSGGeometryNode>

#include <memory>

class QQuickWindow;
class QSGTexture;

namespace Tavrin {
namespace quick {

/// One geometry node holding a draw list's `TriangleMesh`: its vertices as they are (position, atlas
/// coordinates, RGBA bytes), its 32-bit indices, and the font atlas as the texture of its
/// material. The node owns the atlas texture, its geometry and its material.
class OverlayNode : public QSGGeometryNode {
public:
    explicit OverlayNode(QQuickWindow* window);
    ~OverlayNode() override;

    /// The list to capture the next frame into, emptied; its memory is kept from frame to
    /// frame.
    DrawList& emptyList();
    /// Replaces the node's triangles with those of the captured list.
    void showList(bool antialias);

private:
    std::unique_ptr<QSGTexture> m_atlas;
    DrawList m_list;
    TriangleMesh m_mesh;
};

}  // namespace quick
}  // namespace Tavrin

#endif  // TAVRIN_QUICK_OVERLAYNODE_H
