#include "base/atomic_file.h"
#include "base/free_name.h"
#include "support/temporary_folder.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace {

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

TEST(AtomicFile, LeavesTheOldFileWhenTheNewOneCannotBeFilled)
{
    const TemporaryFolder folder;
    ASSERT_TRUE(AtomicFile::write(folder.path("a.json"), "old"));
    const auto failed = AtomicFile::write(folder.path("a.json"), [](QIODevice &device) {
        device.write("half");
        return false;
    });
    EXPECT_FALSE(failed);
    const auto replaced = AtomicFile::replace(
        folder.path("a.json"), [](const QString &) -> Result<void> { return fail("The encoder gave up."); });
    EXPECT_EQ(replaced.error().message, "The encoder gave up.");
    EXPECT_EQ(contents(folder.path("a.json")), "old");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"a.json"});
}

TEST(AtomicFile, NamesTheFileAndTheReasonWhenItCannotWrite)
{
    const auto written = AtomicFile::write("/proc/nowhere/a.json", "x");
    ASSERT_FALSE(written);
    EXPECT_TRUE(written.error().message.startsWith("Couldn't write a.json: "));
}

TEST(FreeName, CountsUpFromTwoPastTakenNames)
{
    const TemporaryFolder folder;
    EXPECT_EQ(freeFilePath(folder.path(), "Shot", "png"), folder.path("Shot.png"));
    ASSERT_TRUE(AtomicFile::write(folder.path("Shot.png"), "1"));
    ASSERT_TRUE(QFile::link("/nowhere", folder.path("Shot 2.png")));
    EXPECT_EQ(freeFilePath(folder.path(), "Shot", "png"), folder.path("Shot 3.png"));
}
