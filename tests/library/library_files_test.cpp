#include "base/atomic_file.h"
#include "base/file_name.h"
#include "document/project_save.h"
#include "library/auto_delete.h"
#include "library/folder_watch.h"
#include "library/intent.h"
#include "library/library_names.h"
#include "library/library_versions.h"
#include "library_stage.h"
#include "support/pictures.h"

#include <QSemaphore>
#include <QThread>
#include <QThreadPool>
#include <sys/stat.h>

namespace {

class LibraryFilesTest : public LibraryStage {};

} // namespace

TEST(LibraryNames, NeverLeadOutOfTheFolderOrIntoTheHiddenOne)
{
    const struct {
        QString typed;
        QString base;
    } cases[]{
        {"a/b:c", "abc"},       {"..", ""},           {".", ""},      {"...png", "png"},
        {" .hidden", "hidden"}, {"../../etc", "etc"}, {". . x", "x"}, {".lumenpost", "lumenpost"},
        {"a..b", "a..b"},       {"\u00a0 \n", ""},
    };
    for (const auto &[typed, base] : cases)
        EXPECT_EQ(LibraryNames::cleaned(typed), base) << typed.toStdString();
    for (int before = 0; before < 4; ++before) {
        const QString longest =
            LibraryNames::cleaned(QString(before, 'a') + QStringLiteral("😀").repeated(100));
        EXPECT_LE(longest.toUtf8().size(), 240);
        EXPECT_TRUE(longest.isValidUtf16()) << before;
    }
}

TEST_F(LibraryFilesTest, RefusesPathsThatAreNoFilesOfTheLibrary)
{
    put(".lumenpost/projects/Shot/base.png");
    put(".png");
    put("Shot.png");
    for (const char *name : {".", "..", ".png", "...png", ".lumenpost", "../Shots", "missing.png"}) {
        SCOPED_TRACE(name);
        EXPECT_FALSE(m_library->remove(inFolder(name)));
        EXPECT_FALSE(m_library->rename(inFolder(name), "New"));
    }
    EXPECT_TRUE(exists(".lumenpost/projects/Shot/base.png"));
    EXPECT_EQ(m_library->projectDirectory(inFolder("..")), QString());
    EXPECT_EQ(m_library->versionsDirectory(inFolder(".png")), QString());
    EXPECT_TRUE(machine.trash.trashed.isEmpty());
    for (const char *name : {"..", "...png", ".png", "."})
        EXPECT_FALSE(m_library->rename(inFolder("Shot.png"), name).value_or("").contains("/.")) << name;
}

TEST_F(LibraryFilesTest, KeepsEverythingOfAFileThatCannotGoToTheTrash)
{
    const QString path = put("Shot.png");
    putProject("Shot", "Shot.png");
    m_library->catalog().setFavorite(path, true);
    machine.trash.refuses = true;
    QSignalSpy removed(m_library.get(), &Library::removed);
    const auto refused = m_library->remove(path);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().message, "The Trash refuses.");
    EXPECT_TRUE(exists("Shot.png"));
    EXPECT_TRUE(exists(".lumenpost/projects/Shot/project.json"));
    EXPECT_TRUE(m_library->catalog().isFavorite(path));
    EXPECT_EQ(removed.count(), 0);
}

TEST_F(LibraryFilesTest, MovesManyToTheTrashWithoutHoldingUpAnybody)
{
    const QString first = put("First.png"), second = put("Second.png");
    QSemaphore allowed;
    machine.trash.preparing = [&, mainThread = QThread::currentThread()] {
        EXPECT_NE(QThread::currentThread(), mainThread);
        allowed.acquire();
        EXPECT_TRUE(FileLock::take(inFolder(".lumenpost/.lock"))) << "others may change what they like";
    };
    m_library->catalog().setFavorite(first, true);
    QSignalSpy working(m_library.get(), &Library::working);
    const auto removed = m_library->removeInBackground({first, inFolder("gone.png"), "/etc/x.png", second});
    EXPECT_EQ(working.count(), 1);
    EXPECT_TRUE(exists("First.png")) << "it has only begun";
    allowed.release(2);
    ASSERT_TRUE(QTest::qWaitFor([&] { return removed.isFinished(); }));
    EXPECT_EQ(machine.trash.trashed, (QStringList{first, second}));
    EXPECT_EQ(removed.result().size(), 4);
    EXPECT_FALSE(m_library->catalog().isFavorite(first));
    // The end of the program cuts off what has only begun.
    const QString third = put("Third.png");
    const auto cut = m_library->removeInBackground({third});
    m_library.reset();
    allowed.release();
    ASSERT_TRUE(QTest::qWaitFor([&] { return cut.isFinished(); }));
    ASSERT_TRUE(QThreadPool::globalInstance()->waitForDone(20000)); // it waits for what is this test's own
    EXPECT_TRUE(cut.isCanceled());
    EXPECT_TRUE(exists("Third.png"));
}

