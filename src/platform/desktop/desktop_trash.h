#pragma once

#include "platform/trash.h"

// The trash that file managers show, by the desktop's trash rules: that of the file's own volume, or the
// user's.
class DesktopTrash : public Trash {
public:
    Result<QString> moveToTrash(const QString &path) override;
};
