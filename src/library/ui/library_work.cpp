#include "library/ui/library_work.h"

#include "base/clock.h"
#include "base/log.h"
#include "base/notice.h"
#include "base/pending_work.h"
#include "library/auto_delete.h"
#include "library/batch/guide_renderer.h"
#include "library/library.h"
#include "library/library_names.h"
#include "library/model/library_model.h"
#include "library/model/text_indexing.h"
#include "library/ui/batch_job.h"
#include "library/ui/texts.h"
#include "platform/workspace.h"
#include "services/claude_client.h"
#include "settings/app_settings.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QUrl>

namespace {

constexpr int kDescribedAtOnce = 50;
constexpr int kTurn = 8; // milliseconds of renaming between two looks at the events
const QString kWarning = QStringLiteral("exclamationmark.triangle.fill");

// From the event loop, so that who started the job can listen to its end.
template <typename Work>
void later(BatchJob *job, Work work)
{
    QTimer::singleShot(0, job, std::move(work));
}

// For the service, and so untranslated.
QString captionPrompt()
{
    return QStringLiteral(
        R"(Write one short sentence (at most 20 words) describing what this screenshot shows, as a caption in a how-to document. Reply with the caption only.)");
}

} // namespace

LibraryWork::LibraryWork(Parts parts, QObject *parent) : QObject(parent), m_parts(std::move(parts)) {}

LibraryWork::~LibraryWork()
{
    for (BatchJob *job : findChildren<BatchJob *>())
        job->cancel();
}

QString LibraryWork::title(Captions captions)
{
    switch (captions) {
    case Captions::None:
        return LibraryUiTexts::tr("None");
    case Captions::Names:
        return LibraryUiTexts::tr("File Names");
    case Captions::Written:
        return LibraryUiTexts::tr("AI-written (Claude)");
    }
    Q_UNREACHABLE();
}

void LibraryWork::complain(const QString &text)
{
    m_parts.notices.post(text, kWarning);
}

void LibraryWork::finish(BatchJob *job, const Result<void> &result)
{
    if (!result && !result.error().isCancelled()) {
        Log::error(QStringLiteral("Work on several captures failed"), result.error());
        if (!job->isWatched())
            complain(result.error().message);
    }
    job->end(result);
}

template <typename T>
BatchJob *LibraryWork::start(const QString &what, std::function<T(const Progress &)> work,
                             std::function<Result<void>(T)> then)
{
    auto *job = new BatchJob(this);
    const QFuture<T> future =
        runInBackground([work = std::move(work), progress = job->progress()] { return work(progress); });
    m_parts.pending.keep(what, future);
    whenDone(future, job,
             [this, job, then = std::move(then)](T done) { finish(job, then(std::move(done))); });
    return job;
}

BatchJob *LibraryWork::exportFiles(const ExportOrder &order)
{
    const auto work = [order](const Progress &progress) {
        return Exporter::exportFiles(order.paths, order.folder, order.format, order.longest, progress);
    };
    const auto then = [this](const Exporter::Outcome &outcome) -> Result<void> {
        const auto count = static_cast<int>(outcome.paths.size());
        if (count > 0)
            m_parts.notices.post(LibraryUiTexts::tr("Exported %n item(s)", nullptr, count),
                                 QStringLiteral("square.and.arrow.up.on.square.fill"));
        if (outcome.wasCancelled)
            return cancelled();
        if (count > 0)
            std::ignore = m_parts.workspace.reveal(outcome.paths.first());
        if (outcome.failures.isEmpty())
            return {};
        const auto failed = static_cast<int>(outcome.failures.size());
        return fail(failed == 1 ? outcome.failures.first().message
                                : LibraryUiTexts::tr("%n files could not be exported. %1", nullptr, failed)
                                      .arg(outcome.failures.first().message));
    };
    return start<Exporter::Outcome>(QStringLiteral("exporting captures"), work, then);
}

// A caption that can't be had stays empty, unless none can.
Task<Result<QStringList>> LibraryWork::captionsFor(BatchJob *job, QStringList paths, Captions captions,
                                                   QString status)
{
    if (captions == Captions::Written)
        co_return co_await writtenCaptions(job, std::move(paths), std::move(status));
    QStringList made;
    for (const QString &path : paths)
        made.append(captions == Captions::Names ? LibraryNames::baseOf(path) : QString());
    co_return made;
}

Task<Result<QStringList>> LibraryWork::writtenCaptions(BatchJob *job, QStringList paths, QString status)
{
    QStringList made;
    int failedInARow = 0;
    const auto total = static_cast<int>(paths.size());
    for (const QString &path : paths) {
        if (job->isCancelled())
            co_return cancelled();
        job->setStatus(status.arg(made.size() + 1).arg(total));
        job->tell(static_cast<int>(made.size()), total);
        made.append(QString());
        const auto image = co_await guarded(TextIndexing::pictureOf(path), job);
        if (!image && image.error().isCancelled())
            co_return cancelled();
        if (!image)
            continue;
        const auto text =
            co_await guarded(m_parts.claude.ask(captionPrompt(), *image, QStringLiteral("low")), job);
        if (text) {
            made.last() = *text;
            failedInARow = 0;
            continue;
        }
        if (text.error().isCancelled())
            co_return cancelled();
        // The file is not written without any: the work would seem done.
        if (const bool isLast = made.size() == total;
            !TextIndexing::isWorthAsking(text.error(), ++failedInARow) || (isLast && failedInARow == total))
            co_return std::unexpected(text.error());
    }
    job->setStatus({});
    co_return made;
}

