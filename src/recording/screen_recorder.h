#pragma once

#include "platform/movies.h"
#include "platform/screens.h"
#include "recording/film_session.h"
#include "recording/recording_place.h"
#include "settings/capture_options.h"

#include <QObject>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>

class Library;
class Permissions;

// Records a display or a part of it into a film of the Library. One recording at a time; main thread. A
// recorder that dies while it records ends its film first, which may take a moment.
class ScreenRecorder : public QObject {
    Q_OBJECT
public:
    enum class State { Idle, Starting, Recording, Paused, Stopping };

    struct Ports {
        ScreenFilms &films;
        SoundSources &sounds;
        Movies &movies;
        const Permissions &permissions;
        Library &library;
        QString notes; // RecordingPlace::notesIn the state folder
    };
    // The film, or why there is none, or both: a film that ended before its time. Called once a recording.
    using Completion =
        std::function<void(const std::optional<QString> &path, const std::optional<Error> &error)>;

    explicit ScreenRecorder(const Ports &ports, QObject *parent = nullptr);
    ~ScreenRecorder() override;

    // The pixels that are filmed of `rect`, which is in points from the screen's top left: even sizes only.
    static QRect pixelsOf(const Screen &screen, const QRectF &rect);

    // Windows of this program that are kept out of the next film. Their native ids.
    void setKeptOut(const QList<quint32> &windows) { m_keptOut = windows; }
    // For the next film: this file instead of a new one in the Library.
    void setTarget(const QString &path) { m_target = path; }
    void setOnTick(std::function<void(double elapsed)> onTick) { m_onTick = std::move(onTick); }

    // `started` tells whether it runs now. Refused while it isn't idle.
    void start(const Screen &screen, const QRectF &rect, const CaptureOptions &options,
               Completion completion);
    void stop();
    void pause();
    void resume();

    State state() const { return m_state; }
    // Seconds of film so far.
    double elapsed() const;
    // Why sound that was asked for isn't recorded.
    const QList<Error> &refusedSounds() const { return m_refusedSounds; }

Q_SIGNALS:
    void stateChanged(ScreenRecorder::State state);

private:
    struct Film; // what worker threads hold

    void setState(State state);
    void started(const std::shared_ptr<Film> &film, const std::optional<Error> &error);
    void broke(const Error &error);
    void finish(std::optional<Error> error);
    void complete(const std::optional<QString> &path, const std::optional<Error> &error);
    void tick();

    Ports m_ports;
    State m_state = State::Idle;
    Completion m_finish;
    std::function<void(double)> m_onTick;
    QList<quint32> m_keptOut;
    QString m_target;
    QList<Error> m_refusedSounds;
    QString m_startLine; // for the log
    QTimer m_ticks;
    bool m_stopsWhenStarted = false;
    std::optional<Error> m_brokeEarly; // before it was known to have started
    std::shared_ptr<Film> m_film;
    std::function<void()> m_wait; // until no worker holds the film any more
};
