// The scene renderer end to end: scene text in, figures configured through the library's
// setters, pixels out of a real offscreen Mesa context.
#include "RenderTest.h"

#include <Tavrin/ShieldRegion.h>
#include <Tavrin/VcaObject.h>
#include <Tavrin/VcaObjectContainer.h>

#include <gtest/gtest.h>

#include <QColor>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRect>
#include <QTemporaryDir>

#include <cstdlib>
#include <string>

using Tavrin::VcaObjectContainer;
using Tavrin::render::Scene;
using Tavrin::render::SceneError;
using Tavrin::render::parseScene;

namespace {

Scene parse(const std::string& json, const QString& baseDir = QString(), std::optional<QSize> size = std::nullopt)
{
    return parseScene(QByteArray::fromStdString(json), baseDir, size);
}

::testing::AssertionResult PixelNear(const QImage& image, int x, int y, QRgb expected, int tolerance = 2)
{
    const QRgb got = image.pixel(x, y);
    if (std::abs(qRed(got) - qRed(expected)) <= tolerance && std::abs(qGreen(got) - qGreen(expected)) <= tolerance &&
        std::abs(qBlue(got) - qBlue(expected)) <= tolerance) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure() << "pixel (" << x << ", " << y << ") is " << std::hex << (got & 0xffffff)
                                         << ", expected " << (expected & 0xffffff);
}

/// One channel of `colour` at alpha 40 over `under`, as GL_SRC_ALPHA blending gives it.
int over40(int colour, int under)
{
    return (colour * 40 + under * 215 + 127) / 255;
}

}  // namespace

TEST(SceneBackground, PictureIsStretchedToTheViewWithItsTopRowOnTop)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    QImage quadrants(2, 2, QImage::Format_RGB32);
    quadrants.setPixel(0, 0, qRgb(255, 0, 0));
    quadrants.setPixel(1, 0, qRgb(0, 255, 0));
    quadrants.setPixel(0, 1, qRgb(0, 0, 255));
    quadrants.setPixel(1, 1, qRgb(255, 255, 255));
    ASSERT_TRUE(quadrants.save(dir.filePath(QStringLiteral("quadrants.png"))));
    RegistryScope registry;

    const Scene scene = parse(R"({"width": 80, "height": 40, "background": "quadrants.png", "figures": []})",
                              dir.path());
    const QImage image = render(scene);
    ASSERT_EQ(image.size(), QSize(80, 40));
    EXPECT_TRUE(PixelNear(image, 1, 1, qRgb(255, 0, 0)));
    EXPECT_TRUE(PixelNear(image, 78, 1, qRgb(0, 255, 0)));
    EXPECT_TRUE(PixelNear(image, 1, 38, qRgb(0, 0, 255)));
    EXPECT_TRUE(PixelNear(image, 78, 38, qRgb(255, 255, 255)));
}

TEST(SceneBackground, ColourFillsTheWholeView)
{
    RegistryScope registry;
    const QImage image = render(parse(R"({"width": 33, "height": 17, "background": "#102030", "figures": []})"));
    ASSERT_EQ(image.size(), QSize(33, 17));
    for (int y = 0; y < 17; ++y) {
        for (int x = 0; x < 33; ++x) {
            ASSERT_EQ(image.pixel(x, y), qRgb(0x10, 0x20, 0x30)) << x << "," << y;
        }
    }
}

TEST(SceneBackground, WithoutWidthAndHeightTheViewTakesThePictureSize)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    QImage picture(120, 45, QImage::Format_RGB32);
    picture.fill(qRgb(1, 2, 3));
    ASSERT_TRUE(picture.save(dir.filePath(QStringLiteral("p.png"))));
    RegistryScope registry;
    EXPECT_EQ(parse(R"({"background": "p.png", "figures": []})", dir.path()).size, QSize(120, 45));
    EXPECT_EQ(parse(R"({"background": "#000000", "figures": []})").size, QSize(1280, 720));
    EXPECT_EQ(parse(R"({"background": "p.png", "figures": []})", dir.path(), QSize(64, 48)).size, QSize(64, 48));
}

TEST(SceneFigures, TranslucentRegionOverThePictureAtEverySize)
{
    const std::string json = R"({"width": 64, "height": 32, "background": "#4080c0", "figures": [
        {"kind": "ShieldRegion", "vertices": [[0.25, 0.25], [0.75, 0.25], [0.75, 0.75], [0.25, 0.75]]}]})";
    for (const QSize size : {QSize(64, 32), QSize(300, 120)}) {
        RegistryScope registry;
        const QImage image = render(parse(json, QString(), size));
        ASSERT_EQ(image.size(), size);
        const QRgb inside = qRgb(over40(0x70, 0x40), over40(0x30, 0x80), over40(0xa0, 0xc0));
        EXPECT_TRUE(PixelNear(image, size.width() / 2, size.height() / 2, inside));
        EXPECT_TRUE(PixelNear(image, size.width() / 8, size.height() / 2, qRgb(0x40, 0x80, 0xc0), 0));
        // The outline, in the region's own colour, on the left edge.
        EXPECT_TRUE(PixelNear(image, size.width() / 4, size.height() / 2, qRgb(0x70, 0x30, 0xa0), 60));
    }
}

