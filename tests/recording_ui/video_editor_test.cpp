#include "recording/ui/video_editor_window_controller.h"

#include "base/notice.h"
#include "base/pending_work.h"
#include "fakes/fake_platform.h"
#include "recording/ui/trim_handle.h"
#include "recording/ui/video_editor_view.h"
#include "support/accessible_walk.h"
#include "support/printers.h"
#include "support/temporary_folder.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QThreadPool>
#include <gmock/gmock.h>

using testing::Contains;

namespace {

class VideoEditor : public testing::Test {
protected:
    VideoEditor()
    {
        QObject::connect(&m_notices, &NoticeBoard::posted, &m_notices,
                         [this](const Notice &notice) { m_told.append(notice.text); });
        m_fakes.movies.hasPictures = true;
    }
    ~VideoEditor() override
    {
        m_editor.reset();
        EXPECT_TRUE(QTest::qWaitFor([this] { return m_pending.isIdle(); }));
    }
    void open()
    {
        m_editor = std::make_unique<VideoEditorWindowController>(
            m_folder.path("Recording.mov"),
            VideoEditorWindowController::Ports{
                m_fakes.movies, m_fakes.soundOutput, m_fakes.speech, [] { return ExternalSpeech::Choice(); },
                m_exports, m_fakes.pasteboard, m_fakes.workspace, m_notices, m_pending, m_threads});
        m_editor->show();
    }
    void openReady()
    {
        open();
        ASSERT_TRUE(QTest::qWaitFor([this] { return m_editor->model().isReady(); }));
    }
    template <typename Widget>
    Widget *named(const QString &name)
    {
        for (Widget *widget : m_editor->window().findChildren<Widget *>()) {
            if (widget->isVisible() && widget->accessibleName() == name)
                return widget;
        }
        return nullptr;
    }
    template <typename Widget>
    Widget *titled(const QString &text)
    {
        for (Widget *widget : m_editor->window().findChildren<Widget *>()) {
            if (widget->isVisible() && widget->text() == text)
                return widget;
        }
        return nullptr;
    }
    void press(int key) { QTest::keyClick(&m_editor->window(), Qt::Key(key)); }
    bool waitUntilDone()
    {
        return QTest::qWaitFor([this] { return m_editor->model().busy().isEmpty(); });
    }
    static QByteArray contentOf(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static void fill(const QString &path, const QByteArray &bytes)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    TemporaryFolder m_folder;
    FakePlatform m_fakes{m_folder.path()};
    NoticeBoard m_notices;
    QStringList m_told;
    PendingWork m_pending;
    QThreadPool m_threads;
    FilmExports m_exports{{m_fakes.movies, m_notices, m_pending, m_threads}};
    std::unique_ptr<VideoEditorWindowController> m_editor;
};

} // namespace

TEST_F(VideoEditor, TrimsByTypedTimesAndKeys)
{
    openReady();
    m_editor->trim();
    auto *from = named<QLineEdit>("Start of the trimmed part");
    ASSERT_NE(from, nullptr);
    from->setFocus();
    from->selectAll();
    QTest::keyClicks(from, "0:02.5");
    QTest::keyClick(from, Qt::Key_Return);
    EXPECT_DOUBLE_EQ(m_editor->model().shownPart().from, 2.5);
    // The picture of the edge is looked at.
    EXPECT_TRUE(QTest::qWaitFor([this] { return qRed(m_editor->player().picture().pixel(0, 0)) == 25; }));
    auto *end = named<TrimHandle>("End of the trimmed part");
    ASSERT_NE(end, nullptr);
    QTest::keyClick(end, Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_DOUBLE_EQ(m_editor->model().shownPart().to, 9);
    QTest::keyClick(end, Qt::Key_Left);
    EXPECT_TRUE(QTest::qWaitFor([this] { return std::abs(m_editor->model().shownPart().to - 8.9) < 0.01; }))
        << m_editor->model().shownPart().to;
    m_editor->window().setFocus();
    press(Qt::Key_Escape);
    EXPECT_FALSE(m_editor->model().isTrimming());
    EXPECT_FALSE(m_editor->model().isTrimmed());

    m_editor->trim();
    from->selectAll();
    QTest::keyClicks(from, "0:02.5");
    QTest::keyClick(from, Qt::Key_Return);
    m_editor->model().confirmTrim();
    QTest::keyClick(named<QWidget>("Timeline"), Qt::Key_End);
    EXPECT_TRUE(QTest::qWaitFor([this] { return qRed(m_editor->player().picture().pixel(0, 0)) > 90; }));
    QTest::keyClick(named<QWidget>("Timeline"), Qt::Key_Home);
    EXPECT_TRUE(QTest::qWaitFor([this] { return qRed(m_editor->player().picture().pixel(0, 0)) == 25; }))
        << "to the beginning of the part, not of the film";
}

TEST_F(VideoEditor, ExportsAndKeepsTheOldFileWhenItCant)
{
    openReady();
    const QString target = m_folder.path("out.mp4");
    fill(target, "old");
    m_fakes.movies.refusal = "The disk is full.";
    m_editor->runExport(FilmExport::Kind::Mp4, target);
    EXPECT_EQ(m_editor->model().busy(), "Exporting MP4…");
    EXPECT_EQ(titled<QPushButton>("Export MP4…"), nullptr);
    ASSERT_TRUE(waitUntilDone());
    EXPECT_EQ(contentOf(target), "old");
    EXPECT_TRUE(m_told.isEmpty());
    auto *ok = titled<QPushButton>("OK");
    ASSERT_NE(ok, nullptr) << "the window says why";
    ok->click();

    m_fakes.movies.refusal.clear();
    m_editor->runExport(FilmExport::Kind::Mp4, target);
    ASSERT_TRUE(waitUntilDone());
    EXPECT_EQ(contentOf(target), "half");
    EXPECT_EQ(m_told, QStringList{"Exported out.mp4"});

    // What was trimmed away isn't in it: a tenth of a second at twelve a second is one picture.
    m_editor->model().beginTrim();
    m_editor->model().moveEdge(VideoEditorModel::Edge::From, 5);
    m_editor->model().moveEdge(VideoEditorModel::Edge::To, 5.1);
    m_editor->model().confirmTrim();
    const QString gif = m_folder.path("out.gif");
    m_editor->runExport(FilmExport::Kind::Gif, gif);
    ASSERT_TRUE(waitUntilDone());
    const QImage picture(gif);
    EXPECT_EQ(picture.size(), m_fakes.movies.movie.size);
    EXPECT_EQ(qRed(picture.pixel(3, 3)), 50);

    // The window may go meanwhile; the export doesn't.
    m_editor->runExport(FilmExport::Kind::Mp4, m_folder.path("later.mp4"));
    m_editor.reset();
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_told.contains("Exported later.mp4"); }));
}

