#ifndef TAVRIN_TOOLS_RENDER_SCENE_H
#define TAVRIN_TOOLS_RENDER_SCENE_H

// A scene file read into a view: its pixel size, its background and its figures, created
// and configured as a host would and held by the process's VcaObjectContainer.
// docs/scene-format.md describes the file.

#include "FieldReader.h"

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QString>

#include <optional>
#include <vector>

namespace Tavrin {

class VcaObject;

namespace render {

/// Largest view side, in pixels, that a scene may ask for.
constexpr int kMaxViewSide = 4096;
/// Largest background picture side, in pixels, that is decoded at all.
constexpr int kMaxPictureSide = 8192;

struct Scene {
    QSize size;
    /// The background colour, used where no picture is given (0xRRGGBB).
    unsigned int colour = 0x000000;
    /// The background picture, already scaled to `size`; null for a plain colour.
    QImage picture;
    /// In file order; the registry holds them (release it with VcaObjectContainer::Release).
    std::vector<VcaObject*> figures;
};

/// Reads a scene from JSON text. Relative picture paths are taken from `baseDir`;
/// `size`, when given, replaces the file's view size. Figures are registered as they are
/// read, so on a refusal (a SceneError) the ones already made stay in the registry until
/// it is released.
Scene parseScene(const QByteArray& json, const QString& baseDir, const std::optional<QSize>& size);

/// Reads the scene file at `path` (a SceneError with an empty field when it cannot be read).
Scene readSceneFile(const QString& path, const std::optional<QSize>& size);

}  // namespace render
}  // namespace Tavrin

#endif  // TAVRIN_TOOLS_RENDER_SCENE_H
