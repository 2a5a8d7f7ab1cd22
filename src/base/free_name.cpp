#include "base/free_name.h"

#include <QDir>
#include <QFileInfo>

QString freeFilePath(const QString &folder, const QString &stem, const QString &extension,
                     const QSet<QString> &reserved)
{
    const QDir directory(folder);
    const QString ending = extension.isEmpty() ? QString() : QLatin1Char('.') + extension;
    const auto isTaken = [&reserved](const QString &path) {
        // A dangling link is a taken name too.
        const QFileInfo info(path);
        return info.exists() || info.isSymLink() || reserved.contains(path);
    };
    QString candidate = directory.filePath(stem + ending);
    for (int n = 2; isTaken(candidate); ++n)
        candidate = directory.filePath(stem + QLatin1Char(' ') + QString::number(n) + ending);
    return candidate;
}