TEST_F(LibraryFilesTest, SparesWhatAnotherFileOfTheSameBaseNameUses)
{
    for (const bool removes : {true, false}) {
        SCOPED_TRACE(removes ? "remove" : "rename");
        QDir(inFolder("")).removeRecursively();
        const QString png = put("Invoice.png"), heic = put("Invoice.heic");
        putProject("Invoice", "Invoice.png");
        put(".lumenpost/versions/Invoice/1/Invoice.png");
        put(".lumenpost/versions/Invoice/2/Invoice.heic");
        restart();
        // The other one's project has a place of its own.
        EXPECT_EQ(m_library->projectDirectory(png), inFolder(".lumenpost/projects/Invoice"));
        EXPECT_EQ(m_library->projectDirectory(heic), inFolder(".lumenpost/projects/.Invoice.heic"));
        putProject(".Invoice.heic", "Invoice.heic");
        LibraryVersions versions(*m_library, clock);
        EXPECT_EQ(versions.versions(heic).size(), 1);

        if (removes)
            ASSERT_TRUE(m_library->remove(heic));
        else
            ASSERT_EQ(m_library->rename(heic, "Bill"), inFolder("Bill.heic"));
        EXPECT_TRUE(exists(".lumenpost/projects/Invoice/project.json"));
        EXPECT_TRUE(exists(".lumenpost/versions/Invoice/1/Invoice.png"));
        EXPECT_FALSE(exists(".lumenpost/versions/Invoice/2"));
        EXPECT_FALSE(exists(".lumenpost/projects/.Invoice.heic"));
        EXPECT_EQ(exists(".lumenpost/versions/Bill/2/Invoice.heic"), !removes);
        EXPECT_EQ(ProjectSave::owner(inFolder(".lumenpost/projects/Bill")),
                  removes ? std::nullopt : std::optional<QString>("Bill.heic"));
        ASSERT_TRUE(m_library->remove(png));
        EXPECT_FALSE(exists(".lumenpost/projects/Invoice"));
        EXPECT_FALSE(exists(".lumenpost/versions/Invoice"));
    }
}

TEST_F(LibraryFilesTest, ARenameTakesNoProjectOverFromTheNameBefore)
{
    put("Old.png");
    putProject("Old", "Old.png");
    putProject("New", "New.png"); // whose picture another program removed
    put(".lumenpost/versions/Old/1/Old.png", "mine");
    put(".lumenpost/versions/New/1/New.png", "theirs");
    const auto target = m_library->rename(inFolder("Old.png"), "New");
    ASSERT_EQ(target, inFolder("New.png"));
    EXPECT_EQ(ProjectSave::owner(m_library->projectDirectory(*target)), "New.png");
    EXPECT_EQ(m_library->projectDirectory(*target), inFolder(".lumenpost/projects/.New.png"));
    EXPECT_TRUE(exists(".lumenpost/projects/New/project.json")) << "nothing is lost";
    EXPECT_EQ(contents(".lumenpost/versions/New/1/New.png"), "theirs");
    EXPECT_EQ(contents(".lumenpost/versions/New/2/Old.png"), "mine") << "at the next time that is free";
}

