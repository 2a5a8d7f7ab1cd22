#pragma once

#include "base/clock.h"
#include "base/result.h"
#include "library/library_meta.h"

#include <QDateTime>
#include <QFuture>
#include <QHash>
#include <QImage>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

class AppSettings;
class Trash;

// A file of the Library, as lists show it.
struct LibraryItem {
    QString path;
    QDateTime date;   // content modification; invalid if it can't be read
    qint64 bytes = 0; // 0 if it can't be read

    bool operator==(const LibraryItem &) const = default;
};

// The store in which every capture ends: one flat folder of ordinary files, and the hidden directory
// ".lumenpost" in it for what the files can't carry. The folder is that of the settings, read afresh by every
// operation; a change of it drops what is cached of the old one, so that nothing of one folder is written
// into another. Metadata is keyed by file name. Operations try and carry on; they tell failure by what they
// return. Main thread only. Paths are absolute.
class Library : public QObject {
    Q_OBJECT
public:
    Library(AppSettings &settings, Trash &trash, const Clock &clock, QObject *parent = nullptr);

    static const QSet<QString> &imageExtensions();
    static const QSet<QString> &videoExtensions();
    static bool isImage(const QString &path);
    static bool isVideo(const QString &path);

    // Store
    QString folder() const;
    void ensureDirectory();
    // Newest first.
    QStringList items() const;
    LibraryItem item(const QString &path) const;
    // A free name in the folder, with the present time in it; nothing is written.
    QString newURL(const QString &prefix, const QString &extension);
    // The same for a capture, in the configured format.
    QString newCaptureURL();
    // Writes a capture in the configured format.
    std::optional<QString> save(const QImage &image);
    // The same with encoding and writing on a worker thread. The name is taken at once: another capture of
    // the same second gets the next one.
    QFuture<Result<QString>> saveInBackground(const QImage &image);
    // The number of files copied in.
    int importFiles(const QStringList &paths);
    // The same for one file: its new path, or its own when it lies in the Library already.
    Result<QString> importFile(const QString &path);
    std::optional<QString> rename(const QString &path, const QString &name);
    void remove(const QString &path);
    bool contains(const QString &path) const;

    // ".lumenpost/projects/<base>" and ".lumenpost/versions/<base>" of a file.
    QString projectDirectory(const QString &path) const;
    QString versionsDirectory(const QString &path) const;

    bool isInICloud() const;
    // Stubs of files that a cloud drive has evicted, by the names of the real files. Nothing can fetch them
    // here.
    QStringList cloudPlaceholders() const;

    // Metadata
    const LibraryMeta &meta() const;
    void updateMeta(const std::function<void(LibraryMeta &)> &change);
    bool isFavorite(const QString &path) const;
    void setFavorite(const QString &path, bool on);
    std::optional<QString> text(const QString &path) const;
    QHash<QString, QString> textIndex() const;
    void setIndexedText(const QString &path, const QString &text);
    void setSource(const QString &path, const QString &application);
    QUuid createCollection(const QString &name);
    void renameCollection(const QUuid &id, const QString &name);
    void deleteCollection(const QUuid &id);
    void add(const QStringList &paths, const QUuid &collection);
    void removeFrom(const QStringList &paths, const QUuid &collection);
    bool isInAnyCollection(const QString &path) const;

    void postChanged() { Q_EMIT changed(); }

Q_SIGNALS:
    void changed();
    void renamed(const QString &oldPath, const QString &newPath);
    void indexing(int done, int total);
    // Files came in whose text nobody has read yet.
    void imported(const QStringList &paths);

private:
    QString hiddenPath(const QString &name) const;
    QHash<QString, QString> &loadedIndex() const;
    QSet<QString> &loadedFavorites() const;
    LibraryMeta &loadedMeta() const;
    void saveHidden(const QString &name, const QJsonDocument &document) const;
    void saveIndex() const;
    void saveFavorites() const;
    void dropCaches();

    QString freePath(const QString &stem, const QString &extension) const;

    AppSettings &m_settings;
    Trash &m_trash;
    const Clock &m_clock;
    QSet<QString> m_beingWritten; // names that a worker fills
    // Read at first need; the empty value stands for a file that is missing or can't be read.
    mutable std::optional<QHash<QString, QString>> m_textIndex;
    mutable std::optional<QSet<QString>> m_favoriteNames;
    mutable std::optional<LibraryMeta> m_metaCache;
};
