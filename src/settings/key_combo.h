#pragma once

#include <QJsonObject>
#include <QString>
#include <optional>

// A shortcut as it is stored: a virtual key code and modifier flags. Which keys the flags mean is told by
// platform/modifier_keys.h.
struct KeyCombo {
    enum Modifier { Command = 0x100, Shift = 0x200, Option = 0x800, Control = 0x1000 };
    // The Print key, in the place of the function key that the numbering has there.
    static constexpr int kPrint = 105;

    int keyCode = 0;
    int carbonModifiers = 0; // flags of Modifier

    bool operator==(const KeyCombo &) const = default;

    // Signs in the order ⌃ ⌥ ⇧ ⌘ and the key's name: "⌃⇧C". A code without a name shows as "Key" and its
    // number.
    QString display() const;
    // The name of a key code alone; empty if it has none.
    static QString keyName(int keyCode);

    QJsonObject toJson() const;
    static std::optional<KeyCombo> fromJson(const QJsonObject &object);
};