BatchJob *LibraryWork::makePdf(const PdfOrder &order)
{
    auto *job = new BatchJob(this);
    later(job, [this, job, order] { writePdf(job, order); });
    return job;
}

Task<> LibraryWork::writePdf(BatchJob *job, PdfOrder order)
{
    const QPointer<BatchJob> alive = job;
    const auto captions = co_await captionsFor(job, order.paths, order.captions,
                                               LibraryUiTexts::tr("Writing caption %1 of %2…"));
    if (!alive)
        co_return;
    if (!captions)
        co_return finish(job, std::unexpected(captions.error()));
    QList<Exporter::PdfPage> pages;
    for (qsizetype i = 0; i < order.paths.size(); ++i)
        pages.append(Exporter::pageOfFile(order.paths[i], captions->value(i)));
    const auto writing = runInBackground([pages, order, progress = job->progress()]() -> Result<void> {
        if (!progress(0, static_cast<int>(pages.size())))
            return cancelled();
        return Exporter::pdf(pages, order.title, order.size, order.target, progress);
    });
    m_parts.pending.keep(QStringLiteral("writing a PDF"), writing);
    const auto written = co_await guarded(writing, job);
    if (!alive)
        co_return;
    if (written) {
        if (const auto opened = m_parts.workspace.open(QUrl::fromLocalFile(order.target)); !opened)
            std::ignore = m_parts.workspace.reveal(order.target);
        finish(job, {});
    } else if (written.error().isCancelled()) {
        finish(job, cancelled());
    } else {
        finish(job, fail(LibraryUiTexts::tr("Couldn't write the PDF.") + QLatin1Char(' ') +
                             written.error().message,
                         written.error().detail));
    }
}

BatchJob *LibraryWork::combine(const CombineOrder &order)
{
    auto *job = new BatchJob(this);
    later(job, [this, job, order] {
        const auto picture = runInBackground([order, progress = job->progress()] {
            return Combiner::combineFiles(order.paths, order.layout, order.spacing, order.background,
                                          progress);
        });
        const auto count = static_cast<int>(order.paths.size());
        keepAndOpen(job, picture, LibraryUiTexts::tr("Combined %n Capture(s)", nullptr, count), {});
    });
    return job;
}

BatchJob *LibraryWork::makeGuide(const GuideOrder &order)
{
    auto *job = new BatchJob(this);
    later(job, [this, job, order] { writeGuide(job, order); });
    return job;
}

Task<> LibraryWork::writeGuide(BatchJob *job, GuideOrder order)
{
    const QPointer<BatchJob> alive = job;
    const auto captions =
        co_await captionsFor(job, order.paths, order.captions, LibraryUiTexts::tr("Writing step %1 of %2…"));
    if (!alive)
        co_return;
    if (!captions)
        co_return finish(job, std::unexpected(captions.error()));
    QList<GuideRenderer::FileStep> steps;
    for (qsizetype i = 0; i < order.paths.size(); ++i)
        steps.append({order.paths[i], captions->value(i)});
    const auto picture =
        runInBackground([steps, title = order.title, progress = job->progress()]() -> Result<Composition> {
            if (!progress(0, static_cast<int>(steps.size())))
                return cancelled();
            return GuideRenderer::renderFiles(title, steps, GuideRenderer::kStandardWidth, progress);
        });
    const QString name = order.title.isEmpty() ? LibraryUiTexts::tr("Step Guide") : order.title;
    keepAndOpen(job, picture, name, LibraryUiTexts::tr("Couldn't create the guide."));
}

// `problem` is said before the reason of a failure, where there is something to say.
Task<> LibraryWork::keepAndOpen(BatchJob *job, QFuture<Result<Composition>> picture, QString name,
                                QString problem)
{
    const QPointer<BatchJob> alive = job;
    m_parts.pending.keep("making " + name, picture);
    const auto made = co_await guarded(picture, job);
    if (!alive)
        co_return;
    const auto told = [&problem](const Error &error) -> Result<void> {
        const bool isSame = problem.isEmpty() || error.isCancelled() || error.message == problem;
        return std::unexpected(
            isSame ? error : Error{error.kind, problem + QLatin1Char(' ') + error.message, error.detail});
    };
    if (!made || job->isCancelled())
        co_return finish(job, made ? Result<void>(cancelled()) : told(made.error()));
    const auto saving = m_parts.library.saveInBackground(made->image);
    m_parts.pending.keep("saving " + name, saving);
    const auto saved = co_await guarded(saving, job);
    if (!alive)
        co_return;
    if (!saved)
        co_return finish(job, told(saved.error()));
    if (job->isCancelled()) {
        std::ignore = m_parts.library.remove(*saved);
        co_return finish(job, cancelled());
    }
    const auto renamed = m_parts.library.rename(*saved, name);
    finish(job, {});
    if (made->leftOut > 0)
        complain(
            LibraryUiTexts::tr("%n picture(s) could not be read and were left out", nullptr, made->leftOut));
    m_parts.openItem(renamed.value_or(*saved));
}

