#pragma once

#include "base/async.h"
#include "capture/screen_capturer.h"
#include "capture/ui/capture_overlay.h"
#include "settings/capture_options.h"

#include <QDateTime>
#include <QImage>
#include <QObject>
#include <QString>
#include <functional>
#include <optional>

class AppSettings;
class CaptureOverlayController;
class CaptureSettings;
class ClaudeClient;
class Clock;
class Library;
class NoticeBoard;
class Pasteboard;
class Permissions;
class PointerControl;
class Sounds;
class TextRecognizer;
class Workspace;

// A capture that has landed in the Library.
struct Delivery {
    QImage image;
    QString path;
    bool backdrop = false; // to be opened with a backdrop behind it
};

// One capture from its request to its delivery. At most one runs at a time; a request while one runs, or
// while a recording does, is refused with a line in the log.
class CaptureFlow : public QObject {
    Q_OBJECT
public:
    // What a started capture is for.
    enum class Intent { Capture, GrabText, Scrolling, Video };
    enum class State { Idle, CountingDown, Selecting, Shooting, Scrolling };

    struct Parts {
        ScreenCapturer &capturer;
        Screens &screens;
        ScreenPictures &pictures;
        PointerControl &pointer;
        Permissions &permissions;
        Workspace &workspace;
        Pasteboard &pasteboard;
        Sounds &sounds;
        Library &library;
        TextRecognizer &recognizer;
        ClaudeClient &claude;
        AppSettings &prefs;
        CaptureSettings &settings;
        NoticeBoard &notices;
        const Clock &clock;
    };

    explicit CaptureFlow(Parts parts, QObject *parent = nullptr);
    ~CaptureFlow() override;

    bool isCapturing() const { return m_state != State::Idle; }
    State state() const { return m_state; }
    // The selection that is on the screen now, if any.
    CaptureOverlayController *overlay() const { return m_overlay.get(); }

    // Whether a recording runs, which refuses captures.
    std::function<bool()> isRecording = [] { return false; };
    // Opens what was captured for editing. Without it a notice tells of the capture instead.
    std::function<void(const Delivery &)> openEditor;
    // The result of a selection for a recording.
    std::function<void(const Screen &, const QRectF &)> startRecording;
    // Options of a preset that the next start uses.
    void setPendingOptions(const CaptureOptions &options) { m_pendingOptions = options; }

    void captureFullScreen(int delay);
    void startCapture(Intent intent, int delay);

    // Resets a capture that got lost: one without an overlay that has lasted more than 30 seconds.
    void clearStuckCapture();
    // The application that a capture started from this program's own windows is credited to.
    void setLastOtherApp(const QString &name) { m_lastOtherApp = name; }
    std::optional<QString> frontmostAppName() const;

Q_SIGNALS:
    // Seconds left before a delayed capture; 0 when it begins or is given up.
    void countdown(int seconds);
    // A capture failed in a way that asks for the user's attention.
    void failed(const Error &error);
    void delivered(const QString &path);

private:
    using Run = quint64; // tells a running capture from one that was given up

    std::optional<Run> begin(int delay);
    void end(Run run);
    bool isCurrent(Run run) const { return isCapturing() && run == m_run; }
    void reportFailure(Run run, const Error &error);

    Task<bool> countDown(int delay);
    Task<> runFullScreen(Run run, int delay);
    Task<> runOverlay(Run run, Intent intent, int delay);
    void handleOverlay(Run run, Intent intent, const CaptureOverlayController::Result &result);
    Task<> shootWindow(Run run, Intent intent, quint32 window);
    Task<> runScrollingCapture(Run run, Screen screen, QRectF rect);

    // What follows a picture. A run given with it ends when the picture is safe.
    void deliver(const QImage &image, Intent intent, bool isWindow, std::optional<Run> run);
    Task<> grabText(QImage image);
    Task<> keep(QImage image, bool isWindow, std::optional<Run> run);
    Task<> autoName(QString path, QImage image);

    Parts m_parts;
    std::unique_ptr<CaptureOverlayController> m_overlay;
    State m_state = State::Idle;
    Run m_run = 0;
    QDateTime m_captureStartedAt;
    CaptureOptions m_options;
    std::optional<CaptureOptions> m_pendingOptions;
    std::optional<QString> m_sourceApp;
    std::optional<QString> m_lastOtherApp;
};
