#pragma once

#include "platform/login_item.h"

#include <QString>

// A start entry in the user's autostart folder.
class DesktopLoginItem : public LoginItem {
public:
    // `program` is what the session is to start: a path. By default this program's own.
    explicit DesktopLoginItem(QString program = {});
    bool isEnabled() const override;
    Result<void> setEnabled(bool enabled) override;

private:
    QString entryPath() const;

    QString m_program;
};
