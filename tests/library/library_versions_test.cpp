#include "document/image_files.h"
#include "document/project_file.h"
#include "library/library.h"
#include "library/library_versions.h"
#include "support/pictures.h"
#include "support/printers.h"
#include "support/stage.h"

#include <QSignalSpy>
#include <gmock/gmock.h>

namespace {

class LibraryVersionsTest : public testing::Test, protected Stage {
protected:
    class StepClock : public Clock {
    public:
        QDateTime now() const override { return time; }
        QDateTime time = QDateTime::fromMSecsSinceEpoch(1'760'000'000'000);
    };

    LibraryVersionsTest()
    {
        prefs.setSaveFolder(home.path("Shots"));
        QDir().mkpath(home.path("Shots"));
    }

    void write(const QByteArray &content)
    {
        QFile file(m_file);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    static QByteArray contentOf(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }
    // One save, a second after the last.
    void save(const QByteArray &content)
    {
        m_clock.time = m_clock.time.addSecs(1);
        m_versions.saveVersion(m_file);
        write(content);
    }
    QByteArray version(int index) const
    {
        const auto all = m_versions.versions(m_file);
        return index < all.size() ? contentOf(all[index].folder + "/shot.png") : QByteArray("(no version)");
    }
    static ProjectFile projectWith(const QString &text)
    {
        Annotation annotation;
        annotation.id = QUuid::createUuid();
        annotation.kind = ToolKind::Text;
        annotation.text = text;
        annotation.color = Qt::red;
        return ProjectFile::describing({annotation}, {});
    }
    QString projectText() const
    {
        const auto contents = ProjectFile::read(m_library.projectDirectory(m_file));
        return contents ? contents->project.annotations.value(0).text : QStringLiteral("(no project)");
    }
    StepClock m_clock;
    Library m_library{prefs, machine.trash, m_clock};
    LibraryVersions m_versions{m_library, m_clock};
    const QString m_file = home.path("Shots/shot.png");
};

} // namespace

TEST_F(LibraryVersionsTest, KeepsTheTenNewestStatesAndLeavesForeignFoldersAlone)
{
    m_versions.saveVersion(m_file); // nothing there yet
    EXPECT_TRUE(m_versions.versions(m_file).isEmpty());

    const QString foreign = m_library.versionsDirectory(m_file) + "/notes";
    ASSERT_TRUE(QDir().mkpath(foreign));
    write("0");
    for (int i = 1; i <= 12; ++i)
        save(QByteArray::number(i));
    EXPECT_EQ(m_versions.versions(m_file).size(), 10);
    EXPECT_EQ(version(0), "11");
    EXPECT_EQ(version(9), "2");
    EXPECT_TRUE(QFileInfo::exists(foreign));
    EXPECT_EQ(m_versions.versions(m_file).first().date, m_clock.time);
}

TEST_F(LibraryVersionsTest, ASecondSaveWithinAMillisecondKeepsTheFirstCopy)
{
    write("first");
    m_versions.saveVersion(m_file);
    write("second");
    m_versions.saveVersion(m_file);
    EXPECT_EQ(m_versions.versions(m_file).size(), 1);
    EXPECT_EQ(version(0), "first");
}

TEST_F(LibraryVersionsTest, RestoresFileAndProjectAndKeepsThePresentState)
{
    write("old");
    ASSERT_TRUE(m_versions.saveProject(filled({9, 7}, Qt::red), projectWith("old"), m_file));
    save("new");
    ASSERT_TRUE(m_versions.saveProject(filled({9, 7}, Qt::blue), projectWith("new"), m_file));
    m_clock.time = m_clock.time.addSecs(1);

    QSignalSpy changed(&m_library, &Library::changed);
    ASSERT_TRUE(m_versions.restore(m_versions.versions(m_file).first(), m_file));
    EXPECT_EQ(contentOf(m_file), "old");
    EXPECT_EQ(projectText(), "old");
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(m_versions.versions(m_file).size(), 2);
    EXPECT_EQ(version(0), "new");

    // And back again.
    m_clock.time = m_clock.time.addSecs(1);
    ASSERT_TRUE(m_versions.restore(m_versions.versions(m_file).first(), m_file));
    EXPECT_EQ(contentOf(m_file), "new");
    EXPECT_EQ(projectText(), "new");
}

TEST_F(LibraryVersionsTest, AVersionWithoutAProjectRemovesThePresentOne)
{
    write("flat");
    save("edited");
    ASSERT_TRUE(m_versions.saveProject(filled({9, 7}, Qt::blue), projectWith("edited"), m_file));
    m_clock.time = m_clock.time.addSecs(1);
    ASSERT_TRUE(m_versions.restore(m_versions.versions(m_file).first(), m_file));
    EXPECT_EQ(projectText(), "(no project)");
}

TEST_F(LibraryVersionsTest, AVersionHasNoProjectOfAnotherState)
{
    write("drawn");
    ASSERT_TRUE(m_versions.saveProject(filled({9, 7}, Qt::blue), projectWith("drawn"), m_file));
    write("changed by another program");
    save("now");
    EXPECT_EQ(version(0), "changed by another program");
    EXPECT_FALSE(QFileInfo::exists(m_versions.versions(m_file).first().folder + "/project"));
}

TEST_F(LibraryVersionsTest, RestoresTheOldestOfTenAlthoughKeepingThePresentStateDropsIt)
{
    write("0");
    ASSERT_TRUE(m_versions.saveProject(filled({9, 7}, Qt::red), projectWith("zero"), m_file));
    for (int i = 1; i <= 10; ++i)
        save(QByteArray::number(i));
    m_clock.time = m_clock.time.addSecs(1);
    const auto oldest = m_versions.versions(m_file).last();
    ASSERT_TRUE(m_versions.restore(oldest, m_file));
    EXPECT_EQ(contentOf(m_file), "0");
    EXPECT_EQ(projectText(), "zero");
    EXPECT_EQ(m_versions.versions(m_file).size(), 10);
    EXPECT_EQ(version(0), "10");
    EXPECT_FALSE(QFileInfo::exists(oldest.folder));
}

TEST_F(LibraryVersionsTest, AVersionThatLacksTheFileChangesNothing)
{
    write("kept");
    save("now");
    const auto versions = m_versions.versions(m_file);
    ASSERT_TRUE(QFile::remove(versions.first().folder + "/shot.png"));
    QSignalSpy changed(&m_library, &Library::changed);
    EXPECT_FALSE(m_versions.restore(versions.first(), m_file));
    EXPECT_EQ(contentOf(m_file), "now");
    EXPECT_EQ(m_versions.versions(m_file).size(), 1);
    EXPECT_EQ(changed.count(), 0);
}
