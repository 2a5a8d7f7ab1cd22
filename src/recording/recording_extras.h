#pragma once

#include "platform/input_monitor.h"

#include <QColor>
#include <QList>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <optional>

// What explains a film while it is made, as far as it needs no window: which keys are shown, where things
// stand and how they move. All in global points, y down; times in seconds.

// A shortcut that was pressed, over the film's lower edge.
namespace KeyBadge {

constexpr double kShown = 1.2;   // from the last shortcut on
constexpr double kFontSize = 26; // points, semibold
constexpr double kRadius = 12;
const QColor kGround = QColor::fromRgbF(0, 0, 0, 0.78F);

// Modifiers as signs (⌃ Super, ⌥ Alt, ⇧ Shift, ⌘ Ctrl), a blank and the key. Nothing for plain typing, which
// must never be seen: a key without any of Ctrl, Alt and Super, unless it is one of those that write no text.
std::optional<QString> label(const KeyStroke &stroke);
// For a text of that size, in the film's region.
QRectF frame(const QSizeF &text, const QRectF &region);

} // namespace KeyBadge

// A ring that spreads from a click and fades.
struct ClickRipple {
    static constexpr double kSize = 64; // of its window
    static constexpr double kInset = 6; // of the ring in it, at full size
    static constexpr double kStroke = 3;
    static constexpr double kFillAlpha = 0.25;
    static constexpr double kDuration = 0.55;
    static constexpr double kGone = 0.6; // after which the window goes

    QPointF center;
    PointerPress::Button button = PointerPress::Button::Left;

    QRectF frame() const;
    QColor color() const;
    // Nothing for the middle button.
    static std::optional<ClickRipple> of(const PointerPress &press);

    struct Look {
        double scale = 1;
        double opacity = 1;
    };
    // `since` the click.
    static Look lookAt(double since, bool reducesMotion);
};

// What is drawn by hand over the film.
class Strokes {
public:
    static constexpr double kWidth = 5;
    static constexpr double kShadowBlur = 3;
    static constexpr double kShadowAlpha = 0.4;

    void press(QPointF point);
    void drag(QPointF point);
    // A click without a drag leaves nothing.
    void release();
    void clear();

    // With the one that is being drawn last.
    QList<QList<QPointF>> all() const;
    bool isEmpty() const { return m_done.isEmpty() && m_current.isEmpty(); }

private:
    QList<QList<QPointF>> m_done;
    QList<QPointF> m_current;
};

// The round picture of a camera, in the region's lower right.
namespace WebcamBubble {

constexpr double kSize = 180;
constexpr double kMargin = 24;
constexpr double kBorder = 3;
QRectF frame(const QRectF &region);

} // namespace WebcamBubble

// "65" seconds as "1:05"; minutes aren't wrapped into hours.
QString elapsedText(double seconds);
