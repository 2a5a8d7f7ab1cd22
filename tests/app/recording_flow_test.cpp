#include "app/delivery_stage.h"
#include "app/recording_flow.h"
#include "recording/ui/draw_overlay_window.h"
#include "recording/ui/key_badge_panel.h"
#include "recording/ui/live_extras.h"
#include "recording/ui/recording_chrome.h"
#include "recording/ui/ripple_window.h"
#include "recording/ui/webcam_bubble_window.h"
#include "support/printers.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

namespace {

class RecordingFlowTest : public testing::Test, protected DeliveryStage {
protected:
    RecordingFlowTest()
    {
        order.options.editor = false;
        order.source = "Terminal";
        QObject::connect(&notices, &NoticeBoard::posted, &notices,
                         [this](const Notice &notice) { shown.append(notice.text); });
        QObject::connect(&flow, &RecordingFlow::failed, &flow,
                         [this](const Error &error) { failures.append(error.message); });
        QObject::connect(&flow, &RecordingFlow::titleChanged, &flow,
                         [this](const QString &title) { titles.append(title); });
    }

    void start(const QRectF &rect)
    {
        const auto run = activity.beginCapture(0);
        ASSERT_TRUE(run && activity.enter(*run, Activity::Capture::Recording));
        flow.start(*run, screen, rect, order);
    }
    bool isFilming()
    {
        return QTest::qWaitFor([&] { return !titles.isEmpty() && titles.last() == " ● 0:00"; });
    }
    bool isOver()
    {
        return QTest::qWaitFor([&] { return activity.isIdle() && pending.isIdle(); });
    }
    template <typename Window>
    static QList<Window *> shownWindows()
    {
        QList<Window *> found;
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (auto *window = qobject_cast<Window *>(widget); window && window->isVisible())
                found.append(window);
        }
        return found;
    }
    QPushButton *button(const QString &text)
    {
        for (auto *button : flow.chrome()->hud().findChildren<QPushButton *>()) {
            if (button->text() == text)
                return button;
        }
        return nullptr;
    }

    RecordingFlow flow{{activity, delivery, library, prefs, notices, pending, machine.films,
                        machine.soundSources, machine.movies, machine.permissions, machine.inputMonitors,
                        machine.cameras, machine.workspace, home.path("notes")}};
    const Screen screen{1, "A", QRect(0, 0, 800, 600), 1, true};
    Delivery::Order order;
    QStringList shown;
    QStringList failures;
    QStringList titles;
};

} // namespace

TEST_F(RecordingFlowTest, DeliversWhatItsPanelEndedAndKeepsThePanelOutOfIt)
{
    order.options.systemAudio = order.options.microphone = true; // missing for one reason, told once
    machine.soundSources.refusal = "No sound here.";
    start({100, 100, 301, 201});
    EXPECT_FALSE(button("Pause")->isEnabled()) << "nothing is filmed yet";
    ASSERT_TRUE(isFilming());
    EXPECT_EQ(machine.films.lastRequest.area, QRect(100, 100, 300, 200));
    EXPECT_EQ(machine.films.lastRequest.keptOut, flow.chrome()->windows());
    EXPECT_EQ(flow.chrome()->windows().size(), 2) << "panel and frame";
    EXPECT_EQ(flow.chrome()->hud().geometry().top(), 313) << "12 under the region";

    QTest::mouseClick(button("Pause"), Qt::LeftButton);
    QTest::mouseClick(button("Resume"), Qt::LeftButton);
    EXPECT_NE(button("Pause"), nullptr) << "it runs again";
    QTest::mouseClick(button("Stop Recording"), Qt::LeftButton);
    EXPECT_FALSE(flow.chrome()->hud().isVisible());
    flow.stop(); // impatient
    ASSERT_TRUE(isOver());
    ASSERT_EQ(library.items().size(), 1);
    EXPECT_EQ(library.catalog().meta().sources.values(), QStringList{"Terminal"});
    EXPECT_EQ(shown, QStringList{"Recording saved to Library. There is a sound missing in the film: "
                                 "No sound here."});
    EXPECT_EQ(titles.last(), QString());
    EXPECT_EQ(flow.chrome(), nullptr);
}

