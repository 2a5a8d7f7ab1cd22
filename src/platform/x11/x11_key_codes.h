#pragma once

#include <QtGlobal>
#include <optional>

// Where a key of the program's own numbering (letters, digits and signs of the US layout) is on an X
// keyboard.
struct X11Key {
    quint32 keysym = 0;  // what the key writes; found in the user's layout
    quint8 position = 0; // where the key is on a US keyboard; for layouts that don't write it
    bool operator==(const X11Key &) const = default;
};

std::optional<X11Key> x11Key(int keyCode);
// The other way round, for a key by what it writes without any modifier.
std::optional<int> programKeyCode(quint32 keysym);
