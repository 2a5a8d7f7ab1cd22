#include "platform/desktop/secret_service.h"

#include "platform/texts.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusReply>
#include <QDBusVariant>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QMap>
#include <QTimer>
#include <QVariantMap>

using Attributes = QMap<QString, QString>;

// A secret as the interface carries it: the session it is meant for, parameters of its encryption, bytes,
// type.
struct CarriedSecret {
    QDBusObjectPath session;
    QByteArray parameters;
    QByteArray value;
    QString contentType;

    friend QDBusArgument &operator<<(QDBusArgument &argument, const CarriedSecret &secret)
    {
        argument.beginStructure();
        argument << secret.session << secret.parameters << secret.value << secret.contentType;
        argument.endStructure();
        return argument;
    }
    friend const QDBusArgument &operator>>(const QDBusArgument &argument, CarriedSecret &secret)
    {
        argument.beginStructure();
        argument >> secret.session >> secret.parameters >> secret.value >> secret.contentType;
        argument.endStructure();
        return argument;
    }
};
Q_DECLARE_METATYPE(CarriedSecret)
Q_DECLARE_METATYPE(Attributes)

namespace {

const QString kService = QStringLiteral("org.freedesktop.secrets");
const QString kServicePath = QStringLiteral("/org/freedesktop/secrets");
const QString kServiceInterface = QStringLiteral("org.freedesktop.Secret.Service");
const QString kItemInterface = QStringLiteral("org.freedesktop.Secret.Item");
const QString kCollectionInterface = QStringLiteral("org.freedesktop.Secret.Collection");
const QString kDefaultCollection = QStringLiteral("/org/freedesktop/secrets/aliases/default");
const QString kPromptInterface = QStringLiteral("org.freedesktop.Secret.Prompt");
const QString kIsLocked = QStringLiteral("org.freedesktop.Secret.Error.IsLocked");
constexpr int kPatience = 3000; // milliseconds for an answer
constexpr int kPatienceOfUser = 120000;
constexpr int kBetweenLooks = 100;

QDBusMessage call(const QDBusConnection &bus, const QString &path, const QString &interface,
                  const QString &method, const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(kService, path, interface, method);
    message.setArguments(arguments);
    return bus.call(message, QDBus::Block, kPatience);
}

bool isReply(const QDBusMessage &message)
{
    return message.type() == QDBusMessage::ReplyMessage;
}

QVariant attributes(const QString &account, const QString &service)
{
    return QVariant::fromValue(
        Attributes{{QStringLiteral("account"), account}, {QStringLiteral("service"), service}});
}

struct FoundItems {
    QList<QDBusObjectPath> unlocked;
    QList<QDBusObjectPath> locked;
};

std::optional<FoundItems> search(const QDBusConnection &bus, const QString &account, const QString &service)
{
    const QDBusMessage reply = call(bus, kServicePath, kServiceInterface, QStringLiteral("SearchItems"),
                                    {attributes(account, service)});
    if (!isReply(reply) || reply.arguments().size() < 2)
        return std::nullopt;
    return FoundItems{qdbus_cast<QList<QDBusObjectPath>>(reply.arguments()[0]),
                      qdbus_cast<QList<QDBusObjectPath>>(reply.arguments()[1])};
}

std::unexpected<Error> noAnswer(const QDBusMessage &reply = {})
{
    return fail(Error::Kind::Unavailable, PlatformTexts::tr("The password store does not answer."),
                reply.errorMessage());
}

std::unexpected<Error> staysLocked()
{
    return fail(Error::Kind::Denied,
                PlatformTexts::tr("The password store is locked: unlock it and try again."));
}

std::unexpected<Error> noSuchPassword()
{
    return fail(Error::Kind::NotFound, PlatformTexts::tr("There is no such password."));
}

// Waits for what the user answers to the service's own dialog.
class PromptAnswer : public QObject {
    Q_OBJECT
public:
    enum class Answer { None, Done, Dismissed };

    Answer wait(const std::atomic_bool &isEnding)
    {
        QEventLoop loop; // the only one of this thread
        QTimer poll;
        const QDeadlineTimer deadline(kPatienceOfUser);
        connect(this, &PromptAnswer::answered, &loop, &QEventLoop::quit);
        connect(&poll, &QTimer::timeout, &loop, [&] {
            if (isEnding || deadline.hasExpired())
                loop.quit();
        });
        poll.start(kBetweenLooks);
        if (m_answer == Answer::None)
            loop.exec();
        return m_answer;
    }

public Q_SLOTS:
    void complete(bool isDismissed, const QDBusVariant &)
    {
        m_answer = isDismissed ? Answer::Dismissed : Answer::Done;
        Q_EMIT answered();
    }

Q_SIGNALS:
    void answered();

private:
    Answer m_answer = Answer::None;
};

} // namespace

