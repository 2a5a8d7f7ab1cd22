#include "recording/film_time.h"
#include "recording/movie_player.h"
#include "recording/video_editor_model.h"

#include "fakes/fake_films.h"

#include <QSignalSpy>
#include <QTest>
#include <QThreadPool>
#include <gtest/gtest.h>

namespace {

// A film of ten pictures a second, each of a grey that tells which.
class Player : public testing::Test {
protected:
    void open(double duration)
    {
        m_movies.hasPictures = true;
        m_movies.movie.duration = duration;
        m_player.open("film.mov");
        ASSERT_TRUE(QTest::qWaitFor([this] { return !m_player.picture().isNull(); }));
    }
    int shown() const { return qRed(m_player.picture().pixel(0, 0)); }
    bool shows(int picture)
    {
        return QTest::qWaitFor([&] { return shown() == picture; });
    }

    FakeMovies m_movies;
    FakeSoundOutput m_output;
    QThreadPool m_threads;
    MoviePlayer m_player{{m_movies, m_output, m_threads}};
};

} // namespace

TEST_F(Player, ShowsWhatIsSoughtAndStepsThroughPictures)
{
    open(2);
    for (double time : {0.4, 1.9, 0.95, 1.234})
        m_player.seek(time);
    EXPECT_TRUE(shows(12));
    EXPECT_DOUBLE_EQ(m_player.position(), 1.234);
    QSignalSpy stepped(&m_player, &MoviePlayer::stepped);
    m_player.step(m_player.position(), 1);
    EXPECT_TRUE(shows(13));
    m_player.step(1.3, -2);
    EXPECT_TRUE(shows(11));
    EXPECT_NEAR(stepped.last().first().toDouble(), 1.1, 1e-9);
    // Neither end is passed.
    m_player.step(1.9, 3);
    EXPECT_TRUE(shows(19));
    m_player.step(0.05, -3);
    EXPECT_TRUE(shows(0));
    EXPECT_EQ(m_player.position(), 0);
}

TEST_F(Player, PlaysAPartOnceOrOverAndOver)
{
    open(3);
    QSignalSpy playing(&m_player, &MoviePlayer::playingChanged);
    m_player.play(1, 1.4);
    ASSERT_TRUE(QTest::qWaitFor([&] { return playing.count() == 2; }));
    EXPECT_DOUBLE_EQ(m_player.position(), 1.4);
    EXPECT_EQ(shown(), 13) << "the last picture of the part";

    int wraps = 0;
    double last = 0;
    QObject::connect(&m_player, &MoviePlayer::changed, &m_player, [&] {
        EXPECT_GE(m_player.position(), 1 - 1e-9);
        EXPECT_LE(m_player.position(), 1.2);
        wraps += m_player.position() < last;
        last = m_player.position();
    });
    m_player.seek(1.1);
    m_player.play(1, 1.2, MoviePlayer::Way::Looped);
    EXPECT_TRUE(QTest::qWaitFor([&] { return wraps >= 3; }));
    EXPECT_TRUE(m_player.isPlaying());
    m_player.pause();
    EXPECT_FALSE(m_player.isPlaying());
}

TEST_F(Player, GoesOnWhenItsFilmIsRenamedOrDeletedOrBrokenInOnePlace)
{
    open(2);
    QSignalSpy failed(&m_player, &MoviePlayer::failed), playing(&m_player, &MoviePlayer::playingChanged);
    m_movies.gone.append("film.mov");
    m_player.setPath("renamed.mov");
    m_movies.isBadInside = true;
    m_player.setBounds({50, 50}); // opens it again
    m_player.seek(0.1);
    EXPECT_TRUE(shows(1));
    m_player.play(0.1, 0.6);
    EXPECT_TRUE(QTest::qWaitFor([&] { return playing.count() == 2; })) << "it never ended";
    EXPECT_EQ(shown(), 5);
    m_movies.gone.append("renamed.mov");
    m_player.setBounds({40, 40});
    m_player.seek(1.1);
    EXPECT_TRUE(shows(11));
    EXPECT_EQ(failed.count(), 0);
}

TEST_F(Player, TellsWhyAFilmCantBePlayed)
{
    QSignalSpy failed(&m_player, &MoviePlayer::failed);
    m_player.open("broken.mov");
    ASSERT_TRUE(failed.wait());
    EXPECT_EQ(failed.first().first().value<Error>().message, "No pictures.");
    m_player.play(0, 1);
    EXPECT_FALSE(m_player.isPlaying());
}

TEST(VideoEditorModel, KeepsAPartWithinTheFilm)
{
    using Edge = VideoEditorModel::Edge;
    using Part = VideoEditorModel::Part;
    VideoEditorModel model;
    model.beginTrim();
    EXPECT_FALSE(model.isTrimming()) << "there is no film yet";
    model.setDuration(10);
    model.beginTrim();
    model.moveEdge(Edge::From, -3);
    model.moveEdge(Edge::To, 12);
    EXPECT_EQ(model.shownPart(), (Part{0, 10}));
    model.moveEdge(Edge::To, 4);
    model.moveEdge(Edge::From, 9);
    EXPECT_NEAR(model.shownPart().length(), VideoEditorModel::kShortest, 1e-9);
    EXPECT_EQ(model.part(), (Part{0, 10})) << "not before it is confirmed";
    model.cancelTrim();
    EXPECT_FALSE(model.isTrimmed());
    model.beginTrim();
    model.moveEdge(Edge::From, 2);
    model.confirmTrim();
    EXPECT_TRUE(model.isTrimmed());
    EXPECT_EQ(model.part(), (Part{2, 10}));
    model.setBusy("Exporting");
    model.beginTrim();
    EXPECT_FALSE(model.isTrimming());
}

TEST(FilmTime, IsReadAsItIsWritten)
{
    EXPECT_EQ(FilmTime::text(65.254), "1:05.25");
    EXPECT_EQ(FilmTime::text(0.29), "0:00.29");
    EXPECT_EQ(FilmTime::text(3665.25), "1:01:05.25");
    for (double time : {0.0, 0.29, 59.99, 3599.5, 3665.25})
        EXPECT_NEAR(FilmTime::parse(FilmTime::text(time)).value_or(-1), time, 0.01);
    EXPECT_EQ(FilmTime::parse(" 2,5 "), 2.5);
    EXPECT_EQ(FilmTime::parse("90"), 90.0);
    for (const char *nonsense : {"", "a", "1:60", "1:", "-1", "1:2:3:4", "1e3", "1:75:00"})
        EXPECT_FALSE(FilmTime::parse(nonsense)) << nonsense;
}
