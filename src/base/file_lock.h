#pragma once

#include "base/file_handle.h"
#include "base/result.h"

#include <QString>
#include <chrono>

// A lock on a file that is there for nothing else, among all threads and processes. It goes with its holder,
// however that ends, so a killed process leaves none behind. Not recursive.
class FileLock {
public:
    // Makes the file if needed; its folder must be there. Fails with a sentence when another holds it for
    // longer than the patience. Where the file system knows no locks, the lock counts as taken.
    static Result<FileLock> take(const QString &path, std::chrono::milliseconds patience = kPatience);

    // Holders keep it for single writes; this long only means that one of them was stopped.
    static constexpr std::chrono::milliseconds kPatience{5000};

private:
    explicit FileLock(FileHandle handle) : m_handle(std::move(handle)) {}

    FileHandle m_handle;
};
