#include "base/notice.h"
#include "fakes/fake_platform.h"
#include "services/text_recognizer.h"
#include "steps/steps_recorder.h"
#include "steps/steps_session.h"
#include "support/pictures.h"
#include "support/printers.h"
#include "support/temporary_folder.h"

#include <QTest>
#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;

class Recorder : public testing::Test {
protected:
    Recorder()
    {
        machine.screens.connected = {{1, "left", QRect(0, 0, 800, 600), 1, true},
                                     {2, "right", QRect(800, 0, 1600, 1200), 2, false}};
        machine.screens.listed = {window(QRectF(100, 100, 300, 200), "Mail")};
        machine.pictures.desktop = filled(QSize(2400, 1200), Qt::gray);
        machine.workspace.front = Workspace::Application{7, "Files"};
        EXPECT_TRUE(recorder->start([this](const QList<GuideStep> &steps) { delivered = steps; }));
    }

    static ListedWindow window(const QRectF &frame, const QString &owner, qint64 pid = 42)
    {
        return {.id = 5, .pid = pid, .layer = 0, .frame = frame, .owner = owner, .title = {}};
    }
    Press press(QPointF point, std::chrono::milliseconds time)
    {
        const Screen screen = *screenAt(machine.screens.connected, point);
        Press press;
        press.point = point;
        press.time = time;
        press.screen = screen;
        press.image = filled(screen.native.size(), Qt::gray);
        press.windows = machine.screens.listed;
        press.target = {.at = screen.toNative(point).toPoint(), .pid = 42};
        return press;
    }
    void click(QPointF point, std::chrono::milliseconds time) { machine.presses.press(press(point, time)); }
    void settle()
    {
        ASSERT_TRUE(QTest::qWaitFor([this] { return !recorder->isCapturing(); }));
    }
    GuideStep onlyStep()
    {
        settle();
        EXPECT_EQ(recorder->steps().size(), 1);
        return recorder->steps().value(0);
    }

    TemporaryFolder folder;
    FakePlatform machine{folder.path()};
    NoticeBoard notices;
    TextRecognizer recognizer{machine.text, machine.faces, {}};
    std::unique_ptr<StepsRecorder> recorder = std::make_unique<StepsRecorder>(StepsRecorder::Parts{
        machine.presses, machine.elements, machine.screens, machine.pictures, machine.pointer,
        machine.permissions, machine.workspace, machine.sounds, recognizer, notices, folder.path("steps")});
    std::optional<QList<GuideStep>> delivered;
};

TEST_F(Recorder, FoldsADoubleClickMeasuredFromTheLastAcceptedOne)
{
    for (const auto time : {0ms, 300ms, 450ms, 451ms, 900ms, 902ms})
        click({150, 150}, 10s + time);
    settle();
    EXPECT_EQ(recorder->steps().size(), 3); // at 0, 451 and 902
}

TEST_F(Recorder, StopsAtTheLimitWithoutAWordButLetsStepsBeAdded)
{
    for (int i = 0; i < StepsRecorder::kMostSteps + 1; ++i)
        click({150, 150}, 1s * i);
    recorder->addStep();
    settle();
    EXPECT_EQ(recorder->steps().size(), StepsRecorder::kMostSteps + 1);
    EXPECT_FALSE(recorder->steps().last().click);
    EXPECT_EQ(recorder->lastCaptured(), "Step 151: captured");
}

TEST_F(Recorder, TakesNothingWhilePausedButWhatIsAskedFor)
{
    recorder->setPaused(true);
    EXPECT_FALSE(machine.presses.wantsPictures);
    click({150, 150}, 1s);
    recorder->addStep();
    EXPECT_EQ(onlyStep().caption, "");
    recorder->setPaused(false);
    click({150, 150}, 2s);
    settle();
    EXPECT_EQ(recorder->steps().size(), 2);
}

