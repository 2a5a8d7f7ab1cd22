#include "capture/scrolling_session.h"

#include "capture/blank_areas.h"
#include "capture/floating_parts.h"
#include "capture/moving_part.h"
#include "capture/texts.h"
#include "capture/wheel_hand.h"
#include "document/image_files.h"
#include "platform/permissions.h"
#include "platform/pointer_control.h"
#include "platform/screen_pictures.h"

#include <QCoreApplication>

namespace {

constexpr int kUnchangedAtTheEnd = 3;
constexpr int kUnchangedWhileExpecting = 6; // where the page has shown that more may be on its way
constexpr int kLostByHand = 2;              // shots, before the user is told
constexpr double kStepOfHeight = 0.55;      // leaves an overlap of about 45 percent
constexpr double kLeastStep = 40;           // points

// Milliseconds.
constexpr int kByHandPause = 300; // between two shots
constexpr int kSampleGap = 50;
constexpr int kQuietTime = 100;     // without movement counts as standing still
constexpr int kSteadyTime = 200;    // the same, before it is known how far a click goes
constexpr int kSameShiftTime = 200; // the same, beside something that moves by itself
constexpr int kOrdinaryWait = 380;  // for movement that has not been seen yet
constexpr int kLongestWait = 1000;  // for a page that never stands still
constexpr int kHandCheck = 100;
constexpr int kHandRest = 300;

constexpr double kBeside = 12;     // points
constexpr double kNearlyAll = 0.9; // of the expected shift
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
    if (m_state == State::ScrollingBack)
        m_back->cancel();
    if (m_stopped)
        return;
    m_stopped = true;
    switch (m_state) {
    case State::AtLimit:
        end(Reason::Limit);
        break;
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

void ScrollingCaptureSession::cancel()
{
    m_isCancelled = true;
    stop();
}

void ScrollingCaptureSession::goOn()
{
    if (m_state != State::AtLimit)
        return;
    m_maxFrames += m_moreFrames;
    m_state = State::ByHand; // until the step that follows says more
    say(m_automatic ? CaptureTexts::tr("Auto-scrolling…") : CaptureTexts::tr("Scroll the area slowly"));
    nextStep();
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
    m_moreFrames = m_maxFrames;
    addShot(lookAt(shot));
}

void ScrollingCaptureSession::nextStep()
{
    if (m_stopped)
        return end(Reason::Stopped);
    if (m_stitcher->isFull() || (m_frames >= m_maxFrames && !m_asksAtLimit))
        return end(Reason::Limit);
    if (m_frames >= m_maxFrames) {
        m_state = State::AtLimit;
        m_message = CaptureTexts::tr("The picture is long, and it goes on");
        Q_EMIT changed();
        return;
    }
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
    shoot(&ScrollingCaptureSession::addShotByHand);
}

void ScrollingCaptureSession::addShotByHand(const QImage &shot)
{
    addShot(lookAt(shot));
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

QPointF ScrollingCaptureSession::target() const
{
    return m_screen.frame().topLeft() + m_rect.center();
}

void ScrollingCaptureSession::scrollOnce()
{
    if (!WheelHand::isThere(m_ports.screens, m_window))
        return end(Reason::WindowGone);
    const QPointF hand = m_ports.pointer.position();
    const bool movedAway = m_aimedAt && WheelHand::isAway(hand, *m_aimedAt);
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
        pauseFor(WheelHand::kAimPause, &ScrollingCaptureSession::startTurning);
}

void ScrollingCaptureSession::startTurning()
{
    m_clicks = 0;
    m_regained = 0;
    m_patience.begin();
    turn(m_plan->clicks());
}

void ScrollingCaptureSession::turn(int clicks)
{
    m_clicks += clicks;
    m_turned += clicks;
    m_turn = clicks;
    if (!m_parks)
        return turnNow();
    m_ports.pointer.warp(target());
    m_aimedAt = m_ports.pointer.position();
    m_state = State::Aiming;
    pauseFor(WheelHand::kAimPause, &ScrollingCaptureSession::turnNow);
}

void ScrollingCaptureSession::turnNow()
{
    m_state = State::Turning;
    // A wheel that can't be turned leaves the picture unchanged, and that ends the session soon enough.
    whenDone(m_ports.pointer.wheel(m_turn), this, [this](const Result<void> &) {
        if (m_stopped)
            return end(Reason::Stopped);
        if (m_parks)
            park();
        beginSettling();
    });
}

// Beside the region, where the screen has room, or else in its corner: what lies under the pointer may light
// up.
void ScrollingCaptureSession::park()
{
    const QRectF region = m_rect.translated(m_screen.frame().topLeft());
    const QPointF spots[] = {{region.right() + kBeside, region.center().y()},
                             {region.left() - kBeside, region.center().y()},
                             {region.center().x(), region.bottom() + kBeside},
                             {region.center().x(), region.top() - kBeside},
                             region.bottomRight() - QPointF(1, 1)};
    for (const QPointF &spot : spots) {
        if (!m_screen.holds(spot))
            continue;
        m_ports.pointer.warp(spot);
        break;
    }
    m_aimedAt = m_ports.pointer.position();
}

void ScrollingCaptureSession::beginSettling()
{
    m_stillness = {};
    m_settling = 0;
    m_sameShiftFor = 0;
    settle();
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

// A picture that there is no memory to compare looks like one that didn't change.
ScrollingCaptureSession::Shot ScrollingCaptureSession::lookAt(const QImage &image)
{
    Shot shot{.image = image, .picture = ComparedPicture::of(image).value_or(ComparedPicture{}), .sight = {}};
    if (!m_stitcher->frames().isEmpty())
        shot.sight = m_stitcher->look(shot.picture, expectedShift());
    return shot;
}

void ScrollingCaptureSession::judgeSample(const QImage &sample)
{
    const Shot shot = lookAt(sample);
    noteSight(shot.sight);
    m_stillness.addSample(shot.picture, kSampleGap);
    if (!hasComeToRest(shot.sight.step) || isWorthWaiting(shot) || mayGoOut(shot)) {
        settle();
    } else if (!m_parks && isLitUp(shot)) {
        m_parks = true;
        park();
        beginSettling();
    } else if (shot.sight.step)
        useStep(shot);
    else if (!shot.sight.isStill && m_clicks > 0 && m_regained < kTimesToRegain)
        regainOverlap();
    else
        addShot(shot);
}

bool ScrollingCaptureSession::isWorthWaiting(const Shot &shot)
{
    return shot.sight.step && m_plan->hasLearned() && m_patience.isWorthIt(signsIn(shot), m_settling);
}

Patience::Signs ScrollingCaptureSession::signsIn(const Shot &shot) const
{
    // Two samples that are alike are no reason to wait, but not the end of what changed before either.
    return {.changes = m_stillness.quietFor() < (m_patience.isWaiting() ? kQuietTime : kSampleGap),
            .hasBlank = shot.sight.step && BlankAreas::areIn(shot.picture.tiles(), *shot.sight.step)};
}

// The first click is short enough for both pictures to show what now lies under the pointer, and at the end
// of a page both do.
bool ScrollingCaptureSession::isLitUp(const Shot &shot) const
{
    if (shot.sight.step ? m_plan->hasLearned() : !shot.sight.isStill)
        return false;
    const QPointF spot = (*m_aimedAt - m_screen.frame().topLeft() - m_rect.topLeft()) * m_screen.scale;
    return MovingPart::differsAround(m_stitcher->frames().last(), shot.picture,
                                     shot.sight.step.value_or(ScrollStep{}), spot.toPoint());
}

// At the end of a page the light of the pointer may be late to go, and a later picture counts.
bool ScrollingCaptureSession::mayGoOut(const Shot &shot) const
{
    return m_parks && shot.sight.isStill && m_settling < kLongestWait &&
           shot.picture.rows().hashes != m_stitcher->frames().last().rows().hashes;
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
    const std::optional<double> expected = expectedShift();
    const bool isWhereExpected = step && expected && std::abs(step->shift - *expected) <= 1;
    if (isWhereExpected && m_sameShiftFor >= kSampleGap)
        return true;
    const int quiet = m_stillness.quietFor();
    if (quiet < kQuietTime && m_sameShiftFor < kSameShiftTime)
        return false;
    if (m_settling >= kOrdinaryWait || (step && quiet >= kSteadyTime))
        return true;
    // Sooner only when nearly all the movement that was asked for has been seen.
    return step && expected && step->shift >= kNearlyAll * *expected;
}

void ScrollingCaptureSession::useStep(const Shot &shot)
{
    const FrameStitcher::Step &step = *shot.sight.step;
    const bool wasFirstClick = !m_plan->hasLearned();
    m_plan->learn(step, m_clicks);
    if (const int more = wasFirstClick ? m_plan->clicksAfter(step.shift) : 0; more > 0)
        turn(more);
    else
        addShot(shot);
}

void ScrollingCaptureSession::regainOverlap()
{
    m_plan->tooMany(m_clicks);
    ++m_regained;
    ++m_lost;
    // At last to where the last frame was taken, so that the next step can begin there.
    turn(m_regained < kTimesToRegain ? -((m_clicks + 1) / 2) : -m_clicks);
}

void ScrollingCaptureSession::addShot(const Shot &shot)
{
    const QImage before = m_stitcher->frames().isEmpty() ? QImage() : m_stitcher->frames().last().pixels();
    if (m_stitcher->add(shot.image, shot.picture, shot.sight)) {
        if (shot.sight.step && FloatingParts::hideRows(before, shot.picture.pixels(), *shot.sight.step))
            m_plan->showTwice();
        m_frames = int(m_stitcher->frames().size());
        m_hasGrown = m_hasGrown || m_unchanged > 0;
        m_expectsMore = shot.sight.step && m_patience.expectsMore(signsIn(shot));
        m_unchanged = 0;
        m_lost = 0;
        if (!m_automatic)
            m_message = CaptureTexts::tr("Scroll the area slowly");
        Q_EMIT changed();
    } else {
        noteUnchanged(shot);
    }
    nextStep();
}

void ScrollingCaptureSession::noteUnchanged(const Shot &shot)
{
    ++m_unchanged;
    if (!shot.sight.isStill) {
        ++m_lost;
        if (!m_automatic && m_lost >= kLostByHand)
            say(CaptureTexts::tr("Scroll back a little"));
        return;
    }
    if (!m_automatic) {
        m_lost = 0;
        say(CaptureTexts::tr("Scroll the area slowly"));
        return;
    }
    m_parks = true; // the last frame may show the light
    if (shot.picture.rows().hashes != m_stitcher->frames().last().rows().hashes) {
        m_expectsMore = true;
        m_stitcher->refresh(shot.image, shot.picture); // pictures that came late
    }
}

bool ScrollingCaptureSession::isAtTheEnd() const
{
    const bool mayGoOn = (m_expectsMore || m_hasGrown) && m_lost == 0;
    return m_unchanged >= (mayGoOn ? kUnchangedWhileExpecting : kUnchangedAtTheEnd);
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
    m_reason = m_isCancelled ? Reason::Cancelled : reason;
    if (m_isCancelled)
        m_composed = readyFuture(std::optional<QImage>());
    else
        m_composed = runInBackground(
            [stitcher = std::shared_ptr<const FrameStitcher>(m_stitcher)] { return stitcher->result(); });
    const bool hasScrolled = m_automatic && m_turned > 0 && (m_frames > 1 || reason != Reason::NothingMoved);
    if (!hasScrolled || reason == Reason::WindowGone || !WheelHand::isThere(m_ports.screens, m_window))
        deliverComposed();
    else
        scrollBack();
}

void ScrollingCaptureSession::scrollBack()
{
    m_state = State::ScrollingBack;
    say(CaptureTexts::tr("Scrolling back…"));
    m_back = std::make_unique<ScrollBack>(ScrollBack::Ports{m_ports.screens, m_ports.pointer, m_ports.pause},
                                          ScrollBack::Place{target(), m_window});
    m_back->start(clicksBack(), [this] { deliverComposed(); });
}

int ScrollingCaptureSession::clicksBack() const
{
    if (!m_plan->hasLearned())
        return m_turned;
    qint64 shift = 0;
    for (const FrameStitcher::Step &step : steps())
        shift += step.shift;
    // What was turned and not seen to move is still to come, or was lost.
    const bool isPending =
        m_reason == Reason::Stopped || m_reason == Reason::Cancelled || m_reason == Reason::LostThread;
    return m_plan->clicksBack(shift) + (isPending ? std::max(0, m_clicks) : 0);
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