TEST_F(LibraryFilesTest, FinishesOrUndoesARenameThatWasKilled)
{
    enum { Intended, Moved, TwoNames, ProjectMoved, VersionsMoved, Stored, Moments };
    for (int moment = Intended; moment < Moments; ++moment) {
        SCOPED_TRACE(moment);
        m_library.reset();
        QDir(inFolder("")).removeRecursively();
        restart();
        const QString path = put("Old.png", "picture");
        putProject("Old", "Old.png");
        put(".lumenpost/versions/Old/1/Old.png");
        m_library->catalog().setSource(path, "Terminal");
        m_library->catalog().setIndexedText(path, "text");
        m_library->catalog().add({path}, m_library->catalog().createCollection("Work"));
        ASSERT_TRUE(Intent::write(inFolder(".lumenpost"), {"Old.png", "New.png", inodeOf(path)}));
        if (moment == TwoNames)
            ASSERT_EQ(
                link(QFile::encodeName(path).constData(), QFile::encodeName(inFolder("New.png")).constData()),
                0);
        else if (moment >= Moved)
            ASSERT_TRUE(QFile::rename(path, inFolder("New.png")));
        const auto move = [this](const QString &folder) {
            return QDir().rename(inFolder(".lumenpost/" + folder + "/Old"),
                                 inFolder(".lumenpost/" + folder + "/New"));
        };
        if (moment >= ProjectMoved)
            ASSERT_TRUE(move("projects"));
        if (moment >= VersionsMoved)
            ASSERT_TRUE(move("versions"));
        if (moment >= Stored)
            m_library->catalog().store(
                m_library->catalog().begin(),
                CatalogPatch::renaming(m_library->catalog().data(), "Old.png", "New.png"));
        restart();
        const QString now = moment == Intended ? "Old" : "New";
        EXPECT_EQ(contents(now + ".png"), "picture");
        EXPECT_EQ(m_library->items().size(), 1);
        EXPECT_EQ(ProjectSave::owner(m_library->projectDirectory(inFolder(now + ".png"))), now + ".png");
        EXPECT_TRUE(exists(".lumenpost/versions/" + now + "/1/Old.png"));
        EXPECT_EQ(m_library->catalog().text(now + ".png"), "text");
        EXPECT_EQ(m_library->catalog().meta().sources.keys(), QStringList{now + ".png"});
        EXPECT_EQ(m_library->catalog().meta().collections.first().items, QStringList{now + ".png"});
        EXPECT_FALSE(Intent::exists(inFolder(".lumenpost")));
    }
}

TEST_F(LibraryFilesTest, DeletesWhatIsOldAndCountsWhatReallyWent)
{
    const int day = 86400;
    for (const char *name : {"old.png", "older.png", "favorite.png", "collected.png"})
        put(name, "x", 8 * day);
    put("new.png", "x", 7 * day - 60);
    LibraryCatalog &catalog = m_library->catalog();
    catalog.setFavorite("favorite.png", true);
    catalog.add({"collected.png"}, catalog.createCollection("Bugs"));
    const QDateTime now = QDateTime::currentDateTime();
    EXPECT_EQ(autoDelete(*m_library, 0, now), 0);
    machine.trash.refuses = true;
    EXPECT_EQ(autoDelete(*m_library, 7, now), 0);
    machine.trash.refuses = false;
    EXPECT_EQ(autoDelete(*m_library, 7, now), 2);
    EXPECT_EQ(m_library->items().size(), 3);
    EXPECT_FALSE(exists("old.png") || exists("older.png"));
}

