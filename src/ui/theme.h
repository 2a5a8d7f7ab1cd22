#pragma once

#include <QColor>
#include <QEasingCurve>
#include <QFont>
#include <QPalette>
#include <QString>

class QPainter;
class QRectF;
class QWidget;

// The look of every window in one place: colours, type, space, radii and durations. Nothing else in the
// program names a colour, a size of type or a duration of its own.
//
// Lengths are points, colours sRGB. Which of the two colour sets serves is told by the palette that a widget
// was given, so a widget can be tried in either without a global switch.
namespace Theme {

struct Tokens {
    bool dark = false;
    bool highContrast = false;
    QColor window;
    QColor surface; // bars, cards, fields
    QColor raised;  // menus, panels, sheets
    QColor raisedEdge;
    QColor raisedShadow;
    int raisedShadowOffset = 0;
    int raisedShadowBlur = 0;
    QColor text;
    QColor secondary;
    QColor disabled;
    QColor hairline; // parts things
    QColor edge;     // outlines what can be used: at least 3:1 on each of the grounds
    QColor accent;     // fills, rings, marks
    QColor accentText; // text and icons in the accent colour
    QColor accentFill; // under text: a trifle darker than the accent, which is too light for small white type
    QColor onAccent;   // text on an accent fill
    QColor accentWash; // selected
    QColor accentHover; // pointer over something selected
    QColor hover;       // pointer over something plain
    QColor pressed;
    QColor track; // of pickers, sliders, progress
    QColor success;
    QColor warning;
    QColor danger;
};

const Tokens &light();
const Tokens &dark();
// For who asks the desktop for more contrast: black and white, every outline drawn in full.
const Tokens &highContrastLight();
const Tokens &highContrastDark();
// The set that belongs to the palette's window colour.
const Tokens &tokens(const QPalette &palette);
const Tokens &tokens(const QWidget *widget);
// A palette made of the set, which every widget of the program inherits.
QPalette palette(const Tokens &tokens);

// The dark material of toasts, HUDs, tips and badges, in both themes. Less than opaque only where a
// compositor mixes windows.
QColor material(bool translucent);
QColor onMaterial();
QColor onMaterialSecondary();
QColor materialEdge();
// Around a picture that is being looked at: grey 0.15 in both themes.
QColor canvasSurround();
// Behind a sheet.
QColor dim();

// Said with their group, as Space::group.
// NOLINTBEGIN(readability-identifier-naming)
namespace Space {
constexpr int unit = 4;
constexpr int inside = 8;   // inside controls
constexpr int group = 12;   // between groups
constexpr int margin = 16;  // of windows
constexpr int section = 24; // between sections
} // namespace Space

namespace Radius {
constexpr qreal control = 6;
constexpr qreal card = 10;
constexpr qreal panel = 12;
} // namespace Radius

namespace Size {
constexpr int target = 28;    // the least a pointer has to hit
constexpr int barButton = 32; // height
constexpr int barIcon = 18;
constexpr int rowIcon = 16;
constexpr int menuRow = 28;
constexpr int swatch = 20;
constexpr int focusRing = 2; // thickness, and distance from the control
constexpr int field = 30;
} // namespace Size

// Milliseconds.
namespace Motion {
constexpr int press = 120;
constexpr int panel = 180;
constexpr int rise = 4; // points a panel rises while it fades in
inline QEasingCurve ease()
{
    return QEasingCurve::OutCubic;
}
} // namespace Motion
// NOLINTEND(readability-identifier-naming)

enum class Type { Caption = 11, Control = 12, Body = 13, Title = 15, Heading = 20, Welcome = 28 };

QFont font(Type type, QFont::Weight weight = QFont::Normal);
QFont font(qreal points, QFont::Weight weight = QFont::Normal);

// Fills a line of the theme that is one point thick as whole device pixels, rounded down and at least one, so
// that all are equally thick at every scale.
void fillHairline(QPainter &painter, const QRectF &line, const QColor &color);

// Draws one line whose digits all take the same width, so that a running number does not tremble.
void drawTabular(QPainter &painter, const QRectF &rect, Qt::Alignment alignment, const QString &text);
qreal tabularWidth(const QFont &font, const QString &text);

} // namespace Theme
