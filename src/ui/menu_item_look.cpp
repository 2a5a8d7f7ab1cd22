#include "ui/menu_item_look.h"

#include "ui/mirroring.h"
#include "ui/style_painting.h"
#include "ui/symbol.h"
#include "ui/theme.h"

#include <QStyleOption>

using namespace StylePainting;

namespace MenuItemLook {

namespace {

constexpr int kGap = 10;
constexpr int kSeparatorHeight = 9;

struct MenuText {
    QString title;
    QString shortcut;
};

MenuText menuText(const QStyleOptionMenuItem &item)
{
    const auto tab = item.text.indexOf('\t');
    return tab < 0 ? MenuText{item.text, {}} : MenuText{item.text.left(tab), item.text.mid(tab + 1)};
}

bool hasMenuColumn(const QStyleOptionMenuItem &item)
{
    return item.menuHasCheckableItems || item.maxIconWidth > 0;
}

} // namespace

QSize size(const QStyleOptionMenuItem &item)
{
    if (item.menuItemType == QStyleOptionMenuItem::Separator)
        return {10, kSeparatorHeight};
    const MenuText words = menuText(item);
    const QFontMetrics metrics(item.font);
    int width = 2 * (kInset + 8) + metrics.size(Qt::TextHideMnemonic, words.title).width();
    if (hasMenuColumn(item))
        width += Theme::Size::rowIcon + kGap;
    if (!words.shortcut.isEmpty())
        width += 28 + metrics.horizontalAdvance(words.shortcut);
    if (item.menuItemType == QStyleOptionMenuItem::SubMenu)
        width += 24;
    return {qMax(width, 160), Theme::Size::menuRow};
}

void draw(const QStyleOptionMenuItem &item, QPainter *painter)
{
    const auto &t = Theme::tokens(item.palette);
    const QRect row = item.rect.adjusted(kInset, 0, -kInset, 0);
    if (item.menuItemType == QStyleOptionMenuItem::Separator) {
        Theme::fillHairline(*painter, QRectF(row.left() + 6, row.center().y(), row.width() - 12, 1), t.hairline);
        return;
    }
    const bool enabled = isOn(&item, QStyle::State_Enabled);
    const bool selected = isOn(&item, QStyle::State_Selected) && enabled;
    if (selected)
        fillRounded(painter, row, Theme::Radius::control, t.accentFill);
    const QColor text = !enabled ? t.disabled : selected ? t.onAccent : t.text;
    const QColor quiet = !enabled ? t.disabled : selected ? t.onAccent : t.secondary;

    int left = row.left() + 8;
    if (hasMenuColumn(item)) {
        const QRectF place(left, row.center().y() - Theme::Size::rowIcon / 2, Theme::Size::rowIcon,
                           Theme::Size::rowIcon);
        const QRect column = mirrored(place, row, item.direction).toRect();
        if (item.checked)
            drawCheckMark(painter, column, text);
        else if (!item.icon.isNull())
            item.icon.paint(painter, column, Qt::AlignCenter,
                            !enabled   ? QIcon::Disabled
                            : selected ? QIcon::Selected
                                       : QIcon::Normal);
        left += Theme::Size::rowIcon + kGap;
    }
    const MenuText words = menuText(item);
    painter->save();
    painter->setFont(item.font);
    painter->setPen(text);
    const QRectF line = mirrored(QRectF(left, row.top(), row.right() - 8 - left, row.height()), row, item.direction);
    painter->drawText(line, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextHideMnemonic | Qt::TextSingleLine,
                      words.title);
    painter->setPen(quiet);
    if (!words.shortcut.isEmpty())
        painter->drawText(line, Qt::AlignVCenter | Qt::AlignRight | Qt::TextSingleLine, words.shortcut);
    painter->restore();
    if (item.menuItemType == QStyleOptionMenuItem::SubMenu)
        drawSymbol(*painter, mirrored(QRectF(row.right() - 16, row.center().y() - 5, 10, 10), row, item.direction),
                   item.direction == Qt::RightToLeft ? "chevron.left" : "chevron.right", quiet);
}

} // namespace MenuItemLook
