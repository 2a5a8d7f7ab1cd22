#include "page_editor.h"
#include "seen_film.h"
#include "sway_journey.h"

#include <csignal>

namespace {

// What an editor of another toolkit shows, and a window that moves.
class SwayPages : public SwayJourney {
protected:
    void openPage(int lines)
    {
        editor.open(home.path("page.txt"), lines, environment());
        ASSERT_TRUE(QTest::qWaitFor([] { return shown("page.txt") == 1; }, 20000));
        ASSERT_TRUE(SwayIpc::run("[app_id=mousepad] resize set 700 500, move absolute position 100 80"));
        const Screen screen = screens.screens().constFirst();
        ASSERT_TRUE(QTest::qWaitFor(
            [&] {
                return pictures.region(screen, QRectF(600, 500, 1, 1), Pointer::Hidden)
                           .result()
                           .value_or(QImage())
                           .pixel(0, 0) == qRgb(255, 255, 255);
            },
            20000));
    }
    PageEditor editor;
};

TEST_F(SwayPages, ScrollByTheWheelIntoOnePictureThatReadsLineByLine)
{
    openPage(90);
    const QString page = home.path("page.png");
    answer({"scroll", "102,115,650x460", "--output", page});
    PageEditor::expectAll(answer({"text", page}).split('\n', Qt::SkipEmptyParts), 90);
}

TEST_F(SwayPages, GiveTheirTextToTheClipboardForAllToRead)
{
    openPage(20);
    const SwayWindow plain(1, QRect(850, 80, 300, 200));
    const SwayWindow fine(2, QRect(1380, 80, 400, 300), 1.5);
    set(kQuiet);
    start();
    openOverlay("text", plain, fine);
    aim(plain, QPointF(1100, 100));
    hand.drag(QPointF(102, 116), QPointF(500, 240));
    ASSERT_TRUE(QTest::qWaitFor([] { return !shown("lumenpost-cover"); }, 20000));
    QString pasted;
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            QProcess paste;
            paste.start("wl-paste", {"--no-newline"});
            paste.waitForFinished();
            pasted = QString::fromUtf8(paste.readAllStandardOutput());
            return pasted.contains(PageEditor::line(2)) && pasted.contains(PageEditor::line(5));
        },
        20000))
        << pasted.toStdString();
}

TEST_F(SwayPages, AreCapturedAfterADelayAsTheyAreThen)
{
    const SwayWindow plain(1, QRect(100, 80, 400, 300));
    const SwayWindow fine(2, QRect(1380, 80, 400, 300), 1.5);
    set(kQuiet);
    start();
    openOverlay("delayed", plain, fine);
    aim(plain, QPointF(120, 100));
    hand.drag(QPointF(120, 100), QPointF(320, 250));
    ASSERT_TRUE(waitForCaptures(1));
    EXPECT_EQ(QImage(captures().first()).convertToFormat(QImage::Format_RGB32),
              plain.picture().copy(20, 20, 200, 150));
}

TEST_F(SwayPages, AreFilmedToTheirLastMove)
{
    const SwayWindow window(1, QRect(1380, 80, 400, 300), 1.5);
    hand.move(QPointF(1000, 600));
    ASSERT_TRUE(QTest::qWaitFor([&] { return look(window) == Look::Bright; }, 20000));
    const QString film = home.path("film.mov");
    QProcess recording;
    recording.setProcessEnvironment(environment());
    recording.start(binary(), {"record", "1360,60,480x360", "--output", film});
    ASSERT_TRUE(waitForLog("Recording started"));
    ASSERT_TRUE(window.command("move absolute position 1420 100"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return look(window) != Look::Bright; }, 20000));
    QTest::qWait(1500); // some seconds of it, whatever else the machine does
    kill(pid_t(recording.processId()), SIGINT);
    ASSERT_TRUE(recording.waitForFinished(30000));
    ASSERT_EQ(recording.exitCode(), 0);
    expectLastPlace(film, home.path("still.png"), window.picture(), QSize(720, 540), QPoint(90, 60));
}

} // namespace
