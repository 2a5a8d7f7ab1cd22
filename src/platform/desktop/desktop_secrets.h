#pragma once

#include "platform/secrets.h"

#include <QString>
#include <functional>

class SecretService;

// The desktop's secret service; without one, or when it doesn't take the secret, the file "secrets.json" in
// `configFolder`, which only the user can read. A line in the log says so, once.
class DesktopSecrets : public Secrets {
public:
    // Gives the service for one operation, or nothing.
    using Connect = std::function<std::optional<SecretService>()>;

    explicit DesktopSecrets(const QString &configFolder);
    DesktopSecrets(const QString &configFolder, Connect connect);
    std::optional<QString> get(const QString &account, const QString &service) const override;
    Result<void> set(const QString &value, const QString &account, const QString &service) override;

private:
    std::optional<QString> fromFile(const QString &account, const QString &service) const;
    Result<void> toFile(const QString &value, const QString &account, const QString &service);

    QString m_file;
    Connect m_connect;
    bool m_hasTold = false;
};
