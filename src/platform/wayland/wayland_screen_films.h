#pragma once

#include "platform/screen_films.h"

#include <QString>

class ScreenCasts;

// Films of a Wayland session, each on a connection and a thread of its own, in the best way that the desktop
// has. Windows of this program can't be kept out.
class WaylandScreenFilms : public ScreenFilms {
public:
    // What the desktop gives to be spared its question the next time is kept in the folder.
    WaylandScreenFilms(std::shared_ptr<ScreenCasts> casts, QString folder);
    // Waits while the desktop asks the user.
    Result<std::unique_ptr<ScreenFilm>> start(const FilmRequest &request, FilmReceiver receiver) override;

private:
    std::shared_ptr<ScreenCasts> m_casts;
    QString m_folder;
};
