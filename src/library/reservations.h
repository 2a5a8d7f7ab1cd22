#pragma once

#include "library/library.h"

#include <QSet>
#include <mutex>

// The paths that workers are about to fill, so that nobody else is given them.
struct Library::Reservations {
    QSet<QString> all()
    {
        const std::lock_guard guard(mutex);
        return paths;
    }
    void add(const QString &path)
    {
        const std::lock_guard guard(mutex);
        paths.insert(path);
    }
    void remove(const QString &path)
    {
        const std::lock_guard guard(mutex);
        paths.remove(path);
    }

    std::mutex mutex;
    QSet<QString> paths;
};
