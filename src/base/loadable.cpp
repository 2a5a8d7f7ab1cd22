#include "base/loadable.h"

#include "base/texts.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLibrary>
#include <QMutex>
#include <unistd.h>

namespace {

// Works also before there is an application object.
QString programFolder()
{
    char path[4096];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
    const QString program = length > 0 ? QFile::decodeName(QByteArray(path, length)) : QString();
    return program.left(program.lastIndexOf(QLatin1Char('/')));
}

// The parts that are packages of their own.
QString packageOf(const QString &module)
{
    if (module == QLatin1String("platform_recognition"))
        return QStringLiteral("lumenpost-recognition");
    if (module == QLatin1String("platform_media") || module == QLatin1String("platform_camera"))
        return QStringLiteral("lumenpost-films");
    if (module == QLatin1String("platform_speech"))
        return QStringLiteral("lumenpost-speech");
    return {};
}

} // namespace

Result<QFunctionPointer> Loadable::symbol(const QString &name, const char *symbol)
{
    static QMutex mutex;
    QMutexLocker lock(&mutex);
    const QString file = QStringLiteral("lumenpost-%1.so").arg(name);
    QString reason;
    for (const char *folder : {"../lib", "../lib/lumenpost", "../../lib"}) {
        const QString path = QDir::cleanPath(programFolder() + QLatin1Char('/') + QLatin1String(folder) +
                                             QLatin1Char('/') + file);
        if (!QFile::exists(path))
            continue;
        QLibrary library(path);
        if (const QFunctionPointer function = library.resolve(symbol))
            return function;
        reason = library.errorString();
    }
    const QString package = packageOf(name);
    return fail(Error::Kind::Unavailable,
                package.isEmpty()
                    ? BaseTexts::tr("A part of Lumenpost is missing (%1): install it again.").arg(file)
                    : BaseTexts::tr("This needs a part of Lumenpost that isn’t installed: the package “%1”.")
                          .arg(package),
                reason);
}
