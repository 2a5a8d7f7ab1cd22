#include "shell/settings_pages.h"

#include "platform/shortcut_holders.h"
#include "settings/app_settings.h"
#include "settings/texts.h"
#include "shell/command_keys_section.h"
#include "shell/key_recorder.h"
#include "shell/pieces.h"
#include "shell/settings_page.h"
#include "shell/shortcut_field.h"
#include "shell/shortcut_use.h"
#include "shell/shortcut_words.h"
#include "shell/texts.h"

#include <QPushButton>

namespace {

void addField(SettingsPage *page, const SettingsParts &parts, const QString &title, const QString &identity,
              const std::function<KeyCombo()> &stored, const std::function<void(const KeyCombo &)> &store)
{
    auto *field = new ShortcutField(parts, stored(), identity, page);
    field->setRow(page->add(title, {}, field->recorder()));
    QObject::connect(field, &ShortcutField::chosen, page, store);
    page->onRefresh([field, stored] { field->show(stored()); });
}

// What is wrong with the keys of the Print set, one line each.
QString printProblems(const SettingsParts &parts)
{
    if (parts.commandKeys)
        return {};
    QStringList problems;
    for (const ExtraShortcut &extra : parts.prefs.extraShortcuts()) {
        if (extra.combo.keyCode != KeyCombo::kPrint || !parts.registrationProblem)
            continue;
        if (!parts.registrationProblem(extra.combo).isEmpty())
            problems += shortcutWords(extra.combo);
    }
    if (problems.isEmpty())
        return {};
    return ShellTexts::tr("Another program has taken %1.").arg(problems.join(QStringLiteral(", "))) +
           QLatin1Char(' ') + parts.holders.howToFree();
}

} // namespace

SettingsPage *SettingsPages::makeShortcuts(const SettingsParts &parts)
{
    AppSettings &prefs = parts.prefs;
    auto *page = new SettingsPage(ShellTexts::tr("Shortcuts"));
    if (parts.commandKeys)
        addCommandKeys(page, parts);
    page->beginSection();
    for (const HotKeyInfo &info : kHotKeys) {
        addField(
            page, parts, SettingsTexts::tr(info.title), QLatin1String(info.rawValue),
            [&prefs, action = info.action] { return prefs.hotkey(action); },
            [&prefs, action = info.action](const KeyCombo &combo) {
                auto hotkeys = prefs.hotkeys();
                hotkeys.insert(action, combo);
                prefs.setHotkeys(hotkeys);
            });
    }
    addField(
        page, parts, ShellTexts::tr("Open the capture panel"), QLatin1String(kPanelShortcut),
        [&prefs] { return prefs.panelHotkey(); },
        [&prefs](const KeyCombo &combo) { prefs.setPanelHotkey(combo); });

    page->beginSection();
    SettingsRow *print = page->addToggle(
        ShellTexts::tr("Use the Print key as well"),
        ShellTexts::tr("Print takes a region, Shift+Print the screen, Alt+Print the window in front, Ctrl+Print a "
                       "region after 3 seconds."),
        [&prefs] { return prefs.printKeys(); }, [&prefs](bool on) { prefs.setPrintKeys(on); });
    const auto showPrint = [print, parts] { print->setProblem(printProblems(parts)); };
    showPrint();
    page->onRefresh(showPrint);

    page->beginSection();
    auto *restore = new QPushButton(ShellTexts::tr("Restore Defaults"));
    QObject::connect(restore, &QPushButton::clicked, page, [&prefs] { prefs.resetHotkeys(); });
    page->add(ShellTexts::tr("All shortcuts as they were at first"), {}, restore);
    return page;
}
