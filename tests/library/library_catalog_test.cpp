#include "library/library_catalog.h"

#include "library/catalog_files.h"
#include "library_stage.h"

#include <QtConcurrentMap>
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

class LibraryCatalogTest : public LibraryStage {
protected:
    LibraryCatalog &catalog() { return m_library->catalog(); }
};

} // namespace

TEST(StoredText, ComesOutAsItWasWrittenAndStaysWhenItsFileIsReplaced)
{
    const TemporaryFolder folder;
    const QHash<QString, StoredText> texts{{"a.png", QString::fromUtf8("a \"quoted\"\n\\ 😀 line")},
                                           {"ä\n.png", QString()},
                                           {"b.png", QString(3, QChar(u'x'))}};
    const QByteArray json = *StoredText::toJson(texts);
    EXPECT_EQ(QJsonDocument::fromJson(json).object().size(), 3);
    QFile file(folder.path("texts"));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.write(json) == json.size() && file.flush());
    const auto read = StoredText::all(json, file.handle());
    file.close();
    ASSERT_TRUE(AtomicFile::write(folder.path("texts"), "{}"));
    ASSERT_TRUE(read);
    EXPECT_EQ(*read, texts);
    EXPECT_EQ(read->value("a.png").toString(), texts["a.png"].toString());
    EXPECT_EQ(StoredText::toJson(*read), json);
    QFile other(folder.path("texts"));
    ASSERT_TRUE(other.open(QIODevice::ReadOnly));
    EXPECT_TRUE(StoredText::all(" { \"k\" :\"\\u00e4\" }\n", other.handle()));
    for (const char *broken : {"", "[]", "{\"a\":1}", "{\"a\":\"b\"", "{\"a\":\"b\"}x",
                               "{\"a\":\"b\"\"c\":\"d\"}", "{\"a\":\"\\x\"}", "{\"a\":\"\n\"}",
                               "{\"a\":\"\xff\"}", "{\"a\":\"b\\", "{,\"a\":\"b\"}", "{\"a\":\"b\",}"})
        EXPECT_FALSE(StoredText::all(broken, other.handle())) << broken;
}

TEST_F(LibraryCatalogTest, KeepsWhatTwoProcessesStoreInTurn)
{
    const auto other = another();
    const QUuid shared = catalog().createCollection("Shared");
    for (int i = 0; i < 20; ++i) {
        LibraryCatalog &one = i % 2 ? catalog() : other->catalog();
        const QString name = QString::number(i) + ".png";
        one.setFavorite(name, true);
        one.setSource(name, "Terminal");
        one.setIndexedText(name, "text");
        one.add({name}, shared);
        if (i == 7)
            EXPECT_TRUE(other->catalog().flush()) << "folding in between loses nothing";
        if (i == 13)
            one.setFavorite("3.png", false);
    }
    for (LibraryCatalog *one : {&catalog(), &other->catalog()}) {
        ASSERT_TRUE(one->begin());
        EXPECT_EQ(one->meta().sources.size(), 20);
        EXPECT_EQ(one->meta().collections.first().items.size(), 20);
        EXPECT_TRUE(one->isFavorite("19.png"));
        EXPECT_FALSE(one->isFavorite("3.png"));
    }
    ASSERT_TRUE(catalog().flush());
    EXPECT_EQ(json("favorites.json").array().size(), 19);
    EXPECT_EQ(json("text-index.json").object().size(), 20);
    EXPECT_EQ(json("library.json").object().value("sources").toObject().size(), 20);
    EXPECT_FALSE(exists(".lumenpost/changes.jsonl"));
    restart();
    EXPECT_EQ(catalog().data(), other->catalog().data());
}

