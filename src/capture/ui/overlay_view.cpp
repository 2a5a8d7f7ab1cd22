#include "capture/ui/overlay_view.h"

#include "capture/ui/capture_overlay.h"
#include "capture/ui/picture_dimming.h"
#include "capture/ui/texts.h"
#include "ui/announcement.h"
#include "ui/roles.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace {

constexpr double kLeastDrag = 4;      // points; a small tremble stays a click
constexpr double kLeastImage = 3;     // of a selection that becomes a picture
constexpr double kLeastSelection = 8; // of one that will be scrolled or recorded
constexpr int kShiftNudge = 10;

} // namespace

OverlayView::OverlayView(const DisplaySnapshot &snapshot, CaptureOverlayController &controller,
                         QWidget *parent)
    : QWidget(parent), m_snapshot(snapshot), m_controller(controller)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_NoSystemBackground);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::CrossCursor);
    Roles::set(this, QAccessible::Canvas);
    setAccessibleName(controller.hint());
    setAccessibleDescription(CaptureUiTexts::tr("Arrow keys move the pointer, with Shift faster. Space begins "
                                                "and ends an area. Return takes it, Esc cancels."));
}

void OverlayView::resizeEvent(QResizeEvent *)
{
    preparePicture();
    if (m_mouse) // known before the view had its size
        updateHover(*m_mouse);
    m_marks = currentMarks();
}

void OverlayView::pointerMoved(const QPointF &position)
{
    m_mouse = position;
    updateHover(position);
    refresh();
}

void OverlayView::updateHover(const QPointF &position)
{
    const QPointF origin = m_snapshot.screen.frame().topLeft();
    m_hovered.reset();
    for (const WindowInfo &window : m_controller.windowInfos()) {
        if (holds(window.frame, position + origin)) {
            m_hovered = Hovered{window.id, window.frame.translated(-origin).intersected(bounds())};
            return;
        }
    }
}

// Widgets are told whole points, but at two pixels a point every other pixel lies between them. Only the
// place in the window, which the view fills, comes through unrounded.
QPointF OverlayView::placeOf(const QMouseEvent &event) const
{
    return event.scenePosition() - mapTo(window(), QPointF());
}

void OverlayView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::RightButton)
        m_controller.finish(CaptureOverlayController::Cancelled{});
    else if (event->button() == Qt::LeftButton)
        beginDrag(placeOf(*event), DraggedBy::Button);
}

void OverlayView::mouseMoveEvent(QMouseEvent *event)
{
    const QPointF position = placeOf(*event);
    // The echo of a nudge: acted on already, and its Shift meant ten pixels, not a square.
    if (m_nudgedTo && QLineF(position, *m_nudgedTo).length() < 1)
        return;
    m_nudgedTo.reset();
    const bool drags =
        m_dragStart && (m_draggedBy == DraggedBy::Keys || event->buttons().testFlag(Qt::LeftButton));
    if (drags && m_draggedBy == DraggedBy::ButtonAsAWhole)
        moveSelection(position);
    else if (drags)
        drag(position, event->modifiers().testFlag(Qt::ShiftModifier) ? Shape::Square : Shape::Free);
    else
        pointerMoved(position);
}

void OverlayView::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && m_dragStart && m_draggedBy != DraggedBy::Keys)
        endDrag();
}

// Where nobody else tells it, a window that comes up under the pointer learns of it here.
void OverlayView::enterEvent(QEnterEvent *event)
{
    if (!m_mouse)
        pointerMoved(event->position());
}

void OverlayView::leaveEvent(QEvent *)
{
    m_mouse.reset();
    m_hovered.reset();
    refresh();
}

void OverlayView::beginDrag(const QPointF &position, DraggedBy by)
{
    m_dragStart = position;
    m_draggedBy = by;
    m_selection.reset();
    refresh();
}

void OverlayView::drag(const QPointF &position, Shape shape)
{
    const QPointF start = *m_dragStart;
    const QPointF to(std::clamp(position.x(), 0.0, bounds().width()),
                     std::clamp(position.y(), 0.0, bounds().height()));
    m_mouse = to;
    const QPointF along = to - start;
    if (std::hypot(along.x(), along.y()) > kLeastDrag || m_selection) {
        QSizeF size(std::abs(along.x()), std::abs(along.y()));
        if (shape == Shape::Square) {
            const double side = std::max(size.width(), size.height());
            size = {side, side};
        }
        m_selection = QRectF(QPointF(to.x() < start.x() ? start.x() - size.width() : start.x(),
                                     to.y() < start.y() ? start.y() - size.height() : start.y()),
                             size);
    }
    refresh();
}

