#include "platform/desktop/secret_service.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusReply>
#include <QDBusVariant>
#include <QMap>
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
constexpr int kPatience = 3000; // milliseconds for an answer

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

// "/" when it is done; a prompt's path when the user would have to be asked.
bool isDone(const QVariant &prompt)
{
    return qvariant_cast<QDBusObjectPath>(prompt).path() == QLatin1String("/");
}

} // namespace

std::optional<SecretService> SecretService::connect(const QDBusConnection &bus)
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
    return SecretService(bus, qvariant_cast<QDBusObjectPath>(reply.arguments()[1]).path());
}

std::optional<QString> SecretService::get(const QString &account, const QString &service) const
{
    const auto items = search(m_bus, account, service);
    if (!items || items->unlocked.isEmpty())
        return std::nullopt;
    const QDBusMessage reply =
        call(m_bus, items->unlocked.first().path(), kItemInterface, QStringLiteral("GetSecret"),
             {QVariant::fromValue(QDBusObjectPath(m_session))});
    if (!isReply(reply) || reply.arguments().isEmpty())
        return std::nullopt;
    const auto secret = qdbus_cast<CarriedSecret>(reply.arguments().first());
    return QString::fromUtf8(secret.value);
}

Result<void> SecretService::set(const QString &value, const QString &account, const QString &service)
{
    QVariantMap properties;
    properties[QStringLiteral("org.freedesktop.Secret.Item.Label")] =
        QStringLiteral("Lumenpost: %1").arg(account);
    properties[QStringLiteral("org.freedesktop.Secret.Item.Attributes")] = attributes(account, service);
    const CarriedSecret secret{
        QDBusObjectPath(m_session), {}, value.toUtf8(), QStringLiteral("text/plain; charset=utf8")};
    const QDBusMessage reply =
        call(m_bus, kDefaultCollection, kCollectionInterface, QStringLiteral("CreateItem"),
             {properties, QVariant::fromValue(secret), true});
    if (!isReply(reply) || reply.arguments().size() < 2 || !isDone(reply.arguments()[1])) {
        return fail(QStringLiteral("The password store did not take the password: unlock it and try again."),
                    reply.errorMessage());
    }
    return {};
}

Result<void> SecretService::remove(const QString &account, const QString &service)
{
    const auto items = search(m_bus, account, service);
    if (!items)
        return fail(QStringLiteral("The password store does not answer."));
    for (const QDBusObjectPath &item : items->unlocked + items->locked) {
        const QDBusMessage reply = call(m_bus, item.path(), kItemInterface, QStringLiteral("Delete"), {});
        if (!isReply(reply) || reply.arguments().isEmpty() || !isDone(reply.arguments().first())) {
            return fail(
                QStringLiteral("The password store did not remove the password: unlock it and try again."),
                reply.errorMessage());
        }
    }
    return {};
}
