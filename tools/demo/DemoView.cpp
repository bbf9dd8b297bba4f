#include "DemoView.h"

#include "DemoKinds.h"
#include "SceneRenderer.h"

#include <Tavrin/Diagnostics.h>
#include <Tavrin/Point.h>
#include <TavrinQt/PaintDrawList.h>

#include <QKeyEvent>
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
    const int width = m_document.view().width();
    const int height = m_document.view().height();
    // The margin, then the picture's area in the scene's colour: the viewport is the
    // picture, and what figures draw past its edges shows in the margin around it.
    glViewport(0, 0, width + 2 * margin, height + 2 * margin);
    glClearColor(kMarginGrey, kMarginGrey, kMarginGrey, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
    const unsigned int rgb = m_document.colour();
    glEnable(GL_SCISSOR_TEST);
    glScissor(margin, margin, width, height);
    glClearColor(((rgb >> 16) & 0xff) / 255.0f, ((rgb >> 8) & 0xff) / 255.0f, (rgb & 0xff) / 255.0f, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
    glDisable(GL_SCISSOR_TEST);
    glViewport(margin, margin, width, height);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    drawPicture();
    // The host's part: after the frame, every figure draws itself at the view's size.
    m_document.paint();
    drawOverlays();
    drawPlacing();
}

int DemoView::deviceMargin() const { return static_cast<int>(std::lround(kMargin * devicePixelRatioF())); }

void DemoView::syncViewSize()
{
    const int margin = 2 * deviceMargin();
    const int width = std::max(1, static_cast<int>(std::lround(this->width() * devicePixelRatioF())) - margin);
    const int height = std::max(1, static_cast<int>(std::lround(this->height() * devicePixelRatioF())) - margin);
    HostView& view = m_document.view();
    if (view.width() != width || view.height() != height) {
        view.resize(width, height);
        m_scaledPicture = QImage();
    }
}

void DemoView::drawPicture()
{
    const HostView& view = m_document.view();
    const QSize size(view.width(), view.height());
    if (m_scaledPicture.size() != size) {
        m_scaledPicture = render::pictureForGl(m_document.picture(), size);
    }
    if (!m_scaledPicture.isNull()) {
        render::drawPictureGl(m_scaledPicture);
    }
}

void DemoView::paintFromList()
{
    const HostView& view = m_document.view();
    const qreal ratio = devicePixelRatioF();
    const QRectF picture(QPointF(kMargin, kMargin), QSizeF(view.width() / ratio, view.height() / ratio));
    // The host's part: after the frame, every figure draws itself, here into the list.
    m_list.Clear();
    {
        DrawListScope scope(m_list);
        m_document.paint();
        drawOverlays();
    }
    QPainter painter(this);
    painter.fillRect(rect(), QColor::fromRgbF(kMarginGrey, kMarginGrey, kMarginGrey));
    painter.fillRect(picture, QColor(static_cast<QRgb>(m_document.colour())));
    if (!m_document.picture().isNull()) {
        painter.drawImage(picture, m_document.picture());
    }
    if (m_rendering == Rendering::Core) {
        painter.beginNativePainting();
        const int margin = deviceMargin();
        context()->functions()->glViewport(margin, margin, view.width(), view.height());
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
    return QPoint(static_cast<int>(std::lround(logical.x() * ratio)) - margin,
                  static_cast<int>(std::lround(logical.y() * ratio)) - margin);
}

void DemoView::mousePressEvent(QMouseEvent* event)
{
    syncViewSize();
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
