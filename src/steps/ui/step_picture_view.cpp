#include "steps/ui/step_picture_view.h"

#include "base/colors.h"
#include "steps/steps_export.h"
#include "steps/ui/texts.h"
#include "ui/theme.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

namespace {

constexpr int kTallest = 560; // a picture taller than that would push its own caption off the screen
constexpr int kNarrowest = 160;
constexpr double kLeastGrab = 18;
constexpr double kRingWidth = 2.5;
constexpr double kRingOpacity = 0.18;

} // namespace

StepPictureView::StepPictureView(QWidget *parent) : QWidget(parent)
{
    setAccessibleName(StepsUiTexts::tr("Picture of the step"));
    m_putSoon.setSingleShot(true);
    connect(&m_putSoon, &QTimer::timeout, this, &StepPictureView::putMarker);
}

QSize StepPictureView::sizeWithin(QSize picture, int width)
{
    if (picture.isEmpty())
        return {width, width / 2};
    const QSize most(std::clamp(width, 1, std::max(picture.width(), kNarrowest)), kTallest);
    return picture.scaled(most, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
}

void StepPictureView::setStep(const GuideStep &step)
{
    m_step = step;
    setCursor(hasMarkerLayer() ? Qt::OpenHandCursor : Qt::ArrowCursor);
    update();
}

void StepPictureView::setPreview(const QImage &preview)
{
    if (m_preview.cacheKey() == preview.cacheKey())
        return;
    m_preview = preview;
    m_scaled = QPixmap();
    if (!m_isPressed && !m_putSoon.isActive())
        m_marker.reset();
    update();
}

double StepPictureView::scale() const
{
    return double(width()) / std::max(m_step.image.size().width(), 1);
}

double StepPictureView::ringSize() const
{
    return 2 * StepsExport::ringRadius(m_step.image.size()) * scale();
}

QRect StepPictureView::ringRect(QPointF at) const
{
    const double reach = ringSize() / 2 + kRingWidth;
    return QRectF(at.x() - reach, at.y() - reach, 2 * reach, 2 * reach).toAlignedRect();
}

void StepPictureView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !hasMarkerLayer())
        return QWidget::mousePressEvent(event);
    m_putSoon.stop();
    m_isPressed = true;
    m_isDragged = false;
    m_pressedAt = event->position();
    m_grabOffset.reset();
    if (m_step.click) {
        const QPointF offset = *m_step.click * scale() - m_pressedAt;
        if (std::hypot(offset.x(), offset.y()) <= std::max(ringSize(), kLeastGrab))
            m_grabOffset = offset;
    }
}

void StepPictureView::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_isPressed)
        return;
    const QPointF way = event->position() - m_pressedAt;
    if (!m_isDragged && way.manhattanLength() < QApplication::startDragDistance())
        return;
    m_isDragged = true;
    setCursor(Qt::ClosedHandCursor);
    drag(event->position());
}

void StepPictureView::drag(QPointF pointer)
{
    const QPointF to = pointer + m_grabOffset.value_or(QPointF());
    QRect changed = m_marker ? ringRect(*m_marker) : QRect();
    m_marker = QPointF(std::clamp(to.x(), 0.0, double(width())), std::clamp(to.y(), 0.0, double(height())));
    update(changed | ringRect(*m_marker));
}

void StepPictureView::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !m_isPressed)
        return QWidget::mouseReleaseEvent(event);
    m_isPressed = false;
    setCursor(Qt::OpenHandCursor);
    if (m_isDragged) {
        drag(event->position());
        return putMarker();
    }
    if (m_grabOffset) // a click on the marker itself leaves it there
        return;
    drag(m_pressedAt);
    m_putSoon.start(QApplication::doubleClickInterval());
}

void StepPictureView::putMarker()
{
    if (m_marker)
        Q_EMIT markerPut(*m_marker / scale());
}

void StepPictureView::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_putSoon.stop();
    m_isPressed = false;
    m_marker.reset();
    update();
    Q_EMIT editWanted();
}

void StepPictureView::paintEvent(QPaintEvent *)
{
    const Theme::Tokens &theme = Theme::tokens(this);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    QPainterPath outline;
    outline.addRoundedRect(frame, Theme::Radius::control, Theme::Radius::control);
    if (m_preview.isNull()) {
        painter.fillPath(outline, theme.track);
    } else {
        const QSize pixels = (QSizeF(size()) * devicePixelRatioF()).toSize();
        if (m_scaled.size() != pixels) {
            m_scaled =
                QPixmap::fromImage(m_preview.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
            m_scaled.setDevicePixelRatio(devicePixelRatioF());
        }
        painter.setClipPath(outline);
        painter.drawPixmap(0, 0, m_scaled);
        painter.setClipping(false);
    }
    painter.setPen(QPen(theme.hairline, 1));
    painter.drawPath(outline);
    if (m_marker) {
        painter.setPen(QPen(brandColor(), kRingWidth));
        painter.setBrush(brandColor(kRingOpacity));
        painter.drawEllipse(*m_marker, ringSize() / 2, ringSize() / 2);
    }
}
