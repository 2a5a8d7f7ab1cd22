#pragma once

#include "base/result.h"

#include <QUrl>
#include <optional>

// The failures of the online services, in their words.
namespace CloudError {
Error refused(const std::optional<QString> &explanation);
Error api(const QString &message);
Error missingAPIKey();
Error missingImgurID();
} // namespace CloudError

// Where a service is reached: `standard`, or scheme, host and port of the environment variable, with this
// path.
QUrl serviceUrl(const char *variable, const QString &standard, const QString &path);
