#pragma once

#include "base/result.h"

#include <QDBusConnection>
#include <QVariantList>
#include <QVariantMap>
#include <chrono>

// One question to the desktop's portal, whose answer comes when the user has given it.
namespace PortalRequest {

// As long as somebody may think about an answer.
constexpr std::chrono::milliseconds kUserPatience = std::chrono::minutes(1);

// Waits for the answer: for a worker. `arguments` come before the options. Error::Kind::Denied when the user
// said no, Unavailable when there is no such portal, Failed when it doesn't answer or ends.
Result<QVariantMap> ask(const QString &interface, const QString &method, const QVariantList &arguments,
                        QVariantMap options, std::chrono::milliseconds patience = kUserPatience);
// The same on a connection whose end ends what the portal began for it.
Result<QVariantMap> ask(QDBusConnection bus, const QString &interface, const QString &method,
                        const QVariantList &arguments, QVariantMap options,
                        std::chrono::milliseconds patience = kUserPatience);

} // namespace PortalRequest
