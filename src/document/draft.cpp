#include "document/draft.h"

#include "base/atomic_file.h"
#include "base/file_tree.h"
#include "base/json.h"
#include "base/log.h"
#include "document/project_file.h"
#include "document/texts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <unistd.h>

namespace Draft {

namespace {

const QString kPixels = QStringLiteral("base.png");
const QString kObjects = QStringLiteral("project.json");
const QString kOrigin = QStringLiteral("draft.json");
const QString kPrefix = QStringLiteral("draft."); // "draft.png" is that of a PNG file
const QString kUnfinished = QStringLiteral(".part");

// The numbers of the states that are whole, oldest first.
QList<int> states(const QString &directory)
{
    QList<int> numbers;
    for (const QString &name : QDir(directory).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        bool isNumber = false;
        if (const int number = name.toInt(&isNumber); isNumber && number > 0)
            numbers.append(number);
    }
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

QString folderOf(const QString &directory, int state)
{
    return directory + '/' + QString::number(state);
}

std::optional<Origin> originOf(const QString &folder)
{
    const auto document = Json::readFile(folder + '/' + kOrigin);
    if (!document)
        return {};
    const auto picture = Json::string(document->object(), "picture");
    const auto title = Json::string(document->object(), "title");
    if (!picture || !title)
        return {};
    return Origin{picture->toLatin1(), *title};
}

Result<void> writeInto(const QString &folder, const EditorDocument::Contents &contents, const Origin &origin,
                       const QString &lastPixels)
{
    const ProjectFile project = ProjectFile::describing(contents.annotations, contents.effects);
    // One file under two names: pictures of this program are replaced, never changed in place.
    const bool isLinked =
        !lastPixels.isEmpty() && ::link(QFile::encodeName(lastPixels).constData(),
                                        QFile::encodeName(folder + '/' + kPixels).constData()) == 0;
    const auto written = isLinked ? AtomicFile::write(folder + '/' + kObjects, project.encoded())
                                  : ProjectFile::write(folder, contents.base, project);
    if (!written)
        return written;
    return Json::writeFile(folder + '/' + kOrigin,
                           QJsonDocument(QJsonObject{{"picture", QString::fromLatin1(origin.picture)},
                                                     {"title", origin.title}}));
}

} // namespace

QString directoryOf(const QString &path, const QString &projectDirectory)
{
    // Files of one base name share the directory.
    return projectDirectory + '/' + kPrefix + QFileInfo(path).suffix().toLower();
}

bool isDraft(const QString &name)
{
    return name.startsWith(kPrefix);
}

QString newDirectory(const QString &folder)
{
    return folder + '/' + QUuid::createUuid().toString(QUuid::WithoutBraces);
}

Result<void> write(const QString &directory, const EditorDocument::Contents &contents, const Origin &origin,
                   bool keepsBase)
{
    const QList<int> before = states(directory);
    const QString folder = folderOf(directory, before.isEmpty() ? 1 : before.last() + 1);
    FileTree::remove(folder + kUnfinished);
    if (!QDir().mkpath(folder + kUnfinished))
        return fail(DocumentTexts::tr("Couldn't make the folder %1.").arg(folder));
    // What nobody has decided to save is nobody else's to see.
    QFile::setPermissions(directory, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const QString lastPixels =
        keepsBase && !before.isEmpty() ? folderOf(directory, before.last()) + '/' + kPixels : QString();
    if (auto written = writeInto(folder + kUnfinished, contents, origin, lastPixels); !written) {
        FileTree::remove(folder + kUnfinished);
        return written;
    }
    if (!QDir().rename(folder + kUnfinished, folder))
        return fail(DocumentTexts::tr("Couldn't write %1.").arg(folder));
    for (const QString &name : QDir(directory).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (const QString older = directory + '/' + name; older != folder)
            FileTree::remove(older);
    }
    return {};
}

std::optional<EditorDocument::Contents> read(const QString &directory, const QByteArray &picture)
{
    QList<int> numbers = states(directory);
    std::reverse(numbers.begin(), numbers.end());
    for (int state : numbers) {
        const QString folder = folderOf(directory, state);
        const auto origin = originOf(folder);
        if (!origin || origin->picture != picture)
            continue;
        if (const auto project = ProjectFile::read(folder))
            return EditorDocument::Contents{project->base, project->project.objects(),
                                            project->project.effects()};
    }
    return {};
}

bool exists(const QString &directory)
{
    return !states(directory).isEmpty();
}

void remove(const QString &directory)
{
    if (!directory.isEmpty())
        FileTree::remove(directory);
}

void setAside(const QString &directory)
{
    const QString aside =
        directory + QStringLiteral(".aside-") + QString::number(QDateTime::currentMSecsSinceEpoch());
    if (QDir().rename(directory, aside))
        Log::info("Unsaved edits of another state of the picture were set aside");
    else
        Log::error("Unsaved edits of another state of the picture could not be set aside",
                   Error{Error::Kind::Failed, directory, {}});
}

QList<Entry> list(const QString &folder)
{
    QList<Entry> entries;
    for (const QFileInfo &info : QDir(folder).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QList<int> numbers = states(info.filePath());
        const auto origin =
            numbers.isEmpty() ? std::nullopt : originOf(folderOf(info.filePath(), numbers.last()));
        if (origin)
            entries.append({info.filePath(), origin->title, info.lastModified()});
    }
    std::sort(entries.begin(), entries.end(),
              [](const Entry &one, const Entry &other) { return one.date > other.date; });
    return entries;
}

std::optional<EditorDocument::Source> open(const Entry &entry)
{
    const auto contents = read(entry.directory, {});
    if (!contents)
        return {};
    EditorDocument::Source source;
    source.draft = contents; // with no base: nothing of it has been saved anywhere
    source.draftDirectory = entry.directory;
    return source;
}

} // namespace Draft
