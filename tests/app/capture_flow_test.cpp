#include "app/activity.h"
#include "app/capture_flow.h"
#include "app/countdown.h"
#include "app/delivery_stage.h"
#include "app/source_application.h"
#include "base/log.h"
#include "capture/ui/capture_overlay.h"
#include "settings/capture_settings.h"
#include "support/pictures.h"
#include "support/printers.h"
#include "ui/hud_panel.h"

#include <QApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <gmock/gmock.h>

namespace {

using Intent = CaptureFlow::Intent;
using State = Activity::Capture;

QImage noise(QSize size, quint32 seed)
{
    QRandomGenerator random(seed);
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, random.generate() | 0xff000000);
    }
    return image;
}

class CaptureFlowTest : public testing::Test, protected DeliveryStage {
protected:
    CaptureFlowTest()
    {
        Log::setDirectory(home.path("log"));
        machine.screens.connected = {
            {1, "left", QRect(0, 0, 400, 300), 1, true},
            {2, "right", QRect(400, 0, 400, 300), 1, false},
        };
        machine.pictures.desktop = QImage(800, 300, QImage::Format_RGB32);
        machine.pictures.desktop.fill(Qt::darkGreen);
        machine.pictures.windows.insert(77, filled({200, 100}, Qt::darkRed));
        machine.screens.listed = {{77, 4711, 0, QRectF(20, 20, 200, 100), "Terminal", "shell"}};
        machine.workspace.front = Workspace::Application{4711, "Terminal"};
        settings.setOn(CaptureSettings::Switch::PreviewInEditor, false);
        QObject::connect(&notices, &NoticeBoard::posted, &notices,
                         [this](const Notice &notice) { shown.append(notice); });
        QObject::connect(&flow, &CaptureFlow::failed, &flow,
                         [this](const Error &error) { failures.append(error); });
    }

