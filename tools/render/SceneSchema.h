#ifndef TAVRIN_TOOLS_RENDER_SCENESCHEMA_H
#define TAVRIN_TOOLS_RENDER_SCENESCHEMA_H

// The scene format's figure kinds as one declarative table: for each kind its vertex
// counts (per mode) and its option fields with their types, choices, ranges and the
// setter they reach. The reader (FigureKinds.cpp) takes every rule from here, the writer
// orders the fields by it, the demo's property panel offers exactly these editors, and the
// field tables of docs/scene-format.md are generated from it (a test keeps them equal), so
// a new option is one entry and its refusal message cannot disagree with its rule.

#include "FieldReader.h"

#include <QString>

#include <vector>

namespace Tavrin {
namespace render {

enum class FieldType { Flag, Choice, Integer, Text, Colour, Point, PointPair, Numbers };

struct FieldSchema {
    const char* key;
    FieldType type;
    /// Choice: the names and values accepted.
    std::vector<Choice> choices;
    /// Integer: the range. Text: the longest text (max). Numbers: how many at most (max).
    int min = 0;
    int max = 0;
    /// The class's setter the field reaches, and what else a reader of the format should
    /// know, as the format document says it.
    const char* setter = "";
    const char* note = "";
};

/// One vertex count of a kind: `min` to `max`, in the mode `mode` names ("" when the kind
/// has one mode; "of rule type line", "in line mode", as refusals qualify the kind).
struct VertexCount {
    int min;
    int max;
    const char* mode;
    /// How the format document states the count ("2 (a diagonal, ...)"); "" for the plain
    /// range.
    const char* text;
};

enum class KindGroup { Region, Rule, Calibration };

struct KindSchema {
    const char* name;
    KindGroup group;
    std::vector<VertexCount> vertices;
    std::vector<FieldSchema> fields;

    /// The field called `key`; a kind's code asks only for its own fields (the schema
    /// test reads every one), so an unknown key is a programming error: it yields an
    /// empty Flag field named "?" that no file can give.
    const FieldSchema& field(const char* key) const;
};

/// The sixteen kinds in the format document's order.
const std::vector<KindSchema>& sceneKinds();
/// The kind called `name`, or null.
const KindSchema* findKindSchema(const QString& name);

/// The format document's field tables ("### Regions" ... "### Calibration figures"), as
/// Markdown generated from the table.
QString kindTablesMarkdown();

}  // namespace render
}  // namespace Tavrin

#endif  // TAVRIN_TOOLS_RENDER_SCENESCHEMA_H
