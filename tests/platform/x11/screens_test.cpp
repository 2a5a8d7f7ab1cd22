#include "platform/x11/other_window.h"
#include "platform/x11/x11_hot_keys.h"
#include "platform/x11/x11_screen_pictures.h"
#include "platform/x11/x11_screens.h"

#include <QDataStream>
#include <QMap>
#include <gtest/gtest.h>
#include <xcb/xcb.h>

namespace {

using Variables = QMap<QByteArray, QByteArray>;

// Two made-up monitors, the right one first in the server's list but not the primary one.
class TwoMonitors {
public:
    TwoMonitors()
    {
        run("xrandr", {"--setmonitor", "R", "960/254x1080/286+960+0", "none"});
        run("xrandr", {"--setmonitor", "*L", "960/254x1080/286+0+0", "screen"});
    }
    ~TwoMonitors()
    {
        run("xrandr", {"--delmonitor", "R"});
        run("xrandr", {"--delmonitor", "L"});
    }
};

void setResources(const QByteArray &text)
{
    run("xprop", {"-root", "-f", "RESOURCE_MANAGER", "8s", "-set", "RESOURCE_MANAGER", text});
}

// A desktop's daemon that publishes a theme, by a name and a value of odd lengths, and then a resolution.
class SettingsDaemon {
public:
    explicit SettingsDaemon(int dpi)
    {
        const auto atom = [this](const QByteArray &name) {
            const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&free)> reply(
                xcb_intern_atom_reply(
                    m_xcb, xcb_intern_atom(m_xcb, false, quint16(name.size()), name.constData()), nullptr),
                &free);
            return reply->atom;
        };
        QByteArray bytes;
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        stream.setByteOrder(QDataStream::LittleEndian);
        const auto put = [&stream](QByteArrayView text) {
            stream.writeRawData(text.data(), int(text.size()));
            for (qsizetype at = text.size(); at % 4 != 0; ++at)
                stream << quint8(0);
        };
        stream << quint32(0) << quint32(1) << quint32(2) << quint16(1) << quint16(14);
        put("Net/ThemeNames");
        stream << quint32(0) << quint32(5);
        put("Plain");
        stream << quint16(0) << quint16(7);
        put("Xft/DPI");
        stream << quint32(0) << quint32(dpi * 1024);
        const xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(m_xcb)).data;
        const quint32 window = xcb_generate_id(m_xcb);
        xcb_create_window(m_xcb, 0, window, screen->root, -9, -9, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, 0, 0,
                          nullptr);
        const quint32 name = atom("_XSETTINGS_SETTINGS");
        xcb_change_property(m_xcb, XCB_PROP_MODE_REPLACE, window, name, name, 8, quint32(bytes.size()),
                            bytes.constData());
        xcb_set_selection_owner(m_xcb, window, atom("_XSETTINGS_S0"), XCB_CURRENT_TIME);
        atom("WM_NAME"); // all of it has arrived
    }
    ~SettingsDaemon() { xcb_disconnect(m_xcb); }

private:
    xcb_connection_t *m_xcb = xcb_connect(nullptr, nullptr);
};

QString line(const QString &name, const QRect &frame, double scale)
{
    return QStringLiteral("%1 %2 %3 %4 %5 %6")
        .arg(name)
        .arg(frame.x())
        .arg(frame.y())
        .arg(frame.width())
        .arg(frame.height())
        .arg(scale);
}

QStringList toldByToolkit()
{
    QProcess process;
    process.start(QStringLiteral(LUMENPOST_BINARY_DIR "/tests/platform_pattern_window"), {"screens"});
    process.waitForFinished();
    return QString::fromUtf8(process.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
}

QStringList toldByUs()
{
    QStringList lines;
    for (const Screen &screen : X11Screens().screens()) {
        lines.append(line(screen.name, screen.frame().toRect(), screen.scale));
    }
    return lines;
}

} // namespace

