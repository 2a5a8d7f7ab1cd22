#include "recording/movie_player.h"

#include "base/async.h"
#include "recording/film_sound.h"

#include <QThreadPool>
#include <condition_variable>
#include <mutex>

using std::chrono::steady_clock;

namespace {

constexpr std::chrono::milliseconds kTick{12};           // finer than a frame of any usual screen
constexpr std::chrono::milliseconds kSoundPatience{300}; // until the first sample is heard
// What is seen and what is heard are brought together a tenth of the way each tick, unless they are so far
// apart that the device must have gone.
constexpr double kPull = 0.1;
constexpr double kLostSound = 1.0; // seconds
constexpr double kJustBefore = 1e-4;

double since(steady_clock::time_point moment)
{
    return std::chrono::duration<double>(steady_clock::now() - moment).count();
}

} // namespace

// What the thread and the player share. The thread goes on until it is told to quit, and may outlive the
// player.
class MoviePlayer::Core {
public:
    struct Show {
        double time = 0;
        int steps = 0; // pictures further
    };
    struct Run {
        double at = 0;
        double from = 0;
        double to = 0;
        Way way = Way::Once;
    };
    struct News {
        std::optional<MovieInfo> opened;
        std::optional<Error> failed;
        QImage picture;
        std::optional<double> position;
        std::optional<double> stepped;
        bool hasEnded = false;
    };

    Core(MoviePlayer &player, const Ports &ports, QString path)
        : m_player(&player), m_movies(ports.movies), m_output(ports.output), m_path(std::move(path))
    {}

    void letGo()
    {
        const std::lock_guard lock(m_mutex);
        m_player = nullptr;
        m_quits = true;
        m_condition.notify_all();
    }
    void setPath(const QString &path)
    {
        const std::lock_guard lock(m_mutex);
        m_path = path;
    }
    void setBounds(QSize bounds)
    {
        const std::lock_guard lock(m_mutex);
        m_bounds = bounds;
        m_condition.notify_all();
    }
    void show(const Show &wish)
    {
        const std::lock_guard lock(m_mutex);
        // Steps from one place add up, also to those that are being taken.
        const std::optional<Show> &earlier = m_show ? m_show : m_showing;
        const bool isFurther =
            wish.steps != 0 && earlier && earlier->steps != 0 && earlier->time == wish.time;
        m_show = Show{wish.time, wish.steps + (isFurther ? earlier->steps : 0)};
        m_run.reset();
        ++m_runNumber;
        m_news.position.reset(); // of what was overtaken
        m_news.stepped.reset();
        m_condition.notify_all();
    }
    void play(const std::optional<Run> &run)
    {
        const std::lock_guard lock(m_mutex);
        m_run = run;
        ++m_runNumber;
        m_news.hasEnded = false; // of the run before
        m_condition.notify_all();
    }
    News takeNews()
    {
        const std::lock_guard lock(m_mutex);
        m_isTold = false;
        return std::exchange(m_news, {});
    }

    void work()
    {
        if (!open())
            return;
        std::unique_lock lock(m_mutex);
        m_show = m_show.value_or(Show{});
        while (!m_quits) {
            if (m_bounds != m_usedBounds) {
                lock.unlock();
                open();
                lock.lock();
                if (!m_show && !m_run)
                    m_show = Show{m_place, 0};
            } else if (m_show) {
                m_showing = std::exchange(m_show, std::nullopt);
                lock.unlock();
                showOne(*m_showing);
                lock.lock();
                m_showing.reset();
            } else if (m_run) {
                const Run run = *m_run;
                const quint64 number = m_runNumber;
                lock.unlock();
                const bool isOver = playRun(run, number);
                lock.lock();
                if (isOver && m_runNumber == number)
                    m_run.reset();
            } else {
                m_condition.wait(lock);
            }
        }
    }

private:
    // With pictures of the size that is wanted now. One that is open and can't be opened again, perhaps since
    // it was deleted, stays open as it was.
    bool open()
    {
        QSize bounds;
        QString path;
        {
            const std::lock_guard lock(m_mutex);
            bounds = m_bounds;
            path = m_path;
        }
        auto frames = m_movies.frames(path, bounds);
        const std::lock_guard lock(m_mutex);
        m_usedBounds = bounds;
        if (!frames) {
            if (!m_frames) {
                m_news.failed = frames.error();
                tell();
            }
            return false;
        }
        const bool isFirst = !m_frames;
        m_frames = std::move(*frames);
        if (isFirst) {
            m_news.opened = m_frames->info();
            tell();
        }
        return true;
    }

    void showOne(const Show &wish)
    {
        double time = wish.time;
        auto picture = m_frames->at(time);
        for (int i = 0; i < std::abs(wish.steps) && picture; ++i) {
            const auto [from, to] = m_frames->shown();
            if (wish.steps > 0 && !std::isfinite(to))
                break;
            picture = m_frames->at(wish.steps > 0 ? to : from - kJustBefore);
            time = std::max(m_frames->shown().first, 0.0);
        }
        const std::lock_guard lock(m_mutex);
        publish(picture, time);
        if (wish.steps != 0)
            m_news.stepped = time;
    }

    // With the lock.
    void publish(const Result<QImage> &picture, double time)
    {
        m_place = time;
        m_news.position = time;
        // A bad place in a film that shows pictures elsewhere keeps the picture before it.
        if (!picture && m_shownKey == 0)
            m_news.failed = picture.error();
        else if (picture && (picture->cacheKey() != m_shownKey || !m_news.picture.isNull()))
            m_news.picture = *picture;
        if (picture)
            m_shownKey = picture->cacheKey();
        tell();
    }

