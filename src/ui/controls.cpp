#include "ui/controls.h"

#include "ui/mirroring.h"
#include "ui/roles.h"
#include "ui/symbol.h"
#include "ui/theme_style.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QVBoxLayout>

namespace {

constexpr int kSymbolGap = 6;
constexpr int kArrowSize = 8;
constexpr double kMarkWidth = 16, kMarkHeight = 3; // under what is on
constexpr qreal kDisabledOpacity = 0.4;

// The look of a plain control's background for the pointer and the keyboard.
QColor washFor(const QAbstractButton &button, const Theme::Tokens &t)
{
    if (!button.isEnabled())
        return button.isChecked() ? t.accentWash : QColor(Qt::transparent);
    if (button.isChecked())
        return button.underMouse() ? t.accentHover : t.accentWash;
    if (button.isDown())
        return t.pressed;
    return button.underMouse() ? t.hover : QColor(Qt::transparent);
}

QRectF mirrored(const QRectF &place, const QWidget &in)
{
    return mirrored(place, in.rect(), in.layoutDirection());
}

} // namespace

BarButton::BarButton(const QString &symbol, const QString &text, Label label, QWidget *parent)
    : QAbstractButton(parent), m_symbol(symbol), m_label(label)
{
    setAttribute(Qt::WA_Hover);
    setText(text);
    setAccessibleName(text);
    setFocusPolicy(Qt::TabFocus);
    setFont(Theme::font(label == Label::Under ? 11.0 : 12.0, QFont::Medium));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void BarButton::setSymbol(const QString &symbol)
{
    m_symbol = symbol;
    update();
}

void BarButton::setLabel(Label label)
{
    m_label = label;
    updateGeometry();
    update();
}

void BarButton::setMenu(QMenu *menu)
{
    m_menu = menu;
    menu->setParent(this, menu->windowFlags());
    connect(this, &QAbstractButton::clicked, this, &BarButton::openMenu);
    connect(menu, &QMenu::aboutToHide, this, [this] { setDown(false); });
    updateGeometry();
}

void BarButton::openMenu()
{
    Q_EMIT menuAboutToOpen();
    m_menu->popup(mapToGlobal(QPoint(0, height() + Theme::Space::unit)));
    setDown(true);
    if (hasFocus() && !m_menu->actions().isEmpty())
        m_menu->setActiveAction(m_menu->actions().constFirst());
}

void BarButton::setSwatch(const QColor &color)
{
    m_swatch = color;
    update();
}

QSize BarButton::sizeHint() const
{
    const QFontMetrics metrics(font());
    const int words = metrics.horizontalAdvance(text());
    const int arrow = m_menu ? kArrowSize + 4 : 0;
    switch (m_label) {
    case Label::None:
        return {Theme::Size::barButton + arrow, Theme::Size::barButton};
    case Label::Beside:
        return {(m_symbol.isEmpty() ? 0 : Theme::Size::barIcon + kSymbolGap) + words + arrow + 20,
                Theme::Size::barButton};
    case Label::Under:
        // The arrow stands beside the icon, where a label leaves room.
        return {qMax(words + 8, m_menu ? 44 : 36), 46};
    }
    return {};
}

void BarButton::paintEvent(QPaintEvent *)
{
    const auto &t = Theme::tokens(this);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(washFor(*this, t));
    painter.drawRoundedRect(rect(), Theme::Radius::control, Theme::Radius::control);
    if (isChecked()) { // not told by colours alone
        painter.setBrush(t.accentText);
        painter.drawRoundedRect(QRectF(width() / 2.0 - kMarkWidth / 2, height() - kMarkHeight, kMarkWidth, kMarkHeight),
                                kMarkHeight / 2, kMarkHeight / 2);
    }
    if (!isEnabled())
        painter.setOpacity(kDisabledOpacity);
    const QColor ink = isChecked() ? t.accentText : t.text;
    const QColor words = isChecked() ? t.accentText : m_label == Label::Under ? t.secondary : t.text;
    const int arrow = m_menu ? kArrowSize + 4 : 0;
    const int besideArrow = m_menu ? kArrowSize : 0;

    QRectF icon(0, 0, Theme::Size::barIcon, Theme::Size::barIcon);
    QRectF label;
    switch (m_label) {
    case Label::None:
        icon.moveCenter(QPointF((width() - arrow) / 2.0, height() / 2.0));
        break;
    case Label::Beside:
        icon.moveCenter(QPointF(10 + icon.width() / 2, height() / 2.0));
        label = QRectF(m_symbol.isEmpty() ? 10 : icon.right() + kSymbolGap, 0, width(), height());
        break;
    case Label::Under:
        icon.moveCenter(QPointF((width() - besideArrow) / 2.0, 16));
        label = QRectF(0, 27, width(), 15);
        break;
    }
    icon = mirrored(icon, *this);
    label = mirrored(label, *this);
    icon.moveTopLeft(QPointF(std::round(icon.left()), std::round(icon.top())));
    if (m_swatch.isValid()) {
        painter.setBrush(m_swatch);
        painter.setPen(QPen(t.edge, 1));
        painter.drawEllipse(icon.adjusted(1.5, 1.5, -1.5, -1.5));
    } else {
        drawSymbol(painter, icon, m_symbol, ink);
    }
    if (m_label != Label::None) {
        painter.setFont(font());
        painter.setPen(words);
        painter.drawText(label,
                         Qt::AlignVCenter | (m_label == Label::Under ? Qt::AlignHCenter : Qt::AlignLeft),
                         text());
    }
    if (m_menu) {
        QRectF place(0, 0, kArrowSize, kArrowSize);
        place.moveCenter(m_label == Label::Under
                             ? QPointF(mirrored(icon, *this).right() + 6, icon.center().y())
                             : QPointF(width() - 6 - kArrowSize / 2.0, height() / 2.0 + 0.5));
        drawSymbol(painter, mirrored(place, *this), "chevron.down", t.secondary);
    }
}

void BarButton::keyPressEvent(QKeyEvent *event)
{
    if (m_menu && event->key() == Qt::Key_Down)
        return openMenu();
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        return click();
    QAbstractButton::keyPressEvent(event);
}

Hairline::Hairline(Qt::Orientation orientation, QWidget *parent) : QWidget(parent), m_orientation(orientation)
{
    Roles::set(this, QAccessible::Separator);
    if (orientation == Qt::Vertical)
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    else
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QSize Hairline::sizeHint() const
{
    return m_orientation == Qt::Vertical ? QSize(1, 20) : QSize(20, 1);
}

void Hairline::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    Theme::fillHairline(painter, rect(), Theme::tokens(this).hairline);
}

Chip::Chip(const QString &text, const QString &symbol, QWidget *parent)
    : QAbstractButton(parent), m_symbol(symbol)
{
    setAttribute(Qt::WA_Hover);
    setText(text);
    setCheckable(true);
    setFocusPolicy(Qt::TabFocus);
    setFont(Theme::font(Theme::Type::Control, QFont::Medium));
    setProperty("focusRadius", Theme::Size::target / 2.0);
}

QSize Chip::sizeHint() const
{
    return {QFontMetrics(font()).horizontalAdvance(text()) + 24 + Theme::Size::rowIcon + kSymbolGap,
            Theme::Size::target};
}

void Chip::paintEvent(QPaintEvent *)
{
    const auto &t = Theme::tokens(this);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled())
        painter.setOpacity(kDisabledOpacity);
    const qreal radius = height() / 2.0;
    const QRectF body(rect());
    QColor fill = isChecked() ? t.accentWash : t.track;
    if (underMouse())
        fill = isChecked() ? t.accentHover : t.pressed;
    painter.setBrush(fill);
    painter.setPen(QPen(isChecked() ? t.accentText : t.edge, 1));
    painter.drawRoundedRect(body.adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    const QColor ink = isChecked() ? t.accentText : t.text;
    const QRectF icon(12, (height() - Theme::Size::rowIcon) / 2.0, Theme::Size::rowIcon,
                      Theme::Size::rowIcon);
    drawSymbol(painter, mirrored(icon, *this), isChecked() ? QStringLiteral("checkmark") : m_symbol, ink);
    painter.setPen(ink);
    painter.setFont(font());
    const int left = static_cast<int>(icon.right()) + kSymbolGap;
    const QRectF words = mirrored(QRectF(left, 0, width() - left - 8, height()), *this);
    painter.drawText(words, Qt::AlignVCenter | Qt::AlignLeft,
                     painter.fontMetrics().elidedText(text(), Qt::ElideRight, int(words.width())));
}

Swatch::Swatch(const QColor &color, const QString &name, QWidget *parent)
    : QAbstractButton(parent), m_color(color)
{
    setAttribute(Qt::WA_Hover);
    setText(name);
    setAccessibleName(name);
    setCheckable(true);
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    Roles::set(this, QAccessible::RadioButton);
    setProperty("focusRadius", Theme::Size::target / 2.0 - Theme::Size::focusRing);
    setProperty("focusRect", QRect(2, 2, Theme::Size::target - 4, Theme::Size::target - 4));
}

void Swatch::setColor(const QColor &color)
{
    m_color = color;
    update();
}

void Swatch::paintEvent(QPaintEvent *)
{
    const auto &t = Theme::tokens(this);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPointF center = QRectF(rect()).center();
    const qreal radius = (isChecked()    ? Theme::Size::swatch - 4
                          : underMouse() ? Theme::Size::swatch
                                         : Theme::Size::swatch - 2) /
                         2.0;
    painter.setBrush(m_color);
    painter.setPen(QPen(t.edge, 1)); // keeps black visible on dark and white on light
    painter.drawEllipse(center, radius - 0.5, radius - 0.5);
    if (isChecked()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(t.dark ? t.accentText : t.accent, 2));
        painter.drawEllipse(center, Theme::Size::swatch / 2.0 + 1, Theme::Size::swatch / 2.0 + 1);
    }
}

