#pragma once

#include "base/async.h"
#include "base/file_lock.h"
#include "base/result.h"
#include "library/catalog_files.h"
#include "library/catalog_patch.h"

#include <QFuture>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QUuid>
#include <functional>
#include <memory>
#include <optional>

// What is known of the Library's files beyond themselves: favourites, collections, sources, descriptions,
// recognised texts. Keyed by file name; a path counts as its name. Names may outlive their files.
//
// A change is made on what is then on disk, under a lock that other processes heed, and is stored at once in
// a journal; a worker takes the journal into the JSON files a moment later. A change that can't be stored
// holds for this process, and is tried again with the next one. Main thread only.
class LibraryCatalog : public QObject {
    Q_OBJECT
public:
    // `directory` is the hidden one of the Library; it need not be there.
    explicit LibraryCatalog(const QString &directory, QObject *parent = nullptr);
    ~LibraryCatalog() override;

    // Goes on with another Library.
    void setDirectory(const QString &directory);

    // Reads on a worker what is otherwise read when it is first asked for, and makes wait then.
    void readInBackground();
    bool isRead() const { return m_snapshot.has_value(); }

    // Why less may be known than was stored, if that is so.
    std::optional<Error> problem() const { return snapshot().problem; }
    const LibraryMeta &meta() const { return snapshot().data.meta; }
    bool isFavorite(const QString &name) const;
    // The text that search uses: what was recognised, and the description.
    std::optional<QString> text(const QString &name) const;
    const QHash<QString, StoredText> &textIndex() const { return snapshot().data.texts; }
    bool isInAnyCollection(const QString &name) const;

    void setFavorite(const QString &name, bool on);
    void setIndexedText(const QString &name, const QString &text);
    void setSource(const QString &name, const QString &application);
    void setDescription(const QString &name, const QString &description);
    QUuid createCollection(const QString &name);
    void renameCollection(const QUuid &id, const QString &name);
    void deleteCollection(const QUuid &id);
    void add(const QStringList &names, const QUuid &collection);
    void removeFrom(const QStringList &names, const QUuid &collection);
    void updateMeta(const std::function<void(LibraryMeta &)> &change);

    // Waits until all changes are in the JSON files, or tells why they aren't.
    Result<void> flush();
    // Whether all changes are on disk, in the journal at least.
    Result<void> stored() const
    {
        return m_lastError ? Result<void>(std::unexpected(*m_lastError)) : Result<void>();
    }
    // Looks for what other processes changed, and reads it on a worker.
    void followDisk();
    QStringList jsonPaths() const { return m_files->jsonPaths(); }

    // For changes that go with changes of files: the lock, and the data as it is on disk then. Waits for the
    // files to be read when another program has replaced them. Who needs no data doesn't wait; they are then
    // read afterwards, on a worker.
    enum class Needs { Data, Nothing };
    Result<FileLock> begin(Needs needs = Needs::Data);
    const CatalogData &data() const { return snapshot().data; }
    // With the lock of `begin` held, or with the reason why it isn't.
    void store(const Result<FileLock> &lock, const CatalogPatch &patch);

Q_SIGNALS:
    // What `readInBackground` reads is there.
    void read();
    // Of these files something is known now that wasn't, or no longer.
    void changed(const QStringList &names);
    void collectionsChanged();
    // Some of the last changes came from other processes.
    void changedOutside();

private:
    CatalogFiles::Snapshot &snapshot() const;
    void change(const CatalogPatch &patch);
    void change(const std::function<CatalogPatch(const CatalogData &)> &make);
    void tellOfOthers(const CatalogPatch &news);
    void announce(const CatalogPatch &patch);
    struct Read;
    void takeIn(Read &read);
    static void drop(CatalogData data);
    void scheduleFold();
    void fold();

    std::shared_ptr<CatalogFiles> m_files;
    mutable std::optional<CatalogFiles::Snapshot> m_snapshot; // read at first need
    QFuture<CatalogFiles::Snapshot> m_firstRead;              // by a worker, while that lasts
    QList<CatalogPatch> m_unwritten;
    std::optional<Error> m_lastError;
    QTimer m_foldTimer;
    QFuture<Result<void>> m_fold;
    bool m_isFolding = false; // until its result is taken
    bool m_isReading = false;
};
