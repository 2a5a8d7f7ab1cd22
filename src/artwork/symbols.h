#pragma once

#include <QColor>
#include <QIcon>
#include <QImage>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QStringList>

class QPainter;

// The program's icons, by the names its texts and projects use for them ("checkmark.circle.fill").
// symbols.txt says which icon stands for which name. A name that isn't there has no picture and paints
// nothing.
//
// Stateless but for a cache of rendered pictures; callable from any thread.
namespace Symbols {

bool exists(const QString &name);
QStringList names();

// A premultiplied picture of side × side pixels with the symbol in `color`; null when there is none. All
// symbols share one optical size in it, with a small margin.
QImage image(const QString &name, int side, const QColor &color);

// Paints the symbol into a square, as sharp as the painter's device allows at its present scale. `square` is
// in the painter's coordinates; a rectangle that isn't square gets the symbol in its middle.
void paint(QPainter &painter, const QRectF &square, const QString &name, const QColor &color);

// For buttons, menus and rows: sharp at any size and device scale, paler when disabled. A null icon when
// there is none.
QIcon icon(const QString &name, const QColor &color);

// What the symbol really covers: a rectangle in fractions of its square. Empty when there is none.
QRectF ink(const QString &name);

// The colours of a symbol that stands on the picture itself. `ground` is the colour of the shape; `figure`,
// when valid, fills what is cut out of a badge: the tick of "checkmark.circle.fill".
struct Palette {
    QColor ground;
    QColor figure;
};

// A premultiplied picture of `pixels` that the symbol's ink fills from edge to edge; null when there is none.
QImage inkImage(const QString &name, const QSize &pixels, const Palette &palette);

} // namespace Symbols