TEST_F(LibraryFilesTest, ImportedFilesKeepTheirDatesAndTheirPrivacy)
{
    QDir().mkpath(home.path("elsewhere"));
    const QString source = home.path("elsewhere/.Photo.JPG");
    ASSERT_TRUE(AtomicFile::write(source, "photo"));
    const QDateTime date = QDateTime::fromMSecsSinceEpoch(1'500'000'000'000);
    QFile file(source);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.setFileTime(date, QFile::FileModificationTime));
    file.close();
    ASSERT_EQ(chmod(QFile::encodeName(source).constData(), 0600), 0);
    const auto imported = m_library->importFile(source);
    ASSERT_EQ(imported, inFolder("Photo.JPG"));
    EXPECT_EQ(QFileInfo(*imported).lastModified(), date);
    EXPECT_FALSE(QFile::permissions(*imported) & QFile::ReadOther);
    ASSERT_TRUE(AtomicFile::write(home.path("elsewhere/.png"), "x"));
    EXPECT_EQ(m_library->importFile(home.path("elsewhere/.png")), inFolder("Capture.png"));
    const QByteArray foreign = QFile::encodeName(home.path("elsewhere/")) + "caf\xE9.png";
    ASSERT_EQ(rename(QFile::encodeName(source).constData(), foreign.constData()), 0);
    EXPECT_EQ(m_library->importFile(FileName::fromBytes(foreign)), inFolder("caf_.png"));
}

TEST_F(LibraryFilesTest, ACaptureOfTwoProcessesInOneSecondIsTwoFiles)
{
    const auto other = another();
    const auto red = m_library->saveInBackground(filled({8, 6}, Qt::red));
    const auto blue = other->saveInBackground(filled({8, 6}, Qt::blue));
    ASSERT_TRUE(red.result() && blue.result());
    EXPECT_NE(red.result().value(), blue.result().value());
    EXPECT_EQ(m_library->items().size(), 2);
}

TEST(FolderWatch, TellsRenamedFilesFromOthersThatGotTheirNumber)
{
    const FolderWatch::Listing before{
        {"kept", {1, 10, 100}}, {"old", {2, 20, 200}}, {"gone", {3, 30, 300}}, {"written", {4, 40, 400}}};
    const FolderWatch::Listing after{
        {"kept", {1, 10, 100}}, {"new", {2, 20, 200}}, {"reused", {3, 31, 301}}, {"written", {5, 41, 401}}};
    const auto news = FolderWatch::difference(before, after);
    ASSERT_EQ(news.renamed.size(), 1);
    EXPECT_EQ(news.renamed.first(), std::pair(QString("old"), QString("new")));
    EXPECT_EQ(news.removed, QStringList{"gone"});
    EXPECT_EQ(news.added, QStringList{"reused"});
    EXPECT_EQ(news.modified, QStringList{"written"});
}

TEST_F(LibraryFilesTest, LeavesAloneWhatALinkInItsHiddenFolderLeadsTo)
{
    const TemporaryFolder elsewhere;
    QFile kept(elsewhere.path("kept.txt"));
    ASSERT_TRUE(kept.open(QIODevice::WriteOnly));
    put("a.png");
    ASSERT_TRUE(QDir().mkpath(inFolder(".lumenpost/projects")));
    ASSERT_TRUE(QFile::link(elsewhere.path(), inFolder(".lumenpost/projects/a")));
    ASSERT_TRUE(QFile::link(elsewhere.path(), inFolder(".lumenpost/thumbs")));
    m_library->watch();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !QFileInfo(inFolder(".lumenpost/thumbs")).isSymLink(); }));
    ASSERT_TRUE(m_library->remove(inFolder("a.png")));
    EXPECT_FALSE(QFileInfo(inFolder(".lumenpost/projects/a")).isSymLink());
    EXPECT_TRUE(kept.exists());
}