ValueSlider::ValueSlider(const QString &name, int minimum, int maximum, QWidget *parent)
    : QWidget(parent), m_name(name), m_slider(new QSlider(Qt::Horizontal, this))
{
    m_slider->setRange(minimum, maximum);
    m_slider->setFocusPolicy(Qt::TabFocus);
    m_slider->setAccessibleName(name);
    setFocusProxy(m_slider);
    setFont(Theme::font(Theme::Type::Control));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(m_slider, &QSlider::valueChanged, this, [this](int value) {
        update();
        Q_EMIT changed(value);
    });
}

void ValueSlider::setName(const QString &name)
{
    if (std::exchange(m_name, name) == name)
        return;
    m_slider->setAccessibleName(name);
    updateGeometry();
    resizeEvent(nullptr);
    update();
}

void ValueSlider::setValue(int value)
{
    const QSignalBlocker blocker(m_slider);
    m_slider->setValue(value);
    m_slider->update();
    update();
}

void ValueSlider::setFormat(std::function<QString(int)> format)
{
    m_format = std::move(format);
    updateGeometry();
    update();
}

int ValueSlider::nameWidth() const
{
    return m_name.isEmpty() ? 0 : QFontMetrics(font()).horizontalAdvance(m_name) + Theme::Space::inside;
}

