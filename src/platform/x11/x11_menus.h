#pragma once

class X11Connection;

// Whether a menu is open now: one of ours, or a window of another program that no window manager handles and
// that calls itself a menu. A program that doesn't say so has none as far as one can tell.
bool isMenuOpen(const X11Connection &connection);
