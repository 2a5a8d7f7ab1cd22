#pragma once

#include "platform/input_monitor.h"

#include <memory>

class X11Connection;

// What the keys of the session's keyboard write, in the layout that is in use at the moment.
class X11KeyMap {
public:
    // Error::Kind::Unavailable when the server doesn't tell its layouts.
    static Result<std::unique_ptr<X11KeyMap>> open(const X11Connection &connection);
    virtual ~X11KeyMap() = default;

    // Follows changes of layout and modifiers. `event` is an event of XCB; false when it isn't about them.
    virtual bool read(const void *event) = 0;
    // The key as it would be told now.
    virtual KeyStroke stroke(quint8 keycode) const = 0;
};
