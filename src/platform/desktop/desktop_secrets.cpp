#include "platform/desktop/desktop_secrets.h"

#include "base/atomic_file.h"
#include "base/json.h"
#include "base/log.h"
#include "platform/desktop/secret_service.h"
#include "platform/texts.h"

#include <QDBusConnection>
#include <QDir>
#include <QFileInfo>
#include <QJsonObject>
#include <QtConcurrentRun>

namespace {

// The file is one object: services, each an object of accounts and values.
QJsonObject readSecrets(const QString &path)
{
    const auto document = Json::readFile(path);
    return document ? document->object() : QJsonObject();
}

} // namespace

DesktopSecrets::DesktopSecrets(const QString &configFolder)
    : DesktopSecrets(configFolder,
                     [this] { return SecretService::connect(QDBusConnection::sessionBus(), m_isEnding); })
{}

DesktopSecrets::DesktopSecrets(const QString &configFolder, Connect connect)
    : m_file(configFolder + QStringLiteral("/secrets.json")), m_connect(std::move(connect))
{
    m_worker.setMaxThreadCount(1);
}

DesktopSecrets::~DesktopSecrets()
{
    m_isEnding = true;
    m_worker.clear();
    m_worker.waitForDone();
}

QFuture<Result<QString>> DesktopSecrets::get(const QString &account, const QString &service,
                                             SecretsAccess access)
{
    return QtConcurrent::run(&m_worker,
                             [this, account, service, access] { return read(account, service, access); });
}

QFuture<Result<void>> DesktopSecrets::set(const QString &value, const QString &account,
                                          const QString &service)
{
    return QtConcurrent::run(&m_worker,
                             [this, value, account, service] { return write(value, account, service); });
}

Result<QString> DesktopSecrets::read(const QString &account, const QString &service,
                                     SecretsAccess access) const
{
    // The file first: it costs nothing, and holds only what the service did not take.
    if (auto kept = fromFile(account, service))
        return *kept;
    if (const auto keeper = m_connect())
        return keeper->get(account, service, access);
    return fail(Error::Kind::NotFound, PlatformTexts::tr("There is no such password."));
}

Result<void> DesktopSecrets::write(const QString &value, const QString &account, const QString &service)
{
    auto keeper = m_connect();
    if (value.isEmpty()) {
        const Result<void> removed = keeper ? keeper->remove(account, service) : Result<void>{};
        const Result<void> forgotten = toFile({}, account, service);
        return removed ? forgotten : removed;
    }
    if (keeper) {
        const Result<void> taken = keeper->set(value, account, service);
        if (taken)
            return toFile({}, account, service); // an older copy would win
        if (taken.error().kind == Error::Kind::Denied)
            return taken; // the user's wish: then it isn't put into a file either
    }
    const Result<void> stored = toFile(value, account, service);
    if (stored && !m_hasTold) {
        Log::info(QStringLiteral(
                      "No secret service took the password: it is kept in %1, readable for this user only")
                      .arg(m_file));
        m_hasTold = true;
    }
    return stored;
}

std::optional<QString> DesktopSecrets::fromFile(const QString &account, const QString &service) const
{
    return Json::string(readSecrets(m_file)[service].toObject(), account.toUtf8().constData());
}

Result<void> DesktopSecrets::toFile(const QString &value, const QString &account, const QString &service)
{
    QJsonObject secrets = readSecrets(m_file);
    QJsonObject accounts = secrets[service].toObject();
    if (value.isEmpty() && !accounts.contains(account))
        return {};
    if (value.isEmpty())
        accounts.remove(account);
    else
        accounts[account] = value;
    secrets[service] = accounts;
    QDir().mkpath(QFileInfo(m_file).absolutePath());
    const auto written =
        AtomicFile::writePrivately(m_file, QJsonDocument(secrets).toJson(QJsonDocument::Compact));
    if (!written)
        return fail(PlatformTexts::tr("The password could not be stored in “%1”.").arg(m_file),
                    written.error().message);
    return {};
}