// As far as the display reaches.
void OverlayView::moveSelection(const QPointF &position)
{
    const QPointF from = m_mouse.value_or(position);
    const QRectF whole = m_selection.value_or(QRectF(*m_dragStart, QSizeF()));
    const QPointF by(std::clamp(position.x() - from.x(), -whole.left(), bounds().width() - whole.right()),
                     std::clamp(position.y() - from.y(), -whole.top(), bounds().height() - whole.bottom()));
    *m_dragStart += by;
    if (m_selection)
        m_selection->translate(by);
    m_mouse = from + by; // the pointer may go on; what it holds on to doesn't
    refresh();
}

void OverlayView::endDrag()
{
    if (m_controller.selectionOnly())
        finishSelecting();
    else
        finishCapturing();
    m_dragStart.reset();
}

void OverlayView::finishCapturing()
{
    if (m_selection && m_selection->width() >= kLeastImage && m_selection->height() >= kLeastImage)
        finishWithRect(*m_selection);
    else if (m_hovered)
        m_controller.finish(CaptureOverlayController::Window{m_hovered->id});
    else
        m_controller.finish(CaptureOverlayController::Image{m_snapshot.image});
}

void OverlayView::finishSelecting()
{
    QRectF chosen = bounds();
    if (m_selection && m_selection->width() >= kLeastSelection && m_selection->height() >= kLeastSelection)
        chosen = *m_selection;
    else if (m_hovered)
        chosen = m_hovered->rect;
    m_controller.finish(CaptureOverlayController::Selection{m_snapshot.screen, chosen});
}

void OverlayView::finishWithRect(const QRectF &rect)
{
    const QRect pixels = layout().pixels(rect).intersected(m_snapshot.image.rect());
    if (pixels.isEmpty())
        m_controller.finish(CaptureOverlayController::Cancelled{});
    else
        m_controller.finish(CaptureOverlayController::Image{m_snapshot.image.copy(pixels)});
}

void OverlayView::accept()
{
    const double least = m_controller.selectionOnly() ? kLeastSelection : kLeastImage;
    if (m_selection && m_selection->width() >= least && m_selection->height() >= least)
        endDrag();
    else if (m_controller.selectionOnly())
        m_controller.finish(CaptureOverlayController::Selection{m_snapshot.screen, bounds()});
    else
        m_controller.finish(CaptureOverlayController::Image{m_snapshot.image});
}

void OverlayView::keyPressEvent(QKeyEvent *event)
{
    const int step = event->modifiers().testFlag(Qt::ShiftModifier) ? kShiftNudge : 1;
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        m_controller.accept(*this);
        break;
    case Qt::Key_Escape:
        m_controller.finish(CaptureOverlayController::Cancelled{});
        break;
    case Qt::Key_Left:
        m_controller.nudge(*this, -step, 0);
        break;
    case Qt::Key_Right:
        m_controller.nudge(*this, step, 0);
        break;
    case Qt::Key_Up:
        m_controller.nudge(*this, 0, -step);
        break;
    case Qt::Key_Down:
        m_controller.nudge(*this, 0, step);
        break;
    case Qt::Key_Space:
        if (!event->isAutoRepeat())
            m_controller.toggleSelection(*this);
        break;
    default:
        event->ignore();
    }
}

void OverlayView::keyReleaseEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Space)
        return event->ignore();
    if (!event->isAutoRepeat())
        m_controller.endMove(*this);
}

void OverlayView::nudge(int dx, int dy)
{
    const double scale = layout().scale();
    const QPointF from = m_mouse.value_or(bounds().center());
    // The last pixel of the display is the farthest that a pointer can be put.
    const QPointF to(std::clamp(from.x() + dx / scale, 0.0, bounds().width() - 1 / scale),
                     std::clamp(from.y() + dy / scale, 0.0, bounds().height() - 1 / scale));
    m_nudgedTo = to;
    m_controller.warpPointer(to + m_snapshot.screen.frame().topLeft());
    const quint32 before = m_hovered ? m_hovered->id : 0;
    if (m_dragStart && m_draggedBy == DraggedBy::ButtonAsAWhole)
        moveSelection(to);
    else if (m_dragStart)
        drag(to, Shape::Free);
    else
        pointerMoved(to);
    const QString place = placeWords();
    announce(this, m_hovered && m_hovered->id != before && !m_dragStart
                       ? place + QStringLiteral(", ") + titleOf(m_hovered->id)
                       : place);
}

