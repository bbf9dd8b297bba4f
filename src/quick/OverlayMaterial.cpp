#include "quick/OverlayMaterial.h"

#include <QSGMaterialShader>
#include <QSGTexture>

#include <cstring>

namespace Tavrin {
namespace quick {

namespace {

// The uniform block both stages declare: the scene graph's matrix, then its opacity.
const int kMatrixBytes = 64;
const int kAtlasBinding = 1;

class OverlayShader : public QSGMaterialShader {
public:
    OverlayShader()
    {
        setShaderFileName(VertexStage, QStringLiteral(":/tavrin/shaders/overlay.vert.qsb"));
        setShaderFileName(FragmentStage, QStringLiteral(":/tavrin/shaders/overlay.frag.qsb"));
    }

    bool updateUniformData(RenderState& state, QSGMaterial*, QSGMaterial*) override
    {
        QByteArray* block = state.uniformData();
        bool changed = false;
        if (state.isMatrixDirty()) {
            std::memcpy(block->data(), state.combinedMatrix().constData(), kMatrixBytes);
            changed = true;
        }
        if (state.isOpacityDirty()) {
            const float opacity = state.opacity();
            std::memcpy(block->data() + kMatrixBytes, &opacity, sizeof opacity);
            changed = true;
        }
        return changed;
    }

    void updateSampledImage(RenderState& state, int binding, QSGTexture** texture, QSGMaterial* material,
                            QSGMaterial*) override
    {
        if (binding != kAtlasBinding) {
            return;
        }
        QSGTexture* atlas = static_cast<OverlayMaterial*>(material)->atlas();
        atlas->commitTextureOperations(state.rhi(), state.resourceUpdateBatch());
        *texture = atlas;
    }
};

}  // namespace

OverlayMaterial::OverlayMaterial(QSGTexture* atlas) : m_atlas(atlas) { setFlag(Blending); }

QSGMaterialType* OverlayMaterial::type() const
{
    static QSGMaterialType kind;
    return &kind;
}

QSGMaterialShader* OverlayMaterial::createShader(QSGRendererInterface::RenderMode) const
{
    return new OverlayShader;
}

int OverlayMaterial::compare(const QSGMaterial* other) const
{
    const QSGTexture* theirs = static_cast<const OverlayMaterial*>(other)->m_atlas;
    return m_atlas == theirs ? 0 : (m_atlas < theirs ? -1 : 1);
}

}  // namespace quick
}  // namespace Tavrin