TEST_F(LibraryCatalogTest, KeepsWhatManyStoreAtOnce)
{
    const QString directory = inFolder(".lumenpost");
    QList<int> writers{0, 1, 2, 3};
    QtConcurrent::blockingMap(writers, [&directory](int writer) {
        CatalogFiles files(directory);
        auto snapshot = files.load();
        for (int i = 0; i < 50; ++i) {
            {
                const auto lock = files.lock();
                ASSERT_TRUE(lock);
                files.refresh(snapshot);
                CatalogPatch patch;
                patch.texts.insert(QStringLiteral("%1-%2.png").arg(writer).arg(i), "text");
                ASSERT_TRUE(files.append(snapshot, patch));
            }
            if (i % 10 == writer)
                ASSERT_TRUE(files.fold());
        }
    });
    EXPECT_EQ(CatalogFiles(directory).load().data.texts.size(), 200);
    ASSERT_TRUE(CatalogFiles(directory).fold());
    EXPECT_EQ(json("text-index.json").object().size(), 200);
}

TEST_F(LibraryCatalogTest, StoresATextWithoutWritingTheOthersAnew)
{
    catalog().setIndexedText("0.png", QString(100'000, 'x'));
    ASSERT_TRUE(catalog().flush());
    const QByteArray before = contents(".lumenpost/text-index.json");
    for (int i = 1; i <= 24; ++i)
        catalog().setIndexedText(QString::number(i), "short");
    EXPECT_LT(QFileInfo(inFolder(".lumenpost/changes.jsonl")).size(), 24 * 60);
    EXPECT_EQ(contents(".lumenpost/text-index.json"), before);
    // What a process that is killed now leaves is whole for the next one.
    EXPECT_EQ(another()->catalog().textIndex().size(), 25);
    EXPECT_EQ(json("text-index.json").object().size(), 25) << "which also puts it into the file";
}

TEST_F(LibraryCatalogTest, TakesTheJournalInAMomentLater)
{
    catalog().setFavorite("a.png", true);
    EXPECT_TRUE(QTest::qWaitFor([this] { return json("favorites.json").array() == QJsonArray{"a.png"}; }));
    EXPECT_TRUE(QTest::qWaitFor([this] { return !exists(".lumenpost/folding.jsonl"); }));
    catalog().setFavorite("b.png", true);
    EXPECT_TRUE(catalog().isFavorite("a.png"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return json("favorites.json").array().size() == 2; }));
}

TEST_F(LibraryCatalogTest, GoesOnWhereAKilledFoldStopped)
{
    // The files may be replaced already or not: the same patches once more make no difference.
    put(".lumenpost/folding.jsonl", "{\"favorites\":{\"a.png\":true,\"b.png\":false}}\n");
    put(".lumenpost/changes.jsonl", "{\"favorites\":{\"c.png\":true}}\n{\"favorites\":{\"torn.p");
    put(".lumenpost/favorites.json", "[\"a.png\",\"b.png\",\"d.png\"]");
    EXPECT_EQ(catalog().data().favorites, (QSet<QString>{"a.png", "c.png", "d.png"}));
    catalog().setFavorite("e.png", true);
    ASSERT_TRUE(catalog().flush());
    EXPECT_EQ(json("favorites.json").array().size(), 4);
    EXPECT_FALSE(exists(".lumenpost/folding.jsonl"));
}

TEST_F(LibraryCatalogTest, HoldsWhatAFullDiskRefusesAndStoresItLater)
{
    catalog().setFavorite("a.png", true);
    ASSERT_TRUE(catalog().flush());
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit none{0, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &none);
    catalog().setFavorite("b.png", true);
    catalog().setFavorite("a.png", false);
    const auto refused = catalog().flush();
    setrlimit(RLIMIT_FSIZE, &before);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().message,
              "Couldn't write changes.jsonl: the file would be larger than is allowed here.");
    EXPECT_TRUE(catalog().isFavorite("b.png"));
    EXPECT_EQ(json("favorites.json").array(), QJsonArray{"a.png"});
    ASSERT_TRUE(catalog().flush());
    EXPECT_EQ(json("favorites.json").array(), QJsonArray{"b.png"});
}

