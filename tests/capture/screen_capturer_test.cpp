#include "capture/screen_capturer.h"
#include "fakes/fake_screens.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

namespace {

ListedWindow window(quint32 id, QSizeF size)
{
    ListedWindow listed;
    listed.id = id;
    listed.pid = 1;
    listed.frame = QRectF(QPointF(10, 20), size);
    listed.owner = "Terminal";
    return listed;
}

// Two screens side by side, red and green; the right one at double scale.
struct TwoScreens {
    TwoScreens()
    {
        screens.connected = {{1, "L", QRect(0, 0, 100, 80), 1, true},
                             {2, "R", QRect(100, 0, 200, 160), 2, false}};
        pictures.desktop = QImage(300, 160, QImage::Format_RGB32);
        pictures.desktop.fill(Qt::green);
        QPainter(&pictures.desktop).fillRect(0, 0, 100, 160, Qt::red);
    }

    FakeScreens screens;
    FakeScreenPictures pictures;
    ScreenCapturer capturer{screens, pictures};
};

} // namespace

TEST(ScreenCapturer, ListsOrdinaryWindowsOfOthersThatAreLargeEnough)
{
    TwoScreens desktop;
    ListedWindow panel = window(4, {300, 30});
    panel.layer = 25;
    ListedWindow own = window(5, {300, 300});
    own.pid = QCoreApplication::applicationPid();
    ListedWindow nameless = window(6, {41, 41});
    nameless.owner.clear();
    desktop.screens.listed = {
        window(1, {40, 300}), window(2, {300, 40}), window(3, {41, 300}), panel, own, nameless};
    const QList<WindowInfo> expected = {{3, QRectF(10, 20, 41, 300), "Terminal"},
                                        {6, QRectF(10, 20, 41, 41), ""}};
    EXPECT_EQ(desktop.capturer.onScreenWindows(), expected);
}

TEST(ScreenCapturer, TakesEveryDisplayInItsBackingPixels)
{
    TwoScreens desktop;
    const auto snapshots = desktop.capturer.captureAllDisplays(Pointer::Shown).result();
    ASSERT_TRUE(snapshots);
    ASSERT_EQ(snapshots->size(), 2);
    EXPECT_EQ(snapshots->at(0).screen.name, "L");
    EXPECT_EQ(snapshots->at(0).image.size(), QSize(100, 80));
    EXPECT_EQ(snapshots->at(0).image.pixelColor(50, 40), QColor(Qt::red));
    EXPECT_EQ(snapshots->at(1).image.size(), QSize(200, 160));
    EXPECT_EQ(snapshots->at(1).image.pixelColor(50, 40), QColor(Qt::green));
    EXPECT_EQ(desktop.pictures.requests.last().pointer, Pointer::Shown);
}

TEST(ScreenCapturer, SaysWhyThereIsNoPictureOfADisplay)
{
    TwoScreens desktop;
    desktop.pictures.failure = Error{Error::Kind::Denied, "The portal refused.", {}};
    EXPECT_EQ(desktop.capturer.captureAllDisplays(Pointer::Hidden).result().error().message,
              "The portal refused.");

    desktop.pictures.failure = Error{Error::Kind::NotFound, "Unplugged.", {}};
    EXPECT_EQ(desktop.capturer.captureAllDisplays(Pointer::Hidden).result().error(),
              captureError(CaptureError::NoDisplays));

    desktop.screens.connected.clear();
    EXPECT_EQ(desktop.capturer.captureAllDisplays(Pointer::Hidden).result().error().message,
              "No displays could be captured. Check Screen Recording permission.");

    desktop.pictures.able = {false, false, false, "There is no display."};
    EXPECT_EQ(desktop.capturer.captureAllDisplays(Pointer::Hidden).result().error().message,
              "There is no display.");
}

TEST(ScreenCapturer, GoesOnWithoutADisplayThatWentAway)
{
    TwoScreens desktop;
    desktop.pictures.gone = {1};
    const auto snapshots = desktop.capturer.captureAllDisplays(Pointer::Hidden).result();
    ASSERT_TRUE(snapshots);
    ASSERT_EQ(snapshots->size(), 1);
    EXPECT_EQ(snapshots->first().screen.name, "R");
}

TEST(ScreenCapturer, JoinsWhatDisplaysOfTwoScalesShowOfARegion)
{
    TwoScreens desktop;
    const auto picture = desktop.capturer.captureArea(QRectF(80, 60, 40, 30), Pointer::Hidden).result();
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->size(), QSize(80, 40)) << "at the sharper scale, and no lower than the displays reach";
    EXPECT_EQ(picture->pixelColor(39, 20), QColor(Qt::red));
    EXPECT_EQ(picture->pixelColor(40, 20), QColor(Qt::green));
    std::ranges::reverse(desktop.screens.connected);
    EXPECT_EQ(desktop.capturer.captureArea(QRectF(80, 60, 40, 30), Pointer::Hidden).result()->size(),
              QSize(80, 40))
        << "whichever comes first";
    EXPECT_EQ(desktop.capturer.captureArea(QRectF(900, 0, 10, 10), Pointer::Hidden).result().error().kind,
              Error::Kind::NotFound);
}

TEST(ScreenCapturer, GivesEveryPointOfABorderToOneDisplay)
{
    const TwoScreens desktop;
    for (const QPointF at :
         {QPointF(100, 10), QPointF(99.999, 10), QPointF(100, 0), QPointF(199.999, 79.999)}) {
        int holders = 0;
        for (const Screen &screen : desktop.screens.connected)
            holders += screen.holds(at);
        EXPECT_EQ(holders, 1) << at.x();
    }
    EXPECT_FALSE(desktop.screens.connected[1].holds({200, 10}));
}

TEST(ScreenCapturer, TellsAWindowThatClosedBeforeTheShot)
{
    TwoScreens desktop;
    desktop.pictures.windows[7] = QImage(10, 10, QImage::Format_RGB32);
    EXPECT_TRUE(desktop.capturer.captureWindow(7, Pointer::Hidden).result());
    desktop.pictures.windows.clear();
    const auto gone = desktop.capturer.captureWindow(7, Pointer::Hidden).result();
    ASSERT_FALSE(gone);
    EXPECT_EQ(gone.error(), captureError(CaptureError::WindowNotFound));
    EXPECT_EQ(gone.error().message, "That window is no longer available.");
}

TEST(ScreenCapturer, ReadsARegionInPointsOfItsDisplay)
{
    TwoScreens desktop;
    const auto display = desktop.capturer.displayFilter(desktop.screens.connected[1]);
    ASSERT_TRUE(display);
    const auto picture = desktop.capturer.captureRegion(QRectF(10, 10, 20.4, 30), *display).result();
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->size(), QSize(40, 60));
    EXPECT_EQ(desktop.pictures.requests.last().native.topLeft(), QPoint(120, 20));
    EXPECT_EQ(desktop.pictures.requests.last().pointer, Pointer::Hidden);

    desktop.screens.connected.removeLast();
    EXPECT_EQ(desktop.capturer.displayFilter(*display).error(), captureError(CaptureError::NoDisplays));
}
