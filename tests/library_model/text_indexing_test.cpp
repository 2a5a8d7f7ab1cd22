#include "library/model/text_indexing.h"

#include "base/notice.h"
#include "document/image_files.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_desktop.h"
#include "fakes/fake_recognition.h"
#include "library/library.h"
#include "services/text_recognizer.h"
#include "settings/app_settings.h"
#include "settings/defaults.h"
#include "support/pictures.h"
#include "support/temporary_folder.h"

#include <QFile>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace {

class TextIndexingTest : public testing::Test {
protected:
    TextIndexingTest()
    {
        m_settings.setSaveFolder(m_home.path("Shots"));
        QDir().mkpath(m_home.path("Shots"));
        m_library = std::make_unique<Library>(m_settings, m_trash, m_clock);
        m_engine.answer = QList<RecognizedLine>{{"harbour", {}, {}}};
        QObject::connect(m_library.get(), &Library::indexing,
                         [this](int done, int total) { m_told.append({done, total}); });
    }
    QString inFolder(const QString &name) const { return m_home.path("Shots/" + name); }
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
    QHash<QString, QString> texts() const { return m_library->catalog().data().texts; }

    TemporaryFolder m_home;
    FakePaths m_paths{m_home.path()};
    FakeSecrets m_secrets;
    FakeLoginItem m_loginItem;
    FakeTrash m_trash{m_home.path("trash")};
    FakeClock m_clock;
    FakeTextEngine m_engine;
    FakeFaceEngine m_faces;
    TextRecognizer m_recognizer{m_engine, m_faces};
    NoticeBoard m_notices;
    Defaults m_defaults{QString()};
    AppSettings m_settings{m_defaults, m_secrets, m_loginItem, m_paths, m_notices};
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
    EXPECT_EQ(texts(), (QHash<QString, QString>{{"a.png", "harbour"}, {"b.jpg", "harbour"}}));
    EXPECT_EQ(m_told.size(), 3);
    EXPECT_EQ(m_told.first(), std::pair(0, 2));
    EXPECT_EQ(m_told.last(), std::pair(2, 2));
    EXPECT_TRUE(m_engine.sizes.contains(QSize(2400, 600)));
    run();
    EXPECT_EQ(m_engine.sizes.size(), 2);
}

TEST_F(TextIndexingTest, RemembersThatThereIsNoTextButNotWhatCantBeRead)
{
    picture("blank.png");
    QFile broken(inFolder("broken.png"));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write("half arrived");
    broken.close();
    m_engine.answer = fail(QStringLiteral("The reader is out."));
    run();
    EXPECT_EQ(texts(), (QHash<QString, QString>{{"blank.png", ""}}));
    // It arrives whole, and is read by the next run; the other is not tried again.
    picture("broken.png");
    m_engine.answer = QList<RecognizedLine>{{"now", {}, {}}};
    run();
    EXPECT_EQ(texts(), (QHash<QString, QString>{{"blank.png", ""}, {"broken.png", "now"}}));
}

TEST_F(TextIndexingTest, WaitsForTheUserAndReadsWhatComesMeanwhile)
{
    picture("a.png");
    indexing().setPaused(true);
    QSignalSpy finished(&indexing(), &TextIndexing::finished);
    indexing().indexMissingText();
    EXPECT_TRUE(indexing().isIndexing());
    EXPECT_TRUE(m_engine.sizes.isEmpty());
    picture("b.png");
    indexing().indexMissingText();
    indexing().setPaused(false);
    while (indexing().isIndexing())
        ASSERT_TRUE(finished.wait());
    EXPECT_EQ(texts().size(), 2);
}
