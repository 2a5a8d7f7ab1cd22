#pragma once

#include "platform/screen_films.h"
#include "platform/screens.h"
#include "platform/wayland/cast_origin.h"

// A film of a screen that the desktop gives as a stream of pictures.
Result<std::unique_ptr<ScreenFilm>> startCastFilm(ScreenCasts &casts, std::unique_ptr<CastOrigin> origin,
                                                  const Screen &screen, const FilmRequest &request,
                                                  FilmReceiver receiver);
