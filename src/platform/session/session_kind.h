#pragma once

#include "base/result.h"

#include <QString>

// Which adapters serve a session.
enum class SessionKind { X11, Wayland, None };

// By LUMENPOST_PLATFORM ("x11", "wayland" or "null") where it is set, else by what the session tells of
// itself and the display that there is. Nothing is connected.
SessionKind sessionKind();

// The sentence for the user when there is no screen to work with; empty when there is one.
QString whyNoScreen();

// Whether windows can be shown: the display answers. To be asked before the toolkit starts, which ends the
// program when it doesn't.
Result<void> reachDisplay();

// Makes the toolkit show its windows by the same display that the adapters work with, whatever else the
// session has, unless the user chose one. Before the toolkit starts.
void matchToolkit();

// Whether the display has gone away under a program that shows windows.
bool isDisplayLost();
