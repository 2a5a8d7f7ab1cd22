#pragma once

#include "platform/screen_films.h"

#include <QPainter>
#include <QTest>
#include <atomic>
#include <mutex>

// A film as a writer would have it: what changed, put together.
class FilmCanvas {
public:
    FilmCanvas(ScreenFilms &films, const QRect &area) : m_canvas(area.size(), QImage::Format_RGB32)
    {
        m_canvas.fill(Qt::magenta);
        auto started =
            films.start({area, Pointer::Hidden, {}, 30}, {[this](const FilmFrame &frame) { take(frame); },
                                                          [this](const Error &) { m_isEnded = true; }});
        if (started)
            m_film = std::move(*started);
        else
            why = started.error().message;
    }
    ~FilmCanvas() { m_film.reset(); }
    FilmCanvas(const FilmCanvas &) = delete;
    FilmCanvas &operator=(const FilmCanvas &) = delete;

    bool isRunning() const { return m_film && !m_isEnded; }
    bool isEnded() const { return m_isEnded; }
    QImage shown(const QRect &rect)
    {
        const std::lock_guard lock(m_mutex);
        return m_canvas.copy(rect);
    }
    int stillFrames()
    {
        const std::lock_guard lock(m_mutex);
        return m_still;
    }
    // Times grow, edges are even.
    bool isSound()
    {
        const std::lock_guard lock(m_mutex);
        return m_isSound;
    }
    // Whether any frame comes once it is ended.
    bool speaksAfterItsEnd()
    {
        m_film.reset();
        const qsizetype frames = m_times.size();
        QTest::qWait(600);
        return m_times.size() != frames;
    }

    QString why; // it didn't start

private:
    void take(const FilmFrame &frame)
    {
        const std::lock_guard lock(m_mutex);
        m_still += frame.changed.isEmpty() ? 1 : 0;
        m_isSound = m_isSound && (m_times.isEmpty() || frame.time > m_times.last());
        m_times.append(frame.time);
        QPainter painter(&m_canvas);
        for (const QRect &rect : frame.changed) {
            m_isSound = m_isSound && rect.x() % 2 == 0 && rect.y() % 2 == 0 && rect.width() % 2 == 0 &&
                        rect.height() % 2 == 0;
            painter.drawImage(rect.topLeft(), frame.picture, rect.translated(-frame.at));
        }
    }

    std::mutex m_mutex;
    QImage m_canvas;
    int m_still = 0;
    bool m_isSound = true;
    QList<std::chrono::steady_clock::time_point> m_times;
    std::atomic_bool m_isEnded = false;
    std::unique_ptr<ScreenFilm> m_film;
};
