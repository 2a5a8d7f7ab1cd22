#pragma once

#include <QDateTime>
#include <QObject>
#include <optional>

class Clock;

// What the program is doing, and what it refuses while it does. Every flow asks here and none keeps such a state
// for itself. There are two lanes, since a picture may be taken while a steps session runs:
//
// | Capture      | enters by                               | leaves by                   |
// |--------------|-----------------------------------------|-----------------------------|
// | Idle         | the start, or the end of any capture    | an accepted request         |
// | CountingDown | an accepted request with a delay        | the end of the countdown    |
// | Shooting     | the countdown's end, a picked window    | the pictures, or the result |
// | Selecting    | the overlay                             | the overlay's end           |
// | Scrolling    | a picked region                         | the session's end           |
// | Recording    | a region picked for a recording         | the recorder's end          |
//
// | Steps        |                                         |                             |
// |--------------|-----------------------------------------|-----------------------------|
// | Off          | the start, or the end of a session      | an accepted request         |
// | Starting     | an accepted request, counting down      | the recorder listening      |
// | Running      | the recorder listening                  | the session's end           |
class Activity : public QObject {
    Q_OBJECT
public:
    enum class Capture { Idle, CountingDown, Shooting, Selecting, Scrolling, Recording };
    enum class Steps { Off, Starting, Running };
    // Tells a piece of work in the capture lane from one that was given up. Never used twice.
    using Run = quint64;

    explicit Activity(const Clock &clock, QObject *parent = nullptr) : QObject(parent), m_clock(clock) {}

    Capture capture() const { return m_capture; }
    Steps steps() const { return m_steps; }
    bool isCapturing() const { return m_capture != Capture::Idle && !isRecording(); }
    bool isRecording() const { return m_capture == Capture::Recording; }
    bool isStepping() const { return m_steps != Steps::Off; }
    bool isIdle() const { return m_capture == Capture::Idle && m_steps == Steps::Off; }

    // A capture or a recording asks to start. While another capture or a recording runs it gets nothing, and a
    // line in the log says why. A lost capture is cleared first.
    std::optional<Run> beginCapture(int delay);
    // The run goes on to that state; false when it was given up meanwhile.
    bool enter(Run run, Capture state);
    bool isCurrent(Run run) const { return m_capture != Capture::Idle && run == m_run; }
    // Nothing happens for a run that was given up.
    void end(Run run);

    // A preset asks to start; refused without a word.
    bool acceptsPreset() const { return m_capture == Capture::Idle; }

    // A steps session asks to start; refused without a word while the capture lane is busy or a session runs.
    bool beginSteps();
    void setStepsRunning();
    void endSteps();

    // Gives up a capture that got lost: one that has lasted more than 30 seconds without an overlay and is no
    // recording.
    void clearStuckCapture();

Q_SIGNALS:
    void changed();

private:
    void setCapture(Capture state);
    void setSteps(Steps state);

    const Clock &m_clock;
    Capture m_capture = Capture::Idle;
    Steps m_steps = Steps::Off;
    Run m_run = 0;
    QDateTime m_captureStartedAt;
};