TEST_F(VideoEditor, MakesCaptionsThatCanBeMended)
{
    m_fakes.speech.words = {{"hello", 0.5, 0.4}, {"word", 1, 0.4}, {"later", 6, 0.5}};
    openReady();
    m_editor->model().beginTrim();
    m_editor->model().moveEdge(VideoEditorModel::Edge::To, 5);
    m_editor->model().confirmTrim();
    m_editor->showCaptions();
    auto *table = m_editor->window().findChild<QTableWidget *>();
    ASSERT_NE(table, nullptr);
    ASSERT_TRUE(QTest::qWaitFor([&] { return titled<QPushButton>("Copy Text")->isEnabled(); }));
    ASSERT_EQ(table->rowCount(), 2);
    EXPECT_EQ(table->item(0, 0)->text(), "00:00:00,500");
    // What is spoken in a row is heard while it is mended.
    table->setCurrentCell(1, 1);
    EXPECT_TRUE(m_editor->player().isPlaying());
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_editor->player().position() > 5.8; }));
    table->item(0, 1)->setText("hello world");
    titled<QPushButton>("Copy Text")->click();
    EXPECT_EQ(m_fakes.pasteboard.text(), "hello world") << "only what the trimmed part says";
    EXPECT_THAT(m_told, Contains("Transcript copied"));
    // Closed and opened again, the mended words are still there.
    titled<QPushButton>("Close")->click();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !m_editor->window().findChild<QTableWidget *>(); }));
    m_fakes.speech.words.clear();
    m_editor->showCaptions();
    table = m_editor->window().findChild<QTableWidget *>();
    EXPECT_EQ(table->item(0, 1)->text(), "hello world");
}

TEST_F(VideoEditor, KeepsMendedWordsOfCaptionsThatWereNotWhole)
{
    m_fakes.speech.words = {{"hello", 0.5, 0.4}, {"word", 1, 0.4}};
    m_fakes.speech.isCutOff = true;
    openReady();
    m_editor->showCaptions();
    auto *table = m_editor->window().findChild<QTableWidget *>();
    ASSERT_TRUE(table && QTest::qWaitFor([&] { return table->rowCount() == 1; }));
    table->item(0, 1)->setText("hello world");
    titled<QPushButton>("Close")->click();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !m_editor->window().findChild<QTableWidget *>(); }));
    m_fakes.speech.isCutOff = false;
    m_editor->showCaptions();
    table = m_editor->window().findChild<QTableWidget *>();
    ASSERT_TRUE(table && QTest::qWaitFor([&] { return titled<QPushButton>("Copy Text")->isEnabled(); }));
    EXPECT_EQ(table->item(0, 1)->text(), "hello world");
}

TEST_F(VideoEditor, SaysWhyAFilmPlaysNowhere)
{
    m_fakes.movies.hasPictures = false;
    open();
    ASSERT_TRUE(QTest::qWaitFor([this] { return titled<QLabel>("No pictures.") != nullptr; }));
    EXPECT_FALSE(titled<QPushButton>("Export MP4…")->isEnabled());
    m_editor->exportMP4();
    m_editor->showCaptions();
    EXPECT_TRUE(m_editor->model().busy().isEmpty());
    EXPECT_EQ(m_editor->window().findChild<QTableWidget *>(), nullptr);
}

TEST_F(VideoEditor, ReadersAndTheKeyboardGetEverywhere)
{
    openReady();
    AccessibleWalk::expectUsable(m_editor->window(), 9, 6);
}
