#include "ui/control_look.h"

#include "ui/style_painting.h"
#include "ui/symbol.h"
#include "ui/theme.h"

#include <QStyleOption>

using namespace StylePainting;

namespace ControlLook {

namespace {

constexpr int kSliderTrack = 4;

} // namespace

void drawPushButton(const QStyleOptionButton &button, QPainter *painter)
{
    const auto &t = Theme::tokens(button.palette);
    const bool enabled = isOn(&button, QStyle::State_Enabled);
    const bool down = isOn(&button, QStyle::State_Sunken) || isOn(&button, QStyle::State_On);
    const bool over = isOn(&button, QStyle::State_MouseOver);
    const bool flat = button.features & QStyleOptionButton::Flat;
    const bool primary = button.features & QStyleOptionButton::DefaultButton;
    QColor fill = t.surface, edge = enabled ? t.edge : t.hairline;
    if (flat) {
        fill = Qt::transparent;
        edge = Qt::transparent;
    }
    if (primary && enabled) {
        fill = down ? t.accentFill.darker(118) : over ? t.accentFill.darker(107) : t.accentFill;
        edge = Qt::transparent;
    }
    fillRounded(painter, button.rect, Theme::Radius::control, fill, edge);
    if (!primary && enabled && (down || over))
        fillRounded(painter, button.rect, Theme::Radius::control, down ? t.pressed : t.hover);
}

void drawIconAndLabel(const QStyleOptionButton &button, QPainter *painter)
{
    constexpr int gap = 6;
    const QSize icon = button.iconSize;
    const int words = button.fontMetrics.size(Qt::TextShowMnemonic, button.text).width();
    QRect rect = button.rect;
    const int left = rect.left() + (rect.width() - icon.width() - gap - words) / 2;
    const QRect inOrder(QPoint(left, rect.top() + (rect.height() - icon.height()) / 2), icon);
    const QRect place = QStyle::visualRect(button.direction, button.rect, inOrder);
    const bool enabled = isOn(&button, QStyle::State_Enabled);
    button.icon.paint(painter, place, Qt::AlignCenter,
                      !enabled                                ? QIcon::Disabled
                      : isOn(&button, QStyle::State_Selected) ? QIcon::Selected
                                                              : QIcon::Normal);
    rect.setLeft(inOrder.right() + 1 + gap);
    rect = QStyle::visualRect(button.direction, button.rect, rect);
    painter->setPen(
        button.palette.color(enabled ? QPalette::Active : QPalette::Disabled, QPalette::ButtonText));
    painter->drawText(rect, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextShowMnemonic | Qt::TextSingleLine,
                      button.text);
}

void drawField(const QStyleOption &field, QPainter *painter)
{
    const auto &t = Theme::tokens(field.palette);
    const bool enabled = isOn(&field, QStyle::State_Enabled);
    const bool focused = enabled && isOn(&field, QStyle::State_HasFocus);
    fillRounded(painter, field.rect, Theme::Radius::control, enabled ? t.surface : t.window,
                focused ? t.accent : enabled ? t.edge : t.hairline);
}

void drawMark(const QStyleOption *option, QPainter *painter, Mark mark)
{
    const bool round = mark == Mark::Radio;
    const auto &t = Theme::tokens(option->palette);
    const bool enabled = isOn(option, QStyle::State_Enabled);
    const bool on = isOn(option, QStyle::State_On);
    const bool mixed = isOn(option, QStyle::State_NoChange);
    const QRectF rect = option->rect;
    const qreal radius = round ? rect.height() / 2 : 4;
    QColor fill = on || mixed ? t.accent : t.surface;
    if (!enabled)
        fill = on || mixed ? t.disabled : t.window;
    QColor edge = on || mixed ? QColor(Qt::transparent) : t.edge;
    if (!enabled && !on)
        edge = t.hairline;
    fillRounded(painter, rect, radius, fill, edge);
    if (enabled && isOn(option, QStyle::State_MouseOver))
        fillRounded(painter, rect, radius, t.hover);
    if (round && on)
        fillRounded(painter, QRectF(0, 0, 6, 6).translated(rect.center() - QPointF(3, 3)), 3, t.onAccent);
    else if (mixed)
        fillRounded(painter, QRectF(0, 0, 8, 2).translated(rect.center() - QPointF(4, 1)), 1, t.onAccent);
    else if (on)
        drawCheckMark(painter, rect, t.onAccent);
}

void drawSlider(const QStyleOptionSlider &slider, QPainter *painter, const QRect &groove, const QRect &handle)
{
    const auto &t = Theme::tokens(slider.palette);
    const bool enabled = isOn(&slider, QStyle::State_Enabled);
    // Across, the toolkit's whole points put the handle half outside of a slider as thin as its knob.
    QPointF center = QRectF(handle).center();
    slider.orientation == Qt::Horizontal ? center.setY(QRectF(slider.rect).center().y())
                                         : center.setX(QRectF(slider.rect).center().x());
    QRectF knob(0, 0, kSliderKnob, kSliderKnob);
    knob.moveCenter(center);
    QRectF track, filled;
    if (slider.orientation == Qt::Horizontal) {
        track = QRectF(groove.left(), center.y() - kSliderTrack / 2.0, groove.width(), kSliderTrack);
        filled = track;
        slider.upsideDown ? filled.setLeft(center.x()) : filled.setRight(center.x());
    } else {
        track = QRectF(center.x() - kSliderTrack / 2.0, groove.top(), kSliderTrack, groove.height());
        filled = track;
        slider.upsideDown ? filled.setTop(center.y()) : filled.setBottom(center.y());
    }
    fillRounded(painter, track, kSliderTrack / 2.0, enabled ? t.edge : t.track);
    fillRounded(painter, filled, kSliderTrack / 2.0, enabled ? t.accent : t.disabled);
    fillRounded(painter, knob.translated(0, 0.5), kSliderKnob / 2.0, t.raisedShadow);
    fillRounded(painter, knob, kSliderKnob / 2.0, t.dark ? QColor(0xE6E6EC) : QColor(Qt::white), t.edge);
}

void drawComboBox(const QStyleOption &box, QPainter *painter, const QRect &arrow)
{
    const auto &t = Theme::tokens(box.palette);
    const bool enabled = isOn(&box, QStyle::State_Enabled);
    fillRounded(painter, box.rect, Theme::Radius::control, t.surface, enabled ? t.edge : t.hairline);
    if (enabled && isOn(&box, QStyle::State_MouseOver))
        fillRounded(painter, box.rect, Theme::Radius::control, t.hover);
    drawSymbol(*painter, QRectF(arrow.center() - QPoint(5, 5), QSizeF(11, 11)), "chevron.down",
               enabled ? t.secondary : t.disabled);
}

void drawRow(const QStyleOption &row, QPainter *painter)
{
    const auto &t = Theme::tokens(row.palette);
    const bool over = isOn(&row, QStyle::State_MouseOver);
    const QRectF wash = QRectF(row.rect).adjusted(2, 1, -2, -1);
    if (isOn(&row, QStyle::State_Selected))
        fillRounded(painter, wash, Theme::Radius::control, over ? t.accentHover : t.accentWash);
    else if (over && isOn(&row, QStyle::State_Enabled))
        fillRounded(painter, wash, Theme::Radius::control, t.hover);
}

} // namespace ControlLook
