#include "platform/x11/x11_workspace.h"

#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_screens.h"

#include <QMetaMethod>
#include <QSocketNotifier>
#include <xcb/xcb.h>

X11Workspace::X11Workspace(Opener opener) : m_opener(std::move(opener)) {}
X11Workspace::~X11Workspace() = default;

X11Connection *X11Workspace::connection() const
{
    if (m_connection && m_connection->isBroken())
        m_connection.reset();
    if (!m_connection) {
        auto opened = X11Connection::open(X11Extension::Res);
        if (opened)
            m_connection = std::move(*opened);
    }
    return m_connection.get();
}

// 0 when no window is active.
quint32 X11Workspace::activeWindow() const
{
    const X11Connection *open = connection();
    if (!open)
        return 0;
    // Some window managers append a second value.
    return open->cardinals(open->root(), open->atom(X11Atom::NetActiveWindow)).value(0);
}

quint32 X11Workspace::focusedWindow() const
{
    const X11Connection *open = connection();
    if (!open)
        return 0;
    const XcbOwned<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(open->xcb(), xcb_get_input_focus(open->xcb()), nullptr));
    return reply ? reply->focus : 0;
}

std::optional<Workspace::Application> X11Workspace::frontmost() const
{
    const quint32 window = activeWindow();
    if (window == 0)
        return std::nullopt;
    Application application;
    application.pid = X11Desktop::pid(*m_connection, window);
    application.name = X11Desktop::applicationName(*m_connection, window, application.pid);
    return application;
}

Result<void> X11Workspace::open(const QUrl &url)
{
    return m_opener.open(url);
}

Result<void> X11Workspace::reveal(const QString &path)
{
    return m_opener.reveal(path);
}

void X11Workspace::rememberActiveWindow()
{
    m_remembered = activeWindow();
    m_focus = focusedWindow();
}

// Who had the keyboard gets it at once, without a word to the window manager, which would raise the window;
// some of those take no notice of what we did meanwhile, and would do nothing. Only when that window can't
// take it any more, the window manager is asked.
void X11Workspace::restoreActiveWindow()
{
    const X11Connection *open = connection();
    if (!open)
        return;
    xcb_connection_t *xcb = open->xcb();
    if (m_focus > XCB_INPUT_FOCUS_POINTER_ROOT && m_focus != open->root()) {
        const XcbOwned<xcb_generic_error_t> refused(xcb_request_check(
            xcb, xcb_set_input_focus_checked(xcb, XCB_INPUT_FOCUS_PARENT, m_focus, XCB_CURRENT_TIME)));
        if (!refused)
            return;
    }
    if (m_remembered == 0)
        return;
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = m_remembered;
    event.type = open->atom(X11Atom::NetActiveWindow);
    event.data.data32[0] = 2; // asked for by the user through a tool: not held back
    event.data.data32[1] = XCB_CURRENT_TIME;
    xcb_send_event(xcb, false, open->root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char *>(&event));
    xcb_flush(xcb);
}

void X11Workspace::connectNotify(const QMetaMethod &signal)
{
    if (signal == QMetaMethod::fromSignal(&Workspace::activated))
        listen();
}

void X11Workspace::listen()
{
    if (m_watching)
        return;
    auto opened = X11Connection::open({});
    if (!opened)
        return;
    m_watching = std::move(*opened);
    const quint32 mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_watching->xcb(), m_watching->root(), XCB_CW_EVENT_MASK, &mask);
    xcb_flush(m_watching->xcb());
    m_last = frontmost();
    m_notifier =
        std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(m_watching->xcb()), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &X11Workspace::readEvents);
}

void X11Workspace::readEvents()
{
    bool isChanged = false;
    while (const XcbOwned<xcb_generic_event_t> event{xcb_poll_for_event(m_watching->xcb())}) {
        if ((event->response_type & 0x7f) != XCB_PROPERTY_NOTIFY)
            continue;
        const auto *property = reinterpret_cast<const xcb_property_notify_event_t *>(event.get());
        isChanged = isChanged || property->atom == m_watching->atom(X11Atom::NetActiveWindow);
    }
    if (m_watching->isBroken()) {
        m_notifier->setEnabled(false); // a closed socket would wake it for ever
        return;
    }
    if (!isChanged)
        return;
    const std::optional<Application> now = frontmost();
    if (now && now != m_last) {
        m_last = now;
        Q_EMIT activated(*now);
    }
}
