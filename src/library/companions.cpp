#include "library/companions.h"

#include "base/file_lock.h"
#include "base/file_name.h"
#include "base/file_tree.h"
#include "base/log.h"
#include "document/project_save.h"
#include "library/library.h"
#include "library/library_names.h"
#include "library/library_versions.h"

#include <QFileInfo>
#include <algorithm>
#include <optional>

using LibraryNames::baseOf;

namespace {

// The folders of a file whose name is no text are called as it would be in an address.
QString asText(const QString &name)
{
    return name.isValidUtf16() ? name : QString::fromLatin1(FileName::toBytes(name).toPercentEncoding());
}

bool move(const QString &from, const QString &to)
{
    const bool isMoved = QDir().rename(from, to);
    if (!isMoved)
        Log::error(QStringLiteral("%1 could not be moved to %2").arg(from, to));
    return isMoved;
}

// Moves an earlier version into that directory, under its time or the next that is free: its new folder.
std::optional<QString> moveStamp(const LibraryVersion &version, const QString &directory)
{
    qint64 stamp = version.date.toMSecsSinceEpoch();
    const auto target = [&] { return directory + QLatin1Char('/') + QString::number(stamp); };
    while (QFileInfo::exists(target()))
        ++stamp;
    return move(version.folder, target()) ? std::optional(target()) : std::nullopt;
}

} // namespace

Companions::Companions(const QString &folder) : m_folder(folder), m_hidden(hiddenIn(folder)) {}

QString Companions::hiddenIn(const QString &folder)
{
    return QDir(folder).filePath(QStringLiteral(".lumenpost"));
}

QString Companions::projects() const
{
    return m_hidden + QStringLiteral("/projects");
}

bool Companions::isThere(const QString &name) const
{
    return FileTree::exists(QDir(m_folder).filePath(name));
}

bool Companions::hasSiblingImage(const QString &name) const
{
    return std::ranges::any_of(Library::imageExtensions(), [&](const QString &extension) {
        const QString base = baseOf(name) + QLatin1Char('.');
        const QStringList candidates{base + extension, base + extension.toUpper()};
        return std::ranges::any_of(
            candidates, [&](const QString &candidate) { return candidate != name && isThere(candidate); });
    });
}

bool Companions::isProjectOf(const QString &name, const QString &directory) const
{
    const auto owner = ProjectSave::owner(directory);
    return owner ? *owner == name || !isThere(*owner) : !hasSiblingImage(name);
}

QString Companions::projectDirectory(const QString &name) const
{
    // No base name begins with a dot, so this is nobody else's.
    const QString own = projects() + QStringLiteral("/.") + asText(name);
    if (QFileInfo::exists(own))
        return own;
    const QString shared = projects() + QLatin1Char('/') + asText(baseOf(name));
    const auto owner = ProjectSave::owner(shared);
    return owner && *owner != name && isThere(*owner) ? own : shared;
}

QString Companions::versionsDirectory(const QString &name) const
{
    return m_hidden + QStringLiteral("/versions/") + asText(baseOf(name));
}

void Companions::follow(const QString &oldName, const QString &newName) const
{
    moveProject(oldName, newName);
    moveVersions(oldName, newName);
}

void Companions::moveProject(const QString &oldName, const QString &newName) const
{
    if (!QFileInfo::exists(projects()))
        return;
    const auto lock = FileLock::take(ProjectSave::lockFile(projects()));
    const QString from = projectDirectory(oldName);
    if (QFileInfo::exists(from) && isProjectOf(oldName, from)) {
        QString to = projects() + QLatin1Char('/') + asText(baseOf(newName));
        if (QFileInfo::exists(to))
            to = projects() + QStringLiteral("/.") + asText(newName);
        if (QFileInfo::exists(to))
            ProjectSave::setAside(to);
        if (move(from, to))
            ProjectSave::setOwner(to, newName);
    } else if (const QString to = projectDirectory(newName); ProjectSave::owner(to) == oldName) {
        ProjectSave::setOwner(to, newName);
    }
}

void Companions::moveVersions(const QString &oldName, const QString &newName) const
{
    const QString from = versionsDirectory(oldName);
    const QString to = versionsDirectory(newName);
    if (!QFileInfo::exists(from))
        return;
    const VersionFolders folders = VersionFolders::of(from, oldName, m_folder);
    if (!folders.hasOthers && !QFileInfo::exists(to)) {
        move(from, to);
        return;
    }
    QDir().mkpath(to);
    for (const LibraryVersion &version : folders.own)
        moveStamp(version, to);
    QDir().rmdir(from); // if nothing is left
}

namespace {

const QString kAsideProject = QStringLiteral("/project");
const QString kAsideVersions = QStringLiteral("/versions");

// Into that place, or away for good where it has no name.
void drop(const QString &folder, const QString &target)
{
    if (target.isEmpty() || !QDir().rename(folder, target))
        FileTree::remove(folder);
}

} // namespace

bool Companions::hasAny(const QString &name) const
{
    return QFileInfo::exists(projectDirectory(name)) || QFileInfo::exists(versionsDirectory(name));
}

void Companions::setAside(const QString &name, const QString &folder) const
{
    const auto aside = [&folder](const QString &place) {
        return folder.isEmpty() ? QString() : folder + place;
    };
    if (QFileInfo::exists(projects())) {
        const auto lock = FileLock::take(ProjectSave::lockFile(projects()));
        const QString project = projectDirectory(name);
        if (QFileInfo::exists(project) && isProjectOf(name, project))
            drop(project, aside(kAsideProject));
    }
    const QString versions = versionsDirectory(name);
    if (!QFileInfo::exists(versions))
        return;
    const VersionFolders folders = VersionFolders::of(versions, name, m_folder);
    if (!folders.hasOthers)
        return drop(versions, aside(kAsideVersions));
    if (!folder.isEmpty())
        QDir().mkpath(aside(kAsideVersions));
    for (const LibraryVersion &version : folders.own)
        drop(version.folder, aside(kAsideVersions + QLatin1Char('/') + QFileInfo(version.folder).fileName()));
}

void Companions::takeBack(const QString &name, const QString &oldName, const QString &folder) const
{
    if (const QString project = folder + kAsideProject; QFileInfo::exists(project)) {
        QDir().mkpath(projects());
        const auto lock = FileLock::take(ProjectSave::lockFile(projects()));
        QString target = projectDirectory(name);
        if (QFileInfo::exists(target))
            target = projects() + QStringLiteral("/.") + asText(name);
        if (QFileInfo::exists(target))
            ProjectSave::setAside(target);
        if (move(project, target))
            ProjectSave::setOwner(target, name);
    }
    // All of them are this file's, whatever has one of its earlier names by now.
    const QList<LibraryVersion> versions = VersionFolders::of(folder + kAsideVersions, oldName, folder).own;
    const QString target = versionsDirectory(name);
    if (!versions.isEmpty())
        QDir().mkpath(target);
    for (const LibraryVersion &version : versions) {
        const auto stamp = moveStamp(version, target);
        // A version is one of the file that has the name of the copy in it.
        if (stamp && name != oldName && QFileInfo::exists(*stamp + QLatin1Char('/') + oldName))
            move(*stamp + QLatin1Char('/') + oldName, *stamp + QLatin1Char('/') + name);
    }
}
