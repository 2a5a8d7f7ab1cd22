#include "app/steps_flow.h"
#include "delivery_stage.h"
#include "settings/capture_settings.h"
#include "steps/ui/guide_offer.h"
#include "steps/ui/steps_review_window.h"
#include "support/pictures.h"
#include "support/printers.h"
#include "ui/hud_panel.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>

namespace {

using namespace std::chrono_literals;

class StepsFlowTest : public testing::Test, protected DeliveryStage {
protected:
    StepsFlowTest()
    {
        machine.screens.connected = {{1, "A", QRect(0, 0, 800, 600), 1, true}};
        machine.pictures.desktop = filled(QSize(800, 600), Qt::gray);
        capture.setOn(CaptureSettings::Switch::StepsAutoRedact, true);
        QObject::connect(&notices, &NoticeBoard::posted, &notices,
                         [this](const Notice &notice) { shown.append(notice.text); });
        makeFlow();
    }
    ~StepsFlowTest() override
    {
        flow.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // recorders hold their folders
    }
    void makeFlow()
    {
        flow.reset(); // the program ends
        flow = std::make_unique<StepsFlow>(StepsFlow::Parts{
            activity, capture, prefs, library, recognizer, claude, notices, pending, machine.presses,
            machine.elements, machine.screens, machine.pictures, machine.pointer, machine.permissions,
            machine.workspace, machine.sounds, home.path("steps")});
        QObject::connect(flow.get(), &StepsFlow::failed, &notices,
                         [this](const Error &error) { failures.append(error.message); });
        QObject::connect(flow.get(), &StepsFlow::titleChanged, &notices,
                         [this](const QString &title) { titles.append(title); });
    }
    void click(std::chrono::milliseconds time)
    {
        const Screen &screen = machine.screens.connected[0];
        const QPointF at(100, 100);
        machine.presses.press(
            {.point = at,
             .time = time,
             .screen = screen,
             .image = filled(screen.native.size(), Qt::gray),
             .windows = {{.id = 5, .pid = 42, .frame = QRectF(0, 0, 400, 300), .owner = "Mail", .title = {}}},
             .target = {.at = at.toPoint(), .pid = 42}});
    }
    // A guide of so many steps, in its window.
    StepsReviewWindow *record(int steps)
    {
        flow->toggle(0);
        for (int i = 0; i < steps; ++i)
            click(1s * (i + 1));
        flow->toggle(0);
        EXPECT_TRUE(QTest::qWaitFor([this] { return !flow->windows().isEmpty(); }));
        return flow->windows().value(0);
    }
    static void press(QWidget *within, const QString &text)
    {
        for (auto *button : within->findChildren<QPushButton *>()) {
            if (button->text() == text && button->isVisible())
                return button->click();
        }
        FAIL() << "There is no button " << qPrintable(text);
    }
    bool hasGuideOnDisk() const
    {
        return !QDir(home.path("steps")).entryList(QDir::Dirs | QDir::NoDotAndDotDot).isEmpty();
    }
    GuideOffer *offer()
    {
        flow->offerUnfinished();
        GuideOffer *found = nullptr;
        static_cast<void>(QTest::qWaitFor(
            [&] {
                for (QWidget *widget : QApplication::topLevelWidgets()) {
                    if (auto *made = qobject_cast<GuideOffer *>(widget); made && made->isVisible())
                        found = made;
                }
                return found != nullptr;
            },
            1000));
        return found;
    }

    CaptureSettings capture{defaults};
    std::unique_ptr<StepsFlow> flow;
    QStringList shown;
    QStringList failures;
    QStringList titles;
};

} // namespace

TEST_F(StepsFlowTest, OpensTheReviewOfWhatTheSameShortcutBeganAndEnded)
{
    flow->toggle(0);
    EXPECT_EQ(activity.steps(), Activity::Steps::Running);
    EXPECT_EQ(titles.last(), " Steps");
    ASSERT_TRUE(flow->hud() && flow->hud()->isVisible());
    click(1s);
    ASSERT_TRUE(QTest::qWaitFor([this] { return flow->recorder()->steps().size() == 1; }));
    press(flow->hud(), "Pause");
    click(3s);
    press(flow->hud(), "Resume");
    press(flow->hud(), "Done");
    ASSERT_TRUE(QTest::qWaitFor([this] { return !flow->windows().isEmpty(); }));
    EXPECT_TRUE(activity.isIdle());
    EXPECT_EQ(titles.last(), QString());
    EXPECT_EQ(flow->hud(), nullptr);
    EXPECT_EQ(flow->windows()[0]->windowTitle(), "How to … in Mail");
    EXPECT_EQ(machine.sounds.shutters, 1);
}