// Where the pointer is, or how large what it holds is; pixels of the picture.
QString OverlayView::placeWords() const
{
    if (m_selection) {
        const QRect pixels = layout().pixels(*m_selection);
        return CaptureUiTexts::tr("%1 by %2 at %3, %4")
            .arg(pixels.width())
            .arg(pixels.height())
            .arg(pixels.x())
            .arg(pixels.y());
    }
    const QPointF at = m_mouse.value_or(QPointF()) * layout().scale();
    return QStringLiteral("%1, %2").arg(qRound(at.x())).arg(qRound(at.y()));
}

QString OverlayView::titleOf(quint32 window) const
{
    for (const WindowInfo &info : m_controller.windowInfos()) {
        if (info.id == window)
            return info.title;
    }
    return {};
}

void OverlayView::toggleSelection()
{
    if (!m_dragStart) {
        if (m_mouse) {
            beginDrag(*m_mouse, DraggedBy::Keys);
            announce(this, CaptureUiTexts::tr("Area begins at %1").arg(placeWords()));
        }
        return;
    }
    switch (m_draggedBy) {
    case DraggedBy::Keys:
        endDrag();
        break;
    case DraggedBy::Button:
        m_draggedBy = DraggedBy::ButtonAsAWhole;
        break;
    case DraggedBy::ButtonAsAWhole:
        break;
    }
}

void OverlayView::endMove()
{
    if (m_draggedBy == DraggedBy::ButtonAsAWhole)
        m_draggedBy = DraggedBy::Button;
}

OverlayMarks OverlayView::currentMarks() const
{
    const OverlayLayout layout = this->layout();
    OverlayMarks marks;
    if (m_selection)
        marks.hole = m_selection;
    else if (!m_dragStart && m_hovered)
        marks.hole = m_hovered->rect;
    if (marks.hole)
        marks.size = layout.sizeBadge(*marks.hole);
    if (m_mouse) {
        if (!m_selection) {
            marks.crosshair = m_mouse;
            marks.hint = layout.hint(m_controller.hint());
        }
        marks.loupe = layout.loupe(*m_mouse);
    }
    return marks;
}

void OverlayView::refresh()
{
    OverlayMarks marks = currentMarks();
    update(OverlayDrawing::difference(m_marks, marks, size(), devicePixelRatioF()));
    m_marks = std::move(marks);
}

void OverlayView::preparePicture()
{
    const QSize device = (QSizeF(size()) * devicePixelRatioF()).toSize();
    m_picture = m_snapshot.image.convertToFormat(QImage::Format_RGB32);
    if (m_picture.size() != device && !device.isEmpty())
        m_picture = m_picture.scaled(device, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    m_picture.setDevicePixelRatio(1);
}

void OverlayView::paintPictures(QPainter &painter, const QRegion &region) const
{
    // In the device's own pixels, where drawing a picture is a plain copy.
    const double device = devicePixelRatioF();
    painter.save();
    painter.scale(1 / device, 1 / device);
    QRegion holePixels;
    if (m_marks.hole) {
        const QRectF &hole = *m_marks.hole;
        holePixels = QRectF(hole.topLeft() * device, hole.size() * device).toRect();
    }
    for (const QRect &part : region) {
        const QRect pixels =
            QRectF(QPointF(part.topLeft()) * device, QSizeF(part.size()) * device).toAlignedRect();
        for (const QRect &bright : holePixels.intersected(pixels))
            painter.drawImage(bright.topLeft(), m_picture, bright);
        for (const QRect &dark : QRegion(pixels) - holePixels)
            drawDimmed(painter, m_picture, dark);
    }
    painter.restore();
}

void OverlayView::paintEvent(QPaintEvent *event)
{
    const QRegion &region = event->region();
    QPainter painter(this);
    paintPictures(painter, region);
    if (m_marks.hole)
        OverlayDrawing::drawHoleBorder(painter, *m_marks.hole);
    if (m_marks.size && region.intersects(m_marks.size->rect.toAlignedRect()))
        OverlayDrawing::drawBadge(painter, *m_marks.size);
    if (m_marks.crosshair)
        OverlayDrawing::drawCrosshair(painter, *m_marks.crosshair, size(), devicePixelRatioF(),
                                      region.boundingRect());
    if (m_marks.hint && region.intersects(m_marks.hint->rect.toAlignedRect()))
        OverlayDrawing::drawHint(painter, *m_marks.hint);
    if (m_marks.loupe)
        OverlayDrawing::drawLoupe(painter, *m_marks.loupe);
}