TEST_F(Recorder, CropsToTheWindowAndKeepsTheClickInIt)
{
    struct Case {
        const char *what;
        QRectF window;
        QPointF point;
        QSize size;
        QPointF click;
    };
    const Case cases[] = {
        {"window", {100, 100, 300, 200}, {150, 120}, {300, 200}, {50, 20}},
        {"too narrow: the screen", {100, 100, 70, 200}, {150, 120}, {800, 600}, {150, 120}},
        {"just wide and high enough", {100, 100, 80, 60}, {150, 120}, {80, 60}, {50, 20}},
        {"cut at the screen's edge", {-50, 100, 300, 200}, {50, 120}, {250, 200}, {50, 20}},
        {"desktop: the screen", {500, 400, 100, 100}, {20, 30}, {800, 600}, {20, 30}},
        {"scaled screen", {900, 100, 300, 200}, {950, 120}, {600, 400}, {100, 40}},
        {"between whole pixels", {900.25, 100.25, 300, 200}, {950.25, 120.25}, {601, 401}, {100, 40}},
    };
    std::chrono::milliseconds time = 0s;
    for (const Case &each : cases) {
        machine.screens.listed = {window(each.window, "Mail")};
        click(each.point, time += 1s);
        settle();
        const GuideStep step = recorder->steps().last();
        EXPECT_EQ(step.image.size(), each.size) << each.what;
        EXPECT_EQ(step.click, each.click) << each.what;
    }
    EXPECT_EQ(recorder->steps()[0].app, "Mail");
    EXPECT_EQ(recorder->steps()[4].app, "Files") << "the frontmost program where there is no window";
}

TEST_F(Recorder, ShowsAMenuThatReachesOutOfItsWindow)
{
    machine.screens.listed = {window({100, 100, 300, 200}, "Mail"), window({0, 0, 700, 550}, "Behind", 99)};
    Press menu = press({150, 350}, 1s);
    menu.target = {.at = {150, 350}, .pid = 42, .window = QRect(120, 280, 100, 150), .isPopup = true};
    machine.presses.press(menu);
    const GuideStep step = onlyStep();
    EXPECT_EQ(step.app, "Mail");
    EXPECT_EQ(step.image.size(), QSize(300, 330));
    EXPECT_EQ(step.click, QPointF(50, 250));
}

TEST_F(Recorder, KeepsTheOrderOfThePressesWhoeverAnswersFirst)
{
    machine.elements.isHeld = true;
    machine.elements.answer = AccessibleElement{{.role = "AXButton", .title = "Late"}, {}};
    click({150, 150}, 1s);
    click({160, 160}, 2s);
    machine.elements.deliver(1);
    QTest::qWait(20);
    EXPECT_EQ(recorder->steps().size(), 0);
    machine.elements.deliver(0);
    settle();
    ASSERT_EQ(recorder->steps().size(), 2);
    EXPECT_EQ(recorder->steps()[0].click, QPointF(50, 50));
    EXPECT_EQ(recorder->lastCaptured(), "Step 2: Click “Late”");
    EXPECT_EQ(machine.sounds.pops, 2);
}

TEST_F(Recorder, ReadsADrawnLabelOnlyWhereNothingIsTypedAndNothingPrivateStands)
{
    const QRect button(120, 120, 90, 30);
    const auto reads = [](const QString &text, double confidence) {
        RecognizedLine line;
        line.text = text;
        line.confidence = confidence;
        return QList<RecognizedLine>{line};
    };
    struct Case {
        QString role;
        QString drawn;
        QString caption;
        double confidence = 0.9;
    };
    const Case cases[] = {{"AXButton", "Publish", "Click “Publish”"},
                          {"AXButton", "Fublich", "Click in Mail", 0.5},
                          {"AXButton", "ann@example.org", "Click in Mail"},
                          {"AXButton", "|", "Click in Mail"},
                          {"AXPopUpButton", "Germany", "Click in Mail"},
                          {"AXTextField", "hunter two", "Click the text field"}};
    std::chrono::milliseconds time = 0s;
    for (const Case &each : cases) {
        machine.text.answer = reads(each.drawn, each.confidence);
        machine.elements.answer = AccessibleElement{{.role = each.role}, button};
        click({150, 130}, time += 1s);
        settle();
        QCoreApplication::processEvents();
        EXPECT_TRUE(QTest::qWaitFor([&] { return recorder->steps().last().caption == each.caption; }, 500))
            << qPrintable(each.drawn + " gave " + recorder->steps().last().caption);
    }
    EXPECT_EQ(machine.text.sizes, QList<QSize>(4, button.size())) << "fields and lists are never read";
}

