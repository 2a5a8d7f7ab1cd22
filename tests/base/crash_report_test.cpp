#include "base/crash_report.h"

#include "support/temporary_folder.h"

#include <QDir>
#include <QFile>
#include <csignal>
#include <gtest/gtest.h>

TEST(CrashReportDeathTest, IsWrittenAndTheSignalTakesItsCourse)
{
    TemporaryFolder folder;
    const QString reports = CrashReport::folderIn(folder.path());
    EXPECT_EXIT(
        {
            CrashReport::install(reports, QStringLiteral("1.2.3"));
            ::raise(SIGSEGV);
        },
        testing::KilledBySignal(SIGSEGV), "");
    const QStringList names = QDir(reports).entryList(QDir::Files);
    ASSERT_EQ(names.size(), 1);
    QFile file(QDir(reports).filePath(names.first()));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    EXPECT_TRUE(text.startsWith("Lumenpost 1.2.3, session of ")) << text.constData();
    EXPECT_TRUE(text.contains("\nSignal 11 at 0x")) << text.constData();
    EXPECT_GE(text.count('\n'), 4) << text.constData();
}

TEST(CrashReport, KeepsTheNewestTwenty)
{
    TemporaryFolder folder;
    for (int i = 10; i < 35; ++i) {
        QFile file(folder.path(QStringLiteral("Lumenpost 2020-01-%1.txt").arg(i)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    // In a process of its own: the handlers stay for good.
    EXPECT_EXIT(
        {
            CrashReport::install(folder.path(), QStringLiteral("1.2.3"));
            ::_exit(0);
        },
        testing::ExitedWithCode(0), "");
    const QStringList left = QDir(folder.path()).entryList(QDir::Files, QDir::Name);
    ASSERT_EQ(left.size(), 20);
    EXPECT_EQ(left.first(), "Lumenpost 2020-01-15.txt");
}
