#include "platform/desktop/atspi_bus.h"

#include <QDBusArgument>
#include <QDBusPendingCall>
#include <QDBusReply>
#include <QDBusVariant>
#include <QRegularExpression>

namespace {

constexpr auto kAccessible = "org.a11y.atspi.Accessible";
constexpr auto kComponent = "org.a11y.atspi.Component";
constexpr auto kApplication = "org.a11y.atspi.Application";
constexpr auto kProperties = "org.freedesktop.DBus.Properties";
// The numbers of relations.
constexpr quint32 kLabelFor = 1;
constexpr quint32 kLabelledBy = 2;

const AtspiObject kRegistry{QStringLiteral("org.a11y.atspi.Registry"),
                            QStringLiteral("/org/a11y/atspi/accessible/root")};

QString busAddress(int patience)
{
    const QString told = qEnvironmentVariable("AT_SPI_BUS_ADDRESS");
    if (!told.isEmpty())
        return told;
    const QDBusMessage question =
        QDBusMessage::createMethodCall(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                                       QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress"));
    const QDBusReply<QString> reply =
        QDBusConnection::sessionBus().call(question, QDBus::Block, std::max(patience, 1));
    return reply.isValid() ? reply.value() : QString();
}

AtspiObject readObject(const QDBusArgument &argument)
{
    AtspiObject object;
    QDBusObjectPath path;
    argument.beginStructure();
    argument >> object.service >> path;
    argument.endStructure();
    object.path = path.path();
    return object;
}

QList<AtspiObject> readObjects(const QDBusArgument &argument)
{
    QList<AtspiObject> objects;
    argument.beginArray();
    while (!argument.atEnd())
        objects.append(readObject(argument));
    argument.endArray();
    return objects;
}

// Nothing unless the answer begins with a value of that type: programs may answer anything.
std::optional<QDBusArgument> structured(const QDBusMessage &reply, const char *signature)
{
    if (reply.type() != QDBusMessage::ReplyMessage ||
        !reply.signature().startsWith(QLatin1String(signature)) || reply.arguments().isEmpty())
        return std::nullopt;
    return reply.arguments().first().value<QDBusArgument>();
}

quint64 statesIn(const QDBusMessage &reply)
{
    const auto list = structured(reply, "au");
    if (!list)
        return 0;
    QList<quint32> words;
    *list >> words;
    return words.value(0) | quint64(words.value(1)) << 32;
}

QRect extentsIn(const QDBusMessage &reply)
{
    const auto told = structured(reply, "(iiii)");
    if (!told)
        return {};
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    told->beginStructure();
    *told >> x >> y >> width >> height;
    told->endStructure();
    return width > 0 && height > 0 ? QRect(x, y, width, height) : QRect();
}

QVariant valueIn(const QDBusMessage &reply)
{
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return {};
    return reply.arguments().first().value<QDBusVariant>().variant();
}

AtspiObject objectIn(const QVariant &value)
{
    const auto argument = value.value<QDBusArgument>();
    return argument.currentSignature() == QLatin1String("(so)") ? readObject(argument) : AtspiObject();
}

// GTK 4 names what has no name by its class.
QString nameIn(const QVariant &value)
{
    static const QRegularExpression s_class(QStringLiteral("^Gtk[A-Z][A-Za-z]+$"));
    const QString name = value.toString();
    return s_class.match(name).hasMatch() ? QString() : name;
}

QHash<QString, QString> attributesIn(const QDBusMessage &reply)
{
    const auto list = structured(reply, "a{ss}");
    QHash<QString, QString> attributes;
    if (!list)
        return attributes;
    list->beginMap();
    while (!list->atEnd()) {
        QString key;
        QString value;
        list->beginMapEntry();
        *list >> key >> value;
        list->endMapEntry();
        attributes.insert(key, value);
    }
    list->endMap();
    return attributes;
}

QDBusMessage answer(QDBusPendingCall &call)
{
    call.waitForFinished();
    return call.reply();
}

} // namespace

AtspiBus::~AtspiBus()
{
    if (m_bus)
        QDBusConnection::disconnectFromBus(m_bus->name());
}

bool AtspiBus::connect()
{
    if (m_bus && m_bus->isConnected())
        return true;
    if (m_bus)
        QDBusConnection::disconnectFromBus(m_bus->name());
    m_bus.reset();
    m_pids.clear();
    m_toolkits.clear();
    const QString address = busAddress(int(m_deadline.remainingTime()));
    if (address.isEmpty())
        return false;
    static std::atomic<int> s_count{0};
    const QDBusConnection bus =
        QDBusConnection::connectToBus(address, QStringLiteral("lumenpost-accessibility-%1").arg(++s_count));
    if (bus.isConnected())
        m_bus = bus;
    return bus.isConnected();
}

QDBusMessage AtspiBus::message(const AtspiObject &object, const char *interface, const char *method,
                               const QVariantList &arguments) const
{
    QDBusMessage message = QDBusMessage::createMethodCall(object.service, object.path,
                                                          QLatin1String(interface), QLatin1String(method));
    message.setArguments(arguments);
    message.setAutoStartService(false);
    return message;
}

QDBusMessage AtspiBus::call(const AtspiObject &object, const char *interface, const char *method,
                            const QVariantList &arguments)
{
    const qint64 left = m_deadline.remainingTime();
    if (!m_bus || object.isNull() || left <= 0)
        return {};
    return m_bus->call(message(object, interface, method, arguments), QDBus::Block, int(left));
}

QList<QDBusPendingCall> AtspiBus::sendAll(const QList<AtspiObject> &objects, const char *interface,
                                          const char *method, const QVariantList &arguments)
{
    QList<QDBusPendingCall> sent;
    const int left = int(std::max<qint64>(m_deadline.remainingTime(), 1));
    for (const AtspiObject &object : objects)
        sent.append(m_bus->asyncCall(message(object, interface, method, arguments), left));
    return sent;
}

QList<AtspiBus::Look> AtspiBus::lookAt(const QList<AtspiObject> &objects)
{
    if (!m_bus || isLate())
        return {};
    QList<QDBusPendingCall> roles = sendAll(objects, kAccessible, "GetRole");
    QList<QDBusPendingCall> states = sendAll(objects, kAccessible, "GetState");
    QList<QDBusPendingCall> children = sendAll(objects, kAccessible, "GetChildren");
    QList<QDBusPendingCall> extents =
        sendAll(objects, kComponent, "GetExtents", {quint32(AtspiCoordinates::Screen)});
    QList<Look> looks;
    for (qsizetype i = 0; i < objects.size(); ++i) {
        const QDBusReply<quint32> role = answer(roles[i]);
        Look look{
            objects[i], AtspiRole(role.isValid() ? role.value() : 0), statesIn(answer(states[i])), {}, {}};
        if (const auto list = structured(answer(children[i]), "a(so)"))
            look.children = readObjects(*list);
        look.extents = extentsIn(answer(extents[i]));
        looks.append(look);
    }
    return looks;
}

QVariant AtspiBus::property(const AtspiObject &object, const char *interface, const char *name)
{
    return valueIn(
        call(object, kProperties, "Get", {QString::fromLatin1(interface), QString::fromLatin1(name)}));
}

QList<AtspiObject> AtspiBus::applications()
{
    return children(kRegistry);
}

qint64 AtspiBus::pid(const AtspiObject &application)
{
    if (const auto known = m_pids.constFind(application.service); known != m_pids.constEnd())
        return *known;
    const AtspiObject bus{QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus")};
    const QDBusMessage reply =
        call(bus, "org.freedesktop.DBus", "GetConnectionUnixProcessID", {application.service});
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return 0;
    return *m_pids.insert(application.service, reply.arguments().first().toUInt());
}

QString AtspiBus::toolkit(const AtspiObject &application)
{
    if (const auto known = m_toolkits.constFind(application.service); known != m_toolkits.constEnd())
        return *known;
    const QString name = property(application, kApplication, "ToolkitName").toString();
    return name.isEmpty() ? name : *m_toolkits.insert(application.service, name);
}

QList<AtspiObject> AtspiBus::children(const AtspiObject &object)
{
    const auto list = structured(call(object, kAccessible, "GetChildren"), "a(so)");
    return list ? readObjects(*list) : QList<AtspiObject>();
}

AtspiObject AtspiBus::parent(const AtspiObject &object)
{
    return objectIn(property(object, kAccessible, "Parent"));
}

AtspiRole AtspiBus::role(const AtspiObject &object)
{
    const QDBusReply<quint32> reply = call(object, kAccessible, "GetRole");
    return AtspiRole(reply.isValid() ? reply.value() : 0);
}

quint64 AtspiBus::states(const AtspiObject &object)
{
    return statesIn(call(object, kAccessible, "GetState"));
}

QString AtspiBus::name(const AtspiObject &object)
{
    return nameIn(property(object, kAccessible, "Name"));
}

QHash<QString, QString> AtspiBus::attributes(const AtspiObject &object)
{
    return attributesIn(call(object, kAccessible, "GetAttributes"));
}

AtspiBus::Card AtspiBus::card(const AtspiObject &object)
{
    if (!m_bus || object.isNull() || isLate())
        return {};
    const auto send = [&](const char *interface, const char *method, const QVariantList &arguments = {}) {
        return sendAll({object}, interface, method, arguments).first();
    };
    const auto sendGet = [&](const char *name) {
        return send(kProperties, "Get", {QString::fromLatin1(kAccessible), QString::fromLatin1(name)});
    };
    QDBusPendingCall role = send(kAccessible, "GetRole");
    QDBusPendingCall states = send(kAccessible, "GetState");
    QDBusPendingCall attributes = send(kAccessible, "GetAttributes");
    QDBusPendingCall parent = sendGet("Parent");
    QDBusPendingCall name = sendGet("Name");
    QDBusPendingCall description = sendGet("Description");
    const QDBusReply<quint32> roleNumber = answer(role);
    Card card;
    card.object = object;
    card.role = AtspiRole(roleNumber.isValid() ? roleNumber.value() : 0);
    card.states = statesIn(answer(states));
    card.attributes = attributesIn(answer(attributes));
    card.parent = objectIn(valueIn(answer(parent)));
    card.name = nameIn(valueIn(answer(name)));
    card.description = valueIn(answer(description)).toString();
    return card;
}

QList<AtspiObject> AtspiBus::related(const AtspiObject &object, quint32 relation)
{
    const auto list = structured(call(object, kAccessible, "GetRelationSet"), "a(ua(so))");
    if (!list)
        return {};
    QList<AtspiObject> found;
    list->beginArray();
    while (!list->atEnd()) {
        quint32 kind = 0;
        list->beginStructure();
        *list >> kind;
        const QList<AtspiObject> others = readObjects(*list);
        list->endStructure();
        if (kind == relation)
            found += others;
    }
    list->endArray();
    return found;
}

QString AtspiBus::labelledBy(const AtspiObject &object)
{
    QStringList texts;
    for (const AtspiObject &label : related(object, kLabelledBy)) {
        if (const QString text = name(label); !text.isEmpty())
            texts.append(text);
    }
    return texts.join(' ');
}

AtspiObject AtspiBus::labelFor(const AtspiObject &object)
{
    return related(object, kLabelFor).value(0);
}

QRect AtspiBus::extents(const AtspiObject &object, AtspiCoordinates coordinates)
{
    return extentsIn(call(object, kComponent, "GetExtents", {quint32(coordinates)}));
}

AtspiObject AtspiBus::childAt(const AtspiObject &object, QPoint point, AtspiCoordinates coordinates)
{
    const auto told = structured(
        call(object, kComponent, "GetAccessibleAtPoint", {point.x(), point.y(), quint32(coordinates)}),
        "(so)");
    return told ? readObject(*told) : AtspiObject();
}
