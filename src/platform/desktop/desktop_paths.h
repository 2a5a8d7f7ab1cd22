#pragma once

#include "platform/paths.h"

// The folders of the desktop's base-directory rules and the user's own choice of well-known ones.
class DesktopPaths : public Paths {
public:
    QString home() const override;
    QString pictures() const override;
    QString desktop() const override;
    QString temporary() const override;
    QString config() const override;
    QString state() const override;
    QString cache() const override;
};
