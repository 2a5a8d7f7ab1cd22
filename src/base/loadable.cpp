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
    return fail(Error::Kind::Unavailable,
                BaseTexts::tr("A part of Lumenpost is missing (%1): install it again.").arg(file), reason);
}
