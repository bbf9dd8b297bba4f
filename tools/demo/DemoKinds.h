#ifndef TAVRIN_TOOLS_DEMO_DEMOKINDS_H
#define TAVRIN_TOOLS_DEMO_DEMOKINDS_H

// What the demo knows about each of the sixteen analytics classes beyond the scene
// schema: how many clicks place a new figure and how the clicks become the figure's entry.
// The options its property panel offers are the schema's fields.

#include "SceneSchema.h"

#include <Tavrin/TavrinTypes.h>

#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <vector>

namespace Tavrin {
namespace demo {

/// An option is a field of the scene schema (tools/render/SceneSchema.h): the panel
/// offers exactly the fields the reader reads, with their choices and ranges. An option
/// absent from a figure's entry keeps the class's own initial value.
using OptionType = render::FieldType;
using Option = render::FieldSchema;

struct Kind {
    const char* name;
    /// What the figure is for, in the words of the people who configure cameras.
    const char* purpose;
    /// One sentence on what it does, for the palette's tooltip.
    const char* description;
    /// Clicks that place a new figure: at least `minClicks`; placing stops by itself at
    /// `maxClicks`.
    unsigned int minClicks;
    unsigned int maxClicks;
    /// The kind's fields, from the scene schema.
    std::vector<Option> options;
};

/// The names a choice accepts, in value order.
QStringList choiceNames(const Option& option);

/// The sixteen kinds in palette order.
const std::vector<Kind>& kinds();
/// The kind called `name`, or null.
const Kind* findKind(const QString& name);

/// The scene entry of a new figure of `kind` from `clicks` (normalised points, within
/// the kind's click limits): its vertices and the options that make it a complete figure
/// (a tripwire for two clicks of a VcaRule, the corners of an ATM region and a
/// calibration line in it, a lane's direction arrow, a radius). Empty for an unknown
/// kind or a click count outside the limits.
QJsonObject newFigureEntry(const QString& kind, const std::vector<tagTAVRIN_POINT>& clicks);

/// "x, y" and "x, y; x, y" as the panel shows points, and the lists of numbers.
QString pointsText(const QJsonValue& value);
/// Reads the panel's text for an option of `type` back into a scene value; an empty
/// text gives an undefined value (the option is left out). False for malformed text.
bool parseOptionText(OptionType type, const QString& text, QJsonValue& value);

}  // namespace demo
}  // namespace Tavrin

#endif  // TAVRIN_TOOLS_DEMO_DEMOKINDS_H