TEST_F(LibraryFilesTest, TellsWhatOtherProgramsDoInTheFolderAndNotWhatItDoesItself)
{
    put("kept.png");
    put("old.png", "old");
    put("gone.png");
    put("written.png");
    put(".lumenpost-left.png"); // of a killed process
    QSignalSpy added(m_library.get(), &Library::added), removed(m_library.get(), &Library::removed),
        modified(m_library.get(), &Library::modified), renamed(m_library.get(), &Library::renamed);
    m_library->watch();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !exists(".lumenpost-left.png"); }));
    // The first look has to be over: what it finds is no news.
    put("first.png");
    ASSERT_TRUE(QTest::qWaitFor([&] { return added.count() == 1; }));
    EXPECT_EQ(added.takeFirst().first().toStringList(), QStringList{inFolder("first.png")});

    put("new.png");
    put("notes.txt");
    put("written.png", "longer");
    ASSERT_TRUE(QFile::remove(inFolder("gone.png")));
    ASSERT_TRUE(QFile::rename(inFolder("old.png"), inFolder("moved.png")));
    const auto own = m_library->saveInBackground(filled({8, 6}, Qt::red));
    ASSERT_TRUE(QTest::qWaitFor([&] { return renamed.count() == 1 && added.count() == 2; }));
    EXPECT_EQ(renamed.first().at(1).toString(), inFolder("moved.png"));
    EXPECT_EQ(removed.first().first().toStringList(), QStringList{inFolder("gone.png")});
    EXPECT_EQ(modified.first().first().toStringList(), QStringList{inFolder("written.png")});
    QStringList names;
    for (const auto &arguments : added)
        names += arguments.first().toStringList();
    names.sort();
    EXPECT_EQ(names, (QStringList{own.result().value(), inFolder("new.png")}));
    ASSERT_TRUE(m_library->remove(inFolder("kept.png")));
    EXPECT_EQ(removed.count(), 2);
    QSignalSpy changed(m_library.get(), &Library::changed);
    put("last.png");
    ASSERT_TRUE(QTest::qWaitFor([&] { return changed.count() >= 1; }));
    EXPECT_EQ(removed.count(), 2) << "its own work is told once";
}

TEST_F(LibraryFilesTest, HasBackWhatWasRemovedWithAllThatWasKnownOfIt)
{
    for (const char *name : {"a.png", "b.png", "c.png"})
        put(name, name);
    putProject("b", "b.png");
    put(".lumenpost/versions/b/1700000000000/b.png", "earlier");
    LibraryCatalog &catalog = m_library->catalog();
    const QUuid bugs = catalog.createCollection("Bugs");
    catalog.add({"a.png", "b.png", "c.png"}, bugs);
    catalog.setFavorite("b.png", true);
    catalog.setIndexedText("b.png", "words");
    catalog.setSource("b.png", "Terminal");
    const CatalogData before = catalog.data();

    const auto removing = m_library->removeInBackground({inFolder("b.png")});
    ASSERT_TRUE(QTest::qWaitFor([&] { return removing.isFinished(); }));
    const QString trashed = removing.result().first().result.value();
    EXPECT_FALSE(exists("b.png") || exists(".lumenpost/projects/b") || exists(".lumenpost/versions/b"));
    EXPECT_FALSE(catalog.isFavorite("b.png"));

    const auto putBack = [&](const QString &path) {
        const auto back = m_library->putBackInBackground({path});
        EXPECT_TRUE(QTest::qWaitFor([&] { return back.isFinished(); }));
        return back.result().first().result;
    };
    machine.trash.refuses = true;
    EXPECT_FALSE(putBack(trashed));
    machine.trash.refuses = false;
    EXPECT_EQ(putBack(trashed), inFolder("b.png")) << "a failed try loses nothing";
    EXPECT_EQ(contents("b.png"), "b.png");
    EXPECT_EQ(contents(".lumenpost/versions/b/1700000000000/b.png"), "earlier");
    EXPECT_TRUE(exists(".lumenpost/projects/b/project.json"));
    EXPECT_EQ(catalog.data(), before);
    EXPECT_FALSE(putBack(trashed)) << "it is there only once";

    // Its name is another's meanwhile: it comes back beside that one, and its versions with it.
    const auto again = m_library->removeInBackground({inFolder("b.png")});
    ASSERT_TRUE(QTest::qWaitFor([&] { return again.isFinished(); }));
    put("b.png", "another");
    const auto beside = putBack(again.result().first().result.value());
    ASSERT_TRUE(beside && *beside != inFolder("b.png"));
    EXPECT_EQ(ProjectSave::owner(m_library->projectDirectory(*beside)), LibraryNames::nameOf(*beside));
    LibraryVersions versions(*m_library, clock);
    ASSERT_EQ(versions.versions(*beside).size(), 1);
    EXPECT_TRUE(versions.restore(versions.versions(*beside).first(), *beside));
    EXPECT_EQ(contents(LibraryNames::nameOf(*beside)), "earlier");
    EXPECT_EQ(contents("b.png"), "another");
}
