#pragma once

#include "platform/secrets.h"

#include <QString>
#include <QThreadPool>
#include <atomic>
#include <functional>
#include <optional>

class SecretService;

// The desktop's secret service; without one, or when it doesn't take the secret, the file "secrets.json" in
// `configFolder`, which only the user can read. A line in the log says so, once. All is done on a thread of
// its own, one after the other: a service may be slow, or wait for the user.
class DesktopSecrets : public Secrets {
public:
    // Gives the service for one operation, or nothing. Called on that thread.
    using Connect = std::function<std::optional<SecretService>()>;

    explicit DesktopSecrets(const QString &configFolder);
    DesktopSecrets(const QString &configFolder, Connect connect);
    ~DesktopSecrets() override;
    QFuture<Result<QString>> get(const QString &account, const QString &service,
                                 SecretsAccess access) override;
    QFuture<Result<void>> set(const QString &value, const QString &account, const QString &service) override;

private:
    Result<QString> read(const QString &account, const QString &service, SecretsAccess access) const;
    Result<void> write(const QString &value, const QString &account, const QString &service);
    std::optional<QString> fromFile(const QString &account, const QString &service) const;
    Result<void> toFile(const QString &value, const QString &account, const QString &service);

    QString m_file;
    Connect m_connect;
    bool m_hasTold = false;
    std::atomic_bool m_isEnding = false; // nobody waits for the user any more
    QThreadPool m_worker;
};
