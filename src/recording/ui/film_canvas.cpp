#include "recording/ui/film_canvas.h"

#include "recording/ui/texts.h"
#include "ui/theme.h"

#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>

namespace {

constexpr int kSettled = 150;  // milliseconds without another size
constexpr int kDragSize = 240; // points, of the picture under the pointer

} // namespace

FilmCanvas::FilmCanvas(QWidget *parent) : QWidget(parent)
{
    setAccessibleName(RecordingUiTexts::tr("Film"));
    setMinimumSize(320, 160);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    m_settled.setSingleShot(true);
    m_settled.setInterval(kSettled);
    connect(&m_settled, &QTimer::timeout, this, &FilmCanvas::pixelsChanged);
}

void FilmCanvas::setPicture(const QImage &picture)
{
    if (picture.cacheKey() == m_picture.cacheKey())
        return;
    m_picture = picture;
    update();
}

QSize FilmCanvas::pixels() const
{
    return (QSizeF(size()) * devicePixelRatioF()).toSize();
}

QRectF FilmCanvas::pictureRect() const
{
    const QSizeF size = QSizeF(m_picture.size()) / devicePixelRatioF();
    const QSizeF shown = size.width() > width() || size.height() > height()
                             ? size.scaled(QSizeF(this->size()), Qt::KeepAspectRatio)
                             : size;
    const QPointF corner((width() - shown.width()) / 2, (height() - shown.height()) / 2);
    // On whole pixels, so that a picture of the right size stays sharp.
    const qreal ratio = devicePixelRatioF();
    return {QPointF(std::round(corner.x() * ratio) / ratio, std::round(corner.y() * ratio) / ratio), shown};
}

void FilmCanvas::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), Theme::canvasSurround());
    if (m_picture.isNull())
        return;
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(pictureRect(), m_picture);
}

void FilmCanvas::resizeEvent(QResizeEvent *)
{
    m_settled.start();
}

void FilmCanvas::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        m_press = event->pos();
}

void FilmCanvas::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_press || (event->pos() - *m_press).manhattanLength() < QApplication::startDragDistance())
        return;
    m_press.reset();
    dragFile();
}

void FilmCanvas::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && std::exchange(m_press, std::nullopt))
        Q_EMIT clicked();
}

void FilmCanvas::dragFile()
{
    if (m_file.isEmpty())
        return;
    auto *content = new QMimeData;
    content->setUrls({m_file});
    auto *drag = new QDrag(this);
    drag->setMimeData(content);
    if (!m_picture.isNull())
        drag->setPixmap(QPixmap::fromImage(m_picture.scaled(kDragSize, kDragSize, Qt::KeepAspectRatio)));
    drag->exec(Qt::CopyAction);
}
