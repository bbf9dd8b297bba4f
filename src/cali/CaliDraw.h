#ifndef TAVRIN_CALI_CALIDRAW_H
#define TAVRIN_CALI_CALIDRAW_H

// Drawing steps shared by the calibration figures: the plain auxiliary lines (end bars,
// extension, segment). Colours and label boxes come from src/figures.

#include "figures/Palette.h"

#include <Tavrin/GraphMeta.h>
#include <Tavrin/TavrinTypes.h>

namespace Tavrin {
namespace cali {

/// A temporary plain line a-b (type 0, no vertex markers) in `status` and `palette`,
/// drawn for a view of width x height pixels.
void drawPlainLine(const tagTAVRIN_POINT& a, const tagTAVRIN_POINT& b, tagTAVRIN_OBJ_STATUS status,
                   const figures::Palette& palette, void* context, int width, int height);

}  // namespace cali
}  // namespace Tavrin

#endif  // TAVRIN_CALI_CALIDRAW_H
