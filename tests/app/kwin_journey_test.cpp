#include "platform/kwin/kwin_hand.h"
#include "platform/kwin/kwin_window.h"
#include "platform/wayland/kwin_windows.h"
#include "platform/wayland/wayland_screen_pictures.h"
#include "platform/wayland/wayland_screens.h"
#include "running_program.h"

#include <QRegularExpression>
#include <algorithm>

namespace {

// By the keys and the mouse of a Plasma session.
class KWinJourney : public RunningProgram {
protected:
    void start()
    {
        set(R"({"didShowWelcome": true, "openEditorAfterCapture": false, "shutterSound": false})");
        RunningProgram::start();
    }
    QImage seen(const KWinWindow &window)
    {
        const Screen screen = screens.screens().constFirst();
        return pictures.region(screen, QRectF(window.frame()), Pointer::Hidden).result().value_or(QImage());
    }
    // Waits until the overlay lies over the window, or until it is gone.
    bool isCovered(const KWinWindow &window, bool isWanted)
    {
        return QTest::qWaitFor(
            [&] {
                const QImage picture = seen(window);
                const bool isDimmed = picture != window.picture() && picture.pixel(150, 150) != qRgb(0, 0, 0);
                return isWanted ? isDimmed : picture == window.picture();
            },
            20000);
    }
    void openOverlay(int key, const KWinWindow &window)
    {
        hand.move(QPointF(1500, 900));
        ASSERT_TRUE(isCovered(window, false));
        hand.type({KEY_LEFTMETA, KEY_LEFTSHIFT, key});
        ASSERT_TRUE(isCovered(window, true));
    }
    // Points there, and waits until the overlay lights the window up: from then on it is told of buttons.
    void aim(const KWinWindow &window, QPointF at)
    {
        const QPoint apart(350, 30); // from the pointer
        const QRgb dimmed = seen(window).pixel(apart);
        hand.move(at);
        ASSERT_TRUE(QTest::qWaitFor([&] { return seen(window).pixel(apart) != dimmed; }, 20000));
    }
    QImage last() { return QImage(captures().constLast()).convertToFormat(QImage::Format_RGB32); }

    KWinHand hand;
    WaylandScreens screens{nullptr};
    WaylandScreenPictures pictures{nullptr};
};

TEST_F(KWinJourney, CapturesByShortcutRegionWindowAndScreenToThePixel)
{
    const KWinWindow window(1, QRect(200, 150, 400, 300));
    start();
    openOverlay(KEY_C, window);
    aim(window, QPointF(220, 170));
    hand.drag(QPointF(220, 170), QPointF(420, 320));
    ASSERT_TRUE(waitForCaptures(1));
    EXPECT_EQ(last(), window.picture().copy(20, 20, 200, 150));

    // What tells of it stands where it wants to.
    const QRegularExpression place("^lumenpost-float (\\d+),(\\d+)");
    const KWinWindows windows;
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            const QList<WaylandWindow> all = windows.list();
            return std::ranges::any_of(all, [&](const WaylandWindow &each) {
                const auto told = place.match(each.listed.title);
                return told.hasMatch() && !each.hasFocus &&
                       each.listed.frame.topLeft() ==
                           QPointF(told.captured(1).toInt(), told.captured(2).toInt());
            });
        },
        20000));

    openOverlay(KEY_C, window);
    aim(window, QPointF(400, 300));
    hand.button(true);
    hand.button(false);
    ASSERT_TRUE(waitForCaptures(2));
    EXPECT_EQ(last(), window.picture());

    hand.move(QPointF(1500, 900));
    hand.type({KEY_LEFTMETA, KEY_LEFTSHIFT, KEY_F});
    ASSERT_TRUE(waitForCaptures(3));
    EXPECT_EQ(last().size(), QSize(1920, 1080));
    EXPECT_EQ(last().copy(window.frame()), window.picture());
}

TEST_F(KWinJourney, GivesTheKeyboardBackWhenNothingIsPicked)
{
    const KWinWindow below(1, QRect(200, 150, 400, 300));
    const KWinWindow front(2, QRect(700, 150, 400, 300));
    front.activate();
    start();
    openOverlay(KEY_C, below);
    hand.type({KEY_ESC});
    EXPECT_TRUE(isCovered(below, false));
    EXPECT_TRUE(QTest::qWaitFor([&] { return front.script("if (!w.active) return false;"); }, 20000));
    EXPECT_TRUE(captures().isEmpty());
}

} // namespace
