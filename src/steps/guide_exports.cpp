#include "steps/guide_exports.h"

#include "base/async.h"
#include "base/log.h"
#include "base/notice.h"
#include "base/pending_work.h"
#include "library/library.h"
#include "platform/workspace.h"
#include "steps/steps_session.h"
#include "steps/texts.h"

namespace {

const auto kWarning = QStringLiteral("exclamationmark.triangle.fill");

} // namespace

// The captures of one guide, one after the other.
struct GuideExports::Saving {
    GuideExportJob *job = nullptr;
    Source source;
    int next = 0;
    QStringList paths;
    std::optional<Error> failure;
    int total() const { return int(source.guide.steps.size()); }
};

GuideExports::GuideExports(Parts parts, QObject *parent) : QObject(parent), m_parts(parts) {}

GuideExportJob *GuideExports::begin(const std::shared_ptr<StepsSession> &session)
{
    auto *job = new GuideExportJob(this);
    job->m_session = session;
    return job;
}

// Called on the thread that works; what it tells arrives on the main thread.
Progress GuideExports::progressOf(GuideExportJob *job) const
{
    return [isCancelled = job->m_isCancelled, guard = QPointer(job)](int done, int total) {
        QMetaObject::invokeMethod(
            qApp,
            [guard, done, total] {
                if (guard)
                    Q_EMIT guard->progressed(done, total);
            },
            Qt::QueuedConnection);
        return !*isCancelled;
    };
}

void GuideExports::end(GuideExportJob *job, GuideExportJob::End how)
{
    Q_EMIT job->ended(how);
    job->deleteLater();
}

GuideExportJob *GuideExports::webFolder(const Source &source, std::shared_ptr<StepsSession> session,
                                        const QString &directory)
{
    GuideExportJob *job = begin(session);
    const auto work = runInBackground([source, directory, progress = progressOf(job)] {
        return GuideExport::webFolder(source, directory, progress);
    });
    m_parts.pending.keep(QStringLiteral("exporting a guide"), work);
    whenDone(work, this, [this, job](const Result<QString> &page) {
        if (page) {
            if (const auto shown = m_parts.workspace.reveal(*page); !shown)
                Log::error(QStringLiteral("Steps: couldn't show the exported page"), shown.error());
            return end(job, GuideExportJob::End::Done);
        }
        if (page.error().isCancelled())
            return end(job, GuideExportJob::End::Cancelled);
        Log::error(QStringLiteral("Steps web export failed"), page.error());
        if (showError)
            showError(page.error());
        end(job, GuideExportJob::End::Failed);
    });
    return job;
}

GuideExportJob *GuideExports::pdf(const Source &source, std::shared_ptr<StepsSession> session,
                                  const QString &path)
{
    GuideExportJob *job = begin(session);
    const auto work = runInBackground(
        [source, path, progress = progressOf(job)] { return GuideExport::pdf(source, path, progress); });
    m_parts.pending.keep(QStringLiteral("exporting a guide"), work);
    whenDone(work, this, [this, job, path](const Result<void> &written) {
        if (written) {
            if (const auto opened = m_parts.workspace.open(QUrl::fromLocalFile(path)); !opened)
                Log::error(QStringLiteral("Steps: couldn't open the PDF"), opened.error());
            return end(job, GuideExportJob::End::Done);
        }
        if (written.error().isCancelled())
            return end(job, GuideExportJob::End::Cancelled);
        Log::error(QStringLiteral("Steps PDF export failed"), written.error());
        m_parts.notices.post(StepsTexts::tr("Couldn't write the PDF"), kWarning);
        end(job, GuideExportJob::End::Failed);
    });
    return job;
}

