#include "running_program.h"
#include "support/accessibility_bus.h"

// From the first key to the last without a pointer, and what a reader is told on the way.
class KeyboardRoad : public RunningProgram {
protected:
    void press(const QStringList &keys)
    {
        for (const QString &each : keys)
            key(each);
    }
    // Presses, and waits until the reader has heard it.
    void hears(const QStringList &keys, const QString &words)
    {
        bus.forget();
        press(keys);
        const bool heard = QTest::qWaitFor([&] { return !bus.spoken().filter(words).isEmpty(); }, 15000);
        EXPECT_TRUE(heard) << keys.join(' ').toStdString() << ": not '" << words.toStdString() << "' but "
                           << bus.spoken().join(" | ").toStdString();
        if (qEnvironmentVariableIsSet("LUMENPOST_ROAD"))
            qInfo("%-28s %s", qPrintable(keys.join(' ')), qPrintable(bus.spoken().join(" | ")));
    }

    AccessibilityBus bus;
};

TEST_F(KeyboardRoad, CapturesDrawsSavesFindsAndRecords)
{
    ASSERT_TRUE(bus.isConnected());
    bus.listen();
    set(R"({"didShowWelcome": true, "shutterSound": false})");
    start();
    QCursor::setPos(300, 250);
    hears({"super+shift+c"}, "[canvas]");
    hears({"Right"}, "301, 250");
    hears({"space"}, "301, 250");
    for (int i = 0; i < 60; ++i)
        press({"shift+Right"});
    for (int i = 0; i < 39; ++i)
        press({"shift+Down"});
    hears({"shift+Down"}, "600 by 400");
    hears({"Return"}, "Capture, 600 by 400 pixels");

    hears({"a", "Return"}, "arrow [graphic]");
    hears({"Right", "shift+Down"}, ", ");
    hears({"alt+Right"}, " by ");
    press({"t", "Return"});
    QTest::qWait(500);
    xdotool({"type", "--delay", "5", "Quay"});
    hears({"Return"}, "Text: Quay");
    hears({"b", "Return"}, "blur [graphic]");
    hears({"alt+Down"}, " by ");
    hears({"c", "Return"}, "360 by 240 at 120, 80");
    hears({"shift+Left"}, "360 by 240 at 110, 80");
    hears({"Return"}, "Capture, 360 by 240 pixels");
    hears({"ctrl+s"}, "Saved");
    ASSERT_TRUE(waitForCaptures(1));
    EXPECT_TRUE(QTest::qWaitFor([&] { return QImage(captures().first()).size() == QSize(360, 240); }, 10000));

    hears({"super+shift+l"}, "Captures [list]");
    hears({"Home"}, "[list item]");
    press({"Menu"});
    QTest::qWait(500);
    for (int i = 0; i < 30 && bus.spoken().filter("Export").isEmpty(); ++i)
        hears({"Down"}, "[menu item]");
    hears({"Return"}, "[combo box]");
    QDir().mkpath(home.path("out"));
    hears({"Return"}, "[text]");
    xdotool({"type", "--delay", "5", home.path("out")});
    press({"Return"});
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return !QDir(home.path("out")).entryList(QDir::Files).isEmpty(); }, 10000));
    press({"Escape", "ctrl+w"});

    hears({"super+shift+r"}, "[canvas]");
    press({"Return"});
    ASSERT_TRUE(waitForLog("Recording started"));
    QTest::qWait(1500);
    press({"super+shift+r"});
    EXPECT_TRUE(QTest::qWaitFor([&] { return !captures("*.mov").isEmpty(); }, 30000));
}
