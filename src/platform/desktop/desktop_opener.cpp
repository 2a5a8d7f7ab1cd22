#include "platform/desktop/desktop_opener.h"

#include "platform/texts.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

Result<void> DesktopOpener::open(const QUrl &url)
{
    if (url.isLocalFile() && !QFileInfo::exists(url.toLocalFile()))
        return fail(Error::Kind::NotFound, PlatformTexts::tr("There is no file “%1”.").arg(url.fileName()));
    for (const auto &[program, words] : {std::pair<QString, QStringList>{QStringLiteral("xdg-open"), {}},
                                         {QStringLiteral("gio"), {QStringLiteral("open")}}}) {
        const QString found = QStandardPaths::findExecutable(program);
        if (!found.isEmpty() &&
            QProcess::startDetached(found, words + QStringList{url.toString(QUrl::FullyEncoded)}))
            return {};
    }
    return fail(Error::Kind::Unavailable,
                PlatformTexts::tr("Nothing can open “%1” here: install xdg-utils.")
                    .arg(url.isLocalFile() ? url.fileName() : url.toDisplayString()));
}

Result<void> DesktopOpener::reveal(const QString &path)
{
    if (!QFileInfo::exists(path))
        return fail(Error::Kind::NotFound,
                    PlatformTexts::tr("There is no file “%1”.").arg(QFileInfo(path).fileName()));
    const QUrl folder = QUrl::fromLocalFile(QFileInfo(path).absolutePath());
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return open(folder);
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    call << QStringList{QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath()).toString(QUrl::FullyEncoded)}
         << QString();
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(call));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, folder] {
        watcher->deleteLater();
        if (watcher->isError())
            (void)open(folder); // no file manager that selects; nobody is left to tell of a second failure
    });
    return {};
}
