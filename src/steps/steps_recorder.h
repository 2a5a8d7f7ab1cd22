#pragma once

#include "base/result.h"
#include "platform/press_pictures.h"
#include "steps/guide_step.h"

#include <QObject>
#include <QString>
#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <optional>

class AccessibleElements;
class NoticeBoard;
class Permissions;
class PointerControl;
class ScreenPictures;
class Sounds;
class StepsSession;
class TextRecognizer;
class Workspace;

// Turns a session of ordinary clicking into the steps of a guide: each press of the left button in another
// program becomes a picture of the pressed window, the place of the press in it, and a caption. Serves one
// session. Main thread only.
class StepsRecorder : public QObject {
    Q_OBJECT
public:
    enum class State { Idle, Running, Paused, Finishing, Ended };

    struct Parts {
        PressPictures &presses;
        AccessibleElements &elements;
        Screens &screens;
        ScreenPictures &pictures;
        PointerControl &pointer;
        Permissions &permissions;
        Workspace &workspace;
        Sounds &sounds;
        TextRecognizer &recognizer;
        NoticeBoard &notices;
        QString folder; // where sessions lie
    };
    // The steps in their order; none when the session was cancelled.
    using Finish = std::function<void(const QList<GuideStep> &)>;

    static constexpr std::chrono::milliseconds kDoubleClick{450};
    static constexpr qsizetype kMostSteps = 150;

    explicit StepsRecorder(Parts parts, QObject *parent = nullptr);
    ~StepsRecorder() override;

    // Nothing has started when it fails, and `finish` is not kept.
    Result<void> start(Finish finish);
    State state() const { return m_state; }
    const QList<GuideStep> &steps() const { return m_steps; }
    bool isPaused() const { return m_state == State::Paused; }
    // A picture is being taken or stored.
    bool isCapturing() const { return !m_pending.empty(); }
    // The line that tells of the last step.
    const QString &lastCaptured() const { return m_lastCaptured; }
    // Where the steps lie on disk; null when there was no room for them.
    std::shared_ptr<StepsSession> session() const { return m_session; }

    void setPaused(bool paused);
    // A step of what the screen under the pointer shows now, without a click.
    void addStep();
    // Delivers the steps once what is under way is in them.
    void done();
    // Delivers none.
    void cancel();

Q_SIGNALS:
    void changed();

private:
    struct Capture;

    bool isLive() const { return m_state == State::Running || m_state == State::Paused; }
    void clicked(const Press &press);
    void capture(const Press &press);
    void frame(Capture &capture, const QList<ListedWindow> &windows, const Screen &screen,
               std::optional<QPointF> click, const ClickTarget &target) const;
    void crop(quint64 number, const QImage &image, const QRect &rect);
    Capture *pending(quint64 number);
    void failCapture(quint64 number, const Error &error);
    void flush();
    void append(const Capture &capture);
    void readLabel(const Capture &capture);
    void labelRead(const QUuid &step, const QString &caption);
    void store();
    void stop();
    void finishIfReady();
    void deliver(const QList<GuideStep> &steps);

    Parts m_parts;
    State m_state = State::Idle;
    QList<GuideStep> m_steps;
    QString m_lastCaptured;
    std::optional<std::chrono::milliseconds> m_lastClick;
    std::deque<std::unique_ptr<Capture>> m_pending; // in the order of the presses
    quint64 m_lastNumber = 0;
    int m_labelsBeingRead = 0;
    bool m_hasToldFailure = false;
    Finish m_finish;
    std::shared_ptr<StepsSession> m_session;
};
