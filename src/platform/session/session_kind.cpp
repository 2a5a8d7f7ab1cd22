#include "platform/session/session_kind.h"

#include "platform/texts.h"
#include "platform/wayland_session.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_toolkit.h"

namespace {

bool isForced(const char *kind)
{
    return qgetenv("LUMENPOST_PLATFORM").trimmed().toLower() == kind;
}

} // namespace

SessionKind sessionKind()
{
    if (isForced("x11"))
        return SessionKind::X11;
    if (isForced("null"))
        return SessionKind::None;
    if (isWaylandSession())
        return SessionKind::Wayland;
    return qEnvironmentVariableIsEmpty("DISPLAY") ? SessionKind::None : SessionKind::X11;
}

QString whyNoScreen()
{
    switch (sessionKind()) {
    case SessionKind::X11:
        return {};
    case SessionKind::Wayland:
        return whyNoWaylandScreen();
    case SessionKind::None:
        break;
    }
    if (isForced("null"))
        return PlatformTexts::tr(
            "The screen is turned off for this start: unset LUMENPOST_PLATFORM to use it.");
    return PlatformTexts::tr("There is no display: start Lumenpost in a desktop session, or set DISPLAY.");
}

Result<void> reachDisplay()
{
    // A platform of the toolkit without any display, as tests use.
    if (qgetenv("QT_QPA_PLATFORM").startsWith("offscreen"))
        return {};
    // Pictures can be opened and edited in any session that shows windows.
    const bool hasXServer = !qEnvironmentVariableIsEmpty("DISPLAY");
    if (sessionKind() == SessionKind::Wayland && !hasXServer) {
        return fail(Error::Kind::Unavailable,
                    PlatformTexts::tr("This Wayland session has no X11 display: turn on Xwayland, or start "
                                      "Lumenpost in an X11 session."));
    }
    if (sessionKind() == SessionKind::None)
        return fail(Error::Kind::Unavailable, whyNoScreen());
    const auto connection = X11Connection::open(X11Extensions());
    return connection ? Result<void>() : fail(connection.error().kind, connection.error().message);
}

bool isDisplayLost()
{
    return isToolkitDisconnected();
}
