#pragma once

#include "base/result.h"

#include <QByteArray>
#include <functional>

class QIODevice;

// Writes files so that a crash or a full disk leaves the old file or the new one, never half of either: the
// bytes go to a temporary file beside the target, reach the disk, and are renamed over it.
namespace AtomicFile {

Result<void> write(const QString &path, const QByteArray &bytes);
// Calls `fill` with the open temporary file; a false from it drops the file and fails.
Result<void> write(const QString &path, const std::function<bool(QIODevice &)> &fill);
// Gives `fill` the path of a temporary file beside `path`, with the same extension, and renames it over the
// target when `fill` succeeded. For encoders that want a path.
Result<void> replace(const QString &path, const std::function<Result<void>(const QString &temporary)> &fill);

} // namespace AtomicFile
