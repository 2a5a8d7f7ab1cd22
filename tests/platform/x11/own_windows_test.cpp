#include "platform/x11/other_window.h"
#include "platform/x11/x11_screen_pictures.h"
#include "platform/x11/x11_screens.h"

#include <QApplication>
#include <QMenu>
#include <QScreen>
#include <QWidget>
#include <gtest/gtest.h>

// No picture shows a window of this program: proved with a colour that nothing else on the desktop has.
namespace {

const QColor kOwnColor(255, 0, 255);

bool isOwnColor(QRgb pixel)
{
    return qRed(pixel) > 220 && qGreen(pixel) < 60 && qBlue(pixel) > 220;
}

int ownPixels(const QImage &image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += isOwnColor(image.pixel(x, y));
    }
    return count;
}

// What a person sees, our own windows too.
QImage seen()
{
    return QGuiApplication::primaryScreen()->grabWindow(0).toImage();
}

class OwnWidget : public QWidget {
public:
    OwnWidget(Qt::WindowFlags flags, const QRect &geometry) : QWidget(nullptr, flags), m_place(geometry)
    {
        QPalette colors = palette();
        colors.setColor(QPalette::Window, kOwnColor);
        setPalette(colors);
        setAttribute(Qt::WA_ShowWithoutActivating);
        setGeometry(geometry);
        show();
    }
    // How much of it is seen, where it was asked for: what the toolkit believes of its place may lag behind
    // the window manager.
    int pixelsSeen() const { return ownPixels(seen().copy(m_place)); }

private:
    QRect m_place;
};

constexpr auto kFloating = Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint;

class OwnWindows : public testing::Test {
protected:
    X11Screens m_screens;
    X11ScreenPictures m_pictures;

    // All but the strip at the bottom, where a desktop's panel has a clock and buttons of its own.
    QImage picture()
    {
        const Screen screen = m_screens.screens().constFirst();
        const QRectF part(0, 0, screen.frame().width(), screen.frame().height() - 60);
        const auto taken = m_pictures.region(screen, part, Pointer::Hidden).result();
        EXPECT_TRUE(taken) << (taken ? "" : taken.error().message.toStdString());
        return taken ? *taken : QImage();
    }
    // Whether the compositing manager of this desktop draws shadows, which nobody but itself can paint again.
    bool hasShadows() const
    {
        return qgetenv("TD_PICOM").contains("shadow") || qgetenv("TD_COMP") == "xfwm4";
    }

    void expectPatternAt(const QImage &picture, const OtherWindow &window, const QRect &part)
    {
        const QRect inside = part.translated(-window.geometry().topLeft());
        EXPECT_EQ(picture.copy(part), window.picture().copy(inside)) << "window " << window.id();
    }
};

} // namespace

