// The demo's scene, driven headlessly the way its window drives it: mouse presses and
// drags in view pixels through the HostView, figures placed from clicks, options set,
// scenes opened and saved. What it saves must draw exactly what the live figures draw.
#include "DemoKinds.h"
#include "OffscreenGl.h"
#include "Scene.h"
#include "SceneDocument.h"
#include "SceneRenderer.h"

#include <Tavrin/AtmCali.h>
#include <Tavrin/VcaObjectContainer.h>
#include <Tavrin/VcaRule.h>

#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <vector>

using Tavrin::VcaObjectContainer;
using Tavrin::demo::SceneDocument;
using Tavrin::render::Scene;

namespace {

const QString kSelfTestScene = QStringLiteral(TAVRIN_DEMO_TEST_DATA "/selftest.json");
const QSize kSize(960, 540);

using Points = std::vector<tagTAVRIN_POINT>;

QImage render(const Scene& scene)
{
    Tavrin::offscreen::OffscreenGl gl;
    if (!gl.create(scene.size.width(), scene.size.height())) {
        ADD_FAILURE() << "no offscreen context: " << gl.error();
        return QImage();
    }
    return Tavrin::render::renderScene(scene, gl, true);
}

/// The document's live figures drawn as tavrin-render draws a scene.
QImage renderLive(SceneDocument& document)
{
    Scene live;
    live.size = document.sceneSize();
    live.picture = document.picture();
    live.colour = document.colour();
    for (int slot : document.view().figureSlots()) {
        live.figures.push_back(document.view().object(slot));
    }
    return render(live);
}

/// Saves the document, reads the file back as tavrin-render does and draws it.
QImage renderSaved(SceneDocument& document, const QString& path)
{
    QString error;
    EXPECT_TRUE(document.save(path, error)) << error.toStdString();
    return render(Tavrin::render::readSceneFile(path, std::nullopt));
}

Points moved(Points points, const tagTAVRIN_POINT& from, const tagTAVRIN_POINT& to, int only = -1)
{
    const float dx = to.x - from.x;
    const float dy = to.y - from.y;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (only < 0 || static_cast<int>(i) == only) {
            points[i] = {points[i].x + dx, points[i].y + dy};
        }
    }
    return points;
}

void expectSame(const Points& got, const Points& expected)
{
    ASSERT_EQ(got.size(), expected.size());
    for (std::size_t i = 0; i < got.size(); ++i) {
        EXPECT_EQ(got[i].x, expected[i].x) << "vertex " << i;
        EXPECT_EQ(got[i].y, expected[i].y) << "vertex " << i;
    }
}

/// Slots the registry holds, whether or not the view tracks them.
std::vector<int> registered()
{
    std::vector<int> taken;
    for (int slot = 0; slot < 64; ++slot) {
        if (VcaObjectContainer::Instance()->GetVcaObject(slot) != nullptr) {
            taken.push_back(slot);
        }
    }
    return taken;
}

class SceneDocumentTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        QString error;
        ASSERT_TRUE(document.load(kSelfTestScene, error)) << error.toStdString();
        ASSERT_EQ(document.view().figureSlots().size(), 3u);
        region = document.view().figureSlots()[0];
    }

    SceneDocument document{QSize(1280, 720), kSize};
    HostView& view = document.view();
    int region = -1;
    QTemporaryDir dir;
};

}  // namespace

