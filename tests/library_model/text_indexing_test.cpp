#include "library/model/text_indexing.h"

#include "document/image_files.h"
#include "library/library.h"
#include "services/text_recognizer.h"
#include "support/pictures.h"
#include "support/stage.h"

#include <QFile>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace {

class TextIndexingTest : public testing::Test, protected Stage {
protected:
    TextIndexingTest()
    {
        prefs.setSaveFolder(home.path("Shots"));
        QDir().mkpath(home.path("Shots"));
        m_library = std::make_unique<Library>(prefs, machine.trash, clock);
        machine.text.answer = QList<RecognizedLine>{{"harbour", {}, {}}};
        QObject::connect(m_library.get(), &Library::indexing,
                         [this](int done, int total) { m_told.append({done, total}); });
    }
    QString inFolder(const QString &name) const { return home.path("Shots/" + name); }
    void picture(const QString &name, const QSize &size = {40, 30})
    {
        ASSERT_TRUE(ImageFiles::write(filled(size), inFolder(name)));
    }
    void run()
    {
        QSignalSpy finished(&indexing(), &TextIndexing::finished);
        indexing().indexMissingText();
        if (indexing().isIndexing())
            ASSERT_TRUE(finished.wait());
    }
    TextIndexing &indexing()
    {
        if (!m_made)
            m_made = std::make_unique<TextIndexing>(*m_library, m_recognizer);
        return *m_made;
    }
    QHash<QString, StoredText> texts() const { return m_library->catalog().data().texts; }

    TextRecognizer m_recognizer{machine.text, machine.faces};
    std::unique_ptr<Library> m_library;
    std::unique_ptr<TextIndexing> m_made;
    QList<std::pair<int, int>> m_told;
};

} // namespace

TEST_F(TextIndexingTest, ReadsEachPictureOnceAndScaledDown)
{
    picture("a.png", {4800, 1200});
    picture("b.jpg");
    QFile film(inFolder("film.mov"));
    ASSERT_TRUE(film.open(QIODevice::WriteOnly));
    run();
    EXPECT_EQ(texts(),
              (QHash<QString, StoredText>{{"a.png", QString("harbour")}, {"b.jpg", QString("harbour")}}));
    EXPECT_EQ(m_told.size(), 3);
    EXPECT_EQ(m_told.first(), std::pair(0, 2));
    EXPECT_EQ(m_told.last(), std::pair(2, 2));
    EXPECT_TRUE(machine.text.sizes.contains(QSize(2400, 600)));
    run();
    EXPECT_EQ(machine.text.sizes.size(), 2);
}

TEST_F(TextIndexingTest, RemembersThatThereIsNoTextButNotWhatCantBeRead)
{
    picture("blank.png");
    QFile broken(inFolder("broken.png"));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write("half arrived");
    broken.close();
    machine.text.answer = fail(QStringLiteral("The reader is out."));
    run();
    EXPECT_EQ(texts(), (QHash<QString, StoredText>{{"blank.png", QString("")}}));
    // It arrives whole, and is read by the next run; the other is not tried again.
    picture("broken.png");
    machine.text.answer = QList<RecognizedLine>{{"now", {}, {}}};
    run();
    EXPECT_EQ(texts(),
              (QHash<QString, StoredText>{{"blank.png", QString("")}, {"broken.png", QString("now")}}));
}

TEST_F(TextIndexingTest, WaitsForTheUserAndReadsWhatComesMeanwhile)
{
    picture("a.png");
    indexing().setPaused(true);
    QSignalSpy finished(&indexing(), &TextIndexing::finished);
    indexing().indexMissingText();
    EXPECT_TRUE(indexing().isIndexing());
    EXPECT_TRUE(machine.text.sizes.isEmpty());
    picture("b.png");
    indexing().indexMissingText();
    indexing().setPaused(false);
    while (indexing().isIndexing())
        ASSERT_TRUE(finished.wait());
    EXPECT_EQ(texts().size(), 2);
}
