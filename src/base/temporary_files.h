#pragma once

#include "base/result.h"

#include <QString>

// Files that other programs are to read while this one runs: what is dragged, shared or copied. They lie in a
// folder of this process alone that nobody else can enter, in the user's runtime directory (or, without one,
// in that for temporary files), and are gone when the program ends.
namespace TemporaryFiles {

// Where a file of that name can be written: in a new folder, so that names never meet. What no name of a file
// can hold is replaced in it. Callable from any thread.
Result<QString> newPath(const QString &name);

// Removes all of them. Called by itself when the program ends in order; folders that a killed one has left
// are removed when the next one makes its own.
void removeAll();

} // namespace TemporaryFiles
