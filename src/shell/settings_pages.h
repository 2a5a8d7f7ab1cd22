#pragma once

#include "shell/settings_parts.h"

class SettingsPage;
class QWidget;

// The pages of the settings window, each made when it is first shown or searched.
namespace SettingsPages {

SettingsPage *makeGeneral(const SettingsParts &parts);
SettingsPage *makeShortcuts(const SettingsParts &parts);
SettingsPage *makePresets(const SettingsParts &parts);
SettingsPage *makeRecording(const SettingsParts &parts);
SettingsPage *makeAiAndSharing(const SettingsParts &parts);
SettingsPage *makePermissionsAndHelp(const SettingsParts &parts);

// Tells an error over the window of `over`.
void showError(QWidget *over, const QString &title, const Error &error);

} // namespace SettingsPages
