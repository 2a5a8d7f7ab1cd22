#include "platform/input_monitor.h"
#include "shell/key_recorder.h"
#include "shell/settings_page.h"
#include "shell/shell_test.h"
#include "shell/shortcut_field.h"
#include "shell/shortcut_words.h"

#include <QLabel>
#include <QSignalSpy>

namespace {

constexpr KeyCombo kFree{9, KeyCombo::Control | KeyCombo::Shift}; // V

struct KeyRecorderTest : ShellTest {
    KeyRecorderTest()
    {
        recorder.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&recorder));
        recorder.activateWindow();
        QObject::connect(&recorder, &KeyRecorder::chosen, [this](const KeyCombo &combo) { chosen += combo; });
        QObject::connect(&recorder, &KeyRecorder::heardElsewhere,
                         [this](const KeyCombo &combo) { elsewhere += combo; });
    }
    KeyRecorder recorder{{prefs, machine.sounds, machine.inputMonitors}, kFree};
    QList<KeyCombo> chosen, elsewhere;
};

} // namespace

TEST_F(KeyRecorderTest, ListensWithAllShortcutsOffUntilACombinationCame)
{
    recorder.click();
    EXPECT_TRUE(prefs.isRecordingShortcut());
    EXPECT_EQ(recorder.text(), "Type shortcut…");
    QTest::keyClick(&recorder, Qt::Key_A);
    EXPECT_EQ(machine.sounds.beeps, 1);
    QKeyEvent held(QEvent::KeyPress, Qt::Key_K, Qt::MetaModifier, "k", true);
    QCoreApplication::sendEvent(&recorder, &held);
    EXPECT_TRUE(recorder.isListening());
    QTest::keyClick(&recorder, Qt::Key_K, Qt::MetaModifier | Qt::AltModifier);
    EXPECT_FALSE(prefs.isRecordingShortcut());
    EXPECT_THAT(chosen, testing::ElementsAre(KeyCombo{40, KeyCombo::Control | KeyCombo::Option}));
    EXPECT_EQ(recorder.text(), "Super+Alt+K");
}

TEST_F(KeyRecorderTest, EndsWithoutAChangeByEscASecondClickAndTheLossOfTheFocus)
{
    const std::function<void()> ends[] = {[this] { QTest::keyClick(&recorder, Qt::Key_Escape); },
                                          [this] { recorder.click(); }, [this] { recorder.hide(); }};
    for (const auto &end : ends) {
        recorder.show();
        recorder.click();
        ASSERT_TRUE(recorder.isListening());
        end();
        EXPECT_FALSE(recorder.isListening());
        EXPECT_FALSE(prefs.isRecordingShortcut());
        EXPECT_EQ(recorder.combo(), kFree);
    }
    EXPECT_TRUE(chosen.isEmpty());
}

TEST_F(KeyRecorderTest, TakesPrintWithoutAModifierAndDigitsByTheirPlace)
{
    recorder.click();
    QTest::keyClick(&recorder, Qt::Key_Print);
    EXPECT_THAT(chosen, testing::ElementsAre(KeyCombo{KeyCombo::kPrint, 0}));
    for (const auto &[sign, position, key] : {std::tuple(Qt::Key_Exclam, 10, 18), {Qt::Key_Equal, 19, 29}}) {
        const QKeyEvent shifted(QEvent::KeyPress, sign, Qt::ShiftModifier | Qt::ControlModifier,
                                quint32(position), 0, 0);
        EXPECT_EQ(comboOf(shifted), (KeyCombo{key, KeyCombo::Shift | KeyCombo::Command}));
    }
}

TEST_F(KeyRecorderTest, TellsOfACombinationThatAnotherProgramTook)
{
    recorder.click();
    KeyStroke stroke;
    stroke.keyCode = 8;
    stroke.modifiers = Qt::MetaModifier;
    machine.inputMonitors.type(stroke);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !elsewhere.isEmpty(); }, 3000));
    EXPECT_EQ(elsewhere.value(0), (KeyCombo{8, KeyCombo::Control}));
    EXPECT_TRUE(recorder.isListening());
    recorder.click();
    EXPECT_EQ(machine.inputMonitors.listeners(), 0);
}

TEST_F(ShellTest, AShortcutFieldNamesWhoHasTheCombination)
{
    ShortcutField field(settingsParts(), kFree, "capture");
    SettingsRow row("Capture", {}, field.recorder());
    field.setRow(&row);
    row.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&row));
    const auto says = [&row](const QString &text) {
        for (const QLabel *label : row.findChildren<QLabel *>()) {
            if (!label->isHidden() && label->text() == text)
                return true;
        }
        return false;
    };
    field.recorder()->click();
    QTest::keyClick(field.recorder(), Qt::Key_T, Qt::MetaModifier | Qt::ShiftModifier); // of "Grab text"
    EXPECT_TRUE(says("“Grab text” uses Super+Shift+T already."));
    EXPECT_TRUE(field.recorder()->isListening());
    field.recorder()->toggle();

    problems.insert(kFree.display(), "Taken.");
    holders.holders.insert({"V", int(Qt::MetaModifier | Qt::ShiftModifier)}, "xfce4-screenshooter");
    field.show(kFree);
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return says("Super+Shift+V is used by “xfce4-screenshooter”."); }, 3000));
}
