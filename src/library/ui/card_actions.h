#pragma once

#include <QPointF>
#include <QRectF>
#include <QString>
#include <optional>
#include <vector>

// The buttons that a card shows under the pointer, from left to right in the lower right corner of its
// picture.
enum class CardAction { Favorite, Pin, Copy, Open };

std::vector<CardAction> cardActionsOf(const QString &path);
QString title(CardAction action);
QString tip(CardAction action);
QString symbol(CardAction action, bool isFavorite);

// The button at this place of so many. Points.
QRectF cardActionRect(const QRectF &picture, size_t place, size_t count);
std::optional<CardAction> cardActionAt(const QPointF &position, const QRectF &picture, const QString &path);
