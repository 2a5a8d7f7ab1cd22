#include "base/temporary_files.h"
#include "support/temporary_folder.h"

#include <QDir>
#include <QFileInfo>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

int modeOf(const QString &path)
{
    struct stat status{};
    return ::lstat(qUtf8Printable(path), &status) == 0 ? status.st_mode & 07777 : -1;
}

class TemporaryFilesTest : public testing::Test {
protected:
    void SetUp() override
    {
        TemporaryFiles::removeAll();
        ASSERT_TRUE(
            QFile::setPermissions(m_runtime.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        qputenv("XDG_RUNTIME_DIR", m_runtime.path().toUtf8());
    }
    void TearDown() override
    {
        TemporaryFiles::removeAll();
        qputenv("XDG_RUNTIME_DIR", m_before);
    }

    TemporaryFolder m_runtime;
    QByteArray m_before = qgetenv("XDG_RUNTIME_DIR");
};

} // namespace

TEST_F(TemporaryFilesTest, LieWhereNobodyElseCanReadThemUntilTheProgramEnds)
{
    const QString path = TemporaryFiles::newPath("Invoice.png").value();
    EXPECT_EQ(QFileInfo(path).fileName(), "Invoice.png");
    EXPECT_NE(TemporaryFiles::newPath("Invoice.png").value(), path);
    for (QString folder = QFileInfo(path).path(); folder != m_runtime.path();
         folder = QFileInfo(folder).path())
        EXPECT_EQ(modeOf(folder), 0700) << folder.toStdString();
    EXPECT_TRUE(path.startsWith(m_runtime.path("lumenpost") + "/"));
    TemporaryFiles::removeAll();
    EXPECT_FALSE(QFileInfo::exists(QFileInfo(path).path()));
}

TEST_F(TemporaryFilesTest, AvoidAFolderThatOthersCanEnterOrThatIsALink)
{
    ASSERT_TRUE(QDir().mkdir(m_runtime.path("lumenpost")));
    ASSERT_EQ(::chmod(qUtf8Printable(m_runtime.path("lumenpost")), 0777), 0);
    EXPECT_FALSE(TemporaryFiles::newPath("a").value().startsWith(m_runtime.path()));
    TemporaryFiles::removeAll();

    ASSERT_TRUE(QDir().rmdir(m_runtime.path("lumenpost")));
    const TemporaryFolder elsewhere;
    ASSERT_TRUE(QFile::link(elsewhere.path(), m_runtime.path("lumenpost")));
    const QString path = TemporaryFiles::newPath("a").value();
    EXPECT_FALSE(path.startsWith(m_runtime.path()));
    EXPECT_EQ(modeOf(QFileInfo(path).path()), 0700);
    EXPECT_TRUE(QDir(elsewhere.path()).isEmpty());

    // Opened by somebody later.
    const QString own = QFileInfo(QFileInfo(path).path()).path();
    ASSERT_EQ(::chmod(qUtf8Printable(own), 0777), 0);
    EXPECT_FALSE(TemporaryFiles::newPath("b").value().startsWith(own + '/'));
    QDir(own).removeRecursively();
}

TEST_F(TemporaryFilesTest, ClearWhatAKilledProgramLeft)
{
    // No process has the largest number that there is room for.
    const QString dead = m_runtime.path("lumenpost/process-2147483647-abcdef");
    const QString alive = m_runtime.path(QStringLiteral("lumenpost/process-%1-abcdef").arg(::getppid()));
    const QString others = m_runtime.path("lumenpost/process-1-abcdef"); // which only root may signal
    ASSERT_TRUE(QDir().mkpath(dead) && QDir().mkpath(alive) && QDir().mkpath(others));
    for (const QString &path : {m_runtime.path("lumenpost"), dead, alive, others})
        ASSERT_EQ(::chmod(qUtf8Printable(path), 0700), 0);
    ASSERT_TRUE(TemporaryFiles::newPath("a"));
    EXPECT_FALSE(QFileInfo::exists(dead));
    EXPECT_TRUE(QFileInfo::exists(alive));
    EXPECT_TRUE(QFileInfo::exists(others));
}

TEST_F(TemporaryFilesTest, TakeAnyTitleForAName)
{
    const std::pair<QString, QString> names[]{
        {"a/b.png", "a-b.png"},
        {"../../x.png", "-..-x.png"},
        {".png", "png"},
        {"", "Capture"},
        {QString(300, 'x') + ".png", QString(200, 'x') + ".png"},
        {QString(99, QChar(u'é')) + "x😀x", QString(99, QChar(u'é')) + "x"}, // no half of a sign
    };
    for (const auto &[title, name] : names)
        EXPECT_EQ(QFileInfo(TemporaryFiles::newPath(title).value()).fileName(), name);
}