TEST_F(SceneDocumentTest, DragsReadBackAndSaveAsTheyDraw)
{
    // The region's first vertex at (0.2, 0.2) is pixel (192, 108).
    view.press(192, 108);
    EXPECT_EQ(view.selectedSlot(), region);
    EXPECT_EQ(view.object(region)->GetSelPointIndex(), 1u);
    view.drag(232, 133);
    view.release();
    const Points start = {{0.2f, 0.2f}, {0.4f, 0.2f}, {0.4f, 0.5f}, {0.2f, 0.5f}};
    const Points afterVertex = moved(start, view.normalised(192, 108), view.normalised(232, 133), 0);
    expectSame(view.vertices(region), afterVertex);

    // Inside, away from the vertices: the whole region moves.
    view.press(300, 200);
    EXPECT_EQ(view.object(region)->GetSelPointIndex(), 0u);
    view.drag(270, 220);
    view.release();
    const Points afterMove = moved(afterVertex, view.normalised(300, 200), view.normalised(270, 220));
    expectSame(view.vertices(region), afterMove);

    // Carried below the picture: refused whole, the next step goes on from the cursor.
    view.press(270, 220);
    view.drag(270, 500);
    expectSame(view.vertices(region), afterMove);
    view.release();

    EXPECT_EQ(view.object(region)->GetObjStatus(), TAVRIN_OBJ_STATUS_SELECTED);
    for (int slot : view.figureSlots()) {
        if (slot != region) {
            EXPECT_EQ(view.object(slot)->GetObjStatus(), TAVRIN_OBJ_STATUS_NORMAL);
        }
    }
    // The selection is the session's: the file keeps the looks it gave (none here).
    const QImage saved = renderSaved(document, dir.filePath(QStringLiteral("edited.json")));
    view.select(-1);
    const QImage live = renderLive(document);
    ASSERT_FALSE(live.isNull());
    EXPECT_TRUE(live == saved);
}

// Undo's snapshots: a restore builds the same figures in the same order with the same
// selection, whatever happened in between; a duplicate lands offset and on top.
TEST_F(SceneDocumentTest, SnapshotsRestoreOrderSelectionAndVertices)
{
    view.select(view.figureSlots()[1]);
    const SceneDocument::Snapshot before = document.snapshot();
    EXPECT_EQ(before.selected, 1);
    QString error;
    const int copy = document.duplicate(region, 0.05f, 0.0f, error);
    ASSERT_GE(copy, 0) << error.toStdString();
    EXPECT_EQ(view.figureSlots().back(), copy);
    EXPECT_EQ(view.selectedSlot(), copy);
    expectSame(view.vertices(copy), moved(view.vertices(region), {0.0f, 0.0f}, {0.05f, 0.0f}));
    ASSERT_TRUE(document.restack(copy, false));
    EXPECT_EQ(view.figureSlots().front(), copy);
    document.remove(region);
    document.restore(before);
    const SceneDocument::Snapshot after = document.snapshot();
    EXPECT_EQ(after.saved, before.saved);
    EXPECT_EQ(after.selected, 1);
    EXPECT_EQ(view.figureSlots().size(), 3u);
}

TEST_F(SceneDocumentTest, SavingKeepsTheLooksTheFileGave)
{
    QFile file(dir.filePath(QStringLiteral("looks.json")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(R"({"width": 960, "height": 540, "figures": [
        {"kind": "ShieldRegion", "vertices": [[0.2, 0.2], [0.4, 0.2], [0.4, 0.5]], "status": "highlighted"},
        {"kind": "ShieldRegion", "vertices": [[0.6, 0.2], [0.8, 0.2], [0.8, 0.5]], "status": "selected", "selected": 2}]})");
    file.close();
    QString error;
    ASSERT_TRUE(document.load(file.fileName(), error)) << error.toStdString();
    const std::vector<int> figures = view.figureSlots();
    view.press(300, 200);  // selects the first, deselects the second
    view.release();
    view.hover(10, 10);
    QString text;
    {
        ASSERT_TRUE(document.save(dir.filePath(QStringLiteral("saved.json")), error));
        QFile saved(dir.filePath(QStringLiteral("saved.json")));
        ASSERT_TRUE(saved.open(QIODevice::ReadOnly));
        text = QString::fromUtf8(saved.readAll());
    }
    const QJsonArray list = QJsonDocument::fromJson(text.toUtf8()).object().value(QStringLiteral("figures")).toArray();
    ASSERT_EQ(list.size(), 2);
    EXPECT_EQ(list[0].toObject().value(QStringLiteral("status")).toString(), QStringLiteral("highlighted"));
    EXPECT_FALSE(list[0].toObject().contains(QStringLiteral("selected")));
    EXPECT_EQ(list[1].toObject().value(QStringLiteral("status")).toString(), QStringLiteral("selected"));
    EXPECT_EQ(list[1].toObject().value(QStringLiteral("selected")).toInt(), 2);
    // A panel edit rebuilds the figure and keeps the file's look too.
    ASSERT_GE(document.setOption(figures[0], QStringLiteral("closed"), false, error), 0) << error.toStdString();
    EXPECT_EQ(document.savedEntry(view.figureSlots()[0]).value(QStringLiteral("status")).toString(),
              QStringLiteral("highlighted"));
    // A new scene keeps the picture and drops the figures and the file.
    document.clear();
    EXPECT_TRUE(view.figureSlots().empty());
    EXPECT_TRUE(document.path().isEmpty());
}

