#pragma once

#include "platform/screen_films.h"

class WaylandConnection;

// Films of a compositor that lets programs copy its outputs, each on a thread of its own. The compositor
// answers when something has changed.
Result<std::unique_ptr<ScreenFilm>> startScreencopyFilm(std::unique_ptr<WaylandConnection> connection,
                                                        const FilmRequest &request, FilmReceiver receiver);
