#pragma once

#include <QWidget>
#include <functional>

// What all small windows that float over other programs share: they never take the keyboard, and they are
// rounded whether or not a compositor mixes windows.
namespace Floating {

// True when the screen mixes translucent windows.
bool isComposited();
// Window flags and attributes for a panel above all windows that leaves the focus where it is.
void prepare(QWidget *panel);
// Where programs can't place their windows: is told of each floating one before it is shown, with the title
// by which it is known. Goes for those that are prepared or announced later.
using Placer = std::function<void(const QString &title, const QRect &frame)>;
void setPlacer(Placer placer);
// Has the placer told of a window that isn't prepared here, each time that it is shown.
void announce(QWidget *window);
// Cuts the window to a rounded rectangle where it can't be translucent. Call when its size changes.
void applyShape(QWidget *panel, qreal radius);
// The dark material with a thin edge, over the whole widget.
void paintMaterial(QWidget *panel, qreal radius);
// Puts a panel's dark palette, in which text is white, on it and all it holds.
void useDarkPalette(QWidget *panel);

} // namespace Floating
