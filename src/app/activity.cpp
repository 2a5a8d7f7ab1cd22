#include "app/activity.h"

#include "base/clock.h"
#include "base/log.h"

namespace {
constexpr qint64 kStuckAfter = 30000; // milliseconds
} // namespace

std::optional<Activity::Run> Activity::beginCapture(int delay)
{
    clearStuckCapture();
    if (m_capture != Capture::Idle) {
        Log::info(QStringLiteral("Capture ignored: ") +
                  (isRecording() ? QStringLiteral("recording in progress")
                                 : QStringLiteral("another capture is in progress")));
        return std::nullopt;
    }
    m_captureStartedAt = m_clock.now();
    ++m_run;
    setCapture(delay > 0 ? Capture::CountingDown : Capture::Shooting);
    return m_run;
}

bool Activity::enter(Run run, Capture state)
{
    if (!isCurrent(run))
        return false;
    setCapture(state);
    return true;
}

void Activity::end(Run run)
{
    if (isCurrent(run))
        setCapture(Capture::Idle);
}

bool Activity::beginSteps()
{
    if (m_capture != Capture::Idle || m_steps != Steps::Off)
        return false;
    setSteps(Steps::Starting);
    return true;
}

void Activity::setStepsRunning()
{
    if (m_steps == Steps::Starting)
        setSteps(Steps::Running);
}

void Activity::endSteps()
{
    setSteps(Steps::Off);
}

void Activity::clearStuckCapture()
{
    switch (m_capture) {
    case Capture::Idle:
    case Capture::Selecting: // the user may take any time
    case Capture::Recording:
        return;
    case Capture::CountingDown:
    case Capture::Shooting:
    case Capture::Scrolling:
        break;
    }
    const qint64 elapsed = m_captureStartedAt.msecsTo(m_clock.now());
    if (elapsed <= kStuckAfter)
        return;
    Log::error(QStringLiteral("Capture state was stuck for %1s — resetting").arg(elapsed / 1000));
    setCapture(Capture::Idle);
}

void Activity::setCapture(Capture state)
{
    if (std::exchange(m_capture, state) != state)
        Q_EMIT changed();
}

void Activity::setSteps(Steps state)
{
    if (std::exchange(m_steps, state) != state)
        Q_EMIT changed();
}
