#pragma once

#include "base/result.h"

#include <QString>
#include <optional>

// What is about to be done to a file of the Library, written down before it begins and removed after its end,
// so that the next start finishes or undoes what a killed process left. Under the catalog's lock.
struct Intent {
    QString name;
    QString newName;   // empty: the file is to go to the Trash
    quint64 inode = 0; // of the file, by which it is known under its new name

    static Result<void> write(const QString &directory, const Intent &intent);
    static std::optional<Intent> read(const QString &directory);
    static void clear(const QString &directory);
    static bool exists(const QString &directory);
};

// 0 if there is no such file.
quint64 inodeOf(const QString &path);
