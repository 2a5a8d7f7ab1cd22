#include "platform/x11/x11_screens.h"

#include "platform/x11/x11_connection.h"

#include <QFile>
#include <QMutexLocker>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <xcb/randr.h>
#include <xcb/res.h>
#include <xcb/xcb.h>

namespace {

constexpr double kBaseDpi = 96;

double positiveNumber(const QByteArray &text)
{
    bool ok = false;
    const double number = text.trimmed().toDouble(&ok);
    return ok && std::isfinite(number) && number > 0 ? number : 0;
}

// "1.5;2" by index, or "HDMI-1=1.5;DP-1=2" by name. 0 when the screen isn't in it.
double factorInList(const QByteArray &list, const QString &name, qsizetype index)
{
    const QList<QByteArray> entries = list.split(';');
    for (qsizetype i = 0; i < entries.size(); ++i) {
        const qsizetype equals = entries[i].lastIndexOf('=');
        const bool isMine = equals < 0 ? i == index : QString::fromLocal8Bit(entries[i].left(equals)) == name;
        if (isMine) {
            if (const double factor = positiveNumber(entries[i].mid(equals + 1)))
                return factor;
        }
    }
    return 0;
}

double rounded(double factor, const QByteArray &policy)
{
    if (policy == "Round")
        factor = std::round(factor);
    else if (policy == "Ceil")
        factor = std::ceil(factor);
    else if (policy == "Floor")
        factor = std::floor(factor);
    else if (policy == "RoundPreferFloor")
        factor = factor - std::floor(factor) < 0.75 ? std::floor(factor) : std::ceil(factor);
    return std::max(1.0, factor);
}

double dpiFromResources(const QByteArray &resources)
{
    for (const QByteArray &line : resources.split('\n')) {
        if (line.startsWith("Xft.dpi:\t")) // the toolkit reads what the usual tool writes, and no other blank
            return positiveNumber(line.mid(9));
    }
    return 0;
}

// "Xft/DPI" in the settings that a desktop's daemon publishes: a header of 12 bytes, then records of a type,
// a name, a serial and a value. 0 when it isn't there.
double dpiFromXSettings(const QByteArray &settings)
{
    if (settings.size() < 12 || settings[0] != 0) // most significant byte first is not met any more
        return 0;
    const auto word = [&settings](qsizetype at) {
        quint32 value = 0;
        if (at + 4 <= settings.size())
            std::memcpy(&value, settings.constData() + at, 4);
        return value;
    };
    const auto padded = [](qsizetype length) { return (length + 3) & ~qsizetype(3); };
    qsizetype at = 12;
    for (quint32 left = word(8); left > 0 && at + 4 <= settings.size(); --left) {
        const int type = settings[at];
        const qsizetype nameLength = word(at) >> 16;
        const QByteArray name = settings.mid(at + 4, nameLength);
        at += 4 + padded(nameLength) + 4;
        if (type == 0) {
            if (name == "Xft/DPI")
                return word(at) / 1024.0; // in 1/1024 of a dot
            at += 4;
        } else {
            at += type == 1 ? 4 + padded(word(at)) : 8;
        }
    }
    return 0;
}

DisplayScaling readScaling(const X11Connection &connection)
{
    DisplayScaling scaling;
    scaling.scaleFactor = qgetenv("QT_SCALE_FACTOR");
    scaling.screenScaleFactors = qgetenv("QT_SCREEN_SCALE_FACTORS");
    scaling.roundingPolicy = qgetenv("QT_SCALE_FACTOR_ROUNDING_POLICY");
    scaling.highDpiEnabled = qgetenv("QT_ENABLE_HIGHDPI_SCALING") != "0";
    if (const double forced = positiveNumber(qgetenv("QT_FONT_DPI"))) {
        scaling.dpi = forced;
        return scaling;
    }
    xcb_connection_t *xcb = connection.xcb();
    const auto ownerCookie = xcb_get_selection_owner(xcb, connection.atom(X11Atom::XSettingsS0));
    double dpi = dpiFromResources(connection.bytes(connection.root(), XCB_ATOM_RESOURCE_MANAGER));
    const XcbOwned<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(xcb, ownerCookie, nullptr));
    if (owner && owner->owner != XCB_NONE) {
        const double set =
            dpiFromXSettings(connection.bytes(owner->owner, connection.atom(X11Atom::XSettingsSettings)));
        if (set > 0)
            dpi = set;
    }
    if (dpi > 0)
        scaling.dpi = dpi;
    return scaling;
}

