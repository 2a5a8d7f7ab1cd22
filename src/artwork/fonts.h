#pragma once

#include <QFont>
#include <QString>

// The typefaces of the program and of what is written on pictures. Every one falls back to colour emoji.
// Letters are laid out without hinting, so a text keeps its proportions at every zoom.
namespace Fonts {

enum class Design { System, Rounded, Serif, Mono, Marker };

// `pixelSize` is rounded to whole pixels, at least 1.
QFont font(Design design, double pixelSize, QFont::Weight weight = QFont::Bold);
// The same for one pictograph, which wants the emoji before any letter.
QFont emoji(double pixelSize);

} // namespace Fonts
