#include "library/model/library_model.h"

#include "support/printers.h"
#include "support/stage.h"

#include <QFile>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace {

class LibraryModelTest : public testing::Test, protected Stage {
protected:
    LibraryModelTest()
    {
        clock.time = QDateTime(QDate(2026, 3, 14), QTime(15, 0));
        prefs.setSaveFolder(home.path("Shots"));
        QDir().mkpath(home.path("Shots"));
        m_library = std::make_unique<Library>(prefs, machine.trash, clock);
    }

    QString inFolder(const QString &name) const { return home.path("Shots/" + name); }
    QString put(const QString &name, const QDateTime &date, int bytes = 1)
    {
        QFile file(inFolder(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QByteArray(bytes, 'x'));
        file.flush();
        EXPECT_TRUE(file.setFileTime(date, QFile::FileModificationTime));
        return file.fileName();
    }
    QDateTime ago(qint64 hours, qint64 minutes = 0) const
    {
        return clock.time.addSecs(-3600 * hours - 60 * minutes);
    }
    LibraryModel &model()
    {
        if (!m_model) {
            m_model = std::make_unique<LibraryModel>(*m_library, defaults, clock);
            m_model->reload();
        }
        return *m_model;
    }
    QStringList shown()
    {
        QStringList names;
        for (const LibraryItem &item : model().visible())
            names.append(QFileInfo(item.path).completeBaseName());
        return names;
    }
    QStringList found(const QString &query)
    {
        model().setQuery(query);
        return shown();
    }
    QStringList selected()
    {
        QStringList names;
        for (const QString &path : model().selectedPaths())
            names.append(QFileInfo(path).completeBaseName());
        return names;
    }
    LibraryCatalog &catalog() { return m_library->catalog(); }

    std::unique_ptr<Library> m_library;
    std::unique_ptr<LibraryModel> m_model;
};

} // namespace

TEST_F(LibraryModelTest, ShowsWhatTheSidebarAndTheDatesAskFor)
{
    put("now.png", ago(1));
    put("yesterday.jpg", ago(20));
    put("film.gif", ago(24 * 6));
    put("old.mov", ago(24 * 20));
    put("ancient.png", ago(24 * 400));
    put("note.txt", ago(1));
    catalog().setFavorite("old.mov", true);
    catalog().setSource("now.png", "Terminal");
    catalog().setSource("old.mov", "Terminal");
    catalog().setSource("film.gif", "Files");
    const QUuid bugs = catalog().createCollection("Bugs");
    catalog().add({"ancient.png", "gone.png", "now.png"}, bugs);
    const struct {
        SidebarItem sidebar;
        QStringList names;
        QString title;
    } cases[]{
        {LibraryFilter::All, {"now", "yesterday", "film", "old", "ancient"}, "All Captures"},
        {LibraryFilter::Images, {"now", "yesterday", "ancient"}, "Screenshots"},
        {LibraryFilter::Videos, {"film", "old"}, "Recordings"},
        {LibraryFilter::Favorites, {"old"}, "Favorites"},
        {LibraryFilter::Today, {"now"}, "Today"},
        {LibraryFilter::Week, {"now", "yesterday", "film"}, "Last 7 Days"},
        {LibraryFilter::Month, {"now", "yesterday", "film", "old"}, "Last 30 Days"},
        {CollectionRow{bugs}, {"now", "ancient"}, "Bugs"},
        {ApplicationRow{"Terminal"}, {"now", "old"}, "Terminal"},
        {ApplicationRow{"terminal"}, {}, "terminal"},
    };
    for (const auto &wanted : cases) {
        model().setSidebar(wanted.sidebar);
        EXPECT_EQ(shown(), wanted.names) << wanted.title.toStdString();
        EXPECT_EQ(model().title(), wanted.title);
        EXPECT_EQ(model().count(wanted.sidebar), wanted.names.size()) << wanted.title.toStdString();
    }
    EXPECT_EQ(model().apps(), (QList<LibraryModel::Application>{{"Terminal", 2}, {"Files", 1}}));
    EXPECT_EQ(model().totalBytes(), 5);
    model().setSidebar(LibraryFilter::All);
    const std::pair<DateRange, int> ranges[]{{DateRange::Any, 5},
                                             {DateRange::Today, 1},
                                             {DateRange::Week, 3},
                                             {DateRange::Month, 4},
                                             {DateRange::Year, 4}};
    for (const auto &[range, count] : ranges) {
        model().setDateRange(range);
        EXPECT_EQ(model().visibleCount(), count);
        EXPECT_EQ(model().count(LibraryFilter::All), 5);
    }
    // Its collection gone, the sidebar falls back to everything.
    model().setDateRange(DateRange::Any);
    model().setSidebar(CollectionRow{bugs});
    catalog().deleteCollection(bugs);
    QTest::qWait(0);
    EXPECT_TRUE(model().sidebar() == SidebarItem(LibraryFilter::All));
    EXPECT_EQ(shown().size(), 5);
}

