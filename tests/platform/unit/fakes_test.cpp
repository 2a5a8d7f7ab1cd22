#include "fakes/fake_platform.h"
#include "platform/contracts/desktop_contract.h"
#include "platform/contracts/desktop_files_contract.h"
#include "platform/contracts/hot_keys_contract.h"
#include "platform/contracts/pasteboard_contract.h"
#include "platform/contracts/workspace_contract.h"
#include "platform/desktop/desktop_login_item.h"
#include "platform/desktop/desktop_paths.h"
#include "platform/desktop/desktop_secrets.h"
#include "platform/desktop/desktop_trash.h"
#include "platform/desktop/secret_service.h"
#include "platform/null/null_desktop.h"
#include "platform/pattern.h"
#include "support/temporary_folder.h"

namespace {

class FakeDesktopWorld : public DesktopWorld {
public:
    FakeDesktopWorld()
    {
        m_screens.connected = {{1, "L", QRect(0, 0, 600, 400), 1, true},
                               {2, "R", QRect(600, 0, 600, 400), 1.5, false}};
        m_pictures.desktop = QImage(1200, 400, QImage::Format_RGB32);
        m_pictures.desktop.fill(Qt::darkCyan);
    }
    Screens &screens() override { return m_screens; }
    ScreenPictures &pictures() override { return m_pictures; }
    PointerControl &pointer() override { return m_pointer; }
    quint32 openWindow(int seed, const QRect &frame) override
    {
        const quint32 id = ++m_lastId;
        m_screens.listed.prepend({id, 1000 + id, 0, QRectF(frame), "Pattern", "Window"});
        m_pictures.windows[id] = pattern(frame.size(), seed);
        QPainter(&m_pictures.desktop).drawImage(frame.topLeft(), m_pictures.windows[id]);
        return id;
    }
    void closeWindow(quint32 id) override
    {
        m_pictures.windows.remove(id);
        m_screens.listed.removeIf([id](const ListedWindow &window) { return window.id == id; });
    }

private:
    FakeScreens m_screens;
    FakeScreenPictures m_pictures;
    FakePointerControl m_pointer;
    quint32 m_lastId = 0;
};

class FakeHotKeysWorld : public HotKeysWorld {
public:
    HotKeys &hotKeys() override { return m_hotKeys; }
    void type(const QString &, int keyCode) override { m_hotKeys.press(keyCode, 0x1200); }
    void takeElsewhere(int keyCode) override { m_hotKeys.takenElsewhere.insert({keyCode, 0x1200}); }
    bool eventually(const std::function<bool()> &condition) override { return condition(); }

private:
    FakeHotKeys m_hotKeys;
};

class FakeWorkspaceWorld : public WorkspaceWorld {
public:
    Workspace &workspace() override { return m_workspace; }
    Workspace::Application goTo(int program) override
    {
        const Workspace::Application application{100 + program, QStringLiteral("Program %1").arg(program)};
        m_workspace.activate(application);
        return application;
    }
    bool eventually(const std::function<bool()> &condition) override { return condition(); }

private:
    FakeWorkspace m_workspace;
};

// The folders of a user who has just come to this machine, for as long as the program runs.
const TemporaryFolder &freshHome()
{
    static TemporaryFolder home;
    return home;
}

QString freshFolder()
{
    static int count = 0;
    const QString folder = freshHome().path(QString::number(++count));
    QDir().mkpath(folder);
    return folder;
}

template <typename Port, typename Adapter, typename... Arguments>
MakePort<Port> made(Arguments... arguments)
{
    return [arguments...]() -> std::unique_ptr<Port> { return std::make_unique<Adapter>(arguments...); };
}

std::unique_ptr<LoginItem> loginItemInFreshHome()
{
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(freshFolder()));
    return std::make_unique<DesktopLoginItem>("/opt/lumenpost/bin/lumenpost");
}

std::unique_ptr<Trash> trashInFreshHome()
{
    qputenv("XDG_DATA_HOME", QFile::encodeName(freshFolder()));
    return std::make_unique<DesktopTrash>();
}

std::unique_ptr<Secrets> secretsWithoutAService()
{
    return std::make_unique<DesktopSecrets>(freshFolder(), [] { return std::optional<SecretService>(); });
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Fake, DesktopContract,
                         testing::Values([] { return std::make_unique<FakeDesktopWorld>(); }));
INSTANTIATE_TEST_SUITE_P(Fake, HotKeysContract,
                         testing::Values([] { return std::make_unique<FakeHotKeysWorld>(); }));
INSTANTIATE_TEST_SUITE_P(Fake, WorkspaceContract,
                         testing::Values([] { return std::make_unique<FakeWorkspaceWorld>(); }));
INSTANTIATE_TEST_SUITE_P(Fake, PasteboardContract, testing::Values(made<Pasteboard, FakePasteboard>()));
INSTANTIATE_TEST_SUITE_P(Null, PasteboardContract, testing::Values(made<Pasteboard, NullPasteboard>()));
INSTANTIATE_TEST_SUITE_P(Fake, TrashContract,
                         testing::Values([] { return std::make_unique<FakeTrash>(freshFolder()); }));
INSTANTIATE_TEST_SUITE_P(Desktop, TrashContract, testing::Values(&trashInFreshHome));
INSTANTIATE_TEST_SUITE_P(Fake, SecretsContract, testing::Values(made<Secrets, FakeSecrets>()));
INSTANTIATE_TEST_SUITE_P(File, SecretsContract, testing::Values(&secretsWithoutAService));
INSTANTIATE_TEST_SUITE_P(Fake, LoginItemContract, testing::Values(made<LoginItem, FakeLoginItem>()));
INSTANTIATE_TEST_SUITE_P(Desktop, LoginItemContract, testing::Values(&loginItemInFreshHome));
INSTANTIATE_TEST_SUITE_P(Fake, PathsContract,
                         testing::Values([] { return std::make_unique<FakePaths>("/home/user"); }));
INSTANTIATE_TEST_SUITE_P(Desktop, PathsContract, testing::Values(made<Paths, DesktopPaths>()));
