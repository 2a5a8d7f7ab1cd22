#pragma once

#include "settings/key_combo.h"

#include <QString>
#include <array>
#include <optional>

// The actions that have a system-wide shortcut.
enum class HotKeyAction {
    Capture,
    FullScreen,
    Delayed,
    GrabText,
    Scrolling,
    Record,
    Steps,
    Library,
    PinLast
};

struct HotKeyInfo {
    HotKeyAction action;
    const char *rawValue; // what the settings store
    const char *title;    // of its row in the settings
    int defaultKeyCode;   // with ⌃ and ⇧

    KeyCombo defaultCombo() const { return {defaultKeyCode, KeyCombo::Control | KeyCombo::Shift}; }
};

// In the order of registration and of the settings' rows.
inline constexpr std::array<HotKeyInfo, 9> kHotKeys{{
    {HotKeyAction::Capture, "capture", "Capture (panel mode)", 8},
    {HotKeyAction::FullScreen, "fullScreen", "Capture full screen", 3},
    {HotKeyAction::Delayed, "delayed", "Capture in 3 seconds", 2},
    {HotKeyAction::GrabText, "grabText", "Grab text", 17},
    {HotKeyAction::Scrolling, "scrolling", "Scrolling capture", 1},
    {HotKeyAction::Record, "record", "Start / stop recording", 15},
    {HotKeyAction::Steps, "steps", "Record steps (how-to guide)", 5},
    {HotKeyAction::Library, "library", "Open Library", 37},
    {HotKeyAction::PinLast, "pinLast", "Pin last capture", 35},
}};

inline const HotKeyInfo &hotKeyInfo(HotKeyAction action)
{
    return kHotKeys[static_cast<size_t>(action)];
}

inline std::optional<HotKeyAction> hotKeyAction(const QString &rawValue)
{
    for (const HotKeyInfo &info : kHotKeys) {
        if (rawValue == QLatin1String(info.rawValue))
            return info.action;
    }
    return std::nullopt;
}
