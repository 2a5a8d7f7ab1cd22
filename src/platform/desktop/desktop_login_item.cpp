#include "platform/desktop/desktop_login_item.h"

#include "base/atomic_file.h"
#include "platform/texts.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace {

// A word of an entry's command: quoted, with the signs escaped that keep a meaning in quotes; a percent sign
// is doubled, and a backslash is one for the file's own escaping too.
QString quoted(QString word)
{
    for (const QChar sign : QStringLiteral("\\\"`$"))
        word.replace(sign, QLatin1Char('\\') + QString(sign));
    word.replace(QLatin1Char('\\'), QStringLiteral("\\\\"));
    word.replace(QLatin1Char('%'), QStringLiteral("%%"));
    return QLatin1Char('"') + word + QLatin1Char('"');
}

} // namespace

DesktopLoginItem::DesktopLoginItem(QString program) : m_program(std::move(program)) {}

QString DesktopLoginItem::entryPath() const
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/autostart/lumenpost.desktop");
}

bool DesktopLoginItem::isEnabled() const
{
    QFile file(entryPath());
    if (!file.open(QIODevice::ReadOnly))
        return false;
    // Session managers turn an entry off by either of these lines.
    for (const QByteArray &line : file.readAll().split('\n')) {
        const QByteArray text = QByteArray(line).replace(" ", "").toLower();
        if (text == "hidden=true" || text == "x-gnome-autostart-enabled=false")
            return false;
    }
    return true;
}

Result<void> DesktopLoginItem::setEnabled(bool enabled)
{
    const QString path = entryPath();
    if (!enabled) {
        if (QFile::exists(path) && !QFile::remove(path))
            return fail(PlatformTexts::tr("The file “%1” could not be removed.").arg(path));
        return {};
    }
    QDir().mkpath(QFileInfo(path).absolutePath());
    const QString program = m_program.isEmpty() ? QCoreApplication::applicationFilePath() : m_program;
    return AtomicFile::write(path, QStringLiteral("[Desktop Entry]\nType=Application\nName=Lumenpost\n"
                                                  "Exec=%1\nIcon=com.oakfenrow.lumenpost\nTerminal=false\n"
                                                  "X-GNOME-Autostart-enabled=true\n")
                                       .arg(quoted(program))
                                       .toUtf8());
}
