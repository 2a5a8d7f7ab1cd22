#include "platform/x11/x11_clipboard_manager.h"

#include "platform/x11/x11_connection.h"

#include <cstring>
#include <xcb/xcb.h>

bool hasX11ClipboardManager()
{
    constexpr auto kName = "CLIPBOARD_MANAGER";
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> xcb(xcb_connect(nullptr, nullptr),
                                                                           &xcb_disconnect);
    if (xcb_connection_has_error(xcb.get()))
        return false;
    const XcbOwned<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
        xcb.get(), xcb_intern_atom(xcb.get(), true, quint16(std::strlen(kName)), kName), nullptr));
    if (!atom || atom->atom == XCB_ATOM_NONE)
        return false;
    const XcbOwned<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(xcb.get(), xcb_get_selection_owner(xcb.get(), atom->atom), nullptr));
    return owner && owner->owner != XCB_WINDOW_NONE;
}
