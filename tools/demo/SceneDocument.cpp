#include "SceneDocument.h"

#include "DemoKinds.h"
#include "Scene.h"
#include "SceneWriter.h"

#include <Tavrin/AtmCali.h>
#include <Tavrin/DrawList.h>
#include <Tavrin/TextRendering.h>
#include <TavrinQt/PaintDrawList.h>
#include <Tavrin/LfCali.h>
#include <Tavrin/PdcRule.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QJsonArray>
#include <QJsonDocument>
#include <QPainter>
#include <QSaveFile>

#include <cmath>
#include <exception>

namespace Tavrin {
namespace demo {

namespace {

// The look and active vertex a scene file gave a figure ("status", "selected"): clicking
// and hovering in the view change them for the session only, so they are written back
// as the file had them (absent stays absent).
void keepDesignedLooks(QJsonObject& out, const QJsonObject& stored)
{
    for (const QString& key : {QStringLiteral("status"), QStringLiteral("selected")}) {
        if (stored.contains(key)) {
            out[key] = stored.value(key);
        } else {
            out.remove(key);
        }
    }
}

// The vertex hit tolerance of the library, used for the LfCali marker, whose own
// CheckSelected answers true everywhere.
constexpr float kMarkerTolerance = 0.02f;

QString describe(const render::SceneError& e)
{
    return e.field().isEmpty() ? e.message() : e.field() + QStringLiteral(": ") + e.message();
}

QString colourText(unsigned int rgb)
{
    return QStringLiteral("#%1").arg(rgb & 0xffffffu, 6, 16, QLatin1Char('0'));
}

bool nearMarker(LfCali* marker, tagTAVRIN_POINT& p)
{
    tagTAVRIN_POINT point{0.0f, 0.0f};
    unsigned int count = 0;
    if (!marker->CheckSelected(p) || !marker->GetPoints(&point, &count)) {
        return false;
    }
    const float dx = p.x - point.x;
    const float dy = p.y - point.y;
    return std::sqrt(dx * dx + dy * dy) < kMarkerTolerance;
}

}  // namespace

SceneDocument::SceneDocument(QSize sceneSize, QSize viewSize)
    : m_view(viewSize.width(), viewSize.height()), m_sceneSize(sceneSize)
{
}

bool SceneDocument::load(const QString& path, QString& error)
{
    try {
        render::Scene scene = render::readSceneFile(path, std::nullopt);
        // The reader has checked the file; its entries are the figures' options.
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            throw render::SceneError(QString(), file.errorString());
        }
        const QJsonObject top = QJsonDocument::fromJson(file.readAll()).object();
        const QJsonArray entries = top.value(QStringLiteral("figures")).toArray();
        if (static_cast<std::size_t>(entries.size()) != scene.figures.size()) {
            throw render::SceneError(QStringLiteral("figures"), QStringLiteral("changed while it was read"));
        }

        m_view.clear();
        m_figures.clear();
        for (std::size_t i = 0; i < scene.figures.size(); ++i) {
            track(scene.figures[i], entries.at(static_cast<int>(i)).toObject());
        }
        m_view.dropUntracked();
        m_sceneSize = scene.size;
        m_picture = scene.picture;
        m_colour = scene.colour;
        const QString background = top.value(QStringLiteral("background")).toString();
        m_picturePath = scene.picture.isNull() ? QString()
                                               : QFileInfo(path).absoluteDir().absoluteFilePath(background);
        const QJsonValue comment = top.value(QStringLiteral("comment"));
        m_comment = comment.isString() ? comment.toString() : QString();
        m_path = path;
        return true;
    } catch (const render::SceneError& e) {
        error = describe(e);
    } catch (const std::exception& e) {
        error = QString::fromLocal8Bit(e.what());
    }
    // The reader registers figures as it reads them: drop those it made before refusing.
    m_view.dropUntracked();
    return false;
}

void SceneDocument::clear()
{
    m_view.clear();
    m_figures.clear();
    m_comment.clear();
    m_path.clear();
}

QByteArray SceneDocument::toJson(const QString& folder) const
{
    render::SceneHeader header;
    header.comment = m_comment;
    header.size = m_sceneSize;
    if (!m_picturePath.isEmpty()) {
        header.background = QDir(folder).relativeFilePath(m_picturePath);
    } else if (m_colour != 0) {
        header.background = colourText(m_colour);
    }
    std::vector<QJsonObject> figures;
    for (int slot : m_view.figureSlots()) {
        figures.push_back(savedEntry(slot));
    }
    return render::writeScene(header, figures);
}

bool SceneDocument::save(const QString& path, QString& error) const
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(toJson(QFileInfo(path).absolutePath())) < 0 ||
        !file.commit()) {
        error = file.errorString();
        return false;
    }
    return true;
}

