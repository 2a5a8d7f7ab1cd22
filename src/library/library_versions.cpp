#include "library/library_versions.h"

#include "base/atomic_file.h"
#include "base/file_errors.h"
#include "base/file_tree.h"
#include "base/log.h"
#include "base/scratch_folder.h"
#include "document/draft.h"
#include "document/project_file.h"
#include "document/project_save.h"
#include "library/library.h"
#include "library/library_names.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>

namespace {

const QString kProject = QStringLiteral("project");

Result<void> copyFolder(const QString &from, const QString &to)
{
    if (!QDir().mkpath(to))
        return FileErrors::cannotWrite(to, errno);
    const auto entries = QDir(from).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    for (const QFileInfo &entry : entries) {
        if (Draft::isDraft(entry.fileName()))
            continue; // edits that nobody has saved are of no version
        const QString target = to + QLatin1Char('/') + entry.fileName();
        auto copied =
            entry.isDir() ? copyFolder(entry.filePath(), target) : AtomicFile::copy(entry.filePath(), target);
        if (!copied)
            return copied;
    }
    return {};
}

void removeEntry(const QString &path)
{
    if (QFileInfo(path).isDir())
        FileTree::remove(path);
    else
        QFile::remove(path);
}

// The time that a version's folder is named after.
std::optional<QDateTime> stampDate(const QString &name)
{
    bool parsed = false;
    const double milliseconds = name.toDouble(&parsed);
    if (!parsed || name != name.trimmed() || !std::isfinite(milliseconds) || std::abs(milliseconds) > 1e17)
        return std::nullopt;
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(milliseconds));
}

} // namespace

FileHistory::FileHistory(const Library &library, const QString &path)
    : m_path(path),
      m_projectDirectory(library.projectDirectory(path)),
      m_versionsDirectory(library.versionsDirectory(path))
{}

VersionFolders VersionFolders::of(const QString &directory, const QString &name, const QString &libraryFolder)
{
    VersionFolders found;
    const auto entries =
        QDir(directory).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    for (const QFileInfo &entry : entries) {
        const auto date = stampDate(entry.fileName());
        if (!date)
            continue;
        const QString copy = QDir(entry.filePath()).entryList(QDir::Files | QDir::Hidden).value(0);
        if (!copy.isEmpty() && copy != name && QFileInfo::exists(libraryFolder + QLatin1Char('/') + copy))
            found.hasOthers = true;
        else
            found.own.append({entry.filePath(), *date});
    }
    std::stable_sort(found.own.begin(), found.own.end(),
                     [](const LibraryVersion &a, const LibraryVersion &b) { return a.date > b.date; });
    return found;
}

void FileHistory::saveVersion(const QDateTime &now) const
{
    if (!QFileInfo::exists(m_path))
        return;
    ProjectSave::settle(m_path, m_projectDirectory);
    if (const auto kept = keep(now); !kept)
        Log::error(QStringLiteral("Couldn't save a version of ") + LibraryNames::nameOf(m_path),
                   kept.error());

    const auto all = versions();
    for (qsizetype i = kLimit; i < all.size(); ++i)
        removeEntry(all[i].folder);
}

// The version is made aside, so that one that was cut off is none.
Result<void> FileHistory::keep(const QDateTime &now) const
{
    const QString parent = QFileInfo(m_versionsDirectory).path();
    if (!QDir().mkpath(m_versionsDirectory))
        return FileErrors::cannotWrite(m_versionsDirectory, errno);
    ScratchFolder::clearLeftovers(parent);
    const auto scratch = ScratchFolder::make(parent);
    if (!scratch)
        return std::unexpected(scratch.error());
    const QString made = scratch->filePath(QStringLiteral("version"));
    QDir().mkpath(made);
    if (auto copied = AtomicFile::copy(m_path, made + QLatin1Char('/') + LibraryNames::nameOf(m_path));
        !copied)
        return copied;
    // A project of another state of the file is not part of this one.
    if (QFileInfo::exists(m_projectDirectory) &&
        ProjectSave::belongs(m_path, m_projectDirectory).value_or(true)) {
        if (auto copied = copyFolder(m_projectDirectory, made + QLatin1Char('/') + kProject); !copied)
            return copied;
    }
    const QString target = m_versionsDirectory + QLatin1Char('/') + QString::number(now.toMSecsSinceEpoch());
    if (std::rename(QFile::encodeName(made).constData(), QFile::encodeName(target).constData()) != 0)
        return FileErrors::cannotWrite(target, errno);
    return {};
}

Result<void> FileHistory::saveProject(const QImage &base, const ProjectFile &project) const
{
    return ProjectSave::writeProject(m_path, m_projectDirectory, base, project);
}

Result<void> FileHistory::save(const QImage &finished, const QImage &base, const ProjectFile &project,
                               const QDateTime &now) const
{
    saveVersion(now);
    return ProjectSave::write(m_path, finished, m_projectDirectory, base, project);
}

QList<LibraryVersion> FileHistory::versions() const
{
    return VersionFolders::of(m_versionsDirectory, LibraryNames::nameOf(m_path), QFileInfo(m_path).path())
        .own;
}

bool FileHistory::restore(const LibraryVersion &version, const QDateTime &now) const
{
    const QString name = LibraryNames::nameOf(m_path);
    const QString source = version.folder + QLatin1Char('/') + name;
    if (!QFileInfo::exists(source))
        return false;
    const auto restored = restoreFrom(version.folder, now);
    if (!restored)
        Log::error(QStringLiteral("Couldn't restore ") + name, restored.error());
    return restored.has_value();
}

Result<void> FileHistory::restoreFrom(const QString &version, const QDateTime &now) const
{
    // Keeping the present state may push this very version over the limit: it is taken aside first.
    const auto scratch = ScratchFolder::make(QFileInfo(m_versionsDirectory).path());
    if (!scratch)
        return std::unexpected(scratch.error());
    const QString name = LibraryNames::nameOf(m_path);
    const QString file = scratch->filePath(QStringLiteral("file"));
    if (auto copied = AtomicFile::copy(version + QLatin1Char('/') + name, file); !copied)
        return copied;
    const QString oldProject = version + QLatin1Char('/') + kProject;
    QString project;
    if (QFileInfo::exists(oldProject)) {
        project = scratch->filePath(kProject);
        if (auto copied = copyFolder(oldProject, project); !copied)
            return copied;
    }
    saveVersion(now);
    return ProjectSave::put(m_path, file, m_projectDirectory, project);
}

void LibraryVersions::saveVersion(const QString &path) const
{
    FileHistory(m_library, path).saveVersion(m_clock.now());
}

Result<void> LibraryVersions::saveProject(const QImage &base, const ProjectFile &project,
                                          const QString &path) const
{
    return FileHistory(m_library, path).saveProject(base, project);
}

QList<LibraryVersion> LibraryVersions::versions(const QString &path) const
{
    return FileHistory(m_library, path).versions();
}

bool LibraryVersions::restore(const LibraryVersion &version, const QString &path)
{
    if (!FileHistory(m_library, path).restore(version, m_clock.now()))
        return false;
    Log::info("Restored " + QFileInfo(path).fileName() + " to version from " +
              version.date.toString(Qt::ISODate));
    m_library.postChanged(path);
    return true;
}
