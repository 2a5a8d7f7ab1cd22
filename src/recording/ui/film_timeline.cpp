#include "recording/ui/film_timeline.h"

#include "recording/ui/texts.h"
#include "recording/ui/trim_handle.h"
#include "ui/roles.h"
#include "ui/theme.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

namespace {

constexpr double kNeedleRoom = 4; // to each side of its middle
constexpr int kHeight = 52;
constexpr int kAbove = 3; // of the place of the film, over and under the pictures
constexpr int kMostPictures = 40;
constexpr int kSettled = 250;  // milliseconds without another size
constexpr int kEdge = 3;       // of the frame around the part that is being chosen
constexpr double kShade = 0.7; // over what isn't used

} // namespace

FilmTimeline::FilmTimeline(VideoEditorModel &model, QWidget *parent)
    : QWidget(parent),
      m_model(model),
      m_from(new TrimHandle(TrimHandle::Side::Left, RecordingUiTexts::tr("Start of the trimmed part"), this)),
      m_to(new TrimHandle(TrimHandle::Side::Right, RecordingUiTexts::tr("End of the trimmed part"), this))
{
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(RecordingUiTexts::tr("Timeline"));
    Roles::set(this, QAccessible::Slider);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_settled.setSingleShot(true);
    m_settled.setInterval(kSettled);
    connect(&m_settled, &QTimer::timeout, this, &FilmTimeline::picturesWanted);
    using Edge = VideoEditorModel::Edge;
    const auto join = [this](TrimHandle *handle, Edge edge) {
        connect(handle, &TrimHandle::draggedTo, this,
                [this, edge](double x) { Q_EMIT edgeMoved(edge, timeAt(x)); });
        connect(handle, &TrimHandle::nudged, this, [this, edge](double seconds) {
            const VideoEditorModel::Part &part = m_model.shownPart();
            Q_EMIT edgeMoved(edge, (edge == Edge::From ? part.from : part.to) + seconds);
        });
        connect(handle, &TrimHandle::stepped, this,
                [this, edge](int pictures) { Q_EMIT edgeStepped(edge, pictures); });
    };
    join(m_from, Edge::From);
    join(m_to, Edge::To);
    connect(&m_model, &VideoEditorModel::changed, this, &FilmTimeline::follow);
}

QSize FilmTimeline::sizeHint() const
{
    return {400, kHeight};
}

QSize FilmTimeline::minimumSizeHint() const
{
    return {160, kHeight};
}

void FilmTimeline::setPictures(const QList<QImage> &pictures)
{
    m_pictures = pictures;
    update();
}

void FilmTimeline::setPosition(double seconds)
{
    if (seconds == m_position)
        return;
    // Only where the needle was and is: it moves many times a second.
    for (const double place : {placeOf(std::exchange(m_position, seconds)), placeOf(seconds)})
        update(QRectF(place - kNeedleRoom, 0, 2 * kNeedleRoom, height()).toAlignedRect());
}

int FilmTimeline::pictureCount(QSize film) const
{
    const double aspect = film.isEmpty() ? 16.0 / 9 : double(film.width()) / film.height();
    return std::clamp(int(std::ceil(strip().width() / (strip().height() * aspect))), 1, kMostPictures);
}

QSize FilmTimeline::pictureSize() const
{
    const int side = int(std::ceil(strip().height() * devicePixelRatioF()));
    return {side * 4, side}; // as high as the strip; very wide films get less
}

// Where the pictures are: the handles stand outside of the part that they hold.
QRectF FilmTimeline::strip() const
{
    return QRectF(rect()).adjusted(TrimHandle::kWidth, kAbove, -TrimHandle::kWidth, -kAbove);
}

double FilmTimeline::timeAt(double x) const
{
    const QRectF place = strip();
    return std::clamp((x - place.left()) / place.width(), 0.0, 1.0) * m_model.duration();
}

double FilmTimeline::placeOf(double seconds) const
{
    const QRectF place = strip();
    const double share = m_model.isReady() ? seconds / m_model.duration() : 0;
    return place.left() + place.width() * std::clamp(share, 0.0, 1.0);
}

