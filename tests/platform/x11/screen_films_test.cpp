#include "platform/screen_films.h"
#include "platform/x11/other_window.h"
#include "platform/x11/x11_screen_films.h"

#include <QPainter>
#include <QRasterWindow>
#include <gtest/gtest.h>
#include <mutex>

namespace {

class PlainWindow : public QRasterWindow {
public:
    PlainWindow(const QRect &geometry, QColor color) : m_color(color)
    {
        setFlags(Qt::BypassWindowManagerHint | Qt::FramelessWindowHint);
        setGeometry(geometry);
    }

protected:
    void paintEvent(QPaintEvent *) override { QPainter(this).fillRect(QRect(QPoint(), size()), m_color); }

private:
    QColor m_color;
};

// The film as a writer would have it: what changed, put together.
class ScreenFilmOnX11 : public testing::Test {
protected:
    void film(FilmRequest request)
    {
        m_canvas = QImage(request.area.size(), QImage::Format_RGB32);
        X11ScreenFilms films;
        auto started = films.start(request, {[this](const FilmFrame &frame) { take(frame); },
                                             [this](const Error &error) { m_ended = error.message; }});
        ASSERT_TRUE(started) << qPrintable(started.error().message);
        m_film = std::move(*started);
    }
    void take(const FilmFrame &frame)
    {
        const std::lock_guard lock(m_mutex);
        ++m_frames;
        m_still += frame.changed.isEmpty() ? 1 : 0;
        if (!m_times.isEmpty() && frame.time <= m_times.last())
            m_isOrdered = false;
        m_times.append(frame.time);
        QPainter painter(&m_canvas);
        for (const QRect &rect : frame.changed) {
            m_isEven = m_isEven && rect.x() % 2 == 0 && rect.y() % 2 == 0 && rect.width() % 2 == 0 &&
                       rect.height() % 2 == 0;
            painter.drawImage(rect.topLeft(), frame.picture, rect.translated(-frame.at));
        }
    }
    QColor colorAt(QPoint point)
    {
        const std::lock_guard lock(m_mutex);
        return m_canvas.pixelColor(point);
    }
    bool shows(QPoint point, QColor color)
    {
        return eventually([&] { return colorAt(point) == color; });
    }

    std::mutex m_mutex;
    QImage m_canvas;
    int m_frames = 0;
    int m_still = 0;
    bool m_isEven = true;
    bool m_isOrdered = true;
    QList<std::chrono::steady_clock::time_point> m_times;
    QString m_ended;
    std::unique_ptr<ScreenFilm> m_film;
};

} // namespace

TEST_F(ScreenFilmOnX11, ShowsWhatChangesAndThatTimePasses)
{
    PlainWindow below(QRect(50, 50, 400, 300), Qt::red);
    below.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&below));
    film({QRect(101, 101, 200, 150), Pointer::Hidden, {}, 30});
    ASSERT_TRUE(shows({100, 75}, Qt::red));
    PlainWindow above(QRect(151, 131, 33, 21), Qt::green);
    above.show();
    EXPECT_TRUE(shows({60, 40}, Qt::green));
    EXPECT_EQ(colorAt({49, 40}), QColor(Qt::red)) << "beside it";
    above.hide();
    EXPECT_TRUE(shows({60, 40}, Qt::red));
    EXPECT_TRUE(eventually([&] {
        const std::lock_guard lock(m_mutex);
        return m_still > 1;
    }));
    EXPECT_TRUE(m_isEven);
    EXPECT_TRUE(m_isOrdered);
}

TEST_F(ScreenFilmOnX11, LeavesOutTheWindowsThatAreKeptOutAndNoOthers)
{
    OtherWindow other(3, QRect(100, 100, 300, 200));
    PlainWindow panel(QRect(150, 150, 60, 40), Qt::red), bubble(QRect(250, 150, 60, 40), Qt::green);
    panel.show();
    bubble.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&panel) && QTest::qWaitForWindowExposed(&bubble));
    film({QRect(100, 100, 300, 200), Pointer::Hidden, {quint32(panel.winId())}, 30});
    ASSERT_TRUE(shows({180, 70}, Qt::green)) << "an extra is filmed";
    const QImage pattern = ::pattern(QSize(300, 200), 3);
    EXPECT_TRUE(shows({80, 70}, pattern.pixelColor(80, 70))) << "what lies under the panel";
    panel.setPosition(100, 250);
    EXPECT_TRUE(shows({30, 170}, pattern.pixelColor(30, 170)));
    EXPECT_TRUE(shows({80, 70}, pattern.pixelColor(80, 70)));
}

TEST_F(ScreenFilmOnX11, DrawsThePointerWhenAskedFor)
{
    PlainWindow below(QRect(0, 0, 400, 300), Qt::white);
    below.setCursor(Qt::SizeAllCursor);
    below.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&below));
    run("xdotool", {"mousemove", "100", "100"});
    film({QRect(0, 0, 400, 300), Pointer::Shown, {}, 30});
    const auto isInk = [&](QPoint around) {
        const std::lock_guard lock(m_mutex);
        for (int y = -6; y <= 6; ++y) {
            for (int x = -6; x <= 6; ++x) {
                if (qGray(m_canvas.pixel(around + QPoint(x, y))) < 128)
                    return true;
            }
        }
        return false;
    };
    EXPECT_TRUE(eventually([&] { return isInk({100, 100}); }));
    run("xdotool", {"mousemove", "250", "200"});
    EXPECT_TRUE(eventually([&] { return isInk({250, 200}) && !isInk({100, 100}); })) << "and leaves no trace";
}

TEST_F(ScreenFilmOnX11, IsBlackBesideTheDesktop)
{
    film({QRect(-20, -20, 100, 80), Pointer::Hidden, {}, 30});
    ASSERT_TRUE(eventually([&] {
        const std::lock_guard lock(m_mutex);
        return m_frames > 0;
    }));
    EXPECT_EQ(colorAt({5, 5}), QColor(Qt::black));
}
