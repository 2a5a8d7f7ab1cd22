#include "ui/theme.h"

#include "artwork/fonts.h"
#include "base/colors.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QStyle>
#include <QWidget>

namespace Theme {
namespace {

QColor rgba(QRgb rgb, int alpha = 255)
{
    QColor color(rgb);
    color.setAlpha(alpha);
    return color;
}

Tokens makeLight()
{
    Tokens t;
    t.dark = false;
    t.window = 0xF7F7FA;
    t.surface = 0xFFFFFF;
    t.raised = 0xFFFFFF;
    t.raisedEdge = rgba(0x000000, 0x1A);
    t.raisedShadow = rgba(0x000000, 0x29);
    t.raisedShadowOffset = 8;
    t.raisedShadowBlur = 28;
    t.text = 0x1A1A21;
    t.secondary = 0x63636E;
    t.disabled = 0xA3A3AD;
    t.hairline = rgba(0x000000, 0x1F);
    t.edge = 0x85858F;
    t.accent = brandColor();
    t.accentText = 0x5A48E0; // the accent itself has too little contrast for small type on white
    t.accentFill = 0x6F5CF7;
    t.onAccent = 0xFFFFFF;
    t.accentWash = brandColor(0.12);
    t.accentHover = brandColor(0.20);
    t.hover = rgba(0x000000, 0x0D);
    t.pressed = rgba(0x000000, 0x1A);
    t.track = rgba(0x000000, 0x14);
    t.success = 0x1F9D55;
    t.warning = 0xC77700;
    t.danger = 0xD6383E;
    return t;
}

Tokens makeDark()
{
    Tokens t;
    t.dark = true;
    t.window = 0x1B1B20;
    t.surface = 0x26262C;
    t.raised = 0x2D2D34;
    t.raisedEdge = rgba(0xFFFFFF, 0x14);
    t.raisedShadow = rgba(0x000000, 0x80);
    t.raisedShadowOffset = 10;
    t.raisedShadowBlur = 32;
    t.text = 0xF2F2F5;
    t.secondary = 0xA6A6B0;
    t.disabled = 0x6B6B75;
    t.hairline = rgba(0xFFFFFF, 0x1F);
    t.edge = 0x80808A;
    t.accent = brandColor();
    t.accentText = 0xA195FF;
    t.accentFill = 0x6F5CF7;
    t.onAccent = 0xFFFFFF;
    t.accentWash = brandColor(0.22);
    t.accentHover = brandColor(0.32);
    t.hover = rgba(0xFFFFFF, 0x12);
    t.pressed = rgba(0xFFFFFF, 0x1F);
    t.track = rgba(0xFFFFFF, 0x1A);
    t.success = 0x3CCB7F;
    t.warning = 0xF2A93B;
    t.danger = 0xFF6369;
    return t;
}

Tokens highContrast(Tokens t)
{
    const QColor ground = t.dark ? Qt::black : Qt::white, ink = t.dark ? Qt::white : Qt::black;
    t.highContrast = true;
    t.window = t.surface = t.raised = ground;
    t.text = t.secondary = t.hairline = t.edge = t.raisedEdge = ink;
    t.disabled = t.dark ? QColor(0x9A9AA4) : QColor(0x5E5E68);
    t.accentText = t.accent = t.accentFill = t.dark ? QColor(0xC9C1FF) : QColor(0x3A2BB0);
    t.onAccent = ground;
    t.track = rgba(ink.rgb(), 0x30);
    t.hover = rgba(ink.rgb(), 0x26);
    t.pressed = rgba(ink.rgb(), 0x40);
    t.success = t.dark ? QColor(0x5CF09F) : QColor(0x0B6B36);
    t.warning = t.dark ? QColor(0xFFC766) : QColor(0x7A4900);
    t.danger = t.dark ? QColor(0xFF9498) : QColor(0xA1141A);
    return t;
}

} // namespace

const Tokens &light()
{
    static const Tokens tokens = makeLight();
    return tokens;
}

const Tokens &dark()
{
    static const Tokens tokens = makeDark();
    return tokens;
}

const Tokens &highContrastLight()
{
    static const Tokens tokens = highContrast(makeLight());
    return tokens;
}

const Tokens &highContrastDark()
{
    static const Tokens tokens = highContrast(makeDark());
    return tokens;
}

const Tokens &tokens(const QPalette &palette)
{
    const QColor window = palette.color(QPalette::Active, QPalette::Window);
    if (window.lightnessF() < 0.5f)
        return window == highContrastDark().window ? highContrastDark() : dark();
    return window == highContrastLight().window ? highContrastLight() : light();
}

const Tokens &tokens(const QWidget *widget)
{
    return tokens(widget->palette());
}

QPalette palette(const Tokens &t)
{
    QPalette palette;
    palette.setColor(QPalette::Window, t.window);
    palette.setColor(QPalette::WindowText, t.text);
    palette.setColor(QPalette::Base, t.surface);
    palette.setColor(QPalette::AlternateBase, t.window);
    palette.setColor(QPalette::ToolTipBase, material(false));
    palette.setColor(QPalette::ToolTipText, onMaterial());
    palette.setColor(QPalette::PlaceholderText, t.secondary);
    palette.setColor(QPalette::Text, t.text);
    palette.setColor(QPalette::Button, t.surface);
    palette.setColor(QPalette::ButtonText, t.text);
    palette.setColor(QPalette::BrightText, t.onAccent);
    palette.setColor(QPalette::Link, t.accentText);
    palette.setColor(QPalette::LinkVisited, t.accentText);
    palette.setColor(QPalette::Highlight, t.accentFill);
    palette.setColor(QPalette::HighlightedText, t.onAccent);
    palette.setColor(QPalette::Light, t.surface.lighter(110));
    palette.setColor(QPalette::Midlight, t.surface);
    palette.setColor(QPalette::Mid, t.dark ? t.surface.lighter(140) : t.window.darker(115));
    palette.setColor(QPalette::Dark, t.dark ? QColor(0x101014) : t.window.darker(150));
    palette.setColor(QPalette::Shadow, Qt::black);
    for (auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, t.disabled);
    return palette;
}

QColor material(bool translucent)
{
    return rgba(0x1B1B20, qRound(255 * (translucent ? 0.88 : 1.0)));
}
QColor onMaterial()
{
    return 0xFFFFFF;
}
QColor onMaterialSecondary()
{
    return 0xB9B9C3;
}
QColor materialEdge()
{
    return rgba(0xFFFFFF, 0x1F);
}
QColor canvasSurround()
{
    return QColor::fromRgbF(0.15f, 0.15f, 0.15f);
}
QColor dim()
{
    return rgba(0x000000, 0x40);
}

QFont font(Type type, QFont::Weight weight)
{
    return font(static_cast<qreal>(type), weight);
}

QFont font(qreal points, QFont::Weight weight)
{
    // The scale of a screen is in the painter already: a point is a logical pixel.
    return Fonts::font(Fonts::Design::System, points, weight);
}

void fillHairline(QPainter &painter, const QRectF &line, const QColor &color)
{
    const QTransform toDevice = painter.deviceTransform();
    const QRectF exact = toDevice.mapRect(line);
    const double thick = std::max(1.0, std::floor(std::min(exact.width(), exact.height())));
    QRectF whole(QPointF(std::round(exact.left()), std::round(exact.top())),
                 QPointF(std::round(exact.right()), std::round(exact.bottom())));
    if (exact.width() < exact.height())
        whole.setWidth(thick);
    else
        whole.setHeight(thick);
    painter.fillRect(toDevice.inverted().mapRect(whole), color);
}

namespace {

struct Cell {
    QString text;
    qreal width = 0;
    qreal inset = 0;
};

std::vector<Cell> tabularCells(const QFont &font, const QString &text)
{
    const QFontMetricsF metrics(font);
    qreal digit = 0;
    for (char c = '0'; c <= '9'; ++c)
        digit = qMax(digit, metrics.horizontalAdvance(QLatin1Char(c)));
    std::vector<Cell> cells;
    bool inWord = false;
    for (const QChar c : text) {
        if (c.isDigit()) {
            cells.push_back({c, digit, (digit - metrics.horizontalAdvance(c)) / 2});
            inWord = false;
        } else if (inWord) {
            cells.back().text += c;
        } else {
            cells.push_back({c, 0, 0});
            inWord = true;
        }
    }
    for (Cell &cell : cells) {
        if (cell.width == 0)
            cell.width = metrics.horizontalAdvance(cell.text);
    }
    return cells;
}

} // namespace

qreal tabularWidth(const QFont &font, const QString &text)
{
    qreal width = 0;
    for (const Cell &cell : tabularCells(font, text))
        width += cell.width;
    return width;
}

void drawTabular(QPainter &painter, const QRectF &rect, Qt::Alignment alignment, const QString &text)
{
    alignment = QStyle::visualAlignment(painter.layoutDirection(), alignment);
    // Words that run from the right stay whole: cell by cell their order would be lost.
    if (text.isRightToLeft()) {
        painter.drawText(rect, alignment | Qt::AlignAbsolute | Qt::AlignVCenter | Qt::TextSingleLine, text);
        return;
    }
    const auto cells = tabularCells(painter.font(), text);
    const Qt::LayoutDirection around = painter.layoutDirection();
    painter.setLayoutDirection(Qt::LeftToRight);
    qreal width = 0;
    for (const Cell &cell : cells)
        width += cell.width;
    const QFontMetricsF metrics(painter.font());
    qreal x = rect.left();
    if (alignment & Qt::AlignRight)
        x = rect.right() - width;
    else if (alignment & Qt::AlignHCenter)
        x = rect.center().x() - width / 2;
    const qreal baseline = rect.center().y() + (metrics.ascent() - metrics.descent()) / 2;
    for (const Cell &cell : cells) {
        painter.drawText(QPointF(x + cell.inset, baseline), cell.text);
        x += cell.width;
    }
    painter.setLayoutDirection(around);
}

} // namespace Theme
