#pragma once

#include "library/ui/library_actions.h"

// The sheets of the Library window for what happens to many captures. Each closes by itself and tells the
// model then.
namespace LibrarySheets {

// Opens the one over its window. The actions outlive it.
void open(const LibraryPorts &ports, LibraryActions &actions, QWidget *window, const LibrarySheet &sheet);

} // namespace LibrarySheets
