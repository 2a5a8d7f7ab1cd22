#include "steps/steps_guide_model.h"

#include "base/async.h"
#include "base/log.h"
#include "base/notice.h"
#include "platform/secrets.h"
#include "settings/app_settings.h"
#include "settings/capture_settings.h"
#include "steps/steps_export.h"
#include "steps/steps_session.h"
#include "steps/texts.h"

namespace {

constexpr int kSaveDelay = 400; // milliseconds after the last change
const auto kWarning = QStringLiteral("exclamationmark.triangle.fill");

} // namespace

StepsGuideModel::StepsGuideModel(const QList<GuideStep> &steps, const QString &title,
                                 const CaptureSettings &capture, std::shared_ptr<StepsSession> session,
                                 Parts parts, QObject *parent)
    : QObject(parent),
      m_parts(parts),
      m_session(std::move(session)),
      m_search(parts.recognizer),
      m_writer(parts.claude)
{
    m_guide.title = title;
    m_guide.steps = steps;
    m_guide.markClicks = capture.isOn(CaptureSettings::Switch::StepsMarkClicks);
    m_guide.redact = capture.isOn(CaptureSettings::Switch::StepsAutoRedact);
    for (const GuideStep &step : steps)
        m_guide.originalClicks.insert(step.id, step.click);
    begin();
}

StepsGuideModel::StepsGuideModel(const Guide &guide, std::shared_ptr<StepsSession> session, Parts parts,
                                 QObject *parent)
    : QObject(parent),
      m_parts(parts),
      m_guide(guide),
      m_session(std::move(session)),
      m_search(parts.recognizer),
      m_writer(parts.claude)
{
    begin();
}

StepsGuideModel::~StepsGuideModel()
{
    if (m_save.isActive() && m_session)
        m_session->save(m_guide);
}

void StepsGuideModel::begin()
{
    m_save.setSingleShot(true);
    m_save.setInterval(kSaveDelay);
    connect(&m_save, &QTimer::timeout, this, &StepsGuideModel::write);
    m_save.start();
    connect(&m_writer, &CaptionWriter::written, this, &StepsGuideModel::setCaption);
    connect(&m_writer, &CaptionWriter::failed, this, [this](const Error &error) {
        m_parts.notices.post(StepsTexts::tr("Some captions stayed as they were. %1").arg(error.message),
                             kWarning);
    });
    connect(&m_writer, &CaptionWriter::progressed, this, &StepsGuideModel::statusChanged);
    m_previews.refresh(m_guide);
    findRedactions();
}

void StepsGuideModel::setTitle(const QString &title)
{
    if (m_guide.title == title)
        return;
    m_guide.title = title;
    save();
    Q_EMIT titleChanged();
}

const GuideStep *StepsGuideModel::step(const QUuid &id) const
{
    const qsizetype index = indexOf(id);
    return index < 0 ? nullptr : &m_guide.steps[index];
}

GuideStep *StepsGuideModel::find(const QUuid &id)
{
    const qsizetype index = indexOf(id);
    return index < 0 ? nullptr : &m_guide.steps[index];
}

qsizetype StepsGuideModel::indexOf(const QUuid &id) const
{
    for (qsizetype i = 0; i < m_guide.steps.size(); ++i) {
        if (m_guide.steps[i].id == id)
            return i;
    }
    return -1;
}

void StepsGuideModel::setMarkClicks(bool on)
{
    if (m_guide.markClicks == on)
        return;
    m_guide.markClicks = on;
    m_previews.refresh(m_guide);
    save();
    Q_EMIT switchesChanged();
}

void StepsGuideModel::setRedact(bool on)
{
    if (m_guide.redact == on)
        return;
    m_guide.redact = on;
    m_previews.refresh(m_guide);
    save();
    Q_EMIT switchesChanged();
}

void StepsGuideModel::save()
{
    ++m_revision;
    m_save.start();
}

void StepsGuideModel::write()
{
    if (!m_session)
        return;
    whenDone(keep(), this, [this](const Result<void> &kept) {
        if (kept)
            m_hasToldFailure = false;
        else if (!std::exchange(m_hasToldFailure, true))
            m_parts.notices.post(kept.error().message, kWarning);
    });
}

