#ifndef TAVRIN_TAVRIN_H
#define TAVRIN_TAVRIN_H

// Everything Tavrin offers a host: the records, the primitives, the analytics objects
// and their registry.

#include <Tavrin/TavrinTypes.h>
#include <Tavrin/KemoMutex.h>
#include <Tavrin/KemoGuard.h>

#include <Tavrin/GraphMeta.h>
#include <Tavrin/Point.h>
#include <Tavrin/Circle.h>
#include <Tavrin/Polygon.h>
#include <Tavrin/Rectangle.h>
#include <Tavrin/Square.h>
#include <Tavrin/Label.h>
#include <Tavrin/Line.h>
#include <Tavrin/Arrow.h>
#include <Tavrin/BrokenLine.h>
#include <Tavrin/TextRendering.h>

#include <Tavrin/VcaObject.h>
#include <Tavrin/VcaObjectContainer.h>

// Analytics rules.
#include <Tavrin/ShieldRegion.h>
#include <Tavrin/ReferenceRegion.h>
#include <Tavrin/EnterRegion.h>
#include <Tavrin/ITCPlateRegion.h>
#include <Tavrin/VcaRule.h>
#include <Tavrin/ITCLine.h>
#include <Tavrin/Lane.h>
#include <Tavrin/PdcRule.h>
#include <Tavrin/SizeFilter.h>

// Calibration figures.
#include <Tavrin/AtmCali.h>
#include <Tavrin/BehaviorCali.h>
#include <Tavrin/BehaviorCheck.h>
#include <Tavrin/ItsCali.h>
#include <Tavrin/PupilDistance.h>
#include <Tavrin/BinoCali.h>
#include <Tavrin/LfCali.h>
#include <Tavrin/Editing.h>
#include <Tavrin/Diagnostics.h>
#include <Tavrin/Coordinates.h>
#include <Tavrin/Crossings.h>

// Drawing without an OpenGL compatibility context.
#include <Tavrin/CoverageMesh.h>
#include <Tavrin/DrawList.h>
#include <Tavrin/FontAtlas.h>
#include <Tavrin/TriangleMesh.h>

#endif  // TAVRIN_TAVRIN_H
