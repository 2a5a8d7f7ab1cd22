#pragma once

#include "platform/shortcut_holders.h"

#include <optional>

// One shortcut of a desktop's list.
struct ListedShortcut {
    QString key; // lower-cased name of its keysym: "c", "print", "space"
    Qt::KeyboardModifiers modifiers;
    QString holder;
    bool operator==(const ListedShortcut &) const = default;
};

// The lists that desktops keep of their shortcuts, each in its own notation. Entries that can't be read are
// left out.
namespace ShortcutLists {
// "<Primary><Shift>Print" as GNOME and Xfce write it.
std::optional<ListedShortcut> accelerator(const QString &text, const QString &holder);
// The output of `gsettings list-recursively`: "schema key ['<Super>c', …]" a line.
QList<ListedShortcut> gsettings(const QByteArray &output);
// xfce4-keyboard-shortcuts.xml
QList<ListedShortcut> xfce(const QByteArray &xml);
// kglobalshortcutsrc
QList<ListedShortcut> plasma(const QByteArray &ini);
// rc.xml of Openbox
QList<ListedShortcut> openbox(const QByteArray &xml);
} // namespace ShortcutLists

// Reads the lists of the desktop that runs.
class DesktopShortcutHolders : public ShortcutHolders {
public:
    QFuture<QString> holder(const QString &key, Qt::KeyboardModifiers modifiers) const override;
    QString howToFree() const override;
};
