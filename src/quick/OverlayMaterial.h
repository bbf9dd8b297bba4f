#ifndef TAVRIN_QUICK_OVERLAYMATERIAL_H
#define TAVRIN_QUICK_OVERLAYMATERIAL_H

#include <QSGMaterial>

class QSGTexture;

namespace Tavrin {
namespace quick {

/// The overlay's material: vertex colour times the font atlas's alpha, blended
/// premultiplied. The atlas texture belongs to the node that uses the material.
class OverlayMaterial : public QSGMaterial {
public:
    explicit OverlayMaterial(QSGTexture* atlas);

    QSGMaterialType* type() const override;
    QSGMaterialShader* createShader(QSGRendererInterface::RenderMode mode) const override;
    int compare(const QSGMaterial* other) const override;

    QSGTexture* atlas() const { return m_atlas; }

private:
    QSGTexture* m_atlas;
};

}  // namespace quick
}  // namespace Tavrin

#endif  // TAVRIN_QUICK_OVERLAYMATERIAL_H
