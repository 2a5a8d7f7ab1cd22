#pragma once

#include <QElapsedTimer>
#include <QImage>
#include <QObject>
#include <QSize>
#include <QString>
#include <QTimer>
#include <memory>

class Movies;

// Plays a film without its sound, over and over. Pictures are decoded on a worker, one at a time; what would
// come too late is left out. Main thread only.
class FilmPlayer : public QObject {
    Q_OBJECT
public:
    // It outlives the player.
    explicit FilmPlayer(Movies &movies, QObject *parent = nullptr);

    // No picture is larger than `bounds`, in pixels.
    void play(const QString &path, QSize bounds);
    void stop();
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
    void next();

    Movies &m_movies;
    QString m_path;
    std::shared_ptr<Reel> m_reel;
    QImage m_picture;
    double m_position = 0;
    double m_duration = 0;
    QElapsedTimer m_clock;
    QTimer m_tick;
    bool m_isDecoding = false;
};
