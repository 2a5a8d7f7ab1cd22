#include "document/project_save.h"

#include "base/atomic_file.h"
#include "base/file_errors.h"
#include "base/file_lock.h"
#include "base/file_name.h"
#include "base/file_tree.h"
#include "base/log.h"
#include "base/read_file.h"
#include "base/scratch_folder.h"
#include "document/image_files.h"
#include "document/renderer.h"

#include <QDateTime>
#include <QFileInfo>
#include <cerrno>
#include <cstdio>
#include <unistd.h>

namespace ProjectSave {

namespace {

const QString kWaiting = QStringLiteral(".saving");
const QString kDigest = QStringLiteral("picture.sha256");
const QString kDescription = QStringLiteral("project.json");
// The digest goes last, so that moving in can be done again.
const QStringList kParts{QStringLiteral("base.png"), kDescription, kDigest};

// What "picture.sha256" tells.
struct Stamp {
    QByteArray digest; // in hexadecimal digits
    QString name;
};

std::optional<Stamp> stampOf(const QString &directory)
{
    const auto bytes = ReadFile::head(directory + QLatin1Char('/') + kDigest, 8192);
    if (!bytes)
        return std::nullopt;
    const QByteArray line = bytes->left(bytes->indexOf('\n'));
    constexpr qsizetype kDigits = 64;
    if (line.size() < kDigits)
        return std::nullopt;
    return Stamp{line.left(kDigits), FileName::fromBytes(line.mid(kDigits + 2))};
}

// `picture` has the bytes, `name` the name that they will have.
Result<void> writeStamp(const QString &directory, const QString &picture, const QString &name)
{
    const QByteArray digest = ReadFile::digest(picture);
    if (digest.isEmpty())
        return FileErrors::cannotRead(picture, errno);
    return AtomicFile::write(directory + QLatin1Char('/') + kDigest,
                             digest + "  " + FileName::toBytes(name) + '\n');
}

QString folderOf(const QString &projectDirectory)
{
    return QFileInfo(projectDirectory).absolutePath();
}

Result<void> move(const QString &from, const QString &to)
{
    if (std::rename(FileName::toBytes(from).constData(), FileName::toBytes(to).constData()) != 0)
        return FileErrors::cannotWrite(to, errno);
    return {};
}

// The picture is in its place: the project follows.
Result<void> moveIn(const QString &projectDirectory)
{
    const QString waiting = projectDirectory + QLatin1Char('/') + kWaiting;
    for (const QString &part : kParts) {
        const QString from = waiting + QLatin1Char('/') + part;
        if (!FileTree::exists(from))
            continue;
        if (auto moved = move(from, projectDirectory + QLatin1Char('/') + part); !moved)
            return moved;
    }
    FileTree::remove(waiting);
    return {};
}

void settleLocked(const QString &path, const QString &projectDirectory)
{
    const QString waiting = projectDirectory + QLatin1Char('/') + kWaiting;
    if (!FileTree::exists(waiting))
        return;
    const auto stamp = stampOf(waiting);
    if (!stamp || stamp->digest != ReadFile::digest(path)) {
        FileTree::remove(waiting);
        return;
    }
    if (const auto moved = moveIn(projectDirectory); !moved)
        Log::error(QStringLiteral("An interrupted save could not be finished"), moved.error());
    else
        Log::info(QStringLiteral("Finished an interrupted save of ") + QFileInfo(path).fileName());
}

bool holdsProject(const QString &directory)
{
    return FileTree::exists(directory + QLatin1Char('/') + kDescription);
}

// What is in the way of a new project, and isn't the present one of this picture, is kept.
void makeRoom(const QString &path, const QString &projectDirectory)
{
    if (!holdsProject(projectDirectory))
        return;
    const auto stamp = stampOf(projectDirectory);
    const bool isOwn =
        stamp && (stamp->name == QFileInfo(path).fileName() || stamp->digest == ReadFile::digest(path));
    if (!isOwn)
        setAside(projectDirectory);
}

// Puts a complete project in place of the old one once `placePicture` has put its picture there.
Result<void> commit(const QString &path, const QString &projectDirectory, const QString &prepared,
                    const std::function<Result<void>()> &placePicture)
{
    settleLocked(path, projectDirectory);
    makeRoom(path, projectDirectory);
    const QString waiting = projectDirectory + QLatin1Char('/') + kWaiting;
    if (!FileTree::makeFolder(projectDirectory))
        return FileErrors::cannotWrite(path, errno);
    FileTree::remove(waiting);
    auto placed = move(prepared, waiting);
    if (placed)
        placed = placePicture();
    if (!placed) {
        FileTree::remove(waiting);
        rmdir(FileName::toBytes(projectDirectory).constData()); // if it was made for this
        return placed;
    }
    return moveIn(projectDirectory);
}

// Whether drawing the project gives the very picture. What a lossy encoder makes of both must be the same.
bool draws(const ProjectFile::Contents &contents, const QString &path)
{
    const auto annotations = contents.project.objects();
    const QImage flat =
        annotations.isEmpty()
            ? contents.base
            : Renderer::flattened(contents.base, Renderer::pixelated(contents.base), annotations);
    const QImage finished = contents.project.effects().applied(flat);
    if (ImageFiles::pixelSize(path) != finished.size())
        return false;
    const auto type = ImageFiles::type(path);
    if (type != ImageFiles::Type::Png) {
        const auto bytes = ReadFile::whole(path, ImageFiles::kMostBytes);
        return bytes && *bytes == ImageFiles::encode(finished, type);
    }
    const auto picture = ImageFiles::read(path);
    constexpr auto kFormat = QImage::Format_ARGB32_Premultiplied;
    return picture && picture->convertToFormat(kFormat) == finished.convertToFormat(kFormat);
}

} // namespace

QString lockFile(const QString &folder)
{
    return folder + QStringLiteral("/.lock");
}

Result<void> write(const QString &path, const QImage &finished, const QString &projectDirectory,
                   const QImage &base, const ProjectFile &project)
{
    const QString folder = folderOf(projectDirectory);
    if (!FileTree::makeFolder(folder))
        return FileErrors::cannotWrite(path, errno);
    ScratchFolder::clearLeftovers(folder);
    const auto scratch = ScratchFolder::make(folder);
    if (!scratch)
        return std::unexpected(FileErrors::about(path, scratch.error()));
    const QString name = QFileInfo(path).fileName();
    const QString prepared = scratch->filePath(kWaiting);
    const QString picture = scratch->filePath(name);
    if (auto written = ProjectFile::write(prepared, base, project); !written)
        return std::unexpected(FileErrors::about(path, written.error()));
    if (auto written = ImageFiles::write(finished, picture); !written)
        return written;
    if (auto written = writeStamp(prepared, picture, name); !written)
        return std::unexpected(FileErrors::about(path, written.error()));
    const auto lock = FileLock::take(lockFile(folder));
    if (!lock)
        return std::unexpected(lock.error());
    return commit(path, projectDirectory, prepared, [&] { return AtomicFile::moveOver(picture, path); });
}

Result<void> writeProject(const QString &path, const QString &projectDirectory, const QImage &base,
                          const ProjectFile &project)
{
    const QString folder = folderOf(projectDirectory);
    if (!FileTree::makeFolder(folder))
        return FileErrors::cannotWrite(path, errno);
    const auto scratch = ScratchFolder::make(folder);
    if (!scratch)
        return std::unexpected(FileErrors::about(path, scratch.error()));
    const QString prepared = scratch->filePath(kWaiting);
    if (auto written = ProjectFile::write(prepared, base, project); !written)
        return std::unexpected(FileErrors::about(path, written.error()));
    const auto lock = FileLock::take(lockFile(folder));
    if (!lock)
        return std::unexpected(lock.error());
    if (auto written = writeStamp(prepared, path, QFileInfo(path).fileName()); !written)
        return std::unexpected(FileErrors::about(path, written.error()));
    return commit(path, projectDirectory, prepared, [] { return Result<void>{}; });
}

Result<void> put(const QString &path, const QString &picture, const QString &projectDirectory,
                 const QString &project)
{
    const QString folder = folderOf(projectDirectory);
    if (!FileTree::makeFolder(folder))
        return FileErrors::cannotWrite(path, errno);
    const auto lock = FileLock::take(lockFile(folder));
    if (!lock)
        return std::unexpected(lock.error());
    const auto placePicture = [&] { return AtomicFile::moveOver(picture, path); };
    if (!project.isEmpty() && stampOf(project))
        return commit(path, projectDirectory, project, placePicture);
    settleLocked(path, projectDirectory);
    const bool isPresent = belongs(path, projectDirectory).value_or(false);
    if (auto placed = placePicture(); !placed)
        return placed;
    if (isPresent)
        FileTree::remove(projectDirectory);
    else if (holdsProject(projectDirectory))
        setAside(projectDirectory);
    return project.isEmpty() ? Result<void>{} : move(project, projectDirectory);
}

Opened open(const QString &path, const QString &projectDirectory)
{
    if (projectDirectory.isEmpty() || !FileTree::exists(projectDirectory))
        return {};
    // In a folder that can't be written to, nobody changes anything.
    const auto lock = FileLock::take(lockFile(folderOf(projectDirectory)));
    settleLocked(path, projectDirectory);
    if (!holdsProject(projectDirectory) || !FileTree::exists(path))
        return {};
    const auto isOwn = belongs(path, projectDirectory);
    if (isOwn == false) {
        setAside(projectDirectory);
        return {{}, true};
    }
    auto contents = ProjectFile::read(projectDirectory);
    if (!contents)
        return {};
    if (isOwn)
        return {*std::move(contents), false};
    if (!draws(*contents, path)) {
        setAside(projectDirectory);
        return {{}, true};
    }
    if (const auto written = writeStamp(projectDirectory, path, QFileInfo(path).fileName()); !written)
        Log::error(QStringLiteral("A project could not be given its digest"), written.error());
    return {*std::move(contents), false};
}

void settle(const QString &path, const QString &projectDirectory)
{
    if (projectDirectory.isEmpty() || !FileTree::exists(projectDirectory + QLatin1Char('/') + kWaiting))
        return;
    if (const auto lock = FileLock::take(lockFile(folderOf(projectDirectory))))
        settleLocked(path, projectDirectory);
}

std::optional<bool> belongs(const QString &path, const QString &projectDirectory)
{
    const auto stamp = stampOf(projectDirectory);
    return stamp ? std::optional(stamp->digest == ReadFile::digest(path)) : std::nullopt;
}

std::optional<QString> owner(const QString &projectDirectory)
{
    const auto stamp = stampOf(projectDirectory);
    return stamp ? std::optional(stamp->name) : std::nullopt;
}

void setOwner(const QString &projectDirectory, const QString &name)
{
    const auto stamp = stampOf(projectDirectory);
    if (!stamp)
        return;
    const auto written = AtomicFile::write(projectDirectory + QLatin1Char('/') + kDigest,
                                           stamp->digest + "  " + FileName::toBytes(name) + '\n',
                                           AtomicFile::Keep::Reproducible);
    if (!written)
        Log::error(QStringLiteral("A project could not be told the name of its picture"), written.error());
}

void setAside(const QString &projectDirectory)
{
    const QString aside = folderOf(projectDirectory) + QStringLiteral("/.aside");
    const QString stem = QFileInfo(projectDirectory).fileName() +
                         QDateTime::currentDateTime().toString(QStringLiteral(" yyyy-MM-dd HH.mm.ss"));
    FileTree::makeFolder(aside);
    const auto moved = AtomicFile::moveNew(projectDirectory, aside, stem, {});
    if (moved)
        Log::info(QStringLiteral("Set aside a project that belongs to another picture: ") + *moved);
    else
        Log::error(QStringLiteral("A project that belongs to another picture could not be set aside"),
                   moved.error());
}

} // namespace ProjectSave
