#pragma once

#include "platform/trash.h"

// The trash that file managers show, by the desktop's trash rules: that of the file's own volume, or the
// user's.
class DesktopTrash : public Trash {
public:
    Result<std::unique_ptr<Move>> prepare(const QString &path, const std::stop_token &stop) override;
    Result<QString> takeBack(const QString &trashed, const QString &path,
                             const std::stop_token &stop) override;
};