TEST_F(OwnWindows, AreInNoPictureWhateverLiesUnderAndOverThem)
{
    const OtherWindow below(1, QRect(100, 100, 600, 500));
    const OtherWindow above(2, QRect(500, 350, 500, 400));
    ASSERT_TRUE(below.id() && above.id());
    ASSERT_TRUE(eventually([&] { return picture().copy(above.geometry()) == above.picture(); }));
    const QImage without = picture();
    ASSERT_EQ(ownPixels(without), 0);

    const OwnWidget plain(Qt::Window | Qt::FramelessWindowHint, QRect(450, 250, 200, 200));
    ASSERT_TRUE(eventually([&] { return isOwnColor(seen().pixel(600, 400)); }));
    above.raise(); // a window of another program over ours
    ASSERT_TRUE(eventually([&] { return !isOwnColor(seen().pixel(600, 400)); }));
    const OwnWidget panel(kFloating, QRect(150, 150, 300, 200));
    const OwnWidget toast(kFloating | Qt::WindowDoesNotAcceptFocus | Qt::WindowTransparentForInput,
                          QRect(800, 600, 300, 60));
    QMenu menu;
    menu.setStyleSheet(QStringLiteral("QMenu { background: #ff00ff; color: #ff00ff; }"));
    for (int i = 0; i < 6; ++i)
        menu.addAction(QStringLiteral("An entry of the menu"));
    menu.popup(QPoint(260, 420));
    ASSERT_TRUE(eventually([&] { return ownPixels(seen().copy(menu.geometry())) > 1000; }));
    ASSERT_TRUE(eventually([&] { return panel.pixelsSeen() > 50000; }));
    ASSERT_TRUE(eventually([&] { return toast.pixelsSeen() > 17000; }));
    ASSERT_TRUE(eventually([&] { return isOwnColor(seen().pixel(640, 270)); }));
    ASSERT_TRUE(eventually([&] { return !isOwnColor(seen().pixel(600, 400)); }));

    const QImage with = picture();
    EXPECT_EQ(ownPixels(with), 0);
    expectPatternAt(with, above, above.geometry());
    if (hasShadows()) {
        expectPatternAt(with, below, QRect(100, 100, 350, 500)); // without what the upper window shades
        expectPatternAt(with, below, QRect(100, 100, 600, 200));
        EXPECT_EQ(with.copy(1200, 0, 300, 900), without.copy(1200, 0, 300, 900));
    } else {
        EXPECT_EQ(with, without);
    }
}

TEST_F(OwnWindows, AreInNoPictureOfAnotherWindow)
{
    const OtherWindow other(3, QRect(200, 200, 400, 300));
    ASSERT_TRUE(other.id());
    const OwnWidget panel(kFloating, QRect(300, 250, 150, 100));
    ASSERT_TRUE(eventually([&] { return panel.pixelsSeen() > 14000; }));
    EXPECT_TRUE(eventually([&] {
        const auto taken = m_pictures.window(other.id(), Pointer::Hidden).result();
        return taken && *taken == other.picture();
    }));
    EXPECT_EQ(m_pictures.window(quint32(panel.winId()), Pointer::Hidden).result().error().kind,
              Error::Kind::NotFound);
}

TEST_F(OwnWindows, LeaveNoTraceWhenTheyHaveJustBeenHidden)
{
    const OtherWindow other(4, QRect(200, 200, 500, 400));
    ASSERT_TRUE(other.id());
    ASSERT_TRUE(eventually([&] { return picture().copy(other.geometry()) == other.picture(); }));
    for (int round = 0; round < 5; ++round) {
        OwnWidget panel(kFloating, QRect(300, 250, 150, 100));
        ASSERT_TRUE(eventually([&] { return panel.pixelsSeen() > 14000; }));
        panel.hide();
        const QImage after = picture();
        EXPECT_EQ(ownPixels(after), 0) << "round " << round;
        expectPatternAt(after, other, other.geometry());
    }
}

TEST_F(OwnWindows, LeaveTheWallpaperAlsoWhenNobodyPublishedIt)
{
    for (const QString &name : {QStringLiteral("_XROOTPMAP_ID"), QStringLiteral("ESETROOT_PMAP_ID")})
        run("xprop", {"-root", "-remove", name});
    run("xsetroot", {"-solid", "#206040"});
    QImage without;
    ASSERT_TRUE(eventually([&] { // until the compositing manager, if any, has followed
        const QImage before = std::exchange(without, picture());
        const bool hasFollowed = // one of them never does
            qgetenv("TD_COMP") == "xfwm4" || without.pixelColor(1000, 300) != QColor(0x3a, 0x6e, 0xa5);
        return before == without && hasFollowed;
    }));
    {
        const OwnWidget panel(kFloating, QRect(900, 250, 300, 200));
        ASSERT_TRUE(eventually([&] { return panel.pixelsSeen() > 50000; }));
        EXPECT_EQ(picture(), without);
    }
    run("hsetroot", {"-solid", "#3a6ea5"});
}
