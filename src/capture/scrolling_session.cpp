#include "capture/scrolling_session.h"

#include "capture/texts.h"
#include "document/image_files.h"
#include "platform/permissions.h"
#include "platform/pointer_control.h"
#include "platform/screen_pictures.h"

#include <QCoreApplication>
#include <QLineF>

namespace {

constexpr int kUnchangedAtTheEnd = 3;
constexpr int kUnchangedWhileAlive = 6; // something that moves by itself may tell that more is on its way
constexpr int kLostByHand = 2;          // shots, before the user is told
constexpr double kStepOfHeight = 0.55;  // leaves an overlap of about 45 percent
constexpr double kLeastStep = 40;       // points

// Milliseconds.
constexpr int kAimPause = 60;     // until the window under the pointer knows that it is there
constexpr int kByHandPause = 300; // between two shots
constexpr int kSampleGap = 50;
constexpr int kQuietTime = 100;     // without movement counts as standing still
constexpr int kSameShiftTime = 200; // the same, beside something that moves by itself
constexpr int kOrdinaryWait = 380;  // for movement that has not been seen yet
constexpr int kLongestWait = 1000;  // for a page that never stands still
constexpr int kHandCheck = 100;
constexpr int kHandRest = 300;

constexpr double kNearlyAll = 0.9;  // of the expected shift
constexpr double kHandDistance = 4; // points; less is rounding
constexpr int kTimesToRegain = 2;

} // namespace

ScrollingCaptureSession::ScrollingCaptureSession(Ports ports, const Screen &screen, const QRectF &rect,
                                                 QObject *parent)
    : QObject(parent),
      m_ports(std::move(ports)),
      m_screen(screen),
      m_rect(rect),
      m_stitcher(std::make_shared<FrameStitcher>(ImageFiles::mostPixels()))
{}

QFuture<Result<std::optional<QImage>>> ScrollingCaptureSession::run()
{
    Q_ASSERT(m_state == State::Ready);
    m_promise.start();
    m_automatic = m_ports.pointer.canScroll();
    if (m_automatic) {
        m_message = CaptureTexts::tr("Auto-scrolling…");
    } else {
        // A grant takes effect at the next session; this one goes on by hand.
        m_ports.permissions.request(Permission::Accessibility);
        m_message = CaptureTexts::tr("Scroll the area slowly");
    }
    Q_EMIT changed();
    m_window = windowAtTarget();
    m_state = State::FirstShot;
    shoot(&ScrollingCaptureSession::takeFirstShot);
    return m_promise.future();
}

void ScrollingCaptureSession::stop()
{
    if (m_stopped)
        return;
    m_stopped = true;
    switch (m_state) {
    case State::YieldingToHand:
    case State::Aiming:
    case State::Settling:
    case State::ByHand:
        end(Reason::Stopped);
        break;
    case State::Ready:
    case State::FirstShot:
    case State::Turning:
    case State::Shooting:
    case State::ScrollingBack:
    case State::Composing:
    case State::Finished:
        break; // read when what is under way comes back
    }
}

void ScrollingCaptureSession::pauseFor(int milliseconds, void (ScrollingCaptureSession::*then)())
{
    const State state = m_state;
    whenDone(m_ports.pause(milliseconds), this, [this, then, state](const Result<void> &) {
        if (m_state == state) // else stopped meanwhile
            (this->*then)();
    });
}

void ScrollingCaptureSession::shoot(void (ScrollingCaptureSession::*then)(const QImage &))
{
    const State state = m_state;
    whenDone(m_ports.pictures.region(m_screen, m_rect, Pointer::Hidden), this,
             [this, then, state](const Result<QImage> &shot) {
                 if (m_state != state)
                     return;
                 if (!shot) {
                     Q_EMIT shootingEnded();
                     finish(std::unexpected(shot.error()));
                     return;
                 }
                 (this->*then)(*shot);
             });
}

void ScrollingCaptureSession::takeFirstShot(const QImage &shot)
{
    m_plan.emplace(shot.height(),
                   std::floor(std::max(m_rect.height() * kStepOfHeight, kLeastStep)) * m_screen.scale);
    addShot(shot);
}

void ScrollingCaptureSession::nextStep()
{
    if (m_stopped)
        return end(Reason::Stopped);
    if (m_frames >= m_maxFrames || m_stitcher->isFull())
        return end(Reason::Limit);
    if (m_automatic && isAtTheEnd()) {
        const Reason still = m_frames == 1 ? Reason::NothingMoved : Reason::End;
        return end(m_lost > 0 ? Reason::LostThread : still);
    }
    if (m_automatic) {
        scrollOnce();
        return;
    }
    m_state = State::ByHand;
    pauseFor(kByHandPause, &ScrollingCaptureSession::shootByHand);
}

