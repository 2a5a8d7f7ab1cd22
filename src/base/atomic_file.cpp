#include "base/atomic_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTemporaryFile>

namespace {

std::unexpected<Error> cannotWrite(const QString &path, const QString &reason)
{
    return fail(QStringLiteral("Couldn't write %1: %2.").arg(QFileInfo(path).fileName(), reason), path);
}

} // namespace

Result<void> AtomicFile::write(const QString &path, const std::function<bool(QIODevice &)> &fill)
{
    QSaveFile file(path);
    // Never write in place: a full disk would then leave a torn file.
    file.setDirectWriteFallback(false);
    if (!file.open(QIODevice::WriteOnly))
        return cannotWrite(path, file.errorString());
    if (!fill(file) || file.error() != QFileDevice::NoError) {
        const QString reason = file.error() != QFileDevice::NoError
                                   ? file.errorString()
                                   : QStringLiteral("it could not be encoded");
        file.cancelWriting();
        return cannotWrite(path, reason);
    }
    if (!file.commit())
        return cannotWrite(path, file.errorString());
    return {};
}

Result<void> AtomicFile::write(const QString &path, const QByteArray &bytes)
{
    return write(path, [&bytes](QIODevice &device) { return device.write(bytes) == bytes.size(); });
}

Result<void> AtomicFile::replace(const QString &path,
                                 const std::function<Result<void>(const QString &)> &fill)
{
    const QFileInfo info(path);
    const QString suffix = info.suffix().isEmpty() ? QString() : QLatin1Char('.') + info.suffix();
    QTemporaryFile temporary(info.dir().filePath(QStringLiteral(".lumenpost-XXXXXX") + suffix));
    if (!temporary.open())
        return cannotWrite(path, temporary.errorString());
    temporary.close();
    if (auto filled = fill(temporary.fileName()); !filled)
        return filled;
    QFile::setPermissions(temporary.fileName(),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
    temporary.setAutoRemove(false);
    const QByteArray from = QFile::encodeName(temporary.fileName());
    if (std::rename(from.constData(), QFile::encodeName(path).constData()) != 0) {
        const QString reason = qt_error_string();
        QFile::remove(temporary.fileName());
        return cannotWrite(path, reason);
    }
    return {};
}
