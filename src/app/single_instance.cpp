#include "app/single_instance.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLocalServer>
#include <QLocalSocket>
#include <QStandardPaths>

namespace {

constexpr int kPatience = 2000;         // milliseconds for a busy instance to answer
constexpr qsizetype kLongest = 1 << 20; // bytes of a message

// In the user's runtime folder; displays of one user don't share an instance.
QString socketPath()
{
    QString display = qEnvironmentVariable("WAYLAND_DISPLAY");
    if (display.isEmpty())
        display = qEnvironmentVariable("DISPLAY");
    QString safe;
    for (const QChar letter : display)
        safe += letter.isLetterOrNumber() ? letter : QLatin1Char('_');
    QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (folder.isEmpty())
        folder = QDir::tempPath();
    return QDir(folder).filePath(QStringLiteral("lumenpost-%1.socket").arg(safe));
}

} // namespace

SingleInstance::SingleInstance(QObject *parent) : QObject(parent), m_name(socketPath()) {}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::handOver(const QStringList &arguments)
{
    if (!QFileInfo::exists(m_name))
        return false;
    QLocalSocket socket;
    socket.connectToServer(m_name);
    if (!socket.waitForConnected(kPatience))
        return false;
    socket.write(QJsonDocument(QJsonArray::fromStringList(arguments)).toJson(QJsonDocument::Compact) + '\n');
    return socket.waitForBytesWritten(kPatience) && socket.waitForReadyRead(kPatience);
}

Result<void> SingleInstance::listen()
{
    QDir().mkpath(QFileInfo(m_name).path());
    QLocalServer::removeServer(m_name); // left behind by a killed instance: a living one would have answered
    m_server = new QLocalServer(this);
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    connect(m_server, &QLocalServer::newConnection, this, &SingleInstance::read);
    if (!m_server->listen(m_name))
        return fail(QStringLiteral("Later starts of Lumenpost can't be handed over."),
                    m_server->errorString());
    return {};
}

void SingleInstance::read()
{
    while (QLocalSocket *socket = m_server->nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
            if (!socket->canReadLine()) {
                if (socket->bytesAvailable() > kLongest)
                    socket->abort();
                return;
            }
            QStringList arguments;
            const QJsonArray words = QJsonDocument::fromJson(socket->readLine()).array();
            for (const QJsonValue &word : words)
                arguments.append(word.toString());
            socket->write("taken\n");
            socket->flush();
            Q_EMIT received(arguments);
        });
    }
}
