#include "platform/contracts/desktop_contract.h"
#include "platform/contracts/pasteboard_contract.h"
#include "platform/contracts/workspace_contract.h"
#include "platform/desktop/desktop_opener.h"
#include "platform/film_canvas.h"
#include "platform/pattern.h"
#include "platform/screen_casts.h"
#include "platform/session/media_loader.h"
#include "platform/wayland/kwin_script.h"
#include "platform/wayland/wayland_pasteboard.h"
#include "platform/wayland/wayland_pointer_control.h"
#include "platform/wayland/wayland_screen_films.h"
#include "platform/wayland/wayland_screen_pictures.h"
#include "platform/wayland/wayland_screens.h"
#include "platform/wayland/wayland_windows.h"
#include "platform/wayland/wayland_workspace.h"

#include <QProcess>
#include <QTest>
#include <algorithm>
#include <map>

namespace {

bool eventually(const std::function<bool()> &condition)
{
    return QTest::qWaitFor(condition, 20000);
}

// A window of another process, showing pattern(seed) at `frame`, in global points, above all others.
class KWinWindow {
public:
    KWinWindow(int seed, const QRect &frame, double scale = 1) : m_seed(seed), m_frame(frame), m_scale(scale)
    {
        m_process.start(QStringLiteral(LUMENPOST_BINARY_DIR "/tests/platform_wayland_pattern_window"),
                        {QString::number(seed), QString::number(frame.width()),
                         QString::number(frame.height()), QString::number(scale)});
        m_process.waitForReadyRead(10000);
        eventually([&] {
            return script(QStringLiteral("w.frameGeometry = {x: %1, y: %2, width: %3, height: %4};")
                              .arg(frame.x())
                              .arg(frame.y())
                              .arg(frame.width())
                              .arg(frame.height()));
        });
    }
    ~KWinWindow()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    KWinWindow(const KWinWindow &) = delete;
    KWinWindow &operator=(const KWinWindow &) = delete;

    qint64 pid() const { return m_process.processId(); }
    QImage picture() const { return pattern((QSizeF(m_frame.size()) * m_scale).toSize(), m_seed); }
    QRect frame() const { return m_frame; }
    bool script(const QString &what) const
    {
        static KWinScript scripts;
        return scripts
            .run(QStringLiteral(
                     "var all = workspace.clientList ? workspace.clientList() : workspace.windowList();"
                     "for (var i = 0; i < all.length; ++i) { var w = all[i]; "
                     "if (w.pid == %1) { %2 return true; } } return false;")
                     .arg(pid())
                     .arg(what))
            .value_or(QJsonValue())
            .toBool();
    }
    void activate() const
    {
        script(QStringLiteral("if ('activeWindow' in workspace) workspace.activeWindow = w; "
                              "else workspace.activeClient = w;"));
    }

private:
    int m_seed;
    QRect m_frame;
    double m_scale;
    QProcess m_process;
};

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
    EXPECT_TRUE(eventually(
        [&] { return film.shown(QRect(150, 100, 1, 1)) == film.shown(QRect(580, 440, 1, 1)); }))
        << "gone";
    EXPECT_TRUE(eventually([&] { return film.stillFrames() > 1; }));
    EXPECT_TRUE(film.isSound());
    EXPECT_FALSE(film.isEnded());
    EXPECT_FALSE(film.speaksAfterItsEnd());
}

} // namespace

INSTANTIATE_TEST_SUITE_P(KWin, DesktopContract,
                         testing::Values([] { return std::make_unique<KWinDesktopWorld>(); }));
INSTANTIATE_TEST_SUITE_P(KWin, PasteboardContract, testing::Values([] { return WaylandPasteboard::open(); }));
INSTANTIATE_TEST_SUITE_P(KWin, WorkspaceContract,
                         testing::Values([] { return std::make_unique<KWinWorkspaceWorld>(); }));
