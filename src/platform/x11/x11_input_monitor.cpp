#include "platform/x11/x11_input_monitor.h"

#include "platform/texts.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_event_thread.h"
#include "platform/x11/x11_key_map.h"
#include "platform/x11/x11_raw_events.h"
#include "platform/x11/x11_screens.h"
#include "platform/x11/x11_survey.h"

#include <bitset>
#include <xcb/xcb.h>
#include <xcb/xinput.h>

namespace {

class X11InputMonitor : public InputMonitor {
public:
    Result<void> open(InputEvents events)
    {
        auto connection = X11Connection::open(X11Extension::Res);
        if (!connection)
            return std::unexpected(connection.error());
        m_connection = std::move(*connection);
        m_rawEvents = X11RawEvents::of(*m_connection);
        if (!m_rawEvents)
            return fail(Error::Kind::Unavailable,
                        PlatformTexts::tr("This display doesn't tell what is clicked and typed."));
        if (events.testFlag(InputEvent::Keys)) {
            auto map = X11KeyMap::open(*m_connection);
            if (!map)
                return std::unexpected(map.error());
            m_keyMap = std::move(*map);
        }
        if (!m_thread.open())
            return fail(PlatformTexts::tr("There are too many open files."));
        m_rawEvents->select(*m_connection, maskOf(events));
        return {};
    }

    void start()
    {
        m_thread.start(*m_connection, [this](const void *event) { handle(event); });
    }

private:
    static quint32 maskOf(InputEvents events)
    {
        quint32 mask = 0;
        if (events.testFlag(InputEvent::Clicks))
            mask |= XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS;
        if (events.testFlag(InputEvent::Keys))
            mask |= XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE;
        return mask;
    }

    void handle(const void *event)
    {
        if (m_keyMap && m_keyMap->read(event))
            return;
        const auto type = m_rawEvents->typeOf(event);
        if (!type)
            return;
        const quint32 detail = static_cast<const xcb_input_raw_button_press_event_t *>(event)->detail;
        switch (*type) {
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
    std::optional<X11RawEvents> m_rawEvents;
    std::bitset<256> m_down;
    X11EventThread m_thread; // last: works on the others
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
