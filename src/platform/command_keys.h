#pragma once

#include "base/result.h"

#include <QFuture>
#include <QList>
#include <QString>
#include <Qt>

// A key of the desktop's that runs a command of this program.
struct CommandKey {
    QString id;    // of small letters and signs, the same each time
    QString title; // for people
    QString key;   // by its English name: "C", "5", "Print", "Space", "F4"
    Qt::KeyboardModifiers modifiers;
    QString command;
};

// The desktop's own keys that run commands, for desktops that give programs no shortcuts.
class CommandKeys {
public:
    virtual ~CommandKeys() = default;
    virtual bool areNeeded() const { return false; }
    // For the desktop's configuration file; empty where it has none for this.
    virtual QString lines(const QList<CommandKey> &) const { return {}; }
    virtual bool canSet() const { return false; }
    // Puts them into the desktop's settings, over those that were set before; on a worker.
    virtual QFuture<Result<void>> set(const QList<CommandKey> &keys) = 0;
};
