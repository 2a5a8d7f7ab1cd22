#include "base/atomic_file.h"
#include "base/log.h"
#include "platform/desktop/desktop_login_item.h"
#include "platform/desktop/desktop_paths.h"
#include "platform/desktop/desktop_secrets.h"
#include "platform/desktop/desktop_trash.h"
#include "platform/desktop/secret_service.h"
#include "platform/hot_keys.h"
#include "platform/screen_pictures.h"
#include "platform/session/make_platform.h"
#include "platform/session/session_kind.h"
#include "platform/workspace.h"
#include "platform/x11/x11_key_codes.h"
#include "platform/x11/x11_screens.h"
#include "support/temporary_folder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QUrl>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

// Sets a variable for the length of a test; an empty value unsets it.
class Variable {
public:
    Variable(const char *name, const QByteArray &value) : m_name(name), m_before(qgetenv(name))
    {
        put(value);
    }
    ~Variable() { put(m_before); }
    Variable(const Variable &) = delete;
    Variable &operator=(const Variable &) = delete;

private:
    void put(const QByteArray &value)
    {
        if (value.isEmpty())
            qunsetenv(m_name);
        else
            qputenv(m_name, value);
    }

    const char *m_name;
    QByteArray m_before;
};

std::optional<SecretService> noService()
{
    return std::nullopt;
}

} // namespace

TEST(DesktopSecrets, AreInAFileForTheUserAloneWhenThereIsNoServiceAndTheLogSaysSoOnce)
{
    const TemporaryFolder folder;
    Log::setDirectory(folder.path("logs"));
    DesktopSecrets secrets(folder.path("config"), &noService);
    ASSERT_TRUE(secrets.set("sk-1", "key", "service").result());
    ASSERT_TRUE(secrets.set("sk-2", "key", "service").result());
    Log::flush();
    const QFile file(folder.path("config/secrets.json"));
    EXPECT_EQ(file.permissions() &
                  (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther),
              QFile::Permissions());
    EXPECT_EQ(contents(folder.path("logs/lumenpost.log")).count("readable for this user only"), 1);
    EXPECT_FALSE(contents(folder.path("logs/lumenpost.log")).contains("sk-"));
    EXPECT_EQ(DesktopSecrets(folder.path("config"), &noService)
                  .get("key", "service", SecretsAccess::Quiet)
                  .result()
                  .value_or("nothing"),
              "sk-2");
}

