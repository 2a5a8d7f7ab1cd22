#include "platform/desktop/desktop_trash.h"

#include "base/free_name.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QUrl>

namespace {

std::unexpected<Error> untrashable(const QString &path, const QString &detail)
{
    return fail(QStringLiteral("“%1” could not be moved to the Trash.").arg(QFileInfo(path).fileName()),
                detail);
}

// For a volume without a trash of its own: a copy into the user's trash, then the removal.
Result<QString> copyToHomeTrash(const QString &path)
{
    const QFileInfo source(path);
    const QString trash =
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/Trash");
    if (!QDir().mkpath(trash + QStringLiteral("/files")) || !QDir().mkpath(trash + QStringLiteral("/info")))
        return untrashable(path, QStringLiteral("no folder %1").arg(trash));

    // The record comes first, so that its name is ours before the file takes it.
    QFile record;
    QString target;
    do {
        target = freeFilePath(trash + QStringLiteral("/files"), source.completeBaseName(), source.suffix());
        record.setFileName(trash + QStringLiteral("/info/") + QFileInfo(target).fileName() +
                           QStringLiteral(".trashinfo"));
        if (record.open(QIODevice::WriteOnly | QIODevice::NewOnly))
            break;
        if (!record.exists())
            return untrashable(path, record.errorString());
        QFile::remove(record.fileName()); // of a file that is gone
    } while (true);
    record.write("[Trash Info]\nPath=" + QUrl::toPercentEncoding(source.absoluteFilePath(), "/") +
                 "\nDeletionDate=" + QDateTime::currentDateTime().toString(Qt::ISODate).toUtf8() + "\n");
    record.close();

    QFile file(path);
    if (!file.copy(target)) {
        QFile::remove(record.fileName());
        return untrashable(path, file.errorString());
    }
    if (!file.remove()) {
        QFile::remove(target);
        QFile::remove(record.fileName());
        return untrashable(path, file.errorString());
    }
    return target;
}

} // namespace

Result<QString> DesktopTrash::moveToTrash(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists() && !info.isSymLink()) {
        return fail(Error::Kind::NotFound, QStringLiteral("There is no file “%1”.").arg(info.fileName()),
                    path);
    }
    QString trashed;
    if (QFile::moveToTrash(path, &trashed))
        return trashed;
    if (info.isDir() && !info.isSymLink())
        return untrashable(path, QStringLiteral("a folder on a volume without a trash"));
    return copyToHomeTrash(path);
}
