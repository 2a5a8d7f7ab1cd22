#pragma once

#include <QString>

// Whether the desktop's session is a Wayland one, whose screen no X server shows. Told by the session itself:
// a DISPLAY is there too.
bool isWaylandSession();

// The sentence for the user when the screen of such a session is wanted.
QString whyNoWaylandScreen();
