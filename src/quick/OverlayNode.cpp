#include "quick/OverlayNode.h"

#include "quick/OverlayMaterial.h"

#include <Tavrin/FontAtlas.h>

#include <QImage>
#include <QQuickWindow>
#include <QSGGeometry>
#include <QSGTexture>

#include <climits>
#include <cstddef>
#include <cstring>

namespace Tavrin {
namespace quick {

namespace {

using Vertex = TriangleMesh::Vertex;

const QSGGeometry::AttributeSet& vertexLayout()
{
    static const QSGGeometry::Attribute attributes[] = {
        QSGGeometry::Attribute::createWithAttributeType(0, 2, QSGGeometry::FloatType, QSGGeometry::PositionAttribute),
        QSGGeometry::Attribute::createWithAttributeType(1, 2, QSGGeometry::FloatType, QSGGeometry::TexCoordAttribute),
        QSGGeometry::Attribute::createWithAttributeType(2, 4, QSGGeometry::UnsignedByteType,
                                                        QSGGeometry::ColorAttribute),
    };
    static_assert(offsetof(Vertex, u) == 2 * sizeof(float) && offsetof(Vertex, r) == 4 * sizeof(float),
                  "the attribute offsets follow the mesh's vertex");
    static const QSGGeometry::AttributeSet layout = {3, static_cast<int>(sizeof(Vertex)), attributes};
    return layout;
}

// The atlas as premultiplied white: every channel carries the coverage, which the
// fragment stage reads from alpha.
QImage atlasImage()
{
    QImage image(FontAtlas::kWidth, FontAtlas::kHeight, QImage::Format_RGBA8888_Premultiplied);
    const std::uint8_t* alpha = FontAtlas::Alpha();
    for (int y = 0; y < FontAtlas::kHeight; ++y) {
        std::uint8_t* row = image.scanLine(y);
        for (int x = 0; x < FontAtlas::kWidth; ++x) {
            std::memset(row + 4 * x, alpha[y * FontAtlas::kWidth + x], 4);
        }
    }
    return image;
}

}  // namespace

OverlayNode::OverlayNode(QQuickWindow* window) : m_atlas(window->createTextureFromImage(atlasImage()))
{
    // Glyph cells are texel-exact; nearest sampling keeps them crisp.
    m_atlas->setFiltering(QSGTexture::Nearest);
    auto* geometry = new QSGGeometry(vertexLayout(), 0, 0, QSGGeometry::UnsignedIntType);
    geometry->setDrawingMode(QSGGeometry::DrawTriangles);
    setGeometry(geometry);
    setMaterial(new OverlayMaterial(m_atlas.get()));
    setFlags(OwnsGeometry | OwnsMaterial);
}

OverlayNode::~OverlayNode() = default;

DrawList& OverlayNode::emptyList()
{
    m_list.Clear();
    return m_list;
}

void OverlayNode::showList(bool antialias)
{
    m_mesh.Build(m_list, antialias);
    const std::vector<Vertex>& vertices = m_mesh.Vertices();
    const std::vector<std::uint32_t>& indices = m_mesh.Indices();
    // The scene graph counts in int: a mesh beyond that is not shown at all.
    const bool fits = vertices.size() <= static_cast<std::size_t>(INT_MAX) &&
                      indices.size() <= static_cast<std::size_t>(INT_MAX);
    QSGGeometry* g = geometry();
    g->allocate(fits ? static_cast<int>(vertices.size()) : 0, fits ? static_cast<int>(indices.size()) : 0);
    if (fits && !indices.empty()) {
        std::memcpy(g->vertexData(), vertices.data(), vertices.size() * sizeof(Vertex));
        std::memcpy(g->indexData(), indices.data(), indices.size() * sizeof(std::uint32_t));
    }
    markDirty(DirtyGeometry);
}

}  // namespace quick
}  // namespace Tavrin
