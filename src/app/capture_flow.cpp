#include "app/capture_flow.h"

#include "app/countdown.h"
#include "app/source_application.h"
#include "app/texts.h"
#include "base/notice.h"
#include "capture/scrolling_session.h"
#include "capture/scrolling_words.h"
#include "capture/ui/scrolling_chrome.h"
#include "platform/pointer_control.h"
#include "platform/workspace.h"
#include "settings/capture_settings.h"

namespace {

// Milliseconds until the overlay's windows are off the screen.
constexpr int kOverlayGone = 80;
const auto kWarning = QStringLiteral("exclamationmark.triangle.fill");

QString hintFor(CaptureFlow::Intent intent)
{
    switch (intent) {
    case CaptureFlow::Intent::Capture:
    case CaptureFlow::Intent::GrabText:
        return AppTexts::tr("Drag to select  ·  Click a window  ·  Return for full screen  ·  Esc to cancel");
    case CaptureFlow::Intent::Scrolling:
        return AppTexts::tr("Select the area to scroll  ·  Click a window  ·  Esc to cancel");
    case CaptureFlow::Intent::Video:
        return AppTexts::tr(
            "Select an area to record  ·  Click a window  ·  Return for full screen  ·  Esc to cancel");
    }
    Q_UNREACHABLE();
}

const DisplaySnapshot &snapshotAt(const QList<DisplaySnapshot> &snapshots, QPointF point)
{
    for (const DisplaySnapshot &snapshot : snapshots) {
        if (snapshot.screen.holds(point))
            return snapshot;
    }
    return snapshots.first();
}

// Why there is no picture to deliver: an empty text where the user wants none.
std::optional<QString> whyNothing(const ScrollingCaptureSession &session, bool hasPicture)
{
    if (session.reason() == ScrollingCaptureSession::Reason::Cancelled)
        return QString();
    if (const auto why = ScrollingWords::whyNothing(session))
        return why;
    return hasPicture ? std::nullopt
                      : std::optional(AppTexts::tr("The whole picture doesn’t fit in memory."));
}

} // namespace

CaptureFlow::CaptureFlow(Parts parts, QObject *parent) : QObject(parent), m_parts(parts) {}

CaptureFlow::~CaptureFlow() = default;

CaptureFlow::Order CaptureFlow::takeOrder()
{
    const auto pending = std::exchange(m_pendingOptions, std::nullopt);
    return {pending.value_or(m_parts.settings.current()), m_parts.source.name(), false};
}

void CaptureFlow::reportFailure(Run run, const Error &error)
{
    if (!m_parts.activity.isCurrent(run))
        return;
    m_parts.activity.end(run);
    Q_EMIT failed(error);
}

void CaptureFlow::captureFullScreen(int delay)
{
    if (const auto run = m_parts.activity.beginCapture(delay))
        runFullScreen(*run, takeOrder(), delay);
}

void CaptureFlow::startCapture(Intent intent, int delay)
{
    if (const auto run = m_parts.activity.beginCapture(delay))
        runOverlay(*run, takeOrder(), intent, delay);
}

void CaptureFlow::captureFrontWindow()
{
    const QList<WindowInfo> windows = m_parts.capturer.onScreenWindows();
    if (windows.isEmpty())
        return startCapture(Intent::Capture, 0);
    const auto run = m_parts.activity.beginCapture(0);
    if (run && m_parts.activity.enter(*run, Activity::Capture::Shooting))
        shootWindow(*run, takeOrder(), Intent::Capture, windows.constFirst().id);
}

Task<> CaptureFlow::runFullScreen(Run run, Order order, int delay)
{
    using State = Activity::Capture;
    if (!co_await m_parts.countdown.run(delay) || !m_parts.activity.enter(run, State::Shooting))
        co_return;
    const Pointer pointer = order.options.cursor ? Pointer::Shown : Pointer::Hidden;
    const auto snapshots = co_await guarded(m_parts.capturer.captureAllDisplays(pointer), this);
    if (!snapshots) {
        if (!snapshots.error().isCancelled())
            reportFailure(run, snapshots.error());
        co_return;
    }
    if (m_parts.activity.isCurrent(run))
        deliver(snapshotAt(*snapshots, m_parts.pointer.position()).image, order, Intent::Capture, run);
}

