// The scene schema against what uses it: every field of every kind is read by the reader
// (with its smallest and largest value accepted and one past refused, naming the rule),
// every kind the reader knows is in the schema, and the format document's field tables
// are the ones the schema generates.
#include "RenderTest.h"

#include "FigureKinds.h"
#include "SceneSchema.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>
#include <cstdlib>

using namespace Tavrin::render;

namespace {

// A figure of `kind` with its first vertex count, in a grid the counts cannot cross.
QJsonObject figureOf(const KindSchema& kind)
{
    QJsonArray vertices;
    const int count = kind.vertices.front().min;
    for (int i = 0; i < count; ++i) {
        const double angle = 6.2831853 * i / count;
        vertices.append(QJsonArray{0.5 + 0.3 * std::cos(angle), 0.5 + 0.3 * std::sin(angle)});
    }
    return QJsonObject{{"kind", QLatin1String(kind.name)}, {"vertices", vertices}};
}

// Values a field takes at the edges of its rule, and one it refuses.
struct Probe {
    QJsonValue low;
    QJsonValue high;
    QJsonValue refused;
};

Probe probeOf(const FieldSchema& f)
{
    switch (f.type) {
    case FieldType::Flag:
        return {false, false, 1};
    case FieldType::Choice:
        return {QLatin1String(f.choices.front().name), f.choices.back().value, static_cast<int>(f.choices.size())};
    case FieldType::Integer:
        return {f.min, f.max, f.max + 1};
    case FieldType::Text:
        return {QStringLiteral("a"), QString(f.max, QLatin1Char('w')), QString(f.max + 1, QLatin1Char('w'))};
    case FieldType::Colour:
        return {QStringLiteral("#000000"), QStringLiteral("#ffffff"), QStringLiteral("#fff")};
    case FieldType::Point:
        return {QJsonArray{0, 0}, QJsonArray{1, 1}, QJsonArray{1, 1.5}};
    case FieldType::PointPair:
        return {QJsonArray{QJsonArray{0.1, 0.1}, QJsonArray{0.2, 0.3}},
                QJsonArray{QJsonArray{0.9, 0.9}, QJsonArray{0.5, 0.4}}, QJsonArray{QJsonArray{0.1, 0.1}}};
    case FieldType::Numbers: {
        QJsonArray most;
        for (int i = 0; i <= f.max; ++i) {
            most.append(0.5);
        }
        QJsonArray fits = most;
        fits.removeLast();
        return {QJsonArray{0.0}, fits, most};
    }
    }
    return {};
}

QString parseError(const QJsonObject& figure)
{
    RegistryScope registry;
    const QJsonObject scene{{"width", 200}, {"height", 100}, {"figures", QJsonArray{figure}}};
    try {
        parseScene(QJsonDocument(scene).toJson(), QString(), std::nullopt);
        return QString();
    } catch (const SceneError& e) {
        return e.field() + QStringLiteral(": ") + e.message();
    }
}

}  // namespace

TEST(SceneSchema, EveryFieldIsReadByItsRule)
{
    ASSERT_EQ(sceneKinds().size(), 16u);
    for (const KindSchema& kind : sceneKinds()) {
        EXPECT_NE(findFigureKind(QLatin1String(kind.name)), nullptr) << kind.name;
        EXPECT_EQ(parseError(figureOf(kind)), QString()) << kind.name;
        for (const FieldSchema& f : kind.fields) {
            const Probe probe = probeOf(f);
            const QString where = QStringLiteral("%1.%2").arg(QLatin1String(kind.name), QLatin1String(f.key));
            for (const QJsonValue& accepted : {probe.low, probe.high}) {
                QJsonObject figure = figureOf(kind);
                figure[QLatin1String(f.key)] = accepted;
                // Options that change the vertex count's mode are accepted in their first mode.
                const QString error = parseError(figure);
                EXPECT_TRUE(error.isEmpty() || error.contains(QLatin1String("vertices")))
                    << where.toStdString() << ": " << error.toStdString();
            }
            QJsonObject figure = figureOf(kind);
            figure[QLatin1String(f.key)] = probe.refused;
            EXPECT_TRUE(parseError(figure).startsWith(QStringLiteral("figures[0].%1").arg(QLatin1String(f.key))))
                << where.toStdString() << " refused: " << parseError(figure).toStdString();
        }
    }
    EXPECT_EQ(findFigureKind(QStringLiteral("Polygon")), nullptr);
}

TEST(SceneSchema, VertexCountsAreTheReadersRule)
{
    for (const KindSchema& kind : sceneKinds()) {
        const VertexCount& first = kind.vertices.front();
        QJsonObject figure = figureOf(kind);
        QJsonArray vertices = figure.value(QStringLiteral("vertices")).toArray();
        int most = 0;
        for (const VertexCount& v : kind.vertices) {
            most = std::max(most, v.max);
        }
        while (vertices.size() <= most) {
            vertices.append(QJsonArray{0.5, 0.5});
        }
        figure[QStringLiteral("vertices")] = vertices;
        const QString error = parseError(figure);
        EXPECT_TRUE(error.startsWith(QStringLiteral("figures[0].vertices: %1").arg(QLatin1String(kind.name))))
            << kind.name << ": " << error.toStdString();
        EXPECT_TRUE(error.contains(QString::number(first.min))) << kind.name;
    }
}

TEST(SceneSchema, FormatDocumentTablesAreGeneratedFromIt)
{
    const QString path = QStringLiteral(TAVRIN_SCENE_FORMAT_DOC);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString doc = QString::fromUtf8(file.readAll());
    file.close();
    const QString begin = QStringLiteral("<!-- kinds: begin (generated from tools/render/SceneSchema.cpp) -->\n");
    const QString end = QStringLiteral("<!-- kinds: end -->");
    const int from = doc.indexOf(begin);
    const int to = doc.indexOf(end);
    ASSERT_TRUE(from >= 0 && to > from) << "markers missing in " << path.toStdString();
    const QString generated = kindTablesMarkdown();
    if (std::getenv("TAVRIN_UPDATE_DOC") != nullptr) {
        QString updated = doc;
        updated.replace(from + begin.size(), to - from - begin.size(), generated);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(updated.toUtf8());
        return;
    }
    EXPECT_EQ(doc.mid(from + begin.size(), to - from - begin.size()).toStdString(), generated.toStdString())
        << "TAVRIN_UPDATE_DOC=1 rewrites the tables";
}
