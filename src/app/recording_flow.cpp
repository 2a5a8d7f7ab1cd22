#include "app/recording_flow.h"

#include "app/texts.h"
#include "base/notice.h"
#include "base/pending_work.h"
#include "library/library.h"
#include "recording/recording_extras.h"
#include "recording/recording_recovery.h"
#include "recording/ui/live_extras.h"
#include "recording/ui/recording_chrome.h"
#include "settings/app_settings.h"

struct RecordingFlow::Film {
    Activity::Run run = 0;
    Delivery::Order order;
    std::shared_ptr<QPromise<void>> hold; // quitting waits while it lives
    std::unique_ptr<RecordingChrome> chrome;
    std::unique_ptr<LiveExtras> extras;
};

RecordingFlow::RecordingFlow(const Parts &parts, QObject *parent)
    : QObject(parent),
      m_parts(parts),
      m_recorder({parts.films, parts.sounds, parts.movies, parts.permissions, parts.library, parts.notes})
{
    connect(&m_recorder, &ScreenRecorder::stateChanged, this, &RecordingFlow::follow);
    m_recorder.setOnTick([this](double elapsed) { ticked(elapsed); });
}

RecordingFlow::~RecordingFlow() = default;

RecordingChrome *RecordingFlow::chrome() const
{
    return m_film ? m_film->chrome.get() : nullptr;
}

void RecordingFlow::start(Activity::Run run, const Screen &screen, const QRectF &rect,
                          const Delivery::Order &order)
{
    const auto shortcut = m_parts.prefs.hotkey(HotKeyAction::Record);
    m_film = std::make_unique<Film>(Film{run, order, hold(QStringLiteral("finishing a recording")),
                                         std::make_unique<RecordingChrome>(screen, rect, shortcut.display()),
                                         nullptr});
    RecordingHUDView &view = m_film->chrome->view();
    connect(&view, &RecordingHUDView::pauseClicked, &m_recorder, &ScreenRecorder::pause);
    connect(&view, &RecordingHUDView::resumeClicked, &m_recorder, &ScreenRecorder::resume);
    connect(&view, &RecordingHUDView::stopClicked, this, &RecordingFlow::stop);
    m_film->chrome->show();
    addExtras(rect.translated(screen.frame().topLeft()), order.options);
    m_recorder.setKeptOut(m_film->chrome->windows());
    m_recorder.start(screen, rect, order.options,
                     [this](const std::optional<QString> &path, const std::optional<Error> &error) {
                         finished(path, error);
                     });
}

void RecordingFlow::addExtras(const QRectF &region, const CaptureOptions &options)
{
    m_film->extras = std::make_unique<LiveExtras>(
        LiveExtras::Ports{m_parts.inputs, m_parts.cameras, m_parts.workspace, m_parts.notices}, region,
        LiveExtras::Wish{options.showClicks, options.showKeys, options.webcam});
    RecordingHUDView &view = m_film->chrome->view();
    connect(&view, &RecordingHUDView::drawToggled, this, &RecordingFlow::setDrawing);
    connect(&view, &RecordingHUDView::clearClicked, m_film->extras.get(), &LiveExtras::clearDrawing);
    connect(m_film->extras.get(), &LiveExtras::drawingEnded, &view, [&view] { view.setDrawing(false); });
}

void RecordingFlow::setDrawing(bool isDrawing)
{
    m_film->chrome->view().setDrawing(isDrawing);
    m_film->extras->setDrawing(isDrawing);
}

void RecordingFlow::stop()
{
    if (m_film) {
        m_film->chrome->hide();
        m_film->extras.reset();
    }
    m_recorder.stop();
}

void RecordingFlow::follow(ScreenRecorder::State state)
{
    using State = ScreenRecorder::State;
    using Look = RecordingHUDView::Look;
    if (!m_film)
        return;
    switch (state) {
    case State::Idle:
    case State::Starting:
        break;
    case State::Recording:
        m_film->chrome->view().setLook(Look::Running);
        ticked(m_recorder.elapsed());
        break;
    case State::Paused:
        m_film->chrome->view().setLook(Look::Paused);
        ticked(m_recorder.elapsed());
        break;
    case State::Stopping:
        m_film->chrome->hide();
        m_film->extras.reset();
        break;
    }
}

void RecordingFlow::ticked(double elapsed)
{
    if (!m_film)
        return;
    m_film->chrome->view().setElapsed(elapsed);
    Q_EMIT titleChanged(QStringLiteral(" ● ") + elapsedText(elapsed));
}

void RecordingFlow::finished(const std::optional<QString> &path, const std::optional<Error> &error)
{
    // It may be the panel's own button that is still at work.
    const std::unique_ptr<Film> film = std::move(m_film);
    film->chrome->hide();
    film->chrome.release()->deleteLater();
    m_parts.activity.end(film->run);
    Q_EMIT titleChanged({});
    if (error) {
        Q_EMIT failed(*error);
    } else if (path) {
        // Told now, since a notice that is up while it records would be in the film.
        QStringList refused;
        for (const Error &reason : m_recorder.refusedSounds()) {
            if (!refused.contains(reason.message))
                refused.append(reason.message);
        }
        m_parts.delivery.deliverFilm(*path, film->order,
                                     refused.isEmpty()
                                         ? QString()
                                         : AppTexts::tr("There is a sound missing in the film: %1")
                                               .arg(refused.join(QLatin1Char(' '))));
    }
}

void RecordingFlow::recover()
{
    Movies &movies = m_parts.movies;
    const auto work =
        runInBackground([notes = m_parts.notes, &movies] { return RecordingRecovery::run(notes, movies); });
    m_parts.pending.keep(QStringLiteral("finishing recordings that broke off"), work);
    whenDone(work, this, [this](const RecordingRecovery::Outcome &outcome) {
        if (outcome.films.isEmpty())
            return;
        m_parts.library.postChanged();
        m_parts.notices.post(RecordingRecovery::notice(outcome), QStringLiteral("record.circle"));
    });
}

std::shared_ptr<QPromise<void>> RecordingFlow::hold(const QString &what)
{
    auto promise = std::make_shared<QPromise<void>>();
    promise->start();
    m_parts.pending.keep(what, promise->future());
    return promise;
}