    // With the lock.
    void tell()
    {
        if (m_player && !std::exchange(m_isTold, true))
            QMetaObject::invokeMethod(m_player, &MoviePlayer::takeNews, Qt::QueuedConnection);
    }

    // Whether the run came to its end; otherwise there is something else to do.
    bool playRun(const Run &run, quint64 number)
    {
        double at = run.at;
        while (true) {
            if (!playOnce(at, run, number))
                return false;
            if (run.way == Way::Once)
                break;
            at = run.from;
        }
        const std::lock_guard lock(m_mutex);
        if (m_runNumber != number)
            return false;
        publish(m_frames->at(run.to - kJustBefore), run.to); // the last picture of the part
        m_news.hasEnded = true;
        return true;
    }

    bool playOnce(double at, const Run &run, quint64 number)
    {
        const auto sound = FilmSound::start(m_movies, m_output, path(), at);
        auto begun = steady_clock::now();
        if (sound) {
            while (sound->heard() <= 0 && steady_clock::now() - begun < kSoundPatience) {
                if (!goesOn(number))
                    return false;
            }
            begun = steady_clock::now();
        }
        double lastHeard = 0;
        while (true) {
            double time = at + since(begun);
            const double heard = sound ? sound->heard() : 0;
            if (heard > lastHeard) {
                lastHeard = heard;
                const double apart = at + heard - time;
                if (std::abs(apart) < kLostSound) {
                    begun -= std::chrono::duration_cast<steady_clock::duration>(
                        std::chrono::duration<double>(apart * kPull));
                    time += apart * kPull;
                }
            }
            if (time >= run.to)
                return true;
            const auto picture = m_frames->at(time);
            {
                const std::lock_guard lock(m_mutex);
                if (m_runNumber == number)
                    publish(picture, time);
            }
            if (!goesOn(number))
                return false;
        }
    }

    QString path()
    {
        const std::lock_guard lock(m_mutex);
        return m_path;
    }

    // Waits for a tick; false when there is something else to do.
    bool goesOn(quint64 number)
    {
        std::unique_lock lock(m_mutex);
        const auto isWanted = [&] { return m_quits || m_runNumber != number || m_bounds != m_usedBounds; };
        if (!m_condition.wait_for(lock, kTick, isWanted))
            return true;
        if (m_run && m_runNumber == number)
            m_run->at = m_place; // goes on from there
        return false;
    }

    std::mutex m_mutex;
    std::condition_variable m_condition;
    MoviePlayer *m_player;
    Movies &m_movies;
    SoundOutput &m_output;
    QString m_path;
    QSize m_bounds;
    std::optional<Show> m_show;
    std::optional<Show> m_showing; // what the thread is at
    std::optional<Run> m_run;
    quint64 m_runNumber = 0;
    bool m_quits = false;
    News m_news;
    bool m_isTold = false;
    qint64 m_shownKey = 0;
    double m_place = 0;
    QSize m_usedBounds;
    std::unique_ptr<MovieFrames> m_frames; // the thread's alone
};

MoviePlayer::MoviePlayer(const Ports &ports, QObject *parent) : QObject(parent), m_ports(ports) {}

MoviePlayer::~MoviePlayer()
{
    if (m_core)
        m_core->letGo();
}

void MoviePlayer::open(const QString &path)
{
    if (m_core)
        m_core->letGo();
    m_core = std::make_shared<Core>(*this, m_ports, path);
    m_core->setBounds(m_bounds);
    m_info.reset();
    m_picture = {};
    m_position = 0;
    setPlaying(false);
    m_ports.threads.start([core = m_core] { core->work(); });
}

void MoviePlayer::setPath(const QString &path)
{
    if (m_core)
        m_core->setPath(path);
}

void MoviePlayer::setBounds(QSize pixels)
{
    m_bounds = pixels;
    if (m_core)
        m_core->setBounds(pixels);
}

void MoviePlayer::seek(double seconds)
{
    if (!m_info)
        return;
    setPlaying(false);
    m_position = std::clamp(seconds, 0.0, m_info->duration);
    m_core->show({m_position, 0});
    Q_EMIT changed();
}

void MoviePlayer::step(double from, int pictures)
{
    if (!m_info || pictures == 0)
        return;
    setPlaying(false);
    m_core->show({from, pictures});
}

void MoviePlayer::play(double from, double to, Way way)
{
    const bool isInside = m_position >= from && m_position < to - kJustBefore;
    start(isInside ? m_position : from, from, to, way);
}

void MoviePlayer::playFrom(double from, double to)
{
    start(from, from, to, Way::Once);
}

void MoviePlayer::start(double at, double from, double to, Way way)
{
    if (!m_info || !(from < to))
        return;
    m_core->play(Core::Run{at, from, to, way});
    setPlaying(true);
}

void MoviePlayer::pause()
{
    if (m_core && m_isPlaying)
        m_core->play(std::nullopt);
    setPlaying(false);
}

void MoviePlayer::setPlaying(bool isPlaying)
{
    if (std::exchange(m_isPlaying, isPlaying) != isPlaying)
        Q_EMIT playingChanged(isPlaying);
}

void MoviePlayer::takeNews()
{
    const Core::News news = m_core->takeNews();
    if (news.opened) {
        m_info = news.opened;
        Q_EMIT opened();
    }
    if (!news.picture.isNull())
        m_picture = news.picture;
    if (news.position)
        m_position = *news.position;
    if (news.position || !news.picture.isNull())
        Q_EMIT changed();
    if (news.stepped)
        Q_EMIT stepped(*news.stepped);
    if (news.hasEnded)
        setPlaying(false);
    if (news.failed) {
        setPlaying(false);
        Q_EMIT failed(*news.failed);
    }
}
