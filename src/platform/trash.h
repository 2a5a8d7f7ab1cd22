#pragma once

#include "base/result.h"

#include <QString>
#include <memory>
#include <stop_token>

// The desktop's Trash. A file goes there in two steps: all that may take long, which changes nothing at its
// place, and the quick rest.
class Trash {
public:
    // A file on its way. What was made ready is gone with this unless it was finished.
    class Move {
    public:
        virtual ~Move() = default;
        // The path that the file has in the Trash now. Called once.
        virtual Result<QString> finish() = 0;
    };

    virtual ~Trash() = default;
    // Copies the file where its volume has no Trash. Callable from any thread.
    virtual Result<std::unique_ptr<Move>> prepare(const QString &path, const std::stop_token &stop) = 0;
    // Moves a file that is in the Trash back to where it was, or beside what has its name now: the path that
    // it has. Callable from any thread.
    virtual Result<QString> takeBack(const QString &trashed, const QString &path,
                                     const std::stop_token &stop) = 0;
};