TEST_F(LibraryModelTest, FindsNamesApplicationsTextsAndDescriptions)
{
    put("Invoice March.png", ago(1));
    put("b.png", ago(2));
    put("c.png", ago(3));
    catalog().setSource("b.png", "Web Browser");
    catalog().setIndexedText("b.png", "RÉSUMÉ of the\nyear");
    catalog().setDescription("c.png", "A chart of sales");
    EXPECT_EQ(found("  "), (QStringList{"Invoice March", "b", "c"}));
    EXPECT_EQ(found("\tinvoice m "), QStringList{"Invoice March"});
    EXPECT_EQ(found("png"), QStringList());
    EXPECT_EQ(found("b br"), QStringList{"b"});
    EXPECT_EQ(found("résumé"), QStringList{"b"});
    EXPECT_EQ(found("the year"), QStringList());
    EXPECT_EQ(found("CHART OF"), QStringList{"c"});
    // What changes is found as it is then.
    catalog().setDescription("c.png", "A map");
    EXPECT_EQ(found("chart"), QStringList());
    EXPECT_EQ(found("a map"), QStringList{"c"});
    ASSERT_TRUE(m_library->rename(inFolder("c.png"), "Rivers"));
    EXPECT_EQ(found("a map"), QStringList{"Rivers"});
    ASSERT_TRUE(m_library->remove(inFolder("b.png")));
    EXPECT_EQ(found("résumé"), QStringList());
}

TEST_F(LibraryModelTest, SortsAndCutsIntoSections)
{
    for (const auto &[name, date, bytes] : std::initializer_list<std::tuple<const char *, QDateTime, int>>{
             {"Shot 10.png", ago(1), 30},
             {"shot 2.png", ago(16), 10},
             {"Äpfel.png", ago(24 * 3), 20},
             {"Birne.png", ago(24 * 20), 10},
             {"Zebra.png", QDateTime(QDate(2025, 12, 1), QTime(0, 0)), 40},
             {"Shot 1.png", QDateTime(QDate(2025, 12, 31), QTime(23, 59)), 5},
         })
        put(name, date, bytes);
    using Sections = QList<LibraryModel::Section>;
    const QLocale locale;
    const QString december = locale.toString(QDate(2025, 12, 1), "MMMM yyyy");
    const QString february = locale.toString(QDate(2026, 2, 1), "MMMM yyyy");
    EXPECT_EQ(
        model().sections(),
        (Sections{
            {"Today", 0, 1}, {"Yesterday", 1, 1}, {"This Week", 2, 1}, {february, 3, 1}, {december, 4, 2}}));
    model().setSort(LibrarySort::Oldest);
    EXPECT_EQ(shown(), (QStringList{"Zebra", "Shot 1", "Birne", "Äpfel", "shot 2", "Shot 10"}));
    EXPECT_EQ(
        model().sections(),
        (Sections{
            {december, 0, 2}, {february, 2, 1}, {"This Week", 3, 1}, {"Yesterday", 4, 1}, {"Today", 5, 1}}));
    model().setSort(LibrarySort::Name);
    EXPECT_EQ(shown(), (QStringList{"Äpfel", "Birne", "Shot 1", "shot 2", "Shot 10", "Zebra"}));
    EXPECT_EQ(model().sections(), (Sections{{"", 0, 6}}));
    model().setSort(LibrarySort::Size);
    EXPECT_EQ(shown(), (QStringList{"Zebra", "Shot 10", "Äpfel", "shot 2", "Birne", "Shot 1"}));
    EXPECT_EQ(defaults.string("librarySort"), "size");
    EXPECT_EQ(model().largest(2).size(), 2);
    // A date to come belongs to the week, above today.
    EXPECT_EQ(model().count(LibraryFilter::All), 6);
    put("future.png", ago(-30));
    model().setSort(LibrarySort::Newest);
    model().reload();
    EXPECT_EQ(model().count(LibraryFilter::All), 7);
    EXPECT_EQ(model().sections().first(), (LibraryModel::Section{"This Week", 0, 1}));
    // Nothing is remembered but order and size.
    defaults.set("librarySort", "bogus");
    defaults.set("libraryCardSize", "wide");
    m_model.reset();
    EXPECT_EQ(model().sort(), LibrarySort::Newest);
    EXPECT_EQ(model().cardSize(), 220);
}