TEST_F(Recorder, ReadsTheRowOfAMenuThatHasClosedBeforeItWasAsked)
{
    // Three rows of a menu, of which the middle one was pressed: a check mark, words and a shortcut.
    const auto line = [](const QString &text, double top) {
        RecognizedLine line;
        line.text = text;
        line.confidence = 0.9;
        line.box = QRectF(0.05, 1 - top - 0.3, 0.9, 0.3);
        for (qsizetype i = 0; i < text.size(); ++i) {
            const double left = text[i] == 'x' ? 0.05
                                : i < 10       ? 0.2 + 0.02 * double(i)
                                               : 0.6 + 0.02 * double(i);
            line.characters.append(text[i] == ' ' ? QRectF() : QRectF(left, line.box.y(), 0.02, 0.3));
        }
        return line;
    };
    machine.text.answer =
        QList<RecognizedLine>{line("Above", -0.2), line("x Save As Ctrl", 0.35), line("Below", 0.9)};
    Press onMenu = press({150, 150}, 1s);
    onMenu.target.isPopup = true;
    onMenu.target.window = onMenu.target.visible = QRect(110, 110, 200, 150);
    machine.presses.press(onMenu);
    settle();
    EXPECT_TRUE(QTest::qWaitFor([&] { return recorder->steps().last().caption == "Choose “Save As”"; }, 2000))
        << qPrintable(recorder->steps().last().caption);
    EXPECT_EQ(machine.text.sizes, (QList<QSize>{QSize(200, 32)}));
}

TEST_F(Recorder, DeliversWhatIsUnderWayAndNothingAfterCancelling)
{
    machine.elements.isHeld = true;
    click({150, 150}, 1s);
    recorder->done();
    EXPECT_FALSE(machine.presses.isWatching);
    EXPECT_FALSE(delivered) << "the last press is still being asked about";
    machine.elements.deliver(0);
    ASSERT_TRUE(QTest::qWaitFor([this] { return delivered.has_value(); }));
    EXPECT_EQ(delivered->size(), 1);
    EXPECT_FALSE(machine.elements.isPrepared);
}

TEST_F(Recorder, ForgetsACancelledSessionOnDiskToo)
{
    click({150, 150}, 1s);
    settle();
    const QString kept = recorder->session()->folder();
    ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(kept + "/guide.json"); }));
    recorder->cancel();
    ASSERT_TRUE(delivered);
    EXPECT_TRUE(delivered->isEmpty());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !QFile::exists(kept); }));
}

TEST_F(Recorder, GoesOnAfterAPictureThatFails)
{
    Press broken = press({150, 150}, 1s);
    broken.image = fail(QStringLiteral("gone"));
    machine.presses.press(broken);
    EXPECT_EQ(recorder->lastCaptured(), "Couldn't capture — see Settings › Permissions & Help");
    click({150, 150}, 2s);
    EXPECT_EQ(onlyStep().click, QPointF(50, 50));
    // One that fails late holds up nothing that came behind it.
    machine.pictures.isHeld = true;
    machine.pictures.failure = Error{Error::Kind::Failed, "gone", {}};
    recorder->addStep();
    click({160, 160}, 3s);
    QTest::qWait(50);
    EXPECT_EQ(recorder->steps().size(), 1);
    machine.pictures.deliver();
    EXPECT_TRUE(QTest::qWaitFor([&] { return recorder->steps().size() == 2; }));
}

TEST_F(Recorder, RefusesToStartWithoutSightOfTheScreen)
{
    machine.permissions.statuses[Permission::ScreenRecording] = PermissionStatus::Denied;
    StepsRecorder other({machine.presses, machine.elements, machine.screens, machine.pictures,
                         machine.pointer, machine.permissions, machine.workspace, machine.sounds, recognizer,
                         notices, folder.path("steps")});
    const auto started = other.start({});
    ASSERT_FALSE(started);
    EXPECT_EQ(started.error().message, "No displays could be captured. Check Screen Recording permission.");
}

} // namespace
