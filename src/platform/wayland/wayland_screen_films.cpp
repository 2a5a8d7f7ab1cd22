#include "platform/wayland/wayland_screen_films.h"

#include "platform/screen_casts.h"
#include "platform/texts.h"
#include "platform/wayland/cast_film.h"
#include "platform/wayland/film_screen.h"
#include "platform/wayland/screencopy.h"
#include "platform/wayland/screencopy_film.h"
#include "platform/wayland/wayland_connection.h"
#include "platform/wayland/wayland_outputs.h"

WaylandScreenFilms::WaylandScreenFilms(std::shared_ptr<ScreenCasts> casts, QString folder)
    : m_casts(std::move(casts)), m_folder(std::move(folder))
{}

Result<std::unique_ptr<ScreenFilm>> WaylandScreenFilms::start(const FilmRequest &request,
                                                              FilmReceiver receiver)
{
    auto connection = WaylandConnection::open();
    if (!connection)
        return std::unexpected(connection.error());
    if (Screencopy::isOffered(**connection))
        return startScreencopyFilm(std::move(*connection), request, std::move(receiver));
    const WaylandOutputs outputs(**connection);
    const Screen screen = filmedScreen(outputs.screens(), request.area);
    if (screen.id == 0)
        return fail(Error::Kind::NotFound, PlatformTexts::tr("That display is no longer available."));
    auto origin = [&]() -> Result<std::unique_ptr<CastOrigin>> {
        if (CastOrigins::isOfferedByKWin(**connection))
            return CastOrigins::fromKWin(screen, request.pointer);
        if (CastOrigins::isOfferedByPortal())
            return CastOrigins::fromPortal(screen, request.pointer, m_folder);
        return fail(Error::Kind::Unavailable,
                    PlatformTexts::tr("This desktop doesn't let Lumenpost film its screen: its portal for "
                                      "screen casts isn't installed."));
    }();
    if (!origin)
        return std::unexpected(origin.error());
    return startCastFilm(*m_casts, std::move(*origin), screen, request, std::move(receiver));
}
