#include "app/capture_flow.h"

#include "base/clock.h"
#include "base/log.h"
#include "base/notice.h"
#include "capture/scrolling_session.h"
#include "capture/ui/scrolling_chrome.h"
#include "document/effects.h"
#include "library/clipboard.h"
#include "library/library.h"
#include "platform/pasteboard.h"
#include "platform/pointer_control.h"
#include "platform/sounds.h"
#include "platform/workspace.h"
#include "services/claude_client.h"
#include "services/grab_text.h"
#include "services/text_recognizer.h"
#include "settings/app_settings.h"
#include "settings/capture_settings.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace {

// A capture without an overlay that lasts longer than this was lost.
constexpr qint64 kStuckAfter = 30000; // milliseconds

// Milliseconds until the overlay's windows are off the screen.
constexpr int kOverlayGone = 80;

QString hintFor(CaptureFlow::Intent intent)
{
    switch (intent) {
    case CaptureFlow::Intent::Capture:
    case CaptureFlow::Intent::GrabText:
        return QStringLiteral(
            "Drag to select  ·  Click a window  ·  Return for full screen  ·  Esc to cancel");
    case CaptureFlow::Intent::Scrolling:
        return QStringLiteral("Select the area to scroll  ·  Click a window  ·  Esc to cancel");
    case CaptureFlow::Intent::Video:
        return QStringLiteral(
            "Select an area to record  ·  Click a window  ·  Return for full screen  ·  Esc to cancel");
    }
    Q_UNREACHABLE();
}

const DisplaySnapshot &snapshotAt(const QList<DisplaySnapshot> &snapshots, QPointF point)
{
    for (const DisplaySnapshot &snapshot : snapshots) {
        if (snapshot.screen.frame().contains(point))
            return snapshot;
    }
    return snapshots.first();
}

} // namespace

CaptureFlow::CaptureFlow(Parts parts, QObject *parent) : QObject(parent), m_parts(parts) {}

CaptureFlow::~CaptureFlow() = default;

std::optional<QString> CaptureFlow::frontmostAppName() const
{
    const auto application = m_parts.workspace.frontmost();
    if (!application || application->pid == QCoreApplication::applicationPid())
        return std::nullopt;
    return application->name;
}

void CaptureFlow::clearStuckCapture()
{
    if (!isCapturing() || m_state == State::Selecting)
        return;
    const qint64 elapsed = m_captureStartedAt.msecsTo(m_parts.clock.now());
    if (elapsed <= kStuckAfter)
        return;
    Log::error(QStringLiteral("Capture state was stuck for %1s — resetting").arg(elapsed / 1000));
    m_state = State::Idle;
    Q_EMIT countdown(0);
}

std::optional<CaptureFlow::Run> CaptureFlow::begin(int delay)
{
    clearStuckCapture();
    if (isCapturing() || isRecording()) {
        Log::info(QStringLiteral("Capture ignored: ") +
                  (isCapturing() ? QStringLiteral("another capture is in progress")
                                 : QStringLiteral("recording in progress")));
        return std::nullopt;
    }
    m_state = delay > 0 ? State::CountingDown : State::Shooting;
    m_captureStartedAt = m_parts.clock.now();
    m_sourceApp = frontmostAppName();
    if (!m_sourceApp)
        m_sourceApp = m_lastOtherApp;
    m_options = m_pendingOptions.value_or(m_parts.settings.current());
    m_pendingOptions.reset();
    return ++m_run;
}

void CaptureFlow::end(Run run)
{
    if (isCurrent(run))
        m_state = State::Idle;
}

Task<bool> CaptureFlow::countDown(int delay)
{
    for (int left = delay; left > 0; --left) {
        Q_EMIT countdown(left);
        if (!co_await guarded(delayed(1000), this))
            co_return false;
    }
    if (delay > 0)
        Q_EMIT countdown(0);
    co_return true;
}

