#include "platform/contracts/desktop_contract.h"
#include "platform/contracts/pasteboard_contract.h"
#include "platform/contracts/workspace_contract.h"
#include "platform/desktop/desktop_opener.h"
#include "platform/wayland/sway_window.h"
#include "platform/wayland/wayland_pasteboard.h"
#include "platform/wayland/wayland_pointer_control.h"
#include "platform/wayland/wayland_screen_pictures.h"
#include "platform/wayland/wayland_screens.h"
#include "platform/wayland/wayland_windows.h"
#include "platform/wayland/wayland_workspace.h"

#include <algorithm>
#include <map>

namespace {

class SwayDesktopWorld : public DesktopWorld {
public:
    Screens &screens() override { return m_screens; }
    ScreenPictures &pictures() override { return m_pictures; }
    PointerControl &pointer() override { return m_pointer; }
    quint32 openWindow(int seed, const QRect &frame) override
    {
        auto window = std::make_unique<SwayWindow>(seed, frame);
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
    std::map<quint32, std::unique_ptr<SwayWindow>> m_windows;
};

class SwayWorkspaceWorld : public WorkspaceWorld {
public:
    Workspace &workspace() override { return m_workspace; }
    Workspace::Application goTo(int program) override
    {
        const SwayWindow &window = program == 0 ? m_first : m_second;
        window.command("focus");
        return {window.pid(), QStringLiteral("platform_pattern_window")};
    }
    bool eventually(const std::function<bool()> &condition) override { return ::eventually(condition); }

private:
    SwayWindow m_first{1, QRect(50, 50, 200, 200)};
    SwayWindow m_second{2, QRect(300, 50, 200, 200)};
    WaylandWorkspace m_workspace{waylandWindows(),
                                 WaylandWorkspace::Opener{&DesktopOpener::open, &DesktopOpener::reveal}};
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Sway, DesktopContract,
                         testing::Values([] { return std::make_unique<SwayDesktopWorld>(); }));
INSTANTIATE_TEST_SUITE_P(Sway, PasteboardContract, testing::Values([] { return WaylandPasteboard::open(); }));
INSTANTIATE_TEST_SUITE_P(Sway, WorkspaceContract,
                         testing::Values([] { return std::make_unique<SwayWorkspaceWorld>(); }));
