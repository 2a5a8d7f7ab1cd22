#include "running_program.h"
#include "support/printers.h"

#include <QClipboard>
#include <QPainter>
#include <QRegularExpression>
#include <csignal>

namespace {

constexpr auto kNoEditor = R"({"openEditorAfterCapture": false, "shutterSound": false})";

// Where toasts are: the middle of the lower part.
QRect toastRegion()
{
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    return {screen.center().x() - 60, screen.bottom() - 180, 120, 150};
}

bool isPlain(const QImage &image)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != image.pixel(0, 0))
                return false;
        }
    }
    return true;
}

} // namespace

TEST_F(RunningProgram, CapturesTheScreenByItsShortcutAndShowsAToastThatNoCaptureSees)
{
    set(kNoEditor);
    start();
    const QImage desktop = photograph();
    ASSERT_TRUE(isPlain(desktop.copy(toastRegion())));
    key("super+shift+f");
    ASSERT_TRUE(waitForCaptures(1));
    EXPECT_TRUE(QRegularExpression("^Capture \\d{4}-\\d\\d-\\d\\d at \\d\\d\\.\\d\\d\\.\\d\\d\\.png$")
                    .match(QFileInfo(captures().first()).fileName())
                    .hasMatch());
    const QImage first(captures().first());
    EXPECT_EQ(first.size(), desktop.size());
    EXPECT_EQ(first.pixel(5, 5), desktop.pixel(5, 5));

    ASSERT_TRUE(QTest::qWaitFor([] { return !isPlain(photograph().copy(toastRegion())); }, 5000));
    key("super+shift+f");
    ASSERT_TRUE(waitForCaptures(2));
    EXPECT_FALSE(isPlain(photograph().copy(toastRegion()))) << "the toast is still up";
    EXPECT_TRUE(isPlain(QImage(captures().last()).copy(toastRegion())));
}

TEST_F(RunningProgram, MakesAFileOrALogLineOfEachQuickPress)
{
    set(kNoEditor);
    start();
    xdotool({"key", "--delay", "1", "super+shift+f", "super+shift+f", "super+shift+f"});
    const auto answered = [this] {
        return captures().size() + log().count("Capture ignored: another capture is in progress");
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return answered() == 3; }, 10000)) << answered();
    EXPECT_GE(captures().size(), 1);
}

TEST_F(RunningProgram, OpensTheEditorOnACaptureByDefault)
{
    set(R"({"didShowWelcome": true, "shutterSound": false})");
    start();
    key("super+shift+f");
    ASSERT_TRUE(waitForCaptures(1));
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            QProcess search;
            search.start("xdotool", {"search", "--onlyvisible", "--name",
                                     QFileInfo(captures().first()).completeBaseName()});
            search.waitForFinished();
            return !search.readAllStandardOutput().isEmpty();
        },
        10000));
}

TEST_F(RunningProgram, PicksARegionExactlyToThePixelFromTheFrozenPicture)
{
    set(kNoEditor);
    start();
    const QImage desktop = photograph();
    key("super+shift+c");
    // The overlay dims what is not selected.
    ASSERT_TRUE(QTest::qWaitFor([&] { return photograph().pixel(5, 5) != desktop.pixel(5, 5); }, 10000));
    xdotool({"mousemove", "100", "120", "mousedown", "1", "mousemove", "200", "180", "mousemove", "341",
             "263", "mouseup", "1"});
    ASSERT_TRUE(waitForCaptures(1));
    const QImage capture(captures().first());
    EXPECT_EQ(capture.size(), QSize(241, 143));
    EXPECT_EQ(capture.convertToFormat(QImage::Format_RGB32),
              desktop.copy(100, 120, 241, 143).convertToFormat(QImage::Format_RGB32));
    // Cancelled, it leaves nothing behind.
    ASSERT_TRUE(QTest::qWaitFor([&] { return photograph().pixel(5, 5) == desktop.pixel(5, 5); }, 10000));
    key("super+shift+c");
    ASSERT_TRUE(QTest::qWaitFor([&] { return photograph().pixel(5, 5) != desktop.pixel(5, 5); }, 10000));
    key("Escape");
    ASSERT_TRUE(QTest::qWaitFor([&] { return photograph().pixel(5, 5) == desktop.pixel(5, 5); }, 10000));
    EXPECT_EQ(captures().size(), 1);
}

