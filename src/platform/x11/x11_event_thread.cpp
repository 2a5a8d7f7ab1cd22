#include "platform/x11/x11_event_thread.h"

#include "platform/x11/x11_connection.h"

#include <array>
#include <cerrno>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>
#include <xcb/xcb.h>

namespace {

void passEvents(const X11Connection &connection, int stop, const std::function<void(const void *)> &handle)
{
    std::array<pollfd, 2> waiting{
        {{xcb_get_file_descriptor(connection.xcb()), POLLIN, 0}, {stop, POLLIN, 0}}};
    while (true) {
        // The answers that a handler waits for may bring further events, which wake nobody.
        while (const XcbOwned<xcb_generic_event_t> event{xcb_poll_for_event(connection.xcb())})
            handle(event.get());
        if (connection.isBroken())
            return;
        if (poll(waiting.data(), waiting.size(), -1) < 0 && errno != EINTR)
            return;
        if (waiting[1].revents != 0)
            return;
    }
}

} // namespace

X11EventThread::~X11EventThread()
{
    if (m_thread.joinable()) {
        eventfd_write(m_stop, 1);
        m_thread.join();
    }
    if (m_stop >= 0)
        close(m_stop);
}

bool X11EventThread::open()
{
    m_stop = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    return m_stop >= 0;
}

void X11EventThread::start(const X11Connection &connection, std::function<void(const void *)> handle,
                           std::function<void()> prepare)
{
    m_thread =
        std::thread([&connection, stop = m_stop, handle = std::move(handle), prepare = std::move(prepare)] {
            prepare();
            passEvents(connection, stop, handle);
        });
}
