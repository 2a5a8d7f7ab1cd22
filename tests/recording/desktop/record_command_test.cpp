#include "platform/movies.h"
#include "platform/session/media_loader.h"

#include "recording/films/film_facts.h"

#include <QDir>
#include <QElapsedTimer>
#include <QPainter>
#include <QProcess>
#include <QRasterWindow>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>
#include <signal.h>

namespace {

const QString kProgram = QStringLiteral(LUMENPOST_BINARY_DIR "/bin/lumenpost");

// The program, recording a part of the screen in which something moves.
class RecordCommand : public testing::Test {
protected:
    struct Canvas : QRasterWindow {
        void paintEvent(QPaintEvent *) override
        {
            QPainter painter(this);
            painter.fillRect(QRect(QPoint(), size()), QColor(200, 30, 30));
            painter.fillRect(state++ * 8 % 300, 0, 20, height(), Qt::white);
        }
        int state = 0;
    };

    RecordCommand()
    {
        m_canvas.setFlags(Qt::BypassWindowManagerHint | Qt::FramelessWindowHint);
        m_canvas.setGeometry(100, 100, 320, 200);
        m_canvas.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&m_canvas));
        QObject::connect(&m_moves, &QTimer::timeout, &m_canvas, [this] { m_canvas.update(); });
        m_moves.start(40);
        QDir().mkpath(m_library);
    }
    ~RecordCommand() override
    {
        m_program.kill();
        m_program.waitForFinished();
    }

    void record(const QStringList &words, const QString &shell = {})
    {
        const QStringList all = QStringList{"--library", m_library, "record", "100,100,320x200"} + words;
        if (shell.isEmpty())
            m_program.start(kProgram, all);
        else
            m_program.start("sh", QStringList{"-c", shell + "; exec \"$0\" \"$@\"", kProgram} + all);
    }
    // So that the screen goes on moving meanwhile.
    bool ends()
    {
        return QTest::qWaitFor([&] { return m_program.state() == QProcess::NotRunning; }, 60000);
    }
    QString growing() const
    {
        const QStringList files = QDir(m_library).entryList({"*.recording"}, QDir::Files | QDir::Hidden);
        return files.isEmpty() ? QString() : QDir(m_library).filePath(files.first());
    }
    // Until so many bytes of film lie behind the hole.
    bool grows(qint64 bytes)
    {
        return QTest::qWaitFor(
            [&] { return !growing().isEmpty() && QFileInfo(growing()).size() > (2 << 20) + bytes; }, 30000);
    }
    QString printed() { return QString::fromUtf8(m_program.readAllStandardOutput()).trimmed(); }
    QString said() { return QString::fromUtf8(m_program.readAllStandardError()).trimmed(); }
    void expectPlays(const QString &film, double atLeast)
    {
        const auto info = m_movies->info(film);
        ASSERT_TRUE(info) << qPrintable(film) << qPrintable(info.error().message);
        EXPECT_GE(info->duration, atLeast);
        EXPECT_EQ(info->size, QSize(320, 200));
        auto frames = m_movies->frames(film, {});
        ASSERT_TRUE(frames);
        const auto last = (*frames)->at(info->duration);
        ASSERT_TRUE(last);
        int red = 0;
        for (int x = 4; x < 320; x += 8)
            red += qRed(last->pixel(x, 100)) > 150 && qGreen(last->pixel(x, 100)) < 80 ? 1 : 0;
        EXPECT_GT(red, 30) << "the window that was filmed";
        EXPECT_LT(red, 40) << "with its bar";
    }

    QTemporaryDir m_folder;
    QString m_library = m_folder.filePath("library");
    Canvas m_canvas;
    QTimer m_moves;
    QProcess m_program;
    std::unique_ptr<Movies> m_movies = makeMovies();
};

} // namespace

