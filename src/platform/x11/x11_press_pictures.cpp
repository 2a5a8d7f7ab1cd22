#include "platform/x11/x11_press_pictures.h"

#include "platform/texts.h"
#include "platform/x11/own_window_trails.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_event_thread.h"
#include "platform/x11/x11_photographer.h"
#include "platform/x11/x11_raw_events.h"
#include "platform/x11/x11_screens.h"
#include "platform/x11/x11_survey.h"

#include <xcb/xcb.h>
#include <xcb/xinput.h>

namespace {

constexpr int kLeftButton = 1;
// How deep inside a window manager's frame the client's window may lie.
constexpr int kDeepestClient = 3;

bool hasState(const X11Connection &connection, quint32 window)
{
    return !connection.cardinals(window, connection.atom(X11Atom::WmState)).isEmpty();
}

// The window that the window manager manages, in or below `window`; 0 for a popup.
quint32 clientIn(const X11Connection &connection, quint32 window, int depth)
{
    if (hasState(connection, window))
        return window;
    if (depth == 0)
        return 0;
    xcb_connection_t *xcb = connection.xcb();
    const XcbOwned<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(xcb, xcb_query_tree(xcb, window), nullptr));
    for (int i = tree ? xcb_query_tree_children_length(tree.get()) - 1 : -1; i >= 0; --i) {
        if (const quint32 client = clientIn(connection, xcb_query_tree_children(tree.get())[i], depth - 1))
            return client;
    }
    return 0;
}

QString titleOf(const X11Connection &connection, quint32 window)
{
    const QByteArray title = connection.bytes(window, connection.atom(X11Atom::NetWmName));
    return title.isEmpty() ? QString::fromLocal8Bit(connection.bytes(window, XCB_ATOM_WM_NAME))
                           : QString::fromUtf8(title);
}

QRect wholeArea(const X11Connection &connection, quint32 window)
{
    xcb_connection_t *xcb = connection.xcb();
    const auto geometryCookie = xcb_get_geometry(xcb, window);
    const auto placeCookie = xcb_translate_coordinates(xcb, window, connection.root(), 0, 0);
    const XcbOwned<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(xcb, geometryCookie, nullptr));
    const XcbOwned<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(xcb, placeCookie, nullptr));
    if (!geometry || !place)
        return {};
    return {place->dst_x, place->dst_y, geometry->width, geometry->height};
}

std::unexpected<Error> tellsNoPresses()
{
    return fail(Error::Kind::Unavailable,
                PlatformTexts::tr("This display doesn't tell clicks in other programs: use “Add Step”."));
}

} // namespace

// The thread. It lives from start to stop.
class X11PressPictures::Watch {
public:
    static Result<std::unique_ptr<Watch>> open(X11PressPictures &owner);

private:
    explicit Watch(X11PressPictures &owner) : m_owner(owner) {}
    bool listen();
    void learnButtons();
    void prepare();
    void handle(const void *event);
    void take(quint32 serverTime);
    Result<QImage> picture(const Screen &screen) const;
    const Screen *screenOf(QPoint native) const;
    std::optional<ClickTarget> target(QPoint at, quint32 topLevel) const;

    X11PressPictures &m_owner;
    std::unique_ptr<X11Connection> m_connection;
    std::unique_ptr<X11Photographer> m_photographer;
    X11Screens m_windows;
    QList<Screen> m_screens;
    std::optional<X11RawEvents> m_rawEvents;
    quint8 m_leftButton = kLeftButton; // the device's number for it
    quint32 m_lastServerTime = 0;
    std::chrono::milliseconds m_time{0};
    X11EventThread m_thread; // last: works on the others
};

Result<std::unique_ptr<X11PressPictures::Watch>> X11PressPictures::Watch::open(X11PressPictures &owner)
{
    std::unique_ptr<Watch> watch(new Watch(owner));
    auto connection = X11Connection::open(X11Extension::RandR | X11Extension::Res);
    if (!connection)
        return std::unexpected(connection.error());
    watch->m_connection = std::move(*connection);
    auto photographer = X11Photographer::open();
    if (!photographer)
        return std::unexpected(photographer.error());
    watch->m_photographer = std::move(*photographer);
    if (!watch->listen())
        return tellsNoPresses();
    if (!watch->m_thread.open())
        return tellsNoPresses();
    Watch *raw = watch.get();
    watch->m_thread.start(
        *watch->m_connection, [raw](const void *event) { raw->handle(event); }, [raw] { raw->prepare(); });
    return watch;
}

bool X11PressPictures::Watch::listen()
{
    m_rawEvents = X11RawEvents::of(*m_connection);
    const bool isHeard =
        m_rawEvents && m_rawEvents->select(*m_connection, XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS);
    learnButtons();
    return isHeard;
}

