#pragma once

#include <QString>

// Whether the desktop's session is a Wayland one, whose screen no X server shows. Told by the session itself:
// a DISPLAY is there too.
bool isWaylandSession();

// The sentences for the user when such a session doesn't let a program do what is wanted.
QString whyNoWaylandScreen();
QString whyNoWaylandInput();
QString whyNoWaylandShortcuts();