TEST_F(LibraryCatalogTest, TellsWhichNamesAnotherProgramChanged)
{
    put(".lumenpost/favorites.json", "[\"a.png\"]");
    m_library->watch();
    EXPECT_TRUE(catalog().isFavorite("a.png"));
    QSignalSpy names(&catalog(), &LibraryCatalog::changed);
    QSignalSpy coarse(m_library.get(), &Library::changed);
    // From another machine, say.
    put(".lumenpost/favorites.json", "[\"b.png\"]");
    ASSERT_TRUE(QTest::qWaitFor([&] { return names.count() == 1 && coarse.count() == 1; }));
    QStringList told = names.first().first().toStringList();
    told.sort();
    EXPECT_EQ(told, (QStringList{"a.png", "b.png"}));
    EXPECT_TRUE(catalog().isFavorite("b.png"));
    another()->catalog().setSource("c.png", "Browser");
    ASSERT_TRUE(QTest::qWaitFor([&] { return names.count() == 2; }));
    EXPECT_EQ(names.last().first().toStringList(), QStringList{"c.png"});
}

TEST_F(LibraryCatalogTest, StoresWhatNeedsNothingElseBeforeItReadsReplacedFiles)
{
    put(".lumenpost/favorites.json", "[\"a.png\"]");
    const QUuid id = catalog().createCollection("Before");
    put(".lumenpost/favorites.json", "[\"b.png\"]");
    catalog().setFavorite("c.png", true);
    EXPECT_TRUE(catalog().isFavorite("a.png")) << "nothing was waited for";
    ASSERT_TRUE(QTest::qWaitFor([this] { return catalog().isFavorite("b.png"); }));
    EXPECT_EQ(catalog().data().favorites, (QSet<QString>{"b.png", "c.png"}));
    // What goes on from what was there waits for it.
    ASSERT_TRUE(catalog().flush());
    put(".lumenpost/library.json", contents(".lumenpost/library.json").replace("Before", "After"));
    catalog().add({"d.png"}, id);
    EXPECT_EQ(catalog().meta().collections.value(0).name, "After");
    EXPECT_EQ(catalog().meta().collections.value(0).items, QStringList{"d.png"});
}

TEST_F(LibraryCatalogTest, KeepsAFileThatItCannotUnderstandBeside)
{
    put(".lumenpost/library.json", R"({"collections": [], "sources": {"a.png": "X"}})");
    catalog().setFavorite("c.png", true);
    ASSERT_TRUE(catalog().flush());
    EXPECT_FALSE(exists(".lumenpost/library.json.broken")) << "nothing was written to that file";
    catalog().setSource("b.png", "Y");
    ASSERT_TRUE(catalog().flush());
    EXPECT_TRUE(contents(".lumenpost/library.json.broken").contains("a.png"));
}

TEST_F(LibraryCatalogTest, TellsOfAFileThatItCannotReadAndLeavesItAsItIs)
{
    const QString texts = inFolder(".lumenpost/text-index.json");
    for (const bool isPipe : {true, false}) {
        put(".lumenpost/favorites.json", "[\"a.png\"]");
        QFile::remove(texts);
        if (isPipe)
            ASSERT_EQ(mkfifo(QFile::encodeName(texts).constData(), 0600), 0);
        else
            ASSERT_EQ(
                truncate(QFile::encodeName(put(".lumenpost/text-index.json")).constData(), 4'000'000'000), 0);
        restart();
        const QString sentence =
            isPipe ? "text-index.json is no regular file." : "text-index.json is too large to be read: 4 GB.";
        ASSERT_TRUE(catalog().problem());
        EXPECT_EQ(catalog().problem()->message, sentence);
        EXPECT_TRUE(catalog().isFavorite("a.png"));
        catalog().setIndexedText("a.png", "later");
        EXPECT_EQ(catalog().flush().error().message, sentence);
        EXPECT_EQ(QFileInfo(texts).size(), isPipe ? 0 : 4'000'000'000);
        QFile::remove(texts);
        put(".lumenpost/text-index.json", "{\"b.png\":\"before\"}");
        ASSERT_TRUE(catalog().flush());
        EXPECT_EQ(json("text-index.json").object().size(), 2);
    }
}
