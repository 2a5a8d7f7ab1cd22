#include "platform/desktop/atspi_elements.h"

#include "base/async.h"
#include "platform/desktop/atspi_inquiry.h"

#include <QDBusConnection>
#include <QDBusReply>
#include <QDBusVariant>

namespace {

constexpr int kPatience = 400;      // milliseconds for one element
constexpr int kWakePatience = 1000; // for all programs at once, while nobody waits
constexpr int kBetweenLooks = 2000;

QDBusMessage status(const QString &method, const QVariantList &more)
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                                       QStringLiteral("org.freedesktop.DBus.Properties"), method);
    message.setArguments(QVariantList{QStringLiteral("org.a11y.Status"), QStringLiteral("IsEnabled")} + more);
    return message;
}

// Programs of some toolkits tell nothing until the desktop says that someone listens. True if that changed.
bool switchOn()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    const QDBusReply<QDBusVariant> now = bus.call(status(QStringLiteral("Get"), {}), QDBus::Block, kPatience);
    if (!now.isValid() || now.value().variant().toBool())
        return false;
    bus.call(status(QStringLiteral("Set"), {QVariant::fromValue(QDBusVariant(true))}), QDBus::Block,
             kPatience);
    return true;
}

void switchOff()
{
    QDBusConnection::sessionBus().send(
        status(QStringLiteral("Set"), {QVariant::fromValue(QDBusVariant(false))}));
}

} // namespace

AtspiElements::AtspiElements()
    : m_inquiry(std::make_unique<AtspiInquiry>()), m_wakener(std::make_unique<AtspiInquiry>())
{
    m_worker.setMaxThreadCount(1);
    m_waker.setMaxThreadCount(1);
}

AtspiElements::~AtspiElements()
{
    rest();
    m_worker.clear();
    m_worker.waitForDone();
    m_waker.waitForDone();
}

bool AtspiElements::isAvailable() const
{
    AtspiInquiry inquiry;
    return inquiry.connects(kPatience);
}

void AtspiElements::prepare()
{
    if (m_newcomers)
        return;
    m_newcomers = std::make_unique<QTimer>();
    const auto look = [this] { m_waker.start([this] { m_wakener->wake(kWakePatience); }); };
    QObject::connect(m_newcomers.get(), &QTimer::timeout, m_newcomers.get(), look);
    m_newcomers->start(kBetweenLooks);
    m_waker.start([this] { m_hasEnabled = switchOn(); });
    look();
    m_worker.start([this] { m_inquiry->learnPrograms(kWakePatience); });
}

void AtspiElements::rest()
{
    if (!m_newcomers)
        return;
    m_newcomers.reset();
    m_waker.start([this] {
        if (std::exchange(m_hasEnabled, false))
            switchOff();
    });
}

QFuture<std::optional<AccessibleElement>> AtspiElements::elementAt(const ClickTarget &target)
{
    return QtConcurrent::run(&m_worker, [this, target] { return m_inquiry->elementAt(target, kPatience); });
}
