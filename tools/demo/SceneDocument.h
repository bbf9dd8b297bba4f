#ifndef TAVRIN_TOOLS_DEMO_SCENEDOCUMENT_H
#define TAVRIN_TOOLS_DEMO_SCENEDOCUMENT_H

// The demo's scene: a HostView with its figures, each kept with its scene-file entry
// (kind and options), the picture behind them, and the scene's own view size. Figures
// are built by the scene reader of tools/render, exactly as tavrin-render builds them,
// and written back with its writer; the mouse edits them through the HostView.
// Nothing here needs a window or a GL context except paint().

#include "HostView.h"

#include <QImage>
#include <QJsonObject>
#include <QJsonValue>
#include <QSize>
#include <QString>

#include <map>
#include <memory>
#include <vector>

namespace Tavrin {
namespace demo {

class SceneDocument {
public:
    /// An empty scene of `sceneSize` over black, shown in a view of `viewSize` pixels.
    SceneDocument(QSize sceneSize, QSize viewSize);

    HostView& view() { return m_view; }
    const HostView& view() const { return m_view; }

    /// Replaces the scene with the file at `path`. On a refusal the scene stays as it
    /// was and `error` says why, as tavrin-render would ("figures[2].vertices: ...").
    bool load(const QString& path, QString& error);
    /// A new scene: no figures and no file, the picture and the scene size kept.
    void clear();
    /// Writes the scene, every figure's vertices and options as they are now and its
    /// look as the file gave it, to `path` (the picture path is made relative to the
    /// file's folder).
    bool save(const QString& path, QString& error) const;
    /// The scene as JSON text, picture paths relative to `folder`.
    QByteArray toJson(const QString& folder) const;
    /// Puts a picture file behind the figures (a PNG or JPEG); false with `error` if it
    /// cannot be read.
    bool setPicture(const QString& path, QString& error);

    /// Creates a figure of `kind` from its placing clicks (normalised), on top of the
    /// others, and selects it. Returns its slot; -1 with `error` when refused.
    int create(const QString& kind, const std::vector<tagTAVRIN_POINT>& clicks, QString& error);
    /// Sets one option (or, with an undefined value, leaves it to the class's initial
    /// value) by building the figure again from its entry. On a refusal the figure stays
    /// as it was. The label is the option "label". Returns the figure's new slot, -1 with
    /// `error` when refused.
    int setOption(int slot, const QString& key, const QJsonValue& value, QString& error);
    /// Deletes the figure.
    void remove(int slot);
    /// A copy of the figure, moved by (dx, dy) normalised where that keeps it inside the
    /// picture (else in place), on top of the others and selected. Its slot, or -1 with
    /// `error`.
    int duplicate(int slot, float dx, float dy, QString& error);
    /// Moves the figure to the top or the bottom of the drawing order.
    bool restack(int slot, bool toTop) { return m_view.restack(slot, toTop); }

    /// A small picture of a figure of `kind`, drawn by the library at `size` (transparent
    /// around it), for the palette; null for an unknown kind.
    QImage icon(const QString& kind, const QSize& size);

    /// The figures as they are, in drawing order, with the selection: what undo puts back.
    struct Snapshot {
        /// Each figure's entry as it is now (session look included), to build it again.
        std::vector<QJsonObject> current;
        /// Each figure's entry as the file or its creation gave it (its saved look).
        std::vector<QJsonObject> designed;
        /// The figures as they would be saved: equal for two snapshots of the same scene.
        std::vector<QJsonObject> saved;
        /// Index of the selected figure in drawing order, -1 for none.
        int selected = -1;
    };
    Snapshot snapshot() const;
    /// Builds the figures of `snapshot` again in place of the current ones.
    void restore(const Snapshot& snapshot);

    /// The figure's kind ("" for an unknown slot).
    QString kind(int slot) const;
    /// The figure's entry as it is now, its session look (selection, hover) included.
    QJsonObject entry(int slot) const;
    /// The entry as it is saved: as entry(), with the look and active vertex the file
    /// gave the figure rather than the session's.
    QJsonObject savedEntry(int slot) const;

    QSize sceneSize() const { return m_sceneSize; }
    /// The picture at the scene's size, or null over a plain colour.
    const QImage& picture() const { return m_picture; }
    unsigned int colour() const { return m_colour; }
    const QString& path() const { return m_path; }

    /// Draws the figures (the view's GL context current).
    void paint() { m_view.paint(); }

private:
    struct Figure {
        QJsonObject entry;
        /// The people-counting calibration point last made active with the mouse.
        std::shared_ptr<unsigned int> caliPoint;
    };

    /// Builds one figure from `entry` through the scene reader; registers it and returns
    /// it, or null with `error`.
    VcaObject* build(const QJsonObject& entry, QString& error);
    /// Builds the figure of `entry`, tracks it on top of the others and selects it: its
    /// slot, or -1 with `error`.
    int addOnTop(const QJsonObject& entry, QString& error);
    HostView::Hooks hooksFor(const QString& kind, VcaObject* figure, const std::shared_ptr<unsigned int>& caliPoint);
    int track(VcaObject* figure, const QJsonObject& entry);

    HostView m_view;
    QSize m_sceneSize;
    QImage m_picture;
    /// The picture file, absolute; empty over a plain colour.
    QString m_picturePath;
    unsigned int m_colour = 0x000000;
    QString m_comment;
    QString m_path;
    std::map<int, Figure> m_figures;
};

}  // namespace demo
}  // namespace Tavrin

#endif  // TAVRIN_TOOLS_DEMO_SCENEDOCUMENT_H