int ValueSlider::valueWidth() const
{
    const QString widest = m_format ? m_format(m_slider->maximum()) : QString::number(m_slider->maximum());
    return qCeil(Theme::tabularWidth(font(), widest)) + Theme::Space::inside;
}

QSize ValueSlider::sizeHint() const
{
    return {nameWidth() + 110 + valueWidth(), Theme::Size::target};
}

void ValueSlider::resizeEvent(QResizeEvent *)
{
    const QRect place(nameWidth(), (height() - 20) / 2, width() - nameWidth() - valueWidth(), 20);
    m_slider->setGeometry(QStyle::visualRect(layoutDirection(), rect(), place));
}

void ValueSlider::paintEvent(QPaintEvent *)
{
    const auto &t = Theme::tokens(this);
    QPainter painter(this);
    painter.setFont(font());
    painter.setPen(t.secondary);
    painter.drawText(rect(), Qt::AlignVCenter | Qt::AlignLeft, m_name);
    painter.setPen(t.text);
    Theme::drawTabular(painter, rect(), Qt::AlignRight,
                       m_format ? m_format(value()) : QString::number(value()));
}

NumberLabel::NumberLabel(QWidget *parent) : QWidget(parent)
{
    setFont(Theme::font(Theme::Type::Control));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    Roles::set(this, QAccessible::StaticText);
}

void NumberLabel::setText(const QString &text)
{
    if (std::exchange(m_text, text) == text)
        return;
    setAccessibleName(text);
    updateGeometry();
    update();
}

QSize NumberLabel::sizeHint() const
{
    return {qCeil(Theme::tabularWidth(font(), m_text)), QFontMetrics(font()).height()};
}

void NumberLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setFont(font());
    painter.setPen(m_color.isValid() ? m_color : Theme::tokens(this).secondary);
    Theme::drawTabular(painter, rect(), m_alignment, m_text);
}

Spinner::Spinner(int size, QWidget *parent) : QWidget(parent), m_size(size)
{
    setFixedSize(size, size);
    m_turn.setStartValue(0);
    m_turn.setEndValue(360);
    m_turn.setDuration(900);
    m_turn.setLoopCount(-1);
    connect(&m_turn, &QVariantAnimation::valueChanged, this, [this] { update(); });
}

void Spinner::paintEvent(QPaintEvent *)
{
    const auto &t = Theme::tokens(this);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF circle = QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5);
    painter.setPen(QPen(t.track, 2));
    painter.drawEllipse(circle);
    painter.setPen(QPen(t.dark ? t.accentText : t.accent, 2, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(circle, -m_turn.currentValue().toInt() * 16, 100 * 16);
}

void Spinner::showEvent(QShowEvent *)
{
    if (motionDuration(this, 1))
        m_turn.start();
}

void Spinner::hideEvent(QHideEvent *)
{
    m_turn.stop();
}

EmptyState::EmptyState(const QString &symbol, const QString &title, const QString &text, QWidget *parent)
    : QWidget(parent)
{
    auto *icon = new SymbolLabel(symbol, 48);
    icon->setColor(Theme::tokens(this).disabled);
    auto *heading = new QLabel(title);
    heading->setFont(Theme::font(Theme::Type::Title, QFont::DemiBold));
    auto *line = new QLabel(text);
    line->setWordWrap(true);
    line->setAlignment(Qt::AlignHCenter);
    line->setForegroundRole(QPalette::PlaceholderText);
    auto *column = new QVBoxLayout(this);
    column->setSpacing(Theme::Space::inside);
    column->addStretch();
    column->addWidget(icon, 0, Qt::AlignHCenter);
    column->addSpacing(Theme::Space::unit);
    column->addWidget(heading, 0, Qt::AlignHCenter);
    column->addWidget(line);
    column->addStretch();
}
