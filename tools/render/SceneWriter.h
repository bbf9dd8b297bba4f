#ifndef TAVRIN_TOOLS_RENDER_SCENEWRITER_H
#define TAVRIN_TOOLS_RENDER_SCENEWRITER_H

// Writing scene files (docs/scene-format.md), the counterpart of Scene.h's reader: a
// figure's entry is brought up to date from the live figure after it was edited, and a
// whole scene is written as JSON text that the reader reads back into figures that draw
// exactly as the live ones did.

#include <Tavrin/TavrinTypes.h>

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QSize>
#include <QString>

#include <vector>

namespace Tavrin {

class VcaObject;

namespace render {

/// `entry` (a figure's object in a scene file: its "kind" and options) with the fields
/// that editing changes read back from `figure`, which the reader built from that entry:
/// the vertices, the label, the status, the active vertex, and per kind the lane's and
/// people-counting rule's arrow, the people-counting calibration and single points, the
/// ATM calibration line and its active end. Options the class cannot report are kept as
/// the entry gives them; an option the entry leaves out stays out unless the figure now
/// holds a value for it that differs from its class's initial one.
QJsonObject refreshedEntry(const QJsonObject& entry, VcaObject* figure);

/// The vertices of `figure`, an object of the class named `kind`, as that class's
/// GetPoints reads them back. False for an unknown kind, a figure of another class or a
/// refused read.
bool readVertices(const QString& kind, VcaObject* figure, std::vector<tagTAVRIN_POINT>& out);

/// A point as a scene file writes it: [x, y].
QJsonArray pointValue(const tagTAVRIN_POINT& p);
QJsonArray pointsValue(const tagTAVRIN_POINT* points, unsigned int count);

/// The top of a scene file.
struct SceneHeader {
    QString comment;
    /// The view size written as "width" and "height"; not written when empty.
    QSize size;
    /// "#rrggbb" or a picture path relative to the scene file; not written when empty.
    QString background;
};

/// The scene as JSON text: the header's fields, then "figures" with one entry a line
/// group, "kind" first. Every number is written with the fewest digits that read back as
/// the same 32-bit float, so vertices survive a save and a load bit for bit.
QByteArray writeScene(const SceneHeader& header, const std::vector<QJsonObject>& figures);

}  // namespace render
}  // namespace Tavrin

#endif  // TAVRIN_TOOLS_RENDER_SCENEWRITER_H