struct Monitor {
    quint32 id = 0;
    QRect rect;
    bool isPrimary = false;
};

QList<Monitor> monitors(const X11Connection &connection)
{
    QList<Monitor> found;
    if (connection.has(X11Extension::RandR)) {
        xcb_connection_t *xcb = connection.xcb();
        const XcbOwned<xcb_randr_get_monitors_reply_t> reply(
            xcb_randr_get_monitors_reply(xcb, xcb_randr_get_monitors(xcb, connection.root(), true), nullptr));
        if (reply) {
            for (auto it = xcb_randr_get_monitors_monitors_iterator(reply.get()); it.rem;
                 xcb_randr_monitor_info_next(&it)) {
                const xcb_randr_monitor_info_t &info = *it.data;
                if (info.width > 0 && info.height > 0)
                    found.append(
                        {info.name, QRect(info.x, info.y, info.width, info.height), info.primary != 0});
            }
        }
    }
    return found;
}

QRect currentRootRect(const X11Connection &connection)
{
    xcb_connection_t *xcb = connection.xcb();
    const XcbOwned<xcb_get_geometry_reply_t> reply(
        xcb_get_geometry_reply(xcb, xcb_get_geometry(xcb, connection.root()), nullptr));
    return reply ? QRect(0, 0, reply->width, reply->height) : QRect();
}

QStringList atomNames(const X11Connection &connection, const QList<quint32> &atoms)
{
    xcb_connection_t *xcb = connection.xcb();
    QList<xcb_get_atom_name_cookie_t> cookies;
    for (const quint32 atom : atoms)
        cookies.append(xcb_get_atom_name(xcb, atom));
    QStringList names;
    for (const auto cookie : std::as_const(cookies)) {
        const XcbOwned<xcb_get_atom_name_reply_t> reply(xcb_get_atom_name_reply(xcb, cookie, nullptr));
        names.append(reply ? QString::fromUtf8(xcb_get_atom_name_name(reply.get()),
                                               xcb_get_atom_name_name_length(reply.get()))
                           : QString());
    }
    return names;
}

// Layers as the capture rules know them: 0 is an ordinary window.
int layerOf(const X11Connection &connection, const QList<quint32> &types)
{
    for (const quint32 type : types) {
        if (type == connection.atom(X11Atom::NetWmWindowTypeNormal) ||
            type == connection.atom(X11Atom::NetWmWindowTypeDialog))
            return 0;
        if (type == connection.atom(X11Atom::NetWmWindowTypeDesktop))
            return -1;
        if (type == connection.atom(X11Atom::NetWmWindowTypeDock))
            return 25;
    }
    return types.isEmpty() ? 0 : 8; // menus, tool boxes, splash screens, notifications
}

bool isViewable(const X11Connection &connection, quint32 window)
{
    xcb_connection_t *xcb = connection.xcb();
    const XcbOwned<xcb_get_window_attributes_reply_t> reply(
        xcb_get_window_attributes_reply(xcb, xcb_get_window_attributes(xcb, window), nullptr));
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE &&
           reply->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT;
}

} // namespace

double DisplayScaling::scale(const QString &name, qsizetype index) const
{
    const double global = positiveNumber(scaleFactor);
    double own = factorInList(screenScaleFactors, name, index);
    if (own <= 0)
        own = highDpiEnabled ? rounded(dpi / kBaseDpi, roundingPolicy) : 1;
    return (global > 0 ? global : 1) * own;
}

X11Screens::X11Screens() = default;
X11Screens::~X11Screens() = default;

X11Connection *X11Screens::connection() const
{
    if (m_connection && m_connection->isBroken())
        m_connection.reset();
    if (!m_connection) {
        auto opened = X11Connection::open(X11Extension::RandR | X11Extension::Res);
        if (opened)
            m_connection = std::move(*opened);
    }
    return m_connection.get();
}

