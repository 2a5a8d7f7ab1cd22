#pragma once

#include "platform/hot_keys.h"
#include "platform/x11/x11_raw_keys.h"

#include <QList>
#include <memory>

class QSocketNotifier;
class X11Connection;

// Grabs of keys on the root window, over a connection of its own that the event loop listens to.
//
// An open menu holds the keyboard, and a grab gets nothing then; but a picture of an open menu is what one
// may want. While a menu of any program, or our selection overlay, is open, our combinations are therefore
// taken from the raw keys too. Who else holds
// the keyboard, as a screen lock or a viewer of another machine, means all keys and keeps them.
class X11HotKeys : public HotKeys {
    Q_OBJECT
public:
    X11HotKeys();
    ~X11HotKeys() override;
    Result<void> registerKey(quint32 id, int keyCode, int modifiers) override;
    void unregisterAll() override;

private:
    struct Registered {
        quint32 id = 0;
        int keyCode = 0;
        int modifiers = 0;
        quint8 keycode = 0;     // of the X keyboard
        quint16 xModifiers = 0; // without locks
    };

    Result<void> connectToServer();
    void readEvents();
    void fire(quint8 keycode, quint16 modifiers, quint32 time);
    const Registered *find(quint8 keycode, quint16 modifiers) const;
    void handleKey(bool isPress, quint8 keycode, quint16 state, quint32 time);
    void learnKeyboard();
    quint8 keycodeFor(int keyCode) const;
    quint16 xModifiers(int modifiers) const;
    QList<quint16> withLocks(quint16 modifiers) const;
    Result<void> grab(const Registered &key);
    void release(const Registered &key);
    void grabAgain();

    std::unique_ptr<X11Connection> m_connection;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QList<Registered> m_registered;
    QList<quint32> m_keysyms; // of all keycodes, m_keysymsPerKeycode each
    int m_keysymsPerKeycode = 0;
    quint16 m_alt = 0; // the modifier bits of this keyboard
    quint16 m_super = 0;
    quint16 m_numLock = 0;
    struct KeyEvent {
        quint8 keycode = 0;
        quint32 time = 0;
        bool operator==(const KeyEvent &) const = default;
    };
    X11RawKeys m_rawKeys;
    KeyEvent m_lastFired;   // which comes twice where both ways are open
    KeyEvent m_lastRelease; // a key that repeats is released and pressed at the same time
};