TEST_F(SceneDocumentTest, LfMarkerIsHitOnlyNearItsPoint)
{
    // The LF marker is drawn on top; its own CheckSelected answers true everywhere.
    const int marker = view.figureSlots()[2];
    view.press(500, 400);  // on no figure
    EXPECT_EQ(view.selectedSlot(), -1);
    view.press(768, 81);  // the marker at (0.8, 0.15)
    EXPECT_EQ(view.selectedSlot(), marker);
    view.drag(778, 91);
    view.release();
    expectSame(view.vertices(marker), moved({{0.8f, 0.15f}}, view.normalised(768, 81), view.normalised(778, 91)));
}

TEST_F(SceneDocumentTest, HoverHighlightsOnlyUnselectedFigures)
{
    view.press(300, 200);
    view.release();
    const int wire = view.figureSlots()[1];
    // A line learns the view size for its hit test from Draw: draw a frame first, as a
    // host always has before the user can point at anything.
    renderLive(document);
    view.hover(720, 270);  // on the tripwire from (0.6, 0.3) to (0.9, 0.7)
    EXPECT_EQ(view.object(wire)->GetObjStatus(), TAVRIN_OBJ_STATUS_HIGHLIGHTED);
    EXPECT_EQ(view.object(region)->GetObjStatus(), TAVRIN_OBJ_STATUS_SELECTED);
    view.hover(300, 200);  // back over the selected region
    EXPECT_EQ(view.object(wire)->GetObjStatus(), TAVRIN_OBJ_STATUS_NORMAL);
    EXPECT_EQ(view.object(region)->GetObjStatus(), TAVRIN_OBJ_STATUS_SELECTED);
}

