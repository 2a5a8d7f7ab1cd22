#pragma once

#include "platform/movies.h"

#include <QImage>
#include <QObject>
#include <memory>
#include <optional>

class QThreadPool;
class SoundOutput;

// Plays a film and shows single pictures of it. It works on one of `threads`, which holds it until the film
// is closed; its destructor doesn't wait. Main thread.
class MoviePlayer : public QObject {
    Q_OBJECT
public:
    struct Ports {
        Movies &movies;
        SoundOutput &output;
        QThreadPool &threads;
    };

    explicit MoviePlayer(const Ports &ports, QObject *parent = nullptr);
    ~MoviePlayer() override;

    // opened() or failed() follows, then the first picture.
    void open(const QString &path);
    // The film that is open has another name now.
    void setPath(const QString &path);
    // Pictures get no larger than this many pixels; an empty size leaves them as they are.
    void setBounds(QSize pixels);

    const std::optional<MovieInfo> &info() const { return m_info; }
    const QImage &picture() const { return m_picture; }
    double position() const { return m_position; } // seconds
    bool isPlaying() const { return m_isPlaying; }

    // Stops playing. The newest wish counts: those that were overtaken are never shown.
    void seek(double seconds);
    // Shows the picture that comes so many pictures after the one at `from`, or before it; stepped() tells
    // where that is.
    void step(double from, int pictures);
    // From the position, or from `from` when that lies outside, up to `to`; over and over when it loops.
    enum class Way { Once, Looped };
    void play(double from, double to, Way way = Way::Once);
    // From `from` on, wherever the position is.
    void playFrom(double from, double to);
    void pause();

Q_SIGNALS:
    void opened();
    void failed(const Error &error);
    // The picture, the position, or both.
    void changed();
    void stepped(double position);
    void playingChanged(bool isPlaying);

private:
    class Core;

    void takeNews();
    void setPlaying(bool isPlaying);
    void start(double at, double from, double to, Way way);

    Ports m_ports;
    QSize m_bounds;
    std::shared_ptr<Core> m_core;
    std::optional<MovieInfo> m_info;
    QImage m_picture;
    double m_position = 0;
    bool m_isPlaying = false;
};
