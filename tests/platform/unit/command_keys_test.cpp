#include "platform/desktop/desktop_command_keys.h"
#include "support/temporary_folder.h"

#include <QFile>
#include <QTest>
#include <gtest/gtest.h>

namespace {

const QList<CommandKey> kKeys{
    {"capture", "Lumenpost: it's a capture", "C", Qt::MetaModifier | Qt::ShiftModifier,
     "lumenpost capture region"},
    {"panel", "Lumenpost: panel", "-", Qt::AltModifier, "lumenpost capture panel"},
};

TEST(CommandKeys, AreWrittenAsSwayReadsThem)
{
    const QByteArray before = qgetenv("SWAYSOCK");
    qputenv("SWAYSOCK", "/nowhere");
    EXPECT_EQ(DesktopCommandKeys().lines(kKeys), "bindsym Mod4+Shift+c exec lumenpost capture region\n"
                                                 "bindsym Mod1+minus exec lumenpost capture panel\n");
    qputenv("SWAYSOCK", before);
}

// By a program of that name, which notes what it is told and has a shortcut of the user's and an old one of
// ours.
TEST(CommandKeys, AreSetAmongThoseOfTheUserWhichStay)
{
    const TemporaryFolder folder;
    QFile program(folder.path("gsettings"));
    ASSERT_TRUE(program.open(QFile::WriteOnly));
    program.write("#!/bin/sh\n"
                  "echo \"$@\" >>\"$(dirname \"$0\")/told\"\n"
                  "[ \"$1\" = get ] && echo \"['/org/user/', '/org/gnome/settings-daemon/plugins/media-keys/"
                  "custom-keybindings/lumenpost-old/']\"\n"
                  "exit 0\n");
    program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    program.close();
    const QByteArray before = qgetenv("PATH");
    qputenv("PATH", folder.path().toUtf8() + ':' + before);
    EXPECT_TRUE(DesktopCommandKeys().set(kKeys).result());
    qputenv("PATH", before);
    QFile told(folder.path("told"));
    ASSERT_TRUE(told.open(QFile::ReadOnly));
    const QStringList lines = QString::fromUtf8(told.readAll()).trimmed().split('\n');
    const QString first = "set org.gnome.settings-daemon.plugins.media-keys.custom-keybinding:/org/gnome/"
                          "settings-daemon/plugins/media-keys/custom-keybindings/lumenpost-capture/ ";
    EXPECT_TRUE(lines.contains(first + R"(name 'Lumenpost: it\'s a capture')"));
    EXPECT_TRUE(lines.contains(first + "command 'lumenpost capture region'"));
    EXPECT_TRUE(lines.contains(first + "binding '<Super><Shift>c'"));
    EXPECT_TRUE(lines.last().contains("custom-keybindings ['/org/user/', '"));
    EXPECT_TRUE(lines.last().contains("lumenpost-capture/', '"));
    EXPECT_FALSE(lines.last().contains("lumenpost-old"));
}

} // namespace
