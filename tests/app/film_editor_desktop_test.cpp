#include "running_program.h"
#include "support/printers.h"

#include <QRegularExpression>

// From the shortcut to the files that are handed on: a spoken text is recorded, trimmed, exported and
// captioned, with pointer and keyboard in the real windows.
class FilmJourney : public RunningProgram {
protected:
    void startSound()
    {
        m_sound.start("pulseaudio", {"-n", "--daemonize=no", "--exit-idle-time=-1", "-L",
                                     "module-native-protocol-unix", "-L", "module-null-sink sink_name=out"});
        ASSERT_TRUE(QTest::qWaitFor(
            [] { return QProcess::execute("pactl", {"set-default-sink", "out"}) == 0; }, 20000));
    }
    ~FilmJourney() override
    {
        m_sound.kill();
        m_sound.waitForFinished();
    }
    static QString output(const QString &program, const QStringList &words)
    {
        QProcess process;
        process.start(program, words);
        process.waitForFinished(60000);
        return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
    }
    static double secondsOf(const QString &film)
    {
        return output("ffprobe", {"-v", "error", "-show_entries", "format=duration", "-of", "csv=p=0", film})
            .toDouble();
    }
    bool findWindow(const QString &film)
    {
        const QString title = "^" + QRegularExpression::escape(QFileInfo(film).completeBaseName()) + "$";
        return QTest::qWaitFor(
            [&] {
                m_window = output("xdotool", {"search", "--onlyvisible", "--name", title});
                return !m_window.isEmpty();
            },
            20000);
    }
    // From the window's left, or from its right; from its bottom.
    void click(int x, int fromBottom) const
    {
        const int left = x < 0 ? kWidth + x : x;
        xdotool({"mousemove", "--window", m_window, QString::number(left),
                 QString::number(kHeight - fromBottom), "click", "1"});
        QTest::qWait(300);
    }
    static void type(const QString &text) { xdotool({"type", "--delay", "15", text}); }
    // In the dialog that asks for a place.
    void saveAs(const QString &path)
    {
        ASSERT_TRUE(QTest::qWaitFor(
            [] {
                return !output("xdotool", {"search", "--onlyvisible", "--name", "Export|Save SRT"}).isEmpty();
            },
            10000));
        QTest::qWait(300);
        key("ctrl+a");
        type(path);
        key("Return");
        ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(path); }, 60000)) << qPrintable(path);
        QTest::qWait(300);
    }
    void look(const QString &name) const
    {
        if (qEnvironmentVariableIsSet("LUMENPOST_LOOK"))
            photograph().save(qEnvironmentVariable("LUMENPOST_LOOK") + "-" + name + ".png");
    }

    static constexpr int kWidth = 920; // of the window, at first
    static constexpr int kHeight = 660;
    QProcess m_sound;
    QString m_window;
};

TEST_F(FilmJourney, OfASpokenTextEndsInAFilmAnAnimationAndSubtitles)
{
    startSound();
    const QString voice = home.path("voice.wav");
    const QString said = "Open the settings and choose a folder for your pictures. Then press the button.";
    ASSERT_EQ(QProcess::execute("flite", {"-voice", "rms", "-t", said, "-o", voice}), 0);
    set(R"({"shutterSound": false, "didShowWelcome": true, "recordShowClicks": true})");
    start();
    const QImage before = photograph();
    key("super+shift+r");
    ASSERT_TRUE(QTest::qWaitFor([&] { return photograph().pixel(5, 5) != before.pixel(5, 5); }, 10000));
    xdotool({"mousemove", "200", "150", "mousedown", "1", "mousemove", "300", "200", "mousemove", "840",
             "510", "mouseup", "1"});
    ASSERT_TRUE(waitForLog("Recording started (640×360"));
    QTest::qWait(1200);
    xdotool({"mousemove", "400", "300", "click", "1"});
    EXPECT_EQ(QProcess::execute("paplay", {voice}), 0);
    key("super+shift+r");
    ASSERT_TRUE(waitForLog("Recording saved"));
    ASSERT_EQ(captures("*.mov").size(), 1);
    const QString film = captures("*.mov").first();
    const double length = secondsOf(film);
    EXPECT_GT(length, 4);
    ASSERT_TRUE(findWindow(film));
    QTest::qWait(1500); // its strip of pictures
    look("opened");

    click(46, 50);  // Trim
    click(110, 31); // From
    key("ctrl+a");
    type("1.0");
    key("Return");
    QTest::qWait(300);
    look("trimming");
    key("Return");
    QTest::qWait(500);
    click(-65, 31);
    const QString mp4 = home.path("out.mp4");
    saveAs(mp4);
    EXPECT_NEAR(secondsOf(mp4), length - 1, 0.06);
    EXPECT_EQ(output("ffprobe", {"-v", "error", "-show_entries", "stream=codec_type", "-of", "csv=p=0", mp4}),
              "video\naudio");
    look("exported");
    click(-165, 31);
    const QString gif = home.path("out.gif");
    saveAs(gif);
    EXPECT_NEAR(secondsOf(gif), length - 1, 0.1);

    click(258, 50); // Captions
    const QString words = home.path("words.srt");
    QTest::qWait(6000); // the recogniser reads its model first
    look("captions");
    xdotool({"mousemove", "--window", m_window, "670", "493", "click", "1"});
    saveAs(words);
    QFile file(words);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    EXPECT_TRUE(text.startsWith("1\n00:00:00,")) << qPrintable(text) << "counted from the trimmed beginning";
    int heard = 0;
    for (const char *word : {"settings", "choose", "folder", "pictures", "press", "button"})
        heard += text.contains(QLatin1String(word));
    EXPECT_GE(heard, 4) << qPrintable(text);
    EXPECT_EQ(secondsOf(film), length) << "the film itself is what it was";
}
