#ifndef TAVRIN_TOOLS_RENDER_FIGUREBUILDER_H
#define TAVRIN_TOOLS_RENDER_FIGUREBUILDER_H

// Creating one figure of a scene the way a host does: the class's NewInstance, registered
// with VcaObjectContainer (which then holds the only reference), told the view size, then
// configured through its setters from the figure's fields.

#include "FieldReader.h"

#include <QString>

#include <vector>

namespace Tavrin {

class VcaObject;

namespace render {

class FigureBuilder {
public:
    FigureBuilder(FieldReader& fields, QString kind, int width, int height);

    FieldReader& fields() { return m_fields; }
    const QString& kind() const { return m_kind; }
    int width() const { return m_width; }
    int height() const { return m_height; }

    /// Reads the required "vertices": `min` to `max` points. `mode` qualifies the kind in
    /// the refusal ("PdcRule in line mode takes 2 vertices, got 5").
    /// `phrase` replaces the count phrase where the rule is not a plain range.
    std::vector<tagTAVRIN_POINT> vertices(int min, int max, const QString& mode = QString(),
                                          const QString& phrase = QString());

    /// Registers a figure fresh from its class's NewInstance: the registry takes a
    /// reference and the creator's is released, so the registry owns it from here on. The
    /// figure is told the view size. Refuses a null figure (creation failed).
    template <class Figure>
    Figure* adopt(Figure* created)
    {
        adoptObject(created);
        return created;
    }
    VcaObject* object() const { return m_object; }

    /// Refuses `key` when the library did not accept the value that was read from it.
    void require(bool accepted, const char* key) const;

    /// How many vertices "selected" may name: the vertices read, unless a kind says
    /// otherwise (a size filter given by its diagonal has four corners).
    unsigned int handleCount() const { return m_handleCount; }
    void setHandleCount(unsigned int count) { m_handleCount = count; }

private:
    void adoptObject(VcaObject* created);

    FieldReader& m_fields;
    QString m_kind;
    int m_width;
    int m_height;
    VcaObject* m_object = nullptr;
    unsigned int m_handleCount = 0;
};

}  // namespace render
}  // namespace Tavrin

#endif  // TAVRIN_TOOLS_RENDER_FIGUREBUILDER_H