TEST(DesktopSecrets, SurviveABrokenFileAndTellAFolderThatCanNotBeWritten)
{
    const TemporaryFolder folder;
    QFile file(folder.path("secrets.json"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[1,");
    file.close();
    DesktopSecrets secrets(folder.path(), &noService);
    EXPECT_FALSE(secrets.get("key", "service", SecretsAccess::Quiet).result());
    EXPECT_TRUE(secrets.set("sk", "key", "service").result());
    EXPECT_EQ(secrets.get("key", "service", SecretsAccess::Quiet).result().value_or("nothing"), "sk");
    DesktopSecrets nowhere("/proc/nowhere", &noService);
    EXPECT_FALSE(nowhere.set("sk", "key", "service").result());
}

Result<QString> trash(const QString &path)
{
    const auto move = DesktopTrash().prepare(path, {});
    return move ? (*move)->finish() : Result<QString>(std::unexpected(move.error()));
}

// A volume of its own at `folder`, for the rest of this process. False where that isn't allowed.
bool mountVolume(const QString &folder)
{
    return unshare(CLONE_NEWNS | (geteuid() == 0 ? 0 : CLONE_NEWUSER)) == 0 &&
           mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           mount("none", QFile::encodeName(folder).constData(), "tmpfs", 0, "size=2m") == 0;
}

// Files of another volume, which has a trash at first, and then can't have one.
void trashFromVolume(const QString &volume, const QString &data)
{
    const QString path = volume + "/Ä 1.png", own = volume + QString("/.Trash-%1").arg(getuid());
    const auto write = [&path](const QByteArray &bytes) {
        return AtomicFile::write(path, bytes).has_value();
    };
    ASSERT_TRUE(write("one"));
    const auto kept = trash(path);
    ASSERT_EQ(kept, own + "/files/Ä 1.png") << kept.error().detail.toStdString();
    EXPECT_TRUE(contents(own + "/info/Ä 1.png.trashinfo").contains("\nPath=%C3%84%201.png\n"));

    QDir(own).removeRecursively();
    ASSERT_TRUE(QFile::link("/tmp", own)) << "planted";
    for (const bool isChanged : {true, false}) {
        ASSERT_TRUE(write("two"));
        auto move = DesktopTrash().prepare(path, {});
        ASSERT_TRUE(move) << move.error().detail.toStdString();
        EXPECT_EQ(contents(path), "two") << "nothing is moved yet";
        if (isChanged)
            ASSERT_TRUE(write("three"));
        const auto copied = (*move)->finish();
        move->reset();
        EXPECT_EQ(copied.has_value(), !isChanged);
        EXPECT_EQ(contents(path), isChanged ? "three" : "unreadable");
        EXPECT_EQ(contents(data + "/Trash/files/Ä 1.png"), isChanged ? "unreadable" : "two");
        EXPECT_EQ(contents(data + "/Trash/info/Ä 1.png.trashinfo").contains("\nPath=/"), !isChanged);
    }
    std::stop_source stop;
    stop.request_stop();
    ASSERT_TRUE(write("four"));
    EXPECT_TRUE(DesktopTrash().prepare(path, stop.get_token()).error().isCancelled());
    ASSERT_TRUE(AtomicFile::write(volume + "/filler", QByteArray(1'500'000, 'x')));
    EXPECT_FALSE(AtomicFile::copy(volume + "/filler", volume + "/second"));
    EXPECT_EQ(QDir(volume).entryList(QDir::Files).size(), 2);
}

TEST(DesktopTrash, TakesFilesOfAnotherVolumeThatHasATrashOrHasNone)
{
    const TemporaryFolder folder;
    const Variable data("XDG_DATA_HOME", QFile::encodeName(folder.path("data")));
    QDir().mkpath(folder.path("volume"));
    constexpr int kNotAllowed = 77;
    const pid_t child = fork();
    if (child == 0) {
        const bool isMounted = mountVolume(folder.path("volume"));
        if (isMounted)
            trashFromVolume(folder.path("volume"), folder.path("data"));
        fflush(nullptr);
        _exit(!isMounted ? kNotAllowed : testing::Test::HasFailure() ? 1 : 0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    if (WIFEXITED(status) && WEXITSTATUS(status) == kNotAllowed)
        GTEST_SKIP() << "mounting is not allowed here";
    EXPECT_EQ(status, 0);
}

TEST(DesktopTrash, MakesTheFirstTrashAndLeavesFilesWhereItCannot)
{
    const TemporaryFolder folder;
    const QString path = folder.path("Shot.png");
    const auto write = [&path] {
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && file.write("picture") > 0;
    };
    QDir().mkpath(folder.path("working"));
    const QString before = QDir::currentPath();
    QDir::setCurrent(folder.path("working"));
    for (const QString &data : {folder.path("Shot.png/data"), folder.path("new/data")}) {
        SCOPED_TRACE(data.toStdString());
        const Variable variable("XDG_DATA_HOME", QFile::encodeName(data));
        ASSERT_TRUE(write());
        const auto trashed = trash(path);
        EXPECT_EQ(trashed.has_value(), !QFile::exists(path));
        if (trashed)
            EXPECT_EQ(*trashed, data + "/Trash/files/Shot.png");
        else
            EXPECT_EQ(trashed.error().message, "“Shot.png” could not be moved to the Trash.");
    }
    EXPECT_FALSE(QFile::exists(path)) << "the second place can be made";
    EXPECT_TRUE(QDir(folder.path("working")).isEmpty());
    QDir::setCurrent(before);
}

TEST(DesktopLoginItem, QuotesTheProgramAndHeedsAnEntryThatWasTurnedOff)
{
    const TemporaryFolder folder;
    const Variable config("XDG_CONFIG_HOME", QFile::encodeName(folder.path()));
    DesktopLoginItem item("/opt/my 100% $apps/lumenpost");
    ASSERT_TRUE(item.setEnabled(true));
    const QString entry = folder.path("autostart/lumenpost.desktop");
    EXPECT_TRUE(contents(entry).contains("\nExec=\"/opt/my 100%% \\\\$apps/lumenpost\"\n"));
    EXPECT_TRUE(item.isEnabled());
    QFile file(entry);
    ASSERT_TRUE(file.open(QIODevice::Append));
    file.write("Hidden=true\n");
    file.close();
    EXPECT_FALSE(item.isEnabled());
}

TEST(DesktopPaths, FollowTheUsersFoldersAndIgnoreRelativeOnes)
{
    const TemporaryFolder folder;
    const Variable config("XDG_CONFIG_HOME", QFile::encodeName(folder.path()));
    const Variable state("XDG_STATE_HOME", "relative/state");
    const Variable cache("XDG_CACHE_HOME", "/var/tmp/cache/");
    QFile dirs(folder.path("user-dirs.dirs"));
    ASSERT_TRUE(dirs.open(QIODevice::WriteOnly));
    dirs.write("XDG_PICTURES_DIR=\"$HOME/Bilder\"\nXDG_DESKTOP_DIR=\"/data/Schreibtisch\"\n");
    dirs.close();
    const DesktopPaths paths;
    EXPECT_EQ(paths.pictures(), QDir::homePath() + "/Bilder");
    EXPECT_EQ(paths.desktop(), "/data/Schreibtisch");
    EXPECT_EQ(paths.config(), folder.path("com.oakfenrow.lumenpost"));
    EXPECT_EQ(paths.state(), QDir::homePath() + "/.local/state/lumenpost");
    EXPECT_EQ(paths.cache(), "/var/tmp/cache/lumenpost");
}

TEST(Session, IsToldByTheSessionItselfAndNotByADisplayBesideIt)
{
    struct Case {
        const char *type;
        const char *wayland;
        const char *display;
        const char *forced;
        SessionKind expected;
    };
    for (const Case &each : {Case{"x11", "", ":0", "", SessionKind::X11},
                             {"wayland", "wayland-0", ":0", "", SessionKind::Wayland},
                             {"wayland", "", ":0", "", SessionKind::Wayland},
                             {"tty", "wayland-1", ":0", "", SessionKind::Wayland},
                             {"", "wayland-0", "", "", SessionKind::Wayland},
                             {"x11", "wayland-0", ":0", "", SessionKind::X11},
                             {"", "", ":0", "", SessionKind::X11},
                             {"wayland", "wayland-0", ":0", "x11", SessionKind::X11},
                             {"x11", "", "", "", SessionKind::None},
                             {"wayland", "wayland-0", ":0", "null", SessionKind::None}}) {
        const Variable type("XDG_SESSION_TYPE", each.type);
        const Variable wayland("WAYLAND_DISPLAY", each.wayland);
        const Variable display("DISPLAY", each.display);
        const Variable forced("LUMENPOST_PLATFORM", each.forced);
        EXPECT_EQ(sessionKind(), each.expected) << each.type << " " << each.wayland << " " << each.display;
    }
}

TEST(Session, RefusesPicturesOfAWaylandSessionThatIsGoneWithASentence)
{
    const Variable type("XDG_SESSION_TYPE", "wayland");
    const Variable wayland("WAYLAND_DISPLAY", "wayland-that-is-gone");
    const Variable display("DISPLAY", ":0");
    const Variable forced("LUMENPOST_PLATFORM", "");
    const Platform platform = makePlatform();
    const auto refused = platform.pictures->display({}, Pointer::Hidden).result();
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().message, "The Wayland session doesn't answer: it may have ended.");
    EXPECT_EQ(platform.pictures->capabilities().reason, refused.error().message);
    EXPECT_TRUE(platform.screens->screens().isEmpty());
}

TEST(Session, AnswersEveryPortWithASentenceWhenThereIsNoDisplay)
{
    const Variable display("DISPLAY", "");
    const Variable wayland("WAYLAND_DISPLAY", "");
    const Variable type("XDG_SESSION_TYPE", "");
    const Variable forced("LUMENPOST_PLATFORM", "");
    const Platform platform = makePlatform();
    EXPECT_TRUE(platform.screens->screens().isEmpty());
    const QString expected = "There is no display: start Lumenpost in a desktop session, or set DISPLAY.";
    EXPECT_EQ(platform.pictures->capabilities().reason, expected);
    EXPECT_EQ(platform.pictures->display({}, Pointer::Hidden).result().error().message, expected);
    EXPECT_EQ(platform.pictures->window(1, Pointer::Hidden).result().error().kind, Error::Kind::Unavailable);
    EXPECT_EQ(platform.hotKeys->registerKey(1, 3, 0x1200).error().message, expected);
    EXPECT_EQ(platform.workspace->frontmost(), std::nullopt);
}

TEST(Session, TellsADisplayThatCanNotBeReached)
{
    const Variable display("DISPLAY", ":9876");
    const Variable wayland("WAYLAND_DISPLAY", "");
    const Variable type("XDG_SESSION_TYPE", "");
    const Variable forced("LUMENPOST_PLATFORM", "");
    const Platform platform = makePlatform();
    EXPECT_TRUE(platform.screens->screens().isEmpty());
    EXPECT_TRUE(platform.screens->windows().isEmpty());
    EXPECT_TRUE(platform.pictures->capabilities().reason.contains(":9876"));
    EXPECT_FALSE(platform.pictures->capabilities().displays);
    EXPECT_TRUE(platform.pictures->window(1, Pointer::Hidden).result().error().message.contains(":9876"));
    EXPECT_FALSE(platform.hotKeys->registerKey(1, 3, 0x1200));
    const Variable off("LUMENPOST_PLATFORM", "null");
    EXPECT_TRUE(makePlatform().pictures->capabilities().reason.contains("LUMENPOST_PLATFORM"));
}

TEST(X11KeyCodes, GiveEveryKeyOfItsOwn)
{
    QSet<quint32> keysyms;
    QSet<int> positions;
    int keys = 0;
    for (int code = 0; code < 128; ++code) {
        if (const auto key = x11Key(code)) {
            ++keys;
            keysyms.insert(key->keysym);
            positions.insert(key->position);
        }
    }
    EXPECT_EQ(keys, 26 + 10 + 20 + 12 + 1); // letters, digits, signs and moves, functions, Print
    EXPECT_EQ(keysyms.size(), keys);
    EXPECT_EQ(positions.size(), keys);
    EXPECT_EQ(x11Key(8)->keysym, quint32('c'));
    EXPECT_EQ(x11Key(200), std::nullopt);
}
