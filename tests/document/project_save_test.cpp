#include "document/project_save.h"

#include "base/file_lock.h"
#include "base/file_name.h"
#include "base/file_tree.h"
#include "document/editor_document.h"
#include "document/image_files.h"
#include "document/project_file.h"
#include "pixels.h"
#include "support/pictures.h"
#include "support/temporary_folder.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QTest>
#include <QtConcurrentRun>
#include <filesystem>
#include <sys/resource.h>

namespace {

// A picture of one colour, and its project: the colour's name in a text object, over a base of that colour.
class ProjectSaveTest : public testing::Test {
protected:
    Result<void> save(const QString &color)
    {
        return ProjectSave::write(path, filled({4, 4}, color), directory, filled({4, 4}, color),
                                  project(color));
    }
    // What an editor shows, and what the folder's other readers see.
    QStringList state()
    {
        const auto opened = EditorDocument::load(path, directory);
        return {ImageFiles::read(path)->pixelColor(0, 0).name(), opened.base.pixelColor(0, 0).name(),
                opened.annotations.value(0).text};
    }
    QStringList files(const QString &folder)
    {
        return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    static ProjectFile project(const QString &text)
    {
        Annotation object;
        object.kind = ToolKind::Text;
        object.text = text;
        return ProjectFile::describing({object}, {});
    }

    TemporaryFolder home;
    const QString path = home.path("shot.png"), directory = home.path("projects/shot");
    const QString red = "#ff0000", blue = "#0000ff";
};

} // namespace

TEST_F(ProjectSaveTest, ACrashAtAnyMomentLeavesAPictureWithItsOwnProject)
{
    // What is on the disk at each moment of a save of blue over red, by what has been done.
    enum { Base, Description, Digest, Picture, BaseMoved, AllMoved, Moments };
    const TemporaryFolder done;
    ASSERT_TRUE(ImageFiles::write(filled({4, 4}, blue), done.path("shot.png")));
    for (int moment = Base; moment < Moments; ++moment) {
        SCOPED_TRACE(moment);
        QDir(home.path()).removeRecursively();
        QDir().mkpath(home.path());
        ASSERT_TRUE(save(red));
        const QString waiting = directory + "/.saving";
        ASSERT_TRUE(ProjectFile::write(waiting, filled({4, 4}, blue), project(blue)));
        if (moment < Description)
            QFile::remove(waiting + "/project.json");
        QFile digest(waiting + "/picture.sha256");
        QFile picture(done.path("shot.png"));
        if (moment >= Digest) {
            ASSERT_TRUE(digest.open(QIODevice::WriteOnly) && picture.open(QIODevice::ReadOnly));
            digest.write(QCryptographicHash::hash(picture.readAll(), QCryptographicHash::Sha256).toHex() +
                         "  shot.png\n");
            digest.close();
        }
        const auto replace = [](const QString &from, const QString &to) {
            return QFile::remove(to) && QFile::copy(from, to);
        };
        if (moment >= Picture)
            ASSERT_TRUE(replace(done.path("shot.png"), path));
        for (const QString &part : {"base.png", "project.json"}) {
            if (moment >= (part == "base.png" ? BaseMoved : AllMoved))
                ASSERT_TRUE(replace(waiting + '/' + part, directory + '/' + part) &&
                            QFile::remove(waiting + '/' + part));
        }
        const QString now = moment < Picture ? red : blue;
        EXPECT_EQ(state(), QStringList({now, now, now}));
        EXPECT_EQ(files(directory), QStringList({"base.png", "picture.sha256", "project.json"}));
    }
}

TEST_F(ProjectSaveTest, AFailureLeavesPictureAndProjectAsTheyWere)
{
    ASSERT_TRUE(save(red));
    const auto impossible = ProjectSave::write(home.path("missing/shot.png"), filled({4, 4}, blue), directory,
                                               filled({4, 4}, blue), project(blue));
    EXPECT_FALSE(impossible);
    EXPECT_EQ(state(), QStringList({red, red, red}));
    EXPECT_EQ(files(directory), QStringList({"base.png", "picture.sha256", "project.json"}));
}

TEST_F(ProjectSaveTest, WaitsForASaveUnderWay)
{
    ASSERT_TRUE(save(red));
    std::optional<FileLock> other = *FileLock::take(ProjectSave::lockFile(home.path("projects")));
    const auto second = QtConcurrent::run([this] { return save(blue); });
    // It encodes meanwhile, and gets no further.
    ASSERT_TRUE(QTest::qWaitFor([this] {
        return !QDir(home.path("projects")).entryList({".lumenpost-*"}, QDir::Dirs | QDir::Hidden).isEmpty();
    }));
    EXPECT_FALSE(second.isFinished());
    EXPECT_EQ(ImageFiles::read(path)->pixelColor(0, 0).name(), red);
    other.reset();
    EXPECT_TRUE(second.result());
    EXPECT_EQ(state(), QStringList({blue, blue, blue}));
    EXPECT_EQ(files(home.path("projects")), QStringList({".lock", "shot"}));
}

TEST_F(ProjectSaveTest, NeverAppliesAProjectToAnotherPicture)
{
    const struct {
        const char *what;
        std::function<void()> happens;
    } cases[]{
        {"overwritten by another program",
         [this] { ASSERT_TRUE(ImageFiles::write(filled({4, 4}, blue), path)); }},
        {"saved before projects had digests",
         [this] {
             ASSERT_TRUE(QFile::remove(directory + "/picture.sha256"));
             ASSERT_TRUE(ImageFiles::write(filled({4, 4}, blue), path));
         }},
        {"a digest that was cut off",
         [this] {
             ASSERT_TRUE(QFile::resize(directory + "/picture.sha256", 20));
             ASSERT_TRUE(ImageFiles::write(filled({4, 4}, blue), path));
         }},
    };
    for (const auto &[what, happens] : cases) {
        SCOPED_TRACE(what);
        ASSERT_TRUE(save(red));
        happens();
        const auto opened = EditorDocument::load(path, directory);
        EXPECT_TRUE(opened.isProjectSetAside);
        EXPECT_EQ(opened.base.pixelColor(0, 0).name(), blue);
        EXPECT_TRUE(opened.annotations.isEmpty());
        EXPECT_FALSE(QFileInfo::exists(directory));
        EXPECT_FALSE(EditorDocument::load(path, directory).isProjectSetAside) << "told once";
    }
    EXPECT_EQ(files(home.path("projects/.aside")).size(), 3);
}

TEST_F(ProjectSaveTest, AdoptsAnOldProjectThatLooksExactlyLikeItsPicture)
{
    for (const char *name : {"shot.png", "shot.jpg", "shot.heic"}) {
        SCOPED_TRACE(name);
        const QString picture = home.path(name);
        const auto plain = ProjectFile::describing({}, Effects{.border = true});
        ASSERT_TRUE(ProjectFile::write(directory, filled({40, 40}, red), plain));
        ASSERT_TRUE(ImageFiles::write(plain.effects().applied(filled({40, 40}, red)), picture));
        EXPECT_TRUE(ProjectSave::open(picture, directory).contents);
        EXPECT_EQ(ProjectSave::belongs(picture, directory), true);
        QDir(directory).removeRecursively();
    }
}

TEST_F(ProjectSaveTest, SaysSoWhenThePictureCannotTakeItsPlace)
{
    ASSERT_TRUE(QDir().mkpath(home.path("shot.png/in the way")));
    EXPECT_FALSE(save(red));
    EXPECT_FALSE(QFileInfo::exists(directory)) << "no project without its picture";
}

TEST_F(ProjectSaveTest, TakesAProjectForItsOwnByTheNameOrByThePixels)
{
    ASSERT_TRUE(save(red));
    ProjectSave::setOwner(directory, "earlier.png"); // renamed by another program
    ASSERT_TRUE(save(blue));
    ASSERT_TRUE(ImageFiles::write(filled({4, 4}, red), path)); // changed by another program
    ASSERT_TRUE(save(blue));
    EXPECT_FALSE(QFileInfo::exists(home.path("projects/.aside")));
    ProjectSave::setOwner(directory, "earlier.png");
    ASSERT_TRUE(ImageFiles::write(filled({4, 4}, red), path));
    ASSERT_TRUE(save(blue));
    EXPECT_EQ(files(home.path("projects/.aside")).size(), 1);
}

TEST_F(ProjectSaveTest, KeepsTheModeOfAPrivatePicture)
{
    ASSERT_TRUE(save(red));
    ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner));
    ASSERT_TRUE(save(blue));
    EXPECT_EQ(QFile::permissions(path) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
}

