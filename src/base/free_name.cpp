#include "base/free_name.h"

#include <QDir>
#include <QFileInfo>

QString freeFilePath(const QString &folder, const QString &stem, const QString &extension)
{
    const QDir directory(folder);
    const QString ending = extension.isEmpty() ? QString() : QLatin1Char('.') + extension;
    QString candidate = directory.filePath(stem + ending);
    // A dangling link is a taken name too.
    for (int n = 2; QFileInfo(candidate).exists() || QFileInfo(candidate).isSymLink(); ++n)
        candidate = directory.filePath(stem + QLatin1Char(' ') + QString::number(n) + ending);
    return candidate;
}
