#include "sway_journey.h"

#include <QDirIterator>
#include <QRegularExpression>
#include <csignal>

namespace {

// What an editor of another toolkit shows, and a window that moves.
class SwayPages : public SwayJourney {
protected:
    ~SwayPages() override
    {
        editor.kill();
        editor.waitForFinished();
    }
    static QString line(int number)
    {
        static const QStringList words{"alpha", "bravo", "charlie", "delta", "echo",  "foxtrot", "golf",
                                       "hotel", "india", "juliet",  "kilo",  "lima",  "mike",    "november",
                                       "oscar", "papa",  "quebec",  "romeo", "sierra"};
        return QStringLiteral("Line %1 %2 %3")
            .arg(number, 3, 10, QLatin1Char('0'))
            .arg(words.at(number % words.size()), words.at((number * 7 + 3) % words.size()));
    }
    void openPage(int lines)
    {
        QFile file(home.path("page.txt"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        for (int number = 1; number <= lines; ++number)
            file.write(line(number).toUtf8() + '\n');
        file.close();
        editor.setProcessEnvironment(environment());
        editor.start("mousepad", {"--disable-server", file.fileName()});
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
    // What the command says.
    QString answer(const QStringList &words, int status = 0)
    {
        QProcess process;
        process.setProcessEnvironment(environment());
        process.start(binary(), words);
        EXPECT_TRUE(process.waitForFinished(60000));
        EXPECT_EQ(process.exitCode(), status) << process.readAllStandardError().toStdString();
        return QString::fromUtf8(process.readAllStandardOutput());
    }

    static qint64 difference(const QImage &filmed, QPoint at, const QImage &drawn)
    {
        qint64 sum = 0;
        for (int y = 0; y < drawn.height(); ++y) {
            const uchar *line = filmed.constScanLine(at.y() + y) + at.x();
            for (int x = 0; x < drawn.width(); ++x)
                sum += std::abs(line[x] - drawn.constScanLine(y)[x]);
        }
        return sum;
    }

    QProcess editor;
};

TEST_F(SwayPages, ScrollByTheWheelIntoOnePictureThatReadsLineByLine)
{
    openPage(90);
    const QString page = home.path("page.png");
    answer({"scroll", "102,115,650x460", "--output", page});
    const QStringList read = answer({"text", page}).split('\n', Qt::SkipEmptyParts);
    ASSERT_GT(read.size(), 85);
    const int first = QRegularExpression(R"(\d+)").match(read.first()).captured().toInt();
    EXPECT_LE(first, 2);
    for (qsizetype i = 0; i < read.size(); ++i)
        EXPECT_EQ(read.at(i).simplified(), line(first + int(i)));
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
            return pasted.contains(line(2)) && pasted.contains(line(5));
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
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            QDirIterator files(home.path(), {"*film*"}, QDir::Files | QDir::Hidden,
                               QDirIterator::Subdirectories);
            return files.hasNext();
        },
        20000));
    QTest::qWait(1500); // as a rule it has begun by then; its end is right in any case
    ASSERT_TRUE(window.command("move absolute position 1420 100"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return look(window) != Look::Bright; }, 20000));
    QTest::qWait(1500); // some seconds of it, whatever else the machine does
    kill(pid_t(recording.processId()), SIGINT);
    ASSERT_TRUE(recording.waitForFinished(30000));
    ASSERT_EQ(recording.exitCode(), 0);
    // Of all frames that are written there the last one stays.
    const QString still = home.path("still.png");
    ASSERT_EQ(QProcess::execute("ffmpeg", {"-v", "error", "-y", "-i", film, "-update", "1", still}), 0);
    const QImage filmed = QImage(still).convertToFormat(QImage::Format_Grayscale8);
    ASSERT_EQ(filmed.size(), QSize(720, 540));
    const QImage drawn = window.picture().convertToFormat(QImage::Format_Grayscale8);
    // Nowhere else, by a single pixel, does it fit as well: colours are halved, places aren't.
    const QPoint at(90, 60);
    for (const QPoint step : {QPoint(1, 0), QPoint(-1, 0), QPoint(0, 1), QPoint(0, -1)})
        EXPECT_LT(difference(filmed, at, drawn), difference(filmed, at + step, drawn));
}

} // namespace
