#include "platform/wayland/film_screen.h"

static int covered(const Screen &screen, const QRect &area)
{
    const QRect part = screen.native & area;
    return part.isEmpty() ? 0 : part.width() * part.height();
}

Screen filmedScreen(const QList<Screen> &screens, const QRect &area)
{
    Screen most;
    for (const Screen &screen : screens) {
        if (covered(screen, area) > (most.id == 0 ? 0 : covered(most, area)))
            most = screen;
    }
    return most;
}
