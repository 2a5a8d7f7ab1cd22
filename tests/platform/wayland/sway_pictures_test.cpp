#include "platform/pointer_control.h"
#include "platform/wayland/sway_window.h"
#include "platform/wayland/sway_windows.h"
#include "platform/wayland/wayland_outputs.h"
#include "platform/wayland/wayland_pointer_control.h"
#include "platform/wayland/wayland_screen_pictures.h"
#include "platform/wayland/wayland_screens.h"
#include "platform/wayland/wayland_windows.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <csignal>
#include <gtest/gtest.h>

namespace {

class SwayPictures : public testing::Test {
protected:
    Screen screen(const QString &name) const
    {
        for (const Screen &each : m_screens.screens()) {
            if (each.name == name)
                return each;
        }
        return {};
    }
    QImage shot(const Screen &screen, const QRectF &region, Pointer pointer = Pointer::Hidden)
    {
        const auto picture = m_pictures.region(screen, region, pointer).result();
        EXPECT_TRUE(picture) << picture.error().message.toStdString();
        return picture.value_or(QImage());
    }
    // Once it shows what it should; else what it shows.
    QImage shotOf(const SwayWindow &window, const Screen &screen)
    {
        const QRectF at = QRectF(window.frame()).translated(-screen.frame().topLeft());
        eventually([&] { return shot(screen, at) == window.picture(); }, 5000);
        return shot(screen, at);
    }

