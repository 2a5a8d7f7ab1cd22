#pragma once

#include "base/result.h"

#include <QString>

// The desktop's Trash.
class Trash {
public:
    virtual ~Trash() = default;
    // The path that the file has in the Trash now.
    virtual Result<QString> moveToTrash(const QString &path) = 0;
};
