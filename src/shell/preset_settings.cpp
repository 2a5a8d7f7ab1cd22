#include "shell/settings_pages.h"

#include "settings/capture_preset_store.h"
#include "shell/preset_editor.h"
#include "shell/settings_page.h"
#include "shell/texts.h"

#include <QPushButton>

namespace {

// Keeps one row for each preset of the store.
void showPresets(SettingsPage *page, const SettingsParts &parts, QHash<QUuid, SettingsRow *> &rows)
{
    QHash<QUuid, SettingsRow *> kept;
    for (const CapturePreset &preset : parts.presets.presets()) {
        SettingsRow *row = rows.take(preset.id);
        if (!row)
            row = page->addWide(new PresetEditor(parts, preset.id),
                                preset.name + QLatin1Char(' ') +
                                    CapturePresetStore::word(preset.captureMode()) + QLatin1Char(' ') +
                                    ShellTexts::tr("Shortcut"));
        row->findChild<PresetEditor *>()->refresh();
        kept.insert(preset.id, row);
    }
    for (SettingsRow *gone : std::as_const(rows))
        page->remove(gone);
    rows = kept;
}

} // namespace

SettingsPage *SettingsPages::makePresets(const SettingsParts &parts)
{
    auto *page = new SettingsPage(ShellTexts::tr("Presets"));
    page->beginSection();
    page->addNote(
        ShellTexts::tr("Presets appear in the capture panel. Give one a shortcut to run it from anywhere."));
    const auto rows = std::make_shared<QHash<QUuid, SettingsRow *>>();
    const auto show = [page, parts, rows] { showPresets(page, parts, *rows); };
    show();
    page->onRefresh(show);
    return page;
}
