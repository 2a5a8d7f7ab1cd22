#pragma once

#include "base/result.h"

#include "library/catalog_patch.h"

#include <QString>
#include <QStringList>

class Library;

// Metadata that a synchronising tool has put beside the program's own because two machines had changed it.
namespace ConflictCopies {

// The names of such files in the hidden directory of a Library, by the marks that the common tools give them.
bool isOne(const QString &name);
QStringList in(const QString &directory);

// What the copies of a directory know together. One that can't be understood stays, and is left out. Callable
// from any thread.
struct Copies {
    QStringList names;
    CatalogData data;
};
Copies read(const QString &directory);
// Merges them into the catalog by the rules of an import, and removes those that have been taken in once what
// they knew is stored. The number taken in. Main thread only.
Result<int> takeIn(Library &library, const Copies &copies);

} // namespace ConflictCopies
