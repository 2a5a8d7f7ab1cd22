#include "platform/session/session_kind.h"

#include "platform/x11/x11_connection.h"

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
    if (isForced("null") || qEnvironmentVariableIsEmpty("DISPLAY"))
        return SessionKind::None;
    return SessionKind::X11;
}

QString whyNoScreen()
{
    if (sessionKind() == SessionKind::X11)
        return {};
    if (isForced("null"))
        return QStringLiteral("The screen is turned off for this start: unset LUMENPOST_PLATFORM to use it.");
    if (!qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
        return QStringLiteral(
            "This Wayland session has no X11 display: turn on Xwayland, or start Lumenpost in an "
            "X11 session.");
    }
    return QStringLiteral("There is no display: start Lumenpost in a desktop session, or set DISPLAY.");
}

Result<void> reachDisplay()
{
    // A platform of the toolkit without any display, as tests use.
    if (qgetenv("QT_QPA_PLATFORM").startsWith("offscreen"))
        return {};
    if (const QString reason = whyNoScreen(); !reason.isEmpty())
        return fail(Error::Kind::Unavailable, reason);
    const auto connection = X11Connection::open(X11Extensions());
    return connection ? Result<void>() : fail(connection.error().kind, connection.error().message);
}
