#include "platform/film_canvas.h"
#include "platform/wayland/sway_window.h"
#include "platform/wayland/wayland_screen_films.h"
#include "platform/wayland/wayland_screens.h"

#include <gtest/gtest.h>

TEST(SwayFilm, ShowsWhatChangesToThePixelAndThatTimePasses)
{
    const WaylandScreens screens(nullptr);
    const Screen fine = screens.screens().last();
    ASSERT_EQ(fine.scale, 1.5);
    WaylandScreenFilms films(nullptr, {}); // copies need no stream
    FilmCanvas film(films, QRect(fine.native.topLeft() + QPoint(30, 60), QSize(600, 450)));
    ASSERT_TRUE(film.isRunning()) << film.why.toStdString();
    {
        const SwayWindow window(1, QRect(1300, 40, 400, 300), 1.5);
        EXPECT_TRUE(eventually([&] { return film.shown(QRect(0, 0, 600, 450)) == window.picture(); }));
        window.command("move absolute position 1320 40");
        EXPECT_TRUE(eventually(
            [&] { return film.shown(QRect(30, 0, 570, 450)) == window.picture().copy(0, 0, 570, 450); }));
    }
    EXPECT_TRUE(eventually([&] {
        return film.shown(QRect(100, 100, 1, 1)) == film.shown(QRect(500, 400, 1, 1));
    })) << "gone";
    EXPECT_TRUE(eventually([&] { return film.stillFrames() > 1; }));
    EXPECT_TRUE(film.isSound());
    EXPECT_FALSE(film.isEnded());
    EXPECT_FALSE(film.speaksAfterItsEnd());
}
