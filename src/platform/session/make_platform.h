#pragma once

#include "platform/platform.h"

// The ports of this session: X11, Wayland or none, decided from the environment; LUMENPOST_PLATFORM ("x11",
// "wayland", "null") overrides it. Needs an application object, a QCoreApplication will do. Cheap:
// connections are opened when a port is first asked.
Platform makePlatform();
