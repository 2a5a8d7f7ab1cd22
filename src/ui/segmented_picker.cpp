#include "ui/segmented_picker.h"

#include "ui/mirroring.h"
#include "ui/picker_accessibility.h"
#include "ui/symbol.h"
#include "ui/theme.h"
#include "ui/theme_style.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>

namespace {

constexpr int kSymbolGap = 6;
constexpr int kSmallestUnder = 9; // pixels of type under a symbol
constexpr int kUnderHeight = 50;  // with the words under the symbols
constexpr qreal kDisabledOpacity = 0.4;

} // namespace

SegmentedPicker::SegmentedPicker(QWidget *parent) : QWidget(parent)
{
    setFocusPolicy(Qt::TabFocus);
    setMouseTracking(true);
    setFont(Theme::font(Theme::Type::Control, QFont::Medium));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_slide.setEasingCurve(Theme::Motion::ease());
    connect(&m_slide, &QVariantAnimation::valueChanged, this, [this] { update(); });
}

void SegmentedPicker::setSegments(const QList<Segment> &segments)
{
    m_segments = segments;
    m_current = qBound(0, m_current, qMax(0, static_cast<int>(segments.size()) - 1));
    m_slide.stop();
    updateGeometry();
    update();
}

void SegmentedPicker::setCurrent(int index)
{
    if (index == m_current)
        return;
    m_slide.stop();
    const int before = std::exchange(m_current, index);
    update();
    tellOfChoice(this, before);
}

void SegmentedPicker::setStretches(bool stretches)
{
    m_stretches = stretches;
    setSizePolicy(stretches ? QSizePolicy::Expanding : QSizePolicy::Fixed, QSizePolicy::Fixed);
    updateGeometry();
}

void SegmentedPicker::setShowsText(bool shows)
{
    if (std::exchange(m_showsText, shows) == shows)
        return;
    updateGeometry();
    update();
}

void SegmentedPicker::setLabelsUnder(bool under)
{
    m_labelsUnder = under;
    setFont(under ? Theme::font(Theme::Type::Caption, QFont::Medium)
                  : Theme::font(Theme::Type::Control, QFont::Medium));
    updateGeometry();
    update();
}

void SegmentedPicker::setSegmentEnabled(int index, bool enabled)
{
    if (enabled)
        m_disabled.remove(index);
    else
        m_disabled.insert(index);
    update();
}

int SegmentedPicker::naturalWidth(const Segment &segment) const
{
    if (m_labelsUnder)
        return qMax(QFontMetrics(font()).horizontalAdvance(segment.text) + 8, 44);
    int width = 16;
    if (!segment.symbol.isEmpty())
        width += Theme::Size::rowIcon;
    if (showsText(segment)) {
        width += QFontMetrics(font()).horizontalAdvance(segment.text);
        if (!segment.symbol.isEmpty())
            width += kSymbolGap;
    }
    return width;
}

QSize SegmentedPicker::sizeHint() const
{
    int width = 4, widest = 0;
    for (const Segment &segment : m_segments) {
        width += naturalWidth(segment);
        widest = qMax(widest, naturalWidth(segment));
    }
    if (m_stretches)
        width = 4 + widest * static_cast<int>(m_segments.size());
    return {width, m_labelsUnder ? kUnderHeight : Theme::Size::target};
}

QRect SegmentedPicker::segmentRect(int index) const
{
    return QStyle::visualRect(layoutDirection(), rect(), rectFromLeft(index));
}

QRect SegmentedPicker::rectFromLeft(int index) const
{
    if (m_stretches && !m_segments.isEmpty()) {
        const int inner = width() - 4, count = static_cast<int>(m_segments.size());
        const int left = 2 + inner * index / count;
        return {left, 2, 2 + inner * (index + 1) / count - left, height() - 4};
    }
    int left = 2;
    for (int i = 0; i < index; ++i)
        left += naturalWidth(m_segments[i]);
    return {left, 2, naturalWidth(m_segments.value(index)), height() - 4};
}

