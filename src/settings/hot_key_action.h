#pragma once

#include "settings/key_combo.h"

#include <QString>
#include <QtGlobal>
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
    const char *title;    // of its row in the settings, for SettingsTexts::tr
    int defaultKeyCode;   // with ⌃ and ⇧

    KeyCombo defaultCombo() const { return {defaultKeyCode, KeyCombo::Control | KeyCombo::Shift}; }
};

// In the order of registration and of the settings' rows.
inline constexpr std::array<HotKeyInfo, 9> kHotKeys{{
    {HotKeyAction::Capture, "capture", QT_TRANSLATE_NOOP("SettingsTexts", "Capture (panel mode)"), 8},
    {HotKeyAction::FullScreen, "fullScreen", QT_TRANSLATE_NOOP("SettingsTexts", "Capture full screen"), 3},
    {HotKeyAction::Delayed, "delayed", QT_TRANSLATE_NOOP("SettingsTexts", "Capture in 3 seconds"), 2},
    {HotKeyAction::GrabText, "grabText", QT_TRANSLATE_NOOP("SettingsTexts", "Grab text"), 17},
    {HotKeyAction::Scrolling, "scrolling", QT_TRANSLATE_NOOP("SettingsTexts", "Scrolling capture"), 1},
    {HotKeyAction::Record, "record", QT_TRANSLATE_NOOP("SettingsTexts", "Start / stop recording"), 15},
    {HotKeyAction::Steps, "steps", QT_TRANSLATE_NOOP("SettingsTexts", "Record steps (how-to guide)"), 5},
    {HotKeyAction::Library, "library", QT_TRANSLATE_NOOP("SettingsTexts", "Open Library"), 37},
    {HotKeyAction::PinLast, "pinLast", QT_TRANSLATE_NOOP("SettingsTexts", "Pin last capture"), 35},
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
