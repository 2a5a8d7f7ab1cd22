#include "platform/command_keys.h"
#include "platform/permissions.h"
#include "shell/permission_monitor.h"
#include "shell/pieces.h"
#include "shell/preset_editor.h"
#include "shell/settings_page.h"
#include "shell/settings_view.h"
#include "shell/shell_test.h"
#include "shell/status_row.h"
#include "shell/welcome_view.h"
#include "support/accessible_walk.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>

namespace {

QStringList shownTitles(const QWidget &in)
{
    QStringList titles;
    for (const auto *row : in.findChildren<SettingsRow *>()) {
        if (row->isVisibleTo(&in) && !row->title().isEmpty())
            titles += row->title();
    }
    return titles;
}

template <typename Control>
Control *control(const QWidget &in, const QString &name)
{
    for (auto *found : in.findChildren<Control *>()) {
        if (found->accessibleName() == name)
            return found;
    }
    return nullptr;
}

} // namespace

TEST_F(ShellTest, ASearchGoesOverAllPagesAndOpensNoneForGood)
{
    SettingsView view(settingsParts());
    view.show();
    EXPECT_TRUE(shownTitles(view).contains("Save captures to"));
    view.search("SHUTTER");
    EXPECT_EQ(shownTitles(view), QStringList("Play shutter sound"));
    view.search("record");
    EXPECT_THAT(shownTitles(view),
                testing::IsSupersetOf({QString("Start / stop recording"), QString("Record microphone")}));
    view.search("no such words");
    EXPECT_TRUE(shownTitles(view).isEmpty());
    view.search({});
    EXPECT_FALSE(shownTitles(view).contains("Record microphone"));
    EXPECT_TRUE(shownTitles(view).contains("Play shutter sound"));
    prefs.setSettingsTab("recording");
    EXPECT_TRUE(shownTitles(view).contains("Record microphone"));
}

TEST_F(ShellTest, ChangesAreStoredAtOnceAndThoseMadeElsewhereAreShown)
{
    SettingsView view(settingsParts());
    view.show();
    auto *sound = control<ToggleSwitch>(view, "Play shutter sound");
    ASSERT_NE(sound, nullptr);
    QTest::keyClick(sound, Qt::Key_Space);
    EXPECT_FALSE(prefs.shutterSound());
    prefs.setShutterSound(true);
    EXPECT_TRUE(QTest::qWaitFor([sound] { return sound->isChecked(); }, 3000));
    auto *accounts = control<ToggleSwitch>(view, "Bank accounts (IBAN)");
    ASSERT_NE(accounts, nullptr);
    EXPECT_TRUE(accounts->isChecked());
    QTest::keyClick(accounts, Qt::Key_Space);
    EXPECT_EQ(prefs.privateKindsOff(), QStringList("iban"));
    prefs.setPrivateKind("iban", true);
    EXPECT_TRUE(QTest::qWaitFor([accounts] { return accounts->isChecked(); }, 3000));
    auto *days = control<Picker>(view, "Delete old captures");
    prefs.setAutoDeleteDays(17); // someone wrote it into the file
    EXPECT_TRUE(QTest::qWaitFor([days] { return days->currentData().toInt() == 17; }, 3000));
}

TEST_F(ShellTest, AKeyThatWasTypedIsStoredWhenTheWindowCloses)
{
    prefs.setSettingsTab("ai");
    SettingsView view(settingsParts());
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    view.activateWindow();
    auto *field = control<QLineEdit>(view, "Anthropic API key");
    ASSERT_NE(field, nullptr);
    EXPECT_EQ(field->echoMode(), QLineEdit::Password);
    field->setFocus();
    QTest::keyClicks(field, "sk-ant-1");
    view.close();
    EXPECT_EQ(machine.secrets.items.value({AppSettings::kApiKeyAccount, AppSettings::kService}), "sk-ant-1");
    EXPECT_FALSE(defaults.contains("apiKey"));
}

TEST_F(ShellTest, APresetRowShowsTheStoreAndGoesWithItsPreset)
{
    prefs.setSettingsTab("presets");
    SettingsView view(settingsParts());
    view.show();
    const auto editors = [&view] { return view.findChildren<PresetEditor *>(); };
    ASSERT_EQ(editors().size(), 3);
    PresetEditor *first = editors().constFirst();
    for (auto *button : first->findChildren<QAbstractButton *>()) {
        if (button->text() == "Delay" || button->text() == "Add Shortcut")
            button->click();
    }
    const CapturePreset preset = presets.presets().constFirst();
    EXPECT_TRUE(preset.options.delay);
    EXPECT_EQ(preset.hotkey, CapturePresetStore::suggestedHotkey(0));
    presets.remove(preset);
    EXPECT_TRUE(QTest::qWaitFor([&] { return editors().size() == 2; }, 3000));
}

