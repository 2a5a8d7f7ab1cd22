#include "base/log.h"
#include "support/temporary_folder.h"

#include <QFile>
#include <QRegularExpression>
#include <gtest/gtest.h>

namespace {

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void fillLog(const QString &path, qsizetype bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(bytes, 'x'));
}

} // namespace

TEST(Log, TellsAnUnfinishedSessionAtTheNextStart)
{
    const TemporaryFolder folder;
    Log::setDirectory(folder.path("logs"));
    EXPECT_FALSE(Log::startSession());
    EXPECT_TRUE(QFile::exists(folder.path("logs/.running")));
    EXPECT_TRUE(Log::startSession());
    Log::endSession();
    EXPECT_FALSE(QFile::exists(folder.path("logs/.running")));
    EXPECT_FALSE(Log::startSession());
    Log::endSession();
    const QByteArray log = contents(folder.path("logs/lumenpost.log"));
    EXPECT_EQ(log.count("[ERROR] Previous session ended unexpectedly\n"), 1);
    EXPECT_EQ(log.count("[INFO] Lumenpost quit\n"), 2);
}

TEST(Log, WritesOneLineWithTimeLevelAndText)
{
    const TemporaryFolder folder;
    Log::setDirectory(folder.path());
    Log::error("Capture failed", Error{Error::Kind::NotFound, "That window is no longer available.", {}});
    Log::flush();
    EXPECT_TRUE(QRegularExpression(
                    "^\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\dZ \\[ERROR\\] Capture failed: That window is "
                    "no longer available\\.\n$")
                    .match(contents(folder.path("lumenpost.log")))
                    .hasMatch());
}

TEST(Log, RotatesOnlyPastTwoMillionBytesAndKeepsTwoGenerations)
{
    const TemporaryFolder folder;
    Log::setDirectory(folder.path());
    fillLog(folder.path("lumenpost.log"), 2000000);
    Log::info("stays");
    Log::flush();
    EXPECT_FALSE(QFile::exists(folder.path("lumenpost.1.log")));
    EXPECT_TRUE(contents(folder.path("lumenpost.log")).endsWith("stays\n"));

    fillLog(folder.path("lumenpost.1.log"), 10);
    Log::info("moves on");
    Log::flush();
    EXPECT_GT(QFile(folder.path("lumenpost.1.log")).size(), 2000000);
    EXPECT_TRUE(contents(folder.path("lumenpost.log")).endsWith("[INFO] moves on\n"));
}
