#pragma once

#include "base/result.h"

#include <QString>
#include <QStringList>

class Library;

// Metadata that a synchronising tool has put beside the program's own because two machines had changed it.
namespace ConflictCopies {

// The names of such files in the hidden directory of a Library, by the marks that the common tools give them.
bool isOne(const QString &name);
QStringList in(const QString &directory);

// Merges what the copies know into the catalog by the rules of an import, and removes those that have been
// taken in. One that can't be understood stays. The number taken in.
Result<int> takeIn(Library &library);

} // namespace ConflictCopies