TEST_F(RunningProgram, HandsALaterStartOverAndQuitsInOrder)
{
    set(kNoEditor);
    start();
    QProcess second;
    second.setProcessEnvironment(environment());
    second.start(binary(), QStringList{});
    ASSERT_TRUE(second.waitForFinished(10000));
    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_EQ(log().count("started on"), 1);

    program.terminate();
    ASSERT_TRUE(program.waitForFinished(10000));
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_TRUE(log().endsWith("Lumenpost quit\n"));
    EXPECT_FALSE(QFile::exists(home.path("state/lumenpost/.running")));
}

TEST_F(RunningProgram, EndsInOrderWhenItsDisplayGoesAway)
{
    set(kNoEditor);
    QProcess server;
    server.start("Xvfb", {"-displayfd", "1", "-screen", "0", "800x600x24", "-nolisten", "tcp", "-noreset"});
    ASSERT_TRUE(server.waitForReadyRead(10000));
    const QByteArray display = qgetenv("DISPLAY");
    qputenv("DISPLAY", ":" + server.readAllStandardOutput().trimmed());
    start();
    qputenv("DISPLAY", display);
    server.kill();
    server.waitForFinished();
    ASSERT_TRUE(program.waitForFinished(20000));
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_TRUE(log().endsWith("Lumenpost quit\n")) << log().toStdString();
    EXPECT_FALSE(QFile::exists(home.path("state/lumenpost/.running")));
}

TEST_F(RunningProgram, TellsAtTheNextStartThatItWasKilled)
{
    set(kNoEditor);
    start();
    ::kill(static_cast<pid_t>(program.processId()), SIGKILL);
    ASSERT_TRUE(program.waitForFinished(10000));
    start();
    EXPECT_TRUE(log().contains("[ERROR] Previous session ended unexpectedly"));
    EXPECT_TRUE(QTest::qWaitFor([] { return !isPlain(photograph().copy(toastRegion())); }, 5000));
}

TEST_F(RunningProgram, FinishesACaptureThatIsStillWrittenWhenItIsToldToQuit)
{
    set(R"({"didShowWelcome": true, "openEditorAfterCapture": false, "shutterSound": false, "copyToClipboard": true})");
    start();
    key("super+shift+f");
    // Its name is there while the picture is still being encoded for file and clipboard.
    ASSERT_TRUE(waitForLog("Captured ") || waitForCaptures(1));
    program.terminate();
    ASSERT_TRUE(program.waitForFinished(10000));
    EXPECT_EQ(program.exitCode(), 0);
    ASSERT_EQ(captures().size(), 1);
    EXPECT_FALSE(QImage(captures().first()).isNull());
    EXPECT_TRUE(log().contains("Captured " + captures().first().toUtf8()));
    EXPECT_TRUE(log().endsWith("Lumenpost quit\n"));
    EXPECT_FALSE(log().contains("Given up"));
}

TEST_F(RunningProgram, LeavesWhatItCopiedToThoseWhoPasteAfterItHasQuit)
{
    set(R"({"openEditorAfterCapture": false, "shutterSound": false, "copyToClipboard": true})");
    start();
    key("super+shift+f");
    ASSERT_TRUE(waitForCaptures(1));
    const QImage capture(captures().first());
    const auto paste = [] {
        QProcess xclip;
        xclip.start("xclip", {"-selection", "clipboard", "-o", "-t", "image/png"});
        return xclip.waitForFinished(10000) ? QImage::fromData(xclip.readAllStandardOutput()) : QImage();
    };
    ASSERT_TRUE(QTest::qWaitFor([&] { return !paste().isNull(); }, 10000));
    program.terminate();
    ASSERT_TRUE(program.waitForFinished(20000));
    EXPECT_EQ(paste().convertToFormat(QImage::Format_RGB32), capture.convertToFormat(QImage::Format_RGB32));
    // Nothing lies about, and the process that holds it goes with the next copy.
    EXPECT_TRUE(QDir(qEnvironmentVariable("XDG_RUNTIME_DIR") + "/lumenpost").isEmpty());
    const auto owners = [] {
        QProcess search;
        search.start("pgrep", {"-f", binary() + " clipboard-owner"});
        search.waitForFinished();
        return search.readAllStandardOutput().count('\n');
    };
    EXPECT_EQ(owners(), 1);
    QProcess other;
    other.start("xclip", {"-selection", "clipboard", "-i"});
    other.write("something else");
    other.closeWriteChannel();
    EXPECT_TRUE(QTest::qWaitFor([&] { return owners() == 0; }, 10000));
    other.waitForFinished(); // its own background process goes with the display
}

