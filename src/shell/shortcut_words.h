#pragma once

#include "settings/key_combo.h"

#include <QString>
#include <optional>

class QKeyEvent;

// A system-wide shortcut as this desktop writes it: "Super+Shift+C". Empty for a combination without a key.
QString shortcutWords(const KeyCombo &combo);
// The name of its key alone: "C", "Space", "Left"; empty if it has none.
QString keyWord(const KeyCombo &combo);

// What a key press would be as a shortcut: the key by what it writes without Shift, or where the layout writes
// something else there, by its place. Nothing for a modifier alone and for keys that shortcuts don't know.
std::optional<KeyCombo> comboOf(const QKeyEvent &event);
