#pragma once

#include "base/async.h"
#include "base/clock.h"
#include "base/result.h"
#include "library/folder_watch.h"
#include "library/library_catalog.h"
#include "library/removed_captures.h"
#include "platform/trash.h"

#include <QDateTime>
#include <QFileSystemWatcher>
#include <QFuture>
#include <QImage>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <stop_token>

class AppSettings;

// A file of the Library, as lists show it.
struct LibraryItem {
    QString path;
    QDateTime date;   // content modification; invalid if it can't be read
    qint64 bytes = 0; // 0 if it can't be read

    bool operator==(const LibraryItem &) const = default;
};

// The store in which every capture ends: one flat folder of ordinary files, and the hidden directory
// ".lumenpost" in it for what the files can't carry. The folder is that of the settings, read afresh by every
// operation. Names are claimed so that no other process or program loses a file to them. What is known of the
// files is in `catalog()`. Main thread only. Paths are absolute.
class Library : public QObject {
    Q_OBJECT
public:
    // Finishes or undoes what a killed process left half done in the folder.
    Library(AppSettings &settings, Trash &trash, const Clock &clock, QObject *parent = nullptr);
    ~Library() override;

    static const QSet<QString> &imageExtensions();
    static const QSet<QString> &videoExtensions();
    static bool isImage(const QString &path);
    static bool isVideo(const QString &path);
    // Whether a file of that name belongs to it.
    static bool isOfLibrary(const QString &name);

    LibraryCatalog &catalog() { return m_catalog; }
    const LibraryCatalog &catalog() const { return m_catalog; }

    QString folder() const;
    void ensureDirectory();
    // Newest first.
    QStringList items() const;
    // The paths of the newest so many of a listing. For any thread.
    static QStringList newest(const FolderWatch::Listing &files, const QString &folder,
                              qsizetype most = std::numeric_limits<qsizetype>::max());
    // The files as a worker lists them; while the folder is watched, as the last look found them.
    void whenListed(QObject *owner, std::function<void(const FolderWatch::Listing &)> callback) const;
    LibraryItem item(const QString &path) const;
    // A free name in the folder, with the present time in it; nothing is written. For what can't wait for its
    // name until it is written.
    QString newPath(const QString &prefix, const QString &extension);
    // Writes a capture in the configured format, or as PNG where that format can't hold it. Encoding and
    // writing run on a worker, which ends the future: it can be waited for without an event loop. The capture
    // has the name of its moment; one that another process takes meanwhile is passed over.
    QFuture<Result<QString>> saveInBackground(const QImage &image);
    // What became of one of several files.
    struct Outcome {
        QString path;           // as it was given
        Result<QString> result; // where it is now

        static int countOf(const QList<Outcome> &outcomes); // of those that worked
        static std::optional<Error> firstFailure(const QList<Outcome> &outcomes);
    };
    // Copies files in, one after the other on workers, and tells of each when it is there. What lies in the
    // Library already is passed over.
    QFuture<QList<Outcome>> importInBackground(const QStringList &paths);
    // Copies one file in: its new path, or its own when it lies in the Library already. It keeps its dates.
    Result<QString> importFile(const QString &path);
    // The new path. The name is cleaned, and numbered when it is taken; the extension stays.
    Result<QString> rename(const QString &path, const QString &name);
    // Moves a file to the Trash and forgets it: its path there. One that can't go there stays, with all that
    // belongs to it.
    Result<QString> remove(const QString &path);
    // The same for many, one after the other. What may take long runs on workers, while nothing is locked.
    QFuture<QList<Outcome>> removeInBackground(const QStringList &paths);
    // Has files back that `removeInBackground` moved to the Trash lately, with all that was known of them and
    // belonged to them; by their paths there.
    QFuture<QList<Outcome>> putBackInBackground(const QStringList &trashed);
    // Cuts short what workers copy, for the end of the program.
    void stopCopying();
    // Whether a path is that of a file that can be of the Library. It need not be there.
    bool contains(const QString &path) const;

    // As Companions says; empty for what isn't of the Library.
    QString projectDirectory(const QString &path) const;
    QString versionsDirectory(const QString &path) const;

    bool isInICloud() const;
    // Stubs of files that a cloud drive has evicted, by the names of the real files. Nothing can fetch them
    // here.
    QStringList cloudPlaceholders() const;

    // From now on what other programs do in the folder is told, and leftovers of killed ones are cleared.
    void watch();
    // This program has written the file by other ways.
    void postChanged(const QString &path = {});

Q_SIGNALS:
    // Something changed, in files or catalog. The signals below say what, and come before it.
    void changed();
    void added(const QStringList &paths);
    void removed(const QStringList &paths);
    void modified(const QStringList &paths);
    void renamed(const QString &oldPath, const QString &newPath);
    void indexing(int done, int total);
    // Files came in whose text nobody has read yet.
    void imported(const QStringList &paths);
    // Something began that quitting should wait for. Cut off, it loses nothing.
    void working(const QString &what, const QFuture<void> &work);

private:
    struct Reservations;
    using Outcomes = QPromise<QList<Outcome>>;

    QString inFolder(const QString &name) const;
    void know(const QStringList &names);
    void followFolder();
    void watchCatalog();
    void takeInCopies();

    std::function<Result<QString>()> copyOf(const QString &path);
    Task<> importEach(QStringList paths, std::shared_ptr<Outcomes> outcomes);
    Task<> removeEach(QStringList paths, std::shared_ptr<Outcomes> outcomes);
    Task<> putBackEach(QStringList trashed, std::shared_ptr<Outcomes> outcomes);
    Result<QString> finishPuttingBack(const RemovedCaptures::Capture &capture, Result<QString> back);

    // Renaming and removing in steps: what is done to the files, then what follows for the rest.
    void recover();
    enum class Undo { None, Possible };
    Result<QString> finishTrashing(const QString &path, Result<std::unique_ptr<Trash::Move>> move, Undo undo);
    void finishRename(const Result<FileLock> &lock, const QString &oldName, const QString &newName);
    void finishRemove(const Result<FileLock> &lock, const QString &name, const QString &aside = {});

    AppSettings &m_settings;
    Trash &m_trash;
    const Clock &m_clock;
    LibraryCatalog m_catalog;
    std::shared_ptr<Reservations> m_reservations; // names that workers fill
    enum class TakingIn { Idle, Running, AgainAfterwards };
    TakingIn m_takingIn = TakingIn::Idle; // what another machine wrote
    RemovedCaptures m_removed;
    std::stop_source m_stop; // of what workers copy
    std::unique_ptr<FolderWatch> m_watch;
    std::unique_ptr<QFileSystemWatcher> m_catalogWatch;
};
