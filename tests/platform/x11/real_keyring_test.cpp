#include "platform/desktop/desktop_secrets.h"
#include "support/temporary_folder.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>
#include <gtest/gtest.h>

namespace {

const QString kService = "org.freedesktop.secrets";

// A desktop's own keyring on the test's bus, with what it stores in a folder of the test.
class RealKeyringTest : public testing::Test {
protected:
    void SetUp() override
    {
        const QString program = QStandardPaths::findExecutable("gnome-keyring-daemon");
        if (program.isEmpty())
            GTEST_SKIP() << "no gnome-keyring is installed";
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_DATA_HOME", folder.path("data"));
        environment.insert("XDG_RUNTIME_DIR", folder.path());
        daemon.setProcessEnvironment(environment);
        daemon.start(program, {"--foreground", "--components=secrets", "--unlock"});
        daemon.write("password of the session");
        daemon.closeWriteChannel();
        ASSERT_TRUE(QTest::qWaitFor([this] { return bus.interface()->isServiceRegistered(kService); }, 20000))
            << daemon.readAllStandardError().toStdString();
    }
    void TearDown() override
    {
        daemon.terminate();
        daemon.waitForFinished();
    }
    // As the desktop does when the screen is locked.
    void lock()
    {
        QDBusMessage message = QDBusMessage::createMethodCall(kService, "/org/freedesktop/secrets",
                                                              "org.freedesktop.Secret.Service", "Lock");
        message.setArguments({QVariant::fromValue(
            QList<QDBusObjectPath>{QDBusObjectPath("/org/freedesktop/secrets/collection/login")})});
        EXPECT_EQ(bus.call(message).type(), QDBusMessage::ReplyMessage);
    }
    template <typename T>
    static Result<T> wait(QFuture<Result<T>> future)
    {
        EXPECT_TRUE(QTest::qWaitFor([&] { return future.isFinished(); }, 20000));
        return future.result();
    }

    const TemporaryFolder folder;
    QDBusConnection bus = QDBusConnection::sessionBus();
    QProcess daemon;
};

} // namespace

TEST_F(RealKeyringTest, KeepsReplacesAndRemovesAPasswordAndStaysLockedUnasked)
{
    DesktopSecrets secrets(folder.path("config"));
    const auto get = [&] { return wait(secrets.get("key", "service", SecretsAccess::Quiet)); };
    EXPECT_EQ(get().error().kind, Error::Kind::NotFound);
    for (const QString &value : {QString("sk-ä 1"), QString("sk-2")}) {
        ASSERT_TRUE(wait(secrets.set(value, "key", "service")));
        EXPECT_EQ(get().value_or("nothing"), value);
        EXPECT_EQ(DesktopSecrets(folder.path("config")).get("key", "service", SecretsAccess::Quiet).result(),
                  value)
            << "for every program of the user";
    }
    lock();
    EXPECT_EQ(get().error().kind, Error::Kind::Denied);
    EXPECT_FALSE(QFile::exists(folder.path("config/secrets.json")));
    daemon.terminate();
    daemon.waitForFinished();
    EXPECT_FALSE(get()) << "nobody to ask";
}
