#pragma once

class SettingsPage;
struct SettingsParts;

// Where the desktop gives programs no shortcuts: which commands its own keys can run, and how they get there.
void addCommandKeys(SettingsPage *page, const SettingsParts &parts);