TEST_F(LibraryModelTest, SelectsByClicksAndKeys)
{
    for (int i = 0; i < 5; ++i)
        put(QString(QChar('a' + i)) + ".png", ago(i));
    model().move(1);
    EXPECT_EQ(selected(), QStringList{"a"});
    model().setSelection({});
    model().move(-1);
    EXPECT_EQ(selected(), QStringList{"e"});
    model().move(1);
    EXPECT_EQ(selected(), QStringList{"e"});
    model().setPreviewing(inFolder("e.png"));
    model().move(-2);
    EXPECT_EQ(model().previewing(), inFolder("c.png"));

    const auto click = [&](const char *name, Qt::KeyboardModifiers modifiers) {
        model().click(inFolder(name), modifiers);
        return selected();
    };
    model().setSelection({});
    EXPECT_EQ(click("b.png", Qt::ShiftModifier), QStringList{"b"});
    EXPECT_EQ(click("d.png", Qt::ShiftModifier), (QStringList{"b", "c", "d"}));
    EXPECT_EQ(click("a.png", Qt::ShiftModifier), (QStringList{"a", "b"}));
    EXPECT_EQ(click("e.png", Qt::ControlModifier | Qt::ShiftModifier), (QStringList{"a", "b", "e"}));
    EXPECT_EQ(click("a.png", Qt::ControlModifier), (QStringList{"b", "e"}));
    EXPECT_EQ(click("c.png", Qt::NoModifier), QStringList{"c"});

    // Where a stretch begins goes along with a new name.
    for (const char *name : {"a.png", "b.png", "e.png", "d.png"})
        click(name, Qt::ControlModifier);
    ASSERT_TRUE(m_library->rename(inFolder("d.png"), "dd"));
    EXPECT_EQ(click("dd.png", Qt::ShiftModifier), QStringList{"dd"});
    ASSERT_TRUE(m_library->rename(inFolder("dd.png"), "d"));
    click("c.png", Qt::NoModifier);

    // What the query hides stays selected, and counts as long as the file is there.
    click("d.png", Qt::ControlModifier);
    model().setQuery("d");
    EXPECT_EQ(selected(), QStringList{"d"});
    EXPECT_EQ(model().selection().size(), 2);
    ASSERT_TRUE(m_library->remove(inFolder("c.png")));
    EXPECT_EQ(model().selection().size(), 1);
    model().setQuery({});
    model().selectAll();
    const auto removed = m_library->removeInBackground(model().selectedPaths());
    ASSERT_TRUE(QTest::qWaitFor([&] { return removed.isFinished(); }));
    EXPECT_TRUE(model().selection().isEmpty());
    EXPECT_EQ(machine.trash.trashed.size(), 5);
}

