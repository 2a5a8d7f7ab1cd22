#include "document/image_files.h"
#include "library/library_filter.h"
#include "library/library_stage.h"
#include "support/pictures.h"
#include "support/printers.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

class LibraryTest : public LibraryStage {
protected:
    QJsonDocument hidden(const QString &name) const
    {
        EXPECT_TRUE(m_library->catalog().flush());
        return json(name);
    }
    QStringList names() const
    {
        QStringList names;
        for (const QString &path : m_library->items())
            names.append(QFileInfo(path).fileName());
        return names;
    }
};

const QImage kSmallPicture = filled({8, 6}, Qt::darkCyan);

} // namespace

TEST_F(LibraryTest, ListsPicturesAndFilmsOfTheTopLevelNewestFirst)
{
    EXPECT_TRUE(names().isEmpty());
    put("old.png", "x", 300);
    put("PHOTO.JPG", "x", 100);
    put("film.mov", "x", 200);
    put("notes.txt");
    put(".hidden.png");
    put("folder/inner.png");
    EXPECT_EQ(names(), (QStringList{"PHOTO.JPG", "film.mov", "old.png"}));
}

TEST_F(LibraryTest, NamesCapturesOfOneSecondApartEvenWhileTheyAreWritten)
{
    QSignalSpy changed(m_library.get(), &Library::changed);
    const auto first = m_library->saveInBackground(kSmallPicture);
    const auto second = m_library->saveInBackground(kSmallPicture);
    ASSERT_TRUE(QTest::qWaitFor([&] { return first.isFinished() && second.isFinished(); }));
    EXPECT_EQ(QFileInfo(first.result().value()).fileName(), "Capture 2026-03-14 at 09.41.07.png");
    EXPECT_EQ(QFileInfo(second.result().value()).fileName(), "Capture 2026-03-14 at 09.41.07 2.png");
    EXPECT_TRUE(QTest::qWaitFor([&] { return changed.count() == 2; })); // told after the files are there
    prefs.setImageFormat(ImageFormat::Jpg);
    // Without an event loop too, as the command line waits.
    EXPECT_EQ(m_library->saveInBackground(kSmallPicture).result(),
              inFolder("Capture 2026-03-14 at 09.41.07.jpg"));
    EXPECT_EQ(ImageFiles::read(first.result().value())->pixel(3, 3), kSmallPicture.pixel(3, 3));
}

TEST_F(LibraryTest, GivesNothingAndNoNewsWhenACaptureCannotBeWritten)
{
    put("a.png");
    prefs.setSaveFolder("/proc/nowhere");
    QSignalSpy changed(m_library.get(), &Library::changed);
    const auto later = m_library->saveInBackground(kSmallPicture);
    ASSERT_TRUE(QTest::qWaitFor([&] { return later.isFinished(); }));
    EXPECT_FALSE(later.result());
    EXPECT_EQ(changed.count(), 0);
}