QList<Screen> X11Screens::screens() const
{
    QMutexLocker lock(&m_mutex);
    const X11Connection *open = connection();
    return open ? X11Desktop::screens(*open) : QList<Screen>();
}

QList<ListedWindow> X11Screens::windows() const
{
    QMutexLocker lock(&m_mutex);
    const X11Connection *open = connection();
    if (!open)
        return {};
    const QList<Screen> screens = X11Desktop::screens(*open);
    const QRect root = currentRootRect(*open);
    QList<ListedWindow> listed;
    for (const quint32 id : X11Desktop::clientsFrontToBack(*open)) {
        if (!isViewable(*open, id) || open->cardinals(id, open->atom(X11Atom::NetWmState))
                                          .contains(open->atom(X11Atom::NetWmStateHidden)))
            continue;
        const QRect frame = X11Desktop::visibleFrame(*open, id, WindowPart::Framed);
        if (!frame.intersects(root))
            continue;
        ListedWindow window;
        window.id = id;
        window.pid = X11Desktop::pid(*open, id);
        window.layer = layerOf(*open, open->cardinals(id, open->atom(X11Atom::NetWmWindowType)));
        window.frame = X11Desktop::toPoints(screens, frame);
        window.owner = X11Desktop::applicationName(*open, id, window.pid);
        window.title = QString::fromUtf8(open->bytes(id, open->atom(X11Atom::NetWmName)));
        if (window.title.isEmpty())
            window.title = QString::fromLocal8Bit(open->bytes(id, XCB_ATOM_WM_NAME));
        listed.append(window);
    }
    return listed;
}

namespace X11Desktop {

QList<Screen> screens(const X11Connection &connection)
{
    QList<Monitor> found = monitors(connection);
    if (found.isEmpty())
        found.append({connection.root(), currentRootRect(connection), true});
    if (found.first().rect.isEmpty())
        return {};
    const auto primary =
        std::find_if(found.begin(), found.end(), [](const Monitor &monitor) { return monitor.isPrimary; });
    if (primary != found.end())
        std::rotate(found.begin(), primary, primary + 1);
    QList<quint32> ids;
    for (const Monitor &monitor : std::as_const(found))
        ids.append(monitor.id);
    const bool isNamed = ids != QList<quint32>{connection.root()};
    const QStringList names = isNamed ? atomNames(connection, ids) : QStringList{QStringLiteral("screen")};
    const DisplayScaling scaling = readScaling(connection);
    QList<Screen> screens;
    for (qsizetype i = 0; i < found.size(); ++i) {
        Screen screen;
        screen.id = found[i].id;
        screen.name = names[i];
        screen.native = found[i].rect;
        screen.scale = scaling.scale(screen.name, i);
        screen.isPrimary = i == 0;
        screens.append(screen);
    }
    return screens;
}

QList<quint32> clientsFrontToBack(const X11Connection &connection)
{
    QList<quint32> clients =
        connection.cardinals(connection.root(), connection.atom(X11Atom::NetClientListStacking));
    if (clients.isEmpty()) {
        // Without a window manager every child of the root is a window.
        xcb_connection_t *xcb = connection.xcb();
        const XcbOwned<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(xcb, xcb_query_tree(xcb, connection.root()), nullptr));
        if (tree) {
            const xcb_window_t *children = xcb_query_tree_children(tree.get());
            clients = QList<quint32>(children, children + xcb_query_tree_children_length(tree.get()));
        }
    }
    std::reverse(clients.begin(), clients.end());
    return clients;
}

