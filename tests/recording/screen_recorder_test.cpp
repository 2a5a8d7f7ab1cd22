#include "recording/recording_recovery.h"
#include "recording/screen_recorder.h"

#include "base/notice.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_platform.h"
#include "library/library.h"
#include "settings/app_settings.h"
#include "settings/defaults.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

class ScreenRecorderTest : public testing::Test {
protected:
    void start(const QRectF &rect = {10, 20, 301, 201})
    {
        m_recorder->start(m_screen, rect, m_options,
                          [this](const std::optional<QString> &path, const std::optional<Error> &error) {
                              ++m_completions;
                              m_path = path;
                              m_error = error;
                          });
    }
    bool reaches(ScreenRecorder::State state)
    {
        return QTest::qWaitFor([&] { return m_recorder->state() == state; });
    }
    bool isComplete()
    {
        return QTest::qWaitFor([&] { return m_completions > 0; });
    }
    QStringList filesOfLibrary() const
    {
        return QDir(m_settings.saveFolder()).entryList(QDir::Files | QDir::Hidden);
    }

    QTemporaryDir m_folder;
    FakePlatform m_machine{m_folder.path()};
    NoticeBoard m_notices;
    Defaults m_defaults{m_folder.filePath("defaults.json")};
    AppSettings m_settings{m_defaults, m_machine.secrets, m_machine.loginItem, m_machine.paths, m_notices};
    FakeClock m_clock;
    Library m_library{m_settings, m_machine.trash, m_clock};
    QString m_notes = m_folder.filePath("notes");
    std::unique_ptr<ScreenRecorder> m_recorder = std::make_unique<ScreenRecorder>(
        ScreenRecorder::Ports{m_machine.films, m_machine.soundSources, m_machine.movies,
                              m_machine.permissions, m_library, m_notes});
    Screen m_screen{1, "A", QRect(100, 0, 800, 600), 1, true};
    CaptureOptions m_options;
    int m_completions = 0;
    std::optional<QString> m_path;
    std::optional<Error> m_error;
};

} // namespace

TEST_F(ScreenRecorderTest, FilmsEvenSizes)
{
    Screen screen = m_screen;
    EXPECT_EQ(ScreenRecorder::pixelsOf(screen, {10, 20, 301, 201}), QRect(110, 20, 300, 200));
    screen.scale = 2;
    EXPECT_EQ(ScreenRecorder::pixelsOf(screen, {10, 20, 301, 201}), QRect(120, 40, 602, 402));
    screen.scale = 1.25;
    EXPECT_EQ(ScreenRecorder::pixelsOf(screen, {0, 0, 100.8, 80}).size(), QSize(126, 100));
}

TEST_F(ScreenRecorderTest, PutsAFilmIntoTheLibrary)
{
    m_options.microphone = true;
    start();
    EXPECT_EQ(m_recorder->state(), ScreenRecorder::State::Starting);
    QSignalSpy changed(&m_library, &Library::changed);
    ASSERT_TRUE(reaches(ScreenRecorder::State::Recording));
    EXPECT_EQ(m_machine.films.lastRequest.area, QRect(110, 20, 300, 200));
    EXPECT_EQ(m_machine.movies.lastFormat.sounds, (QList{SoundSource::System, SoundSource::Microphone}));
    EXPECT_TRUE(m_library.items().isEmpty()) << "a film that isn't whole isn't shown";
    m_recorder->stop();
    m_recorder->stop();
    ASSERT_TRUE(isComplete());
    EXPECT_FALSE(m_error);
    ASSERT_TRUE(m_path);
    EXPECT_TRUE(QFileInfo(*m_path).fileName().startsWith("Recording ")) << qPrintable(*m_path);
    EXPECT_EQ(m_library.items(), QStringList{*m_path});
    EXPECT_GT(changed.count(), 0);
    EXPECT_EQ(filesOfLibrary().size(), 1);
    EXPECT_TRUE(QDir(m_notes).isEmpty());
    EXPECT_FALSE(m_machine.films.isRunning());
    EXPECT_EQ(m_completions, 1);
}

