#include "shell/pieces.h"

#include "ui/mirroring.h"
#include "ui/style_painting.h"
#include "ui/symbol.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QWheelEvent>

namespace {

constexpr int kTrackHeight = 22;
constexpr int kKnobInset = 2;
constexpr int kAccentHeight = 40;
constexpr qreal kDisabledOpacity = 0.4;

} // namespace

ToggleSwitch::ToggleSwitch(QWidget *parent) : QAbstractButton(parent)
{
    setCheckable(true);
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    const int top = (Theme::Size::target - kTrackHeight) / 2;
    setProperty("focusRect", QRect(0, top, sizeHint().width(), kTrackHeight));
    setProperty("focusRadius", kTrackHeight / 2.0);
}

void ToggleSwitch::paintEvent(QPaintEvent *)
{
    const auto &t = Theme::tokens(this);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled())
        painter.setOpacity(kDisabledOpacity);
    const QRectF track(0, (height() - kTrackHeight) / 2.0, width(), kTrackHeight);
    const QColor edge = isChecked() ? QColor(Qt::transparent) : t.edge;
    StylePainting::fillRounded(&painter, track, kTrackHeight / 2.0, isChecked() ? t.accentFill : t.pressed, edge);
    if (underMouse())
        StylePainting::fillRounded(&painter, track, kTrackHeight / 2.0, t.hover);
    const qreal side = kTrackHeight - 2 * kKnobInset;
    const bool right = isChecked() == (layoutDirection() == Qt::LeftToRight);
    const QRectF knob(right ? track.right() - kKnobInset - side : track.left() + kKnobInset,
                      track.top() + kKnobInset, side, side);
    StylePainting::fillRounded(&painter, knob.translated(0, 0.5), side / 2, t.raisedShadow);
    StylePainting::fillRounded(&painter, knob, side / 2, isChecked() ? t.onAccent : t.secondary);
}

void ToggleSwitch::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        return click();
    QAbstractButton::keyPressEvent(event);
}

WordButton::WordButton(const QString &text, QWidget *parent) : QAbstractButton(parent)
{
    setText(text);
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::TabFocus);
    setFont(Theme::font(Theme::Type::Control, QFont::Medium));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize WordButton::sizeHint() const
{
    return {QFontMetrics(font()).horizontalAdvance(text()) + Theme::Space::inside * 2, Theme::Size::target};
}

void WordButton::paintEvent(QPaintEvent *)
{
    const auto &t = Theme::tokens(this);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled())
        painter.setOpacity(kDisabledOpacity);
    else if (underMouse())
        StylePainting::fillRounded(&painter, rect(), Theme::Radius::control, isDown() ? t.pressed : t.hover);
    painter.setFont(font());
    painter.setPen(t.accentText);
    painter.drawText(rect(), Qt::AlignCenter, text());
}

void WordButton::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        return click();
    QAbstractButton::keyPressEvent(event);
}

AccentButton::AccentButton(const QString &symbol, const QString &text, QWidget *parent)
    : QPushButton(text, parent), m_symbol(symbol)
{
    setFont(Theme::font(Theme::Type::Body, QFont::DemiBold));
    setAttribute(Qt::WA_Hover);
    setFixedHeight(kAccentHeight);
    setProperty("focusRadius", Theme::Radius::control);
}

void AccentButton::setSymbol(const QString &symbol)
{
    m_symbol = symbol;
    update();
}

QSize AccentButton::sizeHint() const
{
    return {QFontMetrics(font()).horizontalAdvance(text()) + Theme::Size::barIcon + 56, kAccentHeight};
}

void AccentButton::paintEvent(QPaintEvent *)
{
    const auto &t = Theme::tokens(this);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled())
        painter.setOpacity(kDisabledOpacity);
    const QColor fill = isDown()       ? t.accentFill.darker(118)
                        : underMouse() ? t.accentFill.darker(107)
                                       : t.accentFill;
    StylePainting::fillRounded(&painter, rect(), Theme::Radius::control, fill);
    painter.setFont(font());
    const int words = painter.fontMetrics().horizontalAdvance(text());
    const int content = Theme::Size::barIcon + Theme::Space::inside + words;
    const int left = (width() - content) / 2;
    const QRectF icon(left, (height() - Theme::Size::barIcon) / 2.0, Theme::Size::barIcon, Theme::Size::barIcon);
    drawSymbol(painter, mirrored(icon, rect(), layoutDirection()), m_symbol, t.onAccent);
    painter.setPen(t.onAccent);
    const QRectF place(icon.right() + Theme::Space::inside, 0, words + 2, height());
    painter.drawText(mirrored(place, rect(), layoutDirection()), Qt::AlignVCenter | Qt::AlignLeft, text());
}

void AccentButton::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        return click();
    QPushButton::keyPressEvent(event);
}

Picker::Picker(QWidget *parent) : QComboBox(parent)
{
    setFocusPolicy(Qt::StrongFocus); // not by the wheel
}

void Picker::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}

NoteLabel::NoteLabel(const QString &text, Theme::Type type, QWidget *parent) : QLabel(text, parent)
{
    setTextFormat(Qt::PlainText);
    setFont(Theme::font(type));
    setWordWrap(true);
    recolor();
}

void NoteLabel::setWarning(bool on)
{
    m_isWarning = on;
    recolor();
}

void NoteLabel::changeEvent(QEvent *event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        recolor();
}

void NoteLabel::recolor()
{
    if (m_isRecoloring)
        return;
    m_isRecoloring = true;
    const auto &t = Theme::tokens(this);
    // Warnings are small type: on white their colour needs to be darker than that of marks.
    const QColor warning = t.dark ? t.warning : t.warning.darker(135);
    QPalette own = palette();
    own.setColor(QPalette::WindowText, m_isWarning ? warning : t.secondary);
    if (own.color(QPalette::WindowText) != palette().color(QPalette::WindowText))
        setPalette(own);
    m_isRecoloring = false;
}

FlowLayout::FlowLayout(QWidget *parent) : QLayout(parent)
{
    setContentsMargins(0, 0, 0, 0);
    setSpacing(6);
}

FlowLayout::~FlowLayout()
{
    qDeleteAll(m_items);
}

QLayoutItem *FlowLayout::takeAt(int index)
{
    return index >= 0 && index < m_items.size() ? m_items.takeAt(index) : nullptr;
}

QSize FlowLayout::minimumSize() const
{
    QSize size;
    for (const QLayoutItem *item : m_items)
        size = size.expandedTo(item->minimumSize());
    return size;
}

void FlowLayout::setGeometry(const QRect &rect)
{
    QLayout::setGeometry(rect);
    arranged(rect, true);
}

int FlowLayout::arranged(const QRect &rect, bool moves) const
{
    int left = rect.left(), top = rect.top(), lineHeight = 0;
    for (QLayoutItem *item : m_items) {
        const QSize size(qMin(item->sizeHint().width(), rect.width()), item->sizeHint().height());
        if (left > rect.left() && left + size.width() > rect.left() + rect.width()) {
            left = rect.left();
            top += lineHeight + spacing();
            lineHeight = 0;
        }
        if (moves)
            item->setGeometry(QStyle::visualRect(parentWidget()->layoutDirection(), rect, {QPoint(left, top), size}));
        left += size.width() + spacing();
        lineHeight = qMax(lineHeight, size.height());
    }
    return top + lineHeight - rect.top();
}