BatchJob *LibraryWork::rename(const Names &names)
{
    auto *job = new BatchJob(this);
    job->tell(0, static_cast<int>(names.size()));
    renameSome(job, names, 0);
    return job;
}

void LibraryWork::renameSome(BatchJob *job, const Names &names, int renamed)
{
    later(job, [this, job, names, renamed]() mutable {
        QElapsedTimer turn;
        turn.start();
        std::optional<Error> failure;
        int at = job->done();
        while (at < names.size() && !job->isCancelled() && !failure && turn.elapsed() < kTurn) {
            const auto &[path, name] = names.at(at++);
            if (const auto done = m_parts.library.rename(path, name))
                ++renamed;
            else
                failure = done.error();
        }
        job->tell(at, static_cast<int>(names.size()));
        if (at < names.size() && !job->isCancelled() && !failure)
            return renameSome(job, names, renamed);
        if (renamed > 0)
            m_parts.notices.post(LibraryUiTexts::tr("Renamed %n item(s)", nullptr, renamed),
                                 QStringLiteral("character.cursor.ibeam"));
        if (failure)
            finish(job, std::unexpected(*failure));
        else
            finish(job, job->isCancelled() ? Result<void>(cancelled()) : Result<void>());
    });
}

void LibraryWork::runAutoDelete(WhenNothing whenNothing)
{
    whenOutdated(m_parts.library, m_parts.prefs.autoDeleteDays(), m_parts.clock.now(), this,
                 [this, whenNothing](const QStringList &outdated) { removeOutdated(outdated, whenNothing); });
}

void LibraryWork::removeOutdated(const QStringList &outdated, WhenNothing whenNothing)
{
    if (outdated.isEmpty() && whenNothing == WhenNothing::Silent)
        return;
    whenDone(m_parts.library.removeInBackground(outdated), this,
             [this, whenNothing](const QList<Library::Outcome> &outcomes) {
                 // One that the Trash doesn't take stays, and isn't told of as gone.
                 const int moved = Library::Outcome::countOf(outcomes);
                 if (const auto failure = Library::Outcome::firstFailure(outcomes); failure && moved == 0)
                     return complain(failure->message);
                 if (moved == 0 && whenNothing == WhenNothing::Silent)
                     return;
                 m_parts.notices.post(
                     moved > 0 ? LibraryUiTexts::tr("Moved %n old capture(s) to the Trash", nullptr, moved)
                               : LibraryUiTexts::tr("Nothing old enough to remove"),
                     QStringLiteral("trash"));
             });
}

void LibraryWork::restore(const LibraryVersion &version, const QString &path)
{
    const FileHistory history(m_parts.library, path);
    const auto restoring = runInBackground(
        [history, version, now = m_parts.clock.now()] { return history.restore(version, now); });
    m_parts.pending.keep("restoring " + path, restoring);
    whenDone(restoring, this, [this, path, version](bool isRestored) {
        if (!isRestored)
            return complain(LibraryUiTexts::tr("This version can't be restored."));
        Log::info("Restored " + LibraryNames::nameOf(path) + " to version from " +
                  version.date.toString(Qt::ISODate));
        m_parts.library.postChanged(path);
    });
}

QFuture<Result<QString>> LibraryWork::apiKey() const
{
    return m_parts.prefs.apiKey(SecretsAccess::Quiet);
}

void LibraryWork::describe(LibraryModel &model)
{
    if (m_isDescribing)
        return;
    m_isDescribing = true;
    whenDone(m_parts.prefs.apiKey(SecretsAccess::MayAsk), this, [this, &model](const Result<QString> &key) {
        if (key && !key->isEmpty())
            return startDescribing(model);
        m_isDescribing = false;
        m_parts.notices.post(LibraryUiTexts::tr("Add an Anthropic API key in Settings first"),
                             QStringLiteral("key.fill"));
    });
}

void LibraryWork::startDescribing(LibraryModel &model)
{
    model.setAiProgress(LibraryUiTexts::tr("Starting…"));
    m_parts.indexing.describeMissing(
        m_parts.claude, kDescribedAtOnce,
        [&model](int done, int total) {
            model.setAiProgress(LibraryUiTexts::tr("Describing %1 of %2…").arg(done + 1).arg(total));
        },
        [this, &model](int described, const std::optional<Error> &failure) {
            m_isDescribing = false;
            model.setAiProgress(std::nullopt);
            if (failure)
                Log::error(QStringLiteral("A capture could not be described"), *failure);
            if (failure && described == 0)
                return complain(failure->message);
            m_parts.notices.post(described > 0 ? LibraryUiTexts::tr("Added AI descriptions to %n capture(s)",
                                                                    nullptr, described)
                                               : LibraryUiTexts::tr("Everything is already described"),
                                 QStringLiteral("sparkles"));
        });
}
