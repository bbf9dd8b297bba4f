#ifndef TAVRINQT_PAINTDRAWLIST_H
#define TAVRINQT_PAINTDRAWLIST_H

#include <Tavrin/DrawList.h>

#include <TavrinQt/TavrinQtExport.h>

class QPainter;

namespace Tavrin {

/// Paints `list` with `painter`, in the painter's current coordinates (one unit per view
/// pixel of the list; scale the painter to paint at another size). Works on every paint
/// device: a QImage, a widget's paintEvent over a video widget, QPdfWriter, QSvgGenerator,
/// QPrinter.
///
/// Batches are painted as the OpenGL path draws them: each line segment on its own with
/// flat ends (no joins), round points as discs and square ones as squares, fills without
/// outline, with antialiasing wherever the OpenGL path smooths. Text runs are painted as
/// images of the built-in bitmap font's glyphs at their positions, in the run's colour.
/// The painter's state (pen, brush, render hints, transform) is left as it was found.
/// Nothing happens for a painter that is not active.
TAVRIN_QT_API void PaintDrawList(QPainter& painter, const DrawList& list);

}  // namespace Tavrin

#endif  // TAVRINQT_PAINTDRAWLIST_H
