#include "platform/wayland/portal_request.h"

#include "platform/texts.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QEventLoop>
#include <QObject>
#include <QTimer>
#include <QUuid>

namespace {

constexpr int kCallPatience = 10000; // milliseconds until the portal has taken the question
constexpr int kUserPatience = 60000; // until somebody has answered it
const QString kService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kRequest = QStringLiteral("org.freedesktop.portal.Request");

class Answer : public QObject {
    Q_OBJECT
public:
    QEventLoop loop;
    std::optional<uint> code;
    QVariantMap results;

public Q_SLOTS:
    void take(uint answered, const QVariantMap &told)
    {
        code = answered;
        results = told;
        loop.quit();
    }
};

} // namespace

Result<QVariantMap> PortalRequest::ask(const QString &interface, const QString &method,
                                       const QVariantList &arguments, QVariantMap options)
{
    // A connection of its own: its signals come to this thread, and to nobody else's answer.
    const QString name = QUuid::createUuid().toString(QUuid::WithoutBraces);
    const auto leave = qScopeGuard([&name] { QDBusConnection::disconnectFromBus(name); });
    return ask(QDBusConnection::connectToBus(QDBusConnection::SessionBus, name), interface, method, arguments,
               std::move(options));
}

Result<QVariantMap> PortalRequest::ask(QDBusConnection bus, const QString &interface, const QString &method,
                                       const QVariantList &arguments, QVariantMap options)
{
    const QString token = QStringLiteral("lumenpost") + QUuid::createUuid().toString(QUuid::Id128);
    options[QStringLiteral("handle_token")] = token;
    const QString path =
        QStringLiteral("/org/freedesktop/portal/desktop/request/%1/%2")
            .arg(bus.baseService().mid(1).replace(QLatin1Char('.'), QLatin1Char('_')), token);
    Answer answer;
    // Before it is asked: the answer may come at once.
    bus.connect(kService, path, kRequest, QStringLiteral("Response"), &answer, SLOT(take(uint, QVariantMap)));
    QDBusMessage call = QDBusMessage::createMethodCall(
        kService, QStringLiteral("/org/freedesktop/portal/desktop"), interface, method);
    call.setArguments(QVariantList(arguments) << options);
    const QDBusMessage taken = bus.call(call, QDBus::Block, kCallPatience);
    if (taken.type() != QDBusMessage::ReplyMessage) {
        const bool isMissing = taken.errorName().contains(QLatin1String("Unknown"));
        return fail(isMissing ? Error::Kind::Unavailable : Error::Kind::Failed,
                    PlatformTexts::tr("The desktop's portal doesn't answer: it may not be installed, or have "
                                      "stopped."),
                    taken.errorMessage());
    }
    QDBusServiceWatcher watcher(kService, bus, QDBusServiceWatcher::WatchForUnregistration);
    QObject::connect(&watcher, &QDBusServiceWatcher::serviceUnregistered, &answer.loop, &QEventLoop::quit);
    QTimer::singleShot(kUserPatience, &answer.loop, &QEventLoop::quit);
    if (!answer.code)
        answer.loop.exec();
    if (!answer.code) {
        bus.send(QDBusMessage::createMethodCall(kService, path, kRequest, QStringLiteral("Close")));
        return fail(PlatformTexts::tr("The desktop's portal doesn't answer: it may not be installed, or have "
                                      "stopped."));
    }
    if (*answer.code != 0) {
        return fail(
            Error::Kind::Denied,
            PlatformTexts::tr("The desktop was not allowed to show Lumenpost the screen: allow it when it "
                              "asks, or in its privacy settings."));
    }
    return answer.results;
}

#include "portal_request.moc"