    std::shared_ptr<WaylandWindows> m_windows = waylandWindows();
    WaylandScreens m_screens{m_windows};
    WaylandScreenPictures m_pictures{m_windows};
};

TEST_F(SwayPictures, TellsTheScreensAsTheToolkitSeesThem)
{
    const QList<Screen> screens = m_screens.screens();
    ASSERT_EQ(screens.size(), 2);
    EXPECT_EQ(screens[0].scale, 1);
    EXPECT_EQ(screens[1].scale, 1.5);
    EXPECT_EQ(screens[1].native.size(), QSize(1920, 1080));
    EXPECT_FALSE(screens[0].native.intersects(screens[1].native));
    for (const Screen &each : screens) {
        const auto known = QGuiApplication::screens();
        EXPECT_TRUE(std::any_of(known.begin(), known.end(), [&](const QScreen *other) {
            return QRectF(other->geometry()) == each.frame();
        })) << each.name.toStdString();
    }
}

TEST_F(SwayPictures, AreExactAtAFractionalScaleAndOnATurnedScreen)
{
    {
        const SwayWindow window(1, QRect(1300, 40, 400, 300), 1.5);
        EXPECT_EQ(shotOf(window, screen("HEADLESS-2")), window.picture());
        const auto alone = m_pictures.window(m_screens.windows().constFirst().id, Pointer::Hidden).result();
        ASSERT_TRUE(alone);
        EXPECT_EQ(*alone, window.picture());
    }
    for (const QByteArray transform : {"90", "180", "270", "flipped", "flipped-90"}) {
        ASSERT_TRUE(SwayIpc::run("output HEADLESS-1 transform " + transform));
        const Screen turned = screen("HEADLESS-1");
        EXPECT_EQ(turned.native.width() < turned.native.height(),
                  transform.endsWith("90") || transform == "270");
        const SwayWindow window(2, QRect(20, 30, 300, 200));
        EXPECT_EQ(shotOf(window, turned), window.picture()) << transform.toStdString();
    }
    EXPECT_TRUE(SwayIpc::run("output HEADLESS-1 transform normal"));
}

// A person may have made a window see-through.
TEST_F(SwayPictures, LeaveWindowsAsOpaqueAsTheyWere)
{
    const SwayWindow lower(3, QRect(60, 70, 200, 150));
    const SwayWindow upper(4, QRect(100, 100, 200, 150));
    ASSERT_TRUE(upper.command("opacity 0.625"));
    const Screen first = screen("HEADLESS-1");
    const QRectF both(60, 70, 240, 180);
    QImage before;
    eventually([&] { return std::exchange(before, shot(first, both)) == before && !before.isNull(); });
    for (const ListedWindow &window : m_screens.windows()) {
        if (window.pid == lower.pid()) {
            EXPECT_EQ(m_pictures.window(window.id, Pointer::Hidden).result().value_or(QImage()),
                      lower.picture());
        }
    }
    EXPECT_EQ(shot(first, both), before);
    // Killed while they are hidden.
    SwayWindows windows;
    const QList<quint32> front{windows.list().first().listed.id};
    EXPECT_EXIT(
        {
            const auto veil = windows.hide(front);
            raise(SIGKILL);
        },
        testing::KilledBySignal(SIGKILL), "");
    EXPECT_TRUE(eventually([&] { return shot(first, both) == before; }));
}

TEST_F(SwayPictures, ShowNoWindowOfOurs)
{
    const SwayWindow other(5, QRect(60, 70, 300, 200));
    const Screen first = screen("HEADLESS-1");
    ASSERT_EQ(shotOf(other, first), other.picture());
    QWidget ours;
    ours.setFixedSize(500, 400);
    ours.show();
    ASSERT_TRUE(eventually([&] {
        const QList<ListedWindow> listed = m_screens.windows();
        return !listed.isEmpty() && listed.first().pid == QCoreApplication::applicationPid();
    }));
    ASSERT_TRUE(SwayIpc::run("[pid=" + QByteArray::number(QCoreApplication::applicationPid()) +
                             "] move absolute position 50 60"));
    ASSERT_TRUE(eventually([&] { return m_screens.windows().first().frame.topLeft() == QPointF(50, 60); }));
    EXPECT_EQ(shot(first, other.frame()), other.picture());
}

TEST_F(SwayPictures, TellNothingOfAScreenThatHasGoneOrChanged)
{
    Screen gone = screen("HEADLESS-2");
    gone.id += 1000;
    const Screen changed = screen("HEADLESS-2");
    ASSERT_TRUE(SwayIpc::run("output HEADLESS-2 resolution 1600x900"));
    EXPECT_TRUE(eventually([&] { return screen("HEADLESS-2").native.size() == QSize(1600, 900); }));
    for (const Screen &wrong : {gone, changed}) {
        const auto picture = m_pictures.display(wrong, Pointer::Hidden).result();
        ASSERT_FALSE(picture);
        EXPECT_EQ(picture.error().kind, Error::Kind::NotFound);
    }
    EXPECT_TRUE(m_pictures.display(screen("HEADLESS-2"), Pointer::Hidden).result());
    ASSERT_TRUE(SwayIpc::run("output HEADLESS-2 resolution 1920x1080"));
    EXPECT_TRUE(eventually([&] { return screen("HEADLESS-2") == changed; }));
}

TEST_F(SwayPictures, ThePointerIsFoundAndTurnsTheWheelBelowIt)
{
    SwayWindow window(6, QRect(1300, 40, 400, 300), 1.5);
    ASSERT_EQ(shotOf(window, screen("HEADLESS-2")), window.picture());
    WaylandPointerControl pointer(m_screens);
    const WaylandPointerControl another(m_screens); // did not put it there
    for (const QPointF at : {QPointF(200, 100), QPointF(1400.5, 140.5)}) {
        pointer.warp(at);
        EXPECT_LE((another.position() - at).manhattanLength(), 1);
    }
    ASSERT_TRUE(pointer.wheel(3).result());
    ASSERT_TRUE(pointer.wheel(-1).result());
    QByteArray said;
    EXPECT_TRUE(eventually(
        [&] { return (said += window.said()).contains("wheel 3\n") && said.contains("wheel 2\n"); }, 5000))
        << said.toStdString();
    EXPECT_NE(shot(screen("HEADLESS-2"), QRectF(20, 40, 400, 300), Pointer::Shown), window.picture());
}

} // namespace
