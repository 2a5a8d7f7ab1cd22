#pragma once

#include <QtGlobal>
#include <optional>

class X11Connection;

// What the input devices themselves tell (raw events of XInput), which is heard whoever has the focus or a
// grab.
class X11RawEvents {
public:
    // Nothing where the server is too old.
    static std::optional<X11RawEvents> of(const X11Connection &connection);

    // Has the connection told the events of an XInput mask from now on, and no others. False when it is
    // refused.
    bool select(const X11Connection &connection, quint32 mask) const;
    // The type of a raw event of XInput; nothing for any other `event` of XCB.
    std::optional<int> typeOf(const void *event) const;

private:
    explicit X11RawEvents(quint8 opcode) : m_opcode(opcode) {}

    quint8 m_opcode;
};