TEST_F(RecordingFlowTest, TellsWhyThereIsNoFilmOrOnlyAPartOfOne)
{
    machine.films.refusal = "The screen can't be filmed.";
    start({0, 0, 800, 600});
    EXPECT_EQ(flow.chrome()->frameWindow(), nullptr) << "a whole screen";
    ASSERT_TRUE(isOver());
    EXPECT_EQ(failures, QStringList{"The screen can't be filmed."});
    EXPECT_EQ(titles.last(), QString());
    EXPECT_EQ(flow.chrome(), nullptr);
    EXPECT_TRUE(library.items().isEmpty());

    machine.films.refusal.clear();
    start({0, 0, 100, 100});
    ASSERT_TRUE(isFilming());
    machine.films.breakOff({Error::Kind::Failed, "The display has gone away.", {}});
    ASSERT_TRUE(isOver());
    ASSERT_EQ(failures.size(), 2);
    EXPECT_TRUE(
        failures.last().startsWith("The display has gone away. What was recorded until then is kept"));
    EXPECT_EQ(library.items().size(), 1);
    EXPECT_TRUE(shown.isEmpty());
}

TEST_F(RecordingFlowTest, EndsAFilmThatIsStoppedBeforeItsFirstFrame)
{
    start({0, 0, 100, 100});
    EXPECT_FALSE(pending.isIdle()) << "quitting waits";
    flow.stop();
    ASSERT_TRUE(isOver());
    EXPECT_TRUE(failures.isEmpty());
    EXPECT_EQ(library.items().size(), 1);
}

TEST_F(RecordingFlowTest, ShowsWhatExplainsAFilmUntilItEnds)
{
    order.options.showClicks = order.options.showKeys = order.options.webcam = true;
    machine.cameras.color = Qt::green;
    start({100, 100, 400, 300});
    ASSERT_TRUE(isFilming());
    EXPECT_TRUE(QTest::qWaitFor([] { return shownWindows<WebcamBubbleWindow>().size() == 1; }));
    EXPECT_EQ(shownWindows<WebcamBubbleWindow>().first()->geometry(), QRect(296, 196, 180, 180));
    machine.inputMonitors.press({PointerPress::Button::Left, {150, 160}, {}, false, {}});
    ASSERT_EQ(shownWindows<RippleWindow>().size(), 1);
    EXPECT_EQ(shownWindows<RippleWindow>().first()->geometry(), QRect(118, 128, 64, 64));
    machine.inputMonitors.type({-1, "s", Qt::ControlModifier, false});
    machine.inputMonitors.type({-1, "x", {}, false});
    ASSERT_EQ(shownWindows<KeyBadgePanel>().size(), 1);
    EXPECT_EQ(shownWindows<KeyBadgePanel>().first()->label(), "⌘ S") << "what is typed is nobody's business";
    EXPECT_TRUE(QTest::qWaitFor([] { return shownWindows<RippleWindow>().isEmpty(); }));

    machine.workspace.front = Workspace::Application{7, "Terminal"};
    QTest::mouseClick(button("Draw"), Qt::LeftButton);
    ASSERT_EQ(shownWindows<DrawOverlayWindow>().size(), 1);
    DrawOverlayWindow *pane = shownWindows<DrawOverlayWindow>().first();
    EXPECT_EQ(pane->geometry(), QRect(100, 100, 400, 300));
    const auto draw = [&] {
        QTest::mousePress(pane, Qt::LeftButton, {}, {10, 10});
        QTest::mouseMove(pane, {50, 50});
        QMouseEvent drag(QEvent::MouseMove, QPointF(60, 40), pane->mapToGlobal(QPointF(60, 40)), Qt::NoButton,
                         Qt::LeftButton, {});
        QCoreApplication::sendEvent(pane, &drag);
        QTest::mouseRelease(pane, Qt::LeftButton, {}, {60, 40});
    };
    draw();
    EXPECT_EQ(pane->strokes().all().size(), 1);
    flow.chrome()->view().clearClicked();
    EXPECT_TRUE(pane->strokes().isEmpty());
    draw();
    QTest::keyClick(pane, Qt::Key_Escape);
    EXPECT_TRUE(shownWindows<DrawOverlayWindow>().isEmpty());
    EXPECT_EQ(machine.workspace.restored, 1) << "the keyboard goes back";
    EXPECT_FALSE(button("Draw")->isChecked());

    flow.stop();
    EXPECT_TRUE(shownWindows<WebcamBubbleWindow>().isEmpty());
    EXPECT_EQ(machine.inputMonitors.listeners(), 0);
    ASSERT_TRUE(isOver());

    machine.cameras.color = QColor();
    machine.inputMonitors.refusal = "Not here.";
    shown.clear();
    start({100, 100, 400, 300});
    ASSERT_TRUE(isFilming());
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown.size() == 2; }));
    EXPECT_TRUE(shown.contains("Webcam unavailable — check Camera permission in Settings"));
    flow.stop();
    ASSERT_TRUE(isOver());
}
