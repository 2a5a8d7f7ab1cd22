#include "platform/x11/x11_menus.h"

#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_screens.h"

#include <QGuiApplication>
#include <QWindow>
#include <algorithm>
#include <array>
#include <span>
#include <vector>
#include <xcb/xcb.h>

namespace {

// Ids with one of these bits aren't given to clients: the server's own windows, as the one that compositing
// managers paint on.
constexpr quint32 kServerBits = 0xe0000000;
constexpr int kSmallestMenu = 16; // pixels; window managers keep tiny windows for themselves

// A window that the window manager doesn't manage.
struct Unmanaged {
    QRect rect;
    QList<quint32> types;
};

bool hasType(const X11Connection &connection, const Unmanaged &window, std::span<const X11Atom> wanted)
{
    return std::ranges::any_of(wanted,
                               [&](X11Atom type) { return window.types.contains(connection.atom(type)); });
}

bool tellsThatItIsAMenu(const X11Connection &connection, const Unmanaged &window)
{
    constexpr std::array kMenus{X11Atom::NetWmWindowTypeMenu, X11Atom::NetWmWindowTypePopupMenu,
                                X11Atom::NetWmWindowTypeDropdownMenu, X11Atom::NetWmWindowTypeCombo};
    return hasType(connection, window, kMenus);
}

// Older toolkits and window managers don't say what their windows are.
bool mayBeAMenu(const X11Connection &connection, const Unmanaged &window)
{
    constexpr std::array kOrdinary{X11Atom::NetWmWindowTypeNormal};
    return window.rect.width() >= kSmallestMenu && window.rect.height() >= kSmallestMenu &&
           (window.types.isEmpty() || hasType(connection, window, kOrdinary));
}

// Our own toolkit doesn't tell the server what is a menu. The selection overlay holds the keyboard too.
bool doWeHoldTheKeyboard()
{
    return std::ranges::any_of(QGuiApplication::topLevelWindows(), [](const QWindow *window) {
        const bool isOverlay = window->flags().testFlag(Qt::BypassWindowManagerHint) &&
                               !window->flags().testFlag(Qt::WindowDoesNotAcceptFocus);
        return window->isVisible() && (window->type() == Qt::Popup || isOverlay);
    });
}

// The clients whose unnamed windows may be menus: the one of the active window, and the window manager.
class MenuOwners {
public:
    explicit MenuOwners(const X11Connection &connection)
        : m_mask(~xcb_get_setup(connection.xcb())->resource_id_mask)
    {
        for (const X11Atom told : {X11Atom::NetActiveWindow, X11Atom::NetSupportingWmCheck}) {
            if (const quint32 window =
                    connection.cardinals(connection.root(), connection.atom(told)).value(0))
                m_bases.append(window & m_mask);
        }
    }
    bool own(quint32 window) const { return m_bases.contains(window & m_mask); }

private:
    quint32 m_mask;
    QList<quint32> m_bases;
};

bool coversAScreen(const QList<Screen> &screens, const QRect &rect)
{
    return std::ranges::any_of(screens, [&](const Screen &screen) { return rect.contains(screen.native); });
}

} // namespace

bool isMenuOpen(const X11Connection &connection)
{
    if (doWeHoldTheKeyboard())
        return true;
    xcb_connection_t *xcb = connection.xcb();
    const XcbOwned<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(xcb, xcb_query_tree(xcb, connection.root()), nullptr));
    if (!tree)
        return false;
    const std::span<const xcb_window_t> windows(xcb_query_tree_children(tree.get()),
                                                xcb_query_tree_children_length(tree.get()));
    std::vector<xcb_get_window_attributes_cookie_t> attributesCookies;
    std::vector<xcb_get_geometry_cookie_t> geometryCookies;
    for (const xcb_window_t window : windows) {
        attributesCookies.push_back(xcb_get_window_attributes(xcb, window));
        geometryCookies.push_back(xcb_get_geometry(xcb, window));
    }
    const MenuOwners owners(connection);
    const QList<Screen> screens = X11Desktop::screens(connection);
    std::optional<bool> answer;
    bool isOnTop = true; // nothing that is managed lies above
    for (size_t i = windows.size(); i-- > 0;) {
        const XcbOwned<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(xcb, attributesCookies[i], nullptr));
        const XcbOwned<xcb_get_geometry_reply_t> geometry(
            xcb_get_geometry_reply(xcb, geometryCookies[i], nullptr));
        const bool isShown = attributes && geometry && attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
                             attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT;
        if (answer || !isShown || (windows[i] & kServerBits) != 0)
            continue;
        if (!attributes->override_redirect) {
            isOnTop = false;
            continue;
        }
        const Unmanaged window{QRect(geometry->x, geometry->y, geometry->width, geometry->height),
                               connection.cardinals(windows[i], connection.atom(X11Atom::NetWmWindowType))};
        if (tellsThatItIsAMenu(connection, window))
            answer = true;
        else if (isOnTop && coversAScreen(screens, window.rect))
            answer = false; // a screen lock
        else if (owners.own(windows[i]) && mayBeAMenu(connection, window))
            answer = true;
    }
    return answer.value_or(false);
}
