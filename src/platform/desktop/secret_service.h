#pragma once

#include "base/result.h"
#include "platform/secrets.h"

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QString>
#include <QVariant>
#include <atomic>
#include <optional>

// The desktop's keeper of passwords over D-Bus, by the Secret Service interface. Every call waits for at most
// a few seconds; the user, who is asked to unlock what is locked, has two minutes. Not for the main thread.
class SecretService {
public:
    // Nothing when the bus or the service isn't there, or doesn't answer. Once `isEnding` nobody waits for
    // the user any more; it must outlive the service.
    static std::optional<SecretService> connect(const QDBusConnection &bus, const std::atomic_bool &isEnding);

    // Error::Kind::NotFound when there is no such item; Denied when it is locked and stays so; Unavailable
    // when the service doesn't answer.
    Result<QString> get(const QString &account, const QString &service, SecretsAccess access) const;
    Result<void> set(const QString &value, const QString &account, const QString &service);
    Result<void> remove(const QString &account, const QString &service);

private:
    SecretService(QDBusConnection bus, QString session, const std::atomic_bool &isEnding)
        : m_bus(std::move(bus)), m_session(std::move(session)), m_isEnding(&isEnding)
    {}
    Result<void> unlock(const QDBusObjectPath &object) const;
    Result<void> complete(const QVariant &prompt) const;

    QDBusConnection m_bus;
    QString m_session; // an object path
    const std::atomic_bool *m_isEnding;
};
