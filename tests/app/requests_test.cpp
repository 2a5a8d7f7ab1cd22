#include "app/activity.h"
#include "app/capture_flow.h"
#include "app/countdown.h"
#include "app/delivery_stage.h"
#include "app/recording_flow.h"
#include "app/requests.h"
#include "app/source_application.h"
#include "settings/capture_preset_store.h"

#include <QTest>
#include <gtest/gtest.h>

namespace {

// The program without windows, asked to begin something.
struct Asked : DeliveryStage {
    Asked()
    {
        QObject::connect(&countdown, &Countdown::ticked, &flow, [this](int left) { seconds.append(left); });
        flow.startRecording = [](auto &&...) {};
    }

    CaptureSettings settings{defaults};
    ScreenCapturer capturer{machine.screens, machine.pictures};
    Countdown countdown;
    SourceApplication source{machine.workspace};
    CaptureFlow flow{{activity, countdown, source, delivery, capturer, machine.screens, machine.pictures,
                      machine.pointer, machine.permissions, machine.workspace, settings, notices}};
    RecordingFlow recordings{{activity, delivery, library, prefs, notices, pending, machine.films,
                              machine.soundSources, machine.movies, machine.permissions,
                              machine.inputMonitors, machine.cameras, machine.workspace, home.path("notes")}};
    Requests requests{{activity, settings, flow, recordings}, {}};
    QList<int> seconds; // of the countdown
};

} // namespace

TEST(Requests, CountDownByWhatAsks)
{
    CapturePreset late{QUuid::createUuid(), "Late", rawValue(CaptureMode::Screen), {}, std::nullopt};
    late.options.delay = true;
    const struct {
        const char *what;
        std::function<void(Asked &)> ask;
        int seconds; // 0 where nothing is counted
    } rows[]{
        {"the shortcut of a delayed capture", [](Asked &a) { a.requests.perform(HotKeyAction::Delayed); }, 3},
        {"the Print key", [](Asked &a) { a.requests.performExtra(ExtraShortcut::Command::Delayed); }, 3},
        {"the panel's delay",
         [](Asked &a) {
             a.settings.setOn(CaptureSettings::Switch::Delay, true);
             a.requests.captureWithCurrentMode();
         },
         5},
        {"the panel without one", [](Asked &a) { a.requests.captureWithCurrentMode(); }, 0},
        {"a preset", [&](Asked &a) { a.requests.runPreset(late); }, 5},
        {"a shortcut besides the panel's delay",
         [](Asked &a) {
             a.settings.setOn(CaptureSettings::Switch::Delay, true);
             a.requests.perform(HotKeyAction::FullScreen);
         },
         0},
    };
    for (const auto &[what, ask, seconds] : rows) {
        Asked asked;
        ask(asked);
        EXPECT_EQ(asked.seconds.value(0), seconds) << what;
        EXPECT_EQ(asked.activity.capture() == Activity::Capture::CountingDown, seconds > 0) << what;
    }
}

TEST(Requests, LeaveNothingOfAPresetBehindThatIsRefused)
{
    Asked asked;
    QStringList told;
    QObject::connect(&asked.notices, &NoticeBoard::posted, &asked.notices,
                     [&](const Notice &notice) { told.append(notice.text); });
    asked.machine.screens.connected = {{1, "one", QRect(0, 0, 40, 30), 1, true}};
    asked.machine.pictures.desktop = QImage(40, 30, QImage::Format_RGB32);
    asked.machine.pictures.desktop.fill(Qt::blue);
    asked.settings.setOn(CaptureSettings::Switch::PreviewInEditor, false);
    CapturePreset copying{QUuid::createUuid(), "C", rawValue(CaptureMode::Screen), {}, std::nullopt};
    copying.options.editor = false;
    copying.options.clipboard = true;
    asked.requests.perform(HotKeyAction::FullScreen);
    asked.requests.runPreset(copying);
    ASSERT_TRUE(QTest::qWaitFor([&] { return told.size() == 1; }));
    asked.requests.perform(HotKeyAction::FullScreen);
    ASSERT_TRUE(QTest::qWaitFor([&] { return told.size() == 2; }));
    EXPECT_EQ(told, QStringList(2, "Saved to Library"));
}
