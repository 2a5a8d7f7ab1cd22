#include "library/ui/film_player.h"

#include "base/async.h"
#include "platform/movies.h"

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

FilmPlayer::~FilmPlayer() = default;

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
        if (m_isPaused)
            next(); // its first picture
        else
            runFrom(0);
    });
}

// The clock begins with the sound, if there is one.
void FilmPlayer::runFrom(double seconds)
{
    m_tick.stop();
    silence(std::exchange(m_sound, {}));
    m_begin = seconds;
    const auto begin = [this] {
        m_clock.start();
        m_tick.start();
        next();
    };
    if (!m_playSound)
        return begin();
    const auto start = [play = m_playSound, path = m_path, seconds] { return play(path, seconds); };
    whenDone(runInBackground(start), this,
             [this, begin, reel = m_reel, seconds](std::shared_ptr<void> sound) {
                 const bool isWanted = reel == m_reel && !m_isPaused && m_begin == seconds;
                 if (isWanted)
                     std::swap(m_sound, sound);
                 silence(std::move(sound));
                 if (isWanted)
                     begin();
             });
}

void FilmPlayer::setPaused(bool paused)
{
    if (paused == m_isPaused || m_path.isEmpty())
        return;
    m_isPaused = paused;
    if (!paused && m_duration > 0)
        return runFrom(m_position);
    m_tick.stop();
    silence(std::exchange(m_sound, {}));
    Q_EMIT changed();
}

// To stop a sound waits for what decodes it.
void FilmPlayer::silence(std::shared_ptr<void> sound)
{
    if (sound)
        runInBackground([sound = std::move(sound)]() mutable { sound.reset(); });
}

void FilmPlayer::stop()
{
    m_tick.stop();
    silence(std::exchange(m_sound, {}));
    m_isPaused = false;
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
    const double seconds = m_tick.isActive() ? m_begin + double(m_clock.elapsed()) / 1000 : m_position;
    if (seconds >= m_duration)
        return runFrom(0);
    m_isDecoding = true;
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
