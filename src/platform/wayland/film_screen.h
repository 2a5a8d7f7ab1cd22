#pragma once

#include "platform/screens.h"

// The screen that shows most of an area, in pixels of the whole desktop; one without an id when none does.
Screen filmedScreen(const QList<Screen> &screens, const QRect &area);