TEST_F(ProjectSaveTest, KeepsTheProjectOfAPictureWhoseNameIsNoText)
{
    const QString odd = FileName::fromBytes(QFile::encodeName(home.path("caf")) + "\xE9.png");
    const QString twin = FileName::fromBytes(QFile::encodeName(home.path("caf")) + "\xE8.png");
    for (const QString &color : {red, blue}) {
        ASSERT_TRUE(
            ProjectSave::write(odd, filled({4, 4}, color), directory, filled({4, 4}, color), project(color)));
        const auto opened = ProjectSave::open(odd, directory);
        ASSERT_TRUE(opened.contents);
        EXPECT_EQ(opened.contents->base.pixelColor(0, 0).name(), color);
        EXPECT_EQ(ProjectSave::owner(directory), QFileInfo(odd).fileName());
        EXPECT_EQ(ProjectSave::belongs(odd, directory), true);
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(home.path().toStdString()), {}), 2)
        << "the picture and the projects, under no other name";
    ASSERT_TRUE(ImageFiles::write(filled({4, 4}, red), twin));
    EXPECT_TRUE(ProjectSave::open(twin, directory).isSetAside);
    // A whole Library under such a name.
    const QString folder = FileName::fromBytes(QFile::encodeName(home.path("caf")) + "\xE9");
    const QString inside = folder + "/projects/shot", picture = folder + "/shot.png";
    ASSERT_TRUE(ProjectSave::write(picture, filled({4, 4}, red), inside, filled({4, 4}, red), project(red)));
    EXPECT_TRUE(ProjectSave::open(picture, inside).contents);
    EXPECT_TRUE(FileLock::take(ProjectSave::lockFile(folder + "/projects")));
    for (const QString &each : {folder, odd, twin}) {
        FileTree::remove(each);
        EXPECT_FALSE(FileTree::exists(each));
    }
}

TEST_F(ProjectSaveTest, TellsAFullDiskOfThePictureAndOfNoFileBehindIt)
{
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit none{0, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &none);
    const auto refused = save(red);
    setrlimit(RLIMIT_FSIZE, &before);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().message,
              "Couldn't write shot.png: the file would be larger than is allowed here.");
}
