#pragma once

#include <QElapsedTimer>
#include <QImage>
#include <QObject>
#include <QSize>
#include <QString>
#include <QTimer>
#include <functional>
#include <memory>

class Movies;

// Plays a film over and over, without its sound unless that is given. Pictures are decoded on a worker, one at
// a time; what would come too late is left out. Main thread only.
class FilmPlayer : public QObject {
    Q_OBJECT
public:
    // It outlives the player.
    explicit FilmPlayer(Movies &movies, QObject *parent = nullptr);
    ~FilmPlayer() override;

    // Plays the sound of a film from that second on, until what it returns is gone; nothing when there is
    // none. Called on a worker.
    using PlaySound = std::function<std::shared_ptr<void>(const QString &path, double from)>;
    void setSound(PlaySound playSound) { m_playSound = std::move(playSound); }

    // No picture is larger than `bounds`, in pixels.
    void play(const QString &path, QSize bounds);
    void stop();
    void setPaused(bool paused);
    bool isPaused() const { return m_isPaused; }
    // Empty while nothing plays.
    const QString &path() const { return m_path; }
    // Null until the first is there.
    const QImage &picture() const { return m_picture; }
    double position() const { return m_position; } // seconds
    double duration() const { return m_duration; } // 0 until it is known

Q_SIGNALS:
    // Another picture is to be shown.
    void changed();
    // It can't be played, for this reason.
    void failed(const QString &message);

private:
    struct Reel;
    void runFrom(double seconds);
    void next();
    static void silence(std::shared_ptr<void> sound);

    Movies &m_movies;
    PlaySound m_playSound;
    std::shared_ptr<void> m_sound;
    QString m_path;
    std::shared_ptr<Reel> m_reel;
    QImage m_picture;
    double m_position = 0;
    double m_duration = 0;
    double m_begin = 0; // where the clock began
    bool m_isPaused = false;
    QElapsedTimer m_clock;
    QTimer m_tick;
    bool m_isDecoding = false;
};