TEST_F(LibraryTest, CopiesOnlyForeignFilesOfItsKindsIn)
{
    const QString own = put("own.png");
    QSignalSpy imported(m_library.get(), &Library::imported);
    QDir().mkpath(home.path("elsewhere"));
    for (const char *name : {"own.png", "Clip.MOV", "letter.pdf", "huge.png"}) {
        QFile file(home.path(QString("elsewhere/") + name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("y");
        ASSERT_TRUE(!file.fileName().contains("huge") || file.resize(ImageFiles::kMostBytes + 1));
    }
    const auto import = [this](const QStringList &paths) {
        const auto outcomes = m_library->importInBackground(paths);
        EXPECT_TRUE(QTest::qWaitFor([&] { return outcomes.isFinished(); }));
        QStringList names;
        for (const auto &[path, result] : outcomes.result())
            names.append(result ? QFileInfo(*result).fileName() : result.error().message);
        return names;
    };
    EXPECT_EQ(
        import({own, home.path("elsewhere/own.png"), home.path("elsewhere/Clip.MOV"),
                home.path("elsewhere/letter.pdf"), home.path("elsewhere/huge.png"),
                home.path("elsewhere/gone.png")}),
        (QStringList{"own 2.png", "Clip.MOV", "letter.pdf is neither an image nor a film of the Library.",
                     "huge.png is too large for a picture: 954 MiB.",
                     "There is no file " + home.path("elsewhere/gone.png.")}));
    EXPECT_TRUE(QFile::exists(inFolder("own 2.png")));
    EXPECT_TRUE(QFile::exists(inFolder("Clip.MOV")));
    EXPECT_EQ(imported.count(), 1);
    EXPECT_EQ(import({own}), QStringList());
}

TEST_F(LibraryTest, CarriesEverythingKnownOfAFileToItsNewName)
{
    const QString path = put("Shot.png");
    put("Taken.png");
    put(".lumenpost/projects/Shot/base.png");
    put(".lumenpost/versions/Shot/1/Shot.png");
    m_library->catalog().setFavorite(path, true);
    m_library->catalog().setIndexedText(path, "hello");
    m_library->catalog().setSource(path, "Terminal");
    const QUuid id = m_library->catalog().createCollection("Work");
    m_library->catalog().add({inFolder("Taken.png"), path}, id);
    QSignalSpy renamed(m_library.get(), &Library::renamed);

    const auto target = m_library->rename(path, " Ta/ke:n ");
    ASSERT_EQ(target, inFolder("Taken 2.png"));
    EXPECT_EQ(renamed.count(), 1);
    EXPECT_EQ(renamed.first().at(1).toString(), *target);
    EXPECT_TRUE(QFile::exists(inFolder(".lumenpost/projects/Taken 2/base.png")));
    EXPECT_TRUE(QFile::exists(inFolder(".lumenpost/versions/Taken 2/1/Shot.png")));
    restart();
    EXPECT_TRUE(m_library->catalog().isFavorite(*target));
    EXPECT_FALSE(m_library->catalog().isFavorite(path));
    EXPECT_EQ(m_library->catalog().text(*target), "hello");
    EXPECT_EQ(m_library->catalog().meta().sources.value("Taken 2.png"), "Terminal");
    EXPECT_EQ(m_library->catalog().meta().collections.first().items,
              (QStringList{"Taken.png", "Taken 2.png"}));
}

TEST_F(LibraryTest, RefusesANameWithNothingLeft)
{
    const QString path = put("Shot.png");
    EXPECT_FALSE(m_library->rename(path, "  "));
    EXPECT_FALSE(m_library->rename(path, "///"));
    EXPECT_TRUE(QFile::exists(path));
    EXPECT_EQ(m_library->rename(path, "a/b:c"), inFolder("abc.png"));
    EXPECT_EQ(m_library->rename(inFolder("abc.png"), "abc"), inFolder("abc 2.png"));
}

TEST_F(LibraryTest, ForgetsADeletedFileWholly)
{
    const QString path = put("Shot.png");
    put(".lumenpost/projects/Shot/base.png");
    m_library->catalog().setFavorite(path, true);
    const QUuid first = m_library->catalog().createCollection("A");
    const QUuid second = m_library->catalog().createCollection("B");
    m_library->catalog().add({path, path}, first);
    m_library->catalog().add({path}, second);
    EXPECT_EQ(m_library->catalog().meta().collections.first().items, QStringList{"Shot.png"});

    ASSERT_TRUE(m_library->remove(path));
    EXPECT_EQ(machine.trash.trashed, QStringList{path});
    EXPECT_FALSE(QFile::exists(inFolder(".lumenpost/projects/Shot")));
    EXPECT_FALSE(m_library->catalog().isInAnyCollection(path));
    EXPECT_TRUE(hidden("favorites.json").array().isEmpty());
    EXPECT_TRUE(hidden("text-index.json").isObject());
    EXPECT_EQ(hidden("library.json").object().value("collections").toArray().size(), 2);
}

TEST_F(LibraryTest, NeverWritesOneFoldersMetadataIntoAnother)
{
    const QString path = put("Shot.png");
    m_library->catalog().setFavorite(path, true);
    m_library->catalog().setSource(path, "Terminal");
    QDir().mkpath(home.path("Other/.lumenpost"));
    QFile other(home.path("Other/.lumenpost/favorites.json"));
    ASSERT_TRUE(other.open(QIODevice::WriteOnly));
    other.write("[\"kept.png\"]");
    other.close();

    prefs.setSaveFolder(home.path("Other"));
    EXPECT_TRUE(m_library->catalog().meta().sources.isEmpty());
    m_library->catalog().setFavorite(home.path("Other/new.png"), true);
    prefs.setSaveFolder(home.path("Shots"));
    EXPECT_TRUE(m_library->catalog().isFavorite(path));
    EXPECT_EQ(m_library->catalog().meta().sources.value("Shot.png"), "Terminal");
    prefs.setSaveFolder(home.path("Other"));
    EXPECT_TRUE(m_library->catalog().isFavorite(home.path("Other/kept.png")));
    EXPECT_FALSE(m_library->catalog().isFavorite(path));
}

TEST_F(LibraryTest, CountsAnUnreadableFileAsEmptyAndReplacesIt)
{
    put(".lumenpost/library.json", R"({"collections": [], "sources": {"a.png": "X"}})");
    put(".lumenpost/favorites.json", "[1, 2");
    EXPECT_TRUE(m_library->catalog().meta().sources.isEmpty());
    m_library->catalog().setSource(inFolder("b.png"), "Y");
    EXPECT_EQ(hidden("library.json").object().value("sources").toObject().keys(), QStringList{"b.png"});
    m_library->catalog().setFavorite(inFolder("c.png"), true);
    EXPECT_EQ(hidden("favorites.json").array(), QJsonArray{"c.png"});
}

TEST_F(LibraryTest, JoinsRecognisedTextAndDescription)
{
    const QString path = put("a.png");
    EXPECT_FALSE(m_library->catalog().text(path));
    m_library->catalog().updateMeta([](LibraryMeta &meta) { meta.descriptions.insert("a.png", "A lake"); });
    EXPECT_EQ(m_library->catalog().text(path), "A lake");
    m_library->catalog().setIndexedText(path, "");
    EXPECT_EQ(m_library->catalog().text(path), "\nA lake");
}

TEST_F(LibraryTest, SeesPlaceholdersOfEvictedFiles)
{
    put(".a.png.icloud");
    put(".b.png.ICLOUD");
    put("c.icloud");
    EXPECT_EQ(m_library->cloudPlaceholders(), QStringList{"a.png"});
    EXPECT_FALSE(m_library->isInICloud());
}

TEST_F(LibraryTest, FiltersAndSortsAsPeopleCount)
{
    put("Shot 10.png", "xxx", 40);
    put("shot 2.png", "xx", 8 * 86400);
    put("Film.gif", "x", 40 * 86400);
    m_library->catalog().setFavorite(inFolder("shot 2.png"), true);
    const auto shown = [this](LibraryFilter filter, LibrarySort sort) {
        QList<LibraryItem> items;
        for (const QString &path : m_library->items()) {
            if (matches(*m_library, m_library->item(path), filter, QDateTime::currentDateTime()))
                items.append(m_library->item(path));
        }
        sortItems(items, sort);
        QStringList result;
        for (const LibraryItem &item : items)
            result.append(QFileInfo(item.path).completeBaseName());
        return result;
    };
    EXPECT_EQ(shown(LibraryFilter::All, LibrarySort::Name), (QStringList{"Film", "shot 2", "Shot 10"}));
    EXPECT_EQ(shown(LibraryFilter::Images, LibrarySort::Oldest), (QStringList{"shot 2", "Shot 10"}));
    EXPECT_EQ(shown(LibraryFilter::Videos, LibrarySort::Newest), QStringList{"Film"});
    EXPECT_EQ(shown(LibraryFilter::Favorites, LibrarySort::Newest), QStringList{"shot 2"});
    EXPECT_EQ(shown(LibraryFilter::Month, LibrarySort::Size), (QStringList{"Shot 10", "shot 2"}));
    EXPECT_EQ(shown(LibraryFilter::Week, LibrarySort::Newest), QStringList{"Shot 10"});
}
