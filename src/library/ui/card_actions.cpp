#include "library/ui/card_actions.h"

#include "library/library.h"
#include "library/ui/texts.h"

namespace {

constexpr qreal kSize = 28;
constexpr qreal kGap = 4;
constexpr qreal kInset = 8; // from the edges of the picture

} // namespace

std::vector<CardAction> cardActionsOf(const QString &path)
{
    if (Library::isImage(path))
        return {CardAction::Favorite, CardAction::Pin, CardAction::Copy, CardAction::Open};
    return {CardAction::Favorite, CardAction::Copy, CardAction::Open};
}

QString title(CardAction action)
{
    switch (action) {
    case CardAction::Favorite:
        return LibraryUiTexts::tr("Favorite");
    case CardAction::Pin:
        return LibraryUiTexts::tr("Pin to screen");
    case CardAction::Copy:
        return LibraryUiTexts::tr("Copy");
    case CardAction::Open:
        return LibraryUiTexts::tr("Open");
    }
    Q_UNREACHABLE();
}

QString tip(CardAction action)
{
    switch (action) {
    case CardAction::Favorite:
        return LibraryUiTexts::tr("Star it so it shows in Favorites and is never auto-deleted.");
    case CardAction::Pin:
        return LibraryUiTexts::tr("Float it above all windows as a reference.");
    case CardAction::Copy:
        return LibraryUiTexts::tr("Copy the image to paste anywhere.");
    case CardAction::Open:
        return LibraryUiTexts::tr("Open it in the editor.");
    }
    Q_UNREACHABLE();
}

QString symbol(CardAction action, bool isFavorite)
{
    switch (action) {
    case CardAction::Favorite:
        return isFavorite ? QStringLiteral("star.fill") : QStringLiteral("star");
    case CardAction::Pin:
        return QStringLiteral("pin");
    case CardAction::Copy:
        return QStringLiteral("doc.on.doc");
    case CardAction::Open:
        return QStringLiteral("square.and.pencil");
    }
    Q_UNREACHABLE();
}

QRectF cardActionRect(const QRectF &picture, size_t place, size_t count)
{
    const qreal fromRight = static_cast<qreal>(count - place) * (kSize + kGap) - kGap;
    return {picture.right() - kInset - fromRight, picture.bottom() - kInset - kSize, kSize, kSize};
}

std::optional<CardAction> cardActionAt(const QPointF &position, const QRectF &picture, const QString &path)
{
    const std::vector<CardAction> actions = cardActionsOf(path);
    for (size_t place = 0; place < actions.size(); ++place) {
        if (cardActionRect(picture, place, actions.size()).contains(position))
            return actions[place];
    }
    return std::nullopt;
}
