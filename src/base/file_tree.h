#pragma once

#include <QString>

// Files and folders under the very names that they have, also where those are no text; see FileName. Callable
// from any thread.
namespace FileTree {

// Whether there is anything of that name; a link counts, wherever it leads.
bool exists(const QString &path);
// Whether it is, or leads to, a regular file.
bool isFile(const QString &path);
// Makes a folder, and those above it. False, with the reason in errno, when it isn't there afterwards.
bool makeFolder(const QString &path);
// Removes a folder with all that is in it, or what else has that name.
void remove(const QString &path);

} // namespace FileTree
