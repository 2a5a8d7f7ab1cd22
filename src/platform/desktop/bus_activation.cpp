#include "platform/desktop/bus_activation.h"

#include "base/log.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace {

const QString kName = QStringLiteral("com.oakfenrow.lumenpost");
const QString kPath = QStringLiteral("/com/oakfenrow/lumenpost"); // the name with slashes, as it is asked for
constexpr uint kDoNotQueue = 4;
constexpr uint kIsOwner = 1;
constexpr uint kWasOwner = 4;

// The windows that open next belong to what the user did elsewhere, so they may come to the front.
void takeToken(const QVariantMap &platformData)
{
    const QByteArray token = platformData.value(QStringLiteral("activation-token")).toString().toUtf8();
    if (!token.isEmpty())
        qputenv("XDG_ACTIVATION_TOKEN", token);
}

} // namespace

BusActivation::~BusActivation()
{
    if (m_handlers.activate)
        QDBusConnection::sessionBus().unregisterObject(kPath);
}

void BusActivation::serve(Handlers handlers)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    m_handlers = std::move(handlers);
    bus.registerObject(kPath, this, QDBusConnection::ExportScriptableSlots);
    // Not by the connection's own registerService(), which waits for the answer.
    auto request = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("RequestName"));
    request << kName << kDoNotQueue;
    auto *waiting = new QDBusPendingCallWatcher(bus.asyncCall(request), this);
    connect(waiting, &QDBusPendingCallWatcher::finished, this, [](QDBusPendingCallWatcher *done) {
        const QDBusPendingReply<uint> reply = *done;
        done->deleteLater();
        if (reply.isError())
            Log::info(QStringLiteral("The desktop can't ask by name: ") + reply.error().name());
        else if (reply.value() != kIsOwner && reply.value() != kWasOwner)
            Log::info(QStringLiteral("Another instance answers the desktop"));
    });
}

void BusActivation::Activate(const QVariantMap &platformData)
{
    takeToken(platformData);
    m_handlers.activate();
}

void BusActivation::Open(const QStringList &addresses, const QVariantMap &platformData)
{
    takeToken(platformData);
    m_handlers.open(addresses);
}

void BusActivation::ActivateAction(const QString &action, const QVariantList &,
                                   const QVariantMap &platformData)
{
    takeToken(platformData);
    m_handlers.perform(action);
}
