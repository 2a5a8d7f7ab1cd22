#pragma once

#include <QSize>

class QPainter;
class QStyleOptionMenuItem;

// The rows of menus: a column for icons and check marks where one of the rows needs it, title, shortcut.
namespace MenuItemLook {

constexpr int kInset = 6; // of the rows in their menu

QSize size(const QStyleOptionMenuItem &item);
void draw(const QStyleOptionMenuItem &item, QPainter *painter);

} // namespace MenuItemLook
