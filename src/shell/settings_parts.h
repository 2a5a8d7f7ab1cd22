#pragma once

#include "base/result.h"
#include "settings/key_combo.h"

#include <QFuture>
#include <QString>
#include <functional>

class AppSettings;
class CapturePresetStore;
class CaptureSettings;
class CommandKeys;
class DesktopParts;
class InputMonitors;
class Library;
class NoticeBoard;
class Paths;
class Permissions;
class ShortcutHolders;
class Sounds;
class Workspace;

// What the settings window works on. A row whose operation is empty isn't shown.
struct SettingsParts {
    AppSettings &prefs;
    CaptureSettings &capture;
    CapturePresetStore &presets;
    Library &library;
    const Paths &paths;
    Permissions &permissions;
    DesktopParts &desktop;
    ShortcutHolders &holders;
    InputMonitors &monitors;
    Sounds &sounds;
    Workspace &workspace;
    NoticeBoard &notices;

    // Why a shortcut could not be registered; empty when it works.
    std::function<QString(const KeyCombo &)> registrationProblem = {};
    std::function<void()> showWelcome = {};
    // The path of the zip file.
    std::function<QFuture<Result<QString>>()> makeDiagnostics = {};
    std::function<Result<void>(const QString &path)> exportData = {};
    std::function<Result<void>(const QString &path)> importData = {};
    // Null where programs take shortcuts themselves.
    CommandKeys *commandKeys = nullptr;
};
