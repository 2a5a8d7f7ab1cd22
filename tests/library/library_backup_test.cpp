#include "library/library_backup.h"

#include "library/conflict_copies.h"
#include "library/library_stage.h"
#include "support/printers.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>

namespace {

class LibraryBackupTest : public LibraryStage {
protected:
    LibraryCatalog &catalog() { return m_library->catalog(); }
    static QString hidden(const QString &name) { return ".lumenpost/" + name; }
    void fill()
    {
        catalog().setFavorite("b.png", true);
        catalog().setFavorite("a.png", true);
        catalog().setSource("a.png", "Terminal");
        catalog().setDescription("a.png", "A shell");
        catalog().setIndexedText("a.png", "ls -l");
        m_bugs = catalog().createCollection("Bugs");
        catalog().add({"a.png", "c.png"}, m_bugs);
    }

    QUuid m_bugs;
};

} // namespace

TEST_F(LibraryBackupTest, ComesBackAsItWentOut)
{
    fill();
    const QString path = inFolder("data.json");
    ASSERT_TRUE(LibraryBackup::exportData(*m_library, path, clock.now()));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QJsonObject object = QJsonDocument::fromJson(file.readAll()).object();
    EXPECT_EQ(object.keys(), (QStringList{"created", "favorites", "meta", "textIndex"}));
    EXPECT_EQ(object["favorites"], (QJsonArray{"a.png", "b.png"}));
    EXPECT_TRUE(QDateTime::fromString(object["created"].toString(), Qt::ISODate).isValid());
    const CatalogData before = catalog().data();

    const auto again = LibraryBackup::importData(*m_library, path);
    ASSERT_TRUE(again);
    EXPECT_EQ(again->texts + again->favorites + again->collections, 0);
    EXPECT_TRUE(catalog().data() == before);

    prefs.setSaveFolder(home.path("Elsewhere"));
    const auto news = LibraryBackup::importData(*m_library, path);
    ASSERT_TRUE(news);
    EXPECT_EQ(news->favorites, 2);
    EXPECT_EQ(news->collections, 1);
    EXPECT_TRUE(catalog().data() == before);
    restart();
    EXPECT_TRUE(catalog().data() == before);
}

TEST_F(LibraryBackupTest, NeverOverwritesWhatIsThere)
{
    fill();
    const QString path = inFolder("data.json");
    LibraryBackup::Contents other{clock.now(), catalog().data()};
    other.data.favorites = {"z.png"};
    other.data.texts = {{"a.png", QString("other")}, {"z.png", QString("new")}};
    other.data.meta.sources = {{"a.png", "Files"}, {"z.png", "Files"}};
    other.data.meta.descriptions = {{"a.png", "other"}};
    other.data.meta.collections = {{m_bugs, "Other name", {"z.png", "a.png"}},
                                   {QUuid::createUuid(), "New", {"a.png"}}};
    put("data.json", LibraryBackup::toJson(other));
    ASSERT_TRUE(LibraryBackup::importData(*m_library, path));
    EXPECT_EQ(catalog().data().favorites, (QSet<QString>{"a.png", "b.png", "z.png"}));
    EXPECT_EQ(catalog().data().texts,
              (QHash<QString, StoredText>{{"a.png", QString("ls -l")}, {"z.png", QString("new")}}));
    EXPECT_EQ(catalog().meta().sources, (QHash<QString, QString>{{"a.png", "Terminal"}, {"z.png", "Files"}}));
    EXPECT_EQ(catalog().meta().descriptions.value("a.png"), "A shell");
    ASSERT_EQ(catalog().meta().collections.size(), 2);
    EXPECT_EQ(catalog().meta().collections[0],
              (LibraryCollection{m_bugs, "Bugs", {"a.png", "c.png", "z.png"}}));
    EXPECT_EQ(catalog().meta().collections[1].name, "New");
}

