#include "sway_journey.h"

namespace {

TEST_F(SwayJourney, CapturesWhatIsPointedAtOnEachScreenToThePixel)
{
    const SwayWindow plain(1, QRect(100, 80, 400, 300));
    const SwayWindow fine(2, QRect(1380, 80, 400, 300), 1.5);
    set(kQuiet);
    start();
    openOverlay("region", plain, fine);
    aim(plain, QPointF(120, 100));
    hand.drag(QPointF(120, 100), QPointF(320, 250));
    ASSERT_TRUE(waitForCaptures(1));
    EXPECT_EQ(QImage(captures().first()).convertToFormat(QImage::Format_RGB32),
              plain.picture().copy(20, 20, 200, 150));

    // What tells of it stands where it wants to, above the others, and has not the keyboard.
    const QRegularExpression place("^lumenpost-float (\\d+),(\\d+)$");
    QJsonObject toast;
    ASSERT_TRUE(QTest::qWaitFor([&] { return !(toast = node(place)).isEmpty(); }, 20000));
    const auto told = place.match(toast["name"].toString());
    EXPECT_EQ(toast["rect"].toObject()["x"].toInt(), told.captured(1).toInt());
    EXPECT_EQ(toast["rect"].toObject()["y"].toInt(), told.captured(2).toInt());
    EXPECT_EQ(toast["type"].toString(), "floating_con");
    EXPECT_FALSE(toast["focused"].toBool());

    openOverlay("region", plain, fine);
    aim(fine, QPointF(1400, 100));
    hand.drag(QPointF(1400, 100), QPointF(1600, 240));
    ASSERT_TRUE(waitForCaptures(2));
    EXPECT_EQ(QImage(captures().last()).convertToFormat(QImage::Format_RGB32),
              fine.picture().copy(30, 30, 300, 210));

    openOverlay("window", plain, fine);
    aim(plain, QPointF(200, 200));
    hand.button(true);
    hand.button(false);
    ASSERT_TRUE(waitForCaptures(3));
    // A compositor without a screen draws the pointer into all that it shows.
    const QRect besides(0, 0, 400, 90);
    EXPECT_EQ(QImage(captures().last()).size(), QSize(400, 300));
    EXPECT_EQ(QImage(captures().last()).convertToFormat(QImage::Format_RGB32).copy(besides),
              plain.picture().copy(besides));
}

TEST_F(SwayJourney, LeavesTheDesktopAsItWasWhenNothingIsPicked)
{
    const SwayWindow below(1, QRect(100, 80, 400, 300));
    const SwayWindow front(2, QRect(200, 80, 400, 300));
    ASSERT_TRUE(front.command("fullscreen enable"));
    set(kQuiet);
    start();
    command({"capture", "region"});
    ASSERT_TRUE(QTest::qWaitFor([] { return shown("lumenpost-cover") == 2; }, 20000));
    EXPECT_EQ(QProcess::execute("wtype", {"-k", "Escape"}), 0);
    ASSERT_TRUE(QTest::qWaitFor([] { return shown("lumenpost-cover") == 0; }, 20000));
    EXPECT_TRUE(QTest::qWaitFor([&] {
        return SwayIpc::run("[pid=" + QByteArray::number(front.pid()) + " con_id=__focused__] nop");
    }));
    EXPECT_TRUE(captures().isEmpty());
}

} // namespace
