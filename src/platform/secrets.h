#pragma once

#include "base/result.h"

#include <QFuture>
#include <QString>

// Whether the user may be asked to unlock a store of passwords. Only for what the user has asked for.
enum class SecretsAccess { Quiet, MayAsk };

// Passwords kept by the desktop's secret service, or in a file that only the user can read where there is
// none. The futures finish without an event loop; an answer may take as long as the user needs to unlock the
// store.
class Secrets {
public:
    virtual ~Secrets() = default;
    // Error::Kind::NotFound when there is no such item; Denied when the store stays locked.
    virtual QFuture<Result<QString>> get(const QString &account, const QString &service,
                                         SecretsAccess access) = 0;
    // The empty text removes the item. May ask the user.
    virtual QFuture<Result<void>> set(const QString &value, const QString &account,
                                      const QString &service) = 0;
};
