#pragma once

#include "platform/screen_films.h"

// Films of a compositor that lets programs copy its outputs, each on a connection and a thread of its own.
// The compositor answers when something has changed. Windows of this program can't be kept out.
class WaylandScreenFilms : public ScreenFilms {
public:
    Result<std::unique_ptr<ScreenFilm>> start(const FilmRequest &request, FilmReceiver receiver) override;
};
