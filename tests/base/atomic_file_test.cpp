#include "base/atomic_file.h"

#include "base/file_lock.h"
#include "base/file_name.h"
#include "base/free_name.h"
#include "base/scratch_folder.h"
#include "support/printers.h"
#include "support/temporary_folder.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>
#include <QTemporaryDir>
#include <QtConcurrentMap>
#include <cstring>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace {

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList everythingIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

mode_t modeOf(const QString &path)
{
    struct stat state = {};
    EXPECT_EQ(stat(QFile::encodeName(path).constData(), &state), 0);
    return state.st_mode & 07777;
}

// No file may grow beyond so many bytes while this lives.
class SizeLimit {
public:
    explicit SizeLimit(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SizeLimit() { setrlimit(RLIMIT_FSIZE, &m_before); }

private:
    rlimit m_before{};
};

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
    const auto forgotten =
        AtomicFile::replace(folder.path("a.json"), [](const QString &) -> Result<void> { return {}; });
    EXPECT_FALSE(forgotten) << "the encoder wrote no file";
    EXPECT_EQ(contents(folder.path("a.json")), "old");
    EXPECT_EQ(everythingIn(folder.path()), QStringList{"a.json"});
}

TEST(AtomicFile, LeavesTheOldFileWhenThereIsNoRoomForTheNewOne)
{
    const TemporaryFolder folder;
    const QString path = folder.path("a.png");
    ASSERT_TRUE(AtomicFile::write(path, "old"));
    for (const rlim_t room : {0, 10, 5000}) {
        const SizeLimit limit(room);
        const QByteArray bytes(20'000, 'x');
        const auto written = AtomicFile::write(path, bytes);
        ASSERT_FALSE(written);
        EXPECT_EQ(written.error().message,
                  "Couldn't write a.png: the file would be larger than is allowed here.");
        // Encoders overlook that a device took less than they gave it.
        EXPECT_FALSE(AtomicFile::write(path, [&](QIODevice &device) { return device.write(bytes) != 0; }));
        EXPECT_FALSE(AtomicFile::writeNew(folder.path(), "b", "png", bytes));
        EXPECT_FALSE(AtomicFile::replace(
            path, [&](const QString &temporary) { return AtomicFile::write(temporary, bytes); }));
    }
    EXPECT_EQ(contents(path), "old");
    EXPECT_EQ(everythingIn(folder.path()), QStringList{"a.png"});
}

TEST(AtomicFile, NamesTheFileAndTheReasonWhenItCannotWrite)
{
    EXPECT_EQ(AtomicFile::write("/proc/nowhere/a.json", "x").error().message,
              "Couldn't write a.json: there is no such folder.");
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo(QFile::encodeName(folder.path("pipe")).constData(), 0600), 0);
    ASSERT_TRUE(QDir().mkpath(folder.path("inner")));
    ASSERT_TRUE(QFile::link(folder.path("pipe"), folder.path("link")));
    for (const char *name : {"pipe", "inner", "link"}) {
        EXPECT_FALSE(AtomicFile::write(folder.path(name), "x")) << name;
        EXPECT_FALSE(AtomicFile::copyNew(folder.path(name), folder.path(), "copy", "png")) << name;
    }
    EXPECT_EQ(everythingIn(folder.path()), (QStringList{"inner", "link", "pipe"}));
}

TEST(AtomicFile, KeepsTheModeOfWhatItReplacesAndFollowsTheUmaskForWhatIsNew)
{
    const TemporaryFolder folder;
    const mode_t before = umask(027);
    ASSERT_TRUE(AtomicFile::write(folder.path("new"), "x"));
    EXPECT_EQ(modeOf(folder.path("new")), 0640u);
    const auto filled = [](const QString &temporary) { return AtomicFile::write(temporary, "y"); };
    ASSERT_TRUE(AtomicFile::replace(folder.path("made"), filled));
    EXPECT_EQ(modeOf(folder.path("made")), 0640u);
    for (const mode_t mode : {0600u, 0644u, 0664u, 02775u}) {
        ASSERT_EQ(chmod(QFile::encodeName(folder.path("new")).constData(), mode), 0);
        ASSERT_TRUE(AtomicFile::write(folder.path("new"), "x"));
        EXPECT_EQ(modeOf(folder.path("new")), mode);
        ASSERT_TRUE(AtomicFile::replace(folder.path("new"), filled));
        EXPECT_EQ(modeOf(folder.path("new")), mode);
    }
    for (const mode_t mode : {0600u, 0400u, 0700u}) {
        ASSERT_EQ(chmod(QFile::encodeName(folder.path("new")).constData(), mode), 0);
        EXPECT_EQ(modeOf(*AtomicFile::copyNew(folder.path("new"), folder.path(), "private", "")), mode);
    }
    // What is private from its first byte stays so, over what others could read too.
    for (const mode_t old : {0u, 0644u}) {
        if (old)
            ASSERT_EQ(chmod(QFile::encodeName(folder.path("key")).constData(), old), 0);
        ASSERT_TRUE(AtomicFile::writePrivately(folder.path("key"), "x"));
        EXPECT_EQ(modeOf(folder.path("key")), 0600u);
    }
    umask(before);
}

