#include "library/ui/film_player.h"

#include "base/async.h"
#include "platform/movies.h"

#include <cmath>

namespace {
constexpr int kInterval = 33; // milliseconds between two pictures
}

struct FilmPlayer::Reel {
    std::unique_ptr<MovieFrames> frames;
};

FilmPlayer::FilmPlayer(Movies &movies, QObject *parent) : QObject(parent), m_movies(movies)
{
    m_tick.setInterval(kInterval);
    connect(&m_tick, &QTimer::timeout, this, &FilmPlayer::next);
}

void FilmPlayer::play(const QString &path, QSize bounds)
{
    stop();
    m_path = path;
    // The reel tells this film from one that was asked for before.
    m_reel = std::make_shared<Reel>();
    const auto open = [movies = &m_movies, path, bounds, reel = m_reel]() -> Result<std::shared_ptr<Reel>> {
        auto frames = movies->frames(path, bounds);
        if (!frames)
            return std::unexpected(frames.error());
        reel->frames = *std::move(frames);
        return reel;
    };
    whenDone(runInBackground(open), this, [this, reel = m_reel](const Result<std::shared_ptr<Reel>> &opened) {
        if (reel != m_reel)
            return;
        if (!opened) {
            stop();
            Q_EMIT failed(opened.error().message);
            return;
        }
        m_duration = reel->frames->info().duration;
        m_clock.start();
        m_tick.start();
        next();
    });
}

void FilmPlayer::stop()
{
    m_tick.stop();
    m_path.clear();
    m_reel.reset();
    m_picture = {};
    m_position = 0;
    m_duration = 0;
    m_isDecoding = false;
}

void FilmPlayer::next()
{
    if (m_isDecoding || m_duration <= 0)
        return;
    m_isDecoding = true;
    const double seconds = std::fmod(double(m_clock.elapsed()) / 1000, m_duration);
    const auto decode = [reel = m_reel, seconds] { return reel->frames->at(seconds); };
    whenDone(runInBackground(decode), this, [this, reel = m_reel, seconds](const Result<QImage> &picture) {
        if (reel != m_reel)
            return;
        m_isDecoding = false;
        if (!picture) {
            stop();
            Q_EMIT failed(picture.error().message);
            return;
        }
        m_picture = *picture;
        m_position = seconds;
        Q_EMIT changed();
    });
}
