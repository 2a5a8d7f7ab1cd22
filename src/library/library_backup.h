#pragma once

#include "base/result.h"
#include "library/catalog_patch.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

class Library;

// All that a Library knows of its files beyond themselves, in one readable file, and back again.
namespace LibraryBackup {

struct Contents {
    QDateTime created;
    CatalogData data;

    bool operator==(const Contents &) const = default;
};
// Indented, keys sorted, dates as ISO 8601.
QByteArray toJson(const Contents &contents);
// Strict: a file of another version or kind fails with a sentence that names it so.
Result<Contents> read(const QString &path);

// How many things an import found that weren't known.
struct News {
    int favorites = 0;
    int collections = 0; // new ones
    int texts = 0;
    int sources = 0;
    int descriptions = 0;
};
// What both know: what is present is never overwritten. Collections of one id are one, with the present name
// and the present files first.
CatalogData merged(const CatalogData &present, const CatalogData &other);
News newsOf(const CatalogData &present, const CatalogData &merged);

Result<void> exportData(const Library &library, const QString &path, const QDateTime &now);
// Merges what the file knows into the catalog. A failure leaves everything as it was.
Result<News> importData(Library &library, const QString &path);

// How many daily backups are kept.
constexpr int kLimit = 7;
// Writes the backup of the day beside the metadata, unless there is one, and drops the oldest by name beyond
// the limit. The work is done on a worker, from what is known now; failures go to the log. Main thread only.
void autoBackup(Library &library, const QDateTime &now);
// The same at once, and on any thread.
void backUp(const CatalogData &data, const QString &backups, const QDateTime &now);

} // namespace LibraryBackup
