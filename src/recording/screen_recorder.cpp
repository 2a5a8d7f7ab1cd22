#include "recording/screen_recorder.h"

#include "base/async.h"
#include "base/log.h"
#include "library/library.h"
#include "platform/permissions.h"
#include "recording/texts.h"

#include <QFileInfo>
#include <cmath>

namespace {

constexpr int kTick = 500;
// Sizes in points times a fractional scale are whole pixels but for the noise of floating point.
constexpr double kPixelNoise = 1e-6;

int evenPixels(double points, double scale)
{
    return std::max(int(points * scale + kPixelNoise) & ~1, 2);
}

QString yesNo(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

} // namespace

struct ScreenRecorder::Film {
    std::unique_ptr<RecordingPlace> place;
    std::unique_ptr<FilmSession> session;
};

ScreenRecorder::ScreenRecorder(const Ports &ports, QObject *parent) : QObject(parent), m_ports(ports)
{
    m_ticks.setInterval(kTick);
    connect(&m_ticks, &QTimer::timeout, this, &ScreenRecorder::tick);
}

ScreenRecorder::~ScreenRecorder()
{
    if (m_wait)
        m_wait();
    if (!m_film || !m_film->session || m_state == State::Stopping)
        return;
    const FilmSession::End end = m_film->session->stop();
    if (const auto path = m_film->place->finish(m_ports.movies, end.length); !path)
        Log::error(QStringLiteral("Recording failed"), path.error());
}

QRect ScreenRecorder::pixelsOf(const Screen &screen, const QRectF &rect)
{
    const QPointF origin = rect.topLeft() * screen.scale;
    return {screen.native.topLeft() + QPoint(qRound(origin.x()), qRound(origin.y())),
            QSize(evenPixels(rect.width(), screen.scale), evenPixels(rect.height(), screen.scale))};
}

void ScreenRecorder::start(const Screen &screen, const QRectF &rect, const CaptureOptions &options,
                           Completion completion)
{
    if (m_state != State::Idle)
        return;
    m_finish = std::move(completion);
    m_stopsWhenStarted = false;
    m_brokeEarly.reset();
    setState(State::Starting);

    FilmSession::Wish wish;
    wish.screen.area = pixelsOf(screen, rect);
    wish.screen.pointer = options.cursor ? Pointer::Shown : Pointer::Hidden;
    wish.screen.keptOut = m_keptOut;
    if (options.systemAudio)
        wish.sounds.append(SoundSource::System);
    if (options.microphone && m_ports.permissions.status(Permission::Microphone) == PermissionStatus::Granted)
        wish.sounds.append(SoundSource::Microphone);
    // untranslated: the log
    m_startLine = QStringLiteral("Recording started (%1×%2, clicks: %3, keys: %4, webcam: %5)")
                      .arg(wish.screen.area.width())
                      .arg(wish.screen.area.height())
                      .arg(yesNo(options.showClicks), yesNo(options.showKeys), yesNo(options.webcam));

    const bool isOfLibrary = m_target.isEmpty();
    if (isOfLibrary)
        m_ports.library.ensureDirectory();
    const QString target = isOfLibrary
                               ? m_ports.library.newPath(QStringLiteral("Recording"), QStringLiteral("mov"))
                               : std::exchange(m_target, {});
    const auto existing = isOfLibrary ? RecordingPlace::Existing::Kept : RecordingPlace::Existing::Replaced;
    const FilmSession::Ports ports{m_ports.films, m_ports.sounds, m_ports.movies};
    const auto film = std::make_shared<Film>();
    const QPointer<ScreenRecorder> self(this);
    const auto broken = [self](const Error &error) {
        QMetaObject::invokeMethod(
            qApp,
            [self, error] {
                if (self)
                    self->broke(error);
            },
            Qt::QueuedConnection);
    };
    const QString notes = m_ports.notes;
    const auto work = runInBackground([=]() mutable -> std::optional<Error> {
        auto place = RecordingPlace::reserve(target, existing, notes);
        if (!place)
            return place.error();
        wish.path = (*place)->growing();
        auto session = FilmSession::start(ports, wish, broken);
        if (!session) {
            (*place)->drop();
            return session.error();
        }
        film->place = std::move(*place);
        film->session = std::move(*session);
        return std::nullopt;
    });
    m_film = film;
    m_wait = [running = QFuture(work)]() mutable { running.waitForFinished(); };
    whenDone(work, this, [this, film](const std::optional<Error> &error) { started(film, error); });
}

void ScreenRecorder::started(const std::shared_ptr<Film> &film, const std::optional<Error> &error)
{
    m_wait = nullptr;
    if (error)
        return complete(std::nullopt, error);
    m_refusedSounds = film->session->refused();
    for (const Error &refused : std::as_const(m_refusedSounds))
        Log::error(QStringLiteral("Recording without a sound"), refused);
    Log::info(m_startLine);
    setState(State::Recording);
    m_ticks.start();
    if (m_brokeEarly)
        finish(m_brokeEarly);
    else if (m_stopsWhenStarted)
        stop();
}

void ScreenRecorder::stop()
{
    switch (m_state) {
    case State::Idle:
    case State::Stopping:
        return;
    case State::Starting:
        m_stopsWhenStarted = true;
        return;
    case State::Recording:
    case State::Paused:
        return finish(std::nullopt);
    }
}

void ScreenRecorder::pause()
{
    if (m_state != State::Recording)
        return;
    m_film->session->pause();
    setState(State::Paused);
}

void ScreenRecorder::resume()
{
    if (m_state != State::Paused)
        return;
    m_film->session->resume();
    setState(State::Recording);
}

double ScreenRecorder::elapsed() const
{
    if (m_state == State::Idle || m_state == State::Starting || !m_film || !m_film->session)
        return 0;
    return double(m_film->session->length().count()) / 1e6;
}

void ScreenRecorder::broke(const Error &error)
{
    if (m_state == State::Recording || m_state == State::Paused)
        finish(error);
    else if (m_state == State::Starting)
        m_brokeEarly = error;
}

void ScreenRecorder::finish(std::optional<Error> error)
{
    m_ticks.stop();
    setState(State::Stopping);
    struct Outcome {
        std::optional<QString> path;
        std::optional<Error> error;
    };
    Movies &movies = m_ports.movies;
    const auto work = runInBackground([film = m_film, &movies, error = std::move(error)]() -> Outcome {
        const FilmSession::End end = film->session->stop();
        if (end.counts.leftOut > 0) {
            Log::info(QStringLiteral("Recording: the machine was too slow for %1 of %2 frames")
                          .arg(end.counts.leftOut)
                          .arg(end.counts.leftOut + end.counts.frames));
        }
        const auto path = film->place->finish(movies, end.length);
        std::optional<Error> reason = error ? error : end.error;
        if (!path)
            return {std::nullopt, reason ? reason : std::optional(path.error())};
        if (reason)
            reason->message = RecordingTexts::tr("%1 What was recorded until then is kept as “%2”.")
                                  .arg(reason->message, QFileInfo(*path).fileName());
        return {*path, reason};
    });
    m_wait = [running = QFuture(work)]() mutable { running.waitForFinished(); };
    whenDone(work, this, [this](const Outcome &outcome) { complete(outcome.path, outcome.error); });
}

void ScreenRecorder::complete(const std::optional<QString> &path, const std::optional<Error> &error)
{
    m_wait = nullptr;
    if (!m_finish)
        return;
    const Completion completion = std::exchange(m_finish, nullptr);
    m_film.reset();
    m_ticks.stop();
    setState(State::Idle);
    if (error)
        Log::error(QStringLiteral("Recording failed"), *error);
    else
        Log::info(QStringLiteral("Recording saved"));
    if (path)
        m_ports.library.postChanged();
    completion(path, error);
}

void ScreenRecorder::tick()
{
    m_film->session->fillSilence();
    if (m_onTick)
        m_onTick(elapsed());
}

void ScreenRecorder::setState(State state)
{
    if (std::exchange(m_state, state) != state)
        Q_EMIT stateChanged(state);
}
