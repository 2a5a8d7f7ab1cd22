#include "platform/x11/x11_survey.h"

#include "platform/x11/x11_connection.h"

#include <QSet>
#include <unistd.h>
#include <xcb/res.h>
#include <xcb/xcb.h>

namespace {

constexpr xcb_res_client_id_spec_t kAllClients = {XCB_NONE, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};

QList<quint32> basesOf(const xcb_res_query_client_ids_reply_t &reply)
{
    QList<quint32> bases;
    for (auto it = xcb_res_query_client_ids_ids_iterator(&reply); it.rem; xcb_res_client_id_value_next(&it)) {
        if (it.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID &&
            xcb_res_client_id_value_value_length(it.data) > 0 &&
            *xcb_res_client_id_value_value(it.data) == quint32(getpid()))
            bases.append(it.data->spec.client);
    }
    return bases;
}

QList<quint32> items(const xcb_get_property_reply_t *reply)
{
    if (!reply || reply->format != 32)
        return {};
    const auto *values = static_cast<const quint32 *>(xcb_get_property_value(reply));
    return QList<quint32>(values, values + reply->value_len);
}

// Without the extension that tells processes, windows tell theirs themselves.
bool tellsOwnPid(const X11Connection &connection, quint32 window)
{
    const QList<quint32> pid = connection.cardinals(window, connection.atom(X11Atom::NetWmPid));
    return !pid.isEmpty() && pid.first() == quint32(getpid());
}

QList<X11Survey::TopLevel> visibleWindows(const X11Connection &connection, const QList<quint32> &children,
                                          const QSet<quint32> &own, bool isComposited)
{
    xcb_connection_t *xcb = connection.xcb();
    struct Question {
        xcb_get_window_attributes_cookie_t attributes;
        xcb_get_geometry_cookie_t geometry;
        xcb_get_property_cookie_t opacity;
    };
    QList<Question> questions;
    for (const quint32 id : children) {
        Question question;
        question.attributes = xcb_get_window_attributes(xcb, id);
        question.geometry = xcb_get_geometry(xcb, id);
        question.opacity = xcb_get_property(xcb, false, id, connection.atom(X11Atom::NetWmWindowOpacity),
                                            XCB_ATOM_CARDINAL, 0, 1);
        questions.append(question);
    }
    QList<X11Survey::TopLevel> windows;
    for (qsizetype i = 0; i < children.size(); ++i) {
        const XcbOwned<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(xcb, questions[i].attributes, nullptr));
        const XcbOwned<xcb_get_geometry_reply_t> geometry(
            xcb_get_geometry_reply(xcb, questions[i].geometry, nullptr));
        const XcbOwned<xcb_get_property_reply_t> opacity(
            xcb_get_property_reply(xcb, questions[i].opacity, nullptr));
        if (!attributes || !geometry || attributes->map_state != XCB_MAP_STATE_VIEWABLE ||
            attributes->_class != XCB_WINDOW_CLASS_INPUT_OUTPUT)
            continue;
        X11Survey::TopLevel window;
        window.id = children[i];
        const int borders = 2 * geometry->border_width;
        window.outer = QRect(geometry->x, geometry->y, geometry->width + borders, geometry->height + borders);
        window.depth = geometry->depth;
        window.visual = attributes->visual;
        window.isOwn = own.contains(window.id);
        const QList<quint32> told = items(opacity.get());
        if (isComposited && !told.isEmpty())
            window.opacity = told.first() / double(0xffffffffu);
        windows.append(window);
    }
    return windows;
}

} // namespace

X11OwnClients X11OwnClients::ask(const X11Connection &connection)
{
    X11OwnClients clients;
    clients.m_mask = ~xcb_get_setup(connection.xcb())->resource_id_mask;
    if (!connection.has(X11Extension::Res))
        return clients;
    const XcbOwned<xcb_res_query_client_ids_reply_t> reply(xcb_res_query_client_ids_reply(
        connection.xcb(), xcb_res_query_client_ids(connection.xcb(), 1, &kAllClients), nullptr));
    if (reply)
        clients.m_bases = basesOf(*reply);
    return clients;
}

