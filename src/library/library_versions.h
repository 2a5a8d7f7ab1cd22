#pragma once

#include "base/clock.h"
#include "base/result.h"

#include <QDateTime>
#include <QImage>
#include <QList>
#include <QString>

class Library;
struct ProjectFile;

// An earlier state of a file of the Library.
struct LibraryVersion {
    QString folder; // names it: ".lumenpost/versions/<base>/<milliseconds since 1970>"
    QDateTime date;

    bool operator==(const LibraryVersion &) const = default;
    bool operator<(const LibraryVersion &other) const { return date < other.date; }
};

// What lies in a directory of versions, seen from one of the files that share it: those of another file that
// is there, by the name of the copy in them, are not touched.
struct VersionFolders {
    QList<LibraryVersion> own; // newest first
    bool hasOthers = false;

    static VersionFolders of(const QString &directory, const QString &name, const QString &libraryFolder);
};

// What overwriting one file of the Library would lose: the project that keeps its objects editable, and a
// short history. Holds paths alone, so it can do its work on any thread; make it on the main thread, after
// the last rename of the file.
class FileHistory {
public:
    FileHistory(const Library &library, const QString &path);

    // How many earlier states are kept.
    static constexpr int kLimit = 10;

    // Keeps the present file, and its project if there is one, as a version of time `now`, and drops what
    // exceeds the limit. A missing file has nothing to keep. Failures go to the log.
    void saveVersion(const QDateTime &now) const;
    // Replaces the project: the picture under the objects, and the objects.
    Result<void> saveProject(const QImage &base, const ProjectFile &project) const;
    // Keeps a version, then replaces the file by the finished picture, and its project. However this ends,
    // file and project belong together.
    Result<void> save(const QImage &finished, const QImage &base, const ProjectFile &project,
                      const QDateTime &now) const;
    // Newest first. What isn't named by a number is not a version.
    QList<LibraryVersion> versions() const;
    // Puts a version in the file's place, after keeping the present state as the newest version. False when
    // the version holds no file of this name; nothing changes then.
    bool restore(const LibraryVersion &version, const QDateTime &now) const;

private:
    Result<void> keep(const QDateTime &now) const;
    Result<void> restoreFrom(const QString &version, const QDateTime &now) const;

    QString m_path;
    QString m_projectDirectory;
    QString m_versionsDirectory;
};

// The same for the Library as windows and commands use it: it announces what it changed. Main thread only.
class LibraryVersions {
public:
    LibraryVersions(Library &library, const Clock &clock) : m_library(library), m_clock(clock) {}

    void saveVersion(const QString &path) const;
    Result<void> saveProject(const QImage &base, const ProjectFile &project, const QString &path) const;
    QList<LibraryVersion> versions(const QString &path) const;
    bool restore(const LibraryVersion &version, const QString &path);

private:
    Library &m_library;
    const Clock &m_clock;
};
