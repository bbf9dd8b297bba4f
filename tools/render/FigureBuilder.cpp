#include "FigureBuilder.h"

#include <Tavrin/VcaObject.h>
#include <Tavrin/VcaObjectContainer.h>

namespace Tavrin {
namespace render {

FigureBuilder::FigureBuilder(FieldReader& fields, QString kind, int width, int height)
    : m_fields(fields), m_kind(std::move(kind)), m_width(width), m_height(height)
{
}

std::vector<tagTAVRIN_POINT> FigureBuilder::vertices(int min, int max, const QString& mode, const QString& phrase)
{
    const QString who = mode.isEmpty() ? m_kind : m_kind + QLatin1Char(' ') + mode;
    const QString takes = phrase.isEmpty() ? countPhrase(min, max, "vertex", "vertices") : phrase;
    const QString counted = QStringLiteral("%1 takes %2").arg(who, takes);
    std::optional<std::vector<tagTAVRIN_POINT>> read = m_fields.points("vertices", min, max, counted);
    if (!read) {
        m_fields.fail("vertices", QStringLiteral("missing"));
    }
    m_handleCount = static_cast<unsigned int>(read->size());
    return *read;
}

void FigureBuilder::adoptObject(VcaObject* created)
{
    if (created == nullptr) {
        m_fields.fail("kind", QStringLiteral("%1 could not be created").arg(m_kind));
    }
    VcaObjectContainer* registry = VcaObjectContainer::Instance();
    if (registry == nullptr || registry->AddVcaObject(created) < 0) {
        created->ReleaseRef();
        m_fields.fail("kind", QStringLiteral("%1 could not be registered").arg(m_kind));
    }
    created->ReleaseRef();
    m_object = created;
    m_object->SetWndSize(m_width, m_height);
}

void FigureBuilder::require(bool accepted, const char* key) const
{
    if (!accepted) {
        m_fields.fail(key, QStringLiteral("refused by %1").arg(m_kind));
    }
}

}  // namespace render
}  // namespace Tavrin