GuideExportJob *GuideExports::guideImage(const Source &source, std::shared_ptr<StepsSession> session,
                                         const std::function<void(const QString &path)> &open)
{
    GuideExportJob *job = begin(session);
    const auto work = runInBackground(
        [source, progress = progressOf(job)] { return GuideExport::tallPicture(source, progress); });
    m_parts.pending.keep(QStringLiteral("building a guide"), work);
    const auto fails = [this, job](const Error &error) {
        if (error.isCancelled())
            return end(job, GuideExportJob::End::Cancelled);
        Log::error(QStringLiteral("Steps: couldn't build the guide"), error);
        m_parts.notices.post(error.message, kWarning);
        end(job, GuideExportJob::End::Failed);
    };
    whenDone(work, this, [this, job, title = source.title, open, fails](const Result<QImage> &image) {
        if (!image)
            return fails(image.error());
        const auto write = m_parts.library.saveInBackground(*image);
        m_parts.pending.keep(QStringLiteral("saving a guide"), write);
        whenDone(write, this, [this, job, title, open, fails](const Result<QString> &path) {
            if (!path)
                return fails(path.error());
            const QString named = m_parts.library.rename(*path, title).value_or(*path);
            end(job, GuideExportJob::End::Done);
            if (open)
                open(named);
        });
    });
    return job;
}

GuideExportJob *GuideExports::saveToLibrary(const Source &source, std::shared_ptr<StepsSession> session)
{
    auto saving = std::make_shared<Saving>();
    saving->job = begin(session);
    saving->source = source;
    QMetaObject::invokeMethod(this, [this, saving] { saveNext(saving); }, Qt::QueuedConnection);
    return saving->job;
}

void GuideExports::saveNext(const std::shared_ptr<Saving> &saving)
{
    const bool isCancelled = *saving->job->m_isCancelled;
    Q_EMIT saving->job->progressed(saving->next, saving->total());
    if (isCancelled || saving->next == saving->total()) {
        collect(*saving);
        using End = GuideExportJob::End;
        return end(saving->job, isCancelled ? End::Cancelled : saving->failure ? End::Failed : End::Done);
    }
    const auto render = runInBackground(
        [source = saving->source, index = saving->next] { return GuideExport::picture(source, index); });
    m_parts.pending.keep(QStringLiteral("saving a guide"), render);
    whenDone(render, this, [this, saving](const Result<QImage> &image) {
        if (!image)
            return saved(saving, std::unexpected(image.error()));
        const auto write = m_parts.library.saveInBackground(*image);
        m_parts.pending.keep(QStringLiteral("saving a guide"), write);
        whenDone(write, this, [this, saving](const Result<QString> &path) { saved(saving, path); });
    });
}

// A step that can't be saved costs only itself.
void GuideExports::saved(const std::shared_ptr<Saving> &saving, const Result<QString> &path)
{
    const GuideStep &step = saving->source.guide.steps[saving->next++];
    if (path) {
        const QString name = StepsTexts::tr("%1 – Step %2").arg(saving->source.title).arg(saving->next);
        const QString named = m_parts.library.rename(*path, name).value_or(*path);
        if (step.app && !step.app->isEmpty())
            m_parts.library.catalog().setSource(named, *step.app);
        saving->paths.append(named);
    } else {
        Log::error(QStringLiteral("Steps: couldn't save step %1").arg(saving->next), path.error());
        if (!saving->failure)
            saving->failure = path.error();
    }
    saveNext(saving);
}

void GuideExports::collect(const Saving &saving)
{
    const QString title = saving.source.title;
    const bool hasFailed = saving.failure && !saving.failure->isCancelled();
    if (!saving.paths.isEmpty()) {
        const QUuid collection = m_parts.library.catalog().createCollection(title);
        m_parts.library.catalog().add(saving.paths, collection);
    }
    if (hasFailed && saving.paths.isEmpty())
        m_parts.notices.post(saving.failure->message, kWarning);
    else if (hasFailed)
        m_parts.notices.post(StepsTexts::tr("Only %1 of %2 steps were saved to the “%3” collection. %4")
                                 .arg(saving.paths.size())
                                 .arg(saving.total())
                                 .arg(title, saving.failure->message),
                             kWarning);
    else if (!saving.paths.isEmpty())
        m_parts.notices.post(
            StepsTexts::tr("Saved %1 steps to the “%2” collection").arg(saving.paths.size()).arg(title),
            QStringLiteral("folder.badge.plus"));
}