QFuture<Result<void>> StepsGuideModel::keep()
{
    m_save.stop();
    if (!m_session)
        return readyFuture<Result<void>>(
            fail({}, StepsTexts::tr("There was no room on disk for this guide when it began.")));
    m_session->save(m_guide);
    return runInBackground([session = m_session] { return session->flush(); });
}

void StepsGuideModel::changed(const QUuid &id)
{
    m_previews.refresh(m_guide);
    save();
    Q_EMIT stepChanged(id);
}

void StepsGuideModel::reordered()
{
    m_previews.refresh(m_guide);
    save();
    Q_EMIT stepsChanged();
}

std::optional<QString> StepsGuideModel::status() const
{
    if (m_job)
        return m_jobStatus;
    if (m_writer.isAtWork())
        return StepsTexts::tr("Claude is writing step %1 of %2…")
            .arg(m_writer.number())
            .arg(m_writer.total());
    if (m_search.isUnderWay())
        return StepsTexts::tr("Looking for emails, numbers and keys to hide…");
    return std::nullopt;
}

std::optional<double> StepsGuideModel::progress() const
{
    if (m_job)
        return m_jobProgress;
    if (m_writer.isAtWork())
        return double(m_writer.number() - 1) / double(m_writer.total());
    return std::nullopt;
}

// Whether or not it is to be hidden, so that switching it on shows it at once.
void StepsGuideModel::findRedactions()
{
    connect(&m_search, &SecretSearch::found, this, [this](const QUuid &id, const QList<QRectF> &boxes) {
        if (GuideStep *step = find(id)) {
            step->redactions = boxes;
            m_previews.refresh(m_guide);
            m_save.start();
            Q_EMIT stepChanged(id);
        }
    });
    connect(&m_search, &SecretSearch::ended, this, [this] {
        Q_EMIT statusChanged();
        for (const QUuid &id : std::exchange(m_editWhenSearched, {}))
            edit(id);
        const auto waiting = std::exchange(m_whenSafe, {});
        if (!waiting.isEmpty() && isRefused())
            return;
        for (const auto &then : waiting)
            whenSafeToShow(then);
    });
    for (const GuideStep &step : m_guide.steps)
        m_search.add(step.id, step.image);
    Q_EMIT statusChanged();
}

QList<QUuid> StepsGuideModel::unsearched() const
{
    QList<QUuid> ids;
    for (const GuideStep &step : m_guide.steps) {
        if (!step.edited && m_search.hasFailed(step.id))
            ids.append(step.id);
    }
    return ids;
}

void StepsGuideModel::searchAgain()
{
    m_search.retry();
    Q_EMIT statusChanged();
}

// What nobody could look through stays here while private text is to be hidden.
bool StepsGuideModel::isRefused()
{
    const qsizetype count = m_guide.redact ? unsearched().size() : 0;
    if (count == 0)
        return false;
    m_wantedExport = nullptr;
    Q_EMIT refused(int(count));
    Q_EMIT statusChanged();
    return true;
}

void StepsGuideModel::whenSafeToShow(const std::function<void()> &then)
{
    if (m_guide.redact && m_search.isUnderWay())
        m_whenSafe.append(then);
    else if (!isRefused())
        then();
}

void StepsGuideModel::setCaption(const QUuid &id, const QString &caption)
{
    GuideStep *step = find(id);
    if (!step || step->caption == caption)
        return;
    step->caption = caption;
    save();
    Q_EMIT stepChanged(id);
}

void StepsGuideModel::moveMarker(const QUuid &id, QPointF point)
{
    GuideStep *step = find(id);
    if (!step)
        return;
    const QSize size = step->image.size();
    step->click = QPointF(std::clamp(point.x(), 0.0, double(size.width())),
                          std::clamp(point.y(), 0.0, double(size.height())));
    changed(id);
    setMarkClicks(true);
}

