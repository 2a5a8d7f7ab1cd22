#pragma once

#include "platform/command_keys.h"

// "bindsym Mod4+Shift+c exec …" lines of sway, and custom keybindings of GNOME by gsettings.
class DesktopCommandKeys : public CommandKeys {
public:
    bool areNeeded() const override;
    QString lines(const QList<CommandKey> &keys) const override;
    bool canSet() const override;
    QFuture<Result<void>> set(const QList<CommandKey> &keys) override;
};
