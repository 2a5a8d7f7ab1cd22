#pragma once

#include <QWidget>

// What all small windows that float over other programs share: they never take the keyboard, and they are
// rounded whether or not a compositor mixes windows.
namespace Floating {

// True when the screen mixes translucent windows.
bool isComposited();
// Window flags and attributes for a panel above all windows that leaves the focus where it is.
void prepare(QWidget *panel);
// Cuts the window to a rounded rectangle where it can't be translucent. Call when its size changes.
void applyShape(QWidget *panel, qreal radius);
// The dark material with a thin edge, over the whole widget.
void paintMaterial(QWidget *panel, qreal radius);
// Puts a panel's dark palette, in which text is white, on it and all it holds.
void useDarkPalette(QWidget *panel);

} // namespace Floating