bool StepsGuideModel::markerMoved(const QUuid &id) const
{
    const GuideStep *present = step(id);
    const auto original = m_guide.originalClicks.constFind(id);
    return present && original != m_guide.originalClicks.constEnd() && present->click != *original;
}

void StepsGuideModel::resetMarker(const QUuid &id)
{
    GuideStep *step = find(id);
    const auto original = m_guide.originalClicks.constFind(id);
    if (!step || original == m_guide.originalClicks.constEnd())
        return;
    step->click = *original;
    changed(id);
}

StepsGuideModel::StepEdit StepsGuideModel::editOf(const GuideStep &step, int number) const
{
    StepEdit edit;
    if (step.edited) {
        edit.annotations = step.edited->annotations;
        for (Annotation &annotation : edit.annotations) {
            if (annotation.id == step.edited->badgeID)
                annotation.number = number;
        }
        edit.effects = step.edited->effects;
    }
    edit.displayName = StepsTexts::tr("Step %1 · %2").arg(number).arg(safeTitle());
    return edit;
}

void StepsGuideModel::edit(const QUuid &id)
{
    const qsizetype index = indexOf(id);
    if (index < 0 || !openStepEditor)
        return;
    const GuideStep step = m_guide.steps[index];
    // What is to be hidden in it belongs to what is edited, and other pictures may tell of more.
    if (m_guide.redact && !step.edited && m_search.isUnderWay()) {
        m_editWhenSearched.insert(id);
        return;
    }
    StepEdit edit = editOf(step, int(index) + 1);
    std::optional<QUuid> badge = step.edited ? step.edited->badgeID : std::nullopt;
    if (!step.edited) {
        const auto marks =
            StepsExport::autoAnnotations(step, int(index) + 1, m_guide.markClicks, m_guide.redact);
        edit.annotations = marks.annotations;
        badge = marks.badgeID;
    }
    edit.save = [model = QPointer(this), id, badge](const QImage &base, const QList<Annotation> &annotations,
                                                    const Effects &effects) {
        if (model)
            model->applyEdit(id, base, annotations, effects, badge);
    };
    const StepPicture picture = step.edited ? step.edited->base : step.image;
    whenDone(runInBackground([picture] { return picture.image(); }), this,
             [this, edit](const QImage &image) mutable {
                 if (image.isNull()) {
                     m_parts.notices.post(StepsTexts::tr("The picture of this step can't be read."),
                                          kWarning);
                     return;
                 }
                 edit.base = image;
                 openStepEditor(edit);
             });
}

void StepsGuideModel::applyEdit(const QUuid &id, const QImage &base, const QList<Annotation> &annotations,
                                const Effects &effects, const std::optional<QUuid> &badgeID)
{
    GuideStep *step = find(id);
    if (!step)
        return;
    const bool hasBadge =
        std::ranges::any_of(annotations, [&](const Annotation &each) { return each.id == badgeID; });
    step->edited = EditedStep{StepPicture(base), annotations, hasBadge ? badgeID : std::nullopt, effects};
    ++step->editVersion;
    changed(id);
}

void StepsGuideModel::revertEdits(const QUuid &id)
{
    GuideStep *step = find(id);
    if (!step)
        return;
    step->edited.reset();
    ++step->editVersion;
    changed(id);
}

void StepsGuideModel::move(qsizetype index, qsizetype by)
{
    const qsizetype target = index + by;
    const auto isInside = [this](qsizetype place) { return place >= 0 && place < m_guide.steps.size(); };
    if (!isInside(index) || !isInside(target) || index == target)
        return;
    m_guide.steps.swapItemsAt(index, target);
    reordered();
}

void StepsGuideModel::reorder(qsizetype from, qsizetype to)
{
    if (from < 0 || from >= m_guide.steps.size() || to < 0 || to >= m_guide.steps.size() || from == to)
        return;
    m_guide.steps.move(from, to);
    reordered();
}

