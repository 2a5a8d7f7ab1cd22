#include "app/shortcuts.h"

#include "base/log.h"
#include "base/notice.h"
#include "fakes/fake_desktop.h"
#include "fakes/fake_hot_keys.h"
#include "settings/app_settings.h"
#include "settings/capture_preset_store.h"
#include "settings/capture_settings.h"
#include "settings/defaults.h"
#include "support/temporary_folder.h"

#include <QCoreApplication>
#include <QSet>
#include <gtest/gtest.h>

namespace {

constexpr int kControlShift = KeyCombo::Control | KeyCombo::Shift;

class ShortcutsTest : public testing::Test {
protected:
    ShortcutsTest()
    {
        QObject::connect(&shortcuts, &Shortcuts::performed, &shortcuts,
                         [this](HotKeyAction action) { performed.append(action); });
        QObject::connect(&shortcuts, &Shortcuts::presetCalled, &shortcuts,
                         [this](const CapturePreset &preset) { called.append(preset.name); });
    }
    bool press(int keyCode, int modifiers)
    {
        const bool isHeard = hotKeys.press(keyCode, modifiers);
        EXPECT_TRUE(performed.isEmpty() && called.isEmpty()); // never inside the event itself
        QCoreApplication::processEvents();
        return isHeard;
    }

    TemporaryFolder home;
    FakePaths paths{home.path()};
    FakeSecrets secrets;
    FakeLoginItem loginItem;
    FakeHotKeys hotKeys;
    NoticeBoard notices;
    Defaults defaults{QString()};
    AppSettings prefs{defaults, secrets, loginItem, paths, notices};
    CaptureSettings settings{defaults};
    CapturePresetStore presets{defaults, settings};
    QSet<HotKeyAction> missing;
    Shortcuts shortcuts{hotKeys, prefs, presets,
                        [this](HotKeyAction action) { return !missing.contains(action); }};
    QList<HotKeyAction> performed;
    QStringList called;
};

} // namespace

TEST_F(ShortcutsTest, LeaveOutWhatIsTakenAndListenUntilAFieldDoes)
{
    Log::setDirectory(home.path("log"));
    hotKeys.takenElsewhere.insert({8, kControlShift});
    shortcuts.registerHotkeys();
    EXPECT_EQ(hotKeys.registered.size(), 9); // with the panel's
    EXPECT_EQ(shortcuts.problem({8, kControlShift}), "Taken.");
    EXPECT_EQ(shortcuts.problem({3, kControlShift}), "");
    EXPECT_FALSE(press(8, kControlShift));
    EXPECT_TRUE(press(3, kControlShift));
    EXPECT_EQ(performed, QList<HotKeyAction>{HotKeyAction::FullScreen});

    prefs.setRecordingShortcut(true);
    EXPECT_TRUE(hotKeys.registered.isEmpty());
    hotKeys.takenElsewhere.clear(); // let go meanwhile
    prefs.setRecordingShortcut(false);
    EXPECT_EQ(shortcuts.problem({8, kControlShift}), "");
    EXPECT_TRUE(hotKeys.registered.contains({3, kControlShift}));
    Log::flush();
    QFile log(home.path("log/lumenpost.log"));
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    EXPECT_TRUE(log.readAll().contains("Shortcut ⌃⇧C of capture is not available: Taken."));
}

TEST_F(ShortcutsTest, GrabNoKeyOfAnActionThatCannotRun)
{
    missing.insert(HotKeyAction::Record);
    shortcuts.registerHotkeys();
    EXPECT_EQ(hotKeys.registered.size(), 9);
    EXPECT_FALSE(hotKeys.registered.contains({15, kControlShift}));
}

TEST_F(ShortcutsTest, CallThePresetAsItIsWhenTheKeyIsPressed)
{
    shortcuts.registerHotkeys();
    CapturePreset preset = presets.presets().first();
    preset.hotkey = CapturePresetStore::suggestedHotkey(0);
    presets.update(preset); // registers again
    preset.name = QStringLiteral("Renamed");
    presets.update(preset);
    EXPECT_TRUE(press(18, preset.hotkey->carbonModifiers));
    EXPECT_EQ(called, QStringList{"Renamed"});

    // Removed while its press waits in the queue.
    called.clear();
    ASSERT_TRUE(hotKeys.press(18, preset.hotkey->carbonModifiers));
    presets.remove(preset);
    QCoreApplication::processEvents();
    EXPECT_TRUE(called.isEmpty());
    EXPECT_FALSE(press(18, preset.hotkey->carbonModifiers));
}

TEST_F(ShortcutsTest, TakeThePrintKeyOnlyWhereItIsWanted)
{
    using Command = ExtraShortcut::Command;
    QList<Command> extras;
    QObject::connect(&shortcuts, &Shortcuts::extraCalled, [&extras](Command command) { extras += command; });
    shortcuts.registerHotkeys();
    EXPECT_FALSE(press(KeyCombo::kPrint, 0));
    prefs.setPrintKeys(true);
    for (const int modifiers : {0, int(KeyCombo::Shift), int(KeyCombo::Option), int(KeyCombo::Command)})
        EXPECT_TRUE(press(KeyCombo::kPrint, modifiers)) << modifiers;
    EXPECT_EQ(extras, QList<Command>({Command::Region, Command::Screen, Command::Window, Command::Delayed}));
    prefs.setPrintKeys(false);
    EXPECT_FALSE(press(KeyCombo::kPrint, 0));
}