qint64 pid(const X11Connection &connection, quint32 window)
{
    const QList<quint32> told = connection.cardinals(window, connection.atom(X11Atom::NetWmPid));
    if (!told.isEmpty() && told.first() > 0)
        return told.first();
    if (!connection.has(X11Extension::Res))
        return 0;
    xcb_connection_t *xcb = connection.xcb();
    const xcb_res_client_id_spec_t spec = {window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const XcbOwned<xcb_res_query_client_ids_reply_t> reply(
        xcb_res_query_client_ids_reply(xcb, xcb_res_query_client_ids(xcb, 1, &spec), nullptr));
    if (!reply)
        return 0;
    for (auto it = xcb_res_query_client_ids_ids_iterator(reply.get()); it.rem;
         xcb_res_client_id_value_next(&it)) {
        if (it.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID &&
            xcb_res_client_id_value_value_length(it.data) > 0)
            return *xcb_res_client_id_value_value(it.data);
    }
    return 0;
}

QString applicationName(const X11Connection &connection, quint32 window, qint64 pid)
{
    // WM_CLASS holds an instance and a class name, each closed by a zero byte.
    const QList<QByteArray> names = connection.bytes(window, XCB_ATOM_WM_CLASS).split('\0');
    for (const qsizetype wanted : {1, 0}) {
        if (names.size() > wanted && !names[wanted].isEmpty())
            return QString::fromUtf8(names[wanted]);
    }
    QFile file(QStringLiteral("/proc/%1/comm").arg(pid));
    if (pid <= 0 || !file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll()).trimmed();
}

QRect visibleFrame(const X11Connection &connection, quint32 window, WindowPart part)
{
    xcb_connection_t *xcb = connection.xcb();
    // Left, right, top and bottom, both.
    const QList<quint32> drawnAround =
        connection.cardinals(window, connection.atom(X11Atom::NetFrameExtents));
    const auto geometryCookie = xcb_get_geometry(xcb, window);
    const auto placeCookie = xcb_translate_coordinates(xcb, window, connection.root(), 0, 0);
    const QList<quint32> margins = connection.cardinals(window, connection.atom(X11Atom::GtkFrameExtents));
    const XcbOwned<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(xcb, geometryCookie, nullptr));
    const XcbOwned<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(xcb, placeCookie, nullptr));
    if (!geometry || !place)
        return {};
    const QRect whole(place->dst_x, place->dst_y, geometry->width, geometry->height);
    if (margins.size() < 4) {
        const bool isFramed = part == WindowPart::Framed && drawnAround.size() >= 4;
        return isFramed ? whole.adjusted(-int(drawnAround[0]), -int(drawnAround[2]), int(drawnAround[1]),
                                         int(drawnAround[3]))
                        : whole;
    }
    const QRect visible = whole.adjusted(int(margins[0]), int(margins[2]), -int(margins[1]), -int(margins[3]))
                              .intersected(whole);
    return visible.isEmpty() ? whole : visible;
}

bool isXwayland(const X11Connection &connection)
{
    constexpr QByteArrayView kExtension = "XWAYLAND";
    xcb_connection_t *xcb = connection.xcb();
    const XcbOwned<xcb_query_extension_reply_t> reply(xcb_query_extension_reply(
        xcb, xcb_query_extension(xcb, quint16(kExtension.size()), kExtension.data()), nullptr));
    if (reply && reply->present)
        return true;
    // Older ones tell it by the names of their outputs alone.
    QList<quint32> names;
    for (const Monitor &monitor : monitors(connection))
        names.append(monitor.id);
    const QStringList told = atomNames(connection, names);
    return std::any_of(told.begin(), told.end(),
                       [](const QString &name) { return name.startsWith(QLatin1String("XWAYLAND")); });
}

std::optional<QRect> screenRect(const X11Connection &connection, quint32 screenId)
{
    const QList<Monitor> found = monitors(connection);
    for (const Monitor &monitor : found) {
        if (monitor.id == screenId)
            return monitor.rect;
    }
    if (found.isEmpty() && screenId == connection.root())
        return currentRootRect(connection);
    return std::nullopt;
}

QRectF toPoints(const QList<Screen> &screens, const QRect &native)
{
    const QPoint centre = native.center();
    const auto holds = [&](const Screen &screen) { return screen.native.contains(centre); };
    auto screen = std::find_if(screens.begin(), screens.end(), holds);
    if (screen == screens.end()) {
        screen = std::find_if(screens.begin(), screens.end(),
                              [&](const Screen &each) { return each.native.intersects(native); });
    }
    if (screen == screens.end())
        screen = screens.begin();
    if (screen == screens.end())
        return QRectF(native);
    return {screen->fromNative(native.topLeft()), QSizeF(native.size()) / screen->scale};
}

} // namespace X11Desktop