TEST_F(SceneDocumentTest, RefusedOptionLeavesTheFigureAsItWas)
{
    view.press(300, 200);
    view.release();
    const QJsonObject before = document.entry(region);
    QString error;
    // A flag given as text, a malformed colour, a tripwire of two vertices as a region.
    const int wire = view.figureSlots()[1];
    EXPECT_EQ(document.setOption(region, QStringLiteral("closed"), QStringLiteral("yes"), error), -1);
    EXPECT_EQ(document.setOption(wire, QStringLiteral("normalColor"), QStringLiteral("#12345"), error), -1);
    EXPECT_NE(error.indexOf(QStringLiteral("normalColor")), -1) << error.toStdString();
    EXPECT_EQ(document.setOption(wire, QStringLiteral("ruleType"), QStringLiteral("region"), error), -1);
    EXPECT_NE(error.indexOf(QStringLiteral("takes 3 to 10 vertices, got 2")), -1) << error.toStdString();
    EXPECT_EQ(document.setOption(99, QStringLiteral("closed"), true, error), -1);
    EXPECT_EQ(document.entry(region), before);
    EXPECT_EQ(view.figureSlots(), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(registered(), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(view.selectedSlot(), region);
}

TEST_F(SceneDocumentTest, OptionsRebuildTheFigureInPlace)
{
    view.press(192, 108);
    view.drag(200, 110);
    view.release();
    const Points edited = view.vertices(region);
    QString error;
    const int slot = document.setOption(region, QStringLiteral("label"), QStringLiteral("Renamed"), error);
    ASSERT_GE(slot, 0) << error.toStdString();
    EXPECT_EQ(view.figureSlots()[0], slot);  // same place in the drawing order
    EXPECT_EQ(view.selectedSlot(), slot);
    EXPECT_EQ(view.object(slot)->GetObjStatus(), TAVRIN_OBJ_STATUS_SELECTED);
    EXPECT_EQ(view.object(slot)->GetSelPointIndex(), 1u);
    expectSame(view.vertices(slot), edited);
    char label[17] = {};
    ASSERT_TRUE(view.object(slot)->GetLabelText(label, 16));
    EXPECT_STREQ(label, "Renamed");

    // The tripwire becomes a broken line of the same two vertices.
    const int wire = view.figureSlots()[1];
    const int broken = document.setOption(wire, QStringLiteral("ruleType"), QStringLiteral("brokenLine"), error);
    ASSERT_GE(broken, 0) << error.toStdString();
    auto* rule = dynamic_cast<Tavrin::VcaRule*>(view.object(broken));
    ASSERT_NE(rule, nullptr);
    EXPECT_EQ(rule->GetRuleType(), TAVRIN_RULE_BROKEN_LINE);
    EXPECT_EQ(registered().size(), 3u);

    // Leaving an option out gives the class's own value back.
    const int reset = document.setOption(slot, QStringLiteral("label"), QJsonValue(QJsonValue::Undefined), error);
    ASSERT_GE(reset, 0);
    EXPECT_FALSE(document.entry(reset).contains(QStringLiteral("label")));
}

TEST_F(SceneDocumentTest, RefusedSceneKeepsTheOpenOne)
{
    const QString bad = dir.filePath(QStringLiteral("bad.json"));
    QFile file(bad);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    // Two good figures, then a refusal: the two must not stay behind in the registry.
    file.write(R"({"figures": [
        {"kind": "LfCali", "vertices": [[0.5, 0.5]]},
        {"kind": "LfCali", "vertices": [[0.6, 0.5]]},
        {"kind": "LfCali", "vertices": [[0.6, 1.5]]}]})");
    file.close();
    QString error;
    EXPECT_FALSE(document.load(bad, error));
    EXPECT_EQ(error.toStdString(), "figures[2].vertices[0][1]: must be a number from 0 to 1, got 1.5");
    EXPECT_FALSE(document.load(dir.filePath(QStringLiteral("missing.json")), error));
    EXPECT_FALSE(document.load(dir.path(), error));
    EXPECT_EQ(view.figureSlots(), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(registered(), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(document.path(), kSelfTestScene);
    EXPECT_EQ(document.sceneSize(), kSize);
}

TEST_F(SceneDocumentTest, AtmLineEndsDragThroughTheirOwnCalls)
{
    QString error;
    const int atm = document.create(QStringLiteral("AtmCali"), {{0.1f, 0.6f}, {0.3f, 0.9f}}, error);
    ASSERT_GE(atm, 0) << error.toStdString();
    expectSame(view.vertices(atm), {{0.1f, 0.6f}, {0.3f, 0.6f}, {0.3f, 0.9f}, {0.1f, 0.9f}});
    auto* cali = dynamic_cast<Tavrin::AtmCali*>(view.object(atm));
    ASSERT_NE(cali, nullptr);
    tagTAVRIN_POINT a{0.0f, 0.0f};
    tagTAVRIN_POINT b{0.0f, 0.0f};
    ASSERT_TRUE(cali->GetLinePoints(&a, &b));
    // The line's lower end, away from the region's corners.
    const QPoint end(static_cast<int>(b.x * 960.0f + 0.5f), static_cast<int>(b.y * 540.0f + 0.5f));
    view.press(end.x(), end.y());
    EXPECT_EQ(view.selectedSlot(), atm);
    EXPECT_EQ(cali->GetLineSelPointIndex(), 2u);
    view.drag(end.x() + 20, end.y() - 10);
    view.release();
    tagTAVRIN_POINT a2{0.0f, 0.0f};
    tagTAVRIN_POINT b2{0.0f, 0.0f};
    ASSERT_TRUE(cali->GetLinePoints(&a2, &b2));
    EXPECT_EQ(a2.x, a.x);
    EXPECT_EQ(a2.y, a.y);
    EXPECT_NE(b2.x, b.x);
    const QJsonArray saved = document.entry(atm).value(QStringLiteral("linePoints")).toArray();
    EXPECT_EQ(static_cast<float>(saved.at(1).toArray().at(0).toDouble()), b2.x);
    EXPECT_EQ(document.entry(atm).value(QStringLiteral("lineSelected")).toInt(), 2);
}

// Every kind can be placed from its fewest clicks, is selected, deletes cleanly, and a
// scene of all sixteen saves into a file that draws what the live figures draw.
TEST(SceneDocumentKinds, PlaceEveryKindSaveAndDelete)
{
    SceneDocument document(kSize, kSize);
    HostView& view = document.view();
    QTemporaryDir dir;
    const Points clicks = {{0.1f, 0.1f}, {0.3f, 0.15f}, {0.25f, 0.4f}};
    std::vector<int> taken;
    for (const Tavrin::demo::Kind& kind : Tavrin::demo::kinds()) {
        const Points placed(clicks.begin(), clicks.begin() + kind.minClicks);
        QString error;
        const int slot = document.create(QLatin1String(kind.name), placed, error);
        ASSERT_GE(slot, 0) << kind.name << ": " << error.toStdString();
        EXPECT_EQ(view.selectedSlot(), slot) << kind.name;
        EXPECT_EQ(document.kind(slot), QLatin1String(kind.name));
        const Points back = view.vertices(slot);
        ASSERT_FALSE(back.empty()) << kind.name;
        EXPECT_EQ(back[0].x, 0.1f) << kind.name;
        EXPECT_EQ(back[0].y, 0.1f) << kind.name;
        taken.push_back(slot);

        QString refused;
        const Points tooFew(clicks.begin(), clicks.begin() + kind.minClicks - 1);
        EXPECT_EQ(document.create(QLatin1String(kind.name), tooFew, refused), -1) << kind.name;
    }
    EXPECT_EQ(Tavrin::demo::kinds().size(), 16u);
    EXPECT_EQ(view.figureSlots(), taken);
    EXPECT_EQ(registered(), taken);

    // Saved with the looks new figures have (none), so compared with nothing selected.
    const QImage saved = renderSaved(document, dir.filePath(QStringLiteral("all.json")));
    view.select(-1);
    const QImage live = renderLive(document);
    ASSERT_FALSE(live.isNull());
    EXPECT_TRUE(live == saved);
    // Reading the saved file registered its figures too; the view lets them go.
    view.dropUntracked();
    EXPECT_EQ(registered(), taken);

    for (int slot : taken) {
        document.remove(slot);
        EXPECT_EQ(VcaObjectContainer::Instance()->GetVcaObject(slot), nullptr);
    }
    EXPECT_TRUE(view.figureSlots().empty());
    EXPECT_TRUE(registered().empty());
    QString error;
    EXPECT_EQ(document.create(QStringLiteral("Unknown"), clicks, error), -1);
}

TEST(DemoKinds, OptionTextReadsBackOrIsRefused)
{
    using Tavrin::demo::OptionType;
    using Tavrin::demo::parseOptionText;
    QJsonValue value;
    ASSERT_TRUE(parseOptionText(OptionType::PointPair, QStringLiteral(" 0.1, 0.2 ; 0.3,0.4"), value));
    EXPECT_EQ(value, QJsonValue(QJsonArray{QJsonArray{0.1, 0.2}, QJsonArray{0.3, 0.4}}));
    EXPECT_EQ(Tavrin::demo::pointsText(value), QStringLiteral("0.1, 0.2; 0.3, 0.4"));
    ASSERT_TRUE(parseOptionText(OptionType::Point, QStringLiteral("0.5,1"), value));
    EXPECT_EQ(Tavrin::demo::pointsText(value), QStringLiteral("0.5, 1"));
    ASSERT_TRUE(parseOptionText(OptionType::Numbers, QStringLiteral("0.1, 0.25"), value));
    EXPECT_EQ(value, QJsonValue(QJsonArray{0.1, 0.25}));
    ASSERT_TRUE(parseOptionText(OptionType::Colour, QStringLiteral("  "), value));
    EXPECT_TRUE(value.isUndefined());
    for (const char* bad : {"0.1", "0.1, 0.2, 0.3", "x, 0.2", "nan, 0.2", "inf, 0"}) {
        EXPECT_FALSE(parseOptionText(OptionType::Point, QLatin1String(bad), value)) << bad;
    }
    EXPECT_FALSE(parseOptionText(OptionType::PointPair, QStringLiteral("0.1, 0.2"), value));
    EXPECT_FALSE(parseOptionText(OptionType::Numbers, QStringLiteral("0.1,,0.2"), value));
}
