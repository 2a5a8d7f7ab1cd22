#include "steps/steps_session.h"

#include "base/json.h"
#include "base/log.h"
#include "document/image_files.h"
#include "document/project_file.h"
#include "steps/texts.h"

#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QMutexLocker>

namespace {

constexpr int kVersion = 1;

QString descriptionPath(const QString &folder)
{
    return folder + QStringLiteral("/guide.json");
}

QString lockPath(const QString &folder)
{
    return folder + QStringLiteral("/in-use.lock");
}

QString nameOf(const QUuid &id)
{
    return id.toString(QUuid::WithoutBraces);
}

QJsonValue toJson(const std::optional<QPointF> &point)
{
    return point ? QJsonValue(QJsonArray{point->x(), point->y()}) : QJsonValue();
}

std::optional<QPointF> pointFrom(const QJsonValue &value)
{
    const QJsonArray numbers = value.toArray();
    if (numbers.size() != 2 || !numbers[0].isDouble() || !numbers[1].isDouble())
        return std::nullopt;
    return QPointF(numbers[0].toDouble(), numbers[1].toDouble());
}

QJsonObject toJson(const GuideStep &step, const std::optional<QPointF> &original)
{
    QJsonArray redactions;
    for (const QRectF &box : step.redactions)
        redactions.append(QJsonArray{box.x(), box.y(), box.width(), box.height()});
    QJsonObject object{{"id", nameOf(step.id)},       {"picture", QFileInfo(step.image.path()).fileName()},
                       {"click", toJson(step.click)}, {"original", toJson(original)},
                       {"caption", step.caption},     {"redactions", redactions},
                       {"version", step.editVersion}};
    if (step.app)
        object["app"] = *step.app;
    if (step.edited) {
        qsizetype badge = -1;
        for (qsizetype i = 0; i < step.edited->annotations.size(); ++i) {
            if (step.edited->annotations[i].id == step.edited->badgeID)
                badge = i;
        }
        const ProjectFile project = ProjectFile::describing(step.edited->annotations, step.edited->effects);
        object["edited"] = QJsonObject{{"base", QFileInfo(step.edited->base.path()).fileName()},
                                       {"badge", double(badge)},
                                       {"project", QString::fromUtf8(project.encoded())}};
    }
    return object;
}

// A picture of the folder itself, whatever the description says of others.
std::optional<StepPicture> pictureFrom(const QString &folder, const QJsonValue &name)
{
    const QString path = folder + '/' + QFileInfo(name.toString()).fileName();
    const auto size = ImageFiles::pixelSize(path);
    return size ? std::optional(StepPicture(path, *size)) : std::nullopt;
}

std::optional<EditedStep> editedFrom(const QString &folder, const QJsonObject &object)
{
    const auto base = pictureFrom(folder, object["base"]);
    const auto project = ProjectFile::decoded(object["project"].toString().toUtf8());
    if (!base || !project)
        return std::nullopt;
    EditedStep edited;
    edited.base = *base;
    edited.annotations = project->objects();
    edited.effects = project->effects();
    const int badge = object["badge"].toInt(-1);
    if (badge >= 0 && badge < edited.annotations.size())
        edited.badgeID = edited.annotations[badge].id;
    return edited;
}

std::optional<GuideStep> stepFrom(const QString &folder, const QJsonObject &object)
{
    GuideStep step;
    step.id = QUuid(object["id"].toString());
    const auto picture = pictureFrom(folder, object["picture"]);
    if (step.id.isNull() || !picture)
        return std::nullopt;
    step.image = *picture;
    step.click = pointFrom(object["click"]);
    step.caption = object["caption"].toString();
    if (object["app"].isString())
        step.app = object["app"].toString();
    for (const QJsonValue &each : object["redactions"].toArray()) {
        const QJsonArray box = each.toArray();
        step.redactions.append(
            QRectF(box[0].toDouble(), box[1].toDouble(), box[2].toDouble(), box[3].toDouble()));
    }
    if (object["edited"].isObject())
        step.edited = editedFrom(folder, object["edited"].toObject());
    step.editVersion = object["version"].toInt();
    return step;
}

} // namespace

StepsSession::StepsSession(QString folder, std::unique_ptr<QLockFile> lock)
    : m_folder(std::move(folder)), m_lock(std::move(lock))
{
    m_writer.setMaxThreadCount(1);
}

StepsSession::~StepsSession()
{
    m_writer.waitForDone();
}

Result<std::shared_ptr<StepsSession>> StepsSession::create(const QString &root)
{
    const QString folder = root + '/' + nameOf(QUuid::createUuid());
    if (!QDir().mkpath(folder)) {
        return fail(
            StepsTexts::tr("There is no room for the steps: the folder %1 can't be made.").arg(folder));
    }
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return resume(folder);
}