TEST_F(ScreenRecorderTest, RecordsWithoutASoundThatCantBeHad)
{
    m_machine.soundSources.refusal = "No server.";
    start();
    ASSERT_TRUE(reaches(ScreenRecorder::State::Recording));
    EXPECT_TRUE(m_machine.movies.lastFormat.sounds.isEmpty());
    ASSERT_EQ(m_recorder->refusedSounds().size(), 1);
    EXPECT_EQ(m_recorder->refusedSounds().first().message, "No server.");
}

TEST_F(ScreenRecorderTest, LeavesNothingWhenItCantStart)
{
    m_machine.films.refusal = "There is no screen.";
    start();
    ASSERT_TRUE(isComplete());
    EXPECT_FALSE(m_path);
    EXPECT_EQ(m_error->message, "There is no screen.");
    EXPECT_EQ(m_recorder->state(), ScreenRecorder::State::Idle);
    EXPECT_TRUE(filesOfLibrary().isEmpty());
    EXPECT_TRUE(QDir(m_notes).isEmpty());
}

TEST_F(ScreenRecorderTest, KeepsWhatWasFilmedWhenItBreaks)
{
    start();
    ASSERT_TRUE(reaches(ScreenRecorder::State::Recording));
    m_machine.films.breakOff({Error::Kind::Failed, "The display has gone away.", {}});
    m_machine.movies.failed({Error::Kind::Failed, "The disk is full.", {}}); // one after the other
    ASSERT_TRUE(isComplete());
    ASSERT_TRUE(m_path && m_error);
    EXPECT_TRUE(m_error->message.startsWith("The display has gone away. ")) << qPrintable(m_error->message);
    EXPECT_TRUE(m_error->message.contains(QFileInfo(*m_path).fileName()));
    EXPECT_EQ(m_completions, 1);
}

TEST_F(ScreenRecorderTest, WhatBrokeBeforeItsFirstFrameLeavesTheNextFilmAlone)
{
    struct : ScreenFilms {
        Result<std::unique_ptr<ScreenFilm>> start(const FilmRequest &request, FilmReceiver receiver) override
        {
            const auto ended = receiver.ended;
            auto film = films.start(request, std::move(receiver));
            if (std::exchange(breaks, false))
                ended({Error::Kind::Failed, "The display has gone away.", {}});
            return film;
        }
        FakeScreenFilms films;
        bool breaks = true;
    } films;
    m_recorder = std::make_unique<ScreenRecorder>(ScreenRecorder::Ports{
        films, m_machine.soundSources, m_machine.movies, m_machine.permissions, m_library, m_notes});
    start();
    ASSERT_TRUE(isComplete());
    EXPECT_TRUE(m_error && m_error->message.startsWith("The display has gone away."));
    start();
    ASSERT_TRUE(reaches(ScreenRecorder::State::Recording));
    m_recorder.reset();
}

TEST_F(ScreenRecorderTest, StopsAsSoonAsItHasStarted)
{
    start();
    m_recorder->stop();
    ASSERT_TRUE(isComplete());
    EXPECT_TRUE(m_path);
}

TEST_F(ScreenRecorderTest, EndsItsFilmWhenItGoesItself)
{
    const auto makeAnother = [this] {
        m_recorder = std::make_unique<ScreenRecorder>(
            ScreenRecorder::Ports{m_machine.films, m_machine.soundSources, m_machine.movies,
                                  m_machine.permissions, m_library, m_notes});
        m_clock.advance(2); // films are named by the second
    };
    start();
    m_recorder.reset();
    EXPECT_EQ(filesOfLibrary().size(), 1) << "while it starts";
    makeAnother();
    start();
    ASSERT_TRUE(reaches(ScreenRecorder::State::Recording));
    m_recorder.reset();
    EXPECT_EQ(filesOfLibrary().size(), 2) << "while it records";
    makeAnother();
    start();
    ASSERT_TRUE(reaches(ScreenRecorder::State::Recording));
    m_recorder->stop();
    m_recorder.reset();
    EXPECT_EQ(filesOfLibrary().size(), 3) << "while it stops";
    EXPECT_TRUE(filesOfLibrary().filter(".mov").filter(QRegularExpression("^\\.")).isEmpty());
    EXPECT_TRUE(RecordingPlace::abandoned(m_notes).isEmpty());
}

