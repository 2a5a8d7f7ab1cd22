#include "platform/x11/x11_menus.h"

#include "platform/x11/x11_connection.h"

#include <QGuiApplication>
#include <QWindow>
#include <algorithm>
#include <array>
#include <span>
#include <vector>
#include <xcb/xcb.h>

namespace {

bool isMenu(const X11Connection &connection, xcb_window_t window)
{
    const auto types = connection.cardinals(window, connection.atom(X11Atom::NetWmWindowType));
    constexpr std::array menus{X11Atom::NetWmWindowTypeMenu, X11Atom::NetWmWindowTypePopupMenu,
                               X11Atom::NetWmWindowTypeDropdownMenu, X11Atom::NetWmWindowTypeCombo};
    return std::ranges::any_of(menus, [&](X11Atom menu) { return types.contains(connection.atom(menu)); });
}

// Our own toolkit doesn't tell the server what is a menu.
bool isOwnMenuOpen()
{
    return std::ranges::any_of(QGuiApplication::topLevelWindows(), [](const QWindow *window) {
        return window->isVisible() && window->type() == Qt::Popup;
    });
}

} // namespace

bool isMenuOpen(const X11Connection &connection)
{
    if (isOwnMenuOpen())
        return true;
    xcb_connection_t *xcb = connection.xcb();
    const XcbOwned<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(xcb, xcb_query_tree(xcb, connection.root()), nullptr));
    if (!tree)
        return false;
    const std::span<const xcb_window_t> windows(xcb_query_tree_children(tree.get()),
                                                xcb_query_tree_children_length(tree.get()));
    std::vector<xcb_get_window_attributes_cookie_t> cookies;
    for (const xcb_window_t window : windows)
        cookies.push_back(xcb_get_window_attributes(xcb, window));
    bool found = false;
    for (size_t i = 0; i < windows.size(); ++i) {
        const XcbOwned<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(xcb, cookies[i], nullptr));
        const bool isShown =
            attributes && attributes->override_redirect && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
        found = found || (isShown && isMenu(connection, windows[i]));
    }
    return found;
}