TEST_F(ShellTest, RestoringTheDefaultsLetsThePrintKeyGo)
{
    prefs.setPrintKeys(true);
    prefs.setPanelHotkey({9, KeyCombo::Option});
    EXPECT_EQ(prefs.extraShortcuts().size(), 5);
    prefs.setSettingsTab("shortcuts");
    SettingsView view(settingsParts());
    for (auto *button : view.findChildren<QPushButton *>()) {
        if (button->text() == "Restore Defaults")
            button->click();
    }
    EXPECT_EQ(prefs.extraShortcuts().size(), 1);
    EXPECT_NE(prefs.panelHotkey(), (KeyCombo{9, KeyCombo::Option}));
}

TEST_F(ShellTest, WhereTheDesktopGivesNoShortcutsThePageShowsLinesForItAndBlamesNobody)
{
    struct Keys : CommandKeys {
        QString lines(const QList<CommandKey> &all) const override
        {
            QString text;
            for (const CommandKey &key : all)
                text += key.key + '=' + key.command + '\n';
            return text;
        }
        QFuture<Result<void>> set(const QList<CommandKey> &) override { return {}; }
    } keys;
    prefs.setSettingsTab("shortcuts");
    for (const HotKeyInfo &info : kHotKeys)
        problems.insert(info.defaultCombo().display(), "none");
    SettingsParts parts = settingsParts();
    parts.commandKeys = &keys;
    SettingsView view(parts);
    view.show();
    const auto all = [&view] {
        QString text;
        for (const QLabel *label : view.findChildren<QLabel *>())
            text += label->text() + '\n';
        return text;
    };
    EXPECT_TRUE(all().contains("C=lumenpost capture region\nF=lumenpost lumenpost://capture/screen"));
    EXPECT_FALSE(all().contains("taken"));
    prefs.setHotkeys({{HotKeyAction::Capture, KeyCombo{11, KeyCombo::Control}}});
    EXPECT_TRUE(QTest::qWaitFor([&] { return all().contains("B=lumenpost capture region\n"); }));
}

TEST_F(ShellTest, AGrantIsToldOnceAndTurnsTheButtonIntoAMark)
{
    machine.permissions.statuses.insert(Permission::Microphone, PermissionStatus::NotAsked);
    PermissionMonitor monitor(machine.permissions);
    QSignalSpy changed(&monitor, &PermissionMonitor::changed);
    const std::unique_ptr<StatusRow> row(
        makePermissionRow(Permission::Microphone, machine.permissions, monitor));
    const auto shown = [&row] {
        QStringList words;
        for (const QLabel *label : row->findChildren<QLabel *>()) {
            if (!label->isHidden() && label->text() == "Granted")
                words += label->text();
        }
        for (const QPushButton *each : row->findChildren<QPushButton *>()) {
            if (!each->isHidden())
                words += each->text();
        }
        return words;
    };
    EXPECT_EQ(shown(), QStringList{"Allow…"});
    monitor.refresh();
    EXPECT_EQ(changed.count(), 0);
    machine.permissions.statuses.insert(Permission::Microphone, PermissionStatus::Granted);
    monitor.refresh();
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(shown(), QStringList{"Granted"});
    machine.permissions.statuses.insert(Permission::Microphone, PermissionStatus::Denied);
    monitor.refresh();
    EXPECT_EQ(shown(), QStringList{"Open Settings"});
}

TEST_F(ShellTest, TheGuideHasThreePagesAndShowsTheShortcutThatIsStored)
{
    prefs.setHotkeys({{HotKeyAction::Capture, KeyCombo{40, KeyCombo::Option}}});
    int tried = 0, finished = 0;
    WelcomeView guide({prefs, machine.permissions, holders, [&] { ++tried; }, [&] { ++finished; }});
    guide.show();
    const auto button = [&guide](const QString &text) -> QPushButton * {
        for (auto *found : guide.findChildren<QPushButton *>()) {
            if (found->isVisibleTo(&guide) && found->text() == text)
                return found;
        }
        return nullptr;
    };
    EXPECT_EQ(button("Back"), nullptr);
    button("Continue")->click();
    EXPECT_NE(button("Back"), nullptr);
    QTest::keyClick(&guide, Qt::Key_Return);
    EXPECT_EQ(button("Continue"), nullptr);
    EXPECT_NE(control<QWidget>(guide, "Alt+K"), nullptr);
    button("Capture Now")->click();
    button("Done")->click();
    EXPECT_EQ(tried, 1);
    EXPECT_EQ(finished, 1);
}

TEST_F(ShellTest, ReadersAndTheKeyboardGetEverywhere)
{
    for (const char *page : {"general", "shortcuts", "presets", "recording", "ai", "help"}) {
        SCOPED_TRACE(page);
        prefs.setSettingsTab(page);
        SettingsView view(settingsParts());
        view.show();
        AccessibleWalk::expectUsable(view, 3, 2);
    }
    WelcomeView guide({prefs, machine.permissions, holders, [] {}, [] {}});
    guide.show();
    AccessibleWalk::expectUsable(guide, 1, 1);
}
