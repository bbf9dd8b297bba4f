// The scene writer: what it writes reads back into the same floats and into figures that
// draw exactly as the ones it was written from.
#include "RenderTest.h"
#include "SceneWriter.h"

#include <Tavrin/VcaObjectContainer.h>

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <vector>

using Tavrin::VcaObjectContainer;
using namespace Tavrin::render;

namespace {

/// Writes a scene from the figures `scene` built out of `top` (the file's object), each
/// entry refreshed from its figure.
QByteArray rewrite(const QJsonObject& top, const Scene& scene)
{
    SceneHeader header;
    header.comment = top.value(QStringLiteral("comment")).toString();
    header.size = scene.size;
    header.background = top.value(QStringLiteral("background")).toString();
    const QJsonArray entries = top.value(QStringLiteral("figures")).toArray();
    std::vector<QJsonObject> figures;
    for (int i = 0; i < entries.size(); ++i) {
        figures.push_back(refreshedEntry(entries.at(i).toObject(), scene.figures[static_cast<std::size_t>(i)]));
    }
    return writeScene(header, figures);
}

}  // namespace

TEST(SceneWriter, NumbersReadBackAsTheSameFloats)
{
    RegistryScope registry;
    const std::vector<float> values = {0.0f,         1.0f,         0.1f,        1.0f / 3.0f,
                                       0.7095f,      1e-7f,        0.99999994f, std::nextafter(0.5f, 1.0f),
                                       0.123456789f, 2.0f / 960.0f};
    std::vector<QJsonObject> figures;
    for (std::size_t i = 0; i + 1 < values.size(); i += 2) {
        const tagTAVRIN_POINT p{values[i], values[i + 1]};
        QJsonObject entry;
        entry[QStringLiteral("kind")] = QStringLiteral("LfCali");
        entry[QStringLiteral("vertices")] = pointsValue(&p, 1);
        figures.push_back(entry);
    }
    const QByteArray json = writeScene(SceneHeader{QString(), QSize(64, 64), QString()}, figures);
    const Scene scene = parseScene(json, QString(), std::nullopt);
    ASSERT_EQ(scene.figures.size(), figures.size());
    for (std::size_t i = 0; i < scene.figures.size(); ++i) {
        std::vector<tagTAVRIN_POINT> read;
        ASSERT_TRUE(readVertices(QStringLiteral("LfCali"), scene.figures[i], read));
        ASSERT_EQ(read.size(), 1u);
        EXPECT_EQ(read[0].x, values[2 * i]) << json.constData();
        EXPECT_EQ(read[0].y, values[2 * i + 1]) << json.constData();
    }
    // Short where a short spelling reads back the same.
    EXPECT_TRUE(json.contains("[0, 1]")) << json.constData();
    EXPECT_TRUE(json.contains("[0.7095, 1e-07]")) << json.constData();
}

TEST(SceneWriter, KeepsCommentsTextAndFieldOrder)
{
    QJsonObject figure;
    figure[QStringLiteral("kind")] = QStringLiteral("ItsCali");
    figure[QStringLiteral("widthText")] = QStringLiteral("3.5 \"m\"");
    figure[QStringLiteral("comment")] = QStringLiteral("first");
    figure[QStringLiteral("vertices")] = QJsonArray{QJsonArray{0.5, 0.25}};
    const QByteArray json =
        writeScene(SceneHeader{QStringLiteral("a\nb"), QSize(320, 200), QStringLiteral("#102030")}, {figure});
    EXPECT_EQ(json.toStdString(),
              "{\n"
              "  \"comment\": \"a\\nb\",\n"
              "  \"width\": 320,\n"
              "  \"height\": 200,\n"
              "  \"background\": \"#102030\",\n"
              "  \"figures\": [\n"
              "    {\"comment\": \"first\",\n"
              "     \"kind\": \"ItsCali\",\n"
              "     \"vertices\": [[0.5, 0.25]],\n"
              "     \"widthText\": \"3.5 \\\"m\\\"\"}\n"
              "  ]\n"
              "}\n");
    EXPECT_EQ(writeScene(SceneHeader{}, {}).toStdString(), "{\n  \"figures\": []\n}\n");
}

