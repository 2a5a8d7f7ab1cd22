#pragma once

#include <xcb/xcb.h>

// Holds the server still: nothing is drawn, moved or opened by anyone else.
class X11ServerGrab {
public:
    explicit X11ServerGrab(xcb_connection_t *xcb) : m_xcb(xcb) { xcb_grab_server(xcb); }
    ~X11ServerGrab()
    {
        xcb_ungrab_server(m_xcb);
        xcb_flush(m_xcb);
    }
    X11ServerGrab(const X11ServerGrab &) = delete;
    X11ServerGrab &operator=(const X11ServerGrab &) = delete;

private:
    xcb_connection_t *m_xcb;
};