TEST_F(ScreenRecorderTest, PausesAndGoesOn)
{
    start();
    ASSERT_TRUE(reaches(ScreenRecorder::State::Recording));
    m_recorder->pause();
    EXPECT_EQ(m_recorder->state(), ScreenRecorder::State::Paused);
    const double elapsed = m_recorder->elapsed();
    EXPECT_EQ(m_recorder->elapsed(), elapsed) << "time stands still";
    m_recorder->resume();
    EXPECT_EQ(m_machine.movies.repeats, 1) << "what changed meanwhile is seen at once";
    m_recorder->pause();
    m_recorder->stop();
    ASSERT_TRUE(isComplete());
    EXPECT_TRUE(m_path);
}

TEST_F(ScreenRecorderTest, ATakenNameIsLeftToItsOwner)
{
    start();
    ASSERT_TRUE(reaches(ScreenRecorder::State::Recording));
    const QString name = QDir(m_notes).entryList({"*.json"}).value(0);
    QFile note(QDir(m_notes).filePath(name));
    ASSERT_TRUE(note.open(QIODevice::ReadOnly));
    const QString target = QJsonDocument::fromJson(note.readAll()).object().value("target").toString();
    QFile other(target);
    ASSERT_TRUE(other.open(QIODevice::WriteOnly));
    other.write("another program's");
    other.close();
    m_recorder->stop();
    ASSERT_TRUE(isComplete());
    ASSERT_TRUE(m_path);
    EXPECT_NE(*m_path, target);
    ASSERT_TRUE(other.open(QIODevice::ReadOnly));
    EXPECT_EQ(other.readAll(), "another program's");
}

// What a killed process leaves: its locks go with it.
TEST_F(ScreenRecorderTest, AFilmThatBrokeOffIsFinishedAtTheNextStart)
{
    using enum RecordingPlace::Existing;
    for (const auto existing : {Kept, Replaced}) {
        const QString target = m_folder.filePath(existing == Kept ? "Recording 1.mov" : "mine.mov");
        if (existing == Replaced) {
            QFile old(target);
            ASSERT_TRUE(old.open(QIODevice::WriteOnly) && old.write("old") == 3);
        }
        const pid_t child = fork();
        if (child == 0) {
            const auto place = RecordingPlace::reserve(target, existing, m_notes);
            QFile film((*place)->growing());
            const bool isOpen = film.open(QIODevice::WriteOnly);
            film.write("recorded");
            film.close();
            _exit(isOpen ? 0 : 1);
        }
        int status = -1;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ASSERT_EQ(status, 0);

        const auto running =
            RecordingPlace::reserve(m_folder.filePath("Other.mov"), RecordingPlace::Existing::Kept, m_notes);
        ASSERT_TRUE(running);
        const auto outcome = RecordingRecovery::run(m_notes, m_machine.movies);
        EXPECT_EQ(outcome.films, QStringList{target});
        EXPECT_TRUE(outcome.errors.isEmpty());
        EXPECT_FALSE(RecordingRecovery::notice(outcome).isEmpty());
        EXPECT_EQ(QDir(m_notes).entryList({"*.json"}).size(), 1) << "that of the film which still runs";
        EXPECT_TRUE(RecordingRecovery::run(m_notes, m_machine.movies).films.isEmpty()) << "once is enough";
    }
}

TEST_F(ScreenRecorderTest, NotesOfOthersAreNoOrders)
{
    QDir().mkpath(m_notes);
    const QString precious = m_folder.filePath("precious.txt");
    QFile file(precious);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    for (const QByteArray &text : {QByteArray("{"), QByteArray("[]"),
                                   "{\"growing\":\"" + precious.toUtf8() + "\",\"target\":\"/x.mov\"}",
                                   QByteArray("{\"growing\":\"relative.recording\",\"target\":\"a\"}")}) {
        QFile note(QDir(m_notes).filePath(QString::number(text.size()) + ".json"));
        ASSERT_TRUE(note.open(QIODevice::WriteOnly));
        note.write(text);
    }
    const auto outcome = RecordingRecovery::run(m_notes, m_machine.movies);
    EXPECT_TRUE(outcome.films.isEmpty());
    EXPECT_TRUE(QFile::exists(precious));
}
