#pragma once

#include "base/file_lock.h"
#include "base/result.h"
#include "library/catalog_patch.h"

#include <QString>
#include <array>
#include <mutex>
#include <optional>

// The catalog on disk: "text-index.json", "favorites.json" and "library.json", which are the truth, and
// "changes.jsonl" beside them, a journal of the patches that aren't in them yet, one a line. Storing a patch
// costs the same however much there is; folding takes them into the three files. A patch counts as soon as
// its line is whole, so a crash loses none.
//
// To fold, the journal is renamed to "folding.jsonl", while changes go on in a new one. The three files are
// replaced and the folded journal removed under the lock; a crash in between only means that the same patches
// are applied again.
//
// One process or thread at a time changes anything, under `lock()`. Callable from any thread.
class CatalogFiles {
public:
    // The hidden directory of the Library; need not be there.
    explicit CatalogFiles(QString directory);

    // Tells one state of a file from another.
    struct Mark {
        quint64 inode = 0; // 0: there is no such file
        qint64 size = 0;
        qint64 modified = 0; // nanoseconds since 1970

        bool operator==(const Mark &) const = default;
    };
    using JsonMarks = std::array<Mark, 3>;
    struct Marks {
        JsonMarks json;
        Mark folding;
        Mark journal;

        bool operator==(const Marks &) const = default;
    };
    struct Snapshot {
        CatalogData data;
        Marks marks;                  // what `data` was read from
        std::optional<Error> problem; // why it may be less than what was stored
    };

    Result<FileLock> lock() const;
    // Everything. Takes the lock for a moment.
    Snapshot load() const;
    // The same with the lock held.
    Snapshot loadLocked() const;
    Marks marks() const;
    // Brings a snapshot up to what is on disk, with the lock held. What had changed, the lines that this
    // object appended itself only when they weren't told to this snapshot.
    CatalogPatch refresh(Snapshot &snapshot) const;
    // The same where that is a thing of a moment: after own folds, and for some lines of the journal.
    // Otherwise nothing, and the snapshot is left as it was.
    std::optional<CatalogPatch> catchUp(Snapshot &snapshot) const;
    // Stores a patch, with the lock held, and tells it to the snapshot. One that isn't up to date doesn't
    // become so by this.
    Result<void> append(Snapshot &snapshot, const CatalogPatch &patch) const;
    // Takes the journal into the three files. Takes the lock twice for a moment; the work is done outside.
    // A file that can't be understood is kept beside as "NAME.broken" and replaced.
    Result<void> fold();
    bool hasJournal() const;
    qint64 jsonBytes() const;
    QString directory() const { return m_directory; }
    QStringList jsonPaths() const;

private:
    QString path(const QString &name) const { return m_directory + QLatin1Char('/') + name; }
    Result<void> foldOnce(bool &isOutdated);

    QString m_directory;
    // Folds of this object, by the states before and after, so that `refresh` knows its own work.
    struct Fold {
        JsonMarks before;
        JsonMarks after;
        Mark folded; // the journal that it took in
    };
    mutable std::mutex m_mutex;
    std::optional<Fold> m_lastFold;
};
