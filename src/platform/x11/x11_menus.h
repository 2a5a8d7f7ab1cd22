#pragma once

class X11Connection;

// Whether somebody has a menu open that may hold the keyboard: one that says so, an unmanaged window of the
// active program or of the window manager, or a window of our own that takes the keyboard. Not when a screen
// lock covers a screen.
bool isMenuOpen(const X11Connection &connection);
