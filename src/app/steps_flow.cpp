#include "app/steps_flow.h"

#include "app/activity.h"
#include "app/singleton_windows.h"
#include "app/texts.h"
#include "base/log.h"
#include "base/notice.h"
#include "base/pending_work.h"
#include "document/editor_document.h"
#include "editor/editor_window_controller.h"
#include "platform/pointer_control.h"
#include "platform/screens.h"
#include "platform/sounds.h"
#include "settings/app_settings.h"
#include "settings/capture_settings.h"
#include "steps/ui/guide_offer.h"
#include "steps/ui/steps_hud.h"
#include "steps/ui/steps_review_window.h"
#include "ui/hud_panel.h"


namespace {

const QString kWarning = QStringLiteral("exclamationmark.triangle.fill");

QString titleFor(const QList<GuideStep> &steps)
{
    for (const GuideStep &step : steps) {
        if (step.app)
            return AppTexts::tr("How to … in %1").arg(*step.app);
    }
    return AppTexts::tr("How-To Guide");
}

} // namespace

// A guide, its window, and the editors of its steps.
struct StepsFlow::Review {
    std::shared_ptr<StepsSession> session; // null where there is no room on disk
    std::unique_ptr<StepsGuideModel> model;
    std::unique_ptr<StepsReviewWindow> window;
    std::optional<StepsReviewWindow::End> end; // once the window has closed
    QList<QPointer<EditorWindowController>> editors;

    ~Review()
    {
        // What is edited on is no step of a guide any more.
        for (const auto &editor : editors) {
            if (editor)
                editor->session().saveHandler = nullptr;
        }
    }
};

StepsFlow::StepsFlow(const Parts &parts, QObject *parent)
    : QObject(parent),
      m_parts(parts),
      m_exports({parts.library, parts.workspace, parts.notices, parts.pending})
{
    m_exports.showError = [this](const Error &error) {
        if (m_actions.showError)
            m_actions.showError(error);
    };
    // The countdown of a capture takes the room of the title.
    connect(&parts.activity, &Activity::changed, this, [this] {
        if (m_parts.activity.steps() == Activity::Steps::Running)
            Q_EMIT titleChanged(QLatin1Char(' ') + AppTexts::tr("Steps"));
    });
}

StepsFlow::~StepsFlow() = default;

QList<StepsReviewWindow *> StepsFlow::windows() const
{
    QList<StepsReviewWindow *> windows;
    for (const auto &review : m_reviews) {
        if (!review->end)
            windows.append(review->window.get());
    }
    return windows;
}

void StepsFlow::toggle(int delay)
{
    if (m_recorder)
        return m_recorder->done();
    if (m_countdown)
        return giveUpStart();
    if (m_parts.activity.beginSteps())
        start(delay);
}

Task<> StepsFlow::start(int delay)
{
    m_countdown = std::make_unique<Countdown>();
    connect(m_countdown.get(), &Countdown::ticked, this, &StepsFlow::countedDown);
    // False when it was given up, or the program ends.
    if (!co_await m_countdown->run(delay))
        co_return;
    m_countdown.release()->deleteLater();
    m_recorder = std::make_unique<StepsRecorder>(
        StepsRecorder::Parts{m_parts.presses, m_parts.elements, m_parts.screens, m_parts.pictures,
                             m_parts.pointer, m_parts.permissions, m_parts.workspace, m_parts.sounds,
                             m_parts.recognizer, m_parts.notices, m_parts.folder});
    const auto started = m_recorder->start([this](const QList<GuideStep> &steps) { finished(steps); });
    if (!started) {
        endSession();
        Q_EMIT failed(started.error());
        co_return;
    }
    const QList<Screen> screens = m_parts.screens.screens();
    if (const Screen *screen = screenAt(screens, m_parts.pointer.position())) {
        m_hud = makeStepsHUD(*m_recorder, *screen);
        m_hud->show();
    }
    m_parts.activity.setStepsRunning();
}

void StepsFlow::giveUpStart()
{
    m_countdown.reset();
    Q_EMIT countedDown(0);
    m_parts.activity.endSteps();
}

void StepsFlow::endSession()
{
    // It may be the panel's own button that is still at work, or the recorder itself.
    if (m_hud) {
        m_hud->hide();
        m_hud.release()->deleteLater();
    }
    m_recorder.release()->deleteLater();
    m_parts.activity.endSteps();
    Q_EMIT titleChanged({});
}

void StepsFlow::finished(const QList<GuideStep> &steps)
{
    const std::shared_ptr<StepsSession> session = m_recorder->session();
    endSession();
    if (steps.isEmpty())
        return;
    m_parts.sounds.shutter();
    review(std::make_unique<StepsGuideModel>(steps, titleFor(steps), m_parts.settings, session, modelParts()),
           session);
}

StepsGuideModel::Parts StepsFlow::modelParts()
{
    return {m_parts.recognizer, m_parts.claude, m_parts.prefs, m_parts.notices, m_exports};
}

