#include "capture/scrolling_session.h"
#include "capture/ui/scrolling_chrome.h"
#include "capture_ui/overlay_fixture.h"
#include "support/pictures.h"
#include "ui/region_frame_window.h"

#include <QPushButton>
#include <QTest>

namespace {

// A session that the user scrolls by hand.
struct ByHand {
    ByHand()
    {
        screens.connected = {screen};
        pictures.desktop = filled({800, 800}, Qt::darkCyan);
        pointer.mayScroll = false;
    }
    const Screen screen{1, "L", QRect(0, 0, 800, 800), 1, true};
    FakeScreens screens;
    FakeScreenPictures pictures;
    FakePointerControl pointer;
    FakePermissions permissions;
    ScrollingCaptureSession session{
        {screens, pictures, pointer, permissions}, screen, QRectF(100, 100, 400, 200)};
};

} // namespace

TEST(RegionFrameWindow, LeavesTheRegionClear)
{
    RegionFrameWindow frame(QRectF(100, 200, 300, 150), Qt::red);
    frame.show(); // gets its shape
    EXPECT_EQ(frame.geometry(), QRect(97, 197, 306, 156));
    EXPECT_FALSE(frame.mask().intersects(QRect(3, 3, 300, 150))) << "in the region's own points";
    EXPECT_TRUE(frame.mask().contains(QPoint(1, 80)));
    EXPECT_TRUE(frame.windowFlags().testFlag(Qt::WindowTransparentForInput));
    const QImage seen = frame.grab().toImage();
    EXPECT_EQ(seen.pixelColor(150, 1), Qt::red);
}

TEST(ScrollingChrome, ShowsTheSessionAndEndsItWithDone)
{
    ByHand hand;
    ScrollingCaptureSession &session = hand.session;
    ScrollingChrome chrome(session);
    chrome.show();
    const auto result = session.run();
    EXPECT_TRUE(chrome.frameWindow().isVisible() && chrome.hud().isVisible());
    EXPECT_EQ(chrome.hud().geometry().top(), 312) << "12 under the region";

    ASSERT_TRUE(QTest::qWaitFor([&] { return session.frames() == 1; }, 2000));
    auto *done = chrome.hud().findChild<QPushButton *>("done");
    ASSERT_TRUE(done);
    EXPECT_FALSE(chrome.hud().findChild<QPushButton *>("goOn")->isVisible());
    EXPECT_EQ(done->text(), "Done");
    QTest::mouseClick(done, Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([&] { return result.isFinished(); }, 2000));
    EXPECT_FALSE(chrome.frameWindow().isVisible() || chrome.hud().isVisible());
    ASSERT_TRUE(result.result());
    EXPECT_EQ(result.result()->value().size(), QSize(400, 200));
}

TEST(ScrollingChrome, OffersToGoOnAtTheLimitAndIsGivenUpByEsc)
{
    ByHand hand;
    ScrollingCaptureSession &session = hand.session;
    session.setMaxFrames(1);
    session.setAsksAtLimit();
    ScrollingChrome chrome(session);
    chrome.show();
    const auto result = session.run();
    ASSERT_TRUE(QTest::qWaitFor([&] { return session.isAtLimit(); }, 2000));
    auto *goOn = chrome.hud().findChild<QPushButton *>("goOn");
    EXPECT_TRUE(goOn->isVisible());
    EXPECT_TRUE(chrome.hud().rect().contains(chrome.hud().findChild<QPushButton *>("done")->geometry()));
    QTest::mouseClick(goOn, Qt::LeftButton);
    EXPECT_FALSE(goOn->isVisible());
    QTest::keyClick(&chrome.hud(), Qt::Key_Escape);
    ASSERT_TRUE(QTest::qWaitFor([&] { return result.isFinished(); }, 2000));
    EXPECT_FALSE(result.result()->has_value());
    EXPECT_FALSE(chrome.hud().isVisible());
}

TEST(ScrollingChrome, LeavesTheKeysToWhoScrollsByHandAndTakesReturnForDone)
{
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        ByHand hand;
        ScrollingChrome chrome(hand.session);
        chrome.show();
        const auto result = hand.session.run();
        ASSERT_TRUE(QTest::qWaitFor([&] { return hand.session.frames() == 1; }, 2000));
        EXPECT_EQ(QWidget::keyboardGrabber(), nullptr);
        QTest::keyClick(&chrome.hud(), key);
        ASSERT_TRUE(QTest::qWaitFor([&] { return result.isFinished(); }, 2000));
        EXPECT_TRUE(result.result()->has_value()) << "kept";
    }
}

TEST(ScrollingChrome, PutsOwnWindowsAsideThatWouldCatchTheWheel)
{
    ByHand hand;
    QWidget over;
    over.setGeometry(250, 150, 200, 100);
    over.show();
    QWidget beside;
    beside.setGeometry(510, 400, 200, 100);
    beside.show();
    {
        ScrollingChrome chrome(hand.session);
        chrome.show();
        EXPECT_TRUE(over.isMinimized());
        EXPECT_FALSE(beside.isMinimized());
    }
    EXPECT_FALSE(over.isMinimized());
    EXPECT_TRUE(over.isVisible());
}