void SegmentedPicker::paintEvent(QPaintEvent *)
{
    const auto &t = Theme::tokens(this);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled())
        painter.setOpacity(kDisabledOpacity);
    painter.setPen(Qt::NoPen);
    painter.setBrush(t.track);
    painter.drawRoundedRect(rect(), Theme::Radius::control, Theme::Radius::control);
    if (m_current >= 0 && m_current < m_segments.size()) {
        const QRectF selection = m_slide.state() == QAbstractAnimation::Running
                                     ? m_slide.currentValue().toRectF()
                                     : QRectF(segmentRect(m_current));
        painter.setBrush(t.dark ? QColor(0x4A4A54) : t.surface);
        painter.setPen(QPen(t.edge, 1));
        painter.drawRoundedRect(selection.adjusted(0.5, 0.5, -0.5, -0.5), Theme::Radius::control - 1.5,
                                Theme::Radius::control - 1.5);
    }
    painter.setFont(font());
    for (int i = 0; i < m_segments.size(); ++i) {
        const Segment &segment = m_segments[i];
        const QRect place = segmentRect(i);
        painter.setOpacity(isEnabled() && !m_disabled.contains(i) ? 1 : kDisabledOpacity);
        const QColor ink = i == m_current ? t.text : i == m_hovered ? t.text : t.secondary;
        if (m_labelsUnder) {
            QRectF icon(0, place.top() + 7, Theme::Size::barIcon, Theme::Size::barIcon);
            icon.moveLeft(std::round(place.left() + (place.width() - icon.width()) / 2.0));
            drawSymbol(painter, icon, segment.symbol, ink);
            const QRect words(place.left() + 1, place.bottom() - 19, place.width() - 2, 16);
            painter.setPen(ink);
            // A long word is set a little smaller before it is cut.
            QFont smaller = font();
            while (smaller.pixelSize() > kSmallestUnder &&
                   QFontMetrics(smaller).horizontalAdvance(segment.text) > words.width())
                smaller.setPixelSize(smaller.pixelSize() - 1);
            painter.setFont(smaller);
            painter.drawText(words, Qt::AlignCenter,
                             painter.fontMetrics().elidedText(segment.text, Qt::ElideRight, words.width()));
            continue;
        }
        int left = place.left() + (place.width() - naturalWidth(segment)) / 2 + 8;
        if (!segment.symbol.isEmpty()) {
            const QRectF icon(left, place.center().y() - Theme::Size::rowIcon / 2 + 1, Theme::Size::rowIcon,
                              Theme::Size::rowIcon);
            drawSymbol(painter, mirrored(icon, place, layoutDirection()), segment.symbol, ink);
            left += Theme::Size::rowIcon + kSymbolGap;
        }
        if (showsText(segment)) {
            painter.setPen(ink);
            const QRectF words(left, place.top(), place.right() - left + 1, place.height());
            painter.drawText(mirrored(words, place, layoutDirection()), Qt::AlignVCenter | Qt::AlignLeft, segment.text);
        }
    }
}

int SegmentedPicker::segmentAt(const QPoint &position) const
{
    for (int i = 0; i < m_segments.size(); ++i) {
        if (segmentRect(i).adjusted(0, -2, 0, 2).contains(position))
            return i;
    }
    return -1;
}

int SegmentedPicker::nextEnabled(int from, int step) const
{
    while (from >= 0 && from < m_segments.size() && m_disabled.contains(from))
        from += step;
    return from; // beyond the ends when there is none
}

void SegmentedPicker::choose(int index)
{
    if (index < 0 || index >= m_segments.size() || index == m_current || m_disabled.contains(index))
        return;
    const QRectF from = segmentRect(m_current);
    setCurrent(index);
    if (const int duration = motionDuration(this, Theme::Motion::press)) {
        m_slide.setDuration(duration);
        m_slide.setStartValue(from);
        m_slide.setEndValue(QRectF(segmentRect(index)));
        m_slide.start();
    }
    Q_EMIT chosen(index);
}

void SegmentedPicker::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        choose(segmentAt(event->position().toPoint()));
}

void SegmentedPicker::mouseMoveEvent(QMouseEvent *event)
{
    if (const int over = segmentAt(event->position().toPoint()); over != std::exchange(m_hovered, over))
        update();
}

void SegmentedPicker::leaveEvent(QEvent *)
{
    m_hovered = -1;
    update();
}

void SegmentedPicker::focusInEvent(QFocusEvent *event)
{
    QWidget::focusInEvent(event);
    tellOfChoice(this, -1);
}

void SegmentedPicker::keyPressEvent(QKeyEvent *event)
{
    const int last = static_cast<int>(m_segments.size()) - 1;
    const int right = layoutDirection() == Qt::RightToLeft ? -1 : 1;
    switch (event->key()) {
    case Qt::Key_Left:
        return choose(nextEnabled(m_current - right, -right));
    case Qt::Key_Right:
        return choose(nextEnabled(m_current + right, right));
    case Qt::Key_Up:
        return choose(nextEnabled(m_current - 1, -1));
    case Qt::Key_Down:
        return choose(nextEnabled(m_current + 1, 1));
    case Qt::Key_Home:
        return choose(nextEnabled(0, 1));
    case Qt::Key_End:
        return choose(nextEnabled(last, -1));
    default:
        QWidget::keyPressEvent(event);
    }
}

bool SegmentedPicker::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        // A segment that shows its symbol alone tells its name.
        const int over = segmentAt(static_cast<QHelpEvent *>(event)->pos());
        setToolTip(over >= 0 && !showsText(m_segments[over]) ? m_segments[over].text : QString());
    }
    return QWidget::event(event);
}
