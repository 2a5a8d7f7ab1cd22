#include "platform/x11/x11_raw_keys.h"

#include "platform/x11/x11_connection.h"

#include <xcb/xcb.h>
#include <xcb/xinput.h>

void X11RawKeys::listen(const X11Connection &connection)
{
    xcb_connection_t *xcb = connection.xcb();
    const xcb_query_extension_reply_t *extension = xcb_get_extension_data(xcb, &xcb_input_id);
    if (m_opcode != 0 || !extension || !extension->present)
        return;
    // Before 2.1 raw events kept away during grabs.
    const XcbOwned<xcb_input_xi_query_version_reply_t> version(
        xcb_input_xi_query_version_reply(xcb, xcb_input_xi_query_version(xcb, 2, 2), nullptr));
    if (!version || version->major_version < 2 || (version->major_version == 2 && version->minor_version < 1))
        return;
    m_opcode = extension->major_opcode;
    select(connection, XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE);
    const XcbOwned<xcb_query_keymap_reply_t> held(
        xcb_query_keymap_reply(xcb, xcb_query_keymap(xcb), nullptr));
    m_down.reset();
    for (size_t keycode = 0; held && keycode < m_down.size(); ++keycode)
        m_down[keycode] = held->keys[keycode / 8] >> keycode % 8 & 1;
}

void X11RawKeys::stopListening(const X11Connection &connection)
{
    if (m_opcode != 0)
        select(connection, 0);
    m_opcode = 0;
}

void X11RawKeys::select(const X11Connection &connection, quint32 events)
{
    const struct {
        xcb_input_event_mask_t head;
        quint32 mask;
    } wanted{{XCB_INPUT_DEVICE_ALL_MASTER, 1}, events};
    xcb_input_xi_select_events(connection.xcb(), connection.root(), 1, &wanted.head);
}

std::optional<X11RawKeys::Press> X11RawKeys::read(const void *event)
{
    const auto *generic = static_cast<const xcb_ge_generic_event_t *>(event);
    if (m_opcode == 0 || (generic->response_type & 0x7f) != XCB_GE_GENERIC || generic->extension != m_opcode)
        return std::nullopt;
    const auto *key = static_cast<const xcb_input_raw_key_press_event_t *>(event);
    if (key->detail >= m_down.size())
        return std::nullopt;
    if (generic->event_type == XCB_INPUT_RAW_KEY_RELEASE)
        m_down.reset(key->detail);
    if (generic->event_type != XCB_INPUT_RAW_KEY_PRESS || m_down.test(key->detail))
        return std::nullopt;
    Press press{quint8(key->detail), 0, key->time};
    for (size_t keycode = 0; keycode < m_down.size(); ++keycode) {
        if (m_down.test(keycode))
            press.modifiers |= m_modifierOf[keycode];
    }
    m_down.set(key->detail);
    return press;
}
