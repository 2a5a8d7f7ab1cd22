#pragma once

#include "base/result.h"

#include <QByteArray>
#include <QSet>
#include <QString>
#include <functional>
#include <stop_token>

class QIODevice;

// Writes files so that a crash, a kill or a full disk leaves the old file or the new one, never half of
// either: the bytes go to a nameless or hidden file beside the target, are checked to have reached the disk,
// and only then take its name. Links are followed. What is no regular file is refused. An existing file keeps
// its mode; a new one gets what the umask allows. Callable from any thread.
namespace AtomicFile {

// Whether the bytes must outlive a power failure, or can be made anew.
enum class Keep { Lasting, Reproducible };

Result<void> write(const QString &path, const QByteArray &bytes, Keep keep = Keep::Lasting);
// For its owner's eyes alone, from the first byte on and whatever the mode was before.
Result<void> writePrivately(const QString &path, const QByteArray &bytes);
// Calls `fill` with the open temporary file; a false from it drops the file and fails.
Result<void> write(const QString &path, const std::function<bool(QIODevice &)> &fill);
// Gives `fill` the path for a new file of the same extension, and moves what it wrote over the target when it
// succeeded. For encoders that want a path.
Result<void> replace(const QString &path, const std::function<Result<void>(const QString &temporary)> &fill);
// Puts a copy of a file, with its dates, in the place of another. Cancelled when stopped; begins nothing that
// the disk has no room for.
Result<void> copy(const QString &source, const QString &target, const std::stop_token &stop = {});
// Puts the file itself there; across volumes a copy of it, whose original goes.
Result<void> moveOver(const QString &source, const QString &target);

// The same for a new file, which never takes the place of another, whoever else is writing: the first name
// that is free, as freeFilePath has it. The path that it became.
Result<QString> writeNew(const QString &folder, const QString &stem, const QString &extension,
                         const QByteArray &bytes, const QSet<QString> &reserved = {});
Result<QString> copyNew(const QString &source, const QString &folder, const QString &stem,
                        const QString &extension, const QSet<QString> &reserved = {},
                        const std::stop_token &stop = {});
// Moves a file within its volume to the first free name.
Result<QString> moveNew(const QString &source, const QString &folder, const QString &stem,
                        const QString &extension, const QSet<QString> &reserved = {});
// Moves a file within its volume. False when something has the name already; nothing is moved then.
Result<bool> moveWithoutReplacing(const QString &source, const QString &target);

} // namespace AtomicFile
