#include "app/capture_flow.h"

#include "base/clock.h"
#include "base/log.h"
#include "base/notice.h"
#include "library/clipboard.h"
#include "library/library.h"
#include "platform/pasteboard.h"
#include "platform/pointer_control.h"
#include "platform/sounds.h"
#include "platform/workspace.h"
#include "settings/app_settings.h"
#include "settings/capture_settings.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace {

// A capture without an overlay that lasts longer than this was lost.
constexpr qint64 kStuckAfter = 30000; // milliseconds

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

void CaptureFlow::captureFullScreen(int delay)
{
    if (const auto run = begin(delay))
        runFullScreen(*run, delay);
}

Task<> CaptureFlow::runFullScreen(Run run, int delay)
{
    if (!co_await countDown(delay) || !isCurrent(run))
        co_return;
    m_state = State::Shooting;
    const Pointer pointer = m_options.cursor ? Pointer::Shown : Pointer::Hidden;
    const auto snapshots = co_await guarded(m_parts.capturer.captureAllDisplays(pointer), this);
    if (!snapshots && snapshots.error().isCancelled())
        co_return;
    if (!isCurrent(run))
        co_return;
    if (!snapshots) {
        end(run);
        Q_EMIT failed(snapshots.error());
        co_return;
    }
    deliver(snapshotAt(*snapshots, m_parts.pointer.position()).image, Intent::Capture, false, run);
}

Task<> CaptureFlow::deliver(QImage image, Intent intent, bool isWindow, std::optional<Run> run)
{
    Q_UNUSED(intent);
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
    if (options.clipboard)
        Clipboard::copy(m_parts.pasteboard, delivery.image, this);
    if (options.editor && openEditor) {
        openEditor(delivery);
    } else {
        m_parts.notices.post(options.clipboard ? QStringLiteral("Captured & copied to clipboard")
                                               : QStringLiteral("Saved to Library"),
                             QStringLiteral("checkmark.circle.fill"));
    }
    Q_EMIT delivered(*saved);
}
