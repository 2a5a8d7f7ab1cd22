#pragma once

#include <QKeySequence>
#include <QString>

// How a shortcut is shown. Shortcuts are stored with signs ("⌃⇧C", "⌘Z"); the desktop's own form is words
// joined by plus signs ("Super+Shift+C"). Which key a sign means is told by platform/modifier_keys.h.

// "⇧⌘Z" gives "Ctrl+Shift+Z"; an empty shortcut gives an empty text. Keys without a sign stay as they are.
QString shortcutText(const QString &stored);

// The same inside a sentence: "⌘Z undoes it." gives "Ctrl+Z undoes it.", "Hold ⇧ to snap" gives "Hold Shift
// to snap". A sign that stands for itself, as in a list of stamps, stays.
QString withShortcutWords(const QString &sentence);

// What Qt binds for it; empty when the key has no equal.
QKeySequence shortcutSequence(const QString &stored);
