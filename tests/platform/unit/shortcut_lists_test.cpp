#include "platform/desktop/desktop_shortcut_holders.h"

#include <gmock/gmock.h>

namespace {

using testing::Contains;
using testing::IsEmpty;
const Qt::KeyboardModifiers kShiftControl = Qt::ShiftModifier | Qt::ControlModifier;

} // namespace

TEST(ShortcutLists, AreReadInTheNotationOfEachDesktop)
{
    EXPECT_THAT(ShortcutLists::gsettings("org.gnome.shell.keybindings screenshot ['<Shift>Print', '<Super>s']\n"
                                         "org.gnome.shell.keybindings nothing @as []\nbroken"),
                testing::ElementsAre(ListedShortcut{"print", Qt::ShiftModifier, "screenshot"},
                                     ListedShortcut{"s", Qt::MetaModifier, "screenshot"}));
    const QByteArray xfce = "<channel name=\"x\"><property name=\"commands\" type=\"empty\">"
                            "<property name=\"default\" type=\"empty\">"
                            "<property name=\"&lt;Alt&gt;F2\" value=\"xfce4-appfinder --collapsed\"/></property>"
                            "<property name=\"custom\" type=\"empty\"><property name=\"override\" value=\"true\"/>"
                            "<property name=\"&lt;Primary&gt;&lt;Shift&gt;Print\" value=\"xfce4-screenshooter -r\"/>"
                            "</property></property></channel>";
    EXPECT_THAT(ShortcutLists::xfce(xfce),
                testing::ElementsAre(ListedShortcut{"print", kShiftControl, "xfce4-screenshooter"}));
    EXPECT_THAT(ShortcutLists::plasma("[org.kde.spectacle.desktop]\n_k_friendly_name=Spectacle\n"
                                      "_launch=Print\\tMeta+Shift+S,Print,Take a picture\nother=none,none,Other\n"),
                testing::ElementsAre(ListedShortcut{"print", {}, "Take a picture"},
                                     ListedShortcut{"s", Qt::MetaModifier | Qt::ShiftModifier, "Take a picture"}));
    EXPECT_THAT(ShortcutLists::openbox("<o><keyboard><keybind key=\"W-S-c\"><action name=\"Execute\">"
                                       "<command>xterm -e top</command></action></keybind></keyboard></o>"),
                Contains(ListedShortcut{"c", Qt::MetaModifier | Qt::ShiftModifier, "xterm"}));
}

TEST(ShortcutLists, TakeNothingFromBrokenLists)
{
    for (const QByteArray &broken : {QByteArray(), QByteArray("<property"), QByteArray("[\n=,\n=\0,", 8), QByteArray("[a]\n=,\n=+"),
                                     QByteArray("<keybind key=\"\"/>"), QByteArray(100000, '<')}) {
        EXPECT_THAT(ShortcutLists::gsettings(broken), IsEmpty());
        EXPECT_THAT(ShortcutLists::xfce(broken), IsEmpty());
        EXPECT_THAT(ShortcutLists::plasma(broken), IsEmpty());
        EXPECT_THAT(ShortcutLists::openbox(broken), IsEmpty());
    }
}
