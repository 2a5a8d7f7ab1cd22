#include "base/file_name.h"
#include "base/read_file.h"
#include "support/temporary_folder.h"

#include <QFile>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

void put(const QByteArray &name, const QByteArray &bytes)
{
    const int file = ::open(name.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    ASSERT_GE(file, 0);
    ASSERT_EQ(::write(file, bytes.constData(), static_cast<size_t>(bytes.size())), bytes.size());
    ::close(file);
}

} // namespace

TEST(ReadFile, RefusesWhatIsNoRegularFileWithoutWaitingForIt)
{
    const TemporaryFolder folder;
    ASSERT_EQ(::mkfifo(qUtf8Printable(folder.path("pipe.png")), 0600), 0);
    ASSERT_TRUE(QFile::link("/dev/zero", folder.path("endless.png")));
    ASSERT_TRUE(QFile::link(folder.path("pipe.png"), folder.path("link.png")));
    ASSERT_TRUE(QFile::link(folder.path("nowhere"), folder.path("dangling.png")));
    const auto refused = [&](const char *name) {
        EXPECT_FALSE(ReadFile::head(folder.path(name), 10)) << name;
        const auto read = ReadFile::whole(folder.path(name), 1000);
        return read ? QString() : read.error().message;
    };
    EXPECT_EQ(refused("pipe.png"), "pipe.png is no regular file.");
    EXPECT_EQ(refused("endless.png"), "endless.png is no regular file.");
    EXPECT_EQ(refused("link.png"), "link.png is no regular file.");
    EXPECT_EQ(refused("dangling.png"), "There is no file dangling.png.");
    EXPECT_TRUE(refused("").endsWith(" is a folder."));
}

TEST(ReadFile, ReadsNoMoreThanThereIsRoomFor)
{
    const TemporaryFolder folder;
    put(folder.path("a").toUtf8(), QByteArray(5'000'000, 'a'));
    EXPECT_EQ(ReadFile::whole(folder.path("a"), 5'000'000)->size(), 5'000'000);
    EXPECT_FALSE(ReadFile::whole("/proc/self/maps", 100)) << "one that doesn't tell its size";
    EXPECT_EQ(ReadFile::whole(folder.path("a"), 4'999'999).error().message,
              "a is too large to be read: 5 MB.");
    EXPECT_EQ(ReadFile::head(folder.path("a"), 7).value(), "aaaaaaa");
    // A file that says it is empty.
    EXPECT_GT(ReadFile::whole("/proc/self/status", 1'000'000)->size(), 100);
    EXPECT_FALSE(ReadFile::whole("/proc/self/status", 100));
}

TEST(FileName, KeepsEveryByteOfANameOnItsWayThroughText)
{
    for (const QByteArray &name :
         {QByteArray("plain"), QByteArray("caf\xc3\xa9 \xf0\x9f\x98\x80"), QByteArray("caf\xe9.png"),
          QByteArray("\xff\xfe"), QByteArray("a\xc3"), QByteArray("\xf0\x9f\x98"), QByteArray("\xed\xb3\xa9"),
          QByteArray("\xf0\x9f\x98\x80\xe9")}) {
        EXPECT_EQ(FileName::toBytes(FileName::fromBytes(name)), name) << name.toHex().toStdString();
    }
    EXPECT_EQ(FileName::fromBytes("caf\xc3\xa9"), QString::fromUtf8("café"));

    const TemporaryFolder folder;
    const QByteArray path = folder.path("caf").toUtf8() + "\xe9.png";
    put(path, "bytes");
    EXPECT_EQ(ReadFile::whole(FileName::fromBytes(path), 10).value(), "bytes");
    EXPECT_EQ(::unlink(path.constData()), 0); // which the folder can't
}