TEST_F(LibraryBackupTest, RefusesWhatIsNoBackup)
{
    fill();
    const CatalogData before = catalog().data();
    const QByteArray good = LibraryBackup::toJson({clock.now(), before});
    QByteArray dateless = good;
    dateless.replace("\"created\": \"", "\"created\": \"x");
    QByteArray lacking = good;
    lacking.replace("\"descriptions\"", "\"descriptionz\"");
    const QString path = inFolder("data.json");
    for (const QByteArray &bytes : {QByteArray("{}"), QByteArray("[1]"), QByteArray("\0\1", 2), QByteArray(),
                                    good.left(good.size() / 2), dateless, lacking}) {
        put("data.json", bytes);
        const auto news = LibraryBackup::importData(*m_library, path);
        ASSERT_FALSE(news) << bytes.constData();
        EXPECT_TRUE(news.error().message.endsWith('.')) << news.error().message.toStdString();
    }
    EXPECT_FALSE(LibraryBackup::importData(*m_library, home.path("none.json")));
    EXPECT_TRUE(catalog().data() == before);
}

TEST_F(LibraryBackupTest, KeepsOneADayAndSeven)
{
    fill();
    const QString backups = inFolder(hidden("backups"));
    const QDateTime start = clock.now();
    const auto names = [&] { return QDir(backups).entryList(QDir::Files); };
    LibraryBackup::backUp(catalog().data(), backups, start);
    LibraryBackup::backUp({}, backups, start.addSecs(3600));
    EXPECT_EQ(names(), QStringList{"library-2026-03-14.json"});
    EXPECT_TRUE(LibraryBackup::read(backups + "/library-2026-03-14.json")->data == catalog().data());
    put(hidden("backups/x.json"), "{}");
    put(hidden("backups/note.txt"), "");
    for (int day = 1; day <= 7; ++day)
        LibraryBackup::backUp({}, backups, start.addDays(day));
    EXPECT_EQ(names(),
              (QStringList{"library-2026-03-16.json", "library-2026-03-17.json", "library-2026-03-18.json",
                           "library-2026-03-19.json", "library-2026-03-20.json", "library-2026-03-21.json",
                           "note.txt", "x.json"}));
}

TEST_F(LibraryBackupTest, TakesInConflictingCopiesAndRemovesThem)
{
    fill();
    ASSERT_TRUE(catalog().flush());
    put(hidden("favorites.sync-conflict-20260314-101112-ABCDEFG.json"), R"(["z.png"])");
    put(hidden("text-index (conflicted copy 2026-03-14 101112).json"), R"({"a.png":"other","z.png":"new"})");
    put(hidden("library_conflict-20260314-101112.json"),
        R"({"collections":[],"sources":{"z.png":"Files"},"descriptions":{}})");
    put(hidden("changes.sync-conflict-20260314-101112-ABCDEFG.jsonl"),
        QJsonDocument(CatalogPatch{{{"y.png", "journal"}}, {}, {}, {}, {}}.toJson())
                .toJson(QJsonDocument::Compact) +
            "\ncut of");
    put(hidden("library.sync-conflict-20260314-101113-ABCDEFG.json"), "half of a fi");
    put(hidden("library.broken"), "not one of them");
    const auto takeIn = [this] {
        return ConflictCopies::takeIn(*m_library, ConflictCopies::read(inFolder(hidden(""))));
    };
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit none{0, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &none);
    const auto refused = takeIn();
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_FALSE(refused);
    EXPECT_EQ(ConflictCopies::in(inFolder(hidden(""))).size(), 5) << "what isn't stored yet stays";
    const auto taken = takeIn();
    ASSERT_TRUE(taken);
    EXPECT_EQ(*taken, 4);
    EXPECT_EQ(ConflictCopies::in(inFolder(hidden(""))),
              QStringList{"library.sync-conflict-20260314-101113-ABCDEFG.json"});
    restart();
    EXPECT_TRUE(catalog().isFavorite("z.png"));
    EXPECT_EQ(catalog().data().texts,
              (QHash<QString, StoredText>{
                  {"a.png", QString("ls -l")}, {"z.png", QString("new")}, {"y.png", QString("journal")}}));
    EXPECT_EQ(catalog().meta().sources.value("z.png"), "Files");
    EXPECT_EQ(catalog().meta().collections.size(), 1);
    EXPECT_EQ(takeIn(), 0);
}
