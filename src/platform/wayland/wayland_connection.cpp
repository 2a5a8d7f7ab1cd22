#include "platform/wayland/wayland_connection.h"

#include "platform/texts.h"

#include <QDeadlineTimer>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <poll.h>
#include <wayland-client.h>

std::unexpected<Error> noCompositor(const QString &detail)
{
    return fail(Error::Kind::Unavailable,
                PlatformTexts::tr("The Wayland session doesn't answer: it may have ended."), detail);
}

Result<std::unique_ptr<WaylandConnection>> WaylandConnection::open()
{
    // What went wrong is told by who asked, in one sentence.
    wl_log_set_handler_client([](const char *, va_list) {});
    std::unique_ptr<WaylandConnection> connection(new WaylandConnection);
    connection->m_display = wl_display_connect(nullptr);
    if (!connection->m_display)
        return noCompositor(QString::fromLocal8Bit(std::strerror(errno)));
    static const wl_registry_listener listener{
        .global =
            [](void *self, wl_registry *, uint32_t name, const char *interface, uint32_t version) {
                auto *that = static_cast<WaylandConnection *>(self);
                const WaylandGlobal global{name, interface, version};
                that->m_globals.append(global);
                if (that->m_listener)
                    that->m_listener->added(global);
            },
        .global_remove =
            [](void *self, wl_registry *, uint32_t name) {
                auto *that = static_cast<WaylandConnection *>(self);
                that->m_globals.removeIf([name](const WaylandGlobal &each) { return each.name == name; });
                if (that->m_listener)
                    that->m_listener->removed(name);
            },
    };
    connection->m_registry = wl_display_get_registry(connection->m_display);
    wl_registry_add_listener(connection->m_registry, &listener, connection.get());
    if (!connection->roundtrip())
        return noCompositor();
    return connection;
}

WaylandConnection::~WaylandConnection()
{
    if (m_registry)
        wl_registry_destroy(m_registry);
    if (m_display)
        wl_display_disconnect(m_display);
}

bool WaylandConnection::isBroken() const
{
    return m_isSilent || wl_display_get_error(m_display) != 0;
}

bool WaylandConnection::offers(const wl_interface &interface) const
{
    return std::any_of(m_globals.begin(), m_globals.end(),
                       [&](const WaylandGlobal &each) { return each.interface == interface.name; });
}

void *WaylandConnection::bindFirst(const wl_interface &interface, quint32 version)
{
    for (const WaylandGlobal &each : std::as_const(m_globals)) {
        if (each.interface == interface.name)
            return wl_registry_bind(m_registry, each.name, &interface, std::min(each.version, version));
    }
    return nullptr;
}

void WaylandConnection::setListener(WaylandGlobals *globals)
{
    m_listener = globals;
    if (!globals)
        return;
    for (const WaylandGlobal &each : std::as_const(m_globals))
        globals->added(each);
}

bool WaylandConnection::waitFor(const std::function<bool()> &isDone, std::chrono::milliseconds patience,
                                int wake)
{
    const QDeadlineTimer deadline(patience);
    while (!isDone()) {
        if (isBroken())
            return false;
        if (wl_display_prepare_read(m_display) != 0) {
            wl_display_dispatch_pending(m_display);
            continue;
        }
        wl_display_flush(m_display);
        pollfd waiting[] = {{wl_display_get_fd(m_display), POLLIN, 0}, {wake, POLLIN, 0}};
        const int ready = poll(waiting, wake < 0 ? 1 : 2, int(deadline.remainingTime()));
        if (ready > 0 && waiting[0].revents != 0)
            wl_display_read_events(m_display);
        else
            wl_display_cancel_read(m_display);
        wl_display_dispatch_pending(m_display);
        if (isDone())
            return true;
        if (wake >= 0 && ready > 0 && waiting[1].revents != 0)
            return false;
        if (deadline.hasExpired())
            return false;
    }
    return true;
}

bool WaylandConnection::roundtrip()
{
    static const wl_callback_listener listener{
        .done = [](void *done, wl_callback *, uint32_t) { *static_cast<bool *>(done) = true; }};
    bool isDone = false;
    wl_callback *callback = wl_display_sync(m_display);
    wl_callback_add_listener(callback, &listener, &isDone);
    const bool isAnswered = waitFor([&isDone] { return isDone; });
    wl_callback_destroy(callback);
    m_isSilent = m_isSilent || !isAnswered;
    return isAnswered;
}

void WaylandConnection::dispatchPending()
{
    // A deadline that has passed: one look at what is there.
    waitFor([] { return false; }, std::chrono::milliseconds(0));
}

void WaylandConnection::flush()
{
    wl_display_flush(m_display);
}