void StepsFlow::review(std::unique_ptr<StepsGuideModel> model, std::shared_ptr<StepsSession> session)
{
    Review &review = *m_reviews.emplace_back(std::make_unique<Review>());
    review.session = std::move(session);
    review.model = std::move(model);
    review.model->openInEditor = m_actions.openFile;
    review.model->showLibrary = m_actions.showLibrary;
    review.model->openStepEditor = [this, &review](const StepsGuideModel::StepEdit &edit) {
        editStep(review, edit);
    };
    review.window = std::make_unique<StepsReviewWindow>(*review.model);
    StepsReviewWindow &window = *review.window;
    placeInTheMiddle(&window);
    connect(&window, &StepsReviewWindow::closed, this, [this, &review](StepsReviewWindow::End end) {
        review.end = end;
        // When the window has done with its own closing.
        QMetaObject::invokeMethod(this, [this, kept = &review] { settle(kept); }, Qt::QueuedConnection);
    });
    // An export outlives the window; only its end says whether the guide is out.
    connect(review.model.get(), &StepsGuideModel::statusChanged, this, [this, &review] {
        if (review.end)
            QMetaObject::invokeMethod(this, [this, kept = &review] { settle(kept); }, Qt::QueuedConnection);
    });
    bringToFront(&window);
}

// Lets go of a guide whose window has closed, unless an export is under way.
void StepsFlow::settle(Review *review)
{
    const auto place =
        std::ranges::find_if(m_reviews, [&](const auto &each) { return each.get() == review; });
    if (place == m_reviews.end() || review->model->canCancel())
        return;
    using End = StepsReviewWindow::End;
    const bool isGivenUp = *review->end == End::Discard ||
                           (*review->end == End::DiscardOnceExported && review->model->wasExported());
    if (!isGivenUp && !review->session && !m_isLeaving) {
        review->end.reset();
        review->window->reopen();
        return bringToFront(review->window.get());
    }
    if (review->session && isGivenUp)
        review->session->discard();
    else if (review->session && *review->end == End::DiscardOnceExported)
        m_parts.notices.post(
            AppTexts::tr("The guide wasn't exported; it is offered when Lumenpost starts again"), kWarning);
    m_reviews.erase(place);
}

void StepsFlow::editStep(Review &review, const StepsGuideModel::StepEdit &edit)
{
    if (!m_actions.openEditor)
        return;
    auto document = std::make_unique<EditorDocument>(edit.base);
    document->setAnnotations(edit.annotations);
    document->setEffects(edit.effects);
    document->setDisplayName(edit.displayName);
    document->setTool(ToolKind::Arrow);
    document->setSaved(document->contents());
    EditorWindowController *editor = m_actions.openEditor(std::move(document));
    if (!editor)
        return;
    editor->session().saveHandler = [save = edit.save](EditorDocument &changed) {
        save(changed.base(), changed.annotations(), changed.effects());
    };
    review.editors.append(editor);
}

void StepsFlow::offerUnfinished()
{
    whenDone(runInBackground([folder = m_parts.folder] { return StepsSession::unfinished(folder); }), this,
             [this](const QList<StepsSession::Unfinished> &guides) {
                 if (guides.isEmpty())
                     return;
                 auto *offer = new GuideOffer(guides);
                 connect(offer, &GuideOffer::opened, this, [this, guides] {
                     for (const StepsSession::Unfinished &guide : guides)
                         open(guide);
                 });
                 connect(offer, &GuideOffer::discarded, this, [this, guides] { discard(guides); });
                 offer->show();
             });
}

void StepsFlow::discard(const QList<StepsSession::Unfinished> &guides)
{
    const auto work = runInBackground([guides] {
        Result<void> discarded;
        for (const StepsSession::Unfinished &guide : guides) {
            if (const auto session = StepsSession::resume(guide.folder))
                (*session)->discard();
            else
                discarded = std::unexpected(session.error());
        }
        return discarded;
    });
    m_parts.pending.keep(QStringLiteral("discarding guides"), work);
    whenDone(work, this, [this](const Result<void> &discarded) {
        if (!discarded)
            m_parts.notices.post(discarded.error().message, kWarning);
    });
}

void StepsFlow::open(const StepsSession::Unfinished &unfinished)
{
    using Opened = Result<std::pair<std::shared_ptr<StepsSession>, Guide>>;
    whenDone(runInBackground([folder = unfinished.folder]() -> Opened {
                 const auto session = StepsSession::resume(folder);
                 if (!session)
                     return std::unexpected(session.error());
                 const auto read = (*session)->read();
                 if (!read)
                     return std::unexpected(read.error());
                 return std::pair(*session, *read);
             }),
             this, [this](const Opened &opened) {
                 if (!opened)
                     return m_parts.notices.post(opened.error().message, kWarning);
                 auto [session, guide] = *opened;
                 // One that nobody has reviewed yet has neither title nor switches of its own.
                 if (guide.title.isEmpty()) {
                     using Switch = CaptureSettings::Switch;
                     guide.title = titleFor(guide.steps);
                     guide.markClicks = m_parts.settings.isOn(Switch::StepsMarkClicks);
                     guide.redact = guide.redact || m_parts.settings.isOn(Switch::StepsAutoRedact);
                 }
                 review(std::make_unique<StepsGuideModel>(guide, session, modelParts()), session);
             });
}

void StepsFlow::leave()
{
    if (m_countdown)
        giveUpStart();
    m_isLeaving = true;
    for (const auto &review : m_reviews) {
        const bool isUnfinished = !review->model->steps().isEmpty() && !review->model->wasExported();
        if (isUnfinished && !review->model->canBeKept())
            Log::error(QStringLiteral("Steps: a guide is lost: there was no room for it on disk"));
        else if (isUnfinished)
            m_parts.pending.keep(QStringLiteral("keeping a guide"), review->model->keep());
        if (!review->end)
            review->window->keepAndClose();
    }
}
