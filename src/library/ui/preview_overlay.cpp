#include "library/ui/preview_overlay.h"

#include "base/async.h"
#include "document/image_files.h"
#include "library/film_thumbnails.h"
#include "library/library_names.h"
#include "library/model/library_model.h"
#include "library/ui/texts.h"
#include "ui/symbol.h"
#include "ui/theme.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QPainter>

namespace {
constexpr int kMargin = 24;
constexpr int kFoot = 40;
constexpr int kHead = 44;
} // namespace

PreviewOverlay::PreviewOverlay(const LibraryPorts &ports, LibraryActions &actions, QWidget *window)
    : QWidget(window), m_ports(ports), m_actions(actions), m_player(ports.movies)
{
    setFocusPolicy(Qt::StrongFocus);
    setProperty("focusRadius", -1);
    m_player.setSound(ports.playSound);
    hide();
    window->installEventFilter(this);
    connect(&m_ports.model, &LibraryModel::previewingChanged, this, &PreviewOverlay::follow);
    connect(&m_player, &FilmPlayer::changed, this, qOverload<>(&QWidget::update));
    connect(&m_player, &FilmPlayer::failed, this, [this](const QString &message) {
        m_problem = message;
        update();
    });
}

void PreviewOverlay::follow()
{
    const auto path = m_ports.model.previewing();
    if (!path) {
        m_player.stop();
        m_path.clear();
        m_picture = {};
        if (isHidden())
            return;
        hide();
        if (m_before)
            m_before->setFocus(Qt::PopupFocusReason);
        return;
    }
    if (isHidden()) {
        m_before = window()->focusWidget();
        setGeometry(parentWidget()->rect());
        raise();
        QWidget::show();
    }
    setFocus(Qt::PopupFocusReason);
    if (*path != m_path)
        load(*path);
}

void PreviewOverlay::load(const QString &path)
{
    m_path = path;
    m_problem.clear();
    m_player.stop();
    setAccessibleName(LibraryNames::baseOf(path));
    QAccessibleEvent renamed(this, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&renamed);
    m_isLoading = true;
    const int edge = qCeil(std::max(width(), height()) * devicePixelRatioF());
    if (Library::isVideo(path)) {
        m_player.play(path, QSize(edge, edge));
    }
    const auto work = [movies = &m_ports.movies, path, edge] {
        return Library::isVideo(path) ? FilmThumbnails::cached(*movies, path, edge)
                                      : ImageFiles::thumbnail(path, edge);
    };
    whenDone(runInBackground(work), this, [this, path](const std::optional<QImage> &picture) {
        if (path == m_path)
            take(path, picture.value_or(QImage()));
    });
}

void PreviewOverlay::take(const QString &path, const QImage &picture)
{
    m_isLoading = false;
    m_picture = picture;
    if (picture.isNull() && m_problem.isEmpty())
        m_problem = LibraryUiTexts::tr("%1 can't be shown.").arg(LibraryNames::nameOf(path));
    update();
}

QRectF PreviewOverlay::place() const
{
    return QRectF(rect()).adjusted(kMargin, kHead, -kMargin, -kFoot);
}

const QImage &PreviewOverlay::shown() const
{
    return m_player.picture().isNull() ? m_picture : m_player.picture();
}

QRectF PreviewOverlay::frameOf(const QImage &shown) const
{
    QSizeF size = QSizeF(shown.size()) / devicePixelRatioF();
    // A film may be smaller than its place, a picture that is isn't enlarged either.
    if (size.width() > place().width() || size.height() > place().height())
        size.scale(place().size(), Qt::KeepAspectRatio);
    QRectF frame(QPointF(), size);
    frame.moveCenter(place().center());
    return frame;
}

void PreviewOverlay::togglePause()
{
    m_player.setPaused(!m_player.isPaused());
}

void PreviewOverlay::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), Theme::canvasSurround());
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    if (!shown().isNull()) {
        painter.drawImage(frameOf(shown()), shown());
    } else if (!m_isLoading) {
        painter.setFont(Theme::font(Theme::Type::Body));
        painter.setPen(Theme::onMaterialSecondary());
        painter.drawText(place(), Qt::AlignCenter | Qt::TextWordWrap, m_problem);
    }
    painter.setFont(Theme::font(Theme::Type::Body, QFont::Medium));
    painter.setPen(Theme::onMaterial());
    const QRectF head(kMargin, 0, width() - 2 * kMargin, kHead);
    painter.drawText(head, Qt::AlignCenter,
                     painter.fontMetrics().elidedText(LibraryNames::baseOf(m_path), Qt::ElideMiddle,
                                                      qFloor(head.width())));
    const QRectF foot(kMargin, height() - kFoot, width() - 2 * kMargin, kFoot);
    painter.setFont(Theme::font(Theme::Type::Control));
    painter.setPen(Theme::onMaterialSecondary());
    painter.drawText(foot, Qt::AlignCenter, LibraryUiTexts::tr("←  →  to browse  ·  Space or Esc to close"));
    if (m_player.duration() > 0) {
        const QString time = FilmThumbnails::durationText(m_player.position()) + QStringLiteral(" / ") +
                             FilmThumbnails::durationText(m_player.duration());
        Theme::drawTabular(painter, foot, Qt::AlignRight | Qt::AlignVCenter, time);
        painter.drawText(foot, Qt::AlignLeft | Qt::AlignVCenter,
                         m_player.isPaused() ? LibraryUiTexts::tr("P to play")
                                             : LibraryUiTexts::tr("P to pause"));
    }
}

void PreviewOverlay::browse(int delta)
{
    m_ports.model.move(delta);
}

void PreviewOverlay::keyPressEvent(QKeyEvent *event)
{
    const int right = layoutDirection() == Qt::RightToLeft ? -1 : 1;
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Up:
        return browse(event->key() == Qt::Key_Left ? -right : -1);
    case Qt::Key_Right:
    case Qt::Key_Down:
        return browse(event->key() == Qt::Key_Right ? right : 1);
    case Qt::Key_Space:
    case Qt::Key_Escape:
        return m_ports.model.setPreviewing(std::nullopt);
    case Qt::Key_Return:
    case Qt::Key_Enter: {
        const QString path = m_path;
        m_ports.model.setPreviewing(std::nullopt);
        return m_actions.open({path});
    }
    case Qt::Key_Delete:
        return m_actions.trash({m_path});
    case Qt::Key_P:
    case Qt::Key_MediaPlay:
    case Qt::Key_MediaTogglePlayPause:
        return togglePause();
    default:
        event->accept(); // the window behind is out of reach
    }
}

void PreviewOverlay::mousePressEvent(QMouseEvent *event)
{
    if (m_player.duration() > 0 && frameOf(shown()).contains(event->position()))
        return togglePause();
    m_ports.model.setPreviewing(std::nullopt);
}

void PreviewOverlay::wheelEvent(QWheelEvent *event)
{
    event->accept();
}

bool PreviewOverlay::event(QEvent *event)
{
    // Shortcuts of the window behind are out of reach, but for its own end.
    if (event->type() == QEvent::ShortcutOverride) {
        if (!static_cast<QKeyEvent *>(event)->matches(QKeySequence::Close))
            event->accept();
        return true;
    }
    return QWidget::event(event);
}

bool PreviewOverlay::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize && watched == parentWidget())
        setGeometry(parentWidget()->rect());
    return QWidget::eventFilter(watched, event);
}
