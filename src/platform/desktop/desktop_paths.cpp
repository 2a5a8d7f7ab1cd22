#include "platform/desktop/desktop_paths.h"

#include <QDir>
#include <QStandardPaths>

namespace {

// Relative paths in these variables are to be ignored.
QString baseFolder(const char *variable, const QString &fallback)
{
    const QString told = QFile::decodeName(qgetenv(variable));
    return QDir::cleanPath(QDir::isAbsolutePath(told) ? told : QDir::home().filePath(fallback));
}

} // namespace

QString DesktopPaths::home() const
{
    return QDir::homePath();
}

QString DesktopPaths::pictures() const
{
    return QDir::cleanPath(QStandardPaths::writableLocation(QStandardPaths::PicturesLocation));
}

QString DesktopPaths::desktop() const
{
    return QDir::cleanPath(QStandardPaths::writableLocation(QStandardPaths::DesktopLocation));
}

QString DesktopPaths::temporary() const
{
    return QDir::cleanPath(QDir::tempPath());
}

QString DesktopPaths::config() const
{
    return baseFolder("XDG_CONFIG_HOME", QStringLiteral(".config")) +
           QStringLiteral("/com.oakfenrow.lumenpost");
}

QString DesktopPaths::state() const
{
    return baseFolder("XDG_STATE_HOME", QStringLiteral(".local/state")) + QStringLiteral("/lumenpost");
}

QString DesktopPaths::cache() const
{
    return baseFolder("XDG_CACHE_HOME", QStringLiteral(".cache")) + QStringLiteral("/lumenpost");
}
