#include "platform/wayland/screencopy_film.h"

#include "platform/film_region.h"
#include "platform/texts.h"
#include "platform/wayland/film_screen.h"
#include "platform/wayland/screencopy.h"
#include "platform/wayland/wayland_connection.h"
#include "platform/wayland/wayland_outputs.h"

#include <algorithm>
#include <poll.h>
#include <sys/eventfd.h>
#include <thread>
#include <unistd.h>

using std::chrono::steady_clock;

namespace {

constexpr auto kLongestStill = std::chrono::milliseconds(500);
// How long the screen may refuse to be copied before the film ends.
constexpr auto kLongestBlindness = std::chrono::seconds(2);

class ScreencopyFilm : public ScreenFilm {
public:
    ScreencopyFilm(std::unique_ptr<WaylandConnection> connection, const FilmRequest &request,
                   FilmReceiver receiver)
        : m_request(request), m_receiver(std::move(receiver)), m_connection(std::move(connection))
    {}
    ~ScreencopyFilm() override
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
        m_wake = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
        if (m_wake < 0)
            return fail(PlatformTexts::tr("There are too many open files."));
        m_outputs = std::make_unique<WaylandOutputs>(*m_connection);
        m_copies = std::make_unique<Screencopy>(*m_connection);
        m_screen = filmedScreen(m_outputs->screens(), m_request.area);
        if (m_screen.id == 0)
            return fail(Error::Kind::NotFound, PlatformTexts::tr("That display is no longer available."));
        m_area = m_request.area.translated(-m_screen.native.topLeft());
        // One look before anything is promised: it tells what this session can't do.
        const auto seen = m_copies->take(*m_outputs->find(m_screen.id), m_request.pointer);
        return seen ? Result<void>() : std::unexpected(seen.error());
    }

    void start() { m_thread = std::thread(&ScreencopyFilm::run, this); }

private:
    enum class Seen { Nothing, Change, Error };

    void run()
    {
        const auto interval = std::chrono::nanoseconds(std::chrono::seconds(1)) / m_request.framesPerSecond;
        steady_clock::time_point allowed = steady_clock::now(); // for the next frame
        steady_clock::time_point last = allowed;
        while (!isEnded()) {
            const auto now = steady_clock::now();
            if (now < allowed) {
                if (!pause(allowed))
                    return;
                continue;
            }
            switch (takeFrame(last + kLongestStill)) {
            case Seen::Nothing:
                if (steady_clock::now() - last >= kLongestStill) {
                    last = steady_clock::now();
                    m_receiver.frame({{}, {}, {}, last});
                }
                break;
            case Seen::Change:
                last = steady_clock::now();
                allowed = now - allowed < interval ? allowed + interval : now + interval;
                break;
            case Seen::Error:
                if (m_connection->isBroken() || now - last > kLongestBlindness)
                    return m_receiver.ended(m_error);
                allowed = now + interval;
                break;
            }
        }
    }

    bool isEnded() const
    {
        pollfd waiting{m_wake, POLLIN, 0};
        return poll(&waiting, 1, 0) > 0;
    }

    // False when it shall end.
    bool pause(steady_clock::time_point until) const
    {
        const auto left =
            std::max(std::chrono::nanoseconds(0), std::chrono::nanoseconds(until - steady_clock::now()));
        const timespec timeout{left.count() / 1'000'000'000, left.count() % 1'000'000'000};
        pollfd waiting{m_wake, POLLIN, 0};
        return ppoll(&waiting, 1, &timeout, nullptr) == 0;
    }

    Seen takeFrame(steady_clock::time_point until)
    {
        const WaylandOutput *output = m_outputs->find(m_screen.id);
        if (!output || output->pixels() != m_screen.native.size()) {
            m_connection->roundtrip();
            m_error = {Error::Kind::NotFound, PlatformTexts::tr("That display is no longer available."), {}};
            return Seen::Error;
        }
        const auto patience =
            std::chrono::duration_cast<std::chrono::milliseconds>(until - steady_clock::now());
        const auto copy = m_isBegun ? m_copies->takeChange(*output, m_request.pointer, m_wake, patience)
                                    : m_copies->take(*output, m_request.pointer);
        if (!copy) {
            m_error = copy.error();
            return copy.error().isCancelled() ? Seen::Nothing : Seen::Error;
        }
        const auto time = steady_clock::now();
        const QRegion changed = filmRegion(m_isBegun ? copy->damage.translated(-m_area.topLeft())
                                                     : QRegion(QRect(QPoint(), m_area.size())),
                                           m_area.size());
        m_isBegun = true;
        if (changed.isEmpty())
            return Seen::Nothing;
        const QRect around = changed.boundingRect();
        // The copy is black where there is no screen.
        QImage picture = copy->image.copy(around.translated(m_area.topLeft()));
        if (picture.format() != QImage::Format_RGB32)
            picture = std::move(picture).convertToFormat(QImage::Format_RGB32);
        m_receiver.frame({picture, around.topLeft(), changed, time});
        return Seen::Change;
    }

    FilmRequest m_request;
    FilmReceiver m_receiver;
    std::unique_ptr<WaylandConnection> m_connection;
    std::unique_ptr<WaylandOutputs> m_outputs;
    std::unique_ptr<Screencopy> m_copies;
    Screen m_screen; // that shows it
    QRect m_area;    // in its pixels
    bool m_isBegun = false;
    Error m_error;   // why the last look failed
    int m_wake = -1; // ends the thread
    std::thread m_thread;
};

} // namespace

Result<std::unique_ptr<ScreenFilm>> startScreencopyFilm(std::unique_ptr<WaylandConnection> connection,
                                                        const FilmRequest &request, FilmReceiver receiver)
{
    auto film = std::make_unique<ScreencopyFilm>(std::move(connection), request, std::move(receiver));
    if (const auto opened = film->open(); !opened)
        return std::unexpected(opened.error());
    film->start();
    return film;
}
