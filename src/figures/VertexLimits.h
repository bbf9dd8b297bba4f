#ifndef TAVRIN_FIGURES_VERTEXLIMITS_H
#define TAVRIN_FIGURES_VERTEXLIMITS_H

// How many vertices each kind of analytics figure holds: the classes' SetPoints refuse
// more, and the editing functions insert and remove within these.

namespace Tavrin {
namespace figures {

/// The regions, a VcaRule in every mode, Lane, PdcRule, ItsCali.
constexpr unsigned int kFigureVertices = 10;
/// ITCPlateRegion.
constexpr unsigned int kPlateVertices = 20;
/// SizeFilter and AtmCali: the four corners.
constexpr unsigned int kRectangleVertices = 4;
/// The fewest vertices of an area: a triangle.
constexpr unsigned int kAreaMinimum = 3;
/// A line, a tripwire, a calibration ruler.
constexpr unsigned int kLineVertices = 2;

}  // namespace figures
}  // namespace Tavrin

#endif  // TAVRIN_FIGURES_VERTEXLIMITS_H