TEST_F(RunningProgram, OpensWhatIsOnTheClipboard)
{
    set(kNoEditor);
    start();
    QImage picture(320, 200, QImage::Format_RGB32);
    picture.fill(Qt::darkCyan);
    QGuiApplication::clipboard()->setImage(picture);
    QProcess second;
    second.setProcessEnvironment(environment());
    second.start(binary(), {"--open-clipboard"});
    EXPECT_TRUE(QTest::qWaitFor(
        [] {
            const QImage desktop = photograph();
            int pixels = 0;
            for (int y = 0; y < desktop.height(); y += 4) {
                for (int x = 0; x < desktop.width(); x += 4)
                    pixels += desktop.pixelColor(x, y) == QColor(Qt::darkCyan);
            }
            return pixels > 300;
        },
        10000));
    second.waitForFinished();
}

TEST_F(RunningProgram, FindsACaptureByAWordInItsPictureAndOpensItFromTheLibrary)
{
    set(kNoEditor);
    QDir().mkpath(home.path("Pictures/Lumenpost"));
    for (const QString &word : {QStringLiteral("Harbour"), QStringLiteral("Lantern")}) {
        QImage page(900, 500, QImage::Format_RGB32);
        page.fill(Qt::white);
        QPainter painter(&page);
        QFont font;
        font.setPixelSize(64);
        painter.setFont(font);
        painter.drawText(page.rect(), Qt::AlignCenter, word + " notes");
        painter.end();
        ASSERT_TRUE(page.save(home.path("Pictures/Lumenpost/Shot of %1.png").arg(word.at(0))));
    }
    start();
    key("super+shift+l");
    xdotool({"search", "--sync", "--onlyvisible", "--name", "^Library$", "windowactivate", "--sync"});
    const auto isRead = [this] {
        for (const QString &name : QDir(home.path("Pictures/Lumenpost/.lumenpost")).entryList(QDir::Files)) {
            QFile file(home.path("Pictures/Lumenpost/.lumenpost/" + name));
            if (file.open(QIODevice::ReadOnly) && file.readAll().contains("Lantern"))
                return true;
        }
        return false;
    };
    ASSERT_TRUE(QTest::qWaitFor(isRead, 40000)) << "the text of the pictures was read";
    key("ctrl+f");
    xdotool({"type", "lantern"});
    key("Return");
    key("Return");
    xdotool({"search", "--sync", "--onlyvisible", "--name", "Shot of L", "windowactivate"});
}

TEST_F(RunningProgram, QuitsInOrderWhileItReadsTexts)
{
    set(kNoEditor);
    QDir().mkpath(home.path("Pictures/Lumenpost"));
    QImage page(1200, 900, QImage::Format_RGB32);
    page.fill(Qt::white);
    QPainter painter(&page);
    for (int row = 40; row < page.height(); row += 30)
        painter.drawText(40, row,
                         QString("Lanterns along the harbour wall were lit one by one. ").repeated(5));
    painter.end();
    for (int i = 0; i < 6; ++i)
        ASSERT_TRUE(page.save(home.path("Pictures/Lumenpost/Page %1.png").arg(i)));
    start();
    key("super+shift+l"); // which begins to read
    const QString known = home.path("Pictures/Lumenpost/.lumenpost");
    ASSERT_TRUE(QTest::qWaitFor([&] { return QDir(known).exists("changes.jsonl"); }, 40000));
    program.terminate();
    ASSERT_TRUE(program.waitForFinished(20000));
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 0);
}
