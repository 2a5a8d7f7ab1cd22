#include "platform/x11/x11_screen_films.h"

#include "platform/film_region.h"
#include "platform/texts.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_film_eye.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <thread>
#include <unistd.h>
#include <xcb/damage.h>
#include <xcb/xcb.h>
#include <xcb/xfixes.h>

using std::chrono::steady_clock;

namespace {

constexpr auto kLongestStill = std::chrono::milliseconds(500);
// How long the screen may refuse to be read before the film ends.
constexpr auto kLongestBlindness = std::chrono::seconds(2);
// More rectangles than this cost more to handle one by one than as a whole.
constexpr int kMostRectangles = 24;

class X11ScreenFilm : public ScreenFilm {
public:
    X11ScreenFilm(const FilmRequest &request, FilmReceiver receiver)
        : m_request(request), m_receiver(std::move(receiver))
    {}
    ~X11ScreenFilm() override
    {
        if (m_thread.joinable()) {
            eventfd_write(m_wake, 1);
            m_thread.join();
        }
        if (m_wake >= 0)
            close(m_wake);
    }

    Result<void> open()
    {
        auto watching = X11Connection::open(X11Extension::XFixes);
        if (!watching)
            return std::unexpected(watching.error());
        m_watching = std::move(*watching);
        auto reading =
            X11Connection::open(X11Extension::Shm | X11Extension::XFixes | X11Extension::Composite |
                                X11Extension::Render | X11Extension::Res);
        if (!reading)
            return std::unexpected(reading.error());
        m_reading = std::move(*reading);
        m_wake = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
        if (m_wake < 0)
            return fail(PlatformTexts::tr("There are too many open files."));
        m_eye = std::make_unique<X11FilmEye>(*m_reading, m_request);
        m_changed = QRect(QPoint(), m_request.area.size());
        // One look before anything is promised: it tells what this display can't do.
        if (const auto seen = m_eye->look(QRect(0, 0, 2, 2)); !seen)
            return std::unexpected(seen.error());
        watch();
        return {};
    }

    void start() { m_thread = std::thread(&X11ScreenFilm::run, this); }

private:
    enum class Seen { Nothing, Change, Error };

    void watch()
    {
        xcb_connection_t *xcb = m_watching->xcb();
        const quint32 root = m_watching->root();
        const quint32 events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        xcb_change_window_attributes(xcb, root, XCB_CW_EVENT_MASK, &events);
        const xcb_query_extension_reply_t *damage = xcb_get_extension_data(xcb, &xcb_damage_id);
        if (damage && damage->present && m_watching->has(X11Extension::XFixes)) {
            xcb_discard_reply(xcb, xcb_damage_query_version(xcb, 1, 1).sequence);
            m_damageEvent = damage->first_event;
            m_damage = xcb_generate_id(xcb);
            m_parts = xcb_generate_id(xcb);
            xcb_damage_create(xcb, m_damage, root, XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY);
            xcb_xfixes_create_region(xcb, m_parts, 0, nullptr);
        }
        xcb_flush(xcb);
    }

    void run()
    {
        const auto interval = std::chrono::nanoseconds(std::chrono::seconds(1)) / m_request.framesPerSecond;
        steady_clock::time_point allowed = steady_clock::now(); // for the next frame
        steady_clock::time_point last = allowed;
        while (true) {
            readEvents();
            if (m_watching->isBroken() || m_reading->isBroken())
                return m_receiver.ended(
                    Error{Error::Kind::Failed, PlatformTexts::tr("The display has gone away."), {}});
            const auto now = steady_clock::now();
            const bool mustAsk = m_isDamaged || m_damage == XCB_NONE || !m_changed.isEmpty() ||
                                 m_request.pointer == Pointer::Shown;
            if (mustAsk && now >= allowed) {
                allowed = now - allowed < interval ? allowed + interval : now + interval;
                switch (takeFrame()) {
                case Seen::Nothing:
                    break;
                case Seen::Change:
                    last = now;
                    break;
                case Seen::Error:
                    if (now - last > kLongestBlindness)
                        return m_receiver.ended(m_error);
                    break;
                }
                continue; // the answers brought events along, which wake nobody
            }
            if (now - last >= kLongestStill) {
                m_receiver.frame({{}, {}, {}, now});
                last = now;
            }
            if (!wait(mustAsk ? std::min(allowed, last + kLongestStill) : last + kLongestStill))
                return;
        }
    }