TEST(X11Screens, ScaleEachScreenAsTheToolkitDoes)
{
    const TwoMonitors monitors;
    const QList<Variables> settings = {
        {},
        {{"QT_SCALE_FACTOR", "1.5"}},
        {{"QT_SCREEN_SCALE_FACTORS", "L=1;R=2"}},
        {{"QT_SCREEN_SCALE_FACTORS", "2;1.5"}},
        {{"QT_SCREEN_SCALE_FACTORS", "R=1.5"}, {"QT_SCALE_FACTOR", "2"}},
        {{"QT_FONT_DPI", "144"}},
        {{"QT_FONT_DPI", "144"}, {"QT_ENABLE_HIGHDPI_SCALING", "0"}},
        {{"QT_FONT_DPI", "160"}, {"QT_SCALE_FACTOR_ROUNDING_POLICY", "Floor"}},
        {{"QT_FONT_DPI", "72"}},
        {{"QT_FONT_DPI", "72"}, {"QT_SCALE_FACTOR_ROUNDING_POLICY", "Round"}},
        {{"resources", "Xft.dpi:\t192\n"}},
        {{"resources", "Xft.antialias:\t1\nXft.dpi:\t120\n"}, {"QT_SCALE_FACTOR", "0.5"}},
    };
    for (const Variables &variables : settings) {
        std::string about;
        for (auto each = variables.begin(); each != variables.end(); ++each) {
            about += each.key().toStdString() + "=" + each.value().toStdString() + " ";
            if (each.key() == "resources")
                setResources(each.value());
            else
                qputenv(each.key().constData(), each.value());
        }
        EXPECT_EQ(toldByUs().join("\n").toStdString(), toldByToolkit().join("\n").toStdString()) << about;
        setResources("");
        for (const QByteArray &name : variables.keys())
            qunsetenv(name.constData());
    }
    const SettingsDaemon daemon(192);
    EXPECT_EQ(toldByUs().join("\n").toStdString(), toldByToolkit().join("\n").toStdString());
    EXPECT_TRUE(toldByUs().first().endsWith(" 2")) << toldByUs().first().toStdString();
}

TEST(X11Screens, TellWindowsInPointsOfTheirScreen)
{
    const TwoMonitors monitors;
    const OtherWindow window(1, QRect(1100, 200, 300, 200));
    qputenv("QT_SCREEN_SCALE_FACTORS", "L=1;R=2");
    const X11Screens screens;
    EXPECT_TRUE(eventually([&] {
        for (const ListedWindow &listed : screens.windows()) {
            if (listed.id == window.id())
                return listed.frame == QRectF(960 + 70, 100, 150, 100);
        }
        return false;
    }));
    qunsetenv("QT_SCREEN_SCALE_FACTORS");
}

TEST(X11Screens, KeepOrderAndTypeOfPanelsAndDesktops)
{
    const OtherWindow window(1, QRect(100, 100, 300, 200));
    const X11Screens screens;
    QMap<QString, int> layers;
    ASSERT_TRUE(eventually([&] {
        for (const ListedWindow &listed : screens.windows())
            layers[listed.owner] = listed.layer;
        return layers.contains("platform_pattern_window") && layers.contains("Tint2");
    }));
    EXPECT_EQ(layers["platform_pattern_window"], 0);
    EXPECT_NE(layers["Tint2"], 0);
    for (const auto &[type, layer] : {std::pair("DIALOG", 0), {"UTILITY", 8}, {"DESKTOP", -1}}) {
        run("xprop", {"-id", QString::number(window.id()), "-f", "_NET_WM_WINDOW_TYPE", "32a", "-set",
                      "_NET_WM_WINDOW_TYPE", QStringLiteral("_NET_WM_WINDOW_TYPE_") + type});
        for (const ListedWindow &listed : screens.windows())
            layers[listed.owner] = listed.layer;
        EXPECT_EQ(layers["platform_pattern_window"], layer) << type;
    }
}

TEST(X11ScreenPictures, CutEachScreenFromTheWholeAlsoWhenTheyOverlap)
{
    const OtherWindow window(7, QRect(700, 300, 500, 300));
    run("xrandr", {"--setmonitor", "*L", "1200/254x1080/286+0+0", "screen"});
    run("xrandr", {"--setmonitor", "R", "1200/254x1080/286+720+0", "none"});
    X11Screens screens;
    X11ScreenPictures pictures;
    const QList<Screen> both = screens.screens();
    ASSERT_EQ(both.size(), 2);
    EXPECT_TRUE(eventually([&] {
        const auto left = pictures.display(both[0], Pointer::Hidden).result();
        const auto right = pictures.display(both[1], Pointer::Hidden).result();
        return left && right && left->size() == QSize(1200, 1080) && right->size() == QSize(1200, 1080) &&
               left->copy(700, 300, 500, 300) == window.picture() &&
               right->copy(0, 300, 480, 300) == window.picture().copy(20, 0, 480, 300);
    }));
    run("xrandr", {"--delmonitor", "R"});
    run("xrandr", {"--delmonitor", "L"});
}

