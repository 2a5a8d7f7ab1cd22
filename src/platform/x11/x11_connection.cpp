#include "platform/x11/x11_connection.h"

#include "platform/texts.h"

#include <cstring>
#include <xcb/composite.h>
#include <xcb/randr.h>
#include <xcb/render.h>
#include <xcb/res.h>
#include <xcb/shape.h>
#include <xcb/shm.h>
#include <xcb/xcb.h>
#include <xcb/xfixes.h>
#include <xcb/xtest.h>

namespace {

constexpr std::array<const char *, std::size_t(X11Atom::Count)> kAtomNames = {
    "_GTK_FRAME_EXTENTS",
    "_NET_ACTIVE_WINDOW",
    "_NET_CLIENT_LIST_STACKING",
    "_NET_FRAME_EXTENTS",
    "_NET_SUPPORTING_WM_CHECK",
    "_NET_WM_CM_S0",
    "_NET_WM_NAME",
    "_NET_WM_PID",
    "_NET_WM_STATE",
    "_NET_WM_STATE_HIDDEN",
    "_NET_WM_WINDOW_OPACITY",
    "_NET_WM_WINDOW_TYPE",
    "_NET_WM_WINDOW_TYPE_COMBO",
    "_NET_WM_WINDOW_TYPE_DESKTOP",
    "_NET_WM_WINDOW_TYPE_DIALOG",
    "_NET_WM_WINDOW_TYPE_DOCK",
    "_NET_WM_WINDOW_TYPE_DROPDOWN_MENU",
    "_NET_WM_WINDOW_TYPE_MENU",
    "_NET_WM_WINDOW_TYPE_NORMAL",
    "_NET_WM_WINDOW_TYPE_POPUP_MENU",
    "UTF8_STRING",
    "WM_STATE",
    "_XROOTPMAP_ID",
    "_XSETTINGS_S0",
    "_XSETTINGS_SETTINGS",
};

struct KnownExtension {
    X11Extension flag;
    xcb_extension_t *extension;
};

const std::array<KnownExtension, 8> &knownExtensions()
{
    static const std::array<KnownExtension, 8> known = {{
        {X11Extension::Shm, &xcb_shm_id},
        {X11Extension::XFixes, &xcb_xfixes_id},
        {X11Extension::RandR, &xcb_randr_id},
        {X11Extension::Composite, &xcb_composite_id},
        {X11Extension::Render, &xcb_render_id},
        {X11Extension::Res, &xcb_res_id},
        {X11Extension::Shape, &xcb_shape_id},
        {X11Extension::XTest, &xcb_test_id},
    }};
    return known;
}

constexpr quint32 kLongestProperty = 1 << 18; // items of 32 bits: a megabyte

} // namespace

Result<std::unique_ptr<X11Connection>> X11Connection::open(X11Extensions wanted)
{
    const QByteArray name = qgetenv("DISPLAY");
    if (name.isEmpty()) {
        return fail(
            Error::Kind::Unavailable,
            PlatformTexts::tr("There is no display: start Lumenpost in a desktop session, or set DISPLAY."));
    }
    int screenNumber = 0;
    std::unique_ptr<X11Connection> connection(new X11Connection);
    connection->m_xcb = xcb_connect(nullptr, &screenNumber);
    if (const int error = xcb_connection_has_error(connection->m_xcb)) {
        return fail(Error::Kind::Unavailable,
                    PlatformTexts::tr(
                        "The display “%1” can't be reached: check DISPLAY and that its desktop session runs.")
                        .arg(QString::fromLocal8Bit(name)),
                    QStringLiteral("xcb_connect: %1").arg(error));
    }
    auto roots = xcb_setup_roots_iterator(xcb_get_setup(connection->m_xcb));
    while (screenNumber-- > 0 && roots.rem > 1)
        xcb_screen_next(&roots);
    connection->m_screen = roots.data;
    connection->learn(wanted);
    return connection;
}

X11Connection::~X11Connection()
{
    if (m_xcb)
        xcb_disconnect(m_xcb);
}

void X11Connection::learn(X11Extensions wanted)
{
    for (const KnownExtension &known : knownExtensions()) {
        if (wanted.testFlag(known.flag))
            xcb_prefetch_extension_data(m_xcb, known.extension);
    }
    std::array<xcb_intern_atom_cookie_t, kAtomNames.size()> cookies;
    for (std::size_t i = 0; i < kAtomNames.size(); ++i)
        cookies[i] = xcb_intern_atom(m_xcb, false, quint16(std::strlen(kAtomNames[i])), kAtomNames[i]);
    for (std::size_t i = 0; i < kAtomNames.size(); ++i) {
        const XcbOwned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_xcb, cookies[i], nullptr));
        m_atoms[i] = reply ? reply->atom : XCB_ATOM_NONE;
    }
    for (const KnownExtension &known : knownExtensions()) {
        if (!wanted.testFlag(known.flag))
            continue;
        const auto *data = xcb_get_extension_data(m_xcb, known.extension);
        m_present.setFlag(known.flag, data && data->present);
    }
    // These refuse to serve before they were told a version; nobody waits for the answers.
    if (has(X11Extension::XFixes))
        xcb_discard_reply(m_xcb, xcb_xfixes_query_version(m_xcb, 5, 0).sequence);
    if (has(X11Extension::Composite))
        xcb_discard_reply(m_xcb, xcb_composite_query_version(m_xcb, 0, 4).sequence);
    if (has(X11Extension::Render))
        xcb_discard_reply(m_xcb, xcb_render_query_version(m_xcb, 0, 11).sequence);
    if (has(X11Extension::RandR))
        xcb_discard_reply(m_xcb, xcb_randr_query_version(m_xcb, 1, 5).sequence);
    if (has(X11Extension::Res))
        xcb_discard_reply(m_xcb, xcb_res_query_version(m_xcb, 1, 2).sequence);
}

quint32 X11Connection::root() const
{
    return m_screen->root;
}

bool X11Connection::isBroken() const
{
    return xcb_connection_has_error(m_xcb) != 0;
}

QList<quint32> X11Connection::cardinals(quint32 window, quint32 property) const
{
    const XcbOwned<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        m_xcb,
        xcb_get_property(m_xcb, false, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, kLongestProperty),
        nullptr));
    if (!reply || reply->format != 32)
        return {};
    const auto *items = static_cast<const quint32 *>(xcb_get_property_value(reply.get()));
    return QList<quint32>(items, items + reply->value_len);
}

QByteArray X11Connection::bytes(quint32 window, quint32 property) const
{
    const XcbOwned<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        m_xcb,
        xcb_get_property(m_xcb, false, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, kLongestProperty),
        nullptr));
    if (!reply)
        return {};
    return QByteArray(static_cast<const char *>(xcb_get_property_value(reply.get())),
                      xcb_get_property_value_length(reply.get()));
}
