#pragma once

#include "base/result.h"

#include <QDBusConnection>
#include <QString>
#include <optional>

// The desktop's keeper of passwords over D-Bus, by the Secret Service interface. Every call waits for at most
// a few seconds; nothing is asked of the user.
class SecretService {
public:
    // Nothing when the bus or the service isn't there, or doesn't answer.
    static std::optional<SecretService> connect(const QDBusConnection &bus);

    // Nothing when there is no such item, or it is locked.
    std::optional<QString> get(const QString &account, const QString &service) const;
    Result<void> set(const QString &value, const QString &account, const QString &service);
    Result<void> remove(const QString &account, const QString &service);

private:
    SecretService(QDBusConnection bus, QString session) : m_bus(std::move(bus)), m_session(std::move(session))
    {}

    QDBusConnection m_bus;
    QString m_session; // an object path
};
