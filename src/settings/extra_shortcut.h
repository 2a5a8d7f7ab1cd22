#pragma once

#include "settings/key_combo.h"

// A system-wide shortcut beside those of the nine actions: the capture panel's own, and the set of the Print key.
struct ExtraShortcut {
    enum class Command { Panel, Region, Screen, Window, Delayed };

    Command command = Command::Panel;
    KeyCombo combo;

    bool operator==(const ExtraShortcut &) const = default;
};
