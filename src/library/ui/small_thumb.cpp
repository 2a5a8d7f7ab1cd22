#include "library/ui/small_thumb.h"

#include "base/async.h"
#include "library/film_thumbnails.h"
#include "library/library.h"
#include "library/library_names.h"
#include "library/ui/texts.h"
#include "ui/symbol.h"
#include "ui/theme.h"

#include <QPainter>
#include <QPainterPath>

namespace {

constexpr int kPixels = 180; // of the picture, before the display's scale
constexpr int kMarkHeight = 20;

QString words(SmallThumb::Mark mark)
{
    switch (mark) {
    case SmallThumb::Mark::None:
        return {};
    case SmallThumb::Mark::Keep:
        return LibraryUiTexts::tr("Keep");
    case SmallThumb::Mark::Extra:
        return LibraryUiTexts::tr("Extra");
    }
    Q_UNREACHABLE();
}

} // namespace

SmallThumb::SmallThumb(Movies &movies, const QString &path, QSize size, Mark mark, QWidget *parent)
    : QWidget(parent), m_size(size), m_mark(mark), m_isVideo(Library::isVideo(path))
{
    const QString name = LibraryNames::nameOf(path);
    setToolTip(name);
    setAccessibleName(mark == Mark::None ? name : name + QStringLiteral(", ") + words(mark));
    setFixedSize(sizeHint());
    const auto load = [movies = &movies, path] { return FilmThumbnails::ofAny(*movies, path, kPixels); };
    whenDone(runInBackground(load), this, [this](const std::optional<QImage> &picture) {
        m_picture = picture.value_or(QImage());
        update();
    });
}

QSize SmallThumb::sizeHint() const
{
    return m_size + QSize(0, m_mark == Mark::None ? 0 : kMarkHeight);
}

void SmallThumb::paintEvent(QPaintEvent *)
{
    const Theme::Tokens &theme = Theme::tokens(this);
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const QRectF frame = QRectF(QPointF(0, 0), m_size).adjusted(0.5, 0.5, -0.5, -0.5);
    QPainterPath shape;
    shape.addRoundedRect(frame, Theme::Radius::control, Theme::Radius::control);
    painter.fillPath(shape, theme.window);
    painter.setClipPath(shape);
    if (m_picture.isNull()) {
        QRectF symbol(0, 0, 20, 20);
        symbol.moveCenter(frame.center());
        drawSymbol(painter, symbol, m_isVideo ? QStringLiteral("film") : QStringLiteral("photo"),
                   theme.disabled);
    } else {
        QRectF target(QPointF(),
                      QSizeF(m_picture.size()).scaled(frame.size(), Qt::KeepAspectRatioByExpanding));
        target.moveCenter(frame.center());
        painter.drawImage(target, m_picture);
    }
    painter.setClipping(false);
    const bool isKept = m_mark == Mark::Keep;
    painter.setPen(QPen(isKept ? theme.success : theme.hairline, isKept ? 2 : 1));
    painter.drawPath(shape);
    if (m_mark == Mark::None)
        return;
    painter.setFont(Theme::font(Theme::Type::Caption, QFont::Medium));
    painter.setPen(isKept ? theme.success : theme.secondary);
    painter.drawText(QRectF(0, m_size.height(), m_size.width(), kMarkHeight), Qt::AlignCenter, words(m_mark));
}
