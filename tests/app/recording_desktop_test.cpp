#include "running_program.h"
#include "support/printers.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

namespace {

const QRect kRegion(200, 150, 400, 240);
const QColor kFrame(0xff, 0x3b, 0x30);
const QColor kRipple = QColor::fromRgbF(0.45F, 0.38F, 0.98F);

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

    // Middle of the panel's button that begins drawing: the dot, the time and it, from the left.
    static QPoint drawButton()
    {
        const QImage row = photograph().copy(QRect(0, 430, 800, 1));
        int left = 0;
        while (left < row.width() && row.pixelColor(left, 0).lightness() > 60)
            ++left;
        return {left + 105, 430};
    }

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

TEST_F(RecordingByShortcut, FilmsClicksShortcutsTheCameraAndWhatIsDrawn)
{
    const QString camera = home.path("camera.mp4");
    ASSERT_EQ(
        QProcess::execute("ffmpeg", {"-v", "error", "-f", "lavfi", "-i",
                                     "color=c=0x00ff00:s=320x240:r=10:d=2", "-pix_fmt", "yuv420p", camera}),
        0);
    more.insert("LUMENPOST_CAMERA", camera);
    set(R"({"openEditorAfterCapture": false, "shutterSound": false, "didShowWelcome": true,
            "recordShowClicks": true, "recordShowKeys": true, "recordWebcam": true})");
    start();
    startRecording();
    const auto isGreen = [](const QImage &picture, const QPoint &point) {
        const QColor color = picture.pixelColor(point);
        return color.green() > 200 && color.red() < 60 && color.blue() < 60;
    };
    // 180 points, 24 from the region's lower right; its corners show what is behind.
    const QRect bubble(QPoint(600 - 24 - 180, 390 - 24 - 180), QSize(180, 180));
    ASSERT_TRUE(QTest::qWaitFor([&] { return isGreen(photograph(), bubble.center()); }, 10000));
    EXPECT_FALSE(isGreen(photograph(), bubble.topLeft() + QPoint(4, 4)));

    const QPoint click(250, 200);
    xdotool({"mousemove", "250", "200", "click", "1"});
    key("ctrl+shift+k");
    // The badge stands 40 over the lower edge.
    const QRect badge(400 - 40, 390 - 40 - 30, 80, 20);
    ASSERT_TRUE(QTest::qWaitFor([&] { return holds(photograph().copy(badge), Qt::white); }, 5000));
    QTest::qWait(700); // the ripple is over, and in the film
    // Drawing is begun in the panel, which looks for it at the place of its button.
    xdotool(
        {"mousemove", QString::number(drawButton().x()), QString::number(drawButton().y()), "click", "1"});
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            xdotool({"mousemove", "230", "300", "mousedown", "1", "mousemove", "260", "320", "mousemove",
                     "330", "320", "mouseup", "1"});
            return holds(photograph().copy(QRect(290, 316, 20, 8)), kFrame);
        },
        10000));
    if (qEnvironmentVariableIsSet("LUMENPOST_LOOK"))
        photograph().save(qEnvironmentVariable("LUMENPOST_LOOK") + "-extras.png");
    QTest::qWait(300);
    key("Escape");
    ASSERT_TRUE(
        QTest::qWaitFor([] { return !holds(photograph().copy(QRect(290, 316, 20, 8)), kFrame); }, 5000));
    key("super+shift+r");
    ASSERT_TRUE(QTest::qWaitFor([&] { return films().size() == 1; }, 20000));

    bool hasRipple = false, hasBadge = false, hasStroke = false, hasBubble = false, hasPanel = false;
    const double length = probe(films().first())["format"].toObject()["duration"].toString().toDouble();
    for (double at = 0; at < length; at += 0.1) {
        const QImage frame = frameAt(films().first(), QString::number(at));
        if (frame.isNull())
            continue;
        const QPoint corner(200, 150);
        hasRipple |= holds(frame.copy(QRect(click - corner - QPoint(28, 28), QSize(56, 56))), kRipple);
        hasBadge |= holds(frame.copy(badge.translated(-corner)), Qt::white);
        hasStroke |= holds(frame.copy(QRect(90, 166, 20, 8)), kFrame);
        hasBubble |= isGreen(frame, bubble.center() - corner);
        // Its frame would be at the very edge.
        hasPanel |= holds(frame.copy(QRect(0, 0, frame.width(), 2)), kFrame);
    }
    EXPECT_TRUE(hasRipple);
    EXPECT_TRUE(hasBadge);
    EXPECT_TRUE(hasStroke);
    EXPECT_TRUE(hasBubble);
    EXPECT_FALSE(hasPanel);
}
