#include "platform/desktop/desktop_trash.h"

#include "base/atomic_file.h"
#include "base/free_name.h"
#include "platform/texts.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QUrl>
#include <cerrno>
#include <sys/stat.h>

namespace {

std::unexpected<Error> untrashable(const QString &path, const QString &detail)
{
    return fail(PlatformTexts::tr("“%1” could not be moved to the Trash.").arg(QFileInfo(path).fileName()),
                detail);
}

// Makes the user's trash where this is the first use of it. Qt takes the working folder for the trash where
// there is none.
Result<QString> homeTrash(const QString &path)
{
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (!QDir::isAbsolutePath(data))
        return untrashable(path, QStringLiteral("there is no folder for data"));
    const QString trash = data + QStringLiteral("/Trash");
    for (const QString &folder : {trash, trash + QStringLiteral("/files"), trash + QStringLiteral("/info")}) {
        QDir().mkpath(QFileInfo(folder).path());
        if (mkdir(QFile::encodeName(folder).constData(), S_IRWXU) != 0 && errno != EEXIST)
            return untrashable(path, qt_error_string());
        if (const QFileInfo made(folder); !made.isDir() || !made.isWritable())
            return untrashable(path, QStringLiteral("%1 can't be written to").arg(folder));
    }
    return trash;
}

// For a volume without a trash of its own: a copy into the user's trash, then the removal.
Result<QString> copyToHomeTrash(const QString &path, const QString &trash)
{
    const QFileInfo source(path);
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
    const QByteArray lines =
        "[Trash Info]\nPath=" + QUrl::toPercentEncoding(source.absoluteFilePath(), "/") +
        "\nDeletionDate=" + QDateTime::currentDateTime().toString(Qt::ISODate).toUtf8() + "\n";
    const bool isRecorded = record.write(lines) == lines.size() && record.flush();
    record.close();

    const auto copied = isRecorded ? AtomicFile::copy(path, target)
                                   : Result<void>(untrashable(path, record.errorString()));
    if (!copied) {
        QFile::remove(record.fileName());
        return untrashable(path, copied.error().message);
    }
    if (QFile original(path); !original.remove()) {
        QFile::remove(target);
        QFile::remove(record.fileName());
        return untrashable(path, original.errorString());
    }
    return target;
}

} // namespace

Result<QString> DesktopTrash::moveToTrash(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists() && !info.isSymLink()) {
        return fail(Error::Kind::NotFound, PlatformTexts::tr("There is no file “%1”.").arg(info.fileName()),
                    path);
    }
    const auto trash = homeTrash(path);
    if (!trash)
        return trash;
    QString trashed;
    if (QFile::moveToTrash(path, &trashed))
        return trashed;
    if (info.isDir() && !info.isSymLink())
        return untrashable(path, QStringLiteral("a folder on a volume without a trash"));
    return copyToHomeTrash(path, *trash);
}
