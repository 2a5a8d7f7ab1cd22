#include "ui/theme_style.h"

#include "ui/control_look.h"
#include "ui/floating.h"
#include "ui/menu_item_look.h"
#include "ui/roles.h"
#include "ui/scroll_bar_look.h"
#include "ui/style_painting.h"
#include "ui/symbol.h"
#include "ui/theme.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QPainterPath>
#include <QPushButton>
#include <QStyleFactory>
#include <QStyleOption>
#include <QToolTip>

using namespace StylePainting;

namespace {

constexpr int kFieldInset = 5;

} // namespace

ThemeStyle::ThemeStyle() : QProxyStyle("Fusion") {}

void ThemeStyle::polish(QWidget *widget)
{
    QProxyStyle::polish(widget);
    if (auto *menu = qobject_cast<QMenu *>(widget))
        Roles::nameMenu(menu);
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
            return ControlLook::drawPushButton(*button, painter);
        break;
    case PE_PanelLineEdit: {
        if (const auto *frame = qstyleoption_cast<const QStyleOptionFrame *>(option);
            frame && frame->lineWidth <= 0)
            return;
        return ControlLook::drawField(*option, painter);
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
        return ControlLook::drawMark(option, painter, ControlLook::Mark::Check);
    case PE_IndicatorRadioButton:
        return ControlLook::drawMark(option, painter, ControlLook::Mark::Radio);
    case PE_PanelMenu:
    case PE_FrameMenu:
        if (element == PE_PanelMenu || !qobject_cast<const QMenu *>(widget))
            fillRounded(painter, option->rect, Theme::Radius::card, t.raised,
                        t.dark ? QColor(0x47474F) : QColor(0xDCDCE2));
        return;
    case PE_PanelTipLabel:
        fillRounded(painter, option->rect, Theme::Radius::control, Theme::material(false));
        return;
    case PE_PanelItemViewItem:
        return ControlLook::drawRow(*option, painter);
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
            return MenuItemLook::draw(*item, painter);
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
            if (primary && isOn(option, State_Enabled)) {
                copy.palette.setColor(QPalette::ButtonText, t.onAccent);
                copy.state |= State_Selected; // for an icon that follows the theme
            }
            if (!copy.icon.isNull() && !copy.text.isEmpty())
                return ControlLook::drawIconAndLabel(copy, painter);
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
    switch (control) {
    case CC_Slider:
        if (const auto *slider = qstyleoption_cast<const QStyleOptionSlider *>(option))
            return ControlLook::drawSlider(*slider, painter,
                                           subControlRect(CC_Slider, option, SC_SliderGroove, widget),
                                           subControlRect(CC_Slider, option, SC_SliderHandle, widget));
        break;
    case CC_ScrollBar:
        if (const auto *bar = qstyleoption_cast<const QStyleOptionSlider *>(option))
            return ScrollBarLook::draw(*bar, painter);
        break;
    case CC_ComboBox:
        return ControlLook::drawComboBox(*option, painter,
                                         subControlRect(CC_ComboBox, option, SC_ComboBoxArrow, widget));
    default:
        break;
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

QRect ThemeStyle::subControlRect(ComplexControl control, const QStyleOptionComplex *option,
                                 SubControl subControl, const QWidget *widget) const
{
    if (control == CC_ScrollBar) {
        if (const auto *bar = qstyleoption_cast<const QStyleOptionSlider *>(option))
            return ScrollBarLook::part(*bar, subControl);
    }
    const QRect rect = QProxyStyle::subControlRect(control, option, subControl, widget);
    if (control == CC_ComboBox && subControl == SC_ComboBoxEditField)
        return rect.adjusted(kFieldInset, 0, 0, 0);
    return rect;
}

QRect ThemeStyle::subElementRect(SubElement element, const QStyleOption *option, const QWidget *widget) const
{
    if (element == SE_LineEditContents) {
        // A field inside another control, as in a spin box, has no frame and no room to spare.
        const auto *frame = qstyleoption_cast<const QStyleOptionFrame *>(option);
        const int inset = frame && frame->lineWidth > 0 ? kFieldInset : 0;
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
        if (const auto *item = qstyleoption_cast<const QStyleOptionMenuItem *>(option))
            return MenuItemLook::size(*item);
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
        return MenuItemLook::kInset;
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
        return ControlLook::kCheckBoxSize;
    case PM_CheckBoxLabelSpacing:
    case PM_RadioButtonLabelSpacing:
        return 8;
    case PM_ScrollBarExtent:
        return ScrollBarLook::kWidth;
    case PM_SliderLength:
    case PM_SliderThickness:
    case PM_SliderControlThickness:
        return ControlLook::kSliderKnob;
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
