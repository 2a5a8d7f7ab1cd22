#include "app/capture_flow.h"
#include "base/notice.h"
#include "library/library.h"
#include "platform/face_engine.h"
#include "platform/http.h"
#include "platform/login_item.h"
#include "platform/pasteboard.h"
#include "platform/paths.h"
#include "platform/permissions.h"
#include "platform/platform.h"
#include "platform/pointer_control.h"
#include "platform/screen_pictures.h"
#include "platform/screens.h"
#include "platform/secrets.h"
#include "platform/session/make_platform.h"
#include "platform/sounds.h"
#include "platform/text_engine.h"
#include "platform/trash.h"
#include "platform/workspace.h"
#include "services/claude_client.h"
#include "services/text_recognizer.h"
#include "settings/app_settings.h"
#include "settings/capture_settings.h"
#include "settings/defaults.h"
#include "ui/appearance.h"
#include "ui/toast.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <vector>

// From the shortcut to the complete file, on the desktop it runs in, with everything that the program does
// meanwhile: the times of 20 captures of the full screen, and the longest that the event loop was held up.
// Run it in the private desktop at the size wanted:
//
//   TD_SIZE=3840x2160 tests/desktop/test-desktop run build/release/bench/bench_shortcut

namespace {

constexpr int kCaptures = 20;

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

// Ticks as often as the event loop lets it; the longest pause between two ticks is what a user would feel.
class Pulse : public QObject {
public:
    Pulse()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.setInterval(0);
        connect(&m_timer, &QTimer::timeout, this, [this] {
            m_longest = std::max(m_longest, m_elapsed.nsecsElapsed() / 1e6);
            m_elapsed.restart();
        });
    }
    void start()
    {
        m_longest = 0;
        m_elapsed.start();
        m_timer.start();
    }
    double stop()
    {
        m_timer.stop();
        return m_longest;
    }

private:
    QTimer m_timer;
    QElapsedTimer m_elapsed;
    double m_longest = 0;
};

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const QTemporaryDir home;
    Platform machine = makePlatform();
    const Clock clock;
    NoticeBoard notices;
    Defaults defaults{QString()};
    AppSettings prefs(defaults, *machine.secrets, *machine.loginItem, *machine.paths, notices);
    prefs.overrideSaveFolder(home.path());
    CaptureSettings settings(defaults);
    settings.setOn(CaptureSettings::Switch::PreviewInEditor, false);
    Library library(prefs, *machine.trash, clock);
    ScreenCapturer capturer(*machine.screens, *machine.pictures);
    TextRecognizer recognizer(*machine.text, *machine.faces);
    ClaudeClient claude(*machine.http, prefs);
    const Appearance appearance(application);
    const ToastPresenter toasts(notices);
    CaptureFlow flow({capturer, *machine.screens, *machine.pictures, *machine.pointer, *machine.permissions,
                      *machine.workspace, *machine.pasteboard, *machine.sounds, library, recognizer, claude,
                      prefs, settings, notices, clock});

    Pulse pulse;
    QElapsedTimer timer;
    std::vector<double> times;
    std::vector<double> pauses;
    const auto next = [&] {
        pulse.start();
        timer.start();
        flow.captureFullScreen(0);
    };
    QObject::connect(&flow, &CaptureFlow::delivered, &flow, [&](const QString &) {
        times.push_back(timer.nsecsElapsed() / 1e6);
        // The toast has been posted in this very turn: let it come up before the pause is read.
        QTimer::singleShot(120, &flow, [&] {
            pauses.push_back(pulse.stop());
            if (times.size() == kCaptures + 1)
                QCoreApplication::quit();
            else
                next();
        });
    });
    QTimer::singleShot(500, &flow, next);
    QApplication::exec();

    std::printf("first: %.0f ms, event loop held for %.1f ms at most\n", times.front(), pauses.front());
    times.erase(times.begin());
    pauses.erase(pauses.begin());
    std::printf(
        "next %d: median %.0f ms, worst %.0f ms; event loop held for %.1f ms (median), %.1f ms (worst)\n",
        kCaptures, median(times), *std::max_element(times.begin(), times.end()), median(pauses),
        *std::max_element(pauses.begin(), pauses.end()));
    return 0;
}
