#pragma once

#include <QString>

// Which adapters serve a session.
enum class SessionKind { X11, None };

// By LUMENPOST_PLATFORM ("x11" or "null") where it is set, else by the display that there is. Nothing is
// connected.
SessionKind sessionKind();

// The sentence for the user when there is no screen to work with; empty when there is one.
QString whyNoScreen();
