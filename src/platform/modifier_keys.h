#pragma once

#include <QChar>
#include <Qt>
#include <array>

// The modifier keys: the one place that tells what each is here. Shortcuts are stored with flags and written
// with signs; wherever they are stored, shown, recorded, registered or listened to, they mean these keys.
struct ModifierKey {
    int flag;                // in stored combinations
    char16_t sign;           // in stored texts
    const char *word;        // on this desktop
    Qt::KeyboardModifier qt; // as the toolkit tells it
};

// In the order in which the signs of one shortcut stand.
inline constexpr std::array<ModifierKey, 4> kModifierKeys{{
    {0x1000, u'⌃', "Super", Qt::MetaModifier},
    {0x800, u'⌥', "Alt", Qt::AltModifier},
    {0x200, u'⇧', "Shift", Qt::ShiftModifier},
    {0x100, u'⌘', "Ctrl", Qt::ControlModifier},
}};

// Null for a sign of another kind.
constexpr const ModifierKey *modifierOfSign(QChar sign)
{
    for (const ModifierKey &key : kModifierKeys) {
        if (sign == QChar(key.sign))
            return &key;
    }
    return nullptr;
}

// The flags of the modifiers that are held, as a combination stores them; and back.
constexpr int modifierFlags(Qt::KeyboardModifiers held)
{
    int flags = 0;
    for (const ModifierKey &key : kModifierKeys)
        flags |= held.testFlag(key.qt) ? key.flag : 0;
    return flags;
}
constexpr Qt::KeyboardModifiers keyboardModifiers(int flags)
{
    Qt::KeyboardModifiers held;
    for (const ModifierKey &key : kModifierKeys)
        held.setFlag(key.qt, (flags & key.flag) != 0);
    return held;
}
