#pragma once

#include "platform/screen_films.h"

// Films of an X server's screen, each on a connection and a thread of its own. What changed is told by the
// server's Damage extension; without it every frame is compared with the one before.
class X11ScreenFilms : public ScreenFilms {
public:
    Result<std::unique_ptr<ScreenFilm>> start(const FilmRequest &request, FilmReceiver receiver) override;
};
