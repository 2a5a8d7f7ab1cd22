#include "running_program.h"
#include "tray_host.h"

// The icon in a tray that shows icons and menus by itself, as KDE's and those of AppIndicators do: all it has
// is what the program tells over the bus.
TEST_F(RunningProgram, ATrayThatShowsTheMenuByItselfHasItBeforeItAsks)
{
    TrayHost tray;
    ASSERT_TRUE(tray.isWatching());
    start();
    ASSERT_TRUE(QTest::qWaitFor([&] { return tray.hasItem(); }, 10000));
    const QStringList labels = tray.menuLabels();
    EXPECT_TRUE(labels.contains("Open Library…") || labels.filter("Open Library").size() == 1)
        << labels.join(" | ").toStdString();
    EXPECT_GE(labels.size(), 12);
    tray.click("Activate");
    EXPECT_TRUE(waitForLog("Menu bar icon clicked"));
    key("Escape");
    const QImage before = photograph();
    tray.click("SecondaryActivate");
    EXPECT_TRUE(QTest::qWaitFor([&] { return photograph().pixel(5, 5) != before.pixel(5, 5); }, 10000))
        << "the overlay stands over the screen";
    key("Escape");
}
