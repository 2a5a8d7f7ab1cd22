#include "diagnostics/diagnostics.h"

#include "base/clock.h"
#include "base/crash_report.h"
#include "base/log.h"
#include "base/notice.h"
#include "diagnostics/private_text.h"
#include "fakes/fake_platform.h"
#include "library/library.h"
#include "settings/app_settings.h"
#include "settings/defaults.h"
#include "support/temporary_folder.h"

#include <QProcess>
#include <QTimeZone>
#include <csignal>
#include <gtest/gtest.h>

namespace {

class DiagnosticsTest : public testing::Test {
protected:
    DiagnosticsTest()
    {
        machine.screens.connected = {{1, "left", QRect(0, 0, 2560, 1440), 2, true}};
        settings.setSaveFolder(home.path("Pictures/Lumenpost"));
        library.ensureDirectory();
        QDir().mkpath(home.path("Desktop"));
        write("state/placeholder", {});
    }
    void write(const QString &name, const QByteArray &bytes)
    {
        QDir().mkpath(QFileInfo(home.path(name)).path());
        QFile file(home.path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    Result<QString> make() { return diagnostics.makeBundle(now).result(); }
    // As another program sees it.
    QString unpacked(const QString &zip) const
    {
        QProcess python;
        python.start("python3", {"-c",
                                 "import sys, zipfile\n"
                                 "z = zipfile.ZipFile(sys.argv[1])\n"
                                 "assert z.testzip() is None\n"
                                 "for n in z.namelist(): print('==', n); print(z.read(n).decode())",
                                 zip});
        python.waitForFinished();
        EXPECT_EQ(python.exitCode(), 0) << python.readAllStandardError().toStdString();
        return QString::fromUtf8(python.readAllStandardOutput());
    }

    TemporaryFolder home;
    FakePlatform machine{home.path()};
    NoticeBoard notices;
    Defaults defaults{QString()};
    AppSettings settings{defaults, machine.secrets, machine.loginItem, machine.paths, notices};
    Clock clock;
    Library library{settings, machine.trash, clock};
    Diagnostics diagnostics{
        {machine.paths, machine.screens, machine.permissions, settings, library}};
    QDateTime now{QDate(2026, 3, 14), QTime(9, 41, 7), Qt::UTC};
};

} // namespace

TEST_F(DiagnosticsTest, PacksLogsReportsAndASummary)
{
    write("state/lumenpost.log", "2026-03-14T09:00:00Z [INFO] Ready for shortcuts\n");
    write("state/last-exception.txt", "CRASH std::bad_alloc: std::bad_alloc");
    for (int i = 1; i <= 7; ++i)
        write(QStringLiteral("state/crash-reports/Lumenpost 2026-03-0%1.txt").arg(i), "Signal 11");
    machine.permissions.statuses = {{Permission::ScreenRecording, PermissionStatus::NotAsked},
                                    {Permission::Microphone, PermissionStatus::NotAsked}};
    const auto made = make();
    ASSERT_TRUE(made) << made.error().message.toStdString();
    EXPECT_EQ(*made, home.path("Desktop/Lumenpost Diagnostics 2026-03-14T09-41-07Z.zip"));
    const QString text = unpacked(*made);
    for (const QString part :
         {"== Lumenpost Diagnostics 2026-03-14T09-41-07Z/lumenpost.log", "[INFO] Ready for shortcuts",
          "CRASH std::bad_alloc", "Displays: 1280×720@2x", "Screen Recording: Not granted",
          "Microphone: Not asked yet", "API key set: false", "Library items: 0"})
        EXPECT_TRUE(text.contains(part)) << part.toStdString() << " in " << text.toStdString();
    EXPECT_FALSE(text.contains("2026-03-02.txt"));
    EXPECT_EQ(text.count("Signal 11"), 5);
    // A second one in the same second takes nothing away from the first.
    const auto second = make();
    ASSERT_TRUE(second);
    EXPECT_NE(*second, *made);
}

TEST_F(DiagnosticsTest, HoldsNothingPrivate)
{
    settings.setApiKey("sk-planted-key");
    settings.setImgurClientID("planted-client");
    write("Pictures/Lumenpost/Divorce papers.png", "x");
    library.catalog().setSource(home.path("Pictures/Lumenpost/Divorce papers.png"), "Planted source");
    library.catalog().setIndexedText(home.path("Pictures/Lumenpost/Divorce papers.png"), "planted words of the page");
    write("state/lumenpost.log",
          QString("2026-03-14T09:00:00Z [INFO] Captured %1/Pictures/Lumenpost/Divorce papers.png\n"
                  "2026-03-14T09:00:01Z [ERROR] A capture could not be named: Salary: of Ada.jpg is taken.\n"
                  "2026-03-14T09:00:02Z [INFO] Kidney scan.heic was restored\n"
                  "2026-03-14T09:00:03Z [ERROR] The service said no: sk-planted-key, planted-client\n"
                  "2026-03-14T09:00:04Z [INFO] Something about divorce papers\n")
              .arg(home.path())
              .toUtf8());
    const auto made = make();
    ASSERT_TRUE(made);
    const QString text = unpacked(*made);
    for (const QString secret : {"Divorce", "divorce", "papers", "Salary", "Ada", "Kidney", "sk-planted-key",
                                 "planted-client", "planted words", "Planted source"})
        EXPECT_FALSE(text.contains(secret)) << secret.toStdString() << " in " << text.toStdString();
    EXPECT_FALSE(text.contains(home.path()));
    EXPECT_TRUE(text.contains("[INFO] Captured <file>.png"));
    EXPECT_TRUE(text.contains("API key set: true"));
}

TEST_F(DiagnosticsTest, SaysWhenThereIsNoPlaceForIt)
{
    QDir(home.path("Desktop")).removeRecursively();
    const auto made = make();
    ASSERT_TRUE(made);
    EXPECT_EQ(QFileInfo(*made).path(), home.path());
}

TEST(PrivateText, TakesOutFilesAndLeavesTheRestReadable)
{
    const PrivateText text({"/home/ada", {"Plan.png", "a.png", "/mnt/Shots/Lumenpost"}, {"s3cret"}});
    const std::pair<const char *, const char *> cases[] = {
        {"2026-03-14T09:00:00Z [INFO] Ready for shortcuts", nullptr},
        {"2026-03-14T09:00:00Z [INFO] Lumenpost 1.0 started on Debian", nullptr},
        {"Not writable: /mnt/Shots/Lumenpost/x", "Not writable: <file>/x"},
        {"2026-03-14T09:00:00Z [ERROR] Couldn't move Trip to X.mov to the Trash: No room.",
         "2026-03-14T09:00:00Z [ERROR] <file>.mov to the Trash: No room."},
        {"2026-03-14T09:00:00Z [ERROR] Not read: /home/ada/a b/c.md (x)",
         "2026-03-14T09:00:00Z [ERROR] Not read: <file>.md (x)"},
        {"the plan of s3cret in /home/ada/other", "the <file> of <secret> in ~/other"},
        {"/usr/bin/lumenpost(+0x4711)[0x55]", nullptr},
    };
    for (const auto &[line, wanted] : cases)
        EXPECT_EQ(text.without(QString::fromUtf8(line)), QString::fromUtf8(wanted ? wanted : line));
}