    // Until something happens or that moment; false when it shall end.
    bool wait(steady_clock::time_point until)
    {
        const auto left =
            std::max(std::chrono::nanoseconds(0), std::chrono::nanoseconds(until - steady_clock::now()));
        const timespec timeout{left.count() / 1'000'000'000, left.count() % 1'000'000'000};
        pollfd waiting[] = {{xcb_get_file_descriptor(m_watching->xcb()), POLLIN, 0}, {m_wake, POLLIN, 0}};
        // Once damage is known, more of it is no news before the next frame.
        const bool isDeaf = m_isDamaged;
        const int ready = ppoll(isDeaf ? waiting + 1 : waiting, isDeaf ? 1 : 2, &timeout, nullptr);
        return !(ready > 0 && waiting[1].revents != 0);
    }

    void readEvents()
    {
        while (const XcbOwned<xcb_generic_event_t> event{xcb_poll_for_event(m_watching->xcb())}) {
            const quint8 type = event->response_type & 0x7f;
            if (m_damage != XCB_NONE && type == m_damageEvent + XCB_DAMAGE_NOTIFY) {
                m_isDamaged = true;
            } else if (type == XCB_CONFIGURE_NOTIFY) {
                const auto *configured = reinterpret_cast<const xcb_configure_notify_event_t *>(event.get());
                if (configured->window == m_watching->root()) {
                    m_eye->setRoot(QSize(configured->width, configured->height));
                    m_changed = QRect(QPoint(), m_request.area.size());
                }
            }
        }
    }

    // Moves the damage over into m_changed.
    void takeDamage()
    {
        xcb_connection_t *xcb = m_watching->xcb();
        if (m_damage == XCB_NONE) {
            m_changed = QRect(QPoint(), m_request.area.size());
            return;
        }
        if (!m_isDamaged)
            return;
        m_isDamaged = false;
        xcb_damage_subtract(xcb, m_damage, XCB_NONE, m_parts);
        const XcbOwned<xcb_xfixes_fetch_region_reply_t> reply(
            xcb_xfixes_fetch_region_reply(xcb, xcb_xfixes_fetch_region(xcb, m_parts), nullptr));
        if (!reply)
            return;
        const QRect extents(reply->extents.x, reply->extents.y, reply->extents.width, reply->extents.height);
        const int count = xcb_xfixes_fetch_region_rectangles_length(reply.get());
        const xcb_rectangle_t *rects = xcb_xfixes_fetch_region_rectangles(reply.get());
        const QPoint origin = m_request.area.topLeft();
        if (count > 4 * kMostRectangles) {
            m_changed += extents.translated(-origin);
            return;
        }
        for (int i = 0; i < count; ++i)
            m_changed += QRect(rects[i].x, rects[i].y, rects[i].width, rects[i].height).translated(-origin);
    }

    Seen takeFrame()
    {
        const auto time = steady_clock::now();
        takeDamage();
        const QRegion changed = filmRegion(m_changed + m_eye->movePointer(), m_request.area.size());
        m_changed = {};
        if (changed.isEmpty())
            return Seen::Nothing;
        const QRect around = changed.boundingRect();
        const Result<QImage> picture = m_eye->look(around);
        if (!picture) {
            // The screen may just have changed its size: the event that tells it is on its way.
            m_changed = QRect(QPoint(), m_request.area.size());
            m_error = picture.error();
            return Seen::Error;
        }
        m_receiver.frame({*picture, around.topLeft(), changed, time});
        return Seen::Change;
    }

    FilmRequest m_request;
    FilmReceiver m_receiver;
    std::unique_ptr<X11Connection> m_watching; // for events
    std::unique_ptr<X11Connection> m_reading;  // for pictures
    std::unique_ptr<X11FilmEye> m_eye;
    quint8 m_damageEvent = 0;
    quint32 m_damage = 0; // 0 where the server doesn't tell
    quint32 m_parts = 0;  // the server's region that takes the damage over
    bool m_isDamaged = false;
    QRegion m_changed; // not yet looked at
    Error m_error;     // why the last look failed
    int m_wake = -1;   // ends the thread
    std::thread m_thread;
};

} // namespace

Result<std::unique_ptr<ScreenFilm>> X11ScreenFilms::start(const FilmRequest &request, FilmReceiver receiver)
{
    auto film = std::make_unique<X11ScreenFilm>(request, std::move(receiver));
    if (const auto opened = film->open(); !opened)
        return std::unexpected(opened.error());
    film->start();
    return film;
}
