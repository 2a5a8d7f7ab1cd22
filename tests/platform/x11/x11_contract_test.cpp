#include "platform/contracts/desktop_contract.h"
#include "platform/contracts/hot_keys_contract.h"
#include "platform/contracts/pasteboard_contract.h"
#include "platform/contracts/workspace_contract.h"
#include "platform/desktop/desktop_opener.h"
#include "platform/desktop/qt_pasteboard.h"
#include "platform/x11/other_window.h"
#include "platform/x11/x11_hot_keys.h"
#include "platform/x11/x11_pointer_control.h"
#include "platform/x11/x11_screen_pictures.h"
#include "platform/x11/x11_screens.h"
#include "platform/x11/x11_workspace.h"

#include <algorithm>
#include <vector>

namespace {

class X11DesktopWorld : public DesktopWorld {
public:
    Screens &screens() override { return m_screens; }
    ScreenPictures &pictures() override { return m_pictures; }
    PointerControl &pointer() override { return m_pointer; }
    quint32 openWindow(int seed, const QRect &frame) override
    {
        m_windows.push_back(std::make_unique<OtherWindow>(seed, frame));
        const quint32 id = m_windows.back()->id();
        const bool isThere = eventually([&] {
            const QList<ListedWindow> listed = m_screens.windows();
            return std::any_of(listed.begin(), listed.end(), [&](const ListedWindow &window) {
                return window.id == id && window.frame == QRectF(frame);
            });
        });
        m_windows.back()->raise();
        const Screen screen = m_screens.screens().constFirst();
        const bool isPainted = eventually([&] {
            const auto shown = m_pictures.region(screen, QRectF(frame), Pointer::Hidden).result();
            return shown && *shown == m_windows.back()->picture();
        });
        return isThere && isPainted ? id : 0;
    }
    void closeWindow(quint32 id) override
    {
        std::erase_if(m_windows, [id](const auto &window) { return window->id() == id; });
        eventually([&] {
            const QList<ListedWindow> listed = m_screens.windows();
            return std::none_of(listed.begin(), listed.end(),
                                [id](const ListedWindow &window) { return window.id == id; });
        });
    }

private:
    X11Screens m_screens;
    X11ScreenPictures m_pictures;
    X11PointerControl m_pointer{m_screens};
    std::vector<std::unique_ptr<OtherWindow>> m_windows;
};

class X11HotKeysWorld : public HotKeysWorld {
public:
    HotKeys &hotKeys() override { return m_hotKeys; }
    void type(const QString &key, int) override { run("xdotool", {"key", "super+shift+" + key}); }
    void takeElsewhere(int keyCode) override { EXPECT_TRUE(m_otherProgram.registerKey(1, keyCode, 0x1200)); }
    bool eventually(const std::function<bool()> &condition) override { return ::eventually(condition); }

private:
    X11HotKeys m_hotKeys;
    X11HotKeys m_otherProgram; // another client, as far as the server can tell
};

class X11WorkspaceWorld : public WorkspaceWorld {
public:
    Workspace &workspace() override { return m_workspace; }
    Workspace::Application goTo(int program) override
    {
        const OtherWindow &window = program == 0 ? m_first : m_second;
        window.activate();
        return {window.pid(), QStringLiteral("platform_pattern_window")};
    }
    bool eventually(const std::function<bool()> &condition) override { return ::eventually(condition); }

private:
    OtherWindow m_first{1, QRect(50, 50, 200, 200), {}};
    OtherWindow m_second{2, QRect(300, 50, 200, 200), {}};
    X11Workspace m_workspace{X11Workspace::Opener{&DesktopOpener::open, &DesktopOpener::reveal}};
};

} // namespace

INSTANTIATE_TEST_SUITE_P(X11, DesktopContract,
                         testing::Values([] { return std::make_unique<X11DesktopWorld>(); }));
INSTANTIATE_TEST_SUITE_P(X11, HotKeysContract,
                         testing::Values([] { return std::make_unique<X11HotKeysWorld>(); }));
INSTANTIATE_TEST_SUITE_P(X11, WorkspaceContract,
                         testing::Values([] { return std::make_unique<X11WorkspaceWorld>(); }));
INSTANTIATE_TEST_SUITE_P(X11, PasteboardContract,
                         testing::Values([] { return std::make_unique<QtPasteboard>(); }));