// Raw events count a mouse's own buttons: those of a left-handed user stand the other way round.
void X11PressPictures::Watch::learnButtons()
{
    xcb_connection_t *xcb = m_connection->xcb();
    const XcbOwned<xcb_get_pointer_mapping_reply_t> mapping(
        xcb_get_pointer_mapping_reply(xcb, xcb_get_pointer_mapping(xcb), nullptr));
    if (!mapping)
        return;
    const quint8 *map = xcb_get_pointer_mapping_map(mapping.get());
    for (int i = 0; i < xcb_get_pointer_mapping_map_length(mapping.get()); ++i) {
        if (map[i] == kLeftButton) {
            m_leftButton = quint8(i + 1);
            return;
        }
    }
}

void X11PressPictures::Watch::prepare()
{
    m_screens = X11Desktop::screens(*m_connection);
    // What the first picture would have to wait for otherwise.
    m_photographer->prepare();
    if (!m_screens.isEmpty())
        static_cast<void>(picture(m_screens.first()));
}

void X11PressPictures::Watch::handle(const void *event)
{
    if ((static_cast<const xcb_generic_event_t *>(event)->response_type & 0x7f) == XCB_MAPPING_NOTIFY)
        learnButtons();
    if (m_rawEvents->typeOf(event) != XCB_INPUT_RAW_BUTTON_PRESS)
        return;
    const auto *press = static_cast<const xcb_input_raw_button_press_event_t *>(event);
    if (press->detail == m_leftButton)
        take(press->time);
}

const Screen *X11PressPictures::Watch::screenOf(QPoint native) const
{
    for (const Screen &screen : m_screens) {
        if (screen.native.contains(native))
            return &screen;
    }
    return m_screens.isEmpty() ? nullptr : &m_screens.first();
}

Result<QImage> X11PressPictures::Watch::picture(const Screen &screen) const
{
    return m_photographer->display(screen, Pointer::Hidden,
                                   m_owner.m_trails ? m_owner.m_trails->region() : QRegion());
}

void X11PressPictures::Watch::take(quint32 serverTime)
{
    const auto heard = std::chrono::steady_clock::now();
    m_time += std::chrono::milliseconds(m_lastServerTime == 0 ? 0 : serverTime - m_lastServerTime);
    m_lastServerTime = serverTime;
    xcb_connection_t *xcb = m_connection->xcb();
    const XcbOwned<xcb_query_pointer_reply_t> pointer(
        xcb_query_pointer_reply(xcb, xcb_query_pointer(xcb, m_connection->root()), nullptr));
    if (!pointer)
        return;
    const QPoint at(pointer->root_x, pointer->root_y);
    Press press;
    press.time = m_time;
    // The layout of the screens hardly ever changes between two presses.
    for (const bool isStale : {false, true}) {
        if (isStale)
            m_screens = X11Desktop::screens(*m_connection);
        const Screen *screen = screenOf(at);
        if (!screen)
            continue;
        press.screen = *screen;
        if (!m_owner.m_wantsPictures)
            break;
        press.image = picture(press.screen);
        if (press.image || press.image.error().kind != Error::Kind::NotFound)
            break;
    }
    press.delay =
        std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - heard);
    const auto under = target(at, pointer->child);
    if (!under)
        return;
    press.target = *under;
    press.point = m_screens.isEmpty() ? QPointF(at) : press.screen.fromNative(at);
    press.windows = m_windows.windows();
    // The picture may lie in memory that the next one is to be read into.
    if (press.image)
        press.image = press.image->copy();
    Q_EMIT m_owner.pressed(press);
}

// Nothing for a window of this program.
std::optional<ClickTarget> X11PressPictures::Watch::target(QPoint at, quint32 topLevel) const
{
    ClickTarget target;
    target.at = at;
    if (topLevel == XCB_NONE)
        return target;
    const quint32 client = clientIn(*m_connection, topLevel, kDeepestClient);
    const quint32 window = client != 0 ? client : topLevel;
    if (X11OwnClients::ask(*m_connection).owns(window))
        return std::nullopt;
    target.pid = X11Desktop::pid(*m_connection, window);
    target.window = wholeArea(*m_connection, window);
    target.visible = X11Desktop::visibleFrame(*m_connection, window, WindowPart::ClientArea);
    target.title = titleOf(*m_connection, window);
    target.isPopup = client == 0;
    return target;
}

X11PressPictures::X11PressPictures() = default;
X11PressPictures::~X11PressPictures() = default;

Result<void> X11PressPictures::start()
{
    if (m_watch)
        return {};
    if (!m_trails)
        m_trails = std::make_unique<OwnWindowTrails>();
    auto watch = Watch::open(*this);
    if (!watch)
        return std::unexpected(watch.error());
    m_watch = std::move(*watch);
    return {};
}

void X11PressPictures::stop()
{
    m_watch.reset();
}
