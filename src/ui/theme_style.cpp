#include "ui/theme_style.h"

#include "ui/floating.h"
#include "ui/symbol.h"
#include "ui/theme.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QStyleFactory>
#include <QStyleOption>
#include <QToolTip>

namespace {

constexpr int menuInset = 6;
constexpr int menuGap = 10;
constexpr int scrollBarWidth = 10;
constexpr int checkBoxSize = 16;
constexpr int sliderKnob = 16;
constexpr int sliderTrack = 4;
constexpr int separatorHeight = 9;
constexpr int fieldInset = 5;

class Saved {
public:
    explicit Saved(QPainter *painter) : m_painter(painter)
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
    }
    ~Saved() { m_painter->restore(); }
    Saved(const Saved &) = delete;
    Saved &operator=(const Saved &) = delete;

private:
    QPainter *m_painter;
};

void fillRounded(QPainter *painter, const QRectF &rect, qreal radius, const QColor &fill,
                 const QColor &edge = Qt::transparent)
{
    Saved saved(painter);
    const bool edged = edge.alpha() > 0;
    painter->setPen(edged ? QPen(edge, 1) : QPen(Qt::NoPen));
    painter->setBrush(fill);
    painter->drawRoundedRect(edged ? rect.adjusted(0.5, 0.5, -0.5, -0.5) : rect, radius, radius);
}

bool isOn(const QStyleOption *option, QStyle::StateFlag flag)
{
    return option->state.testFlag(flag);
}

