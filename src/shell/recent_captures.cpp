#include "shell/recent_captures.h"

#include "base/async.h"
#include "document/image_files.h"
#include "library/library.h"
#include "ui/symbol.h"
#include "ui/theme.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDrag>
#include <QFileInfo>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

namespace {

constexpr int kWidth = 55; // five of them with the gaps between fill the panel
constexpr int kHeight = 42;
constexpr int kPixels = 256; // the smallest bucket of cached thumbnails

} // namespace

RecentCaptures::RecentCaptures(Library &library, QObject *parent) : QObject(parent), m_library(library)
{
    connect(&library, &Library::changed, this, [this] {
        m_isStale = true;
        if (m_isWatched)
            reload();
    });
    reload(); // so that they are there when the panel first opens
}

void RecentCaptures::setWatched(bool watched)
{
    m_isWatched = watched;
    if (watched && m_isStale)
        reload();
}

void RecentCaptures::reload()
{
    m_isStale = false;
    m_library.whenListed(this, [this, look = ++m_look](const FolderWatch::Listing &files) {
        const auto pick = [files, folder = m_library.folder()] {
            return Library::newest(files, folder, kCount);
        };
        whenDone(runInBackground(pick), this, [this, look](const QStringList &newest) {
            if (look == m_look && std::exchange(m_items, newest) != m_items)
                Q_EMIT changed();
        });
    });
}

RecentThumb::RecentThumb(const QString &path, QWidget *parent) : QAbstractButton(parent), m_path(path)
{
    const QString name = QFileInfo(path).completeBaseName();
    setText(name);
    setAccessibleName(name);
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::TabFocus);
    setFixedSize(sizeHint());
    load();
}

QSize RecentThumb::sizeHint() const
{
    return {kWidth, kHeight};
}

void RecentThumb::load()
{
    whenDone(runInBackground([path = m_path] { return ImageFiles::cachedThumbnail(path, kPixels); }), this,
             [this](const std::optional<QImage> &image) {
                 if (image) {
                     m_image = *image;
                     update();
                 }
             });
}

void RecentThumb::paintEvent(QPaintEvent *)
{
    const auto &t = Theme::tokens(this);
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const QRectF frame = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    QPainterPath shape;
    shape.addRoundedRect(frame, Theme::Radius::control, Theme::Radius::control);
    painter.fillPath(shape, t.track);
    painter.setClipPath(shape);
    if (m_image.isNull()) {
        QRectF icon(0, 0, Theme::Size::barIcon, Theme::Size::barIcon);
        icon.moveCenter(frame.center());
        drawSymbol(painter, icon, Library::isVideo(m_path) ? QStringLiteral("film") : QStringLiteral("photo"),
                   t.secondary);
    } else {
        // Fills the frame; of tall and wide ones the middle shows.
        QSizeF size = QSizeF(m_image.size()).scaled(frame.size(), Qt::KeepAspectRatioByExpanding);
        QRectF target(QPointF(), size);
        target.moveCenter(frame.center());
        painter.drawImage(target, m_image);
    }
    painter.setClipping(false);
    const bool over = underMouse() && isEnabled();
    painter.setPen(QPen(over ? t.accent : t.hairline, over ? 2 : 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(frame.adjusted(over ? 0.5 : 0, over ? 0.5 : 0, over ? -0.5 : 0, over ? -0.5 : 0),
                            Theme::Radius::control, Theme::Radius::control);
}

void RecentThumb::mousePressEvent(QMouseEvent *event)
{
    m_pressedAt = event->position().toPoint();
    QAbstractButton::mousePressEvent(event);
}

void RecentThumb::mouseMoveEvent(QMouseEvent *event)
{
    const bool isDragged = event->buttons() == Qt::LeftButton &&
                           (event->position().toPoint() - m_pressedAt).manhattanLength() >=
                               QApplication::startDragDistance();
    if (!isDragged)
        return QAbstractButton::mouseMoveEvent(event);
    setDown(false);
    auto *data = new QMimeData;
    data->setUrls({QUrl::fromLocalFile(m_path)});
    auto *drag = new QDrag(this);
    drag->setMimeData(data);
    if (!m_image.isNull())
        drag->setPixmap(QPixmap::fromImage(
            m_image.scaled(kWidth * 2, kHeight * 2, Qt::KeepAspectRatio, Qt::SmoothTransformation)));
    drag->exec(Qt::CopyAction);
}

void RecentThumb::contextMenuEvent(QContextMenuEvent *event)
{
    Q_EMIT menuWanted(event->reason() == QContextMenuEvent::Keyboard ? mapToGlobal(rect().center())
                                                                     : event->globalPos());
}
