#include "shell/shortcut_use.h"

#include "settings/app_settings.h"
#include "settings/capture_preset_store.h"
#include "settings/texts.h"
#include "shell/texts.h"

QString ownUse(const AppSettings &prefs, const CapturePresetStore &presets, const KeyCombo &combo,
               const QString &except)
{
    for (const HotKeyInfo &info : kHotKeys) {
        if (except != QLatin1String(info.rawValue) && prefs.hotkey(info.action) == combo)
            return SettingsTexts::tr(info.title);
    }
    for (const CapturePreset &preset : presets.presets()) {
        if (except != preset.id.toString() && preset.hotkey == combo)
            return preset.name;
    }
    for (const ExtraShortcut &extra : prefs.extraShortcuts()) {
        const bool isPanel = extra.command == ExtraShortcut::Command::Panel;
        if (extra.combo == combo && !(isPanel && except == QLatin1String(kPanelShortcut)))
            return isPanel ? ShellTexts::tr("Open the capture panel") : ShellTexts::tr("Print key");
    }
    return {};
}
