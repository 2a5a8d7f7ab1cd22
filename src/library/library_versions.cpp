#include "library/library_versions.h"

#include "base/atomic_file.h"
#include "base/log.h"
#include "document/project_file.h"
#include "document/project_save.h"
#include "library/library.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <algorithm>

namespace {

const QString kProject = QStringLiteral("project");

bool copyFolder(const QString &from, const QString &to)
{
    if (!QDir().mkpath(to))
        return false;
    const auto entries = QDir(from).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    return std::all_of(entries.begin(), entries.end(), [&to](const QFileInfo &entry) {
        const QString target = to + '/' + entry.fileName();
        return entry.isDir() ? copyFolder(entry.filePath(), target) : QFile::copy(entry.filePath(), target);
    });
}

void removeEntry(const QString &path)
{
    if (QFileInfo(path).isDir())
        QDir(path).removeRecursively();
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

void FileHistory::saveVersion(const QDateTime &now) const
{
    if (!QFileInfo::exists(m_path))
        return;
    ProjectSave::settle(m_path, m_projectDirectory);
    const QString name = QFileInfo(m_path).fileName();
    const QString target = m_versionsDirectory + '/' + QString::number(now.toMSecsSinceEpoch());
    bool kept = QDir().mkpath(target) && QFile::copy(m_path, target + '/' + name);
    if (kept && QFileInfo::exists(m_projectDirectory))
        kept = copyFolder(m_projectDirectory, target + '/' + kProject);
    if (!kept)
        Log::error("Couldn't save a version of " + name);

    const auto all = versions();
    for (qsizetype i = limit; i < all.size(); ++i)
        removeEntry(all[i].folder);
}

Result<void> FileHistory::saveProject(const QImage &base, const ProjectFile &project) const
{
    return ProjectFile::write(m_projectDirectory, base, project);
}

Result<void> FileHistory::save(const QImage &finished, const QImage &base, const ProjectFile &project,
                               const QDateTime &now) const
{
    saveVersion(now);
    return ProjectSave::write(m_path, finished, m_projectDirectory, base, project);
}

QList<LibraryVersion> FileHistory::versions() const
{
    QList<LibraryVersion> found;
    const auto entries =
        QDir(m_versionsDirectory)
            .entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    for (const QFileInfo &entry : entries) {
        if (const auto date = stampDate(entry.fileName()))
            found.append({entry.filePath(), *date});
    }
    std::stable_sort(found.begin(), found.end(),
                     [](const LibraryVersion &a, const LibraryVersion &b) { return a.date > b.date; });
    return found;
}

bool FileHistory::restore(const LibraryVersion &version, const QDateTime &now) const
{
    const QString name = QFileInfo(m_path).fileName();
    const QString source = version.folder + '/' + name;
    if (!QFileInfo::exists(source))
        return false;
    // Keeping the present state may push this very version over the limit: it is taken aside first.
    QTemporaryDir aside(m_versionsDirectory + "/.restoring-XXXXXX");
    const QString file = aside.filePath(name);
    const QString project = aside.filePath(kProject);
    if (!aside.isValid() || !QFile::copy(source, file)) {
        Log::error("Couldn't restore " + name);
        return false;
    }
    const QString oldProject = version.folder + '/' + kProject;
    const bool hasProject = QFileInfo::exists(oldProject) && copyFolder(oldProject, project);

    saveVersion(now);
    const auto replaced = AtomicFile::replace(m_path, [&file](const QString &temporary) -> Result<void> {
        QFile::remove(temporary);
        if (!QFile::copy(file, temporary))
            return fail("The earlier version could not be copied.");
        return {};
    });
    if (!replaced) {
        Log::error("Couldn't restore " + name, replaced.error());
        return false;
    }
    QDir(m_projectDirectory).removeRecursively();
    if (hasProject && QDir().mkpath(QFileInfo(m_projectDirectory).path()))
        copyFolder(project, m_projectDirectory);
    return true;
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
    m_library.postChanged();
    return true;
}
