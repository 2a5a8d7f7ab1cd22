#include "platform/wayland_session.h"

#include "platform/texts.h"

bool isWaylandSession()
{
    const QByteArray type = qgetenv("XDG_SESSION_TYPE").trimmed().toLower();
    if (type == "wayland" || type == "x11")
        return type == "wayland";
    return !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"); // a session that was begun by hand tells no type
}

QString whyNoWaylandScreen()
{
    return PlatformTexts::tr(
        "Lumenpost can't capture the screen of a Wayland session yet: log in to an X11 session instead.");
}
