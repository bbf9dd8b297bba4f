#ifndef TAVRIN_TOOLS_DEMO_PROPERTYPANEL_H
#define TAVRIN_TOOLS_DEMO_PROPERTYPANEL_H

// The selected figure's properties: its label text and every option of its class (the
// scene format's fields), and a live table of its vertices in normalised picture
// coordinates, as the host reads them back to send to the camera.

#include "DemoKinds.h"
#include "SceneDocument.h"

#include <QWidget>

class QFormLayout;
class QLabel;
class QTableWidget;

namespace Tavrin {
namespace demo {



class PropertyPanel : public QWidget {
    Q_OBJECT
public:
    PropertyPanel(SceneDocument& document, QWidget* parent = nullptr);

    /// Rebuilds the editors for the document's selected figure.
    void showSelection();
    /// Refreshes the vertex table (after a drag).
    void refreshVertices();

    QTableWidget* vertexTable() const { return m_vertices; }

signals:
    /// A figure was rebuilt with a changed option.
    void changed();
    void message(const QString& text);

private:
    void addLabelEditor(const QJsonObject& entry);
    void addEditor(const Option& option, const QJsonObject& entry);
    void apply(const QString& key, const QJsonValue& value);
    /// A coordinate typed into the vertex table: the figure takes the table's vertices.
    void applyTypedVertex();

    SceneDocument& m_document;
    QLabel* m_title;
    QWidget* m_form;
    QFormLayout* m_layout;
    QTableWidget* m_vertices;
    int m_slot = -1;
};

}  // namespace demo
}  // namespace Tavrin

#endif  // TAVRIN_TOOLS_DEMO_PROPERTYPANEL_H