bool X11OwnClients::owns(quint32 window) const
{
    return m_bases.contains(window & m_mask);
}

quint32 X11Survey::topLevelOf(const X11Connection &connection, quint32 window)
{
    xcb_connection_t *xcb = connection.xcb();
    while (true) {
        const XcbOwned<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(xcb, xcb_query_tree(xcb, window), nullptr));
        if (!tree || tree->parent == XCB_NONE)
            return 0;
        if (tree->parent == connection.root())
            return window;
        window = tree->parent;
    }
}

X11Survey X11Survey::take(const X11Connection &connection, bool listsWindows)
{
    xcb_connection_t *xcb = connection.xcb();
    const quint32 root = connection.root();
    const bool knowsProcesses = connection.has(X11Extension::Res);

    // One batch for all that every picture needs.
    xcb_res_query_client_ids_cookie_t clientsCookie{};
    if (knowsProcesses)
        clientsCookie = xcb_res_query_client_ids(xcb, 1, &kAllClients);
    const auto treeCookie = xcb_query_tree(xcb, root);
    const auto geometryCookie = xcb_get_geometry(xcb, root);
    const auto listCookie = xcb_get_property(
        xcb, false, root, connection.atom(X11Atom::NetClientListStacking), XCB_ATOM_WINDOW, 0, 4096);
    const auto wallpaperCookie =
        xcb_get_property(xcb, false, root, connection.atom(X11Atom::XRootPixmap), XCB_ATOM_PIXMAP, 0, 1);
    const auto compositorCookie = xcb_get_selection_owner(xcb, connection.atom(X11Atom::NetWmCmS0));

    X11OwnClients ownClients;
    ownClients.m_mask = ~xcb_get_setup(xcb)->resource_id_mask;
    if (knowsProcesses) {
        const XcbOwned<xcb_res_query_client_ids_reply_t> reply(
            xcb_res_query_client_ids_reply(xcb, clientsCookie, nullptr));
        if (reply)
            ownClients.m_bases = basesOf(*reply);
    }
    const XcbOwned<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(xcb, treeCookie, nullptr));
    const XcbOwned<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(xcb, geometryCookie, nullptr));
    const XcbOwned<xcb_get_property_reply_t> list(xcb_get_property_reply(xcb, listCookie, nullptr));
    const XcbOwned<xcb_get_property_reply_t> wallpaper(xcb_get_property_reply(xcb, wallpaperCookie, nullptr));
    const XcbOwned<xcb_get_selection_owner_reply_t> compositor(
        xcb_get_selection_owner_reply(xcb, compositorCookie, nullptr));

    X11Survey survey;
    if (!tree || !geometry)
        return survey;
    survey.root = QRect(0, 0, geometry->width, geometry->height);
    survey.isComposited = compositor && compositor->owner != XCB_NONE;
    const QList<quint32> wallpaperId = items(wallpaper.get());
    survey.rootPixmap = wallpaperId.isEmpty() ? 0 : wallpaperId.first();

    const auto isOwn = [&](quint32 window) {
        return knowsProcesses ? ownClients.owns(window) : tellsOwnPid(connection, window);
    };
    const xcb_window_t *first = xcb_query_tree_children(tree.get());
    const QList<quint32> children(first, first + xcb_query_tree_children_length(tree.get()));
    QSet<quint32> own;
    for (const quint32 child : children) {
        if (isOwn(child))
            own.insert(child);
    }
    // Windows that the window manager has put into frames of its own.
    for (const quint32 client : items(list.get())) {
        if (!own.contains(client) && isOwn(client))
            own.insert(topLevelOf(connection, client));
    }
    if (own.isEmpty() && !listsWindows)
        return survey;
    survey.windows = visibleWindows(connection, children, own, survey.isComposited);
    for (const TopLevel &window : std::as_const(survey.windows)) {
        if (window.isOwn)
            survey.own += window.outer;
    }
    return survey;
}
