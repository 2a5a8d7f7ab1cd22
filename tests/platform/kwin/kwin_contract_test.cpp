#include "platform/contracts/desktop_contract.h"
#include "platform/contracts/hot_keys_contract.h"
#include "platform/contracts/pasteboard_contract.h"
#include "platform/contracts/workspace_contract.h"
#include "platform/desktop/desktop_opener.h"
#include "platform/film_canvas.h"
#include "platform/kwin/kwin_hand.h"
#include "platform/kwin/kwin_window.h"
#include "platform/screen_casts.h"
#include "platform/session/media_loader.h"
#include "platform/wayland/plasma_hot_keys.h"
#include "platform/wayland/wayland_pasteboard.h"
#include "platform/wayland/wayland_pointer_control.h"
#include "platform/wayland/wayland_screen_films.h"
#include "platform/wayland/wayland_screen_pictures.h"
#include "platform/wayland/wayland_screens.h"
#include "platform/wayland/wayland_windows.h"
#include "platform/wayland/wayland_workspace.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <algorithm>
#include <map>

namespace {

class KWinDesktopWorld : public DesktopWorld {
public:
    Screens &screens() override { return m_screens; }
    ScreenPictures &pictures() override { return m_pictures; }
    PointerControl &pointer() override { return m_pointer; }
    quint32 openWindow(int seed, const QRect &frame) override { return open(seed, frame, 1); }
    quint32 open(int seed, const QRect &frame, double scale)
    {
        auto window = std::make_unique<KWinWindow>(seed, frame, scale);
        quint32 id = 0;
        const bool isThere = eventually([&] {
            const QList<ListedWindow> listed = m_screens.windows();
            const auto found = std::find_if(listed.begin(), listed.end(), [&](const ListedWindow &each) {
                return each.pid == window->pid() && each.frame == QRectF(frame);
            });
            id = found == listed.end() ? 0 : found->id;
            return id != 0;
        });
        const Screen screen = m_screens.screens().constFirst();
        const bool isPainted = eventually([&] {
            const auto shown = m_pictures.region(screen, QRectF(frame), Pointer::Hidden).result();
            return shown && *shown == window->picture();
        });
        m_windows[id] = std::move(window);
        return isThere && isPainted ? id : 0;
    }
    void closeWindow(quint32 id) override
    {
        m_windows.erase(id);
        eventually([&] {
            const QList<ListedWindow> listed = m_screens.windows();
            return std::none_of(listed.begin(), listed.end(),
                                [id](const ListedWindow &window) { return window.id == id; });
        });
    }

private:
    std::shared_ptr<WaylandWindows> m_known = waylandWindows();
    WaylandScreens m_screens{m_known};
    WaylandScreenPictures m_pictures{m_known};
    WaylandPointerControl m_pointer{m_screens};
    std::map<quint32, std::unique_ptr<KWinWindow>> m_windows;
};

class KWinWorkspaceWorld : public WorkspaceWorld {
public:
    Workspace &workspace() override { return m_workspace; }
    Workspace::Application goTo(int program) override
    {
        const KWinWindow &window = program == 0 ? m_first : m_second;
        window.activate();
        return {window.pid(), QStringLiteral("platform_pattern_window")};
    }
    bool eventually(const std::function<bool()> &condition) override { return ::eventually(condition); }

private:
    KWinWindow m_first{1, QRect(50, 50, 200, 200)};
    KWinWindow m_second{2, QRect(300, 50, 200, 200)};
    WaylandWorkspace m_workspace{waylandWindows(),
                                 WaylandWorkspace::Opener{&DesktopOpener::open, &DesktopOpener::reveal}};
};

class KWinHotKeysWorld : public HotKeysWorld {
public:
    HotKeys &hotKeys() override { return m_hotKeys; }
    void type(const QString &key, int) override
    {
        static const QHash<QString, int> codes{
            {"c", KEY_C}, {"f", KEY_F}, {"9", KEY_9}, {"space", KEY_SPACE}};
        m_hand.type({KEY_LEFTMETA, KEY_LEFTSHIFT, codes.value(key)});
    }
    // Only ever C.
    void takeElsewhere(int) override
    {
        const QStringList action{"other", "other", "Other", "Other"};
        ask("doRegister", {action});
        ask("setShortcut", {action, QVariant::fromValue(QList<int>{Qt::META | Qt::SHIFT | Qt::Key_C}), 6U});
    }
    bool eventually(const std::function<bool()> &condition) override { return ::eventually(condition); }

private:
    static void ask(const QString &method, const QVariantList &arguments)
    {
        QDBusMessage call = QDBusMessage::createMethodCall("org.kde.kglobalaccel", "/kglobalaccel",
                                                           "org.kde.KGlobalAccel", method);
        call.setArguments(arguments);
        EXPECT_EQ(QDBusConnection::sessionBus().call(call).type(), QDBusMessage::ReplyMessage);
    }

    PlasmaHotKeys m_hotKeys;
    KWinHand m_hand;
};

// The session's scale is chosen from outside.
TEST(KWinPictures, AreExactAtAFractionalScaleWindowsToo)
{
    KWinDesktopWorld world;
    const Screen screen = world.screens().screens().constFirst();
    EXPECT_EQ(screen.native.size(), (QSizeF(1920, 1080) * screen.scale).toSize());
    const quint32 id = world.open(1, QRect(100, 80, 400, 300), screen.scale);
    ASSERT_TRUE(id);
    const auto alone = world.pictures().window(id, Pointer::Hidden).result();
    ASSERT_TRUE(alone);
    EXPECT_EQ(alone->convertToFormat(QImage::Format_RGB32),
              pattern((QSizeF(400, 300) * screen.scale).toSize(), 1));
}

TEST(KWinFilm, ShowsWhatChangesToThePixelAndThatTimePasses)
{
    WaylandScreenFilms films(makeScreenCasts(), {});
    FilmCanvas film(films, QRect(160, 120, 600, 450));
    ASSERT_TRUE(film.isRunning()) << film.why.toStdString();
    {
        const KWinWindow window(1, QRect(200, 150, 400, 300));
        EXPECT_TRUE(eventually([&] { return film.shown(QRect(40, 30, 400, 300)) == window.picture(); }));
        window.script(QStringLiteral("w.frameGeometry = {x: 260, y: 150, width: 400, height: 300};"));
        EXPECT_TRUE(eventually([&] { return film.shown(QRect(100, 30, 400, 300)) == window.picture(); }));
    }
    EXPECT_TRUE(eventually([&] {
        return film.shown(QRect(150, 100, 1, 1)) == film.shown(QRect(580, 440, 1, 1));
    })) << "gone";
    EXPECT_TRUE(eventually([&] { return film.stillFrames() > 1; }));
    EXPECT_TRUE(film.isSound());
    EXPECT_FALSE(film.isEnded());
    EXPECT_FALSE(film.speaksAfterItsEnd());
}

} // namespace

INSTANTIATE_TEST_SUITE_P(KWin, DesktopContract,
                         testing::Values([] { return std::make_unique<KWinDesktopWorld>(); }));
INSTANTIATE_TEST_SUITE_P(KWin, HotKeysContract,
                         testing::Values([] { return std::make_unique<KWinHotKeysWorld>(); }));
INSTANTIATE_TEST_SUITE_P(KWin, PasteboardContract, testing::Values([] { return WaylandPasteboard::open(); }));
INSTANTIATE_TEST_SUITE_P(KWin, WorkspaceContract,
                         testing::Values([] { return std::make_unique<KWinWorkspaceWorld>(); }));
