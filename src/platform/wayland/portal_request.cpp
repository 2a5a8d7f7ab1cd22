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
constexpr int kClosePatience = 1000; // and until it has taken it back
const QString kService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kRequest = QStringLiteral("org.freedesktop.portal.Request");

class Answer : public QObject {
    Q_OBJECT
public:
    QEventLoop loop;
    std::optional<uint> code;
    QVariantMap results;
    bool isPortalGone = false;

public Q_SLOTS:
    void take(uint answered, const QVariantMap &told)
    {
        code = answered;
        results = told;
        loop.quit();
    }
    void portalGoes()
    {
        isPortalGone = true;
        loop.quit();
    }
};

std::unexpected<Error> silent(Error::Kind kind, const QString &why)
{
    return fail(kind,
                PlatformTexts::tr("The desktop's portal doesn't answer: it may not be installed, or have "
                                  "stopped."),
                why);
}

} // namespace

Result<QVariantMap> PortalRequest::ask(const QString &interface, const QString &method,
                                       const QVariantList &arguments, QVariantMap options,
                                       std::chrono::milliseconds patience)
{
    // A connection of its own: its signals come to this thread, and to nobody else's answer.
    const QString name = QUuid::createUuid().toString(QUuid::WithoutBraces);
    const auto leave = qScopeGuard([&name] { QDBusConnection::disconnectFromBus(name); });
    return ask(QDBusConnection::connectToBus(QDBusConnection::SessionBus, name), interface, method, arguments,
               std::move(options), patience);
}

Result<QVariantMap> PortalRequest::ask(QDBusConnection bus, const QString &interface, const QString &method,
                                       const QVariantList &arguments, QVariantMap options,
                                       std::chrono::milliseconds patience)
{
    const QString token = QStringLiteral("lumenpost") + QUuid::createUuid().toString(QUuid::Id128);
    options[QStringLiteral("handle_token")] = token;
    const QString path =
        QStringLiteral("/org/freedesktop/portal/desktop/request/%1/%2")
            .arg(bus.baseService().mid(1).replace(QLatin1Char('.'), QLatin1Char('_')), token);
    Answer answer;
    // Before it is asked: the answer may come at once.
    bus.connect(kService, path, kRequest, QStringLiteral("Response"), &answer, SLOT(take(uint, QVariantMap)));
    QDBusServiceWatcher watcher(kService, bus, QDBusServiceWatcher::WatchForUnregistration);
    QObject::connect(&watcher, &QDBusServiceWatcher::serviceUnregistered, &answer, &Answer::portalGoes);
    QDBusMessage call = QDBusMessage::createMethodCall(
        kService, QStringLiteral("/org/freedesktop/portal/desktop"), interface, method);
    call.setArguments(QVariantList(arguments) << options);
    const QDBusMessage taken = bus.call(call, QDBus::Block, kCallPatience);
    if (taken.type() != QDBusMessage::ReplyMessage) {
        const bool isMissing = taken.errorName().contains(QLatin1String("Unknown"));
        return silent(isMissing ? Error::Kind::Unavailable : Error::Kind::Failed, taken.errorMessage());
    }
    QTimer::singleShot(patience, &answer.loop, &QEventLoop::quit);
    if (!answer.code)
        answer.loop.exec();
    if (!answer.code && answer.isPortalGone)
        return silent(Error::Kind::Failed, {});
    if (!answer.code) {
        // Its question leaves the screen.
        bus.call(QDBusMessage::createMethodCall(kService, path, kRequest, QStringLiteral("Close")),
                 QDBus::Block, kClosePatience);
        return fail(PlatformTexts::tr("Nobody answered the desktop's question whether Lumenpost may see the "
                                      "screen: try again, and allow it."));
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