void ScrollingCaptureSession::shootByHand()
{
    m_state = State::Shooting;
    shoot(&ScrollingCaptureSession::addShot);
}

std::optional<quint32> ScrollingCaptureSession::windowAtTarget() const
{
    for (const ListedWindow &window : m_ports.screens.windows()) {
        const bool isOwn = window.pid == QCoreApplication::applicationPid(); // not in the shots either
        if (window.layer == 0 && !isOwn && holds(window.frame, target()))
            return window.id;
    }
    return {};
}

bool ScrollingCaptureSession::isOnScreen(quint32 window) const
{
    const QList<ListedWindow> windows = m_ports.screens.windows();
    return std::any_of(windows.cbegin(), windows.cend(),
                       [window](const ListedWindow &listed) { return listed.id == window; });
}

QPointF ScrollingCaptureSession::target() const
{
    return m_screen.frame().topLeft() + m_rect.center();
}

void ScrollingCaptureSession::scrollOnce()
{
    // Turning the wheel over whatever lay under a closed window would do anything but scroll.
    if (m_window && !isOnScreen(*m_window))
        return end(Reason::WindowGone);
    const QPointF hand = m_ports.pointer.position();
    const bool movedAway = m_aimedAt && QLineF(hand, *m_aimedAt).length() > kHandDistance;
    if (m_held || (movedAway && m_handRested < kHandRest)) {
        m_handRested = hand == m_handAt ? m_handRested + kHandCheck : 0;
        m_handAt = hand;
        m_state = State::YieldingToHand;
        pauseFor(kHandCheck, &ScrollingCaptureSession::scrollOnce);
        return;
    }
    const bool isThere = m_aimedAt && !movedAway;
    m_handRested = 0;
    m_ports.pointer.warp(target());
    m_aimedAt = m_ports.pointer.position(); // as the screen's pixels round it
    m_state = State::Aiming;
    if (isThere)
        startTurning();
    else
        pauseFor(kAimPause, &ScrollingCaptureSession::startTurning);
}

void ScrollingCaptureSession::startTurning()
{
    m_clicks = 0;
    m_regained = 0;
    turn(m_plan->clicks());
}

void ScrollingCaptureSession::turn(int clicks)
{
    m_clicks += clicks;
    m_turned += clicks;
    m_state = State::Turning;
    // A wheel that can't be turned leaves the picture unchanged, and that ends the session soon enough.
    whenDone(m_ports.pointer.wheel(clicks), this, [this](const Result<void> &) {
        m_stillness = {};
        m_settling = 0;
        m_sameShiftFor = 0;
        if (m_stopped)
            end(Reason::Stopped);
        else
            settle();
    });
}

void ScrollingCaptureSession::settle()
{
    m_state = State::Settling;
    pauseFor(kSampleGap, &ScrollingCaptureSession::takeSample);
}

void ScrollingCaptureSession::takeSample()
{
    m_settling += kSampleGap;
    shoot(&ScrollingCaptureSession::judgeSample);
}

void ScrollingCaptureSession::judgeSample(const QImage &sample)
{
    std::optional<RowSignatures> rows = RowSignatures::of(sample);
    if (!rows) {
        addShot(sample);
        return;
    }
    const FrameStitcher::Sight sight = m_stitcher->look(sample, *rows, expectedShift());
    noteSight(sight);
    m_stillness.addSample(std::move(*rows), kSampleGap);
    if (!hasComeToRest(sight.step))
        settle();
    else if (sight.step)
        useStep(sample, *sight.step);
    else if (!sight.isStill && m_clicks > 0 && m_regained < kTimesToRegain)
        regainOverlap();
    else
        addShot(sample);
}

std::optional<double> ScrollingCaptureSession::expectedShift() const
{
    if (!m_automatic || m_clicks <= 0)
        return {};
    return m_plan->expectedShift(m_clicks);
}

void ScrollingCaptureSession::noteSight(const FrameStitcher::Sight &sight)
{
    const int shift = sight.step ? sight.step->shift : 0;
    const bool isKnown = sight.step || sight.isStill;
    m_sameShiftFor = isKnown && shift == m_lastShift ? m_sameShiftFor + kSampleGap : 0;
    m_lastShift = shift;
}

