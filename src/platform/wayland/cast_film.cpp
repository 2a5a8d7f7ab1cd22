#include "platform/wayland/cast_film.h"

#include "platform/film_region.h"

#include <QPainter>
#include <condition_variable>
#include <cstring>
#include <mutex>
#include <thread>

using std::chrono::steady_clock;

namespace {

constexpr auto kLongestStill = std::chrono::milliseconds(500);

// The rows of a part of the film that the picture shows otherwise, `offset` being the film's place in it.
// Some desktops send each frame whole, changed or not.
QRect differing(const QImage &film, const QRect &part, const QImage &picture, QPoint offset)
{
    const QRect common = part & picture.rect().translated(-offset);
    if (common.isEmpty())
        return {};
    const auto isSame = [&](int y) {
        const uchar *ours = film.constScanLine(y) + qsizetype(common.left()) * 4;
        const uchar *theirs =
            picture.constScanLine(y + offset.y()) + qsizetype(common.left() + offset.x()) * 4;
        return std::memcmp(ours, theirs, std::size_t(common.width()) * 4) == 0;
    };
    int top = common.top();
    while (top <= common.bottom() && isSame(top))
        ++top;
    int bottom = common.bottom();
    while (bottom > top && isSame(bottom))
        --bottom;
    return {QPoint(common.left(), top), QPoint(common.right(), bottom)};
}

// Takes the pictures in as they come, and hands on what has changed at the pace that was asked for.
class CastFilm : public ScreenFilm {
public:
    CastFilm(std::unique_ptr<CastOrigin> origin, const Screen &screen, const FilmRequest &request,
             FilmReceiver receiver)
        : m_request(request),
          m_receiver(std::move(receiver)),
          m_screen(screen),
          m_area(request.area.translated(-screen.native.topLeft())),
          m_origin(std::move(origin))
    {
        m_shown = QImage(m_area.size(), QImage::Format_RGB32);
        m_shown.fill(Qt::black); // where there is no screen
    }
    ~CastFilm() override
    {
        m_origin->setEnded(nullptr);
        m_cast.reset();
        {
            const std::lock_guard lock(m_mutex);
            m_isEnding = true;
        }
        m_news.notify_all();
        if (m_thread.joinable())
            m_thread.join();
    }

    Result<void> start(ScreenCasts &casts)
    {
        auto cast =
            casts.open(m_origin->source(), m_request.framesPerSecond,
                       {[this](const QImage &picture, const QRegion &changed) { take(picture, changed); },
                        [this](const Error &error) { end(error); }});
        if (!cast)
            return std::unexpected(cast.error());
        m_cast = std::move(*cast);
        m_origin->setEnded([this](const Error &error) { end(error); });
        m_thread = std::thread(&CastFilm::run, this);
        return {};
    }

private:
    void take(const QImage &picture, const QRegion &changed)
    {
        const bool isExact = picture.size() == m_screen.native.size();
        const QImage exact =
            isExact ? picture
                    : picture.scaled(m_screen.native.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        const QRect all(QPoint(), m_area.size());
        const std::lock_guard lock(m_mutex);
        QRegion told = QRegion(all);
        if (m_hasPicture) {
            told = {};
            for (const QRect &rect : (isExact ? changed.translated(-m_area.topLeft()) : QRegion(all)) & all)
                told += differing(m_shown, rect, exact, m_area.topLeft());
        }
        const QRegion part = filmRegion(told, m_area.size());
        if (part.isEmpty())
            return;
        QPainter painter(&m_shown);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        for (const QRect &rect : part)
            painter.drawImage(rect.topLeft(), exact, rect.translated(m_area.topLeft()));
        m_hasPicture = true;
        m_changed += part;
        m_time = steady_clock::now();
        m_news.notify_all();
    }

    void end(const Error &error)
    {
        const std::lock_guard lock(m_mutex);
        m_error = error;
        m_news.notify_all();
    }

    void run()
    {
        const auto interval = std::chrono::nanoseconds(std::chrono::seconds(1)) / m_request.framesPerSecond;
        steady_clock::time_point allowed = steady_clock::now(); // for the next frame
        steady_clock::time_point last = allowed;
        std::unique_lock lock(m_mutex);
        while (!m_isEnding) {
            const auto now = steady_clock::now();
            if (!m_changed.isEmpty() && now >= allowed) {
                last = now;
                allowed = now - allowed < interval ? allowed + interval : now + interval;
                handOn(lock);
            } else if (m_error && m_changed.isEmpty()) {
                lock.unlock();
                return m_receiver.ended(*m_error);
            } else if (m_changed.isEmpty() && now >= last + kLongestStill) {
                last = now;
                if (!m_hasPicture)
                    continue;
                lock.unlock();
                m_receiver.frame({{}, {}, {}, now});
                lock.lock();
            } else {
                m_news.wait_until(lock, m_changed.isEmpty() ? last + kLongestStill : allowed);
            }
        }
    }

    void handOn(std::unique_lock<std::mutex> &lock)
    {
        const QRegion changed = filmRegion(std::exchange(m_changed, {}), m_area.size());
        const QRect around = changed.boundingRect();
        const FilmFrame frame{m_shown.copy(around), around.topLeft(), changed, m_time};
        lock.unlock();
        m_receiver.frame(frame);
        lock.lock();
    }

    FilmRequest m_request;
    FilmReceiver m_receiver;
    Screen m_screen;
    QRect m_area; // in its pixels
    std::mutex m_mutex;
    std::condition_variable m_news;
    QImage m_shown; // what the film shows of it
    bool m_hasPicture = false;
    QRegion m_changed; // not yet handed on
    steady_clock::time_point m_time;
    std::optional<Error> m_error;
    bool m_isEnding = false;
    std::unique_ptr<CastOrigin> m_origin;
    std::unique_ptr<ScreenCast> m_cast;
    std::thread m_thread;
};

} // namespace

Result<std::unique_ptr<ScreenFilm>> startCastFilm(ScreenCasts &casts, std::unique_ptr<CastOrigin> origin,
                                                  const Screen &screen, const FilmRequest &request,
                                                  FilmReceiver receiver)
{
    auto film = std::make_unique<CastFilm>(std::move(origin), screen, request, std::move(receiver));
    if (const auto started = film->start(casts); !started)
        return std::unexpected(started.error());
    return film;
}