void drawPushButton(const QStyleOptionButton &button, QPainter *painter)
{
    const auto &t = Theme::tokens(button.palette);
    const bool enabled = isOn(&button, QStyle::State_Enabled);
    const bool down = isOn(&button, QStyle::State_Sunken) || isOn(&button, QStyle::State_On);
    const bool over = isOn(&button, QStyle::State_MouseOver);
    const bool flat = button.features & QStyleOptionButton::Flat;
    const bool primary = button.features & QStyleOptionButton::DefaultButton;
    QColor fill = t.surface, edge = t.hairline;
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

void drawCheckMark(QPainter *painter, const QRectF &rect, const QColor &color)
{
    Saved saved(painter);
    painter->setPen(QPen(color, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const auto at = [&](qreal x, qreal y) {
        return QPointF(rect.left() + x * rect.width(), rect.top() + y * rect.height());
    };
    const std::array mark{at(0.26, 0.53), at(0.43, 0.70), at(0.75, 0.32)};
    painter->drawPolyline(mark.data(), static_cast<int>(mark.size()));
}

void drawCheckBox(const QStyleOption *option, QPainter *painter, bool round)
{
    const auto &t = Theme::tokens(option->palette);
    const bool enabled = isOn(option, QStyle::State_Enabled);
    const bool on = isOn(option, QStyle::State_On);
    const bool mixed = isOn(option, QStyle::State_NoChange);
    const QRectF rect = option->rect;
    const qreal radius = round ? rect.height() / 2 : 4;
    QColor fill = on || mixed ? t.accent : t.surface;
    if (!enabled)
        fill = on || mixed ? t.disabled : t.window;
    QColor edge = on || mixed ? QColor(Qt::transparent) : t.dark ? QColor(0x77777F) : QColor(0x8C8C96);
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

void drawSlider(const QStyleOptionSlider &slider, QPainter *painter, const QRect &groove, const QRect &knob)
{
    const auto &t = Theme::tokens(slider.palette);
    const bool enabled = isOn(&slider, QStyle::State_Enabled);
    const QPointF center = QRectF(knob).center();
    QRectF track, filled;
    if (slider.orientation == Qt::Horizontal) {
        track = QRectF(groove.left(), center.y() - sliderTrack / 2.0, groove.width(), sliderTrack);
        filled = track;
        slider.upsideDown ? filled.setLeft(center.x()) : filled.setRight(center.x());
    } else {
        track = QRectF(center.x() - sliderTrack / 2.0, groove.top(), sliderTrack, groove.height());
        filled = track;
        slider.upsideDown ? filled.setTop(center.y()) : filled.setBottom(center.y());
    }
    fillRounded(painter, track, sliderTrack / 2.0, t.track);
    fillRounded(painter, filled, sliderTrack / 2.0, enabled ? t.accent : t.disabled);
    fillRounded(painter, QRectF(knob).translated(0, 0.5), sliderKnob / 2.0, t.raisedShadow);
    fillRounded(painter, knob, sliderKnob / 2.0, t.dark ? QColor(0xE6E6EC) : QColor(Qt::white), t.hairline);
}

void drawScrollBar(const QStyleOptionSlider &bar, QPainter *painter, QRect handle)
{
    if (bar.maximum <= bar.minimum)
        return;
    const auto &t = Theme::tokens(bar.palette);
    QColor color = t.text;
    color.setAlphaF(isOn(&bar, QStyle::State_Sunken)      ? 0.5f
                    : isOn(&bar, QStyle::State_MouseOver) ? 0.36f
                                                          : 0.22f);
    handle.adjust(2, 2, -2, -2);
    fillRounded(painter, handle, qMin(handle.width(), handle.height()) / 2.0, color);
}

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

void drawMenuItem(const QStyleOptionMenuItem &item, QPainter *painter)
{
    const auto &t = Theme::tokens(item.palette);
    const QRect row = item.rect.adjusted(menuInset, 0, -menuInset, 0);
    if (item.menuItemType == QStyleOptionMenuItem::Separator) {
        painter->fillRect(QRect(row.left() + 6, row.center().y(), row.width() - 12, 1), t.hairline);
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
        const QRect column(left, row.center().y() - Theme::Size::rowIcon / 2, Theme::Size::rowIcon,
                           Theme::Size::rowIcon);
        if (item.checked)
            drawCheckMark(painter, column, text);
        else if (!item.icon.isNull())
            item.icon.paint(painter, column, Qt::AlignCenter,
                            !enabled   ? QIcon::Disabled
                            : selected ? QIcon::Selected
                                       : QIcon::Normal);
        left = column.right() + 1 + menuGap;
    }
    const MenuText words = menuText(item);
    painter->save();
    painter->setFont(item.font);
    painter->setPen(text);
    const QRect line(left, row.top(), row.right() - 8 - left, row.height());
    painter->drawText(line, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextHideMnemonic | Qt::TextSingleLine,
                      words.title);
    painter->setPen(quiet);
    if (!words.shortcut.isEmpty())
        painter->drawText(line, Qt::AlignVCenter | Qt::AlignRight | Qt::TextSingleLine, words.shortcut);
    painter->restore();
    if (item.menuItemType == QStyleOptionMenuItem::SubMenu)
        drawSymbol(*painter, QRectF(row.right() - 16, row.center().y() - 5, 10, 10), "chevron.right", quiet);
}

} // namespace

ThemeStyle::ThemeStyle() : QProxyStyle("Fusion") {}

void ThemeStyle::polish(QWidget *widget)
{
    QProxyStyle::polish(widget);
    if (qobject_cast<QMenu *>(widget) || widget->inherits("QComboBoxPrivateContainer")) {
        widget->setAttribute(Qt::WA_TranslucentBackground, Floating::isComposited());
        widget->setWindowFlag(Qt::FramelessWindowHint);
        widget->setWindowFlag(Qt::NoDropShadowWindowHint);
    }
    if (qobject_cast<QAbstractButton *>(widget) || qobject_cast<QComboBox *>(widget) ||
        widget->inherits("QAbstractSlider"))
        widget->setAttribute(Qt::WA_Hover);
}

void ThemeStyle::unpolish(QWidget *widget)
{
    QProxyStyle::unpolish(widget);
}

void ThemeStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                               const QWidget *widget) const
{
    const auto &t = Theme::tokens(option->palette);
    switch (element) {
    case PE_FrameFocusRect:
        return; // the focus ring is drawn around the control, outside of it
    case PE_PanelButtonCommand:
        if (const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option))
            return drawPushButton(*button, painter);
        break;
    case PE_PanelLineEdit: {
        if (const auto *frame = qstyleoption_cast<const QStyleOptionFrame *>(option);
            frame && frame->lineWidth <= 0)
            return;
        const bool focused = isOn(option, State_HasFocus) && isOn(option, State_Enabled);
        fillRounded(painter, option->rect, Theme::Radius::control,
                    isOn(option, State_Enabled) ? t.surface : t.window, focused ? t.accent : t.hairline);
        return;
    }
    case PE_FrameLineEdit:
        return;
    case PE_Frame:
        if (const auto *frame = qstyleoption_cast<const QStyleOptionFrame *>(option);
            frame && frame->lineWidth > 0) {
            Saved saved(painter);
            painter->setPen(QPen(t.hairline, 1));
            painter->setBrush(Qt::NoBrush);
            painter->drawRect(QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5));
        }
        return;
    case PE_IndicatorCheckBox:
        return drawCheckBox(option, painter, false);
    case PE_IndicatorRadioButton:
        return drawCheckBox(option, painter, true);
    case PE_PanelMenu:
    case PE_FrameMenu:
        if (element == PE_PanelMenu || !qobject_cast<const QMenu *>(widget))
            fillRounded(painter, option->rect, Theme::Radius::card, t.raised,
                        t.dark ? QColor(0x47474F) : QColor(0xDCDCE2));
        return;
    case PE_PanelTipLabel:
        fillRounded(painter, option->rect, Theme::Radius::control, Theme::material(false));
        return;
    case PE_PanelItemViewItem: {
        const auto *item = qstyleoption_cast<const QStyleOptionViewItem *>(option);
        const QRectF row = QRectF(option->rect).adjusted(2, 1, -2, -1);
        if (item && isOn(option, State_Selected))
            fillRounded(painter, row, Theme::Radius::control,
                        isOn(option, State_MouseOver) ? t.accentHover : t.accentWash);
        else if (isOn(option, State_MouseOver) && isOn(option, State_Enabled))
            fillRounded(painter, row, Theme::Radius::control, t.hover);
        return;
    }
    case PE_PanelItemViewRow:
        return;
    case PE_FrameGroupBox:
        fillRounded(painter, option->rect, Theme::Radius::card, t.surface, t.hairline);
        return;
    case PE_IndicatorArrowDown:
        return drawSymbol(*painter, QRectF(option->rect.center() - QPoint(5, 5), QSizeF(10, 10)),
                          "chevron.down", isOn(option, State_Enabled) ? t.secondary : t.disabled);
    default:
        break;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void ThemeStyle::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                             const QWidget *widget) const
{
    const auto &t = Theme::tokens(option->palette);
    switch (element) {
    case CE_MenuItem:
        if (const auto *item = qstyleoption_cast<const QStyleOptionMenuItem *>(option))
            return drawMenuItem(*item, painter);
        break;
    case CE_MenuEmptyArea:
        return;
    case CE_ItemViewItem:
        if (const auto *item = qstyleoption_cast<const QStyleOptionViewItem *>(option)) {
            QStyleOptionViewItem copy = *item;
            copy.palette.setColor(QPalette::HighlightedText, t.text); // the selection is a wash, not a fill
            return QProxyStyle::drawControl(element, &copy, painter, widget);
        }
        break;
    case CE_PushButtonLabel:
        if (const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option)) {
            QStyleOptionButton copy = *button;
            const bool primary = button->features & QStyleOptionButton::DefaultButton;
            if (primary && isOn(option, State_Enabled))
                copy.palette.setColor(QPalette::ButtonText, t.onAccent);
            return QProxyStyle::drawControl(element, &copy, painter, widget);
        }
        break;
    case CE_ProgressBarGroove:
        return fillRounded(painter, option->rect, option->rect.height() / 2.0, t.track);
    case CE_ProgressBarContents:
        if (const auto *bar = qstyleoption_cast<const QStyleOptionProgressBar *>(option)) {
            if (bar->maximum <= bar->minimum)
                break;
            QRectF rect = bar->rect;
            rect.setWidth(rect.width() * (bar->progress - bar->minimum) / (bar->maximum - bar->minimum));
            return fillRounded(painter, rect, rect.height() / 2, t.accent);
        }
        break;
    default:
        break;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void ThemeStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                                    QPainter *painter, const QWidget *widget) const
{
    const auto &t = Theme::tokens(option->palette);
    switch (control) {
    case CC_Slider:
        if (const auto *slider = qstyleoption_cast<const QStyleOptionSlider *>(option))
            return drawSlider(*slider, painter, subControlRect(CC_Slider, option, SC_SliderGroove, widget),
                              subControlRect(CC_Slider, option, SC_SliderHandle, widget));
        break;
    case CC_ScrollBar:
        if (const auto *bar = qstyleoption_cast<const QStyleOptionSlider *>(option))
            return drawScrollBar(*bar, painter,
                                 subControlRect(CC_ScrollBar, option, SC_ScrollBarSlider, widget));
        break;
    case CC_ComboBox: {
        fillRounded(painter, option->rect, Theme::Radius::control, t.surface, t.hairline);
        if (isOn(option, State_MouseOver) && isOn(option, State_Enabled))
            fillRounded(painter, option->rect, Theme::Radius::control, t.hover);
        const QRect arrow = subControlRect(CC_ComboBox, option, SC_ComboBoxArrow, widget);
        drawSymbol(*painter, QRectF(arrow.center() - QPoint(5, 5), QSizeF(11, 11)), "chevron.down",
                   isOn(option, State_Enabled) ? t.secondary : t.disabled);
        return;
    }
    default:
        break;
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

QRect ThemeStyle::subControlRect(ComplexControl control, const QStyleOptionComplex *option,
                                 SubControl subControl, const QWidget *widget) const
{
    if (control == CC_ScrollBar) {
        const auto *bar = qstyleoption_cast<const QStyleOptionSlider *>(option);
        if (bar) {
            const bool horizontal = bar->orientation == Qt::Horizontal;
            const int length = horizontal ? bar->rect.width() : bar->rect.height();
            const int range = bar->maximum - bar->minimum;
            int slider =
                range > 0 ? static_cast<int>(qint64(bar->pageStep) * length / (qint64(range) + bar->pageStep))
                          : length;
            slider = qBound(qMin(28, length), slider, length);
            const int start = sliderPositionFromValue(bar->minimum, bar->maximum, bar->sliderPosition,
                                                      length - slider, bar->upsideDown);
            const auto part = [&](int from, int to) {
                const QRect rect =
                    horizontal
                        ? QRect(bar->rect.left() + from, bar->rect.top(), to - from, bar->rect.height())
                        : QRect(bar->rect.left(), bar->rect.top() + from, bar->rect.width(), to - from);
                return visualRect(bar->direction, bar->rect, rect);
            };
            switch (subControl) {
            case SC_ScrollBarSlider:
                return part(start, start + slider);
            case SC_ScrollBarSubPage:
                return part(0, start);
            case SC_ScrollBarAddPage:
                return part(start + slider, length);
            case SC_ScrollBarGroove:
                return bar->rect;
            default:
                return {};
            }
        }
    }
    const QRect rect = QProxyStyle::subControlRect(control, option, subControl, widget);
    if (control == CC_ComboBox && subControl == SC_ComboBoxEditField)
        return rect.adjusted(fieldInset, 0, 0, 0);
    return rect;
}

QRect ThemeStyle::subElementRect(SubElement element, const QStyleOption *option, const QWidget *widget) const
{
    if (element == SE_LineEditContents) {
        // A field inside another control, as in a spin box, has no frame and no room to spare.
        const auto *frame = qstyleoption_cast<const QStyleOptionFrame *>(option);
        const int inset = frame && frame->lineWidth > 0 ? fieldInset : 0;
        return QProxyStyle::subElementRect(element, option, widget).adjusted(inset, 0, -inset, 0);
    }
    if (element == SE_PushButtonFocusRect || element == SE_CheckBoxFocusRect)
        return option->rect;
    return QProxyStyle::subElementRect(element, option, widget);
}

QSize ThemeStyle::sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &contents,
                                   const QWidget *widget) const
{
    switch (type) {
    case CT_MenuItem:
        if (const auto *item = qstyleoption_cast<const QStyleOptionMenuItem *>(option)) {
            if (item->menuItemType == QStyleOptionMenuItem::Separator)
                return {10, separatorHeight};
            const MenuText words = menuText(*item);
            const QFontMetrics metrics(item->font);
            int width = 2 * (menuInset + 8) + metrics.size(Qt::TextHideMnemonic, words.title).width();
            if (hasMenuColumn(*item))
                width += Theme::Size::rowIcon + menuGap;
            if (!words.shortcut.isEmpty())
                width += 28 + metrics.horizontalAdvance(words.shortcut);
            if (item->menuItemType == QStyleOptionMenuItem::SubMenu)
                width += 24;
            return {qMax(width, 160), Theme::Size::menuRow};
        }
        break;
    case CT_PushButton: {
        const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
        return {qMax(contents.width() + 28, 76), qMax(size.height(), Theme::Size::field)};
    }
    case CT_LineEdit:
    case CT_ComboBox: {
        QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
        if (type == CT_ComboBox)
            size.rwidth() += 8;
        return {size.width(), qMax(size.height(), Theme::Size::field)};
    }
    case CT_ItemViewItem: {
        const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
        return {size.width(), qMax(size.height(), Theme::Size::menuRow)};
    }
    case CT_CheckBox:
    case CT_RadioButton: {
        const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
        return {size.width(), qMax(size.height(), Theme::Size::target)};
    }
    default:
        break;
    }
    return QProxyStyle::sizeFromContents(type, option, contents, widget);
}

int ThemeStyle::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const
{
    switch (metric) {
    case PM_MenuVMargin:
        return menuInset;
    case PM_MenuHMargin:
        return 0;
    case PM_MenuPanelWidth:
        return 0;
    case PM_SubMenuOverlap:
        return -2;
    case PM_FocusFrameHMargin:
        return 8;
    case PM_SmallIconSize:
        return Theme::Size::rowIcon;
    case PM_ButtonIconSize:
        return Theme::Size::rowIcon;
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
        return checkBoxSize;
    case PM_CheckBoxLabelSpacing:
    case PM_RadioButtonLabelSpacing:
        return 8;
    case PM_ScrollBarExtent:
        return scrollBarWidth;
    case PM_SliderLength:
    case PM_SliderThickness:
    case PM_SliderControlThickness:
        return sliderKnob;
    case PM_LayoutLeftMargin:
    case PM_LayoutTopMargin:
    case PM_LayoutRightMargin:
    case PM_LayoutBottomMargin:
        return Theme::Space::margin;
    case PM_LayoutHorizontalSpacing:
    case PM_LayoutVerticalSpacing:
        return Theme::Space::inside;
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
        return 0;
    case PM_ButtonDefaultIndicator:
        return 0;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int ThemeStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                          QStyleHintReturn *returnData) const
{
    switch (hint) {
    case SH_Widget_Animation_Duration:
        return m_reducesMotion ? 0 : Theme::Motion::press;
    case SH_ComboBox_Popup:
        return 0;
    case SH_Slider_AbsoluteSetButtons:
        return Qt::LeftButton;
    case SH_ToolTip_Mask:
    case SH_Menu_Mask:
        // Where nothing mixes windows, menus get their round corners from a mask.
        if (auto *mask = qstyleoption_cast<QStyleHintReturnMask *>(returnData);
            mask && option && !Floating::isComposited()) {
            QPainterPath path;
            path.addRoundedRect(option->rect, Theme::Radius::card, Theme::Radius::card);
            mask->region = QRegion(path.toFillPolygon().toPolygon());
            return 1;
        }
        return 0;
    case SH_DialogButtonBox_ButtonsHaveIcons:
        return 0;
    case SH_UnderlineShortcut:
        return 0;
    case SH_Menu_SubMenuPopupDelay:
        return Theme::Motion::press;
    default:
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
}

int motionDuration(const QWidget *widget, int milliseconds)
{
    return widget->style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, widget) > 0
               ? milliseconds
               : 0;
}
