#ifndef TAVRIN_TOOLS_DEMO_DEMOVIEW_H
#define TAVRIN_TOOLS_DEMO_DEMOVIEW_H

// The video view of the demo: a QOpenGLWidget (compatibility profile) that draws the
// picture and then every figure, as a host's paint handler does after each video frame,
// and hands the mouse to the document's HostView. In placing mode clicks become the
// vertices of a new figure instead.

#include "SceneDocument.h"

#include <Tavrin/Crossings.h>
#include <Tavrin/DrawList.h>
#include <Tavrin/Editing.h>
#include <TavrinQt/GlRenderer.h>

#include <QImage>
#include <QOpenGLWidget>
#include <QString>

#include <vector>

namespace Tavrin {
namespace demo {

/// How the view draws the figures. Gl1: their own OpenGL calls (compatibility context).
/// Core: their draw list through GlRenderer (3.3 core context). Painter: their draw list
/// painted with QPainter. The picture is drawn to match: glDrawPixels under Gl1,
/// QPainter otherwise.
enum class Rendering { Gl1, Core, Painter };

class DemoView : public QOpenGLWidget {
    Q_OBJECT
public:
    DemoView(SceneDocument& document, Rendering rendering, QWidget* parent = nullptr);
    ~DemoView() override;
    Rendering rendering() const { return m_rendering; }

    /// Starts placing a figure of `kind`: clicks add vertices, Enter or a double-click
    /// finishes, Escape cancels. Placing stops by itself at the kind's most vertices.
    void startPlacing(const QString& kind);
    void cancelPlacing();
    bool placing() const { return !m_placingKind.isEmpty(); }
    /// The document's picture changed.
    void pictureChanged();

    QSize sizeHint() const override;

    /// Logical pixels between the widget's edge and the picture on every side: handles
    /// of vertices on the picture's edge and labels that run past it stay visible and
    /// can be grabbed there.
    static constexpr int kMargin = 24;
    /// Where the picture's top-left corner lies in the widget, logical pixels (before the
    /// margin's corner when the picture is zoomed and panned).
    QPoint pictureOrigin() const;

    /// The largest zoom, and the step of one wheel notch.
    static constexpr double kMaxZoom = 8.0;
    static constexpr double kZoomStep = 1.25;
    double zoom() const { return m_zoom; }
    /// Zooms to `zoom` (1 to kMaxZoom) keeping the picture point under the widget position
    /// `anchor` (logical pixels) where it is.
    void zoomAbout(double zoom, const QPointF& anchor);
    /// Moves the zoomed picture by (dx, dy) device pixels, as far as it still fills the view.
    void panBy(int dx, int dy);
    /// The whole picture in the view again: zoom 1, no pan.
    void fit();

    /// How close to an edge of the selected figure, in view pixels, the cursor shows the
    /// ghost handle that a click turns into a new vertex.
    static constexpr float kGhostReach = 6.0f;
    /// The ghost handle: where a click now would insert a vertex of the selected figure
    /// (`hit` false when none).
    const EdgeHit& ghost() const { return m_ghost; }
    /// Whether figures that cross themselves show their crossings.
    void setShowCrossings(bool on);

    /// Starts drawing a test track: clicks add its points, Enter or a double-click
    /// finishes, Escape cancels. The finished track stays over the picture with every
    /// rule's crossings marked until it is cleared or another is drawn.
    void startTrack();
    bool drawingTrack() const { return m_drawingTrack; }
    /// The finished track (normalised), empty for none.
    const std::vector<tagTAVRIN_POINT>& track() const { return m_track; }
    /// The crossings to mark on the track (the window computes them for every rule).
    void setTrackEvents(std::vector<CrossingEvent> events);
    void clearTrack();

signals:
    /// The selection changed (a press, a new or deleted figure).
    void selectionChanged();
    /// The selected figure's vertices may have changed (a drag).
    void edited();
    /// A one-line message for the status bar.
    void message(const QString& text);
    /// A right click (outside placing): the figure under it, if any, is now selected;
    /// its actions belong at `global`. `vertex` is the vertex under the click (1-based),
    /// 0 for none.
    void figureMenuRequested(const QPoint& global, unsigned int vertex);
    /// An edit of the scene is complete (a drag released, a figure placed, a vertex
    /// inserted): one step to undo, named by `what`.
    void editFinished(const QString& what);
    /// A test track was finished (or cleared).
    void trackChanged();
    /// The cursor moved over the view: its place in normalised picture coordinates.
    void cursorMoved(const QPointF& normalised);

protected:
    void initializeGL() override;
    void paintGL() override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    static constexpr float kMarginGrey = 0.19f;

    /// The margin in device pixels.
    int deviceMargin() const;
    /// A widget position in the picture's device pixels (negative in the left and top
    /// margins).
    QPoint devicePixel(const QPoint& logical) const;
    void syncViewSize();
    void drawPicture();
    /// The part of the scene's picture the view shows at the current zoom and pan.
    QImage visiblePicture() const;
    void drawPlacing();
    /// Core and Painter: the picture, the figures' draw list and the placing rubber band
    /// through QPainter (and GlRenderer).
    void paintFromList();
    void finishPlacing();
    void finishTrack();
    /// The selected figure's edge within reach of the cursor, where it takes one more vertex.
    void findGhost(const QPoint& pixel);
    /// What the view draws over the figures: crossings of self-crossing figures, the
    /// ghost handle. Drawn by the library, so into the list when one is being captured.
    void drawOverlays();

    SceneDocument& m_document;
    Rendering m_rendering;
    GlRenderer m_renderer;
    DrawList m_list;
    QImage m_scaledPicture;
    QString m_placingKind;
    std::vector<tagTAVRIN_POINT> m_clicks;
    tagTAVRIN_POINT m_cursor{0.0f, 0.0f};
    EdgeHit m_ghost{false, 0, {0.0f, 0.0f}, 0.0f};
    /// The ghost under the last left press, and whether the cursor moved since.
    EdgeHit m_pressGhost{false, 0, {0.0f, 0.0f}, 0.0f};
    int m_pressGhostSlot = -1;
    bool m_pressMoved = false;
    bool m_pressGrabbed = false;
    /// The picture's size at zoom 1 (device pixels): the widget less its margins.
    QSize baseSize() const;
    /// Keeps the pan where the zoomed picture still covers the view.
    void clampPan();

    bool m_showCrossings = true;
    double m_zoom = 1.0;
    /// Where the zoomed picture's top-left corner lies from the view's (device pixels, <= 0).
    QPoint m_pan{0, 0};
    /// Panning with the middle button, or with the left while Space is held.
    bool m_spaceHeld = false;
    bool m_panning = false;
    QPoint m_panFrom;
    bool m_drawingTrack = false;
    std::vector<tagTAVRIN_POINT> m_track;
    std::vector<CrossingEvent> m_trackEvents;
};

}  // namespace demo
}  // namespace Tavrin

#endif  // TAVRIN_TOOLS_DEMO_DEMOVIEW_H
