#include "platform/input_monitor.h"
#include "shell/capture_panel.h"
#include "shell/menu_bar_panel.h"
#include "shell/option_chips.h"
#include "shell/recent_captures.h"
#include "shell/shell_test.h"
#include "support/accessible_walk.h"

#include <QPushButton>

namespace {

struct CapturePanelTest : ShellTest {
    std::unique_ptr<CapturePanel> makePanel()
    {
        CapturePanelActions actions;
        actions.capture = [this] { done += "capture"; };
        actions.openItem = [this](const QString &path) { done += path; };
        actions.runPreset = [this](const CapturePreset &preset) { done += preset.name; };
        actions.openSettings = [this] { done += "settings"; };
        actions.savePreset = [this] { presets.addFromCurrent(); };
        auto panel = std::make_unique<CapturePanel>(
            CapturePanel::Parts{settings, presets, library, machine.pasteboard, machine.workspace, notices},
            actions);
        QObject::connect(panel.get(), &CapturePanel::leaving, [this] { done += "leaving"; });
        return panel;
    }
    static QAbstractButton *button(QWidget &in, const QString &name)
    {
        for (auto *found : in.findChildren<QAbstractButton *>()) {
            if (!found->isHidden() && found->text() == name)
                return found;
        }
        return nullptr;
    }
    QStringList done;
};

} // namespace

TEST(PanelPlacement, StaysUnderOrAboveTheIconAndInsideTheScreen)
{
    const QRect screen(0, 30, 1920, 1020);
    struct Case {
        QRect anchor;
        QSize size;
        QPoint topLeft;
        bool growsUp;
    };
    for (const Case &c : {
             Case{{1000, 0, 24, 30}, {340, 500}, {841, 36}, false},
             Case{{1900, 0, 20, 30}, {340, 500}, {1572, 36}, false}, // 8 to the right edge
             Case{{0, 0, 20, 30}, {340, 500}, {8, 36}, false},
             Case{{1000, 1050, 24, 30}, {340, 500}, {841, 544}, true}, // a bar at the bottom
             Case{{1000, 0, 24, 30}, {2000, 500}, {-88, 36}, false},   // too narrow: the right edge holds
         }) {
        const PanelPlacement placement = panelPlacement(c.anchor, screen, c.size);
        EXPECT_EQ(placement.topLeft, c.topLeft) << c.anchor.x() << ' ' << c.size.width();
        EXPECT_EQ(placement.growsUp, c.growsUp) << c.anchor.y();
    }
}

TEST_F(CapturePanelTest, OffersEachModeItsOptions)
{
    const QHash<CaptureMode, QStringList> expected{
        {CaptureMode::AllInOne, {"Editor", "Clipboard", "Cursor", "5s Delay"}},
        {CaptureMode::Screen, {"Editor", "Clipboard", "Cursor", "5s Delay"}},
        {CaptureMode::Scrolling, {"Editor", "Clipboard", "5s Delay"}},
        {CaptureMode::Video,
         {"Editor", "Cursor", "5s Delay", "System Audio", "Microphone", "Show Clicks", "Show Keys",
          "Webcam"}},
        {CaptureMode::Steps, {"Mark Clicks", "Auto-Redact", "5s Delay"}},
        {CaptureMode::Text, {"5s Delay"}},
    };
    auto panel = makePanel();
    panel->show();
    for (auto it = expected.begin(); it != expected.end(); ++it) {
        settings.setMode(it.key());
        QStringList shown;
        for (const auto *chip : panel->findChildren<OptionButton *>()) {
            if (!chip->isHidden())
                shown += chip->text();
        }
        EXPECT_EQ(shown, it.value()) << int(it.key());
    }
    settings.setMode(CaptureMode::AllInOne);
    button(*panel, "Clipboard")->click();
    EXPECT_TRUE(settings.current().clipboard);
    button(*panel, "Reset")->click();
    EXPECT_FALSE(settings.current().clipboard);
    EXPECT_FALSE(button(*panel, "Clipboard")->isChecked());
}

TEST_F(CapturePanelTest, LeavesTheScreenBeforeAnythingIsDone)
{
    auto panel = makePanel();
    panel->show();
    QTest::keyClick(panel.get(), Qt::Key_Return);
    QTest::keyClick(panel.get(), Qt::Key_Comma, Qt::ControlModifier);
    button(*panel, "Delayed Region")->click();
    EXPECT_EQ(done, QStringList({"leaving", "capture", "leaving", "settings", "leaving", "Delayed Region"}));
    button(*panel, "Save Current…")->click();
    EXPECT_NE(button(*panel, "My Region Preset"), nullptr);
    panel->setRecording(true);
    EXPECT_NE(button(*panel, "Stop Recording"), nullptr);
}

TEST_F(CapturePanelTest, ShowsTheNewestFiveAndFollowsTheLibraryWhileOpen)
{
    for (int i = 0; i < 6; ++i)
        addCapture(QStringLiteral("%1.png").arg(i));
    auto panel = makePanel();
    panel->show();
    const auto thumbs = [&panel] {
        QStringList paths;
        for (const auto *thumb : panel->findChildren<RecentThumb *>()) {
            if (!thumb->isHidden())
                paths += thumb->path();
        }
        return paths;
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return thumbs() == library.items().mid(0, 5); }));
    ASSERT_TRUE(library.remove(library.items().constFirst()));
    ASSERT_TRUE(library.remove(library.items().constFirst()));
    EXPECT_TRUE(QTest::qWaitFor([&] { return thumbs().size() == 4; }));
    EXPECT_EQ(thumbs(), library.items());
    panel->hide();
    ASSERT_TRUE(library.remove(library.items().constFirst()));
    panel->show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return thumbs().size() == 3; })) << "what went while it was closed";
}

TEST_F(CapturePanelTest, ThePanelClosesForClicksOutsideAndForOtherPrograms)
{
    MenuBarPanel panel(makePanel(), machine.inputMonitors, machine.workspace);
    QWidget other;
    other.setGeometry(900, 500, 100, 100);
    other.show();
    const std::function<void()> ends[] = {
        [&] { machine.inputMonitors.press({}); },
        [&] { QTest::mouseClick(&other, Qt::LeftButton); },
        [&] { machine.workspace.activate({1, "Terminal"}); },
        [&] { QTest::keyClick(&panel, Qt::Key_Escape); },
    };
    for (const auto &end : ends) {
        panel.showAt({200, 0, 20, 20});
        ASSERT_TRUE(panel.isVisible());
        end();
        EXPECT_TRUE(QTest::qWaitFor([&] { return !panel.isVisible(); }, 3000));
        EXPECT_TRUE(panel.hasJustClosed());
        EXPECT_EQ(machine.inputMonitors.listeners(), 0);
    }
    panel.showAt({200, 0, 20, 20});
    machine.workspace.activate({QCoreApplication::applicationPid(), "Lumenpost"});
    QWidget tip(nullptr, Qt::ToolTip);
    tip.show();
    QTest::mouseClick(&tip, Qt::LeftButton);
    EXPECT_TRUE(panel.isVisible());
    const QRect before = panel.cardGeometry();
    settings.setMode(CaptureMode::Video);
    EXPECT_TRUE(QTest::qWaitFor([&] { return panel.cardGeometry().height() > before.height(); }, 3000));
    EXPECT_EQ(panel.cardGeometry().topLeft(), before.topLeft());
}

TEST_F(CapturePanelTest, ReadersAndTheKeyboardGetEverywhere)
{
    addCapture("a.png");
    auto panel = makePanel();
    panel->show();
    AccessibleWalk::expectUsable(*panel, 12, 6);
}