void CaptureFlow::reportFailure(Run run, const Error &error)
{
    if (!isCurrent(run))
        return;
    end(run);
    Q_EMIT failed(error);
}

void CaptureFlow::captureFullScreen(int delay)
{
    if (const auto run = begin(delay))
        runFullScreen(*run, delay);
}

void CaptureFlow::startCapture(Intent intent, int delay)
{
    if (const auto run = begin(delay))
        runOverlay(*run, intent, delay);
}

Task<> CaptureFlow::runFullScreen(Run run, int delay)
{
    if (!co_await countDown(delay) || !isCurrent(run))
        co_return;
    m_state = State::Shooting;
    const Pointer pointer = m_options.cursor ? Pointer::Shown : Pointer::Hidden;
    const auto snapshots = co_await guarded(m_parts.capturer.captureAllDisplays(pointer), this);
    if (!snapshots) {
        if (!snapshots.error().isCancelled())
            reportFailure(run, snapshots.error());
        co_return;
    }
    if (isCurrent(run))
        deliver(snapshotAt(*snapshots, m_parts.pointer.position()).image, Intent::Capture, false, run);
}

Task<> CaptureFlow::runOverlay(Run run, Intent intent, int delay)
{
    if (!co_await countDown(delay) || !isCurrent(run))
        co_return;
    m_state = State::Shooting;
    const bool showsCursor = intent == Intent::Capture && m_options.cursor;
    const Pointer pointer = showsCursor ? Pointer::Shown : Pointer::Hidden;
    // What is picked is what was on the screen now: nothing moves while the user selects.
    const auto snapshots = co_await guarded(m_parts.capturer.captureAllDisplays(pointer), this);
    if (!snapshots) {
        if (!snapshots.error().isCancelled())
            reportFailure(run, snapshots.error());
        co_return;
    }
    if (!isCurrent(run))
        co_return;
    const bool selectionOnly = intent == Intent::Scrolling || intent == Intent::Video;
    m_overlay = std::make_unique<CaptureOverlayController>(
        CaptureOverlayController::Ports{m_parts.pointer, m_parts.workspace},
        m_parts.capturer.onScreenWindows(), selectionOnly, hintFor(intent), *snapshots,
        [this, run, intent](const CaptureOverlayController::Result &result) {
            // The controller is still at work in its own call: it goes once that has returned.
            m_overlay.release()->deleteLater();
            handleOverlay(run, intent, result);
        });
    m_state = State::Selecting;
    m_overlay->show();
}

void CaptureFlow::handleOverlay(Run run, Intent intent, const CaptureOverlayController::Result &result)
{
    using Overlay = CaptureOverlayController;
    if (const auto *image = std::get_if<Overlay::Image>(&result)) {
        end(run);
        deliver(image->image, intent, false, {});
    } else if (const auto *window = std::get_if<Overlay::Window>(&result)) {
        m_state = State::Shooting;
        shootWindow(run, intent, window->id);
    } else if (const auto *selection = std::get_if<Overlay::Selection>(&result)) {
        if (intent == Intent::Video) {
            end(run);
            if (startRecording)
                startRecording(selection->screen, selection->rect);
        } else {
            m_state = State::Scrolling;
            runScrollingCapture(run, selection->screen, selection->rect);
        }
    } else {
        end(run);
    }
}

Task<> CaptureFlow::shootWindow(Run run, Intent intent, quint32 window)
{
    // Until the overlay's windows are off the screen.
    if (!co_await guarded(delayed(kOverlayGone), this) || !isCurrent(run))
        co_return;
    for (const WindowInfo &info : m_parts.capturer.onScreenWindows()) {
        if (info.id == window)
            m_sourceApp = info.owner;
    }
    const bool showsCursor = intent == Intent::Capture && m_options.cursor;
    const auto image = co_await guarded(
        m_parts.capturer.captureWindow(window, showsCursor ? Pointer::Shown : Pointer::Hidden), this);
    if (!image) {
        if (!image.error().isCancelled())
            reportFailure(run, image.error());
        co_return;
    }
    if (isCurrent(run))
        deliver(*image, intent, true, run);
}

