#include "recording/captions.h"
#include "recording/external_speech.h"

#include "fakes/fake_films.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <thread>

namespace {

QStringList told(const QList<CaptionCue> &cues)
{
    QStringList result;
    for (const CaptionCue &cue : cues)
        result.append(QStringLiteral("%1-%2 %3").arg(cue.start).arg(cue.end).arg(cue.text));
    return result;
}

} // namespace

TEST(Captions, AreCutAtPausesLengthAndDuration)
{
    struct Case {
        const char *what;
        QList<SpokenWord> words;
        QStringList cues;
    };
    const QString twenty(20, u'a');
    const QList<Case> cases{
        {"no words", {}, {}},
        {"a pause of .9", {{"a", 0, .5}, {"b", .6, .5}, {"c", 2.0, .5}}, {"0-1.1 a b", "2-2.5 c"}},
        {"a pause of exactly .8", {{"a", 0, .5}, {"b", 1.3, .5}}, {"0-1.8 a b"}},
        {"exactly four seconds", {{"a", 0, 2}, {"b", 2, 2}}, {"0-4 a b"}},
        {"more than four seconds", {{"a", 0, 2}, {"b", 2, 2.001}}, {"0-2 a", "2-4.001 b"}},
        {"42 characters", {{twenty, 0, 1}, {twenty + "b", 1, 1}}, {"0-2 " + twenty + " " + twenty + "b"}},
        {"43 characters", {{twenty, 0, 1}, {twenty + "bc", 1, 1}}, {"0-1 " + twenty, "1-2 " + twenty + "bc"}},
        {"a long word stands alone",
         {{QString(50, u'x'), 0, 1}, {"y", 1, 1}},
         {"0-1 " + QString(50, u'x'), "1-2 y"}},
        {"empty words are passed over", {{"a", 0, .5}, {"", .6, 9}, {"b", 1, .5}}, {"0-1.5 a b"}},
    };
    for (const Case &each : cases)
        EXPECT_EQ(told(Captions::cues(each.words)), each.cues) << each.what;
}

TEST(Captions, AreWrittenAsSubRip)
{
    EXPECT_EQ(Captions::timestamp(-1), "00:00:00,000");
    EXPECT_EQ(Captions::timestamp(3661.2345), "01:01:01,235");
    EXPECT_EQ(Captions::timestamp(3723.4), "01:02:03,400");
    EXPECT_EQ(Captions::srt({{1, 2, "one"}, {10, 10.1, "two"}}),
              "1\n00:00:01,000 --> 00:00:02,000\none\n\n2\n00:00:10,000 --> 00:00:10,500\ntwo\n");
    EXPECT_EQ(Captions::srt({}), "");
    EXPECT_EQ(Captions::transcript({{0, 1, "one two"}, {2, 3, "three"}}), "one two three");
}

TEST(Captions, OfAPartCountFromItsBeginning)
{
    const QList<CaptionCue> cues{{0, 2, "before"}, {2, 4, "over"}, {5, 6, "inside"}, {8, 9, "after"}};
    EXPECT_EQ(told(Captions::within(cues, 3, 8)), (QStringList{"0-1 over", "2-3 inside"}));
}

TEST(Captions, SayWhyThereAreNone)
{
    FakeMovies movies;
    FakeSpeechEngine speech;
    WorkProgress progress;
    EXPECT_EQ(Captions::captions(movies, speech, "film.mov", progress).error(),
              captionError(CaptionError::NoSpeech));
    speech.words = {{"hello", 1, .5}};
    EXPECT_EQ(Captions::captions(movies, speech, "film.mov", progress)->first().text, "hello");
    progress.isCancelled = true;
    EXPECT_TRUE(Captions::captions(movies, speech, "film.mov", progress).error().isCancelled());
    progress.isCancelled = false;
    movies.movie.soundTracks = 0;
    EXPECT_EQ(Captions::captions(movies, speech, "film.mov", progress).error(),
              captionError(CaptionError::NoAudio));
}

namespace {

// A recogniser that is a program: a script that answers as the real one does.
class ExternalSpeechTest : public testing::Test {
protected:
    Result<QList<CaptionCue>> captionsBy(const QByteArray &script)
    {
        QFile program(m_folder.filePath("recogniser"));
        EXPECT_TRUE(program.open(QIODevice::WriteOnly));
        program.write("#!/bin/sh\n" + script);
        program.close();
        program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        ExternalSpeech speech({program.fileName(), program.fileName()});
        return Captions::captions(m_movies, speech, "film.mov", m_progress);
    }
    QTemporaryDir m_folder;
    FakeMovies m_movies;
    WorkProgress m_progress;
};

} // namespace

TEST_F(ExternalSpeechTest, GivesTheSoundAndTakesTheWords)
{
    // Words: its arguments are "-m MODEL -f WAVE … -of ANSWER -pp"; the sound has ten seconds.
    const auto cues = captionsBy(R"(wave=$4; answer=${12}
[ $(wc -c <"$wave") = 320044 ] || exit 3
echo 'progress = 50%' >&2
cat >"$answer.json" <<END
{"transcription":[{"offsets":{"from":500,"to":900},"text":" Grüße"},{"offsets":{"from":900,"to":1000},"text":"[Music]"},
{"offsets":{"from":1000,"to":1500},"text":" dich"}]}
END
)");
    ASSERT_TRUE(cues) << qPrintable(cues.error().message + cues.error().detail);
    EXPECT_EQ(*cues, (QList<CaptionCue>{{0.5, 1.5, "Grüße dich"}}));
}

TEST_F(ExternalSpeechTest, SaysWhenItFails)
{
    EXPECT_EQ(captionsBy("exit 1").error().message, "The speech recogniser recogniser failed.");
    EXPECT_EQ(captionsBy("exit 0").error().message, "The speech recogniser recogniser gave no words.");
    EXPECT_EQ(captionsBy("echo '{\"transcription\":7}' >\"${12}.json\"").error(),
              captionError(CaptionError::NoSpeech));
    ExternalSpeech missing({m_folder.filePath("none"), m_folder.filePath("none")});
    EXPECT_EQ(missing.listen({}).error().kind, Error::Kind::Unavailable);
}

TEST_F(ExternalSpeechTest, EndsWhenItIsCancelled)
{
    std::jthread cancel([this](const std::stop_token &stop) {
        while (!stop.stop_requested() && !QFile::exists(m_folder.filePath("running")))
            std::this_thread::yield();
        m_progress.isCancelled = true;
    });
    const auto cues = captionsBy("touch '" + m_folder.filePath("running").toUtf8() + "'; exec sleep 600");
    EXPECT_TRUE(!cues && cues.error().isCancelled());
}
