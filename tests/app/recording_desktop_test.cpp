#include "running_program.h"
#include "support/printers.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

namespace {

const QRect kRegion(200, 150, 400, 240);
const QColor kFrame(0xff, 0x3b, 0x30);

bool isFramed(const QImage &desktop)
{
    return desktop.pixelColor(kRegion.left() - 2, kRegion.center().y()) == kFrame &&
           desktop.pixelColor(kRegion.center().x(), kRegion.bottom() + 2) == kFrame;
}

} // namespace

class RecordingByShortcut : public RunningProgram {
protected:
    void startRecording()
    {
        const QImage before = photograph();
        key("super+shift+r");
        ASSERT_TRUE(QTest::qWaitFor([&] { return photograph().pixel(5, 5) != before.pixel(5, 5); }, 10000));
        xdotool({"mousemove", "200", "150", "mousedown", "1", "mousemove", "300", "200", "mousemove", "600",
                 "390", "mouseup", "1"});
        ASSERT_TRUE(waitForLog("Recording started (400×240"));
    }
    QStringList films() const { return captures("*.mov"); }
    // The panel stands under the region.
    QImage panel() const { return photograph().copy(QRect(200, 396, 400, 60)); }

    // As another program sees it.
    static QJsonObject probe(const QString &film)
    {
        QProcess reader;
        reader.start("ffprobe", {"-v", "error", "-show_streams", "-show_format", "-of", "json", film});
        reader.waitForFinished(20000);
        return QJsonDocument::fromJson(reader.readAllStandardOutput()).object();
    }
    QImage frameAt(const QString &film, const QString &seconds) const
    {
        const QString picture = home.path("frame.png");
        QProcess::execute("ffmpeg",
                          {"-v", "error", "-y", "-ss", seconds, "-i", film, "-frames:v", "1", picture});
        return QImage(picture);
    }
    static bool holds(const QImage &image, const QColor &color)
    {
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor pixel = image.pixelColor(x, y);
                if (std::abs(pixel.red() - color.red()) + std::abs(pixel.green() - color.green()) +
                        std::abs(pixel.blue() - color.blue()) <
                    60)
                    return true;
            }
        }
        return false;
    }
};

TEST_F(RecordingByShortcut, StartsAndEndsAFilmOfTheRegionWithoutItsPanelAndFrame)
{
    set(R"({"openEditorAfterCapture": false, "shutterSound": false})");
    start();
    const QImage desktop = photograph();
    startRecording();
    EXPECT_TRUE(QTest::qWaitFor([] { return isFramed(photograph()); }, 5000));
    // The time runs.
    const QImage atFirst = panel();
    EXPECT_TRUE(QTest::qWaitFor([&] { return panel() != atFirst; }, 5000));
    if (qEnvironmentVariableIsSet("LUMENPOST_LOOK"))
        photograph().save(qEnvironmentVariable("LUMENPOST_LOOK"));
    EXPECT_TRUE(films().isEmpty());
    // No capture begins meanwhile.
    key("super+shift+f");
    EXPECT_TRUE(waitForLog("Capture ignored: "));
    key("super+shift+r");
    ASSERT_TRUE(QTest::qWaitFor([&] { return films().size() == 1; }, 20000));
    EXPECT_TRUE(waitForLog("Recording saved"));
    EXPECT_TRUE(QRegularExpression("^Recording \\d{4}-\\d\\d-\\d\\d at \\d\\d\\.\\d\\d\\.\\d\\d\\.mov$")
                    .match(QFileInfo(films().first()).fileName())
                    .hasMatch());
    EXPECT_FALSE(isFramed(photograph()));

    const QJsonObject film = probe(films().first());
    const QJsonObject video = film["streams"].toArray().first().toObject();
    EXPECT_EQ(video["codec_name"].toString(), "h264");
    EXPECT_EQ(QSize(video["width"].toInt(), video["height"].toInt()), kRegion.size());
    EXPECT_GT(film["format"].toObject()["duration"].toString().toDouble(), 0.4);
    const QImage seen = frameAt(films().first(), "0");
    ASSERT_EQ(seen.size(), kRegion.size());
    EXPECT_FALSE(holds(seen, kFrame));
    const QColor below = desktop.pixelColor(kRegion.center());
    EXPECT_NEAR(seen.pixelColor(200, 120).lightness(), below.lightness(), 4) << "the overlay has gone";
    EXPECT_TRUE(captures().isEmpty());

    // And again.
    startRecording();
    EXPECT_TRUE(QTest::qWaitFor([] { return isFramed(photograph()); }, 5000));
    key("super+shift+r");
    EXPECT_TRUE(QTest::qWaitFor([&] { return films().size() == 2; }, 20000));
}

TEST_F(RecordingByShortcut, IsWholeWhenTheProgramIsToldToQuitAndAfterItWasKilled)
{
    set(R"({"openEditorAfterCapture": false, "shutterSound": false})");
    start();
    startRecording();
    program.terminate();
    ASSERT_TRUE(program.waitForFinished(20000));
    EXPECT_EQ(program.exitCode(), 0);
    ASSERT_EQ(films().size(), 1);
    EXPECT_EQ(probe(films().first())["streams"].toArray().size(), 1);
    EXPECT_TRUE(log().endsWith("Lumenpost quit\n"));

    start();
    startRecording();
    const QImage atFirst = panel();
    // Some seconds: fragments of the film are on the disk.
    int changes = 0;
    QImage last = atFirst;
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            const QImage now = panel();
            changes += now != last;
            last = now;
            return changes >= 4;
        },
        15000));
    program.kill();
    program.waitForFinished();
    EXPECT_EQ(films().size(), 1);
    start();
    ASSERT_TRUE(QTest::qWaitFor([&] { return films().size() == 2; }, 20000));
    EXPECT_TRUE(waitForLog("Recording recovered: "));
    EXPECT_EQ(probe(films().last())["streams"].toArray().size(), 1);
}
