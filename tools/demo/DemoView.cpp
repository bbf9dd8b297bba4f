#include "DemoView.h"

#include "DemoKinds.h"
#include "SceneRenderer.h"

#include <Tavrin/Diagnostics.h>
#include <Tavrin/Point.h>
#include <TavrinQt/PaintDrawList.h>

#include <QKeyEvent>
#include <QWheelEvent>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QPainter>
#include <QMouseEvent>

#include <GL/gl.h>

#include <algorithm>
#include <cmath>

namespace Tavrin {
namespace demo {

DemoView::DemoView(SceneDocument& document, Rendering rendering, QWidget* parent)
    : QOpenGLWidget(parent), m_document(document), m_rendering(rendering)
{
    setMouseTracking(true);  // hovering highlights the figure under the cursor
    setFocusPolicy(Qt::StrongFocus);
}

QSize DemoView::sizeHint() const
{
    const QSize scene = m_document.sceneSize();
    const QSize picture = scene.isValid() ? scene.scaled(960, 540, Qt::KeepAspectRatio) : QSize(960, 540);
    return picture + QSize(2 * kMargin, 2 * kMargin);
}

void DemoView::startPlacing(const QString& kind)
{
    const Kind* known = findKind(kind);
    if (known == nullptr) {
        return;
    }
    m_placingKind = kind;
    m_clicks.clear();
    m_document.view().select(-1);
    emit selectionChanged();
    emit message(known->minClicks == known->maxClicks
                     ? QStringLiteral("%1: click %2 point(s)").arg(kind).arg(known->minClicks)
                     : QStringLiteral("%1: click %2 to %3 points, Enter or a double-click finishes, Escape cancels")
                           .arg(kind)
                           .arg(known->minClicks)
                           .arg(known->maxClicks));
    setFocus();
    update();
}

void DemoView::cancelPlacing()
{
    m_placingKind.clear();
    m_clicks.clear();
    if (m_drawingTrack) {
        m_drawingTrack = false;
        m_track.clear();
        emit trackChanged();
    }
    update();
}

void DemoView::startTrack()
{
    cancelPlacing();
    m_drawingTrack = true;
    m_track.clear();
    m_trackEvents.clear();
    emit message(QStringLiteral("Test track: click its points, Enter or a double-click finishes, Escape cancels"));
    setFocus();
    update();
}

void DemoView::setTrackEvents(std::vector<CrossingEvent> events)
{
    m_trackEvents = std::move(events);
    update();
}

void DemoView::clearTrack()
{
    m_drawingTrack = false;
    m_track.clear();
    m_trackEvents.clear();
    emit trackChanged();
    update();
}

void DemoView::pictureChanged()
{
    m_scaledPicture = QImage();
    update();
}

DemoView::~DemoView()
{
    // The renderer's objects go with their context, which must be current for it.
    if (m_renderer.IsInitialized()) {
        makeCurrent();
        m_renderer.Release();
        doneCurrent();
    }
}

void DemoView::initializeGL()
{
    if (m_rendering == Rendering::Core && !m_renderer.Initialize()) {
        emit message(QStringLiteral("no OpenGL 3.3 context for the core renderer: the figures are not drawn"));
    }
}

void DemoView::paintGL()
{
    syncViewSize();
    if (m_rendering != Rendering::Gl1) {
        paintFromList();
        return;
    }
    const int margin = deviceMargin();
    const QSize base = baseSize();
    const int width = m_document.view().width();
    const int height = m_document.view().height();
    // The margin, then the picture's area in the scene's colour and the visible part of
    // the picture; what figures draw past its edges shows in the margin around it.
    glViewport(0, 0, base.width() + 2 * margin, base.height() + 2 * margin);
    glClearColor(kMarginGrey, kMarginGrey, kMarginGrey, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
    const unsigned int rgb = m_document.colour();
    glEnable(GL_SCISSOR_TEST);
    glScissor(margin, margin, base.width(), base.height());
    glClearColor(((rgb >> 16) & 0xff) / 255.0f, ((rgb >> 8) & 0xff) / 255.0f, (rgb & 0xff) / 255.0f, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
    glDisable(GL_SCISSOR_TEST);
    glViewport(margin, margin, base.width(), base.height());
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    drawPicture();
    // The viewport is the whole zoomed picture (GL counts y from the bottom).
    glViewport(margin + m_pan.x(), margin + base.height() - height - m_pan.y(), width, height);
    // The host's part: after the frame, every figure draws itself at the view's size.
    m_document.paint();
    drawOverlays();
    drawPlacing();
}

int DemoView::deviceMargin() const { return static_cast<int>(std::lround(kMargin * devicePixelRatioF())); }

QSize DemoView::baseSize() const
{
    const int margin = 2 * deviceMargin();
    return QSize(std::max(1, static_cast<int>(std::lround(this->width() * devicePixelRatioF())) - margin),
                 std::max(1, static_cast<int>(std::lround(this->height() * devicePixelRatioF())) - margin));
}

QPoint DemoView::pictureOrigin() const
{
    const qreal ratio = devicePixelRatioF();
    return QPoint(kMargin, kMargin) +
           QPoint(static_cast<int>(std::lround(m_pan.x() / ratio)), static_cast<int>(std::lround(m_pan.y() / ratio)));
}

void DemoView::clampPan()
{
    const QSize base = baseSize();
    const HostView& view = m_document.view();
    m_pan.setX(std::min(0, std::max(base.width() - view.width(), m_pan.x())));
    m_pan.setY(std::min(0, std::max(base.height() - view.height(), m_pan.y())));
}

void DemoView::zoomAbout(double zoom, const QPointF& anchor)
{
    const double clamped = std::min(kMaxZoom, std::max(1.0, zoom));
    syncViewSize();
    const HostView& view = m_document.view();
    const qreal ratio = devicePixelRatioF();
    // The picture point under the anchor, as a fraction of the zoomed picture ...
    const QPointF at = anchor * ratio - QPointF(deviceMargin(), deviceMargin()) - QPointF(m_pan);
    const double u = at.x() / view.width();
    const double v = at.y() / view.height();
    m_zoom = clamped;
    syncViewSize();
    // ... stays under it at the new size.
    const QPointF inView = anchor * ratio - QPointF(deviceMargin(), deviceMargin());
    m_pan = QPoint(static_cast<int>(std::lround(inView.x() - u * view.width())),
                   static_cast<int>(std::lround(inView.y() - v * view.height())));
    clampPan();
    m_scaledPicture = QImage();
    m_ghost.hit = false;
    emit message(QStringLiteral("zoom %1x").arg(m_zoom, 0, 'g', 3));
    update();
}

void DemoView::panBy(int dx, int dy)
{
    m_pan += QPoint(dx, dy);
    clampPan();
    m_scaledPicture = QImage();
    update();
}

void DemoView::fit()
{
    m_zoom = 1.0;
    m_pan = QPoint(0, 0);
    syncViewSize();
    m_scaledPicture = QImage();
    update();
}

void DemoView::wheelEvent(QWheelEvent* event)
{
    const int notches = event->angleDelta().y() / 120;
    if (notches == 0) {
        event->ignore();
        return;
    }
#if QT_VERSION >= QT_VERSION_CHECK(5, 14, 0)
    const QPointF anchor = event->position();
#else
    const QPointF anchor = event->posF();
#endif
    zoomAbout(m_zoom * std::pow(kZoomStep, notches), anchor);
    event->accept();
}

void DemoView::keyReleaseEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Space && !event->isAutoRepeat()) {
        m_spaceHeld = false;
        m_panning = false;
    }
    QOpenGLWidget::keyReleaseEvent(event);
}

void DemoView::syncViewSize()
{
    const QSize base = baseSize();
    const int width = static_cast<int>(std::lround(base.width() * m_zoom));
    const int height = static_cast<int>(std::lround(base.height() * m_zoom));
    HostView& view = m_document.view();
    if (view.width() != width || view.height() != height) {
        view.resize(width, height);
        clampPan();
        m_scaledPicture = QImage();
    }
}

void DemoView::drawPicture()
{
    const QSize base = baseSize();
    if (m_scaledPicture.size() != base) {
        m_scaledPicture = render::pictureForGl(visiblePicture(), base);
    }
    if (!m_scaledPicture.isNull()) {
        render::drawPictureGl(m_scaledPicture);
    }
}

QImage DemoView::visiblePicture() const
{
    const QImage& picture = m_document.picture();
    if (picture.isNull() || m_zoom == 1.0) {
        return picture;
    }
    // The part of the scene's picture that the zoomed view shows.
    const HostView& view = m_document.view();
    const QSize base = baseSize();
    const double sx = static_cast<double>(picture.width()) / view.width();
    const double sy = static_cast<double>(picture.height()) / view.height();
    const QRect part(static_cast<int>(std::lround(-m_pan.x() * sx)), static_cast<int>(std::lround(-m_pan.y() * sy)),
                     std::max(1, static_cast<int>(std::lround(base.width() * sx))),
                     std::max(1, static_cast<int>(std::lround(base.height() * sy))));
    return picture.copy(part);
}

void DemoView::paintFromList()
{
    const HostView& view = m_document.view();
    const qreal ratio = devicePixelRatioF();
    const QRectF picture(QPointF(pictureOrigin()), QSizeF(view.width() / ratio, view.height() / ratio));
    const QSize base = baseSize();
    const QRectF shown(QPointF(kMargin, kMargin), QSizeF(base.width() / ratio, base.height() / ratio));
    // The host's part: after the frame, every figure draws itself, here into the list.
    m_list.Clear();
    {
        DrawListScope scope(m_list);
        m_document.paint();
        drawOverlays();
    }
    QPainter painter(this);
    painter.fillRect(rect(), QColor::fromRgbF(kMarginGrey, kMarginGrey, kMarginGrey));
    painter.fillRect(shown, QColor(static_cast<QRgb>(m_document.colour())));
    if (!m_document.picture().isNull()) {
        painter.drawImage(shown, visiblePicture());
    }
    if (m_rendering == Rendering::Core) {
        painter.beginNativePainting();
        const int margin = deviceMargin();
        context()->functions()->glViewport(margin + m_pan.x(), margin + base.height() - view.height() - m_pan.y(),
                                           view.width(), view.height());
        m_renderer.Render(m_list, view.width(), view.height());
        painter.endNativePainting();
    } else {
        // The list is in device pixels of the picture.
        painter.save();
        painter.translate(picture.topLeft());
        painter.scale(1.0 / ratio, 1.0 / ratio);
        PaintDrawList(painter, m_list);
        painter.restore();
    }
    if (placing() && !m_clicks.empty()) {
        auto at = [&](const tagTAVRIN_POINT& p) {
            return picture.topLeft() + QPointF(p.x * picture.width(), p.y * picture.height());
        };
        QPolygonF band;
        for (const tagTAVRIN_POINT& p : m_clicks) {
            band << at(p);
        }
        band << at(m_cursor);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(QColor(0x00, 0xff, 0x7f), 1.5));
        painter.drawPolyline(band);
        painter.setBrush(QColor(0x00, 0xff, 0x7f));
        for (const tagTAVRIN_POINT& p : m_clicks) {
            painter.drawEllipse(at(p), 3.5, 3.5);
        }
    }
}

void DemoView::drawPlacing()
{
    if (!placing() || m_clicks.empty()) {
        return;
    }
    // The clicks so far and the rubber band to the cursor, in the demo's own colour;
    // the figure itself is made by its class once placing finishes.
    auto vertex = [](const tagTAVRIN_POINT& p) { glVertex2f(2.0f * p.x - 1.0f, 1.0f - 2.0f * p.y); };
    glLoadIdentity();
    glColor4ub(0x00, 0xff, 0x7f, 0xff);
    glLineWidth(1.5f);
    glBegin(GL_LINE_STRIP);
    for (const tagTAVRIN_POINT& p : m_clicks) {
        vertex(p);
    }
    vertex(m_cursor);
    glEnd();
    glPointSize(7.0f);
    glBegin(GL_POINTS);
    for (const tagTAVRIN_POINT& p : m_clicks) {
        vertex(p);
    }
    glEnd();
    glLineWidth(1.0f);
    glPointSize(1.0f);
}

void DemoView::setShowCrossings(bool on)
{
    m_showCrossings = on;
    update();
}

void DemoView::drawOverlays()
{
    HostView& view = m_document.view();
    if (m_showCrossings) {
        for (const SceneHint& hint : GetSceneHints()) {
            if (hint.code == SceneHintCode::SelfCrossing) {
                DrawSelfCrossings(view.object(hint.slot), view.width(), view.height());
            }
        }
    }
    if (!m_track.empty()) {
        std::vector<tagTAVRIN_POINT> shown = m_track;
        if (m_drawingTrack) {
            shown.push_back(m_cursor);  // the segment being drawn follows the cursor
        }
        DrawTrack(shown.data(), static_cast<unsigned int>(shown.size()), m_trackEvents, view.width(), view.height());
    }
    if (m_ghost.hit && !placing()) {
        Point ghost(&m_ghost.foot);
        ghost.SetColors(0xffffff, 0xffffff, 0xffffff, 0xffffff);
        ghost.SetObjStatus(TAVRIN_OBJ_STATUS_HIGHLIGHTED);
        ghost.Draw(nullptr, view.width(), view.height(), true);
    }
}

void DemoView::findGhost(const QPoint& pixel)
{
    m_ghost = EdgeHit{false, 0, {0.0f, 0.0f}, 0.0f};
    HostView& view = m_document.view();
    VcaObject* figure = view.object(view.selectedSlot());
    if (figure == nullptr || placing()) {
        return;
    }
    const VertexLimits limits = GetVertexLimits(figure);
    tagTAVRIN_POINT cursor = view.normalised(pixel.x(), pixel.y());
    if (view.vertices(view.selectedSlot()).size() >= limits.maxCount || figure->CheckPointSelected(cursor) != 0) {
        return;
    }
    m_ghost = HitEdge(figure, cursor, view.width(), view.height(), kGhostReach);
}

QPoint DemoView::devicePixel(const QPoint& logical) const
{
    const qreal ratio = devicePixelRatioF();
    const int margin = deviceMargin();
    return QPoint(static_cast<int>(std::lround(logical.x() * ratio)) - margin - m_pan.x(),
                  static_cast<int>(std::lround(logical.y() * ratio)) - margin - m_pan.y());
}

void DemoView::mousePressEvent(QMouseEvent* event)
{
    syncViewSize();
    if (event->button() == Qt::MiddleButton || (event->button() == Qt::LeftButton && m_spaceHeld)) {
        m_panning = true;
        m_panFrom = event->pos();
        return;
    }
    const QPoint p = devicePixel(event->pos());
    if (event->button() == Qt::RightButton && !placing()) {
        // Selects the figure under the cursor (or none), then offers its actions.
        HostView& view = m_document.view();
        view.press(p.x(), p.y());
        view.release();
        VcaObject* figure = view.object(view.selectedSlot());
        tagTAVRIN_POINT cursor = view.normalised(p.x(), p.y());
        const unsigned int vertex = figure != nullptr ? figure->CheckPointSelected(cursor) : 0;
        emit selectionChanged();
        emit figureMenuRequested(mapToGlobal(event->pos()), vertex);
        update();
        return;
    }
    if (event->button() != Qt::LeftButton) {
        return;
    }
    if (m_drawingTrack) {
        m_track.push_back(m_document.view().normalised(p.x(), p.y()));
        update();
        return;
    }
    if (placing()) {
        m_clicks.push_back(m_document.view().normalised(p.x(), p.y()));
        const Kind* kind = findKind(m_placingKind);
        if (kind != nullptr && m_clicks.size() >= kind->maxClicks) {
            finishPlacing();
        }
        update();
        return;
    }
    // Over the ghost handle, a click inserts a vertex into the selected figure, whatever
    // the press picks; a drag from there drags what the press picked.
    m_pressGhost = m_ghost;
    m_pressGhostSlot = m_ghost.hit ? m_document.view().selectedSlot() : -1;
    m_pressMoved = false;
    m_document.view().press(p.x(), p.y());
    m_pressGrabbed = m_document.view().dragging();
    emit selectionChanged();
    update();
}

void DemoView::mouseMoveEvent(QMouseEvent* event)
{
    if (m_panning) {
        const qreal ratio = devicePixelRatioF();
        const QPoint moved = event->pos() - m_panFrom;
        m_panFrom = event->pos();
        panBy(static_cast<int>(std::lround(moved.x() * ratio)), static_cast<int>(std::lround(moved.y() * ratio)));
        return;
    }
    const QPoint p = devicePixel(event->pos());
    HostView& view = m_document.view();
    const tagTAVRIN_POINT at = view.normalised(p.x(), p.y());
    emit cursorMoved(QPointF(at.x, at.y));
    if (placing() || m_drawingTrack) {
        m_cursor = at;
    } else if (view.dragging()) {
        m_pressMoved = true;
        m_ghost.hit = false;
        view.drag(p.x(), p.y());
        emit edited();
    } else {
        view.hover(p.x(), p.y());
        findGhost(p);
    }
    update();
}

void DemoView::mouseReleaseEvent(QMouseEvent* event)
{
    if (m_panning && (event->button() == Qt::MiddleButton || event->button() == Qt::LeftButton)) {
        m_panning = false;
        return;
    }
    if (event->button() != Qt::LeftButton || placing() || m_drawingTrack) {
        return;
    }
    HostView& view = m_document.view();
    view.release();
    const int slot = m_pressGhost.hit && !m_pressMoved ? m_pressGhostSlot : view.selectedSlot();
    if (!m_pressMoved && m_pressGhost.hit && slot >= 0) {
        // A click on the ghost handle: the new vertex goes on that edge.
        view.select(slot);
        emit selectionChanged();
        if (InsertVertex(view.object(slot), m_pressGhost.edge + 1, m_pressGhost.foot)) {
            view.refresh(slot);
            emit editFinished(QStringLiteral("Insert vertex"));
        } else {
            emit message(QStringLiteral("%1: no vertex can be inserted there").arg(m_document.kind(slot)));
        }
        m_ghost.hit = false;
    } else if (m_pressMoved && m_pressGrabbed) {
        emit editFinished(QStringLiteral("Drag %1").arg(m_document.kind(slot)));
    }
    m_pressGhost.hit = false;
    emit edited();
    update();
}

void DemoView::mouseDoubleClickEvent(QMouseEvent* event)
{
    // The double-click's first press has already placed its vertex; outside placing the
    // second press is an ordinary press.
    if (m_drawingTrack && event->button() == Qt::LeftButton) {
        finishTrack();
    } else if (!placing()) {
        mousePressEvent(event);
    } else if (event->button() == Qt::LeftButton) {
        finishPlacing();
        update();
    }
}

void DemoView::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (placing()) {
            finishPlacing();
        } else if (m_drawingTrack) {
            finishTrack();
        }
        break;
    case Qt::Key_Space:
        m_spaceHeld = true;
        break;
    case Qt::Key_Escape:
        if (placing()) {
            cancelPlacing();
            emit message(QStringLiteral("placing cancelled"));
        }
        break;
    default:
        QOpenGLWidget::keyPressEvent(event);
        return;
    }
    update();
}

void DemoView::finishTrack()
{
    m_drawingTrack = false;
    if (m_track.size() < 2) {
        m_track.clear();
        emit message(QStringLiteral("a test track needs at least 2 points"));
    }
    emit trackChanged();
    update();
}

void DemoView::finishPlacing()
{
    const QString kind = m_placingKind;
    const std::vector<tagTAVRIN_POINT> clicks = m_clicks;
    cancelPlacing();
    const Kind* known = findKind(kind);
    if (known == nullptr || clicks.size() < known->minClicks) {
        emit message(QStringLiteral("%1 needs at least %2 points; placing cancelled")
                         .arg(kind)
                         .arg(known != nullptr ? known->minClicks : 0));
        return;
    }
    QString error;
    if (m_document.create(kind, clicks, error) < 0) {
        emit message(QStringLiteral("%1 refused: %2").arg(kind, error));
    } else {
        emit message(QStringLiteral("%1 placed").arg(kind));
        emit editFinished(QStringLiteral("Place %1").arg(kind));
    }
    emit selectionChanged();
}

}  // namespace demo
}  // namespace Tavrin