TEST(X11ScreenPictures, FollowTheDesktopToAnotherSize)
{
    X11Screens screens;
    X11ScreenPictures pictures;
    run("xrandr", {"--newmode", "small", "63.5", "1024", "1072", "1176", "1328", "768", "771", "775", "798"});
    run("xrandr", {"--addmode", "screen", "small"});
    run("xrandr", {"--output", "screen", "--mode", "small"});
    ASSERT_TRUE(eventually([&] { return screens.screens().value(0).native.size() == QSize(1024, 768); }))
        << "the server of the test has no such mode";
    const Screen small = screens.screens().constFirst();
    ASSERT_TRUE(pictures.display(small, Pointer::Hidden).result()) << "opens the connection";
    run("xrandr", {"--output", "screen", "--mode", "1920x1080"});
    ASSERT_TRUE(eventually([&] { return screens.screens().value(0).native.size() == QSize(1920, 1080); }));
    const OtherWindow window(9, QRect(1500, 800, 300, 200));
    const Screen large = screens.screens().constFirst();
    EXPECT_TRUE(eventually([&] {
        const auto taken = pictures.display(large, Pointer::Hidden).result();
        return taken && taken->copy(1500, 800, 300, 200) == window.picture();
    })) << "outside the size of before";
    EXPECT_EQ(pictures.display(small, Pointer::Hidden).result().error().kind, Error::Kind::NotFound)
        << "another one than was told";
}

TEST(X11ScreenPictures, TellADisplayThatWentAway)
{
    X11ScreenPictures pictures;
    QList<Screen> both;
    {
        const TwoMonitors monitors;
        both = X11Screens().screens();
        ASSERT_EQ(both.size(), 2);
        EXPECT_TRUE(pictures.display(both[1], Pointer::Hidden).result());
    }
    EXPECT_EQ(pictures.display(both[1], Pointer::Hidden).result().error().kind, Error::Kind::NotFound);
    EXPECT_EQ(pictures.region(both[1], QRectF(5, 5, 50, 50), Pointer::Hidden).result().error().kind,
              Error::Kind::NotFound);
}

// There an X server has nothing to show of the windows of others, and its root is black.
TEST(X11ScreenPictures, RefuseAnEmptyPictureWhereTheSessionIsAWaylandOne)
{
    const OtherWindow window(4, QRect(400, 300, 300, 200));
    const Screen screen = X11Screens().screens().constFirst();
    const QByteArray type = qgetenv("XDG_SESSION_TYPE");
    qputenv("XDG_SESSION_TYPE", "wayland");
    {
        X11ScreenPictures pictures;
        EXPECT_TRUE(eventually([&] {
            const auto seen = pictures.region(screen, QRectF(window.geometry()), Pointer::Hidden).result();
            return seen && *seen == window.picture();
        }));
        EXPECT_EQ(pictures.region(screen, QRectF(900, 700, 50, 50), Pointer::Hidden).result().error().kind,
                  Error::Kind::Unavailable);
    }
    qputenv("XDG_SESSION_TYPE", type);
    EXPECT_TRUE(X11ScreenPictures().region(screen, QRectF(900, 700, 50, 50), Pointer::Hidden).result());
}

TEST(X11ScreenPictures, TakeAWindowWithTheFrameThatWasDrawnAroundIt)
{
    X11Screens screens;
    X11ScreenPictures pictures;
    const OtherWindow window(6, QRect(400, 300, 320, 200), {});
    ASSERT_TRUE(window.id());
    const auto client = pictures.window(window.id(), Pointer::Hidden, WindowPart::ClientArea).result();
    ASSERT_TRUE(client);
    EXPECT_EQ(*client, window.picture());
    window.raise();
    // As it is seen on the screen, where nothing lies over it.
    EXPECT_TRUE(eventually([&] {
        for (const ListedWindow &listed : screens.windows()) {
            if (listed.id != window.id() || listed.frame.height() < 210)
                continue; // the frame isn't there yet
            const auto framed = pictures.window(window.id(), Pointer::Hidden).result();
            const auto seen =
                pictures.region(screens.screens().constFirst(), listed.frame, Pointer::Hidden).result();
            return framed && seen && *framed == *seen;
        }
        return false;
    }));
}

