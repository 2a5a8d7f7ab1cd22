#include "platform/desktop/desktop_secrets.h"
#include "platform/desktop/secret_service.h"
#include "support/temporary_folder.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QTest>
#include <gtest/gtest.h>

namespace {

// A keeper of one password, on a connection of its own. It answers only when the test's event loop runs, and
// not while it is hung; its user answers a prompt as the test says.
class FakeKeyring : public QDBusVirtualObject {
    Q_OBJECT
public:
    FakeKeyring()
    {
        EXPECT_TRUE(m_bus.registerVirtualObject("/org/freedesktop/secrets", this, QDBusConnection::SubPath));
        EXPECT_TRUE(m_bus.registerService("org.freedesktop.secrets"));
    }
    ~FakeKeyring() override { QDBusConnection::disconnectFromBus("keyring"); }

    bool isLocked = false;
    bool dismisses = false;
    bool isHung = false;
    int prompts = 0;
    QString stored; // no item while it is empty

    void answerWhatWaits()
    {
        isHung = false;
        for (const QDBusMessage &message : std::exchange(m_waiting, {}))
            answer(message);
    }

    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &) override
    {
        if (isHung)
            m_waiting.append(message);
        else
            answer(message);
        return true;
    }

private:
    static QVariant paths(const QList<QDBusObjectPath> &list) { return QVariant::fromValue(list); }
    static QVariant path(const char *text) { return QVariant::fromValue(QDBusObjectPath(text)); }
    QVariant carried() const
    {
        QDBusArgument secret;
        secret.beginStructure();
        secret << QDBusObjectPath("/org/freedesktop/secrets/session/1") << QByteArray() << stored.toUtf8()
               << QString("text/plain");
        secret.endStructure();
        return QVariant::fromValue(secret);
    }
    void reply(const QDBusMessage &to, const QVariantList &words) { m_bus.send(to.createReply(words)); }

    void answer(const QDBusMessage &message)
    {
        const QString member = message.member();
        if (member == "OpenSession") {
            reply(message,
                  {QVariant::fromValue(QDBusVariant(QString())), path("/org/freedesktop/secrets/session/1")});
        } else if (member == "SearchItems") {
            const QList<QDBusObjectPath> found =
                stored.isEmpty() ? QList<QDBusObjectPath>()
                                 : QList<QDBusObjectPath>{QDBusObjectPath("/org/freedesktop/secrets/item")};
            reply(message, {paths(isLocked ? QList<QDBusObjectPath>() : found),
                            paths(isLocked ? found : QList<QDBusObjectPath>())});
        } else if (member == "Unlock") {
            reply(message, {paths({}), path(isLocked ? "/org/freedesktop/secrets/prompt" : "/")});
        } else if (member == "Prompt") {
            ++prompts;
            reply(message, {});
            isLocked = dismisses;
            QDBusMessage completed = QDBusMessage::createSignal("/org/freedesktop/secrets/prompt",
                                                                "org.freedesktop.Secret.Prompt", "Completed");
            completed.setArguments({dismisses, QVariant::fromValue(QDBusVariant(QString()))});
            m_bus.send(completed);
        } else if (isLocked) {
            m_bus.send(message.createErrorReply("org.freedesktop.Secret.Error.IsLocked", "Locked"));
        } else if (member == "GetSecret") {
            reply(message, {carried()});
        } else if (member == "CreateItem") {
            const auto secret = message.arguments().value(1).value<QDBusArgument>();
            QDBusObjectPath session;
            QByteArray parameters, value;
            secret.beginStructure();
            secret >> session >> parameters >> value;
            stored = QString::fromUtf8(value);
            reply(message, {path("/org/freedesktop/secrets/item"), path("/")});
        } else {
            stored.clear();
            reply(message, {path("/")});
        }
    }

    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "keyring");
    QList<QDBusMessage> m_waiting;
};

class SecretServiceTest : public testing::Test {
protected:
    template <typename T>
    Result<T> wait(QFuture<Result<T>> future)
    {
        EXPECT_TRUE(QTest::qWaitFor([&] { return future.isFinished(); }, 20000));
        return future.result();
    }
    Result<QString> get(SecretsAccess access) { return wait(secrets.get("key", "service", access)); }

    const TemporaryFolder folder;
    FakeKeyring keyring;
    DesktopSecrets secrets{folder.path()};
};

} // namespace

TEST_F(SecretServiceTest, KeepsAPasswordWithTheServiceAndInNoFile)
{
    ASSERT_TRUE(wait(secrets.set("sk-ä", "key", "service")));
    EXPECT_EQ(keyring.stored, "sk-ä");
    EXPECT_FALSE(QFile::exists(folder.path("secrets.json")));
    EXPECT_EQ(get(SecretsAccess::Quiet).value_or("nothing"), "sk-ä");
    ASSERT_TRUE(wait(secrets.set("", "key", "service")));
    EXPECT_EQ(get(SecretsAccess::Quiet).error().kind, Error::Kind::NotFound);
}

TEST_F(SecretServiceTest, AsksForALockedStoreOnlyWhereTheUserWaitsForIt)
{
    keyring.stored = "sk";
    keyring.isLocked = true;
    EXPECT_EQ(get(SecretsAccess::Quiet).error().kind, Error::Kind::Denied);
    EXPECT_EQ(keyring.prompts, 0);
    keyring.dismisses = true;
    EXPECT_EQ(get(SecretsAccess::MayAsk).error().kind, Error::Kind::Denied);
    EXPECT_EQ(wait(secrets.set("other", "key", "service")).error().kind, Error::Kind::Denied);
    EXPECT_FALSE(QFile::exists(folder.path("secrets.json"))) << "against the user's wish";
    keyring.dismisses = false;
    EXPECT_EQ(get(SecretsAccess::MayAsk).value_or("nothing"), "sk");
    EXPECT_EQ(keyring.prompts, 3);
    keyring.isLocked = true;
    ASSERT_TRUE(wait(secrets.set("new", "key", "service")));
    EXPECT_EQ(keyring.stored, "new");
}

TEST_F(SecretServiceTest, HoldsNobodyUpWhileTheServiceHangs)
{
    keyring.stored = "sk";
    keyring.isHung = true;
    const auto future = secrets.get("key", "service", SecretsAccess::MayAsk);
    EXPECT_FALSE(future.isFinished());
    QCoreApplication::processEvents();
    EXPECT_FALSE(future.isFinished()) << "and the caller goes on";
    keyring.answerWhatWaits();
    EXPECT_EQ(wait(future).value_or("nothing"), "sk");
}

#include "secret_service_test.moc"