    QByteArray log() const
    {
        Log::flush();
        QFile file(home.path("log/lumenpost.log"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void goTo(const Workspace::Application &application) { machine.workspace.activate(application); }
    bool waitUntilIdle()
    {
        return QTest::qWaitFor([this] { return !activity.isCapturing(); });
    }
    bool waitForFiles(qsizetype count)
    {
        return QTest::qWaitFor([&] { return library.items().size() == count; });
    }
    bool waitForNotice()
    {
        return QTest::qWaitFor([this] { return !shown.isEmpty(); });
    }
    // Ends the overlay that is up as the user would.
    void pick(const CaptureOverlayController::Outcome &result)
    {
        ASSERT_TRUE(QTest::qWaitFor([this] { return flow.overlay() != nullptr; }));
        EXPECT_EQ(activity.capture(), State::Selecting);
        flow.overlay()->finish(result);
    }

    CaptureSettings settings{defaults};
    ScreenCapturer capturer{machine.screens, machine.pictures};
    Countdown countdown;
    SourceApplication source{machine.workspace};
    CaptureFlow flow{{activity, countdown, source, delivery, capturer, machine.screens, machine.pictures,
                      machine.pointer, machine.permissions, machine.workspace, settings, notices}};
    QList<Notice> shown;
    QList<Error> failures;
};

} // namespace

TEST_F(CaptureFlowTest, DeliversTheDisplayUnderThePointerIntoTheLibrary)
{
    machine.pointer.at = QPointF(500, 100);
    machine.pictures.desktop.setPixelColor(450, 10, Qt::yellow);
    flow.captureFullScreen(0);
    ASSERT_TRUE(waitForNotice());
    EXPECT_EQ(shown, (QList<Notice>{{"Saved to Library", "checkmark.circle.fill"}}));
    EXPECT_EQ(machine.sounds.shutters, 1);
    ASSERT_EQ(library.items().size(), 1);
    EXPECT_EQ(QFileInfo(library.items().first()).fileName(), "Capture 2026-03-14 at 09.41.07.png");
    const QImage saved(library.items().first());
    EXPECT_EQ(saved.size(), QSize(400, 300));
    EXPECT_EQ(saved.pixelColor(50, 10), QColor(Qt::yellow));
    EXPECT_EQ(library.catalog().meta().sources.value("Capture 2026-03-14 at 09.41.07.png"), "Terminal");
}

TEST_F(CaptureFlowTest, RefusesASecondCaptureWithALineInTheLogAlone)
{
    machine.pictures.isHeld = true;
    flow.startCapture(Intent::Capture, 0);
    flow.captureFullScreen(0);
    EXPECT_TRUE(log().contains("[INFO] Capture ignored: another capture is in progress"));
    machine.pictures.deliver();
    machine.pictures.deliver();
    pick(CaptureOverlayController::Cancelled{});
    EXPECT_TRUE(waitUntilIdle());
    EXPECT_TRUE(library.items().isEmpty());
    EXPECT_TRUE(shown.isEmpty());
}

TEST_F(CaptureFlowTest, ResetsALostCaptureAfterMoreThanThirtySeconds)
{
    machine.pictures.isHeld = true;
    flow.captureFullScreen(0);
    clock.advance(30);
    activity.clearStuckCapture();
    EXPECT_TRUE(activity.isCapturing());
    clock.advance(1);
    activity.clearStuckCapture();
    EXPECT_FALSE(activity.isCapturing());
    EXPECT_TRUE(log().contains("[ERROR] Capture state was stuck for 31s — resetting"));
    // The lost one comes back: it must neither deliver nor end the capture that runs by then.
    machine.pictures.isHeld = false;
    flow.startCapture(Intent::Capture, 0);
    machine.pictures.deliver();
    ASSERT_TRUE(QTest::qWaitFor([this] { return flow.overlay() != nullptr; }));
    clock.advance(1000);
    activity.clearStuckCapture();
    EXPECT_EQ(activity.capture(), State::Selecting);
    pick(CaptureOverlayController::Cancelled{});
    EXPECT_TRUE(library.items().isEmpty());
}

TEST_F(CaptureFlowTest, ShootsAPickedWindowAfreshAndCreditsItsOwner)
{
    goTo(Workspace::Application{QCoreApplication::applicationPid(), "Lumenpost"});
    flow.startCapture(Intent::Capture, 0);
    pick(CaptureOverlayController::Window{77});
    ASSERT_TRUE(waitForFiles(1));
    ASSERT_TRUE(waitUntilIdle());
    EXPECT_EQ(QImage(library.items().first()).pixelColor(5, 5), QColor(Qt::darkRed));
    EXPECT_EQ(library.catalog().meta().sources.values(), QStringList{"Terminal"});
}

TEST_F(CaptureFlowTest, TellsOfAWindowThatVanishedAndGoesIdle)
{
    flow.startCapture(Intent::Capture, 0);
    pick(CaptureOverlayController::Window{99});
    ASSERT_TRUE(QTest::qWaitFor([this] { return !failures.isEmpty(); }));
    EXPECT_EQ(failures.first().message, "That window is no longer available.");
    EXPECT_FALSE(activity.isCapturing());
    EXPECT_TRUE(library.items().isEmpty());
}

TEST_F(CaptureFlowTest, CreditsTheLastOtherApplicationForACaptureFromItsOwnWindows)
{
    goTo(Workspace::Application{4712, "Browser"});
    goTo(Workspace::Application{QCoreApplication::applicationPid(), "Lumenpost"});
    flow.captureFullScreen(0);
    ASSERT_TRUE(waitForNotice());
    EXPECT_EQ(library.catalog().meta().sources.values(), QStringList{"Browser"});
}

TEST_F(CaptureFlowTest, FollowsTheOptionsThatTheCaptureStartedWith)
{
    settings.setOn(CaptureSettings::Switch::CopyToClipboard, true);
    settings.setOn(CaptureSettings::Switch::IncludeCursor, true);
    prefs.setShutterSound(false);
    flow.captureFullScreen(0);
    settings.setOn(CaptureSettings::Switch::CopyToClipboard, false);
    ASSERT_TRUE(waitForNotice());
    EXPECT_EQ(shown.first().text, "Captured & copied to clipboard");
    EXPECT_EQ(machine.sounds.shutters, 0);
    EXPECT_EQ(machine.pictures.requests.first().pointer, Pointer::Shown);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !machine.pasteboard.flavors.isEmpty(); }));
    EXPECT_EQ(machine.pasteboard.flavors.at(0).first, "image/png");
    EXPECT_EQ(machine.pasteboard.flavors.at(1).first, "image/tiff");
    EXPECT_EQ(machine.pasteboard.image().size(), QSize(400, 300));
}

