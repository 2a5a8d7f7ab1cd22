#include "platform/desktop/desktop_parts_probe.h"

#include "base/async.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QLocale>
#include <QStandardPaths>
#include <unistd.h>

namespace {

using Kind = DesktopPart::Kind;
using State = DesktopPart::State;

constexpr int kPatience = 1000; // milliseconds for a bus to answer

// The names on the session bus, with those that it would start when asked.
QStringList sessionServices()
{
    const QString name = QStringLiteral("lumenpost-parts");
    QStringList services;
    {
        QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
        for (const QString &question : {QStringLiteral("ListNames"), QStringLiteral("ListActivatableNames")}) {
            const QDBusMessage call = QDBusMessage::createMethodCall(
                QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                QStringLiteral("org.freedesktop.DBus"), question);
            const QDBusReply<QStringList> reply = bus.call(call, QDBus::Block, kPatience);
            if (reply.isValid())
                services += reply.value();
        }
    }
    QDBusConnection::disconnectFromBus(name);
    return services;
}

DesktopPart service(Kind kind, const QStringList &services, const QString &name, const QString &package)
{
    return {kind, services.contains(name) ? State::Works : State::Missing, package};
}

DesktopPart soundServer()
{
    const QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    const bool isThere = qEnvironmentVariableIsSet("PULSE_SERVER") ||
                         QFileInfo::exists(runtime + QStringLiteral("/pulse/native"));
    return {Kind::SoundServer, isThere ? State::Works : State::Missing, QStringLiteral("pipewire-pulse")};
}

DesktopPart camera()
{
    const QStringList devices =
        QDir(QStringLiteral("/dev")).entryList({QStringLiteral("video*")}, QDir::System | QDir::Files);
    State state = devices.isEmpty() ? State::Missing : State::Barred;
    for (const QString &device : devices) {
        if (access(QFile::encodeName(QStringLiteral("/dev/") + device).constData(), R_OK | W_OK) == 0)
            state = State::Works;
    }
    return {Kind::Camera, state};
}

// The same places, in the same order, in which recognition itself looks.
QStringList recognitionFolders()
{
    const QString given = qEnvironmentVariable("TESSDATA_PREFIX");
    if (!given.isEmpty())
        return {given, given + QStringLiteral("/tessdata")};
    QStringList folders{QCoreApplication::applicationDirPath() + QStringLiteral("/../share/lumenpost/tessdata")};
    for (const QString &root : {QStringLiteral("/usr/local/share"), QStringLiteral("/usr/share")}) {
        const QDir versions(root + QStringLiteral("/tesseract-ocr"));
        for (const QString &version : versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
            folders += versions.filePath(version) + QStringLiteral("/tessdata");
        folders += root + QStringLiteral("/tessdata");
    }
    return folders;
}

DesktopPart recognitionData()
{
    QStringList languages;
    for (const QString &folder : recognitionFolders()) {
        for (const QString &file : QDir(folder).entryList({QStringLiteral("*.traineddata")}, QDir::Files)) {
            const QString language = file.section(QLatin1Char('.'), 0, 0);
            if (language != QLatin1String("osd") && !languages.contains(language))
                languages += language;
        }
    }
    languages.sort();
    return {Kind::RecognitionData, languages.isEmpty() ? State::Missing : State::Works,
            QStringLiteral("tesseract-ocr-eng"), languages.join(QStringLiteral(", "))};
}

DesktopPart speechModel()
{
    bool isThere = false;
    for (const QString &folder :
         QStandardPaths::locateAll(QStandardPaths::GenericDataLocation, QStringLiteral("pocketsphinx/model"),
                                   QStandardPaths::LocateDirectory))
        isThere = isThere || !QDir(folder).isEmpty();
    return {Kind::SpeechModel, isThere ? State::Works : State::Missing,
            QStringLiteral("pocketsphinx-en-us")};
}

QList<DesktopPart> lookNow()
{
    const QStringList services = sessionServices();
    return {
        service(Kind::AccessibilityBus, services, QStringLiteral("org.a11y.Bus"), QStringLiteral("at-spi2-core")),
        soundServer(),
        camera(),
        recognitionData(),
        speechModel(),
        service(Kind::Portals, services, QStringLiteral("org.freedesktop.portal.Desktop"),
                QStringLiteral("xdg-desktop-portal")),
        service(Kind::SecretService, services, QStringLiteral("org.freedesktop.secrets"),
                QStringLiteral("gnome-keyring")),
    };
}

} // namespace

QFuture<QList<DesktopPart>> DesktopPartsProbe::look() const
{
    return runInBackground(lookNow);
}
