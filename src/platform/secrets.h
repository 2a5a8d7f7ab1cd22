#pragma once

#include "base/result.h"

#include <QString>
#include <optional>

// Passwords kept by the desktop's secret service, or in a file that only the user can read where there is
// none.
class Secrets {
public:
    virtual ~Secrets() = default;
    virtual std::optional<QString> get(const QString &account, const QString &service) const = 0;
    // The empty text removes the item.
    virtual Result<void> set(const QString &value, const QString &account, const QString &service) = 0;
};
