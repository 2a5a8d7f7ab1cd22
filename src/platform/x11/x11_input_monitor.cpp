#include "platform/x11/x11_input_monitor.h"

#include "platform/texts.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_key_map.h"
#include "platform/x11/x11_screens.h"
#include "platform/x11/x11_survey.h"

#include <bitset>
#include <poll.h>
#include <sys/eventfd.h>
#include <thread>
#include <unistd.h>
#include <xcb/xcb.h>
#include <xcb/xinput.h>

namespace {

class X11InputMonitor : public InputMonitor {
public:
    ~X11InputMonitor() override
    {
        if (m_thread.joinable()) {
            eventfd_write(m_wake, 1);
            m_thread.join();
        }
        if (m_wake >= 0)
            close(m_wake);
    }

    Result<void> open(InputEvents events)
    {
        auto connection = X11Connection::open(X11Extension::Res);
        if (!connection)
            return std::unexpected(connection.error());
        m_connection = std::move(*connection);
        if (!hasRawEvents())
            return fail(Error::Kind::Unavailable,
                        PlatformTexts::tr("This display doesn't tell what is clicked and typed."));
        if (events.testFlag(InputEvent::Keys)) {
            auto map = X11KeyMap::open(*m_connection);
            if (!map)
                return std::unexpected(map.error());
            m_keyMap = std::move(*map);
        }
        m_wake = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
        if (m_wake < 0)
            return fail(PlatformTexts::tr("There are too many open files."));
        select(events);
        return {};
    }

    void start() { m_thread = std::thread(&X11InputMonitor::run, this); }

private:
    // Before 2.1 raw events kept away during grabs.
    bool hasRawEvents()
    {
        xcb_connection_t *xcb = m_connection->xcb();
        const xcb_query_extension_reply_t *extension = xcb_get_extension_data(xcb, &xcb_input_id);
        if (!extension || !extension->present)
            return false;
        const XcbOwned<xcb_input_xi_query_version_reply_t> version(
            xcb_input_xi_query_version_reply(xcb, xcb_input_xi_query_version(xcb, 2, 2), nullptr));
        m_opcode = extension->major_opcode;
        return version &&
               (version->major_version > 2 || (version->major_version == 2 && version->minor_version >= 1));
    }

    void select(InputEvents events)
    {
        quint32 mask = 0;
        if (events.testFlag(InputEvent::Clicks))
            mask |= XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS;
        if (events.testFlag(InputEvent::Keys))
            mask |= XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE;
        const struct {
            xcb_input_event_mask_t head;
            quint32 mask;
        } wanted{{XCB_INPUT_DEVICE_ALL_MASTER, 1}, mask};
        xcb_input_xi_select_events(m_connection->xcb(), m_connection->root(), 1, &wanted.head);
        // An answer tells that the selection is in effect.
        const XcbOwned<xcb_get_input_focus_reply_t> synced(xcb_get_input_focus_reply(
            m_connection->xcb(), xcb_get_input_focus(m_connection->xcb()), nullptr));
    }

    void run()
    {
        pollfd waiting[] = {{xcb_get_file_descriptor(m_connection->xcb()), POLLIN, 0}, {m_wake, POLLIN, 0}};
        while (true) {
            // The answers that a handler waits for may bring further events, which wake nobody.
            while (const XcbOwned<xcb_generic_event_t> event{xcb_poll_for_event(m_connection->xcb())})
                handle(event.get());
            if (m_connection->isBroken())
                return;
            if (poll(waiting, 2, -1) < 0 && errno != EINTR)
                return;
            if (waiting[1].revents != 0)
                return;
        }
    }

    void handle(const xcb_generic_event_t *event)
    {
        if (m_keyMap && m_keyMap->read(event))
            return;
        const auto *generic = reinterpret_cast<const xcb_ge_generic_event_t *>(event);
        if ((generic->response_type & 0x7f) != XCB_GE_GENERIC || generic->extension != m_opcode)
            return;
        const quint32 detail = reinterpret_cast<const xcb_input_raw_button_press_event_t *>(event)->detail;
        switch (generic->event_type) {
        case XCB_INPUT_RAW_BUTTON_PRESS:
            tellPress(detail);
            break;
        case XCB_INPUT_RAW_KEY_PRESS:
            if (detail < m_down.size())
                tellKey(quint8(detail));
            break;
        case XCB_INPUT_RAW_KEY_RELEASE:
            if (detail < m_down.size())
                m_down.reset(detail);
            break;
        default:
            break;
        }
    }

    void tellPress(quint32 button)
    {
        if (button < 1 || button > 3) // the wheel
            return;
        constexpr PointerPress::Button kButtons[] = {PointerPress::Button::Left, PointerPress::Button::Middle,
                                                     PointerPress::Button::Right};
        PointerPress press;
        press.time = std::chrono::steady_clock::now();
        press.button = kButtons[button - 1];
        quint32 window = m_connection->root();
        quint32 child = window;
        for (bool isRoot = true; child != XCB_NONE; isRoot = false) {
            window = child;
            const XcbOwned<xcb_query_pointer_reply_t> reply(xcb_query_pointer_reply(
                m_connection->xcb(), xcb_query_pointer(m_connection->xcb(), window), nullptr));
            if (!reply)
                break;
            if (isRoot)
                press.native = QPoint(reply->root_x, reply->root_y);
            child = reply->child;
        }
        press.isOwn = window != m_connection->root() && X11OwnClients::ask(*m_connection).owns(window);
        press.position = press.native;
        for (const Screen &screen : X11Desktop::screens(*m_connection)) {
            if (screen.native.contains(press.native)) {
                press.position = screen.fromNative(press.native);
                break;
            }
        }
        Q_EMIT pressed(press);
    }

    void tellKey(quint8 keycode)
    {
        KeyStroke stroke = m_keyMap->stroke(keycode);
        stroke.isRepeat = m_down.test(keycode);
        m_down.set(keycode);
        Q_EMIT keyPressed(stroke);
    }

    std::unique_ptr<X11Connection> m_connection;
    std::unique_ptr<X11KeyMap> m_keyMap; // with keys alone
    quint8 m_opcode = 0;
    int m_wake = -1; // ends the thread
    std::bitset<256> m_down;
    std::thread m_thread;
};

} // namespace

Result<std::unique_ptr<InputMonitor>>
X11InputMonitors::listen(InputEvents events, const std::function<void(InputMonitor &)> &connect)
{
    auto monitor = std::make_unique<X11InputMonitor>();
    if (const auto opened = monitor->open(events); !opened)
        return std::unexpected(opened.error());
    connect(*monitor);
    monitor->start();
    return monitor;
}
