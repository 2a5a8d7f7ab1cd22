#include "platform/x11/x11_raw_events.h"

#include "platform/x11/x11_connection.h"

#include <xcb/xcb.h>
#include <xcb/xinput.h>

std::optional<X11RawEvents> X11RawEvents::of(const X11Connection &connection)
{
    xcb_connection_t *xcb = connection.xcb();
    const xcb_query_extension_reply_t *extension = xcb_get_extension_data(xcb, &xcb_input_id);
    if (!extension || !extension->present)
        return std::nullopt;
    const XcbOwned<xcb_input_xi_query_version_reply_t> version(
        xcb_input_xi_query_version_reply(xcb, xcb_input_xi_query_version(xcb, 2, 2), nullptr));
    // Before 2.1 raw events kept away during grabs.
    if (!version || version->major_version < 2 || (version->major_version == 2 && version->minor_version < 1))
        return std::nullopt;
    return X11RawEvents(extension->major_opcode);
}

bool X11RawEvents::select(const X11Connection &connection, quint32 mask) const
{
    const struct {
        xcb_input_event_mask_t head;
        quint32 mask;
    } wanted{{XCB_INPUT_DEVICE_ALL_MASTER, 1}, mask};
    const XcbOwned<xcb_generic_error_t> refused(xcb_request_check(
        connection.xcb(),
        xcb_input_xi_select_events_checked(connection.xcb(), connection.root(), 1, &wanted.head)));
    return !refused;
}

std::optional<int> X11RawEvents::typeOf(const void *event) const
{
    const auto *generic = static_cast<const xcb_ge_generic_event_t *>(event);
    if ((generic->response_type & 0x7f) != XCB_GE_GENERIC || generic->extension != m_opcode)
        return std::nullopt;
    return generic->event_type;
}