TEST(SceneWriter, RefreshLeavesOutOptionsAFigureNeverHad)
{
    RegistryScope registry;
    const Scene scene = parseScene(R"({"width": 100, "height": 100, "figures": [
        {"kind": "Lane", "vertices": [[0.1, 0.1], [0.5, 0.1], [0.5, 0.5]]},
        {"kind": "AtmCali", "vertices": [[0.1, 0.1], [0.5, 0.1], [0.5, 0.5], [0.1, 0.5]], "label": "atm"}]})",
                                   QString(), std::nullopt);
    ASSERT_EQ(scene.figures.size(), 2u);
    const QJsonObject lane = refreshedEntry(QJsonObject{{"kind", "Lane"}}, scene.figures[0]);
    EXPECT_FALSE(lane.contains(QStringLiteral("arrow")));
    EXPECT_FALSE(lane.contains(QStringLiteral("label")));
    EXPECT_FALSE(lane.contains(QStringLiteral("selected")));
    EXPECT_EQ(lane.value(QStringLiteral("status")).toString(), QStringLiteral("normal"));
    EXPECT_EQ(lane.value(QStringLiteral("vertices")).toArray().size(), 3);

    const QJsonObject atm = refreshedEntry(QJsonObject{{"kind", "AtmCali"}}, scene.figures[1]);
    EXPECT_FALSE(atm.contains(QStringLiteral("linePoints")));
    EXPECT_EQ(atm.value(QStringLiteral("label")).toString(), QStringLiteral("atm"));
    // An unknown kind, or a figure of another class, is left as the entry gives it.
    const QJsonObject odd{{"kind", "Lane"}, {"vertices", QJsonArray()}};
    EXPECT_EQ(refreshedEntry(odd, scene.figures[1]), odd);
    EXPECT_EQ(refreshedEntry(QJsonObject{{"kind", "Nothing"}}, scene.figures[0]), QJsonObject({{"kind", "Nothing"}}));
    EXPECT_EQ(refreshedEntry(odd, nullptr), odd);
}

// Every example scene, written again from its figures after they were drawn (as the demo
// saves them), reads back into figures that draw the same picture; written once more
// after drawing, the text is the same.
class ExampleScene : public ::testing::TestWithParam<std::string> {};

TEST_P(ExampleScene, RewrittenDrawsTheSamePicture)
{
    RegistryScope registry;
    const QString path = QStringLiteral(TAVRIN_EXAMPLE_SCENES "/") + QString::fromStdString(GetParam());
    const QByteArray original = readFile(path);
    const Scene scene = parseScene(original, QStringLiteral(TAVRIN_EXAMPLE_SCENES), std::nullopt);
    const QImage before = render(scene);
    const QByteArray written = rewrite(QJsonDocument::fromJson(original).object(), scene);
    const Scene again = parseScene(written, QStringLiteral(TAVRIN_EXAMPLE_SCENES), std::nullopt);
    ASSERT_EQ(again.figures.size(), scene.figures.size());
    const QImage after = render(again);
    ASSERT_FALSE(before.isNull());
    EXPECT_TRUE(before == after) << written.constData();
    EXPECT_EQ(rewrite(QJsonDocument::fromJson(written).object(), again).toStdString(), written.toStdString());
}

INSTANTIATE_TEST_SUITE_P(All, ExampleScene, ::testing::ValuesIn([] {
                             std::vector<std::string> names;
                             for (const QString& name : QDir(QStringLiteral(TAVRIN_EXAMPLE_SCENES))
                                                            .entryList({QStringLiteral("*.json")}, QDir::Files)) {
                                 names.push_back(name.toStdString());
                             }
                             return names;
                         }()),
                         [](const ::testing::TestParamInfo<std::string>& info) {
                             return info.param.substr(0, info.param.size() - 5);
                         });