void StepsGuideModel::remove(const QList<QUuid> &ids)
{
    QList<Removed> removed;
    for (qsizetype i = m_guide.steps.size() - 1; i >= 0; --i) {
        if (ids.contains(m_guide.steps[i].id))
            removed.prepend({i, m_guide.steps.takeAt(i)});
    }
    if (removed.isEmpty())
        return;
    for (const Removed &each : removed)
        m_search.drop(each.step.id);
    m_removed.append(removed);
    reordered();
}

void StepsGuideModel::undo()
{
    if (m_removed.isEmpty())
        return;
    for (const Removed &each : m_removed.takeLast()) {
        m_guide.steps.insert(std::min(each.index, m_guide.steps.size()), each.step);
        m_search.add(each.step.id, each.step.image);
    }
    reordered();
}

void StepsGuideModel::improveCaptions()
{
    if (m_writer.isAtWork())
        return;
    whenDone(m_parts.settings.apiKey(SecretsAccess::MayAsk), this, [this](const Result<QString> &key) {
        if (!key)
            m_parts.notices.post(key.error().message, QStringLiteral("key.fill"));
        else if (key->isEmpty())
            m_parts.notices.post(StepsTexts::tr("Add an Anthropic API key in Settings › AI & Sharing first"),
                                 QStringLiteral("key.fill"));
        else
            whenSafeToShow([this] { m_writer.write(m_guide, captions()); });
    });
}

QString StepsGuideModel::safeTitle() const
{
    const QString title = m_guide.redact ? StepsExport::withoutSecrets(m_guide.title) : m_guide.title;
    return title.trimmed().isEmpty() ? StepsTexts::tr("How-To Guide") : title;
}

QStringList StepsGuideModel::captions() const
{
    QStringList captions;
    for (const GuideStep &step : m_guide.steps)
        captions.append(m_guide.redact ? StepsExport::withoutSecrets(step.caption) : step.caption);
    return captions;
}

GuideExports::Source StepsGuideModel::source() const
{
    return {safeTitle(), m_guide, captions()};
}

void StepsGuideModel::follow(GuideExportJob *job, const QString &status)
{
    m_job = job;
    m_jobStatus = status;
    m_jobProgress = 0;
    connect(job, &GuideExportJob::progressed, this, [this, status](int done, int total) {
        m_jobProgress = double(done) / std::max(total, 1);
        m_jobStatus = StepsTexts::tr("%1 · %2 of %3").arg(status).arg(std::min(done + 1, total)).arg(total);
        Q_EMIT statusChanged();
    });
    connect(job, &GuideExportJob::ended, this, [this, revision = m_revision](GuideExportJob::End end) {
        if (end == GuideExportJob::End::Done)
            m_exported = revision;
        m_job = nullptr;
        Q_EMIT statusChanged();
    });
    Q_EMIT statusChanged();
}

void StepsGuideModel::cancelExport()
{
    if (m_job)
        m_job->cancel();
    if (std::exchange(m_wantedExport, nullptr))
        Q_EMIT statusChanged();
}

// One at a time, and the first asked for.
void StepsGuideModel::beginExport(const QString &status, const std::function<GuideExportJob *()> &start)
{
    if (canCancel())
        return;
    m_wantedExport = [this, status, start] { follow(start(), status); };
    Q_EMIT statusChanged();
    whenSafeToShow([this] {
        if (const auto wanted = std::exchange(m_wantedExport, nullptr))
            wanted();
    });
}

void StepsGuideModel::exportWebFolder(const QString &directory)
{
    beginExport(StepsTexts::tr("Writing the web page…"),
                [this, directory] { return m_parts.exports.webFolder(source(), m_session, directory); });
}

void StepsGuideModel::exportPDF(const QString &path)
{
    beginExport(StepsTexts::tr("Writing the PDF…"),
                [this, path] { return m_parts.exports.pdf(source(), m_session, path); });
}

void StepsGuideModel::exportGuideImage()
{
    beginExport(StepsTexts::tr("Building the guide…"),
                [this] { return m_parts.exports.guideImage(source(), m_session, openInEditor); });
}

void StepsGuideModel::saveToLibrary()
{
    beginExport(StepsTexts::tr("Saving steps to the Library…"),
                [this] { return m_parts.exports.saveToLibrary(source(), m_session); });
}
