#include "recording/recording_extras.h"

#include <algorithm>
#include <utility>

namespace {

// Keys that write no text, by the program's key codes.
constexpr std::pair<int, const char *> kKeys[] = {
    {36, "↩"},  {48, "⇥"},  {49, "Space"}, {51, "⌫"},  {53, "⎋"},
    {117, "⌦"}, {123, "←"}, {124, "→"},    {125, "↓"}, {126, "↑"},
};

constexpr double kAboveEdge = 40;
constexpr double kLeastWidth = 80;
constexpr double kAroundWidth = 36, kAroundHeight = 20;

} // namespace

std::optional<QString> KeyBadge::label(const KeyStroke &stroke)
{
    const auto key = std::ranges::find(kKeys, stroke.keyCode, &std::pair<int, const char *>::first);
    const bool isNamed = key != std::end(kKeys);
    const bool isShortcut =
        stroke.modifiers.testAnyFlags(Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    if (!isShortcut && !isNamed)
        return std::nullopt;
    QString modifiers;
    for (const auto &[modifier, sign] :
         {std::pair(Qt::MetaModifier, u'⌃'), std::pair(Qt::AltModifier, u'⌥'),
          std::pair(Qt::ShiftModifier, u'⇧'), std::pair(Qt::ControlModifier, u'⌘')}) {
        if (stroke.modifiers.testFlag(modifier))
            modifiers += sign;
    }
    const QString text = isNamed ? QString::fromUtf8(key->second) : stroke.character.toUpper();
    // A modifier that is pressed by itself writes nothing, and is no shortcut yet.
    if (text.isEmpty())
        return std::nullopt;
    return modifiers.isEmpty() ? text : modifiers + QLatin1Char(' ') + text;
}

QRectF KeyBadge::frame(const QSizeF &text, const QRectF &region)
{
    const QSizeF size(std::max(text.width() + kAroundWidth, kLeastWidth), text.height() + kAroundHeight);
    return {QPointF(region.center().x() - size.width() / 2, region.bottom() - kAboveEdge - size.height()),
            size};
}

QRectF ClickRipple::frame() const
{
    return {center - QPointF(kSize / 2, kSize / 2), QSizeF(kSize, kSize)};
}

QColor ClickRipple::color() const
{
    return button == PointerPress::Button::Right ? QColor(255, 149, 0)
                                                 : QColor::fromRgbF(0.45F, 0.38F, 0.98F);
}

std::optional<ClickRipple> ClickRipple::of(const PointerPress &press)
{
    if (press.button == PointerPress::Button::Middle)
        return std::nullopt;
    return ClickRipple{press.position, press.button};
}

ClickRipple::Look ClickRipple::lookAt(double since, bool reducesMotion)
{
    constexpr double kFirstScale = 0.3;
    const double part = std::clamp(since / kDuration, 0.0, 1.0);
    return {reducesMotion ? 1 : kFirstScale + (1 - kFirstScale) * part, 1 - part};
}

void Strokes::press(QPointF point)
{
    m_current = {point};
}

void Strokes::drag(QPointF point)
{
    if (!m_current.isEmpty())
        m_current.append(point);
}

void Strokes::release()
{
    if (m_current.size() >= 2)
        m_done.append(m_current);
    m_current.clear();
}

void Strokes::clear()
{
    m_done.clear();
    m_current.clear();
}

QList<QList<QPointF>> Strokes::all() const
{
    return m_current.isEmpty() ? m_done : m_done + QList<QList<QPointF>>{m_current};
}

QRectF WebcamBubble::frame(const QRectF &region)
{
    return {QPointF(region.right() - kSize - kMargin, region.bottom() - kSize - kMargin),
            QSizeF(kSize, kSize)};
}

QString elapsedText(double seconds)
{
    const auto whole = qint64(std::max(seconds, 0.0));
    return QString::asprintf("%lld:%02lld", whole / 60, whole % 60);
}
