#ifndef TAVRIN_TOOLS_RENDER_FIGUREKINDS_H
#define TAVRIN_TOOLS_RENDER_FIGUREKINDS_H

// The figure kinds of the scene format: one per analytics class, named after it. Each
// kind has one small setup function that reads its vertices and options and applies them
// through the class's own setters; docs/scene-format.md lists the fields.

#include "FigureBuilder.h"

#include <QString>

namespace Tavrin {
namespace render {

struct FigureKind {
    const char* name;
    void (*setup)(FigureBuilder& builder);
};

/// The kind called `name` (a class name, case-sensitive); null for an unknown name.
const FigureKind* findFigureKind(const QString& name);

}  // namespace render
}  // namespace Tavrin

#endif  // TAVRIN_TOOLS_RENDER_FIGUREKINDS_H
