#include "app/single_instance.h"

#include "app/texts.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLocalServer>
#include <QLocalSocket>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QThread>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr qsizetype kLongest = 1 << 20; // bytes of a message
constexpr int kBetweenTries = 20;       // milliseconds, while an instance is starting

// In the user's runtime folder; displays of one user don't share an instance.
QString defaultSocketPath()
{
    QString display = qEnvironmentVariable("WAYLAND_DISPLAY");
    if (display.isEmpty()) {
        // ":0.0" is a screen of the display ":0".
        display = qEnvironmentVariable("DISPLAY").remove(QRegularExpression(QStringLiteral("\\.\\d+$")));
    }
    QString safe;
    for (const QChar letter : display)
        safe += letter.isLetterOrNumber() ? letter : QLatin1Char('_');
    QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (folder.isEmpty())
        folder = QDir::tempPath() + QStringLiteral("/lumenpost-%1").arg(getuid());
    return QDir(folder).filePath(QStringLiteral("lumenpost-%1.socket").arg(safe));
}

std::unexpected<Error> noLock(const QString &path)
{
    return fail(AppTexts::tr("Lumenpost can't keep “%1”, which tells later starts that it runs.").arg(path),
                QString::fromLocal8Bit(std::strerror(errno)));
}

} // namespace

SingleInstance::SingleInstance(QObject *parent) : SingleInstance(defaultSocketPath(), kPatience, parent) {}

SingleInstance::SingleInstance(const QString &socketPath, int patience, QObject *parent)
    : QObject(parent), m_socketPath(socketPath), m_patience(patience)
{}

SingleInstance::~SingleInstance()
{
    // The socket first: who takes the lock next makes its own.
    delete m_server;
    if (m_lock >= 0)
        close(m_lock);
}

Result<SingleInstance::Role> SingleInstance::start(const QStringList &arguments)
{
    const QDeadlineTimer deadline(m_patience);
    while (true) {
        const auto lock = takeLock();
        if (!lock)
            return std::unexpected(lock.error());
        if (*lock == Lock::Taken) {
            const auto listening = listen();
            return listening ? Result<Role>(Role::Running) : std::unexpected(listening.error());
        }
        if (handOverTo(m_socketPath, arguments, int(deadline.remainingTime())))
            return Role::HandedOver;
        if (deadline.hasExpired())
            return fail(Error::Kind::Unavailable,
                        AppTexts::tr("Lumenpost runs already, but doesn't answer."));
        QThread::msleep(kBetweenTries); // it starts or ends just now
    }
}

Result<SingleInstance::Lock> SingleInstance::takeLock()
{
    const QString path = m_socketPath + QStringLiteral(".lock");
    QDir().mkdir(QFileInfo(path).path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const int file = open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW,
                          S_IRUSR | S_IWUSR);
    struct stat status{};
    if (file < 0 || fstat(file, &status) != 0 || status.st_uid != geteuid()) {
        if (file >= 0)
            close(file);
        return noLock(path);
    }
    if (flock(file, LOCK_EX | LOCK_NB) == 0) {
        m_lock = file;
        return Lock::Taken;
    }
    const bool isHeld = errno == EWOULDBLOCK;
    close(file);
    return isHeld ? Result<Lock>(Lock::HeldElsewhere) : noLock(path);
}

bool SingleInstance::handOverAtOnce(const QStringList &words)
{
    // Without a runtime folder nobody listens in it.
    return !qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR") &&
           handOverTo(defaultSocketPath(), words, kPatience);
}

bool SingleInstance::handOverTo(const QString &socketPath, const QStringList &words, int patience)
{
    if (!QFileInfo::exists(socketPath))
        return false;
    QLocalSocket socket;
    socket.connectToServer(socketPath);
    if (!socket.waitForConnected(patience))
        return false;
    socket.write(QJsonDocument(QJsonArray::fromStringList(words)).toJson(QJsonDocument::Compact) + '\n');
    return socket.waitForBytesWritten(patience) && socket.waitForReadyRead(patience);
}

Result<void> SingleInstance::listen()
{
    QLocalServer::removeServer(m_socketPath); // left behind by one that was killed: it held the lock
    m_server = new QLocalServer(this);
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    connect(m_server, &QLocalServer::newConnection, this, &SingleInstance::read);
    if (!m_server->listen(m_socketPath)) {
        return fail(AppTexts::tr("Later starts of Lumenpost can't be handed over."), m_server->errorString());
    }
    return {};
}

void SingleInstance::read()
{
    while (QLocalSocket *socket = m_server->nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        const auto take = [this, socket] {
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
        };
        connect(socket, &QLocalSocket::readyRead, this, take);
        if (socket->bytesAvailable() > 0) // written before we looked
            take();
    }
}