TEST_F(CaptureFlowTest, TakesTheOptionsOfAPresetForItsOwnCaptureAlone)
{
    CaptureOptions options = settings.current();
    options.clipboard = true;
    flow.setPendingOptions(options);
    for (const char *told : {"Captured & copied to clipboard", "Saved to Library"}) {
        shown.clear();
        flow.captureFullScreen(0);
        ASSERT_TRUE(waitForNotice());
        EXPECT_EQ(shown.first().text, told);
    }
}

TEST_F(CaptureFlowTest, ShowsThePointerInPicturesAloneAndNotInWhatIsReadOrSelected)
{
    settings.setOn(CaptureSettings::Switch::IncludeCursor, true);
    for (const Intent intent : {Intent::Capture, Intent::GrabText, Intent::Scrolling, Intent::Video}) {
        machine.pictures.requests.clear();
        flow.startCapture(intent, 0);
        if (intent == Intent::Capture || intent == Intent::GrabText)
            pick(CaptureOverlayController::Window{77});
        else
            pick(CaptureOverlayController::Cancelled{});
        ASSERT_TRUE(waitUntilIdle());
        ASSERT_GE(machine.pictures.requests.size(), 2);
        for (const auto &request : machine.pictures.requests)
            EXPECT_EQ(request.pointer == Pointer::Shown, intent == Intent::Capture) << int(intent);
    }
}

TEST_F(CaptureFlowTest, OpensTheEditorInsteadOfANoticeAndPutsABackdropBehindWindows)
{
    QList<DeliveredPicture> opened;
    delivery.openEditor = [&](const DeliveredPicture &picture) { opened.append(picture); };
    settings.setOn(CaptureSettings::Switch::PreviewInEditor, true);
    prefs.setBackdropForWindows(true);
    flow.captureFullScreen(0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return opened.size() == 1; }));
    flow.startCapture(Intent::Capture, 0);
    pick(CaptureOverlayController::Window{77});
    ASSERT_TRUE(QTest::qWaitFor([&] { return opened.size() == 2; }));
    EXPECT_FALSE(opened.first().backdrop);
    EXPECT_TRUE(opened.last().backdrop);
    EXPECT_TRUE(QFile::exists(opened.last().path));
    EXPECT_TRUE(shown.isEmpty());
}

TEST_F(CaptureFlowTest, TellsWhenTheFolderCannotBeWrittenAndCopiesNothing)
{
    prefs.setSaveFolder("/proc/nowhere/Shots");
    settings.setOn(CaptureSettings::Switch::CopyToClipboard, true);
    flow.captureFullScreen(0);
    ASSERT_TRUE(waitForNotice());
    EXPECT_EQ(shown, (QList<Notice>{{"Couldn't save to Shots", "exclamationmark.triangle.fill"}}));
    EXPECT_FALSE(activity.isCapturing());
    EXPECT_TRUE(machine.pasteboard.flavors.isEmpty());
}

TEST_F(CaptureFlowTest, PassesTheMachinesFailureOnAndGoesIdle)
{
    machine.screens.connected.clear();
    flow.captureFullScreen(0);
    ASSERT_TRUE(QTest::qWaitFor([this] { return failures.size() == 1; }));
    EXPECT_EQ(failures.first().message, "No displays could be captured. Check Screen Recording permission.");
    flow.startCapture(Intent::GrabText, 0);
    ASSERT_TRUE(QTest::qWaitFor([this] { return failures.size() == 2; }));
    EXPECT_FALSE(activity.isCapturing());
}

TEST_F(CaptureFlowTest, CopiesGrabbedTextAndSavesNothing)
{
    machine.text.answer = QList<RecognizedLine>{{"one line", QRectF(0, 0, 1, 1), {}, 1}};
    flow.startCapture(Intent::GrabText, 0);
    pick(CaptureOverlayController::Image{filled({200, 100}, Qt::white)});
    ASSERT_TRUE(waitForNotice());
    EXPECT_EQ(shown.first(), (Notice{"Copied 1 lines of text", "text.viewfinder"}));
    EXPECT_EQ(machine.pasteboard.text(), "one line");
    EXPECT_EQ(machine.sounds.shutters, 0);

    shown.clear();
    machine.text.answer = fail("The engine gave up.");
    flow.startCapture(Intent::GrabText, 0);
    pick(CaptureOverlayController::Image{filled({200, 100}, Qt::white)});
    ASSERT_TRUE(waitForNotice());
    EXPECT_EQ(shown.first(), (Notice{"No text found", "text.magnifyingglass"}));
    EXPECT_EQ(machine.pasteboard.text(), "one line");
    EXPECT_TRUE(library.items().isEmpty());
}