Result<std::shared_ptr<StepsSession>> StepsSession::resume(const QString &folder)
{
    auto lock = std::make_unique<QLockFile>(lockPath(folder));
    lock->setStaleLockTime(0); // a guide may be under way for days
    if (!lock->tryLock(0)) {
        return fail(Error::Kind::Unavailable,
                    lock->error() == QLockFile::LockFailedError
                        ? StepsTexts::tr("Another program is working on these steps.")
                        : StepsTexts::tr("The folder %1 can't be written.").arg(folder));
    }
    return std::shared_ptr<StepsSession>(new StepsSession(folder, std::move(lock)));
}

QList<StepsSession::Unfinished> StepsSession::unfinished(const QString &root)
{
    QList<Unfinished> found;
    for (const QFileInfo &entry : QDir(root).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (entry.isSymLink())
            continue;
        const QString folder = entry.absoluteFilePath();
        const auto session = resume(folder);
        if (!session)
            continue;
        const auto guide = (*session)->read();
        if (!guide || guide->steps.isEmpty()) {
            (*session)->discard();
            continue;
        }
        found.append(
            {folder, guide->title, guide->steps.size(), QFileInfo(descriptionPath(folder)).lastModified()});
    }
    std::sort(found.begin(), found.end(),
              [](const Unfinished &one, const Unfinished &other) { return one.date > other.date; });
    return found;
}

Result<Guide> StepsSession::read() const
{
    const auto document = Json::readFile(descriptionPath(m_folder));
    if (!document)
        return std::unexpected(document.error());
    const QJsonObject object = document->object();
    Guide guide;
    guide.title = object["title"].toString();
    guide.markClicks = object["markClicks"].toBool(true);
    guide.redact = object["redact"].toBool(true);
    for (const QJsonValue &each : object["steps"].toArray()) {
        if (const auto step = stepFrom(m_folder, each.toObject())) {
            guide.steps.append(*step);
            guide.originalClicks.insert(step->id, pointFrom(each["original"]));
        }
    }
    return guide;
}

void StepsSession::save(const Guide &guide)
{
    {
        const QMutexLocker lock(&m_mutex);
        if (m_isDiscarded || m_latest.has_value()) {
            if (!m_isDiscarded)
                m_latest = guide;
            return;
        }
        m_latest = guide;
    }
    m_writer.start([this] { writeLatest(); });
}

void StepsSession::writeLatest()
{
    std::optional<Guide> guide;
    {
        const QMutexLocker lock(&m_mutex);
        guide = std::exchange(m_latest, std::nullopt);
        if (!guide || m_isDiscarded)
            return;
    }
    if (const auto written = write(*guide); !written) {
        Log::error(QStringLiteral("Steps: couldn't keep a guide on disk"), written.error());
        const QMutexLocker lock(&m_mutex);
        if (!m_failure)
            m_failure = written.error();
    }
}

Result<void> StepsSession::keep(const StepPicture &picture, const QString &name)
{
    const QString present = picture.path();
    if (!present.isEmpty())
        return {};
    return picture.moveTo(m_folder + '/' + name + QStringLiteral(".png"));
}

Result<void> StepsSession::write(const Guide &guide)
{
    QJsonArray steps;
    std::optional<Error> failure;
    for (const GuideStep &step : guide.steps) {
        const auto kept = keep(step.image, nameOf(step.id));
        // Each edit has a picture of its own: the one before may still be read.
        const auto base = step.edited
                              ? keep(step.edited->base,
                                     QStringLiteral("%1-edit-%2").arg(nameOf(step.id)).arg(step.editVersion))
                              : Result<void>();
        if (!kept || !base) {
            failure = kept ? base.error() : kept.error();
            continue;
        }
        steps.append(toJson(step, guide.originalClicks.value(step.id, step.click)));
    }
    const QJsonObject object{{"format", kVersion},
                             {"title", guide.title},
                             {"markClicks", guide.markClicks},
                             {"redact", guide.redact},
                             {"steps", steps}};
    auto written = Json::writeFile(descriptionPath(m_folder), QJsonDocument(object));
    if (written && failure)
        return std::unexpected(*failure);
    return written;
}

std::optional<Error> StepsSession::takeFailure()
{
    const QMutexLocker lock(&m_mutex);
    return std::exchange(m_failure, std::nullopt);
}

Result<void> StepsSession::flush()
{
    m_writer.waitForDone();
    if (const auto failure = takeFailure())
        return std::unexpected(*failure);
    return {};
}

void StepsSession::discard()
{
    {
        const QMutexLocker lock(&m_mutex);
        m_isDiscarded = true;
        m_latest.reset();
    }
    m_writer.start([this] {
        // The lock last: who gets it then finds a folder without steps.
        const QDir folder(m_folder);
        for (const QString &name : folder.entryList(QDir::Files | QDir::Hidden)) {
            if (m_folder + '/' + name != lockPath(m_folder))
                QFile::remove(m_folder + '/' + name);
        }
        m_lock->unlock();
        QDir().rmdir(m_folder);
    });
}
