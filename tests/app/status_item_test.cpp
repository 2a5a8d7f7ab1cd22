#include "app/activity.h"
#include "app/status_item.h"
#include "base/notice.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_desktop.h"
#include "settings/app_settings.h"
#include "settings/capture_settings.h"
#include "settings/defaults.h"
#include "support/printers.h"

#include <QMenu>
#include <QTest>
#include <gmock/gmock.h>

namespace {

class StatusItemTest : public testing::Test {
protected:
    StatusItem::Actions actions()
    {
        StatusItem::Actions actions;
        actions.perform = [this](HotKeyAction action) { performed.append(action); };
        actions.isAvailable = [](HotKeyAction action) { return action != HotKeyAction::Record; };
        actions.hasPins = [this] { return hasPins; };
        actions.closePins = [this] { hasPins = false; };
        actions.quit = [] {};
        return actions;
    }
    static QAction *find(QMenu &menu, const QString &title)
    {
        for (QAction *item : menu.actions()) {
            if (item->text().section('\t', 0, 0) == title)
                return item;
        }
        return nullptr;
    }

    FakePaths paths{"/nowhere"};
    FakeSecrets secrets;
    FakeLoginItem loginItem;
    NoticeBoard notices;
    Defaults defaults{{}};
    AppSettings prefs{defaults, secrets, loginItem, paths, notices};
    CaptureSettings settings{defaults};
    QList<HotKeyAction> performed;
    bool hasPins = false;
    FakeClock clock;
    Activity activity{clock};
    StatusItem item{actions(), activity, prefs, settings};
};

} // namespace

TEST_F(StatusItemTest, ListsEveryCommandInItsOrderWithItsShortcut)
{
    QStringList titles;
    for (const QAction *action : item.rebuiltMenu().actions())
        titles.append(action->isSeparator() ? "-" : action->text().replace('\t', " | "));
    EXPECT_THAT(titles,
                testing::ElementsAre(
                    "Capture Region or Window | Super+Shift+C", "Capture Full Screen | Super+Shift+F",
                    "Capture in 3 Seconds | Super+Shift+D", "Scrolling Capture | Super+Shift+S",
                    "Record Screen | Super+Shift+R", "Record Steps (How-To Guide) | Super+Shift+G",
                    "Grab Text from Screen | Super+Shift+T", "-", "Open Library… | Super+Shift+L",
                    "Pin Last Capture | Super+Shift+P", "Open Image…", "-", "Open Editor After Capture",
                    "Settings…", "Welcome && Permissions…", "-", "Quit Lumenpost"));
    prefs.setHotkeys({{HotKeyAction::Library, KeyCombo{122, KeyCombo::Command}}});
    EXPECT_NE(find(item.rebuiltMenu(), "Open Library…"), nullptr);
    EXPECT_EQ(find(item.rebuiltMenu(), "Open Library…")->text().section('\t', 1), "Ctrl+F1");
}

TEST_F(StatusItemTest, PerformsWhatIsChosenAndOffersOnlyWhatWorks)
{
    QMenu &menu = item.rebuiltMenu();
    find(menu, "Scrolling Capture")->trigger();
    QCoreApplication::processEvents();
    EXPECT_EQ(performed, QList<HotKeyAction>{HotKeyAction::Scrolling});
    EXPECT_FALSE(find(menu, "Record Screen")->isEnabled());
    EXPECT_FALSE(find(menu, "Settings…")->isEnabled());
    for (const QAction *action : menu.actions()) {
        if (!action->isSeparator() && !action->isCheckable())
            EXPECT_FALSE(action->icon().isNull()) << action->text().toStdString();
    }
}

TEST_F(StatusItemTest, ShowsTheStateOfTheMomentItOpens)
{
    EXPECT_TRUE(find(item.rebuiltMenu(), "Open Editor After Capture")->isChecked());
    find(item.rebuiltMenu(), "Open Editor After Capture")->trigger();
    EXPECT_FALSE(settings.isOn(CaptureSettings::Switch::PreviewInEditor));
    EXPECT_FALSE(find(item.rebuiltMenu(), "Open Editor After Capture")->isChecked());
    EXPECT_EQ(find(item.rebuiltMenu(), "Close All Pins"), nullptr);
    hasPins = true;
    ASSERT_NE(find(item.rebuiltMenu(), "Close All Pins"), nullptr);
    EXPECT_NE(find(item.rebuiltMenu(), "Go to Pinned Image"), nullptr) << "for the keyboard, which no list of windows takes there";
}

TEST_F(StatusItemTest, OffersToEndWhatRunsAndTellsItsTime)
{
    const auto run = activity.beginCapture(0);
    activity.enter(*run, Activity::Capture::Recording);
    item.setTitle(" ● 1:05");
    EXPECT_NE(find(item.rebuiltMenu(), "Stop Recording"), nullptr);
    EXPECT_EQ(find(item.rebuiltMenu(), "Record Screen"), nullptr);
    activity.end(*run);
    item.setTitle({});
    ASSERT_TRUE(activity.beginSteps());
    EXPECT_NE(find(item.rebuiltMenu(), "Record Screen"), nullptr);
    EXPECT_NE(find(item.rebuiltMenu(), "Finish Steps"), nullptr);
    item.setCountdown(3);
    EXPECT_EQ(item.title(), " 3");
    item.setCountdown(0);
    EXPECT_EQ(item.title(), "");
}