bool SceneDocument::setPicture(const QString& path, QString& error)
{
    QImageReader reader(path);
    const QSize size = reader.size();
    if (size.isValid() && (size.width() > render::kMaxPictureSide || size.height() > render::kMaxPictureSide)) {
        error = QStringLiteral("the picture is larger than %1 pixels a side").arg(render::kMaxPictureSide);
        return false;
    }
    const QImage picture = reader.read();
    if (picture.isNull()) {
        error = reader.errorString();
        return false;
    }
    m_picture = picture.scaled(m_sceneSize, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                    .convertToFormat(QImage::Format_RGBA8888);
    m_picturePath = QFileInfo(path).absoluteFilePath();
    return true;
}

int SceneDocument::create(const QString& kind, const std::vector<tagTAVRIN_POINT>& clicks, QString& error)
{
    const QJsonObject entry = newFigureEntry(kind, clicks);
    if (entry.isEmpty()) {
        error = QStringLiteral("%1 cannot be placed with %2 clicks").arg(kind).arg(clicks.size());
        return -1;
    }
    return addOnTop(entry, error);
}

int SceneDocument::addOnTop(const QJsonObject& entry, QString& error)
{
    VcaObject* figure = build(entry, error);
    if (figure == nullptr) {
        return -1;
    }
    const int slot = track(figure, entry);
    if (slot < 0) {
        m_view.dropUntracked();
        error = QStringLiteral("%1 could not be registered").arg(entry.value(QStringLiteral("kind")).toString());
        return -1;
    }
    m_view.select(slot);
    return slot;
}

int SceneDocument::setOption(int slot, const QString& key, const QJsonValue& value, QString& error)
{
    const auto found = m_figures.find(slot);
    if (found == m_figures.end()) {
        error = QStringLiteral("no such figure");
        return -1;
    }
    QJsonObject changed = entry(slot);
    if (value.isUndefined()) {
        changed.remove(key);
    } else {
        changed[key] = value;
    }
    VcaObject* figure = build(changed, error);
    if (figure == nullptr) {
        return -1;
    }
    auto caliPoint = std::make_shared<unsigned int>(
        static_cast<unsigned int>(changed.value(QStringLiteral("selectedCaliPoint")).toInt()));
    const int newSlot = m_view.replace(slot, figure, hooksFor(kind(slot), figure, caliPoint));
    if (newSlot < 0) {
        m_view.dropUntracked();
        error = QStringLiteral("the figure could not be replaced");
        return -1;
    }
    keepDesignedLooks(changed, found->second.entry);
    m_figures.erase(found);
    m_figures[newSlot] = Figure{changed, caliPoint};
    return newSlot;
}

void SceneDocument::remove(int slot)
{
    m_view.remove(slot);
    m_figures.erase(slot);
}

int SceneDocument::duplicate(int slot, float dx, float dy, QString& error)
{
    const auto found = m_figures.find(slot);
    if (found == m_figures.end()) {
        error = QStringLiteral("no figure is selected");
        return -1;
    }
    QJsonObject copy = savedEntry(slot);
    QJsonArray moved;
    bool inside = true;
    for (const QJsonValue& v : copy.value(QStringLiteral("vertices")).toArray()) {
        const double x = v.toArray().at(0).toDouble() + dx;
        const double y = v.toArray().at(1).toDouble() + dy;
        inside = inside && x >= 0.0 && x <= 1.0 && y >= 0.0 && y <= 1.0;
        moved.append(QJsonArray{x, y});
    }
    if (inside) {
        copy[QStringLiteral("vertices")] = moved;
    }
    return addOnTop(copy, error);
}

QImage SceneDocument::icon(const QString& kind, const QSize& size)
{
    const Kind* known = findKind(kind);
    if (known == nullptr || size.isEmpty()) {
        return QImage();
    }
    // A line or diagonal for the two-click kinds, a quadrilateral for the others.
    std::vector<tagTAVRIN_POINT> clicks;
    if (known->minClicks == 1) {
        clicks = {{0.5f, 0.5f}};
    } else if (known->minClicks == 2) {
        clicks = {{0.2f, 0.75f}, {0.8f, 0.25f}};
    } else {
        clicks = {{0.15f, 0.2f}, {0.85f, 0.15f}, {0.8f, 0.8f}, {0.2f, 0.85f}};
    }
    QString error;
    VcaObject* figure = build(newFigureEntry(kind, clicks), error);
    if (figure == nullptr) {
        return QImage();
    }
    DrawList list;
    {
        const bool text = TextRendering::IsEnabled();
        TextRendering::SetEnabled(false);
        DrawListScope scope(list);
        figure->Draw(nullptr, size.width(), size.height(), true);
        TextRendering::SetEnabled(text);
    }
    // The figure was only drawn: the registry lets it go.
    m_view.dropUntracked();
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    PaintDrawList(painter, list);
    return image;
}

SceneDocument::Snapshot SceneDocument::snapshot() const
{
    Snapshot out;
    for (const int slot : m_view.figureSlots()) {
        if (slot == m_view.selectedSlot()) {
            out.selected = static_cast<int>(out.current.size());
        }
        out.current.push_back(entry(slot));
        out.designed.push_back(m_figures.at(slot).entry);
        out.saved.push_back(savedEntry(slot));
    }
    return out;
}

void SceneDocument::restore(const Snapshot& snapshot)
{
    m_view.clear();
    m_figures.clear();
    int selectedSlot = -1;
    for (std::size_t i = 0; i < snapshot.current.size(); ++i) {
        QString error;
        VcaObject* figure = build(snapshot.current[i], error);
        const int slot = figure != nullptr ? track(figure, snapshot.current[i]) : -1;
        if (slot < 0) {
            m_view.dropUntracked();
            continue;
        }
        m_figures[slot].entry = snapshot.designed[i];
        if (static_cast<int>(i) == snapshot.selected) {
            selectedSlot = slot;
        }
    }
    m_view.select(selectedSlot);
}

QString SceneDocument::kind(int slot) const
{
    const auto found = m_figures.find(slot);
    return found == m_figures.end() ? QString() : found->second.entry.value(QStringLiteral("kind")).toString();
}

QJsonObject SceneDocument::entry(int slot) const
{
    const auto found = m_figures.find(slot);
    if (found == m_figures.end()) {
        return QJsonObject();
    }
    QJsonObject out = render::refreshedEntry(found->second.entry, m_view.object(slot));
    if (*found->second.caliPoint != 0) {
        out[QStringLiteral("selectedCaliPoint")] = static_cast<int>(*found->second.caliPoint);
    }
    return out;
}

QJsonObject SceneDocument::savedEntry(int slot) const
{
    QJsonObject out = entry(slot);
    const auto found = m_figures.find(slot);
    if (found != m_figures.end()) {
        keepDesignedLooks(out, found->second.entry);
    }
    return out;
}

VcaObject* SceneDocument::build(const QJsonObject& entry, QString& error)
{
    QJsonObject scene;
    scene[QStringLiteral("width")] = m_sceneSize.width();
    scene[QStringLiteral("height")] = m_sceneSize.height();
    scene[QStringLiteral("figures")] = QJsonArray{entry};
    try {
        const render::Scene built =
            render::parseScene(QJsonDocument(scene).toJson(QJsonDocument::Compact), QString(), std::nullopt);
        if (built.figures.size() == 1) {
            return built.figures.front();
        }
        error = QStringLiteral("no figure was built");
    } catch (const render::SceneError& e) {
        // Paths inside the one-figure scene: name the field, not the wrapper.
        error = describe(e).remove(QStringLiteral("figures[0]."));
    } catch (const std::exception& e) {
        error = QString::fromLocal8Bit(e.what());
    }
    m_view.dropUntracked();
    return nullptr;
}

int SceneDocument::track(VcaObject* figure, const QJsonObject& entry)
{
    auto caliPoint = std::make_shared<unsigned int>(
        static_cast<unsigned int>(entry.value(QStringLiteral("selectedCaliPoint")).toInt()));
    const QString kind = entry.value(QStringLiteral("kind")).toString();
    const int slot = m_view.track(figure, hooksFor(kind, figure, caliPoint));
    if (slot >= 0) {
        m_figures[slot] = Figure{entry, caliPoint};
    }
    return slot;
}

HostView::Hooks SceneDocument::hooksFor(const QString& kind, VcaObject* figure,
                                        const std::shared_ptr<unsigned int>& caliPoint)
{
    HostView::Hooks hooks;
    hooks.readBack = [kind, figure](tagTAVRIN_POINT* points, unsigned int* count) {
        std::vector<tagTAVRIN_POINT> read;
        if (!render::readVertices(kind, figure, read) || read.size() > 20) {
            return false;
        }
        std::copy(read.begin(), read.end(), points);
        *count = static_cast<unsigned int>(read.size());
        return true;
    };
    if (auto* marker = dynamic_cast<LfCali*>(figure)) {
        hooks.hit = [marker](tagTAVRIN_POINT& p) { return nearMarker(marker, p); };
    } else if (auto* atm = dynamic_cast<AtmCali*>(figure)) {
        // The calibration line's ends are dragged through the line's own calls.
        hooks.checkHandle = [atm](tagTAVRIN_POINT& p) { return atm->CheckLinePointSelected(p); };
        hooks.selectHandle = [atm](unsigned int index) { atm->SetLineSelPointIndex(index); };
        hooks.moveHandle = [atm](tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) { atm->MoveLinePoint(from, to); };
    } else if (auto* rule = dynamic_cast<PdcRule*>(figure)) {
        hooks.checkHandle = [rule](tagTAVRIN_POINT& p) { return rule->CheckCaliPointSelected(p); };
        hooks.selectHandle = [rule, caliPoint](unsigned int index) {
            rule->SetSelCaliPointIndex(index);
            *caliPoint = index;
        };
        hooks.moveHandle = [rule](tagTAVRIN_POINT& from, tagTAVRIN_POINT& to) { rule->MoveCaliPoints(from, to); };
    }
    return hooks;
}

}  // namespace demo
}  // namespace Tavrin