TEST_F(LibraryModelTest, FollowsTheLibraryWithoutReadingAnew)
{
    put("a.png", ago(5));
    put("b.png", ago(3));
    EXPECT_EQ(shown(), (QStringList{"b", "a"}));
    // Behind the model's back, so that only what is told shows.
    put("unseen.png", ago(2));
    QSignalSpy changes(&model(), &LibraryModel::visibleChanged),
        counts(&model(), &LibraryModel::sidebarChanged);
    // A window counts as soon as it hears of more, and its list of places is to hear of it all the same.
    QObject::connect(&model(), &LibraryModel::visibleChanged, [this] { model().totalBytes(); });
    const QString path = put("c.png", ago(1));
    Q_EMIT m_library->added({path, home.path("elsewhere.png")});
    ASSERT_TRUE(changes.wait());
    EXPECT_EQ(counts.size(), 1);
    EXPECT_EQ(shown(), (QStringList{"c", "b", "a"}));
    EXPECT_EQ(model().count(LibraryFilter::Today), 3);
    put("a.png", ago(0), 9);
    QSignalSpy cards(&model(), &LibraryModel::cardsChanged);
    Q_EMIT m_library->modified({inFolder("a.png")});
    EXPECT_EQ(cards.size(), 1);
    ASSERT_TRUE(changes.wait());
    EXPECT_EQ(shown(), (QStringList{"a", "c", "b"}));
    EXPECT_EQ(model().totalBytes(), 11);
    // Ten thousand at once, in and out, in every order.
    QStringList many;
    for (int i = 0; i < 3000; ++i)
        many.append(put(QString("many %1.png").arg(i), ago(i % 50), i));
    model().setSort(LibrarySort::Size);
    Q_EMIT m_library->added(many);
    ASSERT_TRUE(changes.wait());
    EXPECT_EQ(model().visibleCount(), 3003);
    EXPECT_EQ(shown().first(), "many 2999");
    model().setSort(LibrarySort::Name);
    EXPECT_EQ(shown().mid(3, 2), (QStringList{"many 0", "many 1"}));
    Q_EMIT m_library->removed(many);
    ASSERT_TRUE(changes.wait());
    EXPECT_EQ(shown(), (QStringList{"a", "b", "c"}));
    EXPECT_EQ(found("many"), QStringList());
}

TEST_F(LibraryModelTest, ReadsOnWorkersAndFindsTextsWhenTheyAreThere)
{
    put("a.png", ago(2));
    put("b.png", ago(1));
    catalog().setIndexedText("a.png", "harbour");
    m_model = std::make_unique<LibraryModel>(*m_library, defaults, clock);
    m_model->setQuery("harbour");
    QSignalSpy reading(m_model.get(), &LibraryModel::readingChanged);
    m_model->load();
    EXPECT_EQ(m_model->reading(), LibraryModel::Reading::Files);
    while (m_model->reading() == LibraryModel::Reading::Files)
        ASSERT_TRUE(reading.wait());
    EXPECT_EQ(m_model->itemCount(), 2);
    // Changes that come while the texts are read aren't lost.
    catalog().setIndexedText("b.png", "the harbour office");
    ASSERT_TRUE(m_library->rename(inFolder("a.png"), "Quay"));
    while (m_model->reading() != LibraryModel::Reading::Done)
        ASSERT_TRUE(reading.wait());
    QTest::qWait(0);
    EXPECT_EQ(shown(), (QStringList{"b", "Quay"}));
}

TEST_F(LibraryModelTest, TellsHowFarIndexingIs)
{
    model();
    Q_EMIT m_library->indexing(3, 10);
    EXPECT_EQ(model().indexProgress(), "Indexing text in captures… 3 of 10");
    Q_EMIT m_library->indexing(10, 10);
    EXPECT_EQ(model().indexProgress(), std::nullopt);
}