TEST_F(CaptureFlowTest, RenamesACaptureByTheReplyOnlyWithAKeyAndTheSwitchOn)
{
    const QJsonObject reply{
        {"content", QJsonArray{QJsonObject{{"type", "text"}, {"text", "Green Test Screen"}}}},
        {"stop_reason", "end_turn"}};
    machine.http.answers = {Result<HttpResponse>(HttpResponse{200, QJsonDocument(reply).toJson()})};
    prefs.setAiAutoName(true);
    machine.secrets.items.insert({AppSettings::kApiKeyAccount, AppSettings::kService}, "sk-locked");
    machine.secrets.isLocked = true; // and nobody is asked for a name that nobody asked for
    flow.captureFullScreen(0);
    ASSERT_TRUE(waitForNotice());
    EXPECT_TRUE(machine.http.requests.isEmpty());
    EXPECT_TRUE(machine.secrets.isLocked);

    prefs.setApiKey("sk-test");
    flow.captureFullScreen(0);
    ASSERT_TRUE(QTest::qWaitFor([this] { return QFile::exists(home.path("Shots/Green Test Screen.png")); }));
    EXPECT_EQ(machine.http.requests.size(), 1);
    EXPECT_FALSE(log().contains("sk-test"));
}

TEST_F(CaptureFlowTest, CountsDownBeforeADelayedCapture)
{
    QList<int> seconds;
    QObject::connect(&countdown, &Countdown::ticked, &flow, [&](int left) { seconds.append(left); });
    flow.captureFullScreen(1);
    EXPECT_EQ(activity.capture(), State::CountingDown);
    EXPECT_TRUE(machine.pictures.requests.isEmpty());
    ASSERT_TRUE(waitForNotice());
    EXPECT_EQ(seconds, (QList<int>{1, 0}));
}

TEST_F(CaptureFlowTest, KeepsNoPictureOfARegionInWhichNothingScrolled)
{
    machine.pointer.mayScroll = true;
    flow.startCapture(Intent::Scrolling, 0);
    pick(CaptureOverlayController::Selection{machine.screens.connected[0], QRectF(20, 20, 200, 100)});
    ASSERT_TRUE(waitForNotice());
    EXPECT_EQ(shown[0].text, "Nothing in that region scrolled.");
    EXPECT_TRUE(activity.isIdle());
    EXPECT_TRUE(library.items().isEmpty());
}

TEST_F(CaptureFlowTest, KeepsNoScrolledPictureThatIsGivenUpAndTellsOfDoubtsInOneThatIs)
{
    machine.pointer.mayScroll = true;
    const QImage page = noise({800, 900}, 1);
    const QImage other = noise({800, 300}, 2);
    QTimer scrolling;
    QObject::connect(&scrolling, &QTimer::timeout, &scrolling, [&] {
        const qsizetype clicks = machine.pointer.clicks.size();
        machine.pictures.desktop = clicks > 6 ? other : page.copy(0, int(clicks) * 60, 800, 300);
    });
    scrolling.start(5);
    for (const bool isKept : {false, true}) {
        machine.pointer.clicks.clear();
        flow.startCapture(Intent::Scrolling, 0);
        pick(CaptureOverlayController::Selection{machine.screens.connected[0], QRectF(20, 20, 300, 240)});
        ASSERT_TRUE(QTest::qWaitFor([&] { return machine.pointer.clicks.size() > 1; }, 10000));
        for (QWidget *window : QApplication::topLevelWidgets()) {
            if (!isKept && window->isVisible() && qobject_cast<HUDPanel *>(window))
                QTest::keyClick(window, Qt::Key_Escape);
        }
        ASSERT_TRUE(QTest::qWaitFor([this] { return activity.isIdle(); }, 30000));
        EXPECT_TRUE(waitForFiles(isKept ? 1 : 0));
        EXPECT_EQ(shown.size(), isKept ? 1 : 0) << "a second notice would lie over the first";
    }
    EXPECT_EQ(shown.last().text,
              "Saved to Library. The picture ends early: what came next could not be followed.");
}
