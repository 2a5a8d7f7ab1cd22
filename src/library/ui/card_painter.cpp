#include "library/ui/card_painter.h"

#include "library/film_thumbnails.h"
#include "library/library_names.h"
#include "library/ui/card_actions.h"
#include "library/ui/window_parts.h"
#include "ui/symbol.h"

#include <QFileInfo>
#include <QPainter>
#include <QPainterPath>

namespace {

constexpr qreal kRing = 3;
constexpr qreal kRingDistance = 2;
constexpr qreal kShade = 72; // of the picture's foot, under the buttons

QRectF grown(const QRectF &rect, qreal by)
{
    return rect.adjusted(-by, -by, by, by);
}

QPainterPath cardShape(const QRectF &rect)
{
    QPainterPath shape;
    shape.addRoundedRect(rect, Theme::Radius::card, Theme::Radius::card);
    return shape;
}

} // namespace

QString cardDetail(const LibraryItem &item, const CardPictures::Card *content)
{
    QStringList parts;
    if (Library::isVideo(item.path))
        parts.append(QFileInfo(item.path).suffix().toUpper());
    if (content && !content->pixelSize.isEmpty())
        parts.append(
            QStringLiteral("%1 × %2").arg(content->pixelSize.width()).arg(content->pixelSize.height()));
    parts.append(WindowParts::bytesText(item.bytes));
    return parts.join(QStringLiteral(" · "));
}

void CardPainter::paint(const Card &card)
{
    paintPicture(card);
    paintRing(card);
    if (card.isHovered)
        paintActions(card);
    paintText(card);
}

void CardPainter::paintContent(const QRectF &rect, const QImage &picture)
{
    const QSizeF size = picture.size();
    const QSizeF filling = size.scaled(rect.size(), Qt::KeepAspectRatioByExpanding);
    const bool fills =
        rect.width() * rect.height() >= (1 - kMostCropped) * filling.width() * filling.height();
    m_painter.save();
    m_painter.setClipPath(cardShape(rect));
    if (fills) {
        // Pages are told by their beginning.
        m_painter.drawImage(QRectF(rect.topLeft(), filling), picture);
    } else {
        QRectF target(QPointF(), size.scaled(rect.size() - QSizeF(24, 24), Qt::KeepAspectRatio));
        target.moveCenter(rect.center());
        m_painter.drawImage(target, picture);
        m_painter.setPen(QPen(m_theme.hairline, 1));
        m_painter.drawRect(target);
    }
    m_painter.restore();
}

void CardPainter::paintPicture(const Card &card)
{
    const QRectF &rect = card.picture;
    const bool isVideo = Library::isVideo(card.item.path);
    m_painter.fillPath(cardShape(rect), m_theme.surface);
    if (!card.film.isNull()) {
        paintContent(rect, card.film);
    } else if (card.content && !card.content->picture.isNull()) {
        paintContent(rect, card.content->picture);
    } else if (card.content || isVideo) {
        QRectF place(0, 0, 36, 36);
        place.moveCenter(rect.center());
        drawSymbol(m_painter, place, isVideo ? QStringLiteral("film") : QStringLiteral("photo"),
                   m_theme.disabled);
    }
    // On a small card the buttons need its place.
    if (isVideo && !(card.isHovered && rect.width() < 190))
        paintBadge(card);
    m_painter.setBrush(Qt::NoBrush);
    m_painter.setPen(QPen(m_theme.hairline, 1));
    m_painter.drawRoundedRect(grown(rect, -0.5), Theme::Radius::card, Theme::Radius::card);
}

// That it is a film, and how long.
void CardPainter::paintBadge(const Card &card)
{
    const double seconds = card.content ? card.content->seconds : 0;
    const QString words = seconds > 0 ? FilmThumbnails::durationText(seconds) : QString();
    const QFont font = Theme::font(Theme::Type::Caption, QFont::Medium);
    const qreal wide = words.isEmpty() ? 22 : 30 + Theme::tabularWidth(font, words);
    const QRectF badge(card.picture.left() + 8, card.picture.bottom() - 30, wide, 22);
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(Theme::material(true));
    m_painter.drawRoundedRect(badge, 11, 11);
    drawSymbol(m_painter, QRectF(badge.left() + 6, badge.top() + 6, 10, 10), QStringLiteral("play.fill"),
               Theme::onMaterial());
    if (words.isEmpty())
        return;
    m_painter.setFont(font);
    m_painter.setPen(Theme::onMaterial());
    Theme::drawTabular(m_painter, badge.adjusted(20, 0, -8, 0), Qt::AlignLeft | Qt::AlignVCenter, words);
}

void CardPainter::paintRing(const Card &card)
{
    if (!card.isSelected && !card.isCurrent)
        return;
    const qreal distance = card.isSelected ? kRingDistance + kRing / 2 : 3;
    const qreal radius = Theme::Radius::card + distance;
    m_painter.setPen(card.isSelected ? QPen(m_theme.accent, kRing) : QPen(m_theme.accent, 1, Qt::DotLine));
    m_painter.setBrush(Qt::NoBrush);
    m_painter.drawRoundedRect(grown(card.picture, distance), radius, radius);
}

void CardPainter::paintActions(const Card &card)
{
    const QRectF &picture = card.picture;
    QLinearGradient shade(picture.left(), picture.bottom() - kShade, picture.left(), picture.bottom());
    QColor dark = Theme::material(true);
    shade.setColorAt(1, dark);
    dark.setAlpha(0);
    shade.setColorAt(0, dark);
    m_painter.save();
    m_painter.setClipPath(cardShape(picture));
    m_painter.fillRect(QRectF(picture.left(), picture.bottom() - kShade, picture.width(), kShade), shade);
    m_painter.restore();
    const std::vector<CardAction> actions = cardActionsOf(card.item.path);
    for (size_t place = 0; place < actions.size(); ++place) {
        const QRectF rect = cardActionRect(picture, place, actions.size());
        if (rect.contains(card.pointer)) {
            QColor wash = Theme::onMaterial();
            wash.setAlphaF(0.2F);
            m_painter.setPen(Qt::NoPen);
            m_painter.setBrush(wash);
            m_painter.drawRoundedRect(rect, Theme::Radius::control, Theme::Radius::control);
        }
        drawSymbol(m_painter, grown(rect, -6), symbol(actions[place], card.isFavorite), Theme::onMaterial());
    }
}

void CardPainter::paintText(const Card &card)
{
    QRectF name(card.picture.left() + 2, card.picture.bottom() + 8, card.picture.width() - 4, 18);
    const QRectF detail(name.left(), name.bottom() + 1, name.width(), 16);
    if (card.isFavorite) {
        drawSymbol(m_painter, QRectF(name.right() - 14, name.top() + 2, 14, 14), QStringLiteral("star.fill"),
                   m_theme.warning);
        name.setRight(name.right() - 20);
    }
    m_painter.setFont(Theme::font(Theme::Type::Control, QFont::Medium));
    m_painter.setPen(m_theme.text);
    drawElided(name, LibraryNames::baseOf(card.item.path), Qt::ElideMiddle);
    m_painter.setFont(Theme::font(Theme::Type::Caption));
    m_painter.setPen(m_theme.secondary);
    drawElided(detail, cardDetail(card.item, card.content), Qt::ElideRight);
}

void CardPainter::drawElided(const QRectF &rect, const QString &text, Qt::TextElideMode mode)
{
    m_painter.drawText(rect, Qt::AlignVCenter | Qt::AlignLeft,
                       m_painter.fontMetrics().elidedText(text, mode, qFloor(rect.width())));
}
