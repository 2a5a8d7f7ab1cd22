#pragma once

#include "settings/key_combo.h"

#include <QString>

class AppSettings;
class CapturePresetStore;

// Which shortcut of the program's own is meant, so that one may keep what it has: the raw value of an action,
// the id of a preset, or kPanelShortcut.
inline constexpr const char *kPanelShortcut = "panel";

// The name of what uses a combination in this program; empty when nothing but `except` does.
QString ownUse(const AppSettings &prefs, const CapturePresetStore &presets, const KeyCombo &combo,
               const QString &except);
