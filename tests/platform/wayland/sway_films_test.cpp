#include "platform/wayland/sway_window.h"
#include "platform/wayland/wayland_screen_films.h"
#include "platform/wayland/wayland_screens.h"

#include <QPainter>
#include <gtest/gtest.h>
#include <mutex>

namespace {

// The film as a writer would have it: what changed, put together.
class SwayFilm : public testing::Test {
protected:
    void film(const QRect &area)
    {
        m_canvas = QImage(area.size(), QImage::Format_RGB32);
        m_canvas.fill(Qt::magenta);
        WaylandScreenFilms films;
        auto started =
            films.start({area, Pointer::Hidden, {}, 30}, {[this](const FilmFrame &frame) { take(frame); },
                                                          [this](const Error &) { m_isEnded = true; }});
        ASSERT_TRUE(started) << started.error().message.toStdString();
        m_film = std::move(*started);
    }
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
    QImage shown(const QRect &rect)
    {
        const std::lock_guard lock(m_mutex);
        return m_canvas.copy(rect);
    }

    std::mutex m_mutex;
    QImage m_canvas;
    int m_still = 0;
    bool m_isSound = true; // times grow, edges are even
    QList<std::chrono::steady_clock::time_point> m_times;
    std::atomic_bool m_isEnded = false;
    std::unique_ptr<ScreenFilm> m_film;
};

TEST_F(SwayFilm, ShowsWhatChangesToThePixelAndThatTimePasses)
{
    const WaylandScreens screens(nullptr);
    const Screen fine = screens.screens().last();
    ASSERT_EQ(fine.scale, 1.5);
    film(QRect(fine.native.topLeft() + QPoint(30, 60), QSize(600, 450)));
    {
        const SwayWindow window(1, QRect(1300, 40, 400, 300), 1.5);
        EXPECT_TRUE(eventually([&] { return shown(QRect(0, 0, 600, 450)) == window.picture(); }));
        window.command("move absolute position 1320 40");
        EXPECT_TRUE(eventually(
            [&] { return shown(QRect(30, 0, 570, 450)) == window.picture().copy(0, 0, 570, 450); }));
    }
    EXPECT_TRUE(eventually([&] { return shown(QRect(100, 100, 1, 1)) == shown(QRect(500, 400, 1, 1)); }))
        << "gone";
    EXPECT_TRUE(eventually([&] {
        const std::lock_guard lock(m_mutex);
        return m_still > 1;
    }));
    EXPECT_TRUE(m_isSound);
    EXPECT_FALSE(m_isEnded);
    m_film.reset();
    const qsizetype frames = m_times.size();
    QTest::qWait(600);
    EXPECT_EQ(m_times.size(), frames) << "nothing is called after its end";
}

} // namespace
