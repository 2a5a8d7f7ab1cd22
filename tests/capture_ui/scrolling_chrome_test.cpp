#include "capture/scrolling_session.h"
#include "capture/ui/region_frame_window.h"
#include "capture/ui/scrolling_chrome.h"
#include "capture_ui/overlay_fixture.h"
#include "platform/permissions.h"
#include "platform/screen_pictures.h"

#include <QPushButton>
#include <QTest>

namespace {

// A screen that shows noise, so that every shot differs from the last, and a session scrolled by hand.
class NoisyScreen : public Screens, public ScreenPictures, public Permissions {
public:
    QList<Screen> screens() const override { return {screen}; }
    QList<ListedWindow> windows() const override { return {}; }
    ScreenPictures::Capabilities capabilities() const override { return {}; }
    QFuture<Result<QImage>> display(const Screen &, Pointer) override { return shot(); }
    QFuture<Result<QImage>> region(const Screen &, const QRectF &, Pointer) override { return shot(); }
    QFuture<Result<QImage>> window(quint32, Pointer) override { return shot(); }
    QFuture<Result<QImage>> shot()
    {
        ++shots;
        QImage image(100, 60, QImage::Format_RGB32);
        image.fill(QColor::fromHsv(shots * 30 % 360, 200, 200));
        return readyFuture(Result<QImage>(image));
    }
    PermissionStatus status(Permission) const override { return PermissionStatus::Granted; }
    void request(Permission) override {}
    void openSettings(Permission) override {}

    Screen screen{1, "L", QRect(0, 0, 800, 800), 1, true};
    int shots = 0;
};

} // namespace

TEST(ScrollHUDView, CountsFramesInWords)
{
    EXPECT_EQ(ScrollHUDView::frameCount(0), "0 frames");
    EXPECT_EQ(ScrollHUDView::frameCount(1), "1 frame");
    EXPECT_EQ(ScrollHUDView::frameCount(80), "80 frames");
}

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
    NoisyScreen screen;
    RestingPointer pointer;
    ScrollingCaptureSession session({screen, screen, pointer, screen}, screen.screen,
                                    QRectF(100, 100, 400, 200));
    ScrollingChrome chrome(session);
    chrome.show();
    const auto result = session.run();
    EXPECT_TRUE(chrome.frameWindow().isVisible() && chrome.hud().isVisible());
    EXPECT_EQ(chrome.hud().geometry().top(), 312) << "12 under the region";

    ASSERT_TRUE(QTest::qWaitFor([&] { return session.frames() == 1; }, 2000));
    auto *done = chrome.hud().findChild<QPushButton *>();
    ASSERT_TRUE(done);
    EXPECT_EQ(done->text(), "Done");
    QTest::mouseClick(done, Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([&] { return result.isFinished(); }, 2000));
    EXPECT_FALSE(chrome.frameWindow().isVisible() || chrome.hud().isVisible());
    ASSERT_TRUE(result.result());
    EXPECT_EQ(result.result()->value().size(), QSize(100, 60));
}

TEST(ScrollingChrome, PutsOwnWindowsAsideThatWouldCatchTheWheel)
{
    NoisyScreen screen;
    RestingPointer pointer;
    ScrollingCaptureSession session({screen, screen, pointer, screen}, screen.screen,
                                    QRectF(100, 100, 400, 200));
    QWidget over;
    over.setGeometry(250, 150, 200, 100);
    over.show();
    QWidget beside;
    beside.setGeometry(510, 400, 200, 100);
    beside.show();
    {
        ScrollingChrome chrome(session);
        chrome.show();
        EXPECT_TRUE(over.isMinimized());
        EXPECT_FALSE(beside.isMinimized());
    }
    EXPECT_FALSE(over.isMinimized());
    EXPECT_TRUE(over.isVisible());
}