TEST_F(RecordCommand, StopsAtTheWantedLengthOrAtASignal)
{
    record({"--seconds", "2"});
    ASSERT_TRUE(ends());
    EXPECT_EQ(m_program.exitCode(), 0) << qPrintable(said());
    const QString film = printed();
    expectPlays(film, 1.9);
    EXPECT_NEAR(m_movies->info(film)->duration, 2.0, 0.25);
    const FilmFacts facts(film);
    EXPECT_EQ(facts.of(0, "codec_name"), "h264");
    EXPECT_GT(facts.of(0, "nb_frames").toInt(), 20);
    EXPECT_TRUE(facts.startsQuickly());

    for (const int signal : {SIGTERM, SIGINT}) {
        const QString output = m_folder.filePath(QString("signal-%1.mov").arg(signal));
        record({"--output", output});
        ASSERT_TRUE(QTest::qWaitFor([&] {
            return !QDir(m_folder.path()).entryList({"*.recording"}, QDir::Files | QDir::Hidden).isEmpty();
        }));
        ASSERT_TRUE(QTest::qWaitFor([&] {
            const auto files =
                QDir(m_folder.path()).entryInfoList({"*.recording"}, QDir::Files | QDir::Hidden);
            return !files.isEmpty() && files.first().size() > (2 << 20) + 2000;
        }));
        EXPECT_FALSE(QFile::exists(output)) << "half a film isn't there yet";
        ::kill(pid_t(m_program.processId()), signal);
        ASSERT_TRUE(ends());
        EXPECT_EQ(m_program.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(m_program.exitCode(), 0);
        EXPECT_EQ(printed(), output);
        expectPlays(output, 0.2);
    }
}

TEST_F(RecordCommand, AKilledFilmIsFinishedByTheNextCall)
{
    record({});
    ASSERT_TRUE(grows(20000));
    ::kill(pid_t(m_program.processId()), SIGKILL);
    ASSERT_TRUE(ends());
    ASSERT_FALSE(growing().isEmpty());
    expectPlays(growing(), 0.4);

    record({"--seconds", "0.5"});
    ASSERT_TRUE(ends());
    EXPECT_EQ(m_program.exitCode(), 0);
    const QString message = said();
    EXPECT_TRUE(message.contains("A recording that broke off is kept as")) << qPrintable(message);
    EXPECT_TRUE(growing().isEmpty());
    const QStringList films = QDir(m_library).entryList({"*.mov"});
    ASSERT_EQ(films.size(), 2);
    for (const QString &film : films)
        EXPECT_TRUE(FilmFacts(QDir(m_library).filePath(film)).startsQuickly());
}

TEST_F(RecordCommand, AFullDiskEndsTheFilmThatIsThere)
{
    record({"--seconds", "60"}, "ulimit -f 4250"); // blocks of 512 bytes: a little more than the hole
    ASSERT_TRUE(ends());
    EXPECT_EQ(m_program.exitCode(), 1);
    const QString film = printed();
    expectPlays(film, 0.4);
    const QString message = said();
    EXPECT_TRUE(message.contains("kept as")) << qPrintable(message);
    EXPECT_EQ(message.count('\n'), 0) << qPrintable(message);
}

TEST_F(RecordCommand, HearsWhatIsPlayedAndTheMicrophone)
{
    record({"--seconds", "0.5", "--system-audio"});
    ASSERT_TRUE(ends());
    EXPECT_EQ(m_program.exitCode(), 0) << "no sound server is no reason to fail";
    EXPECT_TRUE(said().contains("There is no sound server"));

    QProcess server;
    server.start("pulseaudio", {"-n", "--daemonize=no", "--exit-idle-time=-1", "-L",
                                "module-native-protocol-unix", "-L", "module-null-sink sink_name=out", "-L",
                                "module-sine-source source_name=mic frequency=880"});
    ASSERT_TRUE(QTest::qWaitFor([] { return QProcess::execute("pactl", {"set-default-source", "mic"}) == 0; },
                                20000));
    const QString tone = m_folder.filePath("tone.wav");
    ASSERT_EQ(QProcess::execute("sox", {"-n", "-r", "48000", "-c", "2", tone, "synth", "20", "sine", "440"}),
              0);
    QProcess player;
    player.start("paplay", {tone});
    record({"--seconds", "4", "--system-audio", "--microphone"});
    ASSERT_TRUE(ends());
    player.kill();
    player.waitForFinished();
    const QString film = printed();
    EXPECT_TRUE(said().isEmpty());
    const FilmFacts facts(film);
    ASSERT_EQ(facts.streams(), 3);
    EXPECT_NEAR(facts.loudness(1), 0, 2) << "a sine of full scale";
    EXPECT_GT(facts.loudness(2), -20);
    for (int track : {1, 2})
        EXPECT_NEAR(facts.of(track, "duration").toDouble(), facts.of(0, "duration").toDouble(), 0.03);
    server.kill();
    server.waitForFinished();
}

TEST_F(RecordCommand, StaysInStepWhenItsDeviceIsUnpluggedAndAnotherComes)
{
    QProcess server;
    server.start("pulseaudio", {"-n", "--daemonize=no", "--exit-idle-time=-1", "-L",
                                "module-native-protocol-unix", "-L", "module-null-sink sink_name=first"});
    ASSERT_TRUE(QTest::qWaitFor([] { return QProcess::execute("pactl", {"set-default-sink", "first"}) == 0; },
                                20000));
    const QString tone = m_folder.filePath("tone.wav");
    ASSERT_EQ(QProcess::execute("sox", {"-n", "-r", "48000", "-c", "2", tone, "synth", "30", "sine", "440"}),
              0);
    record({"--seconds", "6", "--system-audio"});
    QTest::qWait(1500);
    ASSERT_EQ(QProcess::execute("pactl", {"unload-module", "module-null-sink"}), 0);
    QTest::qWait(1000);
    ASSERT_EQ(QProcess::execute("pactl", {"load-module", "module-null-sink", "sink_name=second"}), 0);
    QProcess player;
    player.start("paplay", {"--device=second", tone});
    ASSERT_TRUE(ends());
    player.kill();
    player.waitForFinished();
    EXPECT_EQ(m_program.exitCode(), 0);
    const QString film = printed();
    const FilmFacts facts(film);
    ASSERT_EQ(facts.streams(), 2);
    // Sound ends with a packet of 21 ms, after the last picture's time of 33.
    EXPECT_NEAR(facts.of(1, "duration").toDouble(), facts.of(0, "duration").toDouble(), 0.054);
    EXPECT_GT(facts.loudness(1), -10) << "the one that came";
    server.kill();
    server.waitForFinished();
}