TEST(AtomicFile, WritesThroughALinkAndKeepsIt)
{
    const TemporaryFolder folder;
    ASSERT_TRUE(AtomicFile::write(folder.path("real"), "old"));
    ASSERT_TRUE(QFile::link(folder.path("real"), folder.path("link")));
    ASSERT_TRUE(AtomicFile::write(folder.path("link"), "new"));
    EXPECT_EQ(contents(folder.path("real")), "new");
    EXPECT_TRUE(QFileInfo(folder.path("link")).isSymLink());
    ASSERT_TRUE(QFile::link("link", folder.path("near"))); // beside it, wherever this program stands
    ASSERT_TRUE(AtomicFile::write(folder.path("near"), "newer"));
    EXPECT_EQ(contents(folder.path("real")), "newer");
    EXPECT_EQ(everythingIn(folder.path()).size(), 3);
}

TEST(AtomicFile, RemembersTheFirstFailureOfADevice)
{
    const TemporaryFolder folder;
    ASSERT_TRUE(AtomicFile::write(folder.path("a"), "old"));
    EXPECT_FALSE(AtomicFile::write(folder.path("a"), [](QIODevice &device) {
        {
            const SizeLimit limit(10);
            device.write(QByteArray(100, 'x'));
        }
        device.write("the rest"); // there is room again, but something is missing
        return true;
    }));
    EXPECT_EQ(contents(folder.path("a")), "old");
}

TEST(AtomicFile, KeepsWhatCouldNotBeMovedToAnotherFileSystem)
{
    const QTemporaryDir elsewhere("/dev/shm/lumenpost-test-XXXXXX");
    const TemporaryFolder folder;
    if (!elsewhere.isValid() || QStorageInfo(elsewhere.path()) == QStorageInfo(folder.path()))
        GTEST_SKIP() << "there is one file system alone";
    const QString source = elsewhere.filePath("a");
    ASSERT_TRUE(AtomicFile::write(source, QByteArray(5000, 'x')));
    ASSERT_TRUE(AtomicFile::write(folder.path("a"), "old"));
    {
        const SizeLimit limit(10);
        EXPECT_FALSE(AtomicFile::moveOver(source, folder.path("a")));
    }
    EXPECT_EQ(contents(source).size(), 5000);
    EXPECT_EQ(contents(folder.path("a")), "old");
    EXPECT_TRUE(AtomicFile::moveOver(source, folder.path("a")));
    EXPECT_FALSE(QFile::exists(source));
    EXPECT_EQ(contents(folder.path("a")).size(), 5000);
}

TEST(AtomicFile, WritesUnderANameThatIsNoText)
{
    const TemporaryFolder folder;
    const QByteArray name = QFile::encodeName(folder.path("caf")) + "\xE9.png";
    for (const char *bytes : {"new", "replaced"}) {
        ASSERT_TRUE(AtomicFile::write(FileName::fromBytes(name), bytes));
        const int file = ::open(name.constData(), O_RDONLY);
        ASSERT_GE(file, 0) << "no other name, though success is told";
        char read[16] = {};
        EXPECT_EQ(::read(file, read, sizeof read), ssize_t(strlen(bytes)));
        EXPECT_STREQ(read, bytes);
        ::close(file);
    }
}

TEST(AtomicFile, KeepsTheDatesOfACopy)
{
    const TemporaryFolder folder;
    ASSERT_TRUE(AtomicFile::write(folder.path("a"), QByteArray(3'000'000, 'x')));
    const QDateTime date = QDateTime::fromMSecsSinceEpoch(1'600'000'000'000);
    QFile file(folder.path("a"));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.setFileTime(date, QFile::FileModificationTime));
    file.close();
    const auto copy = AtomicFile::copyNew(folder.path("a"), folder.path(), "b", "");
    ASSERT_TRUE(copy);
    EXPECT_EQ(QFileInfo(*copy).lastModified(), date);
    EXPECT_EQ(contents(*copy), contents(folder.path("a")));
}

