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
        "This Wayland session shows Lumenpost nothing of its screen: log in to an X11 session instead.");
}

QString whyNoWaylandInput()
{
    return PlatformTexts::tr(
        "A Wayland session doesn't tell programs what is clicked and typed in other ones.");
}

QString whyNoWaylandShortcuts()
{
    return PlatformTexts::tr("This desktop gives programs no shortcuts: in its settings, set a key for "
                             "the command “lumenpost capture region”.");
}
