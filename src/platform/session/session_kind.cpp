#include "platform/session/session_kind.h"

#include "platform/texts.h"
#include "platform/wayland/wayland_connection.h"
#include "platform/wayland_session.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_toolkit.h"

#include <QDir>
#include <QLibraryInfo>

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
    if (isForced("wayland"))
        return SessionKind::Wayland;
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
    case SessionKind::Wayland:
        return {};
    case SessionKind::None:
        break;
    }
    if (isForced("null"))
        return PlatformTexts::tr(
            "The screen is turned off for this start: unset LUMENPOST_PLATFORM to use it.");
    return PlatformTexts::tr("There is no display: start Lumenpost in a desktop session, or set DISPLAY.");
}

static Result<void> reachCompositor()
{
    const QDir plugins(QLibraryInfo::path(QLibraryInfo::PluginsPath) + QStringLiteral("/platforms"));
    if (plugins.entryList({QStringLiteral("libqwayland*")}, QDir::Files).isEmpty()) {
        return fail(
            Error::Kind::Unavailable,
            PlatformTexts::tr("Windows can't be shown in this Wayland session: install qt6-wayland."));
    }
    const auto connection = WaylandConnection::open();
    return connection ? Result<void>() : fail(connection.error().kind, connection.error().message);
}

void matchToolkit()
{
    if (!qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        return;
    if (sessionKind() == SessionKind::Wayland)
        qputenv("QT_QPA_PLATFORM", "wayland");
    else if (sessionKind() == SessionKind::X11)
        qputenv("QT_QPA_PLATFORM", "xcb");
}

Result<void> reachDisplay()
{
    // A platform of the toolkit without any display, as tests use.
    if (qgetenv("QT_QPA_PLATFORM").startsWith("offscreen"))
        return {};
    if (sessionKind() == SessionKind::Wayland)
        return reachCompositor();
    if (sessionKind() == SessionKind::None)
        return fail(Error::Kind::Unavailable, whyNoScreen());
    const auto connection = X11Connection::open(X11Extensions());
    return connection ? Result<void>() : fail(connection.error().kind, connection.error().message);
}

bool isDisplayLost()
{
    return isToolkitDisconnected();
}