bool ScrollingCaptureSession::hasComeToRest(const std::optional<FrameStitcher::Step> &step) const
{
    if (m_settling >= kLongestWait)
        return true;
    if (m_stillness.quietFor() < kQuietTime && m_sameShiftFor < kSameShiftTime)
        return false;
    if (m_settling >= kOrdinaryWait)
        return true;
    // Sooner only when all the movement that was asked for has been seen.
    const std::optional<double> expected = expectedShift();
    return step && expected && step->shift >= kNearlyAll * *expected;
}

void ScrollingCaptureSession::useStep(const QImage &sample, const FrameStitcher::Step &step)
{
    const bool wasFirstClick = !m_plan->hasLearned();
    m_plan->learn(step, m_clicks);
    if (const int more = wasFirstClick ? m_plan->clicksAfter(step.shift) : 0; more > 0)
        turn(more);
    else
        addShot(sample);
}

void ScrollingCaptureSession::regainOverlap()
{
    m_plan->tooMany(m_clicks);
    ++m_regained;
    ++m_lost;
    // At last to where the last frame was taken, so that the next step can begin there.
    turn(m_regained < kTimesToRegain ? -((m_clicks + 1) / 2) : -m_clicks);
}

void ScrollingCaptureSession::addShot(const QImage &shot)
{
    if (m_stitcher->add(shot, expectedShift())) {
        m_frames = int(m_stitcher->frames().size());
        m_unchanged = 0;
        m_lost = 0;
        if (!m_automatic)
            m_message = CaptureTexts::tr("Scroll the area slowly");
        Q_EMIT changed();
    } else {
        noteUnchanged(shot, m_stitcher->lastSight());
    }
    nextStep();
}

void ScrollingCaptureSession::noteUnchanged(const QImage &shot, const FrameStitcher::Sight &sight)
{
    ++m_unchanged;
    if (!sight.isStill) {
        ++m_lost;
        if (!m_automatic && m_lost >= kLostByHand)
            say(CaptureTexts::tr("Scroll back a little"));
        return;
    }
    if (!m_automatic) {
        m_lost = 0;
        return;
    }
    const std::optional<RowSignatures> rows = RowSignatures::of(shot);
    m_isAlive = rows && rows->hashes != m_stitcher->frames().last().rows.hashes;
    if (m_isAlive)
        m_stitcher->refresh(shot); // pictures that came late
}

bool ScrollingCaptureSession::isAtTheEnd() const
{
    return m_unchanged >= (m_isAlive && m_lost == 0 ? kUnchangedWhileAlive : kUnchangedAtTheEnd);
}

void ScrollingCaptureSession::say(const QString &message)
{
    if (m_message == message)
        return;
    m_message = message;
    Q_EMIT changed();
}

void ScrollingCaptureSession::end(Reason reason)
{
    m_reason = reason;
    m_composed = runInBackground(
        [stitcher = std::shared_ptr<const FrameStitcher>(m_stitcher)] { return stitcher->result(); });
    const bool hasScrolled = m_automatic && m_turned > 0 && (m_frames > 1 || reason != Reason::NothingMoved);
    if (!hasScrolled || reason == Reason::WindowGone || (m_window && !isOnScreen(*m_window))) {
        deliverComposed();
        return;
    }
    m_state = State::ScrollingBack;
    say(CaptureTexts::tr("Scrolling back…"));
    m_handAt = m_ports.pointer.position();
    if (m_aimedAt && QLineF(m_handAt, *m_aimedAt).length() <= kHandDistance) {
        scrollBack();
        return;
    }
    m_ports.pointer.warp(target());
    pauseFor(kAimPause, &ScrollingCaptureSession::scrollBack);
}

void ScrollingCaptureSession::scrollBack()
{
    qint64 shift = 0;
    for (const FrameStitcher::Step &step : steps())
        shift += step.shift;
    // What was turned and not seen to move is still to come, or was lost.
    const bool isPending = m_reason == Reason::Stopped || m_reason == Reason::LostThread;
    const int clicks =
        m_plan->hasLearned() ? m_plan->clicksBack(shift) + (isPending ? std::max(0, m_clicks) : 0) : m_turned;
    whenDone(m_ports.pointer.wheel(-clicks), this, [this](const Result<void> &) {
        if (m_aimedAt && QLineF(m_handAt, *m_aimedAt).length() > kHandDistance)
            m_ports.pointer.warp(m_handAt);
        deliverComposed();
    });
}

void ScrollingCaptureSession::deliverComposed()
{
    m_state = State::Composing;
    Q_EMIT shootingEnded();
    whenDone(m_composed, this, [this](const std::optional<QImage> &image) { finish(image); });
}

void ScrollingCaptureSession::finish(Result<std::optional<QImage>> result)
{
    m_state = State::Finished;
    m_promise.addResult(std::move(result));
    m_promise.finish();
}