Task<> CaptureFlow::runScrollingCapture(Run run, Screen screen, QRectF rect)
{
    const auto session = std::make_unique<ScrollingCaptureSession>(
        ScrollingCaptureSession::Ports{m_parts.screens, m_parts.pictures, m_parts.pointer,
                                       m_parts.permissions},
        screen, rect);
    ScrollingChrome chrome(*session);
    chrome.show();
    const auto finished = session->run();
    const auto image = co_await guarded(finished, this);
    if (!image) {
        if (!image.error().isCancelled())
            reportFailure(run, image.error());
        co_return;
    }
    // A session that outlasted the limit for lost captures still has its picture.
    if (*image)
        deliver(**image, Intent::Capture, false, run);
    else
        end(run);
}

void CaptureFlow::deliver(const QImage &image, Intent intent, bool isWindow, std::optional<Run> run)
{
    if (intent == Intent::GrabText) {
        if (run)
            end(*run);
        grabText(image);
    } else {
        keep(image, isWindow, run);
    }
}

Task<> CaptureFlow::grabText(QImage image)
{
    const auto text = co_await guarded(m_parts.recognizer.text(image), this);
    if (!text && text.error().isCancelled())
        co_return;
    if (!text)
        Log::error(QStringLiteral("Text could not be recognised"), text.error());
    const GrabbedText grabbed(text.value_or(QString()));
    if (!grabbed.isEmpty())
        m_parts.pasteboard.setText(grabbed.text);
    m_parts.notices.post(grabbed.notice.text, grabbed.notice.symbol);
}

Task<> CaptureFlow::keep(QImage image, bool isWindow, std::optional<Run> run)
{
    // What this capture was started with; another one may start while this one is written.
    const CaptureOptions options = m_options;
    const std::optional<QString> sourceApp = m_sourceApp;
    if (m_parts.prefs.shutterSound())
        m_parts.sounds.shutter();
    const auto saved = co_await guarded(m_parts.library.saveInBackground(image), this);
    if (!saved && saved.error().isCancelled())
        co_return;
    if (run)
        end(*run);
    if (!saved) {
        m_parts.notices.post(QStringLiteral("Couldn't save to ") +
                                 QFileInfo(m_parts.prefs.saveFolder()).fileName(),
                             QStringLiteral("exclamationmark.triangle.fill"));
        co_return;
    }
    Log::info(QStringLiteral("Captured ") + *saved);
    if (sourceApp && !sourceApp->isEmpty())
        m_parts.library.setSource(*saved, *sourceApp);
    const Delivery delivery{image, *saved,
                            (isWindow && m_parts.prefs.backdropForWindows()) || options.backdrop};
    if (options.clipboard) {
        Effects effects;
        effects.backdrop = delivery.backdrop;
        const auto finishedImage = co_await guarded(
            runInBackground([effects, image]() -> Result<QImage> { return effects.applied(image); }), this);
        if (!finishedImage)
            co_return;
        Clipboard::copy(m_parts.pasteboard, *finishedImage, this);
    }
    if (options.editor && openEditor) {
        openEditor(delivery);
    } else {
        m_parts.notices.post(options.clipboard ? QStringLiteral("Captured & copied to clipboard")
                                               : QStringLiteral("Saved to Library"),
                             QStringLiteral("checkmark.circle.fill"));
    }
    Q_EMIT delivered(*saved);
    autoName(*saved, image);
}

Task<> CaptureFlow::autoName(QString path, QImage image)
{
    if (!m_parts.prefs.aiAutoName() || m_parts.prefs.apiKey().isEmpty())
        co_return;
    const auto name = co_await guarded(m_parts.claude.run(ClaudeClient::Action::Name, image), this);
    if (name && !name->isEmpty())
        m_parts.library.rename(path, *name);
}