void FilmTimeline::follow()
{
    const bool isTrimming = m_model.isTrimming();
    const VideoEditorModel::Part &part = m_model.shownPart();
    const QRect place = strip().toRect();
    m_from->setGeometry(qRound(placeOf(part.from)) - TrimHandle::kWidth, place.top(), TrimHandle::kWidth,
                        place.height());
    m_to->setGeometry(qRound(placeOf(part.to)), place.top(), TrimHandle::kWidth, place.height());
    m_from->setVisible(isTrimming);
    m_to->setVisible(isTrimming);
    update();
}

void FilmTimeline::paintPictures(QPainter &painter) const
{
    const QRectF place = strip();
    painter.fillRect(place, Theme::tokens(this).track);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const double width = m_pictures.isEmpty() ? 0 : place.width() / double(m_pictures.size());
    for (qsizetype i = 0; i < m_pictures.size(); ++i) {
        const QImage &picture = m_pictures[i];
        if (picture.isNull())
            continue;
        const QRectF cell(place.left() + double(i) * width, place.top(), width, place.height());
        // Fills its cell; what is over is left out at both sides.
        const QSizeF shown = cell.size().scaled(QSizeF(picture.size()), Qt::KeepAspectRatio);
        const QPointF corner((picture.width() - shown.width()) / 2, (picture.height() - shown.height()) / 2);
        painter.drawImage(cell, picture, QRectF(corner, shown));
    }
}

void FilmTimeline::paintEvent(QPaintEvent *)
{
    const Theme::Tokens &theme = Theme::tokens(this);
    const QRectF place = strip();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath rounded;
    rounded.addRoundedRect(place, Theme::Radius::control, Theme::Radius::control);
    painter.save();
    painter.setClipPath(rounded);
    paintPictures(painter);
    const VideoEditorModel::Part &part = m_model.shownPart();
    const double from = placeOf(part.from);
    const double to = placeOf(part.to);
    QColor shade = theme.surface;
    shade.setAlphaF(float(kShade));
    if (m_model.isReady()) {
        painter.fillRect(QRectF(place.topLeft(), QPointF(from, place.bottom())), shade);
        painter.fillRect(QRectF(QPointF(to, place.top()), place.bottomRight()), shade);
    }
    painter.restore();
    painter.setPen(QPen(theme.hairline, 1));
    painter.drawPath(rounded);
    if (m_model.isTrimming()) {
        painter.fillRect(QRectF(from, place.top(), to - from, kEdge), TrimHandle::color());
        painter.fillRect(QRectF(from, place.bottom() - kEdge, to - from, kEdge), TrimHandle::color());
    }
    if (!m_model.isReady())
        return;
    const QRectF needle(placeOf(m_position) - 1.5, 0, 3, height());
    painter.setPen(QPen(QColor(0, 0, 0, 140), 1));
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(needle.adjusted(-0.5, 0.5, 0.5, -0.5), 2, 2);
}

void FilmTimeline::resizeEvent(QResizeEvent *)
{
    follow();
    m_settled.start();
}

void FilmTimeline::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && m_model.isReady())
        Q_EMIT seeked(timeAt(event->position().x()));
}

void FilmTimeline::mouseMoveEvent(QMouseEvent *event)
{
    if ((event->buttons() & Qt::LeftButton) && m_model.isReady())
        Q_EMIT seeked(timeAt(event->position().x()));
}

void FilmTimeline::keyPressEvent(QKeyEvent *event)
{
    const bool isWide = event->modifiers() & Qt::ShiftModifier;
    switch (event->key()) {
    case Qt::Key_Left:
        return isWide ? seeked(m_position - 1) : stepped(-1);
    case Qt::Key_Right:
        return isWide ? seeked(m_position + 1) : stepped(1);
    case Qt::Key_Home:
        return seeked(m_model.part().from);
    case Qt::Key_End:
        return seeked(m_model.part().to);
    default:
        QWidget::keyPressEvent(event);
    }
}