TEST(X11ScreenPictures, LeaveOutWhatLiesOutsideTheShapeOfAWindow)
{
    X11ScreenPictures pictures;
    const OtherWindow window(8, QRect(300, 300, 300, 200), {"frameless", "shaped"});
    ASSERT_TRUE(window.id());
    EXPECT_TRUE(eventually([&] {
        const auto taken = pictures.window(window.id(), Pointer::Hidden).result();
        return taken && taken->size() == QSize(300, 200) && taken->pixelColor(2, 2).alpha() == 0 &&
               taken->pixelColor(297, 197).alpha() == 0 &&
               taken->pixelColor(150, 100) == window.picture().pixelColor(150, 100);
    }));
}

TEST(X11ScreenPictures, TakeAWindowThatIsPartlyOffTheScreen)
{
    X11ScreenPictures pictures;
    const OtherWindow window(5, QRect(300, 200, 400, 300), {"frameless"});
    ASSERT_TRUE(window.id());
    run("xdotool", {"windowmove", QString::number(window.id()), "1700", "900"});
    EXPECT_TRUE(eventually([&] {
        const auto taken = pictures.window(window.id(), Pointer::Hidden).result();
        return taken && *taken == window.picture();
    }));
}

TEST(X11ScreenPictures, KeepTheTransparentPartsOfAWindow)
{
    if (qgetenv("TD_COMP") == "none")
        GTEST_SKIP() << "without a compositing manager windows aren't transparent";
    X11ScreenPictures pictures;
    const OtherWindow window(5, QRect(300, 200, 400, 300), {"frameless", "glass"});
    ASSERT_TRUE(window.id());
    EXPECT_TRUE(eventually([&] {
        const auto taken = pictures.window(window.id(), Pointer::Hidden).result();
        return taken && taken->size() == QSize(400, 300) && taken->pixelColor(5, 5).alpha() == 0 &&
               taken->pixelColor(200, 150) == window.picture().pixelColor(200, 150);
    }));
}

TEST(X11ScreenPictures, ComposeThePointerInWhereItPoints)
{
    X11Screens screens;
    X11ScreenPictures pictures;
    const Screen screen = screens.screens().constFirst();
    run("xdotool", {"mousemove", "900", "500"});
    const QRectF around(880, 480, 40, 40);
    const auto without = pictures.region(screen, around, Pointer::Hidden).result();
    const auto with = pictures.region(screen, around, Pointer::Shown).result();
    ASSERT_TRUE(with && without);
    EXPECT_NE(*with, *without);
    EXPECT_NE(with->pixel(20, 20), without->pixel(20, 20)); // the tip of the arrow
    EXPECT_EQ(with->copy(0, 0, 40, 15), without->copy(0, 0, 40, 15));
}

TEST(X11HotKeys, FollowTheKeyboardToAnotherLayout)
{
    X11HotKeys hotKeys;
    QList<quint32> pressed;
    QObject::connect(&hotKeys, &HotKeys::pressed, &hotKeys, [&pressed](quint32 id) { pressed.append(id); });
    ASSERT_TRUE(hotKeys.registerKey(1, 16, 0x1200)); // Y
    run("xdotool", {"key", "super+shift+y"});
    ASSERT_TRUE(eventually([&] { return pressed.size() == 1; }));
    // On a German keyboard the letters Y and Z have changed places.
    run("xmodmap", {"-e", "keycode 29 = z Z", "-e", "keycode 52 = y Y"});
    EXPECT_TRUE(eventually([&] {
        run("xdotool", {"key", "super+shift+y"});
        return QTest::qWaitFor([&] { return pressed.size() > 1; }, 300);
    }));
    run("xmodmap", {"-e", "keycode 29 = y Y", "-e", "keycode 52 = z Z"});
}

TEST(X11HotKeys, AreNotHeldUpByCapsLockAndNumLock)
{
    X11HotKeys hotKeys;
    QList<quint32> pressed;
    QObject::connect(&hotKeys, &HotKeys::pressed, &hotKeys, [&pressed](quint32 id) { pressed.append(id); });
    ASSERT_TRUE(hotKeys.registerKey(1, 3, 0x1200));
    for (const QString &lock : {QStringLiteral("Caps_Lock"), QStringLiteral("Num_Lock")}) {
        pressed.clear();
        run("xdotool", {"key", lock});
        run("xdotool", {"keydown", "Super_L", "keydown", "Shift_L", "key", "41", "keyup", "Shift_L", "keyup",
                        "Super_L"});
        EXPECT_TRUE(eventually([&] { return pressed.size() == 1; })) << lock.toStdString();
        run("xdotool", {"key", lock});
    }
}
