#pragma once

#include <QFuture>
#include <QString>
#include <Qt>

// Which other program a system-wide shortcut belongs to, as far as the desktop keeps lists of them.
class ShortcutHolders {
public:
    virtual ~ShortcutHolders() = default;
    // `key` by its English name: "C", "5", "Print", "Space", "F4", "Left"; Meta is the Super key. What the
    // combination does there, in words that can follow "is used by" ("xfce4-screenshooter"); empty when no list
    // names it. Reads the lists on a worker.
    virtual QFuture<QString> holder(const QString &key, Qt::KeyboardModifiers modifiers) const = 0;
    // A sentence on where the user takes a key from the desktop that runs.
    virtual QString howToFree() const = 0;
};
