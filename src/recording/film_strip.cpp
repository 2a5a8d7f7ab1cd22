#include "recording/film_strip.h"

#include <QThreadPool>
#include <mutex>

struct FilmStrip::Work {
    std::mutex mutex;
    FilmStrip *strip; // null when nobody waits any more
};

FilmStrip::FilmStrip(Movies &movies, QThreadPool &threads, QObject *parent)
    : QObject(parent), m_movies(movies), m_threads(threads)
{}

FilmStrip::~FilmStrip()
{
    if (m_work) {
        const std::lock_guard lock(m_work->mutex);
        m_work->strip = nullptr;
    }
}

void FilmStrip::make(const QString &path, int count, QSize bounds)
{
    if (m_work) {
        const std::lock_guard lock(m_work->mutex);
        m_work->strip = nullptr;
    }
    m_work = std::make_shared<Work>();
    m_work->strip = this;
    m_threads.start([work = m_work, &movies = m_movies, path, count, bounds] {
        const auto frames = movies.frames(path, bounds);
        if (!frames)
            return; // the player says why
        const double length = (*frames)->info().duration;
        for (int i = 0; i < count; ++i) {
            const auto picture = (*frames)->at(length * (i + 0.5) / count);
            const std::lock_guard lock(work->mutex);
            if (!work->strip)
                return;
            if (!picture)
                continue;
            QMetaObject::invokeMethod(
                work->strip,
                [strip = work->strip, work, i, count, made = *picture] {
                    if (strip->m_work != work)
                        return;
                    strip->m_pictures.resize(count);
                    strip->m_pictures[i] = made;
                    Q_EMIT strip->changed();
                },
                Qt::QueuedConnection);
        }
    });
}