Task<> CaptureFlow::runOverlay(Run run, Order order, Intent intent, int delay)
{
    using State = Activity::Capture;
    if (!co_await m_parts.countdown.run(delay) || !m_parts.activity.enter(run, State::Shooting))
        co_return;
    const bool showsCursor = intent == Intent::Capture && order.options.cursor;
    const Pointer pointer = showsCursor ? Pointer::Shown : Pointer::Hidden;
    // What is picked is what was on the screen now: nothing moves while the user selects.
    const auto snapshots = co_await guarded(m_parts.capturer.captureAllDisplays(pointer), this);
    if (!snapshots) {
        if (!snapshots.error().isCancelled())
            reportFailure(run, snapshots.error());
        co_return;
    }
    if (!m_parts.activity.enter(run, State::Selecting))
        co_return;
    const bool selectionOnly = intent == Intent::Scrolling || intent == Intent::Video;
    m_overlay = std::make_unique<CaptureOverlayController>(
        CaptureOverlayController::Ports{m_parts.pointer, m_parts.workspace},
        m_parts.capturer.onScreenWindows(), selectionOnly, hintFor(intent), *snapshots,
        [this, run, order, intent](const CaptureOverlayController::Outcome &result) {
            // The controller is still at work in its own call: it goes once that has returned.
            m_overlay.release()->deleteLater();
            handleOverlay(run, order, intent, result);
        });
    m_overlay->show();
}

void CaptureFlow::handleOverlay(Run run, const Order &order, Intent intent,
                                const CaptureOverlayController::Outcome &result)
{
    using Overlay = CaptureOverlayController;
    using State = Activity::Capture;
    if (const auto *image = std::get_if<Overlay::Image>(&result)) {
        m_parts.activity.end(run);
        deliver(image->image, order, intent, run);
    } else if (const auto *window = std::get_if<Overlay::Window>(&result)) {
        m_parts.activity.enter(run, State::Shooting);
        shootWindow(run, order, intent, window->id);
    } else if (const auto *selection = std::get_if<Overlay::Selection>(&result)) {
        if (intent != Intent::Video) {
            m_parts.activity.enter(run, State::Scrolling);
            runScrollingCapture(run, order, selection->screen, selection->rect);
        } else if (startRecording) {
            m_parts.activity.enter(run, State::Recording);
            record(run, order, selection->screen, selection->rect);
        } else {
            m_parts.activity.end(run);
        }
    } else {
        m_parts.activity.end(run);
    }
}

Task<> CaptureFlow::shootWindow(Run run, Order order, Intent intent, quint32 window)
{
    // Until the overlay's windows are off the screen.
    if (!co_await guarded(delayed(kOverlayGone), this) || !m_parts.activity.isCurrent(run))
        co_return;
    for (const WindowInfo &info : m_parts.capturer.onScreenWindows()) {
        if (info.id == window)
            order.source = info.owner;
    }
    order.isWindow = true;
    const bool showsCursor = intent == Intent::Capture && order.options.cursor;
    const auto image = co_await guarded(
        m_parts.capturer.captureWindow(window, showsCursor ? Pointer::Shown : Pointer::Hidden), this);
    if (!image) {
        if (!image.error().isCancelled())
            reportFailure(run, image.error());
        co_return;
    }
    if (m_parts.activity.isCurrent(run))
        deliver(*image, order, intent, run);
}

Task<> CaptureFlow::record(Run run, Order order, Screen screen, QRectF rect)
{
    // The first frame must not show the overlay.
    if (co_await guarded(delayed(kOverlayGone), this) && m_parts.activity.isCurrent(run))
        startRecording(run, screen, rect, order);
}

Task<> CaptureFlow::runScrollingCapture(Run run, Order order, Screen screen, QRectF rect)
{
    const auto session = std::make_unique<ScrollingCaptureSession>(
        ScrollingCaptureSession::Ports{m_parts.screens, m_parts.pictures, m_parts.pointer,
                                       m_parts.permissions},
        screen, rect);
    session->setAsksAtLimit();
    ScrollingChrome chrome(*session);
    chrome.show();
    const auto finished = session->run();
    const auto image = co_await guarded(finished, this);
    if (!image) {
        if (!image.error().isCancelled())
            reportFailure(run, image.error());
        co_return;
    }
    if (const auto why = whyNothing(*session, image->has_value())) {
        m_parts.activity.end(run);
        if (!why->isEmpty())
            m_parts.notices.post(*why, kWarning);
        co_return;
    }
    // A session that outlasted the limit for lost captures still has its picture.
    order.lacks = ScrollingWords::doubts(*session);
    deliver(**image, order, Intent::Capture, run);
}

void CaptureFlow::deliver(const QImage &image, const Order &order, Intent intent, Run run)
{
    if (intent == Intent::GrabText) {
        m_parts.activity.end(run);
        m_parts.delivery.deliverText(image);
    } else {
        m_parts.delivery.deliverPicture(image, order, run);
    }
}
