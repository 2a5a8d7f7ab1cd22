#include "page_editor.h"
#include "platform/kwin/kwin_hand.h"
#include "platform/kwin/kwin_window.h"
#include "platform/wayland/wayland_screen_pictures.h"
#include "platform/wayland/wayland_screens.h"
#include "running_program.h"
#include "seen_film.h"

#include <QElapsedTimer>

namespace {

// The command line in a Plasma session, with no program running.
class KWinCommands : public RunningProgram {
protected:
    QImage taken(QStringList words)
    {
        const QString file = home.path("taken.png");
        words << "--output" << file;
        EXPECT_EQ(answer({words}).trimmed(), file);
        return QImage(file).convertToFormat(QImage::Format_RGB32);
    }
    QRgb pixel(QPointF at)
    {
        const Screen screen = screens.screens().constFirst();
        return pictures.region(screen, QRectF(at, QSizeF(1, 1)), Pointer::Hidden)
            .result()
            .value_or(QImage())
            .pixel(0, 0);
    }
    // Of the first window in the list with that in its line.
    QString idOf(const QString &part) const
    {
        for (const QString &line : answer({"windows"}).split('\n')) {
            if (line.contains(part))
                return line.section('\t', 0, 0);
        }
        return {};
    }
    static bool moveWindow(qint64 pid, const QRect &to)
    {
        KWinScript scripts;
        return scripts
            .run(QStringLiteral("var all = workspace.clientList ? workspace.clientList() : "
                                "workspace.windowList();"
                                "for (var i = 0; i < all.length; ++i) { if (all[i].pid == %1) { "
                                "all[i].frameGeometry = {x: %2, y: %3, width: %4, height: %5}; "
                                "return true; } } return false;")
                     .arg(pid)
                     .arg(to.x())
                     .arg(to.y())
                     .arg(to.width())
                     .arg(to.height()))
            .value_or(QJsonValue())
            .toBool();
    }

    KWinHand hand;
    WaylandScreens screens{nullptr};
    WaylandScreenPictures pictures{nullptr};
};

TEST_F(KWinCommands, CaptureScreensRegionsAndCoveredWindowsToThePixel)
{
    const KWinWindow window(1, QRect(200, 150, 400, 300));
    hand.move(QPointF(1500, 900));
    const QImage screen = taken({"capture", "screen"});
    EXPECT_EQ(screen.size(), QSize(1920, 1080));
    EXPECT_EQ(screen.copy(window.frame()), window.picture());
    EXPECT_EQ(taken({"capture", "region", "220,170,200x150"}), window.picture().copy(20, 20, 200, 150));

    // What comes within the delay is in the picture, and the window under it is captured all the same.
    QElapsedTimer timer;
    timer.start();
    const KWinWindow above(2, QRect(300, 200, 400, 300));
    EXPECT_EQ(taken({"capture", "region", "300,200,400x300", "--delay", "1"}), above.picture());
    EXPECT_GE(timer.elapsed(), 1000);
    EXPECT_EQ(taken({"capture", "window", idOf("200,150,400x300"), "--client-area"}), window.picture());
}

TEST_F(KWinCommands, ScrollAPageByTheWheelIntoOnePictureThatReadsLineByLine)
{
    PageEditor editor;
    editor.open(home.path("page.txt"), 90, environment());
    ASSERT_TRUE(eventually([&] { return !idOf("page.txt").isEmpty(); }));
    ASSERT_TRUE(moveWindow(editor.pid(), QRect(100, 80, 700, 500)));
    ASSERT_TRUE(eventually([&] { return pixel(QPointF(600, 500)) == qRgb(255, 255, 255); }));
    hand.move(QPointF(1500, 900));
    const QString page = home.path("page.png");
    answer({"scroll", "102,115,650x460", "--output", page});
    PageEditor::expectAll(answer({"text", page}).split('\n', Qt::SkipEmptyParts), 90);
}

TEST_F(KWinCommands, RecordForSecondsToTheLastMove)
{
    const KWinWindow window(1, QRect(200, 150, 400, 300));
    const QString film = home.path("film.mov");
    QProcess recording;
    recording.setProcessEnvironment(environment());
    recording.start(binary(), {"record", "180,130,480x360", "--seconds", "5", "--output", film});
    ASSERT_TRUE(waitForLog("Recording started"));
    ASSERT_TRUE(window.script("w.frameGeometry = {x: 230, y: 180, width: 400, height: 300};"));
    ASSERT_TRUE(recording.waitForFinished(30000));
    ASSERT_EQ(recording.exitCode(), 0);
    expectLastPlace(film, home.path("still.png"), window.picture(), QSize(480, 360), QPoint(50, 50));
}

} // namespace