std::optional<SecretService> SecretService::connect(const QDBusConnection &bus,
                                                    const std::atomic_bool &isEnding)
{
    if (!bus.isConnected() || !bus.interface())
        return std::nullopt;
    const bool runs = bus.interface()->isServiceRegistered(kService);
    if (!runs) {
        const QDBusReply<QStringList> startable =
            bus.interface()->call(QStringLiteral("ListActivatableNames"));
        if (!startable.isValid() || !startable.value().contains(kService))
            return std::nullopt;
    }
    qDBusRegisterMetaType<CarriedSecret>();
    qDBusRegisterMetaType<Attributes>();
    // Not encrypted: the bus is the user's own and leaves the machine never.
    const QDBusMessage reply = call(bus, kServicePath, kServiceInterface, QStringLiteral("OpenSession"),
                                    {QStringLiteral("plain"), QVariant::fromValue(QDBusVariant(QString()))});
    if (!isReply(reply) || reply.arguments().size() < 2)
        return std::nullopt;
    return SecretService(bus, qvariant_cast<QDBusObjectPath>(reply.arguments()[1]).path(), isEnding);
}

// "/" when nothing is left to do; else the path of a dialog of the service.
Result<void> SecretService::complete(const QVariant &prompt) const
{
    const QString path = qvariant_cast<QDBusObjectPath>(prompt).path();
    if (path == QLatin1String("/"))
        return {};
    PromptAnswer answer;
    QDBusConnection bus = m_bus;
    bus.connect(kService, path, kPromptInterface, QStringLiteral("Completed"), &answer,
                SLOT(complete(bool, QDBusVariant)));
    const QDBusMessage reply = call(bus, path, kPromptInterface, QStringLiteral("Prompt"), {QString()});
    if (!isReply(reply))
        return noAnswer(reply);
    switch (answer.wait(*m_isEnding)) {
    case PromptAnswer::Answer::Done:
        return {};
    case PromptAnswer::Answer::Dismissed:
    case PromptAnswer::Answer::None:
        return staysLocked();
    }
    Q_UNREACHABLE();
}

Result<void> SecretService::unlock(const QDBusObjectPath &object) const
{
    const QDBusMessage reply = call(m_bus, kServicePath, kServiceInterface, QStringLiteral("Unlock"),
                                    {QVariant::fromValue(QList<QDBusObjectPath>{object})});
    if (!isReply(reply) || reply.arguments().size() < 2)
        return noAnswer(reply);
    return complete(reply.arguments()[1]);
}

Result<QString> SecretService::get(const QString &account, const QString &service, SecretsAccess access) const
{
    const auto items = search(m_bus, account, service);
    if (!items)
        return noAnswer();
    if (items->unlocked.isEmpty() && items->locked.isEmpty())
        return noSuchPassword();
    QDBusObjectPath item = items->unlocked.value(0);
    if (items->unlocked.isEmpty()) {
        item = items->locked.first();
        if (access == SecretsAccess::Quiet)
            return staysLocked();
        if (const auto unlocked = unlock(item); !unlocked)
            return std::unexpected(unlocked.error());
    }
    const QDBusMessage reply = call(m_bus, item.path(), kItemInterface, QStringLiteral("GetSecret"),
                                    {QVariant::fromValue(QDBusObjectPath(m_session))});
    if (!isReply(reply) || reply.arguments().isEmpty())
        return reply.errorName() == kIsLocked ? staysLocked() : noAnswer(reply);
    return QString::fromUtf8(qdbus_cast<CarriedSecret>(reply.arguments().first()).value);
}

Result<void> SecretService::set(const QString &value, const QString &account, const QString &service)
{
    QVariantMap properties;
    properties[QStringLiteral("org.freedesktop.Secret.Item.Label")] =
        QStringLiteral("Lumenpost: %1").arg(account);
    properties[QStringLiteral("org.freedesktop.Secret.Item.Attributes")] = attributes(account, service);
    const CarriedSecret secret{
        QDBusObjectPath(m_session), {}, value.toUtf8(), QStringLiteral("text/plain; charset=utf8")};
    const auto create = [&] {
        return call(m_bus, kDefaultCollection, kCollectionInterface, QStringLiteral("CreateItem"),
                    {properties, QVariant::fromValue(secret), true});
    };
    QDBusMessage reply = create();
    if (reply.errorName() == kIsLocked) {
        if (const auto unlocked = unlock(QDBusObjectPath(kDefaultCollection)); !unlocked)
            return unlocked;
        reply = create();
    }
    if (!isReply(reply) || reply.arguments().size() < 2)
        return noAnswer(reply);
    return complete(reply.arguments()[1]);
}

Result<void> SecretService::remove(const QString &account, const QString &service)
{
    const auto items = search(m_bus, account, service);
    if (!items)
        return noAnswer();
    for (const QDBusObjectPath &item : items->unlocked + items->locked) {
        const auto erase = [&] {
            return call(m_bus, item.path(), kItemInterface, QStringLiteral("Delete"), {});
        };
        QDBusMessage reply = erase();
        if (reply.errorName() == kIsLocked) {
            if (const auto unlocked = unlock(item); !unlocked)
                return unlocked;
            reply = erase();
        }
        if (!isReply(reply) || reply.arguments().isEmpty())
            return noAnswer(reply);
        if (const auto done = complete(reply.arguments().first()); !done)
            return done;
    }
    return {};
}

#include "secret_service.moc"
