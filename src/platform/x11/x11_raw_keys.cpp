#include "platform/x11/x11_raw_keys.h"

#include "platform/x11/x11_connection.h"

#include <xcb/xcb.h>
#include <xcb/xinput.h>

void X11RawKeys::listen(const X11Connection &connection)
{
    if (m_events)
        return;
    m_events = X11RawEvents::of(connection);
    if (!m_events)
        return;
    m_events->select(connection,
                     XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE);
    xcb_connection_t *xcb = connection.xcb();
    const XcbOwned<xcb_query_keymap_reply_t> held(
        xcb_query_keymap_reply(xcb, xcb_query_keymap(xcb), nullptr));
    m_down.reset();
    for (size_t keycode = 0; held && keycode < m_down.size(); ++keycode)
        m_down[keycode] = held->keys[keycode / 8] >> keycode % 8 & 1;
}

void X11RawKeys::stopListening(const X11Connection &connection)
{
    if (m_events)
        m_events->select(connection, 0);
    m_events.reset();
}

std::optional<X11RawKeys::Press> X11RawKeys::read(const void *event)
{
    const auto type = m_events ? m_events->typeOf(event) : std::nullopt;
    if (!type)
        return std::nullopt;
    const auto *key = static_cast<const xcb_input_raw_key_press_event_t *>(event);
    if (key->detail >= m_down.size())
        return std::nullopt;
    if (*type == XCB_INPUT_RAW_KEY_RELEASE)
        m_down.reset(key->detail);
    if (*type != XCB_INPUT_RAW_KEY_PRESS || m_down.test(key->detail))
        return std::nullopt;
    Press press{quint8(key->detail), 0, key->time};
    for (size_t keycode = 0; keycode < m_down.size(); ++keycode) {
        if (m_down.test(keycode))
            press.modifiers |= m_modifierOf[keycode];
    }
    m_down.set(key->detail);
    return press;
}
