#pragma once

#include "base/result.h"

#include <QObject>

// System-wide shortcuts. A key is given as the program stores it: a virtual key code (letters, digits and
// signs of the US layout, as listed with KeyCombo) and modifier flags, command 0x100, shift 0x200, option
// 0x800, control 0x1000, which mean the keys that modifier_keys.h tells.
class HotKeys : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    // Fails with Error::Kind::Unavailable when another program has taken the combination or it has no key
    // here.
    virtual Result<void> registerKey(quint32 id, int keyCode, int modifiers) = 0;
    virtual void unregisterAll() = 0;

Q_SIGNALS:
    void pressed(quint32 id);
};