TEST(AtomicFile, CopiesNothingThatIsNoFileAndNothingWhenStopped)
{
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo(QFile::encodeName(folder.path("pipe")).constData(), 0600), 0);
    EXPECT_EQ(AtomicFile::copyNew(folder.path("pipe"), folder.path(), "b", "").error().message,
              "pipe is no regular file.");
    ASSERT_TRUE(AtomicFile::write(folder.path("a"), "x"));
    const QTemporaryDir memory("/dev/shm/copyXXXXXX"); // where no blocks can be shared in a moment
    if (!memory.isValid())
        GTEST_SKIP() << "there is no file system in memory";
    std::stop_source stop;
    stop.request_stop();
    const auto copy = AtomicFile::copyNew(folder.path("a"), memory.path(), "a", "", {}, stop.get_token());
    EXPECT_TRUE(!copy && copy.error().isCancelled());
    EXPECT_EQ(everythingIn(memory.path()), QStringList());
}

TEST(AtomicFile, GivesEachOfManyWritersANameOfItsOwn)
{
    const TemporaryFolder folder;
    QList<int> writers(60);
    std::iota(writers.begin(), writers.end(), 0);
    const auto paths = QtConcurrent::blockingMapped(writers, [&folder](int i) {
        const QByteArray bytes = QByteArray::number(i);
        if (i % 3 == 0)
            return *AtomicFile::writeNew(folder.path(), "Shot", "png", bytes);
        const QString source = folder.path(".source" + QString::number(i));
        EXPECT_TRUE(AtomicFile::write(source, bytes));
        return i % 3 == 1 ? *AtomicFile::copyNew(source, folder.path(), "Shot", "png")
                          : *AtomicFile::moveNew(source, folder.path(), "Shot", "png");
    });
    for (int i = 0; i < 60; ++i)
        EXPECT_EQ(contents(paths[i]), QByteArray::number(i));
    EXPECT_EQ(QDir(folder.path()).entryList({"Shot*"}).size(), 60);
}

TEST(ScratchFolder, ClearsOnlyWhatNobodyHolds)
{
    const TemporaryFolder folder;
    const auto held = ScratchFolder::make(folder.path());
    ASSERT_TRUE(held);
    ASSERT_TRUE(AtomicFile::write(held->filePath("a"), "x"));
    ASSERT_TRUE(QDir().mkpath(folder.path(".lumenpost-dead01/inner")));
    ASSERT_TRUE(AtomicFile::write(folder.path(".lumenpost-dead02.png"), "x"));
    ASSERT_TRUE(AtomicFile::write(folder.path(".lumenpost-busy"), "x"));
    ASSERT_TRUE(AtomicFile::write(folder.path(".other"), "x"));
    const FileHandle busy(::open(QFile::encodeName(folder.path(".lumenpost-busy")).constData(), O_RDONLY));
    ASSERT_EQ(flock(busy.number(), LOCK_EX), 0);
    ScratchFolder::clearLeftovers(folder.path());
    EXPECT_EQ(contents(held->filePath("a")), "x");
    EXPECT_EQ(everythingIn(folder.path()).size(), 3);
    EXPECT_TRUE(QFile::exists(folder.path(".other")));
    EXPECT_TRUE(QFile::exists(folder.path(".lumenpost-busy")));
}

TEST(ScratchFolder, TakesNoFileForALeftoverThatIsJustBeingWritten)
{
    const TemporaryFolder folder;
    const std::jthread clearing([&](const std::stop_token &stop) {
        while (!stop.stop_requested())
            ScratchFolder::clearLeftovers(folder.path());
    });
    for (int i = 0; i < 3000; ++i) {
        const auto written = AtomicFile::write(folder.path("a"), "x", AtomicFile::Keep::Reproducible);
        ASSERT_TRUE(written) << i << ": " << written.error().message.toStdString();
    }
}

TEST(FileLock, IsHeldByOneAndFreedByItsEnd)
{
    const TemporaryFolder folder;
    {
        const auto first = FileLock::take(folder.path("lock"));
        ASSERT_TRUE(first);
        EXPECT_FALSE(FileLock::take(folder.path("lock"), std::chrono::milliseconds(0)));
    }
    EXPECT_TRUE(FileLock::take(folder.path("lock"), std::chrono::milliseconds(0)));
    EXPECT_FALSE(FileLock::take(folder.path("missing/lock")));
}

TEST(FreeName, CountsUpFromTwoPastTakenNames)
{
    const TemporaryFolder folder;
    EXPECT_EQ(freeFilePath(folder.path(), "Shot", "png"), folder.path("Shot.png"));
    ASSERT_TRUE(AtomicFile::write(folder.path("Shot.png"), "1"));
    ASSERT_TRUE(QFile::link("/nowhere", folder.path("Shot 2.png")));
    EXPECT_EQ(freeFilePath(folder.path(), "Shot", "png"), folder.path("Shot 3.png"));
    EXPECT_EQ(freeFilePath(folder.path(), "Shot", "png", {folder.path("Shot 3.png")}),
              folder.path("Shot 4.png"));
}
