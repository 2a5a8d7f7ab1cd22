#pragma once

#include "platform/x11/x11_raw_events.h"

#include <QtGlobal>
#include <array>
#include <bitset>
#include <optional>

class X11Connection;

// The keyboard as its device tells it, which is heard while another client holds the keyboard too. Every key
// of the session passes here: nothing of them is kept but which keys are down at the moment.
class X11RawKeys {
public:
    struct Press {
        quint8 keycode = 0;
        quint16 modifiers = 0; // held down, without the lock of capitals; from `modifierOf`
        quint32 time = 0;      // that of the key event which a grab gets for the same press
    };

    // The modifier bits that each key sets while it is held.
    void setModifiers(const std::array<quint16, 256> &modifierOf) { m_modifierOf = modifierOf; }
    // Does nothing where the server is too old.
    void listen(const X11Connection &connection);
    void stopListening(const X11Connection &connection);
    // `event` is a generic event of XCB. Nothing for what is no press of a key, or the repeat of one that is
    // held.
    std::optional<Press> read(const void *event);
    // While a grab of ours holds the keyboard, its keys are told to the grab alone.
    void follow(bool isPress, quint8 keycode) { m_down.set(keycode, isPress); }

private:
    std::optional<X11RawEvents> m_events; // while listening
    std::array<quint16, 256> m_modifierOf{};
    std::bitset<256> m_down;
};