TEST(SceneFigures, LabelTextIsDrawnBesideTheFirstVertexUnlessTextIsOff)
{
    const std::string json = R"({"width": 200, "height": 100, "background": "#000000", "figures": [
        {"kind": "ShieldRegion", "vertices": [[0.3, 0.3], [0.7, 0.3], [0.7, 0.7]], "label": "WWWW"}]})";
    QImage withText;
    QImage without;
    {
        RegistryScope registry;
        withText = render(parse(json), true);
    }
    {
        RegistryScope registry;
        without = render(parse(json), false);
    }
    ASSERT_EQ(withText.size(), without.size());
    // The glyphs are the only difference, and they lie beside the first vertex (60, 30),
    // where the label box starts (62, 29): four 7-pixel glyphs to its right.
    int changed = 0;
    QRect box;
    for (int y = 0; y < 100; ++y) {
        for (int x = 0; x < 200; ++x) {
            if (withText.pixel(x, y) != without.pixel(x, y)) {
                ++changed;
                box |= QRect(x, y, 1, 1);
            }
        }
    }
    EXPECT_GT(changed, 20);
    EXPECT_GE(box.left(), 60);
    EXPECT_LE(box.right(), 62 + 4 * 8);
    EXPECT_GE(box.top(), 20);
    EXPECT_LE(box.bottom(), 45);
}

TEST(SceneFigures, SettingsAppliedAfterAFiguresFirstDrawShowInThePicture)
{
    // A rule hands its traverse-plane flag to its broken line only after a draw: a
    // single frame would look exactly like the rule without the flag.
    auto picture = [](const char* traversePlane) {
        RegistryScope registry;
        const std::string json = std::string(R"({"width": 200, "height": 100, "figures": [
            {"kind": "VcaRule", "ruleType": "brokenLine", "arrowDirection": "both",
             "vertices": [[0.1, 0.5], [0.5, 0.4], [0.9, 0.5]], "traversePlane": )") + traversePlane + "}]}";
        return render(parse(json));
    };
    EXPECT_NE(picture("true"), picture("false"));
}

TEST(SceneFigures, CommonFieldsReachTheFigure)
{
    RegistryScope registry;
    const Scene scene = parse(R"({"figures": [
        {"kind": "ShieldRegion", "vertices": [[0.1, 0.2], [0.5, 0.2], [0.5, 0.6], [0.1, 0.6]],
         "label": "North gate", "status": "highlighted", "selected": 3, "closed": false},
        {"kind": "ShieldRegion", "vertices": [[0.6, 0.6], [0.9, 0.6], [0.9, 0.9]]}]})");
    ASSERT_EQ(scene.figures.size(), 2u);
    auto* first = dynamic_cast<Tavrin::ShieldRegion*>(scene.figures[0]);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(VcaObjectContainer::Instance()->GetVcaObject(0), first);
    char label[17] = {};
    ASSERT_TRUE(first->GetLabelText(label, 16));
    EXPECT_STREQ(label, "North gate");
    EXPECT_EQ(first->GetObjStatus(), TAVRIN_OBJ_STATUS_HIGHLIGHTED);
    EXPECT_EQ(first->GetSelPointIndex(), 3u);
    EXPECT_FALSE(first->GetClosed());
    tagTAVRIN_POINT points[10] = {};
    unsigned int count = 0;
    ASSERT_TRUE(first->GetPoints(points, &count));
    ASSERT_EQ(count, 4u);
    EXPECT_FLOAT_EQ(points[2].x, 0.5f);
    EXPECT_FLOAT_EQ(points[2].y, 0.6f);

    // Absent fields leave the class's defaults.
    Tavrin::VcaObject* second = scene.figures[1];
    EXPECT_EQ(second->GetObjStatus(), TAVRIN_OBJ_STATUS_NORMAL);
    EXPECT_EQ(second->GetSelPointIndex(), 0u);
    EXPECT_TRUE(second->GetClosed());
    EXPECT_FALSE(second->GetLabelText(label, 0));
}

TEST(SceneFigures, RefusalNamesTheFigureAndFieldAndKeepsEarlierFiguresReleasable)
{
    RegistryScope registry;
    try {
        parse(R"({"figures": [
            {"kind": "ShieldRegion", "vertices": [[0.1, 0.2], [0.5, 0.2], [0.5, 0.6]]},
            {"kind": "ShieldRegion", "vertices": [[0.1, 0.2], [0.5, 0.2], [0.5, 0.6]], "selected": 4}]})");
        FAIL() << "accepted a selected vertex beyond the figure";
    } catch (const SceneError& e) {
        EXPECT_EQ(e.field().toStdString(), "figures[1].selected");
        EXPECT_EQ(e.message().toStdString(), "must be an integer from 0 to 3, got 4");
    }
    // The figure made before the refusal is in the registry, which releases it.
    EXPECT_NE(VcaObjectContainer::Instance()->GetVcaObject(0), nullptr);
}