TEST_F(StepsFlowTest, StartsNothingWhileACaptureRunsAndOpensNothingWithoutSteps)
{
    const auto run = activity.beginCapture(0);
    flow->toggle(0);
    EXPECT_EQ(flow->recorder(), nullptr);
    EXPECT_EQ(activity.steps(), Activity::Steps::Off);
    activity.end(*run);
    flow->toggle(0);
    press(flow->hud(), "Cancel");
    flow->toggle(0);
    flow->toggle(0);
    EXPECT_TRUE(activity.isIdle());
    QTest::qWait(50);
    EXPECT_TRUE(flow->windows().isEmpty());
    EXPECT_FALSE(hasGuideOnDisk());

    flow->toggle(3);
    EXPECT_EQ(activity.steps(), Activity::Steps::Starting);
    flow->toggle(0); // gives the countdown up
    EXPECT_TRUE(activity.isIdle());
    machine.screens.connected.clear();
    flow->toggle(0);
    EXPECT_EQ(failures.size(), 1);
    EXPECT_TRUE(activity.isIdle());
}

TEST_F(StepsFlowTest, AsksWhatBecomesOfAGuideThatWasNotExported)
{
    StepsReviewWindow *window = record(1);
    window->close();
    EXPECT_TRUE(window->isVisible());
    press(window, "Cancel");
    EXPECT_TRUE(window->isVisible());
    window->close();
    press(window, "Discard");
    EXPECT_TRUE(QTest::qWaitFor([this] { return !hasGuideOnDisk(); }));
    EXPECT_TRUE(flow->windows().isEmpty());

    window = record(2);
    window->close();
    press(window, "Keep for Later");
    EXPECT_TRUE(QTest::qWaitFor([this] { return flow->windows().isEmpty(); }));
    GuideOffer *offered = nullptr;
    ASSERT_TRUE(QTest::qWaitFor([&] { return (offered = offer()) != nullptr; }));
    press(offered, "Discard");
    EXPECT_TRUE(QTest::qWaitFor([this] { return !hasGuideOnDisk(); }));
    EXPECT_EQ(offer(), nullptr);
}

TEST_F(StepsFlowTest, LosesNoGuideThatThereIsNoRoomFor)
{
    // Steps stay in memory where the folder can't be made, and closing says so.
    QFile planted(home.path("steps"));
    ASSERT_TRUE(planted.open(QIODevice::WriteOnly));
    StepsReviewWindow *window = record(1);
    window->close();
    for (const auto *button : window->findChildren<QPushButton *>())
        EXPECT_FALSE(button->isVisible() && button->text() == "Keep for Later");
    press(window, "Cancel");

    // A failed export brings the window back.
    prefs.setSaveFolder(home.path("steps/below-a-file"));
    window->model().saveToLibrary();
    window->close();
    EXPECT_TRUE(flow->windows().isEmpty());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !flow->windows().isEmpty(); }));
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(shown.isEmpty()) << "why it came back";
}

TEST_F(StepsFlowTest, ClosesOnlyOnceTheGuideIsKept)
{
    StepsReviewWindow *window = record(2);
    rlimit usual{};
    getrlimit(RLIMIT_FSIZE, &usual);
    signal(SIGXFSZ, SIG_IGN);
    const rlimit none{0, usual.rlim_max};
    setrlimit(RLIMIT_FSIZE, &none);
    window->model().setTitle("Changed");
    window->close();
    press(window, "Keep for Later");
    const auto asksAgain = [&] {
        return std::ranges::any_of(window->findChildren<QPushButton *>(), [](const QPushButton *button) {
            return button->text() == "Try Again" && button->isVisible();
        });
    };
    EXPECT_TRUE(QTest::qWaitFor(asksAgain));
    EXPECT_TRUE(window->isVisible());
    setrlimit(RLIMIT_FSIZE, &usual);
    press(window, "Try Again");
    EXPECT_TRUE(QTest::qWaitFor([this] { return flow->windows().isEmpty(); }));
}

TEST_F(StepsFlowTest, OffersWhatAnEndedProgramLeftUnderTheSwitchesOfTheSettings)
{
    flow->toggle(0);
    click(1s);
    click(2s);
    ASSERT_TRUE(QTest::qWaitFor([this] { return flow->recorder()->steps().size() == 2; }));
    makeFlow();
    GuideOffer *offered = offer();
    ASSERT_NE(offered, nullptr);
    press(offered, "Open");
    ASSERT_TRUE(QTest::qWaitFor([this] { return !flow->windows().isEmpty(); }));
    EXPECT_EQ(flow->windows()[0]->windowTitle(), "How to … in Mail");
    auto *hides = flow->windows()[0]->findChild<QAbstractButton *>("redacts");
    ASSERT_NE(hides, nullptr);
    EXPECT_TRUE(hides->isChecked()) << "what was never reviewed may show private text";
    flow->leave(); // the program ends again, without a question
    EXPECT_TRUE(flow->windows().isEmpty());
    EXPECT_TRUE(QTest::qWaitFor([this] { return pending.isIdle(); }));
    makeFlow();
    ASSERT_TRUE(QTest::qWaitFor([&] { return (offered = offer()) != nullptr; }));
    press(offered, "Later");
}
